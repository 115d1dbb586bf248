// Painting of an HGrid window: grid lines, the header strips, and each data
// cell through the value painter of its field's editor, chosen by editor kind.
#include "grid/gridpaint.h"
#include "grid/gridwin.h"
#include "buttons/hbutt.h"
#include "edit/hedit.h"
#include "list/hcomb.h"
#include "list/hlist.h"
#include "seam.h"
#include <stdio.h>
#include <string.h>

namespace {

// Header texts are cut to this many bytes, terminator included.
constexpr int kHGHeaderText = 256;
// Bytes of a cell's value copy at least: a painter may read a string to its terminator.
constexpr int kHGValueBuffer = 256;
// A blank header button after the last row or column reaches this far.
constexpr LONG kHGBlankReach = 5000;
// Light grey grid lines on a white window, black on any other.
constexpr COLORREF kHGLightLines = RGB(0xC0, 0xC0, 0xC0);

DWORD StyleOf(const HGridWindow* gw) { return gw->grid->style; }
LONG RecordCount(const HGridWindow* gw) { return gw->grid->records ? gw->grid->records->count : 0; }
LONG FieldCount(const HGridWindow* gw) { return gw->grid->fields ? gw->grid->fields->count : 0; }
bool IsCoded(const HGField* f) { return (f->flags & HGF_CODED) != 0; }

// A pen made for one paint, deleted at the end of it.
struct PenGuard {
    HPEN h;
    ~PenGuard()
    {
        if (h)
            DeleteObject(h);
    }
};

// One data cell as a painter gets it.
struct CellPaint {
    HGridWindow* gw;
    const HGField* field;
    HDC dc;
    const RECT* rc;
    LPCVOID value; // null for a null cell
};

BOOL PaintByButton(const CellPaint& c) { return HButtDrawValue((HButtRec*)c.field->editor, c.dc, c.rc, c.value); }

BOOL PaintByList(const CellPaint& c)
{
    return HListDrawValue((HListRecord*)c.field->editor, c.dc, c.rc, c.value, IsCoded(c.field) ? 2 : 1);
}

// "e": alignment 1 with bit 1 of the style, else 2 x bit 0 of it.
BOOL PaintByEdit(const CellPaint& c)
{
    int alignment = (c.field->editorStyle & 2) ? 1 : 2 * (int)(c.field->editorStyle & 1);
    return HEditDrawValue((HEditRecord*)c.field->editor, c.dc, c.rc, c.value, alignment);
}

BOOL PaintByCombo(const CellPaint& c)
{
    return HCombDrawValue((HCombRecord*)c.field->editor, c.dc, c.rc, c.value, IsCoded(c.field) ? 2 : 1);
}

using CellPainter = BOOL (*)(const CellPaint& c);
struct PainterRow {
    char kind;
    CellPainter paint;
};
// The field's editor class draws, so that a cell looks as its editor would show it.
constexpr PainterRow kPainters[] = {
    {'c', PaintByCombo}, {'d', PaintByCombo}, {'e', PaintByEdit}, {'k', PaintByButton}, {'l', PaintByList},
};

CellPainter PainterOf(char kind)
{
    for (const PainterRow& row : kPainters)
        if (row.kind == kind)
            return row.paint;
    return nullptr;
}

BOOL PaintRowHeader(HGridWindow* gw, HDC dc, RECT rc, int row)
{
    if (!(StyleOf(gw) & HGS_ROWHEADERS))
        return FALSE;
    char number[16] = "";
    LPCSTR text = nullptr;
    LONG count = RecordCount(gw);
    if (row < count) {
        HGRecord* record = HGRecordAt(gw->grid, row);
        if (row == count - 1 && record && (record->recordStatus & (HGR_NEW | HGR_DIRTY)) == HGR_NEW) {
            text = "*";
        } else {
            snprintf(number, sizeof number, "%ld", (long)(gw->rowBase + row + 1));
            text = number;
        }
    }
    DrawPushButton(gw->hWnd, dc, &rc, 0, DPB_SQUARE, text, gw->hFont, nullptr, 0);
    return TRUE;
}

BOOL PaintColHeader(HGridWindow* gw, HDC dc, RECT rc, int col)
{
    if (!(StyleOf(gw) & HGS_COLHEADERS))
        return FALSE;
    HGField* field = col >= 0 ? HGFieldAt(gw->grid, col) : nullptr;
    char marked[kHGHeaderText];
    LPCSTR text = field ? field->title : nullptr;
    // Files of 0x4849 and before mark read-only columns; 0x484A does not.
    if (field && (field->flags & HGF_READONLY) && gw->grid->version <= 0x4849) {
        snprintf(marked, sizeof marked, "( %s )", field->title ? field->title : "");
        text = marked;
    }
    DrawPushButton(gw->hWnd, dc, &rc, 0, DPB_SQUARE, text, gw->hFont, nullptr, 0);
    return TRUE;
}

BOOL PaintDataCell(HGridWindow* gw, HDC dc, const RECT* rc, int col, int row)
{
    HGField* field = HGFieldAt(gw->grid, col);
    CellPainter paint = field ? PainterOf(field->editorKind) : nullptr;
    if (!field || !field->editor || !paint)
        return FALSE;
    // A copy, terminated and at least as large as the type: never the cell itself.
    int type = GetDataSize(field->classLetter, field->typeLetter);
    size_t bytes = (size_t)(field->size > kHGValueBuffer ? field->size : kHGValueBuffer);
    if (type > 0 && (size_t)type > bytes)
        bytes = (size_t)type;
    SeamBlock value(bytes + 1);
    if (!value.p)
        return FALSE;
    // A field of size 0 paints an empty value, whatever the cell's null mark says.
    BOOL present = HGGetCellData(gw->hWnd, col, row, value.p) || field->size == 0;
    CellPaint c = {gw, field, dc, rc, present ? value.p : nullptr};
    int saved = SaveDC(dc);
    BOOL done = paint(c);
    RestoreDC(dc, saved);
    return done;
}

// The shown columns of the screen from first to last, as the hit test gives
// them; -1 stands for the row header strip. A first column that is not on the
// screen (column 0 of the hit test without row headers) starts at the left.
// Gives how many, at most `room`; ranOut tells whether the last one is the
// screen's last.
int ColumnsBetween(HGridWindow* gw, int first, int last, int* cols, int room, bool* ranOut)
{
    int n = 0;
    if (room > 0)
        cols[n++] = -1;
    for (int i = -1; n < room && HGNextShownCol(gw, TRUE, &i);)
        cols[n++] = i;
    int from = 0, to = n - 1;
    for (int k = 0; k < n; ++k) {
        if (cols[k] == first)
            from = k;
        if (cols[k] == last)
            to = k;
    }
    *ranOut = to == n - 1;
    if (to < from)
        return 0;
    memmove(cols, cols + from, sizeof(int) * (size_t)(to - from + 1));
    return to - from + 1;
}

void PaintGridLines(HGridWindow* gw, HDC dc, const RECT* area, const int* cols, int ncols)
{
    PenGuard pen = {CreatePen(PS_SOLID, 1, GetSysColor(COLOR_WINDOW) == RGB(255, 255, 255) ? kHGLightLines : 0)};
    SelectObject(dc, pen.h);
    RECT body;
    HGBodyRect(gw, &body);
    LONG rh = gw->grid->rowHeight > 0 ? gw->grid->rowHeight : 1;
    LONG y = body.top + rh - 1;
    for (LONG row = gw->topRow; row < RecordCount(gw) && y < area->bottom; ++row, y += rh) {
        MoveToEx(dc, area->left, y, nullptr);
        LineTo(dc, area->right, y);
    }
    for (int k = 0; k < ncols; ++k) {
        RECT rc;
        if (cols[k] < 0 || !HGColRect(gw, cols[k], &rc))
            continue;
        MoveToEx(dc, rc.right - 1, area->top, nullptr);
        LineTo(dc, rc.right - 1, area->bottom);
    }
    SelectObject(dc, GetStockObject(BLACK_PEN));
}

// Without the selection routines, the range shows as its inversion; an editable
// single cell under HGS_INPLACE is left to its editor.
void PaintPlainSelection(HGridWindow* gw, HDC dc)
{
    if (RecordCount(gw) == 0)
        return;
    RECT rc;
    bool range = HGRangeRect(gw, HGPackCell(gw->anchorCol, gw->anchorRow), HGPackCell(gw->curCol, gw->curRow), &rc);
    HGField* field = gw->anchorCol >= 0 ? HGFieldAt(gw->grid, gw->anchorCol) : nullptr;
    bool invert = range || (StyleOf(gw) & HGS_READONLY) || (field && (field->flags & HGF_READONLY));
    if (invert || !(StyleOf(gw) & HGS_INPLACE))
        InvertRect(dc, &rc);
}

void PaintSelection(HGridWindow* gw, HDC dc)
{
    if (!(gw->wFlags & HGW_CELLSHOWN) || (GetFocus() != gw->hWnd && !(StyleOf(gw) & HGS_KEEPSEL)))
        return;
    if (!(StyleOf(gw) & HGS_ROWSELECT) || gw->anchorRow < 1 || gw->curRow < 1) {
        if (g_gridEditHooks.paintSelection)
            g_gridEditHooks.paintSelection(gw, dc, nullptr, nullptr);
        else
            PaintPlainSelection(gw, dc);
        return;
    }
    auto invertRow = [&](int row) {
        if (g_gridEditHooks.invertRow) {
            g_gridEditHooks.invertRow(gw, dc, row);
        } else {
            RECT rc;
            HGRowRectFull(gw, row, &rc);
            InvertRect(dc, &rc);
        }
    };
    if (HGRowIsSelected(gw, -1))
        invertRow(-1);
    LONG shown = gw->visibleRows;
    for (LONG row = gw->topRow; row < gw->topRow + shown && row < RecordCount(gw); ++row)
        if (HGRowIsSelected(gw, (int)row))
            invertRow((int)row);
}

// The paint proper, on a context that the caller owns.
void PaintArea(HGridWindow* gw, HDC dc, const RECT* update)
{
    HWND self = gw->hWnd;
    RECT area;
    HGPaintRect(gw, &area);
    DWORD first, last;
    HGHitTest(gw, update->left + 1, update->top, &first);
    HGHitTest(gw, update->right - 1, update->bottom, &last);
    int c1 = HGCellCol(first), r1 = HGCellRow(first), c2 = HGCellCol(last), r2 = HGCellRow(last);
    int ncols = FieldCount(gw) + 1;
    SeamBlock colBlock(sizeof(int) * (size_t)ncols);
    int* cols = (int*)colBlock.p;
    if (!cols)
        return;
    bool ranOut = true;
    ncols = ColumnsBetween(gw, c1, c2, cols, ncols, &ranOut);
    DWORD style = StyleOf(gw);
    LONG count = RecordCount(gw);

    if (!(style & HGS_NOGRIDLINES))
        PaintGridLines(gw, dc, &area, cols, ncols);

    if ((style & HGS_ROWHEADERS) && c1 < 0) {
        for (int row = r1 < 0 ? 0 : r1; row <= r2 && gw->grid; ++row)
            HGPaintCell(gw, dc, -1, row);
        if (!IsWindow(self) || !gw->grid)
            return;
        RECT strip, rows, client;
        HGColRect(gw, -1, &strip);
        HGBodyRows(gw, &rows);
        HGClientRect(gw, &client);
        LONG end = rows.top; // where the last record ends
        if (count > 0) {
            RECT lastRow;
            HGRowRect(gw, (int)(count - 1), &lastRow);
            end = lastRow.bottom;
        }
        if (end >= rows.top && end < client.bottom) {
            RECT blank = {strip.left, end, strip.right, end + kHGBlankReach};
            DrawPushButton(self, dc, &blank, 0, DPB_SQUARE, nullptr, gw->hFont, nullptr, 0);
        }
    }

    if ((style & HGS_COLHEADERS) && r1 < 0) {
        if (style & HGS_ROWHEADERS)
            HGPaintCell(gw, dc, -1, -1);
        RECT lastRc = {0, 0, 0, 0};
        for (int k = 0; k < ncols && gw->grid; ++k) {
            if (cols[k] < 0)
                continue;
            HGPaintCell(gw, dc, cols[k], -1);
            HGColRect(gw, cols[k], &lastRc);
        }
        if (!IsWindow(self) || !gw->grid)
            return;
        if (ranOut) {
            RECT strip, body;
            HGRowRect(gw, -1, &strip);
            HGBodyRect(gw, &body);
            LONG from = lastRc.right > lastRc.left ? lastRc.right : body.left;
            RECT blank = {from, strip.top, from + kHGBlankReach, strip.bottom};
            DrawPushButton(self, dc, &blank, 0, DPB_SQUARE, nullptr, gw->hFont, nullptr, 0);
        }
    }

    for (int row = r1 < 0 ? 0 : r1; row <= r2 && row < count; ++row) {
        for (int k = 0; k < ncols; ++k) {
            if (cols[k] >= 0)
                HGPaintCell(gw, dc, cols[k], row);
            if (!IsWindow(self) || !gw->grid)
                return;
        }
    }
    PaintSelection(gw, dc);
}

} // namespace

