// Typed keystroke editing: each key that reaches a typed field is placed in its
// display text, or refused, by the rules of the value's class.
#include "typed/keys.h"

#include <string.h>

#include "seam.h"
#include "typed/dates.h"
#include "typed/format.h"
#include "typed/typed_internal.h"

namespace {

// What a number field without a mask types against: the default display mask.
constexpr char kDefaultNumberMask[] = "*0.*";
constexpr char kDefaultBoolMask[] = "TRUE;FALSE";
// A boolean key rewrites the whole text.
constexpr int kRepaintAll = 1000;
// Unlimited parts of a number mask while typing.
constexpr int kMaxFraction = 64;
constexpr int kMaxDigits = 127;

// Inner codes of the Delete key.
enum DeleteCode {
    kDeleteNothing = 0, // beep
    kDeleteRemove = 1,  // take out the character at the caret
    kDeleteStep = 2,    // the caret steps over a character that stays
    kDeleteDone = 3,    // done; the caret stays
};

// ASCII classification, the same in every runtime.
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsPunct(char c) { return c > ' ' && c < 0x7F && !IsDigit(c) && !IsLetter(c); }
char Lower(char c) { return (c >= 'A' && c <= 'Z') ? (char)(c + ('a' - 'A')) : c; }

// The text's length, or -1 if no terminator stands within the buffer.
int BoundedLength(LPCSTR text, int capacity)
{
    for (int i = 0; i < capacity; ++i)
        if (!text[i]) return i;
    return -1;
}

// The buffer a key works on: the text, its length and its room.
struct Field {
    LPSTR text;
    int length;
    int capacity;

