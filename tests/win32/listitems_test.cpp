// The HList item store through its exports: insertion order, caret tracking,
// marks, selection, codes and links.
#include "wintest.h"

#include <string.h>

#include <string>
#include <vector>

namespace {

struct List {
    TestParent parent;
    HWND hWnd;
    List(const char* typeSpec, DWORD style)
    {
        hWnd = parent.Child(HLIST_CLASS, typeSpec, style, 7, 10, 10, 120, 200);
        SendMessageA(hWnd, HM_SETBACKBRUSH, (WPARAM)GetStockObject(WHITE_BRUSH), 0);
    }
    std::vector<LONG> Data() const
    {
        std::vector<LONG> out;
        LONG v = 0;
        for (LONG i = 0; HLGetData(hWnd, i, &v) == 4; ++i)
            out.push_back(v);
        return out;
    }
    std::vector<LONG> Codes() const
    {
        std::vector<LONG> out;
        LONG v = 0;
        for (LONG i = 0; HLGetCode(hWnd, i, &v) == 4; ++i)
            out.push_back(v);
        return out;
    }
    LONG Caret() const { return (LONG)SendMessageA(hWnd, HLM_GETCARET, 0, 0); }
};

constexpr DWORD kSortData = 0x0002, kSortCode = 0x0004, kMultiple = 0x0008, kOwnerDraw = 0x0040;

struct InsertCase {
    const char* name;
    const char* typeSpec;
    DWORD style;
    std::vector<LONG> indexes, data, codes;
    std::vector<LONG> results, expectData, expectCodes;
};

TEST(ListItems, InsertPlacesItemsByIndexDataOrderOrCodeOrder)
{
    const InsertCase cases[] = {
        {"unsorted takes the index; outside the list appends", "%nl", 0, {-1, -1, 0, 99}, {5, 3, 9, 1}, {},
         {0, 1, 0, 3}, {9, 5, 3, 1}, {}},
        {"sorted by data ignores the index", "%nl", kSortData, {0, 0, 0}, {5, 3, 9}, {}, {0, 0, 2}, {3, 5, 9}, {}},
        {"code list follows the data", "%nl%nl", 0, {-1, 0}, {1, 2}, {10, 20}, {0, 0}, {2, 1}, {20, 10}},
        {"sorted by code wins over sorted by data", "%nl%nl", kSortData | kSortCode, {-1, -1, -1}, {1, 2, 3},
         {30, 10, 20}, {0, 0, 1}, {2, 3, 1}, {10, 20, 30}},
        {"sorted by code without a code list inserts nothing", "%nl", kSortCode, {4, -1}, {1, 2}, {}, {4, -1}, {}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        List l(c.typeSpec, c.style);
        for (size_t k = 0; k < c.data.size(); ++k) {
            LONG d = c.data[k], code = k < c.codes.size() ? c.codes[k] : 0;
            LONG got = HLInsertItemEx(l.hWnd, c.indexes[k], &d, c.codes.empty() ? nullptr : &code);
            EXPECT_EQ(c.results[k], got) << "insert " << k;
        }
        EXPECT_EQ(c.expectData, l.Data());
        EXPECT_EQ(c.expectCodes, l.Codes());
    }
}

struct CaretCase {
    const char* name;
    LONG caret;     // set before the change
    bool insert;    // else delete
    LONG index;
    LONG result;
    LONG expectCaret;
};

TEST(ListItems, CaretStaysOnItsItemThroughInsertAndDelete)
{
    const CaretCase cases[] = {
        {"insert before the caret moves it", 2, true, 1, 1, 3},
        {"insert at the caret moves it", 2, true, 2, 2, 3},
        {"insert after the caret leaves it", 1, true, 3, 3, 1},
        {"caret on the last item stays", 4, true, 0, 0, 4},
        {"deleting the current item goes to the one before", 2, false, 2, 1, 1},
        {"deleting item 0 with caret 0 leaves -1", 0, false, 0, 1, -1},
        {"deleting after the caret leaves it", 1, false, 3, 1, 1},
        {"a bad index deletes nothing", 1, false, 5, 0, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        List l("%nl", 0);
        LONG values[] = {10, 11, 12, 13, 14};
        ASSERT_EQ(5, HLAddItems(l.hWnd, 5, values));
        SendMessageA(l.hWnd, HLM_SETCARET, (WPARAM)c.caret, 0);
        LONG v = 99;
        LONG got = c.insert ? HLInsertItem(l.hWnd, c.index, &v) : HLDeleteItem(l.hWnd, c.index);
        EXPECT_EQ(c.result, got);
        EXPECT_EQ(c.expectCaret, l.Caret());
    }
}

TEST(ListItems, BadCallsGiveTheirFailureResults)
{
    List l("%nl", 0);
    LONG v = 1;
    EXPECT_EQ(0, HLDeleteItem(l.hWnd, 0)); // empty list
    EXPECT_EQ(1, HLEmptyList(l.hWnd));
    EXPECT_EQ(-1, HLAddItem(l.hWnd, nullptr));
    EXPECT_EQ(-1, HLAddItem(l.parent.hwnd(), &v)); // not a list: no record
    EXPECT_EQ(0, HLEmptyList(l.parent.hwnd()));
    EXPECT_EQ(0, HLSelectItem(l.hWnd, 0, HLSEL_SET));
    ASSERT_EQ(0, HLAddItem(l.hWnd, &v));
    EXPECT_EQ(0, HLSelectItem(l.hWnd, 0, 3));                  // unknown mode
    EXPECT_EQ(0, HLDeleteItems(l.hWnd, 0x20, 0, nullptr));     // unknown way
    EXPECT_EQ(0, HLMarkItems(l.hWnd, HLMARK_BYCODE, 1, &v));   // no code list
    EXPECT_EQ(0, HLGetData(l.hWnd, 0, nullptr));
    EXPECT_EQ(-1, HLFindCode(l.hWnd, 0, &v));
    EXPECT_EQ(-1, HLFindData(l.hWnd, 0, nullptr));
    EXPECT_EQ(0, HLSetCode(l.hWnd, 0, &v));
}

// Selected items 1, 2, 4 of ten, then a marking way; what HLGetItems gives back.
struct MarkCase {
    const char* name;
    UINT how;
    std::vector<LONG> keys;
    LONG count;
    UINT what;
    std::vector<LONG> expect;
};

TEST(ListItems, GetItemsGivesMarkedItemsUpToCount)
{
    const MarkCase cases[] = {
        {"selected, count 2 of three", HLMARK_SELECTED, {}, 2, HLGET_INDEX, {1, 2}},
        {"unselected data", HLMARK_UNSELECTED, {}, 3, HLGET_DATA, {100, 103, 105}},
        {"by data, codes given", HLMARK_BYDATA, {106, 999, 101}, 3, HLGET_CODE, {1, 6}},
        {"by code, indexes given", HLMARK_BYCODE, {9, 0}, 2, HLGET_INDEX, {0, 9}},
        {"by index skips negatives", HLMARK_BYINDEX, {-1, 7, 3}, 3, HLGET_INDEX, {3, 7}},
        {"another what gives nothing", HLMARK_ALL, {}, 3, 3, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        List l("%nl%nl", kMultiple);
        LONG data[10], codes[10];
        for (int i = 0; i < 10; ++i) {
            data[i] = 100 + i;
            codes[i] = i;
        }
        ASSERT_EQ(10, HLAddItemsEx(l.hWnd, 10, data, codes));
        LONG sel[] = {1, 2, 4};
        ASSERT_EQ(1, HLSelectItems(l.hWnd, HLSEL_SET, HLMARK_BYINDEX, 3, sel));
        std::vector<LONG> out(10, -7);
        std::vector<LONG> keys = c.keys;
        ASSERT_EQ(1, HLGetItems(l.hWnd, c.count, c.what, out.data(), c.how, keys.empty() ? nullptr : keys.data()));
        std::vector<LONG> given;
        for (LONG v : out)
            if (v != -7)
                given.push_back(v);
        EXPECT_EQ(c.expect, given);
    }
}

TEST(ListItems, DeleteByMarksRemovesEachItemOnceAndKeepsCodesParallel)
{
    List l("%nl%nl", 0);
    LONG data[] = {10, 11, 12, 13, 14}, codes[] = {0, 1, 2, 3, 4};
    ASSERT_EQ(5, HLAddItemsEx(l.hWnd, 5, data, codes));
    LONG twice[] = {1, 1, 3};
    EXPECT_EQ(1, HLDeleteItems(l.hWnd, HLMARK_BYINDEX, 3, twice));
    EXPECT_EQ((std::vector<LONG>{10, 12, 14}), l.Data());
    EXPECT_EQ((std::vector<LONG>{0, 2, 4}), l.Codes());
    LONG code = 4;
    EXPECT_EQ(1, HLDeleteItems(l.hWnd, HLMARK_BYCODE, 1, &code));
    EXPECT_EQ((std::vector<LONG>{10, 12}), l.Data());
    // Marks left by HLMarkItems add to a later way.
    LONG first = 10;
    EXPECT_EQ(1, HLMarkItems(l.hWnd, HLMARK_BYDATA, 1, &first));
    LONG none = -1;
    EXPECT_EQ(1, HLDeleteItems(l.hWnd, HLMARK_BYINDEX, 1, &none));
    EXPECT_EQ((std::vector<LONG>{12}), l.Data());
}

TEST(ListItems, StringListsOwnTheirTextAndParseTypedText)
{
    List s("%ss", kSortData);
    char text[8] = "pear";
    ASSERT_EQ(0, HLAddItem(s.hWnd, text));
    strcpy(text, "Apple");
    ASSERT_EQ(0, HLAddItem(s.hWnd, text));
    LPCSTR batch[] = {"fig", "banana"};
    EXPECT_EQ(2, HLAddItems(s.hWnd, 2, (LPVOID)batch));
    char out[16];
    const char* expect[] = {"Apple", "banana", "fig", "pear"};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ((LONG)strlen(expect[i]) + 1, HLGetData(s.hWnd, i, out));
        EXPECT_STREQ(expect[i], out);
    }
    EXPECT_EQ(1, HLFindData(s.hWnd, 0, (LPVOID)"BANANA")); // without regard to case

    List n("%nl%ss", 0);
    EXPECT_EQ(0, HLInsertStringEx(n.hWnd, -1, "42", "answer"));
    EXPECT_EQ(0, HLInsertStringEx(n.hWnd, 0, "7", nullptr));
    EXPECT_EQ((std::vector<LONG>{7, 42}), n.Data());
    EXPECT_EQ(7, HLGetCode(n.hWnd, 1, out));
    EXPECT_STREQ("answer", out);
    EXPECT_EQ(1, HLGetCode(n.hWnd, 0, out)); // no code given: an empty one
    EXPECT_EQ(-1, HLInsertStringEx(n.hWnd, 0, nullptr, "x"));
}

TEST(ListItems, LinksFollowTheCurrentItemAndKeepTheirValueWithoutOne)
{
    List l("%nl%nl", 0); // single selection
    LONG data[] = {10, 20, 30}, codes[] = {1, 2, 3};
    ASSERT_EQ(3, HLAddItemsEx(l.hWnd, 3, data, codes));
    LONG dataLink = 20, codeLink = -5;
    EXPECT_EQ(1, HLSetCodeLink(l.hWnd, &codeLink, FALSE));
    EXPECT_EQ(-5, codeLink); // no current item: nothing written
    EXPECT_EQ(1, HLSetDataLink(l.hWnd, &dataLink, TRUE));
    EXPECT_EQ(1, l.Caret());
    EXPECT_EQ(2, codeLink);
    EXPECT_EQ(1, HLIsSelected(l.hWnd, 1));
    LONG key = 3;
    EXPECT_EQ(1, HLSelectCode(l.hWnd, &key, HLSEL_SET));
    EXPECT_EQ(30, dataLink);
    EXPECT_EQ(0, HLIsSelected(l.hWnd, 1));
    key = 77; // unknown: the selection goes, the links keep their values
    EXPECT_EQ(0, HLSelectData(l.hWnd, &key, HLSEL_SET));
    EXPECT_EQ(-1, l.Caret());
    EXPECT_EQ(0, HLIsSelected(l.hWnd, 2));
    EXPECT_EQ(30, dataLink);
    EXPECT_EQ(3, codeLink);
    key = 9;
    EXPECT_EQ(1, HLSetCode(l.hWnd, 0, &key));
    EXPECT_EQ(9, l.Codes()[0]);

    List sorted("%nl%nl", kSortCode);
    ASSERT_EQ(0, HLAddItemEx(sorted.hWnd, &data[0], &codes[0]));
    EXPECT_EQ(0, HLSetCode(sorted.hWnd, 0, &key));
    EXPECT_EQ(1, sorted.Codes()[0]);
}

// WM_DELETEITEM reaches an owner-draw parent only when the whole list goes.
LONG g_deleteItems;
WNDPROC g_parentProc;
LRESULT CALLBACK CountDeletes(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_DELETEITEM) {
        const DELETEITEMSTRUCT* d = (const DELETEITEMSTRUCT*)lParam;
        EXPECT_EQ((UINT)ODT_LISTBOX, d->CtlType);
        EXPECT_EQ(0u, d->itemID);
        EXPECT_EQ((ULONG_PTR)(4 - g_deleteItems), d->itemData); // a '%nW' code is the item data
        ++g_deleteItems;
    }
    return CallWindowProcA(g_parentProc, hWnd, msg, wParam, lParam);
}

TEST(ListItems, OnlyEmptyingTellsAnOwnerDrawParent)
{
    List l("%nl%nW", kOwnerDraw);
    g_parentProc = (WNDPROC)SetWindowLongPtrA(l.parent.hwnd(), GWLP_WNDPROC, (LONG_PTR)CountDeletes);
    LONG data[] = {1, 2, 3, 4, 5}, codes[] = {5, 4, 3, 2, 1};
    ASSERT_EQ(5, HLAddItemsEx(l.hWnd, 5, data, codes));
    g_deleteItems = 0;
    LONG index = 0;
    EXPECT_EQ(1, HLDeleteItems(l.hWnd, HLMARK_BYINDEX, 1, &index));
    EXPECT_EQ(0, g_deleteItems);
    EXPECT_EQ(1, HLEmptyList(l.hWnd));
    EXPECT_EQ(4, g_deleteItems);
    EXPECT_EQ(0, SendMessageA(l.hWnd, HLM_GETCOUNT, 0, 0));
    SetWindowLongPtrA(l.parent.hwnd(), GWLP_WNDPROC, (LONG_PTR)g_parentProc);
}

} // namespace
