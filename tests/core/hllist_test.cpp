// Tests of the HLList container: the cursor, the ring after each change, the
// order and arguments of the owner's callbacks, and the kept quirks.
#include "container/hllist.h"

#include <gtest/gtest.h>
#include <string.h>

#include <functional>
#include <string>
#include <vector>

namespace {

std::vector<std::string> g_log; // callback calls, in order
int g_allocBudget;              // successful allocations left; -1 for no limit
int g_allocCalls;

LONG Val(LPVOID node)
{
    LONG v;
    memcpy(&v, HLDefaultData(nullptr, node), sizeof v);
    return v;
}

// Walks from first without the cursor, so that reading doesn't disturb it.
HLNode* NodeAt(const HLList* l, LONG index)
{
    HLNode* n = l->first;
    while (index-- > 0)
        n = n->next;
    return n;
}

std::vector<LONG> Values(const HLList* l)
{
    std::vector<LONG> v;
    for (LONG i = 0; i < l->count; ++i)
        v.push_back(Val(NodeAt(l, i)));
    return v;
}

// The ring is closed over exactly count nodes, and first, last and the empty bit agree.
void ExpectWhole(const HLList* l)
{
    ASSERT_GE(l->count, 0);
    EXPECT_EQ(l->count == 0, (l->flags & HLLIST_EMPTY) != 0);
    if (l->count == 0) {
        EXPECT_EQ(l->first, nullptr);
        EXPECT_EQ(l->last, nullptr);
        return;
    }
    HLNode* n = l->first;
    for (LONG i = 1; i < l->count; ++i) {
        ASSERT_NE(n->next, nullptr);
        ASSERT_NE(n->next, l->first) << "ring shorter than count";
        n = n->next;
    }
    EXPECT_EQ(n, l->last);
    EXPECT_EQ(n->next, l->first);
}

LPVOID CALLBACK LoggedAlloc(HLList* list, LPVOID data)
{
    ++g_allocCalls;
    g_log.push_back(data ? "alloc " + std::to_string(*(LONG*)data) : "alloc null");
    if (g_allocBudget == 0)
        return nullptr;
    if (g_allocBudget > 0)
        --g_allocBudget;
    return HLDefaultAlloc(list, data);
}

LONG CALLBACK LoggedCompare(HLList* list, LPCVOID key, LPVOID node)
{
    LONG k = *(const LONG*)key, v = Val(node);
    g_log.push_back("cmp " + std::to_string(v));
    return k < v ? -1 : k > v ? 1 : 0;
}

// Checks, while it runs, that the list is already whole without the victim.
LONG CALLBACK CheckingFree(HLList* list, LPVOID node)
{
    g_log.push_back("free " + std::to_string(Val(node)));
    ExpectWhole(list);
    for (LONG i = 0; i < list->count; ++i)
        EXPECT_NE(NodeAt(list, i), node);
    EXPECT_EQ(list->cursor, list->first);
    HLDefaultFree(list, node);
    return 0; // the list must ignore this
}

LONG CALLBACK LoggedFree(HLList* list, LPVOID node)
{
    g_log.push_back("free " + std::to_string(Val(node)));
    return HLDefaultFree(list, node);
}

HLList* IntList(std::vector<LONG> values, UINT sorted = 0)
{
    HLList* l = HLListCreate(sizeof(LONG), LoggedAlloc, LoggedCompare, nullptr, LoggedFree, nullptr, sorted);
    g_allocBudget = -1;
    for (LONG v : values)
        HLListAppend(l, &v);
    g_log.clear();
    return l;
}

class HLListTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        g_log.clear();
        g_allocBudget = -1;
        g_allocCalls = 0;
    }
};

