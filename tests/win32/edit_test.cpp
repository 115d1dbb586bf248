// The HEdit window: values typed key by key through real key messages, the
// selection and the clipboard, the commit with its data link, receivers that
// veto or destroy inside a notification, and the older message numbers.
#include "wintest.h"

#include <string.h>
#include <time.h>

#include <string>
#include <vector>

namespace {

constexpr WORD kId = 9;

SeenMsg Note(HWND edit, WORD code) { return {WM_COMMAND, kId, code, edit}; }
std::vector<SeenMsg> Notes(HWND edit, const std::vector<WORD>& codes)
{
    std::vector<SeenMsg> out;
    for (WORD code : codes)
        out.push_back(Note(edit, code));
    return out;
}

// Keys of a typing script that are not characters.
constexpr char kHome = '\x01', kEnd = '\x02', kLeft = '\x03', kRight = '\x04', kDelete = '\x7f';

struct EditWin {
    TestParent parent;
    HWND hWnd;
    EditWin(const char* typeSpec, DWORD style = 0, int width = 240)
    {
        ShowWindow(parent.hwnd(), SW_SHOWNA);
        hWnd = parent.Child(HEDIT_CLASS, typeSpec, style, kId, 10, 10, width, 24);
        SendMessageA(hWnd, HM_SETBACKBRUSH, (WPARAM)GetStockObject(WHITE_BRUSH), 0);
    }
    void Focus()
    {
        SetFocus(hWnd);
        parent.seen.clear();
    }
    void Leave() { SetFocus(parent.hwnd()); }
    std::string Text() const
    {
        char text[256] = "";
        SendMessageA(hWnd, WM_GETTEXT, sizeof text, (LPARAM)text);
        return text;
    }
    // One key as the message loop gives it: WM_KEYDOWN, then WM_CHAR for a character.
    void Key(char c, bool shift = false, bool ctrl = false)
    {
        static const struct { char c; UINT vk; } kNamed[] = {
            {kHome, VK_HOME}, {kEnd, VK_END}, {kLeft, VK_LEFT}, {kRight, VK_RIGHT}, {kDelete, VK_DELETE}};
        SetKeys(shift, ctrl);
        for (const auto& k : kNamed)
            if (k.c == c) {
                SendMessageA(hWnd, WM_KEYDOWN, k.vk, 1);
                SetKeys(false, false);
                return;
            }
        UINT vk = c == '\b' ? VK_BACK : (UINT)(VkKeyScanA(c) & 0xFF);
        SendMessageA(hWnd, WM_KEYDOWN, vk, 1);
        if (IsWindow(hWnd))
            SendMessageA(hWnd, WM_CHAR, (BYTE)c, 1);
        SetKeys(false, false);
    }
    void Type(const char* keys)
    {
        for (const char* p = keys; *p && IsWindow(hWnd); ++p)
            Key(*p);
    }
    DWORD Sel() const { return (DWORD)SendMessageA(hWnd, EM_GETSEL, 0, 0); }
    WORD Flags() const { return (WORD)SendMessageA(hWnd, HEM_GETFLAGS, 0, 0); }
};

// The notifications of n accepted keys: HEN_UPDATE then HEN_CHANGE for each.
std::vector<SeenMsg> KeyNotes(HWND edit, int n)
{
    std::vector<SeenMsg> out;
    for (int i = 0; i < n; ++i) {
        out.push_back(Note(edit, HEN_UPDATE));
        out.push_back(Note(edit, HEN_CHANGE));
    }
    return out;
}

template <typename T> std::vector<BYTE> Bytes(const T& v)
{
    return std::vector<BYTE>((const BYTE*)&v, (const BYTE*)&v + sizeof v);
}

struct DMY {
    BYTE day, month;
    WORD year;
};

struct TypingCase {
    const char* name;
    const char* typeSpec;
    const char* keys;       // from the focus, which selects all
    const char* editing;    // window text before the focus leaves
    int accepted;           // keys that changed the text
    const char* shown;      // window text after the focus left
    std::vector<BYTE> value; // the value after the commit
    bool altColour = false;  // HEF_ALTCOLOR while editing
};

TEST(EditTyping, WholeValuesKeyByKeyWithTheirNotifications)
{
    SetOverwriteMode(0);
    const TypingCase cases[] = {
        {"number: digits replace the selected zero", "%ni", "1234", "1234", 4, "1234", Bytes((LONG)1234)},
        {"number: backspace removes the last digit", "%ni", "567\b", "56", 4, "56", Bytes((LONG)56)},
        {"number: a minus sign only at the front", "%ni", "12\x01-", "-12", 3, "-12", Bytes((LONG)-12)},
        {"number: a digit on the point of a full number goes into the fraction", "%nd0.00", "12.5", "1.25", 3,
         "1.25", Bytes(1.25)},
        {"date: digits fill month, day and year of the default form", "%da", "03/12/1996", "03/12/1996", 10,
         "03/12/1996", Bytes(DMY{12, 3, 1996})},
        {"string: characters are inserted", "%ss", "Quill", "Quill", 5, "Quill",
         std::vector<BYTE>{'Q', 'u', 'i', 'l', 'l', 0}},
        {"string: delete removes at the caret", "%ssab", "xyz\x01\x7f", "yz", 4, "yz", std::vector<BYTE>{'y', 'z', 0}},
        {"masked: literals are stepped over", "%ms##-##", "1234", "12-34", 4, "12-34",
         std::vector<BYTE>{'1', '2', '3', '4', 0}},
        {"masked: a letter on a digit place is refused", "%ms##-##", "1a2", "12-__", 2, "12-__",
         std::vector<BYTE>{'1', '2', 0}},
        {"boolean: t shows the true word, a blank flips it", "%bw", "t ", "FALSE", 2, "FALSE", Bytes((WORD)0), true},
        {"boolean: a key marks even the true word", "%bw", "t", "TRUE", 1, "TRUE", Bytes((WORD)1), true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EditWin w(c.typeSpec);
        w.Focus();
        w.Type(c.keys);
        EXPECT_EQ(c.editing, w.Text());
        EXPECT_SEEN(w.parent, KeyNotes(w.hWnd, c.accepted));
        EXPECT_EQ(c.altColour, (w.Flags() & HEF_ALTCOLOR) != 0);
        w.parent.seen.clear();
        w.Leave();
        EXPECT_SEEN(w.parent, {Note(w.hWnd, HEN_KILLFOCUS)});
        EXPECT_EQ(c.shown, w.Text());
        std::vector<BYTE> value(c.value.size() + 8, 0xCC);
        LRESULT got = SendMessageA(w.hWnd, HEM_GETDATA, (WPARAM)value.size(), (LPARAM)value.data());
        value.resize(c.value.size());
        EXPECT_GT(got, 0);
        EXPECT_EQ(c.value, value);
    }
}

// One selection step: keys with shift and ctrl, or a message, then the selection and text expected.
struct SelStep {
    char key;       // 0: send msg instead
    bool shift, ctrl;
    UINT msg;
    WPARAM wParam;
    LPARAM lParam;
    WORD low, high;
    const char* text;
};

TEST(EditSelection, KeysMessagesAndTheClipboardMoveAndCarryTheSelection)
{
    SetOverwriteMode(0);
    const SelStep steps[] = {
        {0, false, false, 0, 0, 0, 0, 11, "Hello world"},                      // the focus selects all
        {kHome, false, false, 0, 0, 0, 0, 0, "Hello world"},
        {kRight, true, true, 0, 0, 0, 0, 6, "Hello world"},                    // the word and its blank
        {0, false, false, WM_COPY, 0, 0, 0, 6, "Hello world"},
        {0, false, false, EM_SETSEL, 0, -1, 0, 11, "Hello world"},             // a negative end is the end
        {kLeft, false, true, 0, 0, 0, 6, 6, "Hello world"},
        {kEnd, true, false, 0, 0, 0, 6, 11, "Hello world"},
        {0, false, false, WM_CUT, 0, 0, 6, 6, "Hello "},
        {0, false, false, WM_PASTE, 0, 0, 11, 11, "Hello world"},
        {0, false, false, HEM_INSERTTEXT, 0, (LPARAM)"!", 12, 12, "Hello world!"},
        {0, false, false, EM_SETSEL, 2, 4, 2, 4, "Hello world!"},
        {'L', false, false, 0, 0, 0, 3, 3, "HeLo world!"},                      // typing replaces a selection
        {0, false, false, EM_SETSEL, 0, -1, 0, 11, "HeLo world!"},
        {0, false, false, EM_LIMITTEXT, 5, 0, 0, 11, "HeLo "},                 // the cut leaves the selection
    };
    EditWin w("%ssHello world");
    w.Focus();
    for (const auto& s : steps) {
        SCOPED_TRACE(s.text);
        if (s.key)
            s.key >= ' ' && s.key != kDelete ? (SetKeys(s.shift, s.ctrl), SendMessageA(w.hWnd, WM_CHAR, (BYTE)s.key, 1),
                                                SetKeys(false, false))
                                             : w.Key(s.key, s.shift, s.ctrl);
        else if (s.msg)
            SendMessageA(w.hWnd, s.msg, s.wParam, s.lParam);
        EXPECT_EQ(MAKELONG(s.low, s.high), (LONG)w.Sel());
        EXPECT_EQ(s.text, w.Text());
    }
    EXPECT_EQ("world", ClipboardText()); // the cut replaced what the copy put there
    char part[4] = "";
    SendMessageA(w.hWnd, EM_SETSEL, 0, 5);
    SendMessageA(w.hWnd, HEM_GETSELTEXT, sizeof part, (LPARAM)part);
    EXPECT_STREQ("HeL", part); // bounded by the buffer
}

TEST(EditSelection, PasswordFieldsRefuseCutAndCopyAndPasteGoesThroughTheMask)
{
    PutClipboardText("keep");
    EditWin secret("%sssecret", HES_PASSWORD);
    secret.Focus();
    EXPECT_EQ(0, SendMessageA(secret.hWnd, WM_COPY, 0, 0));
    EXPECT_EQ(0, SendMessageA(secret.hWnd, WM_CUT, 0, 0));
    EXPECT_EQ("secret", secret.Text());
    EXPECT_EQ("keep", ClipboardText());

    PutClipboardText("9x8-76");
    EditWin masked("%ms##-##");
    masked.Focus();
    SendMessageA(masked.hWnd, EM_SETSEL, 0, 0);
    masked.parent.seen.clear();
    EXPECT_EQ(1, SendMessageA(masked.hWnd, WM_PASTE, 0, 0));
    EXPECT_EQ("98-76", masked.Text()); // "x" beeps and the next goes on
    EXPECT_SEEN(masked.parent, KeyNotes(masked.hWnd, 5)); // per character, the "-" stepping over its literal
}

// The commit at focus loss, with the data link, the modified flag and the date quirk.
TEST(EditCommit, FocusLossParsesIntoTheValueAndTheDataLink)
{
    LONG linked = 42;
    EditWin w("%ni");
    EXPECT_EQ(1, SendMessageA(w.hWnd, HM_SETDATALINK, 1, (LPARAM)&linked)); // the application's value wins
    EXPECT_EQ("42", w.Text());
    EXPECT_EQ(0, SendMessageA(w.hWnd, HM_GETDATALINK, 0, 0));                // HEdit does not answer it
    w.Focus();
    w.Type("7");
    EXPECT_TRUE(w.Flags() & HEF_DIRTY);
    EXPECT_EQ(42, linked);
    w.Leave();
    EXPECT_EQ(7, linked);
    EXPECT_FALSE(w.Flags() & HEF_DIRTY);
    EXPECT_NE(0, SendMessageA(w.hWnd, HM_GETMODIFY, 0, 0));
    linked = 99; // written by the application: shown at the next display
    w.Focus();
    EXPECT_EQ("99", w.Text());
    LONG mine = 5;
    EXPECT_EQ(4, SendMessageA(w.hWnd, HM_SETDATALINK, 0, (LPARAM)&mine));   // the control's value wins
    EXPECT_EQ(99, mine);
    EXPECT_EQ(1, SendMessageA(w.hWnd, HEM_SETDATA, 0, 0));                  // null empties
    EXPECT_TRUE(w.Flags() & HEF_EMPTY);
    EXPECT_EQ(0, SendMessageA(w.hWnd, HEM_GETDATA, sizeof mine, (LPARAM)&mine));

    // A date field parses with 1 for success: its commit answers 1 and stays dirty.
    DMY date = {};
    EditWin d("%da");
    SendMessageA(d.hWnd, HM_SETDATALINK, 1, (LPARAM)&date);
    d.Focus();
    d.Type("12241999");
    EXPECT_EQ(1, SendMessageA(d.hWnd, HEM_COMMIT, 1, 0));
    EXPECT_TRUE(d.Flags() & HEF_DIRTY);
    EXPECT_EQ(24, date.day);
    EXPECT_EQ(12, date.month);
    EXPECT_EQ(1999, date.year);
}

// What a receiver does inside a notification, and what the control sends after it.
struct ReentryCase {
    const char* name;
    WORD at;           // the notification that the receiver reacts to
    bool destroy;      // destroy the control, else veto
    const char* keys;  // typed after the focus; kDelete etc. allowed
    UINT vk;           // then one key down, or 0
    std::vector<WORD> expected;
};

TEST(EditReentry, ReceiversThatDestroyOrVetoInsideANotification)
{
    SetOverwriteMode(0);
    const ReentryCase cases[] = {
        // A focused field torn down still commits and says so.
        {"destroyed at the update: no change follows", HEN_UPDATE, true, "5", 0, {HEN_UPDATE, HEN_KILLFOCUS}},
        {"destroyed at the change: the next key finds no window", HEN_CHANGE, true, "56", 0,
         {HEN_UPDATE, HEN_CHANGE, HEN_KILLFOCUS}},
        {"destroyed at help: no escape follows", HN_HELP, true, "", VK_F1, {HN_HELP, HEN_KILLFOCUS}},
        {"vetoed help still escapes", HN_HELP, false, "", VK_F1, {HN_HELP, HN_ESCAPE}},
        {"vetoed updates leave the keys in", HEN_UPDATE, false, "56", 0,
         {HEN_UPDATE, HEN_CHANGE, HEN_UPDATE, HEN_CHANGE}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EditWin w("%ni");
        w.Focus();
        HWND edit = w.hWnd;
        w.parent.onCommand = [&](const SeenMsg& m) {
            if (m.code != c.at)
                return;
            if (c.destroy)
                DestroyWindow(edit);
            else
                SendMessageA(edit, HM_VETO, 0, 0);
        };
        w.Type(c.keys);
        if (c.vk && IsWindow(edit))
            SendMessageA(edit, WM_KEYDOWN, c.vk, 1);
        EXPECT_SEEN(w.parent, Notes(edit, c.expected));
        EXPECT_EQ(!c.destroy, IsWindow(edit) != 0);
        if (!c.destroy)
            EXPECT_EQ("56", w.Text().substr(0, c.keys[0] ? 2 : 0) + (c.keys[0] ? "" : "56"));
        w.parent.onCommand = nullptr;
    }
}

TEST(EditReentry, AVetoedBadDateReturnsTheFocusToTheField)
{
    EditWin w("%dadd/mm/yyyy");
    w.Focus();
    w.parent.onCommand = [&](const SeenMsg& m) {
        if (m.code == HN_BADDATE)
            SendMessageA(w.hWnd, HM_VETO, 0, 0);
    };
    w.Type("31021999"); // 31 February
    w.parent.seen.clear();
    w.Leave();
    EXPECT_EQ(w.hWnd, GetFocus());
    w.parent.onCommand = nullptr;
}

// One message and its answer, table by table.
struct MsgCase {
    const char* name;
    const char* typeSpec;
    DWORD style;
    UINT msg;
    WPARAM wParam;
    LPARAM lParam;
    LRESULT result;
};

TEST(EditMessages, AnswersOfTheMessageBlockAndItsOlderNumbers)
{
    static RECT rect = {1, 2, 3, 4};
    const MsgCase cases[] = {
        {"EM_SETRECT returns the focus brush", "%ss", HES_FOCUSBRUSH, EM_SETRECT, 0, (LPARAM)&rect,
         (LRESULT)GetStockObject(GetSysColor(COLOR_WINDOW) == 0xffffff ? LTGRAY_BRUSH : WHITE_BRUSH)},
        {"EM_GETRECT without a rectangle", "%ss", 0, EM_GETRECT, 0, 0, -2},
        {"EM_LIMITTEXT on a number", "%ni", 0, EM_LIMITTEXT, 5, 0, -1},
        {"EM_LIMITTEXT at its older number", "%ss", 0, 0x415, 5, 0, 1},
        {"EM_CANUNDO at its older number", "%ss", 0, 0x416, 0, 0, 1},
        {"EM_GETSEL at 0x400 with packed halves", "%ssabc", 0, 0x400, 0, MAKELPARAM(2, 3), MAKELONG(0, 0)},
        {"EM_SETSEL at its older number", "%ssabc", 0, 0x401, 1, 2, 1},
        {"EM_SETSEL select-all under keep-selection", "%ssabc", HES_KEEPSEL, EM_SETSEL, 0, 0xFFFE, 0},
        {"HM_GETDATALINK is not answered", "%ni", 0, HM_GETDATALINK, 0, 0, 0},
        {"HM_SETMASK refused for a string", "%ss", 0, HM_SETMASK, 0, (LPARAM)"##", 0},
        {"HM_SETMASK without a mask", "%ni", 0, HM_SETMASK, 0, 0, -2},
        {"HEM_SETPASSWORDCHAR of 0", "%ss", 0, HEM_SETPASSWORDCHAR, 0, 0, -3},
        {"HEM_GETPASSWORDCHAR", "%ss", 0, HEM_GETPASSWORDCHAR, 0, 0, '*'},
        {"HEM_VALIDATE without a validator", "%ss", 0, HEM_VALIDATE, 0, 0, -1},
        {"WM_SETTEXT without a text", "%ss", 0, WM_SETTEXT, 0, 0, -2},
        {"HEM_GETLIMIT of a limited field", "%ss20", 0, HEM_GETLIMIT, 0, 0, 20},
        {"HM_GETDATASIZE of a double", "%nd", 0, HM_GETDATASIZE, 0, 0, 8},
        {"WM_GETDLGCODE", "%ss", 0, WM_GETDLGCODE, 0, 0, 0x89},
        {"WM_GETDLGCODE wanting all keys", "%ss", HES_WANTKEYS, WM_GETDLGCODE, 0, 0, 0x0C},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EditWin w(c.typeSpec, c.style);
        EXPECT_EQ(c.result, SendMessageA(w.hWnd, c.msg, c.wParam, c.lParam));
    }
    EditWin w("%ssabc");
    SendMessageA(w.hWnd, 0x401, 1, 2); // EM_SETSEL by its older number
    DWORD low = 9, high = 9;
    EXPECT_EQ(MAKELONG(1, 2), SendMessageA(w.hWnd, EM_GETSEL, (WPARAM)&low, (LPARAM)&high));
    EXPECT_EQ(1u, low);
    EXPECT_EQ(2u, high);
    RECT before, after;
    SendMessageA(w.hWnd, EM_GETRECT, 0, (LPARAM)&before);
    SendMessageA(w.hWnd, EM_SETRECT, 0, (LPARAM)&rect);
    SendMessageA(w.hWnd, 0x402, 0, (LPARAM)&after); // EM_GETRECT by its older number
    EXPECT_TRUE(EqualRect(&before, &after));
}

TEST(EditWindow, RetypingSettingTextAndTheClock)
{
    EditWin w("%da");
    EXPECT_EQ(1, SendMessageA(w.hWnd, WM_SETTEXT, 0, (LPARAM)"12/03/1996")); // committed as typed text
    BYTE raw[8] = {};
    EXPECT_EQ(6, SendMessageA(w.hWnd, HEM_GETDATA, sizeof raw, (LPARAM)raw)); // the type's size
    EXPECT_EQ(Bytes(DMY{3, 12, 1996}), std::vector<BYTE>(raw, raw + 4));
    EXPECT_EQ(1, SendMessageA(w.hWnd, WM_SETTEXT, 0, (LPARAM)"%ss5hello world"));
    EXPECT_EQ('s', (char)SendMessageA(w.hWnd, HM_GETCLASS, 0, 0));
    EXPECT_EQ("hello", w.Text()); // five characters at most
    w.Focus();
    SendMessageA(w.hWnd, EM_SETSEL, 5, 5);
    w.Key('!');
    EXPECT_SEEN(w.parent, {Note(w.hWnd, HEN_MAXTEXT)});
    EXPECT_EQ(1, SendMessageA(w.hWnd, WM_CLEAR, 0, 0));
    char value[8] = "x";
    SendMessageA(w.hWnd, HEM_GETDATA, sizeof value, (LPARAM)value);
    EXPECT_STREQ("", value);

    // Unfocused, a clock field follows the time at each tick.
    EditWin clock("%kThh:mm");
    SendMessageA(clock.hWnd, WM_TIMER, 1, 0);
    time_t now = time(nullptr);
    char expected[8];
    strftime(expected, sizeof expected, "%H:%M", localtime(&now));
    EXPECT_EQ(expected, clock.Text());
}

// Horizontal scrolling: a field scrolls by a third of its width with its style, and without it takes only what fits.
struct ScrollCase {
    const char* name;
    const char* typeSpec;
    DWORD style;
    const char* keys;
    bool scrolled;     // firstChar moved and HEN_HSCROLL was sent
    size_t length;     // of the text afterwards
    bool caretAtStart; // else the caret follows to the end
};

TEST(EditScrolling, AFieldScrollsWithItsStyleAndOtherwiseTakesWhatFits)
{
    SetOverwriteMode(0);
    const ScrollCase cases[] = {
        {"scrolling: the caret at the end moves the view", "%ssabcdefghijklmnopqrstuvwxyz0123456789",
         HES_AUTOHSCROLL, "\x02" /* End */, true, 36},
        {"scrolling: typing past the edge moves the view", "%ss", HES_AUTOHSCROLL, "abcdefghijklmnopqrstuvwxyz", true, 26},
        {"no scrolling: characters that do not fit are refused", "%ss", 0, "abcdefghijklmnopqrstuvwxyz", false, 0},
        {"right-aligned: typing at the end keeps the end in view", "%zd0.00", HES_AUTOHSCROLL,
         "\x02" "1234567890123456", false, 17},
        {"right-aligned: Home brings the start into view", "%zd0.00", HES_AUTOHSCROLL, "\x02" "1234567890123456" "\x01", true,
         17, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EditWin w(c.typeSpec, c.style, 80);
        w.Focus();
        SendMessageA(w.hWnd, EM_SETSEL, 0, 0);
        w.parent.seen.clear();
        w.Type(c.keys);
        LONG first = (LONG)SendMessageA(w.hWnd, HEM_GETFIRSTCHAR, 0, 0);
        bool told = false;
        for (const auto& m : w.parent.seen)
            told |= m.code == HEN_HSCROLL;
        EXPECT_EQ(c.scrolled, first > 0);
        EXPECT_EQ(c.scrolled, told);
        if (c.length)
            EXPECT_EQ(c.length, w.Text().size());
        else
            EXPECT_LT(w.Text().size(), 26u);
        EXPECT_EQ(c.caretAtStart ? 0 : w.Text().size(), (size_t)HIWORD(w.Sel()));
    }
}

// Keys that speak to the receiver, and F2, which shows the display form while held.
struct TellCase {
    const char* name;
    UINT vk;
    bool shift;
    std::vector<WORD> expected;
};

TEST(EditKeys, NavigationKeysTellTheReceiverAndF2PreviewsTheDisplayForm)
{
    const TellCase cases[] = {
        {"Tab", VK_TAB, false, {HN_TAB}},
        {"Shift+Tab", VK_TAB, true, {HN_BACKTAB}},
        {"Enter", VK_RETURN, false, {HN_ENTER}},
        {"Escape", VK_ESCAPE, false, {HN_ESCAPE}},
        {"F1 is help, then escape", VK_F1, false, {HN_HELP, HN_ESCAPE}},
        {"arrows only move the caret", VK_UP, false, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EditWin w("%ni");
        w.Focus();
        SetKeys(c.shift, false);
        SendMessageA(w.hWnd, WM_KEYDOWN, c.vk, 1);
        SetKeys(false, false);
        EXPECT_SEEN(w.parent, Notes(w.hWnd, c.expected));
    }
    EditWin w("%nd#,##0.00");
    w.Focus();
    w.Type("1234");
    SendMessageA(w.hWnd, WM_KEYDOWN, VK_F2, 1);
    EXPECT_EQ("1,234.00", w.Text());
    EXPECT_TRUE(w.Flags() & HEF_DISPLAY);
    w.Type("9"); // keys are ignored while the display form shows
    SendMessageA(w.hWnd, WM_KEYUP, VK_F2, 1);
    EXPECT_FALSE(w.Flags() & HEF_DISPLAY);
    EXPECT_EQ(std::string::npos, w.Text().find(','));
}

TEST(EditMouse, TheFirstClickEntersAndLaterClicksPlaceAndSelect)
{
    EditWin w("%ssHello world");
    EditWin other("%ss");
    SetFocus(other.hWnd);
    RECT text;
    SendMessageA(w.hWnd, EM_GETRECT, 0, (LPARAM)&text);
    LPARAM start = MAKELPARAM(text.left, text.top + 1), end = MAKELPARAM(text.right - 1, text.top + 1);
    auto click = [&](LPARAM at, UINT down = WM_LBUTTONDOWN, WPARAM keys = MK_LBUTTON) {
        SendMessageA(w.hWnd, down, keys, at);
        SendMessageA(w.hWnd, WM_LBUTTONUP, 0, at);
    };
    click(start);
    EXPECT_EQ(w.hWnd, GetFocus());
    EXPECT_EQ(MAKELONG(0, 11), (LONG)w.Sel()); // only entered: the focus selected all
    click(start);
    EXPECT_EQ(MAKELONG(0, 0), (LONG)w.Sel());
    click(end, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT);
    EXPECT_EQ(MAKELONG(0, 11), (LONG)w.Sel());
    w.parent.seen.clear();
    click(start, WM_LBUTTONDBLCLK);
    EXPECT_EQ(MAKELONG(0, 6), (LONG)w.Sel()); // the word and its trailing blank
    EXPECT_SEEN(w.parent, {Note(w.hWnd, HEN_DBLCLK)});
    // A double click on a word's first character starts at the word before, as Ctrl+Left would.
    LPARAM at = start;
    for (int x = text.left; x < text.right && LOWORD(w.Sel()) != 6; ++x) {
        at = MAKELPARAM(x, text.top + 1);
        click(at);
    }
    click(at, WM_LBUTTONDBLCLK);
    EXPECT_EQ(MAKELONG(0, 11), (LONG)w.Sel());
    SetFocus(other.hWnd); // a double click that enters the field takes its word from the clicked index
    SendMessageA(w.hWnd, WM_LBUTTONDBLCLK, MK_LBUTTON, start);
    EXPECT_EQ(MAKELONG(0, 6), (LONG)w.Sel());
}

// The process-wide overwrite mode reaches class s alone, and never a selection.
struct OverwriteCase {
    const char* name;
    const char* typeSpec;
    DWORD selection; // EM_SETSEL arguments packed low and high; -1 leaves what the focus chose
    const char* keys;
    const char* text;
};

TEST(EditOverwrite, OverwriteModeReplacesCharactersOfStringsOnly)
{
    const OverwriteCase cases[] = {
        {"the focus puts the caret at the start", "%ssabcd", (DWORD)-1, "xy", "xycd"},
        {"at the end it appends", "%ssab", MAKELONG(2, 2), "cd", "abcd"},
        {"typing over a selection inserts, the next key overwrites", "%ssabcd", MAKELONG(1, 3), "xy", "axy"},
        {"a masked field is not touched by the mode", "%ms##-##", (DWORD)-1, "12", "12-__"},
    };
    SetOverwriteMode(1);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EditWin w(c.typeSpec);
        w.Focus();
        if (c.selection != (DWORD)-1)
            SendMessageA(w.hWnd, EM_SETSEL, LOWORD(c.selection), HIWORD(c.selection));
        w.Type(c.keys);
        EXPECT_EQ(c.text, w.Text());
    }
    SetOverwriteMode(0);
}

} // namespace
