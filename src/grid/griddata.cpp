// The grid data model: HGridData and HGField, the byte layout of records, the
// re-laying of every record when fields come, go or move, and the grid stash.
#include "grid/grid.h"
#include "container/hllist.h"
#include "frame/strings.h"
#include "seam.h"
#include <string.h>

HGWindowHooks g_gridWindowHooks;
HLList* g_gridStash;
HGField* g_fieldStash;

namespace {

HGField* FieldOfNode(LPVOID node) { return node ? ((HGFieldNode*)node)->field : nullptr; }

LONG FieldCount(const HGridData* grid) { return grid->fields ? grid->fields->count : 0; }

BYTE* CellsOf(HLNode* node) { return (BYTE*)node + kHGRecordHead; }

// Cell and status bytes that a record's block really holds. Every loop over
// records bounds itself by this, not only by itemSize.
LONG RecordCapacity(const HLNode* node)
{
    size_t size = SeamSize(node);
    if (size <= kHGRecordHead)
        return 0;
    size -= kHGRecordHead;
    return size > 0x7FFFFFFF ? 0x7FFFFFFF : (LONG)size;
}

LONG MinLong(LONG a, LONG b) { return a < b ? a : b; }

// Compares two texts with the letters A to Z folded to lower case; a null text
// counts as empty. At most `limit` characters are looked at.
int CompareFolded(LPCSTR a, LPCSTR b, size_t limit)
{
    a = a ? a : "";
    b = b ? b : "";
    for (size_t i = 0; i < limit; ++i) {
        unsigned ca = (unsigned char)a[i], cb = (unsigned char)b[i];
        if (ca >= 'A' && ca <= 'Z')
            ca += 'a' - 'A';
        if (cb >= 'A' && cb <= 'Z')
            cb += 'a' - 'A';
        if (ca != cb)
            return ca < cb ? -1 : 1;
        if (!ca)
            break;
    }
    return 0;
}

int CompareBytes(LPCSTR a, LPCSTR b) { return strcmp(a ? a : "", b ? b : ""); }

// The map entry at a storage position; -1 if there is none.
int MapEntryAt(HLList* map, LONG pos)
{
    if (!map || pos < 0 || pos >= map->count)
        return -1;
    return HGMapEntry(map, (HLNode*)HLListGetItem(map, pos));
}

// The first storage position whose entry equals value; -1 if none does.
LONG MapFind(const HLList* map, int value)
{
    if (!map)
        return -1;
    HLNode* node = map->first;
    for (LONG i = 0; node && i < map->count; ++i, node = node->next)
        if (HGMapEntry(map, node) == value)
            return i;
    return -1;
}

// Adds delta to every entry whose value passes the test, skipping position skip.
template <typename Test> void MapAdjust(HLList* map, LONG skip, Test test, int delta)
{
    if (!map)
        return;
    HLNode* node = map->first;
    for (LONG i = 0; node && i < map->count; ++i, node = node->next) {
        int value = HGMapEntry(map, node);
        if (i != skip && test(value))
            HGMapSetEntry(map, node, value + delta);
    }
}

// A value of 4 bytes serves both entry sizes: the default allocator copies
// itemSize bytes, and the low word comes first.
void MapInsert(HLList* map, LONG pos, int value)
{
    LONG entry = value;
    if (map)
        HLListInsert(map, pos, &entry);
}

// Copies the entries of one map to the end of another, whatever their sizes.
void MapCopy(HLList* dest, HLList* source)
{
    HLNode* node = source->first;
    for (LONG i = 0; node && i < source->count; ++i, node = node->next) {
        LONG entry = HGMapEntry(source, node);
        HLListAppend(dest, &entry);
    }
}

// A node of a map of 2-byte entries: a default node but for 4 payload bytes,
// the entry in the low two, so that HGCompareInts, which reads 32 bits of the
// payload, stays inside it.
LPVOID CALLBACK MapNodeAlloc(HLList* list, LPVOID data)
{
    if (!list || list->itemSize < 0)
        return nullptr;
    size_t size = list->itemSize < 4 ? 4 : (size_t)list->itemSize;
    HLNode* node = (HLNode*)SeamAlloc(sizeof(HLNode) + size);
    if (node && data)
        memcpy(node + 1, data, (size_t)list->itemSize);
    return node;
}

HLList* MapCreate(LONG itemSize)
{
    return HLListCreate(itemSize, itemSize < 4 ? MapNodeAlloc : nullptr, nullptr, HGCompareInts, nullptr,
                        nullptr, 0);
}

// Takes a field back out of the list without freeing it: its caller keeps it.
LONG CALLBACK FreeNodeOnly(HLList*, LPVOID node)
{
    SeamFree(node);
    return node ? 1 : 0;
}

void DetachField(HGridData* grid, LONG index)
{
    HLLISTFREEPROC keep = grid->fields->pfnFree;
    grid->fields->pfnFree = FreeNodeOnly;
    HLListRemove(grid->fields, index);
    grid->fields->pfnFree = keep;
}

// A field may join a grid while the cell area and the field count stay within
// their signed 16 bits.
bool FieldFits(const HGridData* grid, const HGField* field)
{
    if (field->size < 0 || FieldCount(grid) >= kHGLimit16 - 1)
        return false;
    return (LONG)grid->records->userWord + field->size < kHGLimit16;
}

// The base units of a font, -1 standing for the nominal 4 by 8.
void FontUnits(HFONT font, int* x, int* y)
{
    if (font == (HFONT)(INT_PTR)-1) {
        *x = kHGNominalX;
        *y = kHGNominalY;
        return;
    }
    DWORD units = SeamBaseUnits(font);
    *x = LOWORD(units);
    *y = HIWORD(units);
}

SHORT Scaled(SHORT value, int to, int from) { return (SHORT)(int)((double)value * to / from + 0.5); }

// Fills an array with the fields in list order; null if there is no memory.
HGField** FieldArray(HGridData* grid, LONG count)
{
    HGField** array = (HGField**)SeamAlloc((size_t)count * sizeof(HGField*));
    if (!array)
        return nullptr;
    HLNode* node = grid->fields->first;
    for (LONG i = 0; node && i < count; ++i, node = node->next)
        array[i] = FieldOfNode(node);
    return array;
}

// The map gives the storage order only while it is a permutation of the field
// indices; a map that went out of step is ignored for the layout.
bool MapIsPermutation(HLList* map, LONG count)
{
    if (!map || map->count != count)
        return false;
    SeamBlock seen((size_t)count + 1);
    if (!seen.p)
        return false;
    BYTE* mark = (BYTE*)seen.p;
    HLNode* node = map->first;
    for (LONG i = 0; node && i < count; ++i, node = node->next) {
        int value = HGMapEntry(map, node);
        if (value < 0 || value >= count || mark[value])
            return false;
        mark[value] = 1;
    }
    return true;
}

} // namespace