TEST_F(HLListTest, CreateChecksItemSizeAndKeepsOnlyBit0OfSorted)
{
    struct Row { LONG itemSize; UINT sorted; bool made; WORD flags; };
    const Row rows[] = {
        {-2, 0, false, 0}, {-100, 1, false, 0},
        {-1, 0, true, HLLIST_EMPTY}, {0, 1, true, HLLIST_EMPTY | HLLIST_SORTED},
        {4, 2, true, HLLIST_EMPTY}, {4, 0xFFFF, true, HLLIST_EMPTY | HLLIST_SORTED},
    };
    for (const Row& r : rows) {
        HLList* l = HLListCreate(r.itemSize, nullptr, nullptr, nullptr, nullptr, nullptr, r.sorted);
        ASSERT_EQ(l != nullptr, r.made) << "itemSize " << r.itemSize;
        if (!l)
            continue;
        EXPECT_EQ(l->flags, r.flags);
        EXPECT_EQ(l->itemSize, r.itemSize);
        EXPECT_EQ(l->pfnAlloc, &HLDefaultAlloc);
        EXPECT_EQ(l->pfnCompare, &HLDefaultCompare);
        EXPECT_EQ(l->pfnFree, &HLDefaultFree);
        EXPECT_EQ(l->pfnData, &HLDefaultData);
        EXPECT_EQ(l->pfnDataCompare, nullptr);
        EXPECT_EQ(l->count | l->cursorIndex | (LONG)l->userWord, 0);
        HLListDestroy(l);
    }
}

TEST_F(HLListTest, NullListGivesTheFailureResults)
{
    LONG key = 1, found = 9;
    EXPECT_EQ(HLListCopy(nullptr, nullptr), 0);
    EXPECT_EQ(HLListEmpty(nullptr), 0);
    EXPECT_EQ(HLListDestroy(nullptr), 0);
    EXPECT_EQ(HLListGetItem(nullptr, 0), nullptr);
    EXPECT_EQ(HLListInsert(nullptr, 0, &key), -1);
    EXPECT_EQ(HLListRemove(nullptr, 0), 0);
    EXPECT_EQ(HLListFind(nullptr, &key, 0, &found), nullptr);
    EXPECT_EQ(found, 0) << "the out index is cleared before any test";
    EXPECT_EQ(HLListAdd(nullptr, &key), -1);
    EXPECT_EQ(HLListAppend(nullptr, &key), -1);
    EXPECT_EQ(HLListMove(nullptr, 0, 1), -1);
    EXPECT_EQ(HLListInsertPos(nullptr, &key), 0);
    EXPECT_EQ(HLListDup(nullptr), nullptr);
}

// The cursor is planted one node ahead of where cursorIndex says, so the node
// returned shows whether the step walked on from the cursor or from the head.
TEST_F(HLListTest, ForwardStepWalksFromCursorBackwardStepRestartsFromHead)
{
    struct Row { LONG at, ask, value, cursorIndex; };
    const Row rows[] = {
        {2, 3, 4, 3}, // one hop from the planted cursor
        {2, 6, 7, 6},
        {2, 2, 3, 2}, // same index: the cursor as it is
        {3, 2, 2, 2}, // backward by one: from the head
        {5, 0, 0, 0},
        {3, -1, 7, 7}, // -1: last at once
    };
    HLList* l = IntList({0, 1, 2, 3, 4, 5, 6, 7});
    for (const Row& r : rows) {
        HLListGetItem(l, r.at);
        l->cursor = l->cursor->next;
        LPVOID node = HLListGetItem(l, r.ask);
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(Val(node), r.value) << "at " << r.at << " ask " << r.ask;
        EXPECT_EQ(l->cursorIndex, r.cursorIndex);
        EXPECT_EQ(l->cursor, node);
    }
    HLListDestroy(l);
}

TEST_F(HLListTest, GetItemOutOfRangeLeavesCursorAlone)
{
    HLList* l = IntList({0, 1, 2, 3});
    HLListGetItem(l, 2);
    for (LONG index : {-2, -100, 4, 5, 0x7FFFFFFF}) {
        EXPECT_EQ(HLListGetItem(l, index), nullptr) << index;
        EXPECT_EQ(l->cursorIndex, 2);
        EXPECT_EQ(l->cursor, NodeAt(l, 2));
    }
    HLListDestroy(l);
}

