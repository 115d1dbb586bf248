// The control spine and the class registry, driven through real windows under Wine.
#include "wintest.h"

#include <string.h>

namespace {

HINSTANCE Library() { return GetModuleHandleA("QUILL32.dll"); }

// ---- a minimal control built on the library's spine ----

constexpr UINT kNotify = WM_USER + 1;      // wParam: code; result: HCtlNotify's
constexpr UINT kLoseResult = WM_USER + 2;  // handler returns 42 but says not handled
bool g_spineNoRecord;                      // create without attaching a record
std::vector<std::pair<WPARAM, LPARAM>> g_sizes; // WM_SIZE seen by the control

LRESULT CALLBACK SpineHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam, LPBOOL notHandled, LPVOID record)
{
    HCtlBaseEx* c = (HCtlBaseEx*)record;
    switch (msg) {
    case WM_NCCREATE: {
        if (g_spineNoRecord)
            break;
        const CREATESTRUCTA* cs = (const CREATESTRUCTA*)lParam;
        c = (HCtlBaseEx*)GlobalAlloc(GPTR, sizeof(HCtlBaseEx));
        SendMessageA(hWnd, HM_SETPTR, 0, (LPARAM)c);
        c->hWnd = hWnd;
        c->hNotify = cs->hwndParent;
        c->wId = LOWORD((UINT_PTR)cs->hMenu);
        c->dwStyle = cs->style;
        break;
    }
    case WM_NCDESTROY:
        GlobalFree(c);
        SendMessageA(hWnd, HM_SETPTR, 0, 0);
        break;
    case WM_SIZE:
        g_sizes.push_back({wParam, lParam});
        return 0;
    case kNotify:
        return (LRESULT)HCtlNotify(record, (UINT)wParam);
    case kLoseResult:
        *notHandled = TRUE;
        return 42;
    }
    *notHandled = TRUE;
    return 0;
}

LRESULT CALLBACK SpineWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, SpineHandler, 0);
}

void RegisterSpine()
{
    static bool done;
    if (done) return;
    WNDCLASSA wc = {};
    wc.lpfnWndProc = SpineWnd;
    wc.cbWndExtra = 4;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = "QuillSpine";
    ASSERT_NE(0, RegisterClassA(&wc));
    done = true;
}

class Spine : public ::testing::Test {
protected:
    void SetUp() override
    {
        RegisterSpine();
        g_spineNoRecord = false;
        g_sizes.clear();
        ctl = parent.Child("QuillSpine", "", 0, 77);
        ASSERT_TRUE(ctl);
    }
    HCtlBaseEx* Rec() { return (HCtlBaseEx*)SendMessageA(ctl, HM_GETPTR, 0, 0); }
    TestParent parent;
    HWND ctl = nullptr;
};

// ---- the class table ----

struct ClassRow {
    const char* name;
    UINT style;
    int wndExtra;
    bool cursor, icon;
    INT_PTR background;
};

constexpr ClassRow kClasses[] = {
    {"HButt", 0x408B, 8, true, false, COLOR_WINDOW + 1},
    {"HEdit_SS", 0x400B, 4, true, false, 0},
    {"HEdit", 0x400B, 4, true, false, 0},
    {"HList", 0x400B, 4, false, false, 0},
    {"HStat", 0x400B, 4, true, false, 0},
    {"HTool", 0x4000, 4, true, false, 0},
    {"HComb", 0x4003, 8, true, false, COLOR_WINDOW + 1},
    {"HDrop", 0x480B, 8, false, false, 0},
    {"HGrid", 0x4008, 4, true, true, COLOR_WINDOW + 1},
};

TEST(ClassRegistry, EveryClassIsRegisteredAsTabled)
{
    for (const auto& row : kClasses) {
        WNDCLASSA wc = {};
        ASSERT_TRUE(GetClassInfoA(Library(), row.name, &wc)) << row.name;
        EXPECT_EQ(row.style, wc.style) << row.name;
        EXPECT_EQ(0, wc.cbClsExtra) << row.name;
        EXPECT_EQ(row.wndExtra, wc.cbWndExtra) << row.name;
        EXPECT_EQ(row.cursor, wc.hCursor != nullptr) << row.name;
        EXPECT_EQ(row.icon, wc.hIcon != nullptr) << row.name;
        EXPECT_EQ(row.background, (INT_PTR)wc.hbrBackground) << row.name;
        EXPECT_EQ(nullptr, wc.lpszMenuName) << row.name;
        EXPECT_EQ(Library(), wc.hInstance) << row.name;
    }
}

