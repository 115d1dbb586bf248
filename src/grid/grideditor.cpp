// The in-place editors of an HGrid window: one hidden control per field, the
// subclass that sends navigation keys to the grid, and the roads of a value
// between the cell and its editor.
#include <stdio.h>
#include <string.h>

#include "draw/draw.h"
#include "grid/gridpaint.h"
#include "grid/gridwin.h"

namespace {

// Editor kinds by number; the editor's id is 200 + the number.
struct EditorKind {
    char kind;
    LPCSTR className;
    WNDPROC classProc; // the procedure that the subclass passes on to
};
constexpr int kHGEditorIdBase = 200;
const EditorKind kEditorKinds[] = {
    {'e', HEDITSS_CLASS, HEditWnd}, {'l', HLIST_CLASS, HListWnd}, {'c', HCOMB_CLASS, HCombWnd},
    {'d', HCOMB_CLASS, HCombWnd},   {'k', HBUTT_CLASS, HButtWnd},
};
constexpr DWORD kHGListMask = 0xFF7FFFDF; // less WS_BORDER and bit 5
constexpr DWORD kHGListBits = WS_CHILD | 0x11;
constexpr DWORD kHGComboDropBit = 8;
constexpr DWORD kHGEditBits = WS_CHILD | 0x200;
constexpr DWORD kHGEditInPlaceMask = 0xFF7FFFFF;
constexpr DWORD kHGEditBarMask = 0xFF7FF3FC;
constexpr DWORD kHGButtonStyle = WS_CHILD | 0x1C02;
constexpr int kHGButtonType = 2;
// A value passed to or from an editor lies in a zeroed block of at least this
// many bytes: an editor reads and writes its own type's size, which a field
// whose type disagrees with its size would otherwise let run past the cell.
constexpr SIZE_T kHGValueRoom = 256;
// Room for a button editor's specification text.
constexpr SIZE_T kHGButtonText = 256;

SIZE_T ValueBytes(const HGField* f) { return ((SIZE_T)f->size > kHGValueRoom ? (SIZE_T)f->size : kHGValueRoom) + 1; }

int KindNumber(char kind)
{
    for (int i = 0; i < (int)(sizeof kEditorKinds / sizeof kEditorKinds[0]); i++)
        if (kEditorKinds[i].kind == kind)
            return i;
    return -1;
}

bool Alive(HWND hWnd, const HGridWindow* gw)
{
    return IsWindow(hWnd) && (const HGridWindow*)GetWindowLongA(hWnd, 0) == gw && gw->grid;
}

HGField* CurrentField(HGridWindow* gw)
{
    return gw && gw->grid && gw->curCol >= 0 ? HGFieldAt(gw->grid, gw->curCol) : nullptr;
}

// OK and Cancel of the edit bar show while an editor has the focus.
void ShowBarButtons(HGridWindow* gw, bool show)
{
    if (!gw->hBar || !IsWindow(gw->hBar))
        return;
    const int ids[] = {IDOK, IDCANCEL};
    for (int id : ids)
        if (HWND item = GetDlgItem(gw->hBar, id))
            ShowWindow(item, show ? SW_SHOWNA : SW_HIDE);
}

// The editor's window text: its type, with a second pair where the kind takes
// one and the pair is valid, and the mask.
void EditorText(const HGField* f, LPSTR text, size_t size)
{
    char second[4] = "";
    if ((f->editorKind == 'l' || f->editorKind == 'd') && ValidType(f->classLetter2, f->typeLetter2))
        snprintf(second, sizeof second, "%c%c", f->classLetter2, f->typeLetter2);
    LPCSTR format = f->format ? f->format : "";
    if (f->editorKind == 'c' || f->editorKind == 'd')
        snprintf(text, size, "%%%d%%%c%c%s%s", f->height, f->classLetter, f->typeLetter, second, format);
    else
        snprintf(text, size, "%%%c%c%s%s", f->classLetter, f->typeLetter, second, format);
}

DWORD EditorStyle(HGridWindow* gw, HGField* f)
{
    switch (f->editorKind) {
    case 'e':
        if (!(gw->grid->style & HGS_INPLACE))
            return (f->editorStyle & kHGEditBarMask) | kHGEditBits;
        if (f->editorStyle & 2)
            f->editorStyle |= 0x800; // for good
        return (f->editorStyle & kHGEditInPlaceMask) | kHGEditBits;
    case 'c':
        return (f->editorStyle & kHGListMask) | kHGListBits | kHGComboDropBit;
    case 'l':
    case 'd':
        return (f->editorStyle & kHGListMask) | kHGListBits;
    }
    return kHGButtonStyle;
}

// The grid of an editor: its parent, or the parent of the edit bar.
HGridWindow* GridOfEditor(HWND editor)
{
    HWND parent = GetParent(editor);
    HGridWindow* gw = HGWindowOf(parent);
    return gw ? gw : HGWindowOf(GetParent(parent));
}

// What the grid takes from an editor before the editor sees it. Sets *done
// when the message ends here.
LRESULT HGEditorFilter(HGridWindow* gw, char kind, UINT msg, WPARAM wParam, LPARAM lParam, bool* done)
{
    HWND grid = gw->hWnd;
    *done = false;
    switch (msg) {
    case WM_GETDLGCODE:
        *done = true;
        return SendMessageA(grid, WM_GETDLGCODE, wParam, lParam);
    case WM_SETFOCUS:
        SendMessageA(grid, HM_CHILDFOCUS, 0, 0);
        return 0;
    case WM_KILLFOCUS:
        SendMessageA(grid, HM_CHILDBLUR, wParam, 0); // wParam: who takes the focus
        return 0;
    case WM_SYSKEYDOWN: {
        LRESULT r = SendMessageA(grid, msg, wParam, lParam);
        *done = r != 0;
        return r;
    }
    case WM_LBUTTONDBLCLK:
        *done = true;
        HCtlNotify(gw, HGN_DBLCLK);
        return 0;
    case WM_KEYDOWN: {
        bool ctrl = GetKeyState(VK_CONTROL) < 0;
        bool toGrid = false;
        switch (wParam) {
        case VK_TAB:
        case VK_RETURN:
        case VK_ESCAPE:
            toGrid = true;
            break;
        case VK_PRIOR:
        case VK_NEXT:
        case VK_UP:
        case VK_DOWN:
            toGrid = ctrl || (kind != 'l' && kind != 'c');
            break;
        case VK_END:
        case VK_HOME:
            toGrid = ctrl;
            break;
        case VK_LEFT:
        case VK_RIGHT:
            toGrid = kind != 'e' && kind != 'c';
            break;
        }
        if (toGrid) {
            *done = true;
            SendMessageA(grid, msg, wParam, lParam);
        }
        return 0;
    }
    }
    return 0;
}

// The common road of the subclass procedures: the record pointer passes, the
// filter looks, and the class procedure does the rest.
LRESULT EditorMessage(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam, char filterKind, WNDPROC classProc)
{
    if (msg == HM_GETPTR)
        return classProc(hWnd, msg, wParam, lParam);
    HGridWindow* gw = GridOfEditor(hWnd);
    if (gw && gw->grid) {
        bool done = false;
        LRESULT r = HGEditorFilter(gw, filterKind, msg, wParam, lParam, &done);
        if (done || !IsWindow(hWnd))
            return r;
    }
    return classProc(hWnd, msg, wParam, lParam);
}

LRESULT CALLBACK HGEditProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return EditorMessage(hWnd, msg, wParam, lParam, 'e', HEditWnd);
}

