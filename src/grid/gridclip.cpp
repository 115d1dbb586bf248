// The clipboard of an HGrid window: a range as CF_TEXT, cells parted by tabs,
// rows ended by "\r\n", a null cell written "NULL"; and the paste back, which
// repeats a smaller block across the selection.
#include <string.h>

#include "frame/strings.h"
#include "grid/gridpaint.h"
#include "grid/gridwin.h"

namespace {

constexpr SIZE_T kHGClipStep = 1024; // the copy's block grows by this
constexpr SIZE_T kHGClipSlack = 5;   // room kept free at the block's end
constexpr int kHGCellText = 256;     // a cell's text: 255 bytes and the terminator
const char kHGNullText[] = "NULL";

bool Alive(HWND hWnd, const HGridWindow* gw)
{
    return IsWindow(hWnd) && (const HGridWindow*)GetWindowLongA(hWnd, 0) == gw && gw->grid;
}

LONG RecordCount(const HGridData* grid) { return grid->records ? grid->records->count : 0; }

bool Shown(HGridWindow* gw, int col)
{
    HGField* field = HGFieldAt(gw->grid, col);
    return field && !(field->flags & HGF_HIDDEN);
}

// The selected rows in order; negative ends mean every record.
void SelectionRows(HGridWindow* gw, int* first, int* last)
{
    int a = gw->anchorRow, b = gw->curRow;
    if (a < 0 || b < 0) {
        *first = 0;
        *last = (int)RecordCount(gw->grid) - 1;
        return;
    }
    *first = a < b ? a : b;
    *last = a < b ? b : a;
}

// The copy's text, grown as it goes. False once the memory has failed.
struct ClipText {
    HGLOBAL block;
    LPSTR text;
    SIZE_T size;
    SIZE_T length;

    bool Append(LPCSTR piece)
    {
        SIZE_T n = strlen(piece);
        while (length + n > size - kHGClipSlack) {
            GlobalUnlock(block);
            HGLOBAL bigger = GlobalReAlloc(block, size + kHGClipStep, GMEM_MOVEABLE | GMEM_ZEROINIT);
            if (!bigger) {
                text = nullptr;
                return false;
            }
            block = bigger;
            size += kHGClipStep;
            text = (LPSTR)GlobalLock(block);
            if (!text)
                return false;
        }
        memcpy(text + length, piece, n);
        length += n;
        text[length] = 0;
        return true;
    }
};

// The lines of a pasted text: each ends at a run of "\r" and "\n".
struct Lines {
    LPCSTR next;

    // The next line's start and length; false at the end of the text.
    bool Take(LPCSTR* start, size_t* length)
    {
        if (!*next)
            return false;
        *start = next;
        size_t n = strcspn(next, "\r\n");
        *length = n;
        next += n;
        next += strspn(next, "\r\n");
        return true;
    }
};

size_t CountCells(LPCSTR line, size_t length)
{
    size_t cells = 1;
    for (size_t i = 0; i < length; i++)
        cells += line[i] == '\t';
    return cells;
}

// Writes one cell's text: "NULL" exactly empties the cell, any other text is parsed.
bool PasteCell(HGridWindow* gw, int col, int row, LPCSTR text)
{
    if (strcmp(text, kHGNullText) == 0)
        return HGSetCell(gw, col, row, nullptr) != 0;
    if (HGParseCell(gw, col, row, text))
        return true;
    MessageBeep(0);
    return false;
}

// One row of a paste: the line's cells across the columns, again from its
// first cell when it runs out. False when a cell failed or the grid went.
bool PasteRow(HGridWindow* gw, int row, LPCSTR line, int fromCol, int toCol)
{
    HWND hWnd = gw->hWnd;
    LPCSTR cursor = line;
    for (int col = fromCol; col <= toCol; col++) {
        if (!Shown(gw, col))
            continue;
        if (!*cursor && cursor != line)
            cursor = line;
        char cell[kHGCellText];
        _fstrnzcpy(cell, StringParse(cursor, '\t', 0, '"', 0, &cursor), sizeof cell);
        HGField* field = HGFieldAt(gw->grid, col);
        if (field->flags & HGF_READONLY)
            continue;
        if (!PasteCell(gw, col, row, cell) || !Alive(hWnd, gw))
            return false;
    }
    return true;
}

// The shown column `steps` shown columns right of col, or the last one found.
int ShownColAfter(HGridWindow* gw, int col, size_t steps)
{
    for (size_t i = 0; i < steps; i++)
        if (!HGStepShownField(gw, TRUE, &col))
            break;
    return col;
}

} // namespace

