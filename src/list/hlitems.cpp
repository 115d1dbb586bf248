// The item store of HList: typed items with optional codes in two parallel
// HLLists, their marks and selection, and the links into application memory.
#include "list/hlist.h"
#include "frame/frame.h"

#include <string.h>

namespace {

// Bytes of a value buffer for a parsed text: more than the largest fixed type.
constexpr int kParseBufferSize = 64;

bool HLHasCode(const HListRecord* r) { return r->codeList && (r->base.wFlags & HLF_HASCODE); }

bool HLIsExtended(const HListRecord* r) { return (r->base.dwStyle & HLS_EXTENDED) != 0; }

// Element k of an application array: packed values, or 32-bit pointers to strings.
LPVOID HLArrayAt(LPCVOID items, LONG k, LONG itemSize)
{
    if (itemSize < 0)
        return ((LPVOID const*)items)[k];
    return (LPVOID)((const BYTE*)items + (SIZE_T)k * (SIZE_T)itemSize);
}

// Bytes of a payload: the item size, or the text with its terminator.
SIZE_T HLValueSize(const HLList* list, LPCVOID payload)
{
    return list->itemSize < 0 ? strlen((LPCSTR)payload) + 1 : (SIZE_T)list->itemSize;
}

HLItem* HLNodeAt(HLList* list, LONG index)
{
    if (!list || index < 0 || index >= list->count)
        return nullptr;
    return (HLItem*)HLListGetItem(list, index);
}

// Keeps caret and anchor on their items after an insertion at i; one on the
// last item of the list as it was stays where it is.
void HLShiftForInsert(HListRecord* r, LONG i, LONG last)
{
    if (i <= r->caret && r->caret < last)
        ++r->caret;
    if (i <= r->anchor && r->anchor < last)
        ++r->anchor;
}

void HLShiftForRemove(HListRecord* r, LONG index)
{
    if (index <= r->caret)
        --r->caret;
    if (index <= r->anchor)
        --r->anchor;
}

// Removes item index from both lists, with no message to anyone.
void HLRemoveBoth(HListRecord* r, LONG index)
{
    HLListRemove(r->dataList, index);
    if (HLHasCode(r))
        HLListRemove(r->codeList, index);
    HLShiftForRemove(r, index);
}

// Steps 2 to 6 of a selection change on one valid item.
BOOL HLSelectOne(HListRecord* r, LONG index, UINT mode, BOOL commit, bool oneItemQuiet)
{
    HLItem* node = HLNodeAt(r->dataList, index);
    if (!node)
        return 0;
    const BOOL was = HLIsItemSelected(r, index);
    bool repaint = false, erase = false;
    switch (mode) {
    case HLSEL_CLEAR:
        node->flags &= (WORD)~HL_SELECTED;
        repaint = erase = was != 0;
        if (oneItemQuiet && (r->base.dwStyle & HLS_ONEITEM) && GetFocus() == r->base.hWnd)
            repaint = false;
        break;
    case HLSEL_SET:
        node->flags |= HL_SELECTED;
        repaint = !was;
        break;
    case HLSEL_TOGGLE:
        node->flags ^= HL_SELECTED;
        repaint = true;
        erase = !(node->flags & HL_SELECTED);
        break;
    default:
        return 0;
    }
    if (repaint) {
        RECT rc;
        if (HListItemRect(r, index, &rc)) {
            ++rc.right;
            ++rc.bottom;
            InvalidateRect(r->base.hWnd, &rc, erase);
        }
        if (commit && index == r->caret)
            r->base.wFlags ^= HLF_RANGESET;
    }
    return 1;
}

// Writes the pending extended range into the items, when a new one begins.
void HLCommitRange(HListRecord* r, BOOL commit)
{
    if (!commit || !HLIsExtended(r))
        return;
    HLSelectRange(r, r->anchor, r->caret, r->base.wFlags & HLF_RANGESET);
    r->anchor = r->caret;
}

LONG HLFindIn(HLList* list, LPCVOID key, LONG start)
{
    if (!list || !key)
        return -1;
    LONG found = 0;
    return HLListFind(list, key, start, &found) ? found : -1;
}

// The selection by a found index that HLSelectData, HLSelectCode and the links share.
LONG HLSelectFound(HListRecord* r, LONG index, UINT mode)
{
    if (r->base.wFlags & HLF_SINGLE) {
        HListSetCaret(r, index, FALSE);
        r->base.wFlags &= (WORD)~HCTLF_MODIFIED;
        return index != -1;
    }
    return HLSelect(r, index, mode, TRUE);
}

// A text given for a value of a fixed size: parsed into buf, or, for a
// number of type letter s, its bytes taken as they stand but within buf.
LPVOID HLTextValue(HListRecord* r, char cls, char type, LPCSTR mask, LPCSTR text, BYTE* buf, LONG itemSize)
{
    if (type == HTYPE_STRING) {
        if (itemSize < 0)
            return (LPVOID)text;
        lstrcpynA((LPSTR)buf, text, kParseBufferSize);
        return buf;
    }
    ParseData(r->base.hWnd, buf, cls, type, mask, text, nullptr);
    return buf;
}

} // namespace

