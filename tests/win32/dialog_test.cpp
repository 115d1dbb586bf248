// Filling a plain window from dialog templates of this program (stat.rc):
// fonts, scaling, ordinal and library classes, the messages a dialog box would
// get, ClearDialog, and the dialog-info property.
#include "wintest.h"

#include <string>
#include <vector>

namespace {

constexpr int kPaneFont = 200, kPanePlain = 210, kPaneEmpty = 220;

// A plain window that logs what CreateDialogInWin sends it.
struct PaneMsg {
    UINT msg;
    WPARAM wParam;
    bool operator==(const PaneMsg& o) const { return msg == o.msg && wParam == o.wParam; }
};
std::vector<PaneMsg> g_paneLog;

LRESULT CALLBACK PaneProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_SETREDRAW || msg == WM_INITDIALOG)
        g_paneLog.push_back({msg, wParam});
    return DefWindowProcA(hWnd, msg, wParam, lParam);
}

class DialogFill : public ::testing::Test {
protected:
    void SetUp() override
    {
        WNDCLASSA wc = {};
        wc.lpfnWndProc = PaneProc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.lpszClassName = "QuillPane";
        RegisterClassA(&wc);
        pane = CreateWindowExA(0, "QuillPane", "before", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300, nullptr, nullptr,
                               wc.hInstance, nullptr);
        ASSERT_TRUE(pane);
        g_paneLog.clear();
    }
    void TearDown() override
    {
        DestroyWindow(pane);
        if (font)
            DeleteObject(font);
    }
    HWND Fill(int id, LPRECT rect, HFONT* out)
    {
        return CreateDialogInWin(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), pane, rect, out);
    }
    std::string Text(HWND w)
    {
        char buffer[128] = "";
        GetWindowTextA(w, buffer, sizeof buffer);
        return buffer;
    }
    std::string ClassOf(int id)
    {
        char name[64] = "";
        GetClassNameA(GetDlgItem(pane, id), name, sizeof name);
        return name;
    }
    RECT ChildRect(int id)
    {
        RECT r;
        GetWindowRect(GetDlgItem(pane, id), &r);
        MapWindowPoints(nullptr, pane, (LPPOINT)&r, 2);
        return r;
    }
    HWND pane = nullptr;
    HFONT font = nullptr;
};

TEST_F(DialogFill, TemplateWithFontMakesBoldFontScalesByItAndReturnsFirstTabStop)
{
    RECT size = {-1, -1, -1, -1};
    HWND first = Fill(kPaneFont, &size, &font);
    ASSERT_TRUE(font);
    EXPECT_EQ(GetDlgItem(pane, 202), first); // the edit field is the first tab stop
    EXPECT_EQ("Filled pane", Text(pane));

    LOGFONTA lf = {};
    ASSERT_TRUE(GetObjectA(font, sizeof lf, &lf));
    HDC dc = GetDC(pane);
    EXPECT_EQ(-(GetDeviceCaps(dc, LOGPIXELSY) * 8) / 72, lf.lfHeight);
    ReleaseDC(pane, dc);
    EXPECT_EQ(FW_BOLD, lf.lfWeight);

    DWORD units = GetBaseUnits(font);
    int bx = LOWORD(units), by = HIWORD(units);
    EXPECT_EQ(0, size.left);
    EXPECT_EQ(160 * bx / 4, size.right);
    EXPECT_EQ(80 * by / 8, size.bottom);
    RECT ok = ChildRect(203);
    EXPECT_EQ(48 * bx / 4, ok.left);
    EXPECT_EQ(20 * by / 8, ok.top);
    EXPECT_EQ(40 * bx / 4, ok.right - ok.left);
    EXPECT_EQ(14 * by / 8, ok.bottom - ok.top);

    for (int id : {201, 202, 203, 204})
        EXPECT_EQ((LRESULT)font, SendMessageA(GetDlgItem(pane, id), WM_GETFONT, 0, 0)) << id;
    EXPECT_STRCASEEQ("Static", ClassOf(201).c_str());
    EXPECT_STRCASEEQ("Edit", ClassOf(202).c_str());
    EXPECT_STRCASEEQ("Button", ClassOf(203).c_str());
    EXPECT_STREQ(HSTAT_CLASS, ClassOf(204).c_str());
    EXPECT_EQ("Status", Text(GetDlgItem(pane, 204))); // the specification's content
    EXPECT_TRUE(GetWindowLongA(GetDlgItem(pane, 201), GWL_STYLE) & WS_CHILD);
}

TEST_F(DialogFill, WindowSeesRedrawPairAroundInitDialogWithFirstTabStop)
{
    HWND first = Fill(kPaneFont, nullptr, &font);
    std::vector<PaneMsg> expected = {{WM_SETREDRAW, 0}, {WM_INITDIALOG, (WPARAM)first}, {WM_SETREDRAW, 1}};
    EXPECT_TRUE(expected == g_paneLog);
}

