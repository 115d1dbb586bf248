// HGrid's messages beside creation, painting and scrolling: the standard ones,
// the shared brush pair, the HGM_ block and the field messages.
#include <string.h>

#include "frame/strings.h"
#include "grid/grid.h"
#include "grid/gridpaint.h"
#include "grid/gridwin.h"

namespace {

// Metrics of the set messages are held to these.
constexpr SHORT kHGMinRowHeight = 2;
constexpr SHORT kHGMaxExtent = 2000;
// A class bit of wFlags that no other part uses: WM_DESTROY is under way.
constexpr WORD kHGEnding = 0x0200;

// What a message gives: the result, or default processing.
struct Answer {
    LRESULT result;
    bool fallThrough; // default processing
};
constexpr Answer Give(LRESULT r) { return {r, false}; }
constexpr Answer kDefault = {0, true};

LONG FieldCount(const HGridData* grid) { return grid->fields ? grid->fields->count : 0; }
LONG RecordCount(const HGridData* grid) { return grid->records ? grid->records->count : 0; }
bool IsVirtual(const HGridWindow* gw) { return (gw->wFlags & HGW_VIRTUAL) != 0; }
DWORD Pack(SHORT col, SHORT row) { return MAKELONG((WORD)col, (WORD)row); }
SHORT PackedCol(LPARAM packed) { return (SHORT)LOWORD(packed); }
SHORT PackedRow(LPARAM packed) { return (SHORT)HIWORD(packed); }
SHORT Arg16(WPARAM wParam) { return (SHORT)LOWORD(wParam); }

SHORT Clamp(LONG value, LONG low, LONG high)
{
    return (SHORT)(value < low ? low : value > high ? high : value);
}

// Turns bits of mask on or off.
template <typename T> T Switch(T word, bool on, T mask) { return on ? (T)(word | mask) : (T)(word & ~mask); }

bool Alive(HWND hWnd, const HGridWindow* gw)
{
    return IsWindow(hWnd) && (const HGridWindow*)GetWindowLongA(hWnd, 0) == gw && gw->grid;
}

DWORD WindowStyle(const HGridWindow* gw)
{
    return gw->grid ? gw->grid->style : (DWORD)GetWindowLongA(gw->hWnd, GWL_STYLE);
}

// Default processing: the MDI child's procedure for an MDI grid at run time,
// else the common messages and DefWindowProcA behind the handler.
LRESULT DefaultProcessing(HGridWindow* gw, UINT msg, WPARAM wParam, LPARAM lParam, LPBOOL notHandled)
{
    if ((WindowStyle(gw) & HGS_MDICHILD) && !gw->designName)
        return DefMDIChildProcA(gw->hWnd, msg, wParam, lParam);
    *notHandled = TRUE;
    return 0;
}

void InvalidateSelection(HGridWindow* gw)
{
    HGridInvalidateRange(gw->hWnd, gw->anchorCol, gw->anchorRow, gw->curCol, gw->curRow);
}

// A popup grid is modal to its target, which gets its input back at the end.
void EnableOwnerOfPopup(HGridWindow* gw)
{
    HWND parent = GetParent(gw->hWnd);
    if ((WindowStyle(gw) & WS_POPUP) && parent)
        EnableWindow(parent, TRUE);
}

// ---- Standard messages ----

Answer OnDestroy(HGridWindow* gw)
{
    HWND hWnd = gw->hWnd;
    // A receiver that destroys the grid again at the end notice must not start
    // another end inside this one.
    if (gw->wFlags & kHGEnding)
        return Give(0);
    gw->wFlags |= kHGEnding;
    EnableOwnerOfPopup(gw);
    HGEditorClose(gw);
    HCtlNotify(gw, HGN_DESTROY);
    if (!Alive(hWnd, gw))
        return Give(0);
    if (IsVirtual(gw)) {
        gw->cacheSize = 0;
        HGCacheFill(gw, FALSE);
    } else {
        HGEmptyRows(gw, FALSE);
    }
    if (!Alive(hWnd, gw))
        return Give(0);
    if (!GetParent(hWnd))
        PostQuitMessage(0);
    // The editor windows die with the grid's children; the fields outlive them in the stash.
    for (LONG i = 0; i < FieldCount(gw->grid); i++)
        if (HGField* field = HGFieldAt(gw->grid, i))
            field->editor = nullptr;
    return Give(0);
}

Answer OnSetFocus(HGridWindow* gw, HWND from)
{
    HWND hWnd = gw->hWnd;
    if (from && IsChild(hWnd, from))
        return Give(0);
    // The editor that the focus loss hid comes back.
    if (gw->hEditor && IsWindow(gw->hEditor)) {
        HGEditorShow(gw);
        if (!Alive(hWnd, gw))
            return Give(0);
    }
    if (gw->wFlags & HGW_EDITING) {
        if (gw->hEditor)
            SetFocus(gw->hEditor);
    } else {
        if (!(gw->grid->style & HGS_INPLACE) && !(gw->wFlags & HGW_CELLSHOWN)) {
            HGMoveTo(gw, gw->curCol, gw->curRow, TRUE, FALSE);
            if (!Alive(hWnd, gw))
                return Give(0);
        }
        if (!(gw->grid->style & HGS_KEEPSEL))
            InvalidateSelection(gw);
    }
    HCtlNotify(gw, HGN_SETFOCUS);
    return Give(0);
}

Answer OnKillFocus(HGridWindow* gw, HWND to)
{
    HWND hWnd = gw->hWnd;
    gw->wFlags &= (WORD)~HGW_TRACKING;
    if (to && IsChild(hWnd, to))
        return Give(0);
    if (!(gw->grid->style & HGS_KEEPSEL)) {
        if (gw->hEditor && IsWindow(gw->hEditor))
            ShowWindow(gw->hEditor, SW_HIDE);
        gw->wFlags &= (WORD)~HGW_EDITORSHOWN;
        InvalidateSelection(gw);
        HGEditCommit(gw);
        if (!Alive(hWnd, gw))
            return Give(0);
    }
    HCtlNotify(gw, HGN_KILLFOCUS);
    return Give(0);
}

// An editor lost the focus: to the grid, editing ends; elsewhere the grid
// loses it as a whole, which the focus loss ignores for another child.
Answer OnChildBlur(HGridWindow* gw, HWND to)
{
    if (to == gw->hWnd) {
        gw->wFlags &= (WORD)~HGW_EDITING;
        return Give(0);
    }
    if (gw->grid->style & HGS_KEEPSEL) {
        HCtlNotify(gw, HGN_KILLFOCUS);
        return Give(0);
    }
    return OnKillFocus(gw, to);
}

// The grid's name; at design time the stash key, whose entry moves with it.
// Gives 0 for a null text and 1 when the default processing is to go on.
bool SetName(HGridWindow* gw, LPCSTR text)
{
    if (!text)
        return false;
    if (text == gw->grid->name)
        return true;
    if (!gw->designName) {
        HStrReplace(&gw->grid->name, text);
        return true;
    }
    if (strcmp(gw->designName, text) == 0)
        return true;
    DWORD owner = GetWindowThreadProcessId(gw->hWnd, nullptr);
    HGStashEntry* entry = GetStashed(owner, gw->designName, nullptr);
    if (!entry)
        return true; // the key stays with no entry to move
    OFSTRUCT file = entry->file;
    RemoveStashed(owner, gw->designName);
    HStrReplace(&gw->designName, text);
    if (HGridData* copy = HGridDup(gw->grid))
        StashGrid(copy, owner, text, &file);
    return true;
}

LRESULT GetName(HGridWindow* gw, WPARAM limit, LPARAM buffer)
{
    if (!buffer)
        return 0;
    return _fstrnzcpy((LPSTR)buffer, gw->grid->name, (int)limit);
}

Answer OnClose(HGridWindow* gw)
{
    EnableOwnerOfPopup(gw);
    if (gw->grid->style & HGS_MDICHILD) {
        HWND hWnd = gw->hWnd;
        if (SendMessageA(hWnd, WM_QUERYENDSESSION, 0, 0)) {
            PostMessageA(GetParent(hWnd), WM_MDIDESTROY, (WPARAM)hWnd, 0);
            return Give(1);
        }
    }
    return kDefault;
}

LRESULT DialogCode(HGridWindow* gw)
{
    if (gw->wFlags & HGW_EDITING)
        return DLGC_WANTALLKEYS;
    if ((gw->grid->style & HGS_DLGKEYS) || GetKeyState(VK_CONTROL) < 0)
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    return DLGC_WANTALLKEYS;
}

Answer SetBackBrush(HGridWindow* gw, HBRUSH brush, BOOL redraw)
{
    HBRUSH old = gw->hBrush;
    gw->hBrush = brush;
    if (redraw)
        InvalidateRect(gw->hWnd, nullptr, TRUE);
    HGForwardToEditors(gw, HM_SETBACKBRUSH, (WPARAM)brush, redraw);
    return Give((LRESULT)old);
}

Answer StandardMessage(HGridWindow* gw, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_DESTROY:
        return OnDestroy(gw);
    case WM_SETFOCUS:
        return OnSetFocus(gw, (HWND)wParam);
    case WM_KILLFOCUS:
        return OnKillFocus(gw, (HWND)wParam);
    case WM_SETTEXT:
        if (!SetName(gw, (LPCSTR)lParam))
            return Give(0);
        return kDefault;
    case WM_GETTEXT:
        return Give(GetName(gw, wParam, lParam));
    case WM_CLOSE:
        return OnClose(gw);
    case WM_QUERYENDSESSION:
        return Give(1);
    case WM_ERASEBKGND:
        return Give(HGEraseBackground(gw, (HDC)wParam));
    case WM_CANCELMODE:
        gw->wFlags |= HCTLF_VETO; // ends a mouse track
        return Give(0);
    case WM_SETCURSOR:
        return HGSetCursor(gw, LOWORD(lParam)) ? Give(1) : kDefault;
    case WM_SETFONT:
        return Give((LRESULT)HGSetFont(gw, (HFONT)wParam, (BOOL)lParam));
    case WM_GETDLGCODE:
        return Give(DialogCode(gw));
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK)
            HGEditCommit(gw);
        else if (LOWORD(wParam) == IDCANCEL)
            HGEditCancel(gw);
        if (!Alive(gw->hWnd, gw))
            return Give(0);
        return kDefault;
    case WM_MDIACTIVATE:
        if ((HWND)lParam == gw->hWnd && GetFocus() != gw->hWnd)
            SetFocus(gw->hWnd);
        return kDefault;
    case WM_KEYDOWN:
        HGKeyDown(gw, (UINT)wParam, lParam);
        return Give(0);
    case WM_CHAR:
        HGChar(gw, wParam, lParam);
        return Give(0);
    case WM_LBUTTONDOWN:
        HGMouseDown(gw, lParam);
        return Give(0);
    case WM_MOUSEMOVE:
        if (gw->wFlags & HGW_TRACKING)
            HGMouseMove(gw, lParam);
        return Give(0);
    case WM_LBUTTONUP:
        HGMouseUp(gw, lParam);
        return Give(0);
    case WM_LBUTTONDBLCLK:
        HGDoubleClick(gw, lParam);
        return Give(0);
    case WM_COPY:
        HGCopy(gw);
        return Give(0);
    case WM_PASTE:
        HGPaste(gw);
        return Give(0);
    case HM_CHILDFOCUS:
        HGChildFocus(gw);
        return Give(0);
    case HM_CHILDBLUR:
        return OnChildBlur(gw, wParam ? (HWND)wParam : GetFocus());
    case HM_GETBACKBRUSH:
        return Give((LRESULT)gw->hBrush);
    case HM_SETBACKBRUSH:
        return SetBackBrush(gw, (HBRUSH)wParam, (BOOL)lParam);
    }
    return kDefault;
}

