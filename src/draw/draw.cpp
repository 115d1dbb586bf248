// The shared painting routines: bevels and borders, the push button face,
// bitmaps with a transparent colour, text measuring, and HImage drawing.
// Every pen, brush, context and bitmap made here is deleted before return.
#include "draw/draw.h"
#include "frame/strings.h"
#include <string.h>

RECT g_rcButtonText;

namespace {

// Owns one GDI object made by the routine; stock objects never go in here.
struct GdiObject {
    HGDIOBJ h;
    explicit GdiObject(HGDIOBJ object) : h(object) {}
    ~GdiObject() { reset(); }
    void reset() { if (h) DeleteObject(h); h = nullptr; }
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;
    operator HGDIOBJ() const { return h; }
};

// Owns one memory device context.
struct MemoryDC {
    HDC h;
    explicit MemoryDC(HDC hDC) : h(CreateCompatibleDC(hDC)) {}
    ~MemoryDC() { reset(); }
    void reset() { if (h) DeleteDC(h); h = nullptr; }
    MemoryDC(const MemoryDC&) = delete;
    MemoryDC& operator=(const MemoryDC&) = delete;
    operator HDC() const { return h; }
};

HPEN SysPen(int index) { return CreatePen(PS_SOLID, 1, GetSysColor(index)); }

// One row of Draw3DBorder's table: which pen goes where in each pass.
enum BorderPen : BYTE { kNone, kShadow, kFace, kWhite, kBlack };
struct BorderStyle {
    BorderPen first[2];  // top-left, bottom-right of the first pass
    BorderPen second[2]; // of the second pass; kNone for a single pass
};
constexpr BorderStyle kBorderStyles[] = {
    {{kShadow, kWhite}, {kNone, kNone}},
    {{kWhite, kShadow}, {kNone, kNone}},
    {{kWhite, kShadow}, {kShadow, kWhite}},
    {{kShadow, kWhite}, {kBlack, kFace}},
    {{kWhite, kShadow}, {kWhite, kShadow}},
};

constexpr UINT kMeasureFormat = DT_CALCRECT | DT_SINGLELINE | DT_EXPANDTABS; // 0x460

UINT AlignmentOf(UINT options)
{
    if (options & DPB_RIGHT)
        return DT_RIGHT;
    return (options & DPB_LEFT) ? DT_LEFT : DT_CENTER;
}

} // namespace

void DrawBevelEdge(HDC hDC, LPRECT rect, HPEN topLeft, HPEN bottomRight, BOOL cutCorners, BOOL fill)
{
    if (!hDC || !rect)
        return;
    if (!topLeft)
        topLeft = (HPEN)GetStockObject(WHITE_PEN);
    if (!topLeft)
        bottomRight = (HPEN)GetStockObject(BLACK_PEN); // only when the stock call failed
    HGDIOBJ oldPen = SelectObject(hDC, GetStockObject(NULL_PEN));
    RECT& r = *rect;
    if (fill) {
        if (cutCorners)
            InflateRect(&r, -1, -1);
        Rectangle(hDC, r.left, r.top, r.right, r.bottom); // the selected brush fills it
        if (cutCorners)
            InflateRect(&r, 1, 1);
    }
    r.right -= 1;
    r.bottom -= 1;
    SelectObject(hDC, topLeft);
    MoveToEx(hDC, r.left, r.bottom - 1, nullptr);
    LineTo(hDC, r.left, r.top);
    if (cutCorners)
        MoveToEx(hDC, r.left + 1, r.top, nullptr);
    LineTo(hDC, r.right, r.top);
    SelectObject(hDC, bottomRight);
    if (cutCorners)
        MoveToEx(hDC, r.right, r.top + 1, nullptr);
    LineTo(hDC, r.right, r.bottom);
    if (cutCorners)
        MoveToEx(hDC, r.right - 1, r.bottom, nullptr);
    LineTo(hDC, r.left, r.bottom);
    if (!cutCorners)
        LineTo(hDC, r.left + 1, r.bottom); // the second pen closes that corner
    SelectObject(hDC, oldPen);
    r.left += 1;
    r.top += 1;
}

