// The logging test parent of the window tests.
#include "wintest.h"

#include <stdio.h>
#include <string.h>

std::string Describe(const std::vector<SeenMsg>& seen)
{
    std::string s;
    char line[96];
    for (const auto& m : seen) {
        snprintf(line, sizeof line, "  msg=0x%04X id=%u code=0x%04X from=%p\n", m.msg, m.id, m.code, (void*)m.from);
        s += line;
    }
    return s.empty() ? "  (nothing)\n" : s;
}

TestParent::TestParent(const char* className)
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = Proc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = className;
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    wc.cbWndExtra = sizeof(void*);
    RegisterClassA(&wc); // a second registration of the same name fails harmlessly
    hWnd_ = CreateWindowExA(0, className, "test parent", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0, 400, 300,
                            nullptr, nullptr, wc.hInstance, this);
}

TestParent::~TestParent()
{
    if (IsWindow(hWnd_)) {
        SetWindowLongPtrA(hWnd_, 0, 0);
        DestroyWindow(hWnd_);
    }
}

HWND TestParent::Child(const char* cls, const char* text, DWORD style, int id, int x, int y, int w, int h)
{
    return CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, hWnd_, (HMENU)(UINT_PTR)id,
                           GetModuleHandleA(nullptr), nullptr);
}

LRESULT CALLBACK TestParent::Proc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_NCCREATE)
        SetWindowLongPtrA(hWnd, 0, (LONG_PTR)((CREATESTRUCTA*)lParam)->lpCreateParams);
    TestParent* self = (TestParent*)GetWindowLongPtrA(hWnd, 0);
    if (self) {
        switch (msg) {
        case WM_COMMAND: {
            SeenMsg m = {msg, LOWORD(wParam), HIWORD(wParam), (HWND)lParam};
            self->seen.push_back(m);
            if (self->onCommand) self->onCommand(m);
            return 0;
        }
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORSTATIC:
        case HGM_CTLCOLOR:
            self->seen.push_back({msg, 0, 0, (HWND)lParam});
            return (LRESULT)self->colorReply;
        }
    }
    return DefWindowProcA(hWnd, msg, wParam, lParam);
}

void SetKeys(bool shift, bool ctrl)
{
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_SHIFT] = shift ? 0x80 : 0;
    keys[VK_CONTROL] = ctrl ? 0x80 : 0;
    SetKeyboardState(keys);
}

std::string ClipboardText()
{
    std::string text;
    if (!OpenClipboard(nullptr))
        return "(no clipboard)";
    if (HANDLE h = GetClipboardData(CF_TEXT)) {
        if (const char* p = (const char*)GlobalLock(h)) {
            text.assign(p, strnlen(p, GlobalSize(h)));
            GlobalUnlock(h);
        }
    }
    CloseClipboard();
    return text;
}

void PutClipboardText(const char* text)
{
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE, strlen(text) + 1);
    strcpy((char*)GlobalLock(h), text);
    GlobalUnlock(h);
    SetClipboardData(CF_TEXT, h);
    CloseClipboard();
}

void PumpMessages()
{
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&m);
        DispatchMessageA(&m);
    }
}
