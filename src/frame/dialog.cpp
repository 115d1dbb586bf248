// Filling a window from a dialog template without a dialog box, clearing it
// again, and the one block of dialog info a window can carry.
#include "frame/dlgtemplate.h"
#include "frame/frame.h"

namespace {

constexpr char kInfoProp[] = HDLGINFO_PROP; // holds the block
constexpr char kOldProp[] = "H";            // only ever removed

// A template string in the ANSI code page, cut to the 128-byte buffer.
void HDlgNarrow(const HDlgString& s, char* out)
{
    WORD wide[kDlgTextSize];
    size_t n = HDlgCopyWide(s, wide, kDlgTextSize);
    int written = n ? WideCharToMultiByte(CP_ACP, 0, (LPCWSTR)wide, (int)n, out, kDlgTextSize - 1, nullptr, nullptr)
                    : 0;
    out[written > 0 ? written : 0] = 0;
}

// The template's font, bold, when the caller wants it; its base units if it was made.
DWORD HDlgMakeFont(HWND hWnd, const HDlgHeader& h, HFONT* font)
{
    HDC dc = GetDC(hWnd);
    int perInch = GetDeviceCaps(dc, LOGPIXELSY);
    DWORD units = 0;
    if (font) {
        char face[kDlgTextSize];
        HDlgNarrow(h.face, face);
        *font = CreateFontA(-(perInch * h.pointSize) / 72, 0, 0, 0, FW_BOLD, 0, 0, 0, 0, 0, 0, 0, 0, face);
        if (*font)
            units = GetBaseUnits(*font);
    }
    ReleaseDC(hWnd, dc);
    return units;
}

BOOL CALLBACK HDestroyChild(HWND child, LPARAM)
{
    // A descendant may already have died with its parent.
    return IsWindow(child) ? DestroyWindow(child) : TRUE;
}

} // namespace

extern "C" HWND QUILLAPI CreateDialogInWin(HINSTANCE hInstance, LPCSTR templateName, HWND hWnd, LPRECT rect,
                                           HFONT* font)
{
    HRSRC found = FindResourceA(hInstance, templateName, (LPCSTR)RT_DIALOG);
    HGLOBAL loaded = found ? LoadResource(hInstance, found) : nullptr;
    const BYTE* tmpl = loaded ? (const BYTE*)LockResource(loaded) : nullptr;
    size_t size = found ? SizeofResource(hInstance, found) : 0;
    HDlgHeader h;
    if (!tmpl || !HDlgReadHeader(tmpl, size, &h))
        return nullptr;

    if (h.caption.length) {
        char caption[kDlgTextSize];
        HDlgNarrow(h.caption, caption);
        SetWindowTextA(hWnd, caption);
    }
    DWORD units = 0;
    if (h.style & kDlgSetFont)
        units = HDlgMakeFont(hWnd, h, font);
    else if (font)
        *font = nullptr;
    if (!units)
        units = GetDialogBaseUnits();
    int baseX = LOWORD(units), baseY = HIWORD(units);
    if (rect)
        SetRect(rect, 0, 0, HDlgScale(h.cx, baseX, 4), HDlgScale(h.cy, baseY, 8));

    SendMessageA(hWnd, WM_SETREDRAW, 0, 0);
    HWND first = nullptr, firstTab = nullptr;
    size_t at = h.itemsAt;
    HDlgItem item;
    for (int i = 0; i < h.count && HDlgReadItem(tmpl, size, &at, &item); ++i) {
        char cls[kDlgTextSize], title[kDlgTextSize];
        if (item.knownClass)
            lstrcpynA(cls, item.knownClass, sizeof cls);
        else
            HDlgNarrow(item.className, cls);
        HDlgNarrow(item.title, title);
        HWND w = CreateWindowExA(0, cls, title, item.style | WS_CHILD, HDlgScale(item.x, baseX, 4),
                                 HDlgScale(item.y, baseY, 8), HDlgScale(item.cx, baseX, 4),
                                 HDlgScale(item.cy, baseY, 8), hWnd, (HMENU)(UINT_PTR)item.id, hInstance,
                                 (LPVOID)item.data);
        if (!first)
            first = w;
        if (!firstTab && (item.style & WS_TABSTOP))
            firstTab = w;
        if (w && font && *font)
            SendMessageA(w, WM_SETFONT, (WPARAM)*font, 1);
    }
    SendMessageA(hWnd, WM_INITDIALOG, (WPARAM)firstTab, 0);
    SendMessageA(hWnd, WM_SETREDRAW, 1, 0);
    InvalidateRect(hWnd, nullptr, FALSE);
    return firstTab ? firstTab : first;
}

extern "C" BOOL QUILLAPI ClearDialog(HWND hWnd)
{
    SendMessageA(hWnd, WM_SETREDRAW, 0, 0);
    BOOL result = EnumChildWindows(hWnd, HDestroyChild, 0);
    SendMessageA(hWnd, WM_SETREDRAW, 1, 0);
    InvalidateRect(hWnd, nullptr, TRUE);
    UpdateWindow(hWnd);
    return result;
}

extern "C" LPVOID QUILLAPI CreateDlgInfo(HWND hWnd, LPVOID data, UINT size)
{
    if (GetPropA(hWnd, kInfoProp))
        return nullptr; // one block per window: the old one stands
    LPVOID made = nullptr;
    if (!data) {
        if (!size)
            return nullptr;
        data = made = (LPVOID)GlobalAlloc(GPTR, size);
        if (!data)
            return nullptr;
    }
    if (!SetPropA(hWnd, kInfoProp, (HANDLE)data)) {
        if (made)
            GlobalFree((HGLOBAL)made); // nothing may be left behind
        return nullptr;
    }
    return data;
}

extern "C" LPVOID QUILLAPI GetDlgInfo(HWND hWnd)
{
    return (LPVOID)GetPropA(hWnd, kInfoProp);
}

extern "C" LPVOID QUILLAPI FreeDlgInfo(HWND hWnd, BOOL release)
{
    LPVOID data = (LPVOID)GetPropA(hWnd, kInfoProp);
    if (release && data) {
        GlobalFree((HGLOBAL)data);
        data = nullptr;
    }
    RemovePropA(hWnd, kInfoProp);
    RemovePropA(hWnd, kOldProp);
    return data;
}
