// The typed control protocol: colour sections of creation texts (window-free),
// and the shared answer to the typed message block 0x464 to 0x470.
#pragma once
#include "quill32.h"

// Capacity of the work buffer that collects one "[...]" colour section, terminator included.
constexpr int kColorSectionSize = 128;

// Cuts the "[colour]" sections out of text in place: a section before the first
// ";" goes to *first, one after exactly one ";" to *second. Result: 1 if the first
// colour was set, plus 2 if the second was.
int HTypedParseColors(LPSTR text, COLORREF* first, COLORREF* second);

#ifdef _WIN32

// Brushes and colours, in this order first in the class part of HEdit's and HList's records.
struct HTypedHead {
    HBRUSH backBrush;     // 0: ask the notify target at each erase; never deleted
    HBRUSH focusBrush;    // background while focused, with the focus-brush style
    COLORREF colorNormal; // text colour of an ordinary value
    COLORREF colorAlt;    // text colour of a value FormatData marks
};

// Which class answers: the block's meaning differs by class.
enum HTypedKind : BYTE { HTYPED_EDIT, HTYPED_LIST, HTYPED_BUTT, HTYPED_GRID };

// Where a class keeps the block's fields; pointers into its record, null where it has none.
struct HTypedFields {
    HBRUSH* backBrush;
    HBRUSH* focusBrush;
    COLORREF* colorNormal;
    COLORREF* colorAlt;   // HButt: null, its one colour word is colorNormal
    char* dataClass;
    char* dataType;
    LPSTR* maskText;
    LPVOID* dataLink;
};

// The class's own parts of the block; a null entry leaves the message unanswered.
struct HTypedClass {
    HTypedKind kind;
    // HM_SETMASK after the common refusals; null: store a copy, invalidate with erase if repaint.
    LRESULT (*setMask)(LPVOID record, BOOL repaint, LPCSTR mask);
    LRESULT (*dataSize)(LPVOID record, SHORT index);           // HM_GETDATASIZE
    LRESULT (*setDataLink)(LPVOID record, WPARAM direction, LPVOID link); // HM_SETDATALINK
};

// Answers a message of the typed block for a class; FALSE if the class doesn't take it.
BOOL HTypedMsg(const HTypedClass* cls, const HTypedFields* f, HWND hWnd, LPVOID record, UINT msg,
               WPARAM wParam, LPARAM lParam, LRESULT* result);
// The stock brush a focus-brush style starts with: light grey on a white window, else white.
HBRUSH HTypedDefaultFocusBrush();

#endif
