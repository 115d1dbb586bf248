// HList painting: row measures, the background, the items with their
// highlight, the focus caret, and the value painter used by the grid and combo.
#include "list/hlist.h"
#include "frame/frame.h"

#include <string.h>

namespace {

constexpr int kItemTextSize = 128; // 127 characters and the terminator

bool HasFocus(const HListRecord* r) { return GetFocus() == r->base.hWnd; }

// focusBrush while focused with the focus-brush style, else backBrush, else the owner's answer.
HBRUSH BackBrush(HListRecord* r, HDC dc)
{
    if (HasFocus(r) && (r->base.dwStyle & HLS_FOCUSBRUSH) && r->focusBrush)
        return r->focusBrush;
    if (r->backBrush)
        return r->backBrush;
    return HCtlColor(r, CTLCOLOR_LISTBOX, dc);
}

// Selects an object and puts the old one back at the end of the scope.
class SelectGuard {
public:
    SelectGuard(HDC dc, HGDIOBJ obj) : dc_(dc), old_(obj ? SelectObject(dc, obj) : nullptr) {}
    ~SelectGuard()
    {
        if (old_)
            SelectObject(dc_, old_);
    }
    SelectGuard(const SelectGuard&) = delete;
    SelectGuard& operator=(const SelectGuard&) = delete;

private:
    HDC dc_;
    HGDIOBJ old_;
};

// A brush made for one paint and deleted at its end.
class OwnedBrush {
public:
    explicit OwnedBrush(COLORREF color) : brush_(CreateSolidBrush(color)) {}
    ~OwnedBrush()
    {
        if (brush_)
            DeleteObject(brush_);
    }
    HBRUSH get() const { return brush_; }
    OwnedBrush(const OwnedBrush&) = delete;
    OwnedBrush& operator=(const OwnedBrush&) = delete;

private:
    HBRUSH brush_;
};

// Sends WM_DRAWITEM to the owner; FALSE if the owner destroyed the list meanwhile.
BOOL OwnerDraw(HListRecord* r, HDC dc, const RECT& rc, LONG itemID, LONG index, UINT action, UINT state)
{
    HWND self = r->base.hWnd;
    DRAWITEMSTRUCT dis = {};
    dis.CtlType = ODT_LISTBOX;
    dis.CtlID = r->base.wId;
    dis.itemID = (UINT)itemID;
    dis.itemAction = action;
    dis.itemState = state;
    dis.hwndItem = self;
    dis.hDC = dc;
    dis.rcItem = rc;
    dis.itemData = (ULONG_PTR)HLItemValue(r, index);
    SendMessageA(r->base.hNotify, WM_DRAWITEM, r->base.wId, (LPARAM)&dis);
    return IsWindow(self);
}

// Draws item index's text centred in rc less 2 on each side; the text's
// rectangle goes to out.
void DrawItemText(HListRecord* r, HDC dc, RECT rc, LONG index, LPRECT out, BOOL highlighted)
{
    InflateRect(&rc, -2, -2);
    char text[kItemTextSize];
    DWORD extent = HListMeasureItem(r, dc, index, text, sizeof text);
    COLORREF color = highlighted ? GetSysColor(COLOR_HIGHLIGHTTEXT)
                     : (r->base.wFlags & HLF_ALTCOLOR) ? r->colorAlt
                                                        : r->colorNormal;
    SetTextColor(dc, color);
    const LONG height = HIWORD(extent), width = LOWORD(extent);
    rc.top += ((rc.bottom - rc.top) - height) / 2;
    rc.bottom = rc.top + height;
    if (rc.left + width < rc.right)
        rc.right = rc.left + width;
    if (r->base.dwStyle & HLS_TABS)
        TabbedTextOutA(dc, rc.left, rc.top, text, (int)strlen(text), r->tabCount, (LPINT)r->tabStops, rc.left);
    else
        DrawTextA(dc, text, -1, &rc, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    *out = rc;
}

// What a row painter needs to know of one row.
struct RowState {
    RECT rc;       // the row
    LONG index;    // the item
    BOOL selected; // the item's state
    BOOL lit;      // drawn highlighted
    bool focused;  // the list has the focus
    bool oneItem;  // one-item mode
};

// Owner draw: the owner paints the row; FALSE if it destroyed the list.
BOOL PaintOwnerRow(HListRecord* r, HDC dc, const RowState& s)
{
    RECT item = s.rc;
    if (s.oneItem)
        InflateRect(&item, -1, -3);
    UINT state = (s.focused ? ODS_FOCUS : 0) | (s.lit ? ODS_SELECTED : 0);
    return OwnerDraw(r, dc, item, (s.oneItem && !s.selected) ? -1 : s.index, s.index, ODA_SELECT, state);
}

// The text, then the row's fill with the text clipped out, so the fill never flickers over it.
BOOL PaintTextRow(HListRecord* r, HDC dc, const RowState& s)
{
    if (!(s.oneItem && !s.selected)) {
        RECT text;
        DrawItemText(r, dc, s.rc, s.index, &text, s.lit);
        ExcludeClipRect(dc, text.left, text.top, text.right - 1, text.bottom - 1);
    }
    Rectangle(dc, s.rc.left, s.rc.top, s.rc.right + 1, s.rc.bottom + 1);
    return TRUE;
}

using RowPainter = BOOL (*)(HListRecord*, HDC, const RowState&);
constexpr RowPainter kRowPainters[] = {PaintTextRow, PaintOwnerRow}; // by the owner-draw style

// Paints rows first..last into dc; FALSE if the owner destroyed the list.
BOOL PaintRows(HListRecord* r, HDC dc, LONG first, LONG last)
{
    RowState s = {};
    s.oneItem = (r->base.dwStyle & HLS_ONEITEM) != 0;
    s.focused = HasFocus(r);
    const RowPainter paint = kRowPainters[(r->base.dwStyle & HLS_OWNERDRAW) ? 1 : 0];
    HBRUSH back = BackBrush(r, dc);
    if (!back)
        back = (HBRUSH)GetStockObject(NULL_BRUSH);
    OwnedBrush highlight(GetSysColor(COLOR_HIGHLIGHT));
    for (s.index = first; s.index <= last; ++s.index) {
        if (!HListItemRect(r, s.index, &s.rc))
            continue;
        s.selected = HLIsItemSelected(r, s.index);
        s.lit = s.oneItem ? s.focused : s.selected;
        if (s.lit) {
            SetBkMode(dc, OPAQUE);
            SelectObject(dc, highlight.get());
            SetBkColor(dc, GetSysColor(COLOR_HIGHLIGHT));
        } else {
            SetBkMode(dc, TRANSPARENT);
            SelectObject(dc, back);
        }
        if (!paint(r, dc, s)) {
            SelectObject(dc, GetStockObject(WHITE_BRUSH));
            return FALSE;
        }
    }
    SelectObject(dc, GetStockObject(WHITE_BRUSH)); // before the highlight brush goes
    return TRUE;
}

LONG HitRow(HListRecord* r, int x, int y)
{
    // The same test as the mouse's, on the paint rectangle's corners.
    if (r->rowHeight == 0 || ((r->base.dwStyle & HLS_MULTICOLUMN) && r->columnWidth <= 0))
        return -1;
    const LONG count = HLCount(r);
    LONG index;
    if (!(r->base.dwStyle & HLS_MULTICOLUMN)) {
        index = r->topIndex + y / r->rowHeight - (y < 0 ? 1 : 0);
    } else {
        LONG column = r->scrollPos + x / r->columnWidth - (x < 0 ? 1 : 0);
        LONG most = (count - 1) / r->rows;
        column = column < 0 ? 0 : (column > most ? most : column);
        LONG row = y / r->rowHeight;
        row = row < 0 ? 0 : (row > r->rows ? r->rows : row);
        index = r->rows * column + row;
    }
    if (index > count - 1)
        index = count - 1;
    return index < 0 ? 0 : index;
}

} // namespace

LONG HListRowHeight(HListRecord* r)
{
    LONG height = 0;
    if (r->base.dwStyle & HLS_ONEITEM) {
        RECT rc;
        GetClientRect(r->base.hWnd, &rc);
        height = rc.bottom - rc.top;
    } else {
        if (r->base.dwStyle & HLS_OWNERDRAW) {
            MEASUREITEMSTRUCT mis = {ODT_LISTBOX, r->base.wId, 0, 0, 0, 0};
            SendMessageA(r->base.hNotify, WM_MEASUREITEM, r->base.wId, (LPARAM)&mis);
            height = (LONG)mis.itemHeight;
        }
        if (height == 0)
            height = HIWORD(GetBaseUnits(r->base.hFont));
    }
    return height < 1 ? 1 : height;
}

// Twice the widest item, at least 10: a walk through all items.
LONG HListColumnWidth(HListRecord* r)
{
    if (r->base.wFlags & HLF_FIXEDWIDTH)
        return r->columnWidth;
    HDC dc = GetDC(r->base.hWnd);
    LONG widest = 0;
    {
        SelectGuard font(dc, r->base.hFont);
        char text[kItemTextSize];
        for (LONG i = 0; i < HLCount(r); ++i) {
            LONG w = LOWORD(HListMeasureItem(r, dc, i, text, sizeof text));
            if (w > widest)
                widest = w;
        }
    }
    ReleaseDC(r->base.hWnd, dc);
    widest *= 2;
    return widest < 10 ? 10 : widest;
}

DWORD HListMeasureItem(HListRecord* r, HDC dc, LONG index, LPSTR text, int size)
{
    if (!text || size <= 0)
        return 0;
    int len = HListFormatItem(r, index, text, size);
    if (index < 0 || index >= HLCount(r))
        return 0;
    if (r->base.dwStyle & HLS_TABS)
        return GetTabbedTextExtentA(dc, text, len, r->tabCount, (LPINT)r->tabStops);
    SIZE extent = {0, 0};
    GetTextExtentPoint32A(dc, text, len, &extent);
    if (len == 0) {
        TEXTMETRICA tm;
        GetTextMetricsA(dc, &tm);
        extent.cy = tm.tmHeight;
    }
    return MAKELONG((WORD)extent.cx, (WORD)extent.cy);
}

void HListEraseBack(HListRecord* r, HDC dc, const RECT* rect)
{
    if (!dc)
        return;
    HBRUSH brush = BackBrush(r, dc);
    if (!brush)
        return;
    RECT rc;
    if (rect)
        rc = *rect;
    else
        GetClientRect(r->base.hWnd, &rc);
    SelectGuard b(dc, brush);
    SelectGuard p(dc, GetStockObject(NULL_PEN));
    Rectangle(dc, rc.left, rc.top, rc.right + 1, rc.bottom + 1);
}

// The one painting path, for a dc given with WM_PAINT and for BeginPaint's.
void HListPaint(HListRecord* r, HDC given)
{
    HWND hWnd = r->base.hWnd;
    PAINTSTRUCT ps;
    RECT area;
    HDC dc = given;
    if (given)
        GetClipBox(given, &area);
    else {
        dc = BeginPaint(hWnd, &ps);
        area = ps.rcPaint;
    }
    if (!dc)
        return;
    BOOL alive = TRUE;
    if (HLCount(r) > 0) {
        LONG first = HitRow(r, area.left + 1, area.top + 1);
        LONG last = HitRow(r, area.right - 1, area.bottom - 1);
        if (r->base.dwStyle & HLS_ONEITEM)
            first = last = r->topIndex;
        int saved = SaveDC(dc);
        SelectObject(dc, r->base.hFont ? (HGDIOBJ)r->base.hFont : GetStockObject(SYSTEM_FONT));
        SelectObject(dc, GetStockObject(NULL_PEN));
        alive = PaintRows(r, dc, first, last);
        RestoreDC(dc, saved);
    }
    if (!given && alive)
        EndPaint(hWnd, &ps);
}

void HListShowCaret(HListRecord* r, LONG index)
{
    if (r->base.wFlags & HLF_CARETSHOWN)
        return;
    r->base.wFlags |= HLF_CARETSHOWN;
    const LONG last = HLCount(r) - 1;
    if (index > last)
        index = last;
    if (index < 0)
        index = 0;
    RECT rc;
    if (!HListItemRect(r, index, &rc))
        return;
    HWND hWnd = r->base.hWnd;
    HDC dc = GetDC(hWnd);
    if (r->base.dwStyle & HLS_OWNERDRAW)
        OwnerDraw(r, dc, rc, index, index, ODA_FOCUS, ODS_FOCUS);
    else
        DrawFocusRect(dc, &rc);
    ReleaseDC(hWnd, dc);
}

// Repaints the caret's item rather than drawing the focus rectangle again, which would toggle it.
void HListHideCaret(HListRecord* r, LONG index)
{
    r->base.wFlags &= (WORD)~HLF_CARETSHOWN;
    HListInvalidateItem(r, index, HLCount(r) == 0);
    HListPaint(r, nullptr);
}

BOOL HListDrawValue(HListRecord* r, HDC dc, const RECT* rc, LPCVOID value, int how)
{
    if (!r || !dc || !rc)
        return 0;
    const WORD saved = r->base.wFlags & HLF_NOCARET;
    LONG index = -1;
    if (!value) {
        r->base.wFlags |= HLF_NOCARET;
    } else if (how == 1 || how == 2) {
        HLList* list = how == 1 ? r->dataList : ((r->base.wFlags & HLF_HASCODE) ? r->codeList : nullptr);
        LONG found = 0;
        if (list && HLListFind(list, value, 0, &found))
            index = found;
    } else {
        index = *(const LONG*)value;
    }
    HListEraseBack(r, dc, rc);
    if (index >= 0 && index < HLCount(r)) {
        int state = SaveDC(dc);
        SelectObject(dc, r->base.hFont ? (HGDIOBJ)r->base.hFont : GetStockObject(SYSTEM_FONT));
        SetBkMode(dc, TRANSPARENT);
        if (r->base.dwStyle & HLS_OWNERDRAW) {
            OwnerDraw(r, dc, *rc, index, index, ODA_SELECT, 0);
        } else {
            RECT text;
            DrawItemText(r, dc, *rc, index, &text, FALSE);
        }
        RestoreDC(dc, state);
    }
    r->base.wFlags = (WORD)((r->base.wFlags & ~HLF_NOCARET) | saved);
    return 1;
}
