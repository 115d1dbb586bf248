// Numbers: exact decimal digits, the reading of display texts, storage types,
// number masks and their layout.
#include "typed/numbers.h"
#include "typedlocale.h"
#include <algorithm>
#include <math.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>

namespace {

using Numbers = TypedLocale;

#define DBL_MAX_DIGITS                                                                                        \
    "1797693134862315708145274237317043567980705675258449965989174768031572607800285387605895586327668781" \
    "7154045895351438246423432132688946418276846754670353751698604991057655128207624549009038932894407586" \
    "8508455133942304583236903222948165808559332123348274797826204144723168738177180919299881250404026184" \
    "124858368"

const struct { double value; int places; const char* digits; int decpt, sign; } kDigits[] = {
    {0.125, 2, "13", 0, 0}, // exact tie: away from zero
    {0.5, 0, "1", 1, 0}, {-2.5, 0, "3", 1, 1},                                                   // the sign apart
    {9.5, 0, "10", 2, 0},                                                                        // a carry adds a digit
    {1234.5, 2, "123450", 4, 0}, {0.05, 2, "5", -1, 0}, // zeros behind the point
    {0.015, 2, "1", -1, 0}, // binary 0.01499..., no tie
    {9.995, 2, "999", 1, 0},                                                                     // binary 9.99499...
    {0.005, 2, "1", -1, 0},                                                                      // binary 0.00500...01
    {1e-10, 12, "100", -9, 0}, {0.0, 2, "", -2, 0}, {-0.0, 2, "", -2, 1}, {0.001, 2, "", -2, 0}, // rounds to nothing
    {5e-324, 64, "", -64, 0}, {0.1, 20, "10000000000000000555", 0, 0},
    {0.1, 64, "1000000000000000055511151231257827021181583404541015625000000000", 0, 0},
    {1e23, 0, "99999999999999991611392", 23, 0},
    {18446744073709551616.0, 0, "18446744073709551616", 20, 0},                        // 2^64: past the fast path
    {9.3132257461547851562e-10, 29, "93132257461547851563", -9, 0},                    // 2^-30: a tie past 27 places
    {1.7976931348623157e308, 2, DBL_MAX_DIGITS "00", 309, 0}, {INFINITY, 2, "", 0, 0}, // no digits: -1
    {NAN, 2, "", 0, 0},
};

TEST_F(Numbers, DigitsAreThoseOfTheExactBinaryValueWithTiesAwayFromZero)
{
    for (const auto& c : kDigits) {
        char digits[kNumDigitsSize];
        int decpt = 99, sign = 99;
        int n = HNumDigits(c.value, c.places, digits, sizeof digits, &decpt, &sign);
        EXPECT_EQ(isfinite(c.value) ? (int)strlen(c.digits) : -1, n) << c.value;
        EXPECT_STREQ(c.digits, digits) << c.value << " to " << c.places;
        EXPECT_EQ(c.decpt, decpt) << c.value << " to " << c.places;
        if (isfinite(c.value))
            EXPECT_EQ(c.sign, sign) << c.value;
    }
}

#ifndef _WIN32
uint64_t Next(uint64_t& s) { return s ^= s << 13, s ^= s >> 7, s ^= s << 17; }

// glibc's printf is exact and its strtod correctly rounded; the Windows
// runtime's are neither, so these run natively only.
TEST_F(Numbers, DigitsAndReadingAgreeWithExactRuntimeRoutines)
{
    uint64_t s = 0x9E3779B97F4A7C15ull;
    static char exact[1600], text[128];
    for (int i = 0; i < 20000; ++i) {
        uint64_t bits = (Next(s) & ~(0x7FFull << 52)) | (uint64_t)(900 + (s >> 53) % 260) << 52;
        double v, got;
        memcpy(&v, &bits, sizeof v);
        int places = (int)(s % 30), decpt, sign, n = 0;
        snprintf(exact, sizeof exact, "%.1100f", fabs(v));
        const char* rest = strchr(exact, '.') + 1 + places;
        if (rest[0] != '5' || rest[1 + strspn(rest + 1, "0")]) { // not a tie, which printf takes to even
            snprintf(text, sizeof text, "%.*f", places, fabs(v));
            std::string plain = text;
            plain.erase(std::remove(plain.begin(), plain.end(), '.'), plain.end());
            char digits[kNumDigitsSize];
            HNumDigits(v, places, digits, sizeof digits, &decpt, &sign);
            ASSERT_EQ(plain.erase(0, plain.find_first_not_of('0')), digits) << v << " to " << places;
        }
        for (int j = 0, intDigits = (int)(s % 40), all = intDigits + (int)((s >> 8) % 60); j < all; ++j) {
            if (j == intDigits) text[n++] = '.';
            text[n++] = (char)('0' + (Next(s) >> 60) % 10);
        }
        text[n] = 0;
        v = strtod(text, nullptr), got = HNumReadDecimal(text);
        ASSERT_EQ(0, memcmp(&v, &got, sizeof got)) << text;
    }
}
#endif

const struct { const char* text; double value; } kReads[] = { // values compared bit for bit
    {"1234.50", 1234.5}, {"-12", -12.0}, {"1-2", 1.0}, {"--5", 0.0}, {"", 0.0}, {".", 0.0}, {"-", 0.0},
    {"-0.00", -0.0}, {"-.5", -0.5}, {"5.", 5.0}, {"1.2.3", 1.2}, {"007", 7.0},
    {"9007199254740993", 9007199254740992.0}, // halfway: to even
    {"9007199254740995", 9007199254740996.0},
    {"0.3000000000000000166533453693773481063544750213623046875", 0.30000000000000004}, // tie
    {"0.3000000000000000166533453693773481063544750213623046874", 0.3},
    {"123456789012345678901234567890", 1.2345678901234568e29}, {"12345678901234567890", 12345678901234567890.0},
    {"0.0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
     "000000000000000000000001", 1e-124},
};

TEST_F(Numbers, ReadingIsCorrectlyRoundedAndStopsAsAtofDoes)
{
    for (const auto& c : kReads) {
        double v = HNumReadDecimal(c.text);
        EXPECT_EQ(0, memcmp(&v, &c.value, sizeof v)) << "'" << c.text << "' gave " << v;
    }
}

const struct { const char* text; char decimal; double value; } kStrips[] = {
    {"$1,234.50", '.', 1234.5}, {"(1.50)", '.', 1.5}, // parentheses go, and the sign with them
    {"12-34", '.', 12.0},                             // a minus in the middle stays where it is
    {"abc", '.', 0.0}, {"1.234,5", ',', 1234.5}, {"1,5 kg", ',', 1.5},
    {"1e5", '.', 15.0}, // no exponent: the letter falls away
};

TEST_F(Numbers, StripKeepsDigitsMinusAndTheDecimalSeparator)
{
    for (const auto& c : kStrips) {
        g_cDecimalSep = c.decimal;
        EXPECT_EQ(c.value, HNumStrip(c.text)) << c.text;
    }
    EXPECT_EQ(0.0, HNumStrip(nullptr));
    std::string text(300, '1'); // no more than the work area is kept
    EXPECT_EQ(HNumReadDecimal(std::string(kTypedWorkSize - 1, '1').c_str()), HNumStrip(text.c_str()));
}

const struct { char type; double number; BOOL result; double readBack; int bytesWritten; } kStores[] = {
    {'b', 300, TRUE, 44, 1}, // low bits, no range check
    {'b', -1, TRUE, 255, 1}, {'h', 200, TRUE, -56, 1}, {'s', 40000, TRUE, -25536, 2}, {'w', 65541, TRUE, 5, 2},
    {'i', -1.9, TRUE, -1, 4},                                                       // toward zero
    {'l', -2147483648.0, TRUE, -2147483648.0, 4}, {'l', -2147483649.0, TRUE, 0, 4}, // out of range stores 0
    {'u', -1, TRUE, 4294967295.0, 4}, {'u', 4294967296.0, TRUE, 0, 4}, {'W', 123456789, TRUE, 123456789, 4},
    {'l', NAN, TRUE, 0, 4}, {'f', 1.1, TRUE, (double)1.1f, 4}, {'d', 1e300, TRUE, 1e300, 8}, // no range for floats
    {'M', 5, FALSE, 0, 0}, {'x', 5, FALSE, 0, 0},
};

TEST_F(Numbers, EveryStorageTypeStoresItsWidthAndReadsBack)
{
    for (const auto& c : kStores) {
        unsigned char buffer[10];
        memset(buffer, 0xEE, sizeof buffer);
        EXPECT_EQ(c.result, DoubleToNum(buffer + 1, c.type, c.number)) << c.type << " " << c.number;
        EXPECT_EQ(c.readBack, NumToDouble(buffer + 1, c.type)) << c.type << " " << c.number;
        EXPECT_EQ(0xEE, buffer[0]);
        EXPECT_EQ(0xEE, buffer[1 + c.bytesWritten]) << c.type;
        EXPECT_EQ(c.bytesWritten > 0, buffer[1] != 0xEE || buffer[c.bytesWritten] != 0xEE) << c.type;
    }
    EXPECT_EQ(0.0, NumToDouble(nullptr, 'd'));
    EXPECT_FALSE(DoubleToNum(nullptr, 'd', 1.0));
}

const struct {
    const char* mask;
    BOOL negative, editing;
    int start; // offset of the returned section
    int counts[12]; // sectionLength, intLength, intSlots, intZeros, intMax, intLiterals,
                    // fracLength, fracSlots, fracZeros, fracMax, fracLiterals, flags
} kMasks[] = {
    {"#,##0.00", 0, 0, 0, {8, 5, 4, 1, 4, 0, 3, 2, 2, 2, 1, HNUM_GROUP}},
    {"*0.*", 0, 0, 0, {4, 2, 2, 1, -1, 0, 2, 1, 0, -1, 1, 0}},
    {"0.00;(0.00)", 1, 0, 5, {6, 2, 1, 1, 1, 1, 4, 2, 2, 2, 2, 0}},
    {"0.00", 1, 0, 0, {4, 1, 1, 1, 1, 0, 3, 2, 2, 2, 1, HNUM_MINUS}},
    {"000", 0, 1, 0, {3, 3, 1, 1, 3, 0, 0, 0, 0, 0, 0, 0}},      // editing: one "0" pads
    {"[red]$#0", 0, 0, 0, {3, 3, 2, 1, 2, 1, 0, 0, 0, 0, 0, 0}}, // the section starts at its "["
    {"#0;[red](#0)", 1, 0, 3, {4, 4, 2, 1, 2, 2, 0, 0, 0, 0, 0, 0}},
    {"#*#", 0, 0, 0, {3, 3, 3, 0, -1, 0, 0, 0, 0, 0, 0, 0}},                           // "*" holds -1 for good
    {"0.0 kg.x", 0, 0, 0, {8, 1, 1, 1, 1, 0, 7, 1, 1, 1, 6, 0}}, {"#;", 1, 0, 2, {0}}, // an empty negative section
};

TEST_F(Numbers, MaskScanCountsTheSectionThatApplies)
{
    for (const auto& c : kMasks) {
        HNumMask m;
        memset(&m, 0x55, sizeof m);
        LPCSTR s = HNumMaskParse(c.mask, c.negative, c.editing, &m);
        EXPECT_EQ(c.start, s ? (int)(s - c.mask) : -1) << c.mask;
        int got[] = {m.sectionLength, m.intLength, m.intSlots, m.intZeros, m.intMax, m.intLiterals,
                     m.fracLength, m.fracSlots, m.fracZeros, m.fracMax, m.fracLiterals, m.flags};
        for (int i = 0; i < 12; ++i)
            EXPECT_EQ(c.counts[i], got[i]) << c.mask << " field " << i;
    }
    HNumMask m, zero = {};
    memset(&m, 0x55, sizeof m);
    EXPECT_EQ(nullptr, HNumMaskParse(nullptr, 0, 0, &m));
    EXPECT_EQ(0, memcmp(&zero, &m, sizeof m));
    HNumMaskParse(std::string(300, '#').c_str(), 0, 0, &m); // counts saturate in their bytes
    EXPECT_EQ(255, m.intSlots);
    EXPECT_EQ(127, m.intMax);
}

const struct { double number; const char* mask; int size; BOOL editing; const char* text; int result; } kFormats[] = {
    {1234.5, nullptr, 64, 0, "1234.5", 6}, {0, nullptr, 64, 0, "0", 1}, {-2, nullptr, 64, 0, "-2", 2},
    {1000, "", 64, 0, "1000", 4}, // no grouping by default
    {0.1, nullptr, 80, 0, "0.1000000000000000055511151231257827021181583404541015625", 57},
    {1234.5, "#,##0.00", 64, 0, "1,234.50", 8}, {0.5, "#,##0.00", 64, 0, "0.50", 4},
    {1234567, "#,##0.00", 64, 0, "1,234,567.00", 12},
    {999.995, "#,##0.00", 64, 0, "1,000.00", 8},                      // binary value above the tie
    {0.125, "0.00", 64, 0, "0.13", 4},                                // exact tie
    {100, "#,##0", 64, 0, "100", 3}, {5, "0,000", 64, 0, "0,005", 5}, // required zeros are grouped too
    {-1.5, "0.00;(0.00)", 64, 0, "(1.50)", 6},
    {-1.5, "0.00;(0.00)", 64, 1, "-1.50", 4}, // editing: a plain minus, the point uncounted
    {12345, "##", 64, 0, "12345", 5},         // no mask cuts a number
    {12345, nullptr, 4, 0, "###", 0}, {1234567, "#,##0.00", 12, 0, "###########", 0},
    {1234567, "#,##0.00", 13, 0, "1,234,567.00", 12}, {1234.5, "$#,##0.00", 64, 1, "1234.50", 6},
    {-5, "$#,##0.00", 64, 0, "-$5.00", 6}, // the sign goes left of the literals
    {12, "0000", 64, 0, "0012", 4}, {12, "0000", 64, 1, "12", 2},
    {5551234567.0, "(###) ###-####", 64, 0, "(555) 123-4567", 14}, {1.5, "0.00 kg", 64, 0, "1.50 kg", 7},
    {5, "#.## kg", 64, 0, "5. kg", 5},     // the point stays with other literals
    {5, "#.##", 64, 0, "5", 1},            // a bare point is not shown
    {1.5, "#0.#0 kg", 64, 0, "1.50 k", 6}, // the closing walk takes a "0" for a literal
    {0, "#.##", 64, 0, "", 0}, {0.05, "#.##", 64, 0, ".05", 3}, {-0.001, "0.00", 64, 0, "-0.00", 5},
    {1.5, "0.00", 4, 1, "###", 0}, // the written point needs its byte
    {1.5, "0.00", 5, 1, "1.50", 3}, {-7, "#0;[red]#0-", 64, 0, "7-", 2}, {123.5, "#.*", 64, 0, "123.5", 5},
    {NAN, "0.00", 6, 0, "#####", 0}, {INFINITY, nullptr, 3, 0, "##", 0}, {1, nullptr, 2, 0, "1", 1},
    {1, nullptr, 1, 0, "?", 0}, // too small to write anything
    {1.7976931348623157e308, "0", 320, 0, DBL_MAX_DIGITS, 309},
};

TEST_F(Numbers, FormatLaysDigitsIntoTheMask)
{
    for (const auto& c : kFormats) {
        char text[400];
        memset(text, '?', sizeof text);
        text[1] = 0;
        int n = HFormatDouble(c.number, c.mask, text, c.size, c.editing);
        EXPECT_STREQ(c.text, text) << c.number << " '" << (c.mask ? c.mask : "(null)") << "' editing " << c.editing;
        EXPECT_EQ(c.result, n) << c.number << " '" << (c.mask ? c.mask : "(null)") << "'";
        if (c.size > 1)
            EXPECT_EQ('?', text[c.size]) << "wrote past size for " << c.number;
    }
    EXPECT_EQ(0, HFormatDouble(1, nullptr, nullptr, 10, FALSE));
}

TEST_F(Numbers, FormatFollowsTheLocaleSeparatorsAndStaysInsideTheBufferWhateverTheMask)
{
    g_cDecimalSep = ',', g_cThousandSep = ' ';
    char text[64];
    EXPECT_EQ(13, HFormatDouble(-1234567, "#,##0.00", text, sizeof text, FALSE));
    EXPECT_STREQ("-1 234 567,00", text);
    g_cDecimalSep = '.';
    std::string mask = std::string(400, '0') + "." + std::string(300, '0'), big(1000, 0);
    EXPECT_EQ(0, HFormatDouble(1.5, mask.c_str(), text, sizeof text, FALSE));
    EXPECT_EQ(std::string(63, '#'), text);
    EXPECT_EQ(701, HFormatDouble(1.5, mask.c_str(), &big[0], (int)big.size(), FALSE));
    EXPECT_EQ(std::string(399, '0') + "1.5" + std::string(299, '0'), big.c_str());
}

} // namespace
