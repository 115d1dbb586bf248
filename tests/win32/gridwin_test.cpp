// The HGrid window's message block and notifications: each message with its
// arguments, result and the state it leaves; the notification sequences of
// moves, focus and end; receivers that redirect, veto or destroy the grid.
#include "wintest.h"

#include <string.h>

namespace {

HGField* Field(const char* title, int size)
{
    return HGFieldCreate(title, 0, 40, 0, 'n', 'i', 0, 0, size, 'e', 0, "");
}

LPARAM Cell(int col, int row) { return MAKELONG((WORD)col, (WORD)row); }

class GridWin : public ::testing::Test {
protected:
    TestParent parent;
    HWND grid = nullptr;
    HGridWindow* gw = nullptr;

    void TearDown() override
    {
        if (IsWindow(grid))
            DestroyWindow(grid);
    }
    // Three int fields (Num, Qty, Sum) and five records.
    void Make(DWORD style = 0)
    {
        grid = parent.Child(HGRID_CLASS, "no such grid", style, 7, 0, 0, 300, 200);
        ASSERT_TRUE(grid);
        gw = (HGridWindow*)SendMessageA(grid, HM_GETPTR, 0, 0);
        ASSERT_TRUE(gw && gw->grid);
        for (const char* title : {"Num", "Qty", "Sum"})
            ASSERT_GE(SendMessageA(grid, HGM_ADDFIELD, 0, (LPARAM)Field(title, 4)), 0);
        while (gw->grid->records->count < 5)
            HLListAdd(gw->grid->records, nullptr);
        parent.seen.clear();
    }
    LRESULT Send(UINT msg, WPARAM w = 0, LPARAM l = 0) { return SendMessageA(grid, msg, w, l); }
    std::vector<SeenMsg> Codes(const std::vector<WORD>& codes)
    {
        std::vector<SeenMsg> v;
        for (WORD c : codes)
            v.push_back({WM_COMMAND, 7, c, grid});
        return v;
    }
};

// ---- The block, one row per message ----

struct BlockCase {
    const char* what;
    UINT msg;
    WPARAM wParam;
    LPARAM lParam;
    LRESULT result;
    LONG (*state)(HGridWindow*); // null: the result alone
    LONG expectedState;
};

LONG RowHeight(HGridWindow* gw) { return gw->grid->rowHeight; }
LONG HeaderHeight(HGridWindow* gw) { return gw->grid->colHeaderHeight; }
LONG HeaderWidth(HGridWindow* gw) { return gw->grid->rowHeaderWidth; }
LONG Frozen(HGridWindow* gw) { return gw->grid->frozenCols; }
LONG RowBase(HGridWindow* gw) { return gw->rowBase; }
LONG NotifyCell(HGridWindow* gw) { return MAKELONG(gw->notifyCol, gw->notifyRow); }
LONG Style(HGridWindow* gw) { return (LONG)(gw->grid->style & HGS_KEEPSEL); }
LONG Width0(HGridWindow* gw) { return HGFieldAt(gw->grid, 0)->width; }
LONG Flags1(HGridWindow* gw) { return HGFieldAt(gw->grid, 1)->flags; }
LONG Status0(HGridWindow* gw) { return ((HGRecord*)HLListGetItem(gw->grid->records, 0))->recordStatus; }
LONG Records(HGridWindow* gw) { return gw->grid->records->count; }
LONG Fields(HGridWindow* gw) { return gw->grid->fields->count; }
LONG Title2(HGridWindow* gw) { return strcmp(HGFieldAt(gw->grid, 2)->title, "Sum") == 0; }

const BlockCase kBlock[] = {
    {"row height 1 stores 2", HGM_SETROWHEIGHT, 1, 0, 1, RowHeight, 2},
    {"row height 3000 stores 2000", HGM_SETROWHEIGHT, 3000, 0, 1, RowHeight, 2000},
    {"header height -5 stores 0", HGM_SETCOLHEADERHEIGHT, (WPARAM)-5, 0, 1, HeaderHeight, 0},
    {"header width 30", HGM_SETROWHEADERWIDTH, 30, 0, 1, HeaderWidth, 30},
    {"header width 0 stores 0", HGM_SETROWHEADERWIDTH, 0, 0, 1, HeaderWidth, 0},
    {"frozen beyond the fields stores the field count", HGM_SETFROZEN, 9, 0, 1, Frozen, 3},
    {"frozen below 0 stores 0", HGM_SETFROZEN, (WPARAM)-2, 0, 1, Frozen, 0},
    {"field count", HGM_GETFIELDCOUNT, 0, 0, 3, nullptr, 0},
    {"record count", HGM_GETRECORDCOUNT, 0, 0, 5, nullptr, 0},
    {"field at the count's position is none", HGM_GETFIELDATPOS, 3, 0, -1, nullptr, 0},
    {"field at a negative position is none", HGM_GETFIELDATPOS, (WPARAM)-1, 0, -1, nullptr, 0},
    {"field at a position without a map is the position", HGM_GETFIELDATPOS, 2, 0, 2, nullptr, 0},
    {"stored position without a map", HGM_GETSTOREDPOS, 1, 0, 1, nullptr, 0},
    {"row base takes the larger argument", HGM_SETROWBASE, 3, 7, 7, RowBase, 7},
    {"record of the last row", HGM_RECORDTOROW, 0, 4, 4, nullptr, 0},
    {"record past the rows", HGM_RECORDTOROW, 0, 5, -1, nullptr, 0},
    {"record before the rows", HGM_RECORDTOROW, 0, -1, -1, nullptr, 0},
    {"notify cell clamped high", HGM_SETNOTIFYCELL, 0, Cell(9, 9), 1, NotifyCell, MAKELONG(2, 4)},
    {"notify cell clamped low", HGM_SETNOTIFYCELL, 0, Cell(-5, -5), 1, NotifyCell, MAKELONG(-1, -1)},
    {"style bits on", HGM_SETSTYLEBITS, 1, HGS_KEEPSEL, 1, Style, HGS_KEEPSEL},
    {"style bits off", HGM_SETSTYLEBITS, 0, HGS_KEEPSEL, 1, Style, 0},
    {"cell area of three int fields", HGM_GETRECORDSIZE, 0, 0, 12, nullptr, 0},
    {"add record gives its number", HGM_ADDRECORD, 0, 0, 6, Records, 6},
    {"delete record", HGM_DELETERECORD, 4, 0, 1, Records, 4},
    {"delete of no row", HGM_DELETERECORD, 9, 0, 0, Records, 5},
    {"add of no field", HGM_ADDFIELD, 0, 0, -1, Fields, 3},
    {"insert of no field", HGM_INSERTFIELD, 0, 0, -1, Fields, 3},
    {"find a field by title", HGM_FINDFIELD, 0, (LPARAM) "Qty", 1, nullptr, 0},
    {"find no field", HGM_FINDFIELD, 0, (LPARAM) "Nothing", -1, nullptr, 0},
    {"find with no title", HGM_FINDFIELD, 0, 0, -1, nullptr, 0},
    {"field order without the map style", HGM_GETFIELDORDER, 0, 0, 0, nullptr, 0},
    {"total outside virtual mode", HGM_SETTOTAL, 0, 50, 0, nullptr, 0},
    {"cache size outside virtual mode", HGM_SETCACHESIZE, 0, 50, 0, nullptr, 0},
    {"row status of no row goes to default processing", HGM_GETROWSTATUS, 99, 0, 0, nullptr, 0},
    {"row status mark on", HGM_SETROWSTATUS, 0, MAKELONG(1, HGR_MARKED), 1, Status0, HGR_MARKED},
    {"a number outside the block", 0x556, 1, 1, 0, nullptr, 0},
    {"field width 1 stores 2", HGM_FLD_SETWIDTH, 0, 1, 1, Width0, 2},
    {"field width 5000 stores 2000", HGM_FLD_SETWIDTH, 0, 5000, 1, Width0, 2000},
    {"field width of no field", HGM_FLD_GETWIDTH, 3, 0, 0, nullptr, 0},
    {"field width of a negative position", HGM_FLD_GETWIDTH, (WPARAM)-1, 0, 0, nullptr, 0},
    {"field size", HGM_FLD_GETSIZE, 1, 0, 4, nullptr, 0},
    {"field class", HGM_FLD_GETCLASS, 1, 0, 'n', nullptr, 0},
    {"field type", HGM_FLD_GETTYPE, 1, 0, 'i', nullptr, 0},
    {"field offset", HGM_FLD_GETOFFSET, 2, 0, 8, nullptr, 0},
    {"field flags on", HGM_FLD_SETFLAGS, 1, MAKELONG(1, HGF_READONLY), 1, Flags1, HGF_READONLY},
    {"field title length", HGM_FLD_GETTITLELEN, 2, 0, 3, nullptr, 0},
    {"null title leaves it", HGM_FLD_SETTITLE, 2, 0, 1, Title2, 1},
    {"reserved field message", HGM_FLD_RESERVED, 0, 0, 0, nullptr, 0},
    {"no field message at 0x5A4", 0x5A4, 0, 0, 0, nullptr, 0},
    {"editor of a position past the fields", HGM_FLD_GETEDITOR, 9, 0, 0, nullptr, 0},
};

TEST_F(GridWin, EachMessageOfTheBlockGivesItsResultAndLeavesItsState)
{
    for (const BlockCase& c : kBlock) {
        Make();
        EXPECT_EQ(c.result, Send(c.msg, c.wParam, c.lParam)) << c.what;
        if (c.state) {
            EXPECT_EQ(c.expectedState, c.state(gw)) << c.what;
        }
        DestroyWindow(grid);
    }
}

TEST_F(GridWin, CellGettersPackColumnLowAndRowHighAndFillTheOutPointer)
{
    Make();
    ASSERT_EQ(1, Send(HGM_SETCURRENT, 0, Cell(2, 3)));
    DWORD out = 0;
    EXPECT_EQ(Cell(2, 3), Send(HGM_GETCURRENT, 0, (LPARAM)&out));
    EXPECT_EQ((DWORD)Cell(2, 3), out);
    EXPECT_EQ(Cell(2, 3), Send(HGM_GETANCHOR, 0, 0));
    // The set anchor moves there and extends back to the old current cell.
    Send(HGM_SETANCHOR, 0, Cell(0, 1));
    EXPECT_EQ(Cell(0, 1), Send(HGM_GETANCHOR, 0, 0));
    EXPECT_EQ(Cell(2, 3), Send(HGM_GETCURRENT, 0, 0));
}

TEST_F(GridWin, SelectedRowsAreTheRunningRangeUntilTheArrayIsFull)
{
    Make(HGS_ROWSELECT);
    Send(HGM_SETCURRENT, 0, Cell(-1, 1));
    Send(HGM_SETCURRENT, 1, Cell(-1, 3));
    EXPECT_EQ(3, Send(HGM_GETSELCOUNT));
    LONG rows[2] = {-9, -9};
    EXPECT_EQ(2, Send(HGM_GETSELROWS, 2, (LPARAM)rows));
    EXPECT_EQ(1, rows[0]);
    EXPECT_EQ(2, rows[1]);
    EXPECT_EQ(0, Send(HGM_GETSELROWS, 2, 0));
    EXPECT_EQ(1, Send(HGM_ISROWSELECTED, 3));
    EXPECT_EQ(0, Send(HGM_ISROWSELECTED, 4));
}

TEST_F(GridWin, NameIsTheWindowTextAndItsCopyIsBoundedAndFieldFormatAndTitleCopiesAreWhole)
{
    Make();
    char text[16];
    memset(text, 'x', sizeof text);
    EXPECT_EQ(3, Send(WM_GETTEXT, 4, (LPARAM)text));
    EXPECT_STREQ("no ", text);
    EXPECT_TRUE(Send(WM_SETTEXT, 0, (LPARAM) "Orders"));
    EXPECT_STREQ("Orders", gw->grid->name);
    EXPECT_EQ(0, Send(WM_SETTEXT, 0, 0));
    EXPECT_TRUE(Send(HGM_SETNAME, 0, (LPARAM) "Lines"));
    EXPECT_EQ(5, Send(HGM_GETNAME, sizeof text, (LPARAM)text));
    EXPECT_STREQ("Lines", text);
    EXPECT_EQ(0, Send(HGM_GETNAME, sizeof text, 0));
    // Field format and title copies are whole and their lengths match.
    EXPECT_EQ(1, Send(HGM_FLD_SETFORMAT, 1, (LPARAM) "#,##0"));
    EXPECT_EQ(5, Send(HGM_FLD_GETFORMATLEN, 1));
    EXPECT_EQ(1, Send(HGM_FLD_GETFORMAT, 1, (LPARAM)text));
    EXPECT_STREQ("#,##0", text);
    EXPECT_EQ(1, Send(HGM_FLD_SETTITLE, 0, (LPARAM) "Number"));
    EXPECT_EQ(1, Send(HGM_FLD_GETTITLE, 0, (LPARAM)text));
    EXPECT_STREQ("Number", text);
    EXPECT_EQ(0, Send(HGM_FLD_GETTITLE, 0, 0));
}

TEST_F(GridWin, DialogCodeFollowsTheDialogKeysStyle)
{
    struct {
        DWORD style;
        LRESULT code;
    } const cases[] = {{0, DLGC_WANTALLKEYS}, {HGS_DLGKEYS, DLGC_WANTARROWS | DLGC_WANTCHARS}};
    for (const auto& c : cases) {
        Make(c.style);
        EXPECT_EQ(c.code, Send(WM_GETDLGCODE)) << c.style;
        Send(HGM_SETFLAGS, 1, HGW_EDITING); // an editor with the focus wants every key
        EXPECT_EQ(DLGC_WANTALLKEYS, Send(WM_GETDLGCODE)) << c.style;
        DestroyWindow(grid);
    }
}

TEST_F(GridWin, BackBrushSetGivesTheOldOneAndColourRequestsGoToTheParentAsTheGrid)
{
    Make();
    HBRUSH gray = (HBRUSH)GetStockObject(GRAY_BRUSH);
    EXPECT_EQ(0, Send(HM_SETBACKBRUSH, (WPARAM)gray, 0));
    EXPECT_EQ((LRESULT)gray, Send(HM_GETBACKBRUSH));
    EXPECT_EQ((LRESULT)gray, Send(HM_SETBACKBRUSH, 0, 0));
    parent.colorReply = (HBRUSH)GetStockObject(WHITE_BRUSH);
    EXPECT_EQ((LRESULT)parent.colorReply, Send(HGM_CTLCOLOR, 0, (LPARAM)parent.hwnd()));
    EXPECT_SEEN(parent, {{HGM_CTLCOLOR, 0, 0, grid}});
}

// ---- Notifications ----

struct NoticeCase {
    const char* what;
    void (*act)(HWND grid, HWND parent);
    std::vector<WORD> codes;
    DWORD style = 0;
    int editorShown = -1; // -1: not looked at
};

HWND BarButton(HWND grid, int id) { return GetDlgItem(GetDlgItem(grid, 0xFFFF), id); }

const NoticeCase kNotices[] = {
    {"a move to another row", [](HWND g, HWND) { SendMessageA(g, HGM_SETCURRENT, 0, Cell(1, 2)); },
     {HGN_MOVING, HGN_CELLMOVED, HGN_ROWCHANGED}},
    {"a move along the row", [](HWND g, HWND) { SendMessageA(g, HGM_SETCURRENT, 0, Cell(2, 0)); },
     {HGN_MOVING, HGN_CELLMOVED}},
    {"an extending move", [](HWND g, HWND) { SendMessageA(g, HGM_SETCURRENT, 1, Cell(1, 1)); },
     {HGN_EXTENDING, HGN_CELLMOVED, HGN_ROWCHANGED}},
    // No cell has been shown yet: the focus shows the current one, unless in place.
    {"focus in and out", [](HWND g, HWND p) { SetFocus(g), SetFocus(p); },
     {HGN_EXTENDING, HGN_CELLMOVED, HGN_SETFOCUS, HGN_KILLFOCUS}},
    {"focus in and out of an in-place grid", [](HWND g, HWND p) { SetFocus(g), SetFocus(p); },
     {HGN_SETFOCUS, HGN_KILLFOCUS}, HGS_INPLACE},
    {"focus back shows the editor that the focus loss hid",
     [](HWND g, HWND p) {
         SetFocus(g);
         SendMessageA(g, HGM_SETCURRENT, 0, Cell(1, 1));
         SetFocus(p);
         SetFocus(g);
     },
     {HGN_EXTENDING, HGN_CELLMOVED, HGN_SETFOCUS, HGN_MOVING, HGN_CELLMOVED, HGN_ROWCHANGED, HGN_KILLFOCUS,
      HGN_SETFOCUS}, 0, 1},
    {"an editor's focus going to a bar button leaves a keep-selection grid",
     [](HWND g, HWND) { SendMessageA(g, HM_CHILDBLUR, (WPARAM)BarButton(g, IDOK), 0); },
     {HGN_KILLFOCUS}, HGS_KEEPSEL},
    {"the end", [](HWND g, HWND) { DestroyWindow(g); }, {HGN_DESTROY}},
    {"field messages say nothing",
     [](HWND g, HWND) { SendMessageA(g, HGM_FLD_SETWIDTH, 0, 50), SendMessageA(g, HGM_SETROWHEIGHT, 30, 0); }, {}},
};

TEST_F(GridWin, NotificationsComeInTheirOrder)
{
    for (const NoticeCase& c : kNotices) {
        Make(c.style);
        SetFocus(parent.hwnd());
        parent.seen.clear();
        c.act(grid, parent.hwnd());
        EXPECT_SEEN(parent, Codes(c.codes));
        if (c.editorShown >= 0) {
            bool shown = gw->hEditor && (gw->wFlags & HGW_EDITORSHOWN) &&
                         (GetWindowLongA(gw->hEditor, GWL_STYLE) & WS_VISIBLE);
            EXPECT_EQ(c.editorShown != 0, shown);
        }
        if (HasFailure())
            ADD_FAILURE() << c.what;
        DestroyWindow(grid);
    }
}

// A redirect by the notify cell is followed; a veto is overruled when the cell stays.
TEST_F(GridWin, AMovingReceiverRedirectsTheMoveAndItsVetoIsOverruled)
{
    for (bool veto : {false, true}) {
        Make();
        parent.onCommand = [this, veto](const SeenMsg& m) {
            if (m.code == HGN_MOVING)
                veto ? SendMessageA(grid, HM_VETO, 0, 0) : SendMessageA(grid, HGM_SETNOTIFYCELL, 0, Cell(2, 3));
        };
        const LPARAM to = veto ? Cell(1, 1) : Cell(2, 3);
        EXPECT_EQ(1, Send(HGM_SETCURRENT, 0, Cell(1, 1))) << veto;
        EXPECT_EQ(to, Send(HGM_GETCURRENT)) << veto;
        if (!veto) {
            EXPECT_EQ(to, Send(HGM_GETANCHOR));
            EXPECT_SEEN(parent, Codes({HGN_MOVING, HGN_CELLMOVED, HGN_ROWCHANGED}));
        }
        EXPECT_FALSE(Send(HGM_GETFLAGS) & HCTLF_VETO) << veto;
        parent.onCommand = nullptr;
        DestroyWindow(grid);
    }
}

TEST_F(GridWin, AReceiverThatDestroysTheGridEndsTheMessageThere)
{
    // Nothing of the move follows the killing notice; the end sends its own.
    const struct {
        WORD killer;
        std::vector<WORD> codes;
    } cases[] = {
        {HGN_MOVING, {HGN_MOVING, HGN_DESTROY}},
        {HGN_CELLMOVED, {HGN_MOVING, HGN_CELLMOVED, HGN_DESTROY}},
        {HGN_ROWCHANGED, {HGN_MOVING, HGN_CELLMOVED, HGN_ROWCHANGED, HGN_DESTROY}},
        // The focus leaves the window on its way out.
        {HGN_SETFOCUS, {HGN_EXTENDING, HGN_CELLMOVED, HGN_SETFOCUS, HGN_KILLFOCUS, HGN_DESTROY}},
    };
    for (const auto& c : cases) {
        Make();
        SetFocus(parent.hwnd());
        parent.seen.clear();
        WORD killer = c.killer;
        parent.onCommand = [this, killer](const SeenMsg& m) {
            if (m.code == killer)
                DestroyWindow(grid);
        };
        if (killer == HGN_SETFOCUS)
            SetFocus(grid);
        else
            EXPECT_EQ(0, Send(HGM_SETCURRENT, 0, Cell(1, 2))) << killer;
        EXPECT_FALSE(IsWindow(grid)) << killer;
        EXPECT_SEEN(parent, Codes(c.codes));
        parent.onCommand = nullptr;
    }
}

TEST_F(GridWin, APopupGridDisablesItsTargetUntilItCloses)
{
    for (bool close : {true, false}) { // destroyed without a close, it gives the input back as well
        HWND popup = CreateWindowExA(0, HGRID_CLASS, "no such grid", WS_POPUP, 0, 0, 200, 100, parent.hwnd(),
                                     nullptr, GetModuleHandleA(nullptr), nullptr);
        ASSERT_TRUE(popup);
        EXPECT_FALSE(IsWindowEnabled(parent.hwnd()));
        close ? SendMessageA(popup, WM_CLOSE, 0, 0) : DestroyWindow(popup);
        EXPECT_TRUE(IsWindowEnabled(parent.hwnd())) << close;
        EXPECT_FALSE(IsWindow(popup));
    }
}

TEST_F(GridWin, AnMdiGridAsksToBeDestroyedByItsClientInsteadOfClosing)
{
    Make(HGS_MDICHILD);
    EXPECT_EQ(1, Send(WM_QUERYENDSESSION));
    EXPECT_EQ(1, Send(WM_CLOSE));
    EXPECT_TRUE(IsWindow(grid)); // WM_MDIDESTROY went to the parent, which is no MDI client
    MSG m;
    EXPECT_TRUE(PeekMessageA(&m, parent.hwnd(), WM_MDIDESTROY, WM_MDIDESTROY, PM_REMOVE));
    EXPECT_EQ((WPARAM)grid, m.wParam);
}

TEST_F(GridWin, SetGridLinksANewGridAndRefusesNone)
{
    Make();
    HGridData* old = gw->grid;
    EXPECT_EQ(0, Send(HGM_SETGRID, 0, 0));
    EXPECT_EQ((LRESULT)old, Send(HGM_GETGRID));
    HGridData* fresh = HGridCreate("Fresh", 0, 0, 0, -1, -1, -1, 2);
    ASSERT_TRUE(fresh);
    EXPECT_EQ(1, Send(HGM_SETGRID, 1, (LPARAM)fresh));
    EXPECT_EQ((LRESULT)fresh, Send(HGM_GETGRID));
    EXPECT_EQ(2, Send(HGM_GETRECORDCOUNT)); // the minimum rows of the new grid
    char text[16];
    GetWindowTextA(grid, text, sizeof text);
    EXPECT_STREQ("Fresh", text);
}


TEST_F(GridWin, AnEditableGridHasAnEditBarThatFollowsTheCurrentCellAndSpansTheGrid)
{
    Make();
    HWND bar = GetDlgItem(grid, 0xFFFF);
    ASSERT_TRUE(bar);
    EXPECT_EQ(bar, gw->hBar);
    Send(HGM_SETCURRENT, 0, Cell(1, 2));
    char text[16] = "";
    GetDlgItemTextA(bar, IDC_HGRID_BARTITLE, text, sizeof text);
    EXPECT_STREQ("Qty", text);
    GetDlgItemTextA(bar, IDC_HGRID_BARRECORD, text, sizeof text);
    EXPECT_STREQ("3", text);
    // Its static texts are drawn on the bar's light grey.
    HDC dc = GetDC(bar);
    EXPECT_EQ((LRESULT)GetStockObject(LTGRAY_BRUSH),
              SendMessageA(bar, WM_CTLCOLORSTATIC, (WPARAM)dc, (LPARAM)GetDlgItem(bar, IDC_HGRID_BARTITLE)));
    ReleaseDC(bar, dc);
    // It spans the grid across a resize.
    MoveWindow(grid, 0, 0, 420, 200, TRUE);
    RECT barRect, client;
    GetWindowRect(bar, &barRect);
    GetClientRect(grid, &client);
    EXPECT_EQ(client.right, barRect.right - barRect.left);
    EXPECT_GT(barRect.bottom - barRect.top, 0);
    DestroyWindow(grid);
    // Read-only and in-place grids have none.
    for (DWORD style : {(DWORD)HGS_READONLY, (DWORD)HGS_INPLACE}) {
        Make(style);
        EXPECT_FALSE(gw->hBar) << style;
        EXPECT_FALSE(GetDlgItem(grid, 0xFFFF)) << style;
        DestroyWindow(grid);
    }
}


std::string Titles(HGridData* grid)
{
    std::string s;
    for (LONG i = 0; i < grid->fields->count; i++)
        s += std::string(i ? "," : "") + HGFieldAt(grid, i)->title;
    return s;
}

TEST_F(GridWin, FieldOrderReadsTheMapAndWritesItBackByMoves)
{
    Make(HGS_FIELDMAP);
    LONG order[3] = {-9, -9, -9};
    EXPECT_EQ(2, Send(HGM_MOVEFIELD, 0, 2));
    EXPECT_EQ("Qty,Sum,Num", Titles(gw->grid));
    EXPECT_EQ(1, Send(HGM_GETFIELDORDER, 0, (LPARAM)order));
    EXPECT_EQ(2, order[0]);
    EXPECT_EQ(0, order[1]);
    EXPECT_EQ(1, order[2]);
    EXPECT_EQ(2, Send(HGM_GETFIELDATPOS, 0)); // storage position 0 shows as column 2
    const LONG identity[3] = {0, 1, 2};
    EXPECT_EQ(1, Send(HGM_SETFIELDORDER, 0, (LPARAM)identity));
    EXPECT_EQ("Num,Qty,Sum", Titles(gw->grid));
}

TEST_F(GridWin, PositionSetsScrollSilentlyAndAMoveBringsTheCellIntoView)
{
    Make();
    while (gw->grid->records->count < 60)
        HLListAdd(gw->grid->records, nullptr);
    Send(HGM_RELAYOUT, 0);
    parent.seen.clear();
    EXPECT_EQ(20, Send(HGM_SETTOPROW, 20, 0));
    EXPECT_EQ(20, Send(HGM_GETTOPROW));
    EXPECT_EQ(25, Send(HGM_SETTOPROW, 3, 25)); // the larger argument
    EXPECT_EQ(0, Send(HGM_SETVSCROLLPOS, 0));
    EXPECT_EQ(0, Send(HGM_GETTOPROW));
    for (const SeenMsg& m : parent.seen)
        EXPECT_NE(HGN_VSCROLLED, m.code);
    // A move with scroll brings the column and the row into view.
    MoveWindow(grid, 0, 0, 70, 120, TRUE); // room for one column and a few rows
    Send(HGM_RELAYOUT, 0);
    Send(HGM_SETCURRENT, 0, Cell(2, 40));
    EXPECT_EQ(2, Send(HGM_GETLEFTCOL));
    LRESULT top = Send(HGM_GETTOPROW);
    EXPECT_LE(top, 40);
    EXPECT_GT(top + gw->visibleRows, 40);
    Send(HGM_SETCURRENT, 0, Cell(0, 1));
    EXPECT_EQ(0, Send(HGM_GETLEFTCOL));
    EXPECT_EQ(1, Send(HGM_GETTOPROW));
}

// Every record exists and holds zeros.
LONG CALLBACK ZeroRows(HWND, UINT, LONG, LPVOID) { return 1; }

TEST_F(GridWin, TheMirrorFollowsTheCurrentRecordClearEmptiesTheRowsAndADataProcMakesTheGridVirtual)
{
    Make();
    LONG value = 77;
    ASSERT_TRUE(HGSetCellData(grid, 1, 2, &value));
    LONG mirror[3] = {-1, -1, -1};
    EXPECT_EQ(1, Send(HGM_SETMIRROR, 0, (LPARAM)mirror));
    EXPECT_EQ(0, mirror[1]); // record 0
    Send(HGM_SETCURRENT, 0, Cell(0, 2));
    EXPECT_EQ(77, mirror[1]);
    EXPECT_EQ((LRESULT)mirror, Send(HGM_GETMIRROR));
    EXPECT_EQ(1, Send(HGM_CLEAR, 1));
    EXPECT_EQ(0, Send(HGM_GETRECORDCOUNT));
    EXPECT_EQ(0, Send(HGM_GETCURRENT));
    // A data proc makes the grid virtual and its removal plain again.
    EXPECT_EQ(0, Send(HGM_SETDATAPROC, 0, (LPARAM)ZeroRows));
    EXPECT_TRUE(Send(HGM_GETFLAGS) & HGW_VIRTUAL);
    EXPECT_EQ((LRESULT)ZeroRows, Send(HGM_GETDATAPROC));
    EXPECT_EQ(1, Send(HGM_SETTOTAL, 0, 1000));
    EXPECT_EQ(1000, Send(HGM_GETTOTAL));
    EXPECT_EQ((LRESULT)ZeroRows, Send(HGM_SETDATAPROC, 0, 0));
    EXPECT_FALSE(Send(HGM_GETFLAGS) & HGW_VIRTUAL);
    EXPECT_EQ(0, Send(HGM_SETTOTAL, 0, 40));
}

TEST_F(GridWin, ADesignGridMovesItsStashEntryWithItsName)
{
    TestParent tool("DlgEditGridWin"); // a dialog editor's top window: design time
    HWND design = tool.Child(HGRID_CLASS, "DSGNA", 0, 9);
    ASSERT_TRUE(design);
    DWORD thread = GetCurrentThreadId();
    EXPECT_TRUE(GetStashed(thread, "DSGNA", nullptr));
    // The entry under the new name is a copy of the window's grid as it stands.
    ASSERT_GE(SendMessageA(design, HGM_ADDFIELD, 0, (LPARAM)Field("Num", 4)), 0);
    EXPECT_TRUE(SendMessageA(design, WM_SETTEXT, 0, (LPARAM) "DSGNB"));
    EXPECT_FALSE(GetStashed(thread, "DSGNA", nullptr));
    HGStashEntry* renamed = GetStashed(thread, "DSGNB", nullptr);
    ASSERT_TRUE(renamed);
    EXPECT_EQ(1, renamed->grid->fields->count);
    char text[16] = "";
    GetWindowTextA(design, text, sizeof text);
    EXPECT_STREQ("DSGNA", text); // the grid's own name stays at design time
    DestroyWindow(design);
    EXPECT_TRUE(GetStashed(thread, "DSGNB", nullptr)); // back under the new name
    RemoveStashed(thread, "DSGNB");
    // Without an entry under its key the window keeps the key.
    design = tool.Child(HGRID_CLASS, "DSGNC", 0, 9);
    ASSERT_TRUE(design);
    RemoveStashed(thread, "DSGNC");
    EXPECT_TRUE(SendMessageA(design, WM_SETTEXT, 0, (LPARAM) "DSGND"));
    EXPECT_STREQ("DSGNC", ((HGridWindow*)SendMessageA(design, HM_GETPTR, 0, 0))->designName);
    DestroyWindow(design);
    EXPECT_FALSE(GetStashed(thread, "DSGND", nullptr));
}

} // namespace
