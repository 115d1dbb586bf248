// Library start-up: the module entry, the run-once initialisation and class registration.
#include "frame.h"
#include "typed/typed_internal.h"

HINSTANCE g_hInstance;
HCURSOR g_hIBeamCursor;
HCURSOR g_hArrowCursor;
BOOL g_bInitialised;
HCURSOR g_hGridCursor;

// The body shared by the process attach and QuilletInit, in its fixed order:
// the locale first, then the shared cursors, then every class family.
static void HLibraryInitialise()
{
    GetIntlSettings();
    g_hIBeamCursor = LoadCursorA(nullptr, IDC_IBEAM);
    g_hArrowCursor = LoadCursorA(nullptr, IDC_ARROW);
    HButtRegister();
    HEditRegister();
    HListRegister();
    HStatRegister();
    HToolRegister();
    HCombRegister(); // after HList: HDrop is derived from it
    HGridRegister();
    g_bInitialised = TRUE;
}

extern "C" BOOL QUILLAPI HLibraryEntry(HINSTANCE hInstance, DWORD reason, LPVOID reserved)
{
    if (reason != DLL_PROCESS_ATTACH)
        return TRUE;
    g_hInstance = hInstance; // on every attach, before the guard
    if (!g_bInitialised)
        HLibraryInitialise();
    return TRUE;
}

extern "C" void QUILLAPI QuilletInit(void)
{
    if (!g_bInitialised)
        HLibraryInitialise();
}

extern "C" ATOM QUILLAPI HRegisterClass(UINT style, WNDPROC wndProc, int clsExtra, int wndExtra,
                                        HINSTANCE hInstance, HICON hIcon, HCURSOR hCursor,
                                        HBRUSH hbrBackground, LPCSTR menuName, LPCSTR className)
{
    WNDCLASSA wc;
    wc.style = style & 0xFFFF;
    wc.lpfnWndProc = wndProc;
    wc.cbClsExtra = clsExtra;
    wc.cbWndExtra = wndExtra;
    wc.hInstance = hInstance;
    wc.hIcon = hIcon;
    wc.hCursor = hCursor;
    wc.hbrBackground = hbrBackground;
    wc.lpszMenuName = menuName;
    wc.lpszClassName = className;
    return RegisterClassA(&wc);
}

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD reason, LPVOID reserved)
{
    return HLibraryEntry(hInstance, reason, reserved);
}
