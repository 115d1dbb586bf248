// HEdit and HEdit_SS: registration, the record's creation and retyping, and the
// class handler with every message.
#include "edit/hedit.h"
#include "edit/typed.h"
#include "frame/frame.h"
#include "frame/strings.h"
#include "draw/draw.h"

#include <ctype.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

namespace {

constexpr UINT kClockTimer = 1;
constexpr int kTypeTextSize = 256; // work copy of a creation text or a mask
constexpr LONG kMostChars = 0x7FFE; // limits read from a creation text stop here

void HEditFree(HEditRecord* r)
{
    if (r->maskText)
        GlobalFree(r->maskText);
    if (r->emptyText)
        GlobalFree(r->emptyText);
    if (r->value)
        GlobalFree(r->value);
    if (r->text)
        GlobalFree(r->text);
    r->maskText = r->emptyText = r->text = nullptr;
    r->value = nullptr;
}

// Retypes the field from a creation text: TypeSpec, then a mask, a limit or an initial value.
BOOL HEditSetType(HEditRecord* r, LPCSTR typeText)
{
    char buffer[kTypeTextSize];
    _fstrnzcpy(buffer, typeText ? typeText : "", sizeof buffer);
    char cls = HCLASS_STRING, type = HTYPE_STRING;
    LPSTR rest = (LPSTR)GetDataTypes(buffer, &cls, &type, nullptr, nullptr);
    if (!rest)
        rest = buffer;
    HTypedParseColors(rest, &r->colorNormal, &r->colorAlt);
    if (r->maskText)
        GlobalFree(r->maskText);
    if (r->value)
        GlobalFree(r->value);
    if (r->text)
        GlobalFree(r->text);
    r->maskText = r->text = nullptr;
    r->value = nullptr;
    r->base.wFlags &= (WORD)~HCTLF_MODIFIED;
    r->dataClass = cls;
    r->dataType = type;
    if (cls == HCLASS_STRING && isdigit((unsigned char)*rest)) {
        // '%ss20' is a field of 20 characters at most.
        LONG limit = 0;
        while (isdigit((unsigned char)*rest)) {
            limit = limit * 10 + (*rest++ - '0');
            if (limit > kMostChars)
                limit = kMostChars;
        }
        r->textLimit = limit;
        r->base.wFlags |= HEF_LIMITED;
    }
    LONG restLength = (LONG)strlen(rest);
    if (r->textLimit < 0)
        r->textLimit = 0;
    r->textSize = r->textLimit + 1 > restLength + 32 ? r->textLimit + 1 : restLength + 32;
    r->text = (LPSTR)GlobalAlloc(GPTR, (SIZE_T)r->textSize);
    if (cls == HCLASS_STRING) {
        if (!(r->base.wFlags & HEF_LIMITED))
            r->textLimit = r->textSize - 1;
        r->dataSize = r->textSize;
        r->value = GlobalAlloc(GPTR, (SIZE_T)r->dataSize);
        if (r->value)
            _fstrnzcpy((LPSTR)r->value, rest, r->textLimit + 1);
    } else {
        r->dataSize = GetDataSize(cls, type);
        if (r->dataSize < 0)
            r->dataSize = restLength + 1;
        r->value = GlobalAlloc(GPTR, (SIZE_T)(r->dataSize > 0 ? r->dataSize : 1));
        r->maskText = HStrDup(rest);
    }
    if (cls == HCLASS_CALC)
        r->base.dwStyle |= HES_EDITRIGHT; // a calculator field stands right-aligned while edited
    r->firstChar = r->anchor = r->caret = 0;
    if (r->text)
        HEditUpdateScroll(r);
    return r->value && r->text;
}

BOOL HEditCreate(HWND hWnd, const CREATESTRUCTA* cs)
{
    if (!cs)
        return FALSE;
    HEditRecord* r = (HEditRecord*)HCtlNewRecord(hWnd, cs, sizeof(HEditRecord));
    if (!r)
        return FALSE;
    r->base.dwStyle = (DWORD)cs->style;
    r->passwordChar = '*';
    if (r->base.dwStyle & HES_FOCUSBRUSH)
        r->focusBrush = HTypedDefaultFocusBrush();
    // A name below 0x10000 is an ordinal from a template, not a text.
    LPCSTR name = ((UINT_PTR)cs->lpszName < 0x10000) ? "" : cs->lpszName;
    if (!HEditSetType(r, name)) {
        HEditFree(r);
        HCtlFreeRecord(hWnd, r);
        return FALSE;
    }
    return TRUE;
}

// HM_SETMASK: the whole mask is kept, and the section behind the last value
// section becomes the text of an empty value.
LRESULT HEditSetMask(LPVOID record, BOOL repaint, LPCSTR mask)
{
    HEditRecord* r = (HEditRecord*)record;
    char buffer[kTypeTextSize];
    _fstrnzcpy(buffer, mask, sizeof buffer);
    LPSTR empty = nullptr;
    LPSTR first = strchr(buffer, ';');
    if (first) {
        if (r->dataClass == HCLASS_NUMBER || r->dataClass == HCLASS_CURRENCY || r->dataClass == HCLASS_BOOL) {
            LPSTR second = strchr(first + 1, ';'); // ";;" finds the second at once
            if (second)
                empty = second + 1;
        } else {
            empty = first + 1;
        }
    }
    HStrReplace(&r->emptyText, empty);
    LONG length = (LONG)strlen(mask);
    if (r->dataClass == HCLASS_MASKED && length + 1 > r->dataSize) {
        HGLOBAL grown = GlobalReAlloc(GlobalHandle(r->value), (SIZE_T)length + 1, GMEM_MOVEABLE | GMEM_ZEROINIT);
        if (!grown)
            return -5;
        r->value = GlobalLock(grown);
        r->dataSize = length + 1;
    }
    // The display of a longer mask needs a longer text.
    if (length + 32 > r->textSize && !HEditGrow(r, length + 32))
        return -5;
    HStrReplace(&r->maskText, mask);
    if (repaint)
        HEditDisplay(r, (r->base.wFlags & HEF_FOCUS) != 0);
    return 1;
}

LRESULT HEditDataSize(LPVOID record, SHORT) { return ((HEditRecord*)record)->dataSize; }

LRESULT HEditSetDataLink(LPVOID record, WPARAM direction, LPVOID link)
{
    HEditRecord* r = (HEditRecord*)record;
    r->dataLink = link;
    if (direction == 0 && link) {
        // The control's value wins.
        if (r->dataClass == HCLASS_STRING || r->dataClass == HCLASS_MASKED)
            return _fstrnzcpy((LPSTR)link, (LPCSTR)r->value, r->dataSize);
        memcpy(link, r->value, (size_t)r->dataSize);
        return r->dataSize;
    }
    return HEditSetValue(r, link);
}

constexpr HTypedClass kEditTyped = {HTYPED_EDIT, HEditSetMask, HEditDataSize, HEditSetDataLink};

HTypedFields HEditTypedFields(HEditRecord* r)
{
    return {&r->backBrush, &r->focusBrush, &r->colorNormal, &r->colorAlt,
            &r->dataClass, &r->dataType,   &r->maskText,    &r->dataLink};
}

void HEditTextRect(HEditRecord* r, BOOL redisplay, const RECT* given)
{
    if (given) {
        r->rcText = *given;
    } else {
        GetClientRect(r->base.hWnd, &r->rcText);
        r->rcText.left = 3;
        r->rcText.right -= 3;
        r->rcText.top = (r->rcText.bottom - r->rcText.top - r->charHeight) / 2;
        r->rcText.bottom = r->rcText.top + r->charHeight;
    }
    LONG average = LOWORD(GetBaseUnits(r->base.hFont));
    r->visibleChars = average > 0 ? (r->rcText.right - r->rcText.left) / average : 1;
    if (r->visibleChars < 1)
        r->visibleChars = 1;
    if (redisplay)
        HEditDisplay(r, (r->base.wFlags & HEF_FOCUS) != 0);
}

void HEditOnSetFocus(HEditRecord* r)
{
    r->base.wFlags |= HEF_FOCUS;
    HEditDisplay(r, TRUE);
    if (!(r->base.dwStyle & HES_KEEPSEL)) {
        if (GetOverwriteMode() && r->anchor == r->caret && r->dataClass == HCLASS_STRING)
            HEditSetSel(r, 3, 0, 0);
        else
            HEditSetSel(r, 3, 0, 0xFFFE);
    }
    HEditMakeCaret(r);
    HEditPlaceCaret(r, r->caret);
    HEditTell(r, HEN_SETFOCUS);
}

void HEditOnKillFocus(HEditRecord* r)
{
    HWND self = r->base.hWnd;
    r->base.wFlags &= (WORD)~HEF_FOCUS;
    HEditCommit(r, r->text);
    if (!IsWindow(self))
        return;
    // A validator or a bad date may have taken the focus back.
    if (GetFocus() != self) {
        DestroyCaret();
        HEditDisplay(r, FALSE);
    }
    HEditTell(r, HEN_KILLFOCUS);
}

void HEditOnDestroy(HEditRecord* r)
{
    HWND self = r->base.hWnd;
    r->pfnValidate = nullptr; // no validator runs on a dying window
    if ((r->base.wFlags & HEF_FOCUS) && r->text && r->value) {
        HEditCommit(r, r->text);
        if (GetFocus() != self) {
            DestroyCaret();
            HEditDisplay(r, FALSE);
        }
    }
    if (r->dataClass == HCLASS_CLOCK)
        KillTimer(self, kClockTimer);
    HEditFree(r);
    HCtlFreeRecord(self, r);
}

LRESULT HEditOnSetText(HEditRecord* r, LPCSTR text)
{
    if (!text)
        return -2;
    if (text[0] == '%' || (r->dataClass != HCLASS_STRING && HCtlDesignMode(r->base.hWnd))) {
        HEditSetType(r, text);
        if (r->text && r->value)
            HEditDisplay(r, (r->base.wFlags & HEF_FOCUS) != 0);
        return 1;
    }
    if (r->dataClass == HCLASS_STRING)
        return HEditSetValue(r, text);
    HWND self = r->base.hWnd;
    r->base.wFlags |= HEF_DIRTY;
    HEditCommit(r, text);
    if (IsWindow(self))
        HEditDisplay(r, (r->base.wFlags & HEF_FOCUS) != 0);
    return 1;
}

// Class k: the value follows the clock while the field has no focus.
void HEditOnTimer(HEditRecord* r, UINT id)
{
    if (r->dataClass != HCLASS_CLOCK || id != kClockTimer || (r->base.wFlags & HEF_FOCUS))
        return;
    time_t now = time(nullptr);
    const struct tm* lt = localtime(&now);
    if (!lt)
        return;
    HDateTime current = {};
    current.wYear = (SHORT)(lt->tm_year + 1900);
    current.bMonth = (BYTE)(lt->tm_mon + 1);
    current.bDay = (BYTE)lt->tm_mday;
    current.bHour = (BYTE)lt->tm_hour;
    current.bMinute = (BYTE)lt->tm_min;
    current.bSecond = (BYTE)(lt->tm_sec > 59 ? 59 : lt->tm_sec);
    BYTE value[64] = {};
    if (r->dataSize <= 0 || r->dataSize > (LONG)sizeof value || !DateTimeToData(&current, value, r->dataType))
        return;
    HDateTime stored = {};
    DataToDateTime(&stored, r->value, r->dataType);
    const bool seconds = r->maskText && strchr(r->maskText, 's');
    const bool sameHour = stored.wYear == current.wYear && stored.bMonth == current.bMonth &&
                          stored.bDay == current.bDay && stored.bHour == current.bHour;
    const int apart = abs((stored.bMinute * 60 + stored.bSecond) - (current.bMinute * 60 + current.bSecond));
    if ((seconds || stored.bMinute != current.bMinute || !sameHour || apart >= 60) &&
        HDataDiffers(value, r->value, r->dataClass, r->dataType))
        HEditSetValue(r, value);
}

void HEditOnButtonDown(HEditRecord* r, WPARAM keys, LPARAM at)
{
    HWND self = r->base.hWnd;
    if (!(r->base.wFlags & HEF_FOCUS)) {
        // The first click only enters the field.
        SetFocus(self);
        SetCursor(g_hIBeamCursor);
        return;
    }
    LONG index = HEditPixelToChar(r, (SHORT)LOWORD(at));
    if (keys & MK_SHIFT)
        HEditSetSel(r, 1, 0, index);
    else
        HEditSetSel(r, 3, index, index);
    if (IsWindow(self))
        SetCapture(self);
}

// The messages of the edit block, EM_ and HEM_; FALSE for what goes on to the default.
BOOL HEditEditMsg(HEditRecord* r, UINT msg, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    HWND self = r->base.hWnd;
    const BOOL focus = (r->base.wFlags & HEF_FOCUS) != 0;
    switch (msg) {
    case EM_GETSEL: {
        LONG low = r->anchor < r->caret ? r->anchor : r->caret, high = r->anchor < r->caret ? r->caret : r->anchor;
        // A pointer below 0x10000 cannot be one: the older form passes 16-bit halves there.
        if (wParam >= 0x10000)
            *(LPDWORD)wParam = (DWORD)low;
        if ((ULONG_PTR)lParam >= 0x10000)
            *(LPDWORD)lParam = (DWORD)high;
        *result = MAKELONG(low, high);
        return TRUE;
    }
    case EM_SETSEL:
        if ((r->base.dwStyle & HES_KEEPSEL) && wParam == 0 && lParam == 0xFFFE) {
            *result = 0;
            return TRUE;
        }
        HEditSetSel(r, 0, (SHORT)wParam, (LONG)lParam);
        *result = 1;
        return TRUE;
    case EM_GETRECT:
    case HEM_GETTEXTRECT:
        if (!lParam) {
            *result = -2;
            return TRUE;
        }
        *(LPRECT)lParam = r->rcText;
        *result = 1;
        return TRUE;
    case EM_SETRECT:
    case EM_SETRECTNP:
        *result = (LRESULT)r->focusBrush; // the text rectangle is set by HEM_SETTEXTRECT
        return TRUE;
    case EM_GETMODIFY:
        *result = SendMessageA(self, HM_GETMODIFY, wParam, lParam);
        return TRUE;
    case EM_SETMODIFY:
        *result = SendMessageA(self, HM_SETMODIFY, wParam, lParam);
        return TRUE;
    case EM_LIMITTEXT:
        *result = HEditLimitText(r, (LONG)wParam);
        return TRUE;
    case EM_CANUNDO:
        *result = 1;
        return TRUE;
    case EM_UNDO:
    case WM_UNDO:
        HEditDisplay(r, focus);
        *result = 1;
        return TRUE;
    case HEM_GETDATA:
        if (focus) {
            HEditCommit(r, r->text);
            if (!IsWindow(self))
                return TRUE;
        }
        if (!lParam)
            *result = -2;
        else if (r->base.wFlags & HEF_EMPTY)
            *result = 0;
        else if (r->dataClass == HCLASS_STRING || r->dataClass == HCLASS_MASKED)
            *result = (SHORT)wParam > 0 ? _fstrnzcpy((LPSTR)lParam, (LPCSTR)r->value, (SHORT)wParam) : 0;
        else {
            // A positive size smaller than the value bounds the copy.
            LONG size = (SHORT)wParam > 0 && (SHORT)wParam < r->dataSize ? (SHORT)wParam : r->dataSize;
            memcpy((LPVOID)lParam, r->value, (size_t)size);
            *result = size;
        }
        return TRUE;
    case HEM_SETDATA:
        *result = HEditSetValue(r, (LPCVOID)lParam);
        return TRUE;
    case HEM_SETTEXTRECT:
        HEditTextRect(r, (BOOL)wParam, (const RECT*)lParam);
        *result = 1;
        return TRUE;
    case HEM_GETLIMIT: *result = r->textLimit; return TRUE;
    case HEM_GETOVERWRITE: *result = GetOverwriteMode(); return TRUE;
    case HEM_SETOVERWRITE:
        SetOverwriteMode((int)wParam);
        HEditMakeCaret(r);
        *result = 1;
        return TRUE;
    case HEM_GETPASSWORDCHAR: *result = (BYTE)r->passwordChar; return TRUE;
    case HEM_SETPASSWORDCHAR:
        if ((char)wParam == 0) {
            *result = -3;
            return TRUE;
        }
        r->passwordChar = (char)wParam;
        *result = 1;
        return TRUE;
    case HEM_GETFIRSTCHAR: *result = r->firstChar; return TRUE;
    case HEM_SETFIRSTCHAR:
        HEditScrollBy(r, (LONG)wParam - r->firstChar);
        *result = 1;
        return TRUE;
    case HEM_COMMIT:
        *result = 0;
        if (wParam)
            *result = HEditCommit(r, r->text);
        if (IsWindow(self) && (!wParam || lParam))
            HEditDisplay(r, (r->base.wFlags & HEF_FOCUS) != 0);
        return TRUE;
    case HEM_GETVALIDATE: *result = (LRESULT)r->pfnValidate; return TRUE;
    case HEM_SETVALIDATE:
        r->pfnValidate = (HEDITVALIDATEPROC)lParam;
        *result = 1;
        return TRUE;
    case HEM_VALIDATE:
        *result = r->pfnValidate ? r->pfnValidate(self, r->base.wId, r->value) : -1;
        return TRUE;
    case HEM_GETSELTEXT:
        if (lParam)
            HEditCopy(r, (LPSTR)lParam, (LONG)(SHORT)wParam);
        *result = 1;
        return TRUE;
    case HEM_INSERTTEXT:
        HEditInsertText(r, (LPCSTR)lParam);
        *result = 1;
        return TRUE;
    case HEM_GETFLAGS: *result = r->base.wFlags; return TRUE;
    case HEM_SETFLAGS:
        if (lParam)
            r->base.wFlags |= (WORD)wParam;
        else
            r->base.wFlags &= (WORD)~wParam;
        *result = 1;
        return TRUE;
    case HEM_GETTEXTPTR: *result = (LRESULT)r->text; return TRUE;
    case HEM_GETMASKPTR: *result = (LRESULT)r->maskText; return TRUE;
    }
    return FALSE;
}

// The window's standard messages; FALSE for what goes on to the default.
BOOL HEditWindowMsg(HEditRecord* r, UINT msg, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    HWND self = r->base.hWnd;
    *result = 0;
    switch (msg) {
    case WM_SIZE:
        SendMessageA(self, HEM_SETTEXTRECT, 0, 0);
        return FALSE;
    case WM_SETFOCUS:
        HEditOnSetFocus(r);
        *result = 1;
        return TRUE;
    case WM_KILLFOCUS:
        HEditOnKillFocus(r);
        return TRUE;
    case WM_SETTEXT:
        *result = HEditOnSetText(r, (LPCSTR)lParam);
        return TRUE;
    case WM_GETTEXT:
        // A size that reads as negative would copy without a bound: nothing is copied.
        *result = (lParam && (int)wParam > 0) ? _fstrnzcpy((LPSTR)lParam, r->text, (int)wParam) : 0;
        return TRUE;
    case WM_GETTEXTLENGTH:
        *result = HEditLength(r);
        return TRUE;
    case WM_PAINT:
    case WM_PRINTCLIENT: // a printed picture takes the path of a paint into a given dc
        return HEditOnPaint(r, (HDC)wParam);
    case WM_ERASEBKGND:
        HEditErase(r, (HDC)wParam, nullptr);
        *result = 1;
        return TRUE;
    case WM_SETCURSOR:
        if ((r->base.wFlags & HEF_FOCUS) && LOWORD(lParam) != HTHSCROLL && LOWORD(lParam) != HTVSCROLL) {
            SetCursor(g_hIBeamCursor);
            *result = 1;
            return TRUE;
        }
        return FALSE;
    case WM_SETFONT:
        r->charHeight = HIWORD(GetBaseUnits((HFONT)wParam));
        SendMessageA(self, HEM_SETTEXTRECT, 0, 0);
        return FALSE;
    case WM_NCCALCSIZE:
        if (!(r->base.dwStyle & HES_FRAME3D))
            return FALSE;
        DefWindowProcA(self, msg, wParam, lParam);
        if (lParam) {
            int inset = (GetWindowLongA(self, GWL_STYLE) & WS_BORDER) ? -1 : -2;
            InflateRect((LPRECT)lParam, inset, inset);
        }
        *result = 1;
        return TRUE;
    case WM_NCPAINT:
        DefWindowProcA(self, msg, wParam, lParam);
        if (r->base.dwStyle & HES_FRAME3D)
            DrawNonClientBorder(self, FALSE);
        *result = 1;
        return TRUE;
    case WM_GETDLGCODE:
        *result = (r->base.dwStyle & HES_WANTKEYS) ? 0x0C : 0x89;
        return TRUE;
    case WM_KEYDOWN:
        HEditOnKeyDown(r, (UINT)wParam);
        return FALSE;
    case WM_KEYUP:
        HEditOnKeyUp(r, (UINT)wParam);
        return FALSE;
    case WM_CHAR:
        HEditOnChar(r, (char)wParam);
        return FALSE;
    case WM_SYSKEYDOWN:
        HEditOnSysKeyDown(r, (UINT)wParam);
        return FALSE;
    case WM_TIMER:
        HEditOnTimer(r, (UINT)wParam);
        return TRUE;
    case WM_HSCROLL:
        HEditOnHScroll(r, wParam);
        return FALSE;
    case WM_MOUSEMOVE:
        if (GetCapture() == self)
            HEditSetSel(r, 1, 0, HEditPixelToChar(r, (SHORT)LOWORD(lParam)));
        return TRUE;
    case WM_LBUTTONDOWN:
        HEditOnButtonDown(r, wParam, lParam);
        return TRUE;
    case WM_LBUTTONUP:
        if (GetCapture() == self)
            ReleaseCapture();
        return TRUE;
    case WM_LBUTTONDBLCLK:
        SendMessageA(self, WM_LBUTTONDOWN, wParam, lParam);
        if (IsWindow(self)) {
            HEditSelectWord(r, HEditPixelToChar(r, (SHORT)LOWORD(lParam))); // the clicked index, even on entering
            HEditTell(r, HEN_DBLCLK);
        }
        return TRUE;
    case WM_CUT:
    case WM_COPY:
        if (r->base.dwStyle & HES_PASSWORD) {
            MessageBeep(0);
            return TRUE;
        }
        if (r->anchor != r->caret) {
            HEditCopy(r, nullptr, 0);
            if (msg == WM_CUT)
                HEditDeleteSel(r);
        }
        *result = 1;
        return TRUE;
    case WM_PASTE:
        HEditPaste(r);
        *result = 1;
        return TRUE;
    case WM_CLEAR:
        // Neither HEF_EMPTY nor HEF_DIRTY: only the value is zeroed.
        memset(r->value, 0, (size_t)r->dataSize);
        HEditSetSel(r, 3, 0, 0xFFFE);
        if (IsWindow(self))
            HEditDisplay(r, (r->base.wFlags & HEF_FOCUS) != 0);
        *result = 1;
        return TRUE;
    case HM_GETMODIFY:
        if ((r->base.wFlags & HEF_FOCUS) && !(r->base.wFlags & HCTLF_MODIFIED) && (r->base.wFlags & HEF_DIRTY))
            HEditCommit(r, r->text);
        return FALSE;
    }
    return FALSE;
}

} // namespace

