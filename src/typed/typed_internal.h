// Library-wide state and routines of the typed-data layer that stay inside the library.
#pragma once
#include "quill32.h"

// Locale, read from the profile's "Intl" section and changed by the setters.
extern char g_cThousandSep;     // between groups of three digits
extern char g_cDecimalSep;      // decimal point, both ways
extern char g_cDateSep;         // what a "/" in a date mask displays
extern char g_szDateFormat[16]; // lower-cased, with "/" for the date separator
extern char g_cTimeSep;         // what a ":" in a time mask displays
extern char g_szTimeFormat[16]; // "h:mm:ss", "hh:mm:ss", with " ap" for a 12-hour clock
extern int g_nTLZero;           // the profile's leading-zero setting, kept for reference
extern char g_sz1159[4];        // morning text
extern char g_sz2359[4];        // afternoon text
extern char g_szCurrency[5];    // currency text

// The shared static work area of the number and date code: a mask or a field
// being read. Not re-entrant; every writer bounds itself by its size.
constexpr int kTypedWorkSize = 128;
extern char g_szTypedWork[kTypedWorkSize];
