// The drop of a combo: placing the list on the screen, opening and closing it,
// the mouse hook that closes it on an outside click, the HDrop window, and the
// exported item routines of the combo.
#include "list/hcomb.h"
#include "frame/frame.h"
#include "list/hlist.h"

HWND g_hDropCombo;
HWND g_hDropChild;
HWND g_hDropList;
HHOOK g_hDropHook;

namespace {

constexpr int kDropChildSlot = 4; // HDrop's extra word that holds the top child
constexpr LONG kMaxDropHeight = 32767;

// The hook is set only where the platform maps a thread-0 mouse hook: the NT family, 3.10 on.
BOOL HookAvailable() { return HGetVersion() >= 0x030A && !(GetVersion() & 0x80000000); }

} // namespace

extern "C" int QUILLAPI GetDropHeight(LPCSTR* text)
{
    if (!text || !*text)
        return 0;
    LPCSTR p = *text;
    if (lstrlenA(p) <= 2 || p[0] != '%' || p[1] < '0' || p[1] > '9')
        return 0;
    LONG height = 0;
    for (++p; *p >= '0' && *p <= '9'; ++p) {
        height = height * 10 + (*p - '0');
        if (height > kMaxDropHeight)
            height = kMaxDropHeight; // saturates: no digit string overflows
    }
    *text = p;
    return (int)height;
}

void HCombPlaceDrop(HCombRecord* r)
{
    RECT combo, drop;
    GetWindowRect(r->base.hWnd, &combo);
    const LONG screenW = GetSystemMetrics(SM_CXSCREEN), screenH = GetSystemMetrics(SM_CYSCREEN);
    drop.left = combo.left;
    drop.right = r->dropWidth > 0 ? combo.left + r->dropWidth : combo.right;
    if (HCombIsEditable(r))
        drop.left += 7;
    // A list taller than the screen ends at its edge all the same; the cap keeps the sums in range.
    const LONG height = r->dropHeight > screenH ? screenH : r->dropHeight;
    drop.top = combo.bottom;
    drop.bottom = drop.top + height;
    if (drop.bottom > screenH && combo.bottom > screenH / 2) {
        drop.bottom = combo.top; // no room below, and more above: open upward
        drop.top = drop.bottom - height;
    }
    if (drop.bottom > screenH)
        drop.bottom = screenH;
    if (drop.top < 0)
        drop.top = 0;
    if (drop.left < 0)
        OffsetRect(&drop, -drop.left, 0);
    if (drop.right > screenW)
        OffsetRect(&drop, screenW - drop.right, 0);
    MoveWindow(r->hList, drop.left, drop.top, drop.right - drop.left, drop.bottom - drop.top, TRUE);
}

void HCombOpenDrop(HCombRecord* r)
{
    HWND self = r->base.hWnd;
    if (!HCombIsDropList(r) || !IsWindowVisible(self) || (r->base.wFlags & HCF_DROPPED))
        return;
    // One open combo per process: another one closes first, so its hook is not lost.
    if (g_hDropCombo && g_hDropCombo != self) {
        HCombRecord* other = HCombRecordOf(g_hDropCombo);
        if (other)
            HCombCloseDrop(other);
    }
    HCombPlaceDrop(r);
    HCtlNotify(r, HCN_DROPDOWN);
    if (!IsWindow(self))
        return; // the receiver destroyed the combo
    g_hDropCombo = self;
    g_hDropChild = r->hChild;
    g_hDropList = r->hList;
    if (HookAvailable())
        g_hDropHook = SetWindowsHookExA(WH_MOUSE, MouseHookProc, g_hInstance, 0);
    ShowWindow(r->hList, SW_SHOW);
    BringWindowToTop(r->hList);
    r->base.wFlags |= HCF_DROPPED;
}

void HCombCloseDrop(HCombRecord* r)
{
    if (!HCombIsDropList(r) || !(r->base.wFlags & HCF_DROPPED))
        return;
    r->base.wFlags &= (WORD)~HCF_DROPPED; // first: hiding may re-enter through a focus change
    ShowWindow(r->hList, SW_HIDE);
    if (g_hDropCombo == r->base.hWnd) {
        g_hDropCombo = nullptr;
        if (HookAvailable() && g_hDropHook)
            UnhookWindowsHookEx(g_hDropHook);
        g_hDropHook = nullptr;
    }
}

