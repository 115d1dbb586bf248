// HStat through real windows: texts at run and design time, its messages, and
// pixels read back from a memory device context for each kind and frame; and
// HStat in a real dialog from a template (stat.rc).
#include "wintest.h"

#include <string.h>
#include <string>
#include <tuple>
#include <vector>

namespace {

constexpr COLORREF kPrefill = RGB(0, 255, 0); // what a painter leaves alone stays green
constexpr COLORREF kBlue = RGB(0, 0, 255), kRed = RGB(255, 0, 0), kWhite = RGB(255, 255, 255);
constexpr COLORREF kGrey = RGB(128, 128, 128), kBlack = 0;


// The creation style as the thin procedure left it in the creation structure.
DWORD g_createStyle;
LRESULT CALLBACK StatSpyProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = HStatWnd(hWnd, msg, wParam, lParam);
    if (msg == WM_NCCREATE)
        g_createStyle = ((const CREATESTRUCTA*)lParam)->style;
    return result;
}

class Stat : public ::testing::Test {
protected:
    HWND Make(const char* spec, DWORD style, int w = 60, int h = 30)
    {
        return parent.Child(HSTAT_CLASS, spec, style, 50, 10, 10, w, h);
    }
    static std::string Text(HWND ctl)
    {
        char buffer[64] = "";
        SendMessageA(ctl, WM_GETTEXT, sizeof buffer, (LPARAM)buffer);
        return buffer;
    }
    TestParent parent;
};

// At run time WM_SETTEXT keeps brackets and caret and leaves the colours and an
// image alone; at design time texts are specifications and empty shows the sample.
TEST_F(Stat, SetTextAtRunAndDesignTime)
{
    TestParent editor("DlgEditQuillTest");
    const struct { bool design; DWORD kind; const char* spec; const char* set; const char* text; UINT colourMsg; LRESULT colour; } kRows[] = {
        {false, HSK_TEXT, "[blue];;x", "[red]a^b", "[red]a^b", HSM_GETTEXTCOLOR, 0xff0000},
        {false, HSK_TEXT, "", nullptr, "", 0, 0}, // 0: no colour asked
        {false, HSK_IMAGE, "STATRED", "other", "", 0, 0},
        {true, HSK_GROUP, "", nullptr, "Text", 0, 0},
        {true, HSK_GROUP, "", "[blue];[red];X^Y", "X\nY", HSM_GETBKCOLOR, 0x0000ff},
    };
    for (const auto& r : kRows) {
        HWND ctl = r.design ? editor.Child(HSTAT_CLASS, r.spec, r.kind, 60) : Make(r.spec, r.kind);
        LRESULT image = SendMessageA(ctl, HSM_GETIMAGE, 0, 0);
        EXPECT_EQ(r.kind == HSK_IMAGE, image != 0) << r.spec;
        if (r.set)
            EXPECT_EQ(1, SendMessageA(ctl, WM_SETTEXT, 0, (LPARAM)r.set)) << r.set;
        EXPECT_EQ(r.text, Text(ctl)) << r.spec;
        if (r.colourMsg)
            EXPECT_EQ(r.colour, SendMessageA(ctl, r.colourMsg, 0, 0)) << r.spec;
        EXPECT_EQ(image, SendMessageA(ctl, HSM_GETIMAGE, 0, 0)) << r.spec;
        DestroyWindow(ctl);
    }
    HWND ctl = Make("x", HSK_TEXT);
    SendMessageA(ctl, WM_SETTEXT, 0, (LPARAM) "[red]a^b");
    EXPECT_EQ(0, SendMessageA(ctl, WM_SETTEXT, 0, 0));
    char small[4];
    EXPECT_EQ(3, SendMessageA(ctl, WM_GETTEXT, sizeof small, (LPARAM)small));
    EXPECT_STREQ("[re", small);
}

