// The current cell and the selection of an HGrid window: the one road by which
// the current cell moves, with its notifications, the keys that move it, the
// row marks, and the inversion that shows the selection.
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

// A row comes into view by the least scroll. A row whose bottom lies on the
// body's bottom edge counts as out of view.
void ScrollRowIntoView(HGridWindow* gw, int row)
{
    RECT body, rc;
    HGBodyRows(gw, &body);
    HGRowRect(gw, row, &rc);
    if (rc.bottom < body.bottom && rc.bottom > body.top + 1)
        return;
    LONG h = gw->grid->rowHeight > 0 ? gw->grid->rowHeight : 1;
    LONG bottom = ((LONG)row - gw->topRow + 1) * h + body.top; // not clamped: a far row scrolls all the way
    if (rc.bottom < body.bottom)
        HGScroll(gw, 0, row - gw->topRow, FALSE);
    else
        HGScroll(gw, 0, (bottom - body.bottom) / h + 1, FALSE);
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
    if (gw->hEditor && (refreshEditor || !inView))
        HGEditorHide(gw);
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

    HDC dc = GetDC(hWnd);
    if (!(style & HGS_INPLACE) && !(gw->wFlags & (HGW_RANGE)) && (gw->wFlags & HGW_CELLSHOWN))
        HGPaintCell(gw, dc, gw->curCol, gw->curRow); // takes the old cell's inversion away
    if (!(same && range)) {
        DWORD oldAnchor = HGPackCell(gw->anchorCol, gw->anchorRow);
        DWORD oldCurrent = HGPackCell(gw->curCol, gw->curRow);
        bool hadCell = (gw->wFlags & HGW_CELLSHOWN) != 0;
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
        if (!Alive(hWnd, gw)) {
            ReleaseDC(hWnd, dc);
            return FALSE;
        }
        if (gw->curRow != oldRow) {
            if (gw->recordMirror)
                HGRecordIO(gw->grid, gw->curRow, gw->recordMirror, FALSE);
            HCtlNotify(gw, HGN_ROWCHANGED);
            if (!Alive(hWnd, gw)) {
                ReleaseDC(hWnd, dc);
                return FALSE;
            }
        }
        UpdateBar(gw, gw->curCol >= 0 ? HGFieldAt(gw->grid, gw->curCol) : nullptr);
        if (inView)
            HGPaintSelection(gw, dc, hadCell ? &oldAnchor : nullptr, hadCell ? &oldCurrent : nullptr);
    }
    ReleaseDC(hWnd, dc);
    gw->wFlags |= HGW_CELLSHOWN;
    if (range)
        gw->wFlags |= HGW_RANGE;
    else
        gw->wFlags &= (WORD)~HGW_RANGE;
    field = gw->curCol >= 0 ? HGFieldAt(gw->grid, gw->curCol) : nullptr;
    gw->hEditor = nullptr;
    if (wantEditor && field && field->editor && IsWindow(field->editor->hWnd)) {
        gw->hEditor = field->editor->hWnd;
        HGEditorLoad(gw);
        if (!Alive(hWnd, gw))
            return FALSE;
    }
    if (refreshEditor && inView)
        HGEditorShow(gw);
    return TRUE;
}

void HGUpdateBar(HGridWindow* gw)
{
    if (gw && gw->grid)
        UpdateBar(gw, gw->curCol >= 0 ? HGFieldAt(gw->grid, gw->curCol) : nullptr);
}

BOOL HGMoveBy(HGridWindow* gw, int cols, int rows, BOOL extend)
{
    if (!gw || !gw->grid)
        return TRUE;
    HWND hWnd = gw->hWnd;
    DWORD style = gw->grid->style;
    // One step before the target, then the next shown field in the direction.
    int col = gw->curCol + cols + (cols > 0 ? -1 : 1);
    HGStepShownField(gw, cols > 0, &col);
    if (!(style & HGS_ROWHEADERS) && col < 1)
        col = 0;
    // A record before the first one of the table lands on the first one.
    if (gw->rowBase > 0 && gw->rowBase + gw->curRow + rows < 0)
        rows = -(gw->rowBase + gw->curRow);
    int row = gw->curRow + rows;
    if (row < 0) {
        bool wasBelowTop = gw->curRow > 0;
        HGScroll(gw, 0, rows, FALSE);
        if (!Alive(hWnd, gw))
            return TRUE;
        row = gw->curRow + rows;
        if (wasBelowTop && row < 1)
            row = 0;
    }
    if (!(style & HGS_COLHEADERS) && row < 1)
        row = 0;
    HGMoveTo(gw, col, row, extend, TRUE);
    return TRUE;
}