LRESULT CALLBACK HGListProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return EditorMessage(hWnd, msg, wParam, lParam, 'e', HListWnd);
}

// A combo takes Return and Escape first, and hands on the focus notices of its
// top child; a drop list filters as "l", an editable combo as "c".
LRESULT ComboMessage(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam, char filterKind)
{
    if (msg == HM_GETPTR)
        return HCombWnd(hWnd, msg, wParam, lParam);
    if (msg == WM_KEYDOWN && (wParam == VK_RETURN || wParam == VK_ESCAPE))
        if (HCombWnd(hWnd, msg, wParam, lParam) || !IsWindow(hWnd))
            return 1;
    if (msg == HM_CHILDFOCUS || msg == HM_CHILDBLUR) {
        LRESULT r = HCombWnd(hWnd, msg, wParam, lParam);
        HGridWindow* gw = IsWindow(hWnd) ? GridOfEditor(hWnd) : nullptr;
        if (gw && gw->grid)
            SendMessageA(gw->hWnd, msg, msg == HM_CHILDBLUR ? (WPARAM)GetFocus() : 0, 0);
        return r;
    }
    return EditorMessage(hWnd, msg, wParam, lParam, filterKind, HCombWnd);
}

LRESULT CALLBACK HGComboProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return ComboMessage(hWnd, msg, wParam, lParam, 'c');
}

LRESULT CALLBACK HGDropListProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return ComboMessage(hWnd, msg, wParam, lParam, 'l');
}

