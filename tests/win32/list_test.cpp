// The HList window: selection models by mouse and keys with the notifications
// they send, re-entrant receivers, and the message block with its older numbers.
#include "wintest.h"

#include <string.h>

#include <vector>

namespace {

constexpr DWORD kMultiple = 0x0008, kExtended = 0x0800;
constexpr WORD kId = 7;
constexpr SeenMsg kNextCtl = {WM_NEXTDLGCTL, 0, 0, nullptr};

SeenMsg Note(HWND list, WORD code) { return {WM_COMMAND, kId, code, list}; }

// The parent also logs WM_NEXTDLGCTL, to show where it falls among the notifications.
WNDPROC g_parentProc;
TestParent* g_parent;
LRESULT CALLBACK LogNextCtl(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_NEXTDLGCTL && g_parent)
        g_parent->seen.push_back(kNextCtl);
    return CallWindowProcA(g_parentProc, hWnd, msg, wParam, lParam);
}

struct ListWin {
    TestParent parent;
    HWND hWnd;
    LONG rowHeight;
    ListWin(const char* typeSpec, DWORD style, int items = 10)
    {
        hWnd = parent.Child(HLIST_CLASS, typeSpec, style, kId, 10, 10, 120, 200);
        SendMessageA(hWnd, HM_SETBACKBRUSH, (WPARAM)GetStockObject(WHITE_BRUSH), 0);
        for (LONG i = 0; i < items; ++i) {
            LONG v = 100 + i;
            HLAddItem(hWnd, &v);
        }
        rowHeight = (LONG)SendMessageA(hWnd, 0x421, 0, 0); // LB_GETITEMHEIGHT by its older number
        g_parent = &parent;
        g_parentProc = (WNDPROC)SetWindowLongPtrA(parent.hwnd(), GWLP_WNDPROC, (LONG_PTR)LogNextCtl);
    }
    ~ListWin()
    {
        SetWindowLongPtrA(parent.hwnd(), GWLP_WNDPROC, (LONG_PTR)g_parentProc);
        g_parent = nullptr;
    }
    LONG Caret() const { return (LONG)SendMessageA(hWnd, HLM_GETCARET, 0, 0); }
    std::vector<LONG> Selected() const
    {
        std::vector<LONG> out(32);
        out.resize((size_t)SendMessageA(hWnd, HLM_GETSELITEMS, 32, (LPARAM)out.data()));
        return out;
    }
    // A click on item index: the release is queued first, so the drag loop ends at once.
    void Click(LONG index, bool shift = false, bool ctrl = false)
    {
        SetKeys(shift, ctrl);
        POINT p = {20, (LONG)(index * rowHeight + rowHeight / 2)};
        POINT screen = p;
        ClientToScreen(hWnd, &screen);
        SetCursorPos(screen.x, screen.y);
        LPARAM at = MAKELPARAM(p.x, p.y);
        PostMessageA(hWnd, WM_LBUTTONUP, 0, at);
        SendMessageA(hWnd, WM_LBUTTONDOWN, MK_LBUTTON, at);
        PumpMessages();
        SetKeys(false, false);
    }
    // A drag from one item to another by WM_MOUSEMOVE, the release queued behind the move.
    void Drag(LONG from, LONG to)
    {
        POINT p = {20, (LONG)(from * rowHeight + rowHeight / 2)};
        POINT screen = p;
        ClientToScreen(hWnd, &screen);
        SetCursorPos(screen.x, screen.y);
        LPARAM end = MAKELPARAM(20, to * rowHeight + rowHeight / 2);
        PostMessageA(hWnd, WM_MOUSEMOVE, MK_LBUTTON, end);
        PostMessageA(hWnd, WM_LBUTTONUP, 0, end);
        SendMessageA(hWnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(p.x, p.y));
        PumpMessages();
    }
    void Key(WPARAM key, bool shift = false)
    {
        SetKeys(shift, false);
        SendMessageA(hWnd, WM_KEYDOWN, key, 0);
        SetKeys(false, false);
    }
    static void SetKeys(bool shift, bool ctrl)
    {
        BYTE keys[256];
        GetKeyboardState(keys);
        keys[VK_SHIFT] = shift ? 0x80 : 0;
        keys[VK_CONTROL] = ctrl ? 0x80 : 0;
        SetKeyboardState(keys);
    }
};

