// Dates and times: day numbers of both calendars, every stored date and time
// type through HDateTime, the date mask language both ways, and the field checks.
#include "typed/dates.h"

#include <math.h>
#include <string.h>
#include <time.h>

#include "seam.h"
#include "typed/typed_internal.h"

namespace {

// February stands at 29; the leap-year test cuts it.
constexpr BYTE kMonthDays[12] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr const char* kMonthNames[12] = {"january", "february", "march",     "april",
                                         "may",     "june",     "july",      "august",
                                         "september", "october", "november", "december"};
constexpr const char* kDayNames[7] = {"sunday",   "monday", "tuesday", "wednesday",
                                      "thursday", "friday", "saturday"};

// Day numbers of the stored forms: Q and q count from 1 January 1900, u from
// 30 December 1899.
constexpr long long kSerialOrigin = 2415021;
constexpr long long kOleOrigin = 2415019;
constexpr DWORD kMsPerDay = 86400000;
constexpr double kDayPerMs = 1.1574074074074074e-08;

// Only the storage of the struct tm types needs this many bytes.
constexpr int kTmFields = 9;

char Lower(char c) { return (c >= 'A' && c <= 'Z') ? (char)(c + ('a' - 'A')) : c; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

template <class T> T Load(LPCVOID p, int offset)
{
    T v;
    memcpy(&v, (const char*)p + offset, sizeof v);
    return v;
}
template <class T> void Put(LPVOID p, int offset, T v) { memcpy((char*)p + offset, &v, sizeof v); }

// A bounded writer: never more than `end` - start characters.
struct TextWriter {
    char* p;
    char* end; // last place, kept for the terminator
    void Char(char c)
    {
        if (p < end) *p++ = c;
    }
    // The decimal digits of v, at least `width` of them with leading zeros.
    void Unsigned(unsigned v, int width)
    {
        char digits[12];
        int n = 0;
        do {
            digits[n++] = (char)('0' + v % 10);
            v /= 10;
        } while (v);
        for (; width > n; --width) Char('0');
        while (n) Char(digits[--n]);
    }
    // As printf's "%0Nd": the sign takes one place of the width.
    void Signed(int v, int width)
    {
        if (v < 0) {
            Char('-');
            Unsigned(0u - (unsigned)v, width - 1);
        } else {
            Unsigned((unsigned)v, width);
        }
    }
    // A name of count letters (0 for all), its first letter shifted by the
    // case of `first`, the others by the case of `second`.
    void Name(const char* name, int count, char first, char second)
    {
        int shiftFirst = first - Lower(first), shiftRest = second - Lower(second);
        for (int i = 0; name[i] && (count == 0 || i < count); ++i)
            Char((char)(name[i] + (i == 0 ? shiftFirst : shiftRest)));
    }
};

// The same builder for HDateBuildMask, which also looks back at what it wrote.
struct MaskWriter {
    char* start;
    char* p;
    char* end;
    void Char(char c)
    {
        if (p < end) *p++ = c;
    }
    void Text(const char* s, int limit)
    {
        for (int i = 0; i < limit && s[i]; ++i) Char(s[i]);
    }
    bool EndsWith(char c) const { return p > start && p[-1] == c; }
};

// Reads a number as atoi does (blanks, a sign, digits), wrapping where atoi
// would overflow so that every build gives the same result.
int ReadNumber(const char* s)
{
    while (*s == ' ' || (*s >= '\t' && *s <= '\r')) ++s;
    bool negative = false;
    if (*s == '-' || *s == '+') negative = *s++ == '-';
    unsigned v = 0;
    for (; IsDigit(*s); ++s) v = v * 10u + (unsigned)(*s - '0');
    return (int)(negative ? 0u - v : v);
}

bool IsParseLetter(char c)
{
    return c == 'm' || c == 'd' || c == 'y' || c == 'h' || c == 's' || c == 'f';
}

DWORD DayMilliseconds(const HDateTime* r)
{
    return (((DWORD)r->bHour * 60 + r->bMinute) * 60 + r->bSecond) * 1000;
}

void SplitMilliseconds(DWORD ms, HDateTime* r)
{
    r->bHour = (BYTE)(ms / 3600000);
    r->bMinute = (BYTE)(ms / 60000 % 60);
    r->bSecond = (BYTE)(ms / 1000 % 60);
}

long long SerialDays(const HDateTime* r) { return HDateToDays(r->wYear, r->bMonth, r->bDay); }

} // namespace

// The day arithmetic is defined on doubles: in the 32-bit build it runs on SSE
// so that no product keeps x87's wider precision, which would move a few exact
// ties and make the two builds disagree.
#if defined(__i386__) && defined(__GNUC__) && !defined(__clang__)
#define HDATE_DOUBLE_MATH __attribute__((target("sse2,fpmath=sse")))
#else
#define HDATE_DOUBLE_MATH
#endif

HDATE_DOUBLE_MATH long long HDateToDays(int year, int month, int day)
{
    if (year == 0)
        year = 1992; // a date without a year
    else if (year < 0)
        year += 1; // there is no year 0
    int y = year, m = month + 1;
    if (month < 3) {
        y = year - 1;
        m = month + 13;
    }
    long long days = (long long)floor(365.25 * y) + (long long)floor(30.6001 * m) + day + 1720995;
    // The Gregorian correction, from 15 October 1582; the test takes the year
    // before the January and February shift.
    if (31LL * (month + 12LL * year) + day > 588828) {
        long long a = (long long)(0.01 * y);
        days += 2 - a + (long long)(0.25 * a);
    }
    return days;
}

HDATE_DOUBLE_MATH void HDaysToDate(long long days, HDateTime* record)
{
    long long j = days;
    if (j > 2299160) {
        long long a = (long long)((j - 1867216.25) * 2.7379070069885075e-05);
        j = j + 1 + a - (long long)(0.25 * a);
    }
    long long b = j + 1524;
    long long c = (long long)(6680 + (b - 2439870 - 122.1) * 0.0027378507871321013);
    long long e = 365 * c + (long long)(0.25 * c);
    long long f = (long long)((b - e) * 0.03267963176590926);
    long long day = b - e - (long long)(30.6001 * f);
    long long month = f - 1;
    if (month > 12) month -= 12;
    long long year = c - 4715;
    if (month > 2) --year;
    if (year < 1) --year;
    record->wYear = (SHORT)year;
    record->bMonth = (BYTE)month;
    record->bDay = (BYTE)day;
}

int HDateWeekday(int year, int month, int day)
{
    long long w = (HDateToDays(year, month, day) + 1) % 7;
    return (int)(w < 0 ? w + 7 : w);
}

bool HDateIsCommonYear(int year)
{
    int a = year < 0 ? -year : year;
    return (a % 4 != 0 || a % 100 == 0) && a % 400 != 0;
}

// ---- Stored forms ----

namespace {

// T and m go through one struct tm that outlives the calls: a year of 1900 or
// below leaves tm_year as the previous call set it.
struct tm g_tmStore;

// The 32-bit runtime's mktime and localtime know only 1970 to 2038; results
// outside count as failures in every build, so that both agree.
bool CalendarTimeFits(long long t) { return t >= 0 && t <= 0x7FFFFFFFLL; }

BOOL StoreCalendarTime(const HDateTime* r, LPVOID value, char type)
{
    if (r->wYear > 1900) g_tmStore.tm_year = r->wYear - 1900;
    g_tmStore.tm_mon = r->bMonth - 1;
    g_tmStore.tm_mday = r->bDay;
    g_tmStore.tm_hour = r->bHour;
    g_tmStore.tm_min = r->bMinute;
    g_tmStore.tm_sec = r->bSecond;
    time_t t = mktime(&g_tmStore);
    if (t == (time_t)-1 || !CalendarTimeFits((long long)t)) return 0;
    if (type == HTYPE_TIME_T) {
        Put<LONG>(value, 0, (LONG)t);
        return 1;
    }
    const int fields[kTmFields] = {g_tmStore.tm_sec,  g_tmStore.tm_min,  g_tmStore.tm_hour,
                                   g_tmStore.tm_mday, g_tmStore.tm_mon,  g_tmStore.tm_year,
                                   g_tmStore.tm_wday, g_tmStore.tm_yday, g_tmStore.tm_isdst};
    for (int i = 0; i < kTmFields; ++i) Put<LONG>(value, 4 * i, (LONG)fields[i]);
    return 1;
}

void ReadTmFields(HDateTime* r, long long year, int month, int mday, int hour, int min, int sec)
{
    r->wYear = (SHORT)(year + 1900);
    r->bMonth = (BYTE)((unsigned)month + 1u); // a stored tm_mon may be any int
    r->bDay = (BYTE)mday;
    r->bHour = (BYTE)hour;
    r->bMinute = (BYTE)min;
    r->bSecond = (BYTE)(sec % 60);
}

// Doubles pass these two only by pointer: a local SSE routine would otherwise
// get a calling convention of its own in the 32-bit build.
HDATE_DOUBLE_MATH void StoreOleDate(LPVOID value, long long days, DWORD ms)
{
    Put<double>(value, 0, (double)(days - kOleOrigin) + ms * kDayPerMs);
}

// Splits an OLE date into day and milliseconds, rounding to the nearest
// millisecond. False for a NaN or a day too far out for a day number.
HDATE_DOUBLE_MATH bool SplitOleDate(LPCVOID value, long long* days, DWORD* ms)
{
    double v = Load<double>(value, 0);
    if (!(v > -2e9 && v < 2e9)) return false;
    double whole = floor(v);
    long long n = (long long)floor((v - whole) * kMsPerDay + 0.5);
    long long d = (long long)whole;
    if (n >= (long long)kMsPerDay) {
        n -= kMsPerDay;
        ++d;
    }
    *days = d + kOleOrigin;
    *ms = (DWORD)n;
    return true;
}

} // namespace

extern "C" BOOL QUILLAPI DateTimeToData(const HDateTime* record, LPVOID value, char type)
{
    if (!record || !value) return 0;
    const HDateTime* r = record;
    switch (type) {
    case HTYPE_DATETIME:
        memcpy(value, r, sizeof(HDateTime));
        return 1;
    case HTYPE_SERIAL:
        Put<LONG>(value, 0, (LONG)(SerialDays(r) - kSerialOrigin));
        Put<DWORD>(value, 4, DayMilliseconds(r));
        return 1;
    case HTYPE_SERIAL16:
        Put<WORD>(value, 0, (WORD)(SerialDays(r) - kSerialOrigin));
        Put<WORD>(value, 2, (WORD)(DayMilliseconds(r) / 60000));
        return 1;
    case HTYPE_OLEDATE:
        StoreOleDate(value, SerialDays(r), DayMilliseconds(r));
        return 1;
    case HTYPE_TIME_T:
    case HTYPE_TM:
        return StoreCalendarTime(r, value, type);
    case HTYPE_SYSTEMTIME: {
        const WORD words[6] = {(WORD)r->wYear, r->bMonth,   r->bDay,
                               r->bHour,       r->bMinute,  r->bSecond};
        for (int i = 0; i < 6; ++i) Put<WORD>(value, 2 * i, words[i]);
        Put<DWORD>(value, 12, r->wMillisecond);
        return 1;
    }
    case HTYPE_DOSDATE:
        Put<WORD>(value, 0,
                  (WORD)(((r->wYear - 1980) & 0x7F) | ((r->bMonth & 0x0F) << 7) | ((r->bDay & 0x1F) << 11)));
        return 1;
    case HTYPE_DMY: // four bytes of the six are the value; the last two stay
        Put<BYTE>(value, 0, r->bDay);
        Put<BYTE>(value, 1, r->bMonth);
        Put<WORD>(value, 2, (WORD)r->wYear);
        return 1;
    case HTYPE_YMD:
        Put<WORD>(value, 0, (WORD)r->wYear);
        Put<WORD>(value, 2, r->bMonth);
        Put<WORD>(value, 4, r->bDay);
        return 1;
    case HTYPE_YYYYMMDD:
        Put<LONG>(value, 0, ((LONG)r->wYear * 100 + r->bMonth) * 100 + r->bDay);
        return 1;
    case HTYPE_DOSTIME: // packed time: seconds are kept in steps of two
        Put<WORD>(value, 0,
                  (WORD)((r->bHour & 0x1F) | ((r->bMinute & 0x3F) << 5) | (((r->bSecond / 2) & 0x1F) << 11)));
        return 1;
    case HTYPE_HMSH:
        Put<BYTE>(value, 0, r->bHour);
        Put<BYTE>(value, 1, r->bMinute);
        Put<BYTE>(value, 2, r->bSecond);
        Put<BYTE>(value, 3, (BYTE)(r->wMillisecond / 10));
        return 1;
    case HTYPE_HMS:
        Put<WORD>(value, 0, r->bHour);
        Put<WORD>(value, 2, r->bMinute);
        Put<WORD>(value, 4, r->bSecond);
        return 1;
    default:
        return 0;
    }
}

extern "C" BOOL QUILLAPI DataToDateTime(HDateTime* record, LPCVOID value, char type)
{
    if (!record) return 0;
    memset(record, 0, sizeof *record);
    if (!value) return 0;
    HDateTime* r = record;
    switch (type) {
    case HTYPE_DATETIME:
        memcpy(r, value, sizeof(HDateTime));
        return 1;
    case HTYPE_SERIAL: {
        DWORD ms = Load<DWORD>(value, 4);
        HDaysToDate(Load<LONG>(value, 0) + kSerialOrigin, r);
        SplitMilliseconds(ms, r);
        r->wMillisecond = (WORD)(ms % 1000);
        return 1;
    }
    case HTYPE_SERIAL16:
        HDaysToDate(Load<WORD>(value, 0) + kSerialOrigin, r);
        SplitMilliseconds((DWORD)Load<WORD>(value, 2) * 60000, r);
        return 1;
    case HTYPE_OLEDATE: {
        long long days;
        DWORD ms;
        if (!SplitOleDate(value, &days, &ms)) return 0;
        HDaysToDate(days, r);
        SplitMilliseconds(ms, r);
        r->wMillisecond = (WORD)(ms % 1000);
        return 1;
    }
    case HTYPE_TIME_T: {
        LONG v = Load<LONG>(value, 0);
        if (!CalendarTimeFits(v)) return 0;
        time_t t = (time_t)v;
        const struct tm* tm = localtime(&t);
        if (!tm) return 0;
        ReadTmFields(r, tm->tm_year, tm->tm_mon, tm->tm_mday, tm->tm_hour, tm->tm_min, tm->tm_sec);
        return 1;
    }
    case HTYPE_TM:
        ReadTmFields(r, Load<LONG>(value, 20), Load<LONG>(value, 16), Load<LONG>(value, 12),
                     Load<LONG>(value, 8), Load<LONG>(value, 4), Load<LONG>(value, 0));
        return 1;
    case HTYPE_SYSTEMTIME:
        r->wYear = (SHORT)Load<WORD>(value, 0);
        r->bMonth = (BYTE)Load<WORD>(value, 2);
        r->bDay = (BYTE)Load<WORD>(value, 4);
        r->bHour = (BYTE)Load<WORD>(value, 6);
        r->bMinute = (BYTE)Load<WORD>(value, 8);
        r->bSecond = (BYTE)Load<WORD>(value, 10);
        r->wMillisecond = (WORD)Load<DWORD>(value, 12);
        return 1;
    case HTYPE_DOSDATE: {
        WORD v = Load<WORD>(value, 0);
        r->wYear = (SHORT)((v & 0x7F) + 1980);
        r->bMonth = (BYTE)((v >> 7) & 0x0F);
        r->bDay = (BYTE)(v >> 11);
        return 1;
    }
    case HTYPE_DMY:
        r->bDay = Load<BYTE>(value, 0);
        r->bMonth = Load<BYTE>(value, 1);
        r->wYear = (SHORT)Load<WORD>(value, 2);
        return 1;
    case HTYPE_YMD:
        r->wYear = (SHORT)Load<WORD>(value, 0);
        r->bMonth = (BYTE)Load<WORD>(value, 2);
        r->bDay = (BYTE)Load<WORD>(value, 4);
        return 1;
    case HTYPE_YYYYMMDD: {
        LONG v = Load<LONG>(value, 0);
        r->wYear = (SHORT)(v / 10000);
        r->bMonth = (BYTE)(v / 100 % 100);
        r->bDay = (BYTE)(v % 100);
        return 1;
    }
    case HTYPE_DOSTIME: {
        WORD v = Load<WORD>(value, 0);
        r->bHour = (BYTE)(v & 0x1F);
        r->bMinute = (BYTE)((v >> 5) & 0x3F);
        r->bSecond = (BYTE)((v >> 11) * 2);
        return 1;
    }
    case HTYPE_HMSH:
        r->bHour = Load<BYTE>(value, 0);
        r->bMinute = Load<BYTE>(value, 1);
        r->bSecond = Load<BYTE>(value, 2);
        r->wMillisecond = (WORD)(Load<BYTE>(value, 3) * 10);
        return 1;
    case HTYPE_HMS:
        r->bHour = (BYTE)Load<WORD>(value, 0);
        r->bMinute = (BYTE)Load<WORD>(value, 2);
        r->bSecond = (BYTE)Load<WORD>(value, 4);
        return 1;
    default:
        return 0;
    }
}

// ---- The mask language ----

void HDateMaskNext(LPCSTR mask, int* pos, bool* hourSeen, HDateItem* item)
{
    memset(item, 0, sizeof *item);
    int i = *pos;
    char c = mask[i];
    char lc = Lower(c);
    item->first = item->second = c;
    item->length = 1;
    if (!c) {
        item->kind = HDI_END;
        item->length = 0;
        return;
    }
    if (lc == 'd' || lc == 'm' || lc == 'y' || lc == 'h' || lc == 's' || lc == 'f') {
        char field = lc;
        // An "m" run just behind an hour is the minute.
        if (lc == 'm' && *hourSeen &&
            ((i >= 1 && Lower(mask[i - 1]) == 'h') || (i >= 2 && Lower(mask[i - 2]) == 'h')))
            field = 'n';
        int longest = (field == 'd' || field == 'm' || field == 'y') ? 4 : 2;
        int count = 1;
        while (count < longest && Lower(mask[i + count]) == lc) ++count;
        if (lc == 'h') *hourSeen = true;
        item->kind = HDI_FIELD;
        item->field = field;
        item->count = count;
        item->length = count;
        if (count > 1) item->second = mask[i + 1];
        if (count > 2) item->literal = mask[i + 2]; // the third letter, which "yyy" shows
    } else if (lc == 'a' && Lower(mask[i + 1]) == 'p') {
        item->kind = HDI_AMPM;
        item->second = mask[i + 1];
        item->length = 2;
    } else if (c == '/') {
        item->kind = HDI_LITERAL;
        item->literal = g_cDateSep;
    } else if (c == ':') {
        item->kind = HDI_LITERAL;
        item->literal = g_cTimeSep;
    } else if (c == '\\') {
        if (mask[i + 1]) {
            item->kind = HDI_LITERAL;
            item->literal = mask[i + 1];
            item->length = 2;
        } else {
            item->kind = HDI_NOTHING;
        }
    } else if (c == '[') {
        int n = 1;
        while (mask[i + n] && mask[i + n] != ']') ++n;
        item->kind = HDI_NOTHING;
        item->length = mask[i + n] ? n + 1 : n;
    } else {
        item->kind = HDI_LITERAL;
        item->literal = c;
    }
    *pos = i + item->length;
}

namespace {

// One walk of a default format: the fields of the mask in the locale's order.
// A separator behind a dropped field takes the place of the separator before
// it, so that dropping a field never leaves two separators side by side.
void CopyDefaultFields(MaskWriter& out, const char* format, int formatSize, const char letters[3],
                       const bool present[3], char separator, bool doubleYears, bool copyOthers)
{
    bool dropped = false;
    for (int i = 0; i < formatSize && format[i]; ++i) {
        char c = format[i];
        int field = c == letters[0] ? 0 : c == letters[1] ? 1 : c == letters[2] ? 2 : -1;
        if (field >= 0) {
            if (present[field]) {
                out.Char(c);
                if (doubleYears && c == 'y') out.Char(c);
            } else {
                dropped = true;
            }
            continue;
        }
        if (!copyOthers && c != separator) continue;
        if (dropped) {
            if (out.EndsWith(separator))
                out.p[-1] = c;
            else if (c != separator)
                out.Char(c);
            dropped = false;
        } else {
            out.Char(c);
        }
    }
    if (dropped && out.EndsWith(separator)) --out.p;
}

} // namespace

void HDateBuildMaskN(LPCSTR mask, BOOL hasDate, BOOL hasTime, LPSTR result, int resultSize)
{
    if (!result || resultSize < 1) return;
    MaskWriter out{result, result, result + resultSize - 1};
    const int dateSize = (int)sizeof g_szDateFormat, timeSize = (int)sizeof g_szTimeFormat;
    if (!mask || !*mask) {
        if (hasDate) out.Text(g_szDateFormat, dateSize);
        if (hasTime) {
            if (out.p > out.start) out.Char(' ');
            out.Text(g_szTimeFormat, timeSize);
        }
        *out.p = 0;
        return;
    }

    char low[kTypedWorkSize];
    int n = 0;
    for (; n < kTypedWorkSize - 1 && mask[n]; ++n) low[n] = Lower(mask[n]);
    low[n] = 0;

    bool date[3] = {false, false, false}; // d, m, y
    bool fourDigitYears = false;
    if (hasDate) {
        date[0] = strchr(low, 'd') != nullptr;
        date[1] = strchr(low, 'm') != nullptr;
        const char* y = strchr(low, 'y');
        date[2] = y != nullptr;
        char defaultFormat[sizeof g_szDateFormat + 1] = {};
        memcpy(defaultFormat, g_szDateFormat, sizeof g_szDateFormat);
        fourDigitYears = y && strncmp(y, "yyyy", 4) == 0 && !strstr(defaultFormat, "yyyy");
    }
    bool hasDateFields = date[0] || date[1] || date[2];

    bool time[3] = {false, false, false}; // h, m, s
    if (hasTime) {
        time[0] = strchr(low, 'h') != nullptr;
        time[2] = strstr(low, "ss") != nullptr;
        // With date fields about, a minute is an "mm" from the first time
        // separator on; "mm" before it is the month.
        const char* from = hasDateFields ? strchr(low, ':') : low;
        time[1] = from && strstr(from, "mm");
        if (!time[0] && !time[1] && !time[2]) hasTime = FALSE;
    }

    if (hasDateFields) {
        static constexpr char kDateLetters[3] = {'d', 'm', 'y'};
        CopyDefaultFields(out, g_szDateFormat, dateSize, kDateLetters, date, '/', fourDigitYears, true);
        if (hasTime) out.Char(' ');
    }
    if (hasTime) {
        // Without an hour only time separators come along: " ap" goes with the hours.
        static constexpr char kTimeLetters[3] = {'h', 'm', 's'};
        CopyDefaultFields(out, g_szTimeFormat, timeSize, kTimeLetters, time, ':', false, time[0]);
    }
    *out.p = 0;
}

extern "C" void QUILLAPI HDateBuildMask(LPCSTR mask, BOOL hasDate, BOOL hasTime, LPSTR result)
{
    HDateBuildMaskN(mask, hasDate, hasTime, result, kTypedWorkSize);
}

namespace {

bool MaskHasAmPm(const char* mask)
{
    for (int i = 0; mask[i] && mask[i + 1]; ++i)
        if (Lower(mask[i]) == 'a' && Lower(mask[i + 1]) == 'p') return true;
    return false;
}

void WriteField(TextWriter& out, const HDateItem& it, const HDateTime* r, int hour)
{
    switch (it.field) {
    case 'd':
        if (it.count <= 2) {
            out.Unsigned(r->bDay, it.count);
        } else {
            int weekday = HDateWeekday(r->wYear, r->bMonth, r->bDay);
            out.Name(kDayNames[weekday], it.count == 3 ? 3 : 0, it.first, it.second);
        }
        break;
    case 'm':
        if (it.count <= 2)
            out.Unsigned(r->bMonth, it.count);
        else if (r->bMonth >= 1 && r->bMonth <= 12) // no name for a month out of range
            out.Name(kMonthNames[r->bMonth - 1], it.count == 3 ? 3 : 0, it.first, it.second);
        break;
    case 'y':
        if (it.count == 1) {
            out.Char(it.first);
        } else if (it.count == 4) {
            out.Signed(r->wYear, 4);
        } else {
            out.Signed(r->wYear % 100, 2);
            if (it.count == 3) out.Char(it.literal);
        }
        break;
    case 'h':
        out.Unsigned((unsigned)hour, it.count);
        break;
    default: { // minute, second, millisecond: one letter shows itself
        if (it.count == 1) {
            out.Char(it.first);
            break;
        }
        unsigned v = it.field == 'n' ? r->bMinute : it.field == 's' ? r->bSecond : r->wMillisecond;
        out.Unsigned(v, 2);
        break;
    }
    }
}

} // namespace

extern "C" int QUILLAPI HDateFormat(const HDateTime* record, LPCSTR mask, LPSTR text, int size, BOOL editing,
                BOOL hasDate, BOOL hasTime)
{
    if (!text || size < 1) return 0;
    text[0] = 0;
    if (!record) return 0;
    const HDateTime* r = record;
    char working[kTypedWorkSize];
    bool noMask = !mask || !*mask;
    if (editing || noMask) {
        // A date at midnight shows as a date.
        if (hasDate && hasTime && noMask && !r->bHour && !r->bMinute && !r->bSecond && !r->wMillisecond)
            hasTime = FALSE;
        HDateBuildMaskN(mask, hasDate, hasTime, working, sizeof working);
        mask = working;
    }
    int hour = r->bHour;
    if (MaskHasAmPm(mask)) {
        hour %= 12;
        if (!hour) hour = 12;
    }

    TextWriter out{text, text + size - 1};
    int pos = 0;
    bool hourSeen = false;
    for (;;) {
        HDateItem it;
        HDateMaskNext(mask, &pos, &hourSeen, &it);
        if (it.kind == HDI_END) break;
        switch (it.kind) {
        case HDI_FIELD:
            WriteField(out, it, r, hour);
            break;
        case HDI_AMPM: // "a" moved on by 15 is "p"; "p" moved back by 3 is "m"
            out.Char(r->bHour < 12 ? it.first : (char)(it.first + 15));
            out.Char((char)(it.second - 3));
            break;
        case HDI_LITERAL:
            out.Char(it.literal);
            break;
        default:
            break;
        }
    }
    *out.p = 0;
    return (int)(out.p - text);
}

extern "C" int QUILLAPI HDateParse(HDateTime* record, LPCSTR text, LPCSTR mask, BOOL hasDate, BOOL hasTime)
{
    if (!record) return 1;
    memset(record, 0, sizeof *record);
    if (!text) return 1;
    HDateTime* r = record;
    char working[kTypedWorkSize];
    HDateBuildMaskN(mask, hasDate, hasTime, working, sizeof working);

    const char* m = working;
    const char* t = text;
    bool hourSeen = false;
    while (*m && *t) {
        char lc = Lower(*m);
        if (IsParseLetter(lc)) {
            int run = 1;
            while (Lower(m[run]) == lc) ++run;
            // One text character for each mask letter, and one digit more
            // unless another field follows at once. Separators are copied too
            // and end the number. The copy stops at the terminator.
            int n = 0;
            while (n < run && t[n] && n < kTypedWorkSize - 1) {
                g_szTypedWork[n] = t[n];
                ++n;
            }
            if (n == run && !IsParseLetter(Lower(m[run])) && IsDigit(t[n]) && n < kTypedWorkSize - 1) {
                g_szTypedWork[n] = t[n];
                ++n;
            }
            g_szTypedWork[n] = 0;
            int v = ReadNumber(g_szTypedWork);
            m += run;
            t += n;
            switch (lc) {
            case 'd': r->bDay = (BYTE)v; break;
            case 'f': r->wMillisecond = (BYTE)v; break; // the low 8 bits, as the others
            case 'h':
                r->bHour = (BYTE)v;
                hourSeen = true;
                break;
            case 's': r->bSecond = (BYTE)v; break;
            case 'y': r->wYear = (SHORT)v; break;
            default: // "m": the month until an hour has been read, then the minute
                if (hourSeen)
                    r->bMinute = (BYTE)v;
                else
                    r->bMonth = (BYTE)v;
                break;
            }
        } else if (lc == 'a') {
            if (*t == 'a' || *t == 'A') {
                if (r->bHour == 12) r->bHour = 0;
            } else if (r->bHour < 12) {
                r->bHour = (BYTE)(r->bHour + 12);
            }
            ++m;
            ++t;
        } else {
            ++m; // steps both without comparing them
            ++t;
        }
    }
    return 1;
}

// ---- Field checks ----

namespace {

HCtlBase* CheckedControl(HWND hWnd) { return hWnd ? (HCtlBase*)SeamGetRecord(hWnd) : nullptr; }

// A failed check tells the control's notify target; its veto takes the focus back.
void ReportBadField(HWND hWnd, HCtlBase* control)
{
    if (!control || (control->wFlags & HCTLF_NONOTIFY)) return;
    if (SeamNotify(control, HN_BADDATE)) SeamSetFocus(hWnd);
}

} // namespace

extern "C" BOOL QUILLAPI HDateCheck(HWND hWnd, HDateTime* record, BOOL repair, BOOL year, BOOL month, BOOL day)
{
    if (!record) return 0;
    HCtlBase* control = CheckedControl(hWnd);
    HDateTime* r = record;
    bool failed = false;
    if (year && repair) {
        if (r->wYear >= 0 && r->wYear <= 99)
            r->wYear = (SHORT)(r->wYear + 1900);
        else if (r->wYear > 2200) // four digits typed over a two-digit year: keep the first two
            r->wYear = (SHORT)(r->wYear / 100 + 1900);
    }
    if (month && (r->bMonth < 1 || r->bMonth > 12)) {
        failed = true;
        if (repair) r->bMonth = r->bMonth < 2 ? 1 : 12;
    }
    if (day) {
        int limit = 0;
        if (r->bMonth == 2 && HDateIsCommonYear(r->wYear))
            limit = 28;
        else if (!failed || repair) // an unchecked month out of range allows 31
            limit = (r->bMonth >= 1 && r->bMonth <= 12) ? kMonthDays[r->bMonth - 1] : 31;
        if (limit && (r->bDay == 0 || r->bDay > limit)) {
            failed = true;
            if (repair) r->bDay = (BYTE)(r->bDay == 0 ? 1 : limit);
        }
    }
    if (failed) ReportBadField(hWnd, control);
    return !failed;
}

extern "C" BOOL QUILLAPI HTimeCheck(HWND hWnd, HDateTime* record, BOOL repair, BOOL ampm, BOOL hour, BOOL minute,
                BOOL second)
{
    if (!record) return 0;
    HCtlBase* control = CheckedControl(hWnd);
    HDateTime* r = record;
    bool failed = false;
    if (hour) {
        if (!ampm && r->bHour > 23) {
            failed = true;
            if (repair) r->bHour = 23;
        } else if (ampm && (r->bHour == 0 || r->bHour > 12)) {
            // Checked on the 24-hour value: every afternoon hour but 12 ends as 12.
            failed = true;
            if (repair) r->bHour = r->bHour == 0 ? 1 : 12;
        }
    }
    if (minute && r->bMinute > 59) {
        failed = true;
        if (repair) r->bMinute = r->bMonth < 59 ? r->bMonth : 59; // from the month, as it always was
    }
    if (second && r->bSecond > 59) {
        failed = true;
        if (repair) r->bSecond = 59;
    }
    if (failed) ReportBadField(hWnd, control);
    return !failed;
}
