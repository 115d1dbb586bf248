// HButt, the button control: its record, the reading of its specification
// text (window-free), and the routines shared by its handler and its painter.
#pragma once
#include "quill32.h"

// Capacity of the work copy of a specification text and of each of its fields, terminator included.
constexpr int kButtSpecSize = 256;
// Image slots an image list starts with, and grows by.
constexpr int kButtImageChunk = 4;
// Placement values run from 0 (top left) to 8 (bottom right).
constexpr UINT kMaxPlacement = 8;
// Gap between image and text side by side; one above the other they touch.
constexpr int kButtGapX = 5;
constexpr int kButtGapY = 0;
// The library's picture of a button without a value.
constexpr char kButtNoValueImage[] = "HC5";
// The resource type of sounds.
constexpr WORD kButtSoundType = 400;

// What a specification text says, read without windows.
struct HButtSpec {
    BYTE positions[3];             // textPos, imagePos, relation as far as given
    BYTE positionCount;            // digits read, 1 to 3
    char dataType;                 // a check box's type letter: the given one or "w"
    BYTE fieldCount;               // fields present behind the first ";": 0 to 3
    int colors;                    // HTypedParseColors' result: bit 0 text colour, 2 more per transparent one
    char caption[kButtSpecSize];   // field 0, "^" made a line feed
    char images[kButtSpecSize];    // field 1, names separated by ":"
    char sound[kButtSpecSize];     // field 2, "%a" still in front
};

// Reads a specification: FALSE for a null text or one that doesn't start with
// a digit. checkBox reads the type letter behind the digits. The colour
// sections go to the two targets as they are found.
BOOL HButtSpecRead(LPCSTR text, BOOL checkBox, COLORREF* colorText, COLORREF* colorTransparent, HButtSpec* spec);
// Whether a text is a specification rather than a caption.
inline bool HButtIsSpec(LPCSTR text) { return text && text[0] >= '0' && text[0] <= '9'; }

#ifdef _WIN32
// The instance record.
struct HButtRec {
    HCtlBaseEx base;            // common head with the creation style
    LPSTR text;                 // caption, owned, may be null
    COLORREF colorText;         // text colour
    COLORREF colorTransparent;  // the colour left out of bitmaps
    HBRUSH backBrush;           // background of a frameless button, 0 to ask the notify target
    BYTE imagePos;              // where the image stands, 0 to 8
    BYTE textPos;               // where the text stands, 0 to 8
    BYTE relation;              // image against text when both stand in one place
    BYTE state;                 // index of the current image
    BYTE stateCount;            // how many states a click cycles through
    BYTE imageCount;            // images held in images
    char dataType;              // type letter of a check box's value, class b
    BYTE bPad;                  // keeps dataLink aligned
    LPVOID dataLink;            // the application's variable, not owned, may be null
    HImage* images;             // owned array
    HANDLE hSound;              // an HRSRC, or with HBS_ASYNCSOUND the loaded resource
    LPSTR soundFile;            // sound file name, owned
};
#if !defined(_WIN64)
static_assert(offsetof(HButtRec, text) == 24 && offsetof(HButtRec, colorText) == 28 &&
              offsetof(HButtRec, backBrush) == 36 && offsetof(HButtRec, imagePos) == 40 &&
              offsetof(HButtRec, dataType) == 46 && offsetof(HButtRec, dataLink) == 48 &&
              offsetof(HButtRec, images) == 52 && offsetof(HButtRec, hSound) == 56 &&
              offsetof(HButtRec, soundFile) == 60 && sizeof(HButtRec) == 64, "HButtRec layout");
#endif

inline UINT HButtType(const HButtRec* b) { return b->base.dwStyle & HBS_TYPEMASK; }
inline bool HButtIsRadio(const HButtRec* b) { return HButtType(b) == HBT_RADIO || HButtType(b) == HBT_PUSHRADIO; }
inline bool HButtHas(const HButtRec* b, DWORD style) { return (b->base.dwStyle & style) != 0; }
// 2 with HBS_UPDOWN, else 1: the states of one value.
inline UINT HButtStep(const HButtRec* b) { return HButtHas(b, HBS_UPDOWN) ? 2 : 1; }

// The two process-wide pictures of a button without a value: normal and pressed.
extern HImage g_buttNoValue[2];

// The record's life: made at WM_NCCREATE (null on failure), freed at WM_NCDESTROY.
HButtRec* HButtCreate(HWND hWnd, CREATESTRUCTA* cs);
void HButtDestroy(HWND hWnd, HButtRec* b);
// Slots the image array has room for, 0 without an array.
UINT HButtImageRoom(const HButtRec* b);
// Applies a specification text; a text that isn't one is ignored.
void HButtParseSpec(HButtRec* b, LPCSTR text);
void HButtSetPressed(HButtRec* b, BOOL pressed);
// Stores a value; with notify, a non-zero value tells the notify target. Always 1.
LRESULT HButtSetValue(HButtRec* b, UINT value, BOOL notify);
UINT HButtNextValue(const HButtRec* b);
// The end of a click by mouse or space key.
void HButtClick(HButtRec* b);
void HButtPlaySound(HButtRec* b);
void HButtFreeSound(HButtRec* b);
BOOL HButtSetSoundFile(HButtRec* b, LPCSTR name);
// A radio button's position in its group, from 1.
UINT HButtGroupPos(const HButtRec* b);
// Whether a window answers WM_GETDLGCODE with DLGC_RADIOBUTTON.
bool HButtAnswersRadio(HWND hWnd);
// The greater of imageCount and the type's base.
BYTE HButtStateCount(const HButtRec* b);
// Drops every image (with force) and the array.
void HButtFreeImages(HButtRec* b);
// Reads and writes the value of a check box by dataType: FALSE for a type that doesn't store.
bool HButtStoreState(char type, LPVOID target, UINT state);

// Painting and layout.
void HButtPaintClient(HButtRec* b, HDC hDC);
void HButtPaint(HButtRec* b, HDC hDC, const RECT* rect, WORD state);
void HButtLayout(HButtRec* b, HDC hDC, const HImage* image, const RECT* face, LPRECT imageRect, LPRECT textRect,
                 LPRECT focusRect);
// Paints the control as it would look with the value at value (null: no value); 1.
int HButtDrawValue(HButtRec* b, HDC hDC, const RECT* rect, LPCVOID value);
#endif