// One step of a selection scenario: a click or a key, with shift and ctrl.
struct Step {
    enum Kind { CLICK, KEY, DRAG } kind;
    LONG arg; // item index, or virtual key
    bool shift, ctrl;
    LONG to; // where a drag ends
};

struct ModelCase {
    const char* name;
    DWORD style;
    std::vector<Step> steps;
    std::vector<LONG> selected;
    LONG caret;
    int selChanges;
};

TEST(ListWindow, SelectionModelsByMouseAndKeys)
{
    using S = Step;
    const ModelCase cases[] = {
        {"single: the first click selects", 0, {{S::CLICK, 2}}, {2}, 2, 1},
        {"single: a click on the current item sends nothing", 0, {{S::CLICK, 2}, {S::CLICK, 2}}, {2}, 2, 1},
        {"single: keys move the one selection", 0, {{S::KEY, VK_DOWN}, {S::KEY, VK_DOWN}, {S::KEY, VK_END}},
         {9}, 9, 3},
        {"single: up at the top stays", 0, {{S::KEY, VK_HOME}, {S::KEY, VK_UP}}, {0}, 0, 1},
        {"multiple: clicks toggle each item", kMultiple, {{S::CLICK, 1}, {S::CLICK, 3}, {S::CLICK, 1}}, {3}, 1, 3},
        {"multiple: arrows move the caret only, space toggles", kMultiple,
         {{S::KEY, VK_DOWN}, {S::KEY, VK_DOWN}, {S::KEY, VK_SPACE}}, {2}, 2, 2},
        {"extended: shift-click selects the range", kExtended, {{S::CLICK, 1}, {S::CLICK, 4, true}}, {1, 2, 3, 4}, 4,
         2},
        {"extended: ctrl-click adds and removes", kExtended,
         {{S::CLICK, 1}, {S::CLICK, 3, false, true}, {S::CLICK, 5, false, true}, {S::CLICK, 3, false, true}}, {1, 5},
         3, 4},
        {"extended: a plain click starts again", kExtended, {{S::CLICK, 1}, {S::CLICK, 3, true}, {S::CLICK, 6}}, {6},
         6, 3},
        {"extended: shift and arrows grow the range", kExtended,
         {{S::KEY, VK_DOWN}, {S::KEY, VK_DOWN, true}, {S::KEY, VK_DOWN, true}}, {1, 2, 3}, 3, 3},
        {"extended: a drag selects what it passes and tells once at the release", kExtended,
         {{S::DRAG, 1, false, false, 4}}, {1, 2, 3, 4}, 4, 1},
        {"single: a drag selects where it ends", 0, {{S::DRAG, 5, false, false, 2}}, {2}, 2, 1},
        {"extended and multiple styles act as extended", kExtended | kMultiple,
         {{S::CLICK, 2}, {S::CLICK, 4, true}}, {2, 3, 4}, 4, 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ListWin l("%nl", c.style);
        LONG link = -1;
        HLSetDataLink(l.hWnd, &link, FALSE);
        for (const auto& s : c.steps) {
            if (s.kind == Step::CLICK)
                l.Click(s.arg, s.shift, s.ctrl);
            else if (s.kind == Step::DRAG)
                l.Drag(s.arg, s.to);
            else
                l.Key((WPARAM)s.arg, s.shift);
        }
        EXPECT_EQ(c.selected, l.Selected());
        EXPECT_EQ(c.caret, l.Caret());
        std::vector<SeenMsg> expected(c.selChanges, Note(l.hWnd, HLN_SELCHANGE));
        EXPECT_SEEN(l.parent, expected);
        EXPECT_EQ(100 + c.caret, link); // the receiver finds the new value at the link
        EXPECT_EQ(HCTLF_MODIFIED, SendMessageA(l.hWnd, HM_GETMODIFY, 0, 0));
    }
}

TEST(ListWindow, KeysThatLeaveSendTheirNotifications)
{
    struct KeyCase {
        WPARAM key;
        bool shift;
        std::vector<WORD> codes; // 0 stands for WM_NEXTDLGCTL
    };
    const KeyCase cases[] = {
        {VK_TAB, false, {0, HN_TAB}}, {VK_TAB, true, {0, HN_BACKTAB}}, {VK_RETURN, false, {HN_ENTER}},
        {VK_ESCAPE, false, {HN_ESCAPE}}, {VK_F1, false, {HN_HELP}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE((int)c.key);
        ListWin l("%nl", 0);
        l.Key(c.key, c.shift);
        std::vector<SeenMsg> expected;
        for (WORD code : c.codes)
            expected.push_back(code ? Note(l.hWnd, code) : kNextCtl);
        EXPECT_SEEN(l.parent, expected);
    }
}

TEST(ListWindow, TypingSearchesByOneLetterFromTheNextItem)
{
    ListWin l("%ss", 0, 0);
    for (const char* s : {"apple", "Banana", "blueberry", "cherry"})
        HLAddItem(l.hWnd, (LPVOID)s);
    const struct {
        char ch;
        LONG caret;
        size_t notes;
    } steps[] = {{'b', 1, 1}, {'B', 2, 2}, {'b', 1, 3}, {'c', 3, 4}, {'c', 3, 4}, {'z', 3, 4}};
    for (const auto& s : steps) {
        SendMessageA(l.hWnd, WM_CHAR, (WPARAM)s.ch, 0);
        EXPECT_EQ(s.caret, l.Caret()) << s.ch;
        EXPECT_EQ(s.notes, l.parent.seen.size()) << s.ch;
    }
    EXPECT_EQ(2, SendMessageA(l.hWnd, HLM_FINDTEXT, 2, (LPARAM)"BL"));
    EXPECT_EQ(-1, SendMessageA(l.hWnd, HLM_FINDTEXT, 0, (LPARAM)"applesauce"));
}

// The receiver destroys the list inside each kind of notification; nothing may touch it after.
TEST(ListWindow, ReceiverMayDestroyTheListInsideANotification)
{
    const struct {
        const char* name;
        WORD code;
        void (*act)(ListWin&);
    } cases[] = {
        {"selection change by key", HLN_SELCHANGE, [](ListWin& l) { l.Key(VK_DOWN); }},
        {"selection change at the button's release", HLN_SELCHANGE, [](ListWin& l) { l.Click(3); }},
        {"tab", HN_TAB, [](ListWin& l) { l.Key(VK_TAB); }},
        {"typing search", HLN_SELCHANGE, [](ListWin& l) { SendMessageA(l.hWnd, WM_CHAR, '1', 0); }},
        {"double click", HLN_DBLCLK, [](ListWin& l) { SendMessageA(l.hWnd, WM_LBUTTONDBLCLK, 0, 0); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ListWin l("%nl", kExtended);
        HWND list = l.hWnd;
        l.parent.onCommand = [&](const SeenMsg& m) {
            if (m.code == c.code)
                DestroyWindow(list);
        };
        c.act(l);
        EXPECT_FALSE(IsWindow(list));
        ASSERT_FALSE(l.parent.seen.empty());
        EXPECT_EQ(c.code, l.parent.seen.back().code);
    }
}

TEST(ListWindow, VetoDuringSelChangeLeavesTheMoveDone)
{
    ListWin l("%nl", 0);
    l.parent.onCommand = [&](const SeenMsg&) { SendMessageA(l.hWnd, HM_VETO, 0, 0); };
    l.Key(VK_DOWN);
    EXPECT_EQ(0, l.Caret());
    l.Key(VK_DOWN);
    EXPECT_EQ(1, l.Caret());
    EXPECT_EQ(0, SendMessageA(l.hWnd, HLM_GETFLAGS, 0, 0) & HCTLF_VETO);
}

TEST(ListWindow, OlderNumbersAndTextMessagesAnswerAsTheirCounterparts)
{
    ListWin l("%ss[red]", 0, 0);
    EXPECT_EQ(0, SendMessageA(l.hWnd, 0x400, 0, (LPARAM)"first")); // LB_ADDSTRING + 0x280
    EXPECT_EQ(1, SendMessageA(l.hWnd, LB_ADDSTRING, 0, (LPARAM)"second"));
    EXPECT_EQ(2, SendMessageA(l.hWnd, HLM_GETCOUNT, 0, 0));
    EXPECT_GT(l.rowHeight, 0);
    EXPECT_EQ(l.rowHeight, SendMessageA(l.hWnd, LB_GETITEMHEIGHT, 0, 0));
    char text[32] = "x";
    EXPECT_EQ(6, SendMessageA(l.hWnd, HLM_GETTEXT, 1, (LPARAM)text));
    EXPECT_STREQ("second", text);
    EXPECT_EQ(-1, SendMessageA(l.hWnd, HLM_GETTEXTLEN, 2, 0));
    EXPECT_EQ(0x0000ff, SendMessageA(l.hWnd, HM_GETCOLOR, 0, 0));

    ListWin n("%nl#,##0 kg", 0, 0);
    LONG v = 1234;
    HLAddItem(n.hWnd, &v);
    EXPECT_EQ(8, SendMessageA(n.hWnd, HLM_GETTEXTLEN, 0, 0));
    EXPECT_EQ(8, GetWindowTextA(n.hWnd, text, sizeof text)); // the mask, not an item
    EXPECT_STREQ("#,##0 kg", text);
    EXPECT_EQ(0, SendMessageA(n.hWnd, WM_SETTEXT, 0, (LPARAM)"plain"));
    EXPECT_EQ(1, SendMessageA(n.hWnd, WM_SETTEXT, 0, (LPARAM)"%ss"));
    EXPECT_EQ(0, SendMessageA(n.hWnd, HLM_GETCOUNT, 0, 0)); // retyping drops the items
    EXPECT_EQ('s', SendMessageA(n.hWnd, HM_GETCLASS, 0, 0));
}

TEST(ListWindow, MessageBlockReadsAndMovesTheList)
{
    ListWin l("%nl%nl", kExtended, 0);
    LONG data[] = {5, 6, 7, 8}, codes[] = {50, 60, 70, 80};
    HLAddItemsEx(l.hWnd, 4, data, codes);
    EXPECT_EQ(1, SendMessageA(l.hWnd, HLM_SELECTRANGE, HLSEL_SET, MAKELPARAM(3, 1)));
    EXPECT_EQ(3, SendMessageA(l.hWnd, HLM_GETSELCOUNT, 0, 0));
    EXPECT_EQ(1, SendMessageA(l.hWnd, HLM_SELECTITEM, HLSEL_CLEAR, 2));
    EXPECT_EQ(1, SendMessageA(l.hWnd, 0x4D5, HLSEL_CLEAR, 3)); // the second number of HLM_SELECTITEM
    EXPECT_EQ((std::vector<LONG>{1}), l.Selected());
    LONG key = 70;
    EXPECT_EQ(2, SendMessageA(l.hWnd, HLM_FINDCODE, 0, (LPARAM)&key));
    EXPECT_EQ(1, SendMessageA(l.hWnd, HLM_SETCARET, 2, 1));
    LONG out = 0;
    EXPECT_EQ(4, SendMessageA(l.hWnd, HLM_GETCURCODE, 0, (LPARAM)&out));
    EXPECT_EQ(70, out);
    EXPECT_EQ(4, SendMessageA(l.hWnd, HLM_GETCODESIZE, 0, 0));
    EXPECT_EQ('n', SendMessageA(l.hWnd, HLM_GETCODECLASS, 0, 0));
    RECT rc = {};
    EXPECT_EQ(1, SendMessageA(l.hWnd, HLM_GETITEMRECT, 1, (LPARAM)&rc));
    EXPECT_EQ(l.rowHeight, rc.top);
    EXPECT_EQ(2 * l.rowHeight, rc.bottom);
    EXPECT_EQ(0, SendMessageA(l.hWnd, HLM_SETCOLUMNWIDTH, 40, 0)); // one column: refused
    EXPECT_EQ(0, SendMessageA(l.hWnd, HM_GETMODIFY, 0, 0));
    EXPECT_SEEN(l.parent, {});
}

TEST(ListWindow, ScrollingKeepsTheCaretInView)
{
    ListWin l("%nl", 0, 40);
    const LONG rows = (LONG)(200 / l.rowHeight);
    l.Key(VK_END);
    EXPECT_EQ(39, l.Caret());
    EXPECT_EQ(40 - rows, SendMessageA(l.hWnd, HLM_GETTOPINDEX, 0, 0));
    l.Key(VK_HOME);
    EXPECT_EQ(0, SendMessageA(l.hWnd, HLM_GETTOPINDEX, 0, 0));
    EXPECT_EQ(3, SendMessageA(l.hWnd, HLM_SCROLL, 3, 0));
    EXPECT_EQ(-3, SendMessageA(l.hWnd, HLM_SCROLL, (WPARAM)(SHORT)-7, 0));
    EXPECT_EQ(5, SendMessageA(l.hWnd, HLM_SETTOPINDEX, 5, 0));
    SendMessageA(l.hWnd, WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(6, SendMessageA(l.hWnd, HLM_GETTOPINDEX, 0, 0));
}

TEST(ListWindow, DesignTimeSampleAndCursor)
{
    ListWin l("%ss", 0x0080, 0);
    EXPECT_EQ(1, SendMessageA(l.hWnd, HLM_FILLSAMPLE, 0, 0));
    EXPECT_EQ(25, SendMessageA(l.hWnd, HLM_GETCOUNT, 0, 0));
    char text[32];
    SendMessageA(l.hWnd, HLM_GETTEXT, 24, (LPARAM)text);
    EXPECT_STREQ("Line\t25", text);
    ListWin coded("%ss%nl", 0, 0);
    SendMessageA(coded.hWnd, HLM_FILLSAMPLE, 0, 0);
    EXPECT_EQ(0, SendMessageA(coded.hWnd, HLM_GETCOUNT, 0, 0));
    SetCursor(nullptr);
    SendMessageA(l.hWnd, WM_SETCURSOR, (WPARAM)l.hWnd, MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(LoadCursorA(nullptr, IDC_ARROW), GetCursor());
}

} // namespace

namespace {

TEST(ListWindow, MultiColumnKeysStepByAColumn)
{
    ListWin l("%nl", 0x0200, 40);
    EXPECT_EQ(1, SendMessageA(l.hWnd, HLM_SETCOLUMNWIDTH, 40, 0));
    SendMessageA(l.hWnd, HLM_RELAYOUT, 0, 0);
    RECT client;
    GetClientRect(l.hWnd, &client); // less the horizontal scroll bar
    const LONG rows = client.bottom / l.rowHeight;
    l.Key(VK_HOME);
    l.Key(VK_RIGHT);
    EXPECT_EQ(rows, l.Caret());
    RECT rc = {};
    EXPECT_EQ(1, SendMessageA(l.hWnd, HLM_GETITEMRECT, (WPARAM)(rows + 1), (LPARAM)&rc));
    EXPECT_EQ(40, rc.left);
    EXPECT_EQ(80, rc.right);
    EXPECT_EQ(l.rowHeight, rc.top);
    l.Key(VK_LEFT);
    EXPECT_EQ(0, l.Caret());
    l.Key(VK_LEFT); // nothing to the left: stays
    EXPECT_EQ(0, l.Caret());
}

// Rows painted into a memory context: the selected one in the highlight colour, the others in the back brush.
TEST(ListWindow, PaintFillsSelectedRowWithHighlight)
{
    ListWin l("%nl", kMultiple, 3);
    HLSelectItem(l.hWnd, 1, HLSEL_SET);
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, 120, 200);
    HGDIOBJ old = SelectObject(dc, bitmap);
    RECT all = {0, 0, 120, 200};
    FillRect(dc, &all, (HBRUSH)GetStockObject(BLACK_BRUSH));
    SendMessageA(l.hWnd, WM_PAINT, (WPARAM)dc, 0);
    const int x = 100; // right of the text
    EXPECT_EQ(GetSysColor(COLOR_HIGHLIGHT), GetPixel(dc, x, l.rowHeight + l.rowHeight / 2));
    EXPECT_EQ(RGB(255, 255, 255), GetPixel(dc, x, l.rowHeight / 2));
    EXPECT_EQ(RGB(255, 255, 255), GetPixel(dc, x, 2 * l.rowHeight + l.rowHeight / 2));
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
}

} // namespace