TEST_F(HLListTest, MinusOneOnEmptyListLeavesLaterStepsOneNodeTooFar)
{
    HLList* l = IntList({});
    EXPECT_EQ(HLListGetItem(l, -1), nullptr);
    EXPECT_EQ(l->cursorIndex, -1);
    EXPECT_EQ(l->cursor, nullptr);
    for (LONG v : {10, 20, 30})
        HLListAppend(l, &v);
    EXPECT_EQ(l->cursorIndex, -1);
    EXPECT_EQ(l->cursor, l->first);
    EXPECT_EQ(Val(HLListGetItem(l, 0)), 20);
    EXPECT_EQ(Val(HLListGetItem(l, 1)), 30);
    EXPECT_EQ(Val(HLListGetItem(l, 0)), 10) << "a backward step restarts from the head";
    HLListDestroy(l);
}

TEST_F(HLListTest, SkewedCursorIsSetRightOnlyByTheNamedOperations)
{
    struct Row { const char* name; std::function<void(HLList*)> op; bool repaired; };
    LONG v = 99;
    const Row rows[] = {
        {"Remove", [](HLList* l) { HLListRemove(l, 2); }, true},
        {"Insert in range", [&](HLList* l) { HLListInsert(l, 0, &v); }, true},
        {"Insert behind last", [&](HLList* l) { HLListInsert(l, 2, &v); }, true},
        {"Move", [](HLList* l) { HLListMove(l, 0, 1); }, true},
        {"GetItem -1", [](HLList* l) { HLListGetItem(l, -1); }, true},
        {"Append", [&](HLList* l) { HLListAppend(l, &v); }, false},
        {"Insert past end", [&](HLList* l) { HLListInsert(l, 7, &v); }, false},
    };
    for (const Row& r : rows) {
        HLList* l = IntList({});
        HLListGetItem(l, -1);
        for (LONG x : {10, 20, 30})
            HLListAppend(l, &x);
        r.op(l);
        ExpectWhole(l);
        LPVOID node = HLListGetItem(l, 1);
        EXPECT_EQ(node == NodeAt(l, 1), r.repaired) << r.name;
        HLListDestroy(l);
    }
}

TEST_F(HLListTest, AppendGivesCountMinusOneEvenWhenAllocFails)
{
    struct Row { std::vector<LONG> start; int budget; LONG result; LONG count; };
    const Row rows[] = {{{}, -1, 0, 1}, {{}, 0, -1, 0}, {{1, 2}, -1, 2, 3}, {{1, 2}, 0, 1, 2}};
    for (const Row& r : rows) {
        HLList* l = IntList(r.start);
        HLListGetItem(l, 0);
        LONG cursorIndex = l->cursorIndex;
        g_allocBudget = r.budget;
        LONG v = 7;
        EXPECT_EQ(HLListAppend(l, &v), r.result);
        EXPECT_EQ(l->count, r.count);
        EXPECT_EQ(l->cursorIndex, cursorIndex) << "appending never moves cursorIndex";
        ExpectWhole(l);
        HLListDestroy(l);
    }
}

TEST_F(HLListTest, InsertPlacesInFrontOfIndexOrAppendsOutsideTheList)
{
    struct Row { LONG index; int budget; LONG result; std::vector<LONG> values; bool cursorAtHead; };
    const Row rows[] = {
        {0, -1, 0, {9, 1, 2, 3}, true},   {1, -1, 1, {1, 9, 2, 3}, true},
        {2, -1, 2, {1, 2, 9, 3}, true},   {-1, -1, 3, {1, 2, 3, 9}, false},
        {3, -1, 3, {1, 2, 3, 9}, false},  {50, -1, 3, {1, 2, 3, 9}, false},
        {1, 0, -1, {1, 2, 3}, false},     {3, 0, 2, {1, 2, 3}, false},
    };
    for (const Row& r : rows) {
        HLList* l = IntList({1, 2, 3});
        HLListGetItem(l, 2);
        g_allocBudget = r.budget;
        LONG v = 9;
        EXPECT_EQ(HLListInsert(l, r.index, &v), r.result) << "index " << r.index;
        EXPECT_EQ(Values(l), r.values) << "index " << r.index;
        ExpectWhole(l);
        EXPECT_EQ(l->cursorIndex, r.cursorAtHead ? 0 : 2);
        EXPECT_EQ(l->cursor, NodeAt(l, l->cursorIndex));
        HLListDestroy(l);
    }
}

