// Tests of the HLList container: the cursor, the ring after each change, the
// order and arguments of the owner's callbacks, and the kept quirks.
#include "container/hllist.h"

#include <gtest/gtest.h>
#include <string.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

using Longs = std::vector<LONG>;
std::string g_log; // callback calls in order: "a7 " alloc, "c5 " compare with 5, "f3 " free, "d3:9 " data
int g_allocBudget; // successful allocations left; -1 for no limit
enum { kPlainFree, kRemovingFree, kEmptyingFree } g_freeCheck; // what LoggedFree checks
std::vector<LPVOID> g_freed;

LONG Val(LPCVOID node)
{
    LONG v;
    memcpy(&v, HLDefaultData(nullptr, (LPVOID)node), sizeof v);
    return v;
}

// The first count nodes from first, without the cursor, so that reading doesn't disturb it.
std::vector<HLNode*> Nodes(const HLList* l)
{
    std::vector<HLNode*> v;
    for (HLNode* n = l->first; n && (LONG)v.size() < l->count; n = n->next)
        v.push_back(n);
    return v;
}

// The payloads in order, as "10 20 30".
std::string Values(const HLList* l)
{
    std::string s;
    for (HLNode* n : Nodes(l))
        s += (s.empty() ? "" : " ") + std::to_string(Val(n));
    return s;
}

bool InList(const HLList* l, LPCVOID node)
{
    std::vector<HLNode*> n = Nodes(l);
    return std::find(n.begin(), n.end(), node) != n.end();
}

// The ring is closed over exactly count nodes, and first, last and the empty bit agree.
void ExpectWhole(const HLList* l)
{
    std::vector<HLNode*> n = Nodes(l);
    EXPECT_EQ(l->count == 0, (l->flags & HLLIST_EMPTY) != 0);
    EXPECT_EQ(std::set<HLNode*>(n.begin(), n.end()).size(), (size_t)l->count) << "ring shorter than count";
    EXPECT_EQ(l->last, n.empty() ? nullptr : n.back());
    EXPECT_EQ(n.empty() ? nullptr : n.back()->next, l->first) << "the ring closes on first";
}

LPVOID CALLBACK LoggedAlloc(HLList* list, LPVOID data)
{
    g_log += "a" + (data ? std::to_string(*(LONG*)data) : "null") + " ";
    if (g_allocBudget == 0)
        return nullptr;
    g_allocBudget -= g_allocBudget > 0;
    return HLDefaultAlloc(list, data);
}

LONG CALLBACK LoggedCompare(HLList* list, LPCVOID key, LPVOID node)
{
    LONG k = *(const LONG*)key, v = Val(node);
    g_log += "c" + std::to_string(v) + " ";
    return (k > v) - (k < v);
}

LONG CALLBACK LoggedFree(HLList* list, LPVOID node)
{
    g_log += "f" + std::to_string(Val(node)) + " ";
    if (g_freeCheck == kRemovingFree) { // Remove unlinks first: the list is whole without the node
        ExpectWhole(list);
        EXPECT_TRUE(!InList(list, node) && list->cursor == list->first);
    } else if (g_freeCheck == kEmptyingFree) { // Empty clears the cursor: a read never reaches a freed node
        EXPECT_TRUE(list->first == ((HLNode*)node)->next && !list->cursor && !list->cursorIndex)
            << "first already points past the node, and the cursor is cleared";
        g_freed.push_back(node);
        EXPECT_EQ(std::count(g_freed.begin(), g_freed.end(), HLListGetItem(list, 1)), 0) << "walked into a freed node";
    }
    HLDefaultFree(list, node);
    return 0; // the list must ignore this
}

LPVOID CALLBACK LoggedData(HLList* list, LPVOID node)
{
    g_log += "d" + std::to_string(list->count) + ":" + std::to_string(Val(node)) + " ";
    return HLDefaultData(list, node);
}

