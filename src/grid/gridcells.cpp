// The cell layer of a grid with a window: the exported cell functions, the one
// writer HGSetCell, the text forms, and the adds, inserts and deletes of records,
// with their notifications and the row source of virtual mode.
#include "grid/gridwin.h"
#include "grid/grid.h"
#include "container/hllist.h"
#include "typed/format.h"
#include "seam.h"
#include <string.h>

namespace {

BOOL IsVirtual(const HGridWindow* gw) { return (gw->wFlags & HGW_VIRTUAL) && gw->dataProc; }

LONG RecordCount(const HGridData* grid) { return grid->records ? grid->records->count : 0; }

BYTE* CellsOf(HGRecord* record) { return record->cells; }

// Bytes behind a record's head that its block really holds.
LONG RecordCapacity(const HGRecord* record)
{
    size_t size = SeamSize(record);
    if (size <= kHGRecordHead)
        return 0;
    size -= kHGRecordHead;
    return size > 0x7FFFFFFF ? 0x7FFFFFFF : (LONG)size;
}

// Where a cell and its status word lie in a record. Every access goes through
// this, so that a field whose offset or size disagrees with the record's
// blocks is refused rather than read or written outside them.
struct CellPlace {
    HGRecord* record;
    HGField* field;
    BYTE* cell;
    WORD* status; // may be unaligned: read and written by memcpy
};

bool PlaceCell(HGridData* grid, int col, int row, CellPlace* place)
{
    if (!grid || !grid->records)
        return false;
    HGRecord* record = HGRecordAt(grid, row);
    HGField* field = HGFieldAt(grid, col);
    if (!record || !field)
        return false;
    LONG cells = (LONG)grid->records->userWord;
    LONG capacity = RecordCapacity(record);
    if (grid->records->itemSize < capacity)
        capacity = grid->records->itemSize;
    LONG statusAt = cells + 2 * (LONG)col;
    if (field->offset < 0 || field->size < 0 || field->offset + field->size > cells ||
        statusAt + 2 > capacity)
        return false;
    place->record = record;
    place->field = field;
    place->cell = CellsOf(record) + field->offset;
    place->status = (WORD*)(CellsOf(record) + statusAt);
    return true;
}

WORD ReadStatus(const CellPlace& p)
{
    WORD w;
    memcpy(&w, p.status, sizeof w);
    return w;
}

void WriteStatus(const CellPlace& p, WORD w) { memcpy(p.status, &w, sizeof w); }

// Calls the row source. `alive` turns false if the application destroyed the
// window meanwhile: the caller must then leave the record alone.
LONG CallRowSource(HGridWindow* gw, UINT op, LONG position, LPVOID data, bool* alive)
{
    HWND self = gw->hWnd;
    LONG result = gw->dataProc(self, op, position, data);
    *alive = IsWindow(self) != FALSE;
    return result;
}

// Sends a notification about a cell; false if the receiver destroyed the grid.
// A veto is not looked at: none of the cell layer's notifications can be refused.
bool NotifyCell(HGridWindow* gw, UINT code, int col, int row)
{
    HWND self = gw->hWnd;
    gw->notifyCol = (SHORT)col;
    gw->notifyRow = (SHORT)row;
    HCtlNotify(gw, code);
    return IsWindow(self) != FALSE;
}

bool IsStringCell(const HGField* field)
{
    return (field->classLetter == HCLASS_STRING || field->classLetter == HCLASS_MASKED) &&
           field->typeLetter == HTYPE_STRING;
}

bool HasTextKind(char kind)
{
    return kind == 'c' || kind == 'e' || kind == 'k' || kind == 'd' || kind == 'l';
}

bool IsCoded(const HGField* field)
{
    return (field->editorKind == 'd' || field->editorKind == 'l') && (field->flags & HGF_CODED);
}

int Larger(int a, int b) { return a > b ? a : b; }

// Bytes that a value of the type takes; strings and unknown types count as 0.
int TypeBytes(char cls, char type)
{
    int size = GetDataSize(cls, type);
    return size > 0 ? size : 0;
}

// Bytes of the list's transfer buffer: HList copies a whole item with no bound.
constexpr int kHGListItemBuffer = 256;

} // namespace

// ---- Finding the window record ----