TEST(ClassRegistry, ArrowClassesShareTheSystemArrow)
{
    HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    for (const char* name : {"HButt", "HEdit", "HEdit_SS", "HStat", "HTool", "HComb"}) {
        WNDCLASSA wc = {};
        ASSERT_TRUE(GetClassInfoA(Library(), name, &wc));
        EXPECT_EQ(arrow, wc.hCursor) << name;
    }
    WNDCLASSA grid = {};
    ASSERT_TRUE(GetClassInfoA(Library(), "HGrid", &grid));
    EXPECT_NE(arrow, grid.hCursor); // the module's own cell cursor
}

TEST(ClassRegistry, DropIsListPlusSaveBitsAndFourBytes)
{
    WNDCLASSA list = {}, drop = {};
    ASSERT_TRUE(GetClassInfoA(Library(), "HList", &list));
    ASSERT_TRUE(GetClassInfoA(Library(), "HDrop", &drop));
    EXPECT_EQ(list.style | CS_SAVEBITS, drop.style);
    EXPECT_EQ(list.cbWndExtra + 4, drop.cbWndExtra);
    EXPECT_EQ(list.hCursor, drop.hCursor);
    EXPECT_EQ((WNDPROC)GetProcAddress(Library(), "HDropWnd"), drop.lpfnWndProc);
}

TEST(ClassRegistry, ClassesAreGlobalSoOtherModulesFindThem)
{
    TestParent parent;
    for (const auto& row : kClasses) {
        if (!strcmp(row.name, "HDrop")) continue;
        HWND w = parent.Child(row.name, "", 0, 5);
        EXPECT_TRUE(w) << row.name;
        EXPECT_NE(0, SendMessageA(w, HM_GETPTR, 0, 0)) << row.name;
        DestroyWindow(w);
    }
}

TEST(ClassRegistry, InitAgainAndThreadAttachChangeNothing)
{
    WNDCLASSA before = {}, after = {};
    ASSERT_TRUE(GetClassInfoA(Library(), "HGrid", &before));
    QuilletInit();
    EXPECT_EQ(TRUE, HLibraryEntry(Library(), DLL_THREAD_ATTACH, nullptr));
    EXPECT_EQ(TRUE, HLibraryEntry(Library(), DLL_THREAD_DETACH, nullptr));
    EXPECT_EQ(TRUE, HLibraryEntry(Library(), DLL_PROCESS_ATTACH, nullptr));
    ASSERT_TRUE(GetClassInfoA(Library(), "HGrid", &after));
    EXPECT_EQ(before.hCursor, after.hCursor);
    EXPECT_EQ(before.hIcon, after.hIcon);
}

TEST(ClassRegistry, RegisterClassUsesOnlyTheLowStyleBits)
{
    ATOM a = HRegisterClass(0xFFFF0000 | CS_DBLCLKS, DefWindowProcA, 0, 12, GetModuleHandleA(nullptr), nullptr,
                            nullptr, nullptr, nullptr, "QuillRegisterProbe");
    ASSERT_NE(0, a);
    WNDCLASSA wc = {};
    ASSERT_TRUE(GetClassInfoA(GetModuleHandleA(nullptr), "QuillRegisterProbe", &wc));
    EXPECT_EQ((UINT)CS_DBLCLKS, wc.style);
    EXPECT_EQ(12, wc.cbWndExtra);
    EXPECT_EQ(0, HRegisterClass(0, DefWindowProcA, 0, 0, GetModuleHandleA(nullptr), nullptr, nullptr, nullptr,
                                nullptr, "QuillRegisterProbe"));
}

