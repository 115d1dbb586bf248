// Adds, inserts, deletes and drops of grid records through the internal row
// routines, on a real HGrid window: the order of row source calls and
// notifications, refusals, the new row, the selection, the limit. Win32 only.
#ifdef _WIN32
#include "frame/frame.h"
#include "grid/gridwin.h"
#include <gtest/gtest.h>

#include <functional>
#include <stdio.h>
#include <string>
#include <vector>

namespace {

using Events = std::vector<std::string>;
Events g_events;
LONG g_answer[7];
std::function<void(WORD code)> g_onNotify; // runs inside the notification

void Log(const char* format, long a)
{
    char line[32];
    snprintf(line, sizeof line, format, a);
    g_events.push_back(line);
}

LONG CALLBACK RowSource(HWND, UINT op, LONG position, LPVOID)
{
    char line[32];
    snprintf(line, sizeof line, "op%u %ld", op, position);
    g_events.push_back(line);
    return op < 7 ? g_answer[op] : 0;
}

LRESULT CALLBACK ParentProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_COMMAND) {
        Log("notify 0x%02lx", HIWORD(wParam));
        if (g_onNotify)
            g_onNotify(HIWORD(wParam));
        return 0;
    }
    return DefWindowProcA(hWnd, msg, wParam, lParam);
}

class GridRows : public ::testing::Test {
protected:
    HWND parent = nullptr;
    HWND grid = nullptr;
    HGridWindow* gw = nullptr;

    void SetUp() override
    {
        HGridRegister();
        WNDCLASSA wc = {};
        wc.lpfnWndProc = ParentProc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.lpszClassName = "GridRowsParent";
        RegisterClassA(&wc);
        parent = CreateWindowExA(0, "GridRowsParent", "", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr,
                                 nullptr, wc.hInstance, nullptr);
        ASSERT_TRUE(parent);
        g_onNotify = nullptr;
        for (LONG& a : g_answer)
            a = 1;
    }
    void TearDown() override
    {
        g_onNotify = nullptr;
        DestroyWindow(parent);
    }
    // A grid of one 4-byte column and `rows` records; virtual with a row source if asked.
    void Make(DWORD styleBits, int rows, bool virtualMode)
    {
        grid = CreateWindowExA(0, HGRID_CLASS, "no such grid", WS_CHILD | styleBits, 0, 0, 200, 100, parent,
                               (HMENU)7, nullptr, nullptr);
        ASSERT_TRUE(grid);
        gw = (HGridWindow*)SendMessageA(grid, HM_GETPTR, 0, 0);
        ASSERT_TRUE(gw && gw->grid);
        ASSERT_EQ(0, HGAppendFld(gw->grid, HGFieldCreate("N", 0, 40, 0, 'n', 'l', 0, 0, 4, 'e', 0, "")));
        while (Count() < rows) {
            LONG value = Count();
            HLListAdd(gw->grid->records, &value);
        }
        if (virtualMode) {
            gw->dataProc = RowSource;
            gw->wFlags |= HGW_VIRTUAL;
        }
        g_events.clear();
    }
    LONG Count() { return gw->grid->records->count; }
    HGRecord* Record(int row) { return HGRecordAt(gw->grid, row); }
    // The first cell of each record: which records are left, in order.
    std::vector<LONG> Values()
    {
        std::vector<LONG> v;
        for (int i = 0; i < Count(); ++i) {
            LONG x;
            memcpy(&x, Record(i)->cells, 4);
            v.push_back(x);
        }
        return v;
    }
};

// ---- Add ----

TEST_F(GridRows, AddWithTheNewRowFlagMarksTheRowAndNotifies)
{
    Make(0, 2, false);
    EXPECT_EQ(3, HGAddRecord(gw, nullptr, TRUE));
    EXPECT_EQ(HGR_NEW, Record(2)->recordStatus);
    EXPECT_EQ(-1, gw->notifyCol);
    EXPECT_EQ(2, gw->notifyRow);
    EXPECT_EQ(Events{"notify 0x11"}, g_events);
    EXPECT_EQ(4, HGAddRecord(gw, nullptr, FALSE)); // quietly, unmarked
    EXPECT_EQ(0, Record(3)->recordStatus);
    EXPECT_EQ(1u, g_events.size());
}