// ---- Callbacks of the two HLLists ----

// A null data gives a zero-filled value (an empty string), so that an item
// added without a code still has its place in the code list.
LPVOID CALLBACK HLItemAlloc(HLList* list, LPVOID data)
{
    if (!list)
        return nullptr;
    SIZE_T size = data ? HLValueSize(list, data) : (list->itemSize < 0 ? 1 : (SIZE_T)list->itemSize);
    HLItem* item = (HLItem*)GlobalAlloc(GPTR, size + kHLItemHead);
    if (item && data)
        memcpy(item->payload, data, size);
    return item;
}

LONG CALLBACK HLItemCompare(HLList* list, LPCVOID key, LPVOID node)
{
    if (!list || !list->pfnDataCompare || !node)
        return 0;
    return list->pfnDataCompare(key, ((HLItem*)node)->payload);
}

LPVOID CALLBACK HLItemData(HLList*, LPVOID node)
{
    return node ? ((HLItem*)node)->payload : nullptr;
}

// ---- Routines on a record ----

HListRecord* HLRecordOf(HWND hWnd)
{
    char name[16] = "";
    if (!hWnd || !IsWindow(hWnd) || !GetClassNameA(hWnd, name, sizeof name))
        return nullptr;
    if (lstrcmpiA(name, HLIST_CLASS) != 0 && lstrcmpiA(name, HDROP_CLASS) != 0)
        return nullptr;
    return (HListRecord*)SendMessageA(hWnd, HM_GETPTR, 0, 0);
}

LONG HLCount(const HListRecord* r)
{
    return r && r->dataList ? r->dataList->count : 0;
}

LPVOID HLPayload(HLList* list, LONG index)
{
    HLItem* node = HLNodeAt(list, index);
    return node ? node->payload : nullptr;
}

LONG HLInsertRec(HListRecord* r, LONG index, LPVOID data, LPVOID code)
{
    if (!r || !data || !r->dataList)
        return -1;
    const DWORD style = r->base.dwStyle;
    const bool hasCode = HLHasCode(r);
    const LONG last = HLCount(r) - 1;
    LONG i = index;
    if (!(style & (HLS_SORTDATA | HLS_SORTCODE))) {
        i = HLListInsert(r->dataList, index, data);
        if (hasCode)
            HLListInsert(r->codeList, i, code);
    } else if ((style & HLS_SORTCODE) && hasCode) {
        i = HLListAdd(r->codeList, code);
        HLListInsert(r->dataList, i, data);
    } else if (style & HLS_SORTDATA) {
        i = HLListAdd(r->dataList, data);
        if (hasCode)
            HLListInsert(r->codeList, i, code);
    }
    // Sorted by code without a code list: nothing is inserted, and index goes on.
    HLShiftForInsert(r, i, last);
    if (!(r->base.wFlags & HLF_BATCH))
        HListLayout(r);
    return i;
}

