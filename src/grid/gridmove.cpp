// The current cell and the row selection of an HGrid window: the one road by
// which the current cell moves, with its notifications, and the row marks. The
// in-place editors are not here yet: commits and cancels have nothing to move.
#include <stdio.h>

#include "grid/gridpaint.h"
#include "grid/gridwin.h"

namespace {

LONG FieldCount(const HGridData* grid) { return grid->fields ? grid->fields->count : 0; }
LONG RecordCount(const HGridData* grid) { return grid->records ? grid->records->count : 0; }

bool Alive(HWND hWnd, const HGridWindow* gw)
{
    return IsWindow(hWnd) && (const HGridWindow*)GetWindowLongA(hWnd, 0) == gw && gw->grid;
}

bool Between(int value, int a, int b) { return (value >= a && value <= b) || (value >= b && value <= a); }

void InvalidateRange(HGridWindow* gw)
{
    HGridInvalidateRange(gw->hWnd, gw->anchorCol, gw->anchorRow, gw->curCol, gw->curRow);
}

// The edit bar shows the current column's title and the record number.
void UpdateBar(HGridWindow* gw, const HGField* field)
{
    if (!gw->hBar || !IsWindow(gw->hBar))
        return;
    SetDlgItemTextA(gw->hBar, IDC_HGRID_BARTITLE, gw->curCol >= 0 && field && field->title ? field->title : "");
    char number[16] = "";
    if (gw->curRow >= 0)
        snprintf(number, sizeof number, "%ld", (long)(gw->rowBase + gw->curRow + 1));
    SetDlgItemTextA(gw->hBar, IDC_HGRID_BARRECORD, number);
}

// A scrolled column comes into view: as the new left column if it lies left of
// the area, else with as many columns before it as still leave it whole.
void ScrollColIntoView(HGridWindow* gw, int col)
{
    if (col < gw->grid->frozenCols)
        return;
    LONG left = col;
    if (col >= gw->leftCol) {
        RECT area, rc;
        HGScrollColsRect(gw, &area);
        HGColRect(gw, col, &rc);
        if (rc.right <= area.right)
            return;
        LONG room = area.right - area.left;
        HGField* field = HGFieldAt(gw->grid, col);
        LONG used = field ? field->width : 0;
        for (int c = col - 1; c >= gw->grid->frozenCols; c--) {
            HGField* before = HGFieldAt(gw->grid, c);
            LONG width = before && !(before->flags & HGF_HIDDEN) ? before->width : 0;
            if (used + width > room)
                break;
            used += width;
            left = c;
        }
    }
    if (left != gw->leftCol)
        HGScroll(gw, left - gw->leftCol, 0, FALSE);
}

// A row comes into view by the least scroll.
void ScrollRowIntoView(HGridWindow* gw, int row)
{
    LONG shown = gw->visibleRows - ((gw->wFlags & HGW_PARTIALROW) ? 1 : 0);
    if (shown < 1)
        shown = 1;
    if (row < gw->topRow)
        HGScroll(gw, 0, row - gw->topRow, FALSE);
    else if (row >= gw->topRow + shown)
        HGScroll(gw, 0, row - gw->topRow - shown + 1, FALSE);
}

// Clears every row mark, repainting the rows that had one.
void ClearMarks(HGridWindow* gw)
{
    for (LONG r = 0; r < RecordCount(gw->grid); r++) {
        HGRecord* record = HGRecordAt(gw->grid, r);
        if (record && (record->recordStatus & HGR_MARKED)) {
            record->recordStatus &= (WORD)~HGR_MARKED;
            HGInvalidateRow(gw, r);
        }
    }
}

} // namespace