TEST_F(Stat, MessagesOfKindAlignmentHitTestAndStyle)
{
    HWND ctl = Make("x", HSK_TEXT | HSS_RIGHT | WS_TABSTOP);
    EXPECT_EQ(HTTRANSPARENT, SendMessageA(ctl, WM_NCHITTEST, 0, 0));
    EXPECT_EQ(DLGC_STATIC, SendMessageA(ctl, WM_GETDLGCODE, 0, 0));
    // The window loses WS_TABSTOP and 0x80; the record keeps 0x80 and its right alignment.
    LONG window = GetWindowLongA(ctl, GWL_STYLE);
    EXPECT_EQ(0, window & (WS_TABSTOP | HSS_RIGHT));
    WNDCLASSA spy = {0, StatSpyProc, 0, 4, GetModuleHandleA(nullptr), nullptr, nullptr, nullptr, nullptr, "QuillStatSpy"};
    RegisterClassA(&spy);
    g_createStyle = 0;
    ASSERT_TRUE(parent.Child("QuillStatSpy", "x", HSK_TEXT | HSS_RIGHT | WS_TABSTOP, 51));
    EXPECT_EQ((DWORD)(WS_CHILD | WS_VISIBLE | HSK_TEXT), g_createStyle) << "the creation structure loses them too";
    EXPECT_EQ((LRESULT)((window & 0xFFFF0000) | HSS_RIGHT), SendMessageA(ctl, HM_GETSTYLE, 0, 0));
    constexpr struct { WPARAM set; LRESULT get; } kAligns[] = {{7, 1}, {0, 0}, {2, 2}, {1, 1}};
    EXPECT_EQ(2, SendMessageA(ctl, HSM_GETALIGN, 0, 0));
    for (const auto& a : kAligns) {
        EXPECT_EQ(0, SendMessageA(ctl, HSM_SETALIGN, a.set, 0));
        EXPECT_EQ(a.get, SendMessageA(ctl, HSM_GETALIGN, 0, 0)) << a.set;
    }
    // The exported handler called by a host without a record, or without a creation structure.
    const struct { UINT msg; LRESULT result; BOOL notHandled; } kBare[] = {
        {WM_GETTEXTLENGTH, 0, TRUE}, {HSM_GETIMAGE, 0, TRUE}, {WM_NCCREATE, 0, FALSE},
    };
    for (const auto& b : kBare) {
        BOOL notHandled = FALSE;
        EXPECT_EQ(b.result, HStatMsgHandler(ctl, b.msg, 0, 0, &notHandled, nullptr)) << b.msg;
        EXPECT_EQ(b.notHandled, notHandled) << b.msg;
    }
    EXPECT_EQ(0, SendMessageA(ctl, HSM_SETKIND, 6, 1));
    EXPECT_EQ(1, SendMessageA(ctl, HSM_SETKIND, HSK_GROUP, 1));
    EXPECT_EQ(1, SendMessageA(ctl, HM_SETSTYLE, 0, WS_CHILD | HSS_SUNKEN | HSK_VLINE));
    EXPECT_EQ(HSK_GROUP, SendMessageA(ctl, HSM_GETKIND, 0, 0)); // the kind stays
    EXPECT_EQ((LONG)(WS_CHILD | HSS_SUNKEN | HSK_GROUP), GetWindowLongA(ctl, GWL_STYLE));
}

TEST_F(Stat, SetImageGivesBackAnUncachedHandleAndMissingImagesShowHelp)
{
    HWND ctl = Make("x", HSK_IMAGE);
    HBITMAP mine = CreateBitmap(4, 4, 1, 32, nullptr), next = CreateBitmap(4, 4, 1, 32, nullptr);
    SendMessageA(ctl, HSM_SETIMAGE, (WPARAM)mine, MAKELPARAM(0, HIMAGE_BITMAP));
    EXPECT_EQ((LRESULT)mine, SendMessageA(ctl, HSM_SETIMAGE, (WPARAM)next, 0)); // the caller deletes it
    SendMessageA(ctl, HSM_SETIMAGE, 0, 0);
    DeleteObject(mine);
    DeleteObject(next);
    HImage help = {};
    ASSERT_TRUE(HImageLoad(&help, GetModuleHandleA("QUILL32.dll"), "HLP1"));
    EXPECT_EQ((LRESULT)help.handle, SendMessageA(Make("NoSuchPicture", HSK_IMAGE), HSM_GETIMAGE, 0, 0));
    HImageFree(&help, FALSE);
}

TEST_F(Stat, TransparentControlMakesTheParentRepaintBehindIt)
{
    ShowWindow(parent.hwnd(), SW_SHOW);
    for (DWORD style : {HSS_TRANSPARENT, 0}) {
        HWND ctl = Make("x", HSK_TEXT | style);
        RECT r;
        for (int step = 0; step < 2; ++step) {
            UpdateWindow(parent.hwnd());
            ValidateRect(parent.hwnd(), nullptr);
            if (step == 0)
                SendMessageA(ctl, WM_SETFONT, (WPARAM)GetStockObject(ANSI_VAR_FONT), 0);
            else
                SendMessageA(ctl, WM_SETTEXT, 0, (LPARAM) "y");
            EXPECT_EQ(style != 0, !!GetUpdateRect(parent.hwnd(), &r, FALSE)) << style << " step " << step;
        }
        DestroyWindow(ctl);
    }
}

