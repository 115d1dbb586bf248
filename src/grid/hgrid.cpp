// HGrid: registration, the window procedure, and the class handler with the
// window record's birth and end, the edit bar and the grid cursors. The other
// messages go to their own files.
#include "frame/frame.h"
#include "frame/strings.h"
#include "grid/grid.h"
#include "grid/gridpaint.h"
#include "grid/gridwin.h"
#include "seam.h"

HCURSOR g_hRowSizeCursor;
HCURSOR g_hColSizeCursor;
HCURSOR g_hColDragCursor;

namespace {

int g_gridInstances; // grid windows alive

// Styles a loaded grid decides over the creation style; a child also takes
// WS_TABSTOP from the file.
constexpr DWORD kHGFileStyleMask = 0x1CB4FFFF;
constexpr DWORD kHGFileStyleMaskChild = 0x1CB5FFFF;

DWORD MergeStyle(DWORD fileStyle, DWORD creationStyle, DWORD mask)
{
    return (fileStyle & mask) | (creationStyle & ~mask);
}

DWORD WindowThread(HWND hWnd) { return GetWindowThreadProcessId(hWnd, nullptr); }

// The edit bar's static texts sit on its face: transparent, on light grey.
LRESULT CALLBACK HGEditBarProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_CTLCOLORSTATIC) {
        SetBkMode((HDC)wParam, TRANSPARENT);
        return (LRESULT)GetStockObject(LTGRAY_BRUSH);
    }
    return HToolWnd(hWnd, msg, wParam, lParam);
}

// The bar above the rows: OK, Cancel, the field title, the editor's place and
// the record number, from the module's dialog.
HWND HGCreateEditBar(HWND grid)
{
    HWND bar = HToolCreate(g_hInstance, MAKEINTRESOURCEA(IDD_HGRID_EDITBAR), grid, grid, WS_CHILD | WS_VISIBLE,
                           0xFFFF, 0, 0);
    if (bar)
        SubclassWW(bar, HGEditBarProc);
    return bar;
}

// Run time: a resource of the creating module, a file, or a new empty grid.
HGridData* CreationGrid(const CREATESTRUCTA* cs, LPCSTR name, DWORD* style)
{
    HGridData* grid = name ? HGLoadResourceGrid(cs->hInstance, name) : nullptr;
    if (!grid && name) {
        OFSTRUCT of;
        grid = HGridLoad(name, &of);
    }
    if (!grid)
        return HGridCreate(name, *style, HGO_UNITS, 0, -1, -1, -1, 0);
    DWORD mask = (*style & WS_CHILD) ? kHGFileStyleMaskChild : kHGFileStyleMask;
    *style = grid->style = MergeStyle(grid->style, *style, mask);
    return grid;
}

// Design time: the window works on a duplicate of the stashed grid, loading
// and stashing it first if the stash has none under this name.
HGridData* DesignGrid(HWND hWnd, LPCSTR name, DWORD* style)
{
    HGCreateStash();
    DWORD owner = WindowThread(hWnd);
    HGStashEntry* entry = GetStashed(owner, name, nullptr);
    if (entry) {
        HGridData* copy = HGridDup(entry->grid);
        if (copy)
            *style = MergeStyle(copy->style, *style, kHGFileStyleMaskChild);
        return copy;
    }
    OFSTRUCT of = {};
    HGridData* grid = HGridLoad(name, &of);
    if (!grid)
        grid = HGridCreate(name, *style | WS_VISIBLE, HGO_UNITS, 0, -1, -1, -1, 0);
    if (!grid)
        return nullptr;
    // Duplicated before stashing: a stash without memory destroys what it was given.
    HGridData* copy = HGridDup(grid);
    StashGrid(grid, owner, name, &of);
    return copy;
}

void CountInstance()
{
    if (g_gridInstances++ == 0) {
        g_hRowSizeCursor = LoadCursorA(g_hInstance, MAKEINTRESOURCEA(IDC_HGRID_CURSOR2));
        g_hColSizeCursor = LoadCursorA(g_hInstance, MAKEINTRESOURCEA(IDC_HGRID_CURSOR3));
        g_hColDragCursor = LoadCursorA(g_hInstance, MAKEINTRESOURCEA(IDC_HGRID_CURSOR4));
    }
}