extern "C" void QUILLAPI Draw3DBorder(HDC hDC, LPRECT rect, int style, BOOL fill)
{
    GdiObject shadow(SysPen(COLOR_BTNSHADOW));
    GdiObject face(SysPen(COLOR_BTNFACE));
    if (style < 0 || style >= (int)(sizeof kBorderStyles / sizeof kBorderStyles[0]))
        return;
    auto pen = [&](BorderPen p) -> HPEN {
        switch (p) {
        case kShadow: return (HPEN)shadow.h;
        case kFace: return (HPEN)face.h;
        case kWhite: return (HPEN)GetStockObject(WHITE_PEN);
        case kBlack: return (HPEN)GetStockObject(BLACK_PEN);
        default: return nullptr;
        }
    };
    const BorderStyle& s = kBorderStyles[style];
    bool twoPasses = s.second[0] != kNone;
    DrawBevelEdge(hDC, rect, pen(s.first[0]), pen(s.first[1]), FALSE, twoPasses ? FALSE : fill);
    if (twoPasses)
        DrawBevelEdge(hDC, rect, pen(s.second[0]), pen(s.second[1]), FALSE, fill);
}

void DrawNonClientBorder(HWND hWnd, BOOL bright)
{
    HDC hDC = GetWindowDC(hWnd);
    if (!hDC)
        return;
    RECT r;
    GetWindowRect(hWnd, &r);
    SendMessageA(hWnd, WM_NCCALCSIZE, 0, (LPARAM)&r); // leaves the client area, on the screen
    RStoC(hWnd, &r);
    r.right += 4;
    r.bottom += 4;
    Draw3DBorder(hDC, &r, bright ? 2 : 3, FALSE);
    ReleaseDC(hWnd, hDC);
}

void DrawTransparentBitmap(HDC hDC, HBITMAP hBitmap, int x, int y, COLORREF transparent)
{
    MemoryDC image(hDC);
    SelectObject(image, hBitmap);
    BITMAP bm = {};
    GetObjectA(hBitmap, sizeof bm, &bm);
    POINT size = {bm.bmWidth, bm.bmHeight};
    DPtoLP(image, &size, 1);
    if (!transparent) { // so pure black can't be the transparent colour: 0 means opaque
        BitBlt(hDC, x, y, size.x, size.y, image, 0, 0, SRCCOPY);
        return;
    }
    MemoryDC back(hDC), object(hDC), work(hDC), save(hDC);
    GdiObject backBits(CreateBitmap(size.x, size.y, 1, 1, nullptr));
    GdiObject objectBits(CreateBitmap(size.x, size.y, 1, 1, nullptr));
    GdiObject workBits(CreateCompatibleBitmap(hDC, size.x, size.y));
    GdiObject saveBits(CreateCompatibleBitmap(hDC, size.x, size.y));
    // What SelectObject hands back is each context's stock one-pixel bitmap.
    DeleteObject(SelectObject(back, backBits));
    DeleteObject(SelectObject(object, objectBits));
    DeleteObject(SelectObject(work, workBits));
    DeleteObject(SelectObject(save, saveBits));
    BitBlt(save, 0, 0, size.x, size.y, image, 0, 0, SRCCOPY);
    image.reset(); // the caller's bitmap is selected nowhere any more
    SetMapMode(save, GetMapMode(hDC));
    // Copying to monochrome with the transparent colour as background makes the mask.
    COLORREF oldBack = SetBkColor(save, transparent);
    BitBlt(object, 0, 0, size.x, size.y, save, 0, 0, SRCCOPY);
    SetBkColor(save, oldBack);
    BitBlt(back, 0, 0, size.x, size.y, object, 0, 0, NOTSRCCOPY);
    BitBlt(work, 0, 0, size.x, size.y, hDC, x, y, SRCCOPY);
    BitBlt(work, 0, 0, size.x, size.y, object, 0, 0, SRCAND);
    BitBlt(save, 0, 0, size.x, size.y, back, 0, 0, SRCAND);
    BitBlt(work, 0, 0, size.x, size.y, save, 0, 0, SRCPAINT);
    BitBlt(hDC, x, y, size.x, size.y, work, 0, 0, SRCCOPY);
    // The contexts go first, so that no bitmap is selected when it is deleted.
    work.reset();
    back.reset();
    object.reset();
    save.reset();
}

