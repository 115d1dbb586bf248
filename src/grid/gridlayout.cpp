// Where cells lie on an HGrid window, the two scroll bars with the scaling that
// lets a 16-bit bar cover any number of records, and the row cache of virtual mode.
#include "grid/gridpaint.h"
#include "grid/gridwin.h"
#include "seam.h"
#include <string.h>

HGEditHooks g_gridEditHooks;

namespace {

// Pixel positions of rows stay inside what 16-bit device coordinates allow.
constexpr LONG kHGFar = 0x7000;
// What cannot be seen.
constexpr RECT kHGNoRect = {-50, -50, -50, -50};
// A scroll bar position stays inside the 16 bits of a scroll message.
constexpr LONG kHGBarSteps = 32766;

LONG ClampPixel(LONG v)
{
    if (v < -0x6FFF)
        return -kHGFar;
    if (v > 0x6FFF)
        return kHGFar;
    return v;
}

LONG Larger(LONG a, LONG b) { return a > b ? a : b; }
LONG Smaller(LONG a, LONG b) { return a < b ? a : b; }

DWORD StyleOf(const HGridWindow* gw) { return gw->grid ? gw->grid->style : 0; }
LONG FieldCount(const HGridWindow* gw) { return gw->grid && gw->grid->fields ? gw->grid->fields->count : 0; }
LONG RecordCount(const HGridWindow* gw) { return gw->grid && gw->grid->records ? gw->grid->records->count : 0; }
LONG Frozen(const HGridWindow* gw) { return gw->grid ? gw->grid->frozenCols : 0; }
LONG RowHeight(const HGridWindow* gw) { return gw->grid && gw->grid->rowHeight > 0 ? gw->grid->rowHeight : 1; }
LONG Partial(const HGridWindow* gw) { return (gw->wFlags & HGW_PARTIALROW) ? 1 : 0; }
bool IsVirtual(const HGridWindow* gw) { return (gw->wFlags & HGW_VIRTUAL) && gw->dataProc; }
bool Shown(const HGField* f) { return f && !(f->flags & HGF_HIDDEN); }
SHORT To16(LONG v) { return (SHORT)Smaller(Larger(v, -0x8000), 0x7FFF); }

// Top of the rows: below the bar and the column headers.
LONG RowsTop(HGridWindow* gw)
{
    RECT rc;
    HGBodyRows(gw, &rc);
    return rc.top;
}

// Right edge of the last column on the screen; the body's left without one.
LONG LastColRight(HGridWindow* gw)
{
    int last = -1;
    for (int i = -1; HGNextShownCol(gw, TRUE, &i);)
        last = i;
    RECT rc;
    if (last >= 0) {
        HGColRect(gw, last, &rc);
        return rc.right;
    }
    HGBodyRect(gw, &rc);
    return rc.left;
}

void EditorHide(HGridWindow* gw)
{
    if (g_gridEditHooks.editorHide) {
        g_gridEditHooks.editorHide(gw);
    } else if (gw->hEditor && IsWindow(gw->hEditor)) {
        ShowWindow(gw->hEditor, SW_HIDE);
        gw->wFlags &= (WORD)~HGW_EDITORSHOWN;
    }
}

void EditorShow(HGridWindow* gw)
{
    if (g_gridEditHooks.editorShow)
        g_gridEditHooks.editorShow(gw);
}

// Sends a notification; false if the receiver destroyed the window.
bool Notify(HGridWindow* gw, UINT code)
{
    HWND self = gw->hWnd;
    HCtlNotify(gw, code);
    return IsWindow(self) && gw->grid;
}

} // namespace

// ---- Rectangles ----

void HGClientRect(HGridWindow* gw, RECT* rc)
{
    GetClientRect(gw->hWnd, rc);
    if (gw->hBar && IsWindow(gw->hBar))
        rc->top += WindowHeight(gw->hBar);
}

void HGBodyRows(HGridWindow* gw, RECT* rc)
{
    HGClientRect(gw, rc);
    if (StyleOf(gw) & HGS_COLHEADERS)
        rc->top += gw->grid->colHeaderHeight;
}

