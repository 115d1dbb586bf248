// Internal helpers of the data type table, for the number and date code.
#pragma once
#include "quill32.h"

// The storage family of a class letter: HCLASS_NUMBER for b, c, n and z,
// HCLASS_DATETIME for a and k, the letter itself for d, t, h, and
// HCLASS_STRING for m and s; 0 for a letter that is no class.
char HDataFamily(char cls);

// True for the text classes m and s, whose values are terminated strings.
inline bool HDataIsText(char cls) { return cls == HCLASS_MASKED || cls == HCLASS_STRING; }
