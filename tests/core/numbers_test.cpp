// Numbers: exact decimal digits, the reading of display texts, storage types,
// number masks and their layout.
#include "typed/numbers.h"
#include "typed/typed_internal.h"
#include <gtest/gtest.h>
#include <math.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <string>

namespace {

// Every test runs with "." and "," and leaves the locale as it found it.
class Numbers : public ::testing::Test {
protected:
    char decimal_ = 0, thousand_ = 0;
    void SetUp() override
    {
        decimal_ = g_cDecimalSep;
        thousand_ = g_cThousandSep;
        g_cDecimalSep = '.';
        g_cThousandSep = ',';
    }
    void TearDown() override
    {
        g_cDecimalSep = decimal_;
        g_cThousandSep = thousand_;
    }
};

// ---- Exact digits ----

struct DigitsCase {
    double value;
    int places;
    const char* digits;
    int decpt;
    int sign;
};

const std::string kDblMax =
    "1797693134862315708145274237317043567980705675258449965989174768031572607800285387605895586327668781"
    "7154045895351438246423432132688946418276846754670353751698604991057655128207624549009038932894407586"
    "8508455133942304583236903222948165808559332123348274797826204144723168738177180919299881250404026184"
    "124858368";

const DigitsCase kDigits[] = {
    {0.125, 2, "13", 0, 0},           // exact tie rounds away from zero
    {2.5, 0, "3", 1, 0},              // tie
    {0.5, 0, "1", 1, 0},              // tie to a new leading digit
    {1.5, 0, "2", 1, 0},
    {-2.5, 0, "3", 1, 1},             // sign apart, magnitude rounded up
    {9.5, 0, "10", 2, 0},             // carry adds a digit
    {0.375, 2, "38", 0, 0},
    {1234.5, 2, "123450", 4, 0},
    {0.05, 2, "5", -1, 0},            // binary 0.05000000000000000277
    {0.015, 2, "1", -1, 0},           // binary 0.01499999999999999944: no tie
    {1.005, 2, "100", 1, 0},          // binary 1.00499999999999989...
    {9.995, 2, "999", 1, 0},          // binary 9.99499999999999921...
    {1e-10, 12, "100", -9, 0},
    {0.0, 2, "", -2, 0},
    {-0.0, 2, "", -2, 1},
    {0.001, 2, "", -2, 0},            // rounds to nothing
    {0.004999, 2, "", -2, 0},
    {0.005, 2, "1", -1, 0},           // binary 0.005000000000000000104
    {5e-324, 64, "", -64, 0},
    {0.1, 20, "10000000000000000555", 0, 0},
    {0.1, 64, "1000000000000000055511151231257827021181583404541015625000000000", 0, 0},
    {1e23, 0, "99999999999999991611392", 23, 0},
    {123456789012.345, 3, "123456789012345", 12, 0},
    {18446744073709551616.0, 0, "18446744073709551616", 20, 0}, // 2^64: beyond 64 bits
    {9.3132257461547851562e-10, 29, "93132257461547851563", -9, 0}, // 2^-30: a tie past 27 places
    {9.3132257461547851562e-10, 30, "931322574615478515625", -9, 0},
    {4294967295.0, 0, "4294967295", 10, 0},
    {0.1, 0, "", 0, 0},
    {0.7, 0, "1", 1, 0},
};

TEST_F(Numbers, DigitsAreThoseOfTheExactBinaryValueWithTiesAwayFromZero)
{
    for (const DigitsCase& c : kDigits) {
        char digits[kNumDigitsSize];
        int decpt = 99, sign = 99;
        int n = HNumDigits(c.value, c.places, digits, sizeof digits, &decpt, &sign);
        EXPECT_STREQ(c.digits, digits) << c.value << " to " << c.places;
        EXPECT_EQ((int)strlen(c.digits), n) << c.value;
        EXPECT_EQ(c.decpt, decpt) << c.value << " to " << c.places;
        EXPECT_EQ(c.sign, sign) << c.value;
    }
}

TEST_F(Numbers, DigitsOfTheLargestDoubleAreAllThreeHundredAndNine)
{
    char digits[kNumDigitsSize];
    int decpt, sign;
    int n = HNumDigits(1.7976931348623157e308, 2, digits, sizeof digits, &decpt, &sign);
    EXPECT_EQ(kDblMax + "00", digits);
    EXPECT_EQ(311, n);
    EXPECT_EQ(309, decpt);
    n = HNumDigits(-1.7976931348623157e308, 64, digits, sizeof digits, &decpt, &sign);
    EXPECT_EQ(309 + 64, n);
    EXPECT_EQ(1, sign);
}

TEST_F(Numbers, DigitsRefuseInfinityAndNaN)
{
    char digits[kNumDigitsSize];
    int decpt, sign;
    EXPECT_EQ(-1, HNumDigits(INFINITY, 2, digits, sizeof digits, &decpt, &sign));
    EXPECT_EQ(-1, HNumDigits(-INFINITY, 2, digits, sizeof digits, &decpt, &sign));
    EXPECT_EQ(-1, HNumDigits(NAN, 2, digits, sizeof digits, &decpt, &sign));
}

#ifndef _WIN32
// Outside exact ties the digits must be those of glibc's exact printf. Native
// only: the Windows runtime's printf is not exact.
TEST_F(Numbers, DigitsAgreeWithAnExactPrintfOutsideTies)
{
    uint64_t state = 0x9E3779B97F4A7C15ull;
    for (int i = 0; i < 20000; ++i) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        double v;
        uint64_t bits = state & ~(0x7FFull << 52);
        bits |= (uint64_t)(900 + (state >> 53) % 260) << 52; // about 1e-37 to 1e41
        memcpy(&v, &bits, sizeof v);
        int places = (int)(state % 30);
        static char exact[1600];
        snprintf(exact, sizeof exact, "%.1100f", fabs(v));
        const char* rest = strchr(exact, '.') + 1 + places;
        if (rest[0] == '5' && strspn(rest + 1, "0") == strlen(rest + 1))
            continue; // an exact tie: printf rounds it to even
        char expect[512];
        snprintf(expect, sizeof expect, "%.*f", places, fabs(v));
        std::string plain;
        for (const char* p = expect; *p; ++p)
            if (*p != '.')
                plain += *p;
        size_t lead = plain.find_first_not_of('0');
        plain = lead == std::string::npos ? "" : plain.substr(lead);
        char digits[kNumDigitsSize];
        int decpt, sign;
        HNumDigits(v, places, digits, sizeof digits, &decpt, &sign);
        ASSERT_EQ(plain, digits) << v << " to " << places;
    }
}
#endif

