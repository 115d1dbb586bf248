// HTool: a bar of controls from a dialog template that docks to an edge of its
// parent or floats; it passes its children's notices on and rescales them with its font.
#include "buttons/htool.h"
#include "frame/frame.h"

namespace {

constexpr LONG kBarMargin = 6;   // margins of a bar's thickness, which don't scale
constexpr LONG kChildMargin = 3; // the children stand on a margin of 3 pixels

// The two fonts of a font change with their base units.
struct FontPair {
    HWND bar;
    HFONT newFont;
    DWORD oldUnits, newUnits;
};

LONG Scale(LONG v, WORD to, WORD from) { return from ? v * (LONG)to / (LONG)from : v; }

HToolRec* HToolRecordOf(HWND hWnd)
{
    char name[16] = "";
    if (!hWnd || !IsWindow(hWnd) || !GetClassNameA(hWnd, name, sizeof name) || lstrcmpiA(name, HTOOL_CLASS) != 0)
        return nullptr;
    return (HToolRec*)GetWindowLongA(hWnd, 0);
}

HToolRec* HToolNew(HWND hWnd, CREATESTRUCTA* cs)
{
    if (!cs)
        return nullptr;
    HToolRec* t = (HToolRec*)GlobalAlloc(GPTR, sizeof(HToolRec));
    if (!t)
        return nullptr;
    // The toolbar stores its record by SetWindowLongA rather than HM_SETPTR.
    SetWindowLongA(hWnd, 0, (LONG)t);
    t->base.hWnd = hWnd;
    t->base.hNotify = cs->hwndParent;
    t->base.wId = LOWORD((UINT_PTR)cs->hMenu);
    t->base.dwStyle = cs->style;
    t->hBrush = CreateSolidBrush(GetSysColor(COLOR_BTNFACE));
    if (HToolIsFloating(t))
        cs->hMenu = nullptr;
    return t;
}

// Fills the bar from its template, then docks it or sizes the floating frame around it.
void HToolFill(HToolRec* t, const CREATESTRUCTA* cs)
{
    HWND hWnd = t->base.hWnd;
    RECT rc = {0, 0, 0, 0};
    if (!cs || !cs->lpCreateParams ||
        !CreateDialogInWin(cs->hInstance, (LPCSTR)cs->lpCreateParams, hWnd, &rc, &t->base.hFont))
        return; // no template: the bar stays empty
    if (!HToolIsFloating(t)) {
        t->barSize = HToolIsVertical(t) ? rc.right - rc.left : rc.bottom - rc.top;
        HToolUpdate(hWnd);
        return;
    }
    const DWORD style = t->base.dwStyle;
    LONG cx = rc.right - rc.left, cy = rc.bottom - rc.top;
    if (style & WS_BORDER) {
        cy += 2 * GetSystemMetrics(SM_CYBORDER);
        cx += 2 * GetSystemMetrics(SM_CXBORDER);
        if (style & WS_DLGFRAME)
            cy += GetSystemMetrics(SM_CYCAPTION);
    } else if (style & WS_DLGFRAME) {
        cy += GetSystemMetrics(SM_CYCAPTION) + 2 * GetSystemMetrics(SM_CYDLGFRAME);
        cx += 2 * GetSystemMetrics(SM_CXDLGFRAME);
    }
    if (style & WS_THICKFRAME) {
        cy += 2 * GetSystemMetrics(SM_CYFRAME);
        cx += 2 * GetSystemMetrics(SM_CXFRAME);
    }
    RECT at;
    GetWindowRect(hWnd, &at);
    MoveWindow(hWnd, at.left, at.top, cx, cy, TRUE);
}

void HToolErase(HToolRec* t, HDC dc)
{
    HWND hWnd = t->base.hWnd;
    RECT rc;
    GetClientRect(hWnd, &rc);
    if (HToolIsFloating(t)) {
        HGDIOBJ oldBrush = SelectObject(dc, t->hBrush);
        HGDIOBJ oldPen = SelectObject(dc, GetStockObject(NULL_PEN));
        Rectangle(dc, rc.left, rc.top, rc.right + 1, rc.bottom + 1);
        SelectObject(dc, oldPen);
        SelectObject(dc, oldBrush);
        return;
    }
    // The face reaches past both ends, so that only the top and bottom edges show.
    rc.left -= 4;
    rc.right += 4;
    DrawPushButton(hWnd, dc, &rc, 0, DPB_SQUARE, nullptr, nullptr, nullptr, 0);
}

BOOL CALLBACK HToolScaleChild(HWND child, LPARAM lParam)
{
    const FontPair* pair = (const FontPair*)lParam;
    HWND parent = GetParent(child);
    if (parent != pair->bar)
        return TRUE; // a child's own children are its business
    RECT rc;
    GetWindowRect(child, &rc);
    RStoC(parent, &rc);
    const WORD oldW = LOWORD(pair->oldUnits), newW = LOWORD(pair->newUnits);
    const WORD oldH = HIWORD(pair->oldUnits), newH = HIWORD(pair->newUnits);
    rc.left = Scale(rc.left, newW, oldW);
    rc.right = Scale(rc.right, newW, oldW);
    rc.top = Scale(rc.top - kChildMargin, newH, oldH) + kChildMargin;
    rc.bottom = Scale(rc.bottom - kChildMargin, newH, oldH) + kChildMargin;
    SetWindowPos(child, nullptr, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top,
                 SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE);
    SendMessageA(child, WM_SETFONT, (WPARAM)pair->newFont, 1);
    return TRUE;
}

HFONT HToolSetFont(HToolRec* t, HFONT font, BOOL update)
{
    HFONT old = t->base.hFont;
    t->base.dwStyle |= HTS_FONTGIVEN;
    FontPair pair = {t->base.hWnd, font, GetBaseUnits(old), GetBaseUnits(font)};
    const WORD from = HToolIsVertical(t) ? LOWORD(pair.oldUnits) : HIWORD(pair.oldUnits);
    const WORD to = HToolIsVertical(t) ? LOWORD(pair.newUnits) : HIWORD(pair.newUnits);
    t->barSize = Scale(t->barSize - kBarMargin, to, from) + kBarMargin; // an empty bar's 0 scales too
    EnumChildWindows(t->base.hWnd, HToolScaleChild, (LPARAM)&pair);
    t->base.hFont = font;
    if (update)
        HToolUpdate(t->base.hWnd);
    return old;
}

void HToolFree(HToolRec* t)
{
    HWND hWnd = t->base.hWnd;
    if (t->hBrush)
        DeleteObject(t->hBrush);
    if (t->base.hFont && !(t->base.dwStyle & HTS_FONTGIVEN))
        DeleteObject(t->base.hFont);
    HCtlFreeRecord(hWnd, t);
}

} // namespace