// ---- Map entries ----

int HGMapEntry(const HLList* map, const HLNode* node)
{
    if (!map || !node || map->itemSize < 2)
        return -1;
    WORD value;
    memcpy(&value, (const BYTE*)node + sizeof(HLNode), sizeof value);
    return (SHORT)value;
}

void HGMapSetEntry(const HLList* map, HLNode* node, int value)
{
    if (!map || !node || map->itemSize < 2)
        return;
    BYTE* payload = (BYTE*)node + sizeof(HLNode);
    if (map->itemSize >= 4) {
        LONG whole = value;
        memcpy(payload, &whole, sizeof whole);
    } else {
        WORD low = (WORD)value;
        memcpy(payload, &low, sizeof low);
    }
}

// ---- List callbacks ----

LPVOID CALLBACK HGFieldNodeAlloc(HLList*, LPVOID data)
{
    if (!data)
        return nullptr;
    HGFieldNode* node = (HGFieldNode*)SeamAlloc(sizeof(HGFieldNode));
    if (node)
        node->field = (HGField*)data;
    return node;
}

// A field list is searched by title, without regard to the case of A to Z.
LONG CALLBACK HGFieldNodeCompare(HLList*, LPCVOID key, LPVOID node)
{
    HGField* field = FieldOfNode(node);
    return CompareFolded((LPCSTR)key, field ? field->title : nullptr, (size_t)-1);
}

