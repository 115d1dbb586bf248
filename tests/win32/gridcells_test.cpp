// Cells of a real HGrid window: writes and reads through the exported cell
// functions, their notifications, the new row, the record mirror, virtual mode
// with a row source that logs every call, text forms, and the record limit.
#include "wintest.h"

#include <stdio.h>
#include <string.h>
#include <string>
#include <vector>

namespace {

// One log of both roads out of the grid, in the order they were taken.
std::vector<std::string> g_events;
LONG g_answer[7]; // what the row source gives for each operation

void Log(const char* format, long a, long b = 0)
{
    char line[48];
    snprintf(line, sizeof line, format, a, b);
    g_events.push_back(line);
}

LONG CALLBACK RowSource(HWND, UINT op, LONG position, LPVOID)
{
    if (op == 5)
        Log("op5 col %ld row %ld", LOWORD(position), HIWORD(position));
    else
        Log("op%ld %ld", (long)op, position);
    return op < 7 ? g_answer[op] : 0;
}

HGField* Field(const char* title, char cls, char type, int size, char kind, const char* format = "")
{
    return HGFieldCreate(title, 0, 40, 0, cls, type, 0, 0, size, kind, 0, format);
}

class GridCells : public ::testing::Test {
protected:
    TestParent parent;
    HWND grid = nullptr;
    HGridWindow* gw = nullptr;

    void SetUp() override
    {
        g_events.clear();
        for (LONG& a : g_answer)
            a = 0;
        ASSERT_TRUE(SetDecimalSep('.') && SetThousandsSep(',') && SetDateSep('/') && SetTimeSep(':'));
        parent.onCommand = [](const SeenMsg& m) { Log("notify 0x%02lx", m.code); };
    }
    void TearDown() override
    {
        if (IsWindow(grid))
            DestroyWindow(grid);
    }

