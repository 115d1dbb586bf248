// The locale: reading the profile's "Intl" section, and the setters.
#include "typed/typed_internal.h"
#include "seam.h"
#include "testseam.h"
#include <gtest/gtest.h>
#include <stdio.h>
#include <string.h>
#include <algorithm>
#include <string>

namespace {

constexpr const char* kKeys[10] = {"sThousand", "sDecimal", "sDate", "sShortDate", "sTime",
                                   "iTLZero",   "iTime",    "s1159", "s2359",      "sCurrency"};
constexpr char kAbsent[] = "\x01" "absent";

// The whole locale as one text, in the order of kKeys.
std::string Intl()
{
    char s[128];
    snprintf(s, sizeof s, "%c|%c|%c|%s|%c|%d|%s|%s|%s|%s", g_cThousandSep, g_cDecimalSep, g_cDateSep, g_szDateFormat,
             g_cTimeSep, g_nTLZero, g_szTimeFormat, g_sz1159, g_sz2359, g_szCurrency);
    return s;
}

// Each test leaves the profile keys and the library's locale as it found them,
// so that the number and date tests see the same locale whatever runs first.
class Locale : public ::testing::Test {
protected:
    const std::pair<void*, size_t> globals_[10] = {
        {&g_cThousandSep, 1}, {&g_cDecimalSep, 1}, {&g_cDateSep, 1}, {&g_cTimeSep, 1},
        {g_szDateFormat, sizeof g_szDateFormat}, {g_szTimeFormat, sizeof g_szTimeFormat},
        {&g_nTLZero, sizeof g_nTLZero}, {g_sz1159, sizeof g_sz1159}, {g_sz2359, sizeof g_sz2359},
        {g_szCurrency, sizeof g_szCurrency}};
    std::string saved_[10], profile_[10];