void HGBodyRect(HGridWindow* gw, RECT* rc)
{
    HGBodyRows(gw, rc);
    if (StyleOf(gw) & HGS_ROWHEADERS)
        rc->left += gw->grid->rowHeaderWidth;
}

void HGScrollColsRect(HGridWindow* gw, RECT* rc)
{
    HGClientRect(gw, rc);
    if (StyleOf(gw) & HGS_ROWHEADERS)
        rc->left += gw->grid->rowHeaderWidth;
    int i = -1;
    for (HGField* f; (f = HGNextShownCol(gw, TRUE, &i)) && i < Frozen(gw);)
        rc->left += f->width;
}

void HGPaintRect(HGridWindow* gw, RECT* rc)
{
    HGBodyRect(gw, rc);
    rc->right = Smaller(rc->right, LastColRight(gw));
    if (rc->right < rc->left)
        rc->right = rc->left;
    HGClipToRows(gw, rc);
}

void HGClipToRows(HGridWindow* gw, RECT* rc)
{
    LONG end = ClampPixel((RecordCount(gw) - gw->topRow) * RowHeight(gw) + RowsTop(gw));
    if (rc->bottom > end)
        rc->bottom = Larger(end, rc->top);
}

BOOL HGColRect(HGridWindow* gw, int col, RECT* rc)
{
    RECT r;
    HGClientRect(gw, &r);
    r.bottom += kHGFar;
    DWORD style = StyleOf(gw);
    if (col < 0 && (style & HGS_ROWHEADERS)) {
        r.right = r.left + gw->grid->rowHeaderWidth;
        *rc = r;
        return TRUE;
    }
    if (style & HGS_ROWHEADERS)
        r.left += gw->grid->rowHeaderWidth;
    LONG count = FieldCount(gw);
    if (count == 0) {
        r.right = r.left;
        *rc = r;
        return FALSE;
    }
    LONG frozen = Frozen(gw);
    int i = -1;
    for (HGField* f; (f = HGNextShownCol(gw, TRUE, &i)) && i < frozen && i < col && r.left < r.right;)
        r.left += f->width;
    for (LONG j = Smaller(gw->leftCol, col); j < col && j < count && r.left < r.right; ++j) {
        HGField* f = HGFieldAt(gw->grid, (int)j);
        if (Shown(f))
            r.left += f->width;
    }
    HGField* field = col >= 0 ? HGFieldAt(gw->grid, col) : nullptr;
    if (!Shown(field) || (col >= frozen && col < gw->leftCol)) {
        r.right = r.left;
        *rc = r;
        return FALSE;
    }
    r.right = r.left + field->width;
    *rc = r;
    return r.right > r.left;
}

BOOL HGRowRect(HGridWindow* gw, int row, RECT* rc)
{
    RECT r;
    HGClientRect(gw, &r);
    LONG clientBottom = r.bottom;
    r.right += kHGFar;
    LONG h = r.top + ((StyleOf(gw) & HGS_COLHEADERS) ? gw->grid->colHeaderHeight : 0);
    if (row == -1 && (StyleOf(gw) & HGS_COLHEADERS)) {
        r.bottom = h;
        *rc = r;
        return TRUE;
    }
    r.top = ClampPixel(((LONG)row - gw->topRow) * RowHeight(gw) + h);
    r.bottom = r.top + RowHeight(gw);
    if (r.bottom <= h) {
        r.top = r.bottom = h;
        *rc = r;
        return FALSE;
    }
    *rc = r;
    return r.top < clientBottom;
}

BOOL HGRowRectFull(HGridWindow* gw, int row, RECT* rc)
{
    BOOL inView = HGRowRect(gw, row, rc);
    rc->right = LastColRight(gw);
    return inView;
}

void HGRectIntersect(RECT* out, const RECT* a, const RECT* b)
{
    RECT r = {Larger(a->left, b->left), Larger(a->top, b->top), Smaller(a->right, b->right),
              Smaller(a->bottom, b->bottom)};
    if (r.left > r.right)
        r.left = r.right;
    if (r.top > r.bottom)
        r.top = r.bottom;
    *out = r;
}