TEST(ClassRegistry, DialogTemplateNamesTheLibraryClasses)
{
    HWND dlg = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(100), nullptr, nullptr, 0);
    ASSERT_TRUE(dlg);
    struct { int id; const char* cls; } items[] = {{101, "HButt"}, {102, "HEdit"}, {103, "HList"}, {104, "HStat"},
                                                   {105, "HComb"}, {106, "HGrid"}, {107, "HEdit_SS"}, {108, "HTool"}};
    for (const auto& it : items) {
        HWND w = GetDlgItem(dlg, it.id);
        ASSERT_TRUE(w) << it.cls;
        char name[32] = "";
        GetClassNameA(w, name, sizeof name);
        EXPECT_STREQ(it.cls, name);
        EXPECT_NE(0, SendMessageA(w, HM_GETPTR, 0, 0)) << it.cls;
        // A combo passes the message on to its top child, whose target is the combo.
        HWND target = lstrcmpA(it.cls, "HComb") == 0 ? w : dlg;
        EXPECT_EQ((LRESULT)target, SendMessageA(w, HM_GETNOTIFY, 0, 0)) << it.cls;
    }
    DestroyWindow(dlg);
}

// ---- the spine ----

TEST_F(Spine, CreationFillsTheHead)
{
    HCtlBaseEx* c = Rec();
    ASSERT_TRUE(c);
    EXPECT_EQ(ctl, c->hWnd);
    EXPECT_EQ(parent.hwnd(), c->hNotify);
    EXPECT_EQ(77, c->wId);
    EXPECT_EQ((DWORD)(WS_CHILD | WS_VISIBLE), c->dwStyle);
}

TEST_F(Spine, NotificationCarriesIdCodeAndWindow)
{
    EXPECT_EQ(0, SendMessageA(ctl, kNotify, 0x12345, 0)); // the code is cut to 16 bits
    EXPECT_SEEN(parent, {{WM_COMMAND, 77, 0x2345, ctl}});
}

TEST_F(Spine, VetoDuringNotificationRefusesAndClearsTheBit)
{
    parent.onCommand = [&](const SeenMsg& m) { SendMessageA(m.from, HM_VETO, 0, 0); };
    EXPECT_EQ(HCTLF_VETO, SendMessageA(ctl, kNotify, 9, 0));
    EXPECT_EQ(0, Rec()->wFlags & HCTLF_VETO);
    parent.onCommand = nullptr;
    EXPECT_EQ(0, SendMessageA(ctl, kNotify, 9, 0)); // one-shot
}

TEST_F(Spine, VetoOutsideANotificationIsClearedByTheNext)
{
    SendMessageA(ctl, HM_VETO, 0, 0);
    EXPECT_EQ(HCTLF_VETO, Rec()->wFlags & HCTLF_VETO);
    EXPECT_EQ(0, SendMessageA(ctl, kNotify, 3, 0));
    EXPECT_EQ(0, Rec()->wFlags & HCTLF_VETO);
}

TEST_F(Spine, SilencedControlSendsNothingAndKeepsAPendingVeto)
{
    SendMessageA(ctl, HM_VETO, 0, 0);
    SendMessageA(ctl, HM_SETNONOTIFY, 2, 0);
    EXPECT_EQ(0, SendMessageA(ctl, kNotify, 3, 0));
    SendMessageA(ctl, HM_SETNOTIFY, 0, 0);
    SendMessageA(ctl, HM_SETNONOTIFY, 0, 0);
    EXPECT_EQ(0, SendMessageA(ctl, kNotify, 3, 0)); // no target
    EXPECT_TRUE(parent.seen.empty());
    EXPECT_EQ(HCTLF_VETO, Rec()->wFlags & HCTLF_VETO);
}

TEST_F(Spine, ReceiverMayDestroyTheControlDuringTheNotification)
{
    parent.onCommand = [&](const SeenMsg& m) { DestroyWindow(m.from); };
    EXPECT_NE(0, SendMessageA(ctl, kNotify, 4, 0));
    EXPECT_FALSE(IsWindow(ctl));
    EXPECT_EQ(1u, parent.seen.size());
}

