// Window and geometry helpers shared by the controls and open to applications.
#include "frame.h"

#include <stdarg.h>
#include <stdio.h>
#include <string.h>

extern "C" void QUILLAPI CenterWindow(HWND hWnd, int offset)
{
    if (!IsWindow(hWnd))
        return;
    int width = WindowWidth(hWnd), height = WindowHeight(hWnd);
    HWND parent = GetParent(hWnd);
    RECT frame = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (parent)
        GetClientRect(parent, &frame);
    POINT p = {(frame.right - frame.left - width) / 2, (frame.bottom - frame.top - height) / 2 + offset};
    if (parent)
        ClientToScreen(parent, &p);
    if (p.x < 1) p.x = 0;
    if (p.y < 1) p.y = 0;
    MoveWindow(hWnd, p.x, p.y, width, height, TRUE);
}

extern "C" void QUILLAPI RCtoS(HWND hWnd, LPRECT rect)
{
    if (!rect) return;
    ClientToScreen(hWnd, (LPPOINT)&rect->left);
    ClientToScreen(hWnd, (LPPOINT)&rect->right);
}

extern "C" void QUILLAPI RStoC(HWND hWnd, LPRECT rect)
{
    if (!rect) return;
    ScreenToClient(hWnd, (LPPOINT)&rect->left);
    ScreenToClient(hWnd, (LPPOINT)&rect->right);
}

extern "C" int QUILLAPI WindowWidth(HWND hWnd)
{
    RECT r;
    if (!IsWindow(hWnd) || !GetWindowRect(hWnd, &r)) return 0;
    return r.right - r.left;
}

extern "C" int QUILLAPI WindowHeight(HWND hWnd)
{
    RECT r;
    if (!IsWindow(hWnd) || !GetWindowRect(hWnd, &r)) return 0;
    return r.bottom - r.top;
}

// Measured anew at each call: no cache, so a font change is seen at once.
extern "C" DWORD QUILLAPI GetBaseUnits(HFONT hFont)
{
    static const char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    HDC dc = GetDC(nullptr);
    if (!hFont)
        hFont = (HFONT)GetStockObject(SYSTEM_FONT);
    HGDIOBJ old = SelectObject(dc, hFont);
    SIZE size = {0, 0};
    GetTextExtentPointA(dc, kAlphabet, 52, &size);
    SelectObject(dc, old);
    ReleaseDC(nullptr, dc);
    return MAKELONG((WORD)(size.cx / 52), (WORD)size.cy);
}

extern "C" WNDPROC QUILLAPI SubclassWW(HWND hWnd, WNDPROC newProc)
{
    if ((WNDPROC)GetWindowLongA(hWnd, GWL_WNDPROC) == newProc)
        return nullptr;
    return (WNDPROC)SetWindowLongA(hWnd, GWL_WNDPROC, (LONG)newProc);
}

extern "C" void __cdecl WriteDebug(LPCSTR format, ...)
{
    // wvsprintfA writes at most 1024 characters; the line passed on is cut to 255.
    char wide[1025];
    char line[256];
    if (!format) return;
    va_list args;
    va_start(args, format);
    wvsprintfA(wide, format, args);
    va_end(args);
    lstrcpynA(line, wide, sizeof line);
    OutputDebugStringA(line);
}

DWORD HTextExtent(HDC hDC, LPCSTR text)
{
    LONG width = 0, height = 0;
    if (!text) return 0;
    const char* start = text;
    for (;;) {
        const char* end = strchr(start, '\n');
        int len = end ? (int)(end - start) : (int)strlen(start);
        if (len > 0) {
            RECT r = {0, 0, 0, 0};
            DrawTextA(hDC, start, len, &r, DT_CALCRECT | DT_EXPANDTABS | DT_SINGLELINE);
            if (r.right - r.left > width) width = r.right - r.left;
            height += r.bottom - r.top;
        }
        if (!end) break;
        start = end + 1;
    }
    return MAKELONG((WORD)width, (WORD)height);
}

WORD HGetVersion()
{
    DWORD v = GetVersion();
    return (WORD)((LOBYTE(LOWORD(v)) << 8) | HIBYTE(LOWORD(v)));
}

POINT HSplitPoint(DWORD packed)
{
    POINT p = {(LONG)(SHORT)LOWORD(packed), (LONG)(SHORT)HIWORD(packed)};
    return p;
}