// 1 when removed, 0 for a bad index, -1 when the owner destroyed the window
// while told of the deletion.
static LONG HLDeleteOne(HListRecord* r, LONG index)
{
    if (!r || index < 0 || index >= HLCount(r))
        return 0;
    if (r->base.dwStyle & HLS_OWNERDRAW) {
        HWND self = r->base.hWnd;
        DELETEITEMSTRUCT dis = {ODT_LISTBOX, r->base.wId, (UINT)index, self, (ULONG_PTR)HLItemValue(r, index)};
        SendMessageA(r->base.hNotify, WM_DELETEITEM, r->base.wId, (LPARAM)&dis);
        if (!IsWindow(self))
            return -1;
        if (index >= HLCount(r))
            return 0; // the owner removed items meanwhile
    }
    HLRemoveBoth(r, index);
    if (!(r->base.wFlags & HLF_BATCH))
        HListLayout(r);
    return 1;
}

BOOL HLDeleteRec(HListRecord* r, LONG index)
{
    return HLDeleteOne(r, index) > 0;
}

DWORD HLItemValue(HListRecord* r, LONG index)
{
    if (!r || index == -1)
        return 0;
    if (HLHasCode(r) && r->codeClass == HCLASS_NUMBER && r->codeType == 'W') {
        LPVOID code = HLPayload(r->codeList, index);
        DWORD word = 0;
        if (code)
            memcpy(&word, code, sizeof word);
        return word;
    }
    return (DWORD)(ULONG_PTR)HLPayload(r->dataList, index);
}

BOOL HLMark(HListRecord* r, UINT how, LONG count, LPCVOID items)
{
    if (!r || !r->dataList)
        return 0;
    HLList* data = r->dataList;
    switch (how) {
    case HLMARK_ALL: {
        HLItem* node = (HLItem*)data->first;
        for (LONG i = 0; i < data->count && node; ++i, node = node->next)
            node->flags |= HL_MARKED;
        return 1;
    }
    case HLMARK_BYDATA:
    case HLMARK_BYCODE: {
        if (how == HLMARK_BYCODE && !HLHasCode(r))
            return 0;
        HLList* list = how == HLMARK_BYCODE ? r->codeList : data;
        if (count <= 0 || !items)
            return 1;
        for (LONG k = 0; k < count; ++k) {
            LONG found = 0;
            HLItem* node = (HLItem*)HLListFind(list, HLArrayAt(items, k, list->itemSize), 0, &found);
            if (node)
                node->flags |= HL_MARKED;
        }
        return 1;
    }
    case HLMARK_BYINDEX:
        for (LONG k = 0; items && k < count; ++k) {
            HLItem* node = HLNodeAt(data, ((const LONG*)items)[k]);
            if (node)
                node->flags |= HL_MARKED;
        }
        return 1;
    case HLMARK_SELECTED:
    case HLMARK_UNSELECTED:
        for (LONG i = 0; i < data->count; ++i) {
            const bool on = (HLIsItemSelected(r, i) != 0) == (how == HLMARK_SELECTED);
            HLItem* node = HLNodeAt(data, i);
            if (on)
                node->flags |= HL_MARKED;
            else
                node->flags &= (WORD)~HL_MARKED;
        }
        return 1;
    }
    return 0;
}

BOOL HLIsItemSelected(HListRecord* r, LONG index)
{
    if (!r)
        return 0;
    if (HLIsExtended(r)) {
        LONG lo = r->anchor < r->caret ? r->anchor : r->caret;
        LONG hi = r->anchor < r->caret ? r->caret : r->anchor;
        if (index >= lo && index <= hi)
            return r->base.wFlags & HLF_RANGESET;
    }
    HLItem* node = HLNodeAt(r->dataList, index);
    return node ? (node->flags & HL_SELECTED) != 0 : 0;
}

BOOL HLSelect(HListRecord* r, LONG index, UINT mode, BOOL commit)
{
    if (!r || index < 0 || index >= HLCount(r))
        return 0;
    HLCommitRange(r, commit);
    return HLSelectOne(r, index, mode, commit, true);
}

BOOL HLSelectMarked(HListRecord* r, UINT mode, UINT how, LONG count, LPCVOID items, BOOL commit)
{
    if (!r)
        return 0;
    HLCommitRange(r, commit);
    if (!HLMark(r, how, count, items))
        return 0;
    HLList* list = how == HLMARK_BYCODE ? r->codeList : r->dataList;
    for (LONG i = 0; i < list->count; ++i) {
        HLItem* node = HLNodeAt(list, i);
        if (!node || !(node->flags & HL_MARKED))
            continue;
        node->flags &= (WORD)~HL_MARKED;
        HLSelectOne(r, i, mode, commit, false);
    }
    return 1;
}

