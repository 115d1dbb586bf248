// The locale: reading the profile's "Intl" section, and the setters.
#include "typed/typed_internal.h"
#include "seam.h"
#include "testseam.h"
#include <gtest/gtest.h>
#include <string.h>
#include <string>

namespace {

constexpr const char* kKeys[10] = {"sThousand", "sDecimal", "sDate", "sShortDate", "sTime",
                                   "iTLZero", "iTime", "s1159", "s2359", "sCurrency"};
constexpr char kAbsent[] = "\x01" "absent";

// Each test leaves the profile keys and the library's locale as it found them,
// so that the number and date tests see the same locale whatever runs first.
class Locale : public ::testing::Test {
protected:
    struct Global {
        void* address;
        size_t size;
    };
    const Global globals_[10] = {
        {&g_cThousandSep, 1}, {&g_cDecimalSep, 1}, {&g_cDateSep, 1}, {&g_cTimeSep, 1},
        {g_szDateFormat, sizeof g_szDateFormat}, {g_szTimeFormat, sizeof g_szTimeFormat},
        {&g_nTLZero, sizeof g_nTLZero}, {g_sz1159, sizeof g_sz1159}, {g_sz2359, sizeof g_sz2359},
        {g_szCurrency, sizeof g_szCurrency}};
    std::string saved_[10];
    std::string profile_[10];

    void SetUp() override
    {
        for (size_t i = 0; i < 10; ++i) {
            saved_[i].assign((const char*)globals_[i].address, globals_[i].size);
            char value[64];
            SeamProfileString("Intl", kKeys[i], kAbsent, value, sizeof value);
            profile_[i] = value;
            TestSetProfile("Intl", kKeys[i], nullptr);
        }
    }

    void TearDown() override
    {
        for (size_t i = 0; i < 10; ++i)
            TestSetProfile("Intl", kKeys[i], profile_[i] == kAbsent ? nullptr : profile_[i].c_str());
        GetIntlSettings();
        for (size_t i = 0; i < 10; ++i)
            memcpy(globals_[i].address, saved_[i].data(), globals_[i].size);
    }