// For HLListCompare: the key is a node of the other list.
LONG CALLBACK HGFieldNodeCompareAll(HLList*, LPCVOID key, LPVOID node)
{
    return HGFieldCompare(FieldOfNode((LPVOID)key), FieldOfNode(node));
}

LONG CALLBACK HGFieldNodeFree(HLList*, LPVOID node)
{
    if (!node)
        return 0;
    HGFieldDestroy(FieldOfNode(node));
    SeamFree(node);
    return 1;
}

// Deep copies for HLListCopy: a new field, not a pointer to the old one.
LPVOID CALLBACK HGFieldNodeDup(HLList*, LPVOID node) { return HGFldDup(FieldOfNode(node)); }

// Status words and recordStatus are never copied, only the cell area.
LPVOID CALLBACK HGRecordAlloc(HLList* list, LPVOID data)
{
    LONG size = list->itemSize > 0 ? list->itemSize : 0;
    HLNode* node = (HLNode*)SeamAlloc((size_t)size + kHGRecordHead);
    if (node && data)
        memcpy(CellsOf(node), data, (size_t)MinLong((LONG)list->userWord, size));
    return node;
}

LONG CALLBACK HGRecordCompare(HLList* list, LPCVOID key, LPVOID node)
{
    if (!list->pfnDataCompare || !node)
        return 0;
    return list->pfnDataCompare(key, CellsOf((HLNode*)node));
}

LPVOID CALLBACK HGRecordData(HLList*, LPVOID node) { return node ? CellsOf((HLNode*)node) : nullptr; }

LONG CALLBACK HGCompareInts(LPCVOID key, LPCVOID payload)
{
    LONG a, b;
    memcpy(&a, key, sizeof a);
    memcpy(&b, payload, sizeof b);
    return a < b ? -1 : a > b ? 1 : 0;
}

LONG HGFieldCompare(const HGField* a, const HGField* b)
{
    if (!a || !b)
        return a == b ? 0 : 1;
    int order = CompareBytes(a->title, b->title);
    if (order)
        return order;
    order = CompareBytes(a->format, b->format);
    if (order)
        return order;
    bool same = a->flags == b->flags && a->width == b->width && a->height == b->height &&
                a->size == b->size && a->classLetter == b->classLetter &&
                a->typeLetter == b->typeLetter && a->classLetter2 == b->classLetter2 &&
                a->typeLetter2 == b->typeLetter2 && a->editorKind == b->editorKind &&
                a->editorStyle == b->editorStyle;
    return same ? 0 : 1;
}

// ---- Records ----

// Each record is reallocated in place where the heap allows: the kept bytes and
// the zero growth are those of a new block with the smaller size copied.
BOOL HGResizeRecords(HGridData* grid, LONG newSize)
{
    HLList* records = grid->records;
    if (newSize < 0)
        newSize = 0;
    if (records->first && records->count > 0) {
        // prev starts at last, so that a moved first node closes the ring at once.
        HLNode* prev = records->last;
        HLNode* old = records->first;
        for (LONG i = 0; i < records->count; ++i) {
            HLNode* next = old->next;
            HLNode* node = (HLNode*)SeamReAlloc(old, (size_t)newSize + kHGRecordHead);
            if (!node) {
                // The ring is whole; the cursor may have stood on a node that moved.
                records->cursor = records->first;
                records->cursorIndex = 0;
                return FALSE;
            }
            if (node != old) {
                if (next == old)
                    node->next = node; // the only record links to itself
                else
                    prev->next = node;
                if (old == records->first)
                    records->first = node;
                if (old == records->last)
                    records->last = node;
            }
            prev = node;
            old = next;
        }
        records->cursor = records->last; // cursorIndex is left alone
    }
    records->itemSize = newSize;
    LONG cells = newSize - 2 * FieldCount(grid);
    records->userWord = (DWORD)(cells > 0 ? cells : 0);
    return TRUE;
}

