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

// Keys of a typing script that are not characters.
constexpr char kHome = '\x01', kEnd = '\x02', kLeft = '\x03', kRight = '\x04', kDelete = '\x7f';

void SetKeys(bool shift, bool ctrl)
{
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_SHIFT] = shift ? 0x80 : 0;
    keys[VK_CONTROL] = ctrl ? 0x80 : 0;
    SetKeyboardState(keys);
}

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
};

TEST(EditTyping, WholeValuesKeyByKeyWithTheirNotifications)
{
    SetOverwriteMode(0);
    const TypingCase cases[] = {
        {"number: digits replace the selected zero", "%ni", "1234", "1234", 4, "1234", Bytes((LONG)1234)},
        {"number: backspace removes the last digit", "%ni", "567\b", "56", 4, "56", Bytes((LONG)56)},
        {"number: a minus sign only at the front", "%ni", "12\x01-", "-12", 3, "-12", Bytes((LONG)-12)},
        {"number: the separator jumps to the fraction", "%nd0.00", "12.5", "12.50", 4, "12.50", Bytes(12.5)},
        {"date: digits fill day, month and year", "%da", "03/12/1996", "03/12/1996", 10, "03/12/1996",
         Bytes(DMY{3, 12, 1996})},
        {"string: characters are inserted", "%ss", "Quill", "Quill", 5, "Quill",
         std::vector<BYTE>{'Q', 'u', 'i', 'l', 'l', 0}},
        {"string: delete removes at the caret", "%ssab", "xyz\x01\x7f", "yz", 4, "yz", std::vector<BYTE>{'y', 'z', 0}},
        {"masked: literals are stepped over", "%ms##-##", "1234", "12-34", 4, "12-34",
         std::vector<BYTE>{'1', '2', '3', '4', 0}},
        {"masked: a letter on a digit place is refused", "%ms##-##", "1a2", "12-__", 2, "12-__",
         std::vector<BYTE>{'1', '2', 0}},
        {"boolean: t shows the true word, a blank flips it", "%bw", "t ", "FALSE", 2, "FALSE", Bytes((WORD)0)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EditWin w(c.typeSpec);
        w.Focus();
        w.Type(c.keys);
        EXPECT_EQ(c.editing, w.Text());
        EXPECT_SEEN(w.parent, KeyNotes(w.hWnd, c.accepted));
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

} // namespace
