// HTool's instance record: a bar of controls filled from a dialog template.
#pragma once
#include "quill32.h"

#ifdef _WIN32

// The record of an HTool window, kept at index 0 of its extra bytes.
struct HToolRec {
    HCtlBaseEx base;  // hWnd, hNotify, wId, hFont, wFlags, dwStyle
    LONG barSize;     // thickness of a docked bar: height at top or bottom, width at left or right
    LONG parentWidth; // the parent's client width at the last HToolUpdate; kept, not read
    LONG parentHeight; // the parent's client height at the last HToolUpdate; kept, not read
    HBRUSH hBrush;    // background of a floating bar, of COLOR_BTNFACE; owned
};

#if !defined(_WIN64)
static_assert(offsetof(HToolRec, barSize) == 24 && offsetof(HToolRec, parentHeight) == 32 &&
                  offsetof(HToolRec, hBrush) == 36 && sizeof(HToolRec) == 40,
              "HToolRec layout");
#endif

inline BOOL HToolIsFloating(const HToolRec* t) { return (t->base.dwStyle & WS_POPUP) != 0; }
inline BOOL HToolIsVertical(const HToolRec* t) { return (t->base.dwStyle & (HTS_LEFT | HTS_RIGHT)) != 0; }

#endif