BOOL HGCellRect(HGridWindow* gw, int col, int row, BOOL trim, RECT* rc)
{
    RECT c, r;
    BOOL colIn = HGColRect(gw, col, &c);
    BOOL rowIn = HGRowRect(gw, row, &r);
    if (trim && (!colIn || !rowIn)) {
        *rc = kHGNoRect;
        return FALSE;
    }
    HGRectIntersect(rc, &c, &r);
    if (!(StyleOf(gw) & HGS_NOGRIDLINES) && col >= 0 && row >= 0) {
        if (rc->right > rc->left)
            rc->right -= 1; // the grid lines take the last pixel column and row
        if (rc->bottom > rc->top)
            rc->bottom -= 1;
    }
    return TRUE;
}

BOOL HGRangeRect(HGridWindow* gw, DWORD anchor, DWORD current, RECT* rc)
{
    int ac = HGCellCol(anchor), ar = HGCellRow(anchor), bc = HGCellCol(current), br = HGCellRow(current);
    RECT a, b;
    if (bc == -1 && br == -1) {
        HGClientRect(gw, rc);
        return TRUE;
    }
    if (bc == -1) {
        HGRowRectFull(gw, ar, &a);
        HGRowRectFull(gw, br, &b);
        UnionRect(rc, &a, &b);
        return TRUE;
    }
    if (br == -1) {
        HGColRect(gw, ac, &a);
        HGClipToRows(gw, &a);
        HGColRect(gw, bc, &b);
        HGClipToRows(gw, &b);
        UnionRect(rc, &a, &b);
        return TRUE;
    }
    HGCellRect(gw, ac, ar, FALSE, &a);
    if (anchor == current) {
        *rc = a;
        return FALSE;
    }
    HGCellRect(gw, bc, br, FALSE, &b);
    RECT joined, body;
    UnionRect(&joined, &a, &b);
    HGBodyRect(gw, &body);
    HGRectIntersect(rc, &joined, &body);
    return TRUE;
}

BOOL HGHitTest(HGridWindow* gw, int x, int y, DWORD* cell)
{
    RECT body;
    HGBodyRect(gw, &body);
    int col = -1;
    for (LONG sum = body.left; sum < x;) {
        int next = col;
        HGField* f = HGNextShownCol(gw, TRUE, &next);
        if (!f)
            break;
        col = next;
        sum += f->width;
    }
    if (col < 0 && !(StyleOf(gw) & HGS_ROWHEADERS))
        col = 0;
    LONG rh = RowHeight(gw);
    LONG row = gw->topRow + ((LONG)y - body.top + rh) / rh - 1; // truncates toward zero
    if (row < gw->topRow)
        row = (!(StyleOf(gw) & HGS_COLHEADERS) && gw->rowBase == 0) ? 0 : -1;
    LONG last = RecordCount(gw) - 1;
    if (row >= last)
        row = last;
    if (cell)
        *cell = HGPackCell(col, (int)row);
    return TRUE;
}

HGField* HGNextShownCol(HGridWindow* gw, BOOL forward, int* col)
{
    if (!gw || !gw->grid || !col)
        return nullptr;
    LONG count = FieldCount(gw), frozen = Frozen(gw);
    for (LONG i = *col;;) {
        if (forward) {
            ++i;
            if (i >= frozen && i < gw->leftCol)
                i = gw->leftCol; // past the frozen range the screen goes on at leftCol
            if (i >= count)
                return nullptr;
        } else {
            --i;
            if (i < gw->leftCol && i >= frozen)
                i = frozen - 1;
            if (i < 0)
                return nullptr;
        }
        HGField* f = HGFieldAt(gw->grid, (int)i);
        if (Shown(f)) {
            *col = (int)i;
            return f;
        }
    }
}

HGField* HGStepShownField(HGridWindow* gw, BOOL forward, int* col)
{
    if (!gw || !gw->grid || !col)
        return nullptr;
    LONG count = FieldCount(gw);
    for (LONG i = *col + (forward ? 1 : -1); i >= 0 && i < count; i += forward ? 1 : -1) {
        HGField* f = HGFieldAt(gw->grid, (int)i);
        if (Shown(f)) {
            *col = (int)i;
            return f;
        }
    }
    return nullptr;
}