// ---- The HGM_ block ----

// A metric set: store, and relayout when lParam asks for it.
Answer SetMetric(HGridWindow* gw, SHORT* slot, SHORT value, LPARAM relayout)
{
    *slot = value;
    if (relayout)
        HGRelayout(gw, TRUE);
    return Give(1);
}

// A scroll of the set-position messages sends no notification.
void SilentScroll(HGridWindow* gw, LONG cols, LONG rows)
{
    gw->wFlags |= HGW_SILENT;
    HGScroll(gw, cols, rows, TRUE); // which clears the bit
}

LRESULT GetCell(SHORT col, SHORT row, LPARAM out)
{
    DWORD packed = Pack(col, row);
    if (out)
        *(DWORD*)out = packed;
    return packed;
}

LRESULT SetAnchor(HGridWindow* gw, LPARAM packed)
{
    HWND hWnd = gw->hWnd;
    SHORT oldCol = gw->curCol, oldRow = gw->curRow;
    HGMoveTo(gw, PackedCol(packed), PackedRow(packed), FALSE, FALSE);
    if (!Alive(hWnd, gw))
        return 0;
    return HGMoveTo(gw, oldCol, oldRow, TRUE, TRUE);
}

LRESULT FindField(HGridWindow* gw, LPCSTR title)
{
    LONG index = -1;
    if (!title || !HLListFind(gw->grid->fields, title, 0, &index))
        return -1;
    return index;
}

