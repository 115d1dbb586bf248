// FormatData and ParseData for every class, the booleans, masked text, and the
// validator of ParseData.
#include "typed/format.h"
#include "typed/typed_internal.h"
#include "seam.h"
#include "testseam.h"
#include <gtest/gtest.h>
#include <stdint.h>
#include <string.h>
#include <string>
#ifndef _WIN32
#include "seam_native.h"
#endif

namespace {

// A known locale for every test, and the old one back afterwards.
class Format : public ::testing::Test {
protected:
    char decimal_ = 0, thousand_ = 0, dateSep_ = 0, timeSep_ = 0;
    char dateFormat_[16] = {}, timeFormat_[16] = {};
    char am_[4] = {}, pm_[4] = {}, currency_[5] = {};
    int leadingZero_ = 0;
    void SetUp() override
    {
        memcpy(am_, g_sz1159, sizeof am_);
        memcpy(pm_, g_sz2359, sizeof pm_);
        memcpy(currency_, g_szCurrency, sizeof currency_);
        leadingZero_ = g_nTLZero;
        decimal_ = g_cDecimalSep;
        thousand_ = g_cThousandSep;
        dateSep_ = g_cDateSep;
        timeSep_ = g_cTimeSep;
        memcpy(dateFormat_, g_szDateFormat, sizeof dateFormat_);
        memcpy(timeFormat_, g_szTimeFormat, sizeof timeFormat_);
        ASSERT_TRUE(SetDecimalSep('.'));
        ASSERT_TRUE(SetThousandsSep(','));
        ASSERT_TRUE(SetDateSep('/'));
        ASSERT_TRUE(SetTimeSep(':'));
        ASSERT_TRUE(SetDefDateFormat("mm/dd/yyyy"));
        ASSERT_TRUE(SetDefTimeFormat("hh:mm:ss"));
    }
    void TearDown() override
    {
        g_cDecimalSep = decimal_;
        g_cThousandSep = thousand_;
        g_cDateSep = dateSep_;
        g_cTimeSep = timeSep_;
        memcpy(g_szDateFormat, dateFormat_, sizeof dateFormat_);
        memcpy(g_szTimeFormat, timeFormat_, sizeof timeFormat_);
        memcpy(g_sz1159, am_, sizeof am_);
        memcpy(g_sz2359, pm_, sizeof pm_);
        memcpy(g_szCurrency, currency_, sizeof currency_);
        g_nTLZero = leadingZero_;
    }
};

// Stored values, in the layouts of their types.
const uint8_t kByte200 = 200;
const int8_t kChar = -5;
const int16_t kShort = -300;
const uint16_t kWord = 65535;
const int32_t kInt = -1234567;
const int32_t kLong = 1234;
const uint32_t kULong = 4294967295u;
const uint32_t kDWord = 0;
const float kFloat = 1.5f;
const double kDouble = 1234.5;
const double kNegDouble = -1.5;
const uint32_t kMoney[2] = {1, 2};
const uint32_t kTrue32 = 7, kFalse32 = 0;
const uint16_t kTrue16 = 0x100;
const uint8_t kTrue8 = 1;
const char kCharX[] = "x";
const char kCharNul[] = "";
const char kDigits[] = "12";
const char kHello[] = "hello";
const int32_t kYmd = 20240315;
const uint16_t kHms[3] = {13, 5, 9};
const HDateTime kDateTime = {2024, 3, 15, 0, 0, 0, 0, 0};
const HDateTime kDateTimeNoon = {2024, 3, 15, 12, 30, 0, 0, 0};

struct FormatCase {
    const void* value;
    char cls, type;
    const char* mask;
    int size;
    BOOL editing;
    const char* text;
    int result;
    BOOL negative;
};

const FormatCase kFormats[] = {
    // every number storage type
    {&kByte200, 'n', 'b', nullptr, 32, 0, "200", 3, 0},
    {&kChar, 'n', 'h', nullptr, 32, 0, "-5", 2, 1},
    {&kShort, 'n', 's', "#,##0", 32, 0, "-300", 4, 1},
    {&kWord, 'n', 'w', "#,##0", 32, 0, "65,535", 6, 0},
    {&kInt, 'n', 'i', "#,##0.00", 32, 0, "-1,234,567.00", 13, 1},
    {&kLong, 'n', 'l', "0000", 32, 0, "1234", 4, 0},
    {&kULong, 'n', 'u', "#,##0", 32, 0, "4,294,967,295", 13, 0},
    {&kDWord, 'n', 'W', "#,##0.00", 32, 0, "0.00", 4, 0},
    {&kFloat, 'n', 'f', "0.00", 32, 0, "1.50", 4, 0},
    {&kDouble, 'n', 'd', "#,##0.00", 32, 0, "1,234.50", 8, 0},
    {&kDouble, 'c', 'd', "$#,##0.00", 32, 0, "$1,234.50", 9, 0},   // currency formats as n
    {&kDouble, 'c', 'd', "$#,##0.00", 32, 1, "1234.50", 6, 0},
    {&kNegDouble, 'z', 'd', "0.00;(0.00)", 32, 0, "(1.50)", 6, 1},
    {&kNegDouble, 'n', 'd', "0.00;(0.00)", 32, 1, "-1.50", 4, 1},
    {&kDouble, 'n', 'd', "#,##0.00", 8, 0, "#######", 0, 0},      // too wide
    {&kDouble, 'n', 'x', "0", 32, 0, "0", 1, 0},                  // unknown type reads as 0
    // booleans
    {&kTrue32, 'b', 'W', nullptr, 32, 0, "TRUE", 4, 0},
    {&kFalse32, 'b', 'l', nullptr, 32, 0, "FALSE", 5, 1},          // false sets negative
    {&kTrue16, 'b', 's', "Yes;No", 32, 0, "Yes", 3, 0},
    {&kTrue16, 'b', 'b', "Yes;No", 32, 0, "No", 2, 1},             // the low byte is 0
    {&kTrue8, 'b', 'h', "On", 32, 0, "On", 2, 0},
    {&kFalse32, 'b', 'u', "On", 32, 0, "On", 2, 1},                // one word for both
    {&kTrue32, 'b', 'f', nullptr, 32, 0, "FALSE", 5, 1},           // no boolean type: false
    {&kFalse32, 'b', 'W', nullptr, 4, 0, "FAL", 3, 1},             // cut to the size
    {&kTrue32, 'b', 'W', ";", 32, 0, "", 0, 0},
    // one character, masked text, strings
    {kCharX, 'h', 'h', nullptr, 32, 0, "x", 1, 0},
    {kCharNul, 'h', 'h', nullptr, 32, 0, "", 1, 0},                // a 0 byte still counts 1
    {kDigits, 'm', 's', "##-##", 32, 0, "12-__", 5, 0},
    {kDigits, 'm', 's', nullptr, 32, 0, "12", 2, 0},
    {kHello, 's', 's', nullptr, 32, 0, "hello", 5, 0},
    {kHello, 's', 's', nullptr, 4, 0, "hel", 3, 0},
    // dates go to the date code with the class's fields
    {&kYmd, 'd', 'l', "dd/mm/yyyy", 32, 0, "15/03/2024", 10, 0},
    {&kYmd, 'd', 'l', "dd/mm/yyyy", 32, 1, "03/15/2024", 10, 0},  // editing: the locale's order
    {kHms, 't', 't', "hh:mm:ss", 32, 0, "13:05:09", 8, 0},
    {&kDateTime, 'a', 'D', nullptr, 32, 0, "03/15/2024", 10, 0},  // midnight shows no time
    {&kDateTimeNoon, 'a', 'D', nullptr, 32, 0, "03/15/2024 12:30:00", 19, 0},
    {&kDateTimeNoon, 'k', 'D', "yyyy-mm-dd hh:mm", 32, 0, "2024-03-15 12:30", 16, 0},
    {&kYmd, 'd', 'x', "dd/mm/yyyy", 32, 0, "?", 0, 0},             // no such date type
};

TEST_F(Format, FormatDataDispatchesOnTheClass)
{
    for (const FormatCase& c : kFormats) {
        char text[64];
        memset(text, '?', sizeof text);
        text[1] = 0;
        BOOL negative = 99;
        int n = FormatData(c.value, c.cls, c.type, c.mask, text, c.size, &negative, c.editing);
        EXPECT_STREQ(c.text, text) << c.cls << c.type << " '" << (c.mask ? c.mask : "(null)") << "'";
        EXPECT_EQ(c.result, n) << c.cls << c.type << " '" << (c.mask ? c.mask : "(null)") << "'";
        EXPECT_EQ(c.negative, negative) << c.cls << c.type;
        EXPECT_EQ('?', text[c.size]) << "wrote past size: " << c.cls << c.type;
    }
}

TEST_F(Format, FormatDataOfSizeOneWritesNothingForAnyClass)
{
    for (char cls : {'a', 'b', 'c', 'd', 'h', 'k', 'm', 'n', 's', 't', 'z'}) {
        char text[4] = "abc";
        BOOL negative = 99;
        EXPECT_EQ(0, FormatData(kHello, cls, 's', nullptr, text, 1, &negative, FALSE)) << cls;
        EXPECT_STREQ("abc", text) << cls;
        EXPECT_EQ(99, negative) << cls;
    }
}

TEST_F(Format, FormatDataRefusesNullArgumentsAndUnknownClasses)
{
    char text[8] = "abc";
    EXPECT_EQ(0, FormatData(nullptr, 'n', 'd', nullptr, text, sizeof text, nullptr, FALSE));
    EXPECT_EQ(0, FormatData(&kDouble, 'n', 'd', nullptr, nullptr, 8, nullptr, FALSE));
    EXPECT_STREQ("abc", text);
    BOOL negative = 99;
    EXPECT_EQ(0, FormatData(&kDouble, 'q', 'd', nullptr, text, sizeof text, &negative, FALSE));
    EXPECT_EQ(0, negative); // cleared before the class is looked at
    EXPECT_EQ(4, FormatData(&kDouble, 'n', 'd', "0", text, sizeof text, nullptr, FALSE));
}

TEST_F(Format, MoneyFormatsToNothingAndLeavesTheText)
{
    char text[8] = "abc";
    BOOL negative = 99;
    EXPECT_EQ(0, FormatData(kMoney, 'n', 'M', nullptr, text, sizeof text, &negative, FALSE));
    EXPECT_STREQ("abc", text);
    EXPECT_EQ(0, negative);
}

TEST_F(Format, DisplaysFollowTheLocaleSetters)
{
    ASSERT_TRUE(SetDecimalSep(','));
    ASSERT_TRUE(SetThousandsSep(' '));
    char text[32];
    EXPECT_EQ(10, FormatData(&kInt, 'n', 'i', "#,##0", text, sizeof text, nullptr, FALSE));
    EXPECT_STREQ("-1 234 567", text);
    EXPECT_EQ(8, FormatData(&kDouble, 'n', 'd', "#,##0.00", text, sizeof text, nullptr, FALSE));
    EXPECT_STREQ("1 234,50", text);
    double v = 0;
    EXPECT_EQ(0, ParseData(nullptr, &v, 'n', 'd', nullptr, "1 234,50", nullptr));
    EXPECT_EQ(1234.5, v);
    ASSERT_TRUE(SetDateSep('.'));
    EXPECT_EQ(10, FormatData(&kYmd, 'd', 'l', "dd/mm/yyyy", text, sizeof text, nullptr, FALSE));
    EXPECT_STREQ("15.03.2024", text);
}

TEST_F(Format, DisplaysFollowTheProfilesIntlSection)
{
    const char* keys[] = {"sDecimal", "sThousand", "sDate", "sShortDate"};
    const char* values[] = {",", ".", "-", "dd-mm-yyyy"};
    std::string saved[4];
    bool present[4];
    for (int i = 0; i < 4; ++i) {
        char value[32];
        SeamProfileString("Intl", keys[i], "\x01", value, sizeof value);
        present[i] = strcmp(value, "\x01") != 0;
        saved[i] = value;
        TestSetProfile("Intl", keys[i], values[i]);
    }
    GetIntlSettings();
    char text[32];
    EXPECT_EQ(8, FormatData(&kDouble, 'n', 'd', "#,##0.00", text, sizeof text, nullptr, FALSE));
    EXPECT_STREQ("1.234,50", text);
    EXPECT_EQ(10, FormatData(&kYmd, 'd', 'l', nullptr, text, sizeof text, nullptr, FALSE));
    EXPECT_STREQ("15-03-2024", text);
    double v = 0;
    EXPECT_EQ(0, ParseData(nullptr, &v, 'n', 'd', nullptr, "-1.234,5", nullptr));
    EXPECT_EQ(-1234.5, v);
    for (int i = 0; i < 4; ++i)
        TestSetProfile("Intl", keys[i], present[i] ? saved[i].c_str() : nullptr);
    // TearDown puts the library's own values back.
}

// ---- ParseData ----

const struct {
    const char* text;
    char cls, type;
    const char* mask;
    double number; // read back with NumToDouble
    int result;
} kNumberParses[] = {
    {"1,234.50", 'n', 'd', "#,##0.00", 1234.5, 0},
    {"$1,234.50", 'c', 'd', nullptr, 1234.5, 0},
    {"(1.50)", 'n', 'd', "0.00;(0.00)", 1.5, 0},  // the sign goes with the parentheses
    {"-1.50", 'z', 'd', "0.00", -1.5, 0},
    {"300", 'n', 'b', nullptr, 44, 0},            // low bits of a narrow type
    {"-1", 'n', 'u', nullptr, 4294967295.0, 0},
    {"-129", 'n', 'h', nullptr, 127, 0},
    {"70000", 'n', 'w', nullptr, 4464, 0},
    {"-70000", 'n', 's', nullptr, -4464, 0},
    {"12.9", 'n', 'i', nullptr, 12, 0},           // toward zero
    {"99999999999", 'n', 'l', nullptr, 0, 0},     // out of range: 0, no error
    {"abc", 'n', 'W', nullptr, 0, 0},             // unreadable: 0, no error
    {"2.5", 'n', 'f', nullptr, 2.5, 0},
    {"5", 'n', 'x', nullptr, -1, 1},              // a type outside the family
};

TEST_F(Format, ParseDataOfNumbersStripsAndStores)
{
    for (const auto& c : kNumberParses) {
        unsigned char value[9];
        memset(value, 0xEE, sizeof value);
        EXPECT_EQ(c.result, ParseData(nullptr, value, c.cls, c.type, c.mask, c.text, nullptr)) << c.text;
        if (c.result == 0)
            EXPECT_EQ(c.number, NumToDouble(value, c.type)) << c.text;
        else
            EXPECT_EQ(0xEE, value[0]) << c.text;
    }
}

TEST_F(Format, ParseDataOfMoneyDoesNothing)
{
    uint32_t value[2] = {5, 6};
    EXPECT_EQ(0, ParseData(nullptr, value, 'n', 'M', nullptr, "123", nullptr));
    EXPECT_EQ(5u, value[0]);
    EXPECT_EQ(6u, value[1]);
}

const struct {
    const char* mask;
    const char* text;
    BOOL truth;
} kBoolParses[] = {
    {"TRUE;FALSE", "TR", TRUE},     // a prefix of the true-text
    {"TRUE;FALSE", "TRUE", TRUE},
    {"TRUE;FALSE", "TRUEST", TRUE}, // as far as the shorter goes
    {"TRUE;FALSE", "true", FALSE},  // case counts
    {"TRUE;FALSE", "FALSE", FALSE},
    {"TRUE;FALSE", "", TRUE},
    {nullptr, "T", TRUE},
    {"", "x", FALSE},
    {"Yes", "anything", TRUE},      // one word: every text is true
    {"Yes", "", TRUE},
    {";No", "No", TRUE},            // an empty true-text agrees with everything
};

TEST_F(Format, BooleanTextsParseByTheTrueTextsPrefix)
{
    for (const auto& c : kBoolParses) {
        EXPECT_EQ(c.truth, HBoolParse(c.mask, c.text)) << c.mask << " '" << c.text << "'";
        uint32_t value = 0xEEEEEEEE;
        EXPECT_EQ(0, ParseData(nullptr, &value, 'b', 'W', c.mask, c.text, nullptr));
        EXPECT_EQ(c.truth ? 1u : 0u, value) << c.text;
    }
    EXPECT_FALSE(HBoolParse("TRUE;FALSE", nullptr));
}

TEST_F(Format, BooleanStoreWritesTheTypesWidthOnly)
{
    const struct {
        char type;
        int width;
    } widths[] = {{'W', 4}, {'i', 4}, {'l', 4}, {'u', 4}, {'b', 1}, {'h', 1}, {'s', 2}, {'w', 2}};
    for (auto w : widths) {
        unsigned char value[6];
        memset(value, 0xEE, sizeof value);
        EXPECT_TRUE(HBoolStore(w.type, value, 42));
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(i == 0 ? 1 : i < w.width ? 0 : 0xEE, value[i]) << w.type << " byte " << i;
        EXPECT_TRUE(HBoolIsTrue(w.type, value));
    }
    unsigned char value[4] = {9, 9, 9, 9};
    EXPECT_FALSE(HBoolStore('d', value, TRUE));
    EXPECT_EQ(9, value[0]);
    EXPECT_FALSE(HBoolIsTrue('d', value));
    EXPECT_FALSE(HBoolIsTrue('W', nullptr));
}

TEST_F(Format, BooleanFormatTakesTheWordOfTheState)
{
    char text[8];
    EXPECT_EQ(2, HBoolFormat(FALSE, "Yes;No", text, sizeof text));
    EXPECT_STREQ("No", text);
    EXPECT_EQ(3, HBoolFormat(TRUE, "Yes;No", text, sizeof text));
    EXPECT_STREQ("Yes", text);
    EXPECT_EQ(0, HBoolFormat(TRUE, nullptr, nullptr, 8));
    EXPECT_EQ(0, HBoolFormat(TRUE, nullptr, text, 0));
    EXPECT_EQ(0, HBoolFormat(TRUE, nullptr, text, -1));
    EXPECT_EQ(0, HBoolFormat(TRUE, nullptr, text, 1));
    EXPECT_STREQ("", text);
}

TEST_F(Format, ParseDataOfTextClasses)
{
    char value[16];
    memset(value, '?', sizeof value);
    EXPECT_EQ(0, ParseData(nullptr, value, 'h', 'h', nullptr, "xyz", nullptr));
    EXPECT_EQ('x', value[0]);
    EXPECT_EQ('?', value[1]);
    EXPECT_EQ(0, ParseData(nullptr, value, 'm', 's', "##-##", "12-34", nullptr));
    EXPECT_STREQ("1234", value);
    EXPECT_EQ(0, ParseData(nullptr, value, 'm', 's', "##-##", "1x-34", nullptr));
    EXPECT_STREQ("1", value);
    EXPECT_EQ(0, ParseData(nullptr, value, 's', 's', "ignored", "hello world", nullptr));
    EXPECT_STREQ("hello world", value);
    EXPECT_EQ(1, ParseData(nullptr, value, 'q', 's', nullptr, "x", nullptr));
    EXPECT_STREQ("hello world", value);
}

TEST_F(Format, ParseDataWithACapacityCutsTextClasses)
{
    char value[8];
    memset(value, '?', sizeof value);
    EXPECT_EQ(0, HParseDataN(nullptr, value, 4, 's', 's', nullptr, "hello", nullptr));
    EXPECT_STREQ("hel", value);
    EXPECT_EQ('?', value[4]);
    EXPECT_EQ(0, HParseDataN(nullptr, value, 3, 'm', 's', "##-##", "12-34", nullptr));
    EXPECT_STREQ("12", value);
    EXPECT_EQ('?', value[4]);
}

TEST_F(Format, ParseDataRefusesNullValueOrText)
{
    char value[4] = "abc";
    EXPECT_EQ(0, ParseData(nullptr, nullptr, 'n', 'd', nullptr, "1", nullptr));
    EXPECT_EQ(0, ParseData(nullptr, value, 's', 's', nullptr, nullptr, nullptr));
    EXPECT_STREQ("abc", value);
}

// Date classes return 1 for a good text as well as for a repaired one. The
// text is read in the locale's order, as editing shows it ("mm/dd/yyyy" here).
const struct {
    const char* text;
    char cls, type;
    const char* mask;
    int32_t want;
    int result;
} kDateParses[] = {
    {"03/15/2024", 'd', 'l', "dd/mm/yyyy", 20240315, 1},
    {"02/31/2023", 'd', 'l', "dd/mm/yyyy", 20230228, 1},  // repaired to the month's end
    {"02/29/2024", 'd', 'l', "dd/mm/yyyy", 20240229, 1},
    {"02/29/1900", 'd', 'l', nullptr, 19000228, 1},       // 1900 is common
    {"03/15/99", 'd', 'l', "dd/mm/yy", 19990315, 1},      // two-digit year repaired
    {"03/15/2024", 'd', 'l', nullptr, 20240315, 1},        // the default mask
    {"13/15/2024", 'd', 'l', nullptr, 20241215, 1},        // month repaired to 12
    {"03/15/2024", 'd', 'x', "dd/mm/yyyy", -1, 0},         // no such type: 0, the text was good
    {"13/15/2024", 'd', 'x', "dd/mm/yyyy", -1, 1},         // a failed check still reports
};

TEST_F(Format, ParseDataOfDatesChecksRepairsAndReportsOne)
{
    for (const auto& c : kDateParses) {
        int32_t value = -1;
        EXPECT_EQ(c.result, ParseData(nullptr, &value, c.cls, c.type, c.mask, c.text, nullptr)) << c.text;
        EXPECT_EQ(c.want, value) << c.text;
    }
}

TEST_F(Format, ParseDataReadsDatesInTheLocalesOrder)
{
    ASSERT_TRUE(SetDefDateFormat("dd/mm/yyyy"));
    int32_t value = 0;
    EXPECT_EQ(1, ParseData(nullptr, &value, 'd', 'l', "mm/dd/yyyy", "03/04/2024", nullptr));
    EXPECT_EQ(20240403, value);
    char text[16];
    EXPECT_EQ(10, FormatData(&value, 'd', 'l', "mm/dd/yyyy", text, sizeof text, nullptr, TRUE));
    EXPECT_STREQ("03/04/2024", text); // what the user edits reads back the same
}

TEST_F(Format, ParseDataOfTimesRepairsEveryField)
{
    uint16_t hms[3] = {0, 0, 0};
    EXPECT_EQ(1, ParseData(nullptr, hms, 't', 't', "hh:mm:ss", "25:61:70", nullptr));
    EXPECT_EQ(23, hms[0]);
    EXPECT_EQ(0, hms[1]); // a bad minute takes the month, which a time does not have
    EXPECT_EQ(59, hms[2]);
    EXPECT_EQ(1, ParseData(nullptr, hms, 't', 't', "hh:mm", "10:20", nullptr));
    EXPECT_EQ(10, hms[0]);
    EXPECT_EQ(20, hms[1]);
}

int g_validatorCalls;
HWND g_validatorWindow;
LONG g_validatorId;
int g_validatorAnswer;

int CALLBACK RecordingValidator(HWND hWnd, LONG id)
{
    ++g_validatorCalls;
    g_validatorWindow = hWnd;
    g_validatorId = id;
    return g_validatorAnswer;
}

TEST_F(Format, AValidatorReplacesTheErrorWordAndTheDateChecks)
{
    g_validatorCalls = 0;
    g_validatorAnswer = 0;
    uint16_t hms[3];
    // No check runs: the bad fields are stored as read, and the validator decides.
    EXPECT_EQ(0, ParseData(nullptr, hms, 't', 't', "hh:mm:ss", "25:61:70", RecordingValidator));
    EXPECT_EQ(25, hms[0]);
    EXPECT_EQ(61, hms[1]);
    EXPECT_EQ(1, g_validatorCalls);
    g_validatorAnswer = 7;
    double v = 0;
    EXPECT_EQ(7, ParseData(nullptr, &v, 'n', 'd', nullptr, "2.5", RecordingValidator));
    EXPECT_EQ(2.5, v); // stored before the validator was asked
    EXPECT_EQ(7, ParseData(nullptr, &v, 'q', 'd', nullptr, "2.5", RecordingValidator));
    EXPECT_EQ(3, g_validatorCalls);
}

#ifndef _WIN32
HWND g_focused;
int g_focusCalls;
HWND RecordFocus(HWND w)
{
    ++g_focusCalls;
    g_focused = w;
    return nullptr;
}
LONG WindowId(HWND, int index) { return index == -12 ? 4711 : 0; }

TEST_F(Format, ARefusingValidatorReturnsTheFocusToTheControl)
{
    SeamNativeSetHooks(nullptr, RecordFocus, WindowId);
    HWND control = (HWND)(uintptr_t)0x1234;
    g_focusCalls = 0;
    g_validatorAnswer = 3;
    double v = 0;
    EXPECT_EQ(3, ParseData(control, &v, 'n', 'd', nullptr, "1", RecordingValidator));
    EXPECT_EQ(control, g_validatorWindow);
    EXPECT_EQ(4711, g_validatorId);
    EXPECT_EQ(1, g_focusCalls);
    EXPECT_EQ(control, g_focused);
    g_validatorAnswer = 0;
    EXPECT_EQ(0, ParseData(control, &v, 'n', 'd', nullptr, "1", RecordingValidator));
    EXPECT_EQ(1, g_focusCalls); // an accepted value leaves the focus alone
    SeamNativeSetHooks(nullptr, nullptr, nullptr);
}
#endif

// ---- Masked text ----

struct MaskApplyCase {
    const char* source;
    const char* mask;
    int size;
    BOOL strip;
    const char* target;
    int result;
};

const MaskApplyCase kMaskApplies[] = {
    {"12", "##-##", 32, 0, "12-__", 5},
    {"1234", "##-##", 32, 0, "12-34", 5},
    {"12-34", "##-##", 32, 0, "12-34", 5},          // an equal literal is consumed
    {"a1b2", "##-##", 32, 0, "12-__", 5},           // misfits are skipped
    {"a1b2", "@@@", 32, 0, "ab ", 3},
    {"x.y", "!!", 32, 0, ".-", 2},
    {"a-1", "&&&", 32, 0, "a1 ", 3},
    {"a -", "***", 32, 0, "a -", 3},
    {"12", "\\##", 32, 0, "#1", 2},                 // backslash: the next is a literal
    {"12", "[red]##", 32, 0, "12", 2},              // a colour section shows nothing
    {"12", "[red", 32, 0, "", 0},                   // an open section runs to the end
    {"12", "##\\", 32, 0, "12", 2},
    {"12345", "##-##", 4, 0, "12-", 3},             // size - 1 characters at most
    {"hello", nullptr, 4, 0, "hel", 3},
    {"hello", "", 32, 0, "hello", 5},
    {"(555) 123", "(###) ###", 32, 0, "(555) 123", 9},
    {"12-34", "##-##", 32, 1, "1234", 4},
    {"1x-34", "##-##", 32, 1, "1", 2},              // stops at a misfit, reports one more
    {"12", "##-##", 32, 1, "12__", 4},              // fill at the end of the source
    {"1234", "##-##", 32, 1, "1234", 4},            // a missing literal is no misfit
    {"12-34", "##-##", 3, 1, "12", 2},
    {"#1", "\\##", 32, 1, "1", 1},
    {"", "##", 32, 1, "__", 2},
};

TEST_F(Format, MaskApplyMergesAndStrips)
{
    for (const MaskApplyCase& c : kMaskApplies) {
        char target[40];
        memset(target, '?', sizeof target);
        int n = HMaskApply(c.source, c.mask, target, c.size, c.strip);
        EXPECT_STREQ(c.target, target) << c.source << " '" << (c.mask ? c.mask : "(null)") << "' strip " << c.strip;
        EXPECT_EQ(c.result, n) << c.source << " '" << (c.mask ? c.mask : "(null)") << "' strip " << c.strip;
        EXPECT_EQ('?', target[c.size]) << c.source;
    }
}

TEST_F(Format, MaskApplyRefusesNullsAndNoRoom)
{
    char target[4] = "abc";
    EXPECT_EQ(0, HMaskApply(nullptr, "##", target, 4, FALSE));
    EXPECT_EQ(0, HMaskApply("12", "##", nullptr, 4, FALSE));
    EXPECT_EQ(0, HMaskApply("12", "##", target, 0, FALSE));
    EXPECT_STREQ("abc", target);
    EXPECT_EQ(0, HMaskApply("12", "##", target, 1, FALSE));
    EXPECT_STREQ("", target);
}

TEST_F(Format, MaskPlaceholdersClassifyAsciiOnly)
{
    EXPECT_TRUE(HMaskFits('@', 'q'));
    EXPECT_FALSE(HMaskFits('@', '\xe9'));  // no letter above 127, in any runtime
    EXPECT_FALSE(HMaskFits('*', '\xe9'));
    EXPECT_TRUE(HMaskFits('*', ' '));
    EXPECT_FALSE(HMaskFits('&', ' '));
    EXPECT_TRUE(HMaskFits('!', '~'));
    EXPECT_FALSE(HMaskFits('!', '\t'));
    EXPECT_FALSE(HMaskFits('x', 'x'));
    EXPECT_EQ('_', HMaskFill('#'));
    EXPECT_EQ('-', HMaskFill('!'));
    EXPECT_EQ(' ', HMaskFill('@'));
}

} // namespace
