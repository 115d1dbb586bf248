// HButt through real windows: creation texts, the press machine by mouse and
// key with the notifications it sends, values and data links, radio groups,
// re-entrant notify targets, its messages, pixels of its faces, and a dialog
// template of buttons (butt.rc).
#include "wintest.h"

#include <string.h>
#include <string>
#include <vector>

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kWhite = RGB(255, 255, 255), kGreen = RGB(0, 255, 0);
const LPARAM kInside = MAKELPARAM(5, 5), kOutside = MAKELPARAM(500, 5);


class Butt : public ::testing::Test {
protected:
    void SetUp() override { ShowWindow(parent.hwnd(), SW_SHOW); }
    HWND Make(const char* text, DWORD style, int id = 40, int y = 10, int w = 120, int h = 40)
    {
        return parent.Child(HBUTT_CLASS, text, style, id, 10, y, w, h);
    }
    static std::string Text(HWND ctl)
    {
        char buffer[300] = "";
        SendMessageA(ctl, WM_GETTEXT, sizeof buffer, (LPARAM)buffer);
        return buffer;
    }
    // The log without the colour requests of painting.
    TestParent& Commands()
    {
        std::erase_if(parent.seen, [](const SeenMsg& m) { return m.msg != WM_COMMAND; });
        return parent;
    }
    static std::vector<SeenMsg> Clicks(HWND from, const std::vector<WORD>& codes)
    {
        std::vector<SeenMsg> v;
        for (WORD c : codes) v.push_back({WM_COMMAND, (WORD)GetDlgCtrlID(from), c, from});
        return v;
    }
    TestParent parent;
};

TEST(ButtDefaults, LoadDefTypeTextBuildsTheTypesTextBoundedByTheBuffer)
{
    const struct { int type; const char* text; int size; const char* expected; int length; } kRows[] = {
        {HBT_PUSH, nullptr, 256, "441;HBPush", 10},
        {HBT_DEFPUSH, "", 256, "441;", 4},
        {HBT_CHECK, "Cap", 256, "333w;Cap;HC1:HC2:HC3:HC4", 24},
        {HBT_RADIO, nullptr, 256, "333;HBRadio;HR1:HR2:HR3:HR2", 27},
        {HBT_3STATE, "x", 256, "333;x;HC1:HC2:HC3:HC4:HC5:HC6", 29},
        {HBT_PUSHRADIO, "R", 256, "441;R", 5},
        {HBT_CHECK, "Cap", 8, "333w;Ca", 7},
        {5, "x", 256, "untouched", 0},
        {7, "x", 256, "untouched", 0},
        {HBT_PUSH, "x", 0, "untouched", 0},
    };
    for (const auto& r : kRows) {
        char buffer[256] = "untouched";
        EXPECT_EQ(r.length, LoadDefTypeText(r.type, buffer, r.size, r.text)) << r.type << " " << r.size;
        EXPECT_STREQ(r.expected, buffer) << r.type << " " << r.size;
    }
}

