// The drawing primitives, read back pixel by pixel from a 32-bit memory bitmap:
// border styles, bevel depths, the pressed shift, the cut corners, captions,
// and the transparent colour.
#include "wintest.h"

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
const COLORREF kWhite = RGB(255, 255, 255), kBlack = RGB(0, 0, 0), kRed = RGB(255, 0, 0), kLime = RGB(0, 255, 0);
COLORREF Shadow() { return GetSysColor(COLOR_BTNSHADOW); }
COLORREF Face() { return GetSysColor(COLOR_BTNFACE); }

TEST(Draw3DBorder, EachStyleDrawsItsPensAndShrinksTheRectangle)
{
    enum Pen { S, W, B, F, None };
    struct Row { int style; Pen outerTL, outerBR, innerTL, innerBR; int shrink; };
    const Row rows[] = {
        {0, S, W, None, None, 1}, {1, W, S, None, None, 1}, {2, W, S, S, W, 2},
        {3, S, W, B, F, 2},       {4, W, S, W, S, 2},
    };
    auto colour = [](Pen p) { return p == S ? Shadow() : p == W ? kWhite : p == B ? kBlack : Face(); };
    for (const Row& row : rows) {
        Canvas c(20, 20, kMarker);
        HBRUSH red = CreateSolidBrush(kRed);
        HGDIOBJ oldBrush = SelectObject(c.dc, red);
        RECT r = {0, 0, 20, 20};
        Draw3DBorder(c.dc, &r, row.style, TRUE);
        SCOPED_TRACE(row.style);
        EXPECT_EQ(c.at(0, 10), colour(row.outerTL));
        EXPECT_EQ(c.at(10, 0), colour(row.outerTL));
        EXPECT_EQ(c.at(19, 10), colour(row.outerBR));
        EXPECT_EQ(c.at(10, 19), colour(row.outerBR));
        EXPECT_EQ(c.at(19, 0), colour(row.outerBR)) << "top-right corner: second pen";
        EXPECT_EQ(c.at(0, 19), colour(row.outerBR)) << "bottom-left corner: second pen";
        if (row.innerTL != None) {
            EXPECT_EQ(c.at(1, 10), colour(row.innerTL));
            EXPECT_EQ(c.at(18, 10), colour(row.innerBR));
        }
        EXPECT_EQ(c.at(10, 10), kRed) << "the selected brush fills";
        EXPECT_EQ(r.left, row.shrink);
        EXPECT_EQ(r.top, row.shrink);
        EXPECT_EQ(r.right, 20 - row.shrink);
        EXPECT_EQ(r.bottom, 20 - row.shrink);
        SelectObject(c.dc, oldBrush);
        DeleteObject(red);
    }
}

TEST(Draw3DBorder, WithoutFillTheInsideStaysAndStyle5DrawsNothing)
{
    Canvas c(20, 20, kMarker);
    RECT r = {0, 0, 20, 20};
    Draw3DBorder(c.dc, &r, 2, FALSE);
    EXPECT_EQ(c.at(10, 10), kMarker);
    RECT five = {0, 0, 20, 20};
    Canvas d(20, 20, kMarker);
    Draw3DBorder(d.dc, &five, 5, TRUE);
    EXPECT_EQ(d.at(0, 0), kMarker);
    EXPECT_EQ(d.at(10, 10), kMarker);
    EXPECT_EQ(five.right, 20);
    EXPECT_EQ(five.left, 0);
}

// The face rectangle DrawPushButton hands back, as offsets from each side;
// pressed, the face keeps its right and bottom and moves its top-left corner.
struct Face4 { int left, top, right, bottom; };
Face4 FaceOf(int depth, UINT options)
{
    Canvas c(40, 30, kMarker);
    RECT r = {0, 0, 40, 30};
    DrawPushButton(nullptr, c.dc, &r, depth, options | DPB_RETURNRECT, nullptr, nullptr, nullptr, 0);
    return {r.left, r.top, 40 - r.right, 30 - r.bottom};
}

TEST(DrawPushButton, BevelDepthAndPressedShiftSetTheFace)
{
    struct Row { int depth; UINT options; Face4 face; const char* what; };
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
    for (const Row& r : rows) {
        Face4 f = FaceOf(r.depth, r.options);
        EXPECT_EQ(f.left, r.face.left) << r.what;
        EXPECT_EQ(f.top, r.face.top) << r.what;
        EXPECT_EQ(f.right, r.face.right) << r.what;
        EXPECT_EQ(f.bottom, r.face.bottom) << r.what;
    }
}

