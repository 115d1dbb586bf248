// FormatData and ParseData for every class, the booleans, masked text, and the
// validator of ParseData.
#include "typed/format.h"
#include "typedlocale.h"
#include <stdint.h>
#ifndef _WIN32
#include "seam_native.h"
#endif

namespace {

class Format : public TypedLocale {
protected:
    void SetUp() override
    {
        TypedLocale::SetUp();
        ASSERT_TRUE(SetDefTimeFormat("hh:mm:ss"));
    }
};

// Stored values, in the layouts of their types.
const int8_t kChar = -5;
const int32_t kInt = -1234567, kYmd = 20240315;
const uint32_t kULong = 4294967295u, kTrue32 = 7, kFalse32 = 0, kMoney[2] = {1, 2};
const float kFloat = 1.5f;
const double kDouble = 1234.5, kNegDouble = -1.5;
const uint16_t kTrue16 = 0x100, kHms[3] = {13, 5, 9};
const char kDigits[] = "12", kHello[] = "hello", kNul[] = "";
const HDateTime kMidnight = {2024, 3, 15, 0, 0, 0, 0, 0}, kNoon = {2024, 3, 15, 12, 30, 0, 0, 0};

const struct {
    const void* value; char cls, type; const char* mask; int size, editing; const char* text; int result, negative;
} kFormats[] = {
    {&kChar, 'n', 'h', nullptr, 32, 0, "-5", 2, 1}, // number storage types
    {&kInt, 'n', 'i', "#,##0.00", 32, 0, "-1,234,567.00", 13, 1},
    {&kULong, 'n', 'u', "#,##0", 32, 0, "4,294,967,295", 13, 0}, {&kFloat, 'n', 'f', "0.00", 32, 0, "1.50", 4, 0},
    {&kDouble, 'c', 'd', "$#,##0.00", 32, 0, "$1,234.50", 9, 0}, // currency formats as n
    {&kNegDouble, 'z', 'd', "0.00;(0.00)", 32, 0, "(1.50)", 6, 1},
    {&kNegDouble, 'n', 'd', "0.00;(0.00)", 32, 1, "-1.50", 4, 1},
    {&kDouble, 'n', 'd', "#,##0.00", 8, 0, "#######", 0, 0}, // too wide
    {&kDouble, 'n', 'x', "0", 32, 0, "0", 1, 0},             // unknown type reads 0
    {kMoney, 'n', 'M', nullptr, 32, 0, "?", 0, 0},           // money: nothing
    {&kTrue32, 'b', 'W', nullptr, 32, 0, "TRUE", 4, 0},
    {&kFalse32, 'b', 'l', nullptr, 32, 0, "FALSE", 5, 1}, // false sets negative
    {&kTrue16, 'b', 's', "Yes;No", 32, 0, "Yes", 3, 0},
    {&kTrue16, 'b', 'b', "Yes;No", 32, 0, "No", 2, 1},   // the low byte is 0
    {&kFalse32, 'b', 'u', "On", 32, 0, "On", 2, 1},      // one word for both
    {&kTrue32, 'b', 'f', nullptr, 32, 0, "FALSE", 5, 1}, // no boolean type: false
    {&kFalse32, 'b', 'W', nullptr, 4, 0, "FAL", 3, 1},   // cut to the size
    {kHello, 'h', 'h', nullptr, 32, 0, "h", 1, 0},
    {kNul, 'h', 'h', nullptr, 32, 0, "", 1, 0}, // a 0 byte still counts 1
    {kDigits, 'm', 's', "##-##", 32, 0, "12-__", 5, 0}, {kHello, 's', 's', "ignored", 4, 0, "hel", 3, 0},
    {kHello, 'q', 's', nullptr, 32, 0, "?", 0, 0}, // no such class
    {&kYmd, 'd', 'l', "dd/mm/yyyy", 32, 0, "15/03/2024", 10, 0},
    {&kYmd, 'd', 'l', "dd/mm/yyyy", 32, 1, "03/15/2024", 10, 0}, // editing: the locale's order
    {kHms, 't', 't', "hh:mm:ss", 32, 0, "13:05:09", 8, 0},
    {&kMidnight, 'a', 'D', nullptr, 32, 0, "03/15/2024", 10, 0}, // midnight shows no time
    {&kNoon, 'a', 'D', nullptr, 32, 0, "03/15/2024 12:30:00", 19, 0},
    {&kNoon, 'k', 'D', "yyyy-mm-dd hh:mm", 32, 0, "2024-03-15 12:30", 16, 0},
    {&kYmd, 'd', 'x', "dd/mm/yyyy", 32, 0, "?", 0, 0}, // no such date type
};

TEST_F(Format, FormatDataDispatchesOnTheClass)
{
    for (const auto& c : kFormats) {
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

TEST_F(Format, FormatDataOfSizeOneOrNullArgumentsWritesNothing)
{
    for (char cls : {'a', 'b', 'c', 'd', 'h', 'k', 'm', 'n', 's', 't', 'z'}) {
        char text[4] = "abc";
        BOOL negative = 99;
        EXPECT_EQ(0, FormatData(kHello, cls, 's', nullptr, text, 1, &negative, FALSE)) << cls;
        EXPECT_EQ(0, FormatData(nullptr, cls, 's', nullptr, text, 4, &negative, FALSE)) << cls;
        EXPECT_EQ(0, FormatData(kHello, cls, 's', nullptr, nullptr, 4, &negative, FALSE)) << cls;
        EXPECT_STREQ("abc", text);
        EXPECT_EQ(99, negative);
    }
}

TEST_F(Format, DisplaysFollowTheLocaleSettersAndTheProfilesIntlSection)
{
    ASSERT_TRUE(SetDecimalSep(',') && SetThousandsSep(' ') && SetDateSep('.'));
    char text[32];
    EXPECT_EQ(10, FormatData(&kInt, 'n', 'i', "#,##0", text, sizeof text, nullptr, FALSE));
    EXPECT_STREQ("-1 234 567", text);
    EXPECT_EQ(10, FormatData(&kYmd, 'd', 'l', "dd/mm/yyyy", text, sizeof text, nullptr, FALSE));
    EXPECT_STREQ("15.03.2024", text);
    double v = 0;
    EXPECT_EQ(0, ParseData(nullptr, &v, 'n', 'd', nullptr, "1 234,50", nullptr));
    EXPECT_EQ(1234.5, v);

    SetProfile({{"sDecimal", ","}, {"sThousand", "."}, {"sDate", "-"}, {"sShortDate", "dd-mm-yyyy"}});
    EXPECT_EQ(8, FormatData(&kDouble, 'n', 'd', "#,##0.00", text, sizeof text, nullptr, FALSE));
    EXPECT_STREQ("1.234,50", text);
    EXPECT_EQ(10, FormatData(&kYmd, 'd', 'l', nullptr, text, sizeof text, nullptr, FALSE));
    EXPECT_STREQ("15-03-2024", text);
}

const struct { const char* text; char cls, type; const char* mask; double number; int result; } kNumberParses[] = {
    {"1,234.50", 'n', 'd', "#,##0.00", 1234.5, 0},
    {"(1.50)", 'c', 'd', "0.00;(0.00)", 1.5, 0}, // the sign goes with the parentheses
    {"-1.50", 'z', 'd', "0.00", -1.5, 0}, {"-1", 'n', 'u', nullptr, 4294967295.0, 0}, // stored as the type stores
    {"99999999999", 'n', 'l', nullptr, 0, 0},                                         // out of range: 0, no error
    {"abc", 'n', 'W', nullptr, 0, 0},                                                 // unreadable: 0, no error
    {"5", 'n', 'x', nullptr, 0, 1},                                                   // a type outside the family
};

TEST_F(Format, ParseDataOfNumbersStripsAndStores)
{
    for (const auto& c : kNumberParses) {
        unsigned char value[8];
        memset(value, 0, sizeof value);
        EXPECT_EQ(c.result, ParseData(nullptr, value, c.cls, c.type, c.mask, c.text, nullptr)) << c.text;
        EXPECT_EQ(c.number, NumToDouble(value, c.type)) << c.text;
    }
    uint32_t money[2] = {5, 6};
    EXPECT_EQ(0, ParseData(nullptr, money, 'n', 'M', nullptr, "123", nullptr));
    EXPECT_TRUE(money[0] == 5 && money[1] == 6);
}

const struct { const char* mask; const char* text; BOOL truth; } kBoolParses[] = {
    {"TRUE;FALSE", "TR", TRUE},     // a prefix of the true-text
    {"TRUE;FALSE", "TRUEST", TRUE}, // as far as the shorter goes
    {"TRUE;FALSE", "true", FALSE},  // case counts
    {"TRUE;FALSE", "FALSE", FALSE}, {"TRUE;FALSE", "", TRUE}, {"", "x", FALSE},
    {"Yes", "anything", TRUE}, // one word: every text is true
    {";No", "No", TRUE},       // an empty true-text agrees with everything
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
    const char* types = "WiluBbhswfdM";
    const int widths[] = {4, 4, 4, 4, 0, 1, 1, 2, 2, 0, 0, 0};
    for (int t = 0; types[t]; ++t) {
        unsigned char value[5];
        memset(value, 0xEE, sizeof value);
        EXPECT_EQ(widths[t] > 0, HBoolStore(types[t], value, 42)) << types[t];
        for (int i = 0; i < 5; ++i)
            EXPECT_EQ(i >= widths[t] ? 0xEE : i == 0, value[i]) << types[t] << " byte " << i;
        EXPECT_EQ(widths[t] > 0, HBoolIsTrue(types[t], value)) << types[t];
    }
    EXPECT_FALSE(HBoolIsTrue('W', nullptr));
    char text[4] = "abc";
    EXPECT_EQ(0, HBoolFormat(TRUE, nullptr, text, -1)); // no unbounded copy
    EXPECT_STREQ("abc", text);
}

TEST_F(Format, ParseDataOfTextClasses)
{
    char value[16];
    memset(value, '?', sizeof value);
    EXPECT_EQ(0, ParseData(nullptr, value, 'h', 'h', nullptr, "xyz", nullptr));
    EXPECT_TRUE(value[0] == 'x' && value[1] == '?');
    EXPECT_EQ(0, ParseData(nullptr, value, 'm', 's', "##-##", "1x-34", nullptr));
    EXPECT_STREQ("1", value);
    EXPECT_EQ(0, ParseData(nullptr, value, 's', 's', "ignored", "hello world", nullptr));
    EXPECT_STREQ("hello world", value);
    EXPECT_EQ(1, ParseData(nullptr, value, 'q', 's', nullptr, "x", nullptr));
    EXPECT_EQ(0, ParseData(nullptr, value, 's', 's', nullptr, nullptr, nullptr));
    EXPECT_STREQ("hello world", value);
    memset(value, '?', sizeof value);
    EXPECT_EQ(0, HParseDataN(nullptr, value, 4, 's', 's', nullptr, "hello", nullptr));
    EXPECT_TRUE(!strcmp(value, "hel") && value[4] == '?');
    EXPECT_EQ(0, HParseDataN(nullptr, value, 3, 'm', 's', "##-##", "12-34", nullptr));
    EXPECT_TRUE(!strcmp(value, "12") && value[4] == '?');
}

// Date classes return 1 for a good text as well as for a repaired one. The
// text is read in the locale's order, as editing shows it ("mm/dd/yyyy" here).
const struct { const char* text; char type; const char* mask; int32_t want; int result; } kDateParses[] = {
    {"03/15/2024", 'l', "dd/mm/yyyy", 20240315, 1},
    {"02/31/2023", 'l', "dd/mm/yyyy", 20230228, 1}, // repaired to the month's end
    {"02/29/1900", 'l', nullptr, 19000228, 1},      // 1900 is common
    {"03/15/99", 'l', "dd/mm/yy", 19990315, 1},     // two-digit year repaired
    {"13/15/2024", 'l', nullptr, 20241215, 1},      // month repaired to 12
    {"13/15/2024", 'l', "", 20241315, 1},           // an empty mask names no field: no check
    {"03/15/2024", 'x', "dd/mm/yyyy", -1, 0},       // no such type: 0, the text was good
    {"13/15/2024", 'x', "dd/mm/yyyy", -1, 1},       // a failed check still reports
};

TEST_F(Format, ParseDataOfDatesChecksRepairsAndReportsOne)
{
    for (const auto& c : kDateParses) {
        int32_t value = -1;
        EXPECT_EQ(c.result, ParseData(nullptr, &value, 'd', c.type, c.mask, c.text, nullptr)) << c.text;
        EXPECT_EQ(c.want, value) << c.text;
    }
    ASSERT_TRUE(SetDefDateFormat("dd/mm/yyyy"));
    int32_t value = 0;
    EXPECT_EQ(1, ParseData(nullptr, &value, 'd', 'l', "mm/dd/yyyy", "03/04/2024", nullptr));
    EXPECT_EQ(20240403, value);
    uint16_t hms[3] = {};
    EXPECT_EQ(1, ParseData(nullptr, hms, 't', 't', "hh:mm:ss", "25:61:70", nullptr));
    EXPECT_TRUE(hms[0] == 23 && hms[1] == 0 && hms[2] == 59); // a bad minute takes the month
}

int g_validatorCalls, g_validatorAnswer;
HWND g_validatorWindow;
LONG g_validatorId;

int CALLBACK RecordingValidator(HWND hWnd, LONG id)
{
    return ++g_validatorCalls, g_validatorWindow = hWnd, g_validatorId = id, g_validatorAnswer;
}

TEST_F(Format, AValidatorReplacesTheErrorWordAndTheDateChecks)
{
    g_validatorCalls = g_validatorAnswer = 0;
    uint16_t hms[3];
    EXPECT_EQ(0, ParseData(nullptr, hms, 't', 't', "hh:mm:ss", "25:61:70", RecordingValidator));
    EXPECT_TRUE(hms[0] == 25 && hms[1] == 61); // no check ran
    g_validatorAnswer = 7;
    double v = 0;
    EXPECT_EQ(7, ParseData(nullptr, &v, 'n', 'd', nullptr, "2.5", RecordingValidator));
    EXPECT_EQ(2.5, v); // stored before the validator was asked
    EXPECT_EQ(7, ParseData(nullptr, &v, 'q', 'd', nullptr, "2.5", RecordingValidator));
    EXPECT_EQ(3, g_validatorCalls);
}

#ifndef _WIN32
int g_focusCalls;
HWND g_focused;
HWND RecordFocus(HWND w) { return ++g_focusCalls, g_focused = w, nullptr; }
LONG WindowId(HWND, int index) { return index == -12 ? 4711 : 0; }

TEST_F(Format, ARefusingValidatorReturnsTheFocusToTheControl)
{
    SeamNativeSetHooks(nullptr, RecordFocus, WindowId);
    HWND control = (HWND)(uintptr_t)0x1234;
    g_focusCalls = 0;
    g_validatorAnswer = 3;
    double v = 0;
    EXPECT_EQ(3, ParseData(control, &v, 'n', 'd', nullptr, "1", RecordingValidator));
    EXPECT_TRUE(g_validatorWindow == control && g_validatorId == 4711);
    EXPECT_TRUE(g_focusCalls == 1 && g_focused == control);
    g_validatorAnswer = 0;
    EXPECT_EQ(0, ParseData(control, &v, 'n', 'd', nullptr, "1", RecordingValidator));
    EXPECT_EQ(1, g_focusCalls); // an accepted value leaves the focus alone
    SeamNativeSetHooks(nullptr, nullptr, nullptr);
}
#endif

const struct { const char* source, *mask; int size, strip; const char* target; int result; } kMaskApplies[] = {
    {"12", "##-##", 32, 0, "12-__", 5}, {"12-34", "##-##", 32, 0, "12-34", 5}, // an equal literal is consumed
    {"a1b2", "##-##", 32, 0, "12-__", 5},                                      // misfits are skipped
    {"a1\xe9" "b2", "@@@", 32, 0, "ab ", 3},                                   // ASCII letters only
    {"x.y", "!!", 32, 0, ".-", 2}, {"a-1", "&&&", 32, 0, "a1 ", 3}, {"a -\xe9", "****", 32, 0, "a - ", 4},
    {"12", "\\##", 32, 0, "#1", 2},     // backslash: the next is a literal
    {"12", "[red]##", 32, 0, "12", 2},  // a colour section shows nothing
    {"12", "##[red", 32, 0, "12", 2},   // an open section runs to the end
    {"12345", "##-##", 4, 0, "12-", 3}, // size - 1 characters at most
    {"hello", nullptr, 4, 0, "hel", 3}, {"12", "##", 1, 0, "", 0}, {"12-34", "##-##", 32, 1, "1234", 4},
    {"1x-34", "##-##", 32, 1, "1", 2},   // stops at a misfit, reports one more
    {"12", "##-##", 32, 1, "12__", 4},   // fill at the end of the source
    {"1234", "##-##", 32, 1, "1234", 4}, // a missing literal is no misfit
    {"#1", "\\##", 32, 1, "1", 1},
};

TEST_F(Format, MaskApplyMergesAndStrips)
{
    for (const auto& c : kMaskApplies) {
        char target[40];
        memset(target, '?', sizeof target);
        int n = HMaskApply(c.source, c.mask, target, c.size, c.strip);
        EXPECT_STREQ(c.target, target) << c.source << " '" << (c.mask ? c.mask : "(null)") << "' strip " << c.strip;
        EXPECT_EQ(c.result, n) << c.source << " '" << (c.mask ? c.mask : "(null)") << "' strip " << c.strip;
        EXPECT_EQ('?', target[c.size]) << c.source;
    }
    char target[4] = "abc";
    EXPECT_EQ(0, HMaskApply(nullptr, "##", target, 4, FALSE));
    EXPECT_EQ(0, HMaskApply("12", "##", nullptr, 4, FALSE));
    EXPECT_EQ(0, HMaskApply("12", "##", target, 0, FALSE));
    EXPECT_STREQ("abc", target);
}

} // namespace