// ---- Reading decimal texts ----

struct ReadCase {
    const char* text;
    double value;
};

const ReadCase kReads[] = {
    {"1234.50", 1234.5},
    {"0.1", 0.1},
    {"-12", -12.0},
    {"1-2", 1.0},     // a minus in the middle ends the reading
    {"--5", 0.0},
    {"", 0.0},
    {".", 0.0},
    {"-", 0.0},
    {"-.5", -0.5},
    {"5.", 5.0},
    {"1.2.3", 1.2},
    {"007", 7.0},
    {"0.000123", 0.000123},
    {"9007199254740993", 9007199254740992.0}, // halfway: to even
    {"9007199254740995", 9007199254740996.0},
    {"123456789012345678901234567890", 1.2345678901234568e29},
    {"0.3000000000000000166533453693773481063544750213623046875", 0.30000000000000004}, // tie: to even
    {"0.3000000000000000166533453693773481063544750213623046874", 0.3},
    {"0.30000000000000001665", 0.3},
    {"1.7976931348623157", 1.7976931348623157},
    {"4294967295", 4294967295.0},
    {"0.0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000001",
     1e-124},
    {"2.2250738585072014", 2.2250738585072014},
    {"1234567890123456789", 1234567890123456789.0},
    {"12345678901234567890", 12345678901234567890.0},
    {"0.1000000000000000055511151231257827021181583404541015625", 0.1},
};

