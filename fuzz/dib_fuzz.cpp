// The bitmap readers on arbitrary bytes: a ".BMP" file through the memory
// source, and the same bytes taken as a DIB resource. Where the bounds check
// passes, every byte that GDI would read is touched, so that the sanitizer sees
// any read outside the block.
#include "draw/image.h"
#include "seam.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

namespace {

volatile BYTE g_sink;

DWORD Le32(const BYTE* p) { return (DWORD)p[0] | (DWORD)p[1] << 8 | (DWORD)p[2] << 16 | (DWORD)p[3] << 24; }
WORD Le16(const BYTE* p) { return (WORD)(p[0] | p[1] << 8); }

// What CreateDIBitmap reads of a DIB, computed here independently of the library.
void TouchAsGdi(const BYTE* dib, DWORD size)
{
    bool core = Le32(dib) == 12;
    LONG width = core ? Le16(dib + 4) : (LONG)Le32(dib + 4);
    LONG height = core ? Le16(dib + 6) : (LONG)Le32(dib + 8);
    WORD bits = Le16(dib + (core ? 10 : 14));
    DWORD compression = core ? 0 : Le32(dib + 16);
    DWORD clrUsed = core ? 0 : Le32(dib + 32);
    DWORD colors = bits <= 8 ? (clrUsed && clrUsed < (1u << bits) ? clrUsed : 1u << bits) : 0;
    // GDI reads a header of any size from 40 bytes on by its size field, and the
    // three masks of 16- or 32-bit fields behind it.
    DWORD header = core ? 12 : Le32(dib);
    DWORD masks = compression == 3 && (bits == 16 || bits == 32) ? 12 : 0;
    for (DWORD i = 0; i < header + colors * (core ? 3 : 4) + masks; ++i)
        g_sink = dib[i];
    DWORD pixels = DIBPixelOffset(dib, size);
    bool rle = compression == 1 || compression == 2;
    unsigned long long count = rle ? Le32(dib + 20)
                                           : ((unsigned long long)width * bits + 31) / 32 * 4 *
                                                 (unsigned long long)(height < 0 ? -(long long)height : height);
    for (unsigned long long i = 0; i < count; i += 97)
        g_sink = dib[pixels + i];
    if (count)
        g_sink = dib[pixels + count - 1];
}

void Judge(const BYTE* data, DWORD size)
{
    // An exact copy, so that no slack behind the bytes hides a wrong read.
    BYTE* dib = (BYTE*)malloc(size ? size : 1);
    memcpy(dib, data, size);
    DIBValidHeader(dib, size);
    DIBColorTableSize(dib, size);
    if (LPVOID pal = DIBLogPalette(dib, size)) {
        WORD count = Le16((const BYTE*)pal + 2);
        if (count == 0 || count > 256)
            __builtin_trap();
        SeamFree(pal);
    }
    if (DIBCheckBounds(dib, size))
        TouchAsGdi(dib, size);
    free(dib);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > 1 << 20)
        return 0;
    Judge(data, (DWORD)size);
    ImageMemory memory = {data, (DWORD)size, 0};
    ImageSource source;
    ImageSourceMemory(&source, &memory);
    DWORD read = 0;
    if (LPBYTE block = DIBReadSource(&source, &read)) {
        if (read + kBitmapFileHeaderSize != size)
            __builtin_trap();
        Judge(block, read);
        SeamFree(block);
    }
    return 0;
}
