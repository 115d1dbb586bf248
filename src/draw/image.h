// Internal routines of the image loader: the byte-level readers of ".BMP" and
// ".ICO" data, which build without windows, and the GDI makers that turn what
// they read into bitmaps, palettes and icons.
#pragma once
#include "quill32.h"

constexpr int kImageNameSize = 120;      // name buffers of the file readers, terminator included
constexpr DWORD kBitmapFileHeaderSize = 14;
constexpr WORD kBitmapMagic = 0x4D42;    // "BM"
constexpr DWORD kInfoHeaderSize = 40;    // BITMAPINFOHEADER
constexpr DWORD kCoreHeaderSize = 12;    // BITMAPCOREHEADER
constexpr DWORD kIconOddSize = 0x2D8;    // a 32 by 32 16-colour icon that states 728 bytes...
constexpr DWORD kIconFixedSize = 0x2E8;  // ...is read as the 744 it really takes

// Where the readers take their bytes from: a file through the seam, or memory.
struct ImageSource {
    LPVOID context;
    UINT (*read)(LPVOID context, LPVOID buffer, UINT count); // bytes read
    LONG (*seek)(LPVOID context, LONG offset);               // from the start; -1 on failure
    LONG (*size)(LPVOID context);                            // total bytes; -1 if unknown
};

// A block of bytes read as a source.
struct ImageMemory {
    const BYTE* data;
    DWORD size;
    DWORD pos;
};
void ImageSourceMemory(ImageSource* source, ImageMemory* memory);

// Copies name into buffer (kImageNameSize bytes) and appends extension when the
// name holds no "."; FALSE, with buffer empty, when the result would not fit.
BOOL ImageFileName(LPCSTR name, LPCSTR extension, LPSTR buffer);

// A device-independent bitmap in memory starts with its info or core header;
// size is the number of bytes present from dib on. Nothing beyond it is read.

// Colour table bytes: for a header whose first word is 40, biClrUsed times 4 or
// 8, 64, 1024 by bit count; any other header is read as a core header (6, 48,
// 768). 0 when even the header's fields are not present.
WORD DIBColorTableSize(const BYTE* dib, DWORD size);
// Planes 1, bit count 1, 4, 8 or 24, and for an info header no compression or
// RLE4 with 4 bits or RLE8 with 8 bits.
BOOL DIBValidHeader(const BYTE* dib, DWORD size);
// Whether the header, the colour table and the pixels that GDI reads all lie
// within size, with sizes that cannot overflow. Every GDI call on a DIB asks it first.
BOOL DIBCheckBounds(const BYTE* dib, DWORD size);
// Offset of the pixels: header size plus DIBColorTableSize.
DWORD DIBPixelOffset(const BYTE* dib, DWORD size);
// Colours of the palette made from the table: biClrUsed or 2, 16, 256; 0 for none.
int DIBColorCount(const BYTE* dib, DWORD size);
// A LOGPALETTE (version 0x300, count, then red, green, blue, 0 per colour) from
// the colour table, on the seam heap: the caller frees it. Null for no colours,
// a table not present, or no memory.
LPVOID DIBLogPalette(const BYTE* dib, DWORD size);
// Reads a ".BMP" file whole, found as OpenFile (OF_READ) finds it; the size comes
// from a second open of the path found. The block holds everything behind the 14-byte file
// header and *size the number of those bytes. Null for a missing file, a short
// header, a magic other than "BM", a short read or no memory.
LPBYTE DIBReadFile(LPCSTR name, LPDWORD size);
LPBYTE DIBReadSource(ImageSource* source, LPDWORD size);

// The image of an icon file chosen for loading, read and checked, its AND mask
// already turned top-down; biHeight is still the file's, biSizeImage the
// counted total of height times width times (bit count + 1) / 8.
struct IconBlock {
    LPBYTE block;       // seam block of `size` bytes: info header, colours, XOR pixels, AND mask
    DWORD size;
    int width;          // from the directory entry
    int height;
    DWORD pixelOffset;  // XOR pixels, bottom-up
    DWORD maskOffset;   // AND mask, top-down now, rows of width / 8 bytes
};
// Reads the directory, picks the first entry 32 high or 64 wide, reads its
// image and turns its mask. FALSE, with nothing allocated, when there is none.
BOOL IconReadSource(ImageSource* source, IconBlock* icon);
// The same from a file, found as OpenFile (OF_READ, OF_SHARE_DENY_WRITE) finds
// it: name gets ".ICO" when it holds no ".".
BOOL IconReadFileBlock(LPCSTR name, IconBlock* icon);

#ifdef _WIN32
// A palette from the DIB's colour table; null for no colours.
HPALETTE DIBCreatePalette(const BYTE* dib, DWORD size);
// A device-dependent bitmap of the screen from the DIB, through palette if given.
HBITMAP DIBCreateBitmap(const BYTE* dib, DWORD size, HPALETTE palette);
// Reads an icon file into image (type 2); 1 on success, else 0.
BOOL IconReadFile(HImage* image, LPCSTR name);
#endif