int HGColsInView(HGridWindow* gw)
{
    RECT rc;
    HGScrollColsRect(gw, &rc);
    LONG width = rc.right - rc.left, sum = 0;
    int n = 0;
    for (LONG i = gw->leftCol; i < FieldCount(gw) && sum < width; ++i, ++n) {
        HGField* f = HGFieldAt(gw->grid, (int)i);
        if (Shown(f))
            sum += f->width;
    }
    return n;
}

// ---- Invalidation ----

extern "C" BOOL QUILLAPI HGridInvalidateCell(HWND hWnd, int col, int row)
{
    HGridWindow* gw = HGWindowOf(hWnd);
    RECT rc;
    if (gw && gw->grid && HGCellRect(gw, col, row, TRUE, &rc))
        InvalidateRect(hWnd, &rc, FALSE);
    return TRUE;
}

extern "C" BOOL QUILLAPI HGridInvalidateRange(HWND hWnd, int firstCol, int firstRow, int lastCol, int lastRow)
{
    HGridWindow* gw = HGWindowOf(hWnd);
    RECT rc;
    if (gw && gw->grid) {
        HGRangeRect(gw, HGPackCell(firstCol, firstRow), HGPackCell(lastCol, lastRow), &rc);
        InvalidateRect(hWnd, &rc, FALSE);
    }
    return TRUE;
}

// ---- Scrolling ----

void HGSetScrollPos(HGridWindow* gw, int bar, LONG pos)
{
    if (bar == SB_HORZ)
        gw->hScrollPos = pos;
    else
        gw->vScrollPos = pos;
    if (StyleOf(gw) & (bar == SB_HORZ ? WS_HSCROLL : WS_VSCROLL))
        SetScrollPos(gw->hWnd, bar, (int)pos, TRUE);
}

void HGUpdateScroll(HGridWindow* gw)
{
    if (!gw || !gw->grid)
        return;
    HWND self = gw->hWnd;
    RECT body;
    HGBodyRect(gw, &body);
    LONG h = Larger(body.bottom - body.top, 0), rh = RowHeight(gw);
    // The low bit of the remainder, not whether there is one: a remainder of 2 counts as none.
    if ((h % rh) & 1)
        gw->wFlags |= HGW_PARTIALROW;
    else
        gw->wFlags &= (WORD)~HGW_PARTIALROW;
    LONG partial = Partial(gw);
    gw->visibleRows = To16(Larger(h / rh + partial, 1));
    LONG visible = gw->visibleRows;
    if (!IsVirtual(gw)) {
        gw->cacheSize = To16(RecordCount(gw));
        gw->totalRecords = RecordCount(gw);
    } else {
        gw->cacheSize = To16(Smaller(Larger(gw->cacheSize, 2 * visible), kHGMaxRecordIndex));
        HGCacheFill(gw, FALSE);
        if (!IsWindow(self) || !gw->grid)
            return;
        gw->totalRecords = Larger(gw->totalRecords, RecordCount(gw) + gw->rowBase);
    }
    LONG range = Larger(partial - visible + gw->totalRecords, 0);
    gw->vScale = (range - 1) / kHGBarSteps + 1;
    LONG end = range / gw->vScale;
    if (!Notify(gw, HGN_VRANGE))
        return;
    DWORD style = StyleOf(gw);
    if (style & WS_VSCROLL) {
        if (style & HGS_KEEPBARS) {
            EnableScrollBar(self, SB_VERT, end == 0 ? ESB_DISABLE_BOTH : ESB_ENABLE_BOTH);
            if (end == 0)
                end = 1;
        }
        SetScrollRange(self, SB_VERT, 0, (int)end, FALSE);
    }
    if (gw->topRow > range - gw->rowBase) {
        gw->topRow = To16(Larger(range - gw->rowBase, 0));
        if (gw->wFlags & HGW_EDITORSHOWN)
            EditorShow(gw);
        InvalidateRect(self, nullptr, TRUE);
    }
    HGSetScrollPos(gw, SB_VERT, (gw->topRow + gw->rowBase) / gw->vScale);

    RECT cols;
    HGScrollColsRect(gw, &cols);
    LONG w = cols.right - cols.left, fields = FieldCount(gw), frozen = Frozen(gw), sum = 0, i;
    for (i = fields - 1; i >= frozen; --i) {
        HGField* f = HGFieldAt(gw->grid, (int)i);
        if (Shown(f))
            sum += f->width;
        if (sum >= w)
            break;
    }
    if (w > 0 && i < frozen) {
        gw->hScrollMax = 0; // everything fits
    } else {
        gw->hScrollMax = Larger(Smaller(i - frozen + 2, fields - frozen - 1), 0);
        if (!Notify(gw, HGN_HRANGE))
            return;
    }
    if (gw->hScrollMax < gw->hScrollPos) {
        HGScroll(gw, gw->hScrollMax - gw->hScrollPos, 0, TRUE);
        if (!IsWindow(self) || !gw->grid)
            return;
    }
    if (StyleOf(gw) & WS_HSCROLL)
        SetScrollRange(self, SB_HORZ, 0, (int)gw->hScrollMax, FALSE);
}