    bool Insert(int position, char c, int count = 1)
    {
        if (position < 0 || position > length || length + count >= capacity) return false;
        HStrInsertFill(text, c, count, position);
        length += count;
        return true;
    }
    void Remove(int position)
    {
        if (position < 0 || position >= length) return;
        memmove(text + position, text + position + 1, (size_t)(length - position));
        --length;
    }
    char At(int position) const { return position >= 0 && position < length ? text[position] : 0; }
};

int CountDigits(LPCSTR text, int from, int to)
{
    int n = 0;
    for (int i = from; i < to; ++i) n += IsDigit(text[i]);
    return n;
}

int Find(const Field& f, char c)
{
    for (int i = 0; i < f.length; ++i)
        if (f.text[i] == c) return i;
    return -1;
}

LPCSTR NumberMask(LPCSTR mask) { return mask && *mask ? mask : kDefaultNumberMask; }

// Digit capacities of the applicable mask section while editing; "*" parts
// count as the most a field may hold.
void NumberLimits(LPCSTR mask, bool negative, HNumMask* parsed, int* intMax, int* fracMax)
{
    HNumMaskParse(NumberMask(mask), negative, 1, parsed);
    *fracMax = parsed->fracMax < 0 ? kMaxFraction : parsed->fracMax;
    *intMax = parsed->intMax < 0 ? kMaxDigits - *fracMax : parsed->intMax;
}

// ---- Numbers, classes c and n ----

int NumberDeleteCode(Field& f, LPCSTR mask, int position)
{
    if (position >= f.length) return kDeleteNothing;
    char c = f.text[position];
    if (c == g_cDecimalSep) return kDeleteStep;
    if (c == '-') return kDeleteRemove;
    HNumMask m;
    int intMax, fracMax;
    NumberLimits(mask, Find(f, '-') >= 0, &m, &intMax, &fracMax);
    int point = Find(f, g_cDecimalSep);
    if (point < 0) point = f.length;
    // A required digit is zeroed, never removed.
    if (IsDigit(c)) {
        if (position < point ? CountDigits(f.text, 0, point) <= m.intZeros
                             : position - point - 1 < m.fracZeros) {
            f.text[position] = '0';
            return kDeleteStep;
        }
    }
    return kDeleteRemove;
}

int DeleteWithCode(char cls, char type, Field& f, LPCSTR mask, int position, bool beep);

int NumberTypeChar(char cls, char type, Field& f, LPCSTR mask, int position, char key, int* advance,
                   int* repaint)
{
    *advance = *repaint = 1;
    // Typing over the minus sign drops it; a refusal puts it back.
    int minusAt = -1;
    if (f.At(position) == '-' && key != '-') {
        int length = f.length;
        int at = position;
        position += DeleteWithCode(cls, type, f, mask, position, false);
        if (f.length < length) minusAt = at;
    }
    int point = Find(f, g_cDecimalSep);
    bool accepted = false;

    if (key == '-') {
        accepted = position == 0 && (f.At(0) == '-' || f.Insert(0, '-'));
    } else if (key == g_cDecimalSep) {
        bool pointIsEnd = point < 0;
        if (pointIsEnd && strchr(NumberMask(mask), '.')) point = f.length;
        // Room for the separator must be there before digits are dropped.
        if (point >= 0 && position <= point && !(pointIsEnd && f.length + 1 >= f.capacity)) {
            // The point jumps to the fraction and drops the digits passed over.
            bool removed = false;
            int at = position;
            for (int n = point - position; n > 0; --n) {
                int step = DeleteWithCode(cls, type, f, mask, at, false);
                *advance += step;
                at += step;
                removed |= step == 0;
                ++*repaint;
            }
            if (pointIsEnd) f.Insert(at, g_cDecimalSep);
            if (removed) *repaint += f.length - at;
            accepted = true;
        }
    } else if (key == ' ') {
        *advance = HDataDeleteCharN(cls, type, f.text, mask, position, f.capacity);
        f.length = BoundedLength(f.text, f.capacity);
        *repaint = 1;
        accepted = true;
    } else if (IsDigit(key)) {
        if (IsDigit(f.At(position))) {
            f.text[position] = key;
            accepted = true;
        } else {
            HNumMask m;
            int intMax, fracMax;
            NumberLimits(mask, Find(f, '-') >= 0, &m, &intMax, &fracMax);
            int intDigits = CountDigits(f.text, 0, point < 0 ? f.length : point);
            if (point >= 0 && position == point) {
                if (intDigits < intMax) {
                    accepted = f.Insert(position, key);
                } else if (fracMax > 0) {
                    // The integer part is full: the digit goes behind the point.
                    if (position + 1 == f.length) {
                        accepted = f.Insert(position + 1, key);
                    } else {
                        f.text[position + 1] = key;
                        accepted = true;
                    }
                    *advance = *repaint = 2;
                }
            } else if (position == f.length) {
                if (point < 0)
                    accepted = intDigits < intMax && f.Insert(position, key);
                else
                    accepted = position - point - 1 < fracMax && f.Insert(position, key);
            }
        }
    }
    if (!accepted && minusAt >= 0) f.Insert(minusAt, '-');
    return accepted ? 0 : 1;
}

// ---- Calculator, class z ----

bool IsCalcPoint(char c) { return c == g_cDecimalSep || c == '.'; }

int FindCalcPoint(const Field& f)
{
    for (int i = 0; i < f.length; ++i)
        if (IsCalcPoint(f.text[i])) return i;
    return -1;
}

int CalcDeleteCode(Field& f, LPCSTR mask, int position)
{
    if (position >= f.length) return kDeleteNothing;
    char c = f.text[position];
    int code = IsCalcPoint(c) ? kDeleteStep : c == '-' ? kDeleteRemove : IsDigit(c) ? kDeleteDone : kDeleteStep;

    // The rebuilt text: the digits with the point put back where the mask's
    // fraction wants it, and a zero in front when the integer part would be
    // short. Worked out first, so that a text which would outgrow the buffer
    // stays as it was.
    bool minus = false;
    int digits = 0;
    for (int i = 0; i < f.length; ++i) {
        if (code == kDeleteDone && i == position) continue;
        if (f.text[i] == '-')
            minus = true;
        else if (!IsCalcPoint(f.text[i]))
            ++digits;
    }
    HNumMask m;
    HNumMaskParse(NumberMask(mask), minus, 1, &m);
    bool zero = digits - m.fracZeros < m.intZeros;
    int built = digits + zero + (m.fracZeros ? 1 : 0) + minus;
    if (built >= f.capacity) return kDeleteNothing;

    if (code == kDeleteDone) f.Remove(position);
    int n = 0;
    for (int i = 0; i < f.length; ++i)
        if (f.text[i] != '-' && !IsCalcPoint(f.text[i])) f.text[n++] = f.text[i];
    f.text[n] = 0;
    f.length = n;
    if (zero) {
        f.Insert(0, '0');
        code = kDeleteStep;
    }
    if (m.fracZeros) { // always a full stop, whatever the locale's separator
        int at = f.length - m.fracZeros;
        f.Insert(at < 0 ? 0 : at, '.');
    }
    if (minus) f.Insert(0, '-');
    return code;
}

int CalcTypeChar(char cls, char type, Field& f, LPCSTR mask, int position, char key, int* advance,
                 int* repaint)
{
    bool minus = f.At(0) == '-';
    *advance = 0;
    *repaint = f.length + 1;
    if (key == '+' || key == '.' || (key == '-' && minus)) {
        // The sign goes, and the caret keeps its place in the number.
        if (key != '.' && minus) {
            DeleteWithCode(cls, type, f, mask, 0, false);
            *advance = position > 0 ? -1 : 0;
        }
        return 0;
    }
    if (key == '-') {
        if (!f.Insert(0, '-')) return 1;
        *advance = 1;
        *repaint = f.length;
        return 0;
    }
    if (!IsDigit(key) || !f.Insert(position, key)) return 1;
    // Digits enter at the caret and push the point along, so that the number
    // of fraction digits stays the same.
    int point = FindCalcPoint(f);
    if (point >= 0 && point < position && point + 1 < f.length) {
        char c = f.text[point];
        f.text[point] = f.text[point + 1];
        f.text[point + 1] = c;
    }
    *advance = 1;
    HNumMask m;
    HNumMaskParse(NumberMask(mask), minus, 1, &m);
    point = FindCalcPoint(f);
    if (point < 0) point = f.length;
    int first = minus ? 1 : 0;
    if (f.At(first) == '0' && CountDigits(f.text, 0, point) >= m.intZeros) {
        f.Remove(first);
        --point;
        // A caret at the end stays at the end.
        if (point - 1 < position) *advance = 0;
    }
    *repaint = f.length;
    return 0;
}

// ---- Masked text, class m ----

// The mask element that shows at display place `place`: "[...]" shows
// nothing, a backslash and its character are one place. Null past the end.
LPCSTR MaskAtPlace(LPCSTR mask, int place)
{
    if (!mask) return nullptr;
    LPCSTR m = mask;
    for (int n = 0; *m;) {
        if (*m == '[') {
            while (*m && *m != ']') ++m;
            if (*m) ++m;
            continue;
        }
        if (*m == '\\' && !m[1]) return nullptr; // a lone backslash shows nothing
        if (n == place) return m;
        m += *m == '\\' ? 2 : 1;
        ++n;
    }
    return nullptr;
}

char MaskLiteral(LPCSTR m) { return *m == '\\' ? m[1] : *m; }

int MaskTypeChar(Field& f, LPCSTR mask, int position, char key, int* advance, int* repaint)
{
    if (!mask || !*mask) { // no mask: plain text
        if (!f.Insert(position, key)) return 1;
        *advance = *repaint = 1;
        return 0;
    }
    *advance = *repaint = 0;
    for (int place = position;; ++place) {
        LPCSTR m = MaskAtPlace(mask, place);
        if (!m || place > f.length) return 1;
        ++*advance;
        ++*repaint;
        if (HMaskIsPlaceholder(*m)) {
            if (!HMaskFits(*m, key)) return 1;
            if (place == f.length) return f.Insert(place, key) ? 0 : 1;
            f.text[place] = key; // the text keeps its length
            return 0;
        }
        // A literal equal to the key is stepped over; any other literal too,
        // and the key tries the next place.
        if (MaskLiteral(m) == key) return 0;
    }
}

int MaskDeleteCode(Field& f, LPCSTR mask, int position)
{
    if (!mask || !*mask) return position < f.length ? kDeleteRemove : kDeleteNothing;
    LPCSTR m = MaskAtPlace(mask, position);
    if (!m || position >= f.length) return kDeleteNothing;
    if (HMaskIsPlaceholder(*m)) f.text[position] = HMaskFill(*m);
    return kDeleteStep;
}

// ---- Booleans, class b ----

int BoolTypeChar(Field& f, LPCSTR mask, char key, int* advance, int* repaint)
{
    LPCSTR words = mask && *mask ? mask : kDefaultBoolMask;
    LPCSTR semicolon = strchr(words, ';');
    char yes = Lower(words[0] == ';' ? 0 : words[0]);
    char no = semicolon ? Lower(semicolon[1]) : yes;
    char k = Lower(key);
    BOOL truth;
    if (yes && k == yes)
        truth = TRUE; // also when both words begin alike
    else if (no && k == no)
        truth = FALSE;
    else if (key == ' ')
        truth = !HBoolParse(mask, f.text);
    else
        return 1;
    HBoolFormat(truth, mask, f.text, f.capacity);
    f.length = BoundedLength(f.text, f.capacity);
    *advance = 0;
    *repaint = kRepaintAll;
    return 0;
}

// ---- Dates and times, classes a, d, k and t ----

// Where the caret stands in the display of the working mask.
struct DatePlace {
    HDateItem item; // the element shown at the caret; HDI_END past the mask
    int start, end; // its characters in the text
    bool canGrow;   // a one-digit field of one letter ends right at the caret
    bool canShrink; // the caret is in a two-digit field of one letter
};

bool IsVariableField(const HDateItem& it)
{
    return it.kind == HDI_FIELD && it.count == 1 && (it.field == 'd' || it.field == 'm' || it.field == 'h');
}

// Characters of the text that one mask element takes from `at` on. A literal
// that the text does not show takes none, so mask and text stay in step.
int DateItemWidth(const HDateItem& it, const Field& f, int at)
{
    int rest = f.length - at;
    switch (it.kind) {
    case HDI_FIELD:
        if (IsVariableField(it)) {
            char c = f.At(at);
            if (!IsDigit(c) && c != ' ') return 0;
            return IsDigit(f.At(at + 1)) ? 2 : 1;
        }
        if (it.count == 1) return f.At(at) == it.first ? 1 : 0; // shows the letter itself
        if (it.count >= 3 && (it.field == 'd' || it.field == 'm')) { // a name
            int n = 0;
            while (IsLetter(f.At(at + n))) ++n;
            return n;
        }
        return it.count < rest ? it.count : rest;
    case HDI_AMPM:
        return 2 < rest ? 2 : rest;
    case HDI_LITERAL:
        return f.At(at) == it.literal ? 1 : 0;
    default:
        return 0;
    }
}

DatePlace FindDatePlace(LPCSTR mask, const Field& f, int position)
{
    DatePlace p{};
    int pos = 0, at = 0;
    bool hourSeen = false;
    for (;;) {
        HDateMaskNext(mask, &pos, &hourSeen, &p.item);
        if (p.item.kind == HDI_END) {
            p.start = p.end = at;
            return p;
        }
        int width = DateItemWidth(p.item, f, at);
        if (position < at + width) {
            p.start = at;
            p.end = at + width;
            p.canShrink = IsVariableField(p.item) && width == 2 && IsDigit(f.At(at)) && IsDigit(f.At(at + 1));
            return p;
        }
        if (width > 0) {
            p.canGrow = IsVariableField(p.item) && width == 1 && IsDigit(f.At(at)) && at + 1 == position;
            at += width;
        }
    }
}

int DateTypeChar(char cls, Field& f, LPCSTR mask, int position, char key, int* advance, int* repaint)
{
    HDateBuildMaskN(mask, cls != HCLASS_TIME, cls != HCLASS_DATE, g_szTypedWork, kTypedWorkSize);
    DatePlace p = FindDatePlace(g_szTypedWork, f, position);
    char on = f.At(position);
    bool maskBlank = p.item.kind == HDI_LITERAL && p.item.literal == ' ';
    *advance = *repaint = 1;

    if (position >= f.length && (!p.canGrow || !IsDigit(key))) return 1;
    if (IsPunct(key)) {
        if (IsPunct(on) || maskBlank) return 0;
        // The caret jumps behind the next punctuation of the text.
        for (int i = position; i < f.length; ++i) {
            if (IsPunct(f.text[i])) {
                *advance = i + 1 - position;
                return 0;
            }
        }
        return 1;
    }
    if (key == ' ') {
        if (p.canShrink) {
            *repaint = f.length - position;
            f.Remove(position);
            *advance = 0;
        } else if (IsDigit(on)) {
            f.text[position] = ' ';
        }
        return 0;
    }
    if (IsDigit(key)) {
        if (IsDigit(on)) {
            f.text[position] = key;
            return 0;
        }
        if (p.canGrow) {
            if (!f.Insert(position, key)) return 1;
            *repaint = f.length - position;
            return 0;
        }
        // On a separator the digit goes to the field behind it.
        if ((IsPunct(on) || (on == ' ' && maskBlank)) && position + 1 < f.length &&
            !IsLetter(f.text[position + 1])) {
            f.text[position + 1] = key;
            *advance = *repaint = 2;
            return 0;
        }
        if (on == ' ') {
            f.text[position] = key;
            return 0;
        }
        return 1;
    }
    if (IsLetter(key) && p.item.kind == HDI_AMPM) {
        f.text[position] = key;
        return 0;
    }
    return 1;
}

bool IsDateClass(char cls)
{
    return cls == HCLASS_DATETIME || cls == HCLASS_DATE || cls == HCLASS_CLOCK || cls == HCLASS_TIME;
}

// ---- Dispatch ----

// The inner code of the Delete key, with what it did to the text.
int DeleteInnerCode(char cls, char type, Field& f, LPCSTR mask, int position)
{
    if (IsDateClass(cls)) {
        int advance, repaint;
        if (DateTypeChar(cls, f, mask, position, ' ', &advance, &repaint)) return kDeleteNothing;
        return advance == 0 ? kDeleteDone : kDeleteStep;
    }
    switch (cls) {
    case HCLASS_BOOL:
        return kDeleteDone;
    case HCLASS_CURRENCY:
    case HCLASS_NUMBER:
        return NumberDeleteCode(f, mask, position);
    case HCLASS_MASKED:
        return MaskDeleteCode(f, mask, position);
    case HCLASS_STRING:
        return kDeleteRemove;
    case HCLASS_CALC:
        return CalcDeleteCode(f, mask, position);
    default:
        return kDeleteDone;
    }
}

// Delete as HDataDeleteChar does it; the routines of typing call it without
// the beep, where nothing can be missing.
int DeleteWithCode(char cls, char type, Field& f, LPCSTR mask, int position, bool beep)
{
    if (cls == HCLASS_CHAR) { // a blank at the one character
        if (f.length == 0 && !f.Insert(0, ' ')) return 0;
        f.text[0] = ' ';
        return 0;
    }
    switch (DeleteInnerCode(cls, type, f, mask, position)) {
    case kDeleteNothing:
        if (beep) SeamBeep();
        return 0;
    case kDeleteRemove:
        f.Remove(position);
        return 0;
    case kDeleteStep:
        return 1;
    default:
        return 0;
    }
}

} // namespace

