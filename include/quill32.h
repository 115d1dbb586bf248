/* QUILL32.dll public interface: classes, messages, styles, notification codes,
   type letters, the records that hosts see, and the exported functions.
   Safe to include from a resource script: only the #define lines are seen there. */
#ifndef QUILL32_H
#define QUILL32_H

#ifndef RC_INVOKED
#if defined(QUILL32_NATIVE)
#include "qnative.h" /* the library's own Linux build of its window-free layers */
#else
#include <windows.h>
#endif
#endif

#ifndef QUILLAPI
#define QUILLAPI WINAPI
#endif

/* ---- Class names ---- */
#define HBUTT_CLASS "HButt"
#define HEDIT_CLASS "HEdit"
#define HEDITSS_CLASS "HEdit_SS"
#define HLIST_CLASS "HList"
#define HSTAT_CLASS "HStat"
#define HTOOL_CLASS "HTool"
#define HCOMB_CLASS "HComb"
#define HDROP_CLASS "HDrop"
#define HGRID_CLASS "HGrid"

/* ---- Module resources ---- */
#define IDC_HGRID_CURSOR 4301
#define IDC_HGRID_CURSOR2 4302
#define IDC_HGRID_CURSOR3 4303
#define IDC_HGRID_CURSOR4 4304
#define IDI_HGRID_ICON 3000

/* ---- Common run-time flags of every control record ---- */
#define HCTLF_NONOTIFY 0x0800
#define HCTLF_VETO 0x1000
#define HCTLF_MODIFIED 0x2000

/* ---- Common messages ---- */
#define HM_GETMODIFY 0x471
#define HM_SETMODIFY 0x472
#define HM_SETNONOTIFY 0x477
#define HM_GETNONOTIFY 0x478
#define HM_GETPTR 0x47B
#define HM_SETPTR 0x47C
#define HM_GETNOTIFY 0x47D
#define HM_SETNOTIFY 0x47E
#define HM_GETSTYLE 0x47F
#define HM_SETSTYLE 0x480
#define HM_VETO 0x483

/* ---- Design-time codes of HCtlDesignMode ---- */
#define HCTL_DESIGN_RWS 0xB12
#define HCTL_DESIGN_DLGEDIT 0xA31

/* ---- Colour request kinds of HCtlColor ---- */
#define HCTLCOLOR_GRID 21
#define HGM_CTLCOLOR 0x5A8
#define HLM_FILLSAMPLE 0x4F3

/* ---- Class and type letters ---- */
#define HCLASS_DATETIME 'a'
#define HCLASS_BOOL 'b'
#define HCLASS_CURRENCY 'c'
#define HCLASS_DATE 'd'
#define HCLASS_CHAR 'h'
#define HCLASS_CLOCK 'k'
#define HCLASS_MASKED 'm'
#define HCLASS_NUMBER 'n'
#define HCLASS_STRING 's'
#define HCLASS_TIME 't'
#define HCLASS_CALC 'z'

/* Type letters of the number family (classes b, c, n, z) */
#define HTYPE_BYTE 'b'       /* unsigned 8 bits */
#define HTYPE_CHAR 'h'       /* signed 8 bits */
#define HTYPE_SHORT 's'      /* signed 16 bits */
#define HTYPE_WORD 'w'       /* unsigned 16 bits */
#define HTYPE_INT 'i'        /* signed 32 bits */
#define HTYPE_LONG 'l'       /* signed 32 bits */
#define HTYPE_ULONG 'u'      /* unsigned 32 bits */
#define HTYPE_DWORD 'W'      /* unsigned 32 bits */
#define HTYPE_FLOAT 'f'      /* IEEE single */
#define HTYPE_DOUBLE 'd'     /* IEEE double */
#define HTYPE_MONEY 'M'      /* two unsigned 32-bit words, reserved */
/* Type letters of the date and time family (classes a, k) */
#define HTYPE_DATETIME 'D'   /* an HDateTime, 10 bytes */
#define HTYPE_SERIAL 'Q'     /* serial day from 1900-01-01, then milliseconds */
#define HTYPE_SERIAL16 'q'   /* 16-bit serial day, then 16-bit minutes */
#define HTYPE_TIME_T 'T'     /* calendar time of mktime and localtime */
#define HTYPE_TM 'm'         /* the nine integers of struct tm */
#define HTYPE_SYSTEMTIME 's' /* six words and 32-bit milliseconds */
#define HTYPE_OLEDATE 'u'    /* double, days from 1899-12-30 */
/* Type letters of class d */
#define HTYPE_DOSDATE 'A'    /* packed day, month, year - 1980 */
#define HTYPE_DMY 'a'        /* day byte, month byte, year word */
#define HTYPE_YMD 'd'        /* year, month, day words */
#define HTYPE_YYYYMMDD 'l'   /* signed 32-bit yyyymmdd */
/* Type letters of class t */
#define HTYPE_DOSTIME 'I'    /* packed hour, minute, second / 2 */
#define HTYPE_HMSH 'i'       /* hour, minute, second, hundredths bytes */
#define HTYPE_HMS 't'        /* hour, minute, second words */
/* Type letter of the text classes m, s */
#define HTYPE_STRING 's'

