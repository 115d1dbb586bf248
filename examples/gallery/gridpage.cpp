// The gallery's HGrid page: a small order list with row and column headers, a
// frozen first column, grid lines and both scroll bars.
#include <windows.h>

#include "quill32.h"

namespace {

struct GridColumn {
    const char* title;
    char cls, type;
    int size, width;
    char kind;
    DWORD editorStyle;
    const char* format;
};

const GridColumn kColumns[] = {
    {"Item", 's', 's', 16, 120, 'e', 0, ""},
    {"Qty", 'n', 'l', 4, 50, 'e', 2, "#,##0"},        // right-aligned
    {"Price", 'n', 'd', 8, 80, 'e', 2, "#,##0.00"},
    {"Paid", 'b', 'w', 2, 50, 'k', 0, ""},
    {"Note", 's', 's', 24, 160, 'e', 0, ""},
};

#pragma pack(push, 1)
struct Order {
    char item[16];
    LONG qty;
    double price;
    WORD paid;
    char note[24];
};
#pragma pack(pop)

const Order kOrders[] = {
    {"Pens", 120, 0.85, 1, "Blue and black"},
    {"Paper, A4", 40, 4.20, 1, ""},
    {"Stapler", 3, 12.50, 0, "Heavy duty"},
    {"Ink", 12, 23.99, 0, "Back order"},
    {"Folders", 250, 0.35, 1, ""},
    {"Labels", 18, 6.75, 1, "Round"},
    {"Toner", 2, 79.00, 0, ""},
    {"Clips", 1000, 0.02, 1, ""},
};

} // namespace

// Builds the page as a child of parent at (x, y).
HWND GalleryGridPage(HWND parent, int x, int y)
{
    HINSTANCE module = GetModuleHandleA(nullptr);
    WNDCLASSA wc = {};
    wc.lpfnWndProc = DefWindowProcA;
    wc.hInstance = module;
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    wc.lpszClassName = "QuillGalleryGridPage";
    RegisterClassA(&wc);
    HWND page = CreateWindowExA(0, wc.lpszClassName, "", WS_CHILD | WS_VISIBLE, x, y, 432, 184, parent, nullptr,
                                module, nullptr);
    HFONT font = (HFONT)GetStockObject(DEFAULT_GUI_FONT);
    HWND title = CreateWindowExA(0, HSTAT_CLASS, "[black];[light grey];HGrid - a frozen column, headers and scroll bars",
                                 WS_CHILD | WS_VISIBLE | HSS_LEFT | HSS_EMBOSS, 8, 4, 416, 18, page, nullptr, module,
                                 nullptr);
    SendMessageA(title, WM_SETFONT, (WPARAM)font, 0);
    DWORD style = WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | WS_HSCROLL | HGS_READONLY | HGS_ROWHEADERS |
                  HGS_COLHEADERS | HGS_KEEPSEL;
    HWND grid = CreateWindowExA(0, HGRID_CLASS, "Orders", style, 8, 28, 420, 150, page, (HMENU)4000, module,
                                nullptr);
    SendMessageA(grid, WM_SETFONT, (WPARAM)font, 0);
    SendMessageA(grid, HM_SETBACKBRUSH, (WPARAM)GetStockObject(WHITE_BRUSH), 0);
    for (const GridColumn& c : kColumns)
        SendMessageA(grid, HGM_ADDFIELD, 0,
                     (LPARAM)HGFieldCreate(c.title, 0, c.width, 0, c.cls, c.type, 0, 0, c.size, c.kind,
                                           c.editorStyle, c.format));
    SendMessageA(grid, HGM_SETROWHEIGHT, 18, 0);
    SendMessageA(grid, HGM_SETCOLHEADERHEIGHT, 20, 0);
    SendMessageA(grid, HGM_SETROWHEADERWIDTH, 28, 0);
    for (const Order& o : kOrders)
        SendMessageA(grid, HGM_ADDRECORD, 0, (LPARAM)&o);
    SendMessageA(grid, HGM_SETFROZEN, 1, 0);
    SendMessageA(grid, HGM_RELAYOUT, 1, 0);
    return page;
}
