// HButt's painting: frame, background, one image and the text in one pass, in a
// memory bitmap unless transparent; the placement of image and text on the
// 3 by 3 grid of the face; and the value painter that the grid uses.
#include "buttons/hbutt.h"
#include "draw/draw.h"
#include "frame/frame.h"

#include <string.h>

namespace {

constexpr UINT kOwnerDrawAction = ODA_SELECT | ODA_FOCUS;

// Owns the memory context and bitmap of one opaque paint.
struct PaintBuffer {
    HDC dc = nullptr;
    HBITMAP bitmap = nullptr;
    HGDIOBJ old = nullptr;
    PaintBuffer(HDC target, int w, int h, bool wanted)
    {
        if (!wanted)
            return; // a transparent button draws straight onto the window
        dc = CreateCompatibleDC(target);
        bitmap = CreateCompatibleBitmap(target, w, h);
        if (dc && bitmap)
            old = SelectObject(dc, bitmap);
    }
    ~PaintBuffer()
    {
        if (dc) {
            if (old)
                SelectObject(dc, old);
            DeleteDC(dc);
        }
        if (bitmap)
            DeleteObject(bitmap);
    }
    PaintBuffer(const PaintBuffer&) = delete;
    PaintBuffer& operator=(const PaintBuffer&) = delete;
};

// The frame of a button by its frame and transparency bits; r becomes the face.
using HButtFramePainter = bool (*)(HButtRec* b, HDC w, RECT* r, WORD state);

bool HButtPaintPushFrame(HButtRec* b, HDC w, RECT* r, WORD state)
{
    bool pressed = (b->base.wFlags & HBF_PRESSED) || (HButtType(b) > HBT_DEFPUSH && state != 0);
    UINT options = DPB_RETURNRECT | (HButtType(b) == HBT_DEFPUSH ? DPB_DEFAULT : 0) |
                   (HButtHas(b, HBS_SQUARE) ? DPB_SQUARE : 0) | (pressed ? DPB_PRESSED : 0);
    HWND self = b->base.hWnd;
    DrawPushButton(self, w, r, HButtHas(b, HBS_NOFOCUS) ? 1 : 2, options, nullptr, nullptr, nullptr, 0);
    return IsWindow(self) != 0; // the parent's colour request may have destroyed us
}

bool HButtPaintBackground(HButtRec* b, HDC w, RECT* r, WORD)
{
    HWND self = b->base.hWnd;
    HBRUSH brush = b->backBrush;
    if (!brush) {
        brush = HCtlColor(b, CTLCOLOR_BTN, w);
        if (!IsWindow(self))
            return false;
    }
    SelectObject(w, brush);
    SelectObject(w, GetStockObject(NULL_PEN));
    Rectangle(w, 0, 0, r->right + 1, r->bottom + 1);
    SelectObject(w, GetStockObject(WHITE_BRUSH));
    return true;
}

bool HButtPaintNoFrame(HButtRec*, HDC, RECT*, WORD) { return true; }

// Indexed by HBS_NOFRAME (bit 1) and HBS_TRANSPARENT (bit 0).
constexpr HButtFramePainter kFramePainters[] = {
    HButtPaintPushFrame,  // frame, opaque
    HButtPaintPushFrame,  // frame, transparent: drawn onto the window
    HButtPaintBackground, // no frame, opaque
    HButtPaintNoFrame,    // neither: what is behind shows
};

// Sends WM_DRAWITEM; TRUE when the owner drew the button.
bool HButtOwnerDraw(HButtRec* b, HDC dc, const RECT* rect, WORD* state)
{
    HGDIOBJ oldFont = b->base.hFont ? SelectObject(dc, b->base.hFont) : nullptr;
    DRAWITEMSTRUCT dis = {};
    dis.CtlType = ODT_BUTTON;
    dis.CtlID = b->base.wId;
    dis.itemAction = kOwnerDrawAction;
    dis.itemState = ((b->base.wFlags & HBF_PRESSED) ? ODS_SELECTED : 0) |
                    (GetFocus() == b->base.hWnd ? ODS_FOCUS : 0);
    dis.hwndItem = b->base.hWnd;
    dis.hDC = dc;
    dis.rcItem = *rect;
    dis.itemData = (ULONG_PTR)state;
    HWND self = b->base.hWnd;
    if (!SendMessageA(b->base.hNotify, WM_DRAWITEM, b->base.wId, (LPARAM)&dis) && IsWindow(self))
        return false;
    if (oldFont)
        SelectObject(dc, oldFont);
    return true;
}

const HImage* HButtChooseImage(const HButtRec* b, WORD state)
{
    bool pressed = (b->base.wFlags & HBF_PRESSED) != 0;
    if (!b->imageCount)
        return nullptr;
    if (b->base.wFlags & HBF_NOVALUE)
        return &g_buttNoValue[pressed ? 1 : 0];
    UINT index = state;
    if (pressed && HButtHas(b, HBS_UPDOWN))
        index = (state + 1u) % b->imageCount;
    // A state past the images reads an empty slot; one past the array reads none.
    return index < HButtImageRoom(b) ? &b->images[index] : nullptr;
}

void HButtDrawCaption(HButtRec* b, HDC w, const RECT& textRect)
{
    SetBkMode(w, TRANSPARENT);
    UINT format = HButtHas(b, HBS_RIGHT) ? DT_RIGHT : HButtHas(b, HBS_LEFT) ? DT_LEFT : DT_CENTER;
    format |= strchr(b->text, '\n') ? DT_WORDBREAK : (DT_SINGLELINE | DT_VCENTER);
    bool disabled = HButtHas(b, WS_DISABLED);
    // GrayStringA draws through HBDrawText, which reads the shared text rectangle.
    auto gray = [&](int brush) {
        const RECT& r = g_rcButtonText;
        GrayStringA(w, (HBRUSH)GetStockObject(brush), HBDrawText, (LPARAM)b, 0, r.left, r.top, r.right - r.left,
                    r.bottom - r.top);
    };
    if (HButtHas(b, HBS_EMBOSS)) {
        g_rcButtonText = textRect;
        OffsetRect(&g_rcButtonText, 1, 1);
        if (!disabled) {
            SetTextColor(w, RGB(255, 255, 255));
            DrawTextA(w, b->text, -1, &g_rcButtonText, format);
        } else {
            gray(WHITE_BRUSH);
        }
    }
    if (!disabled) {
        RECT r = textRect;
        SetTextColor(w, b->colorText);
        DrawTextA(w, b->text, -1, &r, format);
    } else {
        g_rcButtonText = textRect;
        gray(BLACK_BRUSH);
    }
}

void HButtDrawFocus(HButtRec* b, HDC w, const RECT& focusRect)
{
    bool transparent = HButtHas(b, HBS_TRANSPARENT);
    bool drawn = (b->base.wFlags & HBF_FOCUSDRAWN) != 0;
    if (GetFocus() == b->base.hWnd) {
        if (!(transparent && drawn)) {
            DrawFocusRect(w, &focusRect);
            b->base.wFlags |= HBF_FOCUSDRAWN;
        }
    } else if (transparent && drawn) {
        DrawFocusRect(w, &focusRect); // an exclusive or: the second one takes it off
    }
}

// One axis of the layout. lo and hi are the face's ends; each position is 0,
// 1 or 2 (start, centre, end); with both in the same place, relation likewise,
// 0 putting the image before the text. Out: the text's and the image's ends.
struct Span {
    int lo, hi;
    int Clamp0(int v) const { return v < lo ? lo : v; }
    int Clamp1(int v) const { return v > hi ? hi : v; }
};

void HButtLayoutAxis(Span f, int textPos, int imagePos, bool same, int relation, int tw, int iw, int gap, int* t,
                     int* i)
{
    int width = f.hi - f.lo;
    auto setText = [&](int a, int b) { t[0] = f.Clamp0(a); t[1] = f.Clamp1(b); };
    auto setImage = [&](int a, int b) { i[0] = f.Clamp0(a); i[1] = f.Clamp1(b); };
    switch (textPos) {
    case 0: setText(f.lo, f.lo + tw); break;
    case 2: setText(f.hi - tw, f.hi); break;
    default: {
        int left = f.Clamp0(f.lo + (width - tw) / 2);
        setText(left, f.lo - left + f.hi); // the rest of the face, symmetric about the centre
        break;
    }
    }
    bool before = same && relation == 0, after = same && relation == 2;
    switch (imagePos) {
    case 0:
        setImage(f.lo, f.lo + iw);
        if (before)
            setText(i[1] + gap, i[1] + gap + tw);
        else if (after)
            setImage(t[1] + gap, t[1] + gap + iw);
        break;
    case 2:
        setImage(f.hi - iw, f.hi);
        if (after)
            setText(i[0] - gap - tw, i[0] - gap);
        else if (before)
            setImage(t[0] - gap - iw, t[0] - gap);
        break;
    default:
        if (before) {
            // The pair is centred together, the image first.
            int left = f.Clamp0(f.lo + (width - iw - tw - gap) / 2);
            setImage(left, left + iw);
            int right = f.Clamp1(f.lo - i[0] + f.hi);
            setText(right - tw, right);
        } else if (after) {
            int right = f.Clamp1(f.hi + (f.lo - f.hi + iw + gap + tw) / 2);
            setImage(right - iw, right);
            int left = f.Clamp0(f.lo - i[1] + f.hi);
            setText(left, left + tw);
        } else {
            int left = f.Clamp0(f.lo + (width - iw) / 2);
            setImage(left, f.lo - left + f.hi);
        }
        break;
    }
}

} // namespace