namespace {

bool Pressed(int key) { return GetKeyState(key) < 0; }

// A page of rows: one less than the rows shown, at least 1.
LONG Page(const HGridWindow* gw) { return gw->visibleRows - 1 > 1 ? gw->visibleRows - 1 : 1; }

// Inserts or deletes a record for each selected row; whole columns select all.
void InsertOrDeleteRows(HGridWindow* gw, bool insert)
{
    HWND hWnd = gw->hWnd;
    bool all = gw->curRow == -1 && gw->anchorRow == -1;
    bool worked = false;
    LONG count = RecordCount(gw->grid);
    for (LONG i = 0; i < count; i++) {
        LONG r = insert ? i : count - 1 - i;
        if (!all && !HGRowSelected(gw, (int)r))
            continue;
        if (insert ? HGInsertRecord(gw, nullptr, (int)r, TRUE) >= 0
                   : HGDeleteRecord(gw, (int)r, TRUE))
            worked = true;
        if (!Alive(hWnd, gw))
            return;
    }
    if (worked)
        HGRelayout(gw, TRUE);
}

} // namespace

void HGKeyDown(HGridWindow* gw, UINT key, LPARAM lParam)
{
    if (!gw || !gw->grid)
        return;
    DWORD style = gw->grid->style;
    bool typing = key == VK_SPACE || (key >= 48 && key <= 111) || key >= 146;
    if (!(style & HGS_READONLY) && typing && gw->hEditor && IsWindow(gw->hEditor)) {
        HWND editor = gw->hEditor;
        SetFocus(editor);
        SendMessageA(editor, WM_KEYDOWN, key, lParam);
        return;
    }
    bool shift = Pressed(VK_SHIFT), ctrl = Pressed(VK_CONTROL);
    LONG fields = FieldCount(gw->grid);
    LONG toFirst = -(gw->curRow + gw->rowBase);
    LONG toLast = gw->totalRecords - gw->curRow - gw->rowBase;
    int cols = 0, rows = 0;
    bool extend = shift;
    switch (key) {
    case VK_TAB:
        cols = shift ? -1 : 1;
        extend = false;
        break;
    case VK_RETURN:
        rows = 1;
        break;
    case VK_ESCAPE:
        HGEditCancel(gw);
        return;
    case VK_PRIOR:
        rows = ctrl ? toFirst : -Page(gw);
        break;
    case VK_NEXT:
        rows = ctrl ? toLast : Page(gw);
        break;
    case VK_END:
        cols = fields;
        if (ctrl)
            rows = toLast;
        break;
    case VK_HOME:
        cols = -gw->curCol;
        if (ctrl)
            rows = toFirst;
        break;
    case VK_LEFT:
        cols = -1;
        break;
    case VK_RIGHT:
        cols = 1;
        break;
    case VK_UP:
        rows = ctrl ? -Page(gw) : -1;
        break;
    case VK_DOWN:
        rows = ctrl && gw->visibleRows - 1 > 1 ? gw->visibleRows - 1 : 1;
        break;
    case VK_INSERT:
        if (shift)
            SendMessageA(gw->hWnd, WM_PASTE, 0, 0);
        else if (ctrl)
            SendMessageA(gw->hWnd, WM_COPY, 0, 0);
        else if ((style & HGS_INSDEL) && gw->curCol < 0)
            InsertOrDeleteRows(gw, true);
        return;
    case VK_DELETE:
        if (!shift && !ctrl && (style & HGS_INSDEL) && gw->curCol < 0)
            InsertOrDeleteRows(gw, false);
        return;
    case VK_F2:
        if (!(style & HGS_READONLY) && gw->hEditor && IsWindow(gw->hEditor))
            SetFocus(gw->hEditor);
        return;
    default:
        return;
    }
    if (cols || rows)
        HGMoveBy(gw, cols, rows, extend);
}

