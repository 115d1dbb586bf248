// HStat: registration, window procedure and class handler.
#include "frame/frame.h"

// The instance record; the control's behaviour fills it in.
struct HStatRec {
    HWND hWnd;      // the control
    HWND hNotify;   // notify target
    WORD wId;       // control id
    WORD wPad;      // keeps hFont aligned
    HFONT hFont;    // current font
    DWORD dwStyle;  // the whole creation style; its low half is the flags word
    LPSTR text;     // the text shown
};

void HStatRegister()
{
    HRegisterClass(CS_GLOBALCLASS | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, HStatWnd, 0, 4, g_hInstance, nullptr,
                   LoadCursorA(nullptr, IDC_ARROW), nullptr, nullptr, HSTAT_CLASS);
}

extern "C" LRESULT CALLBACK HStatWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HStatMsgHandler, 0);
}

extern "C" LRESULT CALLBACK HStatMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HStatRec* r = (HStatRec*)record;
    switch (msg) {
    case WM_NCCREATE: {
        const CREATESTRUCTA* cs = (const CREATESTRUCTA*)lParam;
        r = (HStatRec*)HCtlNewRecord(hWnd, cs, sizeof(HStatRec));
        if (!r)
            return 0;
        r->dwStyle = cs->style;
        break;
    }
    case WM_NCDESTROY:
        HCtlFreeRecord(hWnd, r);
        break;
    }
    *notHandled = TRUE;
    return 0;
}
