// The gallery's HEdit row: typed fields of each family, shown in their display
// form, with masks, colours, alignment, a password and a calculator.
#include <windows.h>

#include "quill32.h"

namespace {

struct EditSample {
    const char* typeSpec;
    DWORD style;
    int x, y, w;
};

// Coordinates inside the page.
const EditSample kSamples[] = {
    {"%nd#,##0.00;[red](#,##0.00)", HES_RIGHT | HES_FRAME3D | WS_TABSTOP, 8, 28, 120},
    {"%dadd/mm/yyyy", HES_FRAME3D | WS_TABSTOP, 136, 28, 110},
    {"%ms(###) ###-####", HES_FRAME3D | WS_TABSTOP, 254, 28, 130},
    {"%sssecret", HES_PASSWORD | HES_FRAME3D | WS_TABSTOP, 392, 28, 90},
    {"%zd0.00", HES_RIGHT | HES_FRAME3D | WS_TABSTOP, 490, 28, 90},
    {"%bwYes;No", HES_CENTER | HES_FRAME3D | WS_TABSTOP, 588, 28, 60},
    {"%ss[dark blue]Scrolls when the text is longer than the field", HES_AUTOHSCROLL | HES_FRAME3D | WS_TABSTOP,
     656, 28, 200},
};

} // namespace

// Builds the page as a child of parent at (x, y).
HWND GalleryEditPage(HWND parent, int x, int y)
{
    HINSTANCE module = GetModuleHandleA(nullptr);
    WNDCLASSA wc = {};
    wc.lpfnWndProc = DefWindowProcA;
    wc.hInstance = module;
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    wc.lpszClassName = "QuillGalleryEditPage";
    RegisterClassA(&wc);
    HWND page = CreateWindowExA(0, wc.lpszClassName, "", WS_CHILD | WS_VISIBLE, x, y, 880, 64, parent, nullptr,
                                module, nullptr);
    HFONT font = (HFONT)GetStockObject(DEFAULT_GUI_FONT);
    HWND title = CreateWindowExA(0, HSTAT_CLASS, "[black];[light grey];HEdit - typed values in their display form",
                                 WS_CHILD | WS_VISIBLE | HSS_LEFT | HSS_EMBOSS, 8, 4, 520, 18, page, nullptr, module,
                                 nullptr);
    SendMessageA(title, WM_SETFONT, (WPARAM)font, 0);
    int id = 3000;
    for (const EditSample& s : kSamples) {
        HWND w = CreateWindowExA(0, HEDIT_CLASS, s.typeSpec, WS_CHILD | WS_VISIBLE | s.style, s.x, s.y, s.w, 24,
                                 page, (HMENU)(UINT_PTR)id++, module, nullptr);
        SendMessageA(w, WM_SETFONT, (WPARAM)font, 0);
        SendMessageA(w, HM_SETBACKBRUSH, (WPARAM)GetStockObject(WHITE_BRUSH), 0);
    }
    // Values to look at: a negative amount in its own colour, a date, a phone number.
    double amount = -1234.5;
    SendMessageA(GetDlgItem(page, 3000), HEM_SETDATA, 0, (LPARAM)&amount);
    // Typed text is read in the locale's order of fields, whatever order the mask shows.
    SendMessageA(GetDlgItem(page, 3001), WM_SETTEXT, 0, (LPARAM)"12/24/1999");
    SendMessageA(GetDlgItem(page, 3002), HEM_SETDATA, 0, (LPARAM)"5551234567");
    double total = 12.5;
    SendMessageA(GetDlgItem(page, 3004), HEM_SETDATA, 0, (LPARAM)&total);
    WORD yes = 1;
    SendMessageA(GetDlgItem(page, 3005), HEM_SETDATA, 0, (LPARAM)&yes);
    return page;
}
