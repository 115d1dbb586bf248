// HTool: registration, window procedure and class handler.
#include "frame/frame.h"

// The toolbar's instance record; its behaviour fills it in.
struct HToolRec {
    HCtlBaseEx base; // common head with the creation style
};

void HToolRegister()
{
    HRegisterClass(CS_GLOBALCLASS, HToolWnd, 0, 4, g_hInstance, nullptr, LoadCursorA(nullptr, IDC_ARROW),
                   nullptr, nullptr, HTOOL_CLASS);
}

extern "C" LRESULT CALLBACK HToolWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HToolMsgHandler, 0);
}

extern "C" LRESULT CALLBACK HToolMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HToolRec* t = (HToolRec*)record;
    switch (msg) {
    case WM_NCCREATE: {
        // The toolbar stores its record by SetWindowLongA rather than HM_SETPTR.
        const CREATESTRUCTA* cs = (const CREATESTRUCTA*)lParam;
        t = (HToolRec*)GlobalAlloc(GPTR, sizeof(HToolRec));
        if (!t)
            return 0;
        SetWindowLongA(hWnd, 0, (LONG)t);
        t->base.hWnd = hWnd;
        t->base.hNotify = cs->hwndParent;
        t->base.wId = LOWORD((UINT_PTR)cs->hMenu);
        t->base.dwStyle = cs->style;
        break;
    }
    case WM_NCDESTROY:
        HCtlFreeRecord(hWnd, t);
        break;
    case HM_SETSTYLE: // the whole word, not the common half-and-half
        t->base.dwStyle = (DWORD)lParam;
        InvalidateRect(hWnd, nullptr, FALSE);
        UpdateWindow(hWnd);
        return 1;
    }
    *notHandled = TRUE;
    return 0;
}
