// HComb through real windows: the drop opened and closed by keys, the button,
// clicks in the list and outside it (the mouse hook), selection carried between
// list and top child, the notifications of each, re-entrant receivers, the
// placement on the screen, and the combo box message block.
#include "wintest.h"

#include <string.h>

#include <vector>

namespace {

constexpr DWORD kDrop = HCS_DROPLIST, kKeys = HCS_WANTKEYS, kEdit = HCS_EDITABLE;
constexpr WORD kId = 9;
constexpr int kWidth = 150, kHeight = 24;

HWND g_foundList;
BOOL CALLBACK FindDrop(HWND w, LPARAM child)
{
    char name[16] = "";
    GetClassNameA(w, name, sizeof name);
    if (lstrcmpiA(name, HDROP_CLASS) == 0 && (LPARAM)GetWindowLongA(w, 4) == child) {
        g_foundList = w;
        return FALSE;
    }
    return TRUE;
}

struct CombWin {
    TestParent parent;
    HWND combo, child, list;
    explicit CombWin(DWORD style, const char* text = "%s", int y = 10)
    {
        ShowWindow(parent.hwnd(), SW_SHOW);
        combo = parent.Child(HCOMB_CLASS, text, style, kId, 10, y, kWidth, kHeight);
        child = GetDlgItem(combo, (style & kEdit) ? 1 : 2);
        list = GetDlgItem(combo, 3);
        if (!list) {
            g_foundList = nullptr;
            EnumThreadWindows(GetCurrentThreadId(), FindDrop, (LPARAM)child);
            list = g_foundList;
        }
        for (const char* item : {"apple", "abacus", "banana", "cherry", "abbey"})
            SendMessageA(combo, CB_ADDSTRING, 0, (LPARAM)item);
        SetFocus(child);
        PumpMessages();
        parent.seen.clear();
    }
    SeenMsg Note(WORD code) const { return SeenMsg{WM_COMMAND, kId, code, combo}; }
    bool Dropped() const { return SendMessageA(combo, CB_GETDROPPEDSTATE, 0, 0) != 0; }
    LONG ListCaret() const { return (LONG)SendMessageA(list, HLM_GETCARET, 0, 0); }
    void Key(WPARAM key, bool alt = false) { SendMessageA(child, alt ? WM_SYSKEYDOWN : WM_KEYDOWN, key, 0); }
    void ClickButton()
    {
        LPARAM at = MAKELPARAM(kWidth - 4, kHeight / 2);
        SendMessageA(combo, WM_LBUTTONDOWN, MK_LBUTTON, at);
        SendMessageA(combo, WM_LBUTTONUP, 0, at);
    }
    // A click on an item of the open list; the release is queued first so the drag loop ends.
    void ClickItem(LONG index)
    {
        const LONG row = (LONG)SendMessageA(list, LB_GETITEMHEIGHT, 0, 0);
        POINT p = {10, (LONG)(index * row + row / 2)}, screen = p;
        ClientToScreen(list, &screen);
        SetCursorPos(screen.x, screen.y);
        PostMessageA(list, WM_LBUTTONUP, 0, MAKELPARAM(p.x, p.y));
        SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(p.x, p.y));
        PumpMessages();
    }
    // The button pressed, then the mouse dragged onto item index of the list that opened:
    // the press passes to the list, whose release is queued first.
    void HandOver(LONG index)
    {
        SendMessageA(combo, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(kWidth - 4, kHeight / 2));
        const LONG row = (LONG)SendMessageA(list, LB_GETITEMHEIGHT, 0, 0);
        POINT inList = {10, (LONG)(index * row + row / 2)}, screen = inList, inCombo;
        ClientToScreen(list, &screen);
        SetCursorPos(screen.x, screen.y);
        inCombo = screen;
        ScreenToClient(combo, &inCombo);
        PostMessageA(list, WM_LBUTTONUP, 0, MAKELPARAM(inList.x, inList.y));
        SendMessageA(combo, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(inCombo.x, inCombo.y));
        PumpMessages();
    }
    // A mouse event as the hook sees it, aimed at a window.
    LRESULT Hook(int code, WPARAM msg, HWND target)
    {
        MOUSEHOOKSTRUCT m = {};
        m.hwnd = target;
        return MouseHookProc(code, msg, (LPARAM)&m);
    }
};