void HGScroll(HGridWindow* gw, LONG cols, LONG rows, BOOL moveEditor)
{
    if (!gw || !gw->grid)
        return;
    HWND self = gw->hWnd;
    bool silent = (gw->wFlags & HGW_SILENT) != 0;
    gw->wFlags &= (WORD)~HGW_SILENT;
    bool editing = (gw->wFlags & HGW_EDITING) != 0;
    bool mayMove = moveEditor && (gw->wFlags & HGW_EDITORSHOWN) && (StyleOf(gw) & HGS_INPLACE);
    bool hidden = false;
    auto hide = [&] {
        if (mayMove && !hidden) {
            EditorHide(gw);
            hidden = true;
        }
    };

    cols = Smaller(Larger(cols, -gw->hScrollPos), gw->hScrollMax - gw->hScrollPos);
    if (cols) {
        LONG sum = 0;
        for (LONG i = Smaller(gw->leftCol, gw->leftCol + cols); i < Larger(gw->leftCol, gw->leftCol + cols); ++i) {
            HGField* f = HGFieldAt(gw->grid, (int)i);
            if (Shown(f))
                sum += f->width;
        }
        if (cols < 0)
            sum = -sum;
        gw->leftCol = To16(gw->leftCol + cols);
        HGSetScrollPos(gw, SB_HORZ, gw->leftCol - Frozen(gw));
        if (!silent && !Notify(gw, HGN_HSCROLLED))
            return;
        if (sum) {
            hide();
            RECT rc;
            HGScrollColsRect(gw, &rc);
            ScrollWindow(self, (int)ClampPixel(-sum), 0, &rc, &rc);
            UpdateWindow(self);
            if (!IsWindow(self) || !gw->grid)
                return;
        }
    }

    // The row steps run also for a delta of 0, and so notify after a column scroll.
    {
        bool virt = IsVirtual(gw);
        LONG r = gw->rowBase + gw->topRow, partial = Partial(gw), visible = gw->visibleRows;
        LONG room = partial - visible + RecordCount(gw) - r;
        if (!virt) {
            if (rows > room && !Notify(gw, HGN_SCROLLEND))
                return;
            if (rows < -r && !Notify(gw, HGN_SCROLLTOP))
                return;
            rows = Smaller(rows, room);
        }
        rows = Larger(rows, -r);
        LONG total = gw->totalRecords, next = r + rows;
        if (virt) {
            if (next < gw->rowBase)
                HGCacheSeek(gw, next - gw->cacheSize + partial + visible);
            if (IsWindow(self) && gw->grid && next + partial + visible >= gw->rowBase + RecordCount(gw))
                HGCacheSeek(gw, next - 1);
            if (!IsWindow(self) || !gw->grid)
                return;
        }
        next = Larger(Smaller(next, gw->rowBase + partial - visible + RecordCount(gw)), gw->rowBase);
        gw->topRow = To16(next - gw->rowBase);
        if (gw->totalRecords != total) {
            HGUpdateScroll(gw);
            if (!IsWindow(self) || !gw->grid)
                return;
        }
        rows = next - r;
        HGSetScrollPos(gw, SB_VERT, (gw->topRow + gw->rowBase) / gw->vScale);
        if (!silent && !Notify(gw, HGN_VSCROLLED))
            return;
        if (rows) {
            hide();
            RECT rc;
            HGBodyRows(gw, &rc);
            ScrollWindow(self, 0, (int)ClampPixel(-rows * RowHeight(gw)), &rc, &rc);
            UpdateWindow(self);
            if (!IsWindow(self) || !gw->grid)
                return;
        }
    }
    if (hidden) {
        EditorShow(gw);
        if (editing && gw->hEditor && IsWindow(gw->hEditor))
            SetFocus(gw->hEditor);
    }
}

