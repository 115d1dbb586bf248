// HComb: registration, window procedure and class handler.
#include "frame/frame.h"

// The instance record; the control's behaviour fills it in.
struct HCombRec {
    HCtlBaseEx base; // common head with the creation style
};

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

extern "C" LRESULT CALLBACK HCombMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HCombRec* r = (HCombRec*)record;
    switch (msg) {
    case WM_NCCREATE: {
        const CREATESTRUCTA* cs = (const CREATESTRUCTA*)lParam;
        r = (HCombRec*)HCtlNewRecord(hWnd, cs, sizeof(HCombRec));
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

// The drop list of a combo: takes what it needs itself and leaves the rest to HList.
extern "C" LRESULT CALLBACK HDropWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HListWnd(hWnd, msg, wParam, lParam);
}