TEST_F(HLListTest, RemoveUnlinksAndFreesOnlyWhenTheListIsWhole)
{
    struct Row { LONG index; BOOL result; std::vector<LONG> values; std::vector<std::string> log; };
    const Row rows[] = {
        {0, 1, {2, 3}, {"free 1"}}, {1, 1, {1, 3}, {"free 2"}}, {2, 1, {1, 2}, {"free 3"}},
        {-1, 0, {1, 2, 3}, {}},     {3, 0, {1, 2, 3}, {}},
    };
    for (const Row& r : rows) {
        HLList* l = IntList({1, 2, 3});
        l->pfnFree = CheckingFree;
        EXPECT_EQ(HLListRemove(l, r.index), r.result) << "free returned 0, result is still 1";
        EXPECT_EQ(Values(l), r.values);
        EXPECT_EQ(g_log, r.log);
        ExpectWhole(l);
        l->pfnFree = HLDefaultFree; // the ring is open while HLListEmpty frees
        HLListDestroy(l);
    }
}

TEST_F(HLListTest, RemoveOfOnlyNodeLeavesAnEmptyList)
{
    HLList* l = IntList({5});
    EXPECT_EQ(HLListRemove(l, 0), 1);
    EXPECT_EQ(l->first, nullptr);
    EXPECT_EQ(l->last, nullptr);
    EXPECT_EQ(l->cursor, nullptr);
    EXPECT_EQ(l->cursorIndex, 0);
    EXPECT_TRUE(l->flags & HLLIST_EMPTY);
    HLListDestroy(l);
}

TEST_F(HLListTest, MoveReordersAndEndsWithCursorOnLast)
{
    struct Row { LONG from, to, result; std::vector<LONG> values; };
    const Row rows[] = {
        {3, 1, 1, {0, 3, 1, 2, 4}}, {1, 3, 3, {0, 2, 3, 1, 4}}, {0, 2, 2, {1, 2, 0, 3, 4}},
        {4, 2, 2, {0, 1, 4, 2, 3}}, {3, 4, 4, {0, 1, 2, 4, 3}}, {4, 0, 0, {4, 0, 1, 2, 3}},
        {0, 4, 4, {1, 2, 3, 4, 0}},
        // count names the first node again by the ring
        {5, 2, 2, {0, 2, 3, 4, 1}}, {2, 5, 5, {0, 2, 1, 3, 4}}, {1, 5, 5, {0, 1, 2, 3, 4}},
        {0, 5, 5, {1, 2, 3, 4, 0}}, {5, 0, 0, {0, 1, 2, 3, 4}},
        {2, 2, -1, {0, 1, 2, 3, 4}}, {-1, 2, -1, {0, 1, 2, 3, 4}}, {0, 6, -1, {0, 1, 2, 3, 4}},
    };
    for (const Row& r : rows) {
        HLList* l = IntList({0, 1, 2, 3, 4});
        EXPECT_EQ(HLListMove(l, r.from, r.to), r.result) << r.from << "->" << r.to;
        EXPECT_EQ(Values(l), r.values) << r.from << "->" << r.to;
        ExpectWhole(l);
        if (r.result >= 0) {
            EXPECT_EQ(l->cursor, l->last);
            EXPECT_EQ(l->cursorIndex, 4);
        }
        HLListDestroy(l);
    }
}

TEST_F(HLListTest, MovingLastToFrontOrFirstToEndOnlyRotatesTheRing)
{
    for (auto [from, to] : {std::pair<LONG, LONG>{4, 0}, {0, 4}}) {
        HLList* l = IntList({0, 1, 2, 3, 4});
        std::vector<HLNode*> links;
        for (LONG i = 0; i < 5; ++i)
            links.push_back(NodeAt(l, i)->next);
        HLListMove(l, from, to);
        for (LONG i = 0; i < 5; ++i)
            EXPECT_EQ(NodeAt(l, i)->next, links[(i + (from == 4 ? 4 : 1)) % 5]);
        ExpectWhole(l);
        HLListDestroy(l);
    }
}

