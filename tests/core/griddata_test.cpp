// The grid data model: creation defaults, fields, and the bytes of every record
// after fields are inserted, appended, moved and removed, with and without the map.
#include "grid/grid.h"
#include "container/hllist.h"
#include "seam.h"
#ifndef _WIN32
#include "seam_native.h"
#endif
#include <gtest/gtest.h>
#include <stdio.h>
#include <string.h>
#include <string>
#include <vector>

namespace {

// Records are reached through the ring, not HLListGetItem: a resize leaves the
// list's cursor on the last record with its index unchanged.
HGRecord* RecordAt(HGridData* g, int row)
{
    HLNode* node = g->records->first;
    for (int i = 0; i < row; ++i)
        node = node->next;
    return (HGRecord*)node;
}

void SetStatus(HGridData* g, int row, int field, WORD value)
{
    memcpy(RecordAt(g, row)->cells + g->records->userWord + 2 * field, &value, 2);
}

HGField* StringField(const char* title, int size)
{
    return HGFieldCreate(title, 0, 40, 0, 's', 's', 0, 0, size, 'e', 0, "");
}

// A grid of string fields A, B, C ... of the given sizes; each record's cells
// are the text given, and its status words are 1, 2, 3 ... plus 10 times the row.
HGridData* MakeGrid(DWORD style, std::vector<int> sizes, std::vector<const char*> rows)
{
    HGridData* g = HGridCreate("test", style, 0, 0, 20, 35, 20, 0);
    std::string title = "A";
    for (int size : sizes) {
        EXPECT_GE(HGAppendFld(g, StringField(title.c_str(), size)), 0);
        ++title[0];
    }
    for (size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(strlen(rows[row]), g->records->userWord);
        HLListAdd(g->records, (LPVOID)rows[row]);
        for (size_t i = 0; i < sizes.size(); ++i)
            SetStatus(g, (int)row, (int)i, (WORD)(i + 1 + 10 * row));
    }
    return g;
}

std::string Titles(HGridData* g)
{
    std::string s;
    for (int i = 0; i < g->fields->count; ++i)
        s += HGFieldAt(g, i)->title;
    return s;
}

std::string MapOf(HGridData* g)
{
    std::string s;
    HLNode* node = g->fieldMap ? g->fieldMap->first : nullptr;
    for (LONG i = 0; g->fieldMap && i < g->fieldMap->count; ++i, node = node->next)
        s += std::to_string(HGMapEntry(g->fieldMap, node));
    return s;
}

std::string CellsOf(HGridData* g, int row)
{
    std::string s;
    for (DWORD i = 0; i < g->records->userWord; ++i) {
        BYTE b = RecordAt(g, row)->cells[i];
        char hex[8];
        snprintf(hex, sizeof hex, "<%02X>", b);
        s += !b ? std::string(".") : b >= ' ' && b < 127 ? std::string(1, (char)b) : std::string(hex);
    }
    return s;
}

// The whole state as one line: titles, offsets in display order, the map, then
// per record its status (when set), cells ('.' a zero byte) and status words.
std::string Dump(HGridData* g)
{
    std::string s = Titles(g) + " @";
    LONG total = 0;
    for (int i = 0; i < g->fields->count; ++i) {
        s += (i ? "," : "") + std::to_string(HGFieldAt(g, i)->offset);
        total += HGFieldAt(g, i)->size;
    }
    if (g->fieldMap)
        s += " map " + MapOf(g);
    for (int row = 0; row < g->records->count; ++row) {
        s += " |";
        if (RecordAt(g, row)->recordStatus)
            s += " r" + std::to_string(RecordAt(g, row)->recordStatus);
        s += " " + CellsOf(g, row);
        for (LONG i = 0; i < g->fields->count; ++i) {
            WORD w;
            memcpy(&w, RecordAt(g, row)->cells + g->records->userWord + 2 * i, 2);
            s += " " + std::to_string(w);
        }
    }
    if ((DWORD)total != g->records->userWord || total + 2 * g->fields->count != g->records->itemSize)
        s += " (sizes out of step)";
    return s;
}

// ---- Creation ----

TEST(GridCreate, NegativeMetricsTakeDefaultsInPixelsOrNominalUnits)
{
    DWORD base = SeamBaseUnits(nullptr);
    const int H = 160 / HIWORD(base), W = 140 / LOWORD(base); // the HGO_UNITS defaults
    const struct { DWORD options; int rowHeight, rowHeaderWidth, colHeaderHeight; std::vector<int> expected; } cases[] = {
        {0, -1, -1, -1, {20, 35, 20}},
        {HGO_UNITS, -1, -1, -1, {H, W, H}},
        {HGO_UNITS | 4, -5, -2, -3, {H, W, H}}, // only the low two bits are read
        {3, -1, -1, -1, {20, 35, 20}},
        {2, -1, -1, -1, {20, 35, 20}},
        {HGO_UNITS, 17, 0, 9, {17, 0, 9}}, // values that are not negative stand
    };
    for (const auto& c : cases) {
        HGridData* g = HGridCreate("G", 0, c.options, 0, c.rowHeight, c.rowHeaderWidth, c.colHeaderHeight, 3);
        ASSERT_NE(g, nullptr);
        EXPECT_EQ(c.expected, (std::vector<int>{g->rowHeight, g->rowHeaderWidth, g->colHeaderHeight})) << c.options;
        EXPECT_EQ(c.options, g->options);
        EXPECT_EQ(3, g->minRows);
        HGridDestroy(g);
    }
}

TEST(GridCreate, SetsVersionNameListsAndFrozenColumns)
{
    char name[] = "Orders";
    HGridData* g = HGridCreate(name, HGS_ROWHEADERS, 0, -4, 1, 2, 3, 0);
    name[0] = 'X';
    EXPECT_EQ(HGV_JH, g->version);
    EXPECT_STREQ("Orders", g->name);
    EXPECT_EQ(0, g->frozenCols);
    EXPECT_EQ(nullptr, g->fieldMap);
    EXPECT_EQ(4, g->fields->itemSize);
    EXPECT_EQ(0, g->records->itemSize + (LONG)g->records->userWord);
    HGridDestroy(g);
    g = HGridCreate(nullptr, HGS_FIELDMAP, 0, 2, 1, 2, 3, 0);
    EXPECT_EQ(nullptr, g->name);
    EXPECT_EQ(2, g->frozenCols);
    HGridDestroy(g);
}

// ---- Fields ----

TEST(GridField, SizeComesFromTheStoredTypeUnlessItIsAString)
{
    const struct {
        UINT flags;
        char c1, t1, c2, t2;
        int size;
        char kind;
        const char* format;
        int expected; // -2: GetDataSize of the first pair, -3: of the second
        UINT flagsAfter;
    } cases[] = {
        {0, 's', 's', 0, 0, 30, 'e', "", 30, 0},
        {0, 'n', 'l', 0, 0, 30, 'e', "", -2, 0},
        {HGF_CODED, 'n', 'l', 's', 's', 12, 'd', "", 12, HGF_CODED},
        {HGF_CODED, 's', 's', 'n', 's', 12, 'l', "", -3, HGF_CODED},
        {HGF_CODED, 's', 's', 'n', 's', 12, 'e', "", 12, 0}, // coded only for d and l
        {0, 's', 's', 0, 0, -1, 'e', "####", 5, 0},
        {0, 's', 's', 0, 0, -7, 'e', nullptr, 1, 0},
        {0, 'm', 's', 0, 0, 9, 'e', "(###)", 6, 0}, // masked text: size of its format
        {HGF_HIDDEN | 0x0100, 's', 's', 0, 0, 0, 'c', "", 0, HGF_HIDDEN | 0x0100},
    };
    for (const auto& c : cases) {
        HGField* f = HGFieldCreate("T", c.flags, 50, 80, c.c1, c.t1, c.c2, c.t2, c.size, c.kind, 0x44, c.format);
        ASSERT_NE(f, nullptr);
        int expected = c.expected == -2 ? GetDataSize(c.c1, c.t1) : c.expected == -3 ? GetDataSize(c.c2, c.t2) : c.expected;
        EXPECT_EQ(expected, f->size) << c.c1 << c.t1 << " kind " << c.kind;
        EXPECT_EQ(c.flagsAfter, f->flags) << c.c1 << c.t1 << " kind " << c.kind;
        EXPECT_STREQ(c.format ? c.format : "", f->format);
        EXPECT_EQ(0x44u, f->editorStyle);
        HGFieldDestroy(f);
    }
}

TEST(GridField, DupCopiesValuesAndOffsetButNotTheEditor)
{
    HGField* f = HGFieldCreate("Amount", HGF_READONLY, 60, 10, 'n', 'l', 0, 0, 0, 'e', 7, "#,##0");
    HCtlBase editor = {};
    f->offset = 12;
    f->editor = &editor;
    HGField* d = HGFldDup(f);
    ASSERT_NE(d, nullptr);
    EXPECT_NE(f->title, d->title);
    EXPECT_STREQ("Amount #,##0", (std::string(d->title) + " " + d->format).c_str());
    EXPECT_EQ(12, d->offset);
    EXPECT_EQ(nullptr, d->editor);
    EXPECT_EQ(0, HGFieldCompare(f, d));
    f->editor = nullptr;
    HGFieldDestroy(f);
    HGFieldDestroy(d);
}

TEST(GridField, FoundByTitleWithoutRegardToCaseAndIndexesOutOfRangeRefused)
{
    HGridData* g = MakeGrid(0, {1, 2, 3}, {});
    HGFieldAt(g, 1)->title[0] = 'q';
    LONG index = -1;
    EXPECT_NE(nullptr, HLListFind(g->fields, "Q", 0, &index));
    EXPECT_EQ(1, index);
    EXPECT_EQ(nullptr, HLListFind(g->fields, "Z", 0, nullptr));
    EXPECT_EQ(nullptr, HGFieldAt(g, -1));
    EXPECT_EQ(nullptr, HGFieldAt(g, 3));
    EXPECT_EQ(2, HGMapPosOf(g, 2));
    EXPECT_EQ(-1, HGMapPosOf(g, 3));
    HGridDestroy(g);
}

// A field whose cell would push the cell area to 32,768 bytes is refused and
// stays its caller's.
TEST(GridField, CellAreaStaysBelowThirtyTwoKilobytes)
{
    HGridData* g = MakeGrid(0, {30000}, {});
    HGField* big = StringField("Big", 2768);
    EXPECT_EQ(-1, HGAppendFld(g, big));
    EXPECT_EQ(-1, HGInsertFld(g, big, 0));
    EXPECT_EQ(1, g->fields->count);
    big->size = 2767;
    EXPECT_EQ(1, HGAppendFld(g, big));
    EXPECT_EQ(32767u, g->records->userWord);
    HGField* negative = StringField("Neg", 1);
    negative->size = -1;
    EXPECT_EQ(-1, HGAppendFld(g, negative));
    HGFieldDestroy(negative);
    HGridDestroy(g);
}

TEST(GridNull, EveryCallRefusesANullGrid)
{
    HGridWindow window = {};
    EXPECT_EQ(nullptr, HGFieldAt(nullptr, 0));
    EXPECT_EQ(-1, HGMapPosOf(nullptr, 0));
    EXPECT_EQ(-1, HGMoveFld(nullptr, 0, 1));
    EXPECT_FALSE(HGRemoveFld(nullptr, 0));
    EXPECT_FALSE(HGRemoveFld(&window, 0));
    EXPECT_FALSE(HGridEmpty(nullptr));
    EXPECT_FALSE(HGCreateFldMap(nullptr));
    EXPECT_FALSE(HGridScale(nullptr, nullptr, nullptr));
    EXPECT_EQ(nullptr, HGFldDup(nullptr));
    EXPECT_FALSE(HGFieldDestroy(nullptr));
    HGridData* g = MakeGrid(0, {1}, {});
    EXPECT_FALSE(HGridCopy(nullptr, g));
    EXPECT_FALSE(HGridCopy(g, nullptr));
    HGridDestroy(g);
}

// ---- Re-laying records ----

// The window side's two calls, logged.
struct HookLog {
    int closes = 0, clamps = 0;
    LONG first = 0, second = 0;
} g_hookLog;

BOOL LogEditorClose(HGridWindow*)
{
    ++g_hookLog.closes;
    return TRUE;
}
BOOL LogClamp(HGridWindow*, LONG a, LONG b)
{
    ++g_hookLog.clamps;
    g_hookLog.first = a;
    g_hookLog.second = b;
    return TRUE;
}

class GridLayout : public ::testing::Test {
protected:
    void SetUp() override
    {
        g_hookLog = HookLog();
        g_gridWindowHooks = {LogEditorClose, LogClamp};
    }
    void TearDown() override
    {
        g_gridWindowHooks = {};
        HGridDestroy(window.grid);
    }
    HGridWindow window = {};
};

// Fields A (2 bytes "aa"), B (3 bytes "bbb"), C (1 byte "c"), two records with
// status words 1 2 3 and 11 12 13; the second record is dirty and marked (r9).
// Insert and append add a field N of the given size.
TEST_F(GridLayout, EveryEditReLaysEachRecord)
{
    struct Op {
        char kind; // 'i'nsert (index, size), 'a'ppend (size), 'm'ove (from, to), 'r'emove (index)
        int a, b, result;
    };
    const struct {
        DWORD style;
        std::vector<Op> ops;
        const char* state;
    } cases[] = {
        // Insert opens a zero cell and a zero status word; out of range appends.
        {0, {{'i', 0, 2, 0}}, "NABC @0,2,4,7 | ..aabbbc 0 1 2 3 | r9 ..aabbbc 0 11 12 13"},
        {0, {{'i', 1, 2, 1}}, "ANBC @0,2,4,7 | aa..bbbc 1 0 2 3 | r9 aa..bbbc 11 0 12 13"},
        {0, {{'i', 3, 2, 3}}, "ABCN @0,2,5,6 | aabbbc.. 1 2 3 0 | r9 aabbbc.. 11 12 13 0"},
        {0, {{'i', -1, 2, 3}}, "ABCN @0,2,5,6 | aabbbc.. 1 2 3 0 | r9 aabbbc.. 11 12 13 0"},
        {0, {{'i', 99, 2, 3}}, "ABCN @0,2,5,6 | aabbbc.. 1 2 3 0 | r9 aabbbc.. 11 12 13 0"},
        // Append does not re-lay: the old status words end up inside the new cell.
        {0, {{'a', 0, 3, 3}}, "ABCN @0,2,5,6 | aabbbc<01>.<02> 768 0 0 0 | r9 aabbbc<0B>.<0C> 3328 0 0 0"},
        // Move without the map carries cells and status words.
        {0, {{'m', 0, 2, 2}}, "BCA @0,3,4 | bbbcaa 2 3 1 | r9 bbbcaa 12 13 11"},
        {0, {{'m', 2, 0, 0}}, "CAB @0,1,3 | caabbb 3 1 2 | r9 caabbb 13 11 12"},
        {0, {{'m', 0, 1, 1}}, "BAC @0,3,5 | bbbaac 2 1 3 | r9 bbbaac 12 11 13"},
        {0, {{'m', 1, 0, 0}}, "BAC @0,3,5 | bbbaac 2 1 3 | r9 bbbaac 12 11 13"},
        {0, {{'m', 1, 2, 2}}, "ACB @0,2,3 | aacbbb 1 3 2 | r9 aacbbb 11 13 12"},
        {0, {{'m', 2, 1, 1}}, "ACB @0,2,3 | aacbbb 1 3 2 | r9 aacbbb 11 13 12"},
        {0, {{'m', 0, 0, -1}, {'m', -1, 1, -1}, {'m', 0, 3, -1}, {'m', 3, 0, -1}, {'m', 1, -1, -1}},
         "ABC @0,2,5 | aabbbc 1 2 3 | r9 aabbbc 11 12 13"},
        // Remove without the map closes the cell and its status word.
        {0, {{'r', 0, 0, 1}}, "BC @0,3 | bbbc 2 3 | r9 bbbc 12 13"},
        {0, {{'r', 1, 0, 1}}, "AC @0,2 | aac 1 3 | r9 aac 11 13"},
        {0, {{'r', 2, 0, 1}}, "AB @0,2 | aabbb 1 2 | r9 aabbb 11 12"},
        {0, {{'r', 3, 0, 0}, {'r', -1, 0, 0}}, "ABC @0,2,5 | aabbbc 1 2 3 | r9 aabbbc 11 12 13"},
        // With the map, moves touch no record byte; status words stay by column index.
        {HGS_FIELDMAP, {{'m', 0, 2, 2}}, "BCA @2,5,0 map 201 | aabbbc 1 2 3 | r9 aabbbc 11 12 13"},
        {HGS_FIELDMAP, {{'m', 0, 2, 2}, {'m', 2, 1, 1}}, "BAC @2,0,5 map 102 | aabbbc 1 2 3 | r9 aabbbc 11 12 13"},
        // Insert keeps storage order in step: N is stored at the display index given.
        {HGS_FIELDMAP, {{'m', 1, 0, 0}, {'i', 1, 1, 1}}, "BNAC @3,2,0,6 map 2103 | aa.bbbc 1 0 2 3 | r9 aa.bbbc 11 0 12 13"},
        {HGS_FIELDMAP, {{'a', 0, 1, 3}}, "ABCN @0,2,5,6 map 0123 | aabbbc<01> 512 768 0 0 | r9 aabbbc<0B> 3072 3328 0 0"},
        // Remove renumbers entries and closes the stored cell; the word closed is that
        // of the first storage position holding index 0 after renumbering (C).
        {HGS_FIELDMAP, {{'m', 0, 2, 2}, {'r', 0, 0, 1}}, "CA @2,0 map 10 | aac 1 3 | r9 aac 11 13"},
    };
    for (const auto& c : cases) {
        HGridDestroy(window.grid);
        window.grid = MakeGrid(c.style, {2, 3, 1}, {"aabbbc", "aabbbc"});
        RecordAt(window.grid, 1)->recordStatus = HGR_DIRTY | HGR_MARKED;
        std::string trace;
        for (const Op& op : c.ops) {
            int result = op.kind == 'i' ? HGInsertFld(window.grid, StringField("N", op.b), op.a)
                       : op.kind == 'a' ? HGAppendFld(window.grid, StringField("N", op.b))
                       : op.kind == 'm' ? HGMoveFld(window.grid, op.a, op.b)
                                        : HGRemoveFld(&window, op.a);
            EXPECT_EQ(op.result, result) << op.kind << op.a << "," << op.b;
            trace += op.kind + std::to_string(op.a) + " ";
        }
        EXPECT_EQ(c.state, Dump(window.grid)) << trace;
    }
}

TEST_F(GridLayout, RemoveClosesTheEditorOnlyForTheCurrentColumnAndClampsWithCurrentRowFirst)
{
    window.grid = MakeGrid(0, {1, 1, 1}, {"abc"});
    window.curCol = 1;
    window.curRow = 4;
    window.anchorRow = 2;
    window.rowBase = 100;
    EXPECT_TRUE(HGRemoveFld(&window, 0));
    EXPECT_EQ(0, g_hookLog.closes);
    EXPECT_EQ(1, g_hookLog.clamps);
    EXPECT_EQ(104, g_hookLog.first);
    EXPECT_EQ(102, g_hookLog.second);
    EXPECT_TRUE(HGRemoveFld(&window, 1));
    EXPECT_EQ(1, g_hookLog.closes);
    EXPECT_FALSE(HGRemoveFld(&window, 1));
    EXPECT_EQ(2, g_hookLog.clamps); // a refused index clamps nothing
}

TEST(GridRecords, ResizeLeavesTheCursorOnTheLastRecordAndItsIndexAlone)
{
    HGridData* g = MakeGrid(0, {1}, {"a", "b", "c"});
    HLListGetItem(g->records, 1);
    HGInsertFld(g, StringField("N", 1), 0);
    EXPECT_EQ((HLNode*)RecordAt(g, 2), g->records->cursor);
    EXPECT_EQ((HLNode*)RecordAt(g, 2), g->records->last);
    EXPECT_EQ(1, g->records->cursorIndex);
    EXPECT_EQ((HLNode*)RecordAt(g, 0), g->records->last->next);
    HGridDestroy(g);
}

TEST(GridRecords, FixOffsetsMovesNoByteAndEmptyKeepsFieldsAndSizes)
{
    HGridData* g = MakeGrid(0, {2, 3}, {"abXYZ", "cdUVW"});
    HGFieldAt(g, 0)->size = 4;
    HGFixOffsets(g);
    EXPECT_EQ('a', RecordAt(g, 0)->cells[0]);
    EXPECT_TRUE(HGridEmpty(g));
    EXPECT_EQ("AB @0,4", Dump(g)); // with sizes 7 and 11
    EXPECT_EQ(11, g->records->itemSize);
    HGridDestroy(g);
}

// ---- Copies and comparison ----

TEST(GridCopy, DupGivesDeepFieldsAndTheSameCellBytesWithoutStatus)
{
    HGridData* g = MakeGrid(HGS_FIELDMAP | HGS_ROWHEADERS, {2, 3}, {"abXYZ", "cdUVW"});
    g->options = 0x55;
    g->minRows = 9;
    g->version = HGV_IH;
    SetStatus(g, 0, 1, HGC_NULL);
    RecordAt(g, 1)->recordStatus = HGR_DIRTY;
    HGMoveFld(g, 1, 0);
    EXPECT_EQ(1, HGMapPosOf(g, 0));
    EXPECT_EQ(0, HGMapPosOf(g, 1));
    HGridData* d = HGridDup(g);
    ASSERT_NE(d, nullptr);
    EXPECT_FALSE(HGridChanged(g, d));
    EXPECT_EQ(0x55u, d->options);
    EXPECT_EQ(HGV_IH, d->version);
    EXPECT_NE(g->name, d->name);
    EXPECT_STREQ("test", d->name);
    EXPECT_NE(HGFieldAt(g, 0), HGFieldAt(d, 0));
    EXPECT_EQ("BA @2,0 map 10 | abXYZ 0 0 | cdUVW 0 0", Dump(d));
    HGridDestroy(g);
    HGridDestroy(d);
    // A map made on request is not duplicated.
    g = MakeGrid(0, {1, 1}, {});
    HGCreateFldMap(g);
    d = HGridDup(g);
    EXPECT_EQ(nullptr, d->fieldMap);
    HGridDestroy(g);
    HGridDestroy(d);
}

TEST(GridCopy, CopyAppendsToWhatTheDestinationHas)
{
    HGridData* src = MakeGrid(0, {2}, {"ab"});
    HGridData* dst = MakeGrid(0, {2}, {"zz"});
    EXPECT_TRUE(HGridCopy(dst, src));
    EXPECT_EQ("AA", Titles(dst));
    EXPECT_EQ(2, dst->records->count);
    EXPECT_EQ("zz", CellsOf(dst, 0));
    EXPECT_EQ("ab", CellsOf(dst, 1));
    HGridDestroy(dst);
    // Records already there are given the source's size before the copy: the
    // old status word becomes a cell byte.
    dst = MakeGrid(0, {1}, {"q"});
    EXPECT_TRUE(HGridCopy(dst, src));
    EXPECT_EQ(src->records->itemSize, dst->records->itemSize);
    EXPECT_EQ(2u, dst->records->userWord);
    EXPECT_EQ("q<01>", CellsOf(dst, 0));
    EXPECT_EQ("ab", CellsOf(dst, 1));
    HGridDestroy(src);
    HGridDestroy(dst);
}

TEST(GridChanged, ComparesHeadNameAndFieldsOnly)
{
    const struct {
        const char* what;
        void (*change)(HGridData*);
        bool changed;
    } cases[] = {
        {"nothing", [](HGridData*) {}, false},
        {"options", [](HGridData* g) { g->options = 77; }, false},
        {"records", [](HGridData* g) { HLListAdd(g->records, (LPVOID) "zzzzz"); }, false},
        {"offsets", [](HGridData* g) { HGFieldAt(g, 1)->offset = 40; }, false},
        {"map", [](HGridData* g) { HGCreateFldMap(g); }, false},
        {"version", [](HGridData* g) { g->version = HGV_GH; }, true},
        {"style", [](HGridData* g) { g->style ^= HGS_NEWROW; }, true},
        {"minRows", [](HGridData* g) { g->minRows = 4; }, true},
        {"name", [](HGridData* g) { g->name[0] = 'T'; }, true},
        {"title case", [](HGridData* g) { HGFieldAt(g, 0)->title[0] = 'a'; }, true},
        {"width", [](HGridData* g) { HGFieldAt(g, 1)->width = 3; }, true},
        {"editorStyle", [](HGridData* g) { HGFieldAt(g, 1)->editorStyle = 3; }, true},
        {"one field fewer", [](HGridData* g) { HLListRemove(g->fields, 1); }, true},
    };
    for (const auto& c : cases) {
        HGridData* a = MakeGrid(0, {2, 3}, {"abXYZ"});
        HGridData* b = HGridDup(a);
        c.change(b);
        EXPECT_EQ(c.changed, !!HGridChanged(a, b)) << c.what;
        EXPECT_EQ(c.changed, !!HGridChanged(b, a)) << c.what;
        EXPECT_EQ((HLLISTCOMPAREPROC)HGFieldNodeCompare, a->fields->pfnCompare);
        HGridDestroy(a);
        HGridDestroy(b);
    }
}

// ---- Scaling ----

TEST(GridScale, FromNominalUnitsToTheSystemFontRoundsToNearest)
{
    DWORD base = SeamBaseUnits(nullptr);
    int ux = LOWORD(base), uy = HIWORD(base);
    HGridData* g = MakeGrid(0, {1}, {});
    g->rowHeight = 21;
    g->rowHeaderWidth = 35;
    g->colHeaderHeight = 7;
    HGFieldAt(g, 0)->width = 41;
    HGFieldAt(g, 0)->height = 13;
    for (HFONT to : {(HFONT) nullptr, (HFONT)(INT_PTR)-1}) { // the second call scales by one
        EXPECT_TRUE(HGridScale(g, (HFONT)(INT_PTR)-1, to));
        EXPECT_EQ((int)(21.0 * uy / 8 + 0.5), g->rowHeight);
        EXPECT_EQ((int)(35.0 * ux / 4 + 0.5), g->rowHeaderWidth);
        EXPECT_EQ((int)(7.0 * uy / 8 + 0.5), g->colHeaderHeight);
        EXPECT_EQ((int)(41.0 * ux / 4 + 0.5), HGFieldAt(g, 0)->width);
        EXPECT_EQ((int)(13.0 * uy / 8 + 0.5), HGFieldAt(g, 0)->height);
    }
    HGridDestroy(g);
}

#ifndef _WIN32
DWORD FakeUnits(HFONT f) { return f == (HFONT)(INT_PTR)0x10 ? 0 : f ? MAKELONG(6, 12) : MAKELONG(8, 16); }

TEST(GridScale, AZeroFromUnitChangesNothing)
{
    SeamNativeSetBaseUnitsHook(FakeUnits);
    HGridData* g = MakeGrid(0, {1}, {});
    g->rowHeight = 20;
    EXPECT_FALSE(HGridScale(g, (HFONT)(INT_PTR)0x10, nullptr));
    EXPECT_EQ(20, g->rowHeight);
    EXPECT_TRUE(HGridScale(g, (HFONT)(INT_PTR)0x20, nullptr)); // 12 high to 16 high
    EXPECT_EQ(27, g->rowHeight);                                 // 26.67 rounds up
    SeamNativeSetBaseUnitsHook(nullptr);
    HGridDestroy(g);
}

TEST(GridField, DestroyingAFieldDestroysItsLiveEditorWindow)
{
    HCtlBase editor = {};
    editor.hWnd = (HWND)(INT_PTR)0x1234;
    HGField* f = StringField("E", 1);
    f->editor = &editor;
    int before = SeamNativeDestroyedWindows();
    HGFieldDestroy(f);
    EXPECT_EQ(before + 1, SeamNativeDestroyedWindows());
}
#endif

// The map of the style (2-byte entries) and the one made on request (4-byte
// entries, style untouched) both hold the identity, and both are searched by a
// 32-bit value, which HGCompareInts reads from each entry.
TEST(GridMap, BothKindsHoldTheIdentityAndAreSearchedByValue)
{
    const struct {
        DWORD style;
        bool onRequest;
        LONG itemSize;
    } cases[] = {{HGS_FIELDMAP, false, 2}, {HGS_ROWHEADERS, true, 4}};
    for (const auto& c : cases) {
        HGridData* g = MakeGrid(c.style, {1, 1, 1}, {});
        if (c.onRequest)
            EXPECT_TRUE(HGCreateFldMap(g));
        ASSERT_NE(nullptr, g->fieldMap);
        EXPECT_EQ(c.itemSize, g->fieldMap->itemSize);
        EXPECT_EQ("012", MapOf(g));
        EXPECT_EQ(c.style, g->style);
        for (LONG value = 0; value < 3; ++value) {
            LONG found = -1;
            EXPECT_NE(nullptr, HLListFind(g->fieldMap, &value, 0, &found)) << c.itemSize;
            EXPECT_EQ(value, found) << c.itemSize;
        }
        EXPECT_FALSE(HGCreateFldMap(g));
        if (c.onRequest) { // appending does not keep a map made on request in step
            HGAppendFld(g, StringField("D", 1));
            EXPECT_EQ("012", MapOf(g));
        }
        HGridDestroy(g);
    }
}

// ---- Stash ----

TEST(GridStash, FindsByOwnerAndFoldedNameCutToTwelveAndCopiesOwnGrids)
{
    HGCreateStash();
    ASSERT_NE(nullptr, HGGetStash());
    LONG base = HGGetStash()->count;
    OFSTRUCT of = {};
    of.cBytes = sizeof of;
    strcpy(of.szPathName, "C:\\GRIDS\\ORDERS.GRS");
    StashGrid(HGridCreate("one", 0, 0, 0, 1, 1, 1, 0), 7, "OrdersAndLinesX", &of);
    StashGrid(HGridCreate("two", 0, 0, 0, 1, 1, 1, 0), 8, "OrdersAndLinesX", nullptr);
    StashGrid(HGridCreate("dup", 0, 0, 0, 1, 1, 1, 0), 7, "ordersandlines", nullptr);
    EXPECT_EQ(base + 3, HGGetStash()->count);

    LONG index = -1;
    HGStashEntry* e = GetStashed(7, "ORDERSANDLINES", &index);
    ASSERT_NE(nullptr, e);
    EXPECT_STREQ("OrdersAndLin", e->name);
    EXPECT_STREQ("one", e->grid->name); // the second entry of the key is never found
    EXPECT_EQ(base, index);
    EXPECT_STREQ("C:\\GRIDS\\ORDERS.GRS", e->file.szPathName);
    HGStashEntry* other = GetStashed(8, "ordersandlin", nullptr);
    ASSERT_NE(nullptr, other);
    EXPECT_STREQ("two", other->grid->name);
    EXPECT_EQ(0, other->file.cBytes);
    EXPECT_EQ(nullptr, GetStashed(9, "ordersandlin", &index));
    EXPECT_EQ(0, index);

    HLList* copy = HLListDup(HGGetStash());
    ASSERT_NE(nullptr, copy);
    HGStashEntry* dup = (HGStashEntry*)HLListFind(copy, e, 0, nullptr);
    ASSERT_NE(nullptr, dup);
    EXPECT_NE(e->grid, dup->grid);
    EXPECT_STREQ("one", dup->grid->name);
    HLListDestroy(copy);

    EXPECT_TRUE(RemoveStashed(7, "OrdersAndLin"));
    e = GetStashed(7, "OrdersAndLin", nullptr);
    ASSERT_NE(nullptr, e);
    EXPECT_STREQ("dup", e->grid->name);
    EXPECT_TRUE(RemoveStashed(7, "OrdersAndLin"));
    EXPECT_TRUE(RemoveStashed(8, "OrdersAndLin"));
    EXPECT_FALSE(RemoveStashed(8, "OrdersAndLin"));
    EXPECT_EQ(base, HGGetStash()->count);
}

} // namespace