// ---- pixels ----

// Each kind and frame at the pixels that matter: frame edges ((0,0), (1,1) and
// the opposite corners; NULL_PEN's fill stops short of the right and bottom),
// the two-pixel lines (white over grey, swapped when sunken; a sunken frame
// with a border looks raised; the second pen closes the far end), and a 16 by
// 12 picture centred in a 40 by 40 client (columns 12 to 27, rows 14 to 25).
TEST_F(Stat, EachKindAndFrameDrawsItsEdgesAndFills)
{
    const COLORREF S = GetSysColor(COLOR_BTNSHADOW), Win = GetSysColor(COLOR_WINDOW), P = kPrefill, Bl = kBlue, W = kWhite,
                   G = kGrey, K = kBlack;
    const struct { const char* spec; DWORD style; int size; std::vector<std::tuple<int, int, COLORREF>> points; } kRows[] = {
        {"[black];[blue];", HSK_BLANK, 60, {{0, 0, Bl}, {1, 1, Bl}, {59, 29, P}, {58, 28, Bl}}},
        {"[black];[blue];", HSK_BLANK | WS_BORDER, 60, {{0, 0, K}, {1, 1, Bl}, {59, 29, K}, {58, 28, Bl}}},
        {"[black];[blue];", HSK_BLANK | HSS_SUNKEN, 60, {{0, 0, S}, {1, 1, Bl}, {59, 29, W}, {58, 28, Bl}}},
        {"[black];[blue];", HSK_BLANK | HSS_SUNKEN | WS_BORDER, 60, {{0, 0, W}, {1, 1, Bl}, {59, 29, S}, {58, 28, Bl}}},
        {"[black];[blue];", HSK_BLANK | HSS_RIDGE | HSS_SUNKEN, 60, {{0, 0, W}, {1, 1, S}, {59, 29, S}, {58, 28, W}}},
        {"[black];[blue];", HSK_BLANK | HSS_TRANSPARENT | WS_BORDER, 60, {{0, 0, K}, {1, 1, P}, {59, 29, K}, {58, 28, P}}},
        {"", HSK_BLANK, 60, {{5, 5, Win}}}, // background 0: the window colour
        {"", HSK_HLINE, 40, {{20, 0, W}, {20, 1, G}, {39, 0, G}, {0, 1, W}, {20, 2, P}}},
        {"", HSK_HLINE | HSS_SUNKEN, 40, {{20, 0, G}, {20, 1, W}, {39, 0, W}, {0, 1, G}, {20, 2, P}}},
        {"", HSK_HLINE | HSS_SUNKEN | WS_BORDER, 40, {{20, 0, W}, {20, 1, G}, {39, 0, G}, {0, 1, W}, {20, 2, P}}},
        {"", HSK_VLINE, 40, {{0, 20, W}, {1, 20, G}, {0, 39, G}, {1, 0, W}, {2, 20, P}}},
        {"", HSK_VLINE | HSS_SUNKEN, 40, {{0, 20, G}, {1, 20, W}, {0, 39, W}, {1, 0, G}, {2, 20, P}}},
        {"STATRED", HSK_IMAGE, 40, {{12, 14, kRed}, {27, 25, kRed}, {11, 14, Win}, {28, 26, Win}}},
    };
    for (const auto& r : kRows) {
        HWND ctl = Make(r.spec, r.style, r.size, r.size == 60 ? 30 : r.size);
        EraseCanvas c(ctl, kPrefill);
        EXPECT_EQ(r.size, c.rc.right) << "a border adds one pixel on each side to the client";
        for (const auto& p : r.points)
            EXPECT_EQ(std::get<2>(p), c.At(std::get<0>(p), std::get<1>(p)))
                << std::hex << r.style << std::dec << " at " << std::get<0>(p) << "," << std::get<1>(p);
        DestroyWindow(ctl);
    }
}