TEST_F(Spine, CommonMessagesAnswerFromTheHead)
{
    struct Row { UINT msg; WPARAM wParam; LPARAM lParam; LRESULT result; };
    const Row rows[] = {
        {HM_GETMODIFY, 0, 0, 0},      {HM_SETMODIFY, 7, 0, 1},       {HM_GETMODIFY, 0, 0, HCTLF_MODIFIED},
        {HM_SETMODIFY, 0, 99, 1},     {HM_GETMODIFY, 0, 0, 0},       {HM_GETNONOTIFY, 0, 0, 0},
        {HM_SETNONOTIFY, 0x100, 0, 1}, {HM_GETNONOTIFY, 0, 0, HCTLF_NONOTIFY}, {HM_SETNONOTIFY, 0, 1, 1},
        {HM_GETNONOTIFY, 0, 0, 0},    {HM_VETO, 0, 0, 1},
    };
    for (const auto& r : rows)
        EXPECT_EQ(r.result, SendMessageA(ctl, r.msg, r.wParam, r.lParam)) << std::hex << r.msg;
}

TEST_F(Spine, NotifyTargetCanBeExchanged)
{
    EXPECT_EQ((LRESULT)parent.hwnd(), SendMessageA(ctl, HM_GETNOTIFY, 0, 0));
    EXPECT_EQ((LRESULT)parent.hwnd(), SendMessageA(ctl, HM_SETNOTIFY, 0, 0));
    EXPECT_EQ(0, SendMessageA(ctl, HM_GETNOTIFY, 0, 0));
}

TEST_F(Spine, StyleWordIsTheHighHalfJoinedToTheExtraWord)
{
    EXPECT_EQ((LRESULT)HIWORD(WS_CHILD | WS_VISIBLE), SendMessageA(ctl, HM_GETSTYLE, 0, 0));
    EXPECT_EQ(1, SendMessageA(ctl, HM_SETSTYLE, 0, 0xABCD1234));
    EXPECT_EQ((LRESULT)0xABCD1234, SendMessageA(ctl, HM_GETSTYLE, 0, 0));
    EXPECT_EQ(0x12340000u, Rec()->dwStyle & 0xFFFF0000u);
    EXPECT_EQ(0xABCD, Rec()->wExtra);
    EXPECT_EQ((LONG)(WS_CHILD | WS_VISIBLE), GetWindowLongA(ctl, GWL_STYLE)); // the window's own style stays
}

TEST_F(Spine, SetFontReturnsTheOldFontAndResizesWithZeroes)
{
    HFONT f = (HFONT)GetStockObject(ANSI_VAR_FONT);
    g_sizes.clear();
    EXPECT_EQ(0, SendMessageA(ctl, WM_SETFONT, (WPARAM)f, 0));
    EXPECT_EQ((LRESULT)f, SendMessageA(ctl, WM_GETFONT, 0, 0));
    EXPECT_EQ(f, Rec()->hFont);
    ASSERT_EQ(1u, g_sizes.size());
    EXPECT_EQ(0u, g_sizes[0].first);
    EXPECT_EQ(0, g_sizes[0].second);
    EXPECT_EQ((LRESULT)f, SendMessageA(ctl, WM_SETFONT, 0, 0));
}

TEST_F(Spine, HandlerResultIsLostWhenItSaysNotHandled)
{
    EXPECT_EQ(0, SendMessageA(ctl, kLoseResult, 0, 0)); // DefWindowProc's answer stands
}

TEST_F(Spine, PointerMessagesWorkWithoutARecord)
{
    g_spineNoRecord = true;
    HWND bare = parent.Child("QuillSpine", "", 0, 78);
    ASSERT_TRUE(bare);
    EXPECT_EQ(0, SendMessageA(bare, HM_GETPTR, 0, 0));
    EXPECT_EQ(0, SendMessageA(bare, HM_GETMODIFY, 0, 0)); // plain window: the default answers
    HCtlBaseEx head = {};
    EXPECT_EQ(0, SendMessageA(bare, HM_SETPTR, 0, (LPARAM)&head));
    EXPECT_EQ((LRESULT)&head, SendMessageA(bare, HM_GETPTR, 0, 0));
    EXPECT_EQ(0, SendMessageA(bare, HM_SETPTR, 0, 0));
    EXPECT_EQ(0, SendMessageA(bare, HM_GETPTR, 0, 0));
    DestroyWindow(bare);
}