void HGOnScroll(HGridWindow* gw, int bar, WPARAM wParam)
{
    if (!gw || !gw->grid)
        return;
    LONG page = (bar == SB_VERT ? gw->visibleRows : HGColsInView(gw)) - 1;
    if (page <= 1)
        page = 1;
    LONG pos = HIWORD(wParam), delta = 0;
    switch (LOWORD(wParam)) {
    case SB_LINEUP:
        delta = -1;
        break;
    case SB_LINEDOWN:
        delta = 1;
        break;
    case SB_PAGEUP:
        delta = -page;
        break;
    case SB_PAGEDOWN:
        delta = page;
        break;
    case SB_THUMBPOSITION: // the thumb moves the grid when let go; SB_THUMBTRACK does nothing
        delta = bar == SB_VERT ? (pos - gw->vScrollPos) * gw->vScale : pos - gw->hScrollPos;
        break;
    }
    if (delta)
        HGScroll(gw, bar == SB_HORZ ? delta : 0, bar == SB_VERT ? delta : 0, TRUE);
}

void HGClampTop(HGridWindow* gw, LONG record)
{
    gw->totalRecords = Larger(gw->totalRecords, RecordCount(gw) + gw->rowBase);
    LONG frozen = Frozen(gw);
    gw->leftCol = To16(Smaller(Larger(gw->leftCol, frozen), Larger(frozen, FieldCount(gw) - 1)));
    gw->topRow = To16(record < gw->rowBase ? 0 : record - gw->rowBase);
}

void HGRelayout(HGridWindow* gw, BOOL erase)
{
    if (!gw || !gw->grid)
        return;
    HWND self = gw->hWnd;
    HGUpdateScroll(gw);
    if (!IsWindow(self) || !gw->grid)
        return;
    HGClampTop(gw, gw->topRow + gw->rowBase);
    // The current row's record goes first, as the anchor's: the two trade places.
    HGClampSelection(gw, gw->curRow + gw->rowBase, gw->anchorRow + gw->rowBase);
    if (!IsWindow(self) || !gw->grid)
        return;
    RECT rc;
    HGClientRect(gw, &rc);
    InvalidateRect(self, &rc, erase);
    if (g_gridEditHooks.moveTo)
        g_gridEditHooks.moveTo(gw, gw->curCol, gw->curRow, TRUE, FALSE);
}

LRESULT HGForwardToEditors(HGridWindow* gw, UINT msg, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    HWND self = gw->hWnd;
    for (LONG i = 0; gw->grid && i < FieldCount(gw); ++i) {
        HGField* f = HGFieldAt(gw->grid, (int)i);
        if (f && f->editor && IsWindow(f->editor->hWnd))
            result = SendMessageA(f->editor->hWnd, msg, wParam, lParam);
        if (!IsWindow(self))
            break;
    }
    return result;
}

HFONT HGSetFont(HGridWindow* gw, HFONT hFont, BOOL redraw)
{
    HWND self = gw->hWnd;
    HFONT old = gw->hFont;
    if (gw->hBar && IsWindow(gw->hBar)) {
        HFONT answer = (HFONT)SendMessageA(gw->hBar, WM_SETFONT, (WPARAM)hFont, TRUE);
        if (answer && answer != gw->hFont)
            DeleteObject(answer);
    }
    if (gw->wFlags & HGW_EDITORSHOWN)
        EditorShow(gw);
    HGForwardToEditors(gw, WM_SETFONT, (WPARAM)hFont, redraw);
    if (!IsWindow(self))
        return old;
    if (gw->grid && (gw->grid->options & 3) == HGO_UNITS) {
        HGridScale(gw->grid, old, hFont);
        HGRelayout(gw, TRUE);
        if (!IsWindow(self))
            return old;
    }
    if (redraw)
        InvalidateRect(self, nullptr, TRUE);
    gw->hFont = hFont;
    return old;
}

