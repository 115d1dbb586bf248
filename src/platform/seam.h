// The few platform services that the window-free layers use: memory, the
// profile, the beep, the notify and focus hooks, and file I/O. In the DLL they
// are the Win32 calls themselves; in the native build seam_native.cpp serves them.
#pragma once
#include "quill32.h"
#include <stddef.h>

#ifdef _WIN32

inline void* SeamAlloc(size_t n) { return (void*)GlobalAlloc(GPTR, n); }
// Keeps the content; growth is zero-filled. Null on failure, with p untouched.
inline void* SeamReAlloc(void* p, size_t n)
{
    return p ? (void*)GlobalReAlloc((HGLOBAL)p, n, GMEM_MOVEABLE | GMEM_ZEROINIT) : SeamAlloc(n);
}
inline void SeamFree(void* p) { if (p) GlobalFree((HGLOBAL)p); }
inline size_t SeamSize(const void* p) { return p ? GlobalSize((HGLOBAL)p) : 0; }
inline DWORD SeamProfileString(LPCSTR section, LPCSTR key, LPCSTR def, LPSTR out, DWORD size)
{
    return GetProfileStringA(section, key, def, out, size);
}
inline UINT SeamProfileInt(LPCSTR section, LPCSTR key, INT def) { return GetProfileIntA(section, key, def); }
inline void SeamBeep() { MessageBeep(0); }
inline DWORD SeamNotify(LPVOID record, UINT code) { return HCtlNotify(record, code); }
inline HWND SeamSetFocus(HWND w) { return SetFocus(w); }
inline LONG SeamGetWindowLong(HWND w, int index) { return GetWindowLongA(w, index); }
inline BOOL SeamIsWindow(HWND w) { return IsWindow(w); }
// The instance record of a control window (HM_GETPTR); null for a plain window.
inline LPVOID SeamGetRecord(HWND w) { return (LPVOID)SendMessageA(w, HM_GETPTR, 0, 0); }
inline BOOL SeamDestroyWindow(HWND w) { return DestroyWindow(w); }
// Base units of a font (0: the system font): width low, height high.
inline DWORD SeamBaseUnits(HFONT f) { return GetBaseUnits(f); }
inline HFILE SeamFileOpen(LPCSTR name) { return _lopen(name, OF_READ | OF_SHARE_DENY_WRITE); }
inline HFILE SeamFileCreate(LPCSTR name) { return _lcreat(name, 0); }
inline UINT SeamFileRead(HFILE f, void* buf, UINT n) { return _lread(f, buf, n); }
inline UINT SeamFileWrite(HFILE f, const void* buf, UINT n) { return _lwrite(f, (LPCCH)buf, n); }
inline LONG SeamFileSeek(HFILE f, LONG offset, int origin) { return _llseek(f, offset, origin); }
inline void SeamFileClose(HFILE f) { _lclose(f); }
// Opens name as OpenFile does, searching the application's directory, the
// current one, the system and Windows directories and PATH for a bare name;
// path (OFS_MAXPATHNAME bytes) receives the full path that was found.
inline HFILE SeamFileSearch(LPCSTR name, UINT style, LPSTR path)
{
    OFSTRUCT of = {};
    HFILE f = OpenFile(name, &of, style);
    lstrcpynA(path, of.szPathName, OFS_MAXPATHNAME);
    return f;
}
// The size of the file at path through a second handle (CreateFileA, GENERIC_READ,
// FILE_SHARE_READ) that is closed at once; -1 if it cannot be opened.
inline LONG SeamFileSizeOf(LPCSTR path)
{
    HANDLE h = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return -1;
    DWORD size = GetFileSize(h, nullptr);
    CloseHandle(h);
    return size > 0x7FFFFFFF ? -1 : (LONG)size;
}

#else

void* SeamAlloc(size_t n);
void* SeamReAlloc(void* p, size_t n);
void SeamFree(void* p);
size_t SeamSize(const void* p);
DWORD SeamProfileString(LPCSTR section, LPCSTR key, LPCSTR def, LPSTR out, DWORD size);
UINT SeamProfileInt(LPCSTR section, LPCSTR key, INT def);
void SeamBeep();
DWORD SeamNotify(LPVOID record, UINT code);
HWND SeamSetFocus(HWND w);
LONG SeamGetWindowLong(HWND w, int index);
BOOL SeamIsWindow(HWND w);
LPVOID SeamGetRecord(HWND w);
BOOL SeamDestroyWindow(HWND w);
DWORD SeamBaseUnits(HFONT f);
HFILE SeamFileOpen(LPCSTR name);
HFILE SeamFileCreate(LPCSTR name);
UINT SeamFileRead(HFILE f, void* buf, UINT n);
UINT SeamFileWrite(HFILE f, const void* buf, UINT n);
LONG SeamFileSeek(HFILE f, LONG offset, int origin);
void SeamFileClose(HFILE f);
HFILE SeamFileSearch(LPCSTR name, UINT style, LPSTR path);
LONG SeamFileSizeOf(LPCSTR path);

#endif

// RAII owner of one seam block, for temporary work buffers.
struct SeamBlock {
    void* p;
    explicit SeamBlock(size_t n) : p(SeamAlloc(n)) {}
    ~SeamBlock() { SeamFree(p); }
    SeamBlock(const SeamBlock&) = delete;
    SeamBlock& operator=(const SeamBlock&) = delete;
    void* release() { void* q = p; p = nullptr; return q; }
};
