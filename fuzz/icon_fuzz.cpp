// The icon reader on arbitrary bytes: directory, entry choice, image checks and
// the mask turn. An accepted image has every byte that CreateDIBitmap and
// CreateIcon would read touched, in a copy of exactly the block's size.
#include "draw/image.h"
#include "seam.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

namespace {

volatile BYTE g_sink;

void TouchRange(const BYTE* p, DWORD from, DWORD count)
{
    for (DWORD i = 0; i < count; ++i)
        g_sink = p[from + i];
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > 1 << 20)
        return 0;
    ImageMemory memory = {data, (DWORD)size, 0};
    ImageSource source;
    ImageSourceMemory(&source, &memory);
    IconBlock icon;
    if (!IconReadSource(&source, &icon)) {
        if (icon.block)
            __builtin_trap();
        return 0;
    }
    BYTE* b = (BYTE*)malloc(icon.size);
    memcpy(b, icon.block, icon.size);
    SeamFree(icon.block);
    DWORD bits = b[14] | b[15] << 8;
    DWORD w = icon.width, h = icon.height;
    if (w == 0 || h == 0 || w > 255 || h > 255 || !(bits == 1 || bits == 4 || bits == 8))
        __builtin_trap();
    TouchRange(b, 0, 40 + (1u << bits) * 4 > icon.pixelOffset ? icon.pixelOffset : 40 + (1u << bits) * 4);
    TouchRange(b, icon.pixelOffset, (w * bits + 31) / 32 * 4 * h);  // CreateDIBitmap's XOR pixels
    TouchRange(b, icon.maskOffset, (w + 15) / 16 * 2 * h);          // CreateIcon's AND mask
    free(b);
    return 0;
}
