// HEdit's typed input: the road of a key, deletions, the traffic between the
// display text and the value, the commit with its data link, and the notifications.
#include "edit/hedit.h"
#include "frame/strings.h"
#include "typed/format.h"
#include "typed/keys.h"

#include <ctype.h>
#include <string.h>

namespace {

bool HEditIsShift() { return GetKeyState(VK_SHIFT) < 0; }
bool HEditIsCtrl() { return GetKeyState(VK_CONTROL) < 0; }

// Copies a stored value of the field's type, bounded by the value block.
void HEditCopyValue(HEditRecord* r, LPVOID target, LPCVOID source)
{
    if (!target || !source || target == source)
        return;
    if (r->dataClass == HCLASS_STRING || r->dataClass == HCLASS_MASKED)
        _fstrnzcpy((LPSTR)target, (LPCSTR)source, r->dataSize);
    else
        memcpy(target, source, (size_t)r->dataSize);
}

// ParseData speaks to a validator of two arguments; the field's own takes its value as a third.
int CALLBACK HEditValidateThunk(HWND hWnd, LONG id)
{
    HEditRecord* r = (HEditRecord*)SendMessageA(hWnd, HM_GETPTR, 0, 0);
    if (!r || !r->pfnValidate)
        return 0;
    return r->pfnValidate(hWnd, id, r->value);
}

// Turns drawing off while a run of edits goes on; a hidden window is left alone,
// since turning drawing on again would show it.
struct HEditNoRedraw {
    HWND hWnd;
    BOOL active;
    explicit HEditNoRedraw(HEditRecord* r) : hWnd(r->base.hWnd), active(IsWindowVisible(r->base.hWnd))
    {
        if (active)
            SendMessageA(hWnd, WM_SETREDRAW, FALSE, 0);
    }
    void On()
    {
        if (active && IsWindow(hWnd))
            SendMessageA(hWnd, WM_SETREDRAW, TRUE, 0);
        active = FALSE;
    }
    ~HEditNoRedraw() { On(); }
};

// The steps after a deletion: the caret lands at anchor + step.
void HEditAfterDelete(HEditRecord* r, LONG step)
{
    if (!HEditTell(r, HEN_UPDATE))
        return;
    HEditUpdateScroll(r);
    HEditInvalidateFrom(r, r->anchor, 1);
    HEditSetSel(r, 3, r->anchor + step, r->anchor + step);
    r->base.wFlags |= HEF_DIRTY;
    HEditTell(r, HEN_CHANGE);
}

LONG HEditClampedCaret(HEditRecord* r)
{
    LONG length = HEditLength(r);
    if (r->caret > length)
        r->caret = length;
    if (r->anchor > length)
        r->anchor = length;
    return r->caret;
}

// Places a character of a class s field; FALSE if it is refused.
BOOL HEditStringKey(HEditRecord* r, char ch)
{
    const BOOL overwrite = GetOverwriteMode() && !(r->base.wFlags & HEF_REPLACING);
    LONG length = HEditLength(r), caret = HEditClampedCaret(r);
    if (length >= r->textLimit && (!overwrite || caret >= length)) {
        if (r->base.wFlags & HEF_LIMITED) {
            HEditTell(r, HEN_MAXTEXT);
            return FALSE;
        }
        // Growing can fail; the key is then refused like one over a limit.
        LONG limit = r->textLimit + 32;
        if (limit > 0x7FFE || !HEditGrow(r, limit + 1))
            return FALSE;
        r->textLimit = limit;
    }
    const BOOL scrolls = HEditScrolls(r);
    LPSTR saved = scrolls ? nullptr : HStrDup(r->text);
    if (overwrite && caret < length) {
        r->text[caret] = ch;
    } else {
        memmove(r->text + caret + 1, r->text + caret, (size_t)(length - caret + 1));
        r->text[caret] = ch;
    }
    if (!scrolls) {
        // A field without scrolling takes only what fits.
        LONG width = HEditTextWidth(r, r->text, 0, -1);
        BOOL fits = width < r->rcText.right - r->rcText.left;
        if (!fits && saved)
            _fstrnzcpy(r->text, saved, r->textSize);
        if (saved)
            GlobalFree(saved);
        return fits;
    }
    return TRUE;
}

} // namespace