// The field index of a storage position: the map's entry, or the position.
int MapEntryAt(HGridData* grid, int pos)
{
    if (!grid->fieldMap)
        return pos;
    int entry = HGMapEntry(grid->fieldMap, (const HLNode*)HLListGetItem(grid->fieldMap, pos));
    return entry >= 0 ? entry : pos;
}

LRESULT GetFieldOrder(HGridWindow* gw, LONG* order)
{
    HGridData* grid = gw->grid;
    if (!(grid->style & HGS_FIELDMAP) || !order)
        return 0;
    for (LONG i = 0; i < FieldCount(grid); i++)
        order[i] = MapEntryAt(grid, i);
    return 1;
}

LRESULT SetFieldOrder(HGridWindow* gw, const LONG* order)
{
    HGridData* grid = gw->grid;
    if (!(grid->style & HGS_FIELDMAP) || !order)
        return 0;
    LONG count = FieldCount(grid);
    for (LONG i = 0; i < count; i++)
        for (LONG j = 0; j < count; j++)
            if (order[j] == i)
                HGMoveFld(grid, MapEntryAt(grid, j), i);
    HGRelayout(gw, TRUE);
    return 1;
}

LRESULT SetDataProc(HGridWindow* gw, HGridDataProc proc)
{
    HWND hWnd = gw->hWnd;
    HGEmptyRows(gw, FALSE);
    if (!Alive(hWnd, gw))
        return 0;
    HGridDataProc old = gw->dataProc;
    gw->dataProc = proc;
    gw->wFlags = Switch<WORD>(gw->wFlags, proc != nullptr, HGW_VIRTUAL);
    HGEmptyRows(gw, TRUE);
    return (LRESULT)old;
}