TEST_F(Butt, CreationTextIsASpecificationWhenItStartsWithADigitElseACaption)
{
    const struct {
        DWORD style;
        const char* text;
        const char* caption;
        int textPos, imagePos, relation, images, states, dataSize;
        COLORREF color, transparent;
    } kRows[] = {
        {HBT_CHECK, "Caption", "Caption", 3, 3, 3, 4, 4, 2, 0, kGreen},
        {HBT_CHECK, "333b;Box", "Box", 3, 3, 3, 0, 2, 1, 0, kGreen},
        {HBT_CHECK, "333q;Box", "Box", 3, 3, 3, 0, 2, 2, 0, kGreen}, // not a type of class b: "w"
        {HBT_PUSH, "OK", "OK", 4, 4, 1, 0, 1, 2, 0, kGreen},
        {HBT_DEFPUSH, "444;;OK", "", 4, 4, 4, 1, 1, 2, 0, kGreen},
        {HBT_PUSH, "7 dwarfs", "", 7, 0, 0, 0, 1, 2, 0, kGreen},  // no ";": the caption is lost
        {HBT_PUSH, "52", "", 5, 2, 0, 0, 1, 2, 0, kGreen},
        {HBT_PUSH, "441;a^b\\c", "a\nbc", 4, 4, 1, 0, 1, 2, 0, kGreen},
        {HBT_PUSH, "441;[red]Go;[0,0,255]OK", "Go", 4, 4, 1, 1, 1, 2, kRed, RGB(0, 0, 255)},
        {HBT_PUSH, "441;Go;[red][0,0,255]OK", "Go", 4, 4, 1, 1, 1, 2, 0, RGB(0, 0, 255)}, // set twice
        {HBT_RADIO, "", "", 3, 3, 3, 4, 4, 2, 0, kGreen},
        {HBT_3STATE | HBS_UPDOWN, "x", "x", 3, 3, 3, 6, 6, 2, 0, kGreen},
        {HBT_CHECK | HBS_UPDOWN, "333;x", "x", 3, 3, 3, 0, 4, 2, 0, kGreen},
        {HBT_CHECK, "333;x;HC1:NOSUCH:HC3::HC4:HC2", "x", 3, 3, 3, 4, 4, 2, 0, kGreen},
        {5, "x", "", 0, 0, 0, 0, 2, 2, 0, 0}, // no default text: nothing is parsed
    };
    for (const auto& r : kRows) {
        HWND b = Make(r.text, r.style);
        ASSERT_TRUE(b) << r.text;
        EXPECT_EQ(r.caption, Text(b)) << r.text;
        EXPECT_EQ((LRESULT)strlen(r.caption), SendMessageA(b, WM_GETTEXTLENGTH, 0, 0)) << r.text;
        EXPECT_EQ(r.textPos, SendMessageA(b, HBM_GETTEXTPOS, 0, 0)) << r.text;
        EXPECT_EQ(r.imagePos, SendMessageA(b, HBM_GETIMAGEPOS, 0, 0)) << r.text;
        EXPECT_EQ(r.relation, SendMessageA(b, HBM_GETRELATION, 0, 0)) << r.text;
        EXPECT_EQ(r.images, SendMessageA(b, HBM_GETIMAGECOUNT, 0, 0)) << r.text;
        EXPECT_EQ(r.states, SendMessageA(b, HBM_GETSTATECOUNT, 0, 0)) << r.text;
        EXPECT_EQ(r.dataSize, SendMessageA(b, HBM_GETDATASIZE, 0, 0)) << r.text;
        EXPECT_EQ((LRESULT)r.color, SendMessageA(b, HM_GETCOLOR, 0, 0)) << r.text;
        EXPECT_EQ((LRESULT)r.transparent, SendMessageA(b, HBM_GETTRANSCOLOR, 0, 0)) << r.text;
        DestroyWindow(b);
    }
}

TEST_F(Butt, AFailedImageNameTakesNoSlotSoTheLaterOnesMoveUp)
{
    HWND full = Make("333;;HC1:HC2:HC3:HC4", HBT_CHECK);
    HWND gap = Make("333;;HC1:NOSUCH:HC3", HBT_CHECK, 41);
    EXPECT_EQ(2, SendMessageA(gap, HBM_GETIMAGECOUNT, 0, 0));
    EXPECT_EQ(SendMessageA(full, HBM_GETIMAGE, 2, 0), SendMessageA(gap, HBM_GETIMAGE, 1, 0));
    EXPECT_EQ(0, SendMessageA(gap, HBM_GETIMAGE, 2, 0));
    // Shrinking loses every image; growing adds empty slots.
    EXPECT_EQ(1, SendMessageA(full, HBM_SETIMAGECOUNT, 1, 0));
    EXPECT_EQ(0, SendMessageA(full, HBM_GETIMAGE, 0, 0));
    EXPECT_EQ(2, SendMessageA(full, HBM_GETSTATECOUNT, 0, 0));
    EXPECT_EQ(0, SendMessageA(full, HBM_SETIMAGE, 0, 0)); // refills the slot with the library's "HC1"
    EXPECT_EQ(SendMessageA(gap, HBM_GETIMAGE, 0, 0), SendMessageA(full, HBM_GETIMAGE, 0, 0));
    EXPECT_EQ(6, SendMessageA(full, HBM_SETIMAGECOUNT, 6, 0));
    EXPECT_EQ(0, SendMessageA(full, HBM_GETIMAGE, 5, 0));
    EraseCanvas paints(full); // a state past the images reads an empty slot
}

// The press machine: each step's message, and whether the button looks pressed after it.
struct PressStep {
    UINT msg;
    WPARAM wParam;
    LPARAM lParam;
    bool pressed;
};
struct PressCase {
    const char* name;
    std::vector<PressStep> steps;
    std::vector<WORD> codes;
};