// A check editor has a recessed border of 2 pixels around its client area.
LRESULT CALLBACK HGButtonProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_NCCALCSIZE) {
        RECT* rc = (RECT*)lParam;
        if (rc)
            InflateRect(rc, -2, -2);
        return 0;
    }
    if (msg == WM_NCPAINT) {
        DrawNonClientBorder(hWnd, FALSE); // the recessed border of the library's controls
        return 0;
    }
    return EditorMessage(hWnd, msg, wParam, lParam, 'k', HButtWnd);
}

WNDPROC SubclassProc(char kind)
{
    switch (kind) {
    case 'e':
        return HGEditProc;
    case 'l':
        return HGListProc;
    case 'c':
        return HGComboProc;
    case 'd':
        return HGDropListProc;
    }
    return HGButtonProc;
}

} // namespace

HWND HGEditorCreate(HGridWindow* gw, HGridData* grid, HGField* field)
{
    int number = field ? KindNumber(field->editorKind) : -1;
    if (!gw || !grid || number < 0)
        return nullptr;
    size_t size = (field->format ? strlen(field->format) : 0) + 32;
    if (size < kHGButtonText)
        size = kHGButtonText;
    LPSTR text = (LPSTR)GlobalAlloc(GPTR, size);
    if (!text)
        return nullptr;
    if (field->editorKind == 'k') {
        if (LoadDefTypeText(kHGButtonType, text, (int)size, "") >= 4) {
            text[1] = '4';
            text[3] = field->typeLetter;
        }
    } else {
        EditorText(field, text, size);
    }
    HWND parent = gw->hBar && IsWindow(gw->hBar) ? gw->hBar : gw->hWnd;
    HWND hWnd = CreateWindowExA(0, kEditorKinds[number].className, text, EditorStyle(gw, field) & ~WS_VISIBLE, 0,
                                0, 0, 0, parent, (HMENU)(INT_PTR)(kHGEditorIdBase + number),
                                (HINSTANCE)GetWindowLongA(gw->hWnd, GWL_HINSTANCE), nullptr);
    GlobalFree(text);
    if (hWnd && field->editorKind == 'e' && field->typeLetter == 's')
        SendMessageA(hWnd, EM_LIMITTEXT, field->size > 1 ? field->size - 1 : 0, 0);
    return hWnd;
}

BOOL HGEditorAttach(HGridWindow* gw, HGridData* grid, HGField* field)
{
    HWND hWnd = HGEditorCreate(gw, grid, field);
    if (!hWnd)
        return FALSE;
    if (gw->hFont)
        SendMessageA(hWnd, WM_SETFONT, (WPARAM)gw->hFont, 0);
    field->editor = (HCtlBase*)SendMessageA(hWnd, HM_GETPTR, 0, 0);
    if (field->editor)
        field->editor->hNotify = gw->hWnd; // the grid hears all the editor says
    SubclassWW(hWnd, SubclassProc(field->editorKind));
    return TRUE;
}

void HGEditorShow(HGridWindow* gw)
{
    if (!gw || !gw->grid || !CurrentField(gw) || gw->curRow < 0 ||
        gw->curRow >= (gw->grid->records ? gw->grid->records->count : 0) || !gw->hEditor || !IsWindow(gw->hEditor))
        return;
    RECT rc;
    if (gw->hBar && IsWindow(gw->hBar)) {
        HWND place = GetDlgItem(gw->hBar, IDC_HGRID_BAREDITOR);
        RECT bar;
        GetClientRect(gw->hBar, &bar);
        rc = bar;
        if (place) {
            GetWindowRect(place, &rc);
            MapWindowPoints(nullptr, gw->hBar, (POINT*)&rc, 2);
        }
        rc.right = bar.right - 2;
    } else {
        HGCellRect(gw, gw->curCol, gw->curRow, TRUE, &rc);
    }
    HWND editor = gw->hEditor;
    MoveWindow(editor, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top, TRUE);
    SendMessageA(editor, WM_SIZE, SIZE_RESTORED, MAKELPARAM(rc.right - rc.left, rc.bottom - rc.top));
    if (!IsWindow(editor))
        return;
    gw->wFlags |= HGW_EDITORSHOWN;
    ShowWindow(editor, SW_SHOWNA);
}

void HGEditorHide(HGridWindow* gw)
{
    if (!gw)
        return;
    if (gw->hEditor && IsWindow(gw->hEditor))
        ShowWindow(gw->hEditor, SW_HIDE);
    gw->wFlags &= (WORD)~HGW_EDITORSHOWN;
}

BOOL HGEditorClose(HGridWindow* gw)
{
    if (!gw || !gw->hEditor)
        return FALSE;
    HWND hWnd = gw->hWnd;
    HGEditEnd(gw, TRUE);
    if (!Alive(hWnd, gw))
        return TRUE;
    HGEditorHide(gw);
    gw->hEditor = nullptr;
    return TRUE;
}

