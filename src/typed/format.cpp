// FormatData and ParseData: the dispatch by class letter to the number and date
// code, and the small routines of booleans, characters, masked text and strings.
#include "typed/format.h"
#include "typed/dates.h"
#include "typed/numbers.h"
#include "seam.h"
#include <stdint.h>
#include <string.h>

#ifndef GWL_ID
#define GWL_ID (-12)
#endif

namespace {

constexpr char kDefaultBoolMask[] = "TRUE;FALSE";

// The scale of a money value as a 64-bit integer, should type M ever be
// filled in; nothing reads it yet.
[[maybe_unused]] constexpr int64_t kMoneyScale[16] = {
    1LL,           10LL,           100LL,           1000LL,           10000LL,           100000LL,
    1000000LL,     10000000LL,     100000000LL,     1000000000LL,     10000000000LL,     100000000000LL,
    1000000000000LL, 10000000000000LL, 100000000000000LL, 1000000000000000LL};

// Type M is reserved: it formats to nothing and parses to nothing.
int HMoneyFormat() { return 0; }
void HMoneyParse() {}

bool IsDateClass(char cls)
{
    return cls == HCLASS_DATETIME || cls == HCLASS_DATE || cls == HCLASS_CLOCK || cls == HCLASS_TIME;
}

bool IsNumberClass(char cls) { return cls == HCLASS_CURRENCY || cls == HCLASS_NUMBER || cls == HCLASS_CALC; }

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsPunct(char c)
{
    return (c >= '!' && c <= '/') || (c >= ':' && c <= '@') || (c >= '[' && c <= '`') ||
           (c >= '{' && c <= '~');
}

// True if the date mask is null or names the field by its letter in either
// case; an empty mask names none.
bool MaskNames(LPCSTR mask, char lower)
{
    if (!mask)
        return true;
    for (const char* p = mask; *p; ++p)
        if (*p == lower || *p == lower - 'a' + 'A')
            return true;
    return false;
}

// The true or the false text of a boolean mask, as a start and a length.
void BoolText(LPCSTR mask, BOOL truth, LPCSTR* text, size_t* length)
{
    if (!mask || !*mask)
        mask = kDefaultBoolMask;
    const char* semi = strchr(mask, ';');
    if (!semi) { // one text for both states
        *text = mask;
        *length = strlen(mask);
    } else if (truth) {
        *text = mask;
        *length = (size_t)(semi - mask);
    } else {
        *text = semi + 1;
        *length = strlen(semi + 1);
    }
}

int FormatDate(LPCVOID value, char cls, char type, LPCSTR mask, LPSTR text, int size, BOOL editing)
{
    HDateTime record;
    if (!DataToDateTime(&record, value, type))
        return 0;
    return HDateFormat(&record, mask, text, size, editing, cls != HCLASS_TIME, cls != HCLASS_DATE);
}

// Keeps the date classes' error word as it has always been: DateTimeToData's
// 1 for success is OR-ed in, so a good text returns 1 as a bad one does.
int ParseDate(HWND hWnd, LPVOID value, char cls, char type, LPCSTR mask, LPCSTR text,
              HDATAVALIDATEPROC validator)
{
    const BOOL hasDate = cls != HCLASS_TIME, hasTime = cls != HCLASS_DATE;
    HDateTime record;
    HDateParse(&record, text, mask, hasDate, hasTime);
    int error = 0;
    if (!validator) {
        if (hasDate && !HDateCheck(hWnd, &record, TRUE, MaskNames(mask, 'y'), MaskNames(mask, 'm'),
                                   MaskNames(mask, 'd')))
            error = 1;
        if (hasTime && !HTimeCheck(hWnd, &record, TRUE, MaskNames(mask, 'a'), MaskNames(mask, 'h'),
                                   MaskNames(mask, 'm'), MaskNames(mask, 's')))
            error |= 1;
    }
    return error | DateTimeToData(&record, value, type);
}

} // namespace

bool HMaskIsPlaceholder(char maskChar)
{
    return maskChar == '@' || maskChar == '#' || maskChar == '!' || maskChar == '&' || maskChar == '*';
}

bool HMaskFits(char maskChar, char c)
{
    switch (maskChar) {
    case '@':
        return IsLetter(c);
    case '#':
        return IsDigit(c);
    case '!':
        return IsPunct(c);
    case '&':
        return IsLetter(c) || IsDigit(c);
    case '*':
        return IsLetter(c) || IsDigit(c) || IsPunct(c) || c == ' ';
    default:
        return false;
    }
}

char HMaskFill(char maskChar) { return maskChar == '#' ? '_' : maskChar == '!' ? '-' : ' '; }

extern "C" int QUILLAPI HMaskApply(LPCSTR source, LPCSTR mask, LPSTR target, int size, BOOL strip)
{
    if (!source || !target || size < 1)
        return 0;
    if (!mask || !*mask)
        return _fstrnzcpy(target, source, size);
    int n = 0;
    const char* s = source;
    const char* m = mask;
    while (*m && n < size - 1) {
        char c = *m++;
        if (c == '[') { // a colour section shows nothing
            while (*m && *m != ']')
                ++m;
            if (*m)
                ++m;
            continue;
        }
        if (c == '\\') {
            if (!*m)
                break; // a backslash at the end escapes nothing
            c = *m++;
        } else if (HMaskIsPlaceholder(c)) {
            if (!strip) {
                while (*s && !HMaskFits(c, *s))
                    ++s;
                target[n++] = *s ? *s++ : HMaskFill(c);
            } else if (!*s) {
                target[n++] = HMaskFill(c);
            } else if (HMaskFits(c, *s)) {
                target[n++] = *s++;
            } else {
                target[n] = 0; // one more than written: where the mask stopped
                return n + 1;
            }
            continue;
        }
        if (!strip)
            target[n++] = c;
        if (*s == c)
            ++s;
    }
    target[n] = 0;
    return n;
}