BOOL HEditTell(HEditRecord* r, UINT code)
{
    HWND self = r->base.hWnd;
    HCtlNotify(r, code);
    return IsWindow(self);
}

void HEditDisplay(HEditRecord* r, BOOL editing)
{
    WORD& f = r->base.wFlags;
    f = editing ? (WORD)(f & ~HEF_DISPLAY) : (WORD)(f | HEF_DISPLAY);
    BOOL right = editing ? (r->base.dwStyle & HES_EDITRIGHT) != 0 : (r->base.dwStyle & HES_RIGHT) != 0;
    f = right ? (WORD)(f | HEF_RIGHT) : (WORD)(f & ~HEF_RIGHT);
    f = (!editing && (r->base.dwStyle & HES_CENTER)) ? (WORD)(f | HEF_CENTER) : (WORD)(f & ~HEF_CENTER);
    if (editing || !(f & HEF_EMPTY)) {
        if (r->dataLink)
            HEditCopyValue(r, r->value, r->dataLink);
        BOOL negative = FALSE;
        r->text[0] = 0;
        FormatData(r->value, r->dataClass, r->dataType, r->maskText, r->text, r->textSize, &negative, editing);
        r->text[r->textSize - 1] = 0;
        f = negative ? (WORD)(f | HEF_ALTCOLOR) : (WORD)(f & ~HEF_ALTCOLOR);
    } else {
        _fstrnzcpy(r->text, r->emptyText ? r->emptyText : "", r->textSize);
    }
    HEditClampedCaret(r);
    HEditUpdateScroll(r);
    InvalidateRect(r->base.hWnd, nullptr, TRUE);
}

LRESULT HEditSetValue(HEditRecord* r, LPCVOID source)
{
    if (!r)
        return -2;
    LPVOID zeroed = nullptr;
    if (!source) {
        r->base.wFlags |= HEF_EMPTY;
        zeroed = GlobalAlloc(GPTR, (SIZE_T)r->dataSize);
        if (!zeroed)
            return -5;
        source = zeroed;
    } else {
        r->base.wFlags &= (WORD)~HEF_EMPTY;
    }
    if (r->dataClass == HCLASS_STRING) {
        LONG length = (LONG)strlen((LPCSTR)source);
        if (length + 1 > r->dataSize) {
            if (length > 0x7FFE - 33 || !HEditGrow(r, length + 33)) {
                if (zeroed)
                    GlobalFree(zeroed);
                return -5;
            }
            if (!(r->base.wFlags & HEF_LIMITED))
                r->textLimit = r->textSize - 1;
        }
    }
    HEditCopyValue(r, r->value, source);
    HWND self = r->base.hWnd;
    if (r->pfnValidate) {
        r->pfnValidate(self, r->base.wId, r->value); // its answer is not looked at
        if (!IsWindow(self)) {
            if (zeroed)
                GlobalFree(zeroed);
            return 1;
        }
    }
    if (r->dataLink && r->dataLink != source)
        HEditCopyValue(r, r->dataLink, source);
    const BOOL focus = (r->base.wFlags & HEF_FOCUS) != 0;
    HEditDisplay(r, focus);
    HEditSetSel(r, 3, 0, focus ? 0xFFFE : 0);
    if (IsWindow(self))
        r->base.wFlags &= (WORD)~(HEF_DIRTY | HCTLF_MODIFIED);
    if (zeroed)
        GlobalFree(zeroed);
    return 1;
}

