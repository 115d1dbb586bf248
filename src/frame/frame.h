// Library-wide state of the frame and the internal routines that every control uses.
#pragma once
#include "quill32.h"

extern HINSTANCE g_hInstance;   // the library's own module
extern HCURSOR g_hIBeamCursor;  // shown by a focused edit control
extern HCURSOR g_hArrowCursor;  // class cursor of the edit classes, set by HList
extern BOOL g_bInitialised;     // run-once guard of the start-up sequence
extern HCURSOR g_hGridCursor;   // HGrid's class cursor, and the guard of its registration

// Per-family registration, each beside its control.
void HButtRegister();
void HEditRegister();
void HListRegister();
void HStatRegister();
void HToolRegister();
void HCombRegister();
void HGridRegister();

#ifdef _WIN32
// Allocates a zeroed record of `size`, attaches it to the window with HM_SETPTR
// and fills hWnd, hNotify and wId from the creation structure. Null on failure.
LPVOID HCtlNewRecord(HWND hWnd, const CREATESTRUCTA* cs, UINT size);
// Frees a record and clears the window's slot.
void HCtlFreeRecord(HWND hWnd, LPVOID record);

typedef void (*HCTLTRACKPROC)(LPVOID record, DWORD point);

DWORD HTextExtent(HDC hDC, LPCSTR text);
WORD HGetVersion();
POINT HSplitPoint(DWORD packed);
void HUpdateTopLevel(HWND hWnd);
void HExcludeSiblings(HWND hWnd, HDC hDC);
void HCtlTrackMouse(LPVOID record, HCTLTRACKPROC callback, BOOL horizontal);
void HDebugTimerStart();
void HDebugTimerStop(LPCSTR text);
#endif
