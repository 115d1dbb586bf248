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

// Hosts call the date and key routines by name, with the documented arguments.
TEST_F(BadDateWindow, TheDateAndKeyRoutinesAreExportedWithTheirDocumentedArguments)
{
    HMODULE dll = GetModuleHandleA("QUILL32.dll");
    ASSERT_TRUE(dll);
    static const char* const kNames[] = {"DateTimeToData", "DataToDateTime", "HDateFormat",   "HDateParse",
                                         "HDateCheck",     "HTimeCheck",     "HDateBuildMask", "HDataTypeChar",
                                         "HDataDeleteChar"};
    for (const char* name : kNames)
        EXPECT_TRUE(GetProcAddress(dll, name)) << name;
    EXPECT_FALSE(GetProcAddress(dll, "HStrInsertFill")); // an internal string helper

    char mask[128];
    HDateBuildMask("dd mmmm yyyy", 1, 0, mask);
    EXPECT_STREQ("mm/dd/yyyy", mask);
    HDateTime r;
    EXPECT_EQ(1, HDateParse(&r, "03/07/2026", "dd mmmm yyyy", 1, 0));
    char text[64];
    EXPECT_EQ(22, HDateFormat(&r, "Dddd, d Mmmm yyyy", text, sizeof text, 0, 1, 0));
    EXPECT_STREQ("Saturday, 7 March 2026", text);
    r.bDay = 30;
    r.bMonth = 2;
    EXPECT_EQ(0, HDateCheck(ctl, &r, 1, 1, 1, 1));
    EXPECT_EQ(28, r.bDay);
    const std::vector<SeenMsg> expected = {{WM_COMMAND, 41, HN_BADDATE, ctl}};
    EXPECT_TRUE(FromControl() == expected) << Describe(parent.seen);
    r.bHour = 14;
    EXPECT_EQ(0, HTimeCheck(nullptr, &r, 1, 1, 1, 0, 0));
    EXPECT_EQ(12, r.bHour);

    char field[16] = "__-__";
    int advance = -1, repaint = -1;
    EXPECT_EQ(0, HDataTypeChar(HCLASS_MASKED, HTYPE_STRING, field, "##-##", 2, '3', &advance, &repaint));
    EXPECT_STREQ("__-3_", field);
    EXPECT_EQ(2, advance);
    EXPECT_EQ(2, repaint);
    char number[16] = "0.05";
    EXPECT_EQ(1, HDataDeleteChar(HCLASS_NUMBER, HTYPE_DOUBLE, number, "0.00", 3));
    EXPECT_STREQ("0.00", number);
}

} // namespace
