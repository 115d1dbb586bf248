// HEdit painting: the background, the text in its alignment with the selection
// drawn over it, and the value painter that the grid and the combo use.
#include "edit/hedit.h"
#include "frame/strings.h"

#include <string.h>

namespace {

constexpr UINT kDrawFlags[] = {
    DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX,   // 0x0824, left
    DT_RIGHT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX,  // 0x0826, right
    DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX, // 0x0825, centre
};
static_assert(kDrawFlags[0] == 0x0824 && kDrawFlags[1] == 0x0826 && kDrawFlags[2] == 0x0825, "draw flags");

// Characters of text that fit in width: from the start, or from the end.
int HEditFitIn(HDC dc, LPCSTR text, int count, int width, bool fromEnd)
{
    SIZE size;
    for (int n = count; n > 0; --n) {
        LPCSTR start = fromEnd ? text + count - n : text;
        if (GetTextExtentPointA(dc, start, n, &size) && size.cx <= width)
            return n;
    }
    return 0;
}

// The visible part of the text by alignment: left from firstChar, right up to
// the characters scrolled off the right, centred whole.
typedef void (*HEditTextPainter)(HEditRecord* r, HDC dc, LONG length, LONG first, char pw);
void HEditPaintLeft(HEditRecord* r, HDC dc, LONG, LONG first, char pw)
{
    HEditDrawText(dc, &r->rcText, r->text + first, -1, pw, 0);
}
void HEditPaintRight(HEditRecord* r, HDC dc, LONG length, LONG first, char pw)
{
    HEditDrawText(dc, &r->rcText, r->text, length - first, pw, 1);
}
void HEditPaintCentre(HEditRecord* r, HDC dc, LONG, LONG, char pw)
{
    HEditDrawText(dc, &r->rcText, r->text, -1, pw, 2);
}
constexpr HEditTextPainter kTextPainters[] = {HEditPaintLeft, HEditPaintRight, HEditPaintCentre};

// One pass over the text rectangle: plain, or highlighted for the selection.
void HEditPaintPass(HEditRecord* r, HDC dc, BOOL selected)
{
    HGDIOBJ oldFont = r->base.hFont ? SelectObject(dc, r->base.hFont) : nullptr;
    if (selected) {
        SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
        SetBkColor(dc, GetSysColor(COLOR_HIGHLIGHT));
        SetBkMode(dc, OPAQUE);
    } else {
        SetTextColor(dc, (r->base.wFlags & HEF_ALTCOLOR) ? r->colorAlt : r->colorNormal);
        SetBkMode(dc, TRANSPARENT);
    }
    LONG length = HEditLength(r);
    LONG first = r->firstChar < 0 ? 0 : (r->firstChar > length ? length : r->firstChar);
    const char pw = (r->base.dwStyle & HES_PASSWORD) ? r->passwordChar : 0;
    const int alignment = (r->base.wFlags & HEF_CENTER) ? 2 : (r->base.wFlags & HEF_RIGHT) ? 1 : 0;
    kTextPainters[alignment](r, dc, length, first, pw);
    if (oldFont)
        SelectObject(dc, oldFont);
}

} // namespace

void HEditDrawText(HDC dc, const RECT* rc, LPCSTR text, LONG count, char passwordChar, int alignment)
{
    if (!text)
        return;
    LONG length = (LONG)strlen(text);
    if (count < 0 || count > length)
        count = length;
    LPSTR copy = nullptr;
    if (passwordChar) {
        copy = (LPSTR)GlobalAlloc(GPTR, (SIZE_T)count + 1);
        if (!copy)
            return;
        memset(copy, passwordChar, (size_t)count);
        text = copy;
    }
    RECT box = *rc;
    if (alignment == 2) {
        DrawTextA(dc, text, count, &box, kDrawFlags[2]);
    } else {
        const bool right = alignment == 1;
        int fit = HEditFitIn(dc, text, count, rc->right - rc->left, right);
        DrawTextA(dc, right ? text + count - fit : text, fit, &box, kDrawFlags[right ? 1 : 0]);
    }
    if (copy)
        GlobalFree(copy);
}