TEST_F(Butt, PressMachineByMouseAndKeySendsItsNotifications)
{
    const PressCase kCases[] = {
        {"click", {{WM_LBUTTONDOWN, MK_LBUTTON, kInside, true}, {WM_LBUTTONUP, 0, kInside, false}}, {HBN_CLICKED}},
        {"leave and let go",
         {{WM_LBUTTONDOWN, MK_LBUTTON, kInside, true}, {WM_MOUSEMOVE, MK_LBUTTON, kOutside, false},
          {WM_LBUTTONUP, 0, kOutside, false}},
         {}},
        {"leave and come back",
         {{WM_LBUTTONDOWN, MK_LBUTTON, kInside, true}, {WM_MOUSEMOVE, MK_LBUTTON, kOutside, false},
          {WM_MOUSEMOVE, MK_LBUTTON, kInside, true}, {WM_LBUTTONUP, 0, kInside, false}},
         {HBN_CLICKED}},
        {"space", {{WM_KEYDOWN, VK_SPACE, 0, true}, {WM_KEYDOWN, VK_SPACE, 0, true}, {WM_KEYUP, VK_SPACE, 0, false}},
         {HBN_CLICKED}},
        {"space, then the mouse inverts the look",
         {{WM_KEYDOWN, VK_SPACE, 0, true}, {WM_LBUTTONDOWN, MK_LBUTTON, kInside, false},
          {WM_LBUTTONUP, 0, kInside, true}, {WM_KEYUP, VK_SPACE, 0, false}},
         {HBN_CLICKED}},
        {"another key's release cancels", {{WM_KEYDOWN, VK_SPACE, 0, true}, {WM_KEYUP, VK_TAB, 0, false}}, {}},
        {"double click", {{WM_LBUTTONDBLCLK, MK_LBUTTON, kInside, false}}, {HBN_DOUBLECLICKED}},
        {"return", {{WM_KEYDOWN, VK_RETURN, 0, false}}, {HBN_CLICKED}},
    };
    for (const auto& c : kCases) {
        HWND b = Make("Go", HBT_PUSH);
        parent.seen.clear();
        for (const auto& s : c.steps) {
            SendMessageA(b, s.msg, s.wParam, s.lParam);
            EXPECT_EQ(s.pressed ? 1 : 0, SendMessageA(b, BM_GETSTATE, 0, 0)) << c.name << " 0x" << std::hex << s.msg;
        }
        EXPECT_SEEN(Commands(), Clicks(b, c.codes));
        ReleaseCapture();
        DestroyWindow(b);
    }
}

// A value's road: actions on a fresh button linked to a 16-bit variable.
struct Action {
    UINT msg;
    WPARAM wParam;
    LPARAM lParam;
};
struct ValueCase {
    DWORD style;
    const char* text;
    std::vector<Action> actions;
    LRESULT check;
    WORD link;
    int clicks;
};