TEST(StyleWord, ToolStoresTheWholeWordAndGridUsesItsOwnStyle)
{
    TestParent parent;
    HWND tool = parent.Child("HTool", "", 0, 1);
    EXPECT_EQ(1, SendMessageA(tool, HM_SETSTYLE, 0, 0x12345678));
    HCtlBaseEx* t = (HCtlBaseEx*)SendMessageA(tool, HM_GETPTR, 0, 0);
    EXPECT_EQ(0x12345678u, t->dwStyle);
    EXPECT_EQ(0, t->wExtra);

    HWND grid = parent.Child("HGrid", "", WS_BORDER, 2, 10, 40, 200, 100);
    ASSERT_TRUE(grid);
    LRESULT style = SendMessageA(grid, HM_GETSTYLE, 0, 0);
    EXPECT_EQ((LRESULT)(WS_CHILD | WS_VISIBLE | WS_BORDER), style & (WS_CHILD | WS_VISIBLE | WS_BORDER));
    HBRUSH brushBefore = *(HBRUSH*)((char*)SendMessageA(grid, HM_GETPTR, 0, 0) + 20);
    EXPECT_EQ(1, SendMessageA(grid, HM_SETSTYLE, 0, style | 0x0004));
    EXPECT_EQ(style | 0x0004, SendMessageA(grid, HM_GETSTYLE, 0, 0));
    EXPECT_EQ(brushBefore, *(HBRUSH*)((char*)SendMessageA(grid, HM_GETPTR, 0, 0) + 20)); // the head is untouched
}

// ---- colour requests ----

TEST_F(Spine, ColourRequestsGoToTheNotifyTargetByKind)
{
    HDC dc = GetDC(ctl);
    parent.colorReply = (HBRUSH)GetStockObject(GRAY_BRUSH);
    for (int kind : {1, 2, 3, 6, 21})
        EXPECT_EQ(parent.colorReply, HCtlColor(Rec(), kind, dc)) << kind;
    EXPECT_SEEN(parent, {{WM_CTLCOLOREDIT, 0, 0, ctl},
                         {WM_CTLCOLORLISTBOX, 0, 0, ctl},
                         {WM_CTLCOLORBTN, 0, 0, ctl},
                         {WM_CTLCOLORSTATIC, 0, 0, ctl},
                         {HGM_CTLCOLOR, 0, 0, ctl}});
    parent.seen.clear();
    for (int kind : {0, 4, 5, 7})
        EXPECT_EQ(GetStockObject(WHITE_BRUSH), HCtlColor(Rec(), kind, dc)) << kind;
    EXPECT_TRUE(parent.seen.empty());
    parent.colorReply = nullptr;
    EXPECT_EQ(nullptr, HCtlColor(Rec(), 2, dc)); // a null reply is the answer too
    SendMessageA(ctl, HM_SETNONOTIFY, 1, 0);
    parent.seen.clear();
    HCtlColor(Rec(), 3, dc);
    EXPECT_EQ(1u, parent.seen.size()); // colour requests ignore the silence flag
    ReleaseDC(ctl, dc);
}

// ---- design mode ----

TEST(DesignMode, TopLevelClassPrefixDecides)
{
    struct Row { const char* topClass; WORD code; };
    const Row rows[] = {{"RWSWnd", HCTL_DESIGN_RWS},      {"rwswndEditor", HCTL_DESIGN_RWS},
                        {"DlgEdit", HCTL_DESIGN_DLGEDIT}, {"DLGEDITOR32", HCTL_DESIGN_DLGEDIT},
                        {"RWSWin", 0},                    {"DlgEdi", 0},
                        {"QuillPlainTop", 0}};
    for (const auto& r : rows) {
        TestParent top(r.topClass);
        ASSERT_TRUE(top.hwnd()) << r.topClass;
        HWND mid = top.Child("STATIC", "", 0, 1);
        HWND leaf = CreateWindowExA(0, "HButt", "", WS_CHILD, 0, 0, 10, 10, mid, (HMENU)2, nullptr, nullptr);
        EXPECT_EQ(r.code, HCtlDesignMode(leaf)) << r.topClass;
        EXPECT_EQ(r.code, HCtlDesignMode(top.hwnd())) << r.topClass;
    }
}

} // namespace
