// The data type table: TypeSpec parsing, validity, sizes, comparison, copy, difference.
#include "quill32.h"
#include <gtest/gtest.h>
#include <math.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;

// Stored values, little-endian: Of<int16_t>(-1, 12) is four bytes.
template <typename T, typename... V> Bytes Of(V... values)
{
    Bytes b;
    for (T v : {(T)values...})
        b.insert(b.end(), (const uint8_t*)&v, (const uint8_t*)&v + sizeof v);
    return b;
}

// Bytes from hex digits, spaces ignored: "ffff 0c" is three bytes.
Bytes Hex(const char* s)
{
    Bytes b;
    for (; *s; ++s)
        if (*s != ' ')
            b.push_back((uint8_t)strtoul(std::string(s, 2).c_str(), nullptr, 16)), ++s;
    return b;
}

Bytes Text(const char* s) { return Bytes(s, s + strlen(s) + 1); }

// expected: class1, type1, class2 ('0' for 0), type2 ('?': left as the caller
// set it, the fourth place is the caller's), then the offset of the returned pointer.
constexpr struct { const char* spec; const char* expected; } kSpecCases[] = {
    {"", "ss0?0"}, {"%", "ss0?0"}, {"%n", "ss0?0"}, {"%xd", "ss0?0"}, {"nd", "ss0?0"},
    {"%nq", "ss0?0"},        // a good class with a type it does not admit
    {"%bM", "ss0?0"},        // M is a number type, not a boolean one
    {"%kD", "ss0?0"},        {"%kT", "kT0?3"}, {"%ss", "ss0?3"}, {"%nd", "nd0?3"}, {"%nd#,##0.00", "nd0?3"},
    {"%nd%zz", "nd0?3"},     {"%nd%%zd", "nd0?3"},
    {"%nd%z", "nd0?3"},      // the second pair needs six characters
    {"%nd%zd", "ndzd6"},     {"%dA%tt hh:mm", "dAtt6"}, {"%bW%cM", "bWcM6"},
};

TEST(TypesGetDataTypes, ReadsUpToTwoValidPairsAndPointsAtTheMask)
{
    for (const auto& c : kSpecCases) {
        char class1 = '?', type1 = '?', class2 = '?', type2 = '?';
        LPCSTR rest = GetDataTypes(c.spec, &class1, &type1, &class2, &type2);
        const char got[] = {class1, type1, class2 ? class2 : '0', type2, (char)('0' + (rest - c.spec)), 0};
        EXPECT_STREQ(c.expected, got) << c.spec;
    }
    const char spec[] = "%nd%zf###";
    char class1 = '?', type2 = '?';
    EXPECT_EQ(spec + 6, GetDataTypes(spec, nullptr, nullptr, nullptr, nullptr));
    EXPECT_TRUE(GetDataTypes(spec, &class1, nullptr, nullptr, &type2) == spec + 6 && class1 == 'n' && type2 == 'f')
        << "absent places are skipped";
}

// Each class letter, then the type letters it admits.
constexpr const char* kClassTypes[] = {"aDQTmqsu", "bWbhilsuw", "cMdfWbhilsuw", "dAadl", "hh", "kT",
                                       "ms",       "nMdfWbhilsuw", "ss",       "tIit",  "zdf"};

TEST(TypesValidity, ExactlyTheElevenClassesAndTheirListedTypesAreValid)
{
    for (int c = -128; c < 128; ++c) {
        const char* row = nullptr;
        for (const char* r : kClassTypes)
            row = r[0] == c ? r : row;
        EXPECT_EQ(row != nullptr, (bool)ValidClass((char)c)) << "class " << c;
        for (int t = -128; t < 128; ++t)
            ASSERT_EQ(row && t != 0 && strchr(row + 1, t), (bool)ValidType((char)c, (char)t))
                << "pair " << c << "," << t;
    }
}

