// HStat's layout and painting: etched lines, frames, background, group label,
// image and text, chosen by kind from tables.
#include "buttons/hstat.h"
#include "draw/draw.h"
#include "frame/frame.h"

namespace {

constexpr COLORREF kLineGrey = 0x808080; // a fixed grey, not a system colour
constexpr UINT kCalcFormat = DT_CALCRECT | DT_WORDBREAK;
constexpr UINT kTextFormat = DT_WORDBREAK | DT_EXPANDTABS;
constexpr int kGroupLabelIndent = 6;

bool HStatHasFrame(const HStatRec* r) { return (r->dwStyle & (HSS_SUNKEN | HSS_RIDGE)) != 0; }

// An etched line: a start, two strokes in the first pen, two in the second.
struct LineStrokes {
    POINT start, a1, a2, b1, b2; // coordinates; -1 stands for R (x) or B (y)
};
constexpr LineStrokes kLines[] = {
    {{0, 1}, {0, 0}, {-1, 0}, {-1, 1}, {0, 1}},   // HSK_HLINE: two pixels high
    {{1, 0}, {0, 0}, {0, -1}, {1, -1}, {1, 0}},   // HSK_VLINE: two pixels wide
};

POINT HStatLinePoint(POINT p, const RECT& client)
{
    return {p.x < 0 ? client.right - 1 : p.x, p.y < 0 ? client.bottom - 1 : p.y};
}

void HStatLineTo(HDC dc, POINT to, const RECT& client)
{
    POINT p = HStatLinePoint(to, client);
    LineTo(dc, p.x, p.y);
}

void HStatPaintLine(HStatRec* r, HDC dc, const RECT& client)
{
    HPEN grey = CreatePen(PS_SOLID, 1, kLineGrey);
    HPEN white = (HPEN)GetStockObject(WHITE_PEN);
    bool sunken = (r->dwStyle & HSS_SUNKEN) && !(r->dwStyle & WS_BORDER);
    HPEN first = sunken ? grey : white, second = sunken ? white : grey;
    const LineStrokes& s = kLines[HStatKind(r) - HSK_HLINE];
    POINT p = HStatLinePoint(s.start, client);
    MoveToEx(dc, p.x, p.y, nullptr);
    HGDIOBJ oldPen = SelectObject(dc, first);
    HStatLineTo(dc, s.a1, client);
    HStatLineTo(dc, s.a2, client);
    SelectObject(dc, second);
    HStatLineTo(dc, s.b1, client);
    HStatLineTo(dc, s.b2, client);
    SelectObject(dc, oldPen);
    DeleteObject(grey);
}

void HStatPaintFrame(HStatRec* r, HDC dc, RECT frame)
{
    if (r->dwStyle & HSS_RIDGE)
        Draw3DBorder(dc, &frame, 2, TRUE);
    else if (r->dwStyle & HSS_SUNKEN)
        Draw3DBorder(dc, &frame, (r->dwStyle & WS_BORDER) ? 1 : 0, TRUE); // with a border it looks raised
    else {
        HPEN pen = (HPEN)GetStockObject((r->dwStyle & WS_BORDER) ? BLACK_PEN : NULL_PEN);
        DrawBevelEdge(dc, &frame, pen, pen, FALSE, TRUE);
    }
}

void HStatPaintText(HStatRec* r, HDC dc, RECT content)
{
    if (!r->text)
        return;
    if (r->hFont)
        SelectObject(dc, r->hFont);
    UINT format = kTextFormat | ((r->dwStyle & HSS_RIGHT) ? DT_RIGHT : (r->dwStyle & HSS_LEFT) ? DT_LEFT : DT_CENTER);
    SetBkMode(dc, TRANSPARENT);
    if (r->dwStyle & HSS_EMBOSS) {
        RECT shadow = content;
        OffsetRect(&shadow, 1, 1);
        SetTextColor(dc, RGB(255, 255, 255));
        DrawTextA(dc, r->text, -1, &shadow, format);
    }
    SetTextColor(dc, r->colorText);
    DrawTextA(dc, r->text, -1, &content, format);
}

// The label's box breaks the frame line; the label sits inside it.
void HStatPaintGroup(HStatRec* r, HDC dc, RECT content, HBRUSH solid)
{
    SelectObject(dc, GetStockObject(NULL_PEN));
    SelectObject(dc, solid);
    Rectangle(dc, content.left, content.top, content.right + 1, content.bottom + 1);
    content.top += 2;
    if (r->dwStyle & HSS_LEFT)
        content.left += kGroupLabelIndent;
    else if (r->dwStyle & HSS_RIGHT)
        content.right -= kGroupLabelIndent;
    HStatPaintText(r, dc, content);
}

void HStatPaintImage(HStatRec* r, HDC dc, RECT content)
{
    if (r->image.handle)
        HImageDraw(dc, &r->image, content.left, content.top, r->colorText);
}

// The content of each kind; kinds without a row (blank, and kinds above 5) show none.
using HStatContentPainter = void (*)(HStatRec*, HDC, RECT, HBRUSH);
constexpr HStatContentPainter kContentPainters[] = {
    [](HStatRec* r, HDC dc, RECT c, HBRUSH) { HStatPaintText(r, dc, c); }, // HSK_TEXT
    HStatPaintGroup,                                                       // HSK_GROUP
    nullptr,                                                               // HSK_BLANK
    [](HStatRec* r, HDC dc, RECT c, HBRUSH) { HStatPaintImage(r, dc, c); }, // HSK_IMAGE
};

} // namespace