DWORD MeasureTextLines(HDC hDC, LPCSTR text)
{
    WORD width = 0, height = 0;
    if (!text)
        return 0;
    int start = 0;
    for (int i = 0;; ++i) {
        char c = text[i];
        if ((c == '\n' || c == 0) && i > start) {
            RECT r = {};
            DrawTextA(hDC, text + start, i - start, &r, kMeasureFormat);
            if ((WORD)(r.right - r.left) > width)
                width = (WORD)(r.right - r.left);
            height = (WORD)(height + (r.bottom - r.top));
            start = i + 1;
        }
        // A line feed right behind another leaves the start where it is: the
        // empty line is measured at the head of the next one.
        if (!c)
            break;
    }
    return MAKELONG(width, height);
}

extern "C" void QUILLAPI DrawPushButton(HWND hWnd, HDC hDC, LPRECT rect, int depth, UINT options, LPCSTR text,
                                        HFONT hFont, HBITMAP hBitmap, COLORREF color)
{
    if (!hDC || !rect)
        return;
    int w = rect->right - rect->left, h = rect->bottom - rect->top;
    RECT r = {0, 0, w, h};
    MemoryDC mem(hDC);
    GdiObject bitmap(CreateCompatibleBitmap(hDC, w, h));
    GdiObject faceBrush(CreateSolidBrush(GetSysColor(COLOR_BTNFACE)));
    GdiObject shadowPen(SysPen(COLOR_BTNSHADOW));
    GdiObject facePen(SysPen(COLOR_BTNFACE));
    HPEN blackPen = (HPEN)GetStockObject(BLACK_PEN);
    HPEN whitePen = (HPEN)GetStockObject(WHITE_PEN);
    SelectObject(mem, bitmap);
    SelectObject(mem, faceBrush);
    SelectObject(mem, blackPen);

    if (!(options & DPB_SQUARE)) {
        // The parent's background shows in the cut corners.
        HBRUSH parentBrush = (HBRUSH)SendMessageA(GetParent(hWnd), WM_CTLCOLORBTN, (WPARAM)mem.h, (LPARAM)hWnd);
        SelectObject(mem, parentBrush);
        SelectObject(mem, GetStockObject(NULL_PEN));
        Rectangle(mem, 0, 0, w + 1, h + 1);
        SelectObject(mem, faceBrush);
        DrawBevelEdge(mem, &r, blackPen, blackPen, TRUE, TRUE);
        SelectObject(mem, blackPen);
    } else {
        Rectangle(mem, 0, 0, w, h);
        InflateRect(&r, -1, -1);
    }
    SelectObject(mem, GetStockObject(NULL_BRUSH));
    if (options & DPB_DEFAULT) {
        Rectangle(mem, r.left, r.top, r.right, r.bottom);
        InflateRect(&r, -1, -1);
    }

    if (!(options & DPB_PRESSED)) {
        for (int pass = 0, passes = depth >= 2 ? depth : 1; pass < passes; ++pass)
            DrawBevelEdge(mem, &r, whitePen, (HPEN)shadowPen.h, FALSE, FALSE);
        if (depth % 2)
            DrawBevelEdge(mem, &r, (HPEN)facePen.h, (HPEN)shadowPen.h, FALSE, FALSE);
    } else {
        // The shadow lies at the top and left only, and the face shifts right and down.
        SelectObject(mem, shadowPen);
        for (int n = depth + depth % 2; n > 1; --n) {
            MoveToEx(mem, r.left, r.bottom - 1, nullptr);
            LineTo(mem, r.left, r.top);
            LineTo(mem, r.right, r.top);
            r.left += 1;
            r.top += 1;
        }
        r.left += depth;
        r.top += depth;
    }

    if (hBitmap) {
        BITMAP bm = {};
        GetObjectA(hBitmap, sizeof bm, &bm);
        DrawTransparentBitmap(mem, hBitmap, (r.right - bm.bmWidth + r.left) / 2, (r.top - bm.bmHeight + r.bottom) / 2,
                              color);
    } else if (text) {
        if (hFont)
            SelectObject(mem, hFont);
        SetBkMode(mem, TRANSPARENT);
        UINT format = AlignmentOf(options);
        if (options & DPB_DISABLED)
            color = GetSysColor(COLOR_GRAYTEXT);
        // A caret breaks the line; a backslash makes the next character literal.
        LPCSTR caption = StringParse(text, 0, '\\', '^', '\n', nullptr);
        int height = HIWORD(MeasureTextLines(mem, caption));
        if (height < r.bottom - r.top)
            r.top = (r.top - height + r.bottom) / 2; // centred by moving the top only
        if (options & DPB_EMBOSS) {
            SetTextColor(mem, RGB(255, 255, 255));
            RECT shadow = r;
            shadow.left += 1;
            shadow.top += 1;
            DrawTextA(mem, caption, -1, &shadow, format);
        }
        SetTextColor(mem, color);
        DrawTextA(mem, caption, -1, &r, format);
    }

    BitBlt(hDC, rect->left, rect->top, w + 1, h + 1, mem, 0, 0, SRCCOPY);
    // The context first, then the bitmap, the face brush, the face pen, the shadow pen.
    mem.reset();
    bitmap.reset();
    faceBrush.reset();
    facePen.reset();
    shadowPen.reset();
    if (options & DPB_RETURNRECT) {
        rect->left += r.left;
        rect->top += r.top;
        rect->right = rect->left + (r.right - r.left);
        rect->bottom = rect->top + (r.bottom - r.top);
    }
}