TEST_F(GridRows, WhileTheBlankRowIsUnusedAddsGoBeforeItAndASecondBlankIsRefused)
{
    Make(HGS_NEWROW, 0, false); // creation added the blank row
    ASSERT_EQ(1, Count());
    const LONG value = 42;
    EXPECT_EQ(0xFFFF, HGAddRecord(gw, nullptr, TRUE));
    EXPECT_EQ(1, HGAddRecord(gw, &value, FALSE));
    EXPECT_EQ(2, HGAddRecord(gw, &value, FALSE));
    EXPECT_EQ((std::vector<LONG>{42, 42, 0}), Values());
    EXPECT_EQ(HGR_NEW, Record(2)->recordStatus); // the blank row stays last
    EXPECT_TRUE(g_events.empty());
}

TEST_F(GridRows, VirtualAddsGoToTheRowSourceNotTheList)
{
    const struct {
        LONG answer;
        int result;
    } kCases[] = {{1, 4}, {0, 0xFFFF}};
    for (const auto& c : kCases) {
        Make(0, 3, true);
        g_answer[HGOP_ADD] = c.answer;
        EXPECT_EQ(c.result, HGAddRecord(gw, nullptr, TRUE));
        EXPECT_EQ(3, Count());
        EXPECT_EQ(Events{"op6 3"}, g_events); // the position is the list's count
        DestroyWindow(grid);
    }
}

// ---- Insert ----

TEST_F(GridRows, InsertAsksTheRowSourceThenMarksTheRowNewAndNotifies)
{
    Make(0, 3, true);
    gw->rowBase = 100;
    const LONG value = 9;
    EXPECT_EQ(1, HGInsertRecord(gw, &value, 1, TRUE));
    EXPECT_EQ((Events{"op2 101", "notify 0x11"}), g_events);
    EXPECT_EQ((std::vector<LONG>{0, 9, 1, 2}), Values());
    EXPECT_EQ(HGR_NEW, Record(1)->recordStatus);
    EXPECT_EQ(1, gw->notifyRow);
    g_events.clear();
    EXPECT_EQ(0, HGInsertRecord(gw, nullptr, 0, FALSE));
    EXPECT_EQ(Events{"op2 100"}, g_events);
    EXPECT_EQ(0, Record(0)->recordStatus);
    g_events.clear();
    g_answer[HGOP_INSERT] = 0; // refused: nothing changes
    EXPECT_EQ(-1, HGInsertRecord(gw, nullptr, 0, TRUE));
    EXPECT_EQ((std::vector<LONG>{0, 0, 9, 1, 2}), Values());
    EXPECT_EQ(Events{"op2 100"}, g_events);
}

// ---- Delete and drop ----

TEST_F(GridRows, VirtualDeleteAsksTheRowSourceNotifiesThenStoresADirtyRow)
{
    const struct {
        const char* name;
        WORD status;
        LONG answer3;
        BOOL result;
        Events events;
    } kCases[] = {
        {"clean", 0, 1, TRUE, {"op3 11", "notify 0x14"}},
        {"dirty", HGR_DIRTY, 1, TRUE, {"op3 11", "notify 0x14", "op1 11"}},
        {"refused", HGR_DIRTY, 0, FALSE, {"op3 11"}},
        {"new", HGR_NEW | HGR_DIRTY, 1, FALSE, {}},
    };
    for (const auto& c : kCases) {
        Make(0, 3, true);
        gw->rowBase = 10;
        Record(1)->recordStatus = c.status;
        g_answer[HGOP_DELETE] = c.answer3;
        EXPECT_EQ(c.result, HGDeleteRecord(gw, 1, TRUE)) << c.name;
        EXPECT_EQ(c.events, g_events) << c.name;
        EXPECT_EQ(c.result ? 2 : 3, Count()) << c.name;
        DestroyWindow(grid);
    }
}

TEST_F(GridRows, TheBlankNewRowCannotBeDeleted)
{
    Make(HGS_NEWROW, 0, false);
    HGAddRecord(gw, nullptr, FALSE);
    ASSERT_EQ(2, Count());
    g_events.clear();
    EXPECT_FALSE(HGDeleteRecord(gw, 1, TRUE));
    EXPECT_TRUE(HGDeleteRecord(gw, 0, TRUE));
    EXPECT_EQ(Events{"notify 0x14"}, g_events);
    EXPECT_EQ(1, Count());
}