void HEditRegister()
{
    HRegisterClass(CS_GLOBALCLASS | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, HEditWnd, 0, 4, g_hInstance, nullptr,
                   g_hArrowCursor, nullptr, nullptr, HEDITSS_CLASS);
    HRegisterClass(CS_GLOBALCLASS | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, HEditWnd, 0, 4, g_hInstance, nullptr,
                   g_hArrowCursor, nullptr, nullptr, HEDIT_CLASS);
}

extern "C" LRESULT CALLBACK HEditWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HEditMsgHandler, 0);
}

extern "C" LRESULT CALLBACK HEditMsgHandler(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                            LPBOOL notHandled, LPVOID record)
{
    BOOL dummy = FALSE;
    if (!notHandled)
        notHandled = &dummy;
    *notHandled = FALSE;
    HEditRecord* r = (HEditRecord*)record;
    // The older numbers stand for the edit messages they were; 0x400 packed its two arguments in lParam.
    if (msg >= HEM_OLDFIRST && msg <= HEM_OLDLAST) {
        if (msg == HEM_OLDFIRST)
            return HCtlWndProc(hWnd, EM_GETSEL, LOWORD(lParam), HIWORD(lParam), HEditMsgHandler, 0);
        return HCtlWndProc(hWnd, msg - HEM_OLDOFFSET, wParam, lParam, HEditMsgHandler, 0);
    }
    if (msg == WM_NCCREATE) {
        if (!HEditCreate(hWnd, (const CREATESTRUCTA*)lParam))
            return 0;
        r = (HEditRecord*)SendMessageA(hWnd, HM_GETPTR, 0, 0);
        if (r->dataClass == HCLASS_CLOCK)
            SetTimer(hWnd, kClockTimer, (r->maskText && strchr(r->maskText, 'h')) ? 1000 : 60000, nullptr);
        SendMessageA(hWnd, WM_SETFONT, 0, 0);
        HEditDisplay(r, FALSE);
        *notHandled = TRUE;
        return 0;
    }
    if (!r) {
        *notHandled = TRUE;
        return 0;
    }
    if (msg == WM_NCDESTROY) {
        HEditOnDestroy(r);
        *notHandled = TRUE;
        return 0;
    }
    if (!r->text || !r->value) {
        *notHandled = TRUE; // a retype that found no memory leaves a plain window
        return 0;
    }
    LRESULT result = 0;
    HTypedFields fields = HEditTypedFields(r);
    if (HTypedMsg(&kEditTyped, &fields, hWnd, r, msg, wParam, lParam, &result))
        return result;
    if (HEditEditMsg(r, msg, wParam, lParam, &result))
        return result;
    if (HEditWindowMsg(r, msg, wParam, lParam, &result))
        return result;
    *notHandled = TRUE;
    return 0;
}