BOOL HGMoveTo(HGridWindow* gw, int col, int row, BOOL extend, BOOL scroll)
{
    if (!gw || !gw->grid || FieldCount(gw->grid) == 0 || RecordCount(gw->grid) == 0)
        return FALSE;
    HWND hWnd = gw->hWnd;
    DWORD style = gw->grid->style;
    if ((style & HGS_ROWSELECT) && row != -1)
        col = -1;
    if (style & HGS_SINGLESEL) {
        extend = FALSE;
    } else if (extend) {
        if (gw->anchorCol == -1)
            col = -1;
        if (gw->anchorRow == -1)
            row = -1;
    }

    // The receiver may redirect the move by HGM_SETNOTIFYCELL.
    gw->notifyCol = (SHORT)col;
    gw->notifyRow = (SHORT)row;
    HCtlNotify(gw, extend ? HGN_EXTENDING : HGN_MOVING);
    if (!Alive(hWnd, gw))
        return FALSE;
    if (gw->notifyCol != (SHORT)col || gw->notifyRow != (SHORT)row)
        gw->wFlags |= HCTLF_VETO;
    else
        gw->wFlags &= (WORD)~HCTLF_VETO;
    col = gw->notifyCol;
    row = gw->notifyRow;
    LONG fields = FieldCount(gw->grid);
    if (col < 0)
        col = -1;
    if (row < 0)
        row = -1;
    if (col >= fields)
        col = fields - 1;

    HGEditCommit(gw);
    if (!Alive(hWnd, gw))
        return FALSE;
    if (scroll && row >= RecordCount(gw->grid) && (gw->wFlags & HGW_VIRTUAL)) {
        LONG base = gw->rowBase;
        LONG step = row - (gw->topRow + gw->visibleRows - 1);
        HGScroll(gw, 0, step > 1 ? step : 1, FALSE);
        if (!Alive(hWnd, gw))
            return FALSE;
        row -= gw->rowBase - base;
    }
    LONG records = RecordCount(gw->grid);
    if (records == 0)
        return FALSE;
    if (row >= records)
        row = records - 1;

    bool range = col == -1 || row == -1 || (extend && (col != gw->anchorCol || row != gw->anchorRow));
    bool same = (gw->wFlags & HGW_CELLSHOWN) && col == gw->curCol && row == gw->curRow;
    if (same && (gw->wFlags & HGW_RANGE))
        same = extend || (gw->anchorCol == gw->curCol && gw->anchorRow == gw->curRow);
    bool inView = GetFocus() == hWnd || (style & HGS_KEEPSEL) || (gw->wFlags & HGW_EDITING);
    HGField* field = col >= 0 ? HGFieldAt(gw->grid, col) : nullptr;
    bool wantEditor = !range && field && !(field->flags & HGF_READONLY) && !(style & HGS_READONLY);
    bool refreshEditor = !(!range && !(gw->wFlags & HGW_RANGE) && (gw->wFlags & HGW_CELLSHOWN) &&
                           col == gw->curCol && (!(style & HGS_INPLACE) || same));
    if (gw->hEditor && (refreshEditor || !inView) && IsWindow(gw->hEditor)) {
        ShowWindow(gw->hEditor, SW_HIDE);
        gw->wFlags &= (WORD)~HGW_EDITORSHOWN;
    }
    if (scroll && col >= 0) {
        ScrollColIntoView(gw, col);
        if (!Alive(hWnd, gw))
            return FALSE;
    }
    if (scroll && row >= 0) {
        ScrollRowIntoView(gw, row);
        if (!Alive(hWnd, gw))
            return FALSE;
    }

    if (!(same && range)) {
        InvalidateRange(gw); // the old selection
        SHORT oldRow = gw->curRow;
        if (!same) {
            gw->curCol = (SHORT)col;
            gw->curRow = (SHORT)row;
            if (!extend) {
                gw->anchorCol = gw->curCol;
                gw->anchorRow = gw->curRow;
            }
        }
        HCtlNotify(gw, HGN_CELLMOVED);
        if (!Alive(hWnd, gw))
            return FALSE;
        if (gw->curRow != oldRow) {
            if (gw->recordMirror)
                HGRecordIO(gw->grid, gw->curRow, gw->recordMirror, FALSE);
            HCtlNotify(gw, HGN_ROWCHANGED);
            if (!Alive(hWnd, gw))
                return FALSE;
        }
        UpdateBar(gw, gw->curCol >= 0 ? HGFieldAt(gw->grid, gw->curCol) : nullptr);
        if (inView)
            InvalidateRange(gw);
    }
    gw->wFlags |= HGW_CELLSHOWN;
    if (range)
        gw->wFlags |= HGW_RANGE;
    else
        gw->wFlags &= (WORD)~HGW_RANGE;
    field = gw->curCol >= 0 ? HGFieldAt(gw->grid, gw->curCol) : nullptr;
    gw->hEditor = wantEditor && field && field->editor ? field->editor->hWnd : nullptr;
    return TRUE;
}

BOOL HGRowSelected(HGridWindow* gw, int row)
{
    if (!gw || !gw->grid)
        return FALSE;
    if (gw->anchorRow == -1 || gw->curRow == -1 || Between(row, gw->anchorRow, gw->curRow))
        return (gw->wFlags & HGW_SELECTING) ? TRUE : FALSE;
    HGRecord* record = HGRecordAt(gw->grid, row);
    return record && (record->recordStatus & HGR_MARKED) ? TRUE : FALSE;
}

