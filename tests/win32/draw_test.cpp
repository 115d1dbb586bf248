// The drawing primitives, read back pixel by pixel from a 32-bit memory bitmap:
// border styles, bevel depths, the pressed shift, the cut corners, captions,
// and the transparent colour.
#include "wintest.h"

#include <string>
#include <vector>

namespace {

// A memory context on a top-down 32-bit DIB section, filled with one colour.
struct Canvas {
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ old;
    Canvas(int w, int h, COLORREF fill)
    {
        BITMAPINFO bi = {};
        bi.bmiHeader.biSize = sizeof bi.bmiHeader;
        bi.bmiHeader.biWidth = w;
        bi.bmiHeader.biHeight = -h;
        bi.bmiHeader.biPlanes = 1;
        bi.bmiHeader.biBitCount = 32;
        void* bits;
        dc = CreateCompatibleDC(nullptr);
        bitmap = CreateDIBSection(dc, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
        old = SelectObject(dc, bitmap);
        HBRUSH b = CreateSolidBrush(fill);
        RECT r = {0, 0, w, h};
        FillRect(dc, &r, b);
        DeleteObject(b);
    }
    ~Canvas()
    {
        SelectObject(dc, old);
        DeleteObject(bitmap);
        DeleteDC(dc);
    }
    COLORREF at(int x, int y) const { return GetPixel(dc, x, y); }
};

} // namespace

// How many more GDI objects the process can make: pens are made until the
// handle table is full, then deleted. Exact under Wine, whose GetGuiResources counts nothing.
int GdiHeadroom() // also used by the image tests
{
    std::vector<HPEN> pens;
    while (pens.size() < 200000)
        if (HPEN p = CreatePen(PS_SOLID, 1, RGB(1, 2, 3)))
            pens.push_back(p);
        else
            break;
    for (HPEN p : pens)
        DeleteObject(p);
    return (int)pens.size();
}

namespace {

const COLORREF kMarker = RGB(1, 2, 3);
std::string RectString(RECT r)
{
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," + std::to_string(r.bottom);
}
const COLORREF kWhite = RGB(255, 255, 255), kBlack = RGB(0, 0, 0), kRed = RGB(255, 0, 0), kLime = RGB(0, 255, 0);
COLORREF Shadow() { return GetSysColor(COLOR_BTNSHADOW); }
COLORREF Face() { return GetSysColor(COLOR_BTNFACE); }

TEST(Draw3DBorder, EachStyleDrawsItsPensFillsAndShrinksTheRectangle)
{
    enum Pen { S, W, B, F, R, M }; // shadow, white, black, face, the selected red brush, the marker left alone
    struct Row { int style; BOOL fill; Pen outerTL, outerBR, innerTL, innerBR, inside; int shrink; };
    const Row rows[] = {
        {0, TRUE, S, W, R, R, R, 1}, {1, TRUE, W, S, R, R, R, 1}, {2, TRUE, W, S, S, W, R, 2},
        {3, TRUE, S, W, B, F, R, 2}, {4, TRUE, W, S, W, S, R, 2}, {2, FALSE, W, S, S, W, M, 2},
        {5, TRUE, M, M, M, M, M, 0}, // draws nothing
    };
    auto colour = [](Pen p) {
        const COLORREF c[] = {Shadow(), kWhite, kBlack, Face(), kRed, kMarker};
        return c[p];
    };
    for (const Row& row : rows) {
        Canvas c(20, 20, kMarker);
        HBRUSH red = CreateSolidBrush(kRed);
        HGDIOBJ oldBrush = SelectObject(c.dc, red);
        RECT r = {0, 0, 20, 20};
        Draw3DBorder(c.dc, &r, row.style, row.fill);
        SCOPED_TRACE(testing::Message() << "style " << row.style << " fill " << row.fill);
        const struct { int x, y; Pen pen; } points[] = {
            {0, 10, row.outerTL}, {10, 0, row.outerTL}, {19, 10, row.outerBR}, {10, 19, row.outerBR},
            {19, 0, row.outerBR}, {0, 19, row.outerBR}, // the corners take the second pen
            {1, 10, row.innerTL}, {18, 10, row.innerBR}, {10, 10, row.inside},
        };
        for (const auto& p : points)
            EXPECT_EQ(c.at(p.x, p.y), colour(p.pen)) << p.x << "," << p.y;
        EXPECT_EQ(RectString(r), RectString({row.shrink, row.shrink, 20 - row.shrink, 20 - row.shrink}));
        SelectObject(c.dc, oldBrush);
        DeleteObject(red);
    }
}

// The face rectangle DrawPushButton hands back, as offsets from each side;
// pressed, the face keeps its right and bottom and moves its top-left corner.
TEST(DrawPushButton, BevelDepthAndPressedShiftSetTheFace)
{
    struct Row { int depth; UINT options; RECT face; const char* what; };
    const Row rows[] = {
        {0, 0, {2, 2, 2, 2}, "depth 0: frame and one pass"},
        {1, 0, {3, 3, 3, 3}, "depth 1: a white and a face pass"},
        {2, 0, {3, 3, 3, 3}, "depth 2: two white passes"},
        {3, 0, {5, 5, 5, 5}, "depth 3: three passes and a face pass"},
        {-1, 0, {3, 3, 3, 3}, "negative depth: one pass and a face pass"},
        {2, DPB_DEFAULT, {4, 4, 4, 4}, "default: one black line more"},
        {2, DPB_SQUARE, {3, 3, 3, 3}, "square frame"},
        {0, DPB_PRESSED, {1, 1, 1, 1}, "pressed depth 0: no shadow, no shift"},
        {1, DPB_PRESSED, {3, 3, 1, 1}, "pressed depth 1: one line and a shift of 1"},
        {2, DPB_PRESSED, {4, 4, 1, 1}, "pressed depth 2: one line and a shift of 2"},
        {3, DPB_PRESSED, {7, 7, 1, 1}, "pressed depth 3: three lines and a shift of 3"},
    };
    for (const Row& row : rows) {
        Canvas c(40, 30, kMarker);
        RECT r = {0, 0, 40, 30};
        DrawPushButton(nullptr, c.dc, &r, row.depth, row.options | DPB_RETURNRECT, nullptr, nullptr, nullptr, 0);
        EXPECT_EQ(RectString({r.left, r.top, 40 - r.right, 30 - r.bottom}), RectString(row.face)) << row.what;
    }
}

// Raised, the bevel is white above and shadow below; pressed, shadow only at
// top and left; round corners show the parent's brush, square ones are black.
TEST(DrawPushButton, BevelColoursAndCutCornersShowTheParentsBrush)
{
    TestParent parent;
    const COLORREF kBlue = RGB(0, 0, 255);
    HBRUSH blue = CreateSolidBrush(kBlue);
    parent.colorReply = blue;
    HWND button = parent.Child("STATIC", "", WS_CHILD, 7);
    // Each row draws for the button window, or for none when it does not ask the brush.
    const struct { int depth; UINT options; std::vector<std::pair<POINT, COLORREF>> pixels; bool asksBrush; } rows[] = {
        {1, 0, {{{20, 0}, kBlack}, {{20, 1}, kWhite}, {{20, 2}, Face()}, {{20, 15}, Face()}, {{20, 27}, Shadow()},
                {{20, 28}, Shadow()}, {{0, 0}, kBlue}, {{39, 29}, kBlue}, {{1, 0}, kBlack}}, true},
        {2, DPB_PRESSED, {{{1, 15}, Shadow()}, {{20, 1}, Shadow()}, {{38, 15}, Face()}, {{20, 28}, Face()}}, false},
        {2, DPB_SQUARE, {{{0, 0}, kBlack}, {{39, 29}, kBlack}}, false},
    };
    for (const auto& row : rows) {
        Canvas c(40, 30, kMarker);
        RECT r = {0, 0, 40, 30};
        parent.seen.clear();
        bool window = row.asksBrush || (row.options & DPB_SQUARE);
        DrawPushButton(window ? button : nullptr, c.dc, &r, row.depth, row.options, nullptr, nullptr, nullptr, 0);
        for (const auto& p : row.pixels)
            EXPECT_EQ(c.at(p.first.x, p.first.y), p.second) << "options " << row.options << " at " << p.first.x << "," << p.first.y;
        if (window)
            EXPECT_EQ(row.asksBrush, !parent.seen.empty() && parent.seen.back().msg == WM_CTLCOLORBTN) << "options " << row.options;
    }
    DeleteObject(blue);
}

// Top of the face DrawPushButton hands back for a caption: the text is centred by its top.
int CaptionTop(const char* text)
{
    Canvas c(80, 60, kMarker);
    RECT r = {0, 0, 80, 60};
    DrawPushButton(nullptr, c.dc, &r, 2, DPB_RETURNRECT, text, nullptr, nullptr, 0);
    return r.top;
}

TEST(DrawPushButton, CaretBreaksTheCaptionAndBackslashKeepsIt)
{
    int one = CaptionTop("AB");
    EXPECT_LT(CaptionTop("A^B"), one) << "two lines start higher";
    EXPECT_EQ(CaptionTop("A\\^B"), one) << "an escaped caret is a character";
    EXPECT_EQ(CaptionTop("A^^B"), CaptionTop("A^B")) << "an empty line adds no height";
}

// Columns of the face where the caption drew black.
struct Ink { int first, last; };
Ink InkColumns(UINT options, const char* text)
{
    Canvas c(100, 24, kMarker);
    RECT r = {0, 0, 100, 24};
    DrawPushButton(nullptr, c.dc, &r, 2, options, text, nullptr, nullptr, kBlack);
    int first = -1, last = -1;
    for (int x = 4; x < 96; ++x)
        for (int y = 4; y < 20; ++y)
            if (c.at(x, y) == kBlack) {
                if (first < 0)
                    first = x;
                last = x;
            }
    return {first, last};
}

TEST(DrawPushButton, AlignmentRightWinsOverLeftAndDisabledTextIsGrey)
{
    const struct { UINT options; int firstAbove, firstBelow, lastAbove, lastBelow; } rows[] = {
        {DPB_LEFT, 0, 100, 0, 30},
        {DPB_LEFT | DPB_RIGHT, 70, 100, 70, 100},
        {0, 30, 100, 0, 70},
        {DPB_DISABLED, -2, 0, -2, 0}, // no black ink
    };
    for (const auto& row : rows) {
        Ink ink = InkColumns(row.options, "II");
        EXPECT_GT(ink.first, row.firstAbove) << row.options;
        EXPECT_LT(ink.first, row.firstBelow) << row.options;
        EXPECT_GT(ink.last, row.lastAbove) << row.options;
        EXPECT_LT(ink.last, row.lastBelow) << row.options;
    }
}

// A bitmap of the screen's format, its left half one colour and its right half another.
HBITMAP Halves(int w, int h, COLORREF left, COLORREF right)
{
    HDC screen = GetDC(nullptr);
    HBITMAP b = CreateCompatibleBitmap(screen, w, h);
    ReleaseDC(nullptr, screen);
    HDC m = CreateCompatibleDC(nullptr);
    HGDIOBJ o = SelectObject(m, b);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            SetPixel(m, x, y, x < w / 2 ? left : right);
    SelectObject(m, o);
    DeleteDC(m);
    return b;
}

TEST(DrawPushButton, BitmapWinsOverText)
{
    HBITMAP red = Halves(4, 4, kRed, kRed);
    Canvas c(100, 24, kMarker);
    RECT r = {0, 0, 100, 24};
    DrawPushButton(nullptr, c.dc, &r, 2, 0, "IIII", nullptr, red, 0);
    EXPECT_EQ(c.at(50, 12), kRed) << "the bitmap, centred";
    EXPECT_EQ(c.at(20, 12), Face()) << "and no text";
    DeleteObject(red);
}

TEST(HImageDraw, TheTransparentColourLetsTheBackgroundThroughAndZeroIsOpaque)
{
    HBITMAP b = Halves(4, 2, kLime, kBlack);
    HImage image = {HIMAGE_BITMAP, b, nullptr};
    const struct { COLORREF transparent; int x, y; COLORREF expected; const char* what; } rows[] = {
        {kLime, 3, 3, kRed, "lime left out"},  {kLime, 6, 4, kBlack, "black drawn"},
        {kLime, 2, 3, kRed, "nothing outside"}, {0, 3, 3, kLime, "0 is opaque"},
        {0, 6, 4, kBlack, "so black can't be left out"},
    };
    for (const auto& row : rows) {
        Canvas c(10, 10, kRed);
        EXPECT_EQ(HImageDraw(c.dc, &image, 3, 3, row.transparent), 1);
        EXPECT_EQ(c.at(row.x, row.y), row.expected) << row.what;
    }
    DeleteObject(b);
}

TEST(HImageDraw, UnknownTypeDrawsNothingAndNullIconOrCaptionCountAsDrawn)
{
    Canvas c(10, 10, kMarker);
    HImage none = {7, nullptr, nullptr};
    HImage icon = {HIMAGE_ICON, nullptr, nullptr};
    EXPECT_EQ(HImageDraw(c.dc, &none, 0, 0, 0), 0);
    EXPECT_EQ(HImageDraw(c.dc, &icon, 0, 0, 0), 1);
    int w = -1, h = -1;
    EXPECT_FALSE(HImageGetSize(&none, &w, &h));
    EXPECT_EQ(w, -1);
    EXPECT_TRUE(HImageGetSize(&icon, &w, &h));
    EXPECT_EQ(w, GetSystemMetrics(SM_CXICON));
    EXPECT_FALSE(HBDrawText(c.dc, 0, 0)) << "a null record";
    struct { HCtlBaseEx base; LPSTR text; } button = {};
    EXPECT_TRUE(HBDrawText(c.dc, (LPARAM)&button, 0)) << "a null caption draws empty";
    EXPECT_EQ(c.at(5, 5), kMarker);
}

TEST(DrawPushButton, LeavesNoGdiObjectBehind)
{
    Canvas c(60, 30, kMarker);
    HBITMAP b = Halves(4, 2, kLime, kBlack);
    HImage image = {HIMAGE_BITMAP, b, nullptr};
    auto draw = [&] {
        for (int i = 0; i < 24; ++i) {
            RECT r = {0, 0, 60, 30};
            DrawPushButton(nullptr, c.dc, &r, i % 4, (UINT)i * 5, i % 2 ? "A^B" : nullptr, nullptr, i % 3 ? nullptr : b,
                           i % 4 ? kLime : 0);
            Draw3DBorder(c.dc, &r, i % 6, TRUE);
            HImageDraw(c.dc, &image, 1, 1, i % 2 ? kLime : 0);
        }
    };
    draw(); // first use may make lasting stock objects
    int before = GdiHeadroom();
    draw();
    EXPECT_EQ(GdiHeadroom(), before);
    DeleteObject(b);
}

} // namespace
