// HComb's instance record, the drop state of the one open combo, and the
// routines that the combo window, its drop list and the grid share.
#pragma once
#include "quill32.h"

// The edit child's messages and notices that the combo relies on.
#ifndef HEM_GETDATA
#define HEM_GETDATA 0x428
#endif
#ifndef HEM_SETDATA
#define HEM_SETDATA 0x429
#endif
#ifndef HEM_SETFIRSTCHAR
#define HEM_SETFIRSTCHAR 0x432
#endif
#ifndef HEM_COMMIT
#define HEM_COMMIT 0x435
#endif
#ifndef HEN_CHANGE
#define HEN_CHANGE 0x300
#endif
#ifndef HEN_UPDATE
#define HEN_UPDATE 0x400
#endif

// Class bits of wFlags, beside the common HCTLF_ ones.
constexpr WORD HCF_DROPPED = 0x0001; // the list is dropped
constexpr WORD HCF_HELD = 0x0002;    // the button is held by the mouse
constexpr WORD HCF_PRESSED = 0x0004; // the button is drawn pressed

// Ids of the two children.
constexpr WORD kCombEditId = 1;  // an editable top child
constexpr WORD kCombChildId = 2; // a one-item list as top child
constexpr WORD kCombListId = 3;  // the list

#ifdef _WIN32

// The record of an HComb window.
struct HCombRecord {
    HCtlBaseEx base;      // hWnd, hNotify, wId, hFont, wFlags, dwStyle
    WNDPROC pfnChildProc; // the top child's procedure before subclassing
    LONG dropHeight;      // height of the list
    LONG dropWidth;       // width of the dropped list, 0 for the combo's width
    HWND hChild;          // top child, id 1 if an edit, 2 if a list
    HWND hList;           // the list, id 3
    LPVOID childRecord;   // record of the top child
    LPVOID listRecord;    // record of the list
};

#if !defined(_WIN64)
static_assert(offsetof(HCombRecord, pfnChildProc) == 24 && offsetof(HCombRecord, dropHeight) == 28 &&
                  offsetof(HCombRecord, hChild) == 36 && offsetof(HCombRecord, listRecord) == 48 &&
                  sizeof(HCombRecord) == 52,
              "HCombRecord layout");
#endif

// The one open combo of the process, its two children, and the mouse hook.
extern HWND g_hDropCombo;
extern HWND g_hDropChild;
extern HWND g_hDropList;
extern HHOOK g_hDropHook;

inline BOOL HCombIsDropList(const HCombRecord* r) { return (r->base.dwStyle & HCS_DROPLIST) != 0; }
inline BOOL HCombIsEditable(const HCombRecord* r) { return (r->base.dwStyle & HCS_EDITABLE) != 0; }

// The record of an HComb window; null for any other window.
HCombRecord* HCombRecordOf(HWND hWnd);
// The height of a drop list, from a height asked for: 3 window heights, at least 40, when none is.
LONG HCombDropHeightFor(LONG windowHeight, LONG asked);
void HCombLayout(HCombRecord* r);
void HCombPlaceDrop(HCombRecord* r);
void HCombOpenDrop(HCombRecord* r);
void HCombCloseDrop(HCombRecord* r);
// Keeps the top child and the list in step: from the child (1) or from the list (0).
int HCombSync(HCombRecord* r, BOOL fromChild, BOOL notify);
// The subclass procedure of the top child.
LRESULT CALLBACK HCombEditProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam);
// Paints one value of a combo outside a window, for the grid.
BOOL HCombDrawValue(HCombRecord* r, HDC dc, const RECT* rc, LPCVOID value, int how);
// Frees a combo's records without its windows, for the grid: the top child's by its
// kind, then the list's, then the combo's; the windows' record pointers are cleared.
void HCombFreeRecords(HCombRecord* r);

#endif