HGridWindow* HGWindowOf(HWND hWnd)
{
    if (!hWnd || !IsWindow(hWnd))
        return nullptr;
    char name[16] = "";
    GetClassNameA(hWnd, name, sizeof name);
    if (lstrcmpiA(name, HGRID_CLASS) != 0)
        return nullptr; // another control's record is no grid window
    return (HGridWindow*)SendMessageA(hWnd, HM_GETPTR, 0, 0);
}

// ---- Records ----

HGRecord* HGRecordAt(HGridData* grid, int row)
{
    if (!grid || !grid->records || row < 0 || row >= RecordCount(grid))
        return nullptr;
    return (HGRecord*)HLListGetItem(grid->records, row);
}

LPVOID HGRecordBuffer(HGridData* grid)
{
    if (!grid || !grid->records || grid->records->itemSize <= 0)
        return nullptr;
    return SeamAlloc((size_t)grid->records->itemSize);
}

BOOL HGRecordIO(HGridData* grid, int row, LPVOID buffer, BOOL write)
{
    HGRecord* record = HGRecordAt(grid, row);
    if (!record || !buffer)
        return FALSE;
    LONG bytes = (LONG)grid->records->userWord;
    LONG capacity = RecordCapacity(record);
    if (bytes > capacity)
        bytes = capacity;
    if (write)
        memcpy(CellsOf(record), buffer, (size_t)bytes);
    else
        memcpy(buffer, CellsOf(record), (size_t)bytes);
    return TRUE;
}

LONG HGMoveRecord(HGridData* grid, int from, int to)
{
    if (!grid)
        return 0;
    return HLListMove(grid->records, from, to);
}

// ---- Cells ----

WORD HGCellIsNull(HGridWindow* gw, int col, int row)
{
    CellPlace p;
    if (!gw || !PlaceCell(gw->grid, col, row, &p))
        return HGC_NULL; // a cell that cannot be addressed holds nothing
    return ReadStatus(p) & HGC_NULL;
}

BOOL HGSetCell(HGridWindow* gw, int col, int row, LPCVOID data)
{
    CellPlace p;
    if (!gw || !PlaceCell(gw->grid, col, row, &p) || p.field->size == 0)
        return FALSE;
    HGridData* grid = gw->grid;
    HWND self = gw->hWnd;
    WORD status = ReadStatus(p);
    WriteStatus(p, data ? (WORD)(status & ~HGC_NULL) : (WORD)(status | HGC_NULL));
    LPVOID zero = nullptr;
    if (!data) {
        zero = SeamAlloc((size_t)p.field->size);
        if (!zero)
            return FALSE;
        data = zero;
    }
    bool alive = true;
    if (IsVirtual(gw) && CallRowSource(gw, HGOP_WRITING, MAKELONG(col, row), (LPVOID)data, &alive)) {
        // Refused: the null bit keeps its new value and the cell its old bytes.
        // The zero block stays allocated, as the library always did.
        return FALSE;
    }
    // The row source may have changed the grid under the window: place again.
    if (!alive || !PlaceCell(gw->grid, col, row, &p)) {
        SeamFree(zero);
        return FALSE;
    }
    grid = gw->grid;

    if (IsStringCell(p.field)) {
        memset(p.cell, 0, (size_t)p.field->size);
        // The source may be shorter than the cell, or longer and unterminated
        // within it; strnlen never reads past either.
        size_t length = strnlen((LPCSTR)data, (size_t)p.field->size - 1);
        memcpy(p.cell, data, length);
    } else {
        memcpy(p.cell, data, (size_t)p.field->size);
    }
    p.record->recordStatus |= HGR_DIRTY;
    gw->notifyCol = (SHORT)col;
    gw->notifyRow = (SHORT)row;
    if (gw->recordMirror)
        HGRecordIO(grid, row, gw->recordMirror, FALSE);
    if (!NotifyCell(gw, HGN_CELLCHANGED, col, row)) {
        SeamFree(zero);
        return FALSE;
    }

    // The receiver may have changed the list: find the record again.
    HGRecord* record = HGRecordAt(gw->grid, row);
    if (!IsVirtual(gw)) {
        if ((gw->grid->style & HGS_NEWROW) && record && row == RecordCount(gw->grid) - 1) {
            HGAddRecord(gw, nullptr, TRUE);
            if (!IsWindow(self)) {
                SeamFree(zero);
                return FALSE;
            }
            SendMessageA(self, HGM_RELAYOUT, 0, 0);
        }
    } else if (record && !(record->recordStatus & HGR_NEW)) {
        LONG stored = CallRowSource(gw, HGOP_UPDATE, gw->rowBase + row, CellsOf(record), &alive);
        if (!alive) {
            SeamFree(zero);
            return FALSE;
        }
        if (stored && (record = HGRecordAt(gw->grid, row)) != nullptr)
            record->recordStatus &= (WORD)~HGR_DIRTY;
    } else if (record) {
        LONG stored = CallRowSource(gw, HGOP_ADD, gw->rowBase + row, CellsOf(record), &alive);
        if (!alive) {
            SeamFree(zero);
            return FALSE;
        }
        if (stored && (record = HGRecordAt(gw->grid, row)) != nullptr) {
            record->recordStatus &= (WORD)~(HGR_NEW | HGR_DIRTY);
            HGInvalidateRow(gw, row);
            if (row >= gw->topRow && row < gw->topRow + gw->visibleRows) {
                PostMessageA(self, HGM_RELAYOUT, 0, 0);
            } else {
                PostMessageA(self, HGM_SETCACHESIZE, 0, gw->cacheSize + 1);
                PostMessageA(self, HGM_SETTOPROW, 0, gw->rowBase + gw->topRow + 1);
            }
        }
    }
    HGridInvalidateCell(self, col, row);
    record = HGRecordAt(gw->grid, row);
    if (record && (record->recordStatus & HGR_DIRTY))
        gw->wFlags |= HCTLF_MODIFIED; // never cleared here
    SeamFree(zero);
    return TRUE;
}