TEST_F(Butt, ValuesAdvanceWrapAndReachTheLinkedVariable)
{
    const Action click = {HBM_CLICK, 0, 0};
    const ValueCase kCases[] = {
        // "333;Box" has no images and two states; "Box" gets the four default images.
        {HBT_CHECK | HBS_AUTO, "333;Box", {click}, 1, 1, 1},
        {HBT_CHECK | HBS_AUTO, "333;Box", {click, click}, 0, 0, 2}, // off by a click notifies too
        {HBT_CHECK | HBS_AUTO, "Box", {click, click}, 2, 2, 2},     // without HBS_UPDOWN: four states
        {HBT_CHECK | HBS_AUTO, "333;Box", {{BM_CLICK, 0, 0}}, 1, 1, 0},
        {HBT_CHECK, "333;Box", {click}, 0, 0, 1}, // without HBS_AUTO only the notification
        {HBT_CHECK, "333;Box", {{BM_SETCHECK, 3, 0}}, 1, 1, 0},
        {HBT_CHECK, "333;Box", {{BM_SETCHECK, 1, 1}}, 1, 1, 1},
        {HBT_CHECK, "333;Box", {{BM_SETCHECK, 1, 0}, {BM_SETCHECK, 0, 1}}, 0, 0, 0}, // off never notifies
        {HBT_CHECK | HBS_AUTO | HBS_UPDOWN, "Box", {click}, 1, 1, 1},
        {HBT_CHECK | HBS_AUTO | HBS_UPDOWN, "Box", {click, click}, 0, 0, 2},
        {HBT_3STATE | HBS_AUTO | HBS_UPDOWN, "Three", {click, click}, 2, 2, 2},
        {HBT_3STATE | HBS_AUTO | HBS_UPDOWN, "Three", {click, click, click}, 0, 0, 3},
        {HBT_CHECK | HBS_AUTO, "333;Box", {{WM_KEYDOWN, VK_SPACE, 0}, {WM_KEYUP, VK_SPACE, 0}}, 1, 1, 1},
        {HBT_CHECK | HBS_AUTO, "333;Box", {{0x400 + BM_SETCHECK - BM_GETCHECK, 1, 0}}, 1, 1, 0},
    };
    for (const auto& c : kCases) {
        HWND b = Make(c.text, c.style);
        WORD link = 0;
        EXPECT_EQ(1, SendMessageA(b, HBM_SETLINK, 0, (LPARAM)&link));
        parent.seen.clear();
        for (const auto& a : c.actions)
            SendMessageA(b, a.msg, a.wParam, a.lParam);
        EXPECT_EQ(c.check, SendMessageA(b, BM_GETCHECK, 0, 0)) << c.text << " " << std::hex << c.style;
        EXPECT_EQ(c.check, SendMessageA(b, 0x400, 0, 0)) << "the 16-bit number of BM_GETCHECK";
        EXPECT_EQ(c.link, link) << c.text << " " << std::hex << c.style;
        EXPECT_EQ((size_t)c.clicks, Commands().seen.size()) << c.text << " " << std::hex << c.style;
        EXPECT_EQ(0, SendMessageA(b, BM_GETSTATE, 0, 0));
        DestroyWindow(b);
    }
}

TEST_F(Butt, DataMessagesReadByTypeAndANullValueShowsNone)
{
    HWND b = Make("333b;Box", HBT_CHECK);
    DWORD in = 0x100, out = 0xFFFFFFFF;
    EXPECT_EQ(1, SendMessageA(b, HBM_SETDATA, 0, (LPARAM)&in));
    EXPECT_EQ(0, SendMessageA(b, BM_GETCHECK, 0, 0)) << "read as one byte";
    in = 0x101;
    EXPECT_EQ(1, SendMessageA(b, HBM_SETDATA, 0, (LPARAM)&in));
    EXPECT_EQ(1, SendMessageA(b, BM_GETCHECK, 0, 0));
    EXPECT_EQ(0, SendMessageA(b, HM_GETMODIFY, 0, 0));
    EXPECT_EQ(1, SendMessageA(b, HBM_GETDATA, 0, (LPARAM)&out));
    EXPECT_EQ(0xFFFFFF01u, out) << "one byte for type b";
    EXPECT_EQ(-1, SendMessageA(b, HBM_GETDATA, 0, 0));
    EXPECT_EQ(1, SendMessageA(b, HBM_SETDATA, 0, 0));
    EXPECT_EQ(1, SendMessageA(b, BM_GETCHECK, 0, 0)) << "the state stays under no value";
    EXPECT_EQ(0, SendMessageA(b, HBM_GETDATA, 0, (LPARAM)&out));
    SendMessageA(b, BM_SETCHECK, 0, 0);
    EXPECT_EQ(1, SendMessageA(b, HBM_GETDATA, 0, (LPARAM)&out)) << "any stored value ends it";
}