void HEditErase(HEditRecord* r, HDC dc, const RECT* rect)
{
    HBRUSH brush = nullptr;
    if (!rect && (r->base.wFlags & HEF_FOCUS) && (r->base.dwStyle & HES_FOCUSBRUSH) && r->focusBrush)
        brush = r->focusBrush;
    else if (r->backBrush)
        brush = r->backBrush;
    else {
        HWND self = r->base.hWnd;
        brush = HCtlColor(r, CTLCOLOR_EDIT, dc);
        if (self && !IsWindow(self))
            return; // the receiver destroyed us
    }
    if (!brush)
        return;
    RECT box;
    if (rect)
        box = *rect;
    else
        GetClientRect(r->base.hWnd, &box);
    HGDIOBJ oldBrush = SelectObject(dc, brush), oldPen = SelectObject(dc, GetStockObject(NULL_PEN));
    Rectangle(dc, box.left, box.top, box.right + 1, box.bottom + 1);
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
}

BOOL HEditOnPaint(HEditRecord* r, HDC given)
{
    HWND self = r->base.hWnd;
    const BOOL twoPasses = (r->base.wFlags & HEF_FOCUS) || (r->base.dwStyle & HES_KEEPSEL);
    RECT sel = {0, 0, 0, 0};
    if (twoPasses && r->anchor != r->caret)
        HEditSelRect(r, &sel, r->anchor, r->caret, TRUE);
    if (given) {
        // A dc from the caller: both passes into it, the second clipped to the selection.
        HEditPaintPass(r, given, FALSE);
        if (!IsRectEmpty(&sel)) {
            int saved = SaveDC(given);
            IntersectClipRect(given, sel.left, sel.top, sel.right, sel.bottom);
            HEditPaintPass(r, given, TRUE);
            RestoreDC(given, saved);
        }
        return TRUE;
    }
    if (twoPasses) {
        RECT clip;
        HDC dc = GetDC(self);
        int kind = dc ? GetClipBox(dc, &clip) : NULLREGION;
        if (dc)
            ReleaseDC(self, dc);
        if (kind == NULLREGION || kind == ERROR)
            return FALSE; // the update region is left to the default procedure
        IntersectRect(&sel, &sel, &clip);
    }
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(self, &ps);
    if (!IsWindow(self))
        return TRUE; // the erase asked the application, which destroyed us
    if (dc)
        HEditPaintPass(r, dc, FALSE);
    EndPaint(self, &ps);
    if (!IsRectEmpty(&sel)) {
        // The second pass, clipped by BeginPaint to the selection, draws the highlight over the text.
        InvalidateRect(self, &sel, FALSE);
        dc = BeginPaint(self, &ps);
        if (dc)
            HEditPaintPass(r, dc, TRUE);
        EndPaint(self, &ps);
    }
    HEditUpdateScroll(r);
    return TRUE;
}

int HEditDrawValue(HEditRecord* r, HDC dc, const RECT* rect, LPCVOID value, int alignment)
{
    if (!r || !dc || !rect)
        return 0;
    const WORD savedEmpty = r->base.wFlags & HEF_EMPTY;
    char text[256] = "";
    BOOL negative = FALSE;
    if (!value) {
        r->base.wFlags |= HEF_EMPTY;
        _fstrnzcpy(text, r->emptyText ? r->emptyText : "", sizeof text);
    } else {
        r->base.wFlags &= (WORD)~HEF_EMPTY;
        FormatData(value, r->dataClass, r->dataType, r->maskText, text, sizeof text, &negative, FALSE);
        text[sizeof text - 1] = 0;
    }
    HEditErase(r, dc, rect);
    RECT rc = *rect;
    InflateRect(&rc, -2, -2);
    rc.left += 3;
    rc.right -= 3;
    SetTextColor(dc, negative ? r->colorAlt : r->colorNormal);
    SetBkMode(dc, TRANSPARENT);
    HGDIOBJ oldFont = r->base.hFont ? SelectObject(dc, r->base.hFont) : nullptr;
    rc.top += (rc.bottom - rc.top - r->charHeight) / 2;
    rc.bottom = rc.top + r->charHeight;
    HEditDrawText(dc, &rc, text, -1, (r->base.dwStyle & HES_PASSWORD) ? r->passwordChar : 0,
                  alignment < 0 || alignment > 2 ? 0 : alignment);
    if (oldFont)
        SelectObject(dc, oldFont);
    r->base.wFlags = (WORD)((r->base.wFlags & ~HEF_EMPTY) | savedEmpty);
    return 1;
}
