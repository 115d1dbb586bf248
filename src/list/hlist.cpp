// HList: registration, window procedure and class handler; layout, scrolling,
// the caret, and selection by mouse and keyboard.
#include "list/hlist.h"
#include "draw/draw.h"
#include "edit/typed.h"
#include "frame/frame.h"
#include "frame/strings.h"

#include <string.h>

// The caret at the last button press, for all lists: the mouse holds one at a time.
static LONG g_prevCaret;

namespace {

constexpr int kItemTextSize = 128; // 127 characters and the terminator
constexpr int kCurValueSize = 256; // work buffer of HLM_GETCURDATA and HLM_GETCURCODE
constexpr int kSampleItems = 25;

bool IsMulti(const HListRecord* r) { return (r->base.dwStyle & HLS_MULTICOLUMN) != 0; }
bool IsOneItem(const HListRecord* r) { return (r->base.dwStyle & HLS_ONEITEM) != 0; }
bool HasFocus(const HListRecord* r) { return GetFocus() == r->base.hWnd; }
LONG Partial(const HListRecord* r) { return (r->base.wFlags & HLF_PARTIAL) ? 1 : 0; }
int ScrollBar(const HListRecord* r) { return IsMulti(r) ? SB_HORZ : SB_VERT; }
LONG Clamp(LONG v, LONG lo, LONG hi) { return v < lo ? lo : (v > hi ? hi : v); }

void RedrawFrame(HListRecord* r)
{
    RedrawWindow(r->base.hWnd, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
}

// The highest scroll position: in rows, or in columns for a multi-column list.
LONG MaxScroll(const HListRecord* r)
{
    const LONG count = HLCount(r);
    LONG most = IsMulti(r) ? Partial(r) + (count - 1) / r->rows - r->columns + 1 : Partial(r) + count - r->rows;
    return most < 0 ? 0 : most;
}

LONG HitTest(const HListRecord* r, int x, int y)
{
    if (r->rowHeight == 0 || (IsMulti(r) && r->columnWidth <= 0))
        return -1;
    const LONG count = HLCount(r);
    LONG index;
    if (!IsMulti(r)) {
        index = r->topIndex + y / r->rowHeight - (y < 0 ? 1 : 0);
    } else {
        LONG column = r->scrollPos + x / r->columnWidth - (x < 0 ? 1 : 0);
        column = Clamp(column, 0, (count - 1) / r->rows);
        LONG row = Clamp(y / r->rowHeight, 0, r->rows);
        index = r->rows * column + row;
    }
    if (index > count - 1)
        index = count - 1;
    return index < 0 ? 0 : index;
}

void FreeLists(HListRecord* r)
{
    if (r->dataList)
        HLListDestroy(r->dataList);
    if (r->codeList)
        HLListDestroy(r->codeList);
    r->dataList = r->codeList = nullptr;
}

HListRecord* HListCreate(HWND hWnd, const CREATESTRUCTA* cs)
{
    if (!cs)
        return nullptr;
    HListRecord* r = (HListRecord*)HCtlNewRecord(hWnd, cs, sizeof(HListRecord));
    if (!r)
        return nullptr;
    DWORD style = cs->style;
    if (style & HLS_FOCUSBRUSH)
        r->focusBrush = HTypedDefaultFocusBrush();
    if (!(style & HLS_ONEITEM)) {
        if (style & HLS_MULTICOLUMN)
            style &= ~HLS_NOINTEGRAL;
        if (style & HLS_EXTENDED)
            style &= ~HLS_MULTIPLE;
    } else {
        style &= ~(HLS_FOCUSBRUSH | HLS_NOINTEGRAL | HLS_MULTIPLE | HLS_EXTENDED | HLS_MULTICOLUMN | WS_VSCROLL);
    }
    r->base.dwStyle = style;
    if (!(style & (HLS_MULTIPLE | HLS_EXTENDED))) {
        r->base.wFlags |= HLF_SINGLE | HLF_NOCARET;
        r->caret = -1;
    }
    r->rows = r->columns = 1;
    LPCSTR text = (cs->lpszName && !IS_INTRESOURCE(cs->lpszName)) ? cs->lpszName : "";
    if (!HListSetType(r, text)) {
        HListFree(r);
        return nullptr;
    }
    return r;
}

// The answer to HM_GETDATASIZE and HLM_GETCODESIZE: the item size, or the
// length of item index's text in a string list (0 for no such item).
LRESULT ValueSize(HLList* list, SHORT index)
{
    if (!list)
        return 0;
    if (list->itemSize >= 0)
        return list->itemSize;
    LPCSTR text = (LPCSTR)HLPayload(list, index);
    return text ? (LRESULT)strlen(text) : 0;
}

LRESULT ListDataSize(LPVOID record, SHORT index) { return ValueSize(((HListRecord*)record)->dataList, index); }

LRESULT ListSetDataLink(LPVOID record, WPARAM direction, LPVOID link)
{
    return HLSetDataLink(((HListRecord*)record)->base.hWnd, link, direction != 0);
}

constexpr HTypedClass kListTyped = {HTYPED_LIST, nullptr, ListDataSize, ListSetDataLink};

HTypedFields TypedFields(HListRecord* r)
{
    return {&r->backBrush, &r->focusBrush, &r->colorNormal, &r->colorAlt,
            &r->dataClass, &r->dataType,   &r->maskText,    &r->dataLink};
}

// The current value into out: whole, or for a string with a size, cut to it.
LRESULT CurValue(HListRecord* r, HLList* list, SHORT size, LPVOID out)
{
    LPVOID value = HLPayload(list, r->caret);
    if (!value || !out)
        return 0;
    if (size != 0 && list->itemSize < 0) {
        char buffer[kCurValueSize];
        lstrcpynA(buffer, (LPCSTR)value, sizeof buffer);
        if (size < 0)
            return 0;
        lstrcpynA((LPSTR)out, buffer, size);
        return (LRESULT)strlen((LPCSTR)out) + 1;
    }
    SIZE_T bytes = list->itemSize < 0 ? strlen((LPCSTR)value) + 1 : (SIZE_T)list->itemSize;
    memcpy(out, value, bytes);
    return (LRESULT)bytes;
}

// Ends a change of the current item made by the user: links, modified, notice.
void CommitUserChange(HListRecord* r)
{
    HLWriteLinks(r);
    r->base.wFlags |= HCTLF_MODIFIED;
    HCtlNotify(r, HLN_SELCHANGE); // may destroy the window
}

void HListExtendTo(HListRecord* r, LONG index);

// A click on index, by the mouse or the space bar, in each selection model.
void HListClick(HListRecord* r, LONG index, BOOL shift, BOOL ctrl)
{
    HWND self = r->base.hWnd;
    const DWORD style = r->base.dwStyle;
    if (style & HLS_MULTIPLE) {
        HLSelect(r, index, HLSEL_TOGGLE, FALSE);
    } else if (style & HLS_EXTENDED) {
        if (!ctrl) {
            HLSelectMarked(r, HLSEL_CLEAR, HLMARK_ALL, 0, nullptr, !shift);
            if (!shift)
                HListInvalidateItem(r, index, FALSE);
            else
                HListInvalidateRange(r, r->anchor, index, FALSE);
            r->base.wFlags |= HLF_RANGESET;
        } else if (!shift) {
            HLSelect(r, index, HLSEL_TOGGLE, TRUE);
            LPVOID node = HLListGetItem(r->dataList, index);
            bool on = index >= 0 && node && (((HLItem*)node)->flags & HL_SELECTED);
            r->base.wFlags = on ? (r->base.wFlags | HLF_RANGESET) : (r->base.wFlags & ~HLF_RANGESET);
        } else {
            HListExtendTo(r, index);
            if (!IsWindow(self))
                return;
        }
        if (!shift)
            r->anchor = index;
    }
    HListSetCaret(r, index, TRUE);
}

// Moves the caret to index, growing or shrinking the extended range, and
// repaints only the stretch whose state changed.
void HListExtendTo(HListRecord* r, LONG index)
{
    const WORD flags = r->base.wFlags;
    const LONG caret = r->caret, anchor = r->anchor;
    if (index == caret) {
        if (index == HLCount(r) - 1 && (flags & HLF_EXTENDING))
            HListScroll(r, 1);
    } else if ((flags & HLF_EXTENDING) && (r->base.dwStyle & HLS_EXTENDED)) {
        const BOOL on = (flags & HLF_RANGESET) != 0;
        const LONG lo = anchor < caret ? anchor : caret, hi = anchor < caret ? caret : anchor;
        const LONG loNew = index < caret ? index : caret, hiNew = index < caret ? caret : index;
        if (index >= lo && index <= hi) {
            LONG from = index < caret ? index + 1 : index - 1;
            HListInvalidateRange(r, from, caret, on);
        } else if (anchor >= loNew && anchor <= hiNew) {
            HListInvalidateRange(r, anchor, caret, on);
            HListInvalidateRange(r, anchor, index, !on);
        } else {
            HListInvalidateRange(r, index, caret, !on);
        }
    }
    HListSetCaret(r, index, TRUE);
}

void TrackStep(LPVOID record, DWORD point)
{
    HListRecord* r = (HListRecord*)record;
    if (!(r->base.wFlags & HLF_BUTTONDOWN) || IsOneItem(r))
        return;
    POINT p = HSplitPoint(point);
    HListExtendTo(r, HitTest(r, p.x, p.y));
}

void OnButtonDown(HListRecord* r, LPARAM lParam)
{
    HWND self = r->base.hWnd;
    g_prevCaret = r->caret;
    r->base.wFlags |= HLF_BUTTONDOWN | HLF_EXTENDING;
    r->base.wFlags &= (WORD)~HCTLF_VETO;
    POINT p = HSplitPoint((DWORD)lParam);
    LONG index = HitTest(r, p.x, p.y);
    HListClick(r, index, GetKeyState(VK_SHIFT) < 0, GetKeyState(VK_CONTROL) < 0);
    if (!IsWindow(self))
        return;
    UpdateWindow(self);
    SetCapture(self);
    if (!IsOneItem(r))
        HCtlTrackMouse(r, TrackStep, IsMulti(r));
}

void OnButtonUp(HListRecord* r)
{
    if (!(r->base.wFlags & HLF_BUTTONDOWN))
        return;
    r->base.wFlags &= (WORD)~(HLF_BUTTONDOWN | HLF_EXTENDING);
    HWND self = r->base.hWnd;
    ReleaseCapture();
    if (!IsWindow(self) || r->caret == g_prevCaret)
        return;
    CommitUserChange(r);
}

// The target of a navigation key, or -2 for a key that moves nothing.
LONG KeyTarget(HListRecord* r, WPARAM key)
{
    const LONG caret = r->caret, rows = r->rows, last = HLCount(r) - 1;
    switch (key) {
    case VK_PRIOR:
        return IsOneItem(r) ? caret - 5 : caret + (2 - rows > -1 ? -1 : 2 - rows);
    case VK_NEXT:
        return IsOneItem(r) ? caret + 5 : caret + (rows - 2 < 1 ? 1 : rows - 2);
    case VK_END:
        return last;
    case VK_HOME:
        return 0;
    case VK_LEFT:
        if (IsMulti(r))
            return caret - rows < 0 ? caret : caret - rows;
        return caret - 1;
    case VK_UP:
        return caret - 1;
    case VK_RIGHT:
        if (IsMulti(r))
            return caret + rows > last ? caret : caret + rows;
        return caret + 1;
    case VK_DOWN:
        return caret + 1;
    }
    return -2;
}

void OnKeyDown(HListRecord* r, WPARAM key)
{
    const BOOL shift = GetKeyState(VK_SHIFT) < 0;
    switch (key) {
    case VK_TAB:
        SendMessageA(GetParent(r->base.hWnd), WM_NEXTDLGCTL, shift, 0);
        if (IsWindow(r->base.hWnd))
            HCtlNotify(r, shift ? HN_BACKTAB : HN_TAB);
        return;
    case VK_RETURN:
        HCtlNotify(r, HN_ENTER);
        return;
    case VK_ESCAPE:
        HCtlNotify(r, HN_ESCAPE);
        return;
    case VK_F1:
        HCtlNotify(r, HN_HELP);
        return;
    case VK_SPACE:
        HListClick(r, r->caret, shift, FALSE);
        return;
    }
    LONG target = KeyTarget(r, key);
    if (target == -2 || HLCount(r) <= 0)
        return;
    target = Clamp(target, 0, HLCount(r) - 1);
    if (r->base.dwStyle & HLS_MULTIPLE)
        HListExtendTo(r, target);
    else
        HListClick(r, target, shift, FALSE);
}

// Typing search: one character, from the item after the caret, wrapping.
void OnChar(HListRecord* r, WPARAM ch)
{
    char text[2] = {(char)ch, 0};
    LONG found = HListFindText(r, text, r->caret + 1);
    if (found >= 0)
        HListSetCaret(r, found, TRUE);
}

void OnScroll(HListRecord* r, UINT msg, WPARAM wParam)
{
    const int code = LOWORD(wParam);
    const LONG thumb = (SHORT)HIWORD(wParam);
    LONG amount = 0;
    if (msg == WM_HSCROLL) {
        switch (code) {
        case SB_LINELEFT: amount = -1; break;
        case SB_LINERIGHT: amount = 1; break;
        case SB_PAGELEFT: amount = -r->columns; break;
        case SB_PAGERIGHT: amount = r->columns; break;
        case SB_THUMBTRACK: amount = thumb - r->scrollPos; break;
        default: return;
        }
    } else {
        const LONG page = r->rows - 2 < 1 ? 1 : r->rows - 2;
        switch (code) {
        case SB_LINEUP: amount = -1; break;
        case SB_LINEDOWN: amount = 1; break;
        case SB_PAGEUP: amount = -page; break;
        case SB_PAGEDOWN: amount = page; break;
        case SB_THUMBTRACK: amount = thumb - r->scrollPos; break;
        default: return;
        }
    }
    if (IsOneItem(r)) {
        LONG index = r->topIndex + amount;
        HListSetCaret(r, index < 0 ? 0 : index, TRUE); // the arrows step the value
    } else {
        HListScroll(r, amount);
    }
}

void SetTabStops(HListRecord* r, SHORT count, LPARAM lParam)
{
    if (r->tabStops)
        GlobalFree((HGLOBAL)r->tabStops);
    r->tabStops = nullptr;
    r->tabCount = 0;
    if (count <= 0 || (count > 1 && !lParam))
        return;
    r->tabStops = (LONG*)GlobalAlloc(GPTR, sizeof(LONG) * (SIZE_T)count);
    if (!r->tabStops)
        return;
    if (count == 1)
        r->tabStops[0] = lParam < 0 ? 0 : (LONG)lParam;
    else
        memcpy(r->tabStops, (const LONG*)lParam, sizeof(LONG) * (SIZE_T)count);
    r->tabCount = count;
}

void FillSample(HListRecord* r)
{
    if (r->dataClass != HCLASS_STRING || r->codeClass)
        return;
    const WORD batch = r->base.wFlags & HLF_BATCH;
    r->base.wFlags |= HLF_BATCH;
    const char gap = (r->base.dwStyle & HLS_TABS) ? '\t' : ' ';
    for (int i = 1; i <= kSampleItems; ++i) {
        char line[32];
        wsprintfA(line, "Line%c%d", gap, i);
        HLInsertRec(r, -1, line, nullptr);
    }
    SetTabStops(r, 1, 6);
    r->base.wFlags = (WORD)((r->base.wFlags & ~HLF_BATCH) | batch);
    HListLayout(r);
}

LRESULT SelCount(HListRecord* r)
{
    LONG n = 0;
    for (LONG i = 0; i < HLCount(r); ++i)
        n += HLIsItemSelected(r, i) ? 1 : 0;
    return n;
}

LRESULT SelItems(HListRecord* r, SHORT size, LONG* out)
{
    if (!out)
        return 0;
    LONG k = 0;
    for (LONG i = 0; i < HLCount(r) && k < size; ++i)
        if (HLIsItemSelected(r, i))
            out[k++] = i;
    return k;
}

void OnWindowPosChanging(HListRecord* r, WINDOWPOS* wp)
{
    if (!wp || (r->base.dwStyle & (HLS_ONEITEM | HLS_NOINTEGRAL)) || !(r->base.wFlags & HLF_FONTSEEN) ||
        (wp->flags & SWP_NOSIZE))
        return;
    const int b = (r->base.dwStyle & HLS_FRAME3D) ? 4 : 2;
    const LONG h = HListRowHeight(r);
    wp->cy = ((wp->cy - b) / h) * h + b;
}

// The messages of the HList block; FALSE for a number that isn't one of them.
BOOL ListMsg(HListRecord* r, UINT msg, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    HWND hWnd = r->base.hWnd;
    const SHORT w16 = (SHORT)wParam;
    LRESULT res = 0;
    switch (msg) {
    case HLM_GETCOUNT: res = HLCount(r); break;
    case HLM_RESETCONTENT: res = HLEmptyList(hWnd); break;
    case HLM_DELETEITEM: res = HLDeleteItem(hWnd, w16); break;
    case HLM_SELECTITEM:
    case HLM_SELECTITEM2: res = HLSelect(r, (LONG)lParam, (UINT)w16, TRUE); break;
    case HLM_GETDATA: res = HLGetData(hWnd, w16, (LPVOID)lParam); break;
    case HLM_GETCODE: res = HLGetCode(hWnd, w16, (LPVOID)lParam); break;
    case HLM_GETTEXT:
    case HLM_GETTEXTLEN: {
        if (w16 < 0 || w16 >= HLCount(r)) {
            res = -1;
            break;
        }
        char text[kItemTextSize];
        res = HListFormatItem(r, w16, text, sizeof text);
        if (msg == HLM_GETTEXT && lParam)
            memcpy((LPSTR)lParam, text, (SIZE_T)res + 1);
        break;
    }
    case HLM_SETCODE: res = HLSetCode(hWnd, w16, (LPVOID)lParam); break;
    case HLM_FINDTEXT: res = HListFindText(r, (LPCSTR)lParam, w16); break;
    case HLM_SELECTTEXT:
        res = HListFindText(r, (LPCSTR)lParam, w16);
        HListSetCaret(r, (LONG)res, FALSE);
        break;
    case HLM_ADDITEM: res = HLInsertRec(r, -1, (LPVOID)lParam, nullptr); break;
    case HLM_INSERTITEM: res = HLInsertRec(r, w16, (LPVOID)lParam, nullptr); break;
    case HLM_FINDDATA: res = HLFindData(hWnd, w16, (LPVOID)lParam); break;
    case HLM_SELECTDATA: res = HLSelectData(hWnd, (LPVOID)lParam, (UINT)w16); break;
    case HLM_GETCURDATA: res = CurValue(r, r->dataList, w16, (LPVOID)lParam); break;
    case HLM_GETCODECLASS: res = (signed char)r->codeClass; break;
    case HLM_GETCODELINK: res = (LRESULT)r->codeLink; break;
    case HLM_SETCODELINK: res = HLSetCodeLink(hWnd, (LPVOID)lParam, wParam != 0); break;
    case HLM_GETCODESIZE: res = (r->base.wFlags & HLF_HASCODE) ? ValueSize(r->codeList, w16) : 0; break;
    case HLM_GETCODETYPE: res = (signed char)r->codeType; break;
    case HLM_FINDCODE: res = HLFindCode(hWnd, w16, (LPVOID)lParam); break;
    case HLM_SELECTCODE: res = HLSelectCode(hWnd, (LPVOID)lParam, (UINT)w16); break;
    case HLM_GETCURCODE:
        res = (r->base.wFlags & HLF_HASCODE) ? CurValue(r, r->codeList, w16, (LPVOID)lParam) : 0;
        break;
    case HLM_RELAYOUT: HListLayout(r); res = 1; break;
    case HLM_GETCARET: res = r->caret; break;
    case HLM_SETCARET:
        if (lParam) {
            HListInvalidateItem(r, r->caret, TRUE);
            HListInvalidateItem(r, w16, TRUE);
        }
        HListSetCaret(r, w16, FALSE);
        r->base.wFlags &= (WORD)~HCTLF_MODIFIED;
        res = 1;
        break;
    case HLM_ISSELECTED: res = HLIsItemSelected(r, w16); break;
    case HLM_GETSELCOUNT: res = SelCount(r); break;
    case HLM_SELECTRANGE: {
        LONG changed = HLSelectRange(r, (SHORT)LOWORD(lParam), (SHORT)HIWORD(lParam), (UINT)w16);
        res = changed ? 1 : -4;
        break;
    }
    case HLM_GETSELITEMS: res = SelItems(r, w16, (LONG*)lParam); break;
    case HLM_SETCOLUMNWIDTH:
        if (!IsMulti(r))
            break;
        if (w16 > 0) {
            r->columnWidth = w16;
            r->base.wFlags |= HLF_FIXEDWIDTH;
        }
        InvalidateRect(hWnd, nullptr, TRUE);
        res = 1;
        break;
    case HLM_GETVIEWWIDTH: res = r->columns * r->columnWidth; break;
    case HLM_GETITEMRECT: res = lParam ? HListItemRect(r, w16, (LPRECT)lParam) : 0; break;
    case HLM_GETTOPINDEX: res = r->topIndex; break;
    case HLM_SETTOPINDEX:
        HListScroll(r, (w16 - r->topIndex) / (IsMulti(r) ? r->rows : 1));
        res = r->topIndex;
        break;
    case HLM_SCROLL: res = HListScroll(r, w16); break;
    case HLM_SETTABSTOPS: SetTabStops(r, w16, lParam); res = 1; break;
    case HLM_SETREDRAW:
        if (wParam)
            r->base.wFlags &= (WORD)~HLF_BATCH;
        else
            r->base.wFlags |= HLF_BATCH;
        if (wParam && lParam)
            InvalidateRect(hWnd, nullptr, TRUE);
        res = 1;
        break;
    case HLM_GETFLAGS: res = r->base.wFlags; break;
    case HLM_SETFLAGS:
        if (lParam)
            r->base.wFlags |= (WORD)wParam;
        else
            r->base.wFlags &= (WORD)~wParam;
        res = r->base.wFlags;
        break;
    case HLM_FILLSAMPLE: FillSample(r); res = 1; break;
    case HLM_GETSTYLE: res = (LRESULT)r->base.dwStyle; break;
    default: return FALSE;
    }
    *result = res;
    return TRUE;
}

} // namespace

// ---- Routines shared with the item store and the combo ----

// Frees what the record owns, and the record. The tab stops go too.
void HListFree(HListRecord* r)
{
    if (!r)
        return;
    HWND hWnd = r->base.hWnd;
    if (r->maskText)
        GlobalFree((HGLOBAL)r->maskText);
    FreeLists(r);
    if (r->tabStops)
        GlobalFree((HGLOBAL)r->tabStops);
    HCtlFreeRecord(hWnd, r);
}

BOOL HListSetType(HListRecord* r, LPCSTR text)
{
    char buffer[256];
    lstrcpynA(buffer, text ? text : "", sizeof buffer);
    if (r->maskText)
        GlobalFree((HGLOBAL)r->maskText);
    r->maskText = nullptr;
    FreeLists(r);
    r->topIndex = 0;
    char c1 = HCLASS_STRING, t1 = HTYPE_STRING, c2 = 0, t2 = 0;
    LPCSTR rest = GetDataTypes(buffer, &c1, &t1, &c2, &t2);
    r->dataClass = c1;
    r->dataType = t1;
    r->codeClass = c2;
    r->codeType = c2 ? t2 : 0;
    if (c2)
        r->base.wFlags |= HLF_HASCODE;
    else
        r->base.wFlags &= (WORD)~HLF_HASCODE;
    char mask[256];
    lstrcpynA(mask, rest ? rest : "", sizeof mask);
    HTypedParseColors(mask, &r->colorNormal, &r->colorAlt);
    r->maskText = HStrDup(mask);
    const DWORD style = r->base.dwStyle;
    r->dataList = HLListCreate(GetDataSize(c1, t1), HLItemAlloc, HLItemCompare, HDataCompare(c1, t1), nullptr,
                               HLItemData, (style & HLS_SORTDATA) ? 1 : 0);
    if (c2)
        r->codeList = HLListCreate(GetDataSize(c2, t2), HLItemAlloc, HLItemCompare, HDataCompare(c2, t2), nullptr,
                                   HLItemData, (style & HLS_SORTCODE) ? 1 : 0);
    return r->dataList && (!c2 || r->codeList);
}

void HListLayout(HListRecord* r)
{
    HWND hWnd = r->base.hWnd;
    GetClientRect(hWnd, &r->rcClient);
    r->rowHeight = HListRowHeight(r);
    const LONG width = r->rcClient.right - r->rcClient.left;
    const LONG height = r->rcClient.bottom - r->rcClient.top;
    if (!(r->base.wFlags & HLF_FIXEDWIDTH)) {
        if (IsMulti(r)) {
            LONG w = HListColumnWidth(r);
            if (w <= width * 4 / 5)
                r->columnWidth = w;
        } else {
            r->columnWidth = width < 1 ? 1 : width;
        }
    }
    if (r->columnWidth < 1)
        r->columnWidth = width < 1 ? 1 : width; // a column too wide for the window fills it
    if ((r->base.dwStyle & HLS_NOINTEGRAL) && height % r->rowHeight)
        r->base.wFlags |= HLF_PARTIAL;
    else
        r->base.wFlags &= (WORD)~HLF_PARTIAL;
    r->rows = height / r->rowHeight + Partial(r);
    if (r->rows < 1)
        r->rows = 1;
    if (IsMulti(r)) {
        if (width % r->columnWidth)
            r->base.wFlags |= HLF_PARTIAL;
        else
            r->base.wFlags &= (WORD)~HLF_PARTIAL;
        r->columns = width / r->columnWidth + Partial(r);
    } else {
        r->columns = 1;
    }
    if (r->columns < 1)
        r->columns = 1;
    const LONG most = MaxScroll(r);
    if (r->topIndex < 0)
        r->topIndex = 0;
    InvalidateRect(hWnd, nullptr, TRUE);
    if (most < r->scrollPos)
        HListScroll(r, 0);
    if (!(r->base.dwStyle & HLS_NOSCROLL)) {
        SetScrollRange(hWnd, ScrollBar(r), 0, most, FALSE);
        SetScrollPos(hWnd, ScrollBar(r), r->scrollPos, TRUE);
    }
    if ((r->base.dwStyle & HLS_FRAME3D) && !(r->base.wFlags & HLF_BATCH))
        RedrawFrame(r);
}

LONG HListScroll(HListRecord* r, LONG delta)
{
    const LONG most = MaxScroll(r);
    const LONG pos = Clamp(r->scrollPos + delta, 0, most);
    const LONG distance = pos - r->scrollPos;
    HWND hWnd = r->base.hWnd;
    if (!IsOneItem(r) && !(r->base.dwStyle & HLS_NOSCROLL))
        SetScrollPos(hWnd, ScrollBar(r), pos, TRUE);
    if (r->base.dwStyle & HLS_FRAME3D)
        RedrawFrame(r);
    if (distance == 0)
        return 0;
    r->topIndex = (IsMulti(r) ? r->rows : 1) * pos;
    r->scrollPos = pos;
    if (IsOneItem(r)) {
        InvalidateRect(hWnd, &r->rcClient, HLCount(r) == 0);
    } else if (IsMulti(r)) {
        ScrollWindow(hWnd, -distance * r->columnWidth, 0, &r->rcClient, &r->rcClient);
        UpdateWindow(hWnd);
    } else {
        RECT rowsRect = r->rcClient;
        rowsRect.bottom = rowsRect.top + r->rows * r->rowHeight;
        ScrollWindow(hWnd, 0, -distance * r->rowHeight, &rowsRect, &rowsRect);
        UpdateWindow(hWnd);
    }
    return distance;
}

BOOL HListItemRect(HListRecord* r, LONG index, LPRECT out)
{
    *out = r->rcClient;
    if (index < r->topIndex) {
        out->top = out->bottom;
        return 0;
    }
    if (index >= r->topIndex + r->rows * r->columns) {
        out->bottom = out->top;
        return 0;
    }
    if (IsOneItem(r)) {
        InflateRect(out, -1, 1);
        return 1;
    }
    if (IsMulti(r)) {
        out->left = r->rcClient.left + (index / r->rows - r->scrollPos) * r->columnWidth;
        out->top += (index % r->rows) * r->rowHeight;
        out->right = out->left + r->columnWidth;
    } else {
        out->top += (index - r->scrollPos) * r->rowHeight;
    }
    out->bottom = out->top + r->rowHeight;
    return 1;
}

void HListInvalidateItem(HListRecord* r, LONG index, BOOL erase)
{
    RECT rc;
    if (HListItemRect(r, index, &rc))
        InvalidateRect(r->base.hWnd, &rc, erase);
}

void HListInvalidateRange(HListRecord* r, LONG first, LONG last, BOOL erase)
{
    if (first > last) {
        LONG t = first;
        first = last;
        last = t;
    }
    // Only the visible part: a range may span the whole list.
    const LONG top = r->topIndex, end = r->topIndex + r->rows * r->columns - 1;
    for (LONG i = first < top ? top : first; i <= last && i <= end; ++i)
        HListInvalidateItem(r, i, erase);
}

void HListSetCaret(HListRecord* r, LONG index, BOOL notify)
{
    const LONG old = r->caret, count = HLCount(r);
    if (index < 0)
        index = -1;
    else if (index >= count)
        index = count - 1;
    LONG bottom = r->topIndex + r->rows * r->columns;
    if (r->base.wFlags & HLF_SINGLE) {
        if (index != old)
            HLSelect(r, old, HLSEL_CLEAR, FALSE);
        HLSelect(r, index, HLSEL_SET, FALSE);
        if (index == -1)
            r->base.wFlags |= HLF_NOCARET;
        else
            r->base.wFlags &= (WORD)~HLF_NOCARET;
    }
    const LONG step = IsMulti(r) ? r->rows : 1;
    const bool held = (r->base.wFlags & HLF_BUTTONDOWN) != 0;
    if (r->base.dwStyle & HLS_NOINTEGRAL)
        bottom -= 1;
    if (held && bottom < count - 1)
        bottom += Partial(r);
    if (index < bottom) {
        if (index < r->topIndex)
            HListScroll(r, ((index - r->topIndex) + 1) / step - 1);
    } else {
        HListScroll(r, (index - bottom) / step + 1);
    }
    r->caret = index;
    HWND self = r->base.hWnd;
    if (r->base.wFlags & HLF_CARETSHOWN)
        HListHideCaret(r, old);
    if (!IsWindow(self))
        return; // an owner-draw parent destroyed us while painting
    if (HasFocus(r))
        HListShowCaret(r, index);
    if (index != old && !held) {
        if (notify)
            CommitUserChange(r);
        else
            HLWriteLinks(r);
    }
}

int HListFormatItem(HListRecord* r, LONG index, LPSTR text, int size)
{
    if (size > kItemTextSize)
        size = kItemTextSize;
    if (!text || size <= 0)
        return 0;
    text[0] = 0;
    LPVOID value = HLPayload(r->dataList, index);
    if (!value)
        return 0;
    if (r->dataList->itemSize < 0) {
        lstrcpynA(text, (LPCSTR)value, size);
    } else {
        BOOL marked = FALSE;
        FormatData(value, r->dataClass, r->dataType, r->maskText, text, size, &marked, FALSE);
        text[size - 1] = 0;
        if (marked)
            r->base.wFlags |= HLF_ALTCOLOR;
        else
            r->base.wFlags &= (WORD)~HLF_ALTCOLOR;
    }
    return (int)strlen(text);
}

LONG HListFindText(HListRecord* r, LPCSTR text, LONG start)
{
    const LONG count = HLCount(r);
    if (count <= 0 || !text)
        return -1;
    const size_t len = strlen(text);
    start = ((start % count) + count) % count;
    for (LONG k = 0; k < count; ++k) {
        const LONG i = (start + k) % count;
        char item[kItemTextSize];
        HListFormatItem(r, i, item, sizeof item);
        if (len <= strlen(item) && _strnicmp(item, text, len) == 0)
            return i;
    }
    return -1;
}

// ---- Registration and the handler ----

void HListRegister()
{
    HRegisterClass(CS_GLOBALCLASS | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, HListWnd, 0, 4, g_hInstance, nullptr,
                   nullptr, nullptr, nullptr, HLIST_CLASS);
}

extern "C" LRESULT CALLBACK HListWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HListMsgHandler, 0);
}

