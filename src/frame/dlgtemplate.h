// Reading a dialog template (DLGTEMPLATE, 16-bit strings) within its resource's
// bytes. Window-free: the walker hands out positions, the caller makes windows.
#pragma once
#include "quill32.h"

// Capacity of the ANSI buffers of class, title, caption and face, terminator included.
constexpr int kDlgTextSize = 128;
// DS_SETFONT: the header carries a point size and a face name.
constexpr DWORD kDlgSetFont = 0x40;

// A zero-terminated 16-bit string inside the template: where it starts and its
// length in characters, terminator not counted.
struct HDlgString {
    const BYTE* at;
    size_t length;
};

struct HDlgHeader {
    DWORD style;       // DS_SETFONT decides whether a font follows
    BYTE count;        // number of items, held in 8 bits
    SHORT cx, cy;      // size in dialog units
    HDlgString caption;
    SHORT pointSize;   // with DS_SETFONT
    HDlgString face;   // with DS_SETFONT; else empty
    size_t itemsAt;    // offset behind the header, before the first item's alignment
};

struct HDlgItem {
    DWORD style;
    SHORT x, y, cx, cy;
    WORD id;
    LPCSTR knownClass;    // the class name of an ordinal of the table, else null
    HDlgString className; // otherwise the class as a string (an unknown ordinal: from its word on)
    HDlgString title;
    const BYTE* data;     // the creation data, behind its size word
    WORD dataSize;
};

// Reads the header of a template of size bytes. FALSE if it doesn't fit.
BOOL HDlgReadHeader(const BYTE* tmpl, size_t size, HDlgHeader* header);
// Reads the item at *offset, aligned to 32 bits first, and moves *offset behind
// it. FALSE, *offset unchanged, if the item doesn't fit in the size bytes.
BOOL HDlgReadItem(const BYTE* tmpl, size_t size, size_t* offset, HDlgItem* item);
// Copies at most capacity - 1 characters of a string as 16-bit units, terminated.
// Returns the count copied.
size_t HDlgCopyWide(const HDlgString& s, WORD* out, size_t capacity);
// Scales dialog units: value x base / divisor, truncating toward zero.
inline int HDlgScale(int value, int base, int divisor) { return divisor ? value * base / divisor : 0; }
