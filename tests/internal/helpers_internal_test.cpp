// Window helpers that stay inside the library: text extent, version, point
// splitting, the sibling clip and the drag loop.
#include "wintest.h"
#include "frame/frame.h"

namespace {

TEST(InternalHelpers, TextExtentTakesTheWidestLineAndSumsHeights)
{
    HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, GetStockObject(ANSI_VAR_FONT));
    RECT one = {0, 0, 0, 0}, wide = {0, 0, 0, 0};
    DrawTextA(dc, "ab", 2, &one, DT_CALCRECT | DT_EXPANDTABS | DT_SINGLELINE);
    DrawTextA(dc, "abcdefgh", 8, &wide, DT_CALCRECT | DT_EXPANDTABS | DT_SINGLELINE);
    DWORD e = HTextExtent(dc, "ab\nabcdefgh\n\nab");
    EXPECT_EQ(wide.right, (LONG)LOWORD(e));
    EXPECT_EQ(3 * one.bottom, (LONG)HIWORD(e)); // the empty line adds nothing
    EXPECT_EQ(0u, HTextExtent(dc, ""));
    DeleteDC(dc);
}

TEST(InternalHelpers, VersionHasMajorInTheHighByte)
{
    DWORD v = GetVersion();
    EXPECT_EQ(LOBYTE(LOWORD(v)), HIBYTE(HGetVersion()));
    EXPECT_EQ(HIBYTE(LOWORD(v)), LOBYTE(HGetVersion()));
}

TEST(InternalHelpers, SplitPointWidensSignedHalves)
{
    POINT p = HSplitPoint(MAKELONG((WORD)-5, (WORD)300));
    EXPECT_EQ(-5, p.x);
    EXPECT_EQ(300, p.y);
    p = HSplitPoint(0x8000FFFF);
    EXPECT_EQ(-1, p.x);
    EXPECT_EQ(-32768, p.y);
}

struct ClipCase : ::testing::Test {
    void SetUp() override
    {
        HLibraryEntry(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
    }
};

// Which sibling rectangles are cut out of the clip region of a window's DC.
TEST_F(ClipCase, SiblingsAreExcludedButLibraryChildControlsAreNot)
{
    TestParent parent;
    ShowWindow(parent.hwnd(), SW_SHOWNOACTIVATE); // hidden windows have nothing visible to clip
    HWND self = parent.Child("STATIC", "", 0, 1, 10, 10, 100, 100);
    HWND plain = parent.Child("STATIC", "", 0, 2, 60, 60, 100, 100);     // overlaps: cut
    HWND hidden = CreateWindowExA(0, "STATIC", "", WS_CHILD, 10, 10, 30, 30, parent.hwnd(), (HMENU)3, nullptr, nullptr);
    HWND stat = parent.Child("HStat", "", 0, 4, 0, 0, 30, 30);           // library control with WS_CHILD: kept
    HWND distant = parent.Child("STATIC", "", 0, 5, 300, 200, 20, 20);       // no overlap
    ASSERT_TRUE(self && plain && hidden && stat && distant);
    HDC dc = GetDC(self);
    HExcludeSiblings(self, dc);
    EXPECT_TRUE(PtVisible(dc, 5, 5));     // under the hidden window and the HStat
    EXPECT_TRUE(PtVisible(dc, 45, 45));   // outside the plain sibling
    EXPECT_FALSE(PtVisible(dc, 55, 55));  // under the plain sibling (60,60 in the parent)
    EXPECT_FALSE(PtVisible(dc, 95, 95));
    ReleaseDC(self, dc);
}

struct Track {
    HCtlBase head;
    int calls;
    bool vetoAt3;
};

void TrackCallback(LPVOID record, DWORD point)
{
    Track* t = (Track*)record;
    ++t->calls;
    if (t->vetoAt3 && t->calls == 3)
        t->head.wFlags |= HCTLF_VETO;
    else if (!t->vetoAt3)
        PostMessageA(t->head.hWnd, WM_LBUTTONUP, 0, 0); // the release ends the loop
    Sleep(1); // let the clock move: calls are paced by it
}

TEST(InternalHelpers, DragLoopEndsAtTheReleaseOrAtAVeto)
{
    if (GetVersion() & 0x80000000)
        GTEST_SKIP() << "the drag loop runs on the NT family only";
    TestParent parent;
    HWND w = parent.Child("STATIC", "", 0, 1, 0, 0, 50, 50);
    Track t = {};
    t.head.hWnd = w;
    HCtlTrackMouse(&t, TrackCallback, TRUE);
    EXPECT_EQ(1, t.calls);
    MSG m;
    EXPECT_TRUE(PeekMessageA(&m, w, WM_LBUTTONUP, WM_LBUTTONUP, PM_REMOVE)); // left for the control

    Track v = {};
    v.head.hWnd = w;
    v.vetoAt3 = true;
    HCtlTrackMouse(&v, TrackCallback, FALSE);
    EXPECT_EQ(3, v.calls);
    ASSERT_TRUE(PeekMessageA(&m, w, WM_LBUTTONUP, WM_LBUTTONUP, PM_REMOVE)); // posted by the veto
}

} // namespace
