// The gallery's HButt row: push and default buttons, boxes with the library's
// pictures, an auto radio group, and the looks of the style bits.
#include <windows.h>

#include "quill32.h"

namespace {

struct ButtSample {
    const char* spec;
    DWORD style;
    int x, y, w, h;
};

// Coordinates inside the page.
const ButtSample kSamples[] = {
    {"441;Push", HBT_PUSH | WS_TABSTOP, 8, 28, 90, 30},
    {"444;;OK", HBT_DEFPUSH | WS_TABSTOP, 106, 28, 90, 30},
    {"333;Cancel;CANCEL", HBT_PUSH | HBS_SQUARE | WS_TABSTOP, 204, 28, 110, 30},
    {"441;[dkblue]Embossed", HBT_PUSH | HBS_EMBOSS, 322, 28, 90, 30},
    {"441;Disabled", HBT_PUSH | WS_DISABLED, 420, 28, 90, 30},
    {"441;[red]No frame", HBT_PUSH | HBS_NOFRAME | HBS_NOFOCUS, 518, 28, 90, 30},
    {"Check", HBT_CHECK | HBS_AUTO | HBS_UPDOWN | HBS_NOFRAME | WS_TABSTOP, 8, 66, 90, 24},
    {"Three states", HBT_3STATE | HBS_AUTO | HBS_UPDOWN | HBS_NOFRAME | WS_TABSTOP, 106, 66, 110, 24},
    {"Radio one", HBT_RADIO | HBS_AUTO | HBS_UPDOWN | HBS_NOFRAME | WS_GROUP | WS_TABSTOP, 224, 66, 100, 24},
    {"Radio two", HBT_RADIO | HBS_AUTO | HBS_UPDOWN | HBS_NOFRAME, 332, 66, 100, 24},
    {"Push radio", HBT_PUSHRADIO | HBS_AUTO | WS_GROUP, 440, 66, 80, 24},
    {"Right^two lines", HBT_PUSH | HBS_RIGHT, 528, 62, 80, 32},
    {"771;Transparent;HLP2", HBT_PUSH | HBS_TRANSPARENT | HBS_NOFRAME, 616, 28, 100, 66},
};

} // namespace

// Builds the page as a child of parent at (x, y).
HWND GalleryButtPage(HWND parent, int x, int y)
{
    HINSTANCE module = GetModuleHandleA(nullptr);
    WNDCLASSA wc = {};
    wc.lpfnWndProc = DefWindowProcA;
    wc.hInstance = module;
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    wc.lpszClassName = "QuillGalleryButtPage";
    RegisterClassA(&wc);
    HWND page = CreateWindowExA(0, wc.lpszClassName, "", WS_CHILD | WS_VISIBLE, x, y, 880, 104, parent, nullptr,
                                module, nullptr);
    HFONT font = (HFONT)GetStockObject(DEFAULT_GUI_FONT);
    HWND title = CreateWindowExA(0, HSTAT_CLASS, "[black];[light grey];HButt - types, faces and style bits",
                                 WS_CHILD | WS_VISIBLE | HSS_LEFT | HSS_EMBOSS, 8, 4, 520, 18, page, nullptr, module,
                                 nullptr);
    SendMessageA(title, WM_SETFONT, (WPARAM)font, 0);
    int id = 2000;
    for (const ButtSample& s : kSamples) {
        HWND w = CreateWindowExA(0, HBUTT_CLASS, s.spec, WS_CHILD | WS_VISIBLE | s.style, s.x, s.y, s.w, s.h, page,
                                 (HMENU)(UINT_PTR)id++, module, nullptr);
        SendMessageA(w, WM_SETFONT, (WPARAM)font, 0);
    }
    // Values to look at: a checked box, the grey third state, the second radio.
    SendMessageA(GetDlgItem(page, 2006), BM_SETCHECK, 1, 0);
    SendMessageA(GetDlgItem(page, 2007), BM_SETCHECK, 2, 0);
    SendMessageA(GetDlgItem(page, 2009), BM_SETCHECK, 1, 0);
    return page;
}
