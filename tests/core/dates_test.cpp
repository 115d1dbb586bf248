// Dates and times: day numbers, stored types, date masks both ways, checks.
#include "typed/dates.h"
#include "typedlocale.h"
#include <stdlib.h>
#include <time.h>
#include <optional>
#ifndef _WIN32
#include "seam_native.h"
#endif

namespace {

HDateTime Make(int y, int mo, int d, int h = 0, int mi = 0, int s = 0, int ms = 0)
{
    HDateTime r{};
    r.wYear = (SHORT)y, r.bMonth = (BYTE)mo, r.bDay = (BYTE)d;
    r.bHour = (BYTE)h, r.bMinute = (BYTE)mi, r.bSecond = (BYTE)s, r.wMillisecond = (WORD)ms;
    return r;
}
HDateTime Time(int h, int mi = 0, int s = 0, int ms = 0) { return Make(0, 0, 0, h, mi, s, ms); }

std::string Show(const HDateTime& r)
{
    char b[64];
    snprintf(b, sizeof b, "%d-%u-%u %u:%u:%u.%u", r.wYear, r.bMonth, r.bDay, r.bHour, r.bMinute,
             r.bSecond, r.wMillisecond);
    return b;
}

// Saturday 7 March 2026, 14:05:09.045: the record most rows show.
const HDateTime kSample = Make(2026, 3, 7, 14, 5, 9, 45);

std::string Format(const HDateTime& d, const char* mask, int editing = 0, int hasDate = 1, int hasTime = 1,
                   int* length = nullptr)
{
    char text[64];
    memset(text, 'X', sizeof text);
    int n = HDateFormat(&d, mask, text, sizeof text, editing, hasDate, hasTime);
    if (length) *length = n;
    return text;
}

using Dates = TypedLocale;

// Day numbers by the usual integer civil-calendar formulas: an independent reckoning of the same days.
long long ReferenceDays(int year, int month, int day, bool gregorian)
{
    long long y = year < 0 ? year + 1 : year, a = (14 - month) / 12; // astronomical years
    long long yy = y + 4800 - a, mm = month + 12 * a - 3;
    long long j = day + (153 * mm + 2) / 5 + 365 * yy + yy / 4;
    return gregorian ? j - yy / 100 + yy / 400 - 32045 : j - 32083;
}

TEST_F(Dates, DayNumbersAndWeekdaysAtTheBoundariesOfBothCalendars)
{
    static const struct { int year, month, day; long long days; int weekdayFromSunday; } rows[] = {
        {-4713, 1, 1, 0, 1},                              // the origin, in the Julian calendar
        {-1, 12, 31, 1721423, 5},                         // there is no year 0: 1 BC is followed by AD 1
        {1, 1, 1, 1721424, 6}, {1582, 10, 4, 2299160, 4}, // last Julian day
        {1582, 10, 15, 2299161, 5},                       // first Gregorian day
        {1582, 10, 5, 2299161, 5},                        // the days between count on in the Julian calendar
        {1582, 10, 14, 2299170, 0}, {1970, 1, 1, 2440588, 4}, {2000, 2, 29, 2451604, 2}, {2026, 3, 7, 2461107, 6},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(r.days, HDateToDays(r.year, r.month, r.day)) << r.year << "-" << r.month << "-" << r.day;
        EXPECT_EQ(r.weekdayFromSunday, HDateWeekday(r.year, r.month, r.day)) << r.year << "-" << r.month;
    }
}

TEST_F(Dates, EveryDayNumberRoundTripsAndAgreesWithIntegerCalendars)
{
    for (long long j = 0, bad = 0; j <= 4000000 && bad < 5; ++j) {
        HDateTime r{};
        HDaysToDate(j, &r);
        bool gregorian = j >= 2299161;
        if (ReferenceDays(r.wYear, r.bMonth, r.bDay, gregorian) != j || HDateToDays(r.wYear, r.bMonth, r.bDay) != j) {
            ADD_FAILURE() << "day " << j << " gives " << Show(r);
            ++bad;
        }
    }
}

// ---- Stored types ----

TEST_F(Dates, EveryStoredTypeKeepsItsLayoutAndRoundTripsWhatItKeeps)
{
    static const struct {
        char type;
        HDateTime back;     // what kSample reads back as
        const char* widths; // the stored fields, little-endian, one digit of bytes each
        unsigned fields[7];
    } rows[] = {
        {'Q', Make(2026, 3, 7, 14, 5, 9), "44", {46086, 50709000}}, // days since 1900, ms of the day: ms dropped
        {'q', Make(2026, 3, 7, 14, 5), "22", {46086, 845}},         // whole minutes
        {'u', Make(2026, 3, 7, 14, 5, 9), "", {}}, {'s', kSample, "2222224", {2026, 3, 7, 14, 5, 9, 45}},
        {'A', Make(2026, 3, 7), "2", {46 | 3 << 7 | 7 << 11}},
        {'a', Make(2026, 3, 7), "11211", {7, 3, 2026, 0xCC, 0xCC}}, // the last two bytes stay
        {'d', Make(2026, 3, 7), "222", {2026, 3, 7}}, {'l', Make(2026, 3, 7), "4", {20260307}},
        {'I', Time(14, 5, 8), "2", {14 | 5 << 5 | 4 << 11}}, // seconds in steps of two
        {'i', Time(14, 5, 9, 40), "1111", {14, 5, 9, 4}},    // hundredths
        {'t', Time(14, 5, 9), "222", {14, 5, 9}}, {'D', kSample, "", {}},
    };
    for (const auto& row : rows) {
        unsigned char value[40];
        memset(value, 0xCC, sizeof value);
        ASSERT_EQ(1, DateTimeToData(&kSample, value, row.type)) << row.type;
        for (int i = 0, at = 0; row.widths[i]; at += row.widths[i++] - '0') {
            unsigned got = 0;
            memcpy(&got, value + at, row.widths[i] - '0');
            EXPECT_EQ(row.fields[i], got) << row.type << " field " << i;
        }
        double ole;
        memcpy(&ole, value, sizeof ole);
        if (row.type == 'u') EXPECT_NEAR(46088.586909722, ole, 1e-8);
        if (row.type == 'D') EXPECT_EQ(0, memcmp(&kSample, value, 10));
        HDateTime back;
        memset(&back, 0x55, sizeof back);
        ASSERT_EQ(1, DataToDateTime(&back, value, row.type)) << row.type;
        EXPECT_EQ(Show(row.back), Show(back)) << row.type;
    }
}

TEST_F(Dates, SerialTypesCountFromTheirOrigins)
{
    static const struct { HDateTime date; char type; double storedDays; } rows[] = {
        {Make(1900, 1, 1), 'Q', 0}, {Make(1899, 12, 31), 'Q', -1}, {Make(1899, 12, 30), 'u', 0},
        {Make(1900, 1, 1), 'u', 2}, {Make(1900, 1, 1), 'q', 0}, {Make(2079, 6, 6), 'q', 65535},
        {Make(0, 3, 7), 'Q', 33668}, // a year of 0 is 1992
        {Make(0, 1, 1), 'l', 101},   // ... but stays 0 in yyyymmdd
    };
    for (const auto& r : rows) {
        unsigned char v[16] = {};
        ASSERT_EQ(1, DateTimeToData(&r.date, v, r.type));
        int32_t i;
        uint16_t w;
        double d;
        memcpy(&i, v, 4), memcpy(&w, v, 2), memcpy(&d, v, 8);
        EXPECT_EQ(r.storedDays, r.type == 'u' ? d : r.type == 'q' ? w : i) << Show(r.date) << " as " << r.type;
    }
    // OLE dates before the origin count days down and the time up.
    for (auto [v, want] : {std::pair{-0.5, Make(1899, 12, 29, 12)}, {2 + 1.0 / 86400000, Time(0, 0, 0, 1)}}) {
        HDateTime r;
        if (v > 0) want.wYear = 1900, want.bMonth = want.bDay = 1; // one millisecond past midnight
        ASSERT_EQ(1, DataToDateTime(&r, &v, 'u'));
        EXPECT_EQ(Show(want), Show(r)) << v;
    }
}

TEST_F(Dates, ConversionsRefuseNullsUnknownTypesAndUnreadableValues)
{
    unsigned char v[40] = {};
    HDateTime r = kSample;
    EXPECT_EQ(0, DateTimeToData(nullptr, v, 'Q'));
    EXPECT_EQ(0, DateTimeToData(&r, nullptr, 'Q'));
    EXPECT_EQ(0, DateTimeToData(&r, v, 'x'));
    EXPECT_EQ(0, DataToDateTime(&r, v, 'x'));
    EXPECT_EQ(Show(HDateTime{}), Show(r)); // zeroed before the type was looked at
    EXPECT_EQ(0, DataToDateTime(nullptr, v, 'Q'));
    EXPECT_EQ(0, DataToDateTime(&r, nullptr, 'Q'));
    double nan = strtod("nan", nullptr), huge = 1e300;
    EXPECT_EQ(0, DataToDateTime(&r, &nan, 'u'));
    EXPECT_EQ(0, DataToDateTime(&r, &huge, 'u'));
}

// ---- struct tm types, in UTC ----

class CalendarTime : public Dates {
protected:
    std::optional<std::string> tz_;
    void SetUp() override
    {
        Dates::SetUp();
        if (const char* tz = getenv("TZ")) tz_ = tz;
        SetTz("UTC0");
    }
    void TearDown() override
    {
        SetTz(tz_ ? tz_->c_str() : nullptr);
        Dates::TearDown();
    }
    static void SetTz(const char* value)
    {
#ifdef _WIN32
        _putenv((std::string("TZ=") + (value ? value : "")).c_str());
        _tzset();
#else
        value ? setenv("TZ", value, 1) : unsetenv("TZ");
        tzset();
#endif
    }
};

TEST_F(CalendarTime, TimeTCountsSecondsSince1970AndTmIsStoredNormalised)
{
    int32_t v[9];
    ASSERT_EQ(1, DateTimeToData(&kSample, v, 'T'));
    EXPECT_EQ(1772892309, v[0]);
    HDateTime r = Make(2026, 2, 35, 14, 5, 9); // 35 February is 7 March
    ASSERT_EQ(1, DateTimeToData(&r, v, 'm'));
    const int32_t fields[9] = {9, 5, 14, 7, 2, 126, 6, 65, 0};
    EXPECT_EQ(0, memcmp(fields, v, sizeof v));
    ASSERT_EQ(1, DataToDateTime(&r, v, 'm'));
    EXPECT_EQ(Show(Make(2026, 3, 7, 14, 5, 9)), Show(r));
}

TEST_F(Dates, AStoredTmIsReadFieldByFieldWhateverItHolds)
{
    static const struct { int32_t fields[9]; HDateTime result; } rows[] = { // sec, min, hour, mday, mon, year, ...
        {{61, 0, 0, 1, 0, 100, 0, 0, 0}, Make(2000, 1, 1, 0, 0, 1)}, // seconds modulo 60
        {{0, 0, 0, 1, 0x7FFFFFFF, 100, 0, 0, 0}, Make(2000, 0, 1)},  // tm_mon + 1 wraps to 0
        {{0, 0, 0, 1, -1, 100, 0, 0, 0}, Make(2000, 0, 1)},
        {{0, 0, 0, 1, 12, -1900, 0, 0, 0}, Make(0, 13, 1)}, // nothing is normalised
    };
    for (const auto& row : rows) {
        HDateTime back;
        ASSERT_EQ(1, DataToDateTime(&back, row.fields, 'm'));
        EXPECT_EQ(Show(row.result), Show(back)) << row.fields[4];
    }
}

TEST_F(CalendarTime, AYearOf1900OrBelowKeepsThePreviousYear)
{
    HDateTime first = Make(2001, 2, 3, 4, 5, 6), second = Make(1800, 5, 6, 7, 8, 9), back;
    unsigned char v[4];
    ASSERT_EQ(1, DateTimeToData(&first, v, 'T'));
    ASSERT_EQ(1, DateTimeToData(&second, v, 'T'));
    ASSERT_EQ(1, DataToDateTime(&back, v, 'T'));
    EXPECT_EQ(Show(Make(2001, 5, 6, 7, 8, 9)), Show(back));
}

TEST_F(CalendarTime, TimesOutsideThe32BitCalendarFail)
{
    HDateTime before = Make(1960, 1, 1), after = Make(2040, 1, 1);
    unsigned char v[36];
    EXPECT_EQ(0, DateTimeToData(&before, v, 'T'));
    EXPECT_EQ(0, DateTimeToData(&after, v, 'T'));
    EXPECT_EQ(0, DateTimeToData(&before, v, 'm'));
    int32_t negative = -1;
    EXPECT_EQ(0, DataToDateTime(&before, &negative, 'T'));
}

// ---- Display ----

struct FormatRow { const char* mask; HDateTime date; const char* text; };

TEST_F(Dates, MaskLettersShowTheirFieldsAndNamesFollowTheCaseOfTheFirstTwo)
{
    static const FormatRow rows[] = {
        {"d", kSample, "7"}, {"dd", kSample, "07"}, {"ddd", kSample, "sat"}, {"dddd", kSample, "saturday"},
        {"ddddd", kSample, "saturday7"}, // runs end at four letters
        {"m", kSample, "3"}, {"mm", kSample, "03"}, {"mmm", kSample, "mar"}, {"mmmm", kSample, "march"},
        {"y", kSample, "y"}, {"Y", kSample, "Y"}, {"yy", kSample, "26"}, {"yyy", kSample, "26y"},
        {"YYY", kSample, "26Y"}, {"yyyy", kSample, "2026"}, {"yyyyy", kSample, "2026y"},
        {"yy", Make(5, 1, 1), "05"}, {"yyyy", Make(5, 1, 1), "0005"}, {"yyyy", Make(-45, 1, 1), "-045"},
        {"yy", Make(-45, 1, 1), "-45"}, {"h", kSample, "14"}, {"hh", Time(9), "09"},
        {"hhh", Time(9), "099"}, {"h:m", kSample, "14:m"}, {"hh mm", kSample, "14 05"},
        {"mm:hh", kSample, "03:14"},   // no hour before: the month
        {"hh:xmm", kSample, "14:x03"}, // the hour is three places back: the month
        {"hh:mm:ss", kSample, "14:05:09"}, {"s", kSample, "s"}, {"sss", kSample, "09s"}, {"f", kSample, "f"},
        {"ff", Time(0, 0, 0, 5), "05"}, {"ff", Time(0, 0, 0, 123), "123"}, // not scaled
        {"[red]dd", kSample, "07"}, {"dd[", kSample, "07"}, {"\\dd", kSample, "d7"}, {"dd\\", kSample, "07"},
        {"dd-MM-yy", kSample, "07-03-26"}, {"q, dd", kSample, "q, 07"}, {"Mmmm", kSample, "March"},
        {"MMMM", kSample, "MARCH"}, {"mMMM", kSample, "mARCH"}, {"Mmm", kSample, "Mar"}, {"MMM", kSample, "MAR"},
        {"Dddd", kSample, "Saturday"}, {"DDDD", kSample, "SATURDAY"}, {"Ddd", kSample, "Sat"},
        {"Dddd, d Mmmm yyyy", kSample, "Saturday, 7 March 2026"}, {"mmmm", Make(2026, 13, 1), ""},
        {"mmmm", Make(2026, 0, 1), ""}, // no name for a month out of range
        {"mmm", Make(2026, 12, 25), "dec"}, {"MMMM", Make(2026, 1, 5), "JANUARY"},
    };
    for (const FormatRow& r : rows) {
        int n = -1;
        EXPECT_EQ(r.text, Format(r.date, r.mask, 0, 1, 1, &n)) << r.mask;
        EXPECT_EQ((int)strlen(r.text), n) << r.mask;
    }
}

TEST_F(Dates, AmPmTurnsTheHourToTwelveHoursAndFollowsTheMaskCase)
{
    static const FormatRow rows[] = {
        {"h:mm ap", kSample, "2:05 pm"}, {"hh:mm AP", kSample, "02:05 PM"}, {"hh:mm AP", Time(9, 5), "09:05 AM"},
        {"h Ap", kSample, "2 Pm"}, {"h ap", Time(0), "12 am"}, {"h ap", Time(12), "12 pm"},
        {"h ap", Time(11), "11 am"}, {"h ap", Time(23), "11 pm"},
        {"h a", kSample, "14 a"}, {"h pa", kSample, "14 pa"}, // a lone "a" is itself, and leaves the hour alone
        {"[ap]h", kSample, "2"},                              // any "ap" in the mask turns the hour
    };
    for (const FormatRow& r : rows) EXPECT_EQ(r.text, Format(r.date, r.mask)) << r.mask;
}

TEST_F(Dates, FormattingCutsAtTheBufferSize)
{
    char text[8];
    memset(text, 'X', sizeof text);
    EXPECT_EQ(3, HDateFormat(&kSample, "dddd", text, 4, 0, 1, 0));
    EXPECT_STREQ("sat", text);
    EXPECT_EQ('X', text[4]);
    EXPECT_EQ(0, HDateFormat(&kSample, "dd", text, 1, 0, 1, 0));
    EXPECT_STREQ("", text);
    EXPECT_EQ(0, HDateFormat(&kSample, "dd", nullptr, 8, 0, 1, 0));
    EXPECT_EQ(0, HDateFormat(&kSample, "dd", text, 0, 0, 1, 0));
}

TEST_F(Dates, EditingAndMissingMasksShowTheLocaleLayout)
{
    static const struct {
        const char* mask; HDateTime date; int editing, hasDate, hasTime; const char* text;
    } rows[] = {
        {"dd mmmm yyyy", kSample, 1, 1, 0, "03/07/2026"}, // names give way to numbers
        {"dd mmmm yyyy", kSample, 0, 1, 0, "07 march 2026"}, {nullptr, kSample, 0, 1, 0, "03/07/2026"},
        {"", kSample, 0, 0, 1, "2:05:09 pm"}, {nullptr, kSample, 0, 1, 1, "03/07/2026 2:05:09 pm"},
        {nullptr, Make(2026, 3, 7), 0, 1, 1, "03/07/2026"}, // midnight shows as a date
        {nullptr, Make(2026, 3, 7, 0, 0, 0, 1), 0, 1, 1, "03/07/2026 12:00:00 am"},
        {"dd/mm/yyyy hh:mm", Make(2026, 3, 7), 1, 1, 1, "03/07/2026 12:00 am"},
        {"hh:mm", kSample, 1, 0, 1, "2:05 pm"},
    };
    for (const auto& r : rows)
        EXPECT_EQ(r.text, Format(r.date, r.mask, r.editing, r.hasDate, r.hasTime))
            << (r.mask ? r.mask : "(null)") << " editing " << r.editing;
}

// ---- The working mask ----

TEST_F(Dates, TheWorkingMaskPutsTheMaskFieldsInTheLocaleOrderAndStaysInItsBuffer)
{
    static const struct {
        const char* dateFormat; const char* mask; int hasDate, hasTime; const char* result;
    } rows[] = {
        {"mm/dd/yyyy", nullptr, 1, 0, "mm/dd/yyyy"}, {"mm/dd/yyyy", nullptr, 0, 1, "h:mm:ss ap"},
        {"mm/dd/yyyy", "", 1, 1, "mm/dd/yyyy h:mm:ss ap"}, {"mm/dd/yyyy", "dd.mm.yy", 1, 0, "mm/dd/yyyy"},
        {"mm/dd/yyyy", "mm/yy", 1, 0, "mm/yyyy"},   // a dropped day takes one separator along
        {"mm/dd/yyyy", "dd/mm", 1, 0, "mm/dd"},     // a trailing separator goes
        {"mm/dd/yyyy", "dd/yyyy", 1, 0, "dd/yyyy"}, // so does a leading one
        {"mm/dd/yy", "yyyy", 1, 0, "yyyy"},         // four-digit years where the locale has two
        {"mm/dd/yy", "dd/mm/yy", 1, 0, "mm/dd/yy"}, {"dd.mm.yy", "dd/mm/yyyy", 1, 0, "dd.mm.yyyy"},
        {"yyyy/mm/dd", "dd mmm", 1, 0, "mm/dd"}, {"mm/dd/yyyy", "hh:mm", 0, 1, "h:mm ap"},
        {"mm/dd/yyyy", "hh", 0, 1, "h ap"}, {"mm/dd/yyyy", "mm:ss", 0, 1, "mm:ss"}, // without hours, no " ap"
        {"mm/dd/yyyy", "dd/mm/yyyy hh:mm", 1, 1, "mm/dd/yyyy h:mm ap"},
        {"mm/dd/yyyy", "dd/mm/yyyy", 1, 1, "mm/dd/yyyy"}, // no time field: no time part
        {"mm/dd/yyyy", "yyyy mm", 1, 1, "mm/yyyy"},       // "mm" before any ":" is the month
        {"mm/dd/yyyy", "hh:mm", 1, 1, "mm h:mm ap"},      // ... and with a date, a month as well
        {"mm/dd/yyyy", "HH:MM:SS", 0, 1, "h:mm:ss ap"}, {"mm/dd/yyyy", "xyz", 0, 0, ""},
    };
    for (const auto& r : rows) {
        strcpy(g_szDateFormat, r.dateFormat);
        char result[129];
        memset(result, 'X', sizeof result);
        HDateBuildMask(r.mask, r.hasDate, r.hasTime, result); // the exported form: 128 bytes
        EXPECT_EQ('X', result[128]);
        EXPECT_STREQ(r.result, result) << (r.mask ? r.mask : "(null)") << " in " << r.dateFormat;
    }
    strcpy(g_szDateFormat, "mm/dd/yyyy");
    char result[8];
    memset(result, 'X', sizeof result);
    HDateBuildMaskN(nullptr, 1, 1, result, 6);
    EXPECT_STREQ("mm/dd", result);
    EXPECT_EQ('X', result[6]);
    char big[128];
    HDateBuildMaskN(std::string(500, 'd').c_str(), 1, 0, big, sizeof big);
    EXPECT_STREQ("dd", big);
}

// ---- Reading ----

TEST_F(Dates, TextsAreReadByTheWorkingMask)
{
    static const struct { const char* text; const char* mask; int hasDate, hasTime; HDateTime result; } rows[] = {
        {"03/07/2026", nullptr, 1, 0, Make(2026, 3, 7)},
        {"03/07/2026", "dd mmmm yyyy", 1, 0, Make(2026, 3, 7)}, // read in the locale's order
        {"12/31/99", nullptr, 1, 0, Make(99, 12, 31)},
        {"3/7/2026", nullptr, 1, 0, Make(0, 3, 202)}, // a short field takes the separator and a digit along
        {"1/2", "dd", 1, 0, Make(0, 0, 1)},           // '1/2' read by "dd" gives 1
        {"123", "dd", 1, 0, Make(0, 0, 123)},         // one digit more than the mask
        {"03/0", nullptr, 1, 0, Make(0, 3, 0)},       // fields the text lacks stay 0
        {"", nullptr, 1, 1, Make(0, 0, 0)}, {"2:05:09 pm", nullptr, 0, 1, Time(14, 5, 9)},
        {"12:30:00 am", nullptr, 0, 1, Time(0, 30)},
        {"12:30:00 pm", nullptr, 0, 1, Time(12, 30)}, {"11:59:59 AM", nullptr, 0, 1, Time(11, 59, 59)},
        {"2:05:09 xm", nullptr, 0, 1, Time(14, 5, 9)}, // anything but "a" is afternoon
        {"14:05", "hh:mm", 0, 1, Time(14, 5)}, {"03/07/2026 2:05:09 pm", nullptr, 1, 1, Make(2026, 3, 7, 14, 5, 9)},
        {"03/07/2026 2:05 pm", "dd/mm/yyyy hh:mm", 1, 1, Make(2026, 3, 7, 14, 5)},
        {"300/07/2026", nullptr, 1, 0, Make(2026, 44, 7)}, // the low 8 bits of the month
        {"-3/07/2026", nullptr, 1, 0, Make(2026, 253, 7)},
    };
    for (const auto& r : rows) {
        HDateTime got;
        memset(&got, 0x55, sizeof got);
        EXPECT_EQ(1, HDateParse(&got, r.text, r.mask, r.hasDate, r.hasTime));
        EXPECT_EQ(Show(r.result), Show(got)) << "'" << r.text << "' by " << (r.mask ? r.mask : "(null)");
    }
    strcpy(g_szTimeFormat, "hh:mm:ss.ff");
    HDateTime got;
    HDateParse(&got, "14:05:09.300", nullptr, 0, 1);
    EXPECT_EQ(Show(Time(14, 5, 9, 300 & 0xFF)), Show(got)); // milliseconds keep their low eight bits
}

TEST_F(Dates, ReadingStopsAtTheTerminator)
{
    char* text = (char*)malloc(2); // a text cut inside a field: nothing behind its end is read
    memcpy(text, "1", 2);
    HDateTime got;
    HDateParse(&got, text, nullptr, 1, 1);
    EXPECT_EQ(1, got.bMonth);
    free(text);
    EXPECT_EQ(1, HDateParse(&got, nullptr, nullptr, 1, 1));
    EXPECT_EQ(1, HDateParse(nullptr, "1", nullptr, 1, 1));
}

// ---- Checks ----

TEST_F(Dates, DateChecksFindAndRepairBadFields)
{
    static const struct { HDateTime in; int repair, year, month, day, result; HDateTime out; } rows[] = {
        {Make(99, 1, 1), 1, 1, 1, 1, 1, Make(1999, 1, 1)}, {Make(0, 1, 1), 1, 1, 1, 1, 1, Make(1900, 1, 1)},
        {Make(100, 1, 1), 1, 1, 1, 1, 1, Make(100, 1, 1)},
        {Make(2200, 1, 1), 1, 1, 1, 1, 1, Make(2200, 1, 1)}, {Make(2201, 1, 1), 1, 1, 1, 1, 1, Make(1922, 1, 1)},
        {Make(99, 1, 1), 0, 1, 1, 1, 1, Make(99, 1, 1)}, // years are only repaired
        {Make(2000, 0, 1), 1, 1, 1, 1, 0, Make(2000, 1, 1)}, {Make(2000, 13, 1), 1, 1, 1, 1, 0, Make(2000, 12, 1)},
        {Make(2000, 13, 1), 0, 1, 1, 1, 0, Make(2000, 13, 1)},
        {Make(2000, 13, 40), 0, 1, 1, 1, 0, Make(2000, 13, 40)}, // the day is not looked at then
        {Make(2000, 13, 40), 0, 1, 0, 1, 0, Make(2000, 13, 40)}, // an unchecked month allows 31
        {Make(2000, 200, 31), 0, 1, 0, 1, 1, Make(2000, 200, 31)},
        {Make(2000, 2, 29), 1, 1, 1, 1, 1, Make(2000, 2, 29)},
        {Make(1900, 2, 29), 1, 1, 1, 1, 0, Make(1900, 2, 28)},
        {Make(1900, 2, 29), 0, 1, 1, 1, 0, Make(1900, 2, 29)},
        {Make(2024, 2, 30), 1, 1, 1, 1, 0, Make(2024, 2, 29)},
        {Make(2023, 2, 30), 1, 1, 1, 1, 0, Make(2023, 2, 28)}, {Make(-4, 2, 29), 1, 1, 1, 1, 1, Make(-4, 2, 29)},
        {Make(-100, 2, 29), 0, 1, 1, 1, 0, Make(-100, 2, 29)},
        {Make(2023, 4, 31), 1, 1, 1, 1, 0, Make(2023, 4, 30)}, {Make(2023, 4, 0), 1, 1, 1, 1, 0, Make(2023, 4, 1)},
        {Make(2023, 4, 31), 1, 1, 1, 0, 1, Make(2023, 4, 31)},
        {Make(2023, 13, 0), 1, 0, 0, 0, 1, Make(2023, 13, 0)},
    };
    for (const auto& r : rows) {
        HDateTime d = r.in;
        EXPECT_EQ(r.result, HDateCheck(nullptr, &d, r.repair, r.year, r.month, r.day)) << Show(r.in);
        EXPECT_EQ(Show(r.out), Show(d)) << Show(r.in) << " repair " << r.repair;
    }
}

TEST_F(Dates, TimeChecksFindAndRepairBadFields)
{
    static const struct { HDateTime in; int repair, ampm, hour, minute, second, result; HDateTime out; } rows[] = {
        {Make(0, 1, 1, 23, 59, 59), 1, 0, 1, 1, 1, 1, Make(0, 1, 1, 23, 59, 59)},
        {Make(0, 1, 1, 24), 1, 0, 1, 1, 1, 0, Make(0, 1, 1, 23)},
        {Make(0, 1, 1, 24), 0, 0, 1, 1, 1, 0, Make(0, 1, 1, 24)},
        {Make(0, 1, 1, 0), 1, 1, 1, 1, 1, 0, Make(0, 1, 1, 1)},
        {Make(0, 1, 1, 14), 1, 1, 1, 1, 1, 0, Make(0, 1, 1, 12)}, // afternoon hours fail with am/pm
        {Make(0, 1, 1, 12), 1, 1, 1, 1, 1, 1, Make(0, 1, 1, 12)},
        {Make(0, 7, 1, 1, 60), 1, 0, 1, 1, 1, 0, Make(0, 7, 1, 1, 7)}, // the minute comes from the month
        {Make(0, 100, 1, 1, 75), 1, 0, 1, 1, 1, 0, Make(0, 100, 1, 1, 59)},
        {Make(0, 1, 1, 1, 1, 60), 1, 0, 1, 1, 1, 0, Make(0, 1, 1, 1, 1, 59)},
        {Make(0, 1, 1, 30, 70, 70), 1, 0, 0, 0, 0, 1, Make(0, 1, 1, 30, 70, 70)},
    };
    for (const auto& r : rows) {
        HDateTime d = r.in;
        EXPECT_EQ(r.result, HTimeCheck(nullptr, &d, r.repair, r.ampm, r.hour, r.minute, r.second)) << Show(r.in);
        EXPECT_EQ(Show(r.out), Show(d)) << Show(r.in);
    }
}

// ---- Locale ----

TEST_F(Dates, DisplaysFollowTheLocaleSettersAndTheProfile)
{
    ASSERT_TRUE(SetDateSep('-') && SetTimeSep('.'));
    EXPECT_EQ("07-03-2026 14.05", Format(kSample, "dd/mm/yyyy hh:mm"));
    EXPECT_EQ("07/03", Format(kSample, "dd\\/mm", 0, 1, 0)); // an escaped "/" stays
    ASSERT_TRUE(SetDefDateFormat("DD/MM/YYYY") && SetDefTimeFormat("HH:MM"));
    EXPECT_EQ("07-03-2026 14.05", Format(kSample, nullptr));
    HDateTime got;
    HDateParse(&got, "07-03-2026 14.05", nullptr, 1, 1);
    EXPECT_EQ(Show(Make(2026, 3, 7, 14, 5)), Show(got));

    SetProfile({{"sDate", "."}, {"sShortDate", "dd.MM.yyyy"}, {"sTime", ":"}, {"iTime", "1"}, {"iTLZero", "0"}});
    EXPECT_EQ("07.03.2026 14:05:09", Format(kSample, nullptr)); // 24 hours, and the stored "/" shows "."
}

#ifndef _WIN32
// ---- The bad-date notification, through the native seam's window hooks ----

HCtlBase g_control;
HWND const kWindow = (HWND)&g_control;
int g_notified, g_vetoNext;
UINT g_code;
HWND g_focused;

LPVOID RecordOf(HWND w) { return w == kWindow ? &g_control : nullptr; }
DWORD Notify(LPVOID record, UINT code)
{
    ++g_notified, g_code = code;
    EXPECT_EQ(&g_control, record);
    return g_vetoNext ? HCTLF_VETO : 0;
}
HWND Focus(HWND w) { return g_focused = w, nullptr; }

class BadDate : public Dates {
protected:
    void SetUp() override
    {
        Dates::SetUp();
        g_control = HCtlBase{};
        g_control.hWnd = kWindow;
        g_notified = g_vetoNext = 0, g_code = 0, g_focused = nullptr;
        SeamNativeSetRecordHook(RecordOf);
        SeamNativeSetHooks(Notify, Focus, nullptr);
    }
    void TearDown() override
    {
        SeamNativeSetRecordHook(nullptr);
        SeamNativeSetHooks(nullptr, nullptr, nullptr);
        Dates::TearDown();
    }
};

TEST_F(BadDate, AFailedCheckNotifiesTheControlAndAVetoTakesTheFocusBack)
{
    HDateTime d = Make(2023, 2, 30);
    EXPECT_EQ(0, HDateCheck(kWindow, &d, 1, 1, 1, 1));
    EXPECT_EQ(1, g_notified);
    EXPECT_EQ((UINT)HN_BADDATE, g_code);
    EXPECT_EQ(nullptr, g_focused);
    g_vetoNext = 1;
    d = Make(2023, 1, 1, 25);
    EXPECT_EQ(0, HTimeCheck(kWindow, &d, 1, 0, 1, 1, 1));
    EXPECT_EQ(2, g_notified);
    EXPECT_EQ(kWindow, g_focused);
}

TEST_F(BadDate, GoodFieldsSilencedControlsAndPlainWindowsAreNotNotified)
{
    HDateTime good = Make(2023, 2, 28, 23, 59, 59), bad = Make(2023, 2, 30);
    EXPECT_EQ(1, HDateCheck(kWindow, &good, 1, 1, 1, 1));
    EXPECT_EQ(1, HTimeCheck(kWindow, &good, 1, 0, 1, 1, 1));
    EXPECT_EQ(0, HDateCheck((HWND)&g_notified, &bad, 1, 1, 1, 1)); // a window without a record
    bad = Make(2023, 2, 30);
    g_control.wFlags = HCTLF_NONOTIFY;
    EXPECT_EQ(0, HDateCheck(kWindow, &bad, 1, 1, 1, 1));
    EXPECT_EQ(0, g_notified);
}
#endif

} // namespace