LRESULT SetTotal(HGridWindow* gw, LONG count)
{
    if (!IsVirtual(gw))
        return 0;
    gw->totalRecords = count ? count : RecordCount(gw->grid);
    if (gw->cacheSize > gw->totalRecords)
        gw->cacheSize = (SHORT)gw->totalRecords;
    HGUpdateScroll(gw);
    return 1;
}

LRESULT SetCacheSize(HGridWindow* gw, LONG count)
{
    if (!IsVirtual(gw))
        return 0;
    HWND hWnd = gw->hWnd;
    gw->cacheSize = Clamp(count, 0, kHGMaxRecordIndex);
    HGUpdateScroll(gw);
    return Alive(hWnd, gw) ? gw->cacheSize : 0;
}

LRESULT FieldAtPos(HGridWindow* gw, SHORT pos)
{
    if (pos < 0 || pos >= FieldCount(gw->grid))
        return -1;
    return MapEntryAt(gw->grid, pos);
}

LRESULT RecordToRow(HGridWindow* gw, LONG record)
{
    LONG row = record - gw->rowBase;
    return row >= 0 && row < RecordCount(gw->grid) ? row : -1;
}

LRESULT SetNotifyCell(HGridWindow* gw, LPARAM packed)
{
    gw->notifyCol = Clamp(PackedCol(packed), -1, FieldCount(gw->grid) - 1);
    gw->notifyRow = Clamp(PackedRow(packed), -1, RecordCount(gw->grid) - 1);
    return 1;
}

LRESULT VScrollMax(HGridWindow* gw)
{
    LONG partial = (gw->wFlags & HGW_PARTIALROW) ? 1 : 0;
    LONG range = partial - gw->visibleRows + gw->totalRecords;
    return (range > 0 ? range : 0) / (gw->vScale > 0 ? gw->vScale : 1);
}

