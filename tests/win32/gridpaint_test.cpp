// Layout, scrolling and painting of a real HGrid window: pixels read back from a
// memory context, scroll bar positions after scroll messages (also in virtual
// mode with many records), and the exact rectangles that invalidation leaves.
#include "wintest.h"

#include <vector>

namespace {

constexpr int kW = 300, kH = 200;     // the grid window
constexpr int kRowHead = 30, kColHead = 20, kRow = 20, kCol = 50;
constexpr COLORREF kLines = RGB(0xC0, 0xC0, 0xC0);

LONG g_total; // records the row source has
LONG CALLBACK NumberedRows(HWND, UINT op, LONG position, LPVOID data)
{
    if (op != 0 || position < 0 || position >= g_total)
        return 0;
    *(LONG*)data = position; // the first cell holds the record number
    return 1;
}

class GridPaint : public ::testing::Test {
protected:
    TestParent parent;
    HWND grid = nullptr;
    HGridWindow* gw = nullptr;
    HCtlBase* editor = nullptr; // one hidden HEdit_SS paints every column, as an attached editor would

    void TearDown() override
    {
        if (IsWindow(grid))
            DestroyWindow(grid);
    }

    // A read-only grid of `fields` long columns and `rows` records, laid out anew.
    void Make(DWORD style, int fields, int rows, const std::vector<int>& widths = {})
    {
        ShowWindow(parent.hwnd(), SW_SHOWNOACTIVATE);
        grid = parent.Child(HGRID_CLASS, "no such grid", style | HGS_READONLY, 7, 0, 0, kW, kH);
        ASSERT_TRUE(grid);
        gw = (HGridWindow*)SendMessageA(grid, HM_GETPTR, 0, 0);
        ASSERT_TRUE(gw && gw->grid);
        HWND edit = CreateWindowExA(0, HEDITSS_CLASS, "%nl", WS_CHILD, 0, 0, 10, 10, grid, (HMENU)200,
                                    GetModuleHandleA(nullptr), nullptr);
        editor = (HCtlBase*)SendMessageA(edit, HM_GETPTR, 0, 0);
        ASSERT_TRUE(editor);
        HGridData* g = gw->grid;
        g->rowHeight = kRow;
        g->colHeaderHeight = kColHead;
        g->rowHeaderWidth = kRowHead;
        for (int i = 0; i < fields; ++i) {
            char title[8] = {'F', (char)('0' + i), 0};
            int width = i < (int)widths.size() ? widths[i] : kCol;
            HGField* f = HGFieldCreate(title, 0, width, 0, 'n', 'l', 0, 0, 4, 'e', 0, "");
            ASSERT_EQ(i, HGAppendFld(g, f));
            HGFieldAt(g, i)->editor = editor;
        }
        for (int i = 0; i < rows; ++i)
            HLListAdd(g->records, nullptr);
        SendMessageA(grid, WM_SIZE, 0, MAKELPARAM(kW, kH));
        parent.seen.clear();
    }
    void MakeVirtual(LONG total)
    {
        Make(WS_VSCROLL | HGS_COLHEADERS, 1, 0);
        g_total = total;
        gw->dataProc = NumberedRows;
        gw->wFlags |= HGW_VIRTUAL;
        gw->totalRecords = total;
        SendMessageA(grid, WM_SIZE, 0, 0);
        parent.seen.clear();
    }
    LONG TopRecord() const { return gw->topRow + gw->rowBase; }
    std::vector<WORD> Codes() const
    {
        std::vector<WORD> codes;
        for (const SeenMsg& m : parent.seen)
            if (m.msg == WM_COMMAND)
                codes.push_back(m.code);
        return codes;
    }
    // The update rectangle that an invalidation leaves, or an empty one.
    RECT Invalidated(const std::function<void()>& what)
    {
        ValidateRect(grid, nullptr);
        what();
        RECT rc = {0, 0, 0, 0};
        if (!GetUpdateRect(grid, &rc, FALSE))
            SetRectEmpty(&rc);
        ValidateRect(grid, nullptr);
        return rc;
    }
};

// The grid printed into a memory bitmap: erase, then WM_PAINT with the context in wParam.
struct Canvas {
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ old;
    explicit Canvas(HWND grid)
    {
        HDC screen = GetDC(nullptr);
        dc = CreateCompatibleDC(screen);
        bitmap = CreateCompatibleBitmap(screen, kW, kH);
        ReleaseDC(nullptr, screen);
        old = SelectObject(dc, bitmap);
        RECT all = {0, 0, kW, kH};
        HBRUSH magenta = CreateSolidBrush(RGB(255, 0, 255));
        FillRect(dc, &all, magenta);
        DeleteObject(magenta);
        SendMessageA(grid, WM_ERASEBKGND, (WPARAM)dc, 0);
        SendMessageA(grid, WM_PAINT, (WPARAM)dc, 0);
    }
    ~Canvas()
    {
        SelectObject(dc, old);
        DeleteObject(bitmap);
        DeleteDC(dc);
    }
    COLORREF At(int x, int y) const { return GetPixel(dc, x, y); }
    bool AnyIn(int left, int top, int right, int bottom, COLORREF c) const
    {
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x)
                if (At(x, y) == c)
                    return true;
        return false;
    }
};