TEST_F(HLListTest, MoveOnEmptyListChangesNothing)
{
    HLList* l = IntList({});
    EXPECT_EQ(HLListMove(l, 0, 1), -1);
    EXPECT_EQ(l->cursorIndex, 0);
    HLListDestroy(l);
}

TEST_F(HLListTest, FindWalksTheRingAndSortedFindSkipsToTheHead)
{
    struct Row { UINT sorted; std::vector<LONG> values; LONG key, start; LONG found; std::vector<std::string> log; };
    const Row rows[] = {
        {0, {5, 3, 5, 7}, 5, 0, 0, {"cmp 5"}},
        {0, {5, 3, 5, 7}, 5, 1, 2, {"cmp 3", "cmp 5"}},
        {0, {5, 3, 5, 7}, 5, 3, 0, {"cmp 7", "cmp 5"}},
        {0, {5, 3, 5, 7}, 9, 2, -1, {"cmp 5", "cmp 7", "cmp 5", "cmp 3"}},
        {0, {5, 3, 5, 7}, 3, -3, 1, {"cmp 5", "cmp 3"}},
        {0, {5, 3, 5, 7}, 3, 6, 1, {"cmp 5", "cmp 7", "cmp 5", "cmp 3"}},
        {1, {10, 20, 30, 40}, 20, 2, 1, {"cmp 30", "cmp 10", "cmp 20"}},
        {1, {10, 20, 30, 40}, 15, 0, -1, {"cmp 10", "cmp 20"}},
        {1, {10, 20, 30, 40}, 35, 2, -1, {"cmp 30", "cmp 40", "cmp 10", "cmp 20"}},
        {1, {10, 20, 30, 40}, 5, 1, -1, {"cmp 20", "cmp 10"}},
        {1, {10, 20, 30, 40}, 40, 3, 3, {"cmp 40"}},
    };
    for (const Row& r : rows) {
        HLList* l = IntList(r.values, r.sorted);
        LONG found = 77;
        LPVOID node = HLListFind(l, &r.key, r.start, &found);
        EXPECT_EQ(g_log, r.log) << "key " << r.key << " from " << r.start;
        EXPECT_EQ(node, r.found < 0 ? nullptr : NodeAt(l, r.found));
        EXPECT_EQ(found, r.found < 0 ? 0 : r.found);
        LONG start = r.start < 0 ? 0 : r.start % 4;
        EXPECT_EQ(l->cursorIndex, start) << "the cursor stays on the start node";
        EXPECT_EQ(l->cursor, NodeAt(l, start));
        g_log.clear();
        HLListDestroy(l);
    }
}

TEST_F(HLListTest, FindOnNewListOrWithNullKeyGivesNullAndZero)
{
    HLList* l = IntList({});
    LONG key = 1, found = 5;
    EXPECT_EQ(HLListFind(l, &key, 3, &found), nullptr);
    EXPECT_EQ(found, 0);
    HLListAppend(l, &key);
    found = 5;
    EXPECT_EQ(HLListFind(l, nullptr, 0, &found), nullptr);
    EXPECT_EQ(found, 0);
    EXPECT_NE(HLListFind(l, &key, 0, nullptr), nullptr);
    HLListDestroy(l);
}

// Items carry a key and an arrival tag; only the key is compared.
LONG CALLBACK KeyCompare(HLList* list, LPCVOID key, LPVOID node)
{
    return *(const LONG*)key - Val(node);
}

TEST_F(HLListTest, SortedAddPutsNewestFirstAmongEquals)
{
    HLList* l = HLListCreate(2 * sizeof(LONG), nullptr, KeyCompare, nullptr, nullptr, nullptr, 1);
    const LONG items[][2] = {{5, 1}, {3, 2}, {5, 3}, {7, 4}, {5, 5}, {7, 6}};
    const LONG results[] = {0, 0, 1, 3, 1, 4};
    for (size_t i = 0; i < 6; ++i)
        EXPECT_EQ(HLListAdd(l, (LPVOID)items[i]), results[i]);
    const LONG tags[] = {2, 5, 3, 1, 6, 4};
    for (LONG i = 0; i < 6; ++i)
        EXPECT_EQ(((LONG*)HLDefaultData(l, NodeAt(l, i)))[1], tags[i]) << i;
    ExpectWhole(l);
    HLListDestroy(l);
}

