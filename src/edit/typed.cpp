// The typed message block 0x464 to 0x470, answered alike for HEdit, HList, and
// the parts that HButt and HGrid take; each class names its fields and its own steps.
#include "edit/typed.h"
#include "frame/strings.h"

namespace {

// Swaps a brush; HList and HGrid repaint first when asked, HEdit and HButt never.
LRESULT HTypedSwapBrush(const HTypedClass* cls, HWND hWnd, HBRUSH* slot, WPARAM wParam, LPARAM lParam)
{
    if (!slot)
        return 0;
    if (lParam && (cls->kind == HTYPED_LIST || cls->kind == HTYPED_GRID))
        InvalidateRect(hWnd, nullptr, TRUE);
    HBRUSH old = *slot;
    *slot = (HBRUSH)wParam;
    return (LRESULT)old;
}

LRESULT HTypedSetMask(const HTypedClass* cls, const HTypedFields* f, HWND hWnd, LPVOID record, WPARAM wParam,
                      LPARAM lParam)
{
    LPCSTR mask = (LPCSTR)lParam;
    if (!mask)
        return cls->kind == HTYPED_EDIT ? -2 : 0;
    if (f->dataClass && *f->dataClass == HCLASS_STRING)
        return 0;
    if (cls->setMask)
        return cls->setMask(record, (BOOL)wParam, mask);
    if (!f->maskText)
        return 0;
    HStrReplace(f->maskText, mask);
    if (wParam)
        InvalidateRect(hWnd, nullptr, TRUE);
    return 1;
}

} // namespace

HBRUSH HTypedDefaultFocusBrush()
{
    return (HBRUSH)GetStockObject(GetSysColor(COLOR_WINDOW) == 0xffffff ? LTGRAY_BRUSH : WHITE_BRUSH);
}

BOOL HTypedMsg(const HTypedClass* cls, const HTypedFields* f, HWND hWnd, LPVOID record, UINT msg, WPARAM wParam,
               LPARAM lParam, LRESULT* result)
{
    if (!cls || !f || !result)
        return FALSE;
    const bool typed = cls->kind == HTYPED_EDIT || cls->kind == HTYPED_LIST;
    switch (msg) {
    case HM_GETBACKBRUSH:
        if (!f->backBrush) return FALSE;
        *result = (LRESULT)*f->backBrush;
        return TRUE;
    case HM_SETBACKBRUSH:
        if (!f->backBrush) return FALSE;
        *result = HTypedSwapBrush(cls, hWnd, f->backBrush, wParam, lParam);
        return TRUE;
    case HM_GETFOCUSBRUSH:
        if (!typed || !f->focusBrush) return FALSE;
        *result = (LRESULT)*f->focusBrush;
        return TRUE;
    case HM_SETFOCUSBRUSH:
        if (!typed || !f->focusBrush) return FALSE;
        *result = HTypedSwapBrush(cls, hWnd, f->focusBrush, wParam, lParam);
        return TRUE;
    case HM_GETMASK: {
        if (!typed) return FALSE;
        // The size is a signed 16-bit count; nothing is copied without room for the terminator.
        SHORT size = (SHORT)wParam;
        LPSTR buffer = (LPSTR)lParam;
        *result = (buffer && size > 0) ? _fstrnzcpy(buffer, (f->maskText && *f->maskText) ? *f->maskText : "", size) : 0;
        return TRUE;
    }
    case HM_SETMASK:
        if (!typed) return FALSE;
        *result = HTypedSetMask(cls, f, hWnd, record, wParam, lParam);
        return TRUE;
    case HM_GETCOLOR: {
        if (cls->kind == HTYPED_GRID || !f->colorNormal) return FALSE;
        COLORREF* slot = (wParam && cls->kind != HTYPED_BUTT && f->colorAlt) ? f->colorAlt : f->colorNormal;
        *result = (LRESULT)*slot;
        return TRUE;
    }
    case HM_SETCOLOR: {
        if (cls->kind == HTYPED_GRID || !f->colorNormal) return FALSE;
        COLORREF* slot = (wParam && cls->kind != HTYPED_BUTT && f->colorAlt) ? f->colorAlt : f->colorNormal;
        *slot = (COLORREF)lParam;
        InvalidateRect(hWnd, nullptr, FALSE);
        *result = 1;
        return TRUE;
    }
    case HM_GETCLASS:
        if (!typed || !f->dataClass) return FALSE;
        *result = (LRESULT)(signed char)*f->dataClass;
        return TRUE;
    case HM_GETTYPE:
        if (!typed || !f->dataType) return FALSE;
        *result = (LRESULT)(signed char)*f->dataType;
        return TRUE;
    case HM_GETDATASIZE:
        if (!typed || !cls->dataSize) return FALSE;
        *result = cls->dataSize(record, (SHORT)wParam);
        return TRUE;
    case HM_GETDATALINK:
        // HEdit has no such case: the message falls to the default procedure.
        if (cls->kind != HTYPED_LIST || !f->dataLink) return FALSE;
        *result = (LRESULT)*f->dataLink;
        return TRUE;
    case HM_SETDATALINK:
        if (!typed || !cls->setDataLink) return FALSE;
        *result = cls->setDataLink(record, wParam, (LPVOID)lParam);
        return TRUE;
    }
    return FALSE;
}
