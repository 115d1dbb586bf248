// The mouse on an HGrid window: selecting by click and drag, resizing rows,
// headers and columns by their edges, and dragging selected columns elsewhere.
#include "frame/frame.h"
#include "grid/gridpaint.h"
#include "grid/gridwin.h"

LONG g_gridResizeLine; // where the XOR line or the drop marker was drawn

namespace {

constexpr LONG kHGMinWidth = 2;
constexpr LONG kHGMaxWidth = 2000;
constexpr int kHGMarkerWidth = 3;

bool Alive(HWND hWnd, const HGridWindow* gw)
{
    return IsWindow(hWnd) && (const HGridWindow*)GetWindowLongA(hWnd, 0) == gw && gw->grid;
}

POINT PointOf(LPARAM point) { return {(SHORT)LOWORD(point), (SHORT)HIWORD(point)}; }

DWORD HitTest(HGridWindow* gw, POINT pt)
{
    DWORD cell = 0;
    HGHitTest(gw, pt.x, pt.y, &cell);
    return cell;
}

// The resize line across the client area, or the drop marker of a column drag:
// drawn and erased alike, by inversion.
void DrawLine(HGridWindow* gw, HDC dc, LONG at, bool rows)
{
    RECT client;
    HGClientRect(gw, &client);
    if (rows) {
        MoveToEx(dc, client.left, at, nullptr);
        LineTo(dc, client.right, at);
    } else {
        MoveToEx(dc, at, client.top, nullptr);
        LineTo(dc, at, client.bottom);
    }
}

void DrawMarker(HGridWindow* gw, HDC dc, LONG at)
{
    RECT client;
    HGClientRect(gw, &client);
    PatBlt(dc, at - kHGMarkerWidth / 2, client.top, kHGMarkerWidth, client.bottom - client.top, DSTINVERT);
}

// The ClipCursor area of a resize: from the edge's own row or column start + 2
// to the end of the body.
void ClipToResize(HGridWindow* gw, LONG target)
{
    RECT body, client;
    HGBodyRect(gw, &body);
    HGClientRect(gw, &client);
    RECT clip = client;
    clip.right = body.right;
    clip.bottom = body.bottom;
    if (target == -1) {
        clip.top = client.top + 2;
    } else if (target < -1) {
        RECT row;
        HGRowRect(gw, -2 - target, &row);
        clip.top = row.top + 2;
    } else if (target == 1) {
        clip.left = client.left + 2;
    } else {
        RECT col;
        HGColRect(gw, target - 2, &col);
        clip.left = col.left + 2;
    }
    MapWindowPoints(gw->hWnd, nullptr, (POINT*)&clip, 2);
    ClipCursor(&clip);
}

void TrackMove(LPVOID record, DWORD point) { HGMouseMove((HGridWindow*)record, (LPARAM)point); }

void MoveSelecting(HGridWindow* gw, POINT pt)
{
    HWND hWnd = gw->hWnd;
    HGridData* grid = gw->grid;
    DWORD cell = HitTest(gw, pt);
    int col = HGCellCol(cell), row = HGCellRow(cell);
    if (col < gw->leftCol && gw->curCol >= grid->frozenCols) {
        col = gw->leftCol - 1;
        HGStepShownField(gw, TRUE, &col);
    }
    if (gw->anchorCol < 0 && !(grid->style & HGS_SINGLESEL))
        col = -1;
    if (gw->anchorRow < 0)
        row = -1;
    if (row < 0 && (gw->wFlags & HGW_VIRTUAL) && gw->rowBase + gw->topRow > 0) {
        HGScroll(gw, 0, -1, FALSE);
        if (!Alive(hWnd, gw))
            return;
    }
    if (row < gw->topRow - 1)
        row = gw->topRow - 1;
    if (col != gw->curCol || row != gw->curRow)
        HGMoveTo(gw, col, row, TRUE, TRUE);
}

// A column drag: scrolls at the edges and marks where the columns would go.
void MoveDragging(HGridWindow* gw, POINT pt)
{
    HWND hWnd = gw->hWnd;
    HDC dc = GetDC(hWnd);
    if (gw->wFlags & HGW_LINEDRAWN)
        DrawMarker(gw, dc, g_gridResizeLine);
    gw->wFlags &= (WORD)~HGW_LINEDRAWN;
    ReleaseDC(hWnd, dc);
    int col = HGCellCol(HitTest(gw, pt));
    RECT area, rc;
    HGScrollColsRect(gw, &area);
    if (col >= 0 && HGColRect(gw, col, &rc) && rc.right > area.right)
        HGScroll(gw, 1, 0, FALSE);
    else if (pt.x < area.left && gw->leftCol > gw->grid->frozenCols)
        HGScroll(gw, -1, 0, FALSE);
    if (!Alive(hWnd, gw))
        return;
    int lo, hi;
    HGSelectionCols(gw, &lo, &hi, FALSE);
    col = HGCellCol(HitTest(gw, pt));
    if (col < 0 || (col >= lo && col <= hi) || !HGColRect(gw, col, &rc))
        return;
    g_gridResizeLine = col < lo ? rc.left : rc.right;
    dc = GetDC(hWnd);
    DrawMarker(gw, dc, g_gridResizeLine);
    ReleaseDC(hWnd, dc);
    gw->wFlags |= HGW_LINEDRAWN;
}

// Drops dragged columns: they move as a block before the column under the
// cursor, and stay selected there.
void DropColumns(HGridWindow* gw, POINT pt)
{
    HWND hWnd = gw->hWnd;
    int lo, hi;
    HGSelectionCols(gw, &lo, &hi, FALSE);
    int drop = HGCellCol(HitTest(gw, pt));
    if (drop < 0)
        HGStepShownField(gw, TRUE, &drop);
    if (drop >= lo && drop <= hi) {
        HGRelayout(gw, TRUE);
        return;
    }
    int count = hi - lo + 1;
    int delta = drop - lo;
    bool left = drop < lo;
    for (int i = 0, from = lo; i < count; i++) {
        HGMoveFld(gw->grid, from, from + delta);
        if (left)
            from++;
    }
    HCtlNotify(gw, HGN_COLSMOVED);
    if (!Alive(hWnd, gw))
        return;
    if (drop > hi)
        drop -= count - 1;
    HGRelayout(gw, TRUE);
    if (!Alive(hWnd, gw))
        return;
    HGMoveTo(gw, drop, -1, FALSE, TRUE);
    if (Alive(hWnd, gw))
        HGMoveTo(gw, drop + count - 1, -1, TRUE, TRUE);
}

// The new size of what the edge under the cursor bounds.
void ApplyResize(HGridWindow* gw, LONG target, POINT pt)
{
    HGridData* grid = gw->grid;
    RECT body;
    HGBodyRect(gw, &body);
    UINT code;
    if (target < -1) {
        // No clamp: the next link repairs a height below 1.
        grid->rowHeight = (SHORT)((gw->topRow + target + 2) * grid->rowHeight - body.top + pt.y);
        code = HGN_ROWSIZED;
    } else if (target == -1) {
        grid->colHeaderHeight = (SHORT)(grid->colHeaderHeight + pt.y - body.top);
        code = HGN_ROWSIZED;
    } else if (target == 1) {
        grid->rowHeaderWidth = (SHORT)(grid->rowHeaderWidth + pt.x - body.left);
        code = HGN_COLSIZED;
    } else {
        int col = (int)target - 2;
        RECT rc;
        HGColRect(gw, col, &rc);
        LONG width = pt.x - rc.left;
        width = width < kHGMinWidth ? kHGMinWidth : width > kHGMaxWidth ? kHGMaxWidth : width;
        int lo = col, hi = col;
        if (gw->anchorRow == -1 && gw->curRow == -1) {
            int first, last;
            HGSelectionCols(gw, &first, &last, FALSE);
            if (col >= first && col <= last) {
                lo = first;
                hi = last;
            }
        }
        for (int c = lo; c <= hi; c++)
            if (HGField* field = HGFieldAt(grid, c))
                field->width = (SHORT)width;
        code = HGN_COLSIZED;
    }
    HWND hWnd = gw->hWnd;
    HCtlNotify(gw, code);
    if (!Alive(hWnd, gw))
        return;
    if (grid->style & HGS_INPLACE) {
        HGEditorHide(gw);
        HGRelayout(gw, TRUE);
        if (Alive(hWnd, gw))
            HGEditorShow(gw);
    } else {
        HGRelayout(gw, TRUE);
    }
}

} // namespace