void HStatLayout(HStatRec* r, HDC dc, LPRECT client, LPRECT content)
{
    int margin = ((r->dwStyle & WS_BORDER) || HStatHasFrame(r)) ? 4 : 0;
    SetRectEmpty(content);
    GetClientRect(r->hWnd, client);
    UINT kind = HStatKind(r);
    int width = 0, height = 0;
    if ((kind == HSK_TEXT || kind == HSK_GROUP) && r->text) {
        RECT calc = *client;
        DrawTextA(dc, r->text, -1, &calc, kCalcFormat);
        width = calc.right - calc.left;
        height = calc.bottom - calc.top;
    } else if (kind == HSK_IMAGE && r->image.handle) {
        HImageGetSize(&r->image, &width, &height);
    } else if (kind == HSK_BLANK) {
        return;
    }
    if (kind == HSK_GROUP && r->text) {
        // The label's box: inset by 2 in a ridge, by 1 in other frames, not at all without one.
        int m = !margin ? 0 : (r->dwStyle & HSS_RIDGE) ? 2 : 1;
        RECT label = {client->left + m, client->top + m, client->right - m, client->top + m + height + 4};
        IntersectRect(content, &label, client);
        return;
    }
    if (r->dwStyle & HSS_LEFT)
        content->left = margin;
    else if (r->dwStyle & HSS_RIGHT)
        content->left = client->right - margin - width;
    else
        content->left = (client->right - width) / 2;
    content->right = content->left + width;
    if (kind == HSK_TEXT)
        content->top = HStatHasFrame(r) ? 3 : (r->dwStyle & WS_BORDER) ? 2 : 1;
    else
        content->top = (client->bottom - height) / 2;
    content->bottom = content->top + height;
}

void HStatPaint(HStatRec* r, HDC dc)
{
    if (!r || !dc)
        return;
    if (r->dwStyle & WS_CLIPSIBLINGS)
        HExcludeSiblings(r->hWnd, dc);
    UINT kind = HStatKind(r);
    if (kind == HSK_HLINE || kind == HSK_VLINE) {
        RECT client;
        GetClientRect(r->hWnd, &client);
        HStatPaintLine(r, dc, client);
        return;
    }
    if (r->hFont)
        SelectObject(dc, r->hFont); // stays selected: the end selects only brush and pen
    RECT client, content;
    HStatLayout(r, dc, &client, &content);
    // The solid brush is made even when transparency leaves it unused but for a label.
    HBRUSH solid = CreateSolidBrush(r->colorBack ? r->colorBack : GetSysColor(COLOR_WINDOW));
    SelectObject(dc, (r->dwStyle & HSS_TRANSPARENT) ? GetStockObject(NULL_BRUSH) : (HGDIOBJ)solid);
    HStatPaintFrame(r, dc, client);
    if (kind < sizeof kContentPainters / sizeof kContentPainters[0] && kContentPainters[kind])
        kContentPainters[kind](r, dc, content, solid);
    SelectObject(dc, GetStockObject(WHITE_BRUSH));
    SelectObject(dc, GetStockObject(BLACK_PEN));
    DeleteObject(solid);
}
