// Typed keystroke editing: the judgement of one key against the class of the
// value whose display text is being edited, in place.
#pragma once
#include "quill32.h"

// HDataTypeChar and HDataDeleteChar are exported (quill32.h) with the
// documented arguments. The library's own callers use these, which take the
// text buffer's capacity in bytes:
//
// Applies a typed key at `position` of `text`, a buffer of `capacity` bytes.
// Returns 0 if the key was accepted, non-zero if it was refused; a refused key
// leaves the text as it was, and so does a key that would not fit the buffer.
// `advance` receives how far the caret moves, `repaint` how many characters
// from `position` need repainting; both are 0 on refusal.
int HDataTypeCharN(char cls, char type, LPSTR text, LPCSTR mask, int position, char key,
                   int* advance, int* repaint, int capacity);

// Applies the Delete key at `position` of `text` (a buffer of `capacity`
// bytes). Returns 1 if the caret is to step over a character that stays, else
// 0; beeps by itself when there is nothing to delete.
int HDataDeleteCharN(char cls, char type, LPSTR text, LPCSTR mask, int position, int capacity);

// The room the exported forms assume: the edit control's text buffer, the
// length of the longer of text and mask plus 32 bytes.
int HKeyBufferRoom(LPCSTR text, LPCSTR mask);

// Opens `count` characters at `position` of a string and fills them with
// `fill`; a position past the end counts as the end. The buffer must have
// room for count more characters. Returns text.
LPSTR HStrInsertFill(LPSTR text, char fill, int count, int position);