void HGMultiSelect(HGridWindow* gw, int col, int row, BOOL shift, BOOL ctrl)
{
    if (!gw || !gw->grid)
        return;
    HWND hWnd = gw->hWnd;
    bool selecting = (gw->wFlags & HGW_SELECTING) != 0;
    if (row < 0) {
        ClearMarks(gw);
    } else if (!shift && gw->anchorRow >= 0 && gw->curRow >= 0) {
        // The running range becomes marks of what it showed.
        int low = gw->anchorRow < gw->curRow ? gw->anchorRow : gw->curRow;
        int high = gw->anchorRow < gw->curRow ? gw->curRow : gw->anchorRow;
        for (int r = low; r <= high; r++) {
            HGRecord* record = HGRecordAt(gw->grid, r);
            if (!record)
                continue;
            if (!selecting && (record->recordStatus & HGR_MARKED))
                HGInvalidateRow(gw, r);
            record->recordStatus =
                selecting ? (WORD)(record->recordStatus | HGR_MARKED) : (WORD)(record->recordStatus & ~HGR_MARKED);
        }
    }
    if (!ctrl) {
        ClearMarks(gw);
        int from = shift ? gw->anchorRow : row;
        HGridInvalidateRange(hWnd, -1, from, -1, row);
        selecting = true;
    } else if (!shift) {
        selecting = !HGRowSelected(gw, row);
        HGInvalidateRow(gw, row);
    } else {
        HGMoveTo(gw, -1, row, shift, TRUE);
        if (!Alive(hWnd, gw))
            return;
    }
    HGMoveTo(gw, col, row, shift, TRUE);
    if (!Alive(hWnd, gw))
        return;
    if (selecting)
        gw->wFlags |= HGW_SELECTING;
    else
        gw->wFlags &= (WORD)~HGW_SELECTING;
}

// Without editors there is no value to carry into the cell.
void HGEditCommit(HGridWindow* gw) {}

void HGEditCancel(HGridWindow* gw)
{
    if (gw)
        gw->wFlags &= (WORD)~HGW_EDITING;
}

// No field has an editor window yet.
BOOL HGEditorAttach(HGridWindow* gw, HGridData* grid, HGField* field) { return FALSE; }

LONG g_gridResizeTarget;

namespace {

LONG Held(LONG value, LONG low, LONG high) { return value < low ? low : value > high ? high : value; }

// The grip of an edge: a third of the width beside it, 1 to 6 pixels.
LONG Grip(LONG width) { return Held(width / 3, 1, 6); }

} // namespace

LONG HGResizeTargetAt(HGridWindow* gw, LONG x, LONG y)
{
    if (!gw || !gw->grid)
        return 0;
    HGridData* grid = gw->grid;
    DWORD style = grid->style;
    LONG h = grid->rowHeight > 0 ? grid->rowHeight : 1;
    LONG g = Held(h / 3, 1, 4);
    y += g; // an edge is caught from g above it to g below
    LONG target = 0;
    if ((style & HGS_SIZEROWS) && (!(style & HGS_ROWHEADERS) || x < 3)) {
        LONG m = y % h;
        if (m >= 0 && m < 2 * g) {
            target = -1 - gw->topRow - y / h;
            if (target == -1 && !(style & HGS_COLHEADERS))
                target = 0;
        }
    }
    if (target || !(style & HGS_SIZECOLS) || ((style & HGS_COLHEADERS) && y > g) || y <= -grid->colHeaderHeight)
        return target;
    int col = -1;
    HGField* field = HGNextShownCol(gw, TRUE, &col);
    if ((style & HGS_SIZEROWS) && (style & HGS_ROWHEADERS) && x >= -Grip(grid->rowHeaderWidth) &&
        x < Grip(field ? field->width : 0))
        return 1;
    while (field && x > 0) {
        x -= field->width;
        int next = col;
        HGField* following = HGNextShownCol(gw, TRUE, &next);
        if (x >= -Grip(field->width) && x < Grip(following ? following->width : 0))
            return col + 2;
        field = following;
        col = next;
    }
    return 0;
}

BOOL HGSetCursor(HGridWindow* gw, UINT hitTest)
{
    if (!gw || !gw->grid)
        return FALSE;
    if ((gw->wFlags & HGW_TRACKING) || hitTest != HTCLIENT) {
        if (!(gw->wFlags & HGW_COLDRAG))
            return FALSE;
        SetCursor(g_hColDragCursor);
        return TRUE;
    }
    POINT pt;
    GetCursorPos(&pt);
    ScreenToClient(gw->hWnd, &pt);
    RECT body;
    HGBodyRect(gw, &body);
    g_gridResizeTarget = HGResizeTargetAt(gw, pt.x - body.left, pt.y - body.top);
    if (!g_gridResizeTarget)
        return FALSE;
    SetCursor(g_gridResizeTarget < 0 ? g_hRowSizeCursor : g_hColSizeCursor);
    return TRUE;
}