void HGMouseDown(HGridWindow* gw, LPARAM point)
{
    if (!gw || !gw->grid)
        return;
    HWND hWnd = gw->hWnd;
    bool shift = GetKeyState(VK_SHIFT) < 0, ctrl = GetKeyState(VK_CONTROL) < 0;
    gw->wFlags |= HGW_TRACKING;
    gw->wFlags &= (WORD)~HCTLF_VETO;
    SetCapture(hWnd);
    if (g_gridResizeTarget) {
        ClipToResize(gw, g_gridResizeTarget);
        return;
    }
    POINT pt = PointOf(point);
    DWORD cell = HitTest(gw, pt);
    int col = HGCellCol(cell), row = HGCellRow(cell);
    HGEditCommit(gw);
    if (!Alive(hWnd, gw))
        return;
    SetFocus(hWnd);
    if (!Alive(hWnd, gw))
        return;
    DWORD style = gw->grid->style;
    int lo, hi;
    HGSelectionCols(gw, &lo, &hi, FALSE);
    if ((style & HGS_FIELDMAP) && gw->curRow < 0 && row < 0 && col >= lo && col <= hi && shift) {
        gw->wFlags |= HGW_COLDRAG;
        SetCursor(g_hColDragCursor);
    } else if ((style & HGS_ROWSELECT) && !(style & HGS_SINGLESEL)) {
        HGMultiSelect(gw, col, row, shift, ctrl);
    } else {
        HGMoveTo(gw, col, row, shift, FALSE);
    }
    if (Alive(hWnd, gw) && (gw->wFlags & HGW_TRACKING))
        HCtlTrackMouse(gw, TrackMove, TRUE);
}

