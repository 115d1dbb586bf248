// Internal routines of a grid with a window: linking a grid to its window
// record, the cell layer, and what the cell layer asks of the window side.
#pragma once
#include "quill32.h"

// A record list holds at most this many records: a count above it refuses every
// add and insert. In virtual mode it bounds the cache only.
constexpr LONG kHGMaxRecordIndex = 0x7FF7;

// Operations of an HGridDataProc row source.
enum HGRowOp : UINT {
    HGOP_FETCH = 0,   // a row comes into the cache; 0: there is no such record
    HGOP_STORE = 1,   // a dirty, stored row leaves the cache
    HGOP_INSERT = 2,  // a record is inserted; 0 refuses
    HGOP_DELETE = 3,  // a stored record is deleted; 0 refuses
    HGOP_UPDATE = 4,  // a cell of a stored record was written; not 0: stored
    HGOP_WRITING = 5, // a cell is about to be written; not 0 refuses
    HGOP_ADD = 6,     // a record is added, or a cell of an unstored one written; not 0: stored
};

// The HGridWindow of an HGrid window, or null for anything else.
HGridWindow* HGWindowOf(HWND hWnd);

// ---- Window record ----
// Gives the window record its grid (HGM_SETGRID and creation). A linked grid is
// destroyed first. 0 if either is null or the grid lacks a list.
BOOL HGridLink(HGridWindow* gw, HGridData* grid);

// ---- Cells and rows ----
HGRecord* HGRecordAt(HGridData* grid, int row);
WORD HGCellIsNull(HGridWindow* gw, int col, int row);
BOOL HGSetCell(HGridWindow* gw, int col, int row, LPCVOID data);
int HGFormatCell(HGridWindow* gw, int col, int row, LPSTR buffer, int size, BOOL editing);
BOOL HGParseCell(HGridWindow* gw, int col, int row, LPCSTR text);
// Number of the new row counted from 1; 0xFFFF on refusal.
int HGAddRecord(HGridWindow* gw, LPCVOID data, BOOL newRow);
// The add of the row cache: the limit, HLListAdd and the repaint of the row.
int HGAppendRow(HGridWindow* gw, LPCVOID data);
int HGInsertRecord(HGridWindow* gw, LPCVOID data, int row, BOOL notify);
BOOL HGDeleteRecord(HGridWindow* gw, int row, BOOL notify);
BOOL HGDropRecord(HGridWindow* gw, int row);
LPVOID HGRecordBuffer(HGridData* grid);
BOOL HGRecordIO(HGridData* grid, int row, LPVOID buffer, BOOL write);
LONG HGMoveRecord(HGridData* grid, int from, int to);

// ---- The window side, as the cell layer needs it ----
// Pulls the current cell and the anchor back inside the fields and the list.
// 1 if anything changed.
BOOL HGClampSelection(HGridWindow* gw, LONG anchorRecord, LONG curRecord);
// Ends an open editor of the current cell; 1 if there was one.
BOOL HGEditorClose(HGridWindow* gw);
// Repaints the row at the next paint.
void HGInvalidateRow(HGridWindow* gw, int row);

// ---- Current cell, selection and editors ----
// The one road by which the current cell changes; 0 without fields or records.
BOOL HGMoveTo(HGridWindow* gw, int col, int row, BOOL extend, BOOL scroll);
BOOL HGRowSelected(HGridWindow* gw, int row);
void HGMultiSelect(HGridWindow* gw, int col, int row, BOOL shift, BOOL ctrl);
void HGEditCommit(HGridWindow* gw);
void HGEditCancel(HGridWindow* gw);
// Gives a field its editor window when it meets the grid window; 1 on success.
BOOL HGEditorAttach(HGridWindow* gw, HGridData* grid, HGField* field);
BOOL HGMoveBy(HGridWindow* gw, int cols, int rows, BOOL extend);
// The edit bar's title and record number of the current cell.
void HGUpdateBar(HGridWindow* gw);
// Inverts what changed between the old range (null: none) and the present one.
void HGPaintSelection(HGridWindow* gw, HDC hDC, const DWORD* oldAnchor, const DWORD* oldCurrent);
void HGInvertRow(HGridWindow* gw, HDC hDC, int row); // hDC may be null
// The selected columns, in order; true if more than one.
BOOL HGSelectionCols(HGridWindow* gw, int* first, int* last, BOOL skipHidden);
void HGKeyDown(HGridWindow* gw, UINT key, LPARAM lParam); // WM_KEYDOWN
void HGChar(HGridWindow* gw, WPARAM ch, LPARAM lParam); // WM_CHAR
HWND HGEditorCreate(HGridWindow* gw, HGridData* grid, HGField* field); // hidden; 0 for no kind
void HGEditorShow(HGridWindow* gw);
void HGEditorHide(HGridWindow* gw);
BOOL HGEditorLoad(HGridWindow* gw);   // cell to editor
BOOL HGEditorCommit(HGridWindow* gw); // editor to cell
void HGEditEnd(HGridWindow* gw, BOOL commit);
void HGChildFocus(HGridWindow* gw); // HM_CHILDFOCUS: an editor took the focus
// The mouse: WM_LBUTTONDOWN, the drag under way, WM_LBUTTONUP, WM_LBUTTONDBLCLK.
void HGMouseDown(HGridWindow* gw, LPARAM point);
void HGMouseMove(HGridWindow* gw, LPARAM point);
void HGMouseUp(HGridWindow* gw, LPARAM point);
void HGDoubleClick(HGridWindow* gw, LPARAM point);
// The clipboard: WM_COPY, WM_PASTE, and the paste of a text, checked first.
void HGCopy(HGridWindow* gw);
void HGPaste(HGridWindow* gw);
BOOL HGPasteText(HGridWindow* gw, LPCSTR text, BOOL write, DWORD* from, DWORD* to);
// Sets the cursor of a WM_SETCURSOR; 1 if it set one.
BOOL HGSetCursor(HGridWindow* gw, UINT hitTest);
// What an edge under the body point (x, y) resizes, as g_gridResizeTarget holds it.
LONG HGResizeTargetAt(HGridWindow* gw, LONG x, LONG y);

// The module's cursors 4302 to 4304, loaded while a grid window lives.
extern HCURSOR g_hRowSizeCursor;
extern HCURSOR g_hColSizeCursor;
extern HCURSOR g_hColDragCursor;
// The edge under the mouse: 0 none; -1 the column header's lower edge; -2 - r
// the lower edge of row r; 1 the row header's right edge; c + 2 the right edge
// of column c. One serves all grids: there is one mouse.
extern LONG g_gridResizeTarget;
extern LONG g_gridResizeLine; // where the XOR line or the drop marker lies

// ---- The window's messages ----
// Everything of the class handler but creation, end, painting, sizing and
// scrolling: the standard messages, the shared pair of brushes and the HGM_
// block. Sets *notHandled for default processing.
LRESULT HGridMessage(HGridWindow* gw, UINT msg, WPARAM wParam, LPARAM lParam, LPBOOL notHandled);