LONG HLSelectRange(HListRecord* r, LONG first, LONG last, UINT mode)
{
    const LONG n = HLCount(r);
    if (n <= 0)
        return 0;
    first = first < 0 ? 0 : (first >= n ? n - 1 : first);
    last = last < 0 ? 0 : (last >= n ? n - 1 : last);
    if (first > last) {
        LONG t = first;
        first = last;
        last = t;
    }
    r->base.wFlags |= HLF_BATCH;
    LONG sum = 0;
    for (LONG i = first; i <= last; ++i)
        sum += HLSelect(r, i, mode, FALSE);
    r->base.wFlags &= (WORD)~HLF_BATCH;
    return sum;
}

BOOL HLWriteLinks(HListRecord* r)
{
    if (!r || r->caret < 0 || r->caret >= HLCount(r))
        return 0;
    BOOL any = 0;
    LPVOID value = HLPayload(r->dataList, r->caret);
    if (r->dataLink && value) {
        memcpy(r->dataLink, value, HLValueSize(r->dataList, value));
        any = 1;
    }
    if (HLHasCode(r) && r->codeLink) {
        LPVOID code = HLPayload(r->codeList, r->caret);
        if (code) {
            memcpy(r->codeLink, code, HLValueSize(r->codeList, code));
            any = 1;
        }
    }
    return any;
}

// ---- Exports ----

extern "C" LONG QUILLAPI HLInsertItemEx(HWND hWnd, LONG index, LPVOID data, LPVOID code)
{
    return HLInsertRec(HLRecordOf(hWnd), index, data, code);
}

extern "C" LONG QUILLAPI HLAddItem(HWND hWnd, LPVOID data) { return HLInsertItemEx(hWnd, -1, data, nullptr); }

extern "C" LONG QUILLAPI HLAddItemEx(HWND hWnd, LPVOID data, LPVOID code)
{
    return HLInsertItemEx(hWnd, -1, data, code);
}

extern "C" LONG QUILLAPI HLInsertItem(HWND hWnd, LONG index, LPVOID data)
{
    return HLInsertItemEx(hWnd, index, data, nullptr);
}

// A parse failure is not looked at: the buffer then holds what ParseData left.
extern "C" LONG QUILLAPI HLInsertStringEx(HWND hWnd, LONG index, LPCSTR dataText, LPCSTR codeText)
{
    HListRecord* r = HLRecordOf(hWnd);
    if (!r || !dataText || !r->dataList)
        return -1;
    BYTE dataBuf[kParseBufferSize] = {0}, codeBuf[kParseBufferSize] = {0};
    LPVOID data = HLTextValue(r, r->dataClass, r->dataType, r->maskText, dataText, dataBuf, r->dataList->itemSize);
    if (!IsWindow(hWnd))
        return -1; // a bad date's notification may have destroyed us
    LPVOID code = nullptr;
    const LONG codeSize = r->codeList ? r->codeList->itemSize : -1;
    if (codeText && r->codeType == HTYPE_STRING)
        code = HLTextValue(r, r->codeClass, r->codeType, nullptr, codeText, codeBuf, codeSize);
    else if (codeText && HLHasCode(r)) {
        code = HLTextValue(r, r->codeClass, r->codeType, nullptr, codeText, codeBuf, codeSize);
        if (!IsWindow(hWnd))
            return -1;
    }
    return HLInsertRec(r, index, data, code);
}

extern "C" LONG QUILLAPI HLInsertItemsEx(HWND hWnd, LONG index, LONG count, LPVOID items, LPVOID codes)
{
    HListRecord* r = HLRecordOf(hWnd);
    if (!r || !items || !r->dataList)
        return -1;
    const LONG before = HLCount(r);
    r->base.wFlags |= HLF_BATCH;
    for (LONG k = 0; k < count; ++k) {
        LPVOID data = HLArrayAt(items, k, r->dataList->itemSize);
        LPVOID code = (HLHasCode(r) && codes) ? HLArrayAt(codes, k, r->codeList->itemSize) : nullptr;
        HLInsertRec(r, index < 0 ? index : index + k, data, code);
    }
    r->base.wFlags &= (WORD)~HLF_BATCH; // ends an HLM_SETREDRAW off as well
    HListLayout(r);
    return HLCount(r) - before;
}

