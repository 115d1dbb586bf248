/* Sleeps until killed: keeps Wine's helper processes up while tests run. */
#include <windows.h>
int WINAPI WinMain(HINSTANCE a, HINSTANCE b, LPSTR c, int d) { Sleep(INFINITE); return 0; }
