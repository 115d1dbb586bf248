// HEdit and HEdit_SS: registration, window procedure and class handler.
#include "frame/frame.h"

// The instance record; the control's behaviour fills it in.
struct HEditRec {
    HCtlBaseEx base; // common head with the creation style
};

void HEditRegister()
{
    HRegisterClass(CS_GLOBALCLASS | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, HEditWnd, 0, 4, g_hInstance, nullptr,
                   g_hArrowCursor, nullptr, nullptr, HEDITSS_CLASS);
    HRegisterClass(CS_GLOBALCLASS | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, HEditWnd, 0, 4, g_hInstance, nullptr,
                   g_hArrowCursor, nullptr, nullptr, HEDIT_CLASS);
}

extern "C" LRESULT CALLBACK HEditWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HEditMsgHandler, 0);
}

extern "C" LRESULT CALLBACK HEditMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HEditRec* r = (HEditRec*)record;
    switch (msg) {
    case WM_NCCREATE: {
        const CREATESTRUCTA* cs = (const CREATESTRUCTA*)lParam;
        r = (HEditRec*)HCtlNewRecord(hWnd, cs, sizeof(HEditRec));
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