void HGCopy(HGridWindow* gw)
{
    if (!gw || !gw->grid || !OpenClipboard(gw->hWnd))
        return;
    ClipText clip = {GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE | GMEM_ZEROINIT, kHGClipStep), nullptr, kHGClipStep,
                     0};
    clip.text = clip.block ? (LPSTR)GlobalLock(clip.block) : nullptr;
    if (!clip.text) {
        if (clip.block)
            GlobalFree(clip.block);
        CloseClipboard();
        return;
    }
    int fromCol, toCol, fromRow, toRow;
    HGSelectionCols(gw, &fromCol, &toCol, TRUE);
    SelectionRows(gw, &fromRow, &toRow);
    if (toRow >= RecordCount(gw->grid)) // a grid without records copies an empty text
        toRow = (int)RecordCount(gw->grid) - 1;
    bool ok = true;
    for (int row = fromRow; ok && row <= toRow; row++) {
        for (int col = fromCol; ok && col <= toCol; col++) {
            if (!Shown(gw, col))
                continue;
            char text[kHGCellText] = "";
            if (HGCellIsNull(gw, col, row))
                strcpy(text, kHGNullText);
            else
                HGFormatCell(gw, col, row, text, kHGCellText - 1, TRUE);
            ok = clip.Append(text) && clip.Append(col < toCol ? "\t" : "\r\n");
        }
    }
    if (!ok) {
        if (clip.text)
            GlobalUnlock(clip.block);
        GlobalFree(clip.block);
        CloseClipboard();
        return;
    }
    GlobalUnlock(clip.block);
    if (!EmptyClipboard() || !SetClipboardData(CF_TEXT, clip.block))
        GlobalFree(clip.block);
    CloseClipboard();
}

void HGPaste(HGridWindow* gw)
{
    if (!gw || !gw->grid)
        return;
    if (gw->grid->style & HGS_READONLY) {
        MessageBeep(0);
        return;
    }
    if (!OpenClipboard(gw->hWnd))
        return;
    // A terminated copy, bounded by the block that the clipboard really holds.
    LPSTR text = nullptr;
    if (HANDLE data = GetClipboardData(CF_TEXT)) {
        SIZE_T size = GlobalSize(data);
        LPCSTR source = (LPCSTR)GlobalLock(data);
        if (source) {
            text = (LPSTR)GlobalAlloc(GPTR, size + 1);
            if (text) {
                memcpy(text, source, size);
                text[size] = 0;
            }
            GlobalUnlock(data);
        }
    }
    CloseClipboard();
    if (!text)
        return;
    DWORD from = 0, to = 0;
    if (!HGPasteText(gw, text, FALSE, &from, &to))
        MessageBeep(0);
    else
        HGPasteText(gw, text, TRUE, &from, &to);
    GlobalFree(text);
}

BOOL HGPasteText(HGridWindow* gw, LPCSTR text, BOOL write, DWORD* from, DWORD* to)
{
    if (!gw || !gw->grid || !text || !from || !to)
        return FALSE;
    if (write) {
        HWND hWnd = gw->hWnd;
        int fromCol = HGCellCol(*from), fromRow = HGCellRow(*from);
        int toCol = HGCellCol(*to), toRow = HGCellRow(*to);
        Lines lines = {text};
        LPCSTR start = nullptr;
        size_t length = 0;
        LPSTR line = nullptr;
        size_t room = 0;
        bool ok = true;
        for (int row = fromRow; ok && row <= toRow; row++) {
            LPCSTR s;
            size_t n;
            if (lines.Take(&s, &n)) { // at the end of the text the last line stays
                start = s;
                length = n;
            }
            if (!start)
                break;
            if (room < length + 1) {
                if (line)
                    GlobalFree(line);
                room = 2 * length + 1;
                line = (LPSTR)GlobalAlloc(GPTR, room);
                if (!line)
                    return FALSE;
            }
            memcpy(line, start, length);
            line[length] = 0;
            ok = PasteRow(gw, row, line, fromCol, toCol);
        }
        if (line)
            GlobalFree(line);
        if (!Alive(hWnd, gw))
            return FALSE;
        HGridInvalidateRange(hWnd, fromCol, fromRow, toCol, toRow);
        HGEditorLoad(gw);
        HGMoveTo(gw, toCol, toRow, FALSE, FALSE);
        if (Alive(hWnd, gw))
            HGMoveTo(gw, fromCol, fromRow, TRUE, TRUE);
        return ok;
    }

    int fromCol, toCol, fromRow, toRow;
    bool severalCols = HGSelectionCols(gw, &fromCol, &toCol, TRUE);
    SelectionRows(gw, &fromRow, &toRow);
    size_t n = 0;
    for (int col = fromCol; col <= toCol; col++)
        n += Shown(gw, col);
    Lines lines = {text};
    LPCSTR start;
    size_t length, count = 0, lastCells = 0;
    while (lines.Take(&start, &length)) {
        lastCells = CountCells(start, length);
        if (severalCols && lastCells != n && lastCells != 1)
            return FALSE;
        count++;
    }
    if (count == 0)
        return FALSE; // no line: nothing to paste
    if (lastCells > 1)
        toCol = ShownColAfter(gw, fromCol, lastCells - 1);
    LONG rows = toRow - fromRow + 1;
    if (count > 1 && ((size_t)rows == count || (rows == 1 && fromRow + (LONG)count <= RecordCount(gw->grid))))
        toRow = fromRow + (int)count - 1;
    *from = HGPackCell(fromCol, fromRow);
    *to = HGPackCell(toCol, toRow);
    return TRUE;
}
