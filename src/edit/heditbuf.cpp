// HEdit's display text buffer: measuring, the caret, the selection, horizontal
// scrolling, words, and the clipboard.
#include "edit/hedit.h"
#include "frame/strings.h"

#include <ctype.h>
#include <string.h>

namespace {

bool HEditIsPassword(const HEditRecord* r) { return (r->base.dwStyle & HES_PASSWORD) != 0; }

// A word character is any printable non-blank; isspace decides what a space is.
bool HEditIsWordChar(char c) { return isgraph((unsigned char)c) || (unsigned char)c >= 0x80; }

bool HEditIsSpace(char c) { return isspace((unsigned char)c) != 0; }

// Width of count characters of text from start, in the control's font; -1 if the measure failed.
LONG HEditMeasure(HDC dc, LPCSTR text, LONG start, LONG count)
{
    if (count <= 0)
        return 0;
    SIZE size = {0, 0};
    if (!GetTextExtentPointA(dc, text + start, count, &size))
        return -1;
    return size.cx;
}

// The text measured: the display text, or a copy of password characters of its length.
struct HEditMeasureText {
    LPSTR owned = nullptr;
    LPCSTR text;
    explicit HEditMeasureText(const HEditRecord* r) : text(r->text)
    {
        if (HEditIsPassword(r)) {
            owned = HStrDupFill(r->text, r->passwordChar);
            if (owned)
                text = owned;
        }
    }
    ~HEditMeasureText()
    {
        if (owned)
            GlobalFree(owned);
    }
};

// A window dc with the control's font selected, released at the end of the scope.
struct HEditDC {
    HWND hWnd;
    HDC dc;
    HGDIOBJ old;
    explicit HEditDC(const HEditRecord* r) : hWnd(r->base.hWnd), dc(GetDC(r->base.hWnd)), old(nullptr)
    {
        if (dc && r->base.hFont)
            old = SelectObject(dc, r->base.hFont);
    }
    ~HEditDC()
    {
        if (!dc)
            return;
        if (old)
            SelectObject(dc, old);
        ReleaseDC(hWnd, dc);
    }
};

LONG HEditWidthIn(HEditRecord* r, HDC dc, LPCSTR text, LONG length, LONG start, LONG count)
{
    if (start < 0)
        start = 0;
    if (start > length)
        start = length;
    if (count < 0 || start + count > length)
        count = length - start;
    if (count <= 0)
        return 0;
    // A neighbour is measured with the span so that a character's overhang counts.
    if (!(r->base.wFlags & HEF_RIGHT) && start + count < length) {
        LONG both = HEditMeasure(dc, text, start, count + 1), next = HEditMeasure(dc, text, start + count, 1);
        return (both < 0 || next < 0) ? -1 : both - next;
    }
    if ((r->base.wFlags & HEF_RIGHT) && start >= 1) {
        LONG both = HEditMeasure(dc, text, start - 1, count + 1), prev = HEditMeasure(dc, text, start - 1, 1);
        return (both < 0 || prev < 0) ? -1 : both - prev;
    }
    return HEditMeasure(dc, text, start, count);
}

void HEditInvalidateRange(HEditRecord* r, LONG from, LONG to, BOOL erase)
{
    if (from >= to)
        return;
    RECT rc;
    HEditSelRect(r, &rc, from, to, TRUE);
    InvalidateRect(r->base.hWnd, &rc, erase);
}

// Redraws the frame that shows the scroll state in a three-dimensional border.
void HEditRedrawFrame(HEditRecord* r)
{
    if (r->base.dwStyle & HES_FRAME3D)
        RedrawWindow(r->base.hWnd, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
}

} // namespace

LONG HEditLength(const HEditRecord* r)
{
    if (!r->text || r->textSize <= 0)
        return 0;
    return (LONG)strnlen(r->text, (size_t)r->textSize);
}

BOOL HEditScrolls(const HEditRecord* r)
{
    return (r->base.dwStyle & (HES_AUTOHSCROLL | WS_HSCROLL)) != 0;
}

LONG HEditTextWidth(HEditRecord* r, LPCSTR text, LONG start, LONG count)
{
    if (!text)
        return 0;
    HEditDC dc(r);
    if (!dc.dc)
        return -1;
    return HEditWidthIn(r, dc.dc, text, (LONG)strlen(text), start, count);
}

LONG HEditCharToPixel(HEditRecord* r, LONG index)
{
    HEditMeasureText m(r);
    LONG length = HEditLength(r);
    if (index < 0)
        index = 0;
    if (index > length)
        index = length;
    LONG first = r->firstChar < 0 ? 0 : (r->firstChar > length ? length : r->firstChar);
    if (r->base.wFlags & HEF_RIGHT)
        return HEditTextWidth(r, m.text, length - first, first) - HEditTextWidth(r, m.text, index, length - index) +
               r->rcText.right;
    if (r->base.wFlags & HEF_CENTER) {
        LONG all = HEditTextWidth(r, m.text, 0, length);
        return r->rcText.left + (r->rcText.right - r->rcText.left - all) / 2 + HEditTextWidth(r, m.text, 0, index);
    }
    return HEditTextWidth(r, m.text, 0, index) - HEditTextWidth(r, m.text, 0, first) + r->rcText.left;
}

LONG HEditPixelToChar(HEditRecord* r, LONG x)
{
    HEditMeasureText m(r);
    LONG length = HEditLength(r);
    LONG first = r->firstChar < 0 ? 0 : (r->firstChar > length ? length : r->firstChar);
    const bool right = (r->base.wFlags & HEF_RIGHT) != 0;
    LONG n = right ? r->rcText.right - x : x - r->rcText.left;
    LONG available = length - first;
    HEditDC dc(r);
    TEXTMETRICA tm = {};
    if (!dc.dc || !GetTextMetricsA(dc.dc, &tm) || tm.tmAveCharWidth <= 0)
        tm.tmAveCharWidth = 8;
    if (n < 0)
        n = 0;
    // Width of count characters standing next to the edge.
    auto width = [&](LONG count) {
        return right ? HEditWidthIn(r, dc.dc, m.text, length, length - first - count, count)
                     : HEditWidthIn(r, dc.dc, m.text, length, first, count);
    };
    LONG count = n / tm.tmAveCharWidth;
    if (count > available)
        count = available;
    LONG w = width(count);
    if (w < n) {
        while (count < available) {
            LONG next = width(count + 1);
            if (next >= n) {
                if (next - n < n - w)
                    ++count;
                break;
            }
            ++count;
            w = next;
        }
    } else if (w > n) {
        while (count > 0) {
            LONG prev = width(count - 1);
            if (prev <= n) {
                if (n - prev <= w - n)
                    --count;
                break;
            }
            --count;
            w = prev;
        }
    }
    return right ? available - count : first + count;
}

LONG HEditFitChars(HEditRecord* r)
{
    HEditMeasureText m(r);
    LONG length = HEditLength(r);
    LONG first = r->firstChar < 0 ? 0 : (r->firstChar > length ? length : r->firstChar);
    const bool right = (r->base.wFlags & HEF_RIGHT) != 0;
    LONG available = right ? length : length - first;
    LONG room = r->rcText.right - r->rcText.left;
    HEditDC dc(r);
    if (!dc.dc)
        return available;
    for (LONG count = 1; count <= available; ++count) {
        LONG start = right ? length - count : first;
        if (HEditWidthIn(r, dc.dc, m.text, length, start, count) > room)
            return count - 1;
    }
    return available;
}

void HEditUpdateScroll(HEditRecord* r)
{
    LONG length = HEditLength(r);
    LONG newMax = 0;
    if (length > 0 && !(r->base.wFlags & HEF_CENTER)) {
        LONG over = length - HEditFitChars(r);
        if (over > 0) {
            // The slack of three keeps the range from changing at each character.
            newMax = (r->firstMax >= over && r->firstMax <= over + 3) ? r->firstMax : over + 3;
            if (newMax > length)
                newMax = length;
        }
    }
    if (r->firstChar > newMax)
        r->firstChar = newMax;
    if (newMax == r->firstMax)
        return;
    r->firstMax = newMax;
    if (r->base.wFlags & HEF_THUMB)
        return;
    if (r->base.dwStyle & WS_HSCROLL) {
        int low = 0, high = 0;
        GetScrollRange(r->base.hWnd, SB_HORZ, &low, &high);
        if (high != newMax)
            SetScrollRange(r->base.hWnd, SB_HORZ, 0, newMax, TRUE);
    }
    HEditRedrawFrame(r);
}

void HEditInvalidateFrom(HEditRecord* r, LONG start, LONG count)
{
    (void)count; // everything behind start moves with it
    RECT rc = r->rcText;
    if (!(r->base.wFlags & (HEF_RIGHT | HEF_CENTER)) && start > 0)
        rc.left = HEditCharToPixel(r, start);
    InvalidateRect(r->base.hWnd, &rc, TRUE);
}

void HEditSelRect(HEditRecord* r, LPRECT out, LONG from, LONG to, BOOL fullEnds)
{
    if (!out)
        return;
    if (from > to) {
        LONG t = from;
        from = to;
        to = t;
    }
    LONG length = HEditLength(r);
    *out = r->rcText;
    if (!(fullEnds && from == 0))
        out->left = HEditCharToPixel(r, from);
    if (!(fullEnds && to >= length - 2))
        out->right = HEditCharToPixel(r, to);
}

LONG HEditScrollBy(HEditRecord* r, LONG delta)
{
    if (!HEditScrolls(r))
        return 0; // a field without scrolling never moves its view
    const LONG sign = (r->base.wFlags & HEF_RIGHT) ? -1 : 1;
    LONG distance = delta * sign;
    if (r->firstChar + distance < 0)
        distance = -r->firstChar;
    if (r->firstChar + distance > r->firstMax)
        distance = r->firstMax - r->firstChar;
    if (distance > 0)
        HEditInvalidateFrom(r, r->firstChar + HEditFitChars(r), 1);
    LONG before = HEditCharToPixel(r, 0);
    r->firstChar += distance;
    if (distance == 0)
        return 0;
    if (r->base.dwStyle & WS_HSCROLL) {
        LONG pos = sign < 0 ? r->firstMax - r->firstChar : r->firstChar;
        SetScrollPos(r->base.hWnd, SB_HORZ, pos, !(r->base.wFlags & HEF_THUMB));
    }
    HEditRedrawFrame(r);
    if (!HEditTell(r, HEN_HSCROLL))
        return 0;
    LONG after = HEditCharToPixel(r, 0);
    ScrollWindow(r->base.hWnd, after - before, 0, &r->rcText, &r->rcText);
    if (distance < 0)
        HEditInvalidateFrom(r, r->firstChar + HEditFitChars(r), 1);
    return distance / sign;
}

void HEditPlaceCaret(HEditRecord* r, LONG index)
{
    if (!(r->base.wFlags & HEF_FOCUS))
        return;
    if (GetOverwriteMode() && r->dataClass == HCLASS_STRING)
        HEditMakeCaret(r);
    LONG length = HEditLength(r);
    LONG x = HEditCharToPixel(r, index);
    if ((r->base.wFlags & HEF_RIGHT) || index >= length)
        --x;
    SetCaretPos(x, r->rcText.top);
}

void HEditMakeCaret(HEditRecord* r)
{
    // The caret exists only while the control has the focus: one made now would be taken from its owner.
    if (!(r->base.wFlags & HEF_FOCUS))
        return;
    DestroyCaret();
    LONG width = 0;
    if (GetOverwriteMode() && r->anchor == r->caret && r->dataClass == HCLASS_STRING) {
        HEditMeasureText m(r);
        LONG length = HEditLength(r);
        // At the end there is no character: the block is as wide as a blank.
        width = r->caret < length ? HEditTextWidth(r, m.text, r->caret, 1) : HEditTextWidth(r, " ", 0, 1);
        if (width < 0)
            width = 0;
    }
    CreateCaret(r->base.hWnd, nullptr, width, r->charHeight);
    ShowCaret(r->base.hWnd);
}

void HEditSetSel(HEditRecord* r, int mode, LONG anchor, LONG caret)
{
    LONG length = HEditLength(r);
    LONG oldLow = r->anchor < r->caret ? r->anchor : r->caret;
    LONG oldHigh = r->anchor < r->caret ? r->caret : r->anchor;
    if (mode == 0)
        mode = 3;
    LONG width = r->rcText.right - r->rcText.left, margin = width / 8;
    if (mode & 1) {
        if (caret < 0 || caret > length)
            caret = length;
        if (HEditScrolls(r) && (HEditTextWidth(r, r->text, 0, length) >= width || r->firstChar != 0)) {
            // The view jumps a third of its width, not one character at a time.
            LONG x = HEditCharToPixel(r, caret), distance = 0;
            if (x > r->rcText.right - margin) {
                distance = r->visibleChars / 3 - r->caret + caret;
                if (distance < 0)
                    distance = 0;
            } else if (x < r->rcText.left + margin) {
                distance = r->visibleChars / 3 - caret + r->caret;
                distance = distance < 0 ? 0 : -distance;
            }
            if (distance) {
                HWND self = r->base.hWnd;
                HEditScrollBy(r, distance); // by screen direction: the sign of a right-aligned field is taken there
                if (!IsWindow(self))
                    return;
            }
        }
    } else {
        caret = r->caret;
    }
    if (mode & 2) {
        if (anchor < 0 || anchor > length)
            anchor = length;
        r->anchor = anchor;
    }
    r->caret = caret;
    HEditPlaceCaret(r, caret);
    LONG newLow = r->anchor < r->caret ? r->anchor : r->caret;
    LONG newHigh = r->anchor < r->caret ? r->caret : r->anchor;
    // Repaint only what changed: what left the selection with erase, what came in without.
    if (oldLow == oldHigh) {
        HEditInvalidateRange(r, newLow, newLow + 1, TRUE);
        HEditInvalidateRange(r, newLow, newHigh, FALSE);
        return;
    }
    HEditInvalidateRange(r, oldLow, oldHigh < newLow ? oldHigh : newLow, TRUE);
    HEditInvalidateRange(r, oldLow > newHigh ? oldLow : newHigh, oldHigh, TRUE);
    HEditInvalidateRange(r, newLow, newHigh < oldLow ? newHigh : oldLow, FALSE);
    HEditInvalidateRange(r, newLow > oldHigh ? newLow : oldHigh, newHigh, FALSE);
}

void HEditOnHScroll(HEditRecord* r, WPARAM wParam)
{
    LONG page = r->visibleChars - 1 < 1 ? 1 : r->visibleChars - 1, delta = 0;
    switch (LOWORD(wParam)) {
    case SB_LINELEFT: delta = -1; break;
    case SB_LINERIGHT: delta = 1; break;
    case SB_PAGELEFT: delta = -page; break;
    case SB_PAGERIGHT: delta = page; break;
    case SB_THUMBTRACK:
        r->base.wFlags |= HEF_THUMB;
        delta = (SHORT)HIWORD(wParam) - GetScrollPos(r->base.hWnd, SB_HORZ);
        break;
    default:
        r->base.wFlags &= (WORD)~HEF_THUMB;
        SetScrollPos(r->base.hWnd, SB_HORZ,
                     (r->base.wFlags & HEF_RIGHT) ? r->firstMax - r->firstChar : r->firstChar, TRUE);
        break;
    }
    HWND self = r->base.hWnd;
    if (delta)
        HEditScrollBy(r, delta);
    if (IsWindow(self))
        HEditPlaceCaret(r, r->caret);
}

LONG HEditNextWord(LPCSTR text, LONG index)
{
    LONG length = (LONG)strlen(text);
    if (index < 0)
        index = 0;
    while (index < length && HEditIsWordChar(text[index]))
        ++index;
    while (index < length && HEditIsSpace(text[index]))
        ++index;
    return index;
}

LONG HEditPrevWord(LPCSTR text, LONG index)
{
    LONG length = (LONG)strlen(text);
    if (index > length)
        index = length;
    if (index < 1)
        return 0;
    --index;
    while (index > 0 && HEditIsSpace(text[index]))
        --index;
    while (index > 0 && HEditIsWordChar(text[index - 1]))
        --index;
    return index;
}

void HEditSelectWord(HEditRecord* r, LONG index)
{
    LONG length = HEditLength(r);
    if (index > length)
        index = length;
    // The start is found as by HEditPrevWord: at a word's first character it is the word before.
    HEditSetSel(r, 3, HEditPrevWord(r->text, index), HEditNextWord(r->text, index));
}

LONG HEditCopy(HEditRecord* r, LPSTR out, LONG size)
{
    LONG length = HEditLength(r);
    LONG low = r->anchor < r->caret ? r->anchor : r->caret, high = r->anchor < r->caret ? r->caret : r->anchor;
    if (low > length)
        low = length;
    if (high > length)
        high = length;
    LONG count = high - low;
    if (out) {
        if (size <= 0)
            return 0;
        if (count > size - 1)
            count = size - 1;
        memcpy(out, r->text + low, (size_t)count);
        out[count] = 0;
        return count;
    }
    if (!OpenClipboard(r->base.hWnd))
        return 0;
    // The data is given before and after EmptyClipboard, each time in a block of
    // its own: the empty frees the first, so the second must not be the same block.
    auto block = [&]() {
        HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, (SIZE_T)count + 1);
        if (h) {
            LPSTR p = (LPSTR)GlobalLock(h);
            if (p)
                memcpy(p, r->text + low, (size_t)count);
            GlobalUnlock(h);
        }
        return h;
    };
    HGLOBAL first = block();
    if (first && !SetClipboardData(CF_TEXT, first))
        GlobalFree(first);
    if (EmptyClipboard()) {
        HGLOBAL second = block();
        if (second && !SetClipboardData(CF_TEXT, second))
            GlobalFree(second);
    }
    CloseClipboard();
    return count;
}

