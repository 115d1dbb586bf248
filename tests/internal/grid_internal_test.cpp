// HGrid's routines that stay inside the library: the resize edge under the mouse.
#include "wintest.h"
#include "grid/gridwin.h"

namespace {

class GridInternal : public ::testing::Test {
protected:
    void SetUp() override { HLibraryEntry(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr); }
    // Three shown 40-pixel columns, rows of 12 (grip 4), row headers 30 wide,
    // column headers 15 high.
    HGridWindow* Make(DWORD style)
    {
        HWND h = parent.Child(HGRID_CLASS, "no such grid", style | HGS_READONLY, 7, 0, 0, 300, 200);
        HGridWindow* gw = (HGridWindow*)SendMessageA(h, HM_GETPTR, 0, 0);
        for (int i = 0; i < 3; i++)
            HGAppendFld(gw->grid, HGFieldCreate("F", 0, 40, 0, 'n', 'i', 0, 0, 4, 'e', 0, ""));
        gw->grid->rowHeight = 12;
        gw->grid->rowHeaderWidth = 30;
        gw->grid->colHeaderHeight = 15;
        return gw;
    }
    TestParent parent;
};

constexpr DWORD kAll = HGS_SIZEROWS | HGS_SIZECOLS | HGS_ROWHEADERS | HGS_COLHEADERS;

TEST_F(GridInternal, ResizeTargetNamesTheEdgeWithinItsGrip)
{
    // Points are relative to the body's top left corner.
    const struct {
        DWORD style;
        LONG x, y, target;
    } kRows[] = {
        {kAll, -10, 11, -2},                    // lower edge of row 0, in the row header
        {kAll, -10, 23, -3},                    // lower edge of row 1
        {kAll, -10, -2, -1},                    // lower edge of the column headers
        {kAll, -10, 5, 0},                      // inside row 0
        {kAll, 10, 11, 0},                      // row edges are caught in the row header only
        {kAll, 38, -5, 2},                      // right edge of column 0, in the header
        {kAll, 79, -5, 3},                      // right edge of column 1
        {kAll, 119, -5, 4},                     // right edge of the last column
        {kAll, 122, -5, 0},                     // past it, where no column follows
        {kAll, 20, -5, 0},                      // inside column 0
        {kAll, 0, -5, 1},                       // right edge of the row header
        {kAll, 38, -20, 0},                     // above the column headers
        {kAll & ~HGS_SIZECOLS, 38, -5, 0},      // columns not sizable
        {HGS_SIZEROWS, 50, -2, 0},              // without column headers there is no header edge
        {HGS_SIZEROWS, 50, 11, -2},             // without row headers, anywhere along the row
        {HGS_SIZECOLS, 38, 50, 2},              // without column headers, anywhere down the column
    };
    for (const auto& r : kRows) {
        HGridWindow* gw = Make(r.style);
        EXPECT_EQ(r.target, HGResizeTargetAt(gw, r.x, r.y)) << r.x << "," << r.y << " style " << r.style;
        DestroyWindow(gw->hWnd);
    }
}

} // namespace