extern "C" LONG QUILLAPI HLAddItems(HWND hWnd, LONG count, LPVOID items)
{
    return HLInsertItemsEx(hWnd, -1, count, items, nullptr);
}

extern "C" LONG QUILLAPI HLAddItemsEx(HWND hWnd, LONG count, LPVOID items, LPVOID codes)
{
    return HLInsertItemsEx(hWnd, -1, count, items, codes);
}

extern "C" LONG QUILLAPI HLInsertItems(HWND hWnd, LONG index, LONG count, LPVOID items)
{
    return HLInsertItemsEx(hWnd, index, count, items, nullptr);
}

extern "C" BOOL QUILLAPI HLDeleteItem(HWND hWnd, LONG index)
{
    return HLDeleteOne(HLRecordOf(hWnd), index) > 0;
}

extern "C" BOOL QUILLAPI HLDeleteItems(HWND hWnd, UINT how, LONG count, LPVOID items)
{
    HListRecord* r = HLRecordOf(hWnd);
    if (!r || !r->dataList)
        return 0;
    if (how == HLMARK_ALL) {
        // Only this way tells an owner-draw parent of each item.
        const WORD batch = r->base.wFlags & HLF_BATCH;
        r->base.wFlags |= HLF_BATCH;
        LONG step;
        while ((step = HLDeleteOne(r, 0)) > 0)
            ;
        if (step < 0)
            return 1; // destroyed by the owner: the record is gone
        HListLayout(r);
        r->base.wFlags = (WORD)((r->base.wFlags & ~HLF_BATCH) | batch);
        return 1;
    }
    if (!HLMark(r, how, count, items))
        return 0;
    HLList* list = how == HLMARK_BYCODE ? r->codeList : r->dataList;
    for (LONG i = 0; i < list->count;) {
        HLItem* node = HLNodeAt(list, i);
        if (node && (node->flags & HL_MARKED))
            HLRemoveBoth(r, i);
        else
            ++i;
    }
    HListLayout(r);
    return 1;
}

extern "C" BOOL QUILLAPI HLEmptyList(HWND hWnd)
{
    return HLRecordOf(hWnd) ? HLDeleteItems(hWnd, HLMARK_ALL, 0, nullptr) : 0;
}

extern "C" BOOL QUILLAPI HLMarkItems(HWND hWnd, UINT how, LONG count, LPVOID items)
{
    return HLMark(HLRecordOf(hWnd), how, count, items);
}

extern "C" BOOL QUILLAPI HLSelectItem(HWND hWnd, LONG index, UINT mode)
{
    return HLSelect(HLRecordOf(hWnd), index, mode, TRUE);
}

extern "C" BOOL QUILLAPI HLSelectItems(HWND hWnd, UINT mode, UINT how, LONG count, LPVOID items)
{
    return HLSelectMarked(HLRecordOf(hWnd), mode, how, count, items, TRUE);
}

extern "C" LONG QUILLAPI HLSelectData(HWND hWnd, LPVOID key, UINT mode)
{
    HListRecord* r = HLRecordOf(hWnd);
    if (!r)
        return 0;
    return HLSelectFound(r, HLFindIn(r->dataList, key, 0), mode);
}

extern "C" LONG QUILLAPI HLSelectCode(HWND hWnd, LPVOID key, UINT mode)
{
    HListRecord* r = HLRecordOf(hWnd);
    if (!r)
        return 0;
    return HLSelectFound(r, HLHasCode(r) ? HLFindIn(r->codeList, key, 0) : -1, mode);
}

extern "C" BOOL QUILLAPI HLIsSelected(HWND hWnd, LONG index)
{
    return HLIsItemSelected(HLRecordOf(hWnd), index);
}

