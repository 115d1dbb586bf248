// HStat: registration, window procedure and class handler: the control's
// specification text, run-time texts, colours, alignment, kind and image messages.
#include "buttons/hstat.h"
#include "frame/frame.h"
#include "frame/strings.h"

#include <limits.h>
#include <string.h>

namespace {

constexpr DWORD kStatNoAlignBit = 0x80; // taken out of the window's style, kept in the record

// Applies a specification: colours, then the text or the image by kind.
void HStatSetSpec(HStatRec* r, LPCSTR spec)
{
    char buffer[kStatSpecSize];
    LPCSTR content = HStatSpecContent(spec, &r->colorText, &r->colorBack, buffer);
    HStrReplace(&r->text, nullptr);
    if (r->image.handle)
        HImageFree(&r->image, TRUE);
    r->image = HImage{};
    switch (HStatKind(r)) {
    case HSK_TEXT:
    case HSK_GROUP:
        if (!*content && HCtlDesignMode(r->hWnd))
            r->text = HStrDup(kStatSample); // something to see while laying out
        else
            r->text = HStatSpecText(content);
        break;
    case HSK_IMAGE:
        // A missing image shows the library's help picture instead of a hole.
        if (!HImageLoad(&r->image, (HINSTANCE)GetWindowLongA(r->hWnd, GWL_HINSTANCE), content))
            HImageLoad(&r->image, g_hInstance, kStatMissingImage);
        break;
    }
}

// Hiding and showing again makes the parent repaint behind a transparent control.
bool HStatRefreshTransparent(HStatRec* r)
{
    if (!(r->dwStyle & HSS_TRANSPARENT) || !IsWindowVisible(r->hWnd))
        return false;
    ShowWindow(r->hWnd, SW_HIDE);
    ShowWindow(r->hWnd, SW_SHOW);
    return true;
}

LRESULT HStatSetText(HStatRec* r, LPCSTR text)
{
    if (!text)
        return 0;
    UINT kind = HStatKind(r);
    if (HCtlDesignMode(r->hWnd))
        HStatSetSpec(r, text);
    else if (kind == HSK_TEXT || kind == HSK_GROUP)
        HStrReplace(&r->text, text); // as it stands: no colours, no caret
    if (kind == HSK_TEXT) {
        if (!HStatRefreshTransparent(r))
            InvalidateRect(r->hWnd, nullptr, TRUE);
    } else if (kind == HSK_GROUP) {
        RECT client, content;
        HDC dc = GetDC(r->hWnd);
        HStatLayout(r, dc, &client, &content);
        ReleaseDC(r->hWnd, dc);
        InvalidateRect(r->hWnd, &content, TRUE);
    }
    return 1;
}

LRESULT HStatGetText(HStatRec* r, WPARAM size, LPSTR buffer)
{
    // A size beyond INT_MAX would read as "no limit" to _fstrnzcpy.
    int limit = size > (WPARAM)INT_MAX ? INT_MAX : (int)size;
    return _fstrnzcpy(buffer, r->text ? r->text : "", limit);
}

LRESULT HStatSetFont(HStatRec* r, HFONT font)
{
    HFONT old = r->hFont;
    r->hFont = font;
    HStatRefreshTransparent(r);
    InvalidateRect(r->hWnd, nullptr, TRUE);
    return (LRESULT)old;
}

LRESULT HStatNcCalcSize(HStatRec* r, WPARAM wParam, LPARAM lParam, BOOL* handled)
{
    if (!(r->dwStyle & WS_BORDER))
        return 0;
    // The client grows over the platform's border, and the painter draws its own.
    DefWindowProcA(r->hWnd, WM_NCCALCSIZE, wParam, lParam);
    InflateRect((LPRECT)lParam, 1, 1);
    *handled = TRUE;
    return 1;
}

LRESULT HStatSetImage(HStatRec* r, HANDLE handle, LPARAM lParam)
{
    if (LOWORD(lParam))
        InvalidateRect(r->hWnd, nullptr, TRUE);
    HANDLE old = r->image.handle;
    // Non-zero: the old image went back to the cache; else the caller deletes it.
    LRESULT result = HImageFree(&r->image, FALSE) ? 0 : (LRESULT)old;
    r->image.handle = handle;
    if (HIWORD(lParam))
        r->image.type = (SHORT)HIWORD(lParam);
    return result;
}

LRESULT HStatGetAlign(const HStatRec* r)
{
    if (r->dwStyle & HSS_LEFT)
        return 0;
    return (r->dwStyle & HSS_RIGHT) ? 2 : 1;
}

void HStatSetAlign(HStatRec* r, WPARAM align)
{
    r->dwStyle &= ~(DWORD)(HSS_LEFT | HSS_RIGHT);
    if (align == 0)
        r->dwStyle |= HSS_LEFT;
    else if (align == 2)
        r->dwStyle |= HSS_RIGHT;
}

LRESULT HStatSetColor(HStatRec* r, COLORREF* slot, WPARAM repaint, LPARAM color)
{
    *slot = (COLORREF)color;
    if (repaint)
        InvalidateRect(r->hWnd, nullptr, TRUE);
    return 0;
}

LRESULT HStatSetKind(HStatRec* r, WPARAM kind, LPARAM repaint)
{
    if (kind > HSK_VLINE)
        return 0;
    r->dwStyle = (r->dwStyle & ~(DWORD)HSS_KINDMASK) | (DWORD)kind;
    if (repaint)
        InvalidateRect(r->hWnd, nullptr, TRUE);
    return 1;
}

// A new style keeps the kind; the window gets it too.
LRESULT HStatSetStyle(HStatRec* r, LPARAM style)
{
    r->dwStyle = ((DWORD)style & ~(DWORD)HSS_KINDMASK) | (r->dwStyle & HSS_KINDMASK);
    SetWindowLongA(r->hWnd, GWL_STYLE, (LONG)r->dwStyle);
    InvalidateRect(r->hWnd, nullptr, TRUE);
    return 1;
}

HStatRec* HStatCreate(HWND hWnd, CREATESTRUCTA* cs)
{
    HStatRec* r = (HStatRec*)HCtlNewRecord(hWnd, cs, sizeof(HStatRec));
    if (!r)
        return nullptr;
    r->dwStyle = cs->style;
    // The creation structure and the window lose WS_TABSTOP and 0x80; the record
    // keeps them, and so its right alignment.
    cs->style &= ~(DWORD)(WS_TABSTOP | kStatNoAlignBit);
    SetWindowLongA(hWnd, GWL_STYLE, (LONG)cs->style);
    HStatSetSpec(r, cs->lpszName);
    return r;
}

void HStatDestroy(HWND hWnd, HStatRec* r)
{
    HStrReplace(&r->text, nullptr);
    if (r->image.handle)
        HImageFree(&r->image, TRUE);
    HCtlFreeRecord(hWnd, r);
}

} // namespace