extern "C" LRESULT CALLBACK MouseHookProc(int code, WPARAM wParam, LPARAM lParam)
{
    const MOUSEHOOKSTRUCT* m = (const MOUSEHOOKSTRUCT*)lParam;
    HHOOK hook = g_hDropHook; // closing clears it
    if (code >= 0 && (wParam == WM_LBUTTONDOWN || wParam == WM_NCLBUTTONDOWN || wParam == WM_SYSCOMMAND) && m &&
        m->hwnd != g_hDropCombo && m->hwnd != g_hDropChild && m->hwnd != g_hDropList && g_hDropCombo) {
        HCombRecord* r = HCombRecordOf(g_hDropCombo);
        if (r)
            HCombCloseDrop(r);
    }
    return CallNextHookEx(hook, code, wParam, lParam);
}

// The drop list of a combo: takes what it needs itself and leaves the rest to HList.
extern "C" LRESULT CALLBACK HDropWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_CREATE:
        // A dropped list is painted in the colour of a focused field.
        if (GetParent(hWnd) == GetDesktopWindow()) {
            LRESULT brush = HListWnd(hWnd, HM_GETFOCUSBRUSH, 0, 0);
            if (brush)
                HListWnd(hWnd, HM_SETBACKBRUSH, (WPARAM)brush, 0);
        }
        break;
    case WM_MOUSEACTIVATE: {
        // The list never takes the focus away from the top child.
        HWND child = (HWND)GetWindowLongA(hWnd, kDropChildSlot);
        if (child && IsWindow(child) && GetFocus() != child) {
            SetFocus(child);
            UpdateWindow(child);
        }
        return 0;
    }
    case WM_LBUTTONUP: {
        LRESULT result = HListWnd(hWnd, msg, wParam, lParam);
        // A click on an item ends the drop.
        HCombRecord* r = g_hDropCombo ? HCombRecordOf(g_hDropCombo) : nullptr;
        if (r)
            HCombCloseDrop(r);
        return result;
    }
    }
    return HListWnd(hWnd, msg, wParam, lParam);
}

// ---- The exported item routines: the list's counterpart, then the child follows ----

namespace {

HWND ListOf(HWND hWnd)
{
    HCombRecord* r = HCombRecordOf(hWnd);
    return r && r->hList && IsWindow(r->hList) ? r->hList : nullptr;
}

LONG Synced(HWND hWnd, LONG result)
{
    HCombRecord* r = HCombRecordOf(hWnd);
    if (r)
        HCombSync(r, FALSE, FALSE);
    return result;
}

} // namespace

extern "C" LONG QUILLAPI HCAddItems(HWND hWnd, LONG count, LPVOID items)
{
    HWND list = ListOf(hWnd);
    return list ? Synced(hWnd, HLAddItemsEx(list, count, items, nullptr)) : -1;
}

extern "C" LONG QUILLAPI HCAddItemsEx(HWND hWnd, LONG count, LPVOID items, LPVOID codes)
{
    HWND list = ListOf(hWnd);
    return list ? Synced(hWnd, HLAddItemsEx(list, count, items, codes)) : -1;
}

extern "C" LONG QUILLAPI HCAddItemEx(HWND hWnd, LPVOID data, LPVOID code)
{
    HWND list = ListOf(hWnd);
    return list ? Synced(hWnd, HLAddItemEx(list, data, code)) : -1;
}

extern "C" LONG QUILLAPI HCDeleteItems(HWND hWnd, UINT how, LONG count, LPVOID items)
{
    HWND list = ListOf(hWnd);
    return list ? Synced(hWnd, HLDeleteItems(list, how, count, items)) : 0;
}

extern "C" LONG QUILLAPI HCGetItems(HWND hWnd, LONG count, UINT what, LPVOID out, UINT how, LPVOID items)
{
    HWND list = ListOf(hWnd);
    return list ? Synced(hWnd, HLGetItems(list, count, what, out, how, items)) : -1;
}

extern "C" LONG QUILLAPI HCInsertItems(HWND hWnd, LONG index, LONG count, LPVOID items)
{
    HWND list = ListOf(hWnd);
    return list ? Synced(hWnd, HLInsertItemsEx(list, index, count, items, nullptr)) : -1;
}

extern "C" LONG QUILLAPI HCInsertItemsEx(HWND hWnd, LONG index, LONG count, LPVOID items, LPVOID codes)
{
    HWND list = ListOf(hWnd);
    return list ? Synced(hWnd, HLInsertItemsEx(list, index, count, items, codes)) : -1;
}

extern "C" LONG QUILLAPI HCInsertItemEx(HWND hWnd, LONG index, LPVOID data, LPVOID code)
{
    HWND list = ListOf(hWnd);
    return list ? Synced(hWnd, HLInsertItemEx(list, index, data, code)) : -1;
}

extern "C" LONG QUILLAPI HCInsertStringEx(HWND hWnd, LONG index, LPCSTR dataText, LPCSTR codeText)
{
    HWND list = ListOf(hWnd);
    return list ? Synced(hWnd, HLInsertStringEx(list, index, dataText, codeText)) : -1;
}