TEST(DrawPushButton, RaisedBevelIsWhiteAboveAndShadowBelow)
{
    Canvas c(40, 30, kMarker);
    RECT r = {0, 0, 40, 30};
    DrawPushButton(nullptr, c.dc, &r, 1, 0, nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(c.at(20, 0), kBlack) << "frame";
    EXPECT_EQ(c.at(20, 1), kWhite) << "first pass";
    EXPECT_EQ(c.at(20, 28), Shadow());
    EXPECT_EQ(c.at(20, 2), Face()) << "the odd depth's face pass";
    EXPECT_EQ(c.at(20, 27), Shadow());
    EXPECT_EQ(c.at(20, 15), Face());
}

TEST(DrawPushButton, PressedFaceHasShadowOnlyAtTopAndLeft)
{
    Canvas c(40, 30, kMarker);
    RECT r = {0, 0, 40, 30};
    DrawPushButton(nullptr, c.dc, &r, 2, DPB_PRESSED, nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(c.at(1, 15), Shadow());
    EXPECT_EQ(c.at(20, 1), Shadow());
    EXPECT_EQ(c.at(38, 15), Face());
    EXPECT_EQ(c.at(20, 28), Face());
}

TEST(DrawPushButton, CutCornersShowTheParentsBrushAndSquareOnesAreBlack)
{
    TestParent parent;
    HBRUSH blue = CreateSolidBrush(RGB(0, 0, 255));
    parent.colorReply = blue;
    HWND button = parent.Child("STATIC", "", WS_CHILD, 7);
    Canvas c(40, 30, kMarker);
    RECT r = {0, 0, 40, 30};
    DrawPushButton(button, c.dc, &r, 2, 0, nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(c.at(0, 0), RGB(0, 0, 255));
    EXPECT_EQ(c.at(39, 29), RGB(0, 0, 255));
    EXPECT_EQ(c.at(1, 0), kBlack);
    ASSERT_FALSE(parent.seen.empty());
    EXPECT_EQ(parent.seen.back().msg, (UINT)WM_CTLCOLORBTN);
    parent.seen.clear();
    RECT s = {0, 0, 40, 30};
    DrawPushButton(button, c.dc, &s, 2, DPB_SQUARE, nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(c.at(0, 0), kBlack);
    EXPECT_TRUE(parent.seen.empty()) << "a square button asks no brush";
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

TEST(DrawPushButton, AlignmentRightWinsOverLeft)
{
    auto left = InkColumns(DPB_LEFT, "II");
    auto right = InkColumns(DPB_LEFT | DPB_RIGHT, "II");
    auto centre = InkColumns(0, "II");
    ASSERT_GE(left.first, 0);
    EXPECT_LT(left.last, 30);
    EXPECT_GT(right.first, 70);
    EXPECT_GT(centre.first, 30);
    EXPECT_LT(centre.last, 70);
}

TEST(DrawPushButton, DisabledTextIsGreyAndBitmapWinsOverText)
{
    auto disabled = InkColumns(DPB_DISABLED, "II");
    EXPECT_EQ(disabled.first, -1) << "no black ink";
    HBITMAP red = CreateBitmap(4, 4, 1, 32, nullptr);
    Canvas c(100, 24, kMarker);
    HDC m = CreateCompatibleDC(c.dc);
    HGDIOBJ o = SelectObject(m, red);
    RECT all = {0, 0, 4, 4};
    HBRUSH b = CreateSolidBrush(kRed);
    FillRect(m, &all, b);
    SelectObject(m, o);
    DeleteDC(m);
    DeleteObject(b);
    RECT r = {0, 0, 100, 24};
    DrawPushButton(nullptr, c.dc, &r, 2, 0, "IIII", nullptr, red, 0);
    EXPECT_EQ(c.at(50, 12), kRed) << "the bitmap, centred";
    EXPECT_EQ(c.at(20, 12), Face()) << "and no text";
    DeleteObject(red);
}

// A 4x2 bitmap: left half lime, right half black.
HBITMAP LimeBlack()
{
    HDC screen = GetDC(nullptr);
    HBITMAP b = CreateCompatibleBitmap(screen, 4, 2);
    ReleaseDC(nullptr, screen);
    HDC m = CreateCompatibleDC(nullptr);
    HGDIOBJ o = SelectObject(m, b);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 4; ++x)
            SetPixel(m, x, y, x < 2 ? kLime : kBlack);
    SelectObject(m, o);
    DeleteDC(m);
    return b;
}

TEST(DrawTransparentBitmap, TheTransparentColourLetsTheBackgroundThrough)
{
    HBITMAP b = LimeBlack();
    HImage image = {HIMAGE_BITMAP, b, nullptr};
    Canvas c(10, 10, kRed);
    EXPECT_EQ(HImageDraw(c.dc, &image, 3, 3, kLime), 1);
    EXPECT_EQ(c.at(3, 3), kRed) << "lime left out";
    EXPECT_EQ(c.at(6, 4), kBlack);
    EXPECT_EQ(c.at(2, 3), kRed) << "nothing outside";
    Canvas d(10, 10, kRed);
    HImageDraw(d.dc, &image, 0, 0, 0);
    EXPECT_EQ(d.at(0, 0), kLime) << "0 is opaque";
    EXPECT_EQ(d.at(3, 1), kBlack) << "so black can't be left out";
    DeleteObject(b);
}

TEST(HImageDraw, UnknownTypeDrawsNothingAndANullIconCountsAsDrawn)
{
    Canvas c(4, 4, kRed);
    HImage none = {7, nullptr, nullptr};
    HImage icon = {HIMAGE_ICON, nullptr, nullptr};
    EXPECT_EQ(HImageDraw(c.dc, &none, 0, 0, 0), 0);
    EXPECT_EQ(HImageDraw(c.dc, &icon, 0, 0, 0), 1);
    int w = -1, h = -1;
    EXPECT_FALSE(HImageGetSize(&none, &w, &h));
    EXPECT_EQ(w, -1);
    EXPECT_TRUE(HImageGetSize(&icon, &w, &h));
    EXPECT_EQ(w, GetSystemMetrics(SM_CXICON));
}

TEST(HBDrawText, ANullRecordGivesZeroAndANullCaptionDrawsEmpty)
{
    Canvas c(10, 10, kMarker);
    EXPECT_FALSE(HBDrawText(c.dc, 0, 0));
    struct { HCtlBaseEx base; LPSTR text; } button = {};
    EXPECT_TRUE(HBDrawText(c.dc, (LPARAM)&button, 0));
    EXPECT_EQ(c.at(5, 5), kMarker);
}

TEST(DrawPushButton, LeavesNoGdiObjectBehind)
{
    Canvas c(60, 30, kMarker);
    HBITMAP b = LimeBlack();
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