int HGFormatCell(HGridWindow* gw, int col, int row, LPSTR buffer, int size, BOOL editing)
{
    if (!buffer || size <= 0)
        return 0;
    buffer[0] = 0;
    CellPlace p;
    if (!gw || !PlaceCell(gw->grid, col, row, &p) || !HasTextKind(p.field->editorKind))
        return 0;
    HGField* field = p.field;
    // FormatData reads a value by its type, and a string up to its terminator:
    // it is given a terminated copy at least as large as the type, never the
    // cell itself, whose bytes may be short or unterminated.
    int bytes = Larger(Larger(field->size, TypeBytes(field->classLetter, field->typeLetter)),
                       kHGListItemBuffer) + 1;
    SeamBlock value((size_t)bytes);
    if (!value.p)
        return 0;
    if (IsCoded(field)) {
        if (!field->editor || !IsWindow(field->editor->hWnd))
            return 0;
        HWND list = field->editor->hWnd;
        SeamBlock code((size_t)field->size + 1);
        if (!code.p)
            return 0;
        memcpy(code.p, p.cell, (size_t)field->size);
        // A code that no item has leaves the local buffer zero: a zero value shows.
        LRESULT index = SendMessageA(list, HLM_FINDCODE, 0, (LPARAM)code.p);
        SendMessageA(list, HLM_GETDATA, (WPARAM)index, (LPARAM)value.p);
        ((BYTE*)value.p)[bytes - 1] = 0;
    } else {
        memcpy(value.p, p.cell, (size_t)field->size);
    }
    FormatData(value.p, field->classLetter, field->typeLetter, field->format, buffer, size, nullptr,
               editing);
    return (int)strnlen(buffer, (size_t)size);
}

BOOL HGParseCell(HGridWindow* gw, int col, int row, LPCSTR text)
{
    CellPlace p;
    if (!gw || !text || !PlaceCell(gw->grid, col, row, &p))
        return FALSE;
    HGField* field = p.field;
    size_t length = strlen(text);
    if (length >= 0x7FFF0000u)
        return FALSE;
    // At least 32 bytes; also room for the type that ParseData writes, for the
    // cell that HGSetCell copies, and for a code the list copies unbounded.
    int bytes = Larger(Larger((int)length + 1, 32),
                       Larger(TypeBytes(field->classLetter, field->typeLetter), field->size + 1));
    if (IsCoded(field))
        bytes = Larger(bytes, kHGListItemBuffer);
    LPSTR buffer = (LPSTR)SeamAlloc((size_t)bytes);
    if (!buffer)
        return FALSE;
    // No window: a bad date found here is repaired, not reported by the grid.
    HParseDataN(nullptr, buffer, bytes, field->classLetter, field->typeLetter, field->format, text,
                nullptr);
    if (!HasTextKind(field->editorKind) ||
        (IsCoded(field) && (!field->editor || !IsWindow(field->editor->hWnd)))) {
        SeamFree(buffer);
        return FALSE;
    }
    if (IsCoded(field)) {
        HWND list = field->editor->hWnd;
        // A value that no item has gets no code: the parsed value stays and is stored.
        LRESULT index = SendMessageA(list, HLM_FINDDATA, 0, (LPARAM)buffer);
        SendMessageA(list, HLM_GETCODE, (WPARAM)index, (LPARAM)buffer);
        buffer[bytes - 1] = 0;
    }
    BOOL result = HGSetCell(gw, col, row, buffer);
    SeamFree(buffer);
    return result;
}

