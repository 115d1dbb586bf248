// HButt: registration, window procedure and class handler.
#include "frame/frame.h"

// The button's instance record; its behaviour fills it in.
struct HButtRec {
    HCtlBaseEx base; // common head with the creation style
};

void HButtRegister()
{
    HRegisterClass(CS_GLOBALCLASS | CS_PARENTDC | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, HButtWnd, 0, 8,
                   g_hInstance, nullptr, LoadCursorA(nullptr, IDC_ARROW), (HBRUSH)(COLOR_WINDOW + 1),
                   nullptr, HBUTT_CLASS);
}

extern "C" LRESULT CALLBACK HButtWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HButtMsgHandler, 4);
}

extern "C" LRESULT CALLBACK HButtMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HButtRec* b = (HButtRec*)record;
    switch (msg) {
    case WM_NCCREATE: {
        const CREATESTRUCTA* cs = (const CREATESTRUCTA*)lParam;
        b = (HButtRec*)HCtlNewRecord(hWnd, cs, sizeof(HButtRec));
        if (!b)
            return 0;
        b->base.dwStyle = cs->style;
        break;
    }
    case WM_NCDESTROY:
        HCtlFreeRecord(hWnd, b);
        break;
    }
    *notHandled = TRUE;
    return 0;
}