void UncountInstance()
{
    if (g_gridInstances > 0 && --g_gridInstances == 0) {
        HCURSOR* cursors[] = {&g_hRowSizeCursor, &g_hColSizeCursor, &g_hColDragCursor};
        for (HCURSOR* c : cursors) {
            if (*c)
                DestroyCursor(*c);
            *c = nullptr;
        }
    }
}

BOOL HGridCreateWindow(HWND hWnd, const CREATESTRUCTA* cs)
{
    HGridWindow* gw = (HGridWindow*)HCtlNewRecord(hWnd, cs, sizeof(HGridWindow));
    if (!gw)
        return FALSE;
    bool design = HCtlDesignMode(hWnd) != 0;
    CountInstance();
    // A window name given as an ordinal names no file and no grid.
    LPCSTR name = cs->lpszName && !IS_INTRESOURCE(cs->lpszName) ? cs->lpszName : nullptr;
    DWORD style = (DWORD)cs->style;
    HGridData* grid;
    if (design) {
        gw->designName = HStrDup(name ? name : ""); // also the mark of a design window
        grid = gw->designName ? DesignGrid(hWnd, name ? name : "", &style) : nullptr;
    } else {
        grid = CreationGrid(cs, name, &style);
    }
    SetWindowLongA(hWnd, GWL_STYLE, (LONG)style);
    if (!HGridLink(gw, grid)) {
        HGridDestroy(grid);
        SeamFree(gw->designName);
        UncountInstance();
        HCtlFreeRecord(hWnd, gw);
        return FALSE;
    }
    HGRelayout(gw, TRUE);
    return TRUE;
}

// At design time the grid goes back to the stash in nominal units, replacing
// the entry it came from; without an entry it is left as it is.
void HGridEndWindow(HWND hWnd, HGridWindow* gw)
{
    if (gw->designName) {
        DWORD owner = WindowThread(hWnd);
        HGStashEntry* entry = GetStashed(owner, gw->designName, nullptr);
        if (entry && gw->grid) {
            OFSTRUCT kept = entry->file;
            RemoveStashed(owner, gw->designName);
            if ((gw->grid->options & 3) == HGO_UNITS) {
                if (gw->hFont)
                    HGridScale(gw->grid, gw->hFont, nullptr);
                HGridScale(gw->grid, nullptr, (HFONT)(INT_PTR)-1);
            }
            StashGrid(gw->grid, owner, gw->designName, &kept);
        }
        SeamFree(gw->designName);
    } else {
        HGridDestroy(gw->grid);
    }
    gw->grid = nullptr;
    UncountInstance();
    HCtlFreeRecord(hWnd, gw);
}

} // namespace

BOOL HGridLink(HGridWindow* gw, HGridData* grid)
{
    if (!gw || !grid || !grid->fields || !grid->records)
        return FALSE;
    // The same grid twice is kept: destroying it would leave the window on freed memory.
    if (gw->grid && gw->grid != grid)
        HGridDestroy(gw->grid);
    gw->grid = grid;
    // A read-only or in-place grid has no edit bar; any other has one.
    if (!(grid->style & (HGS_READONLY | HGS_INPLACE))) {
        if (!gw->hBar)
            gw->hBar = HGCreateEditBar(gw->hWnd);
    } else if (gw->hBar) {
        DestroyWindow(gw->hBar);
        gw->hBar = nullptr;
    }
    DefWindowProcA(gw->hWnd, WM_SETTEXT, 0, (LPARAM)grid->name);
    bool units = (grid->options & 3) == HGO_UNITS;
    if (units)
        HGridScale(grid, (HFONT)(INT_PTR)-1, nullptr);
    if (grid->frozenCols > grid->fields->count)
        grid->frozenCols = (SHORT)grid->fields->count;
    gw->leftCol = grid->frozenCols;
    if (grid->rowHeight < 1 || grid->rowHeight > 2000) {
        int unitY = HIWORD(GetBaseUnits(nullptr));
        grid->rowHeight = (SHORT)(units && unitY ? 160 / unitY : 20);
    }
    for (LONG i = 0; i < grid->fields->count; i++)
        HGEditorAttach(gw, grid, HGFieldAt(grid, i));
    if (gw->hNotify)
        EnableWindow(gw->hNotify, !(grid->style & WS_POPUP)); // a popup grid is modal to its target
    gw->wFlags &= (WORD)~HGW_CELLSHOWN;
    gw->curCol = gw->anchorCol = (SHORT)((grid->style & HGS_ROWSELECT) ? -1 : 0);
    gw->curRow = gw->anchorRow = 0;
    gw->wFlags |= HGW_SELECTING;
    HWND self = gw->hWnd;
    while (grid->records->count < grid->minRows) {
        if (HGAddRecord(gw, nullptr, FALSE) == 0xFFFF || !IsWindow(self))
            break;
    }
    // A receiver of the row notification may have destroyed the window and the grid.
    if (IsWindow(self) && (grid->style & HGS_NEWROW))
        HGAddRecord(gw, nullptr, TRUE);
    return TRUE;
}