// Rows that count as selected, into rows while there is room; the count.
LRESULT SelectedRows(HGridWindow* gw, LONG* rows, LONG room)
{
    LONG count = 0;
    for (LONG r = 0; r < RecordCount(gw->grid); r++) {
        if (!HGRowSelected(gw, r))
            continue;
        if (rows) {
            if (count >= room)
                break;
            rows[count] = r;
        }
        count++;
    }
    return count;
}

Answer RowStatus(HGridWindow* gw, SHORT row, bool set, LPARAM change)
{
    HGRecord* record = HGRecordAt(gw->grid, row);
    if (!record)
        return kDefault;
    if (set)
        record->recordStatus = Switch<WORD>(record->recordStatus, LOWORD(change) != 0, HIWORD(change));
    return Give(set ? 1 : record->recordStatus);
}

LRESULT SetMirror(HGridWindow* gw, LPVOID buffer)
{
    gw->recordMirror = buffer;
    if (buffer)
        HGRecordIO(gw->grid, gw->curRow, buffer, FALSE);
    return 1;
}

LRESULT CellAreaSize(HGridWindow* gw)
{
    HLList* records = gw->grid->records;
    return records ? records->itemSize - 2 * FieldCount(gw->grid) : 0;
}

LRESULT ForwardColorRequest(HGridWindow* gw, WPARAM hDC, bool* answered)
{
    *answered = gw->hNotify && IsWindow(gw->hNotify);
    return *answered ? SendMessageA(gw->hNotify, HGM_CTLCOLOR, hDC, (LPARAM)gw->hWnd) : 0;
}