    // A grid window without fields.
    void Open(DWORD styleBits)
    {
        grid = parent.Child(HGRID_CLASS, "no such grid", styleBits, 7, 0, 0, 300, 200);
        gw = (HGridWindow*)SendMessageA(grid, HM_GETPTR, 0, 0);
        ASSERT_TRUE(grid && gw && gw->grid);
    }
    // A grid with an int column and a 6-byte string column, and `rows` records.
    void Make(DWORD styleBits, int rows)
    {
        ASSERT_NO_FATAL_FAILURE(Open(styleBits));
        ASSERT_EQ(0, HGAppendFld(gw->grid, Field("Num", 'n', 'i', 4, 'e')));
        ASSERT_EQ(1, HGAppendFld(gw->grid, Field("Name", 's', 's', 6, 'e')));
        while (gw->grid->records->count < rows)
            HLListAdd(gw->grid->records, nullptr);
        parent.seen.clear();
        g_events.clear();
    }
    void MakeVirtual(int rows)
    {
        Make(0, rows);
        gw->dataProc = RowSource;
        gw->wFlags |= HGW_VIRTUAL;
    }
    HGRecord* Record(int row) { return (HGRecord*)HLListGetItem(gw->grid->records, row); }
    WORD Status(int row) { return Record(row)->recordStatus; }
    SeenMsg Note(WORD code) const { return {WM_COMMAND, 7, code, grid}; }
    LONG Count() { return gw->grid->records->count; }
};

const LONG kSeven = 7;

TEST_F(GridCells, WriteStoresTheValueMarksTheRecordNotifiesCellChangedAndFillsTheMirror)
{
    Make(0, 2);
    BYTE mirror[12];
    memset(mirror, 0xEE, sizeof mirror);
    gw->recordMirror = mirror;
    SHORT col = -9, row = -9;
    parent.onCommand = [&](const SeenMsg&) { col = gw->notifyCol, row = gw->notifyRow; };
    EXPECT_TRUE(HGSetCellData(grid, 0, 1, &kSeven));
    EXPECT_EQ(0, col); // the written cell, readable during the notification
    EXPECT_EQ(1, row);
    LONG value = 0;
    EXPECT_TRUE(HGGetCellData(grid, 0, 1, &value));
    EXPECT_EQ(7, value);
    EXPECT_EQ(HGR_DIRTY, Status(1));
    EXPECT_EQ(0, Status(0));
    EXPECT_TRUE(SendMessageA(grid, HM_GETMODIFY, 0, 0));
    EXPECT_SEEN(parent, {Note(HGN_CELLCHANGED)});
    ASSERT_TRUE(HGSetCellData(grid, 1, 1, "hi"));
    const BYTE expected[12] = {7, 0, 0, 0, 'h', 'i', 0, 0, 0, 0, 0xEE, 0xEE}; // the record's cell area only
    EXPECT_EQ(0, memcmp(expected, mirror, sizeof mirror));
}

TEST_F(GridCells, ANullWriteZeroFillsAndALongStringIsCutAndStaysTerminated)
{
    Make(0, 1);
    ASSERT_TRUE(HGSetCellData(grid, 0, 0, &kSeven));
    EXPECT_TRUE(HGSetCellData(grid, 0, 0, nullptr));
    LONG value = 99;
    EXPECT_FALSE(HGGetCellData(grid, 0, 0, &value));
    EXPECT_EQ(0, value);
    EXPECT_TRUE(HGSetCellData(grid, 0, 0, &kSeven));
    EXPECT_TRUE(HGGetCellData(grid, 0, 0, &value));
    EXPECT_TRUE(HGSetCellString(grid, 1, 0, "abcdefghij"));
    char cell[8];
    memset(cell, 'x', sizeof cell);
    EXPECT_TRUE(HGGetCellData(grid, 1, 0, cell));
    EXPECT_EQ(0, memcmp(cell, "abcde\0xx", 8)); // size 6: five characters and the terminator
    EXPECT_TRUE(HGSetCellString(grid, 1, 0, "z"));
    EXPECT_TRUE(HGGetCellData(grid, 1, 0, cell));
    EXPECT_EQ(0, memcmp(cell, "z\0\0\0\0\0", 6)); // the whole cell is cleared first
}

TEST_F(GridCells, EveryGridRoutineIsExportedAndTheTwoSetNamesAreOne)
{
    HMODULE dll = GetModuleHandleA("QUILL32.dll");
    ASSERT_TRUE(dll);
    static const char* const kNames[] = {
        "HGridCreate", "HGridEmpty", "HGridDestroy", "HGridCopy", "HGridDup", "HGridChanged", "HGridScale",
        "HGCreateFldMap", "HGFieldCreate", "HGFieldDestroy", "HGFldDup", "HGInsertFld", "HGFixOffsets",
        "HGAppendFld", "HGMoveFld", "HGRemoveFld", "HGFieldAt", "HGMapPosOf", "HGCreateStash", "HGGetStash",
        "StashGrid", "GetStashed", "RemoveStashed", "HGStashFld", "HGGetFldStash", "HGOffsetPtr",
        "HGGetCellData", "HGSetCellData", "HGSetCellString", "HGGetCellText", "HGSetCellText", "HGLoad",
        "HGSave", "HGridLoad", "HGLoadResourceGrid", "HGridInvalidateCell", "HGridInvalidateRange",
    };
    for (const char* name : kNames)
        EXPECT_TRUE(GetProcAddress(dll, name)) << name;
    EXPECT_EQ((void*)GetProcAddress(dll, "HGSetCellData"), (void*)GetProcAddress(dll, "HGSetCellString"));
}

TEST_F(GridCells, BadAddressesAndWindowsOtherThanGridsGiveZeroAndOffsetPtrRefusesThem)
{
    Make(0, 1);
    LONG value = 0;
    char text[8] = "x";
    HWND button = parent.Child("BUTTON", "b", 0, 9);
    const struct { HWND w; int col, row; } kCases[] = {
        {grid, 2, 0}, {grid, -1, 0}, {grid, 0, 1}, {grid, 0, -1}, {button, 0, 0}, {parent.hwnd(), 0, 0}, {nullptr, 0, 0},
    };
    for (const auto& c : kCases) {
        EXPECT_FALSE(HGSetCellData(c.w, c.col, c.row, &kSeven)) << c.col << "," << c.row;
        EXPECT_FALSE(HGGetCellData(c.w, c.col, c.row, &value));
        EXPECT_EQ(0, HGGetCellText(c.w, c.col, c.row, text, sizeof text));
        EXPECT_EQ(0, text[0]);
        EXPECT_FALSE(HGSetCellText(c.w, c.col, c.row, "1"));
    }
    EXPECT_TRUE(parent.seen.empty());
    // The offset pointer adds the field's offset and refuses the column past the last.
    BYTE buffer[16];
    EXPECT_EQ(buffer, HGOffsetPtr(grid, 0, buffer));
    EXPECT_EQ(buffer + 4, HGOffsetPtr(grid, 1, buffer));
    EXPECT_EQ(nullptr, HGOffsetPtr(grid, 2, buffer));
    EXPECT_EQ(nullptr, HGOffsetPtr(grid, -1, buffer));
    EXPECT_EQ(nullptr, HGOffsetPtr(grid, 0, nullptr));
    EXPECT_EQ(nullptr, HGOffsetPtr(parent.hwnd(), 0, buffer));
}

// A host calling the handler itself, without a record or a creation structure,
// gets nothing read through null: the message is left to the tail.
TEST_F(GridCells, TheHandlerWithoutARecordAnswersNothing)
{
    const struct { UINT msg; BOOL notHandled; } kBare[] = {
        {HM_GETSTYLE, TRUE}, {HM_SETSTYLE, TRUE}, {WM_NCDESTROY, TRUE}, {WM_NCCREATE, FALSE},
    };
    for (const auto& b : kBare) {
        BOOL notHandled = FALSE;
        EXPECT_EQ(0, HGridMsgHandler(parent.hwnd(), b.msg, 0, 0, &notHandled, nullptr)) << b.msg;
        EXPECT_EQ(b.notHandled, notHandled) << b.msg;
    }
    EXPECT_EQ(0, HGridMsgHandler(parent.hwnd(), HM_GETSTYLE, 0, 0, nullptr, nullptr));
}

TEST_F(GridCells, AReceiverThatDestroysTheGridEndsTheWrite)
{
    MakeVirtual(1);
    g_answer[4] = 1;
    parent.onCommand = [&](const SeenMsg& m) {
        Log("notify 0x%02lx", m.code);
        DestroyWindow(grid);
    };
    EXPECT_FALSE(HGSetCellData(grid, 0, 0, &kSeven));
    EXPECT_FALSE(IsWindow(grid));
    // No op4; the end's own notice comes once.
    EXPECT_EQ((std::vector<std::string>{"op5 col 0 row 0", "notify 0x13", "notify 0x05"}), g_events);
}

// ---- The new row ----

TEST_F(GridCells, CreationWithNewRowAddsABlankRowMarkedNew)
{
    Open(HGS_NEWROW);
    ASSERT_EQ(1, Count());
    EXPECT_EQ(HGR_NEW, Status(0));
    // The relayout at creation and the first WM_SIZE each tell the new vertical range.
    EXPECT_SEEN(parent, {Note(HGN_ROWADDED), Note(HGN_VRANGE), Note(HGN_VRANGE)});
}

TEST_F(GridCells, WritingTheLastRowWithNewRowAddsTheNextBlankRow)
{
    Make(HGS_NEWROW, 2);
    SHORT col = -9, row = -9;
    parent.onCommand = [&](const SeenMsg& m) {
        if (m.code == HGN_ROWADDED)
            col = gw->notifyCol, row = gw->notifyRow;
    };
    EXPECT_TRUE(HGSetCellData(grid, 0, 1, &kSeven));
    EXPECT_EQ(3, Count());
    EXPECT_EQ(HGR_NEW, Status(2));
    EXPECT_EQ(-1, col);
    EXPECT_EQ(2, row);
    // The relayout after the added row: the range, then the current cell placed again.
    EXPECT_SEEN(parent, {Note(HGN_CELLCHANGED), Note(HGN_ROWADDED), Note(HGN_VRANGE), Note(HGN_EXTENDING),
                         Note(HGN_CELLMOVED)});
    parent.seen.clear();
    EXPECT_TRUE(HGSetCellData(grid, 0, 0, &kSeven)); // not the last row: nothing added
    EXPECT_EQ(3, Count());
    EXPECT_SEEN(parent, {Note(HGN_CELLCHANGED)});
}

// ---- Virtual mode ----

TEST_F(GridCells, VirtualWritesAskTheRowSourceBeforeAndAfter)
{
    const struct {
        const char* name;
        WORD status;      // of the written record before the write
        LONG answer4, answer6;
        std::vector<std::string> events;
        WORD after;       // recordStatus after the write
    } kCases[] = {
        {"stored, kept", 0, 1, 0, {"op5 col 1 row 2", "notify 0x13", "op4 12"}, 0},
        {"stored, not kept", 0, 0, 0, {"op5 col 1 row 2", "notify 0x13", "op4 12"}, HGR_DIRTY},
        {"new, stored", HGR_NEW, 0, 1, {"op5 col 1 row 2", "notify 0x13", "op6 12"}, 0},
        {"new, not stored", HGR_NEW, 0, 0, {"op5 col 1 row 2", "notify 0x13", "op6 12"}, HGR_NEW | HGR_DIRTY},
    };
    for (const auto& c : kCases) {
        MakeVirtual(3);
        gw->rowBase = 10;
        Record(2)->recordStatus = c.status;
        g_answer[4] = c.answer4;
        g_answer[6] = c.answer6;
        EXPECT_TRUE(HGSetCellData(grid, 1, 2, "v"));
        EXPECT_EQ(c.events, g_events) << c.name;
        EXPECT_EQ(c.after, Status(2)) << c.name;
        EXPECT_EQ(c.after != 0, SendMessageA(grid, HM_GETMODIFY, 0, 0) != 0) << c.name;
        DestroyWindow(grid);
    }
}

TEST_F(GridCells, ARefusedVirtualWriteChangesOnlyTheNullBit)
{
    MakeVirtual(1);
    ASSERT_TRUE(HGSetCellData(grid, 0, 0, &kSeven));
    g_events.clear();
    parent.seen.clear();
    g_answer[5] = 1;
    const LONG other = 8;
    EXPECT_FALSE(HGSetCellData(grid, 0, 0, nullptr));
    LONG value = 0;
    EXPECT_FALSE(HGGetCellData(grid, 0, 0, &value)); // null now...
    EXPECT_EQ(7, value);                              // ...with the old bytes
    EXPECT_FALSE(HGSetCellData(grid, 0, 0, &other));
    EXPECT_TRUE(HGGetCellData(grid, 0, 0, &value)); // not null again, still 7
    EXPECT_EQ(7, value);
    EXPECT_EQ((std::vector<std::string>{"op5 col 0 row 0", "op5 col 0 row 0"}), g_events);
    EXPECT_TRUE(parent.seen.empty());
}

// ---- Text forms ----

TEST_F(GridCells, TextIsParsedIntoTheCellAndFormattedBackByItsClass)
{
    const struct {
        char cls, type;
        int size;
        const char* format;
        const char* in;
        const char* out;
    } kCases[] = {
        {'n', 'i', 4, "#,##0", "1234", "1,234"},
        {'n', 'd', 8, "0.00", "2.5", "2.50"},
        {'c', 'd', 8, "$#,##0.00", "$1,234.5", "$1,234.50"},
        {'s', 's', 8, "", "hello", "hello"},
        {'s', 's', 4, "", "hello", "hel"},
        {'d', 'a', 4, "mm/dd/yyyy", "03/15/2024", "03/15/2024"},
        {'t', 't', 6, "hh:mm:ss", "13:05:09", "13:05:09"},
        {'b', 'W', 4, "", "TRUE", "TRUE"},
    };
    for (const auto& c : kCases) {
        Open(0);
        ASSERT_EQ(0, HGAppendFld(gw->grid, Field("F", c.cls, c.type, c.size, 'e', c.format)));
        HLListAdd(gw->grid->records, nullptr);
        EXPECT_TRUE(HGSetCellText(grid, 0, 0, c.in)) << c.in;
        char text[32];
        EXPECT_EQ((int)strlen(c.out), HGGetCellText(grid, 0, 0, text, sizeof text)) << c.in;
        EXPECT_STREQ(c.out, text);
        if (c.cls == 'n' && c.type == 'i') { // stored in its type, not as text
            LONG value = 0;
            EXPECT_TRUE(HGGetCellData(grid, 0, 0, &value));
            EXPECT_EQ(1234, value);
        }
        DestroyWindow(grid);
    }
}

TEST_F(GridCells, KindsWithoutTextAndCodedCellsWithoutEditorGiveNothing)
{
    Open(0);
    ASSERT_EQ(0, HGAppendFld(gw->grid, Field("X", 'n', 'i', 4, 'x')));
    ASSERT_EQ(1, HGAppendFld(gw->grid, HGFieldCreate("C", HGF_CODED, 40, 0, 's', 's', 'n', 'i', 4, 'd', 0, "")));
    HLListAdd(gw->grid->records, nullptr);
    for (int col = 0; col < 2; ++col) {
        char text[8] = "junk";
        EXPECT_EQ(0, HGGetCellText(grid, col, 0, text, sizeof text)) << col;
        EXPECT_STREQ("", text);
        EXPECT_FALSE(HGSetCellText(grid, col, 0, "5")) << col;
    }
    EXPECT_EQ(0, Status(0)); // nothing was written
}

// A stand-in for the editor's list: two items, codes 10 and 20. It logs the
// index of each item copy asked of it; a bad index copies nothing.
LRESULT CALLBACK CodeListProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    static const struct { LONG code; const char* data; } kItems[] = {{10, "ten"}, {20, "twenty"}};
    if (msg == HLM_GETDATA || msg == HLM_GETCODE)
        Log(msg == HLM_GETDATA ? "getdata %ld" : "getcode %ld", (long)wParam);
    for (int i = 0; i < 2; ++i) {
        if ((msg == HLM_FINDCODE && *(const LONG*)lParam == kItems[i].code) ||
            (msg == HLM_FINDDATA && strcmp((const char*)lParam, kItems[i].data) == 0))
            return i;
    }
    if ((msg == HLM_GETDATA || msg == HLM_GETCODE) && wParam < 2) {
        if (msg == HLM_GETDATA)
            strcpy((char*)lParam, kItems[wParam].data);
        else
            *(LONG*)lParam = kItems[wParam].code;
        return 4;
    }
    return msg == HLM_FINDCODE || msg == HLM_FINDDATA ? -1 : DefWindowProcA(hWnd, msg, wParam, lParam);
}

