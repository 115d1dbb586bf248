// HStat, the static and status control: its record, the reading of its
// specification text (window-free), and its layout and painting.
#pragma once
#include "quill32.h"

// Capacity of the work copy of a specification text, terminator included.
constexpr int kStatSpecSize = 256;
// The sample an empty text shows at design time.
constexpr char kStatSample[] = "Text";
// The library's picture shown when a named image is missing.
constexpr char kStatMissingImage[] = "HLP1";

// Cuts a specification "[text colour];[back colour];content" into its colours
// and its content: text (null taken as empty) is copied into buffer
// (kStatSpecSize bytes), the colour sections are cut out into the two targets,
// and the result points behind the first and the second ";" as far as they exist.
LPCSTR HStatSpecContent(LPCSTR text, COLORREF* colorText, COLORREF* colorBack, LPSTR buffer);
// The text a content shows: "^" becomes a line feed; nothing else is special.
// A copy on the global heap, null for no memory.
LPSTR HStatSpecText(LPCSTR content);

#ifdef _WIN32
// The instance record: HCtlBase up to hFont, then the whole style in one word.
struct HStatRec {
    HWND hWnd;           // the control
    HWND hNotify;        // notify target
    WORD wId;            // control id
    WORD wPad;           // keeps hFont aligned
    HFONT hFont;         // current font, 0 for the system font
    DWORD dwStyle;       // the creation style; its low half is wFlags (HSS_ bits and the kind)
    LPSTR text;          // the text shown, owned, may be null
    HImage image;        // the picture of kind 3, a share of the image cache
    COLORREF colorText;  // text colour, and the transparent colour of the image
    COLORREF colorBack;  // background colour, 0 for COLOR_WINDOW
};
#if !defined(_WIN64)
static_assert(offsetof(HStatRec, dwStyle) == 16 && offsetof(HStatRec, text) == 20 &&
              offsetof(HStatRec, image) == 24 && offsetof(HStatRec, colorText) == 36 &&
              offsetof(HStatRec, colorBack) == 40 && sizeof(HStatRec) == 44, "HStatRec layout");
#endif

inline UINT HStatKind(const HStatRec* r) { return r->dwStyle & HSS_KINDMASK; }

// The client rectangle and the rectangle of the content (text, label or image).
void HStatLayout(HStatRec* r, HDC hDC, LPRECT client, LPRECT content);
// Paints frame, background and content; the control paints in WM_ERASEBKGND.
void HStatPaint(HStatRec* r, HDC hDC);
#endif
