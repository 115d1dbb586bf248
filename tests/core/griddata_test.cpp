// The grid data model: creation defaults, fields, and the bytes of every record
// after fields are inserted, appended, moved and removed, with and without the map.
#include "grid/grid.h"
#include "container/hllist.h"
#include "seam.h"
#ifndef _WIN32
#include "seam_native.h"
#endif
#include <gtest/gtest.h>
#include <string.h>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<BYTE>;

// Records are reached through the ring, not HLListGetItem: a resize leaves the
// list's cursor on the last record with its index unchanged.
HGRecord* RecordAt(HGridData* g, int row)
{
    HLNode* node = g->records->first;
    for (int i = 0; i < row; ++i)
        node = node->next;
    return (HGRecord*)node;
}

Bytes CellsOf(HGridData* g, int row)
{
    HGRecord* r = RecordAt(g, row);
    return Bytes(r->cells, r->cells + g->records->userWord);
}

Bytes StatusOf(HGridData* g, int row)
{
    HGRecord* r = RecordAt(g, row);
    Bytes words;
    for (LONG i = 0; i < g->fields->count; ++i) {
        WORD w;
        memcpy(&w, r->cells + g->records->userWord + 2 * i, 2);
        words.push_back((BYTE)w);
    }
    return words;
}

void SetStatus(HGridData* g, int row, int field, WORD value)
{
    memcpy(RecordAt(g, row)->cells + g->records->userWord + 2 * field, &value, 2);
}

Bytes Text(const char* s) { return Bytes(s, s + strlen(s)); }

HGField* StringField(const char* title, int size)
{
    return HGFieldCreate(title, 0, 40, 0, 's', 's', 0, 0, size, 'e', 0, "");
}

// A grid of string fields with the given sizes; each record's cells are the
// text given, and its status words are 1, 2, 3 ... plus 10 times the row.
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

std::vector<int> MapOf(HGridData* g)
{
    std::vector<int> v;
    HLNode* node = g->fieldMap ? g->fieldMap->first : nullptr;
    for (LONG i = 0; g->fieldMap && i < g->fieldMap->count; ++i, node = node->next)
        v.push_back(HGMapEntry(g->fieldMap, node));
    return v;
}

void ExpectSizesConsistent(HGridData* g)
{
    LONG total = 0;
    for (int i = 0; i < g->fields->count; ++i)
        total += HGFieldAt(g, i)->size;
    EXPECT_EQ((DWORD)total, g->records->userWord);
    EXPECT_EQ(total + 2 * g->fields->count, g->records->itemSize);
}

// ---- Creation ----

struct CreateCase {
    DWORD options;
    int rowHeight, rowHeaderWidth, colHeaderHeight;
    bool units; // expect the HGO_UNITS rule for negative values
};

