// HGrid: registration, window procedure and class handler.
#include "frame/frame.h"

// The instance record; the control's behaviour fills it in.
struct HGridRec {
    HCtlBase base; // common head
};

void HGridRegister()
{
    if (g_hGridCursor)
        return; // registered once
    g_hGridCursor = LoadCursorA(g_hInstance, MAKEINTRESOURCEA(IDC_HGRID_CURSOR));
    HRegisterClass(CS_GLOBALCLASS | CS_DBLCLKS, HGridWnd, 0, 4, g_hInstance,
                   LoadIconA(g_hInstance, MAKEINTRESOURCEA(IDI_HGRID_ICON)), g_hGridCursor,
                   (HBRUSH)(COLOR_WINDOW + 1), nullptr, HGRID_CLASS);
}

extern "C" LRESULT CALLBACK HGridWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HGridMsgHandler, 0);
}

extern "C" LRESULT CALLBACK HGridMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HGridRec* r = (HGridRec*)record;
    switch (msg) {
    case WM_NCCREATE: {
        const CREATESTRUCTA* cs = (const CREATESTRUCTA*)lParam;
        r = (HGridRec*)HCtlNewRecord(hWnd, cs, sizeof(HGridRec));
        if (!r)
            return 0;
        
        break;
    }
    case WM_NCDESTROY:
        HCtlFreeRecord(hWnd, r);
        break;
    }
    *notHandled = TRUE;
    return 0;
}
