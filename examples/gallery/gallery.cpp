// The gallery: a host program that loads QUILL32.dll and shows what it offers.
// "gallery /shot FILE.bmp" paints once, saves the window as a bitmap and exits.
#include <windows.h>
#include <stdio.h>
#include <string.h>

#include "quill32.h"

namespace {

const char* const kClasses[] = {HBUTT_CLASS, HEDITSS_CLASS, HEDIT_CLASS, HLIST_CLASS, HSTAT_CLASS,
                                HTOOL_CLASS, HCOMB_CLASS,   HDROP_CLASS, HGRID_CLASS};

struct StyleBit {
    UINT bit;
    const char* name;
};
constexpr StyleBit kStyleBits[] = {{CS_GLOBALCLASS, "GLOBALCLASS"}, {CS_SAVEBITS, "SAVEBITS"},
                                   {CS_PARENTDC, "PARENTDC"},       {CS_DBLCLKS, "DBLCLKS"},
                                   {CS_HREDRAW, "HREDRAW"},         {CS_VREDRAW, "VREDRAW"}};

// One line per class, as GetClassInfoA reads it back from the library's module.
void DescribeClass(const char* name, char* line, size_t size)
{
    WNDCLASSA wc = {};
    if (!GetClassInfoA(GetModuleHandleA("QUILL32.dll"), name, &wc)) {
        snprintf(line, size, "%-9s  not registered", name);
        return;
    }
    char bits[128] = "";
    for (const auto& b : kStyleBits)
        if (wc.style & b.bit) {
            if (bits[0]) strncat(bits, " | ", sizeof bits - strlen(bits) - 1);
            strncat(bits, b.name, sizeof bits - strlen(bits) - 1);
        }
    snprintf(line, size, "%-9s  style 0x%04X  class extra %d  window extra %-2d %s%s  %s", name, wc.style,
             wc.cbClsExtra, wc.cbWndExtra, wc.hCursor ? "cursor" : "      ", wc.hIcon ? " icon" : "     ", bits);
}

void Paint(HWND hWnd, HDC dc)
{
    RECT rc;
    GetClientRect(hWnd, &rc);
    FillRect(dc, &rc, (HBRUSH)(COLOR_WINDOW + 1));
    HFONT font = (HFONT)GetStockObject(ANSI_FIXED_FONT);
    HGDIOBJ old = SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    TEXTMETRICA tm;
    GetTextMetricsA(dc, &tm);
    int y = 12, step = tm.tmHeight + 6;
    const char* title = "QUILL32.dll - registered window classes";
    TextOutA(dc, 12, y, title, (int)strlen(title));
    y += step * 2;
    for (const char* name : kClasses) {
        char line[256];
        DescribeClass(name, line, sizeof line);
        TextOutA(dc, 12, y, line, (int)strlen(line));
        y += step;
    }
    WNDCLASSA grid = {};
    if (GetClassInfoA(GetModuleHandleA("QUILL32.dll"), HGRID_CLASS, &grid)) {
        y += step / 2;
        const char* note = "HGrid's class icon and cursor, loaded from the library's resources:";
        TextOutA(dc, 12, y, note, (int)strlen(note));
        DrawIcon(dc, 12, y + step, grid.hIcon);
        DrawIcon(dc, 60, y + step, (HICON)grid.hCursor);
    }
    SelectObject(dc, old);
}

LRESULT CALLBACK GalleryProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(hWnd, &ps);
        Paint(hWnd, dc);
        EndPaint(hWnd, &ps);
        return 0;
    }
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcA(hWnd, msg, wParam, lParam);
}

// Prints the visible children of a window into dc, bottom of the z-order first,
// each at its place; the library's controls paint in WM_ERASEBKGND, which
// WM_PRINT with PRF_ERASEBKGND sends.
void PrintChildren(HWND hWnd, HDC dc, POINT origin)
{
    for (HWND c = GetWindow(GetWindow(hWnd, GW_CHILD), GW_HWNDLAST); c; c = GetWindow(c, GW_HWNDPREV)) {
        if (!IsWindowVisible(c))
            continue;
        RECT r;
        GetWindowRect(c, &r);
        MapWindowPoints(nullptr, hWnd, (LPPOINT)&r, 2);
        POINT at = {origin.x + r.left, origin.y + r.top};
        // Each child prints into a bitmap of its own size, which then goes to its
        // place: controls that clip to their client rectangle expect no offset.
        int w = r.right - r.left, h = r.bottom - r.top;
        HDC own = CreateCompatibleDC(dc);
        HBITMAP bits = CreateCompatibleBitmap(dc, w, h);
        HGDIOBJ old = SelectObject(own, bits);
        BitBlt(own, 0, 0, w, h, dc, at.x, at.y, SRCCOPY); // what shows through a transparent child
        SendMessageA(c, WM_PRINT, (WPARAM)own, PRF_NONCLIENT | PRF_ERASEBKGND | PRF_CLIENT);
        BitBlt(dc, at.x, at.y, w, h, own, 0, 0, SRCCOPY);
        SelectObject(own, old);
        DeleteObject(bits);
        DeleteDC(own);
        POINT client = {0, 0};
        ClientToScreen(c, &client);
        ScreenToClient(hWnd, &client);
        PrintChildren(c, dc, {origin.x + client.x, origin.y + client.y});
    }
}