TEST_F(DialogFill, TemplateWithoutFontGivesNoFontAndScalesByDialogBaseUnits)
{
    font = (HFONT)(UINT_PTR)0x1234; // must be overwritten with 0
    RECT size;
    HWND first = Fill(kPanePlain, &size, &font);
    EXPECT_EQ(nullptr, font);
    EXPECT_EQ(GetDlgItem(pane, 211), first); // no tab stop: the first control
    EXPECT_EQ("before", Text(pane));         // an empty caption leaves the text alone
    DWORD units = GetDialogBaseUnits();
    EXPECT_EQ(100 * (int)LOWORD(units) / 4, size.right);
    EXPECT_EQ(40 * (int)HIWORD(units) / 8, size.bottom);
    RECT push = ChildRect(212);
    EXPECT_EQ(20 * (int)HIWORD(units) / 8, push.top);
    EXPECT_EQ(0, SendMessageA(GetDlgItem(pane, 211), WM_GETFONT, 0, 0));
}

TEST_F(DialogFill, NullFontOutSkipsTheTemplateFont)
{
    RECT size;
    Fill(kPaneFont, &size, nullptr);
    DWORD units = GetDialogBaseUnits();
    EXPECT_EQ(160 * (int)LOWORD(units) / 4, size.right);
    EXPECT_EQ(0, SendMessageA(GetDlgItem(pane, 204), WM_GETFONT, 0, 0));
}

TEST_F(DialogFill, TemplateWithoutItemsReturnsZeroYetSendsEverything)
{
    EXPECT_EQ(nullptr, Fill(kPaneEmpty, nullptr, &font));
    EXPECT_EQ("Empty", Text(pane));
    std::vector<PaneMsg> expected = {{WM_SETREDRAW, 0}, {WM_INITDIALOG, 0}, {WM_SETREDRAW, 1}};
    EXPECT_TRUE(expected == g_paneLog);
    EXPECT_EQ(nullptr, GetWindow(pane, GW_CHILD));
}

TEST_F(DialogFill, MissingTemplateChangesNothing)
{
    font = (HFONT)(UINT_PTR)0x1234;
    EXPECT_EQ(nullptr, Fill(999, nullptr, &font));
    EXPECT_EQ((HFONT)(UINT_PTR)0x1234, font);
    font = nullptr;
    EXPECT_TRUE(g_paneLog.empty());
    EXPECT_EQ("before", Text(pane));
}

TEST_F(DialogFill, ClearDialogDestroysEveryChild)
{
    Fill(kPaneFont, nullptr, &font);
    ASSERT_TRUE(GetWindow(pane, GW_CHILD));
    g_paneLog.clear();
    EXPECT_TRUE(ClearDialog(pane));
    EXPECT_EQ(nullptr, GetWindow(pane, GW_CHILD));
    std::vector<PaneMsg> expected = {{WM_SETREDRAW, 0}, {WM_SETREDRAW, 1}};
    EXPECT_TRUE(expected == g_paneLog);
    EXPECT_TRUE(IsWindow(pane));
}

// ---- dialog info ----

class DialogInfo : public ::testing::Test {
protected:
    TestParent window;
    HWND w() { return window.hwnd(); }
};

TEST_F(DialogInfo, CreateAllocatesZeroedBlockUnderPropertyL)
{
    BYTE* block = (BYTE*)CreateDlgInfo(w(), nullptr, 32);
    ASSERT_TRUE(block);
    EXPECT_EQ(0, block[0] | block[31]);
    EXPECT_EQ(block, GetDlgInfo(w()));
    EXPECT_EQ((HANDLE)block, GetPropA(w(), "L"));
    EXPECT_EQ(nullptr, FreeDlgInfo(w(), TRUE)); // freed: nothing to give back
    EXPECT_EQ(nullptr, GetDlgInfo(w()));
}

TEST_F(DialogInfo, SecondCreateReturnsZeroAndTheFirstStands)
{
    LPVOID first = CreateDlgInfo(w(), nullptr, 8);
    LPVOID mine = (LPVOID)GlobalAlloc(GPTR, 8);
    EXPECT_EQ(nullptr, CreateDlgInfo(w(), mine, 0));
    EXPECT_EQ(first, GetDlgInfo(w()));
    GlobalFree(mine);
    FreeDlgInfo(w(), TRUE);
}

TEST_F(DialogInfo, NullDataWithSizeZeroGivesZero)
{
    EXPECT_EQ(nullptr, CreateDlgInfo(w(), nullptr, 0));
    EXPECT_EQ(nullptr, GetDlgInfo(w()));
}

TEST_F(DialogInfo, FreeWithoutReleaseHandsTheBlockBackAndRemovesBothProperties)
{
    LPVOID mine = (LPVOID)GlobalAlloc(GPTR, 8);
    EXPECT_EQ(mine, CreateDlgInfo(w(), mine, 0));
    SetPropA(w(), "H", (HANDLE)1);
    EXPECT_EQ(mine, FreeDlgInfo(w(), FALSE));
    EXPECT_EQ(nullptr, GetPropA(w(), "L"));
    EXPECT_EQ(nullptr, GetPropA(w(), "H"));
    EXPECT_EQ(nullptr, GlobalFree(mine)); // still the caller's, and still valid
}

TEST_F(DialogInfo, FreeOnWindowWithoutBlockGivesZero)
{
    EXPECT_EQ(nullptr, FreeDlgInfo(w(), TRUE));
    EXPECT_EQ(nullptr, FreeDlgInfo(w(), FALSE));
}

} // namespace
