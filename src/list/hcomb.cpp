// HComb: registration, the class handler, creation of the two children, layout,
// the button, keys, the relay of messages, and keeping top child and list in step.
#include "list/hcomb.h"
#include "draw/draw.h"
#include "edit/hedit.h"
#include "frame/frame.h"
#include "list/hlist.h"

#include <string.h>

namespace {

constexpr int kDropChildSlot = 4;     // HDrop's extra word that holds the top child
constexpr int kValueSize = 256;       // work buffer of a value or text passed between the children
constexpr int kButtonBitmap = 2002;   // the arrow: +1 on a wide screen, +2 disabled
constexpr COLORREF kButtonKey = RGB(0, 255, 0);
constexpr UINT kChildFirst = 0x419, kChildLast = 0x495; // relayed to the top child
constexpr UINT kListFirst = 0x496, kListLast = 0x7FFF;  // relayed to the list

LRESULT ToChild(HCombRecord* r, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return r->hChild ? SendMessageA(r->hChild, msg, wParam, lParam) : 0;
}

LRESULT ToList(HCombRecord* r, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return r->hList ? SendMessageA(r->hList, msg, wParam, lParam) : 0;
}

LONG ButtonWidth() { return GetSystemMetrics(SM_CXVSCROLL); }

// The button: the right-hand scroll-bar width of the client area.
RECT ButtonRect(HCombRecord* r)
{
    RECT rc;
    GetClientRect(r->base.hWnd, &rc);
    rc.left = rc.right - ButtonWidth();
    return rc;
}

void DrawButton(HCombRecord* r, HDC given)
{
    if (!HCombIsDropList(r))
        return;
    HWND hWnd = r->base.hWnd;
    RECT rc = ButtonRect(r);
    int id = kButtonBitmap + (GetSystemMetrics(SM_CXSCREEN) > 1000 ? 1 : 0) + (IsWindowEnabled(hWnd) ? 0 : 2);
    HBITMAP arrow = LoadBitmapA(g_hInstance, MAKEINTRESOURCEA(id));
    HDC dc = given ? given : GetDC(hWnd);
    DrawPushButton(hWnd, dc, &rc, 1, DPB_SQUARE | ((r->base.wFlags & HCF_PRESSED) ? DPB_PRESSED : 0), nullptr,
                   nullptr, arrow, kButtonKey);
    if (!given)
        ReleaseDC(hWnd, dc);
    if (arrow)
        DeleteObject(arrow);
}

void FlipDrop(HCombRecord* r)
{
    if (r->base.wFlags & HCF_DROPPED)
        HCombCloseDrop(r);
    else
        HCombOpenDrop(r);
}

// The top child's text: the first pair, then what follows a second pair.
void EditText(LPCSTR text, LPSTR out, int size)
{
    if (lstrlenA(text) >= 6 && text[3] == '%') {
        lstrcpynA(out, text, 4);
        lstrcpynA(out + 3, text + 6, size - 3);
    } else {
        lstrcpynA(out, text, size);
    }
}

HCombRecord* HCombCreate(HWND hWnd, const CREATESTRUCTA* cs)
{
    if (!cs)
        return nullptr;
    HCombRecord* r = (HCombRecord*)HCtlNewRecord(hWnd, cs, sizeof(HCombRecord));
    if (!r)
        return nullptr;
    const DWORD style = cs->style;
    r->base.dwStyle = style;
    LPCSTR text = (cs->lpszName && !IS_INTRESOURCE(cs->lpszName)) ? cs->lpszName : "";
    const LONG asked = GetDropHeight(&text);
    if (!(style & HCS_DROPLIST))
        r->dropHeight = cs->cy - HIWORD(GetBaseUnits(nullptr)) - 8;
    else
        r->dropHeight = HCombDropHeightFor(cs->cy, asked);

    if (!(style & HCS_DROPLIST)) {
        r->hList = CreateWindowExA(0, HDROP_CLASS, text, (style & 0xF7FFF7F6) | 0x50000000, 0, 0, 0, 0, hWnd,
                                   (HMENU)(UINT_PTR)kCombListId, g_hInstance, nullptr);
    } else {
        r->hList = CreateWindowExA(0, HDROP_CLASS, text, (style & 0xE7FFF7F6) | 0x40000000, 0, 0, 0, 0,
                                   GetDesktopWindow(), (HMENU)(UINT_PTR)kCombListId, g_hInstance, nullptr);
        ToList(r, HM_SETNOTIFY, (WPARAM)hWnd, 0);
    }

    if (!(style & HCS_EDITABLE)) {
        r->hChild = CreateWindowExA(0, HLIST_CLASS, text, (style & 0xF7FFF7F7) | 0x50004101, 0, 0, 0, 0, hWnd,
                                    (HMENU)(UINT_PTR)kCombChildId, g_hInstance, nullptr);
        // Both windows show one store: the child gives up its own and takes the list's.
        HListRecord* child = HLRecordOf(r->hChild);
        HListRecord* list = HLRecordOf(r->hList);
        if (child && list) {
            if (child->dataList)
                HLListDestroy(child->dataList);
            if (child->codeList)
                HLListDestroy(child->codeList);
            child->dataList = list->dataList;
            child->codeList = list->codeList;
        }
    } else {
        DWORD editStyle = (style & 0xF7FF0080) | 0x50000080;
        if (style & HCS_FOCUSBRUSH)
            editStyle |= 0x0400;
        if (style & HCS_FRAME3D)
            editStyle |= 0x0200;
        char editText[kValueSize];
        EditText(text, editText, sizeof editText);
        r->hChild = CreateWindowExA(0, HEDITSS_CLASS, editText, editStyle, 0, 0, 0, 0, hWnd,
                                    (HMENU)(UINT_PTR)kCombEditId, g_hInstance, nullptr);
    }
    if ((style & HCS_DROPLIST) && HCtlDesignMode(hWnd))
        ToList(r, HLM_FILLSAMPLE, 0, 0);

    r->childRecord = (LPVOID)ToChild(r, HM_GETPTR, 0, 0);
    r->listRecord = (LPVOID)ToList(r, HM_GETPTR, 0, 0);
    r->base.dwStyle &= 0xFF4FFFFF;
    SetWindowLongA(hWnd, GWL_STYLE, GetWindowLongA(hWnd, GWL_STYLE) & 0xFF4FFFFF);
    if (r->hList)
        SetWindowLongA(r->hList, kDropChildSlot, (LONG)r->hChild);
    if (r->hChild)
        r->pfnChildProc = SubclassWW(r->hChild, HCombEditProc);
    return r;
}

// The lists of a one-item child are the child's: the list lets go of them, so they die once.
void ReleaseSharedLists(HCombRecord* r)
{
    if (HCombIsEditable(r))
        return;
    HListRecord* list = HLRecordOf(r->hList);
    if (list && HLRecordOf(r->hChild)) {
        list->dataList = nullptr;
        list->codeList = nullptr;
    }
}

void HCombDestroy(HCombRecord* r)
{
    HWND hWnd = r->base.hWnd;
    HCombCloseDrop(r);
    if (r->hList && IsWindow(r->hList)) {
        ReleaseSharedLists(r);
        DestroyWindow(r->hList);
    }
    HCtlFreeRecord(hWnd, r);
}

LRESULT OnSetText(HCombRecord* r, LPCSTR text)
{
    if (!text || IS_INTRESOURCE(text))
        return 0;
    const LONG asked = GetDropHeight(&text);
    if (asked) {
        if (HCombIsDropList(r))
            r->dropHeight = HCombDropHeightFor(WindowHeight(r->base.hWnd), asked);
        else
            r->dropHeight = WindowHeight(r->base.hWnd) - HIWORD(GetBaseUnits(r->base.hFont)) - 8;
        HCombLayout(r);
    }
    if (text[0] == '%')
        ToList(r, WM_SETTEXT, 0, (LPARAM)text);
    if (HCombIsEditable(r)) {
        ToChild(r, WM_SETTEXT, 0, (LPARAM)text);
    } else if (text[0] == '%') {
        // The list has just freed the shared store and made its own; the child
        // makes a new one, which both share from now on.
        HListRecord* child = HLRecordOf(r->hChild);
        HListRecord* list = HLRecordOf(r->hList);
        if (child && list) {
            child->dataList = nullptr;
            child->codeList = nullptr;
            ToChild(r, WM_SETTEXT, 0, (LPARAM)text);
            if (list->dataList)
                HLListDestroy(list->dataList);
            if (list->codeList)
                HLListDestroy(list->codeList);
            list->dataList = child->dataList;
            list->codeList = child->codeList;
        }
    }
    return 1;
}

// WM_GETTEXT and WM_GETTEXTLENGTH of a combo whose top child is a list: the current item.
LRESULT CurrentText(HCombRecord* r, UINT msg, WPARAM size, LPSTR out)
{
    const LONG caret = (LONG)ToList(r, HLM_GETCARET, 0, 0);
    const LONG length = (LONG)ToList(r, HLM_GETTEXTLEN, (WPARAM)caret, 0);
    if (msg == WM_GETTEXTLENGTH)
        return length < 0 ? 0 : length;
    if (!out || (int)size <= 0)
        return 0;
    out[0] = 0;
    if (length < 0 || !r->hList)
        return 0;
    LPSTR block = (LPSTR)GlobalAlloc(GPTR, (SIZE_T)length + 1);
    if (!block) {
        out[0] = 0;
        return 0;
    }
    // The item's text is at most 127 characters: the list writes no more.
    ToList(r, HLM_GETTEXT, (WPARAM)caret, (LPARAM)block);
    block[length] = 0;
    lstrcpynA(out, block, (int)size);
    GlobalFree((HGLOBAL)block);
    return lstrlenA(out);
}

// Owner-draw requests of the list go up as the combo's own.
LRESULT PassOwnerDraw(HCombRecord* r, UINT msg, LPARAM lParam)
{
    if (lParam) {
        switch (msg) {
        case WM_DRAWITEM: {
            DRAWITEMSTRUCT* d = (DRAWITEMSTRUCT*)lParam;
            d->CtlType = ODT_COMBOBOX;
            d->CtlID = r->base.wId;
            d->hwndItem = r->base.hWnd;
            break;
        }
        case WM_MEASUREITEM:
            ((MEASUREITEMSTRUCT*)lParam)->CtlType = ODT_COMBOBOX;
            ((MEASUREITEMSTRUCT*)lParam)->CtlID = r->base.wId;
            break;
        case WM_DELETEITEM:
            ((DELETEITEMSTRUCT*)lParam)->CtlType = ODT_COMBOBOX;
            ((DELETEITEMSTRUCT*)lParam)->CtlID = r->base.wId;
            break;
        }
    }
    return SendMessageA(r->base.hNotify, msg, r->base.wId, lParam) != 0;
}

LRESULT OnKeyDown(HCombRecord* r, WPARAM key)
{
    const DWORD style = r->base.dwStyle;
    const BOOL shift = GetKeyState(VK_SHIFT) < 0;
    switch (key) {
    case VK_TAB:
        if (style & HCS_WANTKEYS)
            HCtlNotify(r, shift ? HN_BACKTAB : HN_TAB);
        else
            SendMessageA(GetParent(r->base.hWnd), WM_NEXTDLGCTL, shift, 0);
        return 1;
    case VK_RETURN:
    case VK_ESCAPE:
        if (r->base.wFlags & HCF_DROPPED) {
            HCombCloseDrop(r);
            return 1;
        }
        if (style & HCS_WANTKEYS)
            HCtlNotify(r, key == VK_RETURN ? HN_ENTER : HN_ESCAPE);
        return 0;
    case VK_PRIOR:
    case VK_NEXT:
    case VK_UP:
    case VK_DOWN:
        if (!HCombIsEditable(r))
            return 0;
        ToList(r, WM_KEYDOWN, key, 0);
        return 1;
    case VK_F4:
        if (!HCombIsDropList(r))
            return 0;
        FlipDrop(r);
        return 1;
    }
    return 0;
}

LRESULT OnSysKeyDown(HCombRecord* r, WPARAM key, BOOL* handled)
{
    *handled = (key == VK_UP || key == VK_DOWN) && HCombIsDropList(r);
    if (*handled)
        FlipDrop(r);
    return *handled ? 1 : 0;
}

void OnChildCommand(HCombRecord* r, WORD id, WORD code, HWND from)
{
    HWND self = r->base.hWnd;
    if ((id == kCombEditId || id == kCombChildId) && from != r->hChild)
        return;
    if (id == kCombListId && from != r->hList)
        return;
    if (id == kCombEditId && code == HEN_CHANGE) {
        HCtlNotify(r, HCN_EDITCHANGE);
        if (IsWindow(self))
            HCombSync(r, TRUE, TRUE);
    } else if (id == kCombEditId && code == HEN_UPDATE) {
        HCtlNotify(r, HCN_EDITUPDATE);
    } else if (id == kCombChildId && code == HLN_SELCHANGE) {
        HCombSync(r, TRUE, TRUE);
    } else if (id == kCombListId && code == HLN_SELCHANGE) {
        HCombSync(r, FALSE, TRUE);
    } else if (id == kCombListId && code == HLN_DBLCLK && HCombIsEditable(r)) {
        HCtlNotify(r, HCN_DBLCLK);
    }
}

void OnButtonDown(HCombRecord* r, LPARAM lParam)
{
    HWND self = r->base.hWnd;
    if (r->hChild)
        SetFocus(r->hChild);
    if (!IsWindow(self) || !HCombIsDropList(r))
        return; // the focus notice may have destroyed the combo
    POINT p = HSplitPoint((DWORD)lParam);
    RECT button = ButtonRect(r);
    if (!PtInRect(&button, p))
        return;
    r->base.wFlags |= HCF_HELD | HCF_PRESSED;
    DrawButton(r, nullptr);
    FlipDrop(r);
    if (IsWindow(self))
        SetCapture(self);
}

void OnMouseMove(HCombRecord* r, WPARAM wParam, LPARAM lParam)
{
    if (!(r->base.wFlags & HCF_HELD))
        return;
    POINT p = HSplitPoint((DWORD)lParam);
    RECT button = ButtonRect(r);
    if (PtInRect(&button, p)) {
        if (!(r->base.wFlags & HCF_PRESSED)) {
            r->base.wFlags |= HCF_PRESSED;
            DrawButton(r, nullptr);
        }
        return;
    }
    if (r->base.wFlags & HCF_PRESSED) {
        r->base.wFlags &= (WORD)~HCF_PRESSED;
        DrawButton(r, nullptr);
    }
    // Over the open list the drag passes to it.
    POINT screen = p;
    ClientToScreen(r->base.hWnd, &screen);
    RECT list;
    if (r->hList && IsWindowVisible(r->hList) && GetWindowRect(r->hList, &list) && PtInRect(&list, screen)) {
        HWND self = r->base.hWnd, hList = r->hList;
        SendMessageA(self, WM_LBUTTONUP, wParam, lParam);
        SendMessageA(hList, WM_LBUTTONDOWN, wParam, lParam);
    }
}

void OnButtonUp(HCombRecord* r)
{
    if (!(r->base.wFlags & HCF_HELD))
        return;
    ReleaseCapture();
    r->base.wFlags &= (WORD)~HCF_HELD;
    DrawButton(r, nullptr); // raised; the pressed flag stays until the next move
}

// CB_SETITEMHEIGHT of the top child (index -1).
LRESULT SetChildHeight(HCombRecord* r, LONG height)
{
    HWND hWnd = r->base.hWnd;
    if (HCombIsDropList(r)) {
        RECT rc;
        GetWindowRect(hWnd, &rc);
        RStoC(GetParent(hWnd), &rc);
        MoveWindow(hWnd, rc.left, rc.top, rc.right - rc.left, height, TRUE);
        return 0;
    }
    RECT rc;
    GetClientRect(hWnd, &rc);
    const LONG b = (r->base.dwStyle & HCS_FRAME3D) ? 0 : 1;
    r->dropHeight = rc.bottom - height;
    SetWindowPos(r->hChild, nullptr, 0, 0, rc.right, height, SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(r->hList, nullptr, 7, height - b, rc.right - 7, r->dropHeight + b, SWP_NOZORDER | SWP_NOACTIVATE);
    return 0;
}

// The CB_ messages that become one of the list's or the edit's.
struct CbTranslation {
    UINT cb, to;
};
constexpr CbTranslation kCbTranslations[] = {
    {CB_GETEDITSEL, EM_GETSEL},           {CB_LIMITTEXT, EM_LIMITTEXT},       {CB_SETEDITSEL, EM_SETSEL},
    {CB_ADDSTRING, HLM_ADDITEM},          {CB_DELETESTRING, HLM_DELETEITEM},  {CB_GETCOUNT, HLM_GETCOUNT},
    {CB_GETCURSEL, HLM_GETCARET},         {CB_GETLBTEXT, HLM_GETTEXT},        {CB_GETLBTEXTLEN, HLM_GETTEXTLEN},
    {CB_INSERTSTRING, HLM_INSERTITEM},    {CB_RESETCONTENT, HLM_RESETCONTENT}, {CB_FINDSTRING, HLM_FINDTEXT},
    {CB_SELECTSTRING, HLM_SELECTTEXT},    {CB_SETCURSEL, HLM_SETCARET},       {CB_FINDSTRINGEXACT, HLM_FINDDATA},
};

LRESULT OnComboBoxMsg(HCombRecord* r, UINT msg, WPARAM wParam, LPARAM lParam)
{
    HWND hWnd = r->base.hWnd;
    for (const auto& t : kCbTranslations)
        if (t.cb == msg)
            return HCtlWndProc(hWnd, t.to, wParam, lParam, HCombMsgHandler, 0);
    switch (msg) {
    case CB_SHOWDROPDOWN:
        if (wParam)
            HCombOpenDrop(r);
        else
            HCombCloseDrop(r);
        return 1;
    case CB_GETITEMDATA: {
        // A code wider than a word is not copied: the local word holds no more.
        DWORD word[2] = {0, 0};
        const LRESULT size = ToList(r, HLM_GETCODESIZE, wParam, 0);
        if (size < 1 || size > (LRESULT)sizeof(DWORD) || !ToList(r, HLM_GETCODE, wParam, (LPARAM)word))
            return -1;
        return (LRESULT)word[0];
    }
    case CB_SETITEMDATA:
        return ToList(r, HLM_SETCODE, wParam, (LPARAM)&lParam);
    case CB_GETDROPPEDCONTROLRECT:
        if (lParam && r->hList)
            GetWindowRect(r->hList, (LPRECT)lParam);
        return 0;
    case CB_SETITEMHEIGHT:
        if ((int)wParam != -1)
            return -1;
        return SetChildHeight(r, LOWORD(lParam));
    case CB_GETITEMHEIGHT:
        if ((int)wParam == -1)
            return WindowHeight(r->hChild);
        return ToList(r, LB_GETITEMHEIGHT, wParam, lParam);
    case CB_SETEXTENDEDUI:
        return -1;
    case CB_GETEXTENDEDUI:
        return 0;
    case CB_GETDROPPEDSTATE:
        return r->base.wFlags & HCF_DROPPED;
    }
    return 0;
}

bool SyncsAfter(UINT msg)
{
    return msg == HLM_SELECTITEM || msg == HLM_SELECTITEM2 || msg == HLM_SELECTTEXT || msg == HLM_SELECTDATA || msg == HLM_SETCODELINK ||
           msg == HLM_SELECTCODE || msg == HLM_SETCARET;
}

} // namespace

// ---- Routines shared with the drop and the grid ----

HCombRecord* HCombRecordOf(HWND hWnd)
{
    char name[16] = "";
    if (!hWnd || !IsWindow(hWnd) || !GetClassNameA(hWnd, name, sizeof name) || lstrcmpiA(name, HCOMB_CLASS) != 0)
        return nullptr;
    return (HCombRecord*)SendMessageA(hWnd, HM_GETPTR, 0, 0);
}

LONG HCombDropHeightFor(LONG windowHeight, LONG asked)
{
    if (asked > 0)
        return asked;
    const LONG h = 3 * windowHeight;
    return h < 40 ? 40 : h;
}

void HCombLayout(HCombRecord* r)
{
    RECT rc;
    GetClientRect(r->base.hWnd, &rc);
    LONG h = rc.bottom - rc.top;
    const LONG w = rc.right - rc.left;
    if (!HCombIsDropList(r)) {
        r->dropHeight = h - HIWORD(GetBaseUnits(r->base.hFont)) - 8;
        h -= r->dropHeight;
        const LONG b = (r->base.dwStyle & HCS_FRAME3D) ? 0 : 1;
        const LONG listHeight = r->dropHeight + b;
        SetWindowPos(r->hList, nullptr, 7, h - b, w - 7, listHeight < 0 ? 0 : listHeight,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    } else if (r->dropHeight < 1) {
        r->dropHeight = HCombDropHeightFor(WindowHeight(r->base.hWnd), 0);
    }
    const LONG button = HCombIsDropList(r) ? ButtonWidth() + (HCombIsEditable(r) ? 7 : 0) : 0;
    SetWindowPos(r->hChild, nullptr, 0, 0, w - button < 0 ? 0 : w - button, h < 0 ? 0 : h,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

int HCombSync(HCombRecord* r, BOOL fromChild, BOOL notify)
{
    const LONG s = (LONG)ToList(r, HLM_GETCARET, 0, 0);
    const BOOL editable = HCombIsEditable(r);
    HWND child = r->hChild;
    if (!fromChild && !editable) {
        if (s != (LONG)ToChild(r, HLM_GETCARET, 0, 0)) {
            ToChild(r, HLM_SETCARET, (WPARAM)s, 1);
            if (notify)
                HCtlNotify(r, HCN_SELCHANGE);
        }
        return 1;
    }
    if (!fromChild) {
        if (s < 0) {
            ToChild(r, WM_CLEAR, 0, 0);
            return 0;
        }
        BYTE value[kValueSize] = {};
        ToList(r, HLM_GETCURDATA, sizeof value - 1, (LPARAM)value);
        ToChild(r, WM_SETREDRAW, FALSE, 0);
        ToChild(r, HEM_SETDATA, 0, (LPARAM)value);
        ToChild(r, HEM_SETFIRSTCHAR, 0, 0);
        ToChild(r, EM_SETSEL, 0, GetOverwriteMode() ? 0 : 0x7FFF);
        ToChild(r, WM_SETREDRAW, TRUE, 0);
        if (child) {
            InvalidateRect(child, nullptr, TRUE);
            UpdateWindow(child);
        }
        if (notify)
            HCtlNotify(r, HCN_SELCHANGE);
        return 1;
    }
    if (!editable) {
        const LONG c = (LONG)ToChild(r, HLM_GETCARET, 0, 0);
        if (s != c) {
            ToList(r, HLM_SETCARET, (WPARAM)c, 1);
            if (notify)
                HCtlNotify(r, HCN_SELCHANGE);
        }
        return 0;
    }
    // Typing walks the list to the first item with that prefix; the text stays as typed.
    const HListRecord* list = (const HListRecord*)r->listRecord;
    if (list && list->dataClass == HCLASS_STRING) {
        char text[kValueSize] = "";
        ToChild(r, WM_GETTEXT, sizeof text, (LPARAM)text);
        text[sizeof text - 1] = 0;
        if (text[0])
            ToList(r, HLM_SELECTTEXT, 0, (LPARAM)text);
        else
            ToList(r, HLM_SETCARET, (WPARAM)-1, 1);
    } else {
        BYTE value[kValueSize] = {};
        ToChild(r, HEM_COMMIT, 1, 0);
        if (ToChild(r, HEM_GETDATA, sizeof value - 1, (LPARAM)value))
            ToList(r, HLM_SELECTDATA, HLSEL_SET, (LPARAM)value);
        else
            ToList(r, HLM_SETCARET, (WPARAM)-1, 0);
    }
    if (notify && (LONG)ToList(r, HLM_GETCARET, 0, 0) != s)
        HCtlNotify(r, HCN_SELCHANGE);
    return 0;
}

BOOL HCombDrawValue(HCombRecord* r, HDC dc, const RECT* rc, LPCVOID value, int how)
{
    if (!r || !(HCombIsEditable(r) ? r->childRecord : r->listRecord))
        return 0; // a child that was never made paints nothing
    if (HCombIsEditable(r)) {
        HEditDrawValue((HEditRecord*)r->childRecord, dc, rc, value, 0);
        return 1;
    }
    return HListDrawValue((HListRecord*)r->listRecord, dc, rc, value, how);
}

// The blocks an edit record owns, then the record: the road of the edit's own
// destruction, without its window.
static void HCombFreeEditRecord(HEditRecord* e)
{
    LPVOID blocks[] = {e->maskText, e->emptyText, e->value, e->text};
    for (LPVOID block : blocks)
        if (block)
            GlobalFree((HGLOBAL)block);
    HCtlFreeRecord(e->base.hWnd, e);
}

void HCombFreeRecords(HCombRecord* r)
{
    if (!r)
        return;
    HListRecord* list = (HListRecord*)r->listRecord;
    if (r->childRecord) {
        if (HCombIsEditable(r)) {
            HCombFreeEditRecord((HEditRecord*)r->childRecord);
        } else {
            // The store is shared: the child lets go of it, and the list's free destroys it once.
            HListRecord* child = (HListRecord*)r->childRecord;
            if (list && child->dataList == list->dataList) {
                child->dataList = nullptr;
                child->codeList = nullptr;
            }
            HListFree(child);
        }
    }
    if (list)
        HListFree(list);
    HCtlFreeRecord(r->base.hWnd, r);
}

// ---- Registration, procedures and the handler ----

void HCombRegister()
{
    if (!HRegisterClass(CS_GLOBALCLASS | CS_HREDRAW | CS_VREDRAW, HCombWnd, 0, 8, g_hInstance, nullptr,
                        LoadCursorA(nullptr, IDC_ARROW), (HBRUSH)(COLOR_WINDOW + 1), nullptr, HCOMB_CLASS))
        return; // no HComb, no HDrop
    // HDrop is a superclass of HList as HList was registered: its style plus
    // CS_SAVEBITS, four more extra bytes, and its own procedure.
    WNDCLASSA wc;
    if (!GetClassInfoA(g_hInstance, HLIST_CLASS, &wc))
        return;
    wc.style |= CS_SAVEBITS;
    wc.hInstance = g_hInstance;
    wc.lpfnWndProc = HDropWnd;
    wc.lpszClassName = HDROP_CLASS;
    wc.cbWndExtra += 4;
    RegisterClassA(&wc);
}

extern "C" LRESULT CALLBACK HCombWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HCombMsgHandler, 0);
}

// The subclass of the top child: focus and keys go by the combo first.
LRESULT CALLBACK HCombEditProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    HWND combo = GetParent(hWnd);
    HCombRecord* r = HCombRecordOf(combo);
    if (!r || r->hChild != hWnd)
        return DefWindowProcA(hWnd, msg, wParam, lParam);
    WNDPROC old = r->pfnChildProc;
    auto callOld = [&]() { return old ? CallWindowProcA(old, hWnd, msg, wParam, lParam) : DefWindowProcA(hWnd, msg, wParam, lParam); };
    switch (msg) {
    case WM_SETFOCUS:
        callOld();
        SendMessageA(combo, HM_CHILDFOCUS, 0, 0);
        return 0;
    case WM_KILLFOCUS:
        callOld();
        SendMessageA(combo, HM_CHILDBLUR, 0, 0);
        return 0;
    case WM_GETDLGCODE:
        return SendMessageA(combo, WM_GETDLGCODE, wParam, lParam);
    case WM_KEYDOWN:
        if (SendMessageA(combo, WM_KEYDOWN, wParam, lParam))
            return 1;
        return IsWindow(hWnd) ? callOld() : 0;
    case WM_SYSKEYDOWN:
        SendMessageA(combo, HCM_SYSKEY, wParam, lParam);
        return IsWindow(hWnd) ? callOld() : 0;
    }
    return callOld();
}

extern "C" LRESULT CALLBACK HCombMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HCombRecord* r = (HCombRecord*)record;
    BOOL dummy = FALSE;
    if (!notHandled)
        notHandled = &dummy;
    *notHandled = FALSE;
    if (msg == WM_NCCREATE) {
        if (!HCombCreate(hWnd, (const CREATESTRUCTA*)lParam))
            return 0;
        *notHandled = TRUE;
        return 0;
    }
    if (!r) {
        *notHandled = TRUE;
        return 0;
    }
    // The older numbers stand for the combo box messages they were.
    if (msg >= HCM_OLDFIRST && msg <= HCM_OLDLAST)
        msg -= HCM_OLDOFFSET;
    if (msg >= CB_GETEDITSEL && msg <= CB_FINDSTRINGEXACT)
        return OnComboBoxMsg(r, msg, wParam, lParam);
    const DWORD style = r->base.dwStyle;
    const BOOL editable = HCombIsEditable(r);
    switch (msg) {
    case WM_DESTROY:
        ReleaseSharedLists(r); // before the children die: the child frees the store
        break;
    case WM_NCDESTROY:
        HCombDestroy(r);
        break;
    case WM_SIZE:
        HCombLayout(r);
        return 0;
    case WM_SETFOCUS:
        if (r->hChild && (HWND)wParam != r->hChild)
            SetFocus(r->hChild);
        return 0;
    case WM_ENABLE:
        DrawButton(r, nullptr);
        return 0;
    case WM_SETTEXT:
        return OnSetText(r, (LPCSTR)lParam);
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH:
        if (editable)
            return ToChild(r, msg, wParam, lParam);
        return CurrentText(r, msg, wParam, (LPSTR)lParam);
    case WM_ERASEBKGND:
        DrawButton(r, (HDC)wParam);
        return 1;
    case WM_SETFONT: {
        ToList(r, WM_SETFONT, wParam, lParam);
        ToChild(r, WM_SETFONT, wParam, lParam);
        HFONT old = r->base.hFont;
        r->base.hFont = (HFONT)wParam;
        if (HCombIsDropList(r))
            HCombLayout(r);
        return (LRESULT)old;
    }
    case WM_DRAWITEM:
    case WM_MEASUREITEM:
    case WM_DELETEITEM:
        return PassOwnerDraw(r, msg, lParam);
    case WM_GETDLGCODE:
        if (!(r->base.wFlags & HCF_DROPPED) && !(style & HCS_WANTKEYS))
            return editable ? 0x89 : 0x81;
        return editable ? 0x0C : 4;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
        if ((style & HCS_FOCUSBRUSH) && r->hChild && GetFocus() == r->hChild) {
            LRESULT brush = ToChild(r, HM_GETFOCUSBRUSH, 0, 0);
            if (brush)
                return brush;
        }
        return SendMessageA(GetParent(hWnd), msg, wParam, lParam);
    case WM_COMMAND:
        OnChildCommand(r, LOWORD(wParam), HIWORD(wParam), (HWND)lParam);
        return 0;
    case WM_KEYDOWN:
        return OnKeyDown(r, wParam);
    case WM_SYSKEYDOWN:
    case HCM_SYSKEY: {
        BOOL handled = FALSE;
        LRESULT result = OnSysKeyDown(r, wParam, &handled);
        *notHandled = !handled && msg == WM_SYSKEYDOWN;
        return result;
    }
    case WM_LBUTTONDOWN:
        OnButtonDown(r, lParam);
        return 0;
    case WM_MOUSEMOVE:
        OnMouseMove(r, wParam, lParam);
        return 0;
    case WM_LBUTTONUP:
        OnButtonUp(r);
        return 0;
    case HM_SETBACKBRUSH:
    case HM_SETMASK:
    case HM_SETCOLOR:
        ToList(r, msg, wParam, lParam);
        return ToChild(r, msg, wParam, lParam);
    case HM_SETFOCUSBRUSH:
        if ((style & HCS_FOCUSBRUSH) && (style & HCS_DROPLIST))
            ToList(r, HM_SETBACKBRUSH, wParam, lParam);
        return ToChild(r, msg, wParam, lParam);
    case HM_GETMODIFY:
        return (ToList(r, msg, 0, 0) || ToChild(r, msg, 0, 0)) ? 1 : 0;
    case HM_CHILDFOCUS:
        if (!HCombIsDropList(r) && (style & HCS_FOCUSBRUSH) && r->hList)
            InvalidateRect(r->hList, nullptr, TRUE);
        HCtlNotify(r, HCN_SETFOCUS);
        return 0;
    case HM_CHILDBLUR:
        if (!HCombIsDropList(r) && (style & HCS_FOCUSBRUSH) && r->hList)
            InvalidateRect(r->hList, nullptr, TRUE);
        HCombCloseDrop(r);
        if (editable)
            ToChild(r, EM_SETSEL, 0, 0);
        HCtlNotify(r, HCN_KILLFOCUS);
        return 0;
    case HLM_RESETCONTENT:
    case HLM_DELETEITEM:
    case HLM_ADDITEM:
    case HLM_INSERTITEM:
    case HLM_SETTABSTOPS: {
        LRESULT result = ToList(r, msg, wParam, lParam);
        if (!editable && r->hChild)
            InvalidateRect(r->hChild, nullptr, TRUE);
        return result;
    }
    case HLM_SELECTDATA:
    case HLM_SELECTCODE: {
        LRESULT result = ToList(r, msg, 1, lParam);
        HCombSync(r, FALSE, FALSE);
        return result;
    }
    case HCM_GETDROPHEIGHT:
        return r->dropHeight;
    case HCM_SETDROPHEIGHT:
        if ((LONG)wParam < 0)
            return 0;
        r->dropHeight = (LONG)wParam;
        HCombLayout(r);
        return 1;
    }
    // The edit messages belong to the top child, and so does the rest of 0x419 to 0x495,
    // the common messages of notify target, style, modified state and veto among them.
    if ((msg >= EM_GETSEL && msg <= EM_GETIMESTATUS) || (msg >= kChildFirst && msg <= kChildLast))
        return ToChild(r, msg, wParam, lParam);
    if (msg >= kListFirst && msg <= kListLast) {
        LRESULT result = ToList(r, msg, wParam, lParam);
        if (SyncsAfter(msg) && IsWindow(hWnd))
            HCombSync(r, FALSE, FALSE);
        return result;
    }
    *notHandled = TRUE;
    return 0;
}