// Paints ask for colours as they come; the tables compare the notifications alone.
void KeepCommands(TestParent& p)
{
    std::vector<SeenMsg> kept;
    for (const auto& m : p.seen)
        if (m.msg == WM_COMMAND)
            kept.push_back(m);
    p.seen = kept;
}

enum Act { F4, ALTDOWN, ALTUP, ENTER, ESCAPE, TAB, SHOW, HIDE, BUTTON, ITEM2, BLUR, DOWN, HANDOVER1 };

void Perform(CombWin& w, Act a)
{
    switch (a) {
    case F4: w.Key(VK_F4); break;
    case ALTDOWN: w.Key(VK_DOWN, true); break;
    case ALTUP: w.Key(VK_UP, true); break;
    case ENTER: w.Key(VK_RETURN); break;
    case ESCAPE: w.Key(VK_ESCAPE); break;
    case TAB: w.Key(VK_TAB); break;
    case SHOW: SendMessageA(w.combo, CB_SHOWDROPDOWN, 1, 0); break;
    case HIDE: SendMessageA(w.combo, CB_SHOWDROPDOWN, 0, 0); break;
    case BUTTON: w.ClickButton(); break;
    case ITEM2: w.ClickItem(2); break;
    case BLUR: SetFocus(w.parent.hwnd()); break;
    case DOWN: w.Key(VK_DOWN); break;
    case HANDOVER1: w.HandOver(1); break;
    }
}

struct DropCase {
    const char* name;
    DWORD style;
    std::vector<Act> acts;
    std::vector<WORD> codes; // what the parent is told, in order
    bool dropped;
    LONG caret;              // the list's current item at the end
};

