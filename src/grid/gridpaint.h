// Geometry, scrolling, the row cache of virtual mode and painting of an HGrid
// window. Column -1 is the row header strip and row -1 the column header strip.
#pragma once
#include "quill32.h"

// A cell address packed into 32 bits: column in the low word, row in the high word.
inline DWORD HGPackCell(int col, int row) { return MAKELONG((WORD)col, (WORD)row); }
inline int HGCellCol(DWORD cell) { return (SHORT)LOWORD(cell); }
inline int HGCellRow(DWORD cell) { return (SHORT)HIWORD(cell); }

// ---- Rectangles ----
void HGClientRect(HGridWindow* gw, RECT* rc);      // client area below the edit bar
void HGBodyRows(HGridWindow* gw, RECT* rc);        // the same below the column headers
void HGBodyRect(HGridWindow* gw, RECT* rc);        // the same right of the row headers
void HGScrollColsRect(HGridWindow* gw, RECT* rc);  // what horizontal scrolling moves
void HGPaintRect(HGridWindow* gw, RECT* rc);       // the body up to the last column and record
BOOL HGColRect(HGridWindow* gw, int col, RECT* rc);
BOOL HGRowRect(HGridWindow* gw, int row, RECT* rc);
BOOL HGRowRectFull(HGridWindow* gw, int row, RECT* rc);
BOOL HGCellRect(HGridWindow* gw, int col, int row, BOOL trim, RECT* rc);
// 0 for a single cell, whose rectangle is still given.
BOOL HGRangeRect(HGridWindow* gw, DWORD anchor, DWORD current, RECT* rc);
void HGRectIntersect(RECT* out, const RECT* a, const RECT* b);
void HGClipToRows(HGridWindow* gw, RECT* rc);
BOOL HGHitTest(HGridWindow* gw, int x, int y, DWORD* cell);
HGField* HGNextShownCol(HGridWindow* gw, BOOL forward, int* col);
HGField* HGStepShownField(HGridWindow* gw, BOOL forward, int* col);
int HGColsInView(HGridWindow* gw);

// ---- Scrolling and the metrics ----
void HGUpdateScroll(HGridWindow* gw);
void HGScroll(HGridWindow* gw, LONG cols, LONG rows, BOOL moveEditor);
void HGSetScrollPos(HGridWindow* gw, int bar, LONG pos);
void HGOnScroll(HGridWindow* gw, int bar, WPARAM wParam); // WM_HSCROLL and WM_VSCROLL
void HGClampTop(HGridWindow* gw, LONG record);
void HGRelayout(HGridWindow* gw, BOOL erase);
LRESULT HGForwardToEditors(HGridWindow* gw, UINT msg, WPARAM wParam, LPARAM lParam);
HFONT HGSetFont(HGridWindow* gw, HFONT hFont, BOOL redraw);   // WM_SETFONT
void HGGridSized(HGridWindow* gw);                             // WM_SIZE

// ---- Rows of virtual mode ----
LONG HGCacheFill(HGridWindow* gw, BOOL atFront);
LONG HGCacheSeek(HGridWindow* gw, LONG base);
void HGEmptyRows(HGridWindow* gw, BOOL repaint);

// ---- Painting ----
// WM_PAINT: into hDC if one is given, else between BeginPaint and EndPaint. 1.
LRESULT HGPaint(HGridWindow* gw, HDC hDC);
BOOL HGPaintCell(HGridWindow* gw, HDC hDC, int col, int row);
BOOL HGEraseBackground(HGridWindow* gw, HDC hDC); // WM_ERASEBKGND

// What layout and painting ask of the selection and editor routines, which
// install themselves here. While an entry is null its step is left out; the
// selection is then shown as the plain inversion of its range.
struct HGEditHooks {
    BOOL (*moveTo)(HGridWindow* gw, int col, int row, BOOL extend, BOOL scroll);
    void (*paintSelection)(HGridWindow* gw, HDC hDC, const DWORD* oldAnchor, const DWORD* oldCurrent);
    void (*invertRow)(HGridWindow* gw, HDC hDC, int row);
    BOOL (*rowSelected)(HGridWindow* gw, int row);
    void (*editCommit)(HGridWindow* gw);   // HGEditCommit
    void (*editorCommit)(HGridWindow* gw); // HGEditorCommit
    void (*editorShow)(HGridWindow* gw);
    void (*editorHide)(HGridWindow* gw);
};
extern HGEditHooks g_gridEditHooks;

// HGRowSelected, by the hook if installed.
BOOL HGRowIsSelected(HGridWindow* gw, int row);
