// Loads a grid description from a module resource of type 300, read within
// the resource's own size.
#include "grid/grid.h"

extern "C" HGridData* QUILLAPI HGLoadResourceGrid(HMODULE module, LPCSTR name)
{
    if (!name)
        return nullptr;
    HRSRC resource = FindResourceA(module, name, MAKEINTRESOURCEA(HGRID_RESOURCE_TYPE));
    if (!resource)
        return nullptr;
    HGLOBAL block = LoadResource(module, resource);
    const BYTE* data = block ? (const BYTE*)LockResource(block) : nullptr;
    if (!data)
        return nullptr;
    HGMemStream stream = {data, data + SizeofResource(module, resource)};
    return HGLoad(HGMemRead, &stream);
}