extern "C" BOOL QUILLAPI HBoolIsTrue(char type, LPCVOID value)
{
    if (!value)
        return FALSE;
    switch (type) {
    case HTYPE_DWORD:
    case HTYPE_INT:
    case HTYPE_LONG:
    case HTYPE_ULONG: {
        uint32_t v;
        memcpy(&v, value, sizeof v);
        return v != 0;
    }
    case HTYPE_BYTE:
    case HTYPE_CHAR:
        return *(const uint8_t*)value != 0;
    case HTYPE_SHORT:
    case HTYPE_WORD: {
        uint16_t v;
        memcpy(&v, value, sizeof v);
        return v != 0;
    }
    default:
        return FALSE;
    }
}

extern "C" BOOL QUILLAPI HBoolStore(char type, LPVOID value, BOOL truth)
{
    return value && HNumStoreUnsigned(type, value, truth ? 1 : 0);
}

extern "C" int QUILLAPI HBoolFormat(BOOL truth, LPCSTR mask, LPSTR text, int size)
{
    if (!text || size <= 0)
        return 0;
    LPCSTR word;
    size_t length;
    BoolText(mask, truth, &word, &length);
    if (length > (size_t)(size - 1))
        length = (size_t)(size - 1);
    memcpy(text, word, length);
    text[length] = 0;
    return (int)length;
}

// A text is true if it agrees with the true-text as far as the shorter of the
// two goes, so an empty text and any prefix of the true-text are true.
extern "C" BOOL QUILLAPI HBoolParse(LPCSTR mask, LPCSTR text)
{
    if (!text)
        return FALSE;
    if (!mask || !*mask)
        mask = kDefaultBoolMask;
    const char* semi = strchr(mask, ';');
    if (!semi)
        return TRUE;
    size_t n = (size_t)(semi - mask), length = strlen(text);
    if (length < n)
        n = length;
    return strncmp(text, mask, n) == 0;
}

extern "C" int QUILLAPI FormatData(LPCVOID value, char cls, char type, LPCSTR mask, LPSTR text,
                                   int size, LPBOOL negative, BOOL editing)
{
    if (!value || !text || size < 2)
        return 0;
    if (negative)
        *negative = 0;
    if (IsDateClass(cls))
        return FormatDate(value, cls, type, mask, text, size, editing);
    if (IsNumberClass(cls)) {
        if (type == HTYPE_MONEY)
            return HMoneyFormat();
        double number = NumToDouble(value, type);
        if (negative)
            *negative = number < 0;
        return HFormatDouble(number, mask, text, size, editing);
    }
    switch (cls) {
    case HCLASS_BOOL: {
        BOOL truth = HBoolIsTrue(type, value);
        if (negative && !truth)
            *negative = 1; // callers pick the alternative colour by it
        return HBoolFormat(truth, mask, text, size);
    }
    case HCLASS_CHAR:
        text[0] = *(const char*)value;
        text[1] = 0;
        return 1;
    case HCLASS_MASKED:
        return HMaskApply((LPCSTR)value, mask, text, size, FALSE);
    case HCLASS_STRING:
        return _fstrnzcpy(text, (LPCSTR)value, size);
    default:
        return 0;
    }
}

int HParseDataN(HWND hWnd, LPVOID value, int capacity, char cls, char type, LPCSTR mask,
                LPCSTR text, HDATAVALIDATEPROC validator)
{
    if (!value || !text)
        return 0;
    int error = 0;
    if (IsDateClass(cls)) {
        error = ParseDate(hWnd, value, cls, type, mask, text, validator);
    } else if (IsNumberClass(cls)) {
        if (type == HTYPE_MONEY)
            HMoneyParse();
        else if (!DoubleToNum(value, type, HNumStrip(text)))
            error = 1;
    } else {
        switch (cls) {
        case HCLASS_BOOL:
            HBoolStore(type, value, HBoolParse(mask, text));
            break;
        case HCLASS_CHAR:
            *(char*)value = text[0];
            break;
        case HCLASS_MASKED: {
            size_t length = strlen(text) + 1;
            int room = (capacity >= 0 && (size_t)capacity < length) ? capacity : (int)length;
            if (length > 0x7fffffff)
                room = 0x7fffffff;
            HMaskApply(text, mask, (LPSTR)value, room, TRUE);
            break;
        }
        case HCLASS_STRING:
            _fstrnzcpy((LPSTR)value, text, capacity);
            break;
        default:
            error = 1;
        }
    }
    if (validator) {
        error = validator(hWnd, SeamGetWindowLong(hWnd, GWL_ID));
        if (error)
            SeamSetFocus(hWnd);
    }
    return error;
}

extern "C" int QUILLAPI ParseData(HWND hWnd, LPVOID value, char cls, char type, LPCSTR mask,
                                  LPCSTR text, HDATAVALIDATEPROC validator)
{
    // The interface has no capacity: a string is copied whole.
    return HParseDataN(hWnd, value, -1, cls, type, mask, text, validator);
}