    static void SetAll(const char* const values[10])
    {
        for (size_t i = 0; i < 10; ++i)
            TestSetProfile("Intl", kKeys[i], values[i]);
    }
};

TEST_F(Locale, EveryValueIsReadFromTheIntlSection)
{
    const char* values[10] = {".", ",", "-", "DD-MM-YYYY", ".", "1", "1", "vm", "nm", "EUR"};
    SetAll(values);
    GetIntlSettings();
    EXPECT_EQ('.', g_cThousandSep);
    EXPECT_EQ(',', g_cDecimalSep);
    EXPECT_EQ('-', g_cDateSep);
    EXPECT_STREQ("dd/mm/yyyy", g_szDateFormat);
    EXPECT_EQ('.', g_cTimeSep);
    EXPECT_EQ(1, g_nTLZero);
    EXPECT_STREQ("hh:mm:ss", g_szTimeFormat);
    EXPECT_STREQ("vm", g_sz1159);
    EXPECT_STREQ("nm", g_sz2359);
    EXPECT_STREQ("EUR", g_szCurrency);
}

TEST_F(Locale, AbsentKeysGiveTheDefaults)
{
    g_cThousandSep = g_cDecimalSep = g_cDateSep = g_cTimeSep = '~';
    g_nTLZero = 5;
    strcpy(g_szDateFormat, "x");
    strcpy(g_szTimeFormat, "x");
    strcpy(g_szCurrency, "x");
    GetIntlSettings(); // SetUp removed every key
    EXPECT_EQ(',', g_cThousandSep);
    EXPECT_EQ('.', g_cDecimalSep);
    EXPECT_EQ('/', g_cDateSep);
    EXPECT_STREQ("mm/dd/yyyy", g_szDateFormat);
    EXPECT_EQ(':', g_cTimeSep);
    EXPECT_EQ(0, g_nTLZero);
    EXPECT_STREQ("h:mm:ss ap", g_szTimeFormat);
    EXPECT_STREQ("AM", g_sz1159);
    EXPECT_STREQ("PM", g_sz2359);
    EXPECT_STREQ("$", g_szCurrency);
}

struct TimeFormatCase {
    const char* tlZero;
    const char* iTime;
    const char* expected;
};

constexpr TimeFormatCase kTimeFormatCases[] = {
    {"0", "0", "h:mm:ss ap"},
    {"1", "0", "hh:mm:ss ap"},
    {"0", "1", "h:mm:ss"},
    {"1", "1", "hh:mm:ss"},
    {"2", "0", "hh:mm:ss ap"},
    {nullptr, nullptr, "h:mm:ss ap"},
};

TEST_F(Locale, TimeFormatIsBuiltFromLeadingZeroAndClock)
{
    for (const TimeFormatCase& c : kTimeFormatCases) {
        TestSetProfile("Intl", "iTLZero", c.tlZero);
        TestSetProfile("Intl", "iTime", c.iTime);
        GetIntlSettings();
        EXPECT_STREQ(c.expected, g_szTimeFormat) << "iTLZero " << (c.tlZero ? c.tlZero : "absent")
                                                 << " iTime " << (c.iTime ? c.iTime : "absent");
    }
}

struct DateFormatCase {
    const char* separator;
    const char* shortDate;
    char storedSeparator;
    const char* expected;
};

constexpr DateFormatCase kDateFormatCases[] = {
    {".", "dd.MM.yyyy", '.', "dd/mm/yyyy"},
    {"-", "yyyy-MM-dd", '-', "yyyy/mm/dd"},
    {"/", "M/d/yy", '/', "m/d/yy"},
    {".", "d-M-yyyy", '.', "d-m-yyyy"},      // only the date separator is replaced
    {" ", "dd MM yyyy", ' ', "dd/mm/yyyy"},
    {"-", "yyyy-mm-dd, dddd", '-', "yyyy/mm/dd, ddd"}, // cut to 15 characters
    {"ab", "d.m.y", 'a', "d.m.y"},             // only the first character is kept
};

TEST_F(Locale, DateFormatIsLowerCasedWithSlashForTheSeparator)
{
    for (const DateFormatCase& c : kDateFormatCases) {
        TestSetProfile("Intl", "sDate", c.separator);
        TestSetProfile("Intl", "sShortDate", c.shortDate);
        GetIntlSettings();
        EXPECT_EQ(c.storedSeparator, g_cDateSep) << c.shortDate;
        EXPECT_STREQ(c.expected, g_szDateFormat) << c.shortDate;
    }
}

TEST_F(Locale, LongTextsAreCutToTheirFields)
{
    TestSetProfile("Intl", "s1159", "a.m.");
    TestSetProfile("Intl", "s2359", "p.m.");
    TestSetProfile("Intl", "sCurrency", "EURO5");
    TestSetProfile("Intl", "sDecimal", ",.");
    GetIntlSettings();
    EXPECT_STREQ("a.m", g_sz1159);
    EXPECT_STREQ("p.m", g_sz2359);
    EXPECT_STREQ("EURO", g_szCurrency);
    EXPECT_EQ(',', g_cDecimalSep);
}

TEST_F(Locale, GetIntlSettingsOverwritesTheSetters)
{
    TestSetProfile("Intl", "sDecimal", ",");
    ASSERT_TRUE(SetDecimalSep(';'));
    ASSERT_TRUE(SetDefDateFormat("yyyy.mm.dd"));
    GetIntlSettings();
    EXPECT_EQ(',', g_cDecimalSep);
    EXPECT_STREQ("mm/dd/yyyy", g_szDateFormat);
}

enum Setter { kDecimal, kThousands, kDate, kTime };

struct SeparatorCase {
    Setter setter;
    char c;
    BOOL result;
};

constexpr SeparatorCase kSeparatorCases[] = {
    {kDecimal, ',', TRUE},
    {kDecimal, 'a', FALSE},
    {kDecimal, '5', FALSE},
    {kDecimal, (char)0xE9, FALSE}, // top bit set: refused before any classification
    {kThousands, ' ', TRUE},       // a blank is a legal group separator
    {kThousands, '\'', TRUE},
    {kThousands, 'Z', FALSE},
    {kDate, '.', TRUE},
    {kDate, '-', TRUE},
    {kDate, (char)0x80, FALSE},
    {kDate, 'y', FALSE},
    {kTime, '.', TRUE},
    {kTime, '0', FALSE},
    {kTime, 'h', FALSE},
};

TEST_F(Locale, SeparatorSettersTakeOnlySevenBitNonAlphanumerics)
{
    struct Slot {
        BOOL(WINAPI* set)(char);
        char* value;
    };
    const Slot slots[] = {{SetDecimalSep, &g_cDecimalSep}, {SetThousandsSep, &g_cThousandSep},
                          {SetDateSep, &g_cDateSep}, {SetTimeSep, &g_cTimeSep}};
    for (const SeparatorCase& c : kSeparatorCases) {
        const Slot& slot = slots[c.setter];
        *slot.value = '~';
        EXPECT_EQ(c.result, slot.set(c.c)) << "setter " << c.setter << " char " << (int)(unsigned char)c.c;
        EXPECT_EQ(c.result ? c.c : '~', *slot.value) << "setter " << c.setter;
    }
}

struct FormatCase {
    const char* format;
    BOOL result;
    const char* stored; // what the format holds afterwards
};

constexpr FormatCase kDateFormatSetterCases[] = {
    {nullptr, FALSE, "old"},
    {"mm/yyyy", FALSE, "old"},
    {"dd/mm", FALSE, "old"},
    {"dd/yy", FALSE, "old"},
    {"YYYY-MM-DD", TRUE, "yyyy-mm-dd"}, // the separator is kept as given
    {"d.M.y", TRUE, "d.m.y"},
    {"dd/mm/yyyy and more", TRUE, "dd/mm/yyyy and "},
};

TEST_F(Locale, SetDefDateFormatNeedsDayMonthAndYear)
{
    for (const FormatCase& c : kDateFormatSetterCases) {
        strcpy(g_szDateFormat, "old");
        EXPECT_EQ(c.result, SetDefDateFormat(c.format)) << (c.format ? c.format : "null");
        EXPECT_STREQ(c.stored, g_szDateFormat) << (c.format ? c.format : "null");
    }
}

constexpr FormatCase kTimeFormatSetterCases[] = {
    {nullptr, FALSE, "old"},
    {"HH:MM", TRUE, "hh:mm"},
    {"h.m", TRUE, "h.m"},
    {"H:MM:SS AP", TRUE, "h:mm:ss ap"},
    {"mm:ss", FALSE, "old"},
    {"hh", FALSE, "old"},
    {"hh:mm:ss and more", TRUE, "hh:mm:ss and mo"},
};

TEST_F(Locale, SetDefTimeFormatNeedsHourAndMinute)
{
    for (const FormatCase& c : kTimeFormatSetterCases) {
        strcpy(g_szTimeFormat, "old");
        EXPECT_EQ(c.result, SetDefTimeFormat(c.format)) << (c.format ? c.format : "null");
        EXPECT_STREQ(c.stored, g_szTimeFormat) << (c.format ? c.format : "null");
    }
}

} // namespace
