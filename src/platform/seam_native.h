// Test controls of the native seam: a profile held in memory, a beep counter,
// and hooks that stand for the window calls of the notify and focus paths.
#pragma once
#include "seam.h"

#ifndef _WIN32
void SeamNativeSetProfile(LPCSTR section, LPCSTR key, LPCSTR value); // null value removes
void SeamNativeClearProfile();
int SeamNativeBeeps(); // beeps since the last reset
void SeamNativeResetBeeps();
typedef DWORD (*SeamNotifyHook)(LPVOID record, UINT code);
typedef HWND (*SeamFocusHook)(HWND w);
typedef LONG (*SeamWindowLongHook)(HWND w, int index);
void SeamNativeSetHooks(SeamNotifyHook notify, SeamFocusHook focus, SeamWindowLongHook windowLong);
// Base units that SeamBaseUnits gives for a font; null restores 8 by 16 for every font.
typedef DWORD (*SeamBaseUnitsHook)(HFONT f);
void SeamNativeSetBaseUnitsHook(SeamBaseUnitsHook hook);
int SeamNativeDestroyedWindows(); // SeamDestroyWindow calls so far
// The record that SeamGetRecord gives for a window; null hook: no window has one.
typedef LPVOID (*SeamRecordHook)(HWND w);
void SeamNativeSetRecordHook(SeamRecordHook hook);
#endif