void HGShiftCells(HGridData* grid, LONG to, LONG from, LONG length)
{
    if (!grid || !grid->records || length <= 0 || to < 0 || from < 0)
        return;
    HLList* records = grid->records;
    LONG high = to > from ? to : from;
    HLNode* node = records->first;
    for (LONG i = 0; node && i < records->count; ++i, node = node->next) {
        LONG capacity = RecordCapacity(node);
        if (high >= capacity)
            continue;
        BYTE* cells = CellsOf(node);
        memmove(cells + to, cells + from, (size_t)MinLong(length, capacity - high));
        if (to > from)
            memset(cells + from, 0, (size_t)MinLong(to - from, capacity - from));
    }
}

void HGMoveCells(HGridData* grid, LONG to, LONG from, LONG length)
{
    if (!grid || !grid->records || length <= 0)
        return;
    if (from < to)
        to -= length;
    if (to < 0 || from < 0)
        return;
    SeamBlock run((size_t)length);
    if (!run.p)
        return;
    HLList* records = grid->records;
    HLNode* node = records->first;
    for (LONG i = 0; node && i < records->count; ++i, node = node->next) {
        LONG span = MinLong(records->itemSize, RecordCapacity(node));
        if (from + length > span || to + length > span)
            continue;
        BYTE* cells = CellsOf(node);
        memcpy(run.p, cells + from, (size_t)length);
        memmove(cells + from, cells + from + length, (size_t)(span - length - from));
        memmove(cells + to + length, cells + to, (size_t)(span - length - to));
        memcpy(cells + to, run.p, (size_t)length);
    }
}

HGField* HGFieldAtStoragePos(HGridData* grid, int pos)
{
    int index = MapEntryAt(grid->fieldMap, pos);
    HGField* field = index >= 0 ? HGFieldAt(grid, index) : nullptr;
    return field ? field : HGFieldAt(grid, pos);
}

// ---- Grids ----

extern "C" HGridData* QUILLAPI HGridCreate(LPCSTR name, DWORD style, DWORD options, int frozenCols,
                                           int rowHeight, int rowHeaderWidth, int colHeaderHeight,
                                           int minRows)
{
    HGridData* grid = (HGridData*)SeamAlloc(sizeof(HGridData));
    if (!grid)
        return nullptr;
    grid->fields = HLListCreate(4, HGFieldNodeAlloc, HGFieldNodeCompare, nullptr, HGFieldNodeFree,
                                HGFieldNodeDup, 0);
    grid->records = HLListCreate(0, HGRecordAlloc, HGRecordCompare, nullptr, nullptr, HGRecordData, 0);
    grid->style = style;
    grid->options = options;
    if (style & HGS_FIELDMAP)
        grid->fieldMap = MapCreate(2);
    if (!grid->fields || !grid->records || ((style & HGS_FIELDMAP) && !grid->fieldMap) ||
        (name && !(grid->name = HStrDup(name)))) {
        HGridDestroy(grid);
        return nullptr;
    }
    grid->frozenCols = (SHORT)(frozenCols >= 1 ? frozenCols : 0);

    DWORD units = SeamBaseUnits(nullptr);
    int unitX = LOWORD(units) ? LOWORD(units) : kHGNominalX;
    int unitY = HIWORD(units) ? HIWORD(units) : kHGNominalY;
    bool nominal = (options & 3) == HGO_UNITS;
    grid->colHeaderHeight = (SHORT)(colHeaderHeight >= 0 ? colHeaderHeight : nominal ? 160 / unitY : 20);
    grid->rowHeaderWidth = (SHORT)(rowHeaderWidth >= 0 ? rowHeaderWidth : nominal ? 140 / unitX : 35);
    grid->rowHeight = (SHORT)(rowHeight >= 0 ? rowHeight : nominal ? 160 / unitY : 20);
    grid->minRows = (SHORT)minRows;
    grid->version = HGV_JH;
    return grid;
}

extern "C" BOOL QUILLAPI HGridEmpty(HGridData* grid)
{
    if (!grid)
        return FALSE;
    HLListEmpty(grid->records);
    return TRUE;
}

extern "C" BOOL QUILLAPI HGridDestroy(HGridData* grid)
{
    if (!grid)
        return FALSE;
    HLListDestroy(grid->fields);
    HLListDestroy(grid->records);
    HLListDestroy(grid->fieldMap);
    SeamFree(grid->name);
    SeamFree(grid);
    return TRUE;
}

