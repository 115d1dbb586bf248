// Filling a plain window from templates of this program (stat.rc): fonts,
// scaling, ordinal and library classes, the messages a dialog box would get,
// ClearDialog, and the dialog-info property.
#include "wintest.h"

#include <string>
#include <vector>

namespace {

// What the filled window saw: WM_SETREDRAW and WM_INITDIALOG with their wParam.
std::vector<std::pair<UINT, WPARAM>> g_seen;

LRESULT CALLBACK PaneProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_SETREDRAW || msg == WM_INITDIALOG)
        g_seen.push_back({msg, wParam});
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
        g_seen.clear();
    }
    void TearDown() override
    {
        DestroyWindow(pane);
        DeleteObject(font);
    }
    HWND Fill(int id, LPRECT rect, HFONT* out)
    {
        return CreateDialogInWin(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), pane, rect, out);
    }
    std::string Text(HWND w)
    {
        char buffer[128] = "";
        return GetWindowTextA(w, buffer, sizeof buffer) ? buffer : "";
    }
    HWND pane = nullptr;
    HFONT font = nullptr;
};

TEST_F(DialogFill, TemplateWithFontMakesItBoldScalesByItAndReturnsFirstTabStop)
{
    RECT size;
    HWND first = Fill(200, &size, &font);
    ASSERT_TRUE(font);
    EXPECT_EQ(GetDlgItem(pane, 202), first); // the edit field is the first tab stop
    EXPECT_EQ("Filled pane", Text(pane));
    LOGFONTA lf = {};
    GetObjectA(font, sizeof lf, &lf);
    HDC dc = GetDC(pane);
    EXPECT_EQ(-(GetDeviceCaps(dc, LOGPIXELSY) * 8) / 72, lf.lfHeight);
    ReleaseDC(pane, dc);
    EXPECT_EQ(FW_BOLD, lf.lfWeight);

    DWORD units = GetBaseUnits(font);
    int bx = LOWORD(units), by = HIWORD(units);
    EXPECT_EQ(160 * bx / 4, size.right);
    EXPECT_EQ(80 * by / 8, size.bottom);
    RECT ok;
    GetWindowRect(GetDlgItem(pane, 203), &ok);
    MapWindowPoints(nullptr, pane, (LPPOINT)&ok, 2);
    EXPECT_EQ((std::vector<LONG>{48 * bx / 4, 20 * by / 8, 40 * bx / 4}), (std::vector<LONG>{ok.left, ok.top, ok.right - ok.left}));

    const struct { int id; const char* cls; } kItems[] = {{201, "Static"}, {202, "Edit"}, {203, "Button"}, {204, "HStat"}};
    for (const auto& item : kItems) {
        char name[32] = "";
        GetClassNameA(GetDlgItem(pane, item.id), name, sizeof name);
        EXPECT_STRCASEEQ(item.cls, name);
        EXPECT_EQ((LRESULT)font, SendDlgItemMessageA(pane, item.id, WM_GETFONT, 0, 0)) << item.id;
    }
    EXPECT_EQ("Status", Text(GetDlgItem(pane, 204))); // read as an HStat specification
    EXPECT_EQ((std::vector<std::pair<UINT, WPARAM>>{{WM_SETREDRAW, 0}, {WM_INITDIALOG, (WPARAM)first}, {WM_SETREDRAW, 1}}),
              g_seen);
}

TEST_F(DialogFill, WithoutTemplateFontOrFontOutScalesByDialogBaseUnits)
{
    DWORD units = GetDialogBaseUnits();
    font = (HFONT)(UINT_PTR)0x1234;
    RECT size;
    EXPECT_EQ(GetDlgItem(pane, 211), Fill(210, &size, &font)); // no tab stop: the first control
    EXPECT_EQ(nullptr, font);
    EXPECT_EQ("before", Text(pane)); // an empty caption leaves the text alone
    EXPECT_EQ(40 * (int)HIWORD(units) / 8, size.bottom);
    EXPECT_EQ(0, SendDlgItemMessageA(pane, 211, WM_GETFONT, 0, 0));
    ClearDialog(pane);

    Fill(200, &size, nullptr); // the template's font is not made
    EXPECT_EQ(160 * (int)LOWORD(units) / 4, size.right);
    EXPECT_EQ(0, SendDlgItemMessageA(pane, 204, WM_GETFONT, 0, 0));
}

// An empty template returns zero yet sends everything, a missing one nothing;
// ClearDialog destroys every child between two WM_SETREDRAW.
TEST_F(DialogFill, EmptyOrMissingTemplatesAndClearDialogSendTheirMessages)
{
    using Log = std::vector<std::pair<UINT, WPARAM>>;
    EXPECT_EQ(nullptr, Fill(999, nullptr, &font));
    EXPECT_EQ(Log(), g_seen);
    EXPECT_EQ(nullptr, Fill(220, nullptr, &font));
    EXPECT_EQ("Empty", Text(pane));
    EXPECT_EQ((Log{{WM_SETREDRAW, 0}, {WM_INITDIALOG, 0}, {WM_SETREDRAW, 1}}), g_seen);
    Fill(200, nullptr, &font);
    g_seen.clear();
    EXPECT_TRUE(ClearDialog(pane));
    EXPECT_EQ(nullptr, GetWindow(pane, GW_CHILD));
    EXPECT_EQ((Log{{WM_SETREDRAW, 0}, {WM_SETREDRAW, 1}}), g_seen);
}

TEST(DialogInfo, OneBlockPerWindowUnderPropertyL)
{
    TestParent window;
    HWND w = window.hwnd();
    EXPECT_EQ(nullptr, CreateDlgInfo(w, nullptr, 0));
    EXPECT_EQ(nullptr, FreeDlgInfo(w, TRUE)); // none there
    BYTE* block = (BYTE*)CreateDlgInfo(w, nullptr, 32);
    ASSERT_TRUE(block);
    EXPECT_EQ(0, block[0] | block[31]);
    EXPECT_EQ((HANDLE)block, GetPropA(w, "L"));
    LPVOID mine = (LPVOID)GlobalAlloc(GPTR, 8);
    EXPECT_EQ(nullptr, CreateDlgInfo(w, mine, 0)); // the first one stands
    EXPECT_EQ(block, GetDlgInfo(w));
    EXPECT_EQ(nullptr, FreeDlgInfo(w, TRUE));      // freed: nothing to give back

    EXPECT_EQ(mine, CreateDlgInfo(w, mine, 0));
    SetPropA(w, "H", (HANDLE)1);
    EXPECT_EQ(mine, FreeDlgInfo(w, FALSE));        // the caller owns it again
    EXPECT_EQ(nullptr, GetPropA(w, "L"));
    EXPECT_EQ(nullptr, GetPropA(w, "H"));
    EXPECT_EQ(nullptr, GlobalFree(mine));
}

} // namespace