// One change by letter: A appends v, I inserts v in front of arg, R removes arg,
// D adds v, M moves arg to 1, G gets arg (1 for a node), E empties the list;
// any other letter does nothing.
LONG Change(HLList* l, char op, LONG arg, LONG v)
{
    g_freeCheck = op == 'E' ? kEmptyingFree : kRemovingFree;
    LONG result = op == 'A' ? HLListAppend(l, &v) : op == 'I' ? HLListInsert(l, arg, &v)
                  : op == 'R' ? HLListRemove(l, arg) : op == 'D' ? HLListAdd(l, &v) : op == 'M' ? HLListMove(l, arg, 1)
                  : op == 'E' ? HLListEmpty(l) : op == 'G' ? HLListGetItem(l, arg) != nullptr : 0;
    g_freeCheck = kPlainFree;
    return result;
}

class HLListTest : public ::testing::Test {
protected:
    std::vector<HLList*> lists_; // destroyed after the test
    void TearDown() override
    {
        g_allocBudget = -1, g_freeCheck = kPlainFree;
        for (HLList* l : lists_)
            HLListDestroy(l);
        g_log.clear(), g_freed.clear();
    }
    HLList* Own(HLList* l) { return lists_.push_back(l), l; }
    // A list of LONGs with the logging callbacks; the log starts empty.
    HLList* Make(const Longs& values, UINT sorted = 0)
    {
        HLList* l = Own(HLListCreate(sizeof(LONG), LoggedAlloc, LoggedCompare, nullptr, LoggedFree, nullptr, sorted));
        g_allocBudget = -1;
        for (LONG v : values)
            HLListAppend(l, &v);
        g_log.clear();
        return l;
    }
};

TEST_F(HLListTest, CreateChecksItemSizeAndKeepsOnlyBit0OfSorted)
{
    struct Row { LONG itemSize; UINT sorted; bool made; WORD flags; };
    const Row rows[] = {{-2, 0, false, 0}, {-100, 1, false, 0}, {-1, 0, true, HLLIST_EMPTY},
                        {0, 1, true, HLLIST_EMPTY | HLLIST_SORTED}, {4, 2, true, HLLIST_EMPTY},
                        {4, 0xFFFF, true, HLLIST_EMPTY | HLLIST_SORTED}};
    for (const Row& r : rows) {
        HLList* l = Own(HLListCreate(r.itemSize, nullptr, nullptr, nullptr, nullptr, nullptr, r.sorted));
        ASSERT_EQ(l != nullptr, r.made) << "itemSize " << r.itemSize;
        if (l)
            EXPECT_TRUE(l->flags == r.flags && l->itemSize == r.itemSize && !l->pfnDataCompare &&
                        l->pfnAlloc == HLDefaultAlloc && l->pfnCompare == HLDefaultCompare &&
                        l->pfnFree == HLDefaultFree && l->pfnData == HLDefaultData &&
                        (l->count | l->cursorIndex | (LONG)l->userWord) == 0) << "itemSize " << r.itemSize;
    }
}

TEST_F(HLListTest, NullListGivesTheFailureResults)
{
    LONG key = 1, found = 9;
    EXPECT_TRUE(!HLListFind(nullptr, &key, 0, &found) && found == 0) << "the out index is cleared before any test";
    EXPECT_EQ(HLListCopy(nullptr, nullptr) | HLListEmpty(nullptr) | HLListDestroy(nullptr) | HLListRemove(nullptr, 0) |
                  HLListInsertPos(nullptr, &key), 0);
    EXPECT_TRUE(!HLListGetItem(nullptr, 0) && !HLListDup(nullptr));
    for (LONG r : {HLListInsert(nullptr, 0, &key), HLListAdd(nullptr, &key), HLListAppend(nullptr, &key),
                   HLListMove(nullptr, 0, 1)})
        EXPECT_EQ(r, -1);
}

