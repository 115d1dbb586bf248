// The library's one string allocator and the small window-free string helpers.
#pragma once
#include "quill32.h"

// Capacity of the StringParse result buffer, terminator included.
constexpr int kStringParseSize = 256;

// A copy of text on the global heap; null for a null text or no memory.
LPSTR HStrDup(LPCSTR text);
// A string as long as text made only of fill; null for a null text or no memory.
LPSTR HStrDupFill(LPCSTR text, char fill);
// Frees the string in *slot and stores a copy of text there (null for a null
// text or no memory). Returns the new content of the slot.
LPSTR HStrReplace(LPSTR* slot, LPCSTR text);