TEST_F(Numbers, ReadingIsCorrectlyRoundedAndStopsAsAtofDoes)
{
    for (const ReadCase& c : kReads) {
        double v = HNumReadDecimal(c.text);
        EXPECT_EQ(0, memcmp(&v, &c.value, sizeof v)) << "'" << c.text << "' gave " << v;
    }
}

#ifndef _WIN32
// glibc's strtod is correctly rounded; the Windows runtime's need not be.
TEST_F(Numbers, ReadingAgreesWithACorrectlyRoundedStrtod)
{
    uint64_t state = 0x2545F4914F6CDD1Dull;
    for (int i = 0; i < 20000; ++i) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        char text[128];
        int intDigits = (int)(state % 40), fracDigits = (int)((state >> 8) % 60);
        int n = 0;
        uint64_t r = state;
        for (int j = 0; j < intDigits + fracDigits + (fracDigits ? 1 : 0); ++j) {
            if (fracDigits && j == intDigits) {
                text[n++] = '.';
                continue;
            }
            r = r * 6364136223846793005ull + 1442695040888963407ull;
            text[n++] = (char)('0' + (r >> 60) % 10);
        }
        text[n] = 0;
        double want = strtod(text, nullptr), got = HNumReadDecimal(text);
        ASSERT_EQ(0, memcmp(&want, &got, sizeof got)) << text;
    }
}
#endif

TEST_F(Numbers, ReadingKeepsTheSignOfZero)
{
    EXPECT_TRUE(signbit(HNumReadDecimal("-0.00")));
    EXPECT_FALSE(signbit(HNumReadDecimal("-")));
}

struct StripCase {
    const char* text;
    char decimal;
    double value;
};

const StripCase kStrips[] = {
    {"$1,234.50", '.', 1234.5},
    {"(1.50)", '.', 1.5},           // parentheses go, and the sign with them
    {"-1,234.50", '.', -1234.5},
    {"12-34", '.', 12.0},           // a minus in the middle stays where it is
    {"abc", '.', 0.0},
    {"1.234,5", ',', 1234.5},       // the separator of the locale is the point
    {"1,5 kg", ',', 1.5},
    {"1e5", '.', 15.0},             // no exponent: the letter falls away
    {" 42 ", '.', 42.0},
};

TEST_F(Numbers, StripKeepsDigitsMinusAndTheDecimalSeparator)
{
    for (const StripCase& c : kStrips) {
        g_cDecimalSep = c.decimal;
        EXPECT_EQ(c.value, HNumStrip(c.text)) << c.text;
    }
    EXPECT_EQ(0.0, HNumStrip(nullptr));
}

TEST_F(Numbers, StripReadsNoMoreThanTheWorkArea)
{
    std::string text(300, '1');
    double v = HNumStrip(text.c_str());
    EXPECT_EQ(HNumReadDecimal(std::string(kTypedWorkSize - 1, '1').c_str()), v);
    EXPECT_EQ(0, g_szTypedWork[kTypedWorkSize - 1]);
}

// ---- Storage types ----

struct StoreCase {
    char type;
    double number;
    BOOL result;
    double readBack;
};

const StoreCase kStores[] = {
    {'b', 200, TRUE, 200},
    {'b', 300, TRUE, 44},             // low bits, no range check
    {'b', -1, TRUE, 255},
    {'h', -5, TRUE, -5},
    {'h', 200, TRUE, -56},
    {'s', -300, TRUE, -300},
    {'s', 40000, TRUE, -25536},
    {'w', 65535, TRUE, 65535},
    {'w', 65541, TRUE, 5},
    {'i', -1.9, TRUE, -1},            // toward zero
    {'l', 2147483647, TRUE, 2147483647},
    {'l', -2147483648.0, TRUE, -2147483648.0},
    {'l', -2147483649.0, TRUE, 0},    // out of range stores 0
    {'u', -1, TRUE, 4294967295.0},
    {'u', 4294967295.0, TRUE, 4294967295.0},
    {'u', 4294967296.0, TRUE, 0},
    {'W', 123456789, TRUE, 123456789},
    {'f', 1.1, TRUE, (double)1.1f},
    {'f', 1e10, TRUE, 1e10},
    {'d', 1e300, TRUE, 1e300},        // no range for the floating types
    {'d', -0.5, TRUE, -0.5},
    {'l', NAN, TRUE, 0},
};