LPSTR HStrInsertFill(LPSTR text, char fill, int count, int position)
{
    if (!text || count <= 0) return text;
    size_t length = strlen(text);
    size_t at = position < 0 ? 0 : (size_t)position > length ? length : (size_t)position;
    memmove(text + at + count, text + at, length - at + 1);
    memset(text + at, fill, (size_t)count);
    return text;
}

int HDataTypeCharN(char cls, char type, LPSTR text, LPCSTR mask, int position, char key,
                   int* advance, int* repaint, int capacity)
{
    int adv = 0, rep = 0, refused = 1;
    int length = text && capacity > 0 ? BoundedLength(text, capacity) : -1;
    if (length >= 0 && position >= 0 && position <= length) {
        Field f{text, length, capacity};
        if (IsDateClass(cls)) {
            refused = DateTypeChar(cls, f, mask, position, key, &adv, &rep);
        } else {
            switch (cls) {
            case HCLASS_BOOL:
                refused = BoolTypeChar(f, mask, key, &adv, &rep);
                break;
            case HCLASS_CURRENCY:
            case HCLASS_NUMBER:
                refused = NumberTypeChar(cls, type, f, mask, position, key, &adv, &rep);
                break;
            case HCLASS_CHAR:
                if (f.length > 0 || f.Insert(0, key)) {
                    f.text[0] = key;
                    adv = 0;
                    rep = 1;
                    refused = 0;
                }
                break;
            case HCLASS_MASKED:
                refused = MaskTypeChar(f, mask, position, key, &adv, &rep);
                break;
            case HCLASS_CALC:
                refused = CalcTypeChar(cls, type, f, mask, position, key, &adv, &rep);
                break;
            default: // strings are typed by the edit control itself
                break;
            }
        }
    }
    if (refused) adv = rep = 0;
    if (advance) *advance = adv;
    if (repaint) *repaint = rep;
    return refused;
}