TEST(CombDrop, OpensAndClosesByKeysClicksAndFocusWithTheirNotifications)
{
    const DropCase cases[] = {
        {"F4 opens and F4 closes", kDrop, {F4, F4}, {HCN_DROPDOWN}, false, -1},
        {"Alt+Down opens", kDrop, {ALTDOWN}, {HCN_DROPDOWN}, true, -1},
        {"Alt+Up closes what Alt+Down opened", kDrop, {ALTDOWN, ALTUP}, {HCN_DROPDOWN}, false, -1},
        {"F4 on a combo whose list stands open does nothing", 0, {F4}, {}, false, -1},
        {"the button opens", kDrop, {BUTTON}, {HCN_DROPDOWN}, true, -1},
        {"the button closes what it opened", kDrop, {BUTTON, BUTTON}, {HCN_DROPDOWN}, false, -1},
        {"CB_SHOWDROPDOWN twice opens once", kDrop, {SHOW, SHOW}, {HCN_DROPDOWN}, true, -1},
        {"CB_SHOWDROPDOWN 0 closes", kDrop, {SHOW, HIDE}, {HCN_DROPDOWN}, false, -1},
        {"Enter with the list open only closes it", kDrop | kKeys, {SHOW, ENTER}, {HCN_DROPDOWN}, false, -1},
        {"Escape with the list open only closes it", kDrop | kKeys, {SHOW, ESCAPE}, {HCN_DROPDOWN}, false, -1},
        {"Enter with the list closed is notified", kDrop | kKeys, {ENTER}, {HN_ENTER}, false, -1},
        {"Escape without all keys says nothing", kDrop, {ESCAPE}, {}, false, -1},
        {"Tab with all keys is notified", kDrop | kKeys, {TAB}, {HN_TAB}, false, -1},
        {"Tab without all keys moves on silently", kDrop, {TAB}, {}, false, -1},
        {"a click on an item selects it and ends the drop", kDrop, {SHOW, ITEM2}, {HCN_DROPDOWN, HCN_SELCHANGE}, false, 2},
        {"a drag from the button onto an item selects it and ends the drop", kDrop, {HANDOVER1},
         {HCN_DROPDOWN, HCN_SELCHANGE}, false, 1},
        {"focus leaving the child closes the list", kDrop, {SHOW, BLUR}, {HCN_DROPDOWN, HCN_KILLFOCUS}, false, -1},
        {"Down in the one-item child steps both", kDrop, {DOWN, DOWN}, {HCN_SELCHANGE, HCN_SELCHANGE}, false, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CombWin w(c.style);
        ASSERT_TRUE(w.list && w.child);
        for (Act a : c.acts)
            Perform(w, a);
        std::vector<SeenMsg> expected;
        for (WORD code : c.codes)
            expected.push_back(w.Note(code));
        KeepCommands(w.parent);
        EXPECT_SEEN(w.parent, expected);
        EXPECT_EQ(c.dropped, w.Dropped());
        EXPECT_EQ(c.dropped || !(c.style & kDrop), IsWindowVisible(w.list) != FALSE);
        EXPECT_EQ(c.caret, w.ListCaret());
        if (!(c.style & kEdit))
            EXPECT_EQ(c.caret, (LONG)SendMessageA(w.child, HLM_GETCARET, 0, 0)); // one store, one item
    }
}

TEST(CombDrop, HookClosesOnlyOnAClickOutsideTheCombosWindowsAndListActivationKeepsTheFocus)
{
    enum Target { PARENT, LIST, CHILD, COMBO };
    const struct {
        const char* name;
        int code;
        WPARAM msg;
        Target target;
        bool closes;
    } cases[] = {
        {"a press on another window", HC_ACTION, WM_LBUTTONDOWN, PARENT, true},
        {"a press on another window's frame", HC_ACTION, WM_NCLBUTTONDOWN, PARENT, true},
        {"a system command", HC_ACTION, WM_SYSCOMMAND, PARENT, true},
        {"a press in the list", HC_ACTION, WM_LBUTTONDOWN, LIST, false},
        {"a press in the child", HC_ACTION, WM_LBUTTONDOWN, CHILD, false},
        {"a press on the combo", HC_ACTION, WM_LBUTTONDOWN, COMBO, false},
        {"a move elsewhere", HC_ACTION, WM_MOUSEMOVE, PARENT, false},
        {"a negative code", -1, WM_LBUTTONDOWN, PARENT, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CombWin w(kDrop);
        SendMessageA(w.combo, CB_SHOWDROPDOWN, 1, 0);
        HWND targets[] = {w.parent.hwnd(), w.list, w.child, w.combo};
        w.Hook(c.code, c.msg, targets[c.target]);
        EXPECT_EQ(!c.closes, w.Dropped());
        EXPECT_EQ(!c.closes, IsWindowVisible(w.list) != FALSE);
    }
    // With no open combo the hook only passes the event on.
    CombWin w(kDrop | kEdit);
    EXPECT_EQ(0, w.Hook(HC_ACTION, WM_LBUTTONDOWN, w.parent.hwnd()));
    // A mouse activation of the open list leaves the focus in the child.
    SendMessageA(w.combo, CB_SHOWDROPDOWN, 1, 0);
    EXPECT_EQ(0, SendMessageA(w.list, WM_MOUSEACTIVATE, (WPARAM)w.list, MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN)));
    EXPECT_EQ(w.child, GetFocus());
    EXPECT_TRUE(w.Dropped());
}

TEST(CombDrop, OpensUpwardOnlyWhenBelowTheMiddleOfTheScreen)
{
    const LONG screenH = GetSystemMetrics(SM_CYSCREEN);
    const struct {
        const char* name;
        LONG comboTop;   // on the screen
        LONG dropHeight;
        bool above;
        bool clipped;    // the bottom cut to the screen
    } cases[] = {
        {"room below", 50, 100, false, false},
        {"no room below, combo in the lower half", screenH - 60, 100, true, false},
        {"no room below, combo in the upper half: cut at the screen", 50, screenH, false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CombWin w(kDrop);
        RECT rc;
        GetWindowRect(w.combo, &rc);
        RECT parent;
        GetWindowRect(w.parent.hwnd(), &parent);
        SetWindowPos(w.parent.hwnd(), nullptr, parent.left, parent.top + c.comboTop - rc.top, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER);
        EXPECT_EQ(1, SendMessageA(w.combo, HCM_SETDROPHEIGHT, (WPARAM)c.dropHeight, 0));
        SendMessageA(w.combo, CB_SHOWDROPDOWN, 1, 0);
        GetWindowRect(w.combo, &rc);
        RECT drop = {};
        SendMessageA(w.combo, CB_GETDROPPEDCONTROLRECT, 0, (LPARAM)&drop);
        if (c.above) {
            EXPECT_EQ(rc.top, drop.bottom);
            EXPECT_EQ(rc.top - c.dropHeight, drop.top);
        } else {
            EXPECT_EQ(rc.bottom, drop.top);
            EXPECT_EQ(c.clipped ? screenH : rc.bottom + c.dropHeight, drop.bottom);
        }
        EXPECT_EQ(rc.left, drop.left);
        EXPECT_EQ(rc.right, drop.right);
    }
}

// Pixels of the drop button inside its frame, read back from a memory context.
int CountInButton(HWND combo, COLORREF color)
{
    EraseCanvas canvas(combo);
    const RECT& rc = canvas.rc;
    int n = 0;
    for (int x = rc.right - GetSystemMetrics(SM_CXVSCROLL) + 3; x < rc.right - 3; ++x)
        for (int y = 3; y < rc.bottom - 3; ++y)
            n += canvas.At(x, y) == color;
    return n;
}

TEST(CombDrop, ButtonShowsABlackArrowAndAGreyOneWhenDisabled)
{
    CombWin w(kDrop);
    const COLORREF black = RGB(0, 0, 0), grey = RGB(128, 128, 128), green = RGB(0, 255, 0);
    EXPECT_GE(CountInButton(w.combo, black), 10);
    EXPECT_EQ(0, CountInButton(w.combo, green)); // the key colour never shows
    EnableWindow(w.combo, FALSE);
    EXPECT_EQ(0, CountInButton(w.combo, black));
    EXPECT_GE(CountInButton(w.combo, grey), 10);
}

TEST(CombSelection, ListAndChildFollowEachOtherAndOnlyTheUserIsNotified)
{
    CombWin w(kDrop);
    // By message: both follow, nobody is told.
    EXPECT_EQ(1, SendMessageA(w.combo, CB_SETCURSEL, 3, 0));
    EXPECT_EQ(3, (LONG)SendMessageA(w.child, HLM_GETCARET, 0, 0));
    EXPECT_EQ(3, SendMessageA(w.combo, CB_GETCURSEL, 0, 0));
    char text[32] = "";
    EXPECT_EQ(6, SendMessageA(w.combo, WM_GETTEXT, sizeof text, (LPARAM)text));
    EXPECT_STREQ("cherry", text);
    EXPECT_EQ(6, SendMessageA(w.combo, WM_GETTEXTLENGTH, 0, 0));
    EXPECT_EQ(2, SendMessageA(w.combo, WM_GETTEXT, 3, (LPARAM)text)); // cut to the buffer
    EXPECT_STREQ("ch", text);
    SendMessageA(w.combo, CB_SELECTSTRING, 0, (LPARAM)"ban");
    EXPECT_EQ(2, (LONG)SendMessageA(w.child, HLM_GETCARET, 0, 0));
    KeepCommands(w.parent);
    EXPECT_SEEN(w.parent, {});
    // The exported item routines keep the child in step too.
    LPCSTR more[] = {"damson"};
    EXPECT_EQ(-1, HCAddItems(w.parent.hwnd(), 1, (LPVOID)more)); // not a combo
    EXPECT_EQ(5, SendMessageA(w.combo, CB_GETCOUNT, 0, 0));
    EXPECT_EQ(5, HCInsertStringEx(w.combo, -1, "damson", nullptr));
    EXPECT_EQ(6, SendMessageA(w.child, HLM_GETCOUNT, 0, 0));
}

TEST(CombSelection, KeysTypedIntoTheEditAreToldAndWalkTheList)
{
    CombWin w(kDrop | kEdit);
    SendMessageA(w.child, WM_CHAR, 'a', 0);
    SendMessageA(w.child, WM_CHAR, 'b', 0);
    SendMessageA(w.child, WM_CHAR, 'b', 0);
    EXPECT_EQ(4, w.ListCaret()); // "abbey"
    char text[32] = "";
    SendMessageA(w.combo, WM_GETTEXT, sizeof text, (LPARAM)text);
    EXPECT_STREQ("abb", text); // what was typed stays
    KeepCommands(w.parent);
    EXPECT_SEEN(w.parent, {w.Note(HCN_EDITUPDATE), w.Note(HCN_EDITCHANGE), w.Note(HCN_SELCHANGE),
                           w.Note(HCN_EDITUPDATE), w.Note(HCN_EDITCHANGE), w.Note(HCN_SELCHANGE),
                           w.Note(HCN_EDITUPDATE), w.Note(HCN_EDITCHANGE), w.Note(HCN_SELCHANGE)});
    // A notice in the child's name from another window is not the child's.
    w.parent.seen.clear();
    SendMessageA(w.combo, WM_COMMAND, MAKEWPARAM(1, 0x300 /* HEN_CHANGE */), (LPARAM)w.parent.hwnd());
    EXPECT_SEEN(w.parent, {});
    // Up in the edit goes to the list, and the list's item comes into the edit.
    w.Key(VK_UP);
    SendMessageA(w.combo, WM_GETTEXT, sizeof text, (LPARAM)text);
    EXPECT_STREQ("cherry", text);
}

TEST(CombSelection, RetypingANotEditableComboKeepsOneStoreForBoth)
{
    for (DWORD style : {kDrop, DWORD(0)}) {
        SCOPED_TRACE(style ? "drop list" : "open list");
        CombWin w(style);
        EXPECT_EQ(1, SendMessageA(w.combo, WM_SETTEXT, 0, (LPARAM)"%nl"));
        EXPECT_EQ(0, SendMessageA(w.combo, CB_GETCOUNT, 0, 0));
        LONG values[] = {30, 10, 20};
        EXPECT_EQ(3, HCAddItems(w.combo, 3, values));
        EXPECT_EQ(3, SendMessageA(w.child, HLM_GETCOUNT, 0, 0));
        SendMessageA(w.combo, CB_SETCURSEL, 2, 0);
        char text[32] = "";
        SendMessageA(w.combo, WM_GETTEXT, sizeof text, (LPARAM)text);
        EXPECT_STREQ("20", text);
        DestroyWindow(w.combo);
        EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
    }
}

TEST(CombReentrancy, ReceiversThatVetoOrDestroyInsideANotification)
{
    const struct {
        const char* name;
        WORD code;      // the notification the receiver acts in
        bool destroy;   // else it vetoes
        Act act;
    } cases[] = {
        {"destroyed as the list opens", HCN_DROPDOWN, true, SHOW},
        {"destroyed as the button opens the list", HCN_DROPDOWN, true, BUTTON},
        {"destroyed by the selection of a click in the list", HCN_SELCHANGE, true, ITEM2},
        {"destroyed as the child loses the focus", HCN_KILLFOCUS, true, BLUR},
        {"a veto of the drop is the combo's own and opens all the same", HCN_DROPDOWN, false, SHOW},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CombWin w(kDrop);
        if (c.act == ITEM2)
            SendMessageA(w.combo, CB_SHOWDROPDOWN, 1, 0);
        HWND combo = w.combo, list = w.list;
        w.parent.onCommand = [&](const SeenMsg& m) {
            if (m.code != c.code)
                return;
            if (c.destroy)
                DestroyWindow(combo);
            else
                EXPECT_EQ(1, SendMessageA(combo, HM_VETO, 0, 0));
        };
        Perform(w, c.act);
        PumpMessages();
        EXPECT_EQ(!c.destroy, IsWindow(combo) != FALSE);
        EXPECT_EQ(!c.destroy, IsWindow(list) != FALSE); // the drop list dies with its combo
        if (!c.destroy)
            EXPECT_TRUE(w.Dropped());
        // An outside click after all that finds nothing to close.
        w.Hook(HC_ACTION, WM_LBUTTONDOWN, w.parent.hwnd());
        EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
    }
}

TEST(CombMessages, ComboBoxBlockAndOwnMessages)
{
    CombWin drop(kDrop), open(0), edit(kDrop | kEdit), keys(kDrop | kKeys);
    HDC screen = GetDC(nullptr);
    const LRESULT ownButtonColor = DefWindowProcA(drop.combo, WM_CTLCOLORBTN, (WPARAM)screen, (LPARAM)drop.combo);
    const struct {
        const char* name;
        HWND combo;
        UINT msg;
        WPARAM wParam;
        LPARAM lParam;
        LRESULT result;
    } cases[] = {
        {"CB_SETEXTENDEDUI refuses", drop.combo, CB_SETEXTENDEDUI, 1, 0, -1},
        {"CB_GETEXTENDEDUI is off", drop.combo, CB_GETEXTENDEDUI, 0, 0, 0},
        {"CB_GETCOUNT by its older number", drop.combo, CB_GETCOUNT + 0x2C0, 0, 0, 5},
        {"CB_SETITEMHEIGHT of an item refuses", drop.combo, CB_SETITEMHEIGHT, 0, 20, -1},
        {"CB_GETITEMDATA without codes", drop.combo, CB_GETITEMDATA, 0, 0, -1},
        {"HCM_SETDROPHEIGHT refuses a negative height", drop.combo, HCM_SETDROPHEIGHT, (WPARAM)-1, 0, 0},
        {"a drop height of three window heights", drop.combo, HCM_GETDROPHEIGHT, 0, 0, 3 * kHeight},
        {"dialog code of a closed list", drop.combo, WM_GETDLGCODE, 0, 0, 0x81},
        {"dialog code of a closed editable", edit.combo, WM_GETDLGCODE, 0, 0, 0x89},
        {"dialog code with all keys", keys.combo, WM_GETDLGCODE, 0, 0, 4},
        {"the child answers the combo's dialog code", edit.child, WM_GETDLGCODE, 0, 0, 0x89},
        {"CB_FINDSTRING by prefix", open.combo, CB_FINDSTRING, 0, (LPARAM)"ch", 3},
        {"HLM_GETCOUNT goes to the list", open.combo, HLM_GETCOUNT, 0, 0, 5},
        {"HM_GETNOTIFY goes to the top child, whose target is the combo", drop.combo, HM_GETNOTIFY, 0, 0,
         (LRESULT)drop.combo},
        {"the child's caret set apart from the list's", drop.child, HLM_SETCARET, 1, 0, 1},
        {"HLM_SELECTITEM by its second number", drop.combo, HLM_SELECTITEM2, HLSEL_SET, 2, 1},
        {"and the child follows the list again", drop.child, HLM_GETCARET, 0, 0, -1},
        {"a button colour request is not the parent's", drop.combo, WM_CTLCOLORBTN, (WPARAM)screen,
         (LPARAM)drop.combo, ownButtonColor},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.result, SendMessageA(c.combo, c.msg, c.wParam, c.lParam));
    }
    ReleaseDC(nullptr, screen);
    // Drop height by message and by the creation text.
    EXPECT_EQ(1, SendMessageA(drop.combo, HCM_SETDROPHEIGHT, 77, 0));
    EXPECT_EQ(77, SendMessageA(drop.combo, HCM_GETDROPHEIGHT, 0, 0));
    CombWin high(kDrop, "%120%s");
    EXPECT_EQ(120, SendMessageA(high.combo, HCM_GETDROPHEIGHT, 0, 0));
    EXPECT_EQ(5, SendMessageA(high.combo, CB_GETCOUNT, 0, 0));
}

TEST(CombMessages, HiddenComboDoesNotOpenAndADialogEditorFillsASample)
{
    CombWin hidden(kDrop);
    ShowWindow(hidden.combo, SW_HIDE);
    SendMessageA(hidden.combo, CB_SHOWDROPDOWN, 1, 0);
    EXPECT_FALSE(hidden.Dropped());
    EXPECT_SEEN(hidden.parent, {});
    // In a dialog editor both kinds of list show the sample lines, the dropped one by the combo.
    for (DWORD style : {kDrop, DWORD(0)}) {
        TestParent editor("DlgEditCombTest");
        HWND combo = editor.Child(HCOMB_CLASS, "%s", style, kId, 10, 10, kWidth, 60);
        EXPECT_EQ(25, SendMessageA(combo, CB_GETCOUNT, 0, 0)) << (style ? "drop list" : "open list");
    }
}

TEST(CombMessages, GetDropHeightReadsALeadingHeight)
{
    const struct {
        const char* text;
        int height;
        const char* rest;
    } cases[] = {
        {"%120%nd", 120, "%nd"}, {"%5s", 5, "s"},  {"%nd", 0, "%nd"}, {"%1", 0, "%1"},
        {"120", 0, "120"},       {"", 0, ""},       {"%99999999999%s", 32767, "%s"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        LPCSTR p = c.text;
        EXPECT_EQ(c.height, GetDropHeight(&p));
        EXPECT_STREQ(c.rest, p);
    }
    EXPECT_EQ(0, GetDropHeight(nullptr));
}

} // namespace