TEST_F(Stat, TextIsDrawnInItsColourWhereItIsAlignedAndEmbossed)
{
    EraseCanvas left(Make("[red];[blue];II", HSK_TEXT | HSS_LEFT, 120, 30), kPrefill);
    EXPECT_LT(left.Column(kRed, false), 10);
    EXPECT_EQ(-1, left.Column(kWhite, false));
    EraseCanvas right(Make("[red];[blue];II", HSK_TEXT | HSS_RIGHT, 120, 30), kPrefill);
    EXPECT_GT(right.Column(kRed, true), 110);
    EraseCanvas emboss(Make("[red];[blue];II", HSK_TEXT | HSS_LEFT | HSS_EMBOSS, 120, 30), kPrefill);
    EXPECT_EQ(emboss.Column(kRed, true) + 1, emboss.Column(kWhite, true));
    // The painter ends with the white brush and the black pen, and leaves its font selected.
    HGDIOBJ font = GetStockObject(ANSI_VAR_FONT);
    HWND fonted = Make("[red];[blue];II", HSK_TEXT, 120, 30);
    SendMessageA(fonted, WM_SETFONT, (WPARAM)font, 0);
    EraseCanvas ends(fonted, kPrefill);
    EXPECT_EQ(font, ends.Current(OBJ_FONT));
    EXPECT_EQ(GetStockObject(WHITE_BRUSH), ends.Current(OBJ_BRUSH));
    EXPECT_EQ(GetStockObject(BLACK_PEN), ends.Current(OBJ_PEN));
}

TEST_F(Stat, GroupLabelBoxIsInsetByItsFrame)
{
    // Transparent: only the label's box is filled, so its corner shows where it starts.
    const struct { DWORD frame; int inset; } kInsets[] = {{0, 0}, {HSS_SUNKEN, 1}, {WS_BORDER, 1}, {HSS_RIDGE, 2}};
    for (const auto& g : kInsets) {
        EraseCanvas c(Make("[red];[blue];Label", HSK_GROUP | HSS_TRANSPARENT | HSS_LEFT | g.frame, 100, 50), kPrefill);
        EXPECT_EQ(kBlue, c.At(g.inset, g.inset)) << std::hex << g.frame;
        if (g.inset)
            EXPECT_NE(kBlue, c.At(g.inset - 1, g.inset - 1)) << std::hex << g.frame;
        EXPECT_EQ(kPrefill, c.At(50, 45));
        EXPECT_GE(c.Column(kRed, false), g.inset + 6) << "the label is indented by 6";
    }
}

TEST_F(Stat, TheSiblingClipSparesOverlaps)
{
    ShowWindow(parent.hwnd(), SW_SHOW); // the clip skips siblings that are not visible
    HWND ctl = Make("[black];[blue];", HSK_BLANK | WS_CLIPSIBLINGS);
    ASSERT_TRUE(parent.Child("STATIC", "", 0, 52, 10, 10, 10, 10)); // over its top left
    EraseCanvas c(ctl, kPrefill);
    EXPECT_EQ(kPrefill, c.At(5, 5));
    EXPECT_EQ(kBlue, c.At(30, 20));
}

INT_PTR CALLBACK QuietDialog(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

TEST_F(Stat, DialogTemplateCreatesControlsFromTheirSpecifications)
{
    HWND dlg = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(230), parent.hwnd(), QuietDialog, 0);
    ASSERT_TRUE(dlg);
    EXPECT_EQ("One\nTwo", Text(GetDlgItem(dlg, 231)));
    EXPECT_EQ(0x0000ff, SendDlgItemMessageA(dlg, 231, HSM_GETTEXTCOLOR, 0, 0));
    EXPECT_EQ(0x00ffff, SendDlgItemMessageA(dlg, 231, HSM_GETBKCOLOR, 0, 0));
    EXPECT_EQ("Frame", Text(GetDlgItem(dlg, 232)));
    EXPECT_EQ(0x008000, SendDlgItemMessageA(dlg, 232, HSM_GETTEXTCOLOR, 0, 0));
    EXPECT_EQ(HSK_HLINE, SendDlgItemMessageA(dlg, 234, HSM_GETKIND, 0, 0));
    EXPECT_EQ(2, SendDlgItemMessageA(dlg, 235, HSM_GETALIGN, 0, 0));
    // The focus passes over a static at once, whose window lost WS_TABSTOP.
    SetFocus(GetDlgItem(dlg, 235));
    EXPECT_EQ(GetDlgItem(dlg, 236), GetFocus());
    EXPECT_EQ(GetDlgItem(dlg, 236), GetNextDlgTabItem(dlg, GetDlgItem(dlg, 236), FALSE));
    DestroyWindow(dlg);
}

} // namespace