void HGGridSized(HGridWindow* gw)
{
    HWND self = gw->hWnd;
    if (gw->hBar && IsWindow(gw->hBar))
        HToolUpdate(gw->hBar); // the bar spans the new width
    if (!IsWindow(self) || !gw->grid)
        return;
    // An editor in the bar follows the bar; an in-place one stays on its cell.
    if (gw->hEditor && !(StyleOf(gw) & (HGS_READONLY | HGS_INPLACE)))
        EditorShow(gw);
    if (IsWindow(self) && gw->grid)
        HGUpdateScroll(gw);
}

BOOL HGRowIsSelected(HGridWindow* gw, int row)
{
    if (g_gridEditHooks.rowSelected)
        return g_gridEditHooks.rowSelected(gw, row);
    if (gw->anchorRow == -1 || gw->curRow == -1 || (row >= gw->anchorRow && row <= gw->curRow) ||
        (row >= gw->curRow && row <= gw->anchorRow))
        return (gw->wFlags & HGW_SELECTING) ? TRUE : FALSE;
    HGRecord* record = HGRecordAt(gw->grid, row);
    return record && (record->recordStatus & HGR_MARKED) ? TRUE : FALSE;
}

// ---- Rows of virtual mode ----

namespace {

// Asks the row source for one record into a cleared buffer; false if the
// window went meanwhile.
bool Fetch(HGridWindow* gw, LONG record, LPVOID buffer, LONG* answer)
{
    HWND self = gw->hWnd;
    memset(buffer, 0, (size_t)gw->grid->records->itemSize);
    *answer = gw->dataProc(self, HGOP_FETCH, record, buffer);
    return IsWindow(self) && gw->grid;
}

// Rows come in ahead of row 0: the row indices of the window move with their records.
void ShiftRows(HGridWindow* gw, LONG n)
{
    gw->topRow = To16(gw->topRow + n);
    if (gw->curRow != -1)
        gw->curRow = To16(gw->curRow + n);
    if (gw->anchorRow != -1)
        gw->anchorRow = To16(gw->anchorRow + n);
}

} // namespace

