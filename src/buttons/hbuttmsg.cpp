// HButt's class handler: the press machine's mouse and key events, texts, the
// BM_ family, and the button's private message block.
#include "buttons/hbutt.h"
#include "frame/frame.h"
#include "frame/strings.h"

#include <limits.h>
#include <string.h>

namespace {

constexpr UINT kOldButtonFirst = 0x400; // BM_GETCHECK to BM_SETSTYLE in their 16-bit numbering
constexpr UINT kOldButtonLast = 0x404;
constexpr UINT kOldButtonShift = 0x310;

bool HButtPressed(const HButtRec* b) { return (b->base.wFlags & HBF_PRESSED) != 0; }
bool HButtKeyHeld(const HButtRec* b) { return (b->base.wFlags & HBF_KEYHELD) != 0; }
void HButtRepaint(HButtRec* b) { HButtSetPressed(b, HButtPressed(b)); }

// Hiding and showing again makes the parent repaint behind a transparent button.
void HButtRefresh(HButtRec* b)
{
    if (HButtHas(b, HBS_TRANSPARENT) && IsWindowVisible(b->base.hWnd)) {
        ShowWindow(b->base.hWnd, SW_HIDE);
        ShowWindow(b->base.hWnd, SW_SHOW);
    } else {
        HButtRepaint(b);
    }
}

void HButtOnLButtonDown(HButtRec* b)
{
    HWND self = b->base.hWnd;
    if (GetFocus() != self && !HButtHas(b, HBS_NOFOCUS)) {
        SetFocus(self);
        if (!IsWindow(self))
            return;
    }
    if (HButtKeyHeld(b)) {
        HButtSetPressed(b, FALSE); // the mouse cancels a key press
        return;
    }
    SetCapture(self);
    HButtSetPressed(b, TRUE);
    HUpdateTopLevel(self); // the press shows before a synchronous sound starts
    HButtPlaySound(b);
}

void HButtOnMouseMove(HButtRec* b, WPARAM keys, LPARAM point)
{
    if (GetCapture() != b->base.hWnd || !(keys & MK_LBUTTON))
        return;
    RECT client;
    GetClientRect(b->base.hWnd, &client);
    POINT p = HSplitPoint((DWORD)point);
    bool inside = PtInRect(&client, p) != 0;
    bool pressed = HButtKeyHeld(b) ? !inside : inside;
    if (pressed != HButtPressed(b))
        HButtSetPressed(b, pressed);
}

// TRUE when it ended in a click.
bool HButtOnLButtonUp(HButtRec* b)
{
    if (HButtKeyHeld(b)) {
        HButtSetPressed(b, TRUE);
        return false;
    }
    ReleaseCapture();
    if (HButtPressed(b)) {
        HButtClick(b);
        return true;
    }
    HButtSetPressed(b, FALSE);
    return false;
}

// Left and up take the previous item of the dialog group, right and down the next.
void HButtArrow(HButtRec* b, UINT key)
{
    HWND next = GetNextDlgGroupItem(GetParent(b->base.hWnd), b->base.hWnd, key == VK_LEFT || key == VK_UP);
    if (!next)
        return;
    SetFocus(next);
    if (HButtAnswersRadio(next))
        SendMessageA(next, BM_SETCHECK, 1, 1);
}

// TRUE when it ended in a click.
bool HButtOnKeyDown(HButtRec* b, UINT key)
{
    switch (key) {
    case VK_SPACE:
        if (GetCapture() == b->base.hWnd)
            return false; // key repeat
        b->base.wFlags |= HBF_KEYHELD;
        SetCapture(b->base.hWnd);
        HButtSetPressed(b, TRUE);
        UpdateWindow(b->base.hWnd);
        HButtPlaySound(b);
        return false;
    case VK_RETURN:
        SendMessageA(b->base.hWnd, HBM_CLICK, 0, 0);
        return false;
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
        if (HButtIsRadio(b))
            HButtArrow(b, key);
        return false;
    }
    return false;
}

bool HButtOnKeyUp(HButtRec* b, UINT key)
{
    if (!HButtKeyHeld(b))
        return false;
    b->base.wFlags &= (WORD)~HBF_KEYHELD;
    ReleaseCapture();
    if (key == VK_SPACE) {
        HButtClick(b);
        return true;
    }
    HButtSetPressed(b, FALSE); // any other key's release cancels
    return false;
}

void HButtOnKillFocus(HButtRec* b)
{
    bool transparent = HButtHas(b, HBS_TRANSPARENT);
    if (transparent)
        HUpdateTopLevel(b->base.hWnd);
    HButtSetPressed(b, FALSE);
    if (transparent) {
        UpdateWindow(b->base.hWnd); // paints without the focus: the rectangle goes off
        b->base.wFlags &= (WORD)~HBF_FOCUSDRAWN;
    }
}

void HButtOnEnable(HButtRec* b, BOOL enabled)
{
    if (enabled)
        b->base.dwStyle &= ~(DWORD)WS_DISABLED;
    else
        b->base.dwStyle |= WS_DISABLED;
    HButtRefresh(b);
}

LRESULT HButtSetText(HButtRec* b, LPCSTR text)
{
    if (!text)
        return 0;
    if (HButtIsSpec(text))
        HButtParseSpec(b, text);
    else
        HStrReplace(&b->text, StringParse(text, 0, '\\', '^', '\n', nullptr));
    HButtRefresh(b);
    return 1;
}

LRESULT HButtCopyText(LPCSTR text, int size, LPSTR buffer)
{
    // A size that reads negative would be "no limit" to _fstrnzcpy: nothing is copied.
    if (size < 0)
        return 0;
    return _fstrnzcpy(buffer, text ? text : "", size);
}

LRESULT HButtDlgCode(const HButtRec* b)
{
    bool radio = HButtIsRadio(b);
    if (HButtHas(b, HBS_NOFOCUS) && !radio)
        return DLGC_STATIC;
    if (radio)
        return DLGC_BUTTON | DLGC_RADIOBUTTON | (HButtHas(b, HBS_AUTO) ? DLGC_WANTARROWS : 0);
    switch (HButtType(b)) {
    case HBT_PUSH:
        return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    case HBT_DEFPUSH:
        return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    }
    return DLGC_BUTTON;
}

// HBM_CLICK and the BM_ forms: a whole click with W non-zero, a release with W 0.
// Only HBM_CLICK itself notifies.
LRESULT HButtClickMsg(HButtRec* b, WPARAM pressed, UINT msg)
{
    HWND self = b->base.hWnd;
    HButtSetPressed(b, pressed != 0);
    UpdateWindow(self);
    if (!pressed)
        return 1;
    HButtPlaySound(b);
    bool notify = msg == HBM_CLICK;
    if (HButtHas(b, HBS_AUTO)) {
        HButtSetValue(b, HButtNextValue(b), notify);
        if (IsWindow(self))
            HButtSetPressed(b, FALSE);
    } else {
        HButtSetPressed(b, FALSE);
        if (notify)
            HCtlNotify(b, HBN_CLICKED);
    }
    return 1;
}

LRESULT HButtSetStyle(HButtRec* b, WPARAM type, LPARAM repaint)
{
    if (HButtHas(b, HBS_NOFOCUS))
        return 0; // keeps it from becoming the default
    b->base.dwStyle = (b->base.dwStyle & ~(DWORD)HBS_TYPEMASK) | ((DWORD)type & HBS_TYPEMASK);
    if (repaint)
        InvalidateRect(b->base.hWnd, nullptr, TRUE);
    return 0;
}

LRESULT HButtSetPlacement(BYTE* slot, WPARAM value)
{
    if (value > kMaxPlacement)
        return 0;
    *slot = (BYTE)value;
    return 1;
}

// The library's own picture for a slot by index; 0 where the type has none.
BOOL HButtDefaultImage(HButtRec* b, HImage* slot, UINT index)
{
    if (index > 5)
        return FALSE;
    char name[4] = "HC1";
    switch (HButtType(b)) {
    case HBT_CHECK:
    case HBT_3STATE:
        break;
    case HBT_RADIO:
        name[1] = 'R';
        if (index == 3)
            index = 1;
        break;
    default:
        slot->type = 0;
        slot->handle = nullptr;
        return FALSE;
    }
    name[2] = (char)('1' + index);
    return HImageLoad(slot, g_hInstance, name);
}

LRESULT HButtSetImage(HButtRec* b, WPARAM wParam, HANDLE handle)
{
    UINT index = LOWORD(wParam);
    if (index >= b->imageCount)
        return 0;
    HImage* slot = &b->images[index];
    HANDLE old = slot->handle;
    // Non-zero: the cache took the image back; else the caller deletes it.
    LRESULT result = HImageFree(slot, FALSE) ? 0 : (LRESULT)old;
    if (!handle) {
        HButtDefaultImage(b, slot, index);
    } else {
        slot->handle = handle;
        if (HIWORD(wParam))
            slot->type = (SHORT)HIWORD(wParam);
    }
    HButtRepaint(b);
    return result;
}

LRESULT HButtSetImageCount(HButtRec* b, WPARAM count)
{
    if (count > 0xFF)
        return b->imageCount; // imageCount is eight bits wide
    if (count > b->imageCount) {
        HImage* array = b->images
            ? (HImage*)GlobalReAlloc(b->images, count * sizeof(HImage), GMEM_MOVEABLE | GMEM_ZEROINIT)
            : (HImage*)GlobalAlloc(GPTR, count * sizeof(HImage));
        if (!array)
            return b->imageCount;
        b->images = array;
        memset(&b->images[b->imageCount], 0, (count - b->imageCount) * sizeof(HImage));
    } else if (count < b->imageCount) {
        HButtFreeImages(b); // shrinking loses every image
        b->images = (HImage*)GlobalAlloc(GPTR, (count ? count : 1) * sizeof(HImage));
    }
    b->imageCount = b->images ? (BYTE)count : 0;
    b->stateCount = HButtStateCount(b);
    if (b->state >= b->stateCount)
        b->state = (BYTE)(b->stateCount - 1);
    return b->imageCount;
}

bool HButtIsOn(const HButtRec* b) { return b->state == HButtStep(b); }

LRESULT HButtGetData(HButtRec* b, LPVOID out)
{
    if (!out)
        return -1;
    if (HButtIsRadio(b)) {
        WORD value = !HButtIsOn(b) ? 0 : (WORD)((b->base.wFlags & HBF_GROUPPOS) ? HButtGroupPos(b) : b->base.wId);
        memcpy(out, &value, sizeof value);
        return sizeof value;
    }
    if (b->base.wFlags & HBF_NOVALUE)
        return 0;
    if (!HButtStoreState(b->dataType, out, b->state / HButtStep(b)))
        return -1;
    return GetDataSize(HCLASS_BOOL, b->dataType);
}

LRESULT HButtSetData(HButtRec* b, WPARAM flags, LPCVOID in)
{
    HWND self = b->base.hWnd;
    if (!in) {
        b->base.wFlags |= HBF_NOVALUE;
        HButtRepaint(b);
    } else if (HButtIsRadio(b)) {
        if (flags & 1)
            b->base.wFlags |= HBF_GROUPPOS;
        else
            b->base.wFlags &= (WORD)~HBF_GROUPPOS;
        WORD value;
        memcpy(&value, in, sizeof value);
        UINT mine = (flags & 1) ? HButtGroupPos(b) : b->base.wId;
        HButtSetValue(b, value == mine ? 1 : 0, FALSE);
    } else if (ValidType(HCLASS_BOOL, b->dataType)) {
        HButtSetValue(b, HBoolIsTrue(b->dataType, in) ? 1 : 0, FALSE);
    }
    if (IsWindow(self))
        b->base.wFlags &= (WORD)~HCTLF_MODIFIED;
    return 1;
}

// A message to a group's first radio button links the whole group, one by one.
LRESULT HButtSetLink(HButtRec* b, WPARAM flags, LPVOID link)
{
    HWND self = b->base.hWnd;
    b->dataLink = link;
    if (HButtIsRadio(b)) {
        HWND next = GetWindow(self, GW_HWNDNEXT);
        if (next && next == GetNextDlgGroupItem(GetParent(self), self, FALSE) && HButtAnswersRadio(next))
            SendMessageA(next, HBM_SETLINK, flags, (LPARAM)link);
        if (!IsWindow(self))
            return 1;
    }
    return HButtSetData(b, flags, link);
}

LRESULT HButtIsGroupEnd(const HButtRec* b)
{
    HWND self = b->base.hWnd, next = GetWindow(self, GW_HWNDNEXT);
    bool more = next && next == GetNextDlgGroupItem(GetParent(self), self, FALSE) && HButtAnswersRadio(next);
    return more ? 0 : 1;
}

LRESULT HButtSetSoundMsg(HButtRec* b, HANDLE resource, LPCSTR file)
{
    if (!resource && file)
        return HButtSetSoundFile(b, file);
    HANDLE old = b->hSound;
    b->hSound = resource;
    return (LRESULT)old;
}

const HImage* HButtImageAt(const HButtRec* b, WPARAM index)
{
    return index < b->imageCount ? &b->images[index] : nullptr;
}

} // namespace