extern "C" int QUILLAPI HImageDraw(HDC hDC, const HImage* image, int x, int y, COLORREF transparent)
{
    if (!image)
        return 0;
    switch (image->type) {
    case HIMAGE_BITMAP:
        if (image->handle)
            DrawTransparentBitmap(hDC, (HBITMAP)image->handle, x, y, transparent);
        return 1;
    case HIMAGE_ICON:
        return image->handle ? DrawIcon(hDC, x, y, (HICON)image->handle) : 1;
    case HIMAGE_DIB: {
        HPALETTE old = SelectPalette(hDC, image->palette, TRUE);
        RealizePalette(hDC);
        DrawTransparentBitmap(hDC, (HBITMAP)image->handle, x, y, transparent);
        SelectPalette(hDC, old, TRUE);
        return 1;
    }
    }
    return 0;
}

extern "C" BOOL QUILLAPI HImageGetSize(const HImage* image, LPINT width, LPINT height)
{
    if (!image)
        return FALSE;
    int cx, cy;
    switch (image->type) {
    case HIMAGE_BITMAP:
    case HIMAGE_DIB: {
        BITMAP bm = {};
        GetObjectA(image->handle, sizeof bm, &bm);
        cx = bm.bmWidth;
        cy = bm.bmHeight;
        break;
    }
    case HIMAGE_ICON: // an icon is drawn at the system's icon size
        cx = GetSystemMetrics(SM_CXICON);
        cy = GetSystemMetrics(SM_CYICON);
        break;
    default:
        return FALSE;
    }
    if (width)
        *width = cx;
    if (height)
        *height = cy;
    return TRUE;
}

// The head of a button record as far as this routine reads it: HButtRec puts
// its caption right behind the extended control head.
struct HButtTextHead {
    HCtlBaseEx base;
    LPSTR text;
};

extern "C" BOOL QUILLAPI HBDrawText(HDC hDC, LPARAM record, int length)
{
    const HButtTextHead* b = (const HButtTextHead*)record;
    if (!b)
        return FALSE;
    // GrayStringA draws into a bitmap of its own, whose origin is the text's corner.
    OffsetRect(&g_rcButtonText, -g_rcButtonText.left, -g_rcButtonText.top);
    LPCSTR text = b->text ? b->text : "";
    UINT format = (b->base.dwStyle & HBS_RIGHT) ? DT_RIGHT : (b->base.dwStyle & HBS_LEFT) ? DT_LEFT : DT_CENTER;
    format |= strchr(text, '\n') ? DT_WORDBREAK : (DT_SINGLELINE | DT_VCENTER);
    DrawTextA(hDC, text, -1, &g_rcButtonText, format);
    return TRUE;
}