BOOL HGEditorLoad(HGridWindow* gw)
{
    HGField* field = CurrentField(gw);
    if (!gw || !gw->hEditor || !IsWindow(gw->hEditor) || !field || field->size < 1)
        return FALSE;
    // A copy of the cell, bounded by the cell layer; null for a null cell.
    LPVOID cell = GlobalAlloc(GPTR, ValueBytes(field));
    if (!cell)
        return FALSE;
    bool isNull = HGCellIsNull(gw, gw->curCol, gw->curRow) || !HGGetCellData(gw->hWnd, gw->curCol, gw->curRow, cell);
    LPARAM data = isNull ? 0 : (LPARAM)cell;
    bool coded = (field->flags & HGF_CODED) != 0;
    switch (field->editorKind) {
    case 'c':
    case 'e':
        SendMessageA(gw->hEditor, HEM_SETDATA, 0, data);
        break;
    case 'd':
    case 'l':
        SendMessageA(gw->hEditor, coded ? HLM_SELECTCODE : HLM_SELECTDATA, 1, data);
        break;
    case 'k':
        SendMessageA(gw->hEditor, HBM_SETDATA, 0, data);
        break;
    }
    GlobalFree(cell);
    return TRUE;
}

BOOL HGEditorCommit(HGridWindow* gw)
{
    HGField* field = CurrentField(gw);
    if (!gw || !gw->hEditor || !IsWindow(gw->hEditor) || !field)
        return FALSE;
    HWND editor = gw->hEditor;
    if (!SendMessageA(editor, HM_GETMODIFY, 0, 0)) // an unchanged editor writes nothing
        return FALSE;
    if (field->size < 1)
        return FALSE;
    LPVOID block = GlobalAlloc(GPTR, ValueBytes(field));
    if (!block)
        return FALSE;
    LRESULT got = 0;
    bool coded = (field->flags & HGF_CODED) != 0;
    switch (field->editorKind) {
    case 'c':
    case 'e':
        got = SendMessageA(editor, HEM_GETDATA, (WPARAM)field->size, (LPARAM)block);
        break;
    case 'd':
    case 'l':
        got = SendMessageA(editor, coded ? HLM_GETCURCODE : HLM_GETCURDATA, (WPARAM)field->size, (LPARAM)block);
        break;
    case 'k':
        got = SendMessageA(editor, HBM_GETDATA, 0, (LPARAM)block);
        break;
    }
    // The editor may have lost its grid on the way.
    if (gw->hEditor == editor && CurrentField(gw) == field)
        HGSetCell(gw, gw->curCol, gw->curRow, got != 0 ? block : nullptr); // 0: no value
    GlobalFree(block);
    return TRUE;
}

void HGEditEnd(HGridWindow* gw, BOOL commit)
{
    if (!gw)
        return;
    HWND hWnd = gw->hWnd;
    if (commit)
        HGEditCommit(gw);
    else
        HGEditCancel(gw);
    if (Alive(hWnd, gw))
        gw->wFlags &= (WORD)~HGW_EDITING;
}

void HGEditCommit(HGridWindow* gw)
{
    if (!gw || !gw->grid)
        return;
    HWND hWnd = gw->hWnd;
    bool editing = (gw->wFlags & HGW_EDITING) != 0;
    HWND focus = GetFocus();
    if (focus && IsChild(hWnd, focus)) {
        SetFocus(hWnd);
        if (!Alive(hWnd, gw))
            return;
    }
    if (editing) {
        int col = gw->curCol, row = gw->curRow;
        HGEditorCommit(gw);
        if (!Alive(hWnd, gw))
            return;
        HGridInvalidateCell(hWnd, col, row);
    }
    ShowBarButtons(gw, false);
}

void HGEditCancel(HGridWindow* gw)
{
    if (!gw || !gw->grid)
        return;
    HWND hWnd = gw->hWnd;
    if (GetFocus() != hWnd) {
        SetFocus(hWnd);
        if (!Alive(hWnd, gw))
            return;
    }
    HGEditorLoad(gw);
    if (Alive(hWnd, gw))
        ShowBarButtons(gw, false);
}

void HGChildFocus(HGridWindow* gw)
{
    if (!gw || !gw->grid)
        return;
    ShowBarButtons(gw, true);
    gw->wFlags |= HGW_EDITING;
    if (!(gw->wFlags & HGW_EDITORSHOWN) || (gw->hEditor && !IsWindowVisible(gw->hEditor)))
        HGEditorShow(gw);
}