int HEditCommit(HEditRecord* r, LPCSTR text)
{
    if (!(r->base.wFlags & HEF_DIRTY) || !text)
        return 0;
    LPVOID scratch = nullptr;
    if (!(r->base.wFlags & HCTLF_MODIFIED)) {
        scratch = GlobalAlloc(GPTR, (SIZE_T)r->dataSize);
        if (scratch)
            memcpy(scratch, r->value, (size_t)r->dataSize);
    }
    // The text may be the display buffer, which a validator could change: parse a copy.
    LPSTR copy = HStrDup(text);
    HWND self = r->base.hWnd;
    int result = HParseDataN(self, r->value, r->dataSize, r->dataClass, r->dataType, r->maskText,
                             copy ? copy : "", r->pfnValidate ? HEditValidateThunk : nullptr);
    if (copy)
        GlobalFree(copy);
    if (!IsWindow(self)) {
        if (scratch)
            GlobalFree(scratch);
        return result;
    }
    if (scratch) {
        if (r->base.wFlags & HEF_EMPTY) {
            if (result)
                memcpy(r->value, scratch, (size_t)r->dataSize); // an empty field that failed stays empty
            else
                r->base.wFlags |= HCTLF_MODIFIED;
        } else if (HDataDiffers(scratch, r->value, r->dataClass, r->dataType)) {
            r->base.wFlags |= HCTLF_MODIFIED;
        } else {
            r->base.wFlags &= (WORD)~HCTLF_MODIFIED;
        }
        GlobalFree(scratch);
    }
    if (r->dataLink)
        HEditCopyValue(r, r->dataLink, r->value);
    if (result == 0)
        r->base.wFlags &= (WORD)~(HEF_DIRTY | HEF_EMPTY);
    return result;
}

void HEditDeleteOne(HEditRecord* r, BOOL keep)
{
    if (r->anchor != r->caret) {
        HEditDeleteSel(r);
        return;
    }
    LONG caret = HEditClampedCaret(r);
    int step = HDataDeleteCharN(r->dataClass, r->dataType, r->text, r->maskText, caret, r->textSize);
    HEditAfterDelete(r, keep ? step : 0);
}

void HEditDeleteSel(HEditRecord* r)
{
    HEditClampedCaret(r);
    if (r->anchor == r->caret)
        return;
    HWND self = r->base.hWnd;
    LONG low = r->anchor < r->caret ? r->anchor : r->caret;
    LONG count = (r->anchor < r->caret ? r->caret : r->anchor) - low;
    WORD quiet = r->base.wFlags & HCTLF_NONOTIFY;
    HEditNoRedraw redraw(r);
    r->base.wFlags |= HCTLF_NONOTIFY;
    HEditSetSel(r, 3, low, low);
    // Literals are stepped over: a range over a mask keeps them and clears the rest.
    for (LONG i = 0; i < count && IsWindow(self); ++i)
        HEditDeleteOne(r, TRUE);
    if (!IsWindow(self))
        return;
    if (r->dataClass != HCLASS_CALC)
        HEditSetSel(r, 3, low, low);
    r->base.wFlags = (WORD)((r->base.wFlags & ~HCTLF_NONOTIFY) | quiet);
    if (!HEditTell(r, HEN_UPDATE))
        return;
    redraw.On();
    HEditUpdateScroll(r);
    InvalidateRect(self, nullptr, TRUE);
    r->base.wFlags |= HEF_DIRTY;
    HEditTell(r, HEN_CHANGE);
}