Answer BlockMessage(HGridWindow* gw, UINT msg, WPARAM wParam, LPARAM lParam)
{
    HGridData* grid = gw->grid;
    HWND hWnd = gw->hWnd;
    switch (msg) {
    case HGM_SETGRID:
        if (!HGridLink(gw, (HGridData*)lParam))
            return Give(0);
        if (wParam && Alive(hWnd, gw))
            HGRelayout(gw, TRUE);
        return Give(1);
    case HGM_GETGRID:
        return Give((LRESULT)grid);
    case HGM_CLEAR:
        HGEmptyRows(gw, (BOOL)wParam);
        return Give(1);
    case HGM_RELAYOUT:
        HGRelayout(gw, (BOOL)wParam);
        return Give(1);
    case HGM_GETCOLHEADERHEIGHT:
        return Give(grid->colHeaderHeight);
    case HGM_SETCOLHEADERHEIGHT:
        return SetMetric(gw, &grid->colHeaderHeight, Clamp(Arg16(wParam), 0, 0x7FFF), lParam);
    case HGM_GETROWHEADERWIDTH:
        return Give(grid->rowHeaderWidth);
    case HGM_SETROWHEADERWIDTH:
        return SetMetric(gw, &grid->rowHeaderWidth, Clamp(Arg16(wParam), 0, 0x7FFF), lParam);
    case HGM_GETROWHEIGHT:
        return Give(grid->rowHeight);
    case HGM_SETROWHEIGHT:
        return SetMetric(gw, &grid->rowHeight, Clamp(Arg16(wParam), kHGMinRowHeight, kHGMaxExtent), lParam);
    case HGM_GETFIELDCOUNT:
        return Give(FieldCount(grid));
    case HGM_GETRECORDCOUNT:
        return Give(RecordCount(grid));
    case HGM_GETLEFTCOL:
        return Give(gw->leftCol);
    case HGM_SETLEFTCOL:
        SilentScroll(gw, Arg16(wParam) - gw->hScrollPos - grid->frozenCols, 0);
        return Give(Alive(hWnd, gw) ? gw->leftCol : 0);
    case HGM_GETTOPROW:
        return Give(gw->topRow + gw->rowBase);
    case HGM_SETTOPROW: {
        LONG record = (LONG)lParam > Arg16(wParam) ? (LONG)lParam : Arg16(wParam);
        SilentScroll(gw, 0, record - gw->topRow - gw->rowBase);
        return Give(Alive(hWnd, gw) ? gw->topRow + gw->rowBase : 0);
    }
    case HGM_GETFROZEN:
        return Give(grid->frozenCols);
    case HGM_SETFROZEN:
        grid->frozenCols = Clamp(Arg16(wParam), 0, FieldCount(grid));
        HGRelayout(gw, TRUE);
        return Give(1);
    case HGM_GETANCHOR:
        return Give(GetCell(gw->anchorCol, gw->anchorRow, lParam));
    case HGM_SETANCHOR:
        return Give(SetAnchor(gw, lParam));
    case HGM_GETCURRENT:
        return Give(GetCell(gw->curCol, gw->curRow, lParam));
    case HGM_SETCURRENT:
        return Give(HGMoveTo(gw, PackedCol(lParam), PackedRow(lParam), (BOOL)wParam, TRUE));
    case HGM_GETFLAGS:
        return Give(gw->wFlags);
    case HGM_SETFLAGS:
        gw->wFlags = Switch<WORD>(gw->wFlags, wParam != 0, (WORD)lParam);
        return Give(gw->wFlags);
    case HGM_GETNAME:
        return Give(GetName(gw, wParam, lParam));
    case HGM_SETNAME:
        if (!SetName(gw, (LPCSTR)lParam))
            return Give(0);
        if ((grid->style & HGS_MDICHILD) && !gw->designName)
            return Give(DefMDIChildProcA(hWnd, WM_SETTEXT, wParam, lParam));
        return Give(DefWindowProcA(hWnd, WM_SETTEXT, wParam, lParam));
    case HGM_ADDFIELD: {
        HGField* field = (HGField*)lParam;
        if (!field)
            return Give(-1);
        int index = HGAppendFld(grid, field);
        if (index >= 0)
            HGEditorAttach(gw, grid, field);
        HGUpdateScroll(gw);
        return Give(index);
    }
    case HGM_REMOVEFIELD:
        if (!HGRemoveFld(gw, Arg16(wParam)))
            return Give(0);
        HGRelayout(gw, TRUE);
        return Give(1);
    case HGM_INSERTFIELD: {
        HGField* field = (HGField*)lParam;
        if (!field)
            return Give(-1);
        int index = HGInsertFld(grid, field, Arg16(wParam));
        if (index >= 0)
            HGEditorAttach(gw, grid, field);
        HGUpdateScroll(gw);
        return Give(index);
    }
    case HGM_MOVEFIELD:
        return Give(HGMoveFld(grid, Arg16(wParam), (SHORT)LOWORD(lParam)));
    case HGM_ADDRECORD:
        return Give((SHORT)HGAddRecord(gw, (LPCVOID)lParam, (BOOL)wParam));
    case HGM_DELETERECORD:
        return Give(HGDeleteRecord(gw, Arg16(wParam), FALSE));
    case HGM_INSERTRECORD:
        return Give(HGInsertRecord(gw, (LPCVOID)lParam, Arg16(wParam), FALSE));
    case HGM_MOVERECORD:
        return Give(HGMoveRecord(grid, Arg16(wParam), (SHORT)LOWORD(lParam)));
    case HGM_GETROWBASE:
        return Give(gw->rowBase);
    case HGM_SETROWBASE:
        gw->rowBase = (LONG)wParam > (LONG)lParam ? (LONG)wParam : (LONG)lParam;
        return Give(gw->rowBase);
    case HGM_GETCURRECORD:
        return Give(lParam ? HGRecordIO(grid, gw->curRow, (LPVOID)lParam, FALSE) : 0);
    case HGM_FINDFIELD:
        return Give(FindField(gw, (LPCSTR)lParam));
    case HGM_GETFIELDORDER:
        return Give(GetFieldOrder(gw, (LONG*)lParam));
    case HGM_SETFIELDORDER:
        return Give(SetFieldOrder(gw, (const LONG*)lParam));
    case HGM_GETDATAPROC:
        return Give((LRESULT)gw->dataProc);
    case HGM_SETDATAPROC:
        return Give(SetDataProc(gw, (HGridDataProc)lParam));
    case HGM_GETTOTAL:
        return Give(gw->totalRecords);
    case HGM_SETTOTAL:
        return Give(SetTotal(gw, (LONG)lParam));
    case HGM_GETCACHESIZE:
        return Give(gw->cacheSize);
    case HGM_SETCACHESIZE:
        return Give(SetCacheSize(gw, (LONG)lParam));
    case HGM_SETSTYLEBITS:
        grid->style = Switch<DWORD>(grid->style, wParam != 0, (DWORD)lParam);
        return Give(1);
    case HGM_GETSTOREDPOS:
        return Give(HGMapPosOf(grid, Arg16(wParam)));
    case HGM_GETFIELDATPOS:
        return Give(FieldAtPos(gw, Arg16(wParam)));
    case HGM_RECORDTOROW:
        return Give(RecordToRow(gw, (LONG)lParam));
    case HGM_GETNOTIFYCELL:
        return Give(Pack(gw->notifyCol, gw->notifyRow));
    case HGM_SETNOTIFYCELL:
        return Give(SetNotifyCell(gw, lParam));
    case HGM_GETHSCROLLPOS:
        return Give(gw->hScrollPos);
    case HGM_GETVSCROLLPOS:
        return Give(gw->vScrollPos);
    case HGM_SETHSCROLLPOS:
        SilentScroll(gw, Arg16(wParam) - gw->hScrollPos, 0);
        return Give(Alive(hWnd, gw) ? gw->hScrollPos : 0);
    case HGM_SETVSCROLLPOS:
        SilentScroll(gw, 0, (Arg16(wParam) - gw->vScrollPos) * gw->vScale);
        return Give(Alive(hWnd, gw) ? gw->vScrollPos : 0);
    case HGM_GETVSCROLLMAX:
        return Give(VScrollMax(gw));
    case HGM_GETHSCROLLMAX:
        return Give(gw->hScrollMax);
    case HGM_GETSELROWS:
        return Give(lParam ? SelectedRows(gw, (LONG*)lParam, Arg16(wParam)) : 0);
    case HGM_GETSELCOUNT:
        return Give(SelectedRows(gw, nullptr, 0));
    case HGM_TOGGLEROW:
        HGMultiSelect(gw, -1, Arg16(wParam), FALSE, TRUE);
        return Give(Alive(hWnd, gw) ? HGRowSelected(gw, Arg16(wParam)) : 0);
    case HGM_GETROWSTATUS:
    case HGM_SETROWSTATUS:
        return RowStatus(gw, Arg16(wParam), msg == HGM_SETROWSTATUS, lParam);
    case HGM_GETRECORD:
    case HGM_SETRECORD:
        return Give(lParam ? HGRecordIO(grid, Arg16(wParam), (LPVOID)lParam, msg == HGM_SETRECORD) : 0);
    case HGM_GETMIRROR:
        return Give((LRESULT)gw->recordMirror);
    case HGM_SETMIRROR:
        return Give(SetMirror(gw, (LPVOID)lParam));
    case HGM_GETRECORDSIZE:
        return Give(CellAreaSize(gw));
    case HGM_ISROWSELECTED:
        return Give(HGRowSelected(gw, Arg16(wParam)));
    case HGM_CTLCOLOR: {
        bool answered;
        LRESULT brush = ForwardColorRequest(gw, wParam, &answered);
        return answered ? Give(brush) : kDefault;
    }
    }
    return kDefault;
}