BOOL HEditGrow(HEditRecord* r, LONG size)
{
    if (size <= 0)
        return FALSE;
    HGLOBAL text = GlobalReAlloc(GlobalHandle(r->text), (SIZE_T)size, GMEM_MOVEABLE | GMEM_ZEROINIT);
    if (!text)
        return FALSE;
    r->text = (LPSTR)GlobalLock(text);
    r->textSize = size;
    r->text[size - 1] = 0;
    if (r->dataClass == HCLASS_STRING) {
        HGLOBAL value = GlobalReAlloc(GlobalHandle(r->value), (SIZE_T)size, GMEM_MOVEABLE | GMEM_ZEROINIT);
        if (!value)
            return FALSE;
        r->value = GlobalLock(value);
        r->dataSize = size;
        ((LPSTR)r->value)[size - 1] = 0;
    }
    return TRUE;
}

LRESULT HEditLimitText(HEditRecord* r, LONG limit)
{
    if (r->dataClass != HCLASS_STRING)
        return -1;
    if (limit < 0) {
        r->base.wFlags &= (WORD)~HEF_LIMITED;
        limit = 32;
    } else {
        r->base.wFlags |= HEF_LIMITED;
    }
    if (limit > 0x7FFE)
        limit = 0x7FFE;
    r->textLimit = limit;
    // A shorter limit cuts the block; the caret stays and the text is measured anew at the next change.
    if (!HEditGrow(r, limit + 1))
        return -5;
    return 1;
}