// Paints the client area into a memory bitmap and writes it as a 24-bit BMP.
bool SaveShot(HWND hWnd, const char* path)
{
    RECT rc;
    GetClientRect(hWnd, &rc);
    int w = rc.right, h = rc.bottom;
    HDC screen = GetDC(hWnd);
    HDC mem = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, w, h);
    HGDIOBJ old = SelectObject(mem, bmp);
    SendMessageA(hWnd, WM_PRINTCLIENT, (WPARAM)mem, PRF_CLIENT);
    Paint(hWnd, mem);
    PrintChildren(hWnd, mem, {0, 0});
    SelectObject(mem, old);
    BITMAPINFOHEADER bi = {sizeof bi, w, h, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    int stride = ((w * 3 + 3) / 4) * 4;
    bi.biSizeImage = stride * h;
    char* bits = (char*)GlobalAlloc(GPTR, bi.biSizeImage);
    bool ok = bits && GetDIBits(mem, bmp, 0, h, bits, (BITMAPINFO*)&bi, DIB_RGB_COLORS) == h;
    if (ok) {
        BITMAPFILEHEADER fh = {0x4D42, (DWORD)(sizeof fh + sizeof bi + bi.biSizeImage), 0, 0,
                               (DWORD)(sizeof fh + sizeof bi)};
        FILE* f = fopen(path, "wb");
        ok = f && fwrite(&fh, sizeof fh, 1, f) == 1 && fwrite(&bi, sizeof bi, 1, f) == 1
             && fwrite(bits, bi.biSizeImage, 1, f) == 1;
        if (f) fclose(f);
    }
    GlobalFree(bits);
    DeleteObject(bmp);
    DeleteDC(mem);
    ReleaseDC(hWnd, screen);
    return ok;
}

} // namespace

// The HStat page and its CreateDialogInWin pane (statpage.cpp).
HWND GalleryStatPage(HWND parent, int x, int y);
// The HButt row (buttpage.cpp).
HWND GalleryButtPage(HWND parent, int x, int y);
// The HEdit row (editpage.cpp).
HWND GalleryEditPage(HWND parent, int x, int y);
// The HGrid page (gridpage.cpp).
HWND GalleryGridPage(HWND parent, int x, int y);
// The HList and HComb page (listpage.cpp).
HWND GalleryListPage(HWND parent, int x, int y);

int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE, LPSTR cmdLine, int show)
{
    QuilletInit(); // harmless after the load; makes the import explicit
    WNDCLASSA wc = {};
    wc.lpfnWndProc = GalleryProc;
    wc.hInstance = hInstance;
    wc.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    wc.hbrBackground = (HBRUSH)(COLOR_WINDOW + 1);
    wc.lpszClassName = "QuillGallery";
    RegisterClassA(&wc);
    HWND hWnd = CreateWindowExA(0, "QuillGallery", "Quill32 gallery", WS_OVERLAPPEDWINDOW, 20, 20, 900, 1000,
                                nullptr, nullptr, hInstance, nullptr);
    GalleryStatPage(hWnd, 4, 272);
    GalleryButtPage(hWnd, 4, 596);
    GalleryEditPage(hWnd, 4, 704);
    GalleryGridPage(hWnd, 4, 772);
    GalleryListPage(hWnd, 440, 772);
    ShowWindow(hWnd, show ? show : SW_SHOW);
    UpdateWindow(hWnd);

    const char* shot = strstr(cmdLine, "/shot ");
    if (shot) {
        bool ok = SaveShot(hWnd, shot + 6);
        DestroyWindow(hWnd);
        return ok ? 0 : 1;
    }
    MSG m;
    while (GetMessageA(&m, nullptr, 0, 0) > 0) {
        TranslateMessage(&m);
        DispatchMessageA(&m);
    }
    return 0;
}
