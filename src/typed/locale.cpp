// The process-wide locale: separators and default date and time formats read
// from the profile's "Intl" section, and the setters that override them.
#include "typed/typed_internal.h"
#include "seam.h"
#include <ctype.h>
#include <string.h>

// The initial values are what GetIntlSettings reads from an empty profile, so
// the number and date code is right even before start-up has run.
char g_cThousandSep = ',';
char g_cDecimalSep = '.';
char g_cDateSep = '/';
char g_szDateFormat[16] = "mm/dd/yyyy";
char g_cTimeSep = ':';
char g_szTimeFormat[16] = "h:mm:ss ap";
int g_nTLZero = 0;
char g_sz1159[4] = "AM";
char g_sz2359[4] = "PM";
char g_szCurrency[5] = "$";

namespace {

constexpr char kIntl[] = "Intl";
constexpr char kTimeBase[] = "h:mm:ss";
constexpr char kAmPmSuffix[] = " ap"; // four bytes with its terminator

// ASCII only, so that the stored formats are the same under every C runtime.
void LowerAscii(char* s)
{
    for (; *s; ++s)
        if (*s >= 'A' && *s <= 'Z')
            *s = (char)(*s - 'A' + 'a');
}

char ReadSeparator(const char* key, const char* def)
{
    char buffer[2];
    SeamProfileString(kIntl, key, def, buffer, sizeof buffer);
    return buffer[0];
}

// A separator is a 7-bit character that is neither a letter nor a digit.
BOOL SetSeparator(char* slot, char c)
{
    if ((signed char)c < 0 || isalnum((unsigned char)c))
        return FALSE;
    *slot = c;
    return TRUE;
}

bool HoldsEither(const char* s, char lower, char upper)
{
    return strchr(s, lower) || strchr(s, upper);
}

} // namespace

extern "C" void QUILLAPI GetIntlSettings(void)
{
    g_cThousandSep = ReadSeparator("sThousand", ",");
    g_cDecimalSep = ReadSeparator("sDecimal", ".");
    g_cDateSep = ReadSeparator("sDate", "/");

    // The stored date mask always uses "/"; the separator returns at display time.
    SeamProfileString(kIntl, "sShortDate", "mm/dd/yyyy", g_szDateFormat, sizeof g_szDateFormat);
    LowerAscii(g_szDateFormat);
    for (char* p = g_szDateFormat; *p; ++p)
        if (*p == g_cDateSep)
            *p = '/';

    g_cTimeSep = ReadSeparator("sTime", ":");

    g_nTLZero = (int)SeamProfileInt(kIntl, "iTLZero", 0);
    size_t n = 0;
    if (g_nTLZero)
        g_szTimeFormat[n++] = 'h';
    memcpy(g_szTimeFormat + n, kTimeBase, sizeof kTimeBase);
    n += sizeof kTimeBase - 1;
    if (SeamProfileInt(kIntl, "iTime", 0) == 0)
        memcpy(g_szTimeFormat + n, kAmPmSuffix, sizeof kAmPmSuffix);

    SeamProfileString(kIntl, "s1159", "AM", g_sz1159, sizeof g_sz1159);
    SeamProfileString(kIntl, "s2359", "PM", g_sz2359, sizeof g_sz2359);
    SeamProfileString(kIntl, "sCurrency", "$", g_szCurrency, sizeof g_szCurrency);
}

extern "C" BOOL QUILLAPI SetDecimalSep(char c) { return SetSeparator(&g_cDecimalSep, c); }
extern "C" BOOL QUILLAPI SetThousandsSep(char c) { return SetSeparator(&g_cThousandSep, c); }
extern "C" BOOL QUILLAPI SetDateSep(char c) { return SetSeparator(&g_cDateSep, c); }
extern "C" BOOL QUILLAPI SetTimeSep(char c) { return SetSeparator(&g_cTimeSep, c); }

// The format is kept with whatever separators it holds: none is replaced here.
extern "C" BOOL QUILLAPI SetDefDateFormat(LPCSTR format)
{
    if (!format || !HoldsEither(format, 'd', 'D') || !HoldsEither(format, 'm', 'M') ||
        !HoldsEither(format, 'y', 'Y'))
        return FALSE;
    _fstrnzcpy(g_szDateFormat, format, sizeof g_szDateFormat);
    LowerAscii(g_szDateFormat);
    return TRUE;
}

extern "C" BOOL QUILLAPI SetDefTimeFormat(LPCSTR format)
{
    if (!format || !HoldsEither(format, 'h', 'H') || !HoldsEither(format, 'm', 'M'))
        return FALSE;
    _fstrnzcpy(g_szTimeFormat, format, sizeof g_szTimeFormat);
    LowerAscii(g_szTimeFormat);
    return TRUE;
}
