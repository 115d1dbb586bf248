// HGLoad of arbitrary bytes through the bounded memory reader, then the
// operations a loaded grid meets next: duplication, comparison, re-laying, saving.
#include "grid/grid.h"
#include <stddef.h>
#include <stdint.h>

namespace {

LONG CALLBACK Discard(LPVOID, LPVOID, LONG count) { return count < 0 ? -1 : 0; }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    HGMemStream stream = {data, data + size};
    HGridData* grid = HGLoad(HGMemRead, &stream);
    if (!grid)
        return 0;
    HGridData* copy = HGridDup(grid);
    if (copy && HGridChanged(grid, copy))
        __builtin_trap();
    // A record, then fields moved, inserted and taken out, as the window side does.
    HLListAdd(grid->records, nullptr);
    HLListAdd(grid->records, nullptr);
    int count = grid->fields->count;
    if (count > 1)
        HGMoveFld(grid, 0, count - 1);
    HGField* field = HGFieldCreate("x", 0, 2, 0, 's', 's', 0, 0, 3, 'e', 0, "");
    if (HGInsertFld(grid, field, count / 2) < 0)
        HGFieldDestroy(field);
    HGridWindow window = {};
    window.grid = grid;
    HGRemoveFld(&window, 0);
    HGCreateFldMap(copy);
    HGFixOffsets(copy);
    HGSave(Discard, nullptr, grid->version, grid);
    HGridDestroy(copy);
    HGridDestroy(grid);
    return 0;
}
