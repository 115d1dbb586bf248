// The data type table: TypeSpec parsing, validity, sizes, comparison, copy, difference.
#include "quill32.h"
#include <gtest/gtest.h>
#include <math.h>
#include <stdint.h>
#include <string.h>
#include <string>
#include <vector>

namespace {

struct SpecCase {
    const char* spec;
    char class1, type1, class2, type2; // '?' is the caller's own initial value
    int offset;                        // of the returned pointer
};

constexpr SpecCase kSpecCases[] = {
    {"", 's', 's', 0, '?', 0},
    {"%", 's', 's', 0, '?', 0},
    {"%n", 's', 's', 0, '?', 0},
    {"%nq", 's', 's', 0, '?', 0},       // a good class with a type it does not admit
    {"%xd", 's', 's', 0, '?', 0},
    {"nd", 's', 's', 0, '?', 0},
    {"%nd", 'n', 'd', 0, '?', 3},
    {"%nd#,##0.00", 'n', 'd', 0, '?', 3},
    {"%nd%zz", 'n', 'd', 0, '?', 3},
    {"%nd%z", 'n', 'd', 0, '?', 3},     // the second pair needs six characters
    {"%nd%zd", 'n', 'd', 'z', 'd', 6},
    {"%dA%tt hh:mm", 'd', 'A', 't', 't', 6},
    {"%nd%%zd", 'n', 'd', 0, '?', 3},
    {"%kT", 'k', 'T', 0, '?', 3},
    {"%kD", 's', 's', 0, '?', 0},
    {"%ss", 's', 's', 0, '?', 3},
    {"%bW%cM", 'b', 'W', 'c', 'M', 6},
    {"%bM", 's', 's', 0, '?', 0},       // M is a number type, not a boolean one
};

TEST(TypesGetDataTypes, ReadsUpToTwoValidPairsAndPointsAtTheMask)
{
    for (const SpecCase& c : kSpecCases) {
        char class1 = '?', type1 = '?', class2 = '?', type2 = '?';
        LPCSTR rest = GetDataTypes(c.spec, &class1, &type1, &class2, &type2);
        EXPECT_EQ(c.spec + c.offset, rest) << c.spec;
        EXPECT_EQ(c.class1, class1) << c.spec;
        EXPECT_EQ(c.type1, type1) << c.spec;
        EXPECT_EQ(c.class2, class2) << c.spec;
        EXPECT_EQ(c.type2, type2) << c.spec << ": the fourth place is the caller's to set";
    }
}

TEST(TypesGetDataTypes, AbsentPlacesAreSkipped)
{
    const char spec[] = "%nd%zf###";
    EXPECT_EQ(spec + 6, GetDataTypes(spec, nullptr, nullptr, nullptr, nullptr));
    char type2 = '?';
    EXPECT_EQ(spec + 6, GetDataTypes(spec, nullptr, nullptr, nullptr, &type2));
    EXPECT_EQ('f', type2);
    char class1 = '?';
    EXPECT_EQ(spec + 6, GetDataTypes(spec, &class1, nullptr, nullptr, nullptr));
    EXPECT_EQ('n', class1);
}

// The classes and the type letters each admits.
struct ClassRow {
    char cls;
    const char* types;
};

constexpr ClassRow kClassRows[] = {
    {'a', "DQTmqsu"}, {'b', "Wbhilsuw"}, {'c', "MdfWbhilsuw"}, {'d', "Aadl"},
    {'h', "h"},       {'k', "T"},        {'m', "s"},           {'n', "MdfWbhilsuw"},
    {'s', "s"},       {'t', "Iit"},      {'z', "df"},
};

const ClassRow* RowOf(char cls)
{
    for (const ClassRow& row : kClassRows)
        if (row.cls == cls)
            return &row;
    return nullptr;
}

TEST(TypesValidity, ExactlyTheElevenClassLettersAreValid)
{
    for (int c = -128; c < 128; ++c)
        EXPECT_EQ(RowOf((char)c) != nullptr, (bool)ValidClass((char)c)) << "class " << c;
}

TEST(TypesValidity, ExactlyTheListedPairsAreValid)
{
    for (int c = -128; c < 128; ++c) {
        const ClassRow* row = RowOf((char)c);
        for (int t = -128; t < 128; ++t) {
            bool expected = row && t != 0 && strchr(row->types, t) != nullptr;
            ASSERT_EQ(expected, (bool)ValidType((char)c, (char)t)) << "pair " << c << "," << t;
        }
    }
}

struct SizeCase {
    char cls, type;
    int size;
};

constexpr SizeCase kSizeCases[] = {
    {'n', 'b', 1}, {'n', 'h', 1}, {'n', 's', 2}, {'n', 'w', 2}, {'n', 'i', 4}, {'n', 'l', 4},
    {'n', 'u', 4}, {'n', 'W', 4}, {'n', 'f', 4}, {'n', 'd', 8}, {'n', 'M', 8},
    {'b', 'f', 4},  // the family's table, not the class's
    {'c', 'd', 8}, {'z', 'l', 4}, {'z', 'M', 8},
    {'a', 'D', 10}, {'a', 'Q', 8}, {'a', 'q', 4}, {'a', 'T', 4}, {'a', 'm', 36}, {'a', 's', 16},
    {'a', 'u', 8},
    {'k', 'D', 10}, {'k', 'Q', 8}, // class k has all of a's storage
    {'d', 'A', 2}, {'d', 'a', 6}, {'d', 'd', 6}, {'d', 'l', 4}, {'d', 'Q', 0},
    {'t', 'I', 2}, {'t', 'i', 4}, {'t', 't', 6}, {'t', 'd', 0},
    {'h', 'h', 1}, {'h', 'Z', 1}, {'h', 0, 1},
    {'m', 's', -1}, {'s', 's', -1},
    {'n', 'q', 0}, {'a', 'd', 0}, {'x', 'd', 0}, {0, 0, 0},
};

TEST(TypesGetDataSize, LooksTheTypeUpInTheClassFamily)
{
    for (const SizeCase& c : kSizeCases)
        EXPECT_EQ(c.size, GetDataSize(c.cls, c.type)) << c.cls << c.type;
}

// ---- Stored values, built byte by byte in little-endian order ----

using Bytes = std::vector<uint8_t>;

template <typename T> Bytes Of(T v)
{
    Bytes b(sizeof v);
    memcpy(b.data(), &v, sizeof v);
    return b;
}

Bytes Cat(std::initializer_list<Bytes> parts)
{
    Bytes out;
    for (const Bytes& p : parts)
        out.insert(out.end(), p.begin(), p.end());
    return out;
}

Bytes DateTime(int16_t y, uint8_t mo, uint8_t d, uint8_t h, uint8_t mi, uint8_t s, uint16_t ms, uint8_t filler = 0)
{
    return Cat({Of(y), Of(mo), Of(d), Of(h), Of(mi), Of(s), Of(filler), Of(ms)});
}

Bytes Tm(int32_t year, int32_t mon, int32_t mday, int32_t hour, int32_t min, int32_t sec, int32_t wday = 0)
{
    return Cat({Of(sec), Of(min), Of(hour), Of(mday), Of(mon), Of(year), Of(wday), Of<int32_t>(0), Of<int32_t>(0)});
}

Bytes DosDate(unsigned y, unsigned m, unsigned d) { return Of<uint16_t>((uint16_t)(y | m << 7 | d << 11)); }
Bytes DosTime(unsigned h, unsigned m, unsigned s2) { return Of<uint16_t>((uint16_t)(h | m << 5 | s2 << 11)); }
Bytes Text(const char* s) { return Bytes(s, s + strlen(s) + 1); }

struct CompareCase {
    const char* name;
    char cls, type;
    Bytes a, b;
    LONG expected;
};

const CompareCase kCompareCases[] = {
    {"char is signed", 'n', 'h', Of<int8_t>(-1), Of<int8_t>(1), -1},
    {"class h is signed whatever the type", 'h', 'x', Of<uint8_t>(0x80), Of<uint8_t>(1), -1},
    {"byte is unsigned", 'n', 'b', Of<uint8_t>(255), Of<uint8_t>(1), 1},
    {"short is signed", 'n', 's', Of<int16_t>(-2), Of<int16_t>(1), -1},
    {"word is unsigned", 'c', 'w', Of<uint16_t>(0xFFFF), Of<uint16_t>(1), 1},
    {"int is signed", 'n', 'i', Of<int32_t>(-5), Of<int32_t>(3), -1},
    {"ulong is unsigned", 'n', 'u', Of<uint32_t>(0xFFFFFFFF), Of<uint32_t>(1), 1},
    {"dword is unsigned", 'b', 'W', Of<uint32_t>(0x80000000), Of<uint32_t>(0x7FFFFFFF), 1},
    {"float orders", 'n', 'f', Of(1.5f), Of(2.5f), -1},
    {"float NaN is equal", 'n', 'f', Of(NAN), Of(1.0f), 0},
    {"double orders", 'c', 'd', Of(-1e300), Of(1.0), -1},
    {"double NaN is equal", 'n', 'd', Of(1.0), Of((double)NAN), 0},
    {"money: first word dominates", 'n', 'M', Cat({Of<uint32_t>(1), Of<uint32_t>(0)}),
     Cat({Of<uint32_t>(0), Of<uint32_t>(0xFFFFFFFF)}), 1},
    {"money: second word breaks ties", 'n', 'M', Cat({Of<uint32_t>(3), Of<uint32_t>(5)}),
     Cat({Of<uint32_t>(3), Of<uint32_t>(6)}), -1},
    {"money words are unsigned", 'n', 'M', Cat({Of<uint32_t>(0x80000000), Of<uint32_t>(0)}),
     Cat({Of<uint32_t>(1), Of<uint32_t>(0)}), 1},
    {"datetime year is signed", 'a', 'D', DateTime(-1, 12, 31, 0, 0, 0, 0), DateTime(1, 1, 1, 0, 0, 0, 0), -1},
    {"datetime month before day", 'a', 'D', DateTime(2000, 2, 1, 0, 0, 0, 0), DateTime(2000, 1, 31, 0, 0, 0, 0), 1},
    {"datetime milliseconds last", 'k', 'D', DateTime(2000, 1, 1, 1, 1, 1, 999), DateTime(2000, 1, 1, 1, 1, 1, 0), 1},
    {"datetime filler is not compared", 'a', 'D', DateTime(2000, 1, 1, 1, 1, 1, 5, 0xAA),
     DateTime(2000, 1, 1, 1, 1, 1, 5, 0), 0},
    {"serial day is signed", 'a', 'Q', Cat({Of<int32_t>(-1), Of<int32_t>(0)}), Cat({Of<int32_t>(0), Of<int32_t>(0)}), -1},
    {"serial milliseconds break ties", 'k', 'Q', Cat({Of<int32_t>(9), Of<int32_t>(2)}),
     Cat({Of<int32_t>(9), Of<int32_t>(1)}), 1},
    {"short serial day is unsigned", 'a', 'q', Cat({Of<uint16_t>(0x8000), Of<uint16_t>(0)}),
     Cat({Of<uint16_t>(1), Of<uint16_t>(5)}), 1},
    {"short serial minutes", 'a', 'q', Cat({Of<uint16_t>(4), Of<uint16_t>(5)}), Cat({Of<uint16_t>(4), Of<uint16_t>(6)}), -1},
    {"calendar time is signed", 'a', 'T', Of<int32_t>(-1), Of<int32_t>(0), -1},
    {"struct tm: year before seconds", 'a', 'm', Tm(100, 0, 1, 0, 0, 59), Tm(101, 0, 1, 0, 0, 0), -1},
    {"struct tm: seconds last", 'a', 'm', Tm(100, 5, 1, 2, 3, 4), Tm(100, 5, 1, 2, 3, 5), -1},
    {"struct tm: weekday ignored", 'k', 'm', Tm(100, 5, 1, 2, 3, 4, 1), Tm(100, 5, 1, 2, 3, 4, 6), 0},
    {"system time year is signed", 'a', 's',
     Cat({Of<int16_t>(-5), Of<uint16_t>(1), Of<uint16_t>(1), Of<uint16_t>(0), Of<uint16_t>(0), Of<uint16_t>(0), Of<uint32_t>(0)}),
     Cat({Of<int16_t>(5), Of<uint16_t>(1), Of<uint16_t>(1), Of<uint16_t>(0), Of<uint16_t>(0), Of<uint16_t>(0), Of<uint32_t>(0)}), -1},
    {"system time milliseconds are unsigned", 'a', 's',
     Cat({Of<int16_t>(5), Of<uint16_t>(1), Of<uint16_t>(1), Of<uint16_t>(0), Of<uint16_t>(0), Of<uint16_t>(0), Of<uint32_t>(0x80000000)}),
     Cat({Of<int16_t>(5), Of<uint16_t>(1), Of<uint16_t>(1), Of<uint16_t>(0), Of<uint16_t>(0), Of<uint16_t>(0), Of<uint32_t>(1)}), 1},
    {"day serial double", 'a', 'u', Of(2.5), Of(2.25), 1},
    {"packed date: year bits first", 'd', 'A', DosDate(1, 1, 31), DosDate(2, 1, 1), -1},
    {"packed date: day bits last", 'd', 'A', DosDate(3, 4, 2), DosDate(3, 4, 1), 1},
    {"day-month-year: year word first", 'd', 'a', Cat({Of<uint8_t>(31), Of<uint8_t>(1), Of<uint16_t>(2000)}),
     Cat({Of<uint8_t>(1), Of<uint8_t>(1), Of<uint16_t>(2001)}), -1},
    {"day-month-year: month before day", 'd', 'a', Cat({Of<uint8_t>(1), Of<uint8_t>(2), Of<uint16_t>(2000)}),
     Cat({Of<uint8_t>(31), Of<uint8_t>(1), Of<uint16_t>(2000)}), 1},
    {"year-month-day: year is signed", 'd', 'd', Cat({Of<int16_t>(-1), Of<uint16_t>(1), Of<uint16_t>(1)}),
     Cat({Of<int16_t>(1), Of<uint16_t>(1), Of<uint16_t>(1)}), -1},
    {"yyyymmdd", 'd', 'l', Of<int32_t>(20240101), Of<int32_t>(20231231), 1},
    {"packed time: hour bits first", 't', 'I', DosTime(1, 0, 29), DosTime(2, 0, 0), -1},
    {"packed time: seconds last", 't', 'I', DosTime(5, 6, 7), DosTime(5, 6, 7), 0},
    {"hundredths last", 't', 'i', Cat({Of<uint8_t>(1), Of<uint8_t>(2), Of<uint8_t>(3), Of<uint8_t>(99)}),
     Cat({Of<uint8_t>(1), Of<uint8_t>(2), Of<uint8_t>(3), Of<uint8_t>(4)}), 1},
    {"time words", 't', 't', Cat({Of<uint16_t>(1), Of<uint16_t>(2), Of<uint16_t>(3)}),
     Cat({Of<uint16_t>(1), Of<uint16_t>(3), Of<uint16_t>(0)}), -1},
    {"text ignores case", 's', 's', Text("Apple"), Text("aPPLE"), 0},
    {"text orders", 's', 's', Text("apple"), Text("Banana"), -1},
    {"longer text is above its prefix", 'm', 's', Text("ab"), Text("a"), 1},
    {"text bytes are unsigned", 's', 's', Text("\xE9"), Text("z"), 1},
};

TEST(TypesHDataCompare, EachPairComparesItsStorage)
{
    for (const CompareCase& c : kCompareCases) {
        HLDATACOMPAREPROC compare = HDataCompare(c.cls, c.type);
        ASSERT_NE(nullptr, compare) << c.name;
        EXPECT_EQ(c.expected, compare(c.a.data(), c.b.data())) << c.name;
        EXPECT_EQ(-c.expected, compare(c.b.data(), c.a.data())) << c.name << " (swapped)";
    }
}

TEST(TypesHDataCompare, ValuesAtOddAddressesCompare)
{
    alignas(8) uint8_t a[12] = {}, b[12] = {};
    double x = 1.0, y = 2.0;
    memcpy(a + 1, &x, sizeof x);
    memcpy(b + 3, &y, sizeof y);
    EXPECT_EQ(-1, HDataCompare('n', 'd')(a + 1, b + 3));
}

TEST(TypesHDataCompare, MissingValueSortsFirst)
{
    int32_t v = 0;
    EXPECT_EQ(-1, HDataCompare('n', 'l')(nullptr, &v));
    EXPECT_EQ(1, HDataCompare('s', 's')("a", nullptr));
    EXPECT_EQ(0, HDataCompare('a', 'D')(nullptr, nullptr));
}

struct NoCompareCase {
    char cls, type;
};

constexpr NoCompareCase kNoCompareCases[] = {
    {'z', 'd'}, {'z', 'f'}, {'n', 'q'}, {'d', 'Q'}, {'t', 'd'}, {'x', 's'}, {'a', 'A'},
};

TEST(TypesHDataCompare, CalculatorClassAndUnknownPairsHaveNoRoutine)
{
    for (const NoCompareCase& c : kNoCompareCases)
        EXPECT_EQ(nullptr, HDataCompare(c.cls, c.type)) << c.cls << c.type;
}

struct CopyCase {
    const char* name;
    char cls, type;
    Bytes source;
    int limit;
    int result; // bytes copied; for text the characters
};

const CopyCase kCopyCases[] = {
    {"double copies eight bytes", 'n', 'd', Of(3.25), 0, 8},
    {"limit does not bound a fixed size", 'n', 'd', Of(3.25), 2, 8},
    {"date record copies all six bytes", 'd', 'a', Bytes{1, 2, 3, 4, 5, 6}, 0, 6},
    {"datetime record", 'k', 'D', DateTime(1999, 12, 31, 23, 59, 59, 999, 7), 0, 10},
    {"text is cut at limit less one", 's', 's', Text("hello"), 4, 3},
    {"masked text without a limit", 'm', 's', Text("hello"), -1, 5},
    {"unknown pair copies nothing", 'n', 'q', Bytes{1, 2, 3, 4}, 0, 0},
};

TEST(TypesHDataCopy, CopiesTheStoredSizeOrBoundedText)
{
    for (const CopyCase& c : kCopyCases) {
        uint8_t target[48];
        memset(target, 0xCC, sizeof target);
        EXPECT_EQ(c.result, HDataCopy(target, c.source.data(), c.cls, c.type, c.limit)) << c.name;
        bool text = c.cls == 's' || c.cls == 'm';
        size_t written = text ? (size_t)c.result + 1 : (size_t)c.result;
        if (c.result > 0)
            EXPECT_EQ(0, memcmp(target, c.source.data(), (size_t)c.result)) << c.name;
        if (text)
            EXPECT_EQ(0, target[c.result]) << c.name;
        for (size_t i = written; i < sizeof target; ++i)
            ASSERT_EQ(0xCC, target[i]) << c.name << ": byte " << i << " written";
    }
}

TEST(TypesHDataCopy, NullPointersCopyNothing)
{
    int32_t v = 5;
    EXPECT_EQ(0, HDataCopy(nullptr, &v, 'n', 'l', 0));
    EXPECT_EQ(0, HDataCopy(&v, nullptr, 'n', 'l', 0));
}

struct DiffCase {
    const char* name;
    char cls, type;
    Bytes a, b;
    BOOL differs;
};

const DiffCase kDiffCases[] = {
    {"same text", 's', 's', Text("abc"), Text("abc"), FALSE},
    {"text differs in case", 's', 's', Text("abc"), Text("ABC"), TRUE},
    {"shorter text differs", 's', 's', Text("ab"), Text("abc"), TRUE},
    {"masked text stops at the terminator", 'm', 's', Bytes{'a', 0, 'X'}, Bytes{'a', 0, 'Y'}, FALSE},
    {"masked text differs", 'm', 's', Text("12-34"), Text("12-35"), TRUE},
    {"same long", 'n', 'l', Of<int32_t>(42), Of<int32_t>(42), FALSE},
    {"different long", 'n', 'l', Of<int32_t>(42), Of<int32_t>(43), TRUE},
    {"datetime bytes include the filler", 'a', 'D', DateTime(2000, 1, 1, 0, 0, 0, 0, 1),
     DateTime(2000, 1, 1, 0, 0, 0, 0, 2), TRUE},
    {"date record compares all six bytes", 'd', 'a', Bytes{1, 1, 0xD0, 7, 0, 0}, Bytes{1, 1, 0xD0, 7, 0, 1}, TRUE},
    {"unknown pair never differs", 'n', 'q', Of<int32_t>(1), Of<int32_t>(2), FALSE},
};

TEST(TypesHDataDiffers, ComparesTextOrStoredBytes)
{
    for (const DiffCase& c : kDiffCases) {
        // Exact-size copies, so that a read past the value is caught.
        std::vector<uint8_t> a(c.a), b(c.b);
        EXPECT_EQ(c.differs, HDataDiffers(a.data(), b.data(), c.cls, c.type)) << c.name;
    }
}

TEST(TypesHDataDiffers, NullPointerCountsAsSame)
{
    EXPECT_FALSE(HDataDiffers(nullptr, "a", 's', 's'));
    EXPECT_FALSE(HDataDiffers("a", nullptr, 's', 's'));
}

} // namespace
