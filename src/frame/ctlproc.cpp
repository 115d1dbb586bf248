// The spine of every control: the shared window procedure, the common messages,
// notifications with their veto, colour requests and the design-time test.
#include "frame.h"

#include <string.h>

extern "C" LRESULT QUILLAPI HCtlWndProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                        HCTLHANDLER handler, int slot)
{
    LPVOID record = (LPVOID)GetWindowLongA(hWnd, slot);
    if (msg == HM_GETPTR)
        return (LRESULT)record;
    if (msg == HM_SETPTR) {
        SetWindowLongA(hWnd, slot, (LONG)lParam);
        return 0;
    }
    // Until WM_NCCREATE has attached a record, and after WM_NCDESTROY has
    // cleared it, no handler runs: the control is a plain window.
    BOOL notHandled = (!record && msg != WM_NCCREATE) ? TRUE : FALSE;
    if (!notHandled) {
        LRESULT r = handler(hWnd, msg, wParam, lParam, &notHandled, record);
        if (!notHandled)
            return r; // the flag decides, never the value
    }
    LRESULT result = 0;
    if (HCtlCommonMsg(record, msg, wParam, lParam, &result))
        return result;
    return DefWindowProcA(hWnd, msg, wParam, lParam);
}

extern "C" BOOL QUILLAPI HCtlCommonMsg(LPVOID record, UINT msg, WPARAM wParam, LPARAM lParam,
                                       LRESULT* result)
{
    HCtlBaseEx* c = (HCtlBaseEx*)record;
    if (!c || !result)
        return FALSE; // a window without a record answers nothing of its own
    switch (msg) {
    case WM_SETFONT: {
        HFONT old = c->hFont;
        c->hFont = (HFONT)wParam;
        SendMessageA(c->hWnd, WM_SIZE, 0, 0);
        *result = (LRESULT)old;
        return TRUE;
    }
    case WM_GETFONT:
        *result = (LRESULT)c->hFont;
        return TRUE;
    case HM_GETMODIFY:
        *result = c->wFlags & HCTLF_MODIFIED;
        return TRUE;
    case HM_SETMODIFY:
        if (wParam) c->wFlags |= HCTLF_MODIFIED;
        else c->wFlags &= (WORD)~HCTLF_MODIFIED;
        *result = 1;
        return TRUE;
    case HM_SETNONOTIFY:
        if (wParam) c->wFlags |= HCTLF_NONOTIFY;
        else c->wFlags &= (WORD)~HCTLF_NONOTIFY;
        *result = 1;
        return TRUE;
    case HM_GETNONOTIFY:
        *result = c->wFlags & HCTLF_NONOTIFY;
        return TRUE;
    case HM_GETNOTIFY:
        *result = (LRESULT)c->hNotify;
        return TRUE;
    case HM_SETNOTIFY: {
        HWND old = c->hNotify;
        c->hNotify = (HWND)wParam;
        *result = (LRESULT)old;
        return TRUE;
    }
    case HM_GETSTYLE:
        *result = (LRESULT)(HIWORD(c->dwStyle) | ((DWORD)c->wExtra << 16));
        return TRUE;
    case HM_SETSTYLE:
        c->dwStyle = (c->dwStyle & 0xFFFF) | ((DWORD)LOWORD(lParam) << 16);
        c->wExtra = HIWORD(lParam);
        *result = 1;
        return TRUE;
    case HM_VETO:
        c->wFlags |= HCTLF_VETO;
        *result = 1;
        return TRUE;
    }
    return FALSE;
}

extern "C" DWORD QUILLAPI HCtlNotify(LPVOID record, UINT code)
{
    HCtlBase* c = (HCtlBase*)record;
    if (!c || !c->hNotify || (c->wFlags & HCTLF_NONOTIFY))
        return 0;
    c->wFlags &= (WORD)~HCTLF_VETO;
    HWND self = c->hWnd;
    SendMessageA(c->hNotify, WM_COMMAND, MAKEWPARAM(c->wId, (WORD)code), (LPARAM)self);
    if (!IsWindow(self))
        return HCTLF_VETO; // destroyed by the receiver: callers must not touch the record
    if (c->wFlags & HCTLF_VETO) {
        c->wFlags &= (WORD)~HCTLF_VETO;
        return HCTLF_VETO;
    }
    return 0;
}

extern "C" HBRUSH QUILLAPI HCtlColor(LPVOID record, int kind, HDC hDC)
{
    static constexpr struct { int kind; UINT msg; } kRequests[] = {
        {CTLCOLOR_EDIT, WM_CTLCOLOREDIT},     {CTLCOLOR_LISTBOX, WM_CTLCOLORLISTBOX},
        {CTLCOLOR_BTN, WM_CTLCOLORBTN},       {CTLCOLOR_STATIC, WM_CTLCOLORSTATIC},
        {HCTLCOLOR_GRID, HGM_CTLCOLOR},
    };
    HCtlBase* c = (HCtlBase*)record;
    for (const auto& r : kRequests)
        if (r.kind == kind)
            return c ? (HBRUSH)SendMessageA(c->hNotify, r.msg, (WPARAM)hDC, (LPARAM)c->hWnd) : nullptr;
    return (HBRUSH)GetStockObject(WHITE_BRUSH);
}

extern "C" WORD QUILLAPI HCtlDesignMode(HWND hWnd)
{
    HWND top = hWnd;
    for (HWND p = GetParent(top); p; p = GetParent(p))
        top = p;
    char name[64] = "";
    GetClassNameA(top, name, sizeof name);
    if (_strnicmp(name, "RWSWnd", 6) == 0)
        return HCTL_DESIGN_RWS;
    if (_strnicmp(name, "DlgEdit", 7) == 0)
        return HCTL_DESIGN_DLGEDIT;
    return 0;
}

LPVOID HCtlNewRecord(HWND hWnd, const CREATESTRUCTA* cs, UINT size)
{
    HCtlBase* c = (HCtlBase*)GlobalAlloc(GPTR, size < sizeof(HCtlBase) ? sizeof(HCtlBase) : size);
    if (!c)
        return nullptr;
    SendMessageA(hWnd, HM_SETPTR, 0, (LPARAM)c);
    c->hWnd = hWnd;
    if (cs) {
        c->hNotify = cs->hwndParent;
        c->wId = LOWORD((UINT_PTR)cs->hMenu);
    }
    return c;
}

void HCtlFreeRecord(HWND hWnd, LPVOID record)
{
    if (record)
        GlobalFree((HGLOBAL)record);
    SendMessageA(hWnd, HM_SETPTR, 0, 0);
}