// The cursor is planted one node ahead of where cursorIndex says, so the node
// returned shows whether the step walked on from the cursor or from the head.
TEST_F(HLListTest, ForwardStepWalksFromCursorBackwardStepRestartsFromHead)
{
    struct Row { LONG at, ask, value, cursorIndex; };
    const Row rows[] = {{2, 3, 4, 3}, {2, 6, 7, 6}, // hops on from the planted cursor
                        {2, 2, 3, 2},               // same index: the cursor as it is
                        {3, 2, 2, 2}, {5, 0, 0, 0}, // backward, even by one: from the head
                        {3, -1, 7, 7}};             // -1: the last at once
    HLList* l = Make({0, 1, 2, 3, 4, 5, 6, 7});
    for (const Row& r : rows) {
        HLListGetItem(l, r.at);
        l->cursor = l->cursor->next;
        LPVOID node = HLListGetItem(l, r.ask);
        EXPECT_TRUE(node && Val(node) == r.value && l->cursorIndex == r.cursorIndex && l->cursor == node)
            << "at " << r.at << " ask " << r.ask;
    }
}

// GetItem(-1) on an empty list leaves cursorIndex at -1, and appending keeps it
// while the cursor goes to the first node: forward steps then land one node too far.
TEST_F(HLListTest, MinusOneOnEmptyListSkewsStepsUntilTheNamedOperationsResetTheCursor)
{
    struct Row { char op; LONG arg; bool repaired; };
    const Row rows[] = {{'-', 0, false}, {'A', 0, false}, {'I', 7, false}, // append, insert past the end
                        {'R', 2, true},  {'I', 0, true},  {'I', 2, true},   // insert in front of, behind the last
                        {'M', 0, true},  {'G', -1, true}};
    for (const Row& r : rows) {
        HLList* l = Make({});
        EXPECT_TRUE(!HLListGetItem(l, -1) && l->cursorIndex == -1 && !l->cursor);
        for (LONG x : {10, 20, 30})
            HLListAppend(l, &x);
        EXPECT_TRUE(l->cursorIndex == -1 && l->cursor == l->first);
        Change(l, r.op, r.arg, 99);
        ExpectWhole(l);
        EXPECT_EQ(HLListGetItem(l, 1), Nodes(l)[r.repaired ? 1 : 2]) << r.op << r.arg;
    }
}

// One row per change of a list whose cursor stands on index 2 (see Change: A and
// I put 9, D puts arg). budget: allocations that succeed; -1 for all.
TEST_F(HLListTest, ChangesKeepTheRingWholeAndReportAsDocumented)
{
    struct Row { char op; bool sorted; Longs start; LONG arg, budget, result; const char *values, *log; bool atHead; };
    const Longs L = {10, 20, 30};
    const Row rows[] = {
        {'A', 0, {}, 0, -1, 0, "9", "a9 ", 0}, {'A', 0, {}, 0, 0, -1, "", "a9 ", 0}, // a failure gives count - 1
        {'A', 0, L, 0, -1, 3, "10 20 30 9", "a9 ", 0}, {'A', 0, L, 0, 0, 2, "10 20 30", "a9 ", 0},
        {'I', 0, L, 0, -1, 0, "9 10 20 30", "a9 ", 1}, {'I', 0, L, 1, -1, 1, "10 9 20 30", "a9 ", 1},
        {'I', 0, L, 2, -1, 2, "10 20 9 30", "a9 ", 1}, {'I', 0, L, 1, 0, -1, "10 20 30", "a9 ", 0},
        {'I', 0, L, -1, -1, 3, "10 20 30 9", "a9 ", 0}, {'I', 0, L, 3, -1, 3, "10 20 30 9", "a9 ", 0}, // appends
        {'I', 0, L, 3, 0, 2, "10 20 30", "a9 ", 0},     {'R', 0, L, 0, -1, 1, "20 30", "f10 ", 1},
        {'R', 0, L, 1, -1, 1, "10 30", "f20 ", 1},      {'R', 0, L, 2, -1, 1, "10 20", "f30 ", 1},
        {'R', 0, {5}, 0, -1, 1, "", "f5 ", 1},          {'R', 0, L, -1, -1, 0, "10 20 30", "", 0},
        {'R', 0, L, 3, -1, 0, "10 20 30", "", 0},       {'D', 0, L, 9, -1, 3, "10 20 30 9", "a9 ", 0}, // unsorted
        {'D', 1, {}, 9, -1, 0, "9", "a9 ", 1},          {'D', 1, L, 35, -1, 3, "10 20 30 35", "c30 a35 ", 0},
        {'D', 1, L, 30, -1, 2, "10 20 30 30", "c30 c10 c20 c30 a30 ", 1}, // the last first; newest first among equals
        {'D', 1, L, 10, -1, 0, "10 10 20 30", "c30 c10 a10 ", 1},
        {'D', 1, L, 5, 0, -1, "10 20 30", "c30 c10 a5 ", 0}, // failing: as the insert reports
        {'D', 1, L, 40, 0, 2, "10 20 30", "c30 a40 ", 0},    // or as the append does, count - 1
        {'E', 0, L, 0, -1, 1, "", "f10 f20 f30 ", 1},        // in index order; the cursor cleared
        {'G', 0, L, -2, -1, 0, "10 20 30", "", 0}, {'G', 0, L, 3, -1, 0, "10 20 30", "", 0}, // out of range:
        {'G', 0, L, 0x7FFFFFFF, -1, 0, "10 20 30", "", 0},                                  // null, cursor alone
    };
    for (const Row& r : rows) {
        HLList* l = Make(r.start, r.sorted);
        HLListGetItem(l, 2);
        const LONG cursorIndex = l->cursorIndex;
        HLNode* const cursor = l->cursor;
        g_allocBudget = r.budget;
        EXPECT_EQ(Change(l, r.op, r.arg, r.op == 'D' ? r.arg : 9), r.result) << r.op << r.arg;
        EXPECT_EQ(Values(l), r.values) << r.op << r.arg;
        EXPECT_EQ(g_log, r.log) << r.op << r.arg;
        ExpectWhole(l);
        EXPECT_EQ(l->cursorIndex, r.atHead ? 0 : cursorIndex) << r.op << r.arg << ": appending never moves cursorIndex";
        EXPECT_EQ(l->cursor, r.atHead || !cursor ? l->first : cursor) << r.op << r.arg;
    }
}