// ---- Adding and removing records ----

int HGAddRecord(HGridWindow* gw, LPCVOID data, BOOL newRow)
{
    if (!gw || !gw->grid || !gw->grid->records || RecordCount(gw->grid) > kHGMaxRecordIndex)
        return 0xFFFF;
    HGridData* grid = gw->grid;
    HLList* records = grid->records;
    LONG row = -1;
    if (!IsVirtual(gw)) {
        LONG count = records->count;
        HGRecord* last = HGRecordAt(grid, count - 1);
        if ((grid->style & HGS_NEWROW) && last && !(last->recordStatus & HGR_DIRTY)) {
            // The blank row already stands at the end: a new record goes before it.
            if (newRow)
                return 0xFFFF;
            LONG at = HLListInsert(records, count - 1, (LPVOID)data);
            return at >= 0 && records->count > count ? (int)count : 0xFFFF;
        }
        row = HLListAdd(records, (LPVOID)data);
        if (records->count == count)
            row = -1;
        if (newRow && row >= 0) {
            HGRecord* added = HGRecordAt(grid, row);
            if (added)
                added->recordStatus |= HGR_NEW;
            if (!NotifyCell(gw, HGN_ROWADDED, -1, row))
                return 0xFFFF;
        }
    } else {
        LPVOID block = nullptr;
        if (!data) {
            block = HGRecordBuffer(grid);
            if (!block)
                return 0xFFFF;
        }
        bool alive = true;
        LONG position = records->count;
        if (CallRowSource(gw, HGOP_ADD, position, block ? block : (LPVOID)data, &alive))
            row = position;
        SeamFree(block);
        if (!alive)
            return 0xFFFF;
    }
    return row >= 0 ? (int)(row + 1) : (int)(row & 0xFFFF);
}

int HGAppendRow(HGridWindow* gw, LPCVOID data)
{
    if (!gw || !gw->grid || !gw->grid->records || RecordCount(gw->grid) > kHGMaxRecordIndex)
        return 0xFFFF;
    HLList* records = gw->grid->records;
    LONG count = records->count;
    LONG row = HLListAdd(records, (LPVOID)data);
    if (records->count == count)
        return 0xFFFF;
    int shown = gw->visibleRows + ((gw->wFlags & HGW_PARTIALROW) ? 1 : 0);
    if (row >= gw->topRow && row <= gw->topRow + shown)
        HGInvalidateRow(gw, (int)row);
    return (int)(row + 1);
}

int HGInsertRecord(HGridWindow* gw, LPCVOID data, int row, BOOL notify)
{
    if (!gw || !gw->grid || !gw->grid->records || RecordCount(gw->grid) > kHGMaxRecordIndex)
        return -1;
    LPVOID block = nullptr;
    if (IsVirtual(gw)) {
        if (!data) {
            block = HGRecordBuffer(gw->grid);
            if (!block)
                return -1;
        }
        bool alive = true;
        LONG accepted = CallRowSource(gw, HGOP_INSERT, gw->rowBase + row, block ? block : (LPVOID)data, &alive);
        if (!accepted || !alive) {
            SeamFree(block);
            return -1;
        }
    }
    HLList* records = gw->grid->records;
    LONG count = records->count;
    LONG at = HLListInsert(records, row, block ? block : (LPVOID)data);
    SeamFree(block);
    if (at < 0 || records->count == count)
        return -1;
    if (notify) {
        HGRecord* inserted = HGRecordAt(gw->grid, at);
        if (inserted)
            inserted->recordStatus |= HGR_NEW;
        if (!NotifyCell(gw, HGN_ROWADDED, -1, at))
            return -1;
    }
    return (int)at;
}