// ---- Field messages ----

LRESULT CopyWhole(LPCSTR text, LPARAM out)
{
    if (!out)
        return 0;
    strcpy((LPSTR)out, text ? text : "");
    return 1;
}

LRESULT Length(LPCSTR text) { return text ? (LRESULT)strlen(text) : 0; }

void InvalidateColumn(HGridWindow* gw, int index)
{
    HGridInvalidateRange(gw->hWnd, index, -1, index, -1);
}

HWND EditorWindow(const HGField* field)
{
    return field->editor && IsWindow(field->editor->hWnd) ? field->editor->hWnd : nullptr;
}

LRESULT SetFormat(HGridWindow* gw, HGField* field, int index, LPCSTR text)
{
    if (!text)
        return 1;
    if (!HStrReplace(&field->format, text))
        return 0;
    if (HWND editor = EditorWindow(field))
        SendMessageA(editor, HM_SETMASK, 1, (LPARAM)field->format);
    if (IsWindow(gw->hWnd))
        InvalidateColumn(gw, index);
    return 1;
}

LRESULT SetTitle(HGridWindow* gw, HGField* field, int index, LPCSTR text)
{
    if (!text)
        return 1;
    if (!HStrReplace(&field->title, text))
        return 0;
    HGridInvalidateCell(gw->hWnd, index, -1);
    return 1;
}

LRESULT SetWidth(HGridWindow* gw, HGField* field, int index, LONG width)
{
    field->width = Clamp(width, kHGMinRowHeight, kHGMaxExtent);
    HGridInvalidateRange(gw->hWnd, index, -1, FieldCount(gw->grid) - 1, -1);
    return 1;
}