void HUpdateTopLevel(HWND hWnd)
{
    HWND top = hWnd;
    for (HWND p = GetParent(top); p; p = GetParent(p))
        top = p;
    UpdateWindow(top);
}

namespace {
struct ExcludeState {
    HWND self;
    HDC dc;
    RECT screen; // the window's own rectangle on the screen
};
}

static BOOL CALLBACK HExcludeOne(HWND other, LPARAM lParam)
{
    ExcludeState* s = (ExcludeState*)lParam;
    if (other == s->self || !IsWindowVisible(other))
        return TRUE;
    char name[65] = "";
    GetClassNameA(other, name, 64);
    if ((lstrcmpiA(name, HSTAT_CLASS) == 0 || lstrcmpiA(name, HBUTT_CLASS) == 0)
        && SendMessageA(other, HM_GETSTYLE, 0, 0) != 0)
        return TRUE;
    RECT r, cut;
    GetWindowRect(other, &r);
    if (IntersectRect(&cut, &r, &s->screen)) {
        RStoC(s->self, &cut);
        ExcludeClipRect(s->dc, cut.left, cut.top, cut.right, cut.bottom);
    }
    return TRUE; // always on to the end
}

void HExcludeSiblings(HWND hWnd, HDC hDC)
{
    ExcludeState s = {hWnd, hDC, {0, 0, 0, 0}};
    GetWindowRect(hWnd, &s.screen);
    EnumChildWindows(GetParent(hWnd), HExcludeOne, (LPARAM)&s);
}

// The drag loop: calls back with the cursor point, paced so that the further
// the cursor is outside the window, the faster the control scrolls. It spins
// on the clock without sleeping, and ends at the button's release or a veto.
void HCtlTrackMouse(LPVOID record, HCTLTRACKPROC callback, BOOL horizontal)
{
    if (GetVersion() & 0x80000000)
        return; // not the NT family: plain mouse messages do the work
    HCtlBase* c = (HCtlBase*)record;
    if (!c || !callback)
        return;
    HWND hWnd = c->hWnd;
    DWORD delay = 0, last = 0;
    POINT noted = {0, 0};
    RECT rc;
    GetClientRect(hWnd, &rc);
    for (;;) {
        POINT pt;
        GetCursorPos(&pt);
        ScreenToClient(hWnd, &pt);
        if (c->wFlags & HCTLF_VETO) {
            PostMessageA(hWnd, WM_LBUTTONUP, 0, (LPARAM)pt.x);
            return;
        }
        DWORD now = GetTickCount();
        if (now > last + delay) {
            callback(record, MAKELONG((WORD)pt.x, (WORD)pt.y));
            if (!IsWindow(hWnd))
                return;
            UpdateWindow(hWnd);
            noted = pt;
            last = now;
        }
        delay = 0;
        LONG d = rc.top - pt.y > pt.y - rc.bottom ? rc.top - pt.y : pt.y - rc.bottom;
        if (d > 0) {
            if (d < 20) delay = 200;
            else if (d <= 40) delay = (DWORD)(40 - d) * 10;
        } else if (horizontal) {
            LONG e = rc.left - pt.x > pt.x - rc.right ? rc.left - pt.x : pt.x - rc.right;
            if (e < 10) {
                LONG dx = pt.x - noted.x, dy = pt.y - noted.y;
                if (dx < 0) dx = -dx;
                if (dy < 0) dy = -dy;
                if ((dx == 0 && dy < 3) || dy < dx) {
                    if (dx <= 9) delay = 300;
                    else if (dx <= 20) delay = (DWORD)(20 - dx) * 30;
                }
            }
        }
        MSG m;
        if (PeekMessageA(&m, hWnd, WM_LBUTTONUP, WM_LBUTTONUP, PM_NOREMOVE))
            return;
    }
}

static DWORD g_debugTicks;

void HDebugTimerStart() { g_debugTicks = GetTickCount(); }

void HDebugTimerStop(LPCSTR text)
{
    g_debugTicks = GetTickCount() - g_debugTicks;
    if (text) {
        OutputDebugStringA(text);
        OutputDebugStringA("\r\n");
    }
    char line[64];
    wsprintfA(line, "%lu msec elapsed", (unsigned long)g_debugTicks);
    OutputDebugStringA(line);
    OutputDebugStringA("\r\n\r\n");
}