void HStatRegister()
{
    HRegisterClass(CS_GLOBALCLASS | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, HStatWnd, 0, 4, g_hInstance, nullptr,
                   LoadCursorA(nullptr, IDC_ARROW), nullptr, nullptr, HSTAT_CLASS);
}

extern "C" LRESULT CALLBACK HStatWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HStatMsgHandler, 0);
}

extern "C" LRESULT CALLBACK HStatMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HStatRec* r = (HStatRec*)record;
    BOOL ignored;
    if (!notHandled)
        notHandled = &ignored;
    if (!r && msg != WM_NCCREATE) {
        *notHandled = TRUE; // a host's call without a record: only the tail answers
        return 0;
    }
    switch (msg) {
    case WM_NCCREATE:
        if (!lParam || !HStatCreate(hWnd, (CREATESTRUCTA*)lParam))
            return 0;
        break;
    case WM_NCDESTROY:
        HStatDestroy(hWnd, r);
        break;
    case WM_CREATE:
        if (HCtlDesignMode(hWnd) == HCTL_DESIGN_DLGEDIT)
            InvalidateRect(hWnd, nullptr, TRUE);
        break;
    case WM_SETFOCUS:
        SendMessageA(GetParent(hWnd), WM_NEXTDLGCTL, 0, 0); // the focus moves on at once
        return 0;
    case WM_SETTEXT:
        return HStatSetText(r, (LPCSTR)lParam);
    case WM_GETTEXT:
        return HStatGetText(r, wParam, (LPSTR)lParam);
    case WM_GETTEXTLENGTH:
        return r->text ? (LRESULT)strlen(r->text) : 0;
    case WM_ERASEBKGND:
        HStatPaint(r, (HDC)wParam);
        return 1;
    case WM_SETFONT:
        return HStatSetFont(r, (HFONT)wParam);
    case WM_GETFONT:
        return (LRESULT)r->hFont;
    case WM_NCCALCSIZE: {
        BOOL handled = FALSE;
        LRESULT result = HStatNcCalcSize(r, wParam, lParam, &handled);
        if (handled)
            return result;
        break;
    }
    case WM_NCHITTEST:
        return HTTRANSPARENT; // clicks reach the window behind
    case WM_NCPAINT:
        return 1;
    case WM_GETDLGCODE:
        return DLGC_STATIC;
    case HM_GETSTYLE:
        return (LRESULT)((GetWindowLongA(hWnd, GWL_STYLE) & 0xFFFF0000) | LOWORD(r->dwStyle));
    case HM_SETSTYLE:
        return HStatSetStyle(r, lParam);
    case HSM_GETALIGN:
        return HStatGetAlign(r);
    case HSM_SETALIGN:
        HStatSetAlign(r, wParam);
        return 0;
    case HSM_GETBKCOLOR:
        return (LRESULT)r->colorBack;
    case HSM_SETBKCOLOR:
        return HStatSetColor(r, &r->colorBack, wParam, lParam);
    case HSM_GETTEXTCOLOR:
        return (LRESULT)r->colorText;
    case HSM_SETTEXTCOLOR:
        return HStatSetColor(r, &r->colorText, wParam, lParam);
    case HSM_GETIMAGE:
        return (LRESULT)r->image.handle;
    case HSM_SETIMAGE:
        return HStatSetImage(r, (HANDLE)wParam, lParam);
    case HSM_GETKIND:
        return HStatKind(r);
    case HSM_SETKIND:
        return HStatSetKind(r, wParam, lParam);
    case HSM_GETPALETTE:
        return (LRESULT)r->image.palette;
    }
    *notHandled = TRUE;
    return 0;
}
