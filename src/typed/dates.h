// Internal routines of the date code: day numbers of both calendars, the date
// mask language, the reading of a text by a mask, and the field checks.
#pragma once
#include "quill32.h"

// Julian day number of a calendar date: the Julian calendar up to 4 October
// 1582, the Gregorian from 15 October 1582. A year of 0 counts as 1992.
long long HDateToDays(int year, int month, int day);
// Calendar date of a Julian day number, into wYear, bMonth and bDay of record.
void HDaysToDate(long long days, HDateTime* record);
// Day of the week of a date, Sunday being 0.
int HDateWeekday(int year, int month, int day);
// True for a year whose February has 28 days.
bool HDateIsCommonYear(int year);

// HDateFormat, HDateParse, HDateCheck, HTimeCheck and HDateBuildMask are
// exported (quill32.h). The library's own callers build the working mask with
// the size of their result buffer: it holds resultSize bytes and is always
// terminated. HDateBuildMask is this with 128 bytes.
void HDateBuildMaskN(LPCSTR mask, BOOL hasDate, BOOL hasTime, LPSTR result, int resultSize);

// One element of a date mask as the display walks it.
enum HDateItemKind {
    HDI_END,     // the mask has ended
    HDI_FIELD,   // a run of a field letter
    HDI_AMPM,    // "ap": shows "am" or "pm"
    HDI_LITERAL, // one character shown as `literal`
    HDI_NOTHING, // "[...]" or a lone backslash at the end: shows nothing
};

struct HDateItem {
    HDateItemKind kind;
    char field;    // 'd', 'm' (month), 'n' (minute), 'y', 'h', 's', 'f'
    int count;     // letters in the run
    char first;    // first mask letter as written, for the case of names
    char second;   // second mask letter as written, or the first if alone
    char literal;  // what a literal shows
    int length;    // mask characters the element takes
};

// Walks one element of mask at *pos and moves *pos behind it. *hourSeen
// carries whether an hour run has been met, which decides whether an "m" run
// is a minute. Start with *pos 0 and *hourSeen false.
void HDateMaskNext(LPCSTR mask, int* pos, bool* hourSeen, HDateItem* item);