extern "C" LONG QUILLAPI HLFindData(HWND hWnd, LONG start, LPVOID key)
{
    HListRecord* r = HLRecordOf(hWnd);
    return r ? HLFindIn(r->dataList, key, start) : -1;
}

extern "C" LONG QUILLAPI HLFindCode(HWND hWnd, LONG start, LPVOID key)
{
    HListRecord* r = HLRecordOf(hWnd);
    return r && HLHasCode(r) ? HLFindIn(r->codeList, key, start) : -1;
}

// Copies a whole value; for a string the caller's buffer is taken on trust.
static LONG HLCopyOut(HLList* list, LONG index, LPVOID out)
{
    LPVOID value = HLPayload(list, index);
    if (!value || !out)
        return 0;
    SIZE_T size = HLValueSize(list, value);
    memcpy(out, value, size);
    return (LONG)size;
}

extern "C" LONG QUILLAPI HLGetData(HWND hWnd, LONG index, LPVOID out)
{
    HListRecord* r = HLRecordOf(hWnd);
    return r ? HLCopyOut(r->dataList, index, out) : 0;
}

extern "C" LONG QUILLAPI HLGetCode(HWND hWnd, LONG index, LPVOID out)
{
    HListRecord* r = HLRecordOf(hWnd);
    return r && HLHasCode(r) ? HLCopyOut(r->codeList, index, out) : 0;
}

// Overwrites a fixed-size code in place; a code list in order, or of strings, refuses.
extern "C" BOOL QUILLAPI HLSetCode(HWND hWnd, LONG index, LPVOID value)
{
    HListRecord* r = HLRecordOf(hWnd);
    if (!r || !value || !HLHasCode(r) || (r->base.dwStyle & HLS_SORTCODE) || r->codeList->itemSize < 0)
        return 0;
    LPVOID code = HLPayload(r->codeList, index);
    if (!code)
        return 0;
    memcpy(code, value, (SIZE_T)r->codeList->itemSize);
    return 1;
}

extern "C" BOOL QUILLAPI HLGetItems(HWND hWnd, LONG count, UINT what, LPVOID out, UINT how, LPVOID items)
{
    HListRecord* r = HLRecordOf(hWnd);
    if (!r || !HLMark(r, how, count, items))
        return 0;
    if (!out)
        return 1;
    HLList* marks = how == HLMARK_BYCODE ? r->codeList : r->dataList;
    HLList* source = what == HLGET_CODE ? (HLHasCode(r) ? r->codeList : nullptr) : r->dataList;
    BYTE* packed = (BYTE*)out;
    LONG given = 0;
    for (LONG i = 0; i < marks->count && given < count; ++i) {
        HLItem* node = HLNodeAt(marks, i);
        if (!node || !(node->flags & HL_MARKED))
            continue;
        if ((what == HLGET_DATA || what == HLGET_CODE) && source) {
            LPVOID value = HLPayload(source, i);
            if (source->itemSize < 0) {
                LPSTR target = ((LPSTR*)out)[given];
                if (target && value)
                    strcpy(target, (LPCSTR)value);
            } else {
                if (value)
                    memcpy(packed, value, (SIZE_T)source->itemSize);
                packed += source->itemSize;
            }
            ++given;
        } else if (what == HLGET_INDEX) {
            ((LONG*)out)[given++] = i;
        }
    }
    return 1;
}

static BOOL HLSetLink(HWND hWnd, LPVOID link, BOOL select, bool code)
{
    HListRecord* r = HLRecordOf(hWnd);
    if (!r)
        return 0;
    (code ? r->codeLink : r->dataLink) = link;
    if (select) {
        LONG index = -1;
        if (!code)
            index = HLFindIn(r->dataList, link, 0);
        else if (HLHasCode(r))
            index = HLFindIn(r->codeList, link, 0);
        HLSelectFound(r, index, HLSEL_SET);
    }
    HLWriteLinks(r);
    return 1;
}

extern "C" BOOL QUILLAPI HLSetDataLink(HWND hWnd, LPVOID link, BOOL select)
{
    return HLSetLink(hWnd, link, select, false);
}

extern "C" BOOL QUILLAPI HLSetCodeLink(HWND hWnd, LPVOID link, BOOL select)
{
    return HLSetLink(hWnd, link, select, true);
}
