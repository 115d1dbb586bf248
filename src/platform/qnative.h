/* Win32 scalar and handle types for the library's native (Linux) build of the
   window-free layers. Only names; no behaviour. Widths follow Win32, not LP64. */
#ifndef QNATIVE_H
#define QNATIVE_H

#include <stddef.h>
#include <stdint.h>

#define WINAPI
#define CALLBACK
#define APIENTRY

typedef int32_t BOOL;
typedef uint8_t BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef uint32_t UINT;
typedef int32_t INT;
typedef int16_t SHORT;
typedef uint16_t USHORT;
typedef char CHAR;
typedef unsigned char UCHAR;
typedef float FLOAT;
typedef void VOID;
typedef void *LPVOID;
typedef const void *LPCVOID;
typedef char *LPSTR;
typedef const char *LPCSTR;
typedef BYTE *LPBYTE;
typedef WORD *LPWORD;
typedef DWORD *LPDWORD;
typedef LONG *LPLONG;
typedef int *LPINT;
typedef BOOL *LPBOOL;
typedef intptr_t INT_PTR;
typedef uintptr_t UINT_PTR;
typedef intptr_t LONG_PTR;
typedef uintptr_t ULONG_PTR;
typedef UINT_PTR WPARAM;
typedef LONG_PTR LPARAM;
typedef LONG_PTR LRESULT;
typedef WORD ATOM;
typedef DWORD COLORREF;

#define Q_NATIVE_HANDLE(name) typedef struct name##__ { int unused; } *name
Q_NATIVE_HANDLE(HWND);
Q_NATIVE_HANDLE(HDC);
Q_NATIVE_HANDLE(HFONT);
Q_NATIVE_HANDLE(HBRUSH);
Q_NATIVE_HANDLE(HPEN);
Q_NATIVE_HANDLE(HBITMAP);
Q_NATIVE_HANDLE(HPALETTE);
Q_NATIVE_HANDLE(HICON);
Q_NATIVE_HANDLE(HINSTANCE);
Q_NATIVE_HANDLE(HMENU);
Q_NATIVE_HANDLE(HRSRC);
Q_NATIVE_HANDLE(HCURSOR);
#undef Q_NATIVE_HANDLE
typedef void *HANDLE;
typedef void *HGLOBAL;
typedef void *HGDIOBJ;
typedef HINSTANCE HMODULE;
typedef int HFILE;
#define HFILE_ERROR ((HFILE)-1)

typedef LRESULT (CALLBACK *WNDPROC)(HWND, UINT, WPARAM, LPARAM);

typedef struct tagRECT { LONG left, top, right, bottom; } RECT, *LPRECT;
typedef struct tagPOINT { LONG x, y; } POINT, *LPPOINT;
typedef struct tagSIZE { LONG cx, cy; } SIZE, *LPSIZE;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

#define LOWORD(l) ((WORD)((DWORD)(l) & 0xffff))
#define HIWORD(l) ((WORD)(((DWORD)(l) >> 16) & 0xffff))
#define LOBYTE(w) ((BYTE)((w) & 0xff))
#define HIBYTE(w) ((BYTE)(((w) >> 8) & 0xff))
#define MAKELONG(a, b) ((LONG)(((WORD)(a)) | ((DWORD)((WORD)(b))) << 16))
#define MAKEWORD(a, b) ((WORD)(((BYTE)(a)) | ((WORD)((BYTE)(b))) << 8))

#define WM_USER 0x0400
#define WM_COMMAND 0x0111

#endif
