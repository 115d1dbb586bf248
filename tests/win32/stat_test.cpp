// HStat through real windows: the specification text, run-time and design-time
// texts, the messages, and pixels read back from a memory device context for
// each kind and frame; HStat in a real dialog from a template (stat.rc).
#include "wintest.h"

#include <string.h>
#include <string>

namespace {

constexpr int kW = 60, kH = 30;
constexpr COLORREF kPrefill = RGB(0, 255, 0);  // what a painter leaves alone stays green
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = 0;
constexpr COLORREF kGrey = RGB(128, 128, 128);

HINSTANCE Library() { return GetModuleHandleA("QUILL32.dll"); }

// The control's erase painting, into a memory bitmap of its client size.
class Canvas {
public:
    explicit Canvas(HWND ctl) : ctl_(ctl)
    {
        GetClientRect(ctl, &rc_);
        HDC screen = GetDC(nullptr);
        dc_ = CreateCompatibleDC(screen);
        bmp_ = CreateCompatibleBitmap(screen, rc_.right, rc_.bottom);
        ReleaseDC(nullptr, screen);
        old_ = SelectObject(dc_, bmp_);
        HBRUSH fill = CreateSolidBrush(kPrefill);
        FillRect(dc_, &rc_, fill);
        DeleteObject(fill);
        EXPECT_EQ(1, SendMessageA(ctl, WM_ERASEBKGND, (WPARAM)dc_, 0));
    }
    ~Canvas()
    {
        SelectObject(dc_, old_);
        DeleteObject(bmp_);
        DeleteDC(dc_);
    }
    COLORREF At(int x, int y) const { return GetPixel(dc_, x, y); }
    int Right() const { return rc_.right - 1; }
    int Bottom() const { return rc_.bottom - 1; }
    // Leftmost and rightmost column holding a pixel of the colour, -1 if none.
    int FirstColumnOf(COLORREF c) const
    {
        for (int x = 0; x < rc_.right; ++x)
            for (int y = 0; y < rc_.bottom; ++y)
                if (At(x, y) == c) return x;
        return -1;
    }
    int LastColumnOf(COLORREF c) const
    {
        for (int x = rc_.right - 1; x >= 0; --x)
            for (int y = 0; y < rc_.bottom; ++y)
                if (At(x, y) == c) return x;
        return -1;
    }

private:
    HWND ctl_;
    RECT rc_;
    HDC dc_;
    HBITMAP bmp_;
    HGDIOBJ old_;
};

class Stat : public ::testing::Test {
protected:
    HWND Make(const char* spec, DWORD style, int w = kW, int h = kH)
    {
        HWND ctl = parent.Child(HSTAT_CLASS, spec, style, 50, 10, 10, w, h);
        EXPECT_TRUE(ctl);
        return ctl;
    }
    std::string Text(HWND ctl)
    {
        char buffer[256] = "";
        SendMessageA(ctl, WM_GETTEXT, sizeof buffer, (LPARAM)buffer);
        return buffer;
    }
    TestParent parent;
};

// ---- the specification text ----

struct SpecCase {
    const char* spec;
    DWORD kind;
    const char* text;
    COLORREF colorText, colorBack;
};

const SpecCase kSpecCases[] = {
    {"Hello", HSK_TEXT, "Hello", 0, 0},
    {"[red];[yellow];One^Two", HSK_TEXT, "One\nTwo", 0x0000ff, 0x00ffff},
    {"[blue];;Status", HSK_TEXT, "Status", 0xff0000, 0},
    {";[10,20,30];x", HSK_TEXT, "x", 0, 0x1e140a},
    {"a;b", HSK_GROUP, "b", 0, 0},
    {"a;b;c;d", HSK_GROUP, "c;d", 0, 0},
    {"", HSK_TEXT, "", 0, 0},
    {"[red];[white];ignored", HSK_BLANK, "", 0x0000ff, 0xffffff},
    {"[red];[white];ignored", HSK_HLINE, "", 0x0000ff, 0xffffff},
};

TEST_F(Stat, CreationTextIsReadAsSpecificationByKind)
{
    for (const SpecCase& c : kSpecCases) {
        HWND ctl = Make(c.spec, c.kind);
        EXPECT_EQ(c.text, Text(ctl)) << c.spec;
        EXPECT_EQ((LRESULT)strlen(c.text), SendMessageA(ctl, WM_GETTEXTLENGTH, 0, 0)) << c.spec;
        EXPECT_EQ((LRESULT)c.colorText, SendMessageA(ctl, HSM_GETTEXTCOLOR, 0, 0)) << c.spec;
        EXPECT_EQ((LRESULT)c.colorBack, SendMessageA(ctl, HSM_GETBKCOLOR, 0, 0)) << c.spec;
        DestroyWindow(ctl);
    }
}

TEST_F(Stat, RunTimeSetTextKeepsBracketsAndCaretLiterally)
{
    HWND ctl = Make("[blue];;x", HSK_TEXT);
    EXPECT_EQ(1, SendMessageA(ctl, WM_SETTEXT, 0, (LPARAM) "[red]a^b"));
    EXPECT_EQ("[red]a^b", Text(ctl));
    EXPECT_EQ(0xff0000, SendMessageA(ctl, HSM_GETTEXTCOLOR, 0, 0));
    EXPECT_EQ(0, SendMessageA(ctl, WM_SETTEXT, 0, 0));
    EXPECT_EQ("[red]a^b", Text(ctl));
}

TEST_F(Stat, RunTimeSetTextOnImageKindChangesNothingAndGivesOne)
{
    HWND ctl = Make("STATRED", HSK_IMAGE);
    LRESULT image = SendMessageA(ctl, HSM_GETIMAGE, 0, 0);
    EXPECT_NE(0, image);
    EXPECT_EQ(1, SendMessageA(ctl, WM_SETTEXT, 0, (LPARAM) "other"));
    EXPECT_EQ(image, SendMessageA(ctl, HSM_GETIMAGE, 0, 0));
    EXPECT_EQ("", Text(ctl));
}

TEST_F(Stat, GetTextCopiesWithinTheBufferAndEmptyWithoutText)
{
    HWND ctl = Make("abcdef", HSK_TEXT);
    char buffer[4] = "###";
    EXPECT_EQ(3, SendMessageA(ctl, WM_GETTEXT, sizeof buffer, (LPARAM)buffer));
    EXPECT_STREQ("abc", buffer);
    HWND blank = Make("x", HSK_BLANK);
    strcpy(buffer, "##");
    EXPECT_EQ(0, SendMessageA(blank, WM_GETTEXT, sizeof buffer, (LPARAM)buffer));
    EXPECT_STREQ("", buffer);
}

// ---- design time ----

class StatDesign : public ::testing::Test {
protected:
    StatDesign() : editor("DlgEditQuillTest") {}
    HWND Make(const char* spec, DWORD kind)
    {
        return editor.Child(HSTAT_CLASS, spec, kind, 60);
    }
    TestParent editor; // a top-level window whose class names a dialog editor
};

TEST_F(StatDesign, EmptySpecificationShowsTheSample)
{
    HWND ctl = Make("", HSK_TEXT);
    ASSERT_EQ(HCTL_DESIGN_DLGEDIT, HCtlDesignMode(ctl));
    char buffer[16];
    SendMessageA(ctl, WM_GETTEXT, sizeof buffer, (LPARAM)buffer);
    EXPECT_STREQ("Text", buffer);
}

TEST_F(StatDesign, SetTextIsReadAsSpecification)
{
    HWND ctl = Make("", HSK_GROUP);
    EXPECT_EQ(1, SendMessageA(ctl, WM_SETTEXT, 0, (LPARAM) "[blue];[red];X^Y"));
    char buffer[16];
    SendMessageA(ctl, WM_GETTEXT, sizeof buffer, (LPARAM)buffer);
    EXPECT_STREQ("X\nY", buffer);
    EXPECT_EQ(0xff0000, SendMessageA(ctl, HSM_GETTEXTCOLOR, 0, 0));
    EXPECT_EQ(0x0000ff, SendMessageA(ctl, HSM_GETBKCOLOR, 0, 0));
}

// ---- messages ----

TEST_F(Stat, HitTestIsTransparentAndDialogCodeStatic)
{
    HWND ctl = Make("x", HSK_TEXT);
    EXPECT_EQ(HTTRANSPARENT, SendMessageA(ctl, WM_NCHITTEST, 0, MAKELPARAM(15, 15)));
    EXPECT_EQ(DLGC_STATIC, SendMessageA(ctl, WM_GETDLGCODE, 0, 0));
    EXPECT_EQ(1, SendMessageA(ctl, WM_NCPAINT, 1, 0));
}

TEST_F(Stat, KindIsSetUpToFiveOnly)
{
    HWND ctl = Make("x", HSK_TEXT);
    EXPECT_EQ(0, SendMessageA(ctl, HSM_SETKIND, 6, 1));
    EXPECT_EQ(HSK_TEXT, SendMessageA(ctl, HSM_GETKIND, 0, 0));
    EXPECT_EQ(1, SendMessageA(ctl, HSM_SETKIND, HSK_VLINE, 1));
    EXPECT_EQ(HSK_VLINE, SendMessageA(ctl, HSM_GETKIND, 0, 0));
}

TEST_F(Stat, AlignmentReadsZeroOneTwo)
{
    HWND ctl = Make("x", HSK_TEXT);
    EXPECT_EQ(1, SendMessageA(ctl, HSM_GETALIGN, 0, 0));
    constexpr struct { WPARAM set; LRESULT get; } kAligns[] = {{0, 0}, {2, 2}, {1, 1}, {7, 1}, {0, 0}};
    for (const auto& a : kAligns) {
        EXPECT_EQ(0, SendMessageA(ctl, HSM_SETALIGN, a.set, 0));
        EXPECT_EQ(a.get, SendMessageA(ctl, HSM_GETALIGN, 0, 0)) << a.set;
    }
}

TEST_F(Stat, ColoursAreStoredAsGiven)
{
    HWND ctl = Make("x", HSK_TEXT);
    EXPECT_EQ(0, SendMessageA(ctl, HSM_SETBKCOLOR, 0, 0x123456));
    EXPECT_EQ(0, SendMessageA(ctl, HSM_SETTEXTCOLOR, 1, 0x654321));
    EXPECT_EQ(0x123456, SendMessageA(ctl, HSM_GETBKCOLOR, 0, 0));
    EXPECT_EQ(0x654321, SendMessageA(ctl, HSM_GETTEXTCOLOR, 0, 0));
}

TEST_F(Stat, TabStopAndBit80LeaveTheWindowButNotTheRecord)
{
    HWND ctl = Make("x", HSK_TEXT | HSS_RIGHT | WS_TABSTOP);
    LONG window = GetWindowLongA(ctl, GWL_STYLE);
    EXPECT_EQ(0, window & (WS_TABSTOP | HSS_RIGHT));
    EXPECT_EQ(2, SendMessageA(ctl, HSM_GETALIGN, 0, 0)); // still right-aligned
    DWORD style = (DWORD)SendMessageA(ctl, HM_GETSTYLE, 0, 0);
    EXPECT_EQ((DWORD)HSS_RIGHT, style & 0xFFFF);
    EXPECT_EQ((DWORD)window & 0xFFFF0000, style & 0xFFFF0000);
}

TEST_F(Stat, SetStyleKeepsTheKindAndWritesTheWindow)
{
    HWND ctl = Make("x", HSK_GROUP);
    EXPECT_EQ(1, SendMessageA(ctl, HM_SETSTYLE, 0, WS_CHILD | WS_VISIBLE | HSS_SUNKEN | HSK_VLINE));
    EXPECT_EQ(HSK_GROUP, SendMessageA(ctl, HSM_GETKIND, 0, 0));
    EXPECT_EQ((LONG)(WS_CHILD | WS_VISIBLE | HSS_SUNKEN | HSK_GROUP), GetWindowLongA(ctl, GWL_STYLE));
}

TEST_F(Stat, SetFontStoresAndReturnsTheOldOne)
{
    HWND ctl = Make("x", HSK_TEXT);
    HFONT f = (HFONT)GetStockObject(ANSI_VAR_FONT);
    EXPECT_EQ(0, SendMessageA(ctl, WM_SETFONT, (WPARAM)f, 0));
    EXPECT_EQ((LRESULT)f, SendMessageA(ctl, WM_GETFONT, 0, 0));
    EXPECT_EQ((LRESULT)f, SendMessageA(ctl, WM_SETFONT, 0, 0));
}

TEST_F(Stat, TransparentControlMakesTheParentRepaintBehindIt)
{
    ShowWindow(parent.hwnd(), SW_SHOW);
    struct { DWORD style; bool parentRepaints; } kCases[] = {{HSS_TRANSPARENT, true}, {0, false}};
    for (const auto& c : kCases) {
        HWND ctl = Make("x", HSK_TEXT | c.style);
        UpdateWindow(parent.hwnd());
        ValidateRect(parent.hwnd(), nullptr);
        RECT r;
        SendMessageA(ctl, WM_SETFONT, (WPARAM)GetStockObject(ANSI_VAR_FONT), 0);
        EXPECT_EQ(c.parentRepaints, !!GetUpdateRect(parent.hwnd(), &r, FALSE)) << "font, style " << c.style;
        UpdateWindow(parent.hwnd());
        ValidateRect(parent.hwnd(), nullptr);
        SendMessageA(ctl, WM_SETTEXT, 0, (LPARAM) "y");
        EXPECT_EQ(c.parentRepaints, !!GetUpdateRect(parent.hwnd(), &r, FALSE)) << "text, style " << c.style;
        EXPECT_TRUE(IsWindowVisible(ctl));
        DestroyWindow(ctl);
    }
}

TEST_F(Stat, SetImageGivesBackAnUncachedHandleForTheCallerToDelete)
{
    HWND ctl = Make("x", HSK_IMAGE);
    HBITMAP mine = CreateBitmap(4, 4, 1, 32, nullptr);
    SendMessageA(ctl, HSM_SETIMAGE, (WPARAM)mine, MAKELPARAM(0, HIMAGE_BITMAP));
    EXPECT_EQ((LRESULT)mine, SendMessageA(ctl, HSM_GETIMAGE, 0, 0));
    HBITMAP next = CreateBitmap(4, 4, 1, 32, nullptr);
    EXPECT_EQ((LRESULT)mine, SendMessageA(ctl, HSM_SETIMAGE, (WPARAM)next, 0)); // not in the cache
    DeleteObject(mine);
    SendMessageA(ctl, HSM_SETIMAGE, 0, 0);
    DeleteObject(next);
}

TEST_F(Stat, MissingImageShowsTheLibrarysHelpPicture)
{
    HImage help = {};
    HImageLoad(&help, Library(), "HLP1");
    HWND ctl = Make("NoSuchPicture", HSK_IMAGE);
    EXPECT_EQ((LRESULT)help.handle, SendMessageA(ctl, HSM_GETIMAGE, 0, 0));
    DestroyWindow(ctl);
    if (help.handle)
        HImageFree(&help, FALSE);
}

// ---- pixels ----

COLORREF Shadow() { return GetSysColor(COLOR_BTNSHADOW); }
COLORREF Window() { return GetSysColor(COLOR_WINDOW); }

struct FramePixels {
    DWORD style;
    COLORREF topLeft, inner, bottomRight, innerBottomRight; // at (0,0), (1,1), (R,B), (R-1,B-1)
};

TEST_F(Stat, EachFrameDrawsItsEdges)
{
    const FramePixels kFrames[] = {
        {0, kBlue, kBlue, kPrefill, kBlue},                       // NULL_PEN: fill stops short of R, B
        {WS_BORDER, kBlack, kBlue, kBlack, kBlue},
        {HSS_SUNKEN, Shadow(), kBlue, kWhite, kBlue},
        {HSS_SUNKEN | WS_BORDER, kWhite, kBlue, Shadow(), kBlue}, // looks raised
        {HSS_RIDGE, kWhite, Shadow(), Shadow(), kWhite},
        {HSS_RIDGE | HSS_SUNKEN, kWhite, Shadow(), Shadow(), kWhite},
    };
    for (const FramePixels& f : kFrames) {
        HWND ctl = Make("[black];[blue];", HSK_BLANK | f.style);
        Canvas c(ctl);
        EXPECT_EQ(f.topLeft, c.At(0, 0)) << std::hex << f.style;
        EXPECT_EQ(f.inner, c.At(1, 1)) << std::hex << f.style;
        EXPECT_EQ(f.bottomRight, c.At(c.Right(), c.Bottom())) << std::hex << f.style;
        EXPECT_EQ(f.innerBottomRight, c.At(c.Right() - 1, c.Bottom() - 1)) << std::hex << f.style;
        EXPECT_EQ(kBlue, c.At(c.Right() / 2, c.Bottom() / 2)) << std::hex << f.style;
        DestroyWindow(ctl);
    }
}

TEST_F(Stat, BorderMakesTheClientAsLargeAsTheWindow)
{
    HWND ctl = Make("", HSK_BLANK | WS_BORDER);
    RECT rc;
    GetClientRect(ctl, &rc);
    EXPECT_EQ(kW, rc.right);
    EXPECT_EQ(kH, rc.bottom);
}

TEST_F(Stat, BackgroundZeroIsTheWindowColour)
{
    HWND ctl = Make("", HSK_BLANK);
    Canvas c(ctl);
    EXPECT_EQ(Window(), c.At(5, 5));
}

TEST_F(Stat, TransparentLeavesTheBackgroundAlone)
{
    HWND ctl = Make("[black];[blue];", HSK_BLANK | HSS_TRANSPARENT | WS_BORDER);
    Canvas c(ctl);
    EXPECT_EQ(kBlack, c.At(0, 0));
    EXPECT_EQ(kPrefill, c.At(c.Right() / 2, c.Bottom() / 2));
}

struct LinePixels {
    DWORD kind, style;
    COLORREF first, second; // colours of the first and second pen
};

TEST_F(Stat, LinesAreTwoPixelsWhiteAndGreyOrSwappedWhenSunken)
{
    const LinePixels kLines[] = {
        {HSK_HLINE, 0, kWhite, kGrey},
        {HSK_HLINE, HSS_SUNKEN, kGrey, kWhite},
        {HSK_HLINE, HSS_SUNKEN | WS_BORDER, kWhite, kGrey}, // a sunken line with a border looks raised
        {HSK_VLINE, 0, kWhite, kGrey},
        {HSK_VLINE, HSS_SUNKEN, kGrey, kWhite},
    };
    for (const LinePixels& l : kLines) {
        HWND ctl = Make("", l.kind | l.style, 40, 40);
        Canvas c(ctl);
        int R = c.Right(), B = c.Bottom();
        if (l.kind == HSK_HLINE) {
            EXPECT_EQ(l.first, c.At(R / 2, 0)) << l.style;
            EXPECT_EQ(l.second, c.At(R / 2, 1)) << l.style;
            EXPECT_EQ(l.second, c.At(R, 0)) << l.style;
            EXPECT_EQ(l.first, c.At(0, 1)) << l.style;
            EXPECT_EQ(kPrefill, c.At(R / 2, 2)) << l.style;
        } else {
            EXPECT_EQ(l.first, c.At(0, B / 2)) << l.style;
            EXPECT_EQ(l.second, c.At(1, B / 2)) << l.style;
            EXPECT_EQ(l.second, c.At(0, B)) << l.style;
            EXPECT_EQ(l.first, c.At(1, 0)) << l.style;
            EXPECT_EQ(kPrefill, c.At(2, B / 2)) << l.style;
        }
        DestroyWindow(ctl);
    }
}

TEST_F(Stat, TextIsDrawnInItsColourWhereItIsAligned)
{
    struct { DWORD style; bool left; } kCases[] = {{HSS_LEFT, true}, {HSS_RIGHT, false}};
    for (const auto& a : kCases) {
        HWND ctl = Make("[red];[blue];II", HSK_TEXT | a.style, 120, 30);
        Canvas c(ctl);
        int first = c.FirstColumnOf(kRed), last = c.LastColumnOf(kRed);
        ASSERT_GE(first, 0) << a.style;
        if (a.left)
            EXPECT_LT(first, 10);
        else
            EXPECT_GT(last, c.Right() - 10);
        EXPECT_EQ(-1, c.FirstColumnOf(kWhite)) << "no emboss asked";
        DestroyWindow(ctl);
    }
}

TEST_F(Stat, EmbossAddsAWhiteCopyOnePixelRightAndDown)
{
    HWND ctl = Make("[red];[blue];II", HSK_TEXT | HSS_EMBOSS | HSS_LEFT, 120, 30);
    Canvas c(ctl);
    EXPECT_EQ(c.FirstColumnOf(kRed) + 1, c.LastColumnOf(kWhite) - (c.LastColumnOf(kRed) - c.FirstColumnOf(kRed)));
}

struct GroupInset {
    DWORD frame;
    int inset; // where the label's box begins
};

TEST_F(Stat, GroupLabelBoxIsInsetByItsFrame)
{
    // Transparent: only the label's box is filled, so its corner shows where it starts.
    const GroupInset kInsets[] = {{0, 0}, {HSS_SUNKEN, 1}, {WS_BORDER, 1}, {HSS_RIDGE, 2}};
    for (const GroupInset& g : kInsets) {
        HWND ctl = Make("[red];[blue];Label", HSK_GROUP | HSS_TRANSPARENT | HSS_LEFT | g.frame, 100, 50);
        Canvas c(ctl);
        EXPECT_EQ(kBlue, c.At(g.inset, g.inset)) << std::hex << g.frame;
        if (g.inset)
            EXPECT_NE(kBlue, c.At(g.inset - 1, g.inset - 1)) << std::hex << g.frame;
        EXPECT_EQ(kPrefill, c.At(50, 45)) << "below the label nothing is filled";
        EXPECT_GE(c.FirstColumnOf(kRed), g.inset + 6) << "the label is indented by 6";
        DestroyWindow(ctl);
    }
}

TEST_F(Stat, ImageIsCentredAndDrawn)
{
    HWND ctl = Make("STATRED", HSK_IMAGE, 40, 40);
    ASSERT_NE(0, SendMessageA(ctl, HSM_GETIMAGE, 0, 0));
    Canvas c(ctl);
    // A 16 by 12 picture in a 40 by 40 client: columns 12 to 27, rows 14 to 25.
    EXPECT_EQ(kRed, c.At(12, 14));
    EXPECT_EQ(kRed, c.At(27, 25));
    EXPECT_NE(kRed, c.At(11, 14));
    EXPECT_NE(kRed, c.At(28, 25));
}

TEST_F(Stat, SiblingClipKeepsOverlappingSiblingsUnpainted)
{
    ShowWindow(parent.hwnd(), SW_SHOW); // the clip skips siblings that are not visible
    HWND ctl = Make("[black];[blue];", HSK_BLANK | WS_CLIPSIBLINGS);
    HWND sibling = parent.Child("STATIC", "", 0, 52, 10, 10, 10, 10); // over the control's top left
    ASSERT_TRUE(sibling);
    Canvas c(ctl);
    EXPECT_EQ(kPrefill, c.At(5, 5));
    EXPECT_EQ(kBlue, c.At(30, 20));
}

// ---- in a real dialog ----

INT_PTR CALLBACK QuietDialog(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

TEST_F(Stat, DialogTemplateCreatesControlsFromTheirSpecifications)
{
    HWND dlg = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(230), parent.hwnd(), QuietDialog, 0);
    ASSERT_TRUE(dlg);
    char buffer[64];
    GetDlgItemTextA(dlg, 231, buffer, sizeof buffer);
    EXPECT_STREQ("One\nTwo", buffer);
    EXPECT_EQ(0x0000ff, SendDlgItemMessageA(dlg, 231, HSM_GETTEXTCOLOR, 0, 0));
    EXPECT_EQ(0x00ffff, SendDlgItemMessageA(dlg, 231, HSM_GETBKCOLOR, 0, 0));
    EXPECT_EQ(HSK_GROUP, SendDlgItemMessageA(dlg, 232, HSM_GETKIND, 0, 0));
    EXPECT_EQ(0x008000, SendDlgItemMessageA(dlg, 232, HSM_GETTEXTCOLOR, 0, 0));
    EXPECT_EQ(0, SendDlgItemMessageA(dlg, 232, HSM_GETALIGN, 0, 0));
    EXPECT_EQ(2, SendDlgItemMessageA(dlg, 235, HSM_GETALIGN, 0, 0));
    EXPECT_EQ(HSK_HLINE, SendDlgItemMessageA(dlg, 234, HSM_GETKIND, 0, 0));
    // The focus passes over the statics, whose windows lost WS_TABSTOP.
    SetFocus(GetDlgItem(dlg, 235));
    EXPECT_EQ(GetDlgItem(dlg, 236), GetFocus());
    EXPECT_EQ(GetDlgItem(dlg, 236), GetNextDlgTabItem(dlg, GetDlgItem(dlg, 236), FALSE));
    DestroyWindow(dlg);
}

} // namespace
