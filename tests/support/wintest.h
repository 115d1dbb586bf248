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

// Dispatches whatever is queued for this thread.
void PumpMessages();