TEST(GridCreate, NegativeMetricsTakeDefaultsInPixelsOrNominalUnits)
{
    DWORD base = SeamBaseUnits(nullptr);
    int ux = LOWORD(base), uy = HIWORD(base);
    const CreateCase cases[] = {
        {0, -1, -1, -1, false},
        {HGO_UNITS, -1, -1, -1, true},
        {HGO_UNITS | 4, -5, -2, -3, true}, // only the low two bits are read
        {3, -1, -1, -1, false},
        {2, -1, -1, -1, false},
        {HGO_UNITS, 17, 0, 9, true},        // values that are not negative stand
    };
    for (const CreateCase& c : cases) {
        HGridData* g = HGridCreate("G", 0, c.options, 0, c.rowHeight, c.rowHeaderWidth, c.colHeaderHeight, 3);
        ASSERT_NE(g, nullptr);
        int rh = c.rowHeight >= 0 ? c.rowHeight : c.units ? 160 / uy : 20;
        int rw = c.rowHeaderWidth >= 0 ? c.rowHeaderWidth : c.units ? 140 / ux : 35;
        int ch = c.colHeaderHeight >= 0 ? c.colHeaderHeight : c.units ? 160 / uy : 20;
        EXPECT_EQ(rh, g->rowHeight) << "options " << c.options;
        EXPECT_EQ(rw, g->rowHeaderWidth) << "options " << c.options;
        EXPECT_EQ(ch, g->colHeaderHeight) << "options " << c.options;
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
    EXPECT_EQ(0, g->records->itemSize);
    EXPECT_EQ(0u, g->records->userWord);
    HGridDestroy(g);

    g = HGridCreate(nullptr, HGS_FIELDMAP, 0, 2, 1, 2, 3, 0);
    EXPECT_EQ(nullptr, g->name);
    EXPECT_EQ(2, g->frozenCols);
    ASSERT_NE(nullptr, g->fieldMap);
    EXPECT_EQ(2, g->fieldMap->itemSize);
    HGridDestroy(g);
}

// ---- Fields ----

TEST(GridField, SizeComesFromTheStoredTypeUnlessItIsAString)
{
    struct Case {
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
        {0, 'm', 's', 0, 0, 9, 'e', "(###)", 6, 0},          // masked text: size of its format
        {HGF_HIDDEN | 0x0100, 's', 's', 0, 0, 0, 'c', "", 0, HGF_HIDDEN | 0x0100},
    };
    for (const Case& c : cases) {
        HGField* f = HGFieldCreate("T", c.flags, 50, 80, c.c1, c.t1, c.c2, c.t2, c.size, c.kind, 0x44, c.format);
        ASSERT_NE(f, nullptr);
        int expected = c.expected == -2 ? GetDataSize(c.c1, c.t1)
                     : c.expected == -3 ? GetDataSize(c.c2, c.t2) : c.expected;
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
    EXPECT_STREQ("Amount", d->title);
    EXPECT_STREQ("#,##0", d->format);
    EXPECT_EQ(12, d->offset);
    EXPECT_EQ(nullptr, d->editor);
    EXPECT_EQ(0, HGFieldCompare(f, d));
    f->editor = nullptr;
    HGFieldDestroy(f);
    HGFieldDestroy(d);
    EXPECT_EQ(nullptr, HGFldDup(nullptr));
    EXPECT_FALSE(HGFieldDestroy(nullptr));
}

TEST(GridField, FieldsAreFoundByTitleWithoutRegardToCase)
{
    HGridData* g = MakeGrid(0, {1, 2, 3}, {});
    HGFieldAt(g, 1)->title[0] = 'q';
    LONG index = -1;
    LPVOID node = HLListFind(g->fields, "Q", 0, &index);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(1, index);
    EXPECT_EQ(nullptr, HLListFind(g->fields, "Z", 0, nullptr));
    HGridDestroy(g);
}

TEST(GridField, FieldAtAndMapPosRejectIndexesOutOfRange)
{
    HGridData* g = MakeGrid(0, {1, 2}, {});
    EXPECT_EQ(nullptr, HGFieldAt(g, -1));
    EXPECT_EQ(nullptr, HGFieldAt(g, 2));
    EXPECT_EQ(nullptr, HGFieldAt(nullptr, 0));
    EXPECT_STREQ("B", HGFieldAt(g, 1)->title);
    EXPECT_EQ(1, HGMapPosOf(g, 1));
    EXPECT_EQ(-1, HGMapPosOf(g, 2));
    EXPECT_EQ(-1, HGMapPosOf(nullptr, 0));
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

// ---- Re-laying records ----

// Fields A (2 bytes) and B (3 bytes), two records "abXYZ" with status words
// 1, 2 and 11, 12; the new field N takes 2 bytes.
TEST(GridInsert, OpensAZeroCellAndAZeroStatusWordInEveryRecord)
{
    struct Case {
        int index, at;
        const char* titles;
        const char* cells; // '.' stands for a zero byte
        Bytes status;
    } cases[] = {
        {0, 0, "NAB", "..abXYZ", {0, 1, 2}},
        {1, 1, "ANB", "ab..XYZ", {1, 0, 2}},
        {2, 2, "ABN", "abXYZ..", {1, 2, 0}},
        {-1, 2, "ABN", "abXYZ..", {1, 2, 0}}, // out of range appends
        {99, 2, "ABN", "abXYZ..", {1, 2, 0}},
    };
    for (const Case& c : cases) {
        HGridData* g = MakeGrid(0, {2, 3}, {"abXYZ", "abXYZ"});
        RecordAt(g, 1)->recordStatus = HGR_DIRTY | HGR_MARKED;
        EXPECT_EQ(c.at, HGInsertFld(g, StringField("N", 2), c.index));
        EXPECT_EQ(c.titles, Titles(g));
        for (int row = 0; row < 2; ++row) {
            Bytes cells = Text(c.cells);
            for (BYTE& b : cells)
                b = b == '.' ? 0 : b;
            EXPECT_EQ(cells, CellsOf(g, row)) << "index " << c.index;
            Bytes status = c.status;
            for (BYTE& b : status)
                b += b && row ? 10 : 0;
            EXPECT_EQ(status, StatusOf(g, row)) << "index " << c.index;
        }
        EXPECT_EQ(0, RecordAt(g, 0)->recordStatus);
        EXPECT_EQ(HGR_DIRTY | HGR_MARKED, RecordAt(g, 1)->recordStatus);
        ExpectSizesConsistent(g);
        HGridDestroy(g);
    }
}

TEST(GridInsert, WithTheMapKeepsStorageOrderInStep)
{
    HGridData* g = MakeGrid(HGS_FIELDMAP, {2, 3}, {"abXYZ"});
    EXPECT_EQ((std::vector<int>{0, 1}), MapOf(g));
    // Storage holds B before A once the map says so.
    HGMoveFld(g, 1, 0);
    EXPECT_EQ("BA", Titles(g));
    EXPECT_EQ((std::vector<int>{1, 0}), MapOf(g));
    EXPECT_EQ(Text("abXYZ"), CellsOf(g, 0));

    EXPECT_EQ(1, HGInsertFld(g, StringField("N", 1), 1));
    EXPECT_EQ("BNA", Titles(g));
    EXPECT_EQ((std::vector<int>{2, 1, 0}), MapOf(g));
    // A (2 bytes) is stored first, then N at storage position 1, then B.
    EXPECT_EQ(0, HGFieldAt(g, 2)->offset);
    EXPECT_EQ(2, HGFieldAt(g, 1)->offset);
    EXPECT_EQ(3, HGFieldAt(g, 0)->offset);
    EXPECT_EQ((Bytes{'a', 'b', 0, 'X', 'Y', 'Z'}), CellsOf(g, 0));
    EXPECT_EQ(1, HGMapPosOf(g, 1));
    EXPECT_EQ(2, HGMapPosOf(g, 0));
    ExpectSizesConsistent(g);
    HGridDestroy(g);
}

// Appending does not re-lay: the old status words end up inside the new cell.
TEST(GridAppend, LeavesOldStatusWordsInsideTheNewCell)
{
    HGridData* g = MakeGrid(0, {2}, {"ab"});
    SetStatus(g, 0, 0, 0x0201);
    EXPECT_EQ(1, HGAppendFld(g, StringField("N", 3)));
    EXPECT_EQ((Bytes{'a', 'b', 0x01, 0x02, 0}), CellsOf(g, 0));
    EXPECT_EQ((Bytes{0, 0}), StatusOf(g, 0));
    EXPECT_EQ(2, HGFieldAt(g, 1)->offset);
    ExpectSizesConsistent(g);
    HGridDestroy(g);
}

TEST(GridAppend, WithTheStyleAddsTheOldCountToTheMap)
{
    HGridData* g = MakeGrid(HGS_FIELDMAP, {1, 1, 1}, {});
    EXPECT_EQ((std::vector<int>{0, 1, 2}), MapOf(g));
    HGridDestroy(g);
    g = MakeGrid(0, {1, 1}, {});
    EXPECT_TRUE(HGCreateFldMap(g));
    HGAppendFld(g, StringField("C", 1));
    EXPECT_EQ((std::vector<int>{0, 1}), MapOf(g)); // out of step: the caller's affair
    HGridDestroy(g);
}

// Fields A (2 bytes "aa"), B (3 bytes "bbb"), C (1 byte "c"); status words 1, 2, 3.
TEST(GridMove, WithoutTheMapCarriesCellsAndStatusWords)
{
    struct Case {
        int from, to;
        const char* titles;
        const char* cells;
        Bytes status;
    } cases[] = {
        {0, 2, "BCA", "bbbcaa", {2, 3, 1}},
        {2, 0, "CAB", "caabbb", {3, 1, 2}},
        {0, 1, "BAC", "bbbaac", {2, 1, 3}},
        {1, 0, "BAC", "bbbaac", {2, 1, 3}},
        {1, 2, "ACB", "aacbbb", {1, 3, 2}},
        {2, 1, "ACB", "aacbbb", {1, 3, 2}},
    };
    for (const Case& c : cases) {
        HGridData* g = MakeGrid(0, {2, 3, 1}, {"aabbbc", "aabbbc"});
        EXPECT_EQ(c.to, HGMoveFld(g, c.from, c.to));
        EXPECT_EQ(c.titles, Titles(g)) << c.from << "->" << c.to;
        for (int row = 0; row < 2; ++row) {
            EXPECT_EQ(Text(c.cells), CellsOf(g, row)) << c.from << "->" << c.to;
            Bytes status = c.status;
            for (BYTE& b : status)
                b += (BYTE)(10 * row);
            EXPECT_EQ(status, StatusOf(g, row)) << c.from << "->" << c.to;
        }
        ExpectSizesConsistent(g);
        HGridDestroy(g);
    }
}

TEST(GridMove, WithTheMapMovesNoRecordByte)
{
    HGridData* g = MakeGrid(HGS_FIELDMAP, {2, 3, 1}, {"aabbbc"});
    EXPECT_EQ(2, HGMoveFld(g, 0, 2));
    EXPECT_EQ("BCA", Titles(g));
    EXPECT_EQ((std::vector<int>{2, 0, 1}), MapOf(g));
    EXPECT_EQ(Text("aabbbc"), CellsOf(g, 0));
    // Status words stay where they were: by column index, not with their field.
    EXPECT_EQ((Bytes{1, 2, 3}), StatusOf(g, 0));
    EXPECT_EQ(0, HGFieldAt(g, 2)->offset); // A still stored first
    EXPECT_EQ(2, HGFieldAt(g, 0)->offset);
    EXPECT_EQ(5, HGFieldAt(g, 1)->offset);
    EXPECT_EQ(1, HGMoveFld(g, 2, 1));
    EXPECT_EQ("BAC", Titles(g));
    EXPECT_EQ((std::vector<int>{1, 0, 2}), MapOf(g));
    EXPECT_EQ(Text("aabbbc"), CellsOf(g, 0));
    HGridDestroy(g);
}

TEST(GridMove, RejectsBadAndEqualIndexes)
{
    HGridData* g = MakeGrid(0, {1, 1}, {"ab"});
    const int bad[][2] = {{0, 0}, {-1, 1}, {0, 2}, {2, 0}, {1, -1}};
    for (auto& b : bad)
        EXPECT_EQ(-1, HGMoveFld(g, b[0], b[1])) << b[0] << "->" << b[1];
    EXPECT_EQ(-1, HGMoveFld(nullptr, 0, 1));
    EXPECT_EQ(Text("ab"), CellsOf(g, 0));
    HGridDestroy(g);
}

// The window side's two calls, logged.
struct HookLog {
    int closes = 0;
    int clamps = 0;
    LONG first = 0, second = 0;
};
HookLog g_hookLog;

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

class GridRemove : public ::testing::Test {
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

TEST_F(GridRemove, WithoutTheMapClosesTheCellAndItsStatusWord)
{
    struct Case {
        int index;
        const char* titles;
        const char* cells;
        Bytes status;
    } cases[] = {
        {0, "BC", "bbbc", {2, 3}},
        {1, "AC", "aac", {1, 3}},
        {2, "AB", "aabbb", {1, 2}},
    };
    for (const Case& c : cases) {
        HGridDestroy(window.grid);
        window.grid = MakeGrid(0, {2, 3, 1}, {"aabbbc", "aabbbc"});
        EXPECT_TRUE(HGRemoveFld(&window, c.index));
        EXPECT_EQ(c.titles, Titles(window.grid));
        for (int row = 0; row < 2; ++row) {
            EXPECT_EQ(Text(c.cells), CellsOf(window.grid, row)) << "index " << c.index;
            Bytes status = c.status;
            for (BYTE& b : status)
                b += (BYTE)(10 * row);
            EXPECT_EQ(status, StatusOf(window.grid, row)) << "index " << c.index;
        }
        ExpectSizesConsistent(window.grid);
    }
}

TEST_F(GridRemove, WithTheMapRenumbersEntriesAndClosesTheStoredCell)
{
    window.grid = MakeGrid(HGS_FIELDMAP, {2, 3, 1}, {"aabbbc"});
    HGMoveFld(window.grid, 0, 2); // display B C A, storage A B C, map 2 0 1
    EXPECT_TRUE(HGRemoveFld(&window, 0)); // removes B, stored second
    EXPECT_EQ("CA", Titles(window.grid));
    EXPECT_EQ((std::vector<int>{1, 0}), MapOf(window.grid));
    EXPECT_EQ(Text("aac"), CellsOf(window.grid, 0));
    // The word closed is that of the first storage position holding index 0
    // after renumbering (position 1, C), at userWord + 2 in the old layout.
    EXPECT_EQ((Bytes{1, 3}), StatusOf(window.grid, 0));
    EXPECT_EQ(0, HGFieldAt(window.grid, 1)->offset);
    EXPECT_EQ(2, HGFieldAt(window.grid, 0)->offset);
    ExpectSizesConsistent(window.grid);
}

TEST_F(GridRemove, ClosesTheEditorOnlyForTheCurrentColumnAndClampsWithCurrentRowFirst)
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
}

TEST_F(GridRemove, RefusesABadIndexOrNoGrid)
{
    EXPECT_FALSE(HGRemoveFld(&window, 0));
    EXPECT_FALSE(HGRemoveFld(nullptr, 0));
    window.grid = MakeGrid(0, {1, 1}, {"ab"});
    EXPECT_FALSE(HGRemoveFld(&window, 2));
    EXPECT_FALSE(HGRemoveFld(&window, -1));
    EXPECT_EQ(0, g_hookLog.clamps);
    EXPECT_EQ(Text("ab"), CellsOf(window.grid, 0));
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

TEST(GridRecords, FixOffsetsRecomputesSizesWithoutMovingBytes)
{
    HGridData* g = MakeGrid(0, {2, 3}, {"abXYZ"});
    HGFieldAt(g, 0)->size = 4;
    HGFixOffsets(g);
    EXPECT_EQ(4, HGFieldAt(g, 1)->offset);
    EXPECT_EQ(7u, g->records->userWord);
    EXPECT_EQ(11, g->records->itemSize);
    EXPECT_EQ('a', RecordAt(g, 0)->cells[0]);
    HGridDestroy(g);
}

TEST(GridRecords, EmptyDropsRecordsButKeepsFieldsAndSizes)
{
    HGridData* g = MakeGrid(0, {2, 3}, {"abXYZ", "cdUVW"});
    EXPECT_TRUE(HGridEmpty(g));
    EXPECT_EQ(0, g->records->count);
    EXPECT_EQ(2, g->fields->count);
    EXPECT_EQ(5u, g->records->userWord);
    EXPECT_EQ(9, g->records->itemSize);
    EXPECT_FALSE(HGridEmpty(nullptr));
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
    HGridData* d = HGridDup(g);
    ASSERT_NE(d, nullptr);
    EXPECT_FALSE(HGridChanged(g, d));
    EXPECT_EQ(0x55u, d->options);
    EXPECT_EQ(HGV_IH, d->version);
    EXPECT_NE(g->name, d->name);
    EXPECT_STREQ("test", d->name);
    EXPECT_EQ(Titles(g), Titles(d));
    for (int i = 0; i < 2; ++i) {
        EXPECT_NE(HGFieldAt(g, i), HGFieldAt(d, i));
        EXPECT_EQ(HGFieldAt(g, i)->offset, HGFieldAt(d, i)->offset);
    }
    EXPECT_EQ(MapOf(g), MapOf(d));
    ASSERT_EQ(2, d->records->count);
    for (int row = 0; row < 2; ++row) {
        EXPECT_EQ(CellsOf(g, row), CellsOf(d, row));
        EXPECT_EQ((Bytes{0, 0}), StatusOf(d, row));
        EXPECT_EQ(0, RecordAt(d, row)->recordStatus);
    }
    HGridDestroy(g);
    HGridDestroy(d);
}

TEST(GridCopy, AMapMadeOnRequestIsNotDuplicated)
{
    HGridData* g = MakeGrid(0, {1, 1}, {});
    HGCreateFldMap(g);
    HGridData* d = HGridDup(g);
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
    EXPECT_EQ(Text("zz"), CellsOf(dst, 0));
    EXPECT_EQ(Text("ab"), CellsOf(dst, 1));
    EXPECT_FALSE(HGridCopy(nullptr, src));
    EXPECT_FALSE(HGridCopy(dst, nullptr));
    HGridDestroy(dst);

    // Records already there are given the source's size before the copy.
    dst = MakeGrid(0, {1}, {"q"});
    EXPECT_TRUE(HGridCopy(dst, src));
    EXPECT_EQ(src->records->itemSize, dst->records->itemSize);
    EXPECT_EQ(2u, dst->records->userWord);
    EXPECT_EQ((Bytes{'q', 1}), CellsOf(dst, 0)); // the old status word, now a cell byte
    EXPECT_EQ(Text("ab"), CellsOf(dst, 1));
    HGridDestroy(src);
    HGridDestroy(dst);
}

TEST(GridChanged, ComparesHeadNameAndFieldsOnly)
{
    struct Case {
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
    for (const Case& c : cases) {
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
    EXPECT_TRUE(HGridScale(g, (HFONT)(INT_PTR)-1, nullptr));
    EXPECT_EQ((int)(21.0 * uy / 8 + 0.5), g->rowHeight);
    EXPECT_EQ((int)(35.0 * ux / 4 + 0.5), g->rowHeaderWidth);
    EXPECT_EQ((int)(7.0 * uy / 8 + 0.5), g->colHeaderHeight);
    EXPECT_EQ((int)(41.0 * ux / 4 + 0.5), HGFieldAt(g, 0)->width);
    EXPECT_EQ((int)(13.0 * uy / 8 + 0.5), HGFieldAt(g, 0)->height);
    EXPECT_TRUE(HGridScale(g, (HFONT)(INT_PTR)-1, (HFONT)(INT_PTR)-1));
    EXPECT_EQ((int)(21.0 * uy / 8 + 0.5), g->rowHeight);
    EXPECT_FALSE(HGridScale(nullptr, nullptr, nullptr));
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
    } cases[] = {
        {HGS_FIELDMAP, false, 2},
        {HGS_ROWHEADERS, true, 4},
    };
    for (const auto& c : cases) {
        HGridData* g = MakeGrid(c.style, {1, 1, 1}, {});
        if (c.onRequest)
            EXPECT_TRUE(HGCreateFldMap(g));
        ASSERT_NE(nullptr, g->fieldMap);
        EXPECT_EQ(c.itemSize, g->fieldMap->itemSize);
        EXPECT_EQ((std::vector<int>{0, 1, 2}), MapOf(g));
        EXPECT_EQ(c.style, g->style);
        for (LONG value = 0; value < 3; ++value) {
            LONG found = -1;
            EXPECT_NE(nullptr, HLListFind(g->fieldMap, &value, 0, &found)) << c.itemSize;
            EXPECT_EQ(value, found) << c.itemSize;
        }
        EXPECT_FALSE(HGCreateFldMap(g));
        HGridDestroy(g);
    }
    EXPECT_FALSE(HGCreateFldMap(nullptr));
}

// ---- Stash ----

TEST(GridStash, FindsByOwnerAndFoldedNameCutToTwelve)
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

    EXPECT_TRUE(RemoveStashed(7, "OrdersAndLin"));
    e = GetStashed(7, "OrdersAndLin", nullptr);
    ASSERT_NE(nullptr, e);
    EXPECT_STREQ("dup", e->grid->name);
    EXPECT_TRUE(RemoveStashed(7, "OrdersAndLin"));
    EXPECT_TRUE(RemoveStashed(8, "OrdersAndLin"));
    EXPECT_FALSE(RemoveStashed(8, "OrdersAndLin"));
    EXPECT_EQ(base, HGGetStash()->count);
}

TEST(GridStash, CopyingTheStashGivesEntriesWithTheirOwnGrids)
{
    HGCreateStash();
    StashGrid(HGridCreate("copied", 0, 0, 0, 1, 1, 1, 0), 3, "c", nullptr);
    HLList* copy = HLListDup(HGGetStash());
    ASSERT_NE(nullptr, copy);
    HGStashEntry* original = GetStashed(3, "c", nullptr);
    HGStashEntry* dup = (HGStashEntry*)HLListFind(copy, original, 0, nullptr);
    ASSERT_NE(nullptr, dup);
    EXPECT_NE(original->grid, dup->grid);
    EXPECT_STREQ("copied", dup->grid->name);
    HLListDestroy(copy);
    EXPECT_TRUE(RemoveStashed(3, "c"));
}

} // namespace
