// Internal routines of the dispatchers: the placeholders of class m masks, for
// the keystroke code, and ParseData with a known capacity of the value buffer.
#pragma once
#include "quill32.h"

// True for "@", "#", "!", "&" and "*", the placeholders of a class m mask.
bool HMaskIsPlaceholder(char maskChar);
// True if c may stand at the placeholder. Classification is ASCII only, so
// that every runtime agrees: a byte above 127 fits no placeholder.
bool HMaskFits(char maskChar, char c);
// What a placeholder shows when the source has run out: "_" for "#", "-" for
// "!", a blank for the others.
char HMaskFill(char maskChar);

// ParseData, with `capacity` the bytes of the value buffer for the text
// classes m and s (negative: not known, as ParseData itself passes). The other
// classes write their type's size and ignore it.
int HParseDataN(HWND hWnd, LPVOID value, int capacity, char cls, char type, LPCSTR mask,
                LPCSTR text, HDATAVALIDATEPROC validator);