// Appends the source's fields, records and map to the destination's, and takes
// its name and head values. Existing records are first given the source's size,
// so that every record keeps the bytes that the record sizes promise.
extern "C" BOOL QUILLAPI HGridCopy(HGridData* dest, HGridData* source)
{
    if (!dest || !source)
        return FALSE;
    HLList* to = dest->records;
    HLList* from = source->records;
    if (to->count && to->itemSize != from->itemSize && !HGResizeRecords(dest, from->itemSize))
        return FALSE;
    to->itemSize = from->itemSize;
    to->userWord = MinLong((LONG)from->userWord, from->itemSize);
    HLListCopy(dest->fields, source->fields);
    HLListCopy(to, from);
    if (source->fieldMap && dest->fieldMap)
        MapCopy(dest->fieldMap, source->fieldMap);
    HStrReplace(&dest->name, source->name);
    dest->version = source->version;
    dest->style = source->style;
    dest->options = source->options;
    dest->frozenCols = source->frozenCols;
    dest->rowHeight = source->rowHeight;
    dest->rowHeaderWidth = source->rowHeaderWidth;
    dest->colHeaderHeight = source->colHeaderHeight;
    dest->minRows = source->minRows;
    return TRUE;
}

extern "C" HGridData* QUILLAPI HGridDup(HGridData* grid)
{
    if (!grid)
        return nullptr;
    HGridData* copy = HGridCreate(nullptr, grid->style, grid->options, 0, 0, 0, 0, 0);
    if (copy)
        HGridCopy(copy, grid);
    return copy;
}

// Records, options, offsets and the map are not compared.
extern "C" BOOL QUILLAPI HGridChanged(HGridData* a, HGridData* b)
{
    if (!a || !b)
        return a != b;
    if (a->version != b->version || a->style != b->style || a->frozenCols != b->frozenCols ||
        a->rowHeight != b->rowHeight || a->rowHeaderWidth != b->rowHeaderWidth ||
        a->colHeaderHeight != b->colHeaderHeight || a->minRows != b->minRows)
        return TRUE;
    if (CompareBytes(a->name, b->name))
        return TRUE;
    a->fields->pfnCompare = HGFieldNodeCompareAll;
    LONG order = HLListCompare(a->fields, b->fields);
    a->fields->pfnCompare = HGFieldNodeCompare;
    return order != 0;
}

extern "C" BOOL QUILLAPI HGridScale(HGridData* grid, HFONT from, HFONT to)
{
    if (!grid)
        return FALSE;
    int fromX, fromY, toX, toY;
    FontUnits(from, &fromX, &fromY);
    if (!fromX || !fromY)
        return FALSE;
    FontUnits(to, &toX, &toY);
    grid->rowHeaderWidth = Scaled(grid->rowHeaderWidth, toX, fromX);
    grid->colHeaderHeight = Scaled(grid->colHeaderHeight, toY, fromY);
    grid->rowHeight = Scaled(grid->rowHeight, toY, fromY);
    HLNode* node = grid->fields->first;
    for (LONG i = 0; node && i < grid->fields->count; ++i, node = node->next) {
        HGField* field = FieldOfNode(node);
        field->width = Scaled(field->width, toX, fromX);
        field->height = Scaled(field->height, toY, fromY);
    }
    return TRUE;
}

// Made on request, entries of 4 bytes, without touching style: such a map is
// not kept in step when fields change.
extern "C" BOOL QUILLAPI HGCreateFldMap(HGridData* grid)
{
    if (!grid || grid->fieldMap)
        return FALSE;
    grid->fieldMap = MapCreate(4);
    if (!grid->fieldMap)
        return FALSE;
    for (LONG i = 0; i < FieldCount(grid); ++i)
        HLListAdd(grid->fieldMap, &i);
    return TRUE;
}

// ---- Fields ----