constexpr struct { char cls, type; int size; } kSizeCases[] = {
    {'n', 'b', 1}, {'n', 'h', 1}, {'n', 's', 2}, {'n', 'w', 2}, {'n', 'i', 4}, {'n', 'l', 4}, {'n', 'u', 4},
    {'n', 'W', 4}, {'n', 'f', 4}, {'n', 'd', 8}, {'n', 'M', 8}, {'c', 'd', 8}, {'z', 'l', 4}, {'z', 'M', 8},
    {'b', 'f', 4}, // the family's table, not the class's
    {'a', 'D', 10}, {'a', 'Q', 8}, {'a', 'q', 4}, {'a', 'T', 4}, {'a', 'm', 36}, {'a', 's', 16}, {'a', 'u', 8},
    {'k', 'D', 10}, {'k', 'Q', 8}, // class k has all of a's storage
    {'d', 'A', 2}, {'d', 'a', 6}, {'d', 'd', 6}, {'d', 'l', 4}, {'d', 'Q', 0}, {'t', 'I', 2}, {'t', 'i', 4},
    {'t', 't', 6}, {'t', 'd', 0}, {'h', 'h', 1}, {'h', 'Z', 1}, {'h', 0, 1}, {'m', 's', -1}, {'s', 's', -1},
    {'n', 'q', 0}, {'a', 'd', 0}, {'x', 'd', 0}, {0, 0, 0},
};

TEST(TypesGetDataSize, LooksTheTypeUpInTheClassFamily)
{
    for (const auto& c : kSizeCases)
        EXPECT_EQ(c.size, GetDataSize(c.cls, c.type)) << c.cls << c.type;
}