// count names the first node again by the ring. Moving the last node to the
// front, or the first to the end, changes no link: only the ring's start moves.
TEST_F(HLListTest, MoveReordersAndEndsWithCursorOnLast)
{
    struct Row { LONG from, to, result; const char* values; bool linksKept; };
    const Row rows[] = {
        {3, 1, 1, "0 3 1 2 4", 0}, {1, 3, 3, "0 2 3 1 4", 0}, {0, 2, 2, "1 2 0 3 4", 0}, {4, 2, 2, "0 1 4 2 3", 0},
        {3, 4, 4, "0 1 2 4 3", 0}, {5, 2, 2, "0 2 3 4 1", 0}, {2, 5, 5, "0 2 1 3 4", 0}, {4, 0, 0, "4 0 1 2 3", 1},
        {0, 4, 4, "1 2 3 4 0", 1}, {1, 5, 5, "0 1 2 3 4", 1}, {0, 5, 5, "1 2 3 4 0", 1}, {5, 0, 0, "0 1 2 3 4", 1},
        {2, 2, -1, "0 1 2 3 4", 1}, {-1, 2, -1, "0 1 2 3 4", 1}, {0, 6, -1, "0 1 2 3 4", 1},
    };
    for (const Row& r : rows) {
        HLList* l = Make({0, 1, 2, 3, 4});
        std::vector<HLNode*> nodes = Nodes(l), next;
        for (HLNode* n : nodes)
            next.push_back(n->next);
        EXPECT_EQ(HLListMove(l, r.from, r.to), r.result) << r.from << "->" << r.to;
        EXPECT_EQ(Values(l), r.values) << r.from << "->" << r.to;
        ExpectWhole(l);
        for (size_t i = 0; r.linksKept && i < nodes.size(); ++i)
            EXPECT_EQ(nodes[i]->next, next[i]) << r.from << "->" << r.to << " relinked";
        if (r.result >= 0)
            EXPECT_TRUE(l->cursor == l->last && l->cursorIndex == 4) << r.from << "->" << r.to;
    }
    HLList* empty = Make({});
    EXPECT_TRUE(HLListMove(empty, 0, 1) == -1 && empty->cursorIndex == 0);
}