/* ---- Dates ---- */
#define HN_BADDATE 0x602 /* a date or time check found a bad field; a veto returns the focus */

/* @@SECTION defines: later families add their constants above this line */

#ifndef RC_INVOKED

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ---- */

/* Head of every control's instance record. */
typedef struct HCtlBase {
    HWND hWnd;     /* the control's own window */
    HWND hNotify;  /* notify target of WM_COMMAND and colour requests; 0 silences */
    WORD wId;      /* control id: low word of the creation hMenu */
    WORD wPad;     /* keeps hFont on its natural boundary */
    HFONT hFont;   /* current font, 0 for the system default */
    WORD wFlags;   /* HCTLF_ bits and the class's own bits */
} HCtlBase;

/* Head of HButt, HEdit, HList, HComb and HTool: dwStyle follows wFlags on a
   16-bit boundary. */
#pragma pack(push, 2)
typedef struct HCtlBaseEx {
    HWND hWnd;
    HWND hNotify;
    WORD wId;
    WORD wPad;
    HFONT hFont;
    WORD wFlags;
    DWORD dwStyle; /* the creation style, whole */
    WORD wExtra;   /* read by nobody; written by HM_SETSTYLE */
} HCtlBaseEx;
#pragma pack(pop)

/* Date and time exchange record: the one form all date and time types convert through. */
typedef struct HDateTime {
    SHORT wYear;        /* negative before Christ; no year 0 */
    BYTE bMonth;        /* 1..12 */
    BYTE bDay;          /* 1..31 */
    BYTE bHour;         /* 0..23 */
    BYTE bMinute;       /* 0..59 */
    BYTE bSecond;       /* 0..59 */
    BYTE bFiller;       /* keeps wMillisecond on a 16-bit boundary */
    WORD wMillisecond;  /* 0..999 */
} HDateTime;

/* ---- Container ---- */

typedef struct HLNode {
    struct HLNode *next; /* the link; the owner's payload follows */
} HLNode;

struct HLList;
typedef LPVOID(CALLBACK *HLLISTALLOCPROC)(struct HLList *list, LPVOID data);
typedef LONG(CALLBACK *HLLISTCOMPAREPROC)(struct HLList *list, LPCVOID key, LPVOID node);
typedef LONG(CALLBACK *HLLISTFREEPROC)(struct HLList *list, LPVOID node);
typedef LPVOID(CALLBACK *HLLISTDATAPROC)(struct HLList *list, LPVOID node);
typedef LONG(CALLBACK *HLDATACOMPAREPROC)(LPCVOID key, LPCVOID payload);

#define HLLIST_SORTED 0x0001
#define HLLIST_EMPTY 0x0002

typedef struct HLList {
    LONG itemSize;                    /* payload bytes; -1 for a terminated string */
    LONG count;                       /* number of nodes */
    LONG cursorIndex;                 /* index of the node in cursor */
    HLLISTALLOCPROC pfnAlloc;         /* makes a node */
    HLLISTCOMPAREPROC pfnCompare;     /* compares a key with a node */
    HLLISTFREEPROC pfnFree;           /* releases a node */
    HLLISTDATAPROC pfnData;           /* gives a node's payload */
    HLDATACOMPAREPROC pfnDataCompare; /* compares two payloads; may be null */
    DWORD userWord;                   /* the owner's */
    WORD flags;                       /* HLLIST_SORTED, HLLIST_EMPTY */
    HLNode *first;                    /* first node, null when empty */
    HLNode *last;                     /* last node, null when empty */
    HLNode *cursor;                   /* the cached node */
} HLList;

/* @@SECTION types: later families add their records above this line */

/* ---- Library and frame ---- */
typedef LRESULT(CALLBACK *HCTLHANDLER)(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                       LPBOOL notHandled, LPVOID record);

BOOL QUILLAPI HLibraryEntry(HINSTANCE hInstance, DWORD reason, LPVOID reserved);
void QUILLAPI QuilletInit(void);
ATOM QUILLAPI HRegisterClass(UINT style, WNDPROC wndProc, int clsExtra, int wndExtra,
                             HINSTANCE hInstance, HICON hIcon, HCURSOR hCursor,
                             HBRUSH hbrBackground, LPCSTR menuName, LPCSTR className);

LRESULT CALLBACK HButtWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HEditWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HListWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HStatWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HToolWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HCombWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HDropWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HGridWnd(HWND, UINT, WPARAM, LPARAM);

LRESULT CALLBACK HButtMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HEditMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HListMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HStatMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HToolMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HCombMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HGridMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);

LRESULT QUILLAPI HCtlWndProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                             HCTLHANDLER handler, int slot);
BOOL QUILLAPI HCtlCommonMsg(LPVOID record, UINT msg, WPARAM wParam, LPARAM lParam,
                            LRESULT *result);