TEST_F(Butt, AutoRadioGroupKeepsItselfExclusiveAndMovesTheTabStop)
{
    const DWORD radio = HBT_RADIO | HBS_AUTO | WS_TABSTOP;
    HWND r1 = Make("One", radio | WS_GROUP, 11, 10, 120, 20), r2 = Make("Two", radio, 12, 32, 120, 20);
    HWND r3 = Make("Three", radio, 13, 54, 120, 20), push = Make("Go", HBT_PUSH, 14, 76, 120, 20);
    HWND all[] = {r1, r2, r3};
    auto checks = [&] {
        std::string s;
        for (HWND h : all) s += SendMessageA(h, BM_GETCHECK, 0, 0) ? '1' : '0';
        return s;
    };
    SendMessageA(r1, BM_SETCHECK, 1, 0);
    parent.seen.clear();
    EXPECT_EQ(1, SendMessageA(r2, HBM_CLICK, 0, 0));
    EXPECT_EQ("010", checks());
    EXPECT_SEEN(Commands(), Clicks(r2, {HBN_CLICKED}));
    for (HWND h : all)
        EXPECT_EQ(h == r2, (GetWindowLongA(h, GWL_STYLE) & WS_TABSTOP) != 0);

    // Linked through the first button by position: the third goes on, silently.
    WORD link = 3;
    parent.seen.clear();
    EXPECT_EQ(1, SendMessageA(r1, HBM_SETLINK, 1, (LPARAM)&link));
    EXPECT_EQ("001", checks());
    EXPECT_SEEN(Commands(), {});
    WORD out = 0;
    EXPECT_EQ(2, SendMessageA(r3, HBM_GETDATA, 0, (LPARAM)&out));
    EXPECT_EQ(3, out);
    EXPECT_EQ(2, SendMessageA(r2, HBM_GETDATA, 0, (LPARAM)&out));
    EXPECT_EQ(0, out);
    EXPECT_EQ((LRESULT)&link, SendMessageA(r3, HBM_GETLINK, 0, 0));
    EXPECT_EQ(0, SendMessageA(r1, HBM_ISGROUPEND, 0, 0));
    EXPECT_EQ(1, SendMessageA(r3, HBM_ISGROUPEND, 0, 0)) << "followed by a push button of the group";

    // An arrow moves the focus and the check, and the new one notifies.
    SetFocus(r1);
    parent.seen.clear();
    SendMessageA(r1, WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(r2, GetFocus());
    EXPECT_EQ("010", checks());
    EXPECT_SEEN(Commands(), Clicks(r2, {HBN_CLICKED}));
    EXPECT_EQ(2, link) << "linked by position, the second stores 2";
    EXPECT_EQ(0, SendMessageA(push, BM_GETCHECK, 0, 0));
}

TEST_F(Butt, ANotifyTargetMayDestroyOrVetoInsideTheNotification)
{
    const struct { DWORD style; std::vector<Action> trigger; bool destroy; LRESULT check; } kCases[] = {
        {HBT_PUSH, {{WM_LBUTTONDOWN, MK_LBUTTON, kInside}, {WM_LBUTTONUP, 0, kInside}}, true, 0},
        {HBT_CHECK | HBS_AUTO, {{HBM_CLICK, 0, 0}}, true, 0},
        {HBT_CHECK | HBS_AUTO, {{WM_KEYDOWN, VK_SPACE, 0}, {WM_KEYUP, VK_SPACE, 0}}, true, 0},
        {HBT_RADIO | HBS_AUTO, {{HBM_CLICK, 0, 0}}, true, 0},
        {HBT_PUSH, {{WM_LBUTTONDBLCLK, MK_LBUTTON, kInside}}, true, 0},
        {HBT_CHECK | HBS_AUTO, {{HBM_CLICK, 0, 0}}, false, 1}, // a veto isn't tested
    };
    for (const auto& c : kCases) {
        HWND b = Make("Go", c.style);
        parent.seen.clear();
        parent.onCommand = [&](const SeenMsg& m) {
            if (c.destroy) DestroyWindow(m.from);
            else SendMessageA(m.from, HM_VETO, 0, 0);
        };
        for (const auto& a : c.trigger)
            if (IsWindow(b)) SendMessageA(b, a.msg, a.wParam, a.lParam);
        parent.onCommand = nullptr;
        EXPECT_EQ(1u, Commands().seen.size()) << std::hex << c.style;
        EXPECT_EQ(!c.destroy, IsWindow(b) != 0) << std::hex << c.style;
        if (IsWindow(b)) {
            EXPECT_EQ(c.check, SendMessageA(b, BM_GETCHECK, 0, 0));
            DestroyWindow(b);
        }
        ReleaseCapture();
    }
}

TEST_F(Butt, MessagesOfTheBmFamilyAndThePrivateBlock)
{
    const struct { DWORD style; UINT msg; WPARAM wParam; LPARAM lParam; LRESULT result; UINT then; LRESULT after; } kRows[] = {
        {HBT_PUSH, BM_SETSTATE, 1, 0, 1, BM_GETSTATE, 0},           // a whole click: the press doesn't stay
        {HBT_PUSH, HBM_SETIMAGEPOS, 9, 0, 0, HBM_GETIMAGEPOS, 4},
        {HBT_PUSH, HBM_SETIMAGEPOS, 8, 0, 1, HBM_GETIMAGEPOS, 8},
        {HBT_PUSH, HBM_SETRELATION, 0, 0, 1, HBM_GETRELATION, 0},
        {HBT_PUSH, HBM_SETTEXTPOS, 2, 0, 1, HBM_GETTEXTPOS, 2},
        {HBT_PUSH, BM_SETSTYLE, HBT_DEFPUSH, 1, 0, HBM_GETBTNTYPE, HBT_DEFPUSH},
        {HBT_PUSH, 0x404, HBT_DEFPUSH, 0, 0, HBM_GETBTNTYPE, HBT_DEFPUSH},
        {HBT_PUSH | HBS_NOFOCUS, BM_SETSTYLE, HBT_DEFPUSH, 1, 0, HBM_GETBTNTYPE, HBT_PUSH},
        {HBT_PUSH, WM_SETTEXT, 0, 0, 0, WM_GETTEXTLENGTH, 2},
        {HBT_PUSH, WM_SETTEXT, 0, (LPARAM) "a^b", 1, WM_GETTEXTLENGTH, 3},
        {HBT_PUSH, WM_SETTEXT, 0, (LPARAM) "5", 1, WM_GETTEXTLENGTH, 0},
        {HBT_PUSH, HBM_SETTRANSCOLOR, 0, kRed, 1, HBM_GETTRANSCOLOR, kRed},
        {HBT_PUSH, HM_SETCOLOR, 7, kRed, 1, HM_GETCOLOR, kRed},
        {HBT_PUSH, HM_SETBACKBRUSH, 0x99, 0, 0, HM_GETBACKBRUSH, 0x99},
        {HBT_PUSH, HBM_SETSOUND, 0x77, 0, 0, HBM_GETSOUND, 0x77},
    };
    for (const auto& r : kRows) {
        HWND b = Make("Go", r.style);
        parent.seen.clear();
        EXPECT_EQ(r.result, SendMessageA(b, r.msg, r.wParam, r.lParam)) << std::hex << r.msg;
        EXPECT_EQ(r.after, SendMessageA(b, r.then, 0, 0)) << std::hex << r.msg;
        EXPECT_SEEN(Commands(), {});
        SendMessageA(b, HM_SETBACKBRUSH, 0, 0);
        SendMessageA(b, HBM_SETSOUND, 0, 0);
        DestroyWindow(b);
    }
    HWND b = Make("Go", HBT_PUSH);
    EXPECT_EQ(1, SendMessageA(b, BM_CLICK, 0, 0));
    EXPECT_SEEN(Commands(), {});
    EXPECT_EQ(1, SendMessageA(b, HBM_CLICK, 0, 0));
    EXPECT_SEEN(Commands(), Clicks(b, {HBN_CLICKED}));
    char small[2];
    EXPECT_EQ(1, SendMessageA(b, WM_GETTEXT, sizeof small, (LPARAM)small));
    EXPECT_STREQ("G", small);
    EXPECT_EQ(0, SendMessageA(b, WM_GETTEXT, 0x8000, (LPARAM)small)) << "a size that reads negative copies nothing";
}

// The creation style as the thin procedure left it in the creation structure.
DWORD g_createStyle;
LRESULT CALLBACK ButtSpyProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = HButtWnd(hWnd, msg, wParam, lParam);
    if (msg == WM_NCCREATE)
        g_createStyle = ((const CREATESTRUCTA*)lParam)->style;
    return result;
}