// A character that reached the grid goes to the editor itself; a combo does
// not pass it on to its top child.
void HGChar(HGridWindow* gw, WPARAM ch, LPARAM lParam)
{
    if (gw && gw->hEditor && IsWindow(gw->hEditor))
        SendMessageA(gw->hEditor, WM_CHAR, ch, lParam);
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

// Inverts the difference between the old range and the present one: rows that
// keep their marked look, and the overlap of both ranges, stay as they are.
void HGPaintSelection(HGridWindow* gw, HDC hDC, const DWORD* oldAnchor, const DWORD* oldCurrent)
{
    if (!gw || !gw->grid || !hDC || RecordCount(gw->grid) == 0)
        return;
    HGridData* grid = gw->grid;
    int saved = SaveDC(hDC);
    bool selecting = (gw->wFlags & HGW_SELECTING) != 0;
    LONG shown = gw->visibleRows + 1;
    for (LONG r = gw->topRow; r < gw->topRow + shown && r < RecordCount(grid); r++) {
        HGRecord* record = HGRecordAt(grid, (int)r);
        if (record && ((record->recordStatus & HGR_MARKED) != 0) == selecting) {
            RECT row;
            HGRowRectFull(gw, (int)r, &row);
            ExcludeClipRect(hDC, row.left, row.top, row.right, row.bottom);
        }
    }
    auto editable = [&](int col) {
        HGField* field = col >= 0 ? HGFieldAt(grid, col) : nullptr;
        return !(grid->style & HGS_READONLY) && !(field && (field->flags & HGF_READONLY));
    };
    RECT now;
    bool multi = HGRangeRect(gw, HGPackCell(gw->anchorCol, gw->anchorRow), HGPackCell(gw->curCol, gw->curRow), &now);
    bool invert = multi || !editable(gw->anchorCol);
    if (oldAnchor && oldCurrent && (gw->wFlags & HGW_CELLSHOWN)) {
        RECT old;
        bool oldMulti = HGRangeRect(gw, *oldAnchor, *oldCurrent, &old);
        // A single old cell shows no inversion: its editor marks it, or without
        // HGS_INPLACE the move has just painted it afresh.
        bool oldInverted = oldMulti || ((grid->style & HGS_INPLACE) && !editable(HGCellCol(*oldAnchor)));
        if (oldInverted) {
            RECT overlap;
            if (IntersectRect(&overlap, &old, &now))
                ExcludeClipRect(hDC, overlap.left, overlap.top, overlap.right, overlap.bottom);
            InvertRect(hDC, &old);
        }
    }
    if (invert || !(grid->style & HGS_INPLACE))
        InvertRect(hDC, &now);
    RestoreDC(hDC, saved);
}

void HGInvertRow(HGridWindow* gw, HDC hDC, int row)
{
    if (!gw || !gw->grid)
        return;
    HDC dc = hDC ? hDC : GetDC(gw->hWnd);
    RECT rc;
    HGRowRectFull(gw, row, &rc);
    InvertRect(dc, &rc);
    if (!hDC)
        ReleaseDC(gw->hWnd, dc);
}

BOOL HGSelectionCols(HGridWindow* gw, int* first, int* last, BOOL skipHidden)
{
    int lo = 0, hi = -1;
    if (gw && gw->grid) {
        LONG fields = FieldCount(gw->grid);
        lo = gw->anchorCol < gw->curCol ? gw->anchorCol : gw->curCol;
        hi = gw->anchorCol < gw->curCol ? gw->curCol : gw->anchorCol;
        if (lo < 0) {
            lo = 0;
            hi = fields - 1;
        }
        if (skipHidden) {
            int c = lo - 1;
            lo = HGStepShownField(gw, TRUE, &c) ? c : hi + 1;
            c = hi + 1;
            hi = HGStepShownField(gw, FALSE, &c) ? c : lo - 1;
        }
    }
    if (first)
        *first = lo;
    if (last)
        *last = hi;
    return hi > lo;
}

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