extern "C" LRESULT CALLBACK HListMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HListRecord* r = (HListRecord*)record;
    BOOL dummy = FALSE;
    if (!notHandled)
        notHandled = &dummy;
    *notHandled = FALSE;
    // The older numbers stand for the list box messages they were.
    if (msg >= HLM_OLDFIRST && msg <= HLM_OLDLAST)
        return HCtlWndProc(hWnd, msg - HLM_OLDOFFSET, wParam, lParam, HListMsgHandler, 0);
    if (msg == WM_NCCREATE) {
        if (!HListCreate(hWnd, (const CREATESTRUCTA*)lParam))
            return 0;
        *notHandled = TRUE;
        return 0;
    }
    if (!r) {
        *notHandled = TRUE;
        return 0;
    }
    LRESULT result = 0;
    HTypedFields fields = TypedFields(r);
    if (msg == WM_GETTEXT)
        return HTypedMsg(&kListTyped, &fields, hWnd, r, HM_GETMASK, wParam, lParam, &result) ? result : 0;
    if (HTypedMsg(&kListTyped, &fields, hWnd, r, msg, wParam, lParam, &result))
        return result;
    if (ListMsg(r, msg, wParam, lParam, &result))
        return result;
    switch (msg) {
    case WM_CREATE:
        if (HCtlDesignMode(hWnd))
            SendMessageA(hWnd, HLM_FILLSAMPLE, 0, 0);
        break;
    case WM_SIZE:
        HListLayout(r);
        return 1;
    case WM_SETFOCUS:
        if (r->base.dwStyle & (HLS_FOCUSBRUSH | HLS_ONEITEM))
            InvalidateRect(hWnd, nullptr, (r->base.dwStyle & HLS_FOCUSBRUSH) != 0);
        else
            HListShowCaret(r, r->caret);
        HUpdateTopLevel(hWnd);
        HCtlNotify(r, HLN_SETFOCUS);
        return 1;
    case WM_KILLFOCUS:
        if (r->base.dwStyle & (HLS_FOCUSBRUSH | HLS_ONEITEM)) {
            InvalidateRect(hWnd, nullptr, TRUE);
            UpdateWindow(hWnd);
        } else {
            HListHideCaret(r, r->caret);
        }
        HCtlNotify(r, HLN_KILLFOCUS);
        return 0;
    case WM_SETTEXT: {
        LPCSTR text = (LPCSTR)lParam;
        if (!text || text[0] != '%')
            return 0;
        BOOL ok = HListSetType(r, text);
        InvalidateRect(hWnd, nullptr, TRUE);
        return ok;
    }
    case WM_PAINT: {
        if (r->base.wFlags & HLF_BATCH) {
            ValidateRect(hWnd, nullptr); // else the paint would be asked for again at once
            return 0;
        }
        const bool focused = HasFocus(r);
        if (focused && (r->base.wFlags & HLF_CARETSHOWN))
            HListHideCaret(r, r->caret);
        else
            HListPaint(r, (HDC)wParam);
        if (focused && !(r->base.wFlags & HLF_CARETSHOWN))
            HListShowCaret(r, r->caret);
        return 1;
    }
    case WM_ERASEBKGND:
        HListEraseBack(r, (HDC)wParam, nullptr);
        return 1;
    case WM_PRINTCLIENT: // a printed picture takes the path of a paint into a given dc
        if (lParam & PRF_ERASEBKGND)
            HListEraseBack(r, (HDC)wParam, nullptr);
        HListPaint(r, (HDC)wParam);
        return 0;
    case WM_CANCELMODE:
        r->base.wFlags |= HCTLF_VETO; // ends the mouse loop
        break;
    case WM_SETCURSOR:
        SetCursor(g_hArrowCursor ? g_hArrowCursor : LoadCursorA(nullptr, IDC_ARROW));
        break;
    case WM_MOUSEACTIVATE:
        if (GetFocus() != hWnd)
            SetFocus(hWnd);
        if (!IsWindow(hWnd))
            return MA_NOACTIVATE;
        break;
    case WM_SETFONT:
        r->base.wFlags |= HLF_FONTSEEN;
        break;
    case WM_WINDOWPOSCHANGING:
        OnWindowPosChanging(r, (WINDOWPOS*)lParam);
        break;
    case WM_NCDESTROY:
        HListFree(r);
        break;
    case WM_NCCALCSIZE:
        if (!(r->base.dwStyle & HLS_FRAME3D) || !lParam)
            break;
        DefWindowProcA(hWnd, msg, wParam, lParam);
        InflateRect((LPRECT)lParam, (GetWindowLongA(hWnd, GWL_STYLE) & WS_BORDER) ? -1 : -2,
                    (GetWindowLongA(hWnd, GWL_STYLE) & WS_BORDER) ? -1 : -2);
        return 1;
    case WM_NCPAINT:
        DefWindowProcA(hWnd, msg, wParam, lParam);
        if (r->base.dwStyle & HLS_FRAME3D)
            DrawNonClientBorder(hWnd, FALSE);
        return 1;
    case WM_GETDLGCODE:
        return (r->base.dwStyle & HLS_WANTKEYS) ? 4 : 0x81;
    case WM_KEYDOWN:
        OnKeyDown(r, wParam);
        if (!IsWindow(hWnd))
            return 0;
        break;
    case WM_CHAR:
        OnChar(r, wParam);
        if (!IsWindow(hWnd))
            return 0;
        break;
    case WM_HSCROLL:
    case WM_VSCROLL:
        OnScroll(r, msg, wParam);
        return 1;
    case LB_ADDSTRING:
        return HLInsertRec(r, -1, (LPVOID)lParam, nullptr);
    case LB_GETITEMHEIGHT:
        return r->rowHeight;
    case WM_MOUSEMOVE: {
        if (!(r->base.wFlags & HLF_BUTTONDOWN) || IsOneItem(r))
            break;
        POINT p = HSplitPoint((DWORD)lParam);
        HListExtendTo(r, HitTest(r, p.x, p.y));
        return 0;
    }
    case WM_LBUTTONDOWN:
        OnButtonDown(r, lParam);
        return 0;
    case WM_LBUTTONUP:
        OnButtonUp(r);
        return 0;
    case WM_LBUTTONDBLCLK:
        HCtlNotify(r, HLN_DBLCLK);
        return 1;
    }
    *notHandled = TRUE;
    return 0;
}