BOOL HGDeleteRecord(HGridWindow* gw, int row, BOOL notify)
{
    if (!gw)
        return FALSE;
    HGRecord* record = HGRecordAt(gw->grid, row);
    if (!record)
        return FALSE;
    if (IsVirtual(gw)) {
        if (record->recordStatus & HGR_NEW)
            return FALSE;
        bool alive = true;
        if (!CallRowSource(gw, HGOP_DELETE, gw->rowBase + row, CellsOf(record), &alive) || !alive)
            return FALSE;
    } else if ((gw->grid->style & HGS_NEWROW) && row == RecordCount(gw->grid) - 1) {
        return FALSE; // the new row cannot be deleted
    }
    if (notify && !NotifyCell(gw, HGN_ROWDELETED, -1, row))
        return FALSE;
    return HGDropRecord(gw, row);
}

BOOL HGDropRecord(HGridWindow* gw, int row)
{
    if (!gw)
        return FALSE;
    HGRecord* record = HGRecordAt(gw->grid, row);
    if (!record)
        return FALSE;
    if (IsVirtual(gw) && (record->recordStatus & (HGR_DIRTY | HGR_NEW)) == HGR_DIRTY) {
        bool alive = true;
        CallRowSource(gw, HGOP_STORE, gw->rowBase + row, CellsOf(record), &alive);
        if (!alive)
            return FALSE;
        if ((record = HGRecordAt(gw->grid, row)) == nullptr)
            return FALSE;
        record->recordStatus &= (WORD)~HGR_DIRTY;
    }
    if (row == gw->curRow) {
        HWND self = gw->hWnd;
        HGEditorClose(gw); // commits: may write a cell and notify
        if (!IsWindow(self) || !HGRecordAt(gw->grid, row))
            return FALSE;
    } else if (row < gw->curRow) {
        --gw->curRow;
    }
    if (row < gw->anchorRow)
        --gw->anchorRow;
    if (!HLListRemove(gw->grid->records, row))
        return FALSE;
    // The current row's record goes first, as the anchor's: the two rows trade
    // places, which one-cell selections do not notice.
    HGClampSelection(gw, gw->curRow + gw->rowBase, gw->anchorRow + gw->rowBase);
    return TRUE;
}

// ---- Exported cell functions ----

extern "C" LPVOID QUILLAPI HGOffsetPtr(HWND hWnd, int col, LPVOID record)
{
    HGridWindow* gw = HGWindowOf(hWnd);
    if (!gw || !gw->grid || !record || col < 0 || col > (int)gw->grid->fields->count)
        return nullptr;
    HGField* field = HGFieldAt(gw->grid, col); // the count itself passed the test above
    return field ? (BYTE*)record + field->offset : nullptr;
}

extern "C" BOOL QUILLAPI HGGetCellData(HWND hWnd, int col, int row, LPVOID buffer)
{
    HGridWindow* gw = HGWindowOf(hWnd);
    CellPlace p;
    if (!gw || !buffer || !PlaceCell(gw->grid, col, row, &p))
        return FALSE;
    memcpy(buffer, p.cell, (size_t)p.field->size);
    return !(ReadStatus(p) & HGC_NULL);
}

// Also exported as HGSetCellString: the two names are one function.
extern "C" BOOL QUILLAPI HGSetCellData(HWND hWnd, int col, int row, LPCVOID data)
{
    HGridWindow* gw = HGWindowOf(hWnd);
    return gw ? HGSetCell(gw, col, row, data) : FALSE;
}

extern "C" int QUILLAPI HGGetCellText(HWND hWnd, int col, int row, LPSTR buffer, int size)
{
    if (buffer && size > 0)
        buffer[0] = 0;
    HGridWindow* gw = HGWindowOf(hWnd);
    return gw ? HGFormatCell(gw, col, row, buffer, size, FALSE) : 0;
}

extern "C" BOOL QUILLAPI HGSetCellText(HWND hWnd, int col, int row, LPCSTR text)
{
    HGridWindow* gw = HGWindowOf(hWnd);
    return gw ? HGParseCell(gw, col, row, text) : FALSE;
}