void HButtLayout(HButtRec* b, HDC hDC, const HImage* image, const RECT* face, LPRECT imageRect, LPRECT textRect,
                 LPRECT focusRect)
{
    int tw = 0, th = 0, iw = 0, ih = 0;
    if (b->text) {
        DWORD size = MeasureTextLines(hDC, b->text);
        int margin = HButtHas(b, HBS_EMBOSS) ? 3 : 2;
        tw = LOWORD(size) + margin;
        th = HIWORD(size) + margin;
    }
    if (image && image->handle)
        HImageGetSize(image, &iw, &ih);
    SetRectEmpty(imageRect);
    SetRectEmpty(textRect);
    SetRectEmpty(focusRect);
    // Positions past 8 are read as 8.
    UINT textPos = b->textPos > kMaxPlacement ? kMaxPlacement : b->textPos;
    UINT imagePos = b->imagePos > kMaxPlacement ? kMaxPlacement : b->imagePos;
    UINT relation = b->relation > kMaxPlacement ? kMaxPlacement : b->relation;
    bool same = textPos == imagePos;
    int t[2], i[2];
    HButtLayoutAxis({face->left, face->right}, textPos % 3, imagePos % 3, same, relation % 3, tw, iw, kButtGapX, t, i);
    textRect->left = t[0], textRect->right = t[1], imageRect->left = i[0], imageRect->right = i[1];
    HButtLayoutAxis({face->top, face->bottom}, textPos / 3, imagePos / 3, same, relation / 3, th, ih, kButtGapY, t, i);
    textRect->top = t[0], textRect->bottom = t[1], imageRect->top = i[0], imageRect->bottom = i[1];
    if (HButtHas(b, HBS_NOFOCUS))
        return;
    *focusRect = (b->text && *b->text) ? *textRect : *imageRect;
    InflateRect(focusRect, 1, 0);
}

