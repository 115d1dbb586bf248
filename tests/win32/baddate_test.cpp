// The bad-date notification through real windows: ParseData of a date class
// for a control tells its notify target, and a veto takes the focus back.
#include "wintest.h"

namespace {

// A minimal control on the library's spine: a record with its notify target.
LRESULT CALLBACK DateHandler(HWND hWnd, UINT msg, WPARAM, LPARAM lParam, LPBOOL notHandled, LPVOID record)
{
    if (msg == WM_NCCREATE) {
        const CREATESTRUCTA* cs = (const CREATESTRUCTA*)lParam;
        HCtlBase* c = (HCtlBase*)GlobalAlloc(GPTR, sizeof(HCtlBase));
        SendMessageA(hWnd, HM_SETPTR, 0, (LPARAM)c);
        c->hWnd = hWnd;
        c->hNotify = cs->hwndParent;
        c->wId = LOWORD((UINT_PTR)cs->hMenu);
    } else if (msg == WM_NCDESTROY) {
        GlobalFree(record);
        SendMessageA(hWnd, HM_SETPTR, 0, 0);
    }
    *notHandled = TRUE;
    return 0;
}

LRESULT CALLBACK DateWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, DateHandler, 0);
}

class BadDateWindow : public ::testing::Test {
protected:
    void SetUp() override
    {
        WNDCLASSA wc = {};
        wc.lpfnWndProc = DateWnd;
        wc.cbWndExtra = 4;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.lpszClassName = "QuillDateSpine";
        RegisterClassA(&wc); // a second registration fails harmlessly
        ShowWindow(parent.hwnd(), SW_SHOW);
        ctl = parent.Child("QuillDateSpine", "", 0, 41);
        other = parent.Child("EDIT", "", 0, 42, 10, 50);
        ASSERT_TRUE(ctl && other);
        SetFocus(other);
        // The default layout of the texts below, whatever the profile says.
        SetDateSep('/');
        SetTimeSep(':');
        SetDefDateFormat("mm/dd/yyyy");
        SetDefTimeFormat("h:mm:ss");
    }
    void TearDown() override { GetIntlSettings(); }
    // What the parent heard from the date control; the edit's own traffic aside.
    std::vector<SeenMsg> FromControl() const
    {
        std::vector<SeenMsg> out;
        for (const SeenMsg& m : parent.seen)
            if (m.from == ctl) out.push_back(m);
        return out;
    }
    TestParent parent;
    HWND ctl = nullptr, other = nullptr;
};

TEST_F(BadDateWindow, ABadDateIsRepairedAndNotified)
{
    LONG value = 0;
    EXPECT_EQ(1, ParseData(ctl, &value, HCLASS_DATE, HTYPE_YYYYMMDD, nullptr, "02/30/2023", nullptr));
    EXPECT_EQ(20230228, value);
    const std::vector<SeenMsg> expected = {{WM_COMMAND, 41, HN_BADDATE, ctl}};
    EXPECT_TRUE(FromControl() == expected) << Describe(parent.seen);
    EXPECT_NE(ctl, GetFocus()); // no veto: the focus stays where it was
}

TEST_F(BadDateWindow, AVetoTakesTheFocusBackToTheControl)
{
    parent.onCommand = [&](const SeenMsg& m) {
        if (m.code == HN_BADDATE)
            SendMessageA(m.from, HM_VETO, 0, 0);
    };
    HDateTime value = {};
    EXPECT_EQ(1, ParseData(ctl, &value, HCLASS_TIME, HTYPE_DATETIME, "hh:mm", "25:10", nullptr));
    EXPECT_EQ(23, value.bHour);
    const std::vector<SeenMsg> expected = {{WM_COMMAND, 41, HN_BADDATE, ctl}};
    EXPECT_TRUE(FromControl() == expected) << Describe(parent.seen);
    EXPECT_EQ(ctl, GetFocus());
}

TEST_F(BadDateWindow, GoodDatesAndSilencedControlsSendNothing)
{
    LONG value = 0;
    EXPECT_EQ(1, ParseData(ctl, &value, HCLASS_DATE, HTYPE_YYYYMMDD, nullptr, "02/28/2023", nullptr));
    EXPECT_EQ(20230228, value);
    SendMessageA(ctl, HM_SETNONOTIFY, 1, 0);
    EXPECT_EQ(1, ParseData(ctl, &value, HCLASS_DATE, HTYPE_YYYYMMDD, nullptr, "13/01/2023", nullptr));
    EXPECT_EQ(20231201, value);
    EXPECT_TRUE(FromControl().empty()) << Describe(parent.seen);
}

} // namespace
