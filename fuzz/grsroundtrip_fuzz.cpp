// Load arbitrary bytes, save the grid in 0x4847, 0x4849 and 0x484A, and load it
// again: what HGSave wrote must read back to the same grid.
#include "grid/grid.h"
#include <stddef.h>
#include <stdint.h>
#include <vector>

namespace {

LONG CALLBACK Collect(LPVOID context, LPVOID buffer, LONG count)
{
    std::vector<BYTE>* out = (std::vector<BYTE>*)context;
    if (count < 0)
        return -1;
    out->insert(out->end(), (BYTE*)buffer, (BYTE*)buffer + count);
    return 0;
}

void Check(bool ok)
{
    if (!ok)
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    HGMemStream stream = {data, data + size};
    HGridData* grid = HGLoad(HGMemRead, &stream);
    if (!grid)
        return 0;
    for (UINT version : {HGV_GH, HGV_IH, HGV_JH}) {
        std::vector<BYTE> saved;
        Check(HGSave(Collect, &saved, version, grid));
        HGMemStream again = {saved.data(), saved.data() + saved.size()};
        HGridData* back = HGLoad(HGMemRead, &again);
        Check(back != nullptr && again.pos == again.end);
        Check(back->version == version);
        DWORD style = version == HGV_GH ? grid->style | 0x00300000 : grid->style;
        Check(back->style == style);
        Check(back->options == (version == HGV_GH ? 0 : grid->options));
        Check(back->minRows == (version == HGV_GH ? 0 : grid->minRows));
        Check(back->fields->count == grid->fields->count);
        Check(back->records->itemSize == grid->records->itemSize);
        back->version = grid->version;
        back->style = grid->style;
        back->minRows = grid->minRows;
        Check(!HGridChanged(grid, back));
        HGridDestroy(back);
    }
    HGridDestroy(grid);
    return 0;
}