extern "C" HGField* QUILLAPI HGFieldCreate(LPCSTR title, UINT flags, int width, int height,
                                           char classLetter, char typeLetter, char classLetter2,
                                           char typeLetter2, int size, char editorKind,
                                           DWORD editorStyle, LPCSTR format)
{
    HGField* field = (HGField*)SeamAlloc(sizeof(HGField));
    if (!field)
        return nullptr;
    field->title = HStrDup(title);
    field->format = HStrDup(format ? format : "");
    if ((title && !field->title) || !field->format) {
        HGFieldDestroy(field);
        return nullptr;
    }
    if (editorKind != 'd' && editorKind != 'l')
        flags &= ~HGF_CODED;
    bool coded = (flags & HGF_CODED) != 0;
    if (!((!coded && classLetter == HCLASS_STRING) || (coded && classLetter2 == HCLASS_STRING)))
        size = coded ? GetDataSize(classLetter2, typeLetter2) : GetDataSize(classLetter, typeLetter);
    if (size < 0) {
        size_t length = strlen(field->format) + 1;
        size = length < (size_t)kHGLimit16 ? (int)length : kHGLimit16 - 1;
    }
    field->flags = (WORD)flags;
    field->width = (SHORT)(width < 2 ? 2 : width);
    field->height = (SHORT)height;
    field->size = (SHORT)(size < kHGLimit16 ? size : kHGLimit16 - 1);
    field->classLetter = classLetter;
    field->typeLetter = typeLetter;
    field->classLetter2 = classLetter2;
    field->typeLetter2 = typeLetter2;
    field->editorKind = editorKind;
    field->editorStyle = editorStyle;
    return field;
}

extern "C" BOOL QUILLAPI HGFieldDestroy(HGField* field)
{
    if (!field)
        return FALSE;
    if (field->editor && SeamIsWindow(field->editor->hWnd))
        SeamDestroyWindow(field->editor->hWnd);
    SeamFree(field->title);
    SeamFree(field->format);
    SeamFree(field);
    return TRUE;
}

extern "C" HGField* QUILLAPI HGFldDup(const HGField* field)
{
    if (!field)
        return nullptr;
    HGField* copy = (HGField*)SeamAlloc(sizeof(HGField));
    if (!copy)
        return nullptr;
    *copy = *field;
    copy->editor = nullptr;
    copy->title = HStrDup(field->title);
    copy->format = HStrDup(field->format ? field->format : "");
    if ((field->title && !copy->title) || !copy->format) {
        HGFieldDestroy(copy);
        return nullptr;
    }
    return copy;
}

extern "C" HGField* QUILLAPI HGFieldAt(HGridData* grid, int index)
{
    if (!grid || index < 0 || index >= FieldCount(grid))
        return nullptr;
    return FieldOfNode(HLListGetItem(grid->fields, index));
}

extern "C" int QUILLAPI HGMapPosOf(HGridData* grid, int index)
{
    if (!grid)
        return -1;
    if (grid->fieldMap)
        return MapFind(grid->fieldMap, index);
    return index >= 0 && index < FieldCount(grid) ? index : -1;
}

extern "C" void QUILLAPI HGFixOffsets(HGridData* grid)
{
    if (!grid)
        return;
    LONG count = FieldCount(grid);
    LONG total = 0;
    HGField** array = MapIsPermutation(grid->fieldMap, count) ? FieldArray(grid, count) : nullptr;
    if (array) {
        HLNode* node = grid->fieldMap->first;
        for (LONG i = 0; i < count; ++i, node = node->next) {
            HGField* field = array[HGMapEntry(grid->fieldMap, node)];
            field->offset = (SHORT)total;
            total += field->size;
        }
        SeamFree(array);
    } else {
        HLNode* node = grid->fields->first;
        for (LONG i = 0; node && i < count; ++i, node = node->next) {
            HGField* field = FieldOfNode(node);
            field->offset = (SHORT)total;
            total += field->size;
        }
    }
    grid->records->userWord = (DWORD)total;
    grid->records->itemSize = total + 2 * count;
}

// Meant for grids without records: existing records are grown but nothing in
// them moves, so their old status words end up inside the new cell.
extern "C" int QUILLAPI HGAppendFld(HGridData* grid, HGField* field)
{
    if (!grid || !field || !FieldFits(grid, field))
        return -1;
    LONG before = FieldCount(grid);
    LONG index = HLListAdd(grid->fields, field);
    if (FieldCount(grid) == before)
        return -1;
    field->offset = (SHORT)grid->records->userWord;
    if (!HGResizeRecords(grid, grid->records->itemSize + field->size + 2)) {
        DetachField(grid, index);
        return -1;
    }
    if (grid->style & HGS_FIELDMAP)
        MapInsert(grid->fieldMap, -1, before);
    return index;
}