COLORREF LineColour() { return GetSysColor(COLOR_WINDOW) == RGB(255, 255, 255) ? kLines : RGB(0, 0, 0); }

TEST_F(GridPaint, HeadersLinesAndBodyLandWhereTheLayoutPutsThem)
{
    Make(HGS_ROWHEADERS | HGS_COLHEADERS, 4, 3);
    const LONG value = 7;
    ASSERT_TRUE(HGSetCellData(grid, 2, 0, &value));
    ASSERT_TRUE(HGSetCellData(grid, 2, 2, nullptr));
    parent.colorReply = (HBRUSH)GetStockObject(WHITE_BRUSH);
    Canvas c(grid);
    const COLORREF face = GetSysColor(COLOR_BTNFACE), white = RGB(255, 255, 255);
    struct { int x, y; COLORREF want; const char* what; } kPoints[] = {
        {75, 10, face, "column header face right of its title"},
        {4, 30, face, "row header face of row 0"},
        {4, 150, face, "blank row header below the last record"},
        {260, 10, face, "blank column header after the last column"},
        {30, 5, RGB(0, 0, 0), "frame of the first column header"},
        {129, 50, LineColour(), "vertical grid line at the right of column 1"},
        {100, 39, LineColour(), "horizontal grid line under row 0"},
        {125, 50, white, "inside cell (1, 1)"},
        {125, 150, white, "body below the last record, erased"},
    };
    for (const auto& p : kPoints)
        EXPECT_EQ(p.want, c.At(p.x, p.y)) << p.what << " at " << p.x << "," << p.y;
    EXPECT_TRUE(c.AnyIn(35, 3, 76, 17, RGB(0, 0, 0))) << "the title of column 0 in the header strip";
    EXPECT_TRUE(c.AnyIn(3, 23, 27, 37, RGB(0, 0, 0))) << "the number of row 0";
    EXPECT_TRUE(c.AnyIn(131, 21, 178, 38, GetSysColor(COLOR_WINDOWTEXT))) << "the value of cell (2, 0)";
    EXPECT_FALSE(c.AnyIn(131, 61, 178, 78, GetSysColor(COLOR_WINDOWTEXT))) << "cell (2, 2) is null: no value goes to the painter";
    EXPECT_FALSE(c.AnyIn(0, 0, kW, kH, RGB(255, 0, 255))) << "every pixel painted or erased";
}

TEST_F(GridPaint, EraseAsksTheNotifyTargetForTheBodyBrushAndLeavesHeaders)
{
    Make(HGS_ROWHEADERS | HGS_COLHEADERS, 2, 1);
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    parent.colorReply = red;
    Canvas c(grid);
    const SeenMsg request = {HGM_CTLCOLOR, 0, 0, grid};
    ASSERT_FALSE(parent.seen.empty());
    EXPECT_TRUE(parent.seen[0] == request) << Describe(parent.seen);
    EXPECT_EQ(RGB(255, 0, 0), c.At(200, 150));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), c.At(4, 150)); // the row header strip is the blank button
    DeleteObject(red);
}

TEST_F(GridPaint, CurrentCellOfAReadOnlyGridShowsInverted)
{
    Make(HGS_ROWHEADERS | HGS_COLHEADERS | HGS_KEEPSEL, 3, 3);
    parent.colorReply = (HBRUSH)GetStockObject(WHITE_BRUSH);
    gw->curCol = gw->anchorCol = 1;
    gw->curRow = gw->anchorRow = 1;
    gw->wFlags |= HGW_CELLSHOWN;
    Canvas c(grid);
    EXPECT_EQ(RGB(0, 0, 0), c.At(125, 50));         // cell (1, 1), white inverted
    EXPECT_EQ(RGB(255, 255, 255), c.At(125, 30));   // cell (1, 0)
    EXPECT_EQ(RGB(255, 255, 255), c.At(75, 50));    // cell (0, 1)
    EXPECT_EQ(LineColour(), c.At(129, 50));         // the grid line is not part of the cell
}