TEST_F(GridRows, AVetoOfRowDeletedDoesNotKeepTheRow)
{
    Make(0, 2, false);
    g_onNotify = [&](WORD) { SendMessageA(grid, HM_VETO, 0, 0); };
    EXPECT_TRUE(HGDeleteRecord(gw, 0, TRUE));
    EXPECT_EQ((std::vector<LONG>{1}), Values());
}

TEST_F(GridRows, AReceiverThatDestroysTheGridDuringRowDeletedEndsTheDelete)
{
    Make(0, 2, true);
    Record(0)->recordStatus = HGR_DIRTY;
    g_onNotify = [&](WORD) { DestroyWindow(grid); };
    EXPECT_FALSE(HGDeleteRecord(gw, 0, TRUE));
    EXPECT_FALSE(IsWindow(grid));
    // No op1 from a freed record; the end's own notice comes once.
    EXPECT_EQ((Events{"op3 0", "notify 0x14", "notify 0x05"}), g_events);
}

TEST_F(GridRows, DroppingARowAboveMovesTheCurrentCellWithItsRecord)
{
    Make(0, 5, false);
    gw->curRow = gw->anchorRow = 3;
    EXPECT_TRUE(HGDropRecord(gw, 1));
    EXPECT_EQ(2, gw->curRow);
    EXPECT_EQ(2, gw->anchorRow);
    EXPECT_TRUE(HGDropRecord(gw, 2)); // the current row itself: the one below takes its place
    EXPECT_EQ(2, gw->curRow);
    EXPECT_TRUE(HGDropRecord(gw, 2)); // the last row: the current cell is pulled back in
    EXPECT_EQ(1, gw->curRow);
    EXPECT_EQ((std::vector<LONG>{0, 2}), Values());
    EXPECT_FALSE(HGDropRecord(gw, 2));
    EXPECT_FALSE(HGDropRecord(gw, -1));
}

TEST_F(GridRows, ClampingASelectionOfSeveralRowsTradesItsEnds)
{
    Make(0, 6, false);
    gw->curRow = 4;
    gw->anchorRow = 2;
    EXPECT_TRUE(HGDropRecord(gw, 5));
    EXPECT_EQ(2, gw->curRow); // the anchor's row
    EXPECT_EQ(4, gw->anchorRow);
}

// ---- Limit and record I/O ----

TEST_F(GridRows, InsertAndAddAreRefusedAt32760Records)
{
    Make(0, 0, false);
    while (Count() < 32760)
        HLListAdd(gw->grid->records, nullptr);
    EXPECT_EQ(-1, HGInsertRecord(gw, nullptr, 0, FALSE));
    EXPECT_EQ(0xFFFF, HGAddRecord(gw, nullptr, FALSE));
    EXPECT_EQ(0xFFFF, HGAppendRow(gw, nullptr));
    HLListRemove(gw->grid->records, 0);
    EXPECT_EQ(0, HGInsertRecord(gw, nullptr, 0, FALSE));
    EXPECT_EQ(32760, Count());
}

TEST_F(GridRows, RecordIOCopiesTheCellAreaOnly)
{
    Make(0, 2, false);
    Record(1)->recordStatus = HGR_DIRTY;
    BYTE in[6] = {1, 2, 3, 4, 0xAA, 0xAA};
    EXPECT_TRUE(HGRecordIO(gw->grid, 1, in, TRUE));
    BYTE out[6] = {0, 0, 0, 0, 0x55, 0x55};
    EXPECT_TRUE(HGRecordIO(gw->grid, 1, out, FALSE));
    EXPECT_EQ(0, memcmp(out, "\1\2\3\4\x55\x55", 6));
    EXPECT_EQ(HGR_DIRTY, Record(1)->recordStatus);
    EXPECT_FALSE(HGRecordIO(gw->grid, 2, out, FALSE));
    EXPECT_FALSE(HGRecordIO(gw->grid, 0, nullptr, FALSE));
}

} // namespace
#endif
