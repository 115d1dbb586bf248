// Selection, navigation and in-place editing of a real HGrid window: keys and
// clicks against tables of where the current cell goes and what the parent
// hears, typing into a cell's editor, the clipboard, and receivers that
// redirect, veto or destroy inside a notification.
#include "wintest.h"

#include <string.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr int kId = 7;
constexpr int kRows = 5;

// A grid of three columns (an int, a 7-character string, a read-only int) and
// five records, each column 40 pixels wide and each row 20 high.
class GridEdit : public ::testing::Test {
protected:
    TestParent parent;
    HWND grid = nullptr;

    void Make(DWORD style)
    {
        ShowWindow(parent.hwnd(), SW_SHOWNA);
        grid = parent.Child(HGRID_CLASS, "no such grid", style, kId, 0, 0, 300, 200);
        ASSERT_TRUE(grid);
        AddField("Num", 'n', 'i', 4, 0);
        AddField("Name", 's', 's', 8, 0);
        AddField("Fixed", 'n', 'i', 4, HGF_READONLY);
        for (int i = 0; i < kRows; i++) {
            SendMessageA(grid, HGM_ADDRECORD, 0, 0);
            for (int col = 0; col < 3; col++)
                HGSetCellData(grid, col, i, nullptr);
        }
        SendMessageA(grid, HGM_SETROWHEIGHT, 20, 0);
        SendMessageA(grid, HGM_RELAYOUT, 1, 0);
        SetFocus(grid);
        parent.seen.clear();
    }
    void AddField(const char* title, char cls, char type, int size, WORD flags)
    {
        HGField* f = HGFieldCreate(title, flags, 40, 0, cls, type, 0, 0, size, 'e', 0, "");
        ASSERT_GE(SendMessageA(grid, HGM_ADDFIELD, 0, (LPARAM)f), 0);
    }
    void TearDown() override
    {
        SetKeys(false, false);
        if (IsWindow(grid))
            DestroyWindow(grid);
    }
    void Key(HWND to, WPARAM key, bool shift = false, bool ctrl = false)
    {
        SetKeys(shift, ctrl);
        SendMessageA(to, WM_KEYDOWN, key, 0);
        SetKeys(false, false);
    }
    void Type(const char* text)
    {
        for (const char* p = text; *p; p++)
            SendMessageA(grid, WM_CHAR, (BYTE)*p, 0);
    }
    void Go(int col, int row, bool extend = false)
    {
        SendMessageA(grid, HGM_SETCURRENT, extend, MAKELONG(col, row));
    }
    DWORD Current() { return (DWORD)SendMessageA(grid, HGM_GETCURRENT, 0, 0); }
    DWORD Anchor() { return (DWORD)SendMessageA(grid, HGM_GETANCHOR, 0, 0); }
    HWND Editor(int col) { return (HWND)SendMessageA(grid, HGM_FLD_GETEDITOR, col, 0); }
    std::vector<WORD> Codes()
    {
        std::vector<WORD> codes;
        for (const SeenMsg& m : parent.seen)
            if (m.msg == WM_COMMAND && m.from == grid)
                codes.push_back(m.code);
        return codes;
    }
    // A cell's text, or "NULL" for a null cell.
    std::string Text(int col, int row)
    {
        char text[64] = "";
        if (!HGGetCellData(grid, col, row, text))
            return "NULL";
        HGGetCellText(grid, col, row, text, sizeof text);
        return text;
    }
    // The window as it stands against a full repaint into memory, at a corner
    // pixel of each cell; the cell under an in-place editor is skipped.
    void ExpectScreenMatchesRepaint(LONG top, bool inPlace, const std::string& what)
    {
        UpdateWindow(grid);
        RECT client;
        GetClientRect(grid, &client);
        HDC screen = GetDC(grid);
        HDC mem = CreateCompatibleDC(screen);
        HBITMAP bitmap = CreateCompatibleBitmap(screen, client.right, client.bottom);
        HGDIOBJ old = SelectObject(mem, bitmap);
        SendMessageA(grid, WM_ERASEBKGND, (WPARAM)mem, 0);
        SendMessageA(grid, WM_PRINTCLIENT, (WPARAM)mem, PRF_CLIENT);
        DWORD current = Current();
        for (int row = 0; row < kRows; row++)
            for (int col = 0; col < 3; col++) {
                if (inPlace && current == (DWORD)MAKELONG(col, row))
                    continue;
                int x = col * 40 + 3, y = top + row * 20 + 3;
                EXPECT_EQ(GetPixel(mem, x, y), GetPixel(screen, x, y)) << what << " cell " << col << "," << row;
            }
        SelectObject(mem, old);
        DeleteObject(bitmap);
        DeleteDC(mem);
        ReleaseDC(grid, screen);
    }
    // The resize edge found by a WM_SETCURSOR outlives the drag, in all grids:
    // a cursor over no edge clears it for the clicks of later tests.
    void ForgetEdge()
    {
        POINT screen = {20, 10};
        ClientToScreen(grid, &screen);
        SetCursorPos(screen.x, screen.y);
        SendMessageA(grid, WM_SETCURSOR, (WPARAM)grid, MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    }
    // A click in the middle of a cell of a grid without headers.
    void Click(int col, int row, bool shift = false, bool ctrl = false)
    {
        POINT p = {col * 40 + 20, row * 20 + 10};
        Press(p, p, p, shift, ctrl);
    }
    // A press, the cursor put where the drag loop finds it, and a release queued first so the loop ends.
    void Press(POINT down, POINT up, POINT cursor, bool shift = false, bool ctrl = false)
    {
        SetKeys(shift, ctrl);
        ClientToScreen(grid, &cursor);
        SetCursorPos(cursor.x, cursor.y);
        PostMessageA(grid, WM_LBUTTONUP, 0, MAKELPARAM(up.x, up.y));
        SendMessageA(grid, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(down.x, down.y));
        PumpMessages();
        SetKeys(false, false);
    }
};

struct KeyCase {
    const char* name;
    int startCol, startRow;
    WPARAM key;
    bool shift, ctrl;
    int col, row;             // the current cell after the key
    int anchorCol, anchorRow; // the anchor after it
    std::vector<WORD> codes;  // what the parent hears, in order; empty: not compared
};

const KeyCase kKeys[] = {
    {"right", 0, 0, VK_RIGHT, false, false, 1, 0, 1, 0, {HGN_MOVING, HGN_CELLMOVED}},
    {"left at the first column stays", 0, 0, VK_LEFT, false, false, 0, 0, 0, 0},
    {"tab", 0, 0, VK_TAB, false, false, 1, 0, 1, 0},
    {"shift tab moves left and does not extend", 1, 2, VK_TAB, true, false, 0, 2, 0, 2},
    {"return goes down", 1, 1, VK_RETURN, false, false, 1, 2, 1, 2},
    {"down", 0, 0, VK_DOWN, false, false, 0, 1, 0, 1, {HGN_MOVING, HGN_CELLMOVED, HGN_ROWCHANGED}},
    {"up at the first row stays without headers", 0, 0, VK_UP, false, false, 0, 0, 0, 0},
    {"down past the last record stays on it", 0, 4, VK_DOWN, false, false, 0, 4, 0, 4},
    {"end goes to the last field", 0, 3, VK_END, false, false, 2, 3, 2, 3},
    {"home goes to the first field", 2, 3, VK_HOME, false, false, 0, 3, 0, 3},
    {"ctrl end goes to the last record", 0, 1, VK_END, false, true, 2, 4, 2, 4},
    {"ctrl home goes to the first record", 2, 4, VK_HOME, false, true, 0, 0, 0, 0},
    {"ctrl page down goes to the last record", 1, 1, VK_NEXT, false, true, 1, 4, 1, 4},
    {"shift down extends from the anchor", 1, 1, VK_DOWN, true, false, 1, 2, 1, 1,
     {HGN_EXTENDING, HGN_CELLMOVED, HGN_ROWCHANGED}},
    {"shift right extends", 0, 2, VK_RIGHT, true, false, 1, 2, 0, 2},
    {"a letter on a read-only cell does nothing", 2, 1, 'A', false, false, 2, 1, 2, 1},
};

// Moves notify moving (or extending) then moved, and the row change only across rows.
TEST_F(GridEdit, KeysMoveTheCurrentCellAndNotifyAsTheTableSays)
{
    Make(HGS_INPLACE);
    for (const KeyCase& c : kKeys) {
        Go(c.startCol, c.startRow);
        parent.seen.clear();
        Key(grid, c.key, c.shift, c.ctrl);
        if (!c.codes.empty())
            EXPECT_EQ(c.codes, Codes()) << c.name;
        EXPECT_EQ((DWORD)MAKELONG(c.col, c.row), Current()) << c.name;
        EXPECT_EQ((DWORD)MAKELONG(c.anchorCol, c.anchorRow), Anchor()) << c.name;
        EXPECT_EQ(grid, GetFocus()) << c.name;
    }
}

TEST_F(GridEdit, MovingReceiverRedirectsOrVetoesTheMove)
{
    Make(HGS_INPLACE);
    HWND g = grid;
    DWORD redirect = MAKELONG(2, 3);
    parent.onCommand = [&](const SeenMsg& m) {
        if (m.code == HGN_MOVING)
            SendMessageA(g, HGM_SETNOTIFYCELL, 0, (LPARAM)redirect);
    };
    Key(grid, VK_RIGHT);
    EXPECT_EQ(redirect, Current());

    // A veto sends the move back to where it started: no row change follows.
    parent.seen.clear();
    Key(grid, VK_DOWN);
    EXPECT_EQ(redirect, Current());
    EXPECT_EQ((std::vector<WORD>{HGN_MOVING, HGN_CELLMOVED}), Codes());
}

TEST_F(GridEdit, TypingIntoTheEditorCommitsIntoTheRecordOnTheNextMove)
{
    Make(HGS_INPLACE);
    HWND editor = Editor(0);
    ASSERT_TRUE(editor);
    Key(grid, '4');
    EXPECT_EQ(editor, GetFocus());
    Type("42");
    Key(editor, VK_RETURN); // the editor's filter hands it to the grid
    EXPECT_EQ(grid, GetFocus());
    EXPECT_EQ((DWORD)MAKELONG(0, 1), Current());
    EXPECT_EQ("42", Text(0, 0));
    std::vector<WORD> codes = Codes();
    std::vector<WORD> expected = {HGN_MOVING, HGN_CELLCHANGED, HGN_CELLMOVED, HGN_ROWCHANGED};
    EXPECT_TRUE(std::search(codes.begin(), codes.end(), expected.begin(), expected.end()) != codes.end());

    // The string column's editor writes text; Tab commits and moves right.
    Go(1, 2);
    Key(grid, 'X');
    Type("Bob");
    Key(Editor(1), VK_TAB);
    EXPECT_EQ("Bob", Text(1, 2));
    EXPECT_EQ((DWORD)MAKELONG(2, 2), Current());
}

TEST_F(GridEdit, EditorInTheBarCommitsAndFocusLeavingTheGridCommitsToo)
{
    Make(0); // not in place: the editor lives in the edit bar
    HWND editor = Editor(0);
    ASSERT_TRUE(editor);
    EXPECT_EQ(GetDlgItem(grid, 0xFFFF), GetParent(editor));
    Key(grid, '5');
    Type("51");
    EXPECT_TRUE(IsWindowVisible(editor));
    Key(editor, VK_TAB);
    EXPECT_EQ("51", Text(0, 0));

    Go(0, 2);
    Key(grid, '9');
    Type("9");
    parent.seen.clear();
    SetFocus(parent.hwnd());
    EXPECT_EQ("9", Text(0, 2));
    EXPECT_EQ((std::vector<WORD>{HGN_CELLCHANGED, HGN_KILLFOCUS}), Codes());
}

struct KindCase {
    char kind;
    char cls, type;
    const char* className;
    int id;
};

TEST_F(GridEdit, EachEditorKindGetsItsHiddenControlReportingToTheGrid)
{
    const KindCase kinds[] = {
        {'e', 'n', 'i', HEDITSS_CLASS, 200}, {'l', 'n', 'i', HLIST_CLASS, 201}, {'c', 's', 's', HCOMB_CLASS, 202},
        {'d', 'n', 'i', HCOMB_CLASS, 203},   {'k', 'n', 'i', HBUTT_CLASS, 204},
    };
    Make(HGS_INPLACE);
    for (const KindCase& k : kinds) {
        HGField* f = HGFieldCreate("K", 0, 40, 60, k.cls, k.type, 0, 0, 4, k.kind, 0, "");
        LRESULT index = SendMessageA(grid, HGM_ADDFIELD, 0, (LPARAM)f);
        HWND editor = Editor((int)index);
        ASSERT_TRUE(editor) << k.kind;
        char name[32] = "";
        GetClassNameA(editor, name, sizeof name);
        EXPECT_STREQ(k.className, name) << k.kind;
        EXPECT_EQ(k.id, GetDlgCtrlID(editor)) << k.kind;
        EXPECT_FALSE(IsWindowVisible(editor)) << k.kind;
        HCtlBase* record = (HCtlBase*)SendMessageA(editor, HM_GETPTR, 0, 0); // passes the subclass
        ASSERT_TRUE(record) << k.kind;
        EXPECT_EQ(grid, record->hNotify) << k.kind;
        EXPECT_EQ(DLGC_WANTALLKEYS, SendMessageA(editor, WM_GETDLGCODE, 0, 0)) << k.kind; // the grid answers
    }
    HGField* none = HGFieldCreate("None", 0, 40, 0, 'n', 'i', 0, 0, 4, 'x', 0, "");
    EXPECT_EQ(nullptr, Editor((int)SendMessageA(grid, HGM_ADDFIELD, 0, (LPARAM)none)));
}

TEST_F(GridEdit, TypingIntoAComboEditorCommitsThroughItsTopChild)
{
    Make(HGS_INPLACE);
    HGField* f = HGFieldCreate("Combo", 0, 60, 80, 's', 's', 0, 0, 8, 'c', 0, "");
    int col = (int)SendMessageA(grid, HGM_ADDFIELD, 0, (LPARAM)f);
    HGSetCellData(grid, col, 0, nullptr);
    Go(col, 0);
    HWND combo = Editor(col);
    Key(grid, 'H');
    HWND focus = GetFocus();
    EXPECT_TRUE(focus == combo || IsChild(combo, focus));
    Type("X"); // the grid hands a character to the combo itself, which drops it
    for (const char* p = "Hi"; *p; p++)
        SendMessageA(focus, WM_CHAR, (BYTE)*p, 0); // as the message loop delivers them to the focus
    Key(focus, VK_TAB); // the top child hands the key to the combo, whose filter hands it to the grid
    EXPECT_EQ(grid, GetFocus());
    EXPECT_EQ("Hi", Text(col, 0));
    HGridWindow* gw = (HGridWindow*)SendMessageA(grid, HM_GETPTR, 0, 0);
    EXPECT_FALSE(gw->wFlags & HGW_EDITING);
}

LONG CALLBACK HundredRecords(HWND, UINT op, LONG position, LPVOID)
{
    return op != 0 || (position >= 0 && position < 100); // fetches succeed for records 0 to 99
}

TEST_F(GridEdit, CtrlEndAndCtrlHomeReachTheEndsOfAVirtualTable)
{
    Make(HGS_INPLACE);
    SendMessageA(grid, HGM_SETDATAPROC, 0, (LPARAM)HundredRecords);
    SendMessageA(grid, HGM_SETTOTAL, 0, 100);
    SendMessageA(grid, HGM_RELAYOUT, 1, 0);
    auto record = [&] { return HIWORD(Current()) + (LONG)SendMessageA(grid, HGM_GETROWBASE, 0, 0); };
    Key(grid, VK_END, false, true);
    EXPECT_EQ(99, record());
    EXPECT_EQ(2, LOWORD(Current()));
    Key(grid, VK_HOME, false, true);
    EXPECT_EQ(0, record());
    EXPECT_EQ(0, LOWORD(Current()));
    EXPECT_EQ(0, SendMessageA(grid, HGM_GETTOPROW, 0, 0));
}

TEST_F(GridEdit, EscapeBringsTheCellValueBackAndWritesNothing)
{
    Make(HGS_INPLACE);
    Key(grid, '7');
    Type("77");
    parent.seen.clear();
    Key(Editor(0), VK_ESCAPE);
    EXPECT_EQ(grid, GetFocus());
    Key(grid, VK_DOWN);
    EXPECT_EQ("NULL", Text(0, 0));
    for (WORD code : Codes())
        EXPECT_NE(HGN_CELLCHANGED, code);
}

TEST_F(GridEdit, F2OnAReadOnlyGridGivesTheFocusToNothing)
{
    Make(HGS_INPLACE | HGS_READONLY);
    Key(grid, VK_F2);
    EXPECT_EQ(grid, GetFocus());
    Key(grid, '5');
    EXPECT_EQ(grid, GetFocus());
}

TEST_F(GridEdit, ClickMovesAndShiftClickAndDragExtendTheSelection)
{
    Make(HGS_INPLACE);
    Click(1, 2);
    EXPECT_EQ((DWORD)MAKELONG(1, 2), Current());
    EXPECT_EQ((DWORD)MAKELONG(1, 2), Anchor());
    Click(2, 4, true);
    EXPECT_EQ((DWORD)MAKELONG(2, 4), Current());
    EXPECT_EQ((DWORD)MAKELONG(1, 2), Anchor());
    parent.seen.clear();
    SendMessageA(grid, WM_LBUTTONDBLCLK, 0, MAKELPARAM(20, 10));
    EXPECT_EQ((DWORD)MAKELONG(0, 0), Current());
    EXPECT_EQ(HGN_DBLCLK, Codes().back());
    // A drag extends from the pressed cell to the cell under the cursor.
    parent.seen.clear();
    Press({20, 10}, {60, 50}, {60, 50}); // pressed on (0, 0), released on (1, 2)
    EXPECT_EQ((DWORD)MAKELONG(0, 0), Anchor());
    EXPECT_EQ((DWORD)MAKELONG(1, 2), Current());
    std::vector<WORD> codes = Codes();
    EXPECT_TRUE(std::find(codes.begin(), codes.end(), HGN_EXTENDING) != codes.end());
}

struct RowClick {
    int row;
    bool shift, ctrl;
    std::vector<LONG> selected; // rows that count as selected after the click
};

TEST_F(GridEdit, RowSelectClicksMarkRowsAsTheTableSays)
{
    const RowClick clicks[] = {
        {1, false, false, {1}},
        {3, false, true, {1, 3}},
        {4, true, true, {1, 3, 4}},
        {1, false, true, {3, 4}},
        {0, true, false, {0, 1}},
        {2, false, false, {2}},
    };
    Make(HGS_INPLACE | HGS_ROWSELECT);
    for (const RowClick& c : clicks) {
        Click(0, c.row, c.shift, c.ctrl);
        LONG rows[kRows] = {};
        LRESULT n = SendMessageA(grid, HGM_GETSELROWS, kRows, (LPARAM)rows);
        EXPECT_EQ(c.selected, std::vector<LONG>(rows, rows + n)) << "click on row " << c.row;
        ExpectScreenMatchesRepaint(0, true, "click on row " + std::to_string(c.row));
    }
}

TEST_F(GridEdit, DoubleClickOnTheHeaderSelectsTheColumnAndNotifies)
{
    Make(HGS_INPLACE | HGS_COLHEADERS);
    SendMessageA(grid, HGM_SETCOLHEADERHEIGHT, 20, 1);
    parent.seen.clear();
    SendMessageA(grid, WM_LBUTTONDBLCLK, 0, MAKELPARAM(60, 10));
    EXPECT_EQ((DWORD)MAKELONG(1, -1), Current());
    EXPECT_EQ((std::vector<WORD>{HGN_MOVING, HGN_CELLMOVED, HGN_ROWCHANGED, HGN_DBLCLK}), Codes());
}

TEST_F(GridEdit, DeleteAndInsertWorkOnTheSelectedRowsOfARowSelectGrid)
{
    Make(HGS_INPLACE | HGS_ROWSELECT | HGS_INSDEL);
    HGSetCellText(grid, 0, 3, "33");
    Click(0, 1);
    Click(0, 2, true);
    parent.seen.clear();
    Key(grid, VK_DELETE);
    EXPECT_EQ(kRows - 2, SendMessageA(grid, HGM_GETRECORDCOUNT, 0, 0));
    EXPECT_EQ("33", Text(0, 1));
    std::vector<WORD> codes = Codes();
    EXPECT_EQ(2, std::count(codes.begin(), codes.end(), HGN_ROWDELETED));
    Click(0, 0);
    Key(grid, VK_INSERT);
    EXPECT_EQ(kRows - 1, SendMessageA(grid, HGM_GETRECORDCOUNT, 0, 0));
    EXPECT_EQ("33", Text(0, 2));
}

TEST_F(GridEdit, ShiftDragOfASelectedColumnHeaderMovesTheColumn)
{
    Make(HGS_INPLACE | HGS_COLHEADERS | HGS_FIELDMAP);
    SendMessageA(grid, HGM_SETCOLHEADERHEIGHT, 20, 1);
    Click(0, 0); // the first column's header
    ASSERT_EQ((DWORD)MAKELONG(0, -1), Current());
    parent.seen.clear();
    Press({20, 10}, {100, 10}, {20, 10}, true); // released over the third column
    std::vector<WORD> codes = Codes();
    EXPECT_TRUE(std::find(codes.begin(), codes.end(), HGN_COLSMOVED) != codes.end());
    EXPECT_EQ(2, SendMessageA(grid, HGM_FINDFIELD, 0, (LPARAM) "Num"));
    EXPECT_EQ((DWORD)MAKELONG(2, -1), Current());
}

TEST_F(GridEdit, ColumnWidthDraggedPastItsLimitsIsHeldToThem)
{
    Make(HGS_INPLACE | HGS_SIZECOLS);
    struct {
        int x;
        LRESULT width;
        bool look = true; // a WM_SETCURSOR finds the edge before the press
    } const drags[] = {{1, 2}, {70, 70}, {3000, 2000}, {60, 60, false}}; // the edge found last is kept
    for (const auto& d : drags) {
        LONG edge = (LONG)SendMessageA(grid, HGM_FLD_GETWIDTH, 0, 0);
        POINT screen = {edge, 10};
        ClientToScreen(grid, &screen);
        SetCursorPos(screen.x, screen.y);
        if (d.look)
            SendMessageA(grid, WM_SETCURSOR, (WPARAM)grid, MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        SendMessageA(grid, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(edge, 10));
        SendMessageA(grid, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(d.x, 10));
        parent.seen.clear();
        SendMessageA(grid, WM_LBUTTONUP, 0, MAKELPARAM(d.x, 10));
        EXPECT_EQ(d.width, SendMessageA(grid, HGM_FLD_GETWIDTH, 0, 0)) << d.x;
        EXPECT_EQ(HGN_COLSIZED, Codes().empty() ? 0 : Codes().front()) << d.x;
        EXPECT_NE(grid, GetCapture());
    }
    ForgetEdge();
}

TEST_F(GridEdit, RowEdgeDraggedSetsTheRowHeightUnclamped)
{
    Make(HGS_INPLACE | HGS_SIZEROWS);
    struct {
        int edgeY, upY;
        LRESULT height;
    } const drags[] = {{20, 30, 30}, {40, 50, 30}, {20, 0, 0}, {20, -5, -5}};
    for (const auto& d : drags) {
        SendMessageA(grid, HGM_SETROWHEIGHT, 20, 1);
        POINT screen = {20, d.edgeY};
        ClientToScreen(grid, &screen);
        SetCursorPos(screen.x, screen.y);
        SendMessageA(grid, WM_SETCURSOR, (WPARAM)grid, MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        SendMessageA(grid, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, d.edgeY));
        parent.seen.clear();
        SendMessageA(grid, WM_LBUTTONUP, 0, MAKELPARAM(20, d.upY));
        EXPECT_EQ(d.height, SendMessageA(grid, HGM_GETROWHEIGHT, 0, 0)) << d.edgeY << " to " << d.upY;
        EXPECT_EQ(HGN_ROWSIZED, Codes().empty() ? 0 : Codes().front()) << d.edgeY << " to " << d.upY;
        InvalidateRect(grid, nullptr, TRUE);
        UpdateWindow(grid); // a height of 0 or below still paints
        Key(grid, VK_DOWN);
    }
    SendMessageA(grid, HGM_SETROWHEIGHT, 20, 1);
    ForgetEdge();
}

// The selection is drawn by inverting only what changed; after any run of
// moves the window must look as a full repaint would draw it.
TEST_F(GridEdit, SelectionDrawnByInversionMatchesAFullRepaint)
{
    for (DWORD style : {DWORD(0), DWORD(HGS_INPLACE)}) {
        Make(style);
        HWND bar = GetDlgItem(grid, 0xFFFF);
        RECT barRect = {};
        if (bar)
            GetWindowRect(bar, &barRect);
        LONG top = barRect.bottom - barRect.top;
        struct Step {
            WPARAM key;
            bool shift;
        } const steps[] = {{VK_RIGHT, false}, {VK_DOWN, true}, {VK_RIGHT, true}, {VK_DOWN, false},
                           {VK_LEFT, true},   {VK_UP, true},   {VK_UP, true},     {VK_HOME, false}};
        for (const Step& step : steps) {
            Key(grid, step.key, step.shift);
            ExpectScreenMatchesRepaint(top, (style & HGS_INPLACE) != 0, "key " + std::to_string(step.key));
        }
        DestroyWindow(grid);
    }
}

TEST_F(GridEdit, CopyWritesTabsLineEndsAndNullForANullCell)
{
    Make(HGS_INPLACE);
    HGSetCellText(grid, 0, 1, "12");
    HGSetCellText(grid, 1, 1, "A");
    Go(0, 1);
    Go(2, 1, true);
    SendMessageA(grid, WM_COPY, 0, 0);
    EXPECT_EQ("12\tA\tNULL\r\n", ClipboardText());

    Go(0, 0);
    Go(1, 1, true);
    SendMessageA(grid, WM_COPY, 0, 0);
    EXPECT_EQ("NULL\tNULL\r\n12\tA\r\n", ClipboardText());

    SendMessageA(grid, HGM_CLEAR, 0, 0);
    SendMessageA(grid, WM_COPY, 0, 0);
    EXPECT_EQ("", ClipboardText()); // no records: no row, not a row of NULL
}

struct PasteCase {
    const char* name;
    const char* text;
    int fromCol, fromRow, toCol, toRow; // the selection before the paste
    const char* cells[3][2];            // rows 1 to 3 of the first two columns after it
};

const PasteCase kPastes[] = {
    {"a block at one cell grows the selection", "5\tB\r\n6\tC\r\n", 0, 1, 0, 1,
     {{"5", "B"}, {"6", "C"}, {"NULL", "NULL"}}},
    {"no final line end pastes the same", "5\tB\r\n6\tC", 0, 1, 0, 1, {{"5", "B"}, {"6", "C"}, {"NULL", "NULL"}}},
    {"one cell fills the whole selection", "9", 0, 1, 1, 3, {{"9", "9"}, {"9", "9"}, {"9", "9"}}},
    {"NULL empties a cell and null is text", "NULL\tnull", 0, 1, 1, 1, {{"NULL", "null"}, {"NULL", "NULL"}, {"NULL", "NULL"}}},
    {"the last line stays in force down the selection", "1\tx\n2\ty", 0, 1, 1, 3,
     {{"1", "x"}, {"2", "y"}, {"2", "y"}}},
    {"a line of two cells fits neither three columns nor one: nothing changes", "1\t2\r\n", 0, 1, 2, 1,
     {{"NULL", "NULL"}, {"NULL", "NULL"}, {"NULL", "NULL"}}},
};

TEST_F(GridEdit, PasteFillsTheSelectionAsTheTableSays)
{
    Make(HGS_INPLACE);
    for (const PasteCase& c : kPastes) {
        for (int row = 0; row < kRows; row++)
            for (int col = 0; col < 2; col++)
                HGSetCellData(grid, col, row, nullptr);
        Go(c.fromCol, c.fromRow);
        Go(c.toCol, c.toRow, true);
        PutClipboardText(c.text);
        SendMessageA(grid, WM_PASTE, 0, 0);
        for (int row = 0; row < 3; row++)
            for (int col = 0; col < 2; col++)
                EXPECT_EQ(c.cells[row][col], Text(col, row + 1)) << c.name << " at " << col << "," << row + 1;
    }
}

TEST_F(GridEdit, ReceiverDestroyingTheGridInsideANotificationEndsTheMoveSafely)
{
    const WORD codes[] = {HGN_MOVING, HGN_CELLMOVED, HGN_ROWCHANGED, HGN_CELLCHANGED};
    for (WORD code : codes) {
        Make(HGS_INPLACE);
        HWND g = grid;
        parent.onCommand = [g, code](const SeenMsg& m) {
            if (m.code == code && IsWindow(g))
                DestroyWindow(g);
        };
        Key(grid, '3');
        Type("3");
        Key(Editor(0), VK_DOWN);
        EXPECT_FALSE(IsWindow(g)) << code;
        parent.onCommand = nullptr;
    }
}

} // namespace