void HEditOnChar(HEditRecord* r, char ch)
{
    if ((r->base.wFlags & HEF_SKIPCHAR) || ch == '\t' || ch == '\r' || ch == 0x1B) {
        r->base.wFlags &= (WORD)~HEF_SKIPCHAR;
        return;
    }
    HWND self = r->base.hWnd;
    if (r->anchor != r->caret) {
        r->base.wFlags |= HEF_REPLACING;
        LRESULT quiet = SendMessageA(self, HM_GETNONOTIFY, 0, 0);
        SendMessageA(self, HM_SETNONOTIFY, TRUE, 0);
        HEditDeleteSel(r);
        if (!IsWindow(self))
            return;
        SendMessageA(self, HM_SETNONOTIFY, quiet != 0, 0);
    }
    if (r->base.dwStyle & HES_UPPERCASE)
        ch = (char)toupper((unsigned char)ch);
    else if (r->base.dwStyle & HES_LOWERCASE)
        ch = (char)tolower((unsigned char)ch);
    LONG caret = HEditClampedCaret(r);
    if (ch == '\b') {
        if (caret > 0)
            HEditSetSel(r, 3, caret - 1, caret - 1);
        int step = HDataDeleteCharN(r->dataClass, r->dataType, r->text, r->maskText, r->caret, r->textSize);
        HEditAfterDelete(r, r->dataClass == HCLASS_CALC ? step : 0);
        if (IsWindow(self))
            r->base.wFlags &= (WORD)~HEF_REPLACING;
        return;
    }
    const unsigned char u = (unsigned char)ch;
    if (u < 0x80 && !isalnum(u) && !ispunct(u) && ch != ' ') {
        r->base.wFlags &= (WORD)~HEF_REPLACING;
        return; // control characters are dropped in silence
    }
    int advance = 0, repaint = 0;
    BOOL accepted;
    if (r->dataClass == HCLASS_STRING) {
        accepted = HEditStringKey(r, ch);
        advance = repaint = accepted ? 1 : 0;
        if (!IsWindow(self))
            return;
    } else {
        accepted = HDataTypeCharN(r->dataClass, r->dataType, r->text, r->maskText, caret, ch, &advance, &repaint,
                                  r->textSize) == 0;
    }
    if (!accepted) {
        MessageBeep(0);
    } else {
        if (!HEditTell(r, HEN_UPDATE))
            return;
        LONG target;
        if (r->dataClass == HCLASS_BOOL) {
            // The boolean is read back from the text and shown in its own words.
            WORD truth = (WORD)HBoolParse(r->maskText, r->text);
            BOOL negative = FALSE;
            FormatData(&truth, HCLASS_BOOL, HTYPE_WORD, r->maskText, r->text, r->textSize, &negative, TRUE);
            r->base.wFlags |= HEF_ALTCOLOR; // whatever the word: the next display puts the out flag back
            HEditUpdateScroll(r);
            InvalidateRect(self, nullptr, TRUE);
            target = 0;
        } else {
            HEditUpdateScroll(r);
            HEditInvalidateFrom(r, caret, repaint);
            target = caret + advance;
            if (target < 0)
                target = 0;
        }
        HEditSetSel(r, 3, target, target);
        if (!IsWindow(self))
            return;
        r->base.wFlags |= HEF_DIRTY;
        if (!HEditTell(r, HEN_CHANGE))
            return;
    }
    r->base.wFlags &= (WORD)~HEF_REPLACING;
}

void HEditInsertText(HEditRecord* r, LPCSTR text)
{
    if (!text)
        return;
    HWND self = r->base.hWnd;
    // The caller's text may change while the receivers of each character run.
    LPSTR copy = HStrDup(text);
    if (!copy)
        return;
    HEditDeleteSel(r);
    if (IsWindow(self)) {
        HEditNoRedraw redraw(r);
        for (LPCSTR p = copy; *p && IsWindow(self); ++p)
            HEditOnChar(r, *p);
        redraw.On();
        if (IsWindow(self))
            InvalidateRect(self, nullptr, TRUE);
    }
    GlobalFree(copy);
}