// Packed dates hold the year in bits 0-6, the month in 7-10, the day in 11-15;
// packed times the hour in 0-4, the minute in 5-10, the seconds / 2 in 11-15.
const struct { char cls, type; Bytes a, b; LONG expected; } kCompareCases[] = {
    {'n', 'h', Of<int8_t>(-1), Of<int8_t>(1), -1}, {'h', 'x', Of<uint8_t>(0x80), Of<uint8_t>(1), -1}, // class h: signed
    {'n', 'b', Of<uint8_t>(255), Of<uint8_t>(1), 1}, {'n', 's', Of<int16_t>(-2), Of<int16_t>(1), -1},
    {'c', 'w', Of<uint16_t>(0xFFFF), Of<uint16_t>(1), 1}, {'n', 'i', Of<int32_t>(-5), Of<int32_t>(3), -1},
    {'n', 'l', Of<int32_t>(-1), Of<int32_t>(0), -1}, {'n', 'u', Of<uint32_t>(0xFFFFFFFF), Of<uint32_t>(1), 1},
    {'b', 'W', Of<uint32_t>(0x80000000), Of<uint32_t>(0x7FFFFFFF), 1}, {'n', 'f', Of<float>(1.5), Of<float>(2.5), -1},
    {'n', 'f', Of<float>(NAN), Of<float>(1), 0}, // values that don't order compare equal
    {'c', 'd', Of<double>(-1e300), Of<double>(1), -1}, {'n', 'd', Of<double>(1), Of<double>(NAN), 0},
    {'n', 'M', Of<uint32_t>(1, 0), Of<uint32_t>(0, 0xFFFFFFFF), 1}, // money: the first word dominates,
    {'n', 'M', Of<uint32_t>(3, 5), Of<uint32_t>(3, 6), -1},         // the second breaks ties,
    {'n', 'M', Of<uint32_t>(0x80000000, 0), Of<uint32_t>(1, 0), 1}, // both unsigned
    // datetime: year word, month, day, hour, minute, second, a filler byte, millisecond word
    {'a', 'D', Hex("ffff 0c 1f 00 00 00 00 0000"), Hex("0100 01 01 00 00 00 00 0000"), -1}, // signed year
    {'a', 'D', Hex("d007 02 01 00 00 00 00 0000"), Hex("d007 01 1f 00 00 00 00 0000"), 1},  // month before day
    {'k', 'D', Hex("d007 01 01 01 01 01 00 e703"), Hex("d007 01 01 01 01 01 00 0000"), 1},  // milliseconds last
    {'a', 'D', Hex("d007 01 01 01 01 01 aa 0500"), Hex("d007 01 01 01 01 01 00 0500"), 0},  // filler not compared
    {'a', 'Q', Of<int32_t>(-1, 0), Of<int32_t>(0, 0), -1}, {'k', 'Q', Of<int32_t>(9, 2), Of<int32_t>(9, 1), 1},
    {'a', 'q', Of<uint16_t>(0x8000, 0), Of<uint16_t>(1, 5), 1}, {'a', 'q', Of<uint16_t>(4, 5), Of<uint16_t>(4, 6), -1},
    {'a', 'T', Of<int32_t>(-1), Of<int32_t>(0), -1}, {'a', 'u', Of<double>(2.5), Of<double>(2.25), 1},
    // struct tm holds tm_sec first: the year is the sixth integer, and the weekday is not compared
    {'a', 'm', Of<int32_t>(59, 0, 0, 1, 0, 100), Of<int32_t>(0, 0, 0, 1, 0, 101), -1},
    {'a', 'm', Of<int32_t>(4, 3, 2, 1, 5, 100), Of<int32_t>(5, 3, 2, 1, 5, 100), -1},
    {'k', 'm', Of<int32_t>(4, 3, 2, 1, 5, 100, 1), Of<int32_t>(4, 3, 2, 1, 5, 100, 6), 0},
    // system time: a signed year word, five words, unsigned 32-bit milliseconds
    {'a', 's', Of<uint16_t>(-5, 1, 1, 0, 0, 0, 0, 0), Of<uint16_t>(5, 1, 1, 0, 0, 0, 0, 0), -1},
    {'a', 's', Of<uint16_t>(5, 1, 1, 0, 0, 0, 0, 0x8000), Of<uint16_t>(5, 1, 1, 0, 0, 0, 1, 0), 1},
    {'d', 'A', Of<uint16_t>(1 | 1 << 7 | 31 << 11), Of<uint16_t>(2 | 1 << 7 | 1 << 11), -1}, // year bits first,
    {'d', 'A', Of<uint16_t>(3 | 4 << 7 | 2 << 11), Of<uint16_t>(3 | 4 << 7 | 1 << 11), 1},   // day bits last
    {'d', 'a', Hex("1f 01 d007"), Hex("01 01 d107"), -1}, // day, month, year word: the year first,
    {'d', 'a', Hex("01 02 d007"), Hex("1f 01 d007"), 1},  // then the month
    {'d', 'd', Of<int16_t>(-1, 1, 1), Of<int16_t>(1, 1, 1), -1},
    {'d', 'l', Of<int32_t>(20240101), Of<int32_t>(20231231), 1},
    {'t', 'I', Of<uint16_t>(1 | 29 << 11), Of<uint16_t>(2), -1}, // the hour bits first
    {'t', 'I', Of<uint16_t>(5 | 6 << 5 | 7 << 11), Of<uint16_t>(5 | 6 << 5 | 7 << 11), 0},
    {'t', 'i', Of<uint8_t>(1, 2, 3, 99), Of<uint8_t>(1, 2, 3, 4), 1},
    {'t', 't', Of<uint16_t>(1, 2, 3), Of<uint16_t>(1, 3, 0), -1},
    {'s', 's', Text("Apple"), Text("aPPLE"), 0}, {'s', 's', Text("apple"), Text("Banana"), -1}, // text ignores case
    {'m', 's', Text("ab"), Text("a"), 1}, {'s', 's', Text("\xE9"), Text("z"), 1},              // bytes unsigned
};

