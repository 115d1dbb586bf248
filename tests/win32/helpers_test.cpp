// The exported window and geometry helpers, on real windows.
#include "wintest.h"

#include <string.h>

namespace {

LRESULT CALLBACK OtherProc(HWND h, UINT m, WPARAM w, LPARAM l) { return DefWindowProcA(h, m, w, l); }

TEST(WindowHelpers, SubclassExchangesTheProcedureOnce)
{
    TestParent parent;
    HWND w = parent.Child("STATIC", "x", 0, 1);
    WNDPROC original = (WNDPROC)GetWindowLongA(w, GWL_WNDPROC);
    EXPECT_EQ(original, SubclassWW(w, OtherProc));
    EXPECT_EQ(nullptr, SubclassWW(w, OtherProc)); // already in place: nothing changes
    EXPECT_EQ((LONG)OtherProc, GetWindowLongA(w, GWL_WNDPROC));
    EXPECT_EQ(OtherProc, SubclassWW(w, original));
}

TEST(WindowHelpers, WidthAndHeightOfTheWindowRectangle)
{
    TestParent parent;
    HWND w = parent.Child("STATIC", "", WS_BORDER, 1, 5, 6, 70, 33);
    EXPECT_EQ(70, WindowWidth(w));
    EXPECT_EQ(33, WindowHeight(w));
    DestroyWindow(w);
    EXPECT_EQ(0, WindowWidth(w));
    EXPECT_EQ(0, WindowHeight(w));
    EXPECT_EQ(0, WindowWidth(nullptr));
}

TEST(WindowHelpers, CenterWindowOnTheScreenAndInAParent)
{
    HWND top = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
    CenterWindow(top, 10);
    RECT r;
    GetWindowRect(top, &r);
    EXPECT_EQ((GetSystemMetrics(SM_CXSCREEN) - 200) / 2, r.left);
    EXPECT_EQ((GetSystemMetrics(SM_CYSCREEN) - 100) / 2 + 10, r.top);

    // larger than the screen: placed at the origin
    MoveWindow(top, 50, 50, GetSystemMetrics(SM_CXSCREEN) + 300, GetSystemMetrics(SM_CYSCREEN) + 300, FALSE);
    CenterWindow(top, 0);
    GetWindowRect(top, &r);
    EXPECT_EQ(0, r.left);
    EXPECT_EQ(0, r.top);
    DestroyWindow(top);
    CenterWindow(top, 0); // no window: nothing happens

    // a child is centred in its parent's client area, in screen terms
    TestParent parent;
    MoveWindow(parent.hwnd(), 100, 80, 400, 300, FALSE);
    HWND child = parent.Child("STATIC", "", 0, 2, 0, 0, 40, 20);
    RECT client;
    GetClientRect(parent.hwnd(), &client);
    POINT origin = {0, 0};
    ClientToScreen(parent.hwnd(), &origin);
    CenterWindow(child, 0);
    // The routine passes screen coordinates to MoveWindow, which a child takes
    // as its parent's client coordinates: the child ends up offset by the origin.
    GetWindowRect(child, &r);
    POINT got = {r.left, r.top};
    ScreenToClient(parent.hwnd(), &got);
    EXPECT_EQ((client.right - 40) / 2 + origin.x, got.x);
    EXPECT_EQ((client.bottom - 20) / 2 + origin.y, got.y);
}

TEST(WindowHelpers, RectangleMapsBothCorners)
{
    TestParent parent;
    MoveWindow(parent.hwnd(), 30, 40, 300, 200, FALSE);
    POINT origin = {0, 0};
    ClientToScreen(parent.hwnd(), &origin);
    RECT r = {1, 2, 11, 22};
    RCtoS(parent.hwnd(), &r);
    EXPECT_EQ(1 + origin.x, r.left);
    EXPECT_EQ(22 + origin.y, r.bottom);
    RStoC(parent.hwnd(), &r);
    EXPECT_EQ(1, r.left);
    EXPECT_EQ(2, r.top);
    EXPECT_EQ(11, r.right);
    EXPECT_EQ(22, r.bottom);
}

TEST(WindowHelpers, BaseUnitsMeasureTheAlphabet)
{
    HFONT font = (HFONT)GetStockObject(ANSI_VAR_FONT);
    for (HFONT f : {(HFONT) nullptr, font}) {
        HDC dc = GetDC(nullptr);
        HGDIOBJ old = SelectObject(dc, f ? f : (HFONT)GetStockObject(SYSTEM_FONT));
        SIZE s;
        GetTextExtentPointA(dc, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", 52, &s);
        SelectObject(dc, old);
        ReleaseDC(nullptr, dc);
        DWORD units = GetBaseUnits(f);
        EXPECT_EQ(s.cx / 52, (LONG)LOWORD(units));
        EXPECT_EQ(s.cy, (LONG)HIWORD(units));
        EXPECT_GT(LOWORD(units), 0);
    }
}

TEST(WindowHelpers, ConstantsAndStubs)
{
    EXPECT_STREQ("Quillet.hlp", GetHelpName());
    EXPECT_EQ(0, DemoDlg());
    int before = GetOverwriteMode();
    EXPECT_EQ(before, SetOverwriteMode(1));
    EXPECT_EQ(1, GetOverwriteMode());
    EXPECT_EQ(1, SetOverwriteMode(before));
    WriteDebug("%s %d", "debug line", 42); // reaches OutputDebugStringA; must not fail
    char longText[600];
    memset(longText, 'x', sizeof longText - 1);
    longText[sizeof longText - 1] = 0;
    WriteDebug("%s%s", longText, longText); // longer than the line: cut, not overrun
}

} // namespace
