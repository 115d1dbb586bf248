// The typed message block as each class answers it, on a record of the shape the
// typed controls keep; and HStat's layout of text and group labels.
#include "wintest.h"
#include "buttons/hstat.h"
#include "edit/typed.h"
#include "frame/strings.h"

#include <string.h>
#include <algorithm>
#include <vector>

namespace {

// A record laid out as HEdit and HList lay out theirs.
struct TypedRec {
    HCtlBaseEx base;
    HTypedHead head;
    char dataClass, dataType;
    LPSTR maskText;
    LPVOID dataLink;
    int setMaskCalls;
};

LRESULT CountingSetMask(LPVOID record, BOOL, LPCSTR) { return ++((TypedRec*)record)->setMaskCalls + 40; }
LRESULT DataSizeOf(LPVOID, SHORT index) { return 100 + index; }
LRESULT SetLink(LPVOID record, WPARAM, LPVOID link) { ((TypedRec*)record)->dataLink = link; return 7; }

constexpr HTypedClass kEdit = {HTYPED_EDIT, nullptr, DataSizeOf, SetLink};
constexpr HTypedClass kList = {HTYPED_LIST, nullptr, DataSizeOf, SetLink};
constexpr HTypedClass kButt = {HTYPED_BUTT, nullptr, nullptr, nullptr};
constexpr HTypedClass kGrid = {HTYPED_GRID, nullptr, nullptr, nullptr};
constexpr HTypedClass kEditHook = {HTYPED_EDIT, CountingSetMask, nullptr, nullptr};

class TypedBlock : public ::testing::Test {
protected:
    void SetUp() override
    {
        ShowWindow(parent.hwnd(), SW_SHOW);
        ctl = parent.Child("STATIC", "", 0, 9, 0, 0, 50, 20);
        rec.dataClass = 'n';
        rec.dataType = 'i';
        fields = {&rec.head.backBrush, &rec.head.focusBrush, &rec.head.colorNormal, &rec.head.colorAlt,
                  &rec.dataClass, &rec.dataType, &rec.maskText, &rec.dataLink};
    }
    void TearDown() override { HStrReplace(&rec.maskText, nullptr); }
    bool Send(const HTypedClass& cls, UINT msg, WPARAM wParam, LPARAM lParam, LRESULT* result)
    {
        return HTypedMsg(&cls, &fields, ctl, &rec, msg, wParam, lParam, result);
    }
    bool Repainted()
    {
        RECT r;
        bool pending = GetUpdateRect(ctl, &r, FALSE);
        ValidateRect(ctl, nullptr);
        return pending;
    }
    TestParent parent;
    HWND ctl = nullptr;
    TypedRec rec = {};
    HTypedFields fields;
};

// Which messages of the block each class answers.
TEST_F(TypedBlock, EachClassAnswersItsPartOfTheBlock)
{
    const struct { const HTypedClass* cls; std::vector<UINT> answered; } kRows[] = {
        {&kEdit, {0x464, 0x465, 0x466, 0x467, 0x468, 0x469, 0x46A, 0x46B, 0x46C, 0x46D, 0x46E, 0x470}},
        {&kList, {0x464, 0x465, 0x466, 0x467, 0x468, 0x469, 0x46A, 0x46B, 0x46C, 0x46D, 0x46E, 0x46F, 0x470}},
        {&kButt, {0x464, 0x465, 0x46A, 0x46B}},
        {&kGrid, {0x464, 0x465}},
    };
    LRESULT result;
    for (const auto& row : kRows)
        for (UINT msg = HM_GETBACKBRUSH; msg <= HM_SETDATALINK; ++msg)
            EXPECT_EQ(std::count(row.answered.begin(), row.answered.end(), msg) == 1, Send(*row.cls, msg, 0, 0, &result))
                << row.cls->kind << " 0x" << std::hex << msg;
}

TEST_F(TypedBlock, BrushSwapRepaintsOnlyListAndGridAndColourWordPicksNormalOrAlt)
{
    HBRUSH a = (HBRUSH)GetStockObject(GRAY_BRUSH), b = (HBRUSH)GetStockObject(DKGRAY_BRUSH);
    const struct { const HTypedClass* cls; bool repaints; } kRows[] = {
        {&kEdit, false}, {&kButt, false}, {&kList, true}, {&kGrid, true}};
    LRESULT result;
    for (const auto& row : kRows) {
        rec.head.backBrush = a;
        Repainted();
        ASSERT_TRUE(Send(*row.cls, HM_SETBACKBRUSH, (WPARAM)b, 1, &result));
        EXPECT_EQ((LRESULT)a, result);
        EXPECT_EQ(b, rec.head.backBrush);
        EXPECT_EQ(row.repaints, Repainted()) << row.cls->kind;
    }
    Send(kList, HM_SETCOLOR, 0, 0x11, &result);
    Send(kList, HM_SETCOLOR, 1, 0x22, &result);
    EXPECT_EQ(1, result);
    EXPECT_TRUE(Repainted());
    EXPECT_EQ(0x11u, rec.head.colorNormal);
    Send(kEdit, HM_GETCOLOR, 5, 0, &result);
    EXPECT_EQ(0x22, result);
    Send(kButt, HM_SETCOLOR, 1, 0x33, &result); // wParam ignored: the one colour word
    EXPECT_EQ(0x33u, rec.head.colorNormal);
}

TEST_F(TypedBlock, MaskIsCopiedWithinTheSignedSizeAndSetMaskRefusalsDifferByClass)
{
    HStrReplace(&rec.maskText, "#,##0");
    const struct { WPARAM size; LRESULT result; const char* text; } kRows[] = {
        {8, 5, "#,##0"}, {3, 2, "#,"}, {0, 0, "?"}, {0xFFFF, 0, "?"}, {0x10004, 3, "#,#"}};
    LRESULT result;
    for (const auto& row : kRows) {
        char buffer[8] = "?";
        ASSERT_TRUE(Send(kEdit, HM_GETMASK, row.size, (LPARAM)buffer, &result));
        EXPECT_EQ(row.result, result) << row.size;
        EXPECT_STREQ(row.text, buffer) << row.size;
    }
    Send(kEdit, HM_SETMASK, 0, 0, &result);
    EXPECT_EQ(-2, result);
    Send(kList, HM_SETMASK, 0, 0, &result);
    EXPECT_EQ(0, result);
    Send(kList, HM_SETMASK, 1, (LPARAM) "0.00", &result);
    EXPECT_EQ(1, result);
    EXPECT_STREQ("0.00", rec.maskText);
    Send(kEditHook, HM_SETMASK, 0, (LPARAM) "x", &result);
    EXPECT_EQ(41, result); // the class's own step
    rec.dataClass = HCLASS_STRING;
    Send(kEditHook, HM_SETMASK, 0, (LPARAM) "y", &result);
    EXPECT_EQ(0, result);
    EXPECT_EQ(1, rec.setMaskCalls);
}

TEST_F(TypedBlock, LettersAreSignExtendedAndIndexesSigned)
{
    rec.dataClass = (char)0xE9;
    LRESULT result;
    Send(kEdit, HM_GETCLASS, 0, 0, &result);
    EXPECT_EQ(-23, result);
    Send(kList, HM_GETDATASIZE, 0xFFFE, 0, &result);
    EXPECT_EQ(98, result);
    int value;
    Send(kList, HM_SETDATALINK, 1, (LPARAM)&value, &result);
    Send(kList, HM_GETDATALINK, 0, 0, &result);
    EXPECT_EQ((LRESULT)&value, result);
}

// ---- HStat's layout ----

TEST(StatLayout, TextStartsBelowItsFrameAndGroupLabelsAreInset)
{
    TestParent parent;
    HStatRec r = {};
    r.hWnd = parent.Child("STATIC", "", 0, 1, 0, 0, 100, 40);
    r.text = (LPSTR) "Label";
    HDC dc = GetDC(r.hWnd);
    const struct { DWORD style; int top; } kRows[] = {
        {HSK_TEXT, 1}, {HSK_TEXT | WS_BORDER, 2}, {HSK_TEXT | HSS_SUNKEN, 3}, {HSK_TEXT | HSS_RIDGE | WS_BORDER, 3},
        {HSK_GROUP, 0}, {HSK_GROUP | WS_BORDER, 1}, {HSK_GROUP | HSS_SUNKEN, 1}, {HSK_GROUP | HSS_RIDGE, 2},
    };
    RECT client, content;
    for (const auto& row : kRows) {
        r.dwStyle = row.style;
        HStatLayout(&r, dc, &client, &content);
        EXPECT_EQ(row.top, content.top) << std::hex << row.style;
        if ((row.style & HSS_KINDMASK) == HSK_GROUP)
            EXPECT_EQ(100 - row.top, content.right) << std::hex << row.style;
    }
    r.dwStyle = HSK_BLANK;
    HStatLayout(&r, dc, &client, &content);
    EXPECT_TRUE(IsRectEmpty(&content));
    ReleaseDC(r.hWnd, dc);
}

} // namespace
