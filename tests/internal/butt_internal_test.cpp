// HButt's routines that stay inside the library: the placement of image and
// text on the face, and the value painter that the grid calls.
#include "wintest.h"
#include "buttons/hbutt.h"

namespace {

class ButtInternal : public ::testing::Test {
protected:
    void SetUp() override
    {
        HLibraryEntry(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
        dc = CreateCompatibleDC(nullptr);
    }
    void TearDown() override { DeleteDC(dc); }
    HButtRec* Make(const char* text, DWORD style)
    {
        HWND h = parent.Child(HBUTT_CLASS, text, style, 40, 0, 0, 100, 40);
        return (HButtRec*)SendMessageA(h, HM_GETPTR, 0, 0);
    }
    TestParent parent;
    HDC dc = nullptr;
};

TEST_F(ButtInternal, LayoutPlacesAnImageByPositionRelationAndClampsToTheFace)
{
    // No caption, a 16 by 12 image; the expected rectangles are worked out by hand.
    const struct { BYTE text, image, relation; RECT face, image_, focus; } kRows[] = {
        {4, 4, 4, {0, 0, 100, 40}, {42, 14, 58, 26}, {41, 14, 59, 26}},
        {4, 4, 3, {0, 0, 100, 40}, {39, 14, 55, 26}, {38, 14, 56, 26}}, // the pair centred, image first
        {4, 4, 5, {0, 0, 100, 40}, {45, 14, 61, 26}, {44, 14, 62, 26}}, // image behind the (empty) text
        {3, 3, 8, {0, 0, 100, 40}, {5, 14, 21, 26}, {4, 14, 22, 26}},   // right of and below the text
        {0, 0, 0, {0, 0, 100, 40}, {0, 0, 16, 12}, {-1, 0, 17, 12}},
        {8, 8, 8, {0, 0, 100, 40}, {84, 28, 100, 40}, {83, 28, 101, 40}},
        {0, 4, 8, {0, 0, 100, 40}, {42, 14, 58, 26}, {41, 14, 59, 26}}, // apart: the relation isn't read
        {4, 4, 4, {0, 0, 10, 10}, {0, 0, 10, 10}, {-1, 0, 11, 10}},     // clamped to the face
        {4, 4, 4, {20, 30, 120, 70}, {62, 44, 78, 56}, {61, 44, 79, 56}},
    };
    HButtRec* b = Make("444", HBT_PUSH); // no ";": no caption
    ASSERT_TRUE(b && !b->text);
    HBITMAP bmp = CreateBitmap(16, 12, 1, 1, nullptr);
    HImage image = {HIMAGE_BITMAP, bmp, nullptr};
    for (const auto& r : kRows) {
        b->textPos = r.text, b->imagePos = r.image, b->relation = r.relation;
        RECT ir, tr, fr;
        HButtLayout(b, dc, &image, &r.face, &ir, &tr, &fr);
        EXPECT_TRUE(EqualRect(&ir, &r.image_)) << int(r.text) << int(r.image) << int(r.relation) << " image "
                                               << ir.left << "," << ir.top << "," << ir.right << "," << ir.bottom;
        EXPECT_TRUE(EqualRect(&fr, &r.focus)) << int(r.text) << int(r.image) << int(r.relation) << " focus "
                                              << fr.left << "," << fr.top << "," << fr.right << "," << fr.bottom;
    }
    b->base.dwStyle |= HBS_NOFOCUS;
    RECT ir, tr, fr;
    HButtLayout(b, dc, &image, &kRows[0].face, &ir, &tr, &fr);
    EXPECT_TRUE(IsRectEmpty(&fr)) << "no focus outline with HBS_NOFOCUS";
    DeleteObject(bmp);
}

TEST_F(ButtInternal, DrawValuePaintsAValueWithoutTouchingTheLiveOne)
{
    HButtRec* b = Make("333;", HBT_CHECK | HBS_NOFRAME | HBS_NOFOCUS);
    ASSERT_TRUE(b);
    b->backBrush = (HBRUSH)GetStockObject(WHITE_BRUSH);
    // Two solid images of the control's own: off red, on blue.
    SendMessageA(b->base.hWnd, HBM_SETIMAGECOUNT, 2, 0);
    const COLORREF kColors[] = {RGB(255, 0, 0), RGB(0, 0, 255)};
    for (WPARAM i = 0; i < 2; ++i) {
        HDC screen = GetDC(nullptr);
        HBITMAP bmp = CreateCompatibleBitmap(screen, 8, 8);
        ReleaseDC(nullptr, screen);
        HGDIOBJ old = SelectObject(dc, bmp);
        HBRUSH fill = CreateSolidBrush(kColors[i]);
        RECT all = {0, 0, 8, 8};
        FillRect(dc, &all, fill);
        DeleteObject(fill);
        SelectObject(dc, old);
        EXPECT_EQ(0, SendMessageA(b->base.hWnd, HBM_SETIMAGE, MAKEWPARAM(i, HIMAGE_BITMAP), (LPARAM)bmp));
    }
    RECT rc = {0, 0, 100, 40};
    auto picture = [&](LPCVOID value, bool live) {
        HDC screen = GetDC(nullptr);
        HBITMAP bmp = CreateCompatibleBitmap(screen, 100, 40);
        ReleaseDC(nullptr, screen);
        HGDIOBJ old = SelectObject(dc, bmp);
        if (live) HButtPaintClient(b, dc);
        else EXPECT_EQ(1, HButtDrawValue(b, dc, &rc, value));
        std::vector<COLORREF> pixels;
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 100; ++x) pixels.push_back(GetPixel(dc, x, y));
        DeleteObject(SelectObject(dc, old));
        return pixels;
    };
    WORD on = 1;
    auto drawnOn = picture(&on, false);
    auto drawnNone = picture(nullptr, false);
    EXPECT_EQ(0, b->state);
    EXPECT_EQ(0, b->base.wFlags & HBF_NOVALUE);
    auto liveOff = picture(nullptr, true);
    EXPECT_NE(liveOff, drawnOn);
    SendMessageA(b->base.hWnd, BM_SETCHECK, 1, 0);
    EXPECT_EQ(picture(nullptr, true), drawnOn);
    SendMessageA(b->base.hWnd, HBM_SETDATA, 0, 0);
    EXPECT_EQ(picture(nullptr, true), drawnNone);
    EXPECT_NE(liveOff, drawnNone);
}

} // namespace