TEST_F(Butt, DialogCodeTabStopAndFocusFollowTypeNoFocusAndAuto)
{
    WNDCLASSA spy = {0, ButtSpyProc, 0, 8, GetModuleHandleA(nullptr), nullptr, nullptr, nullptr, nullptr, "QuillButtSpy"};
    RegisterClassA(&spy);
    HWND other = Make("Other", HBT_PUSH, 41, 60);
    const struct { DWORD style; LRESULT code; bool focus; } kRows[] = {
        {HBT_PUSH, DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON, true},
        {HBT_DEFPUSH, DLGC_BUTTON | DLGC_DEFPUSHBUTTON, true},
        {HBT_CHECK, DLGC_BUTTON, true},
        {HBT_3STATE | HBS_AUTO, DLGC_BUTTON, true},
        {HBT_RADIO, DLGC_BUTTON | DLGC_RADIOBUTTON, true},
        {HBT_PUSHRADIO | HBS_AUTO, DLGC_BUTTON | DLGC_RADIOBUTTON | DLGC_WANTARROWS, true},
        {HBT_PUSH | HBS_NOFOCUS, DLGC_STATIC, false},
        {HBT_RADIO | HBS_NOFOCUS, DLGC_BUTTON | DLGC_RADIOBUTTON, false},
    };
    for (const auto& r : kRows) {
        g_createStyle = 0;
        HWND b = parent.Child("QuillButtSpy", "x", r.style | WS_TABSTOP, 42);
        EXPECT_EQ(r.code, SendMessageA(b, WM_GETDLGCODE, 0, 0)) << std::hex << r.style;
        EXPECT_EQ(r.focus, (g_createStyle & WS_TABSTOP) != 0) << "HBS_NOFOCUS takes it " << std::hex << r.style;
        SetFocus(other);
        SendMessageA(b, WM_LBUTTONDOWN, MK_LBUTTON, kInside);
        SendMessageA(b, WM_LBUTTONUP, 0, kInside);
        EXPECT_EQ(r.focus ? b : other, GetFocus()) << std::hex << r.style;
        DestroyWindow(b);
    }
}