// Every value is copied to an odd address first: values are read by copy.
TEST(TypesHDataCompare, EachPairComparesItsStorageAndAMissingValueSortsFirst)
{
    for (const auto& c : kCompareCases) {
        HLDATACOMPAREPROC compare = HDataCompare(c.cls, c.type);
        ASSERT_NE(nullptr, compare) << c.cls << c.type;
        Bytes a = Of<uint8_t>(0), b = Of<uint8_t>(0, 0, 0);
        a.insert(a.end(), c.a.begin(), c.a.end()), b.insert(b.end(), c.b.begin(), c.b.end());
        EXPECT_EQ(c.expected, compare(a.data() + 1, b.data() + 3)) << c.cls << c.type << " " << c.expected;
        EXPECT_EQ(-c.expected, compare(b.data() + 3, a.data() + 1)) << c.cls << c.type << " (swapped)";
        EXPECT_TRUE(compare(nullptr, b.data()) == -1 && compare(a.data(), nullptr) == 1 &&
                    compare(nullptr, nullptr) == 0) << c.cls << c.type << ": a missing value sorts first";
    }
    for (const char* pair : {"zd", "zf", "nq", "dQ", "td", "xs", "aA"})
        EXPECT_EQ(nullptr, HDataCompare(pair[0], pair[1])) << pair << ": class z and unknown pairs have none";
}

// result: the bytes copied; for text the characters.
const struct { char cls, type; Bytes source; int limit, result; } kCopyCases[] = {
    {'n', 'd', Of<double>(3.25), 0, 8}, {'n', 'd', Of<double>(3.25), 2, 8}, // a limit doesn't bound a fixed size
    {'d', 'a', Hex("010203040506"), 0, 6}, {'k', 'D', Hex("cf07 0c 1f 17 3b 3b 07 e703"), 0, 10},
    {'s', 's', Text("hello"), 4, 3}, {'m', 's', Text("hello"), -1, 5}, // text: at most the limit less one
    {'n', 'q', Hex("01020304"), 0, 0},                                  // an unknown pair: nothing
};

TEST(TypesHDataCopy, CopiesTheStoredSizeOrBoundedText)
{
    for (const auto& c : kCopyCases) {
        uint8_t target[48];
        memset(target, 0xCC, sizeof target);
        EXPECT_EQ(c.result, HDataCopy(target, c.source.data(), c.cls, c.type, c.limit)) << c.cls << c.type;
        Bytes expected(c.source.begin(), c.source.begin() + c.result);
        if (c.cls == 's' || c.cls == 'm')
            expected.push_back(0);
        expected.resize(sizeof target, 0xCC);
        EXPECT_EQ(expected, Bytes(target, target + sizeof target)) << c.cls << c.type << " limit " << c.limit;
    }
    int32_t v = 5;
    EXPECT_TRUE(!HDataCopy(nullptr, &v, 'n', 'l', 0) && !HDataCopy(&v, nullptr, 'n', 'l', 0));
}

// The values have their exact sizes, so that a read past one is caught.
const struct { char cls, type; Bytes a, b; BOOL differs; } kDiffCases[] = {
    {'s', 's', Text("abc"), Text("abc"), FALSE}, {'s', 's', Text("abc"), Text("ABC"), TRUE}, // with regard to case
    {'s', 's', Text("ab"), Text("abc"), TRUE},
    {'m', 's', Hex("610058"), Hex("610059"), FALSE}, // up to the terminator
    {'m', 's', Text("12-34"), Text("12-35"), TRUE}, {'n', 'l', Of<int32_t>(42), Of<int32_t>(42), FALSE},
    {'n', 'l', Of<int32_t>(42), Of<int32_t>(43), TRUE}, {'d', 'a', Hex("0101d0070000"), Hex("0101d0070001"), TRUE},
    {'a', 'D', Hex("d007 01 01 00 00 00 01 0000"), Hex("d007 01 01 00 00 00 02 0000"), TRUE}, // the filler too
    {'n', 'q', Of<int32_t>(1), Of<int32_t>(2), FALSE}, // an unknown pair never differs
};

TEST(TypesHDataDiffers, ComparesTextOrStoredBytes)
{
    for (const auto& c : kDiffCases)
        EXPECT_EQ(c.differs, HDataDiffers(c.a.data(), c.b.data(), c.cls, c.type)) << c.cls << c.type;
    EXPECT_FALSE(HDataDiffers(nullptr, "a", 's', 's') || HDataDiffers("a", nullptr, 's', 's')) << "null counts as same";
}

} // namespace
