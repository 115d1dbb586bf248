// The gallery's HStat page: every kind and frame, alignments, colours, images,
// and a pane filled from a dialog template by CreateDialogInWin.
#include <windows.h>

#include "quill32.h"

namespace {

constexpr int kPaneTemplate = 300;

struct StatSample {
    const char* spec;
    DWORD style;
    int x, y, w, h;
};

// Coordinates inside the page.
const StatSample kSamples[] = {
    {"[black];[light grey];HStat - kinds, frames, alignment, colours and images", HSS_LEFT | HSS_EMBOSS, 8, 4, 520, 18},
    // text kind, one per frame
    {"no frame", HSK_TEXT, 8, 30, 100, 22},
    {"WS_BORDER", HSK_TEXT | WS_BORDER, 116, 30, 100, 22},
    {"HSS_SUNKEN", HSK_TEXT | HSS_SUNKEN, 224, 30, 100, 22},
    {"HSS_RIDGE", HSK_TEXT | HSS_RIDGE, 332, 30, 100, 22},
    {"sunken+border", HSK_TEXT | HSS_SUNKEN | WS_BORDER, 440, 30, 100, 22},
    // alignment and colours
    {"[dkblue];[yellow];HSS_LEFT", HSK_TEXT | HSS_LEFT | HSS_SUNKEN, 8, 60, 160, 22},
    {"[dkred];[cyan];centred", HSK_TEXT | HSS_SUNKEN, 176, 60, 160, 22},
    {"[white];[dkgreen];HSS_RIGHT", HSK_TEXT | HSS_RIGHT | HSS_SUNKEN, 344, 60, 160, 22},
    {"[dkblue];[light grey];Embossed^two lines", HSK_TEXT | HSS_EMBOSS | HSS_RIDGE, 8, 90, 160, 40},
    {"[red];;Transparent over the page", HSK_TEXT | HSS_TRANSPARENT, 176, 98, 200, 22},
    // group boxes
    {"[black];[white];Group, ridge, left", HSK_GROUP | HSS_RIDGE | HSS_LEFT, 8, 138, 160, 70},
    {"[dkblue];;Group, sunken", HSK_GROUP | HSS_SUNKEN, 176, 138, 160, 70},
    {"Group, border, right", HSK_GROUP | WS_BORDER | HSS_RIGHT, 344, 138, 160, 70},
    // blank panels
    {"[0,0,0];[purple];", HSK_BLANK | HSS_SUNKEN, 516, 138, 30, 32},
    {";[olive];", HSK_BLANK | HSS_RIDGE, 516, 176, 30, 32},
    // images: the library's pictures, and a missing one shown as HLP1
    {"[255,0,255];;OK", HSK_IMAGE | HSS_SUNKEN, 8, 216, 60, 44},
    {"[255,0,255];;CANCEL", HSK_IMAGE | HSS_RIDGE, 76, 216, 60, 44},
    {"HLP2", HSK_IMAGE, 144, 216, 60, 44},
    {"no such picture", HSK_IMAGE | WS_BORDER, 212, 216, 60, 44},
    {"GPUSH", HSK_IMAGE | HSS_LEFT, 280, 216, 60, 44},
    // lines
    {"", HSK_HLINE, 8, 272, 250, 2},
    {"", HSK_HLINE | HSS_SUNKEN, 8, 282, 250, 2},
    {"", HSK_VLINE, 270, 216, 2, 68},
    {"", HSK_VLINE | HSS_SUNKEN, 276, 216, 2, 68},
    {"lines: raised, sunken", HSK_TEXT | HSS_LEFT, 8, 290, 250, 18},
};

} // namespace

// Builds the page as a child of parent at (x, y).
HWND GalleryStatPage(HWND parent, int x, int y)
{
    HINSTANCE module = GetModuleHandleA(nullptr);
    WNDCLASSA wc = {};
    wc.lpfnWndProc = DefWindowProcA;
    wc.hInstance = module;
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    wc.lpszClassName = "QuillGalleryStatPage";
    RegisterClassA(&wc);
    HWND page = CreateWindowExA(0, wc.lpszClassName, "", WS_CHILD | WS_VISIBLE, x, y, 880, 320, parent, nullptr,
                                module, nullptr);
    HFONT font = (HFONT)GetStockObject(DEFAULT_GUI_FONT);
    int id = 1000;
    for (const StatSample& s : kSamples) {
        HWND w = CreateWindowExA(0, HSTAT_CLASS, s.spec, WS_CHILD | WS_VISIBLE | s.style, s.x, s.y, s.w, s.h, page,
                                 (HMENU)(UINT_PTR)id++, module, nullptr);
        SendMessageA(w, WM_SETFONT, (WPARAM)font, 0);
    }
    // The pane: a plain window that takes the controls of a template.
    wc.lpszClassName = "QuillGalleryPane";
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    RegisterClassA(&wc);
    HWND pane = CreateWindowExA(0, wc.lpszClassName, "", WS_CHILD | WS_VISIBLE | WS_BORDER, 560, 30, 300, 200, page,
                                nullptr, module, nullptr);
    RECT size;
    HFONT paneFont = nullptr;
    // The page's own group boxes hold nothing; the pane's group clips its siblings.
    CreateDialogInWin(module, MAKEINTRESOURCEA(kPaneTemplate), pane, &size, &paneFont);
    SetWindowPos(pane, nullptr, 0, 0, size.right + 2, size.bottom + 2, SWP_NOMOVE | SWP_NOZORDER);
    // paneFont is the pane's for its life; the gallery keeps it until the process ends.
    return page;
}
