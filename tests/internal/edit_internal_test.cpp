// HEdit's value painter, which the grid and the combo call without the window:
// the colour of a marked value, the alignment, and the record left as it was.
#include "wintest.h"
#include "edit/hedit.h"

namespace {

// Columns of rect in which a pixel has the colour.
std::vector<int> ColumnsOf(HDC dc, const RECT& rect, COLORREF colour)
{
    std::vector<int> out;
    for (int x = rect.left; x < rect.right; ++x)
        for (int y = rect.top; y < rect.bottom; ++y)
            if (GetPixel(dc, x, y) == colour) {
                out.push_back(x);
                break;
            }
    return out;
}

TEST(EditInternal, DrawValuePaintsInTheAlignmentAndColourOfTheValueAndLeavesTheRecord)
{
    HLibraryEntry(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
    TestParent parent;
    HWND h = parent.Child(HEDIT_CLASS, "%nd[red]0;[blue]-0;none", 0, 5, 0, 0, 200, 24);
    HEditRecord* r = (HEditRecord*)SendMessageA(h, HM_GETPTR, 0, 0);
    ASSERT_TRUE(r);
    r->backBrush = (HBRUSH)GetStockObject(WHITE_BRUSH);
    SendMessageA(h, HM_SETMASK, 0, (LPARAM)"0;-0;none");
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bits = CreateCompatibleBitmap(screen, 200, 24);
    HGDIOBJ old = SelectObject(dc, bits);
    const RECT cell = {0, 0, 200, 24};
    const struct {
        const char* name;
        double value;
        bool empty;
        int alignment;
        COLORREF colour;
        bool right;
    } rows[] = {
        {"an ordinary value, left", 7, false, 0, RGB(255, 0, 0), false},
        {"a negative value in the other colour, right", -7, false, 1, RGB(0, 0, 255), true},
        {"no value: the empty text", 0, true, 0, RGB(255, 0, 0), false},
    };
    const WORD flags = r->base.wFlags;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(1, HEditDrawValue(r, dc, &cell, row.empty ? nullptr : &row.value, row.alignment));
        std::vector<int> columns = ColumnsOf(dc, cell, row.colour);
        ASSERT_FALSE(columns.empty());
        EXPECT_EQ(row.right, columns.front() > 100);
        EXPECT_GE(columns.front(), 5);    // two pixels in, and three more
        EXPECT_LE(columns.back(), 200 - 5);
        if (row.empty)
            EXPECT_GT(columns.size(), 12u); // "none" is wider than one digit
        EXPECT_EQ(flags, r->base.wFlags);
    }
    SelectObject(dc, old);
    DeleteObject(bits);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
}

} // namespace
