// What the cell layer asks of the grid window's selection, editor and
// painting: the selection clamp and the repaint of a row.
#include "grid/gridwin.h"

namespace {

SHORT Clamp(LONG value, LONG low, LONG high)
{
    if (value > high)
        value = high;
    if (value < low)
        value = low;
    return (SHORT)value;
}

} // namespace

BOOL HGClampSelection(HGridWindow* gw, LONG anchorRecord, LONG curRecord)
{
    if (!gw || !gw->grid)
        return FALSE;
    HGridData* grid = gw->grid;
    LONG fields = grid->fields ? grid->fields->count : 0;
    LONG records = grid->records ? grid->records->count : 0;
    if (grid->frozenCols > fields)
        grid->frozenCols = (SHORT)fields;

    // -1, whole rows, stays: it is inside every list of fields that has one.
    SHORT curCol = fields ? Clamp(gw->curCol, -1, fields - 1) : 0;
    SHORT anchorCol = fields ? Clamp(gw->anchorCol, -1, fields - 1) : 0;
    // A row of -1, whole columns, is left alone.
    SHORT curRow = gw->curRow == -1 ? -1 : Clamp(curRecord - gw->rowBase, 0, records ? records - 1 : 0);
    SHORT anchorRow =
        gw->anchorRow == -1 ? -1 : Clamp(anchorRecord - gw->rowBase, 0, records ? records - 1 : 0);

    bool curChanged = curCol != gw->curCol || curRow != gw->curRow;
    bool anchorChanged = anchorCol != gw->anchorCol || anchorRow != gw->anchorRow;
    gw->curCol = curCol;
    gw->curRow = curRow;
    gw->anchorCol = anchorCol;
    gw->anchorRow = anchorRow;
    if (curChanged && anchorChanged) {
        HGEditorClose(gw);
        gw->wFlags &= (WORD)~HGW_CELLSHOWN;
    }
    if (!curChanged && !anchorChanged)
        return FALSE;
    HGUpdateBar(gw);
    if (!(grid->style & HGS_INPLACE))
        HGridInvalidateRange(gw->hWnd, gw->anchorCol, gw->anchorRow, gw->curCol, gw->curRow);
    return TRUE;
}

void HGInvalidateRow(HGridWindow* gw, int row)
{
    if (gw)
        HGridInvalidateRange(gw->hWnd, -1, row, -1, row); // the whole strip, row header included
}