BOOL HGPaintCell(HGridWindow* gw, HDC hDC, int col, int row)
{
    if (!hDC || !gw || !gw->grid || col >= FieldCount(gw))
        return FALSE;
    if (col >= 0 && row >= 0 && row >= RecordCount(gw))
        return FALSE;
    RECT rc;
    if (!HGCellRect(gw, col, row, TRUE, &rc) || IsRectEmpty(&rc))
        return FALSE;
    if (col < 0 && row >= 0)
        return PaintRowHeader(gw, hDC, rc, row);
    if (row < 0)
        return PaintColHeader(gw, hDC, rc, col);
    return PaintDataCell(gw, hDC, &rc, col, row);
}

LRESULT HGPaint(HGridWindow* gw, HDC hDC)
{
    PAINTSTRUCT ps;
    HWND self = gw->hWnd;
    HDC dc = hDC ? hDC : BeginPaint(self, &ps);
    RECT update;
    if (hDC)
        GetClientRect(self, &update); // a context handed in gets everything
    else
        update = ps.rcPaint;
    if (dc && gw->grid) {
        int saved = SaveDC(dc);
        if (hDC) // BeginPaint clips to the client area; a context handed in may be larger
            IntersectClipRect(dc, update.left, update.top, update.right, update.bottom);
        PaintArea(gw, dc, &update);
        RestoreDC(dc, saved);
    }
    if (!hDC)
        EndPaint(self, &ps);
    return 1;
}

BOOL HGEraseBackground(HGridWindow* gw, HDC hDC)
{
    if (!gw->grid)
        return TRUE;
    HWND self = gw->hWnd;
    HBRUSH brush = gw->hBrush ? gw->hBrush : HCtlColor(gw, HCTLCOLOR_GRID, hDC);
    if (!IsWindow(self) || !gw->grid)
        return TRUE;
    RECT body;
    HGBodyRect(gw, &body);
    int saved = SaveDC(hDC);
    SelectObject(hDC, brush ? brush : GetSysColorBrush(COLOR_WINDOW));
    SelectObject(hDC, GetStockObject(NULL_PEN));
    Rectangle(hDC, body.left, body.top, body.right + 1, body.bottom + 1);
    RestoreDC(hDC, saved);
    return TRUE;
}