TEST_F(HLListTest, FindWalksTheRingAndSortedFindSkipsToTheHead)
{
    struct Row { UINT sorted; LONG key, start, found; const char* log; };
    const Row rows[] = {
        {0, 5, 0, 0, "c5 "}, {0, 5, 1, 2, "c3 c5 "}, {0, 5, 3, 0, "c7 c5 "}, {0, 9, 2, -1, "c5 c7 c5 c3 "},
        {0, 3, -3, 1, "c5 c3 "}, {0, 3, 6, 1, "c5 c7 c5 c3 "}, {1, 20, 2, 1, "c30 c10 c20 "}, {1, 40, 3, 3, "c40 "},
        {1, 15, 0, -1, "c10 c20 "}, {1, 35, 2, -1, "c30 c40 c10 c20 "}, {1, 5, 1, -1, "c20 c10 "},
    };
    for (const Row& r : rows) {
        HLList* l = Make(r.sorted ? Longs{10, 20, 30, 40} : Longs{5, 3, 5, 7}, r.sorted);
        LONG found = 77, start = r.start < 0 ? 0 : r.start % 4;
        LPVOID node = HLListFind(l, &r.key, r.start, &found);
        EXPECT_EQ(g_log, r.log) << "key " << r.key << " from " << r.start;
        EXPECT_TRUE(node == (r.found < 0 ? nullptr : Nodes(l)[r.found]) && found == (r.found < 0 ? 0 : r.found))
            << "key " << r.key << " from " << r.start;
        EXPECT_TRUE(l->cursorIndex == start && l->cursor == Nodes(l)[start]) << "the cursor stays on the start node";
    }
    HLList* l = Make({});
    LONG key = 1, found = 5;
    EXPECT_TRUE(!HLListFind(l, &key, 3, &found) && found == 0) << "an empty list";
    HLListAppend(l, &key);
    found = 5;
    EXPECT_TRUE(!HLListFind(l, nullptr, 0, &found) && found == 0) << "a null key";
    EXPECT_NE(HLListFind(l, &key, 0, nullptr), nullptr);
}

// Copy appends even into a sorted list; Dup makes the list from source's settings.
TEST_F(HLListTest, CopyAndDupAppendSourceItemsDroppingFailedAllocationsSilently)
{
    HLList* dest = Make({1, 5}, 1);
    HLList* source = Make({9, 2, 7}, 1);
    dest->pfnData = LoggedData;
    EXPECT_TRUE(HLListCopy(dest, source) == 1 && Values(dest) == "1 5 9 2 7");
    EXPECT_EQ(g_log, "d3:9 a9 d3:2 a2 d3:7 a7 ") << "dest's pfnData is given the source list and node";
    EXPECT_TRUE(source->cursor == source->last && source->cursorIndex == 2);
    dest->pfnData = nullptr;
    EXPECT_TRUE((HLListCopy(dest, source) | HLListCopy(nullptr, source)) == 0 && dest->count == 5);
    source->userWord = 1234;
    HLList* copy = Own(HLListDup(source));
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->itemSize == source->itemSize && copy->pfnAlloc == source->pfnAlloc &&
                copy->pfnCompare == source->pfnCompare && copy->pfnFree == source->pfnFree &&
                copy->pfnData == source->pfnData && copy->flags == HLLIST_SORTED && copy->userWord == 0);
    EXPECT_EQ(Values(copy), "9 2 7");
    g_allocBudget = 2;
    EXPECT_EQ(Values(Own(HLListDup(source))), "9 2");
    g_log.clear();
    g_allocBudget = 4; // into itself: the bound is re-read, so it grows while allocation succeeds
    EXPECT_TRUE(HLListCopy(source, source) == 1 && Values(source) == "9 2 7 9 2 7 9");
    EXPECT_EQ(g_log, "a9 a2 a7 a9 a2 a7 a9 ") << "one attempt per index while count grew";
}

// A pfnCompare that takes two nodes, as HLListCompare needs: a node of a as key.
HLList* g_compareA;
HLList* g_compareB;
LONG CALLBACK NodeCompare(HLList* list, LPCVOID key, LPVOID node)
{
    EXPECT_TRUE(list == g_compareA && InList(g_compareA, key) && InList(g_compareB, node));
    return Val(key) - Val(node);
}