    void SetUp() override
    {
        for (size_t i = 0; i < 10; ++i) {
            saved_[i].assign((const char*)globals_[i].first, globals_[i].second);
            char value[64];
            SeamProfileString("Intl", kKeys[i], kAbsent, value, sizeof value);
            profile_[i] = value;
        }
    }
    void TearDown() override
    {
        for (size_t i = 0; i < 10; ++i)
            TestSetProfile("Intl", kKeys[i], profile_[i] == kAbsent ? nullptr : profile_[i].c_str());
        GetIntlSettings();
        for (size_t i = 0; i < 10; ++i)
            memcpy(globals_[i].first, saved_[i].data(), globals_[i].second);
    }
    // Leaves only the given keys in the section: "sDate=-;iTime=1".
    static void SetProfile(const std::string& keys)
    {
        for (const char* key : kKeys)
            TestSetProfile("Intl", key, nullptr);
        for (size_t at = 0, end; at < keys.size(); at = end + 1) {
            size_t eq = keys.find('=', at);
            end = std::min(keys.find(';', at), keys.size());
            TestSetProfile("Intl", keys.substr(at, eq - at).c_str(), keys.substr(eq + 1, end - eq - 1).c_str());
        }
    }
};

// The stored date format is lower-cased and uses "/" where the date separator
// stood; the time format is built from iTLZero and iTime.
constexpr struct { const char* keys; const char* intl; } kIntlCases[] = {
    {"", ",|.|/|mm/dd/yyyy|:|0|h:mm:ss ap|AM|PM|$"}, // absent keys give the defaults
    {"sThousand=.;sDecimal=,;sDate=-;sShortDate=DD-MM-YYYY;sTime=.;iTLZero=1;iTime=1;s1159=vm;s2359=nm;sCurrency=EUR",
     ".|,|-|dd/mm/yyyy|.|1|hh:mm:ss|vm|nm|EUR"},
    {"iTLZero=0;iTime=0", ",|.|/|mm/dd/yyyy|:|0|h:mm:ss ap|AM|PM|$"},
    {"iTLZero=1;iTime=0", ",|.|/|mm/dd/yyyy|:|1|hh:mm:ss ap|AM|PM|$"},
    {"iTLZero=0;iTime=1", ",|.|/|mm/dd/yyyy|:|0|h:mm:ss|AM|PM|$"},
    {"iTLZero=2", ",|.|/|mm/dd/yyyy|:|2|hh:mm:ss ap|AM|PM|$"},
    {"sDate=.;sShortDate=dd.MM.yyyy", ",|.|.|dd/mm/yyyy|:|0|h:mm:ss ap|AM|PM|$"},
    {"sDate=-;sShortDate=yyyy-MM-dd", ",|.|-|yyyy/mm/dd|:|0|h:mm:ss ap|AM|PM|$"},
    {"sShortDate=M/d/yy", ",|.|/|m/d/yy|:|0|h:mm:ss ap|AM|PM|$"},
    {"sDate=.;sShortDate=d-M-yyyy", ",|.|.|d-m-yyyy|:|0|h:mm:ss ap|AM|PM|$"}, // only the date separator
    {"sDate= ;sShortDate=dd MM yyyy", ",|.| |dd/mm/yyyy|:|0|h:mm:ss ap|AM|PM|$"},
    {"sDate=-;sShortDate=yyyy-mm-dd, dddd", ",|.|-|yyyy/mm/dd, ddd|:|0|h:mm:ss ap|AM|PM|$"}, // cut to 15
    {"sDate=ab;sShortDate=d.m.y", ",|.|a|d.m.y|:|0|h:mm:ss ap|AM|PM|$"}, // a separator is one character
    {"s1159=a.m.;s2359=p.m.;sCurrency=EURO5;sDecimal=,.", ",|,|/|mm/dd/yyyy|:|0|h:mm:ss ap|a.m|p.m|EURO"},
};

TEST_F(Locale, GetIntlSettingsReadsEveryValueOrItsDefault)
{
    for (const auto& c : kIntlCases) {
        SetProfile(c.keys);
        g_cThousandSep = g_cDecimalSep = g_cDateSep = g_cTimeSep = '~', g_nTLZero = 5;
        for (char* text : {g_szDateFormat, g_szTimeFormat, g_sz1159, g_sz2359, g_szCurrency})
            strcpy(text, "x");
        GetIntlSettings();
        EXPECT_EQ(c.intl, Intl()) << c.keys;
    }
}

TEST_F(Locale, GetIntlSettingsOverwritesTheSetters)
{
    SetProfile("sDecimal=,");
    ASSERT_TRUE(SetDecimalSep(';') && SetDefDateFormat("yyyy.mm.dd"));
    GetIntlSettings();
    EXPECT_EQ(",|,|/|mm/dd/yyyy|:|0|h:mm:ss ap|AM|PM|$", Intl());
}

TEST_F(Locale, SeparatorSettersTakeOnlySevenBitNonAlphanumerics)
{
    const struct { BOOL(WINAPI* set)(char); char* slot; const char *taken, *refused; } setters[] = {
        {SetDecimalSep, &g_cDecimalSep, ",", "a5\xE9"}, // the top bit set: refused before any classification
        {SetThousandsSep, &g_cThousandSep, " '", "Z"},  // a blank is a legal group separator
        {SetDateSep, &g_cDateSep, ".-", "\x80y"},       {SetTimeSep, &g_cTimeSep, ".", "0h"}};
    for (const auto& s : setters)
        for (const char* c : {s.taken, s.refused})
            for (const char* p = c; *p; ++p) {
                *s.slot = '~';
                EXPECT_EQ(c == s.taken, (bool)s.set(*p)) << "char " << (int)(unsigned char)*p;
                EXPECT_EQ(c == s.taken ? *p : '~', *s.slot) << "char " << (int)(unsigned char)*p;
            }
}

// Either case is enough; the format is kept lower-cased with its own separators.
constexpr struct { char which; const char* format; BOOL result; const char* stored; } kFormatCases[] = {
    {'D', nullptr, FALSE, "old"}, {'D', "mm/yyyy", FALSE, "old"}, {'D', "dd/mm", FALSE, "old"},
    {'D', "dd/yy", FALSE, "old"}, {'D', "YYYY-MM-DD", TRUE, "yyyy-mm-dd"}, {'D', "d.M.y", TRUE, "d.m.y"},
    {'D', "dd/mm/yyyy and more", TRUE, "dd/mm/yyyy and "}, {'T', nullptr, FALSE, "old"}, {'T', "HH:MM", TRUE, "hh:mm"},
    {'T', "h.m", TRUE, "h.m"}, {'T', "H:MM:SS AP", TRUE, "h:mm:ss ap"}, {'T', "mm:ss", FALSE, "old"},
    {'T', "hh", FALSE, "old"}, {'T', "hh:mm:ss and more", TRUE, "hh:mm:ss and mo"},
};

TEST_F(Locale, FormatSettersNeedDayMonthAndYearOrHourAndMinute)
{
    for (const auto& c : kFormatCases) {
        char* stored = c.which == 'D' ? g_szDateFormat : g_szTimeFormat;
        strcpy(stored, "old");
        EXPECT_EQ(c.result, (c.which == 'D' ? SetDefDateFormat : SetDefTimeFormat)(c.format)) << c.which;
        EXPECT_STREQ(c.stored, stored) << c.which << " " << (c.format ? c.format : "null");
    }
}

} // namespace