TEST_F(Butt, SoundFilesAreStoredWithTheirExtensionAndOnlyThenLoadWinMM)
{
    bool before = GetModuleHandleA("winmm.dll") != nullptr;
    HWND quiet = Make("441;Go", HBT_PUSH);
    EXPECT_EQ(before, GetModuleHandleA("winmm.dll") != nullptr);
    HWND loud = Make("441;Go;;%anosuch", HBT_PUSH, 41);
    char name[32] = "";
    EXPECT_EQ(10, SendMessageA(loud, HBM_GETSOUND, sizeof name, (LPARAM)name));
    EXPECT_STREQ("nosuch.WAV", name);
    EXPECT_TRUE(GetModuleHandleA("winmm.dll"));
    EXPECT_EQ(1, SendMessageA(quiet, HBM_SETSOUND, 0, (LPARAM) "ding.wav"));
    EXPECT_EQ(8, SendMessageA(quiet, HBM_GETSOUND, sizeof name, (LPARAM)name));
    EXPECT_EQ(0, SendMessageA(quiet, HBM_SETSOUND, 0, (LPARAM) ""));
    // A resource of type 400 wins over a file: its handle is the answer, and a press plays it.
    for (const char* spec : {"441;Go;;DING", "441;Go;;%aDING"}) {
        HWND b = Make(spec, HBT_PUSH, 42);
        EXPECT_NE(0, SendMessageA(b, HBM_GETSOUND, sizeof name, (LPARAM)name)) << spec;
        parent.seen.clear();
        SendMessageA(b, WM_LBUTTONDOWN, MK_LBUTTON, kInside);
        SendMessageA(b, WM_LBUTTONUP, 0, kInside);
        EXPECT_SEEN(Commands(), Clicks(b, {HBN_CLICKED}));
        DestroyWindow(b);
    }
}

// ---- pixels ----

TEST_F(Butt, ImageAndTextStandWhereTheirPositionsSay)
{
    HBRUSH white = (HBRUSH)GetStockObject(WHITE_BRUSH);
    // STATRED: the test program's red 16 by 12 bitmap. Faces 120 by 40, frameless, white.
    const struct { const char* text; POINT red; POINT notRed; int textFrom; } kRows[] = {
        {"333;Ab;STATRED", {1, 20}, {1, 8}, 21},   // image at the left, the text 5 pixels behind
        {"555;Ab;STATRED", {118, 20}, {60, 20}, -1},
        {"441;;STATRED", {60, 19}, {60, 8}, -1},    // above an empty caption, both centred
        {"444;;[red]STATRED", {-1, -1}, {60, 20}, -1}, // red is left out
        {"000;;STATRED", {0, 0}, {20, 0}, -1},
        {"443;Ab;STATRED", {-1, -1}, {30, 20}, -2}, // the pair centred together, the image first
        {"888;;STATRED", {119, 39}, {100, 39}, -1},
    };
    for (const auto& r : kRows) {
        HWND b = Make(r.text, HBT_PUSH | HBS_NOFRAME | HBS_NOFOCUS);
        SendMessageA(b, HM_SETBACKBRUSH, (WPARAM)white, 0);
        EraseCanvas c(b);
        if (r.red.x >= 0) EXPECT_EQ(kRed, c.At(r.red.x, r.red.y)) << r.text;
        EXPECT_EQ(kWhite, c.At(r.notRed.x, r.notRed.y)) << r.text;
        if (r.textFrom == -2) {
            int left = c.FirstOther(kWhite, kWhite), right = 119;
            while (right > 0 && c.At(right, 20) == kWhite && c.At(right, 16) == kWhite && c.At(right, 24) == kWhite)
                --right;
            EXPECT_EQ(kRed, c.At(left, 20)) << r.text;
            EXPECT_NEAR(left, 119 - right, 4) << r.text;
        }
        if (r.textFrom >= 0) {
            EXPECT_GE(c.FirstOther(kWhite, kRed), r.textFrom) << r.text;
            EXPECT_LE(c.FirstOther(kWhite, kRed), r.textFrom + 3) << r.text;
        }
        DestroyWindow(b);
    }
}