LRESULT SetHeight(HGField* field, LONG height)
{
    field->height = (SHORT)height;
    if (field->editorKind == 'c')
        if (HWND editor = EditorWindow(field))
            SendMessageA(editor, HCM_SETDROPHEIGHT, (WPARAM)field->height, 0);
    return 1;
}

Answer FieldMessage(HGridWindow* gw, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == 0x5A4 || msg == 0x5A5)
        return kDefault; // numbers of the block that no field message takes
    SHORT pos = Arg16(wParam);
    // A position outside the fields addresses none, whatever the map holds.
    if (pos < 0 || pos >= FieldCount(gw->grid))
        return Give(0);
    int index = MapEntryAt(gw->grid, pos);
    HGField* field = HGFieldAtStoragePos(gw->grid, pos);
    if (!field)
        return Give(0);
    switch (msg) {
    case HGM_FLD_GETEDITOR:
        return Give((LRESULT)EditorWindow(field));
    case HGM_FLD_GETEDITORSTYLE:
        return Give(field->editorStyle);
    case HGM_FLD_GETEDITORKIND:
        return Give((BYTE)field->editorKind);
    case HGM_FLD_GETCLASS2:
        return Give((BYTE)field->classLetter2);
    case HGM_FLD_GETTYPE2:
        return Give((BYTE)field->typeLetter2);
    case HGM_FLD_GETCLASS:
        return Give((BYTE)field->classLetter);
    case HGM_FLD_GETSIZE:
        return Give(field->size);
    case HGM_FLD_GETTYPE:
        return Give((BYTE)field->typeLetter);
    case HGM_FLD_GETFORMAT:
        return Give(CopyWhole(field->format, lParam));
    case HGM_FLD_GETFORMATLEN:
        return Give(Length(field->format));
    case HGM_FLD_SETFORMAT:
        return Give(SetFormat(gw, field, index, (LPCSTR)lParam));
    case HGM_FLD_GETTITLE:
        return Give(CopyWhole(field->title, lParam));
    case HGM_FLD_GETTITLELEN:
        return Give(Length(field->title));
    case HGM_FLD_SETTITLE:
        return Give(SetTitle(gw, field, index, (LPCSTR)lParam));
    case HGM_FLD_GETWIDTH:
        return Give(field->width);
    case HGM_FLD_SETWIDTH:
        return Give(SetWidth(gw, field, index, (LONG)lParam));
    case HGM_FLD_GETHEIGHT:
        return Give(field->height);
    case HGM_FLD_SETHEIGHT:
        return Give(SetHeight(field, (LONG)lParam));
    case HGM_FLD_GETFLAGS:
        return Give(field->flags);
    case HGM_FLD_SETFLAGS:
        field->flags = Switch<WORD>(field->flags, LOWORD(lParam) != 0, HIWORD(lParam));
        InvalidateColumn(gw, index);
        return Give(1);
    case HGM_FLD_GETOFFSET:
        return Give(field->offset);
    }
    return Give(0); // HGM_FLD_RESERVED
}

} // namespace

LRESULT HGridMessage(HGridWindow* gw, UINT msg, WPARAM wParam, LPARAM lParam, LPBOOL notHandled)
{
    if (!gw->grid)
        return DefaultProcessing(gw, msg, wParam, lParam, notHandled);
    HWND hWnd = gw->hWnd;
    Answer answer;
    if (msg >= HGM_SETGRID && msg < HGM_FLD_GETEDITOR)
        answer = BlockMessage(gw, msg, wParam, lParam);
    else if (msg >= HGM_FLD_GETEDITOR && msg < HGM_CTLCOLOR)
        answer = FieldMessage(gw, msg, wParam, lParam);
    else if (msg == HGM_CTLCOLOR)
        answer = BlockMessage(gw, msg, wParam, lParam);
    else
        answer = StandardMessage(gw, msg, wParam, lParam);
    if (!answer.fallThrough)
        return answer.result;
    // The record may have gone with the window in a notification on the way.
    if (!IsWindow(hWnd) || (HGridWindow*)GetWindowLongA(hWnd, 0) != gw) {
        *notHandled = TRUE;
        return 0;
    }
    return DefaultProcessing(gw, msg, wParam, lParam, notHandled);
}
