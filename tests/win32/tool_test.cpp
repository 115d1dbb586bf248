// HTool through real windows: bars made from a template (tool.rc) that dock to
// the edge their style names or float in a frame sized around the template,
// the notices they pass on, their message block, and font changes.
#include "wintest.h"

#include <vector>

namespace {

const LPCSTR kPane = MAKEINTRESOURCEA(240);
const LPCSTR kMissing = MAKEINTRESOURCEA(299);
constexpr int kBarId = 40;

HINSTANCE Exe() { return GetModuleHandleA(nullptr); }

// The rectangle of a window in its parent's client coordinates.
RECT Placed(HWND w)
{
    RECT rc;
    GetWindowRect(w, &rc);
    MapWindowPoints(nullptr, GetParent(w), (LPPOINT)&rc, 2);
    return rc;
}

// The size the pane's template gives a window it fills.
SIZE PaneSize()
{
    TestParent scratch;
    RECT rc = {};
    HFONT font = nullptr;
    CreateDialogInWin(Exe(), kPane, scratch.hwnd(), &rc, &font);
    if (font)
        DeleteObject(font);
    return {rc.right, rc.bottom};
}

struct DockCase {
    const char* name;
    DWORD style;
    enum Edge { TOP, BOTTOM, LEFT, RIGHT } edge;
    bool ownLength;
};

TEST(ToolDock, DocksAtTheEdgeItsStyleNames)
{
    const SIZE pane = PaneSize();
    ASSERT_GT(pane.cx, 0);
    const DockCase cases[] = {
        {"no bit docks at the top", 0, DockCase::TOP, false},
        {"bottom", HTS_BOTTOM, DockCase::BOTTOM, false},
        {"left", HTS_LEFT, DockCase::LEFT, false},
        {"right", HTS_RIGHT, DockCase::RIGHT, false},
        {"bottom wins over right", HTS_BOTTOM | HTS_RIGHT, DockCase::BOTTOM, false},
        {"right wins over left", HTS_RIGHT | HTS_LEFT, DockCase::RIGHT, false},
        {"its own length at the top", HTS_OWNLENGTH, DockCase::TOP, true},
        {"its own length at the right", HTS_RIGHT | HTS_OWNLENGTH, DockCase::RIGHT, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TestParent parent;
        RECT pc;
        GetClientRect(parent.hwnd(), &pc);
        HWND bar = HToolCreate(Exe(), kPane, parent.hwnd(), nullptr, WS_VISIBLE | c.style, kBarId, 0, 0);
        ASSERT_TRUE(bar);
        EXPECT_EQ(kBarId, GetDlgCtrlID(bar));
        EXPECT_TRUE(GetDlgItem(bar, 201) && GetDlgItem(bar, 202) && GetDlgItem(bar, 203));
        const LONG size = (LONG)SendMessageA(bar, HTM_GETBARSIZE, 0, 0);
        // A vertical bar's thickness is the template's width; bottom wins even so.
        EXPECT_EQ((c.style & (HTS_LEFT | HTS_RIGHT)) ? pane.cx : pane.cy, size);
        RECT rc = Placed(bar);
        const bool vertical = c.edge == DockCase::LEFT || c.edge == DockCase::RIGHT;
        const LONG along = vertical ? rc.bottom - rc.top : rc.right - rc.left;
        const LONG across = vertical ? rc.right - rc.left : rc.bottom - rc.top;
        // Bottom wins the placement, but the right bit makes the bar size a width: a
        // bottom bar keeps the height its window had, none at all when made.
        EXPECT_EQ(c.style == (HTS_BOTTOM | HTS_RIGHT) ? 0 : size, across);
        if (!c.ownLength)
            EXPECT_EQ(vertical ? pc.bottom : pc.right, along);
        EXPECT_EQ(c.edge == DockCase::RIGHT ? pc.right - across : 0, rc.left);
        EXPECT_EQ(c.edge == DockCase::BOTTOM ? pc.bottom - across : 0, rc.top);
    }
}

TEST(ToolDock, FloatingBarFramesTheTemplateAndStaysWhereItIs)
{
    const SIZE pane = PaneSize();
    TestParent parent;
    HWND bar = HToolCreate(Exe(), kPane, parent.hwnd(), nullptr, WS_POPUP | WS_BORDER, kBarId, 30, 40);
    ASSERT_TRUE(bar);
    const DWORD style = (DWORD)GetWindowLongA(bar, GWL_STYLE);
    EXPECT_EQ((DWORD)(WS_POPUP | WS_CAPTION | WS_SYSMENU), style & (WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CHILD));
    EXPECT_EQ(0, GetDlgCtrlID(bar)); // a floating bar has no id
    RECT rc;
    GetWindowRect(bar, &rc);
    EXPECT_EQ(30, rc.left);
    EXPECT_EQ(40, rc.top);
    EXPECT_EQ(pane.cx + 2 * GetSystemMetrics(SM_CXBORDER), rc.right - rc.left);
    EXPECT_EQ(pane.cy + 2 * GetSystemMetrics(SM_CYBORDER) + GetSystemMetrics(SM_CYCAPTION), rc.bottom - rc.top);
    HToolUpdate(bar);
    RECT after;
    GetWindowRect(bar, &after);
    EXPECT_TRUE(EqualRect(&rc, &after));
    DestroyWindow(bar);
}

TEST(ToolDock, MissingTemplateLeavesAnEmptyBarOfItsOwnThickness)
{
    TestParent parent;
    HWND bar = HToolCreate(Exe(), kMissing, parent.hwnd(), nullptr, WS_VISIBLE, kBarId, 0, 0);
    ASSERT_TRUE(bar);
    EXPECT_EQ(nullptr, GetWindow(bar, GW_CHILD));
    EXPECT_EQ(0, SendMessageA(bar, HTM_GETBARSIZE, 0, 0));
    MoveWindow(bar, 5, 5, 50, 17, FALSE);
    HToolUpdate(bar);
    RECT rc = Placed(bar), pc;
    GetClientRect(parent.hwnd(), &pc);
    EXPECT_EQ(17, rc.bottom - rc.top); // the thickness the window has
    EXPECT_EQ(pc.right, rc.right - rc.left);
    HToolUpdate(parent.hwnd()); // not a bar: nothing happens
    HToolUpdate(nullptr);
    // A font change scales even the empty bar's 0 on its margins.
    LOGFONTA lf = {};
    lf.lfHeight = -40;
    HFONT tall = CreateFontIndirectA(&lf);
    const LONG from = HIWORD(GetBaseUnits(nullptr)), to = HIWORD(GetBaseUnits(tall));
    ASSERT_NE(from, to);
    SendMessageA(bar, WM_SETFONT, (WPARAM)tall, 0);
    EXPECT_EQ(-6 * to / from + 6, SendMessageA(bar, HTM_GETBARSIZE, 0, 0));
    DestroyWindow(bar);
    DeleteObject(tall);
}

TEST(ToolMessages, BarSizeBrushAndWholeStyleWord)
{
    TestParent parent;
    HWND bar = HToolCreate(Exe(), kPane, parent.hwnd(), nullptr, WS_VISIBLE, kBarId, 0, 0);
    const LONG thick = Placed(bar).bottom - Placed(bar).top;
    // A size below 1 counts as 0, and then the bar keeps the thickness it has.
    SendMessageA(bar, HTM_SETBARSIZE, (WPARAM)-5, 1);
    EXPECT_EQ(0, SendMessageA(bar, HTM_GETBARSIZE, 0, 0));
    EXPECT_EQ(thick, Placed(bar).bottom - Placed(bar).top);
    SendMessageA(bar, HTM_SETBARSIZE, 30, 1);
    EXPECT_EQ(30, Placed(bar).bottom - Placed(bar).top);
    SendMessageA(bar, HTM_SETBARSIZE, 12, 0); // no update asked for
    EXPECT_EQ(30, Placed(bar).bottom - Placed(bar).top);
    // A brush of 0 hands the old one back and makes a fresh one.
    HBRUSH first = (HBRUSH)SendMessageA(bar, HTM_GETBRUSH, 0, 0);
    ASSERT_TRUE(first);
    EXPECT_EQ(first, (HBRUSH)SendMessageA(bar, HTM_SETBRUSH, 0, 0));
    HBRUSH fresh = (HBRUSH)SendMessageA(bar, HTM_GETBRUSH, 0, 0);
    EXPECT_TRUE(fresh && fresh != first);
    EXPECT_TRUE(DeleteObject(first)); // the caller's to delete
    // HM_SETSTYLE stores the whole word: its low half moves the bar to the bottom.
    EXPECT_EQ(1, SendMessageA(bar, HM_SETSTYLE, 0, WS_CHILD | WS_VISIBLE | HTS_BOTTOM));
    HToolUpdate(bar);
    RECT pc;
    GetClientRect(parent.hwnd(), &pc);
    EXPECT_EQ(pc.bottom, Placed(bar).bottom);
}

TEST(ToolNotices, ChildrensNoticesGoOnWithTheirOwnIdAndWindow)
{
    TestParent parent, other;
    const struct {
        const char* name;
        bool otherTarget, silenced, targetGone;
    } cases[] = {
        {"to the parent", false, false, false},
        {"to the notify target given at creation", true, false, false},
        {"HM_SETNONOTIFY silences all children at once", false, true, false},
        {"a target that has gone hears nothing", true, false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TestParent target;
        HWND bar = HToolCreate(Exe(), kPane, parent.hwnd(), c.otherTarget ? target.hwnd() : nullptr, WS_VISIBLE,
                               kBarId, 0, 0);
        HWND button = GetDlgItem(bar, 202);
        if (c.silenced)
            SendMessageA(bar, HM_SETNONOTIFY, 1, 0);
        if (c.targetGone)
            DestroyWindow(target.hwnd());
        parent.seen.clear();
        SendMessageA(bar, WM_COMMAND, MAKEWPARAM(202, BN_CLICKED), (LPARAM)button);
        TestParent& hears = c.otherTarget ? target : parent;
        std::vector<SeenMsg> expected;
        if (!c.silenced && !c.targetGone)
            expected.push_back({WM_COMMAND, 202, BN_CLICKED, button});
        if (!c.targetGone)
            EXPECT_SEEN(hears, expected);
        if (c.otherTarget)
            EXPECT_SEEN(parent, {});
        // Colour requests go the same way, and their answer comes back.
        hears.colorReply = (HBRUSH)GetStockObject(GRAY_BRUSH);
        HDC dc = GetDC(bar);
        LRESULT brush = SendMessageA(bar, WM_CTLCOLORBTN, (WPARAM)dc, (LPARAM)button);
        ReleaseDC(bar, dc);
        if (c.targetGone)
            EXPECT_NE((LRESULT)hears.colorReply, brush); // the platform's default
        else
            EXPECT_EQ((LRESULT)hears.colorReply, brush);
        DestroyWindow(bar);
    }
}

TEST(ToolFont, SameMetricsKeepEverythingButEveryChildTakesTheFont)
{
    TestParent parent;
    HWND bar = HToolCreate(Exe(), kPane, parent.hwnd(), nullptr, WS_VISIBLE, kBarId, 0, 0);
    LOGFONTA lf = {};
    GetObjectA((HFONT)SendMessageA(bar, WM_GETFONT, 0, 0), sizeof lf, &lf);
    const LONG size = (LONG)SendMessageA(bar, HTM_GETBARSIZE, 0, 0);
    const RECT before = Placed(GetDlgItem(bar, 203));
    HFONT same = CreateFontIndirectA(&lf);
    HFONT old = (HFONT)SendMessageA(bar, WM_SETFONT, (WPARAM)same, 1);
    EXPECT_TRUE(old && old != same);
    EXPECT_EQ(size, SendMessageA(bar, HTM_GETBARSIZE, 0, 0));
    const RECT after = Placed(GetDlgItem(bar, 203));
    EXPECT_TRUE(EqualRect(&before, &after));
    for (int id : {201, 202, 203})
        EXPECT_EQ((LRESULT)same, SendMessageA(GetDlgItem(bar, id), WM_GETFONT, 0, 0));
    // A taller font grows the bar past its fixed margins, and the children with it.
    lf.lfHeight *= 2;
    HFONT tall = CreateFontIndirectA(&lf);
    EXPECT_EQ((LRESULT)same, SendMessageA(bar, WM_SETFONT, (WPARAM)tall, 1));
    EXPECT_GT(SendMessageA(bar, HTM_GETBARSIZE, 0, 0), size);
    EXPECT_EQ(SendMessageA(bar, HTM_GETBARSIZE, 0, 0), Placed(bar).bottom - Placed(bar).top);
    const RECT grown = Placed(GetDlgItem(bar, 203));
    EXPECT_GT(grown.bottom - grown.top, after.bottom - after.top);
    DestroyWindow(bar); // given fonts stay the caller's
    EXPECT_TRUE(DeleteObject(old));
    EXPECT_TRUE(DeleteObject(same));
    EXPECT_TRUE(DeleteObject(tall));
}

} // namespace