void HGridRegister()
{
    if (g_hGridCursor)
        return; // registered once
    g_hGridCursor = LoadCursorA(g_hInstance, MAKEINTRESOURCEA(IDC_HGRID_CURSOR));
    HRegisterClass(CS_GLOBALCLASS | CS_DBLCLKS, HGridWnd, 0, 4, g_hInstance,
                   LoadIconA(g_hInstance, MAKEINTRESOURCEA(IDI_HGRID_ICON)), g_hGridCursor,
                   (HBRUSH)(COLOR_WINDOW + 1), nullptr, HGRID_CLASS);
    // Removing a field reaches the selection and the editor through these.
    g_gridWindowHooks.editorClose = HGEditorClose;
    g_gridWindowHooks.clampSelection = HGClampSelection;
    // Layout and painting reach the current cell and the selection through these.
    g_gridEditHooks.moveTo = HGMoveTo;
    g_gridEditHooks.rowSelected = HGRowSelected;
    g_gridEditHooks.editCommit = HGEditCommit;
    g_gridEditHooks.paintSelection = HGPaintSelection;
    g_gridEditHooks.invertRow = HGInvertRow;
    g_gridEditHooks.editorCommit = [](HGridWindow* gw) { HGEditorCommit(gw); };
    g_gridEditHooks.editorShow = HGEditorShow;
    g_gridEditHooks.editorHide = HGEditorHide;
}

extern "C" LRESULT CALLBACK HGridWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HGridMsgHandler, 0);
}

extern "C" LRESULT CALLBACK HGridMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HGridWindow* gw = (HGridWindow*)record;
    switch (msg) {
    case WM_NCCREATE:
        if (!lParam || !HGridCreateWindow(hWnd, (const CREATESTRUCTA*)lParam))
            return 0;
        gw = nullptr; // the new record waits for the next message
        break;
    case WM_NCDESTROY:
        if (gw)
            HGridEndWindow(hWnd, gw);
        gw = nullptr; // freed: the rest is default processing
        break;
    case WM_PAINT:
    case WM_PRINTCLIENT: // printing paints as WM_PAINT with a context does
        if (gw && gw->grid)
            return HGPaint(gw, (HDC)wParam);
        break;
    case WM_SIZE:
        if (gw && gw->grid) {
            HGGridSized(gw);
            return 0;
        }
        break;
    case WM_VSCROLL:
    case WM_HSCROLL:
        if (gw && gw->grid) {
            HGOnScroll(gw, msg == WM_VSCROLL ? SB_VERT : SB_HORZ, wParam);
            return 0;
        }
        break;
    case HM_GETSTYLE: // the grid's record has no extended head: the pair is its style word
        if (gw)
            return gw->grid ? (LRESULT)gw->grid->style : 0;
        break;
    case HM_SETSTYLE:
        if (!gw)
            break;
        if (gw->grid)
            gw->grid->style = (DWORD)lParam;
        return 1;
    }
    // Called by a host without a record, or without the flag, it answers nothing.
    if (!notHandled)
        return 0;
    if (gw)
        return HGridMessage(gw, msg, wParam, lParam, notHandled);
    *notHandled = TRUE;
    return 0;
}