TEST_F(HLListTest, InsertPosTriesLastFirstThenWalksFromHead)
{
    struct Row { LONG key; LONG pos; std::vector<std::string> log; };
    const Row rows[] = {
        {35, 3, {"cmp 30"}},
        {25, 2, {"cmp 30", "cmp 10", "cmp 20", "cmp 30"}},
        {30, 2, {"cmp 30", "cmp 10", "cmp 20", "cmp 30"}},
        {10, 0, {"cmp 30", "cmp 10"}},
    };
    for (const Row& r : rows) {
        HLList* l = IntList({10, 20, 30}, 1);
        EXPECT_EQ(HLListInsertPos(l, &r.key), r.pos);
        EXPECT_EQ(g_log, r.log) << "key " << r.key;
        g_log.clear();
        HLListDestroy(l);
    }
}

TEST_F(HLListTest, SortedAddOfAscendingDataComparesOnlyWithLast)
{
    HLList* l = IntList({}, 1);
    for (LONG v = 1; v <= 4; ++v)
        EXPECT_EQ(HLListAdd(l, &v), v - 1);
    const std::vector<std::string> expected = {"alloc 1", "cmp 1", "alloc 2", "cmp 2", "alloc 3", "cmp 3", "alloc 4"};
    EXPECT_EQ(g_log, expected);
    HLListDestroy(l);
}

TEST_F(HLListTest, SortedAddOfNullDataLandsAtTheFront)
{
    HLList* l = HLListCreate(sizeof(LONG), nullptr, nullptr, nullptr, nullptr, nullptr, 1);
    for (LONG v : {3, 1, 2})
        HLListAdd(l, &v);
    EXPECT_EQ(HLListAdd(l, nullptr), 0);
    EXPECT_EQ(Values(l), (std::vector<LONG>{0, 1, 2, 3}));
    HLListDestroy(l);
}

TEST_F(HLListTest, SortedAddWithFailingAllocReportsAsInsertOrAppend)
{
    HLList* l = IntList({10, 20}, 1);
    g_allocBudget = 0;
    LONG front = 5, back = 30;
    EXPECT_EQ(HLListAdd(l, &front), -1) << "within range: the insert's failure";
    EXPECT_EQ(HLListAdd(l, &back), 1) << "at the end: count - 1, as the append path reports";
    EXPECT_EQ(Values(l), (std::vector<LONG>{10, 20}));
    HLListDestroy(l);
}

TEST_F(HLListTest, UnsortedAddAppends)
{
    HLList* l = IntList({5, 1});
    LONG v = 3;
    EXPECT_EQ(HLListAdd(l, &v), 2);
    EXPECT_EQ(Values(l), (std::vector<LONG>{5, 1, 3}));
    EXPECT_TRUE(g_log == std::vector<std::string>{"alloc 3"}) << "no comparison";
    HLListDestroy(l);
}

std::vector<std::string> g_dataCalls;
LPVOID CALLBACK LoggedData(HLList* list, LPVOID node)
{
    g_dataCalls.push_back(std::to_string(list->count) + ":" + std::to_string(Val(node)));
    return HLDefaultData(list, node);
}

TEST_F(HLListTest, CopyAppendsUnsortedAndAsksDestDataWithSourceNodes)
{
    HLList* dest = IntList({1, 5}, 1);
    dest->pfnData = LoggedData;
    HLList* source = IntList({9, 2, 7});
    g_dataCalls.clear();
    EXPECT_EQ(HLListCopy(dest, source), 1);
    EXPECT_EQ(Values(dest), (std::vector<LONG>{1, 5, 9, 2, 7}));
    EXPECT_EQ(g_dataCalls, (std::vector<std::string>{"3:9", "3:2", "3:7"})) << "source list and node";
    EXPECT_EQ(source->cursor, source->last);
    EXPECT_EQ(source->cursorIndex, 2);
    dest->pfnData = nullptr;
    EXPECT_EQ(HLListCopy(dest, source), 0);
    EXPECT_EQ(HLListCopy(nullptr, source), 0);
    EXPECT_EQ(dest->count, 5);
    HLListDestroy(dest);
    HLListDestroy(source);
}