TEST_F(HLListTest, CompareOrdersByFirstDifferenceThenLength)
{
    struct Row { Longs a, b; int sign; };
    const Row rows[] = {{{1, 2, 3}, {1, 2, 3}, 0}, {{1, 2}, {1, 2, 3}, -1}, {{1, 2, 3}, {1, 2}, 1},
                        {{1, 9}, {1, 2, 3}, 1},    {{1, 2, 3}, {2}, -1},    {{}, {}, 0}};
    for (const Row& r : rows) {
        g_compareA = Make(r.a);
        g_compareB = Make(r.b);
        g_compareA->pfnCompare = NodeCompare;
        LONG result = HLListCompare(g_compareA, g_compareB);
        EXPECT_EQ((result > 0) - (result < 0), r.sign);
    }
    EXPECT_TRUE(HLListCompare(nullptr, g_compareA) == -1 && HLListCompare(g_compareA, nullptr) == 1)
        << "a null list sorts first";
}

TEST_F(HLListTest, EmptyLeavesAReusableListAndDestroyFreesTheRest)
{
    HLList* l = Make({4, 5});
    LONG v = 8;
    EXPECT_TRUE(HLListEmpty(l) == 1 && HLListAppend(l, &v) == 0 && Val(HLListGetItem(l, 0)) == 8);
    lists_.pop_back(); // destroyed here
    g_log.clear();
    EXPECT_TRUE(HLListDestroy(l) == 1 && g_log == "f8 ");
}

LONG CALLBACK Answer42(LPCVOID, LPCVOID) { return 42; }

// Alloc copies itemSize bytes, or a whole string when itemSize is -1, and
// zero-fills for null data; Compare folds only A to Z and takes bytes unsigned.
TEST_F(HLListTest, DefaultCallbacksCopyAndCompareStringsOrRecords)
{
    struct Row { LONG itemSize; const char* key; const char* payload; LONG result; };
    const Row rows[] = {
        {-1, nullptr, "a", -1}, {-1, "abc", "ABC", 0}, {-1, "abc", "abd", -1}, {-1, "b", "A", 1}, {-1, "_", "A", -1},
        {-1, "\xE9", "a", 1}, {-1, "ab", "abc", -1}, {-1, "abc", "ab", 1}, {2, "\x01\x80", "\x01\x7F", 1},
        {2, "\x01\x7F", "\x01\x80", -1}, {2, "ab", "ab", 0}, {0, "a", "b", 0}, {3, "xyz", "xyz-not-copied", 0},
    };
    for (const Row& r : rows) {
        HLList* l = Own(HLListCreate(r.itemSize, nullptr, nullptr, nullptr, nullptr, nullptr, 0));
        HLListAppend(l, (LPVOID)r.payload);
        HLListAppend(l, nullptr);
        EXPECT_EQ(HLDefaultCompare(l, r.key, l->first), r.result) << (r.key ? r.key : "null") << " vs " << r.payload;
        EXPECT_EQ(memcmp(HLDefaultData(l, l->last), "\0\0", r.itemSize < 0 ? 1 : r.itemSize), 0) << "zero-filled";
    }
    HLList* l = Own(HLListCreate(-1, nullptr, nullptr, Answer42, nullptr, nullptr, 0));
    HLListAppend(l, (LPVOID) "Abc");
    EXPECT_STREQ((char*)HLDefaultData(l, l->first), "Abc");
    EXPECT_EQ(HLDefaultCompare(l, "a", l->first), 42) << "the owner's pfnDataCompare wins";
    l->itemSize = -5;
    EXPECT_TRUE(!HLDefaultAlloc(l, nullptr) && !HLDefaultFree(nullptr, nullptr) && !HLDefaultData(nullptr, nullptr));
    HLList* sorted = Own(HLListCreate(sizeof(LONG), nullptr, nullptr, nullptr, nullptr, nullptr, 1));
    for (LONG v : {3, 1, 2})
        HLListAdd(sorted, &v);
    EXPECT_TRUE(HLListAdd(sorted, nullptr) == 0 && Values(sorted) == "0 1 2 3") << "a null key first, zero-filled";
}

} // namespace