TEST_F(GridPaint, FrozenColumnStaysWhileTheOthersScroll)
{
    Make(HGS_ROWHEADERS | HGS_COLHEADERS | WS_HSCROLL, 4, 3, {kCol, 100, 120, 100});
    gw->grid->frozenCols = 1;
    gw->leftCol = 1;
    SendMessageA(grid, WM_SIZE, 0, 0);
    EXPECT_EQ(2, gw->hScrollMax);
    SendMessageA(grid, WM_HSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(2, gw->leftCol);
    EXPECT_EQ(1, GetScrollPos(grid, SB_HORZ));
    parent.colorReply = (HBRUSH)GetStockObject(WHITE_BRUSH);
    Canvas c(grid);
    EXPECT_EQ(LineColour(), c.At(79, 50));             // edge of the frozen column 0
    EXPECT_EQ(LineColour(), c.At(80 + 120 - 1, 50));   // column 2 follows it at once
    EXPECT_EQ(RGB(255, 255, 255), c.At(80 + 100 - 1, 50)); // where column 1 ended before
    // A column scrolled out has no rectangle and gets no invalidation.
    RECT none = Invalidated([&] { HGridInvalidateCell(grid, 1, 0); });
    EXPECT_TRUE(IsRectEmpty(&none));
}

bool SameRect(const RECT& a, const RECT& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

TEST_F(GridPaint, InvalidationCoversExactlyTheCellOrRange)
{
    Make(HGS_ROWHEADERS | HGS_COLHEADERS, 4, 20);
    // Columns start at 30, 80, 130, 180, rows at 20, 40, 60; a cell leaves its
    // last pixel column and row to the grid lines, also inside a range.
    struct { int c1, r1, c2, r2; bool range; RECT want; } kCases[] = {
        {1, 2, 0, 0, false, {80, 60, 129, 79}},
        {0, 0, 0, 0, false, {30, 20, 79, 39}},
        {-1, 1, 0, 0, false, {0, 40, 30, 60}},     // row header
        {2, -1, 0, 0, false, {130, 0, 180, 20}},   // column header
        {1, 50, 0, 0, false, {0, 0, 0, 0}},        // far below: nothing
        {0, 1, 1, 2, true, {30, 40, 129, 79}},
        {1, 1, 1, 1, true, {80, 40, 129, 59}},     // one cell as a range: the cell
        {-1, 1, -1, 2, true, {0, 40, 230, 80}},    // whole rows, row headers included
        {1, -1, 2, -1, true, {80, 0, 180, kH}},    // whole columns, down to the last record
        {-1, -1, -1, -1, true, {0, 0, kW, kH}},
    };
    for (const auto& k : kCases) {
        RECT got = Invalidated([&] {
            if (k.range)
                EXPECT_TRUE(HGridInvalidateRange(grid, k.c1, k.r1, k.c2, k.r2));
            else
                EXPECT_TRUE(HGridInvalidateCell(grid, k.c1, k.r1));
        });
        EXPECT_TRUE(SameRect(k.want, got)) << k.c1 << "," << k.r1 << " " << k.c2 << "," << k.r2 << ": got "
                                           << got.left << "," << got.top << "," << got.right << "," << got.bottom;
    }
}

TEST_F(GridPaint, ScrollMessagesMoveTheTopRowAndTheBar)
{
    Make(WS_VSCROLL | HGS_COLHEADERS, 2, 100); // 180 pixels of body: 9 rows, range 91
    int low = -1, high = -1;
    GetScrollRange(grid, SB_VERT, &low, &high);
    EXPECT_EQ(91, high);
    EXPECT_EQ(1, gw->vScale);
    struct { WORD code, pos; LONG top; std::vector<WORD> codes; UINT msg = WM_VSCROLL; } kSteps[] = {
        {SB_LINEDOWN, 0, 1, {HGN_VSCROLLED}},
        {SB_PAGEDOWN, 0, 9, {HGN_VSCROLLED}},
        {SB_THUMBPOSITION, 50, 50, {HGN_VSCROLLED}},
        {SB_THUMBTRACK, 70, 50, {}},
        {SB_PAGEUP, 0, 42, {HGN_VSCROLLED}},
        {SB_THUMBPOSITION, 200, 91, {HGN_SCROLLEND, HGN_VSCROLLED}},
        {SB_LINEDOWN, 0, 91, {HGN_SCROLLEND, HGN_VSCROLLED}},
        {SB_THUMBPOSITION, 0, 0, {HGN_VSCROLLED}},
        {SB_LINEUP, 0, 0, {HGN_SCROLLTOP, HGN_VSCROLLED}},
        {SB_LINEDOWN, 0, 0, {HGN_VSCROLLED}, WM_HSCROLL}, // no column to scroll, yet the row steps run
        // Row 8 ends on the body's bottom edge, which counts as out of view.
        {VK_NEXT, 0, 1, {HGN_MOVING, HGN_VSCROLLED, HGN_CELLMOVED, HGN_ROWCHANGED}, WM_KEYDOWN},
    };
    for (const auto& s : kSteps) {
        parent.seen.clear();
        SendMessageA(grid, s.msg, MAKEWPARAM(s.code, s.pos), 0);
        EXPECT_EQ(s.top, TopRecord()) << "code " << s.code << " pos " << s.pos;
        EXPECT_EQ(s.top, GetScrollPos(grid, SB_VERT)) << "code " << s.code << " pos " << s.pos;
        EXPECT_EQ(s.codes, Codes()) << "code " << s.code << " pos " << s.pos;
    }
}

TEST_F(GridPaint, VirtualScrollingScalesTheBarAndKeepsTheCacheOnTheTopRecord)
{
    MakeVirtual(100000);
    int low = -1, high = -1;
    GetScrollRange(grid, SB_VERT, &low, &high);
    EXPECT_EQ(4, gw->vScale);
    EXPECT_EQ(99991 / 4, high);
    struct { WORD code, pos; LONG top, bar, base = -1; } kSteps[] = {
        {SB_THUMBPOSITION, 10000, 40000, 10000},
        {SB_LINEDOWN, 0, 40001, 10000},
        {SB_PAGEDOWN, 0, 40009, 10002, 40008},
        {SB_LINEUP, 0, 40008, 10002, 40008},
        // Before the cache: a seek back, then one forward, as the view reaches the cache's end.
        {SB_LINEUP, 0, 40007, 10001, 40006},
        {SB_LINEDOWN, 0, 40008, 10002},
        {SB_LINEDOWN, 0, 40009, 10002},
        {SB_THUMBPOSITION, 24997, 99989, 24997},
        {SB_LINEDOWN, 0, 99990, 24997},
        {SB_LINEDOWN, 0, 99991, 24997},
        {SB_LINEDOWN, 0, 99991, 24997}, // the last record is on the last row
        {SB_PAGEUP, 0, 99983, 24995},
        {SB_THUMBPOSITION, 0, 3, 0}, // the bar moved by 24995 x 4 records: 3 short of the top
    };
    for (const auto& s : kSteps) {
        SendMessageA(grid, WM_VSCROLL, MAKEWPARAM(s.code, s.pos), 0);
        EXPECT_EQ(s.top, TopRecord()) << "code " << s.code << " pos " << s.pos;
        EXPECT_EQ(s.bar, GetScrollPos(grid, SB_VERT)) << "code " << s.code << " pos " << s.pos;
        if (s.base >= 0)
            EXPECT_EQ(s.base, gw->rowBase) << "code " << s.code << " pos " << s.pos;
        LONG first = -1;
        EXPECT_TRUE(HGGetCellData(grid, 0, gw->topRow, &first));
        EXPECT_EQ(s.top, first) << "the cached row under the top holds its own record";
        EXPECT_LE(gw->rowBase, TopRecord());
        EXPECT_GE(gw->rowBase + gw->cacheSize, TopRecord() + gw->visibleRows);
    }
}

TEST_F(GridPaint, BarScaleKeepsPositionsInSixteenBits)
{
    struct { LONG total, scale, end; } kCases[] = {
        {100000, 4, 24997}, {32776, 2, 16383}, {32775, 1, 32766}, {5, 1, 0},
    };
    for (const auto& k : kCases) {
        MakeVirtual(k.total);
        int low = -1, high = -1;
        GetScrollRange(grid, SB_VERT, &low, &high);
        EXPECT_EQ(k.scale, gw->vScale) << k.total;
        EXPECT_EQ(k.end, high) << k.total;
        DestroyWindow(grid);
    }
}

TEST_F(GridPaint, PartialRowFollowsTheLowBitOfTheRemainder)
{
    Make(HGS_COLHEADERS, 1, 50);
    struct { int body; bool partial; int visible; } kCases[] = {
        {183, true, 10}, {184, false, 9}, {182, false, 9}, {181, true, 10}, {180, false, 9}, {5, true, 1},
    };
    for (const auto& k : kCases) {
        MoveWindow(grid, 0, 0, kW, kColHead + k.body, FALSE);
        EXPECT_EQ(k.partial, (gw->wFlags & HGW_PARTIALROW) != 0) << k.body;
        EXPECT_EQ(k.visible, gw->visibleRows) << k.body;
    }
}

} // namespace
