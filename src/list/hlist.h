// HList's instance record, its items, and the routines that the item API,
// the window, the combo and the grid share.
#pragma once
#include "quill32.h"

constexpr UINT kHLItemHead = 6; // bytes in front of the payload

// Class bits of wFlags, beside the common HCTLF_ ones.
constexpr WORD HLF_RANGESET = 0x0001;   // the current extended range selects (1) or clears (0)
constexpr WORD HLF_CARETSHOWN = 0x0002; // the focus caret is drawn
constexpr WORD HLF_FIXEDWIDTH = 0x0004; // columnWidth set by HLM_SETCOLUMNWIDTH
constexpr WORD HLF_BUTTONDOWN = 0x0020; // the mouse button is held
constexpr WORD HLF_PARTIAL = 0x0100;    // the last row or column is partly visible
constexpr WORD HLF_FONTSEEN = 0x0200;   // WM_SETFONT has been seen
constexpr WORD HLF_ALTCOLOR = 0x0400;   // the item just formatted uses colorAlt
constexpr WORD HLF_NOCARET = 0x4000;    // single selection with no current item; empty value
constexpr WORD HLF_EXTENDING = 0x8000;  // the range may grow by mouse or shift

// Style bits of the low word of dwStyle.
constexpr DWORD HLS_ONEITEM = 0x0001;
constexpr DWORD HLS_SORTDATA = 0x0002;
constexpr DWORD HLS_SORTCODE = 0x0004;
constexpr DWORD HLS_MULTIPLE = 0x0008;
constexpr DWORD HLS_FRAME3D = 0x0010;
constexpr DWORD HLS_FOCUSBRUSH = 0x0020;
constexpr DWORD HLS_OWNERDRAW = 0x0040;
constexpr DWORD HLS_TABS = 0x0080;
constexpr DWORD HLS_NOINTEGRAL = 0x0100;
constexpr DWORD HLS_MULTICOLUMN = 0x0200;
constexpr DWORD HLS_EXTENDED = 0x0800;
constexpr DWORD HLS_WANTKEYS = 0x1000;
constexpr DWORD HLS_NOSCROLL = 0x4000;

#ifdef _WIN32

// The record of an HList (and of an HDrop) window.
#pragma pack(push, 2)
struct HListRecord {
    HCtlBaseEx base;      // hWnd, hNotify, wId, hFont, wFlags, dwStyle
    HBRUSH backBrush;     // 0: ask the notify target with WM_CTLCOLORLISTBOX
    HBRUSH focusBrush;    // background while focused, with style 0x0020
    COLORREF colorNormal; // text colour of an ordinary value
    COLORREF colorAlt;    // text colour of a value FormatData marks
    RECT rcClient;        // client rectangle of the last layout
    char dataClass;       // first pair
    char dataType;
    char codeClass;       // second pair; codeClass 0 if none
    char codeType;
    LONG columnWidth;     // pixels per column
    LONG rowHeight;       // pixels per row
    LONG topIndex;        // first visible item
    LONG rows;            // rows per column, at least 1
    LONG columns;         // visible columns, at least 1
    LONG anchor;          // fixed end of the selection range
    LONG caret;           // current item; -1 if none
    LONG scrollPos;       // in rows, or in columns for a multi-column list
    LONG tabCount;        // number of tab stops
    LONG* tabStops;       // owned, may be null
    LPSTR maskText;       // own string, may be null
    HLList* dataList;     // the items' data values
    HLList* codeList;     // the items' codes, with HLF_HASCODE
    LPVOID dataLink;      // application memory of the current data, not owned
    LPVOID codeLink;      // application memory of the current code, not owned
};
#pragma pack(pop)

#if !defined(_WIN64)
static_assert(offsetof(HListRecord, backBrush) == 24 && offsetof(HListRecord, rcClient) == 40 &&
                  offsetof(HListRecord, dataClass) == 56 && offsetof(HListRecord, columnWidth) == 60 &&
                  offsetof(HListRecord, caret) == 84 && offsetof(HListRecord, tabStops) == 96 &&
                  offsetof(HListRecord, dataList) == 104 && offsetof(HListRecord, codeLink) == 116 &&
                  sizeof(HListRecord) == 120,
              "HListRecord layout");
static_assert(offsetof(HLItem, flags) == 4 && offsetof(HLItem, payload) == kHLItemHead, "HLItem layout");
#endif

// The list record of a window of class HList or HDrop; null for any other window.
HListRecord* HLRecordOf(HWND hWnd);

// HLList callbacks of the item store.
LPVOID CALLBACK HLItemAlloc(HLList* list, LPVOID data);
LONG CALLBACK HLItemCompare(HLList* list, LPCVOID key, LPVOID node);
LPVOID CALLBACK HLItemData(HLList* list, LPVOID node);

// Item store routines on a record.
LONG HLInsertRec(HListRecord* r, LONG index, LPVOID data, LPVOID code);
BOOL HLDeleteRec(HListRecord* r, LONG index);
BOOL HLMark(HListRecord* r, UINT how, LONG count, LPCVOID items);
BOOL HLIsItemSelected(HListRecord* r, LONG index);
BOOL HLSelect(HListRecord* r, LONG index, UINT mode, BOOL commit);
BOOL HLSelectMarked(HListRecord* r, UINT mode, UINT how, LONG count, LPCVOID items, BOOL commit);
LONG HLSelectRange(HListRecord* r, LONG first, LONG last, UINT mode);
BOOL HLWriteLinks(HListRecord* r);
DWORD HLItemValue(HListRecord* r, LONG index);
LONG HLCount(const HListRecord* r);
LPVOID HLPayload(HLList* list, LONG index); // payload of item index; null if none

// Window routines.
void HListFree(HListRecord* r); // what the record owns, then the record; the window's pointer is cleared
BOOL HListSetType(HListRecord* r, LPCSTR text);
void HListLayout(HListRecord* r);
LONG HListScroll(HListRecord* r, LONG delta);
void HListSetCaret(HListRecord* r, LONG index, BOOL notify);
BOOL HListItemRect(HListRecord* r, LONG index, LPRECT out);
void HListInvalidateItem(HListRecord* r, LONG index, BOOL erase);
void HListInvalidateRange(HListRecord* r, LONG first, LONG last, BOOL erase);
LONG HListFindText(HListRecord* r, LPCSTR text, LONG start);
int HListFormatItem(HListRecord* r, LONG index, LPSTR text, int size); // 127 characters at most

// Painting (hlistpaint.cpp).
LONG HListRowHeight(HListRecord* r);
LONG HListColumnWidth(HListRecord* r);
void HListPaint(HListRecord* r, HDC given);
void HListEraseBack(HListRecord* r, HDC dc, const RECT* rect);
void HListShowCaret(HListRecord* r, LONG index);
void HListHideCaret(HListRecord* r, LONG index);
DWORD HListMeasureItem(HListRecord* r, HDC dc, LONG index, LPSTR text, int size);
// Paints one value outside the window: how 1 by data, 2 by code, else value points to an index.
BOOL HListDrawValue(HListRecord* r, HDC dc, const RECT* rc, LPCVOID value, int how);

#endif