TEST_F(Numbers, EveryStorageTypeStoresAndReadsBack)
{
    for (const StoreCase& c : kStores) {
        unsigned char buffer[9];
        memset(buffer, 0xEE, sizeof buffer);
        EXPECT_EQ(c.result, DoubleToNum(buffer + 1, c.type, c.number)) << c.type << " " << c.number;
        EXPECT_EQ(c.readBack, NumToDouble(buffer + 1, c.type)) << c.type << " " << c.number;
        EXPECT_EQ(0xEE, buffer[0]);
    }
}

TEST_F(Numbers, TypesOutsideTheFamilyConvertNothing)
{
    unsigned char buffer[8];
    memset(buffer, 0xEE, sizeof buffer);
    for (char type : {'M', 'x', 'D', '\0'}) {
        EXPECT_FALSE(DoubleToNum(buffer, type, 5.0)) << type;
        EXPECT_EQ(0.0, NumToDouble(buffer, type)) << type;
    }
    for (unsigned char b : buffer)
        EXPECT_EQ(0xEE, b);
    EXPECT_EQ(0.0, NumToDouble(nullptr, 'd'));
    EXPECT_FALSE(DoubleToNum(nullptr, 'd', 1.0));
}

TEST_F(Numbers, StorageWritesOnlyTheTypesWidth)
{
    const struct {
        char type;
        int width;
    } widths[] = {{'b', 1}, {'h', 1}, {'s', 2}, {'w', 2}, {'i', 4}, {'l', 4}, {'u', 4}, {'W', 4}, {'f', 4}, {'d', 8}};
    for (auto w : widths) {
        unsigned char buffer[12];
        memset(buffer, 0xEE, sizeof buffer);
        DoubleToNum(buffer, w.type, 0.0);
        for (int i = 0; i < 12; ++i)
            EXPECT_EQ(i < w.width ? 0 : 0xEE, buffer[i]) << w.type << " byte " << i;
    }
}

// ---- Mask scan ----

struct MaskCase {
    const char* mask;
    BOOL negative, editing;
    int start; // offset of the returned section
    int sectionLength, intLength, intSlots, intZeros, intMax, intLiterals;
    int fracLength, fracSlots, fracZeros, fracMax, fracLiterals, flags;
};