TEST_F(HLListTest, CopyToSelfGrowsWhileAllocSucceeds)
{
    HLList* l = IntList({1, 2});
    g_allocBudget = 3;
    g_allocCalls = 0;
    EXPECT_EQ(HLListCopy(l, l), 1);
    EXPECT_EQ(Values(l), (std::vector<LONG>{1, 2, 1, 2, 1}));
    EXPECT_EQ(g_allocCalls, 2 + 3) << "one attempt per index while count grew";
    HLListDestroy(l);
}

// A failed allocation drops the item from a copy without a word.
TEST_F(HLListTest, DupKeepsCallbacksSizeAndSortedButNotUserWord)
{
    HLList* source = IntList({3, 1, 2}, 1);
    source->userWord = 1234;
    HLList* copy = HLListDup(source);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->itemSize, source->itemSize);
    EXPECT_EQ(copy->pfnAlloc, source->pfnAlloc);
    EXPECT_EQ(copy->pfnCompare, source->pfnCompare);
    EXPECT_EQ(copy->pfnFree, source->pfnFree);
    EXPECT_EQ(copy->pfnData, source->pfnData);
    EXPECT_EQ(copy->flags, HLLIST_SORTED);
    EXPECT_EQ(copy->userWord, 0u);
    EXPECT_EQ(Values(copy), (std::vector<LONG>{3, 1, 2}));
    g_allocBudget = 2;
    HLList* shorter = HLListDup(source);
    EXPECT_EQ(Values(shorter), (std::vector<LONG>{3, 1}));
    HLListDestroy(shorter);
    HLListDestroy(copy);
    HLListDestroy(source);
}

bool InList(const HLList* l, LPCVOID node)
{
    for (LONG i = 0; i < l->count; ++i)
        if (NodeAt(l, i) == node)
            return true;
    return false;
}

// A pfnCompare that takes two nodes, as HLListCompare needs: a node of a as key.
HLList* g_compareA;
HLList* g_compareB;
LONG CALLBACK NodeCompare(HLList* list, LPCVOID key, LPVOID node)
{
    EXPECT_EQ(list, g_compareA);
    EXPECT_TRUE(InList(g_compareA, key));
    EXPECT_TRUE(InList(g_compareB, node));
    return Val((LPVOID)key) - Val(node);
}

TEST_F(HLListTest, CompareOrdersByFirstDifferenceThenLength)
{
    struct Row { std::vector<LONG> a, b; int sign; };
    const Row rows[] = {
        {{1, 2, 3}, {1, 2, 3}, 0}, {{1, 2}, {1, 2, 3}, -1}, {{1, 2, 3}, {1, 2}, 1},
        {{1, 9}, {1, 2, 3}, 1},    {{1, 2, 3}, {2}, -1},    {{}, {}, 0},
    };
    for (const Row& r : rows) {
        HLList* a = IntList(r.a);
        HLList* b = IntList(r.b);
        a->pfnCompare = NodeCompare;
        g_compareA = a;
        g_compareB = b;
        LONG result = HLListCompare(a, b);
        EXPECT_EQ((result > 0) - (result < 0), r.sign);
        HLListDestroy(a);
        HLListDestroy(b);
    }
    HLList* a = IntList({1});
    EXPECT_EQ(HLListCompare(nullptr, a), -1);
    EXPECT_EQ(HLListCompare(a, nullptr), 1);
    HLListDestroy(a);
}

LONG CALLBACK EmptyingFree(HLList* list, LPVOID node)
{
    EXPECT_EQ(list->first, ((HLNode*)node)->next) << "first already points past the node";
    g_log.push_back("free " + std::to_string(Val(node)));
    return HLDefaultFree(list, node);
}