void HButtPaint(HButtRec* b, HDC dc, const RECT* rect, WORD state)
{
    if (!b || !dc || !rect)
        return;
    if (HButtHas(b, HBS_OWNERDRAW) && HButtOwnerDraw(b, dc, rect, &state))
        return;
    bool transparent = HButtHas(b, HBS_TRANSPARENT);
    RECT r = *rect;
    PaintBuffer buffer(dc, rect->right - rect->left, rect->bottom - rect->top, !transparent);
    HDC w = dc;
    if (!transparent) {
        if (!buffer.old)
            return;
        w = buffer.dc;
        OffsetRect(&r, -r.left, -r.top);
    }
    UINT frame = (HButtHas(b, HBS_NOFRAME) ? 2 : 0) | (transparent ? 1 : 0);
    if (!kFramePainters[frame](b, w, &r, state))
        return;
    if (b->base.hFont)
        SelectObject(w, b->base.hFont);
    const HImage* image = HButtChooseImage(b, state);
    RECT imageRect, textRect, focusRect;
    HButtLayout(b, w, image, &r, &imageRect, &textRect, &focusRect);
    if (image && image->handle)
        HImageDraw(w, image, imageRect.left, imageRect.top, b->colorTransparent);
    if (b->text)
        HButtDrawCaption(b, w, textRect);
    HButtDrawFocus(b, w, focusRect);
    if (!transparent)
        BitBlt(dc, rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, w, 0, 0, SRCCOPY);
}

void HButtPaintClient(HButtRec* b, HDC hDC)
{
    RECT client;
    GetClientRect(b->base.hWnd, &client);
    HButtPaint(b, hDC, &client, b->state);
}

int HButtDrawValue(HButtRec* b, HDC hDC, const RECT* rect, LPCVOID value)
{
    if (!b)
        return 0;
    WORD remembered = b->base.wFlags & HBF_NOVALUE;
    WORD state = 0;
    if (!value) {
        b->base.wFlags |= HBF_NOVALUE;
    } else {
        b->base.wFlags &= (WORD)~HBF_NOVALUE;
        state = (WORD)((HBoolIsTrue(b->dataType, value) ? 1 : 0) * HButtStep(b));
    }
    HWND self = b->base.hWnd;
    HButtPaint(b, hDC, rect, state);
    if (IsWindow(self))
        b->base.wFlags = (WORD)((b->base.wFlags & ~HBF_NOVALUE) | remembered);
    return 1;
}