DWORD QUILLAPI HCtlNotify(LPVOID record, UINT code);
HBRUSH QUILLAPI HCtlColor(LPVOID record, int kind, HDC hDC);
WORD QUILLAPI HCtlDesignMode(HWND hWnd);

/* ---- Window, geometry and string helpers ---- */
void QUILLAPI CenterWindow(HWND hWnd, int offset);
void QUILLAPI RCtoS(HWND hWnd, LPRECT rect);
void QUILLAPI RStoC(HWND hWnd, LPRECT rect);
int QUILLAPI WindowWidth(HWND hWnd);
int QUILLAPI WindowHeight(HWND hWnd);
DWORD QUILLAPI GetBaseUnits(HFONT hFont);
WNDPROC QUILLAPI SubclassWW(HWND hWnd, WNDPROC newProc);
int QUILLAPI SetOverwriteMode(int mode);
int QUILLAPI GetOverwriteMode(void);
LPCSTR QUILLAPI GetHelpName(void);
void __cdecl WriteDebug(LPCSTR format, ...);
int QUILLAPI DemoDlg(void);
int QUILLAPI _fstrnzcpy(LPSTR target, LPCSTR source, int limit);
LPSTR QUILLAPI StringParse(LPCSTR text, char stop, char escape, char replace,
                           char replacement, LPCSTR *rest);

/* ---- Locale ---- */
void QUILLAPI GetIntlSettings(void);
BOOL QUILLAPI SetDecimalSep(char c);
BOOL QUILLAPI SetThousandsSep(char c);
BOOL QUILLAPI SetDateSep(char c);
BOOL QUILLAPI SetTimeSep(char c);
BOOL QUILLAPI SetDefDateFormat(LPCSTR format);
BOOL QUILLAPI SetDefTimeFormat(LPCSTR format);

/* ---- Data type table ---- */
LPCSTR QUILLAPI GetDataTypes(LPCSTR spec, LPSTR class1, LPSTR type1, LPSTR class2, LPSTR type2);
BOOL QUILLAPI ValidClass(char cls);
BOOL QUILLAPI ValidType(char cls, char type);
int QUILLAPI GetDataSize(char cls, char type);
HLDATACOMPAREPROC QUILLAPI HDataCompare(char cls, char type);
int QUILLAPI HDataCopy(LPVOID target, LPCVOID source, char cls, char type, int limit);
BOOL QUILLAPI HDataDiffers(LPCVOID first, LPCVOID second, char cls, char type);

/* ---- HLList container ---- */
HLList *QUILLAPI HLListCreate(LONG itemSize, HLLISTALLOCPROC pfnAlloc, HLLISTCOMPAREPROC pfnCompare,
                              HLDATACOMPAREPROC pfnDataCompare, HLLISTFREEPROC pfnFree,
                              HLLISTDATAPROC pfnData, UINT sorted);
BOOL QUILLAPI HLListCopy(HLList *dest, HLList *source);
BOOL QUILLAPI HLListEmpty(HLList *list);
BOOL QUILLAPI HLListDestroy(HLList *list);
LPVOID QUILLAPI HLListGetItem(HLList *list, LONG index);
LONG QUILLAPI HLListInsert(HLList *list, LONG index, LPVOID data);
BOOL QUILLAPI HLListRemove(HLList *list, LONG index);
LPVOID QUILLAPI HLListFind(HLList *list, LPCVOID key, LONG start, LPLONG found);
LONG QUILLAPI HLListAdd(HLList *list, LPVOID data);

/* ---- Dates and times ---- */
BOOL QUILLAPI DateTimeToData(const HDateTime *record, LPVOID value, char type);
BOOL QUILLAPI DataToDateTime(HDateTime *record, LPCVOID value, char type);

/* @@SECTION functions: later families add their prototypes above this line */

#ifdef __cplusplus
}
#endif

#if defined(__cplusplus) && defined(_WIN32) && !defined(_WIN64)
static_assert(sizeof(HCtlBase) == 20, "HCtlBase layout");
static_assert(offsetof(HCtlBase, hFont) == 12 && offsetof(HCtlBase, wFlags) == 16, "HCtlBase layout");
static_assert(offsetof(HCtlBaseEx, dwStyle) == 18 && offsetof(HCtlBaseEx, wExtra) == 22, "HCtlBaseEx layout");
static_assert(sizeof(HCtlBaseEx) == 24, "HCtlBaseEx layout");
static_assert(sizeof(HLList) == 52 && offsetof(HLList, flags) == 36 && offsetof(HLList, cursor) == 48, "HLList layout");
#endif
#if defined(__cplusplus)
static_assert(sizeof(HDateTime) == 10 && offsetof(HDateTime, wMillisecond) == 8, "HDateTime layout");
#endif

#endif /* RC_INVOKED */
#endif /* QUILL32_H */
