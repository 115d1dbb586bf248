// HList: registration, window procedure and class handler.
#include "frame/frame.h"

// The instance record; the control's behaviour fills it in.
struct HListRec {
    HCtlBaseEx base; // common head with the creation style
};

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
    HListRec* r = (HListRec*)record;
    switch (msg) {
    case WM_NCCREATE: {
        const CREATESTRUCTA* cs = (const CREATESTRUCTA*)lParam;
        r = (HListRec*)HCtlNewRecord(hWnd, cs, sizeof(HListRec));
        if (!r)
            return 0;
        r->base.dwStyle = cs->style;
        break;
    }
    case WM_NCDESTROY:
        HCtlFreeRecord(hWnd, r);
        break;
    }
    *notHandled = TRUE;
    return 0;
}
