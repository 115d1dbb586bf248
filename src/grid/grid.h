// Internal routines of the grid data model and of the .GRS format: the list
// callbacks, the record re-laying helpers, and the header and field readers.
#pragma once
#include "quill32.h"

// Bytes in front of a record's cell area: the link and recordStatus.
constexpr size_t kHGRecordHead = offsetof(HGRecord, cells);
// Offsets, sizes and field indices are signed 16 bits: a cell area and a field
// count stay below this.
constexpr LONG kHGLimit16 = 0x8000;
// The nominal font of HGO_UNITS metrics.
constexpr int kHGNominalX = 4;
constexpr int kHGNominalY = 8;
// Bytes of HGridLoad's name buffer, terminator included.
constexpr int kHGFileNameSize = 120;

// A node of the fields list: the link, then the adopted field.
struct HGFieldNode {
    HLNode link;
    HGField* field;
};

// ---- List callbacks ----
LPVOID CALLBACK HGFieldNodeAlloc(HLList* list, LPVOID data);
LONG CALLBACK HGFieldNodeCompare(HLList* list, LPCVOID key, LPVOID node);
LONG CALLBACK HGFieldNodeCompareAll(HLList* list, LPCVOID key, LPVOID node);
LONG CALLBACK HGFieldNodeFree(HLList* list, LPVOID node);
LPVOID CALLBACK HGFieldNodeDup(HLList* list, LPVOID node);
LPVOID CALLBACK HGRecordAlloc(HLList* list, LPVOID data);
LONG CALLBACK HGRecordCompare(HLList* list, LPCVOID key, LPVOID node);
LPVOID CALLBACK HGRecordData(HLList* list, LPVOID node);
LONG CALLBACK HGCompareInts(LPCVOID key, LPCVOID payload);
LPVOID CALLBACK HGStashAlloc(HLList* list, LPVOID data);
LONG CALLBACK HGStashCompare(HLList* list, LPCVOID key, LPVOID node);
LONG CALLBACK HGStashFree(HLList* list, LPVOID node);
LPVOID CALLBACK HGStashData(HLList* list, LPVOID node);

// Compares title, then format, by byte order; then 0 if every other stored
// value but offset is equal, else 1.
LONG HGFieldCompare(const HGField* a, const HGField* b);

// ---- Records ----
// Gives every record the new itemSize, copying the smaller size and the head.
// 0 if an allocation failed half-way: the ring stays whole, itemSize stays old.
BOOL HGResizeRecords(HGridData* grid, LONG newSize);
// In every record, moves length bytes of the cell area from `from` to `to`; if
// to > from, clears the bytes opened at `from`.
void HGShiftCells(HGridData* grid, LONG to, LONG from, LONG length);
// In every record, carries the run of length bytes at `from` across its
// neighbours to `to` (taken as the position before the run closes up).
void HGMoveCells(HGridData* grid, LONG to, LONG from, LONG length);
// The field stored at storage position pos: through the map if there is one.
HGField* HGFieldAtStoragePos(HGridData* grid, int pos);

// ---- Field map entries: the low 16 bits of a default node's payload ----
int HGMapEntry(const HLList* map, const HLNode* node);
void HGMapSetEntry(const HLList* map, HLNode* node, int value);

// ---- What removing a field asks of the grid window ----
// The window code installs these (HGEditorClose and HGClampSelection, by
// assigning g_gridWindowHooks once); while they are null, HGRemoveFld changes
// the data alone. This keeps the data model free of windows.
struct HGWindowHooks {
    BOOL (*editorClose)(HGridWindow* gw);
    BOOL (*clampSelection)(HGridWindow* gw, LONG anchorRecord, LONG curRecord);
};
extern HGWindowHooks g_gridWindowHooks;

// ---- Process-wide state ----
extern HLList* g_gridStash;  // the stash list, null until created
extern HGField* g_fieldStash; // the field a design tool passes between dialogs

// ---- .GRS streams ----
// Header items 0 .. lastItem into grid, whose version chooses the name form.
// 0, or the callback's failure value.
LONG HGLoadHeader(HGIoProc proc, LPVOID context, int lastItem, HGridData* grid);
LONG HGSaveHeader(HGIoProc proc, LPVOID context, int lastItem, HGridData* grid, UINT version);
// Field items 0 .. lastItem (always 11) into a cleared image; its title and
// format are the caller's to free, also on failure.
LONG HGLoadField(HGIoProc proc, LPVOID context, int lastItem, HGField* image);
LONG HGSaveField(HGIoProc proc, LPVOID context, int lastItem, const HGField* field);

// Reads from a file handle (the context, cast): 0 if all bytes came, else -1.
LONG CALLBACK HGFileRead(LPVOID context, LPVOID buffer, LONG count);

// A block of memory being read: HGMemRead's context. The first member is the
// byte pointer that each read moves on; a read past `end` fails and copies nothing.
struct HGMemStream {
    const BYTE* pos;
    const BYTE* end;
};
LONG CALLBACK HGMemRead(LPVOID context, LPVOID buffer, LONG count);