const MaskCase kMasks[] = {
    {"#,##0.00", 0, 0, 0, 8, 5, 4, 1, 4, 0, 3, 2, 2, 2, 1, HNUM_GROUP},
    {"*0.*", 0, 0, 0, 4, 2, 2, 1, -1, 0, 2, 1, 0, -1, 1, 0},
    {"0.00;(0.00)", 1, 0, 5, 6, 2, 1, 1, 1, 1, 4, 2, 2, 2, 2, 0},
    {"0.00;(0.00)", 0, 0, 0, 4, 1, 1, 1, 1, 0, 3, 2, 2, 2, 1, 0},
    {"0.00", 1, 0, 0, 4, 1, 1, 1, 1, 0, 3, 2, 2, 2, 1, HNUM_MINUS},
    {"000", 0, 1, 0, 3, 3, 1, 1, 3, 0, 0, 0, 0, 0, 0, 0},   // editing: one "0" pads
    {"000", 0, 0, 0, 3, 3, 3, 3, 3, 0, 0, 0, 0, 0, 0, 0},
    {"[red]$#0", 0, 0, 5, 3, 3, 2, 1, 2, 1, 0, 0, 0, 0, 0, 0},
    {"#*#", 0, 0, 0, 3, 3, 3, 0, -1, 0, 0, 0, 0, 0, 0, 0},  // "*" holds -1 for good
    {"0.0 kg.x", 0, 0, 0, 8, 1, 1, 1, 1, 0, 7, 1, 1, 1, 6, 0},
    {"", 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
    {"#;", 1, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},    // an empty negative section
};

TEST_F(Numbers, MaskScanCountsEachSection)
{
    for (const MaskCase& c : kMasks) {
        HNumMask m;
        memset(&m, 0x55, sizeof m);
        LPCSTR s = HNumMaskParse(c.mask, c.negative, c.editing, &m);
        ASSERT_NE(nullptr, s) << c.mask;
        EXPECT_EQ(c.start, (int)(s - c.mask)) << c.mask;
        int got[] = {m.sectionLength, m.intLength, m.intSlots, m.intZeros, m.intMax, m.intLiterals,
                     m.fracLength, m.fracSlots, m.fracZeros, m.fracMax, m.fracLiterals, m.flags};
        int want[] = {c.sectionLength, c.intLength, c.intSlots, c.intZeros, c.intMax, c.intLiterals,
                      c.fracLength, c.fracSlots, c.fracZeros, c.fracMax, c.fracLiterals, c.flags};
        for (size_t i = 0; i < sizeof got / sizeof got[0]; ++i)
            EXPECT_EQ(want[i], got[i]) << c.mask << " field " << i;
        EXPECT_EQ(0, m.bFiller);
    }
}

TEST_F(Numbers, MaskScanOfNullZeroesAndReturnsNull)
{
    HNumMask m;
    memset(&m, 0x55, sizeof m);
    EXPECT_EQ(nullptr, HNumMaskParse(nullptr, 0, 0, &m));
    HNumMask zero = {};
    EXPECT_EQ(0, memcmp(&zero, &m, sizeof m));
}

TEST_F(Numbers, MaskScanCountsSaturateInTheirBytes)
{
    std::string mask(300, '#');
    HNumMask m;
    HNumMaskParse(mask.c_str(), 0, 0, &m);
    EXPECT_EQ(255, m.intSlots);
    EXPECT_EQ(127, m.intMax);
}

// ---- Formatting ----

struct FormatCase {
    double number;
    const char* mask;
    int size;
    BOOL editing;
    const char* text;
    int result;
};

const FormatCase kFormats[] = {
    {1234.5, nullptr, 64, 0, "1234.5", 6},
    {0, nullptr, 64, 0, "0", 1},
    {-2, nullptr, 64, 0, "-2", 2},
    {1000, "", 64, 0, "1000", 4},                  // no grouping by default
    {0.1, nullptr, 80, 0, "0.1000000000000000055511151231257827021181583404541015625", 57},
    {1e20, nullptr, 64, 0, "100000000000000000000", 21},
    {1234.5, "#,##0.00", 64, 0, "1,234.50", 8},
    {0.5, "#,##0.00", 64, 0, "0.50", 4},
    {1234567, "#,##0.00", 64, 0, "1,234,567.00", 12},
    {-1234.5, "#,##0.00", 64, 0, "-1,234.50", 9},
    {999.995, "#,##0.00", 64, 0, "1,000.00", 8},   // binary value lies above the tie
    {9.995, "0.00", 64, 0, "9.99", 4},             // and this one below it
    {0.005, "#,##0.00", 64, 0, "0.01", 4},
    {0.125, "0.00", 64, 0, "0.13", 4},             // exact tie
    {2.5, "0", 64, 0, "3", 1},
    {1000000, "#,##0", 64, 0, "1,000,000", 9},
    {100, "#,##0", 64, 0, "100", 3},
    {5, "0,000", 64, 0, "0,005", 5},               // required zeros are grouped too
    {-1.5, "0.00;(0.00)", 64, 0, "(1.50)", 6},
    {1.5, "0.00;(0.00)", 64, 0, "1.50", 4},
    {-1.5, "0.00;(0.00)", 64, 1, "-1.50", 4},      // editing: a plain minus, the point uncounted
    {12345, "##", 64, 0, "12345", 5},              // no mask cuts a number
    {12345, nullptr, 4, 0, "###", 0},
    {1234567, "#,##0.00", 12, 0, "###########", 0},
    {1234567, "#,##0.00", 13, 0, "1,234,567.00", 12},
    {1234.5, "$#,##0.00", 64, 1, "1234.50", 6},
    {1234.5, "$#,##0.00", 64, 0, "$1,234.50", 9},
    {-5, "$#,##0.00", 64, 0, "-$5.00", 6},         // the sign goes left of the literals
    {12, "0000", 64, 0, "0012", 4},
    {12, "0000", 64, 1, "12", 2},
    {0, "0000", 64, 1, "0", 1},
    {5551234567.0, "(###) ###-####", 64, 0, "(555) 123-4567", 14},
    {1.5, "0.00 kg", 64, 0, "1.50 kg", 7},
    {5, "#.## kg", 64, 0, "5. kg", 5},             // the point stays with other literals
    {5, "#.##", 64, 0, "5", 1},                    // a bare point is not shown
    {0, "#.##", 64, 0, "", 0},
    {-0.001, "0.00", 64, 0, "-0.00", 5},
    {1234.5, "#,##0.00", 64, 1, "1234.50", 6},
    {1.5, "0.00", 4, 1, "###", 0},                 // the written point needs its byte
    {1.5, "0.00", 5, 1, "1.50", 3},
    {7, "[blue]#0.0", 64, 0, "7.0", 3},
    {-7, "#0;[red]#0-", 64, 0, "7-", 2},
    {123.5, "#.*", 64, 0, "123.5", 5},
    {0.05, "#.##", 64, 0, ".05", 3},
    {NAN, "0.00", 6, 0, "#####", 0},
    {INFINITY, nullptr, 3, 0, "##", 0},
};

TEST_F(Numbers, FormatLaysDigitsIntoTheMask)
{
    for (const FormatCase& c : kFormats) {
        char text[128];
        memset(text, '?', sizeof text);
        int n = HFormatDouble(c.number, c.mask, text, c.size, c.editing);
        EXPECT_STREQ(c.text, text) << c.number << " '" << (c.mask ? c.mask : "(null)") << "' editing " << c.editing;
        EXPECT_EQ(c.result, n) << c.number << " '" << (c.mask ? c.mask : "(null)") << "'";
        EXPECT_EQ('?', text[c.size]) << "wrote past size for " << c.number;
    }
}

TEST_F(Numbers, FormatFollowsTheLocaleSeparators)
{
    g_cDecimalSep = ',';
    g_cThousandSep = '.';
    char text[32];
    EXPECT_EQ(8, HFormatDouble(1234.5, "#,##0.00", text, sizeof text, FALSE));
    EXPECT_STREQ("1.234,50", text);
    g_cThousandSep = ' ';
    EXPECT_EQ(13, HFormatDouble(-1234567, "#,##0.00", text, sizeof text, FALSE));
    EXPECT_STREQ("-1 234 567,00", text);
}

TEST_F(Numbers, FormatRefusesASmallOrMissingBuffer)
{
    char text[4] = "abc";
    EXPECT_EQ(0, HFormatDouble(1, nullptr, text, 1, FALSE));
    EXPECT_STREQ("abc", text);
    EXPECT_EQ(0, HFormatDouble(1, nullptr, nullptr, 10, FALSE));
    EXPECT_EQ(1, HFormatDouble(1, nullptr, text, 2, FALSE));
    EXPECT_STREQ("1", text);
}

TEST_F(Numbers, FormatOfTheLargestDoubleFitsOrHashes)
{
    char text[400];
    EXPECT_EQ(309, HFormatDouble(1.7976931348623157e308, "0", text, sizeof text, FALSE));
    EXPECT_EQ(kDblMax, text);
    EXPECT_EQ(0, HFormatDouble(1.7976931348623157e308, "#,##0", text, 200, FALSE));
    EXPECT_EQ(std::string(199, '#'), text);
}

TEST_F(Numbers, FormatOfAHugeMaskStaysInsideTheBuffer)
{
    std::string mask = std::string(400, '0') + "." + std::string(300, '0');
    char text[64];
    EXPECT_EQ(0, HFormatDouble(1.5, mask.c_str(), text, sizeof text, FALSE));
    EXPECT_EQ(std::string(63, '#'), text);
    std::string big(1000, 0);
    int n = HFormatDouble(1.5, mask.c_str(), &big[0], (int)big.size(), FALSE);
    EXPECT_EQ(701, n);
    EXPECT_EQ(std::string(399, '0') + "1.5" + std::string(299, '0'), big.c_str());
}

} // namespace