extern "C" LRESULT CALLBACK HButtMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    HButtRec* b = (HButtRec*)record;
    BOOL ignored;
    if (!notHandled)
        notHandled = &ignored;
    if (!b && msg != WM_NCCREATE) {
        *notHandled = TRUE; // a host's call without a record: only the tail answers
        return 0;
    }
    switch (msg) {
    case WM_NCCREATE:
        if (!lParam || !HButtCreate(hWnd, (CREATESTRUCTA*)lParam))
            return 0;
        break;
    case WM_NCDESTROY:
        HButtDestroy(hWnd, b);
        break;
    case WM_SETFOCUS:
        if (!HButtHas(b, HBS_NOFOCUS))
            HButtSetPressed(b, FALSE);
        break;
    case WM_KILLFOCUS:
        HButtOnKillFocus(b);
        return 0;
    case WM_ENABLE:
        HButtOnEnable(b, (BOOL)wParam);
        break;
    case WM_SETTEXT:
        return HButtSetText(b, (LPCSTR)lParam);
    case WM_GETTEXT:
        return HButtCopyText(b->text, (SHORT)wParam, (LPSTR)lParam);
    case WM_GETTEXTLENGTH:
        return b->text ? (LRESULT)strlen(b->text) : 0;
    case WM_PAINT:
        if (!wParam)
            break; // BeginPaint in the default procedure raises WM_ERASEBKGND
        HButtPaintClient(b, (HDC)wParam);
        return 1;
    case WM_ERASEBKGND:
        HButtPaintClient(b, (HDC)wParam);
        return 1;
    case WM_SETFONT:
        HButtRepaint(b); // HCtlCommonMsg stores it
        break;
    case WM_GETDLGCODE:
        return HButtDlgCode(b);
    case WM_LBUTTONDOWN:
        HButtOnLButtonDown(b);
        if (!IsWindow(hWnd))
            return 0; // the focus change took the window: the record is gone
        break;
    case WM_MOUSEMOVE:
        HButtOnMouseMove(b, wParam, lParam);
        break;
    case WM_LBUTTONUP:
        if (HButtOnLButtonUp(b))
            return 1;
        break;
    case WM_LBUTTONDBLCLK:
        if (HCtlNotify(b, HBN_DOUBLECLICKED) && !IsWindow(hWnd))
            return 0;
        break;
    case WM_KEYDOWN:
        HButtOnKeyDown(b, (UINT)wParam);
        if (!IsWindow(hWnd))
            return 0;
        break;
    case WM_KEYUP:
        if (HButtOnKeyUp(b, (UINT)wParam))
            return 1;
        break;
    case BM_GETCHECK:
        return b->state / HButtStep(b);
    case BM_SETCHECK:
        HButtSetValue(b, (UINT)wParam, LOWORD(lParam) != 0);
        if (!IsWindow(hWnd))
            return 0;
        break;
    case BM_GETSTATE:
        return HButtPressed(b) ? 1 : 0;
    case BM_SETSTATE:
        return HButtClickMsg(b, wParam, msg);
    case BM_SETSTYLE:
        return HButtSetStyle(b, wParam, lParam);
    case BM_CLICK:
        return HButtClickMsg(b, 1, msg);
    case HBM_CLICK:
        return HButtClickMsg(b, 1, msg);
    case HBM_GETIMAGEPOS:
        return b->imagePos;
    case HBM_GETIMAGE: {
        const HImage* image = HButtImageAt(b, wParam);
        return image ? (LRESULT)image->handle : 0;
    }
    case HBM_GETIMAGECOUNT:
        return b->imageCount;
    case HBM_GETTRANSCOLOR:
        return (LRESULT)b->colorTransparent;
    case HBM_GETRELATION:
        return b->relation;
    case HBM_GETSOUND:
        if (b->hSound)
            return (LRESULT)b->hSound;
        if (b->soundFile)
            return HButtCopyText(b->soundFile, wParam > (WPARAM)INT_MAX ? INT_MAX : (int)wParam, (LPSTR)lParam);
        break;
    case HBM_GETTEXTPOS:
        return b->textPos;
    case HBM_GETBTNTYPE:
        return HButtType(b);
    case HBM_SETIMAGEPOS:
        return HButtSetPlacement(&b->imagePos, wParam);
    case HBM_SETIMAGE:
        return HButtSetImage(b, wParam, (HANDLE)lParam);
    case HBM_SETTRANSCOLOR:
        b->colorTransparent = (COLORREF)lParam;
        HButtRepaint(b);
        return 1;
    case HBM_SETRELATION:
        return HButtSetPlacement(&b->relation, wParam);
    case HBM_SETSOUND:
        return HButtSetSoundMsg(b, (HANDLE)wParam, (LPCSTR)lParam);
    case HBM_SETTEXTPOS:
        return HButtSetPlacement(&b->textPos, wParam);
    case HBM_GETDATA:
        return HButtGetData(b, (LPVOID)lParam);
    case HBM_SETDATA:
        return HButtSetData(b, wParam, (LPCVOID)lParam);
    case HBM_GETLINK:
        return (LRESULT)b->dataLink;
    case HBM_SETLINK:
        return HButtSetLink(b, wParam, (LPVOID)lParam);
    case HBM_GETDATASIZE:
        return HButtIsRadio(b) ? 2 : GetDataSize(HCLASS_BOOL, b->dataType);
    case HBM_GETSTATECOUNT:
        return b->stateCount;
    case HBM_ISGROUPEND:
        return HButtIsGroupEnd(b);
    case HBM_SETIMAGECOUNT:
        return HButtSetImageCount(b, wParam);
    case HBM_GETPALETTE: {
        const HImage* image = HButtImageAt(b, wParam);
        return image ? (LRESULT)image->palette : 0;
    }
    case HM_GETBACKBRUSH:
        return (LRESULT)b->backBrush;
    case HM_SETBACKBRUSH: {
        HBRUSH old = b->backBrush;
        b->backBrush = (HBRUSH)wParam;
        return (LRESULT)old;
    }
    case HM_GETCOLOR:
        return (LRESULT)b->colorText;
    case HM_SETCOLOR:
        b->colorText = (COLORREF)lParam;
        HButtRepaint(b);
        return 1;
    default:
        if (msg >= kOldButtonFirst && msg <= kOldButtonLast)
            return HButtWnd(hWnd, msg - kOldButtonShift, wParam, lParam);
    }
    *notHandled = TRUE;
    return 0;
}
