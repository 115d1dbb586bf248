// The grid's geometry routines that stay inside the library: hit tests, the
// clamp of far rows, hidden and scrolled-out columns, and the screen walk.
#include "wintest.h"
#include "grid/gridpaint.h"

namespace {

class GridLayout : public ::testing::Test {
protected:
    TestParent parent;
    HWND grid = nullptr;
    HGridWindow* gw = nullptr;

    void SetUp() override { HLibraryEntry(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr); }
    void TearDown() override
    {
        if (IsWindow(grid))
            DestroyWindow(grid);
    }
    // 300 x 200, row headers 30 wide, column headers and rows 20 high, columns 50 wide.
    void Make(DWORD style, int fields, int rows)
    {
        grid = parent.Child(HGRID_CLASS, "no such grid", style | HGS_READONLY, 7, 0, 0, 300, 200);
        gw = (HGridWindow*)SendMessageA(grid, HM_GETPTR, 0, 0);
        ASSERT_TRUE(gw && gw->grid);
        gw->grid->rowHeight = gw->grid->colHeaderHeight = 20;
        gw->grid->rowHeaderWidth = 30;
        for (int i = 0; i < fields; ++i)
            HGAppendFld(gw->grid, HGFieldCreate("F", 0, 50, 0, 'n', 'l', 0, 0, 4, 'e', 0, ""));
        for (int i = 0; i < rows; ++i)
            HLListAdd(gw->grid->records, nullptr);
    }
    DWORD Hit(int x, int y)
    {
        DWORD cell = 0xDEADBEEF;
        EXPECT_TRUE(HGHitTest(gw, x, y, &cell));
        return cell;
    }
};

TEST_F(GridLayout, HitTestGivesHeadersAsMinusOneAndStopsAtTheLastCellAndRow)
{
    Make(HGS_ROWHEADERS | HGS_COLHEADERS, 3, 5);
    struct { int x, y, col, row; } kCases[] = {
        {10, 10, -1, -1},  // the corner
        {31, 25, 0, 0},    {80, 25, 0, 0}, // a column's right edge still counts as the column
        {81, 45, 1, 1},    {290, 190, 2, 4}, // right of the last column, below the last row
        {30, 45, -1, 1},   // the body's left edge is the row header
    };
    for (const auto& k : kCases)
        EXPECT_EQ(HGPackCell(k.col, k.row), Hit(k.x, k.y)) << k.x << "," << k.y;
}

TEST_F(GridLayout, WithoutHeadersTheFirstRowAndColumnStandForTheStrips)
{
    Make(0, 2, 0);
    EXPECT_EQ(HGPackCell(0, -1), Hit(0, 0)); // an empty grid has no row
    HLListAdd(gw->grid->records, nullptr);
    EXPECT_EQ(HGPackCell(0, 0), Hit(0, 0));
}

TEST_F(GridLayout, FarRowsClampTheirTopAndHiddenOrScrolledOutColumnsHaveNoWidth)
{
    Make(HGS_ROWHEADERS | HGS_COLHEADERS, 4, 3);
    RECT rc;
    EXPECT_FALSE(HGRowRect(gw, 30000, &rc));
    EXPECT_EQ(0x7000, rc.top);
    gw->topRow = 30000;
    EXPECT_FALSE(HGRowRect(gw, 0, &rc)); // far above: collapsed onto the top of the rows
    EXPECT_EQ(20, rc.top);
    EXPECT_EQ(20, rc.bottom);
    gw->topRow = 0;

    gw->grid->frozenCols = 1;
    gw->leftCol = 3;
    EXPECT_FALSE(HGColRect(gw, 1, &rc));
    EXPECT_EQ(rc.left, rc.right);
    EXPECT_TRUE(HGColRect(gw, 3, &rc));
    EXPECT_EQ(80, rc.left); // right after the frozen column
    int col = 0;
    EXPECT_TRUE(HGNextShownCol(gw, TRUE, &col));
    EXPECT_EQ(3, col);
    EXPECT_TRUE(HGNextShownCol(gw, FALSE, &col));
    EXPECT_EQ(0, col);

    for (int i = 0; i < 4; ++i)
        HGFieldAt(gw->grid, i)->flags |= HGF_HIDDEN;
    EXPECT_FALSE(HGColRect(gw, 0, &rc));
    EXPECT_EQ(rc.left, rc.right);
    EXPECT_EQ(-1, HGCellCol(Hit(200, 30)));
    col = -1;
    EXPECT_EQ(nullptr, HGNextShownCol(gw, TRUE, &col));
    EXPECT_EQ(-1, col);
}

} // namespace
