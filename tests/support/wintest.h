// Window test support: a parent window that logs what controls send it, and
// helpers to compare the log with an expected table.
#pragma once
#include <windows.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "quill32.h"

// One entry of what the parent saw.
struct SeenMsg {
    UINT msg;      // WM_COMMAND or a colour request
    WORD id;       // WM_COMMAND: control id; otherwise 0
    WORD code;     // WM_COMMAND: notification code; otherwise 0
    HWND from;     // the control (lParam)
    bool operator==(const SeenMsg& o) const { return msg == o.msg && id == o.id && code == o.code && from == o.from; }
};

std::string Describe(const std::vector<SeenMsg>& seen);

// A top-level window that records WM_COMMAND and colour requests, and lets a test
// react inside the notification (veto, destroy the control...).
class TestParent {
public:
    TestParent(const char* className = "QuillTestParent");
    ~TestParent();
    HWND hwnd() const { return hWnd_; }
    std::vector<SeenMsg> seen;
    std::function<void(const SeenMsg&)> onCommand; // runs inside WM_COMMAND
    HBRUSH colorReply = nullptr;                   // answer to colour requests
    HWND Child(const char* cls, const char* text, DWORD style, int id, int x = 10, int y = 10, int w = 120, int h = 24);

private:
    static LRESULT CALLBACK Proc(HWND, UINT, WPARAM, LPARAM);
    HWND hWnd_ = nullptr;
};

// Compares a log with its expected sequence, printing both side by side on a mismatch.
#define EXPECT_SEEN(parent, ...)                                                              \
    do {                                                                                      \
        std::vector<SeenMsg> expected_ = __VA_ARGS__;                                         \
        EXPECT_TRUE((parent).seen == expected_)                                               \
            << "expected:\n" << Describe(expected_) << "seen:\n" << Describe((parent).seen); \
    } while (0)

// A control's erase painting (WM_ERASEBKGND) into a memory bitmap of its client
// size, optionally filled with a marker colour first, for reading pixels back.
class EraseCanvas {
public:
    explicit EraseCanvas(HWND ctl, COLORREF prefill = CLR_INVALID)
    {
        GetClientRect(ctl, &rc);
        dc = CreateCompatibleDC(nullptr);
        HDC screen = GetDC(nullptr);
        bmp = SelectObject(dc, CreateCompatibleBitmap(screen, rc.right, rc.bottom));
        ReleaseDC(nullptr, screen);
        if (prefill != CLR_INVALID) {
            HBRUSH fill = CreateSolidBrush(prefill);
            FillRect(dc, &rc, fill);
            DeleteObject(fill);
        }
        EXPECT_EQ(1, SendMessageA(ctl, WM_ERASEBKGND, (WPARAM)dc, 0));
    }
    ~EraseCanvas()
    {
        DeleteObject(SelectObject(dc, bmp));
        DeleteDC(dc);
    }
    EraseCanvas(const EraseCanvas&) = delete;
    EraseCanvas& operator=(const EraseCanvas&) = delete;
    COLORREF At(int x, int y) const { return GetPixel(dc, x, y); }
    HGDIOBJ Current(UINT type) const { return GetCurrentObject(dc, type); }
    // First or last column holding a pixel of the colour, -1 if none.
    int Column(COLORREF c, bool last) const
    {
        for (int i = 0; i < rc.right; ++i)
            for (int y = 0, x = last ? rc.right - 1 - i : i; y < rc.bottom; ++y)
                if (At(x, y) == c) return x;
        return -1;
    }
    // First column from the left holding a pixel of neither colour, -1 if none.
    int FirstOther(COLORREF a, COLORREF b) const
    {
        for (int x = 0; x < rc.right; ++x)
            for (int y = 0; y < rc.bottom; ++y)
                if (At(x, y) != a && At(x, y) != b) return x;
        return -1;
    }
    RECT rc;

private:
    HDC dc;
    HGDIOBJ bmp;
};

// Dispatches whatever is queued for this thread.
void PumpMessages();

// Holds Shift and Ctrl down, or lets them go, in this thread's key state.
void SetKeys(bool shift, bool ctrl);

// The clipboard's text, and a text put there in place of what it held.
std::string ClipboardText();
void PutClipboardText(const char* text);