LONG HGCacheFill(HGridWindow* gw, BOOL atFront)
{
    if (!gw || !gw->grid || !gw->grid->records || !gw->dataProc)
        return 0;
    HWND self = gw->hWnd;
    HGridData* grid = gw->grid;
    LONG d = gw->cacheSize - RecordCount(gw);
    if (d < 0) {
        for (LONG k = 0; k < -d && RecordCount(gw) > 0; ++k) {
            if (!HGDropRecord(gw, atFront ? 0 : (int)(RecordCount(gw) - 1)))
                break;
            if (atFront)
                gw->rowBase += 1;
        }
        if (!IsWindow(self) || !gw->grid)
            return 0;
    } else if (d > 0 && !atFront) {
        LPVOID buffer = HGRecordBuffer(grid);
        if (!buffer)
            return 0;
        for (LONG i = RecordCount(gw); i < gw->cacheSize; ++i) {
            LONG answer = 0;
            if (!Fetch(gw, gw->rowBase + i, buffer, &answer)) {
                SeamFree(buffer);
                return 0;
            }
            if (!answer) {
                HGRecord* last = HGRecordAt(grid, (int)(i - 1));
                if ((grid->style & HGS_NEWROW) && (!last || !(last->recordStatus & HGR_NEW))) {
                    memset(buffer, 0, (size_t)grid->records->itemSize);
                    if (HGAppendRow(gw, buffer) != 0xFFFF) {
                        HGRecord* blank = HGRecordAt(grid, (int)(RecordCount(gw) - 1));
                        if (blank)
                            blank->recordStatus |= HGR_NEW;
                    }
                }
                break;
            }
            if (HGAppendRow(gw, buffer) == 0xFFFF)
                break;
        }
        SeamFree(buffer);
        if (RecordCount(gw) < gw->cacheSize) { // the table ended
            if (gw->rowBase > 0) {
                if (gw->cacheSize > gw->rowBase + RecordCount(gw))
                    gw->cacheSize = To16(gw->rowBase + RecordCount(gw));
                HGCacheFill(gw, TRUE);
                if (!IsWindow(self) || !gw->grid)
                    return 0;
            }
            gw->totalRecords = RecordCount(gw) + gw->rowBase;
        }
    } else if (d > 0) {
        LONG n = Smaller(d, gw->rowBase), start = gw->rowBase - n, k = 0;
        LPVOID buffer = n ? HGRecordBuffer(grid) : nullptr;
        for (; buffer && k < n && RecordCount(gw) <= kHGMaxRecordIndex; ++k) {
            LONG answer = 0;
            if (!Fetch(gw, start + k, buffer, &answer)) {
                SeamFree(buffer);
                return 0;
            }
            LONG before = RecordCount(gw);
            if (HLListInsert(grid->records, k, buffer) < 0 || RecordCount(gw) == before)
                break;
        }
        SeamFree(buffer);
        if (k < n) { // a gap would open between the new rows and the old: take them out again
            while (k-- > 0)
                HLListRemove(grid->records, 0);
        } else {
            gw->rowBase = start;
            ShiftRows(gw, n);
        }
    }
    gw->cacheSize = To16(RecordCount(gw));
    return d;
}

LONG HGCacheSeek(HGridWindow* gw, LONG base)
{
    if (!gw || !gw->grid)
        return 0;
    if (base < 0)
        base = 0;
    if (base == gw->rowBase)
        return 0;
    HWND self = gw->hWnd;
    LONG curRecord = gw->curRow + gw->rowBase, anchorRecord = gw->anchorRow + gw->rowBase;
    LONG top = gw->topRow + gw->rowBase, size = gw->cacheSize;
    if (gw->hEditor && (curRecord < base || curRecord >= base + size) && g_gridEditHooks.editorCommit) {
        g_gridEditHooks.editorCommit(gw);
        if (!IsWindow(self) || !gw->grid)
            return 0;
    }
    bool down = base < gw->rowBase;
    LONG k = Smaller(size, down ? gw->rowBase - base : base - gw->rowBase);
    gw->cacheSize = To16(size - k);
    HGCacheFill(gw, down ? FALSE : TRUE);
    if (!IsWindow(self) || !gw->grid)
        return 0;
    if (RecordCount(gw) == 0)
        gw->rowBase = down ? base + k : base;
    gw->cacheSize = To16(size);
    HGCacheFill(gw, down ? TRUE : FALSE);
    if (!IsWindow(self) || !gw->grid)
        return 0;
    HGClampTop(gw, top);
    HGClampSelection(gw, anchorRecord, curRecord);
    return 1;
}

void HGEmptyRows(HGridWindow* gw, BOOL repaint)
{
    if (!gw || !gw->grid)
        return;
    HWND self = gw->hWnd;
    if (g_gridEditHooks.editCommit) {
        g_gridEditHooks.editCommit(gw);
        if (!IsWindow(self) || !gw->grid)
            return;
    }
    if (!IsVirtual(gw)) {
        if (gw->wFlags & HGW_EDITORSHOWN) {
            EditorHide(gw);
            gw->wFlags &= (WORD)~HGW_CELLSHOWN;
        }
        HGridEmpty(gw->grid);
    } else {
        SHORT saved = gw->cacheSize;
        gw->cacheSize = 0;
        HGCacheFill(gw, FALSE);
        if (!IsWindow(self) || !gw->grid)
            return;
        gw->wFlags |= HGW_SILENT;
        gw->cacheSize = saved;
        gw->rowBase = 0;
        repaint = TRUE;
    }
    gw->topRow = gw->curCol = gw->curRow = gw->anchorCol = gw->anchorRow = 0;
    if (repaint)
        HGRelayout(gw, TRUE);
}