int HDataDeleteCharN(char cls, char type, LPSTR text, LPCSTR mask, int position, int capacity)
{
    int length = text && capacity > 0 ? BoundedLength(text, capacity) : -1;
    if (length < 0 || position < 0) {
        SeamBeep();
        return 0;
    }
    Field f{text, length, capacity};
    return DeleteWithCode(cls, type, f, mask, position > length ? length : position, true);
}

// Extra room of the edit control's text buffer over its mask.
constexpr int kEditTextRoom = 32;

int HKeyBufferRoom(LPCSTR text, LPCSTR mask)
{
    size_t length = text ? strlen(text) : 0, maskLength = mask ? strlen(mask) : 0;
    size_t room = (length > maskLength ? length : maskLength) + kEditTextRoom;
    return room > 0x7FFFFFF0u ? 0x7FFFFFF0 : (int)room;
}

extern "C" int QUILLAPI HDataTypeChar(char cls, char type, LPSTR text, LPCSTR mask, int position, char key,
                                      int* advance, int* repaint)
{
    return HDataTypeCharN(cls, type, text, mask, position, key, advance, repaint, HKeyBufferRoom(text, mask));
}

extern "C" int QUILLAPI HDataDeleteChar(char cls, char type, LPSTR text, LPCSTR mask, int position)
{
    return HDataDeleteCharN(cls, type, text, mask, position, HKeyBufferRoom(text, mask));
}