void HEditPaste(HEditRecord* r)
{
    if (!OpenClipboard(r->base.hWnd))
        return;
    LPSTR copy = nullptr;
    HANDLE data = GetClipboardData(CF_TEXT);
    if (data) {
        LPCSTR p = (LPCSTR)GlobalLock(data);
        SIZE_T size = GlobalSize(data);
        if (p && size) {
            // The clipboard's text is taken no further than its block.
            size_t length = strnlen(p, (size_t)size);
            copy = (LPSTR)GlobalAlloc(GPTR, length + 1);
            if (copy)
                memcpy(copy, p, length);
        }
        GlobalUnlock(data);
    }
    CloseClipboard();
    if (copy) {
        HEditInsertText(r, copy);
        GlobalFree(copy);
    }
}

void HEditOnKeyDown(HEditRecord* r, UINT key)
{
    if (r->base.wFlags & HEF_DISPLAY)
        return;
    HWND self = r->base.hWnd;
    const bool shift = HEditIsShift(), ctrl = HEditIsCtrl();
    LONG target;
    switch (key) {
    case VK_TAB:
        SendMessageA(GetParent(self), WM_NEXTDLGCTL, shift, 0);
        if (IsWindow(self))
            HEditTell(r, shift ? HN_BACKTAB : HN_TAB);
        return;
    case VK_RETURN: HEditTell(r, HN_ENTER); return;
    case VK_ESCAPE: HEditTell(r, HN_ESCAPE); return;
    case VK_F1:
        // Both always: the field is left as if escaped.
        if (HEditTell(r, HN_HELP))
            HEditTell(r, HN_ESCAPE);
        return;
    case VK_F2:
        HideCaret(self);
        HEditCommit(r, r->text);
        if (IsWindow(self))
            HEditDisplay(r, FALSE);
        return;
    case VK_HOME: target = 0; break;
    case VK_END: target = 0x7FFF; break;
    case VK_LEFT:
    case VK_UP: target = ctrl ? HEditPrevWord(r->text, r->caret) : r->caret - 1; break;
    case VK_RIGHT:
    case VK_DOWN: target = ctrl ? HEditNextWord(r->text, r->caret) : r->caret + 1; break;
    case VK_INSERT:
        if (shift)
            SendMessageA(self, WM_PASTE, 0, 0);
        else if (ctrl)
            SendMessageA(self, WM_COPY, 0, 0);
        else {
            SetOverwriteMode(!GetOverwriteMode());
            HEditMakeCaret(r);
        }
        return;
    case VK_DELETE:
        if (shift)
            SendMessageA(self, WM_CUT, 0, 0);
        else if (r->anchor != r->caret)
            HEditDeleteSel(r);
        else
            HEditDeleteOne(r, TRUE);
        return;
    case 'C':
        if (ctrl) {
            r->base.wFlags |= HEF_SKIPCHAR;
            SendMessageA(self, WM_COPY, 0, 0);
        }
        return;
    case 'V':
        if (ctrl)
            SendMessageA(self, WM_PASTE, 0, 0);
        return;
    case 'X':
        if (ctrl)
            SendMessageA(self, WM_CUT, 0, 0);
        return;
    case 'Z':
        if (ctrl)
            HEditOnSysKeyDown(r, VK_BACK);
        return;
    default:
        return;
    }
    if (target < 0)
        target = 0;
    if (shift)
        HEditSetSel(r, 1, 0, target);
    else
        HEditSetSel(r, 3, target, target);
}

void HEditOnKeyUp(HEditRecord* r, UINT key)
{
    if (key != VK_F2 || !(r->base.wFlags & HEF_DISPLAY))
        return;
    ShowCaret(r->base.hWnd);
    HEditDisplay(r, (r->base.wFlags & HEF_FOCUS) != 0);
    HEditSetSel(r, 3, r->anchor, r->caret);
}

void HEditOnSysKeyDown(HEditRecord* r, UINT key)
{
    // Alt+Backspace, like Ctrl+Z: the edit is thrown away and all is selected.
    if (key != VK_BACK)
        return;
    HEditDisplay(r, (r->base.wFlags & HEF_FOCUS) != 0);
    HEditSetSel(r, 3, 0, -1);
}
