// Internal drawing routines shared by the controls' painters: bevels, borders,
// transparent bitmaps, text measuring, and the drawing of an HImage.
#pragma once
#include "quill32.h"

#ifdef _WIN32
// The text rectangle of the button being painted: set by the button painter
// just before GrayStringA, read (and moved to the origin) by HBDrawText.
extern RECT g_rcButtonText;

// One-pixel frame inside rect, first pen top and left, second right and bottom;
// rect shrinks by 1 on each side. Restores the pen, leaves the brush.
void DrawBevelEdge(HDC hDC, LPRECT rect, HPEN topLeft, HPEN bottomRight, BOOL cutCorners, BOOL fill);
// The border of a control in its non-client area (after WM_NCPAINT).
void DrawNonClientBorder(HWND hWnd, BOOL bright);
// Draws bitmap at (x, y) leaving out the transparent colour; 0 draws it opaque.
void DrawTransparentBitmap(HDC hDC, HBITMAP hBitmap, int x, int y, COLORREF transparent);
// Width (low 16 bits) and height (high 16 bits) of text with line feeds.
DWORD MeasureTextLines(HDC hDC, LPCSTR text);
#endif