TEST_F(GridCells, ACodedCellIsTranslatedByItsEditorsList)
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = CodeListProc;
    wc.lpszClassName = "FakeCodeList";
    RegisterClassA(&wc);
    HCtlBase editor = {};
    editor.hWnd = CreateWindowExA(0, "FakeCodeList", "", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    Open(0);
    HGField* f = HGFieldCreate("C", HGF_CODED, 40, 0, 's', 's', 'n', 'l', 0, 'l', 0, "");
    f->editor = &editor;
    ASSERT_EQ(0, HGAppendFld(gw->grid, f));
    HLListAdd(gw->grid->records, nullptr);
    // Code in the cell, text shown; text written, code stored. A code or value
    // that no item has still asks the list to copy item -1, which copies nothing:
    // the text is that of a zero value, and the parsed value itself is stored.
    const struct {
        LONG code;
        const char* text;
        const char* written; // then the code stored
        const char* log;
        LONG stored;
    } rows[] = {
        {20, "twenty", "ten", "getdata 1,getcode 0,", 10},
        // The first pair is a string, so the cell takes a string copy cut to 3.
        {30, "", "eleven", "getdata -1,getcode -1,", 'e' | 'l' << 8 | 'e' << 16},
    };
    for (const auto& r : rows) {
        g_events.clear();
        char text[16] = "junk";
        ASSERT_TRUE(HGSetCellData(grid, 0, 0, &r.code));
        EXPECT_EQ((int)strlen(r.text), HGGetCellText(grid, 0, 0, text, sizeof text)) << r.code;
        EXPECT_STREQ(r.text, text);
        EXPECT_TRUE(HGSetCellText(grid, 0, 0, r.written)) << r.written;
        LONG code = 0;
        EXPECT_TRUE(HGGetCellData(grid, 0, 0, &code));
        EXPECT_EQ(r.stored, code) << r.written;
        std::string log;
        for (const std::string& e : g_events)
            if (e.compare(0, 3, "get") == 0)
                log += e + ",";
        EXPECT_EQ(r.log, log) << r.code;
    }
    f->editor = nullptr; // the editor is not the grid's to destroy
    DestroyWindow(editor.hWnd);
}

// ---- Creation ----

TEST_F(GridCells, AWindowNamedAfterAResourceLoadsThatGridWithItsMinimumRows)
{
    // Created hidden: CreateWindowEx itself would add WS_VISIBLE when showing it.
    grid = CreateWindowExA(0, HGRID_CLASS, "ORDERS", WS_CHILD | WS_DLGFRAME, 0, 0, 200, 100, parent.hwnd(),
                           (HMENU)7, GetModuleHandleA(nullptr), nullptr);
    gw = (HGridWindow*)SendMessageA(grid, HM_GETPTR, 0, 0);
    ASSERT_TRUE(gw && gw->grid);
    EXPECT_STREQ("Orders", gw->grid->name);
    EXPECT_EQ(2, gw->grid->fields->count);
    EXPECT_EQ(4, Count());
    // For a child the file's bits of 0x1CB5FFFF win, the creation style's the others.
    const LONG style = GetWindowLongA(grid, GWL_STYLE);
    EXPECT_EQ(0x00010081, style & 0x1CB5FFFF);
    EXPECT_EQ(WS_CHILD | WS_DLGFRAME, style & ~0x1CB5FFFF);
    EXPECT_EQ((DWORD)style, gw->grid->style);
}

} // namespace