TEST_F(Butt, ACheckedBoxIsDrawnSunkAndNoValueShowsTheLibrarysHC5)
{
    HWND box = Make("333;", HBT_CHECK);
    {
        EraseCanvas off(box);
        EXPECT_EQ(kWhite, off.At(1, 10)) << "raised: white top and left";
    }
    SendMessageA(box, BM_SETCHECK, 1, 0);
    {
        EraseCanvas on(box);
        EXPECT_EQ(GetSysColor(COLOR_BTNSHADOW), on.At(1, 10)) << "sunk without being pressed";
    }
    // No value and the fifth image of a three-state box look the same.
    HWND none = Make("333;;HC1", HBT_CHECK | HBS_NOFRAME | HBS_NOFOCUS, 41);
    HWND fifth = Make("333;;HC1:HC2:HC3:HC4:HC5", HBT_3STATE | HBS_NOFRAME | HBS_NOFOCUS, 42);
    for (HWND h : {none, fifth}) SendMessageA(h, HM_SETBACKBRUSH, (WPARAM)GetStockObject(WHITE_BRUSH), 0);
    SendMessageA(none, HBM_SETDATA, 0, 0);
    SendMessageA(fifth, BM_SETCHECK, 4, 0);
    EraseCanvas a(none), b(fifth);
    int differing = 0;
    for (int y = 0; y < a.rc.bottom; ++y)
        for (int x = 0; x < a.rc.right; ++x) differing += a.At(x, y) != b.At(x, y);
    EXPECT_EQ(0, differing);
}

TEST(ButtDialog, ButtonsOfATemplateReadTheirSpecificationsAndKeepTheirGroup)
{
    HWND dlg = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(300), nullptr, nullptr, 0);
    ASSERT_TRUE(dlg);
    HWND ok = GetDlgItem(dlg, 301), box = GetDlgItem(dlg, 306);
    EXPECT_EQ(1, SendMessageA(ok, HBM_GETIMAGECOUNT, 0, 0));
    EXPECT_EQ(0, SendMessageA(ok, WM_GETTEXTLENGTH, 0, 0));
    EXPECT_EQ(DLGC_BUTTON | DLGC_DEFPUSHBUTTON, SendMessageA(ok, WM_GETDLGCODE, 0, 0));
    EXPECT_EQ(1, SendMessageA(box, HBM_GETDATASIZE, 0, 0));
    EXPECT_EQ(RGB(0, 0, 255), SendMessageA(box, HM_GETCOLOR, 0, 0));
    char text[16] = "";
    GetDlgItemTextA(dlg, 302, text, sizeof text);
    EXPECT_STREQ("Cancel", text);
    const struct { int id; UINT pos; } kGroup[] = {{303, 1}, {304, 2}, {305, 3}};
    for (const auto& g : kGroup) {
        WORD link = 0;
        SendMessageA(GetDlgItem(dlg, g.id), HBM_SETDATA, 1, (LPARAM)&(link = (WORD)g.pos));
        EXPECT_EQ(1, SendMessageA(GetDlgItem(dlg, g.id), BM_GETCHECK, 0, 0)) << g.id;
    }
    SendMessageA(GetDlgItem(dlg, 304), HBM_CLICK, 0, 0);
    for (const auto& g : kGroup)
        EXPECT_EQ(g.id == 304, IsDlgButtonChecked(dlg, g.id) != 0) << g.id;
    EXPECT_EQ(1, SendMessageA(GetDlgItem(dlg, 305), HBM_ISGROUPEND, 0, 0));
    DestroyWindow(dlg);
}

} // namespace