// Inserts a field and re-lays every record: its cell opens at its storage
// place and its status word at its index, both zero.
extern "C" int QUILLAPI HGInsertFld(HGridData* grid, HGField* field, int index)
{
    if (!grid || !field || !FieldFits(grid, field))
        return -1;
    LONG before = FieldCount(grid);
    LONG at = HLListInsert(grid->fields, index, field);
    if (at < 0 || FieldCount(grid) == before)
        return -1;
    HLList* records = grid->records;
    if (!HGResizeRecords(grid, records->itemSize + field->size + 2)) {
        DetachField(grid, at);
        return -1;
    }
    if (grid->style & HGS_FIELDMAP) {
        MapAdjust(grid->fieldMap, -1, [at](int v) { return v >= at; }, 1);
        MapInsert(grid->fieldMap, at, at);
    }
    HGFixOffsets(grid);
    LONG start = at == 0 ? 0 : HGFieldAtStoragePos(grid, at)->offset;
    HGShiftCells(grid, start + field->size, start, records->itemSize - start - field->size);
    if (at != FieldCount(grid) - 1) {
        LONG p = (LONG)records->userWord + 2 * at;
        HGShiftCells(grid, p + 2, p, records->itemSize - p - 2);
    }
    return at;
}

// Without the map the cells and the status word travel with the field; with it
// no byte moves, and status words stay with their column index.
extern "C" int QUILLAPI HGMoveFld(HGridData* grid, int from, int to)
{
    if (!grid)
        return -1;
    LONG count = FieldCount(grid);
    if (from < 0 || to < 0 || from >= count || to >= count || from == to)
        return -1;
    if (!(grid->style & HGS_FIELDMAP)) {
        HGField* moving = HGFieldAt(grid, from);
        HGField* target = HGFieldAt(grid, to);
        LONG dest = target->offset + (from < to ? target->size : 0);
        if (dest < 0)
            return 0;
        HGMoveCells(grid, dest, moving->offset, moving->size);
        LONG status = (LONG)grid->records->userWord;
        HGMoveCells(grid, status + 2 * to + (from < to ? 2 : 0), status + 2 * from, 2);
    } else if (grid->fieldMap) {
        LONG p = MapFind(grid->fieldMap, from);
        if (p >= 0)
            HGMapSetEntry(grid->fieldMap, (HLNode*)HLListGetItem(grid->fieldMap, p), to);
        // Each other entry: down by one above from, then up by one at or above to.
        HLNode* node = grid->fieldMap->first;
        for (LONG i = 0; node && i < grid->fieldMap->count; ++i, node = node->next) {
            if (i == p)
                continue;
            int value = HGMapEntry(grid->fieldMap, node);
            if (value > from)
                --value;
            if (value >= to)
                ++value;
            HGMapSetEntry(grid->fieldMap, node, value);
        }
    }
    LONG result = HLListMove(grid->fields, from, to);
    HGFixOffsets(grid);
    return result;
}

extern "C" BOOL QUILLAPI HGRemoveFld(HGridWindow* gw, int index)
{
    if (!gw || !gw->grid)
        return FALSE;
    HGridData* grid = gw->grid;
    HGField* field = HGFieldAt(grid, index);
    if (!field)
        return FALSE;
    if (index == gw->curCol && g_gridWindowHooks.editorClose)
        g_gridWindowHooks.editorClose(gw);

    HLList* map = grid->fieldMap;
    if ((grid->style & HGS_FIELDMAP) && map) {
        // Not found gives -1, which reads the last entry and removes nothing.
        LONG p = MapFind(map, index);
        HLNode* node = (HLNode*)HLListGetItem(map, p);
        if (node) {
            int removed = HGMapEntry(map, node);
            MapAdjust(map, -1, [removed](int v) { return v > removed; }, -1);
        }
        HLListRemove(map, p);
    }

    LONG size = field->size;
    LONG offset = field->offset;
    if (!HLListRemove(grid->fields, index))
        return FALSE;
    HLList* records = grid->records;
    if (index < FieldCount(grid)) {
        LONG i = map ? MapFind(map, index) : index;
        LONG place = (LONG)records->userWord + (i >= 0 ? 2 * i : -2);
        HGShiftCells(grid, place, place + 2, records->itemSize - place - 2);
    }
    HGShiftCells(grid, offset, offset + size, records->itemSize - offset - size);
    HGResizeRecords(grid, records->itemSize - size - 2);
    HGFixOffsets(grid);
    if (g_gridWindowHooks.clampSelection)
        g_gridWindowHooks.clampSelection(gw, gw->curRow + gw->rowBase, gw->anchorRow + gw->rowBase);
    return TRUE;
}