TEST_F(HLListTest, EmptyFreesInIndexOrderAndLeavesAReusableList)
{
    HLList* l = IntList({4, 5, 6});
    l->pfnFree = EmptyingFree;
    HLListGetItem(l, 2);
    EXPECT_EQ(HLListEmpty(l), 1);
    EXPECT_EQ(g_log, (std::vector<std::string>{"free 4", "free 5", "free 6"}));
    EXPECT_EQ(l->cursor, nullptr);
    EXPECT_EQ(l->cursorIndex, 0);
    ExpectWhole(l);
    LONG v = 8;
    EXPECT_EQ(HLListAppend(l, &v), 0);
    EXPECT_EQ(Val(HLListGetItem(l, 0)), 8);
    g_log.clear();
    EXPECT_EQ(HLListDestroy(l), 1);
    EXPECT_EQ(g_log, (std::vector<std::string>{"free 8"}));
}

std::vector<LPVOID> g_freed;
LONG CALLBACK ReadingFree(HLList* list, LPVOID node)
{
    LPVOID seen = HLListGetItem(list, 1);
    for (LPVOID gone : g_freed)
        EXPECT_NE(seen, gone) << "walked into a freed node";
    g_freed.push_back(node);
    return HLDefaultFree(list, node);
}

TEST_F(HLListTest, ReadingTheListWhileEmptyFreesNeverReachesAFreedNode)
{
    HLList* l = IntList({1, 2, 3, 4});
    l->pfnFree = ReadingFree;
    g_freed.clear();
    HLListGetItem(l, 0);
    EXPECT_EQ(HLListEmpty(l), 1);
    EXPECT_EQ(g_freed.size(), 4u);
    HLListDestroy(l);
}

TEST_F(HLListTest, DefaultAllocCopiesPayloadOrZeroFills)
{
    HLList* str = HLListCreate(-1, nullptr, nullptr, nullptr, nullptr, nullptr, 0);
    HLList* rec = HLListCreate(3, nullptr, nullptr, nullptr, nullptr, nullptr, 0);
    HLListAppend(str, (LPVOID) "Abc");
    HLListAppend(str, nullptr);
    HLListAppend(rec, (LPVOID) "xyz-not-copied");
    HLListAppend(rec, nullptr);
    EXPECT_STREQ((char*)HLDefaultData(str, NodeAt(str, 0)), "Abc");
    EXPECT_STREQ((char*)HLDefaultData(str, NodeAt(str, 1)), "");
    EXPECT_EQ(memcmp(HLDefaultData(rec, NodeAt(rec, 0)), "xyz", 3), 0);
    EXPECT_EQ(memcmp(HLDefaultData(rec, NodeAt(rec, 1)), "\0\0\0", 3), 0);
    rec->itemSize = -5;
    EXPECT_EQ(HLDefaultAlloc(rec, nullptr), nullptr);
    HLListDestroy(str);
    HLListDestroy(rec);
}

LONG CALLBACK Answer42(LPCVOID, LPCVOID) { return 42; }

TEST_F(HLListTest, DefaultCompareTakesStringsOrUnsignedBytes)
{
    struct Row { LONG itemSize; const char* key; const char* payload; HLDATACOMPAREPROC dataCompare; LONG result; };
    const Row rows[] = {
        {-1, nullptr, "a", nullptr, -1},  {-1, "abc", "ABC", nullptr, 0},  {-1, "abc", "abd", nullptr, -1},
        {-1, "b", "A", nullptr, 1},       {-1, "_", "A", nullptr, -1},     {-1, "\xE9", "a", nullptr, 1},
        {-1, "ab", "abc", nullptr, -1},   {-1, "abc", "ab", nullptr, 1},   {2, "\x01\x80", "\x01\x7F", nullptr, 1},
        {2, "\x01\x7F", "\x01\x80", nullptr, -1}, {2, "ab", "ab", nullptr, 0}, {0, "a", "b", nullptr, 0},
        {-1, "a", "b", Answer42, 42},
    };
    for (const Row& r : rows) {
        HLList* l = HLListCreate(r.itemSize, nullptr, nullptr, r.dataCompare, nullptr, nullptr, 0);
        HLListAppend(l, (LPVOID)r.payload);
        EXPECT_EQ(HLDefaultCompare(l, r.key, l->first), r.result) << (r.key ? r.key : "null") << " vs " << r.payload;
        HLListDestroy(l);
    }
    EXPECT_EQ(HLDefaultFree(nullptr, nullptr), 0);
    EXPECT_EQ(HLDefaultData(nullptr, nullptr), nullptr);
}

} // namespace
