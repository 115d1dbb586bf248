// The gallery's list page: HList with strings and with typed numbers, and HComb
// in its drop-down and standing-open forms.
#include <windows.h>

#include "quill32.h"

namespace {

const char* const kFruit[] = {"Apples", "Bananas", "Cherries", "Dates", "Elderberries", "Figs", "Grapes"};
const double kAmounts[] = {12.5, 1234.75, -40, 0.99, 100000, 7};

HWND Make(HWND page, const char* cls, const char* text, DWORD style, int id, int x, int y, int w, int h)
{
    HWND c = CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, page, (HMENU)(UINT_PTR)id,
                             GetModuleHandleA(nullptr), nullptr);
    SendMessageA(c, WM_SETFONT, (WPARAM)GetStockObject(DEFAULT_GUI_FONT), 0);
    return c;
}

} // namespace

// Builds the page as a child of parent at (x, y).
HWND GalleryListPage(HWND parent, int x, int y)
{
    HINSTANCE module = GetModuleHandleA(nullptr);
    WNDCLASSA wc = {};
    wc.lpfnWndProc = DefWindowProcA;
    wc.hInstance = module;
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    wc.lpszClassName = "QuillGalleryListPage";
    RegisterClassA(&wc);
    HWND page = CreateWindowExA(0, wc.lpszClassName, "", WS_CHILD | WS_VISIBLE, x, y, 444, 184, parent, nullptr,
                                module, nullptr);
    Make(page, HSTAT_CLASS, "[black];[light grey];HList and HComb - strings, typed numbers, drop-down",
         HSS_LEFT | HSS_EMBOSS, 0, 8, 4, 428, 18);

    HWND fruit = Make(page, HLIST_CLASS, "%ss", WS_BORDER | WS_VSCROLL, 4001, 8, 28, 130, 146);
    for (const char* f : kFruit)
        SendMessageA(fruit, LB_ADDSTRING, 0, (LPARAM)f);
    HLSelectItem(fruit, 2, HLSEL_SET);

    HWND amounts = Make(page, HLIST_CLASS, "%nd#,##0.00;[red](#,##0.00)", WS_BORDER, 4002, 146, 28, 120, 146);
    for (double a : kAmounts)
        HLAddItem(amounts, (LPVOID)&a);
    HLSelectItem(amounts, 1, HLSEL_SET);

    HWND drop = Make(page, HCOMB_CLASS, "%ss", HCS_DROPLIST | HCS_FRAME3D | WS_TABSTOP, 4003, 274, 28, 160, 24);
    for (const char* f : kFruit)
        SendMessageA(drop, CB_ADDSTRING, 0, (LPARAM)f);
    SendMessageA(drop, CB_SETCURSEL, 4, 0);

    HWND open = Make(page, HCOMB_CLASS, "%ss", HCS_EDITABLE | WS_TABSTOP, 4004, 274, 60, 160, 114);
    for (const char* f : kFruit)
        SendMessageA(open, CB_ADDSTRING, 0, (LPARAM)f);
    SendMessageA(open, CB_SETCURSEL, 6, 0);
    return page;
}
