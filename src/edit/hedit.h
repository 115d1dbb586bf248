// HEdit's instance record and the routines that its buffer, input, painting
// and window files share; the combo and the grid use the record and HEditDrawValue.
#pragma once
#include "quill32.h"

#ifdef _WIN32

// The record of an HEdit (and HEdit_SS) window.
struct HEditRecord {
    HCtlBaseEx base;      // hWnd, hNotify, wId, hFont, wFlags, dwStyle
    HBRUSH backBrush;     // 0: ask the notify target with WM_CTLCOLOREDIT
    HBRUSH focusBrush;    // background while focused, with HES_FOCUSBRUSH
    COLORREF colorNormal; // text colour of an ordinary value
    COLORREF colorAlt;    // text colour of a value FormatData marks
    RECT rcText;          // text rectangle in client coordinates
    LONG charHeight;      // caret and line height
    LONG visibleChars;    // text width in average characters, at least 1
    char dataClass;       // class letter of the value
    char dataType;        // type letter of the value
    LONG dataSize;        // bytes of value
    LONG textLimit;       // most characters a class s field holds
    LONG textSize;        // bytes of text
    LONG anchor;          // fixed end of the selection
    LONG caret;           // moving end of the selection
    LONG firstChar;       // first visible character; right-aligned: the number scrolled off the right
    LONG firstMax;        // highest firstChar
    char passwordChar;    // drawn for each character with HES_PASSWORD
    LPSTR maskText;       // own string, may be null
    LPSTR emptyText;      // own string, may be null: shown for an empty value outside editing
    LPVOID value;         // own block of dataSize bytes: the stored value
    LPVOID dataLink;      // application memory of the value, not owned
    LPSTR text;           // own block of textSize bytes: the display text, always terminated
    HEDITVALIDATEPROC pfnValidate; // may be null
};

#if !defined(_WIN64)
static_assert(offsetof(HEditRecord, backBrush) == 24 && offsetof(HEditRecord, rcText) == 40 &&
                  offsetof(HEditRecord, charHeight) == 56 && offsetof(HEditRecord, dataClass) == 64 &&
                  offsetof(HEditRecord, dataSize) == 68 && offsetof(HEditRecord, anchor) == 80 &&
                  offsetof(HEditRecord, firstMax) == 92 && offsetof(HEditRecord, passwordChar) == 96 &&
                  offsetof(HEditRecord, maskText) == 100 && offsetof(HEditRecord, text) == 116 &&
                  sizeof(HEditRecord) == 124,
              "HEditRecord layout");
#endif

// Buffer, caret, selection, scrolling and clipboard (heditbuf.cpp).
LONG HEditLength(const HEditRecord* r);
BOOL HEditScrolls(const HEditRecord* r);
void HEditSetSel(HEditRecord* r, int mode, LONG anchor, LONG caret);
LONG HEditCharToPixel(HEditRecord* r, LONG index);
LONG HEditPixelToChar(HEditRecord* r, LONG x);
LONG HEditTextWidth(HEditRecord* r, LPCSTR text, LONG start, LONG count);
LONG HEditFitChars(HEditRecord* r);
LONG HEditScrollBy(HEditRecord* r, LONG delta);
void HEditUpdateScroll(HEditRecord* r);
void HEditInvalidateFrom(HEditRecord* r, LONG start, LONG count);
void HEditSelRect(HEditRecord* r, LPRECT out, LONG from, LONG to, BOOL fullEnds);
void HEditPlaceCaret(HEditRecord* r, LONG index);
void HEditMakeCaret(HEditRecord* r);
LONG HEditCopy(HEditRecord* r, LPSTR out, LONG size);
LONG HEditNextWord(LPCSTR text, LONG index);
LONG HEditPrevWord(LPCSTR text, LONG index);
void HEditSelectWord(HEditRecord* r, LONG index);
BOOL HEditGrow(HEditRecord* r, LONG textSize);
LRESULT HEditLimitText(HEditRecord* r, LONG limit);
void HEditOnHScroll(HEditRecord* r, WPARAM wParam);

// Typed input, validation and commit (heditinput.cpp).
void HEditDisplay(HEditRecord* r, BOOL editing);
LRESULT HEditSetValue(HEditRecord* r, LPCVOID source);
int HEditCommit(HEditRecord* r, LPCSTR text);
void HEditOnChar(HEditRecord* r, char ch);
void HEditOnKeyDown(HEditRecord* r, UINT key);
void HEditOnKeyUp(HEditRecord* r, UINT key);
void HEditOnSysKeyDown(HEditRecord* r, UINT key);
void HEditDeleteOne(HEditRecord* r, BOOL keep);
void HEditDeleteSel(HEditRecord* r);
void HEditInsertText(HEditRecord* r, LPCSTR text);
void HEditPaste(HEditRecord* r);
// Sends a notification; FALSE if the receiver destroyed the window.
BOOL HEditTell(HEditRecord* r, UINT code);

// Painting (heditpaint.cpp).
// FALSE: nothing to paint, the update region is left to the default procedure.
BOOL HEditOnPaint(HEditRecord* r, HDC given);
void HEditErase(HEditRecord* r, HDC dc, const RECT* rect);
void HEditDrawText(HDC dc, const RECT* rc, LPCSTR text, LONG count, char passwordChar, int alignment);
// Paints value (null: the empty text) into rect of dc without touching the window: alignment 0 left, 1 right, 2 centre.
int HEditDrawValue(HEditRecord* r, HDC dc, const RECT* rect, LPCVOID value, int alignment);

#endif