void HGMouseMove(HGridWindow* gw, LPARAM point)
{
    if (!gw || !gw->grid)
        return;
    POINT pt = PointOf(point);
    if (gw->wFlags & HGW_COLDRAG) {
        MoveDragging(gw, pt);
        return;
    }
    if (!g_gridResizeTarget) {
        MoveSelecting(gw, pt);
        return;
    }
    bool rows = g_gridResizeTarget < 0;
    HDC dc = GetDC(gw->hWnd);
    int rop = SetROP2(dc, R2_XORPEN);
    HGDIOBJ pen = SelectObject(dc, GetStockObject(WHITE_PEN));
    if (gw->wFlags & HGW_LINEDRAWN)
        DrawLine(gw, dc, g_gridResizeLine, rows);
    g_gridResizeLine = rows ? pt.y : pt.x;
    DrawLine(gw, dc, g_gridResizeLine, rows);
    gw->wFlags |= HGW_LINEDRAWN;
    SelectObject(dc, pen);
    SetROP2(dc, rop);
    ReleaseDC(gw->hWnd, dc);
}

void HGMouseUp(HGridWindow* gw, LPARAM point)
{
    if (!gw || !gw->grid)
        return;
    gw->wFlags &= (WORD)~(HGW_TRACKING | HGW_LINEDRAWN);
    if (GetCapture() == gw->hWnd)
        ReleaseCapture();
    POINT pt = PointOf(point);
    if (gw->wFlags & HGW_COLDRAG) {
        gw->wFlags &= (WORD)~HGW_COLDRAG;
        DropColumns(gw, pt);
        return;
    }
    if (!g_gridResizeTarget)
        return;
    ClipCursor(nullptr);
    // The target stays until the next WM_SETCURSOR looks again.
    ApplyResize(gw, g_gridResizeTarget, pt);
}

void HGDoubleClick(HGridWindow* gw, LPARAM point)
{
    if (!gw || !gw->grid)
        return;
    HWND hWnd = gw->hWnd;
    DWORD cell = HitTest(gw, PointOf(point));
    HGEditCommit(gw);
    if (!Alive(hWnd, gw))
        return;
    HGMoveTo(gw, HGCellCol(cell), HGCellRow(cell), FALSE, FALSE);
    if (Alive(hWnd, gw))
        HCtlNotify(gw, HGN_DBLCLK);
}