// ---- Stash ----

LPVOID CALLBACK HGStashAlloc(HLList*, LPVOID data) { return data; }

LONG CALLBACK HGStashCompare(HLList*, LPCVOID key, LPVOID node)
{
    const HGStashEntry* a = (const HGStashEntry*)key;
    const HGStashEntry* b = (const HGStashEntry*)node;
    if (!a || !b)
        return a ? 1 : -1;
    if (a->owner != b->owner)
        return a->owner < b->owner ? -1 : 1;
    return CompareFolded(a->name, b->name, sizeof a->name);
}

LONG CALLBACK HGStashFree(HLList*, LPVOID node)
{
    if (!node)
        return 0;
    HGridDestroy(((HGStashEntry*)node)->grid);
    SeamFree(node);
    return 1;
}

// A copy of the entry holding a duplicate of its grid, so that copying the
// stash list gives entries, each owning its own grid.
LPVOID CALLBACK HGStashData(HLList*, LPVOID node)
{
    if (!node)
        return nullptr;
    HGStashEntry* copy = (HGStashEntry*)SeamAlloc(sizeof(HGStashEntry));
    if (!copy)
        return nullptr;
    *copy = *(const HGStashEntry*)node;
    copy->link.next = nullptr;
    copy->grid = HGridDup(copy->grid);
    return copy;
}

extern "C" void QUILLAPI HGCreateStash(void)
{
    if (!g_gridStash)
        g_gridStash = HLListCreate(0, HGStashAlloc, HGStashCompare, nullptr, HGStashFree, HGStashData, 0);
}

extern "C" HLList* QUILLAPI HGGetStash(void) { return g_gridStash; }

// Appends without looking for a duplicate: a second entry of the same key
// stands behind the first and is never found.
extern "C" void QUILLAPI StashGrid(HGridData* grid, DWORD owner, LPCSTR name, const OFSTRUCT* file)
{
    HGCreateStash();
    HGStashEntry* entry = (HGStashEntry*)SeamAlloc(sizeof(HGStashEntry));
    if (!g_gridStash || !entry) {
        SeamFree(entry);
        HGridDestroy(grid); // the stash took the grid over
        return;
    }
    entry->owner = owner;
    entry->grid = grid;
    _fstrnzcpy(entry->name, name ? name : "", 13);
    if (file)
        memcpy(&entry->file, file, sizeof(OFSTRUCT));
    HLListAppend(g_gridStash, entry);
}

extern "C" HGStashEntry* QUILLAPI GetStashed(DWORD owner, LPCSTR name, LPLONG index)
{
    if (index)
        *index = 0;
    HGStashEntry* key = (HGStashEntry*)SeamAlloc(sizeof(HGStashEntry));
    if (!key)
        return nullptr;
    key->owner = owner;
    _fstrnzcpy(key->name, name ? name : "", 13);
    HGStashEntry* found = (HGStashEntry*)HLListFind(g_gridStash, key, 0, index);
    SeamFree(key);
    return found;
}

extern "C" BOOL QUILLAPI RemoveStashed(DWORD owner, LPCSTR name)
{
    LONG index = 0;
    if (!GetStashed(owner, name, &index))
        return FALSE;
    return HLListRemove(g_gridStash, index);
}

extern "C" void QUILLAPI HGStashFld(HGField* field) { g_fieldStash = field; }

extern "C" HGField* QUILLAPI HGGetFldStash(void) { return g_fieldStash; }