void HToolRegister()
{
    HRegisterClass(CS_GLOBALCLASS, HToolWnd, 0, 4, g_hInstance, nullptr, LoadCursorA(nullptr, IDC_ARROW),
                   nullptr, nullptr, HTOOL_CLASS);
}

extern "C" HWND QUILLAPI HToolCreate(HINSTANCE hInstance, LPCSTR templateName, HWND parent, HWND notify,
                                     DWORD style, int id, int x, int y)
{
    if (!(style & WS_POPUP)) {
        style = (style & 0x39FFFFFF) | WS_CHILD;
    } else {
        id = 0;
        style = (style & 0x3937FFFF) | 0x84C80000;
    }
    HWND hWnd = CreateWindowExA(0, HTOOL_CLASS, "", style, x, y, CW_USEDEFAULT, CW_USEDEFAULT, parent,
                                (HMENU)(UINT_PTR)id, hInstance, (LPVOID)templateName);
    if (hWnd && notify)
        SendMessageA(hWnd, HM_SETNOTIFY, (WPARAM)notify, 0);
    return hWnd;
}

extern "C" void QUILLAPI HToolUpdate(HWND hWnd)
{
    HToolRec* t = HToolRecordOf(hWnd);
    if (!t || HToolIsFloating(t))
        return;
    HWND parent = GetParent(hWnd);
    RECT rc, pc;
    GetWindowRect(hWnd, &rc);
    RStoC(parent, &rc);
    GetClientRect(parent, &pc);
    if (t->barSize) {
        if (HToolIsVertical(t))
            rc.right = rc.left + t->barSize;
        else
            rc.bottom = rc.top + t->barSize;
    }
    const LONG w = rc.right - rc.left, h = rc.bottom - rc.top, W = pc.right - pc.left, H = pc.bottom - pc.top;
    const DWORD style = t->base.dwStyle;
    const BOOL own = (style & HTS_OWNLENGTH) != 0;
    if (style & HTS_BOTTOM)
        MoveWindow(hWnd, 0, H - h, own ? w : W, h, TRUE);
    else if (style & HTS_RIGHT)
        MoveWindow(hWnd, W - w, 0, w, own ? h : H, TRUE);
    else if (style & HTS_LEFT)
        MoveWindow(hWnd, 0, 0, w, own ? h : H, TRUE);
    else
        MoveWindow(hWnd, 0, 0, own ? w : W, h, TRUE);
    if (!IsWindow(hWnd))
        return;
    t->parentWidth = W;
    t->parentHeight = H;
}

extern "C" LRESULT CALLBACK HToolWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HToolMsgHandler, 0);
}

extern "C" LRESULT CALLBACK HToolMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HToolRec* t = (HToolRec*)record;
    BOOL dummy = FALSE;
    if (!notHandled)
        notHandled = &dummy;
    *notHandled = FALSE;
    if (msg == WM_NCCREATE) {
        if (!HToolNew(hWnd, (CREATESTRUCTA*)lParam))
            return 0;
        *notHandled = TRUE;
        return 0;
    }
    if (!t) {
        *notHandled = TRUE;
        return 0;
    }
    switch (msg) {
    case WM_CREATE:
        HToolFill(t, (const CREATESTRUCTA*)lParam);
        break;
    case WM_ERASEBKGND:
        HToolErase(t, (HDC)wParam);
        return 1;
    case WM_SETFONT:
        return (LRESULT)HToolSetFont(t, (HFONT)wParam, lParam != 0);
    case WM_NCDESTROY:
        HToolFree(t);
        break;
    case WM_COMMAND:
        // The bar is no stop on the way: the child's own id and window go on.
        if (IsWindow(t->base.hNotify) && !(t->base.wFlags & HCTLF_NONOTIFY))
            SendMessageA(t->base.hNotify, msg, wParam, lParam);
        break;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        if (IsWindow(t->base.hNotify))
            return SendMessageA(t->base.hNotify, msg, wParam, lParam);
        break;
    case HTM_GETBRUSH:
        return (LRESULT)t->hBrush;
    case HTM_SETBRUSH: {
        // The old brush passes to the caller, who deletes it.
        HBRUSH old = t->hBrush;
        t->hBrush = wParam ? (HBRUSH)wParam : CreateSolidBrush(GetSysColor(COLOR_BTNFACE));
        return (LRESULT)old;
    }
    case HTM_GETBARSIZE:
        return t->barSize;
    case HTM_SETBARSIZE:
        t->barSize = (LONG)wParam < 1 ? 0 : (LONG)wParam;
        if (lParam)
            HToolUpdate(hWnd);
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
