// Byte-level readers of ".BMP" and ".ICO" data: headers, colour tables, the
// bounds that GDI will read within, and the icon directory. No windows here.
#include "draw/image.h"
#include "seam.h"
#include <string.h>

namespace {

constexpr DWORD kMaxDimension = 32767;   // GDI's coordinate range
constexpr DWORD kMaxColors = 256;        // no pixel format the library shows has more
constexpr UINT kReadPiece = 32767;       // the file is read in pieces of at most this
constexpr DWORD kIconDirSize = 6;
constexpr DWORD kIconEntrySize = 16;
constexpr DWORD kIconSizeLimit = 0xFFFF; // a larger image is not read
constexpr DWORD kBiRgb = 0, kBiRle8 = 1, kBiRle4 = 2, kBiBitfields = 3;
constexpr DWORD kLargestHeaderSize = 124; // BITMAPV5HEADER
constexpr UINT kOpenRead = 0x0000;          // OpenFile: OF_READ
constexpr UINT kOpenReadDenyWrite = 0x0020; // OF_READ | OF_SHARE_DENY_WRITE

WORD Word(const BYTE* p) { return (WORD)(p[0] | (p[1] << 8)); }
DWORD Dword(const BYTE* p) { return (DWORD)p[0] | ((DWORD)p[1] << 8) | ((DWORD)p[2] << 16) | ((DWORD)p[3] << 24); }
void PutWord(BYTE* p, WORD v) { p[0] = (BYTE)v; p[1] = (BYTE)(v >> 8); }
void PutDword(BYTE* p, DWORD v) { PutWord(p, (WORD)v); PutWord(p + 2, (WORD)(v >> 16)); }

// The fields of either header that the readers use, read from bytes.
struct DibHeader {
    DWORD size;        // the header's own size field
    bool info;         // first word 40: read as BITMAPINFOHEADER, else as core
    LONG width;
    LONG height;
    WORD planes;
    WORD bitCount;
    DWORD compression;
    DWORD sizeImage;
    DWORD clrUsed;
};

// The fields of a header read as BITMAPINFOHEADER, as GDI reads any header of 40 bytes or more.
void ReadInfoFields(const BYTE* dib, DibHeader* h)
{
    h->width = (LONG)Dword(dib + 4);
    h->height = (LONG)Dword(dib + 8);
    h->planes = Word(dib + 12);
    h->bitCount = Word(dib + 14);
    h->compression = Dword(dib + 16);
    h->sizeImage = Dword(dib + 20);
    h->clrUsed = Dword(dib + 32);
}

// False when the fields the header form needs are not all present.
bool ReadHeader(const BYTE* dib, DWORD size, DibHeader* h)
{
    if (!dib || size < kCoreHeaderSize)
        return false;
    memset(h, 0, sizeof *h);
    h->size = Dword(dib);
    h->info = Word(dib) == kInfoHeaderSize;
    if (h->info) {
        if (size < kInfoHeaderSize)
            return false;
        ReadInfoFields(dib, h);
    } else {
        h->width = Word(dib + 4);
        h->height = Word(dib + 6);
        h->planes = Word(dib + 8);
        h->bitCount = Word(dib + 10);
    }
    return true;
}

// Bytes in one row of pixels, padded to 32 bits as DIBs are.
DWORD Stride(DWORD width, DWORD bits) { return (DWORD)(((unsigned long long)width * bits + 31) / 32 * 4); }

UINT MemoryRead(LPVOID context, LPVOID buffer, UINT count)
{
    ImageMemory* m = (ImageMemory*)context;
    DWORD left = m->pos < m->size ? m->size - m->pos : 0;
    if (count > left)
        count = left;
    if (count)
        memcpy(buffer, m->data + m->pos, count);
    m->pos += count;
    return count;
}

LONG MemorySeek(LPVOID context, LONG offset)
{
    ImageMemory* m = (ImageMemory*)context;
    if (offset < 0)
        return -1;
    m->pos = (DWORD)offset; // past the end is allowed, as for a file: reads then give nothing
    return offset;
}

LONG MemorySize(LPVOID context) { return (LONG)((ImageMemory*)context)->size; }

// An open image file; its size is learnt before any read, from the path OpenFile found.
struct ImageFile {
    HFILE handle;
    LONG size;
};

UINT FileRead(LPVOID context, LPVOID buffer, UINT count)
{
    UINT n = SeamFileRead(((ImageFile*)context)->handle, buffer, count);
    return n == (UINT)HFILE_ERROR ? 0 : n;
}

LONG FileSeek(LPVOID context, LONG offset)
{
    return offset < 0 ? -1 : SeamFileSeek(((ImageFile*)context)->handle, offset, 0);
}

LONG FileSize(LPVOID context) { return ((ImageFile*)context)->size; }

void ImageSourceFile(ImageSource* source, ImageFile* file)
{
    source->context = file;
    source->read = FileRead;
    source->seek = FileSeek;
    source->size = FileSize;
}

} // namespace

void ImageSourceMemory(ImageSource* source, ImageMemory* memory)
{
    memory->pos = 0;
    source->context = memory;
    source->read = MemoryRead;
    source->seek = MemorySeek;
    source->size = MemorySize;
}

BOOL ImageFileName(LPCSTR name, LPCSTR extension, LPSTR buffer)
{
    buffer[0] = 0;
    if (!name)
        return FALSE;
    size_t length = strlen(name);
    bool dotted = strchr(name, '.') != nullptr;
    size_t total = length + (dotted ? 0 : strlen(extension));
    if (total >= (size_t)kImageNameSize)
        return FALSE;
    memcpy(buffer, name, length + 1);
    if (!dotted)
        strcat(buffer, extension);
    return TRUE;
}

WORD DIBColorTableSize(const BYTE* dib, DWORD size)
{
    DibHeader h;
    if (!ReadHeader(dib, size, &h))
        return 0;
    if (h.info) {
        if (h.clrUsed)
            return (WORD)(h.clrUsed * 4); // 16 bits, as the table's size always was
        switch (h.bitCount) {
        case 1: return 8;
        case 4: return 64;
        case 8: return 1024;
        }
        return 0;
    }
    switch (h.bitCount) {
    case 1: return 6;
    case 4: return 48;
    case 8: return 768;
    }
    return 0;
}

BOOL DIBValidHeader(const BYTE* dib, DWORD size)
{
    DibHeader h;
    if (!ReadHeader(dib, size, &h))
        return FALSE;
    bool bitsOk = h.bitCount == 1 || h.bitCount == 4 || h.bitCount == 8 || h.bitCount == 24;
    if (h.size == kInfoHeaderSize) {
        if (h.planes != 1 || !bitsOk)
            return FALSE;
        return h.compression == kBiRgb || (h.compression == kBiRle4 && h.bitCount == 4) ||
               (h.compression == kBiRle8 && h.bitCount == 8);
    }
    return h.size == kCoreHeaderSize && h.planes == 1 && bitsOk;
}

DWORD DIBPixelOffset(const BYTE* dib, DWORD size)
{
    if (!dib || size < 4)
        return 0;
    return Dword(dib) + DIBColorTableSize(dib, size);
}

BOOL DIBCheckBounds(const BYTE* dib, DWORD size)
{
    DibHeader h;
    if (!ReadHeader(dib, size, &h))
        return FALSE;
    // GDI reads 12 bytes as a core header and 40 or more as an info header, the
    // later versions up to 124 bytes included, whatever the table size here
    // makes of them; the pixels are passed where DIBPixelOffset puts them.
    bool core = h.size == kCoreHeaderSize;
    if (!core && (h.size < kInfoHeaderSize || h.size > kLargestHeaderSize || h.size > size))
        return FALSE;
    if (!core && !h.info)
        ReadInfoFields(dib, &h);
    switch (h.bitCount) {
    case 1: case 4: case 8: case 16: case 24: case 32: break;
    default: return FALSE;
    }
    if (h.clrUsed > kMaxColors)
        return FALSE;
    bool fields = h.compression == kBiBitfields && (h.bitCount == 16 || h.bitCount == 32);
    // Behind the header GDI reads the colours, or the three masks of bit fields.
    DWORD table = fields ? 12 : 0;
    if (h.bitCount <= 8)
        table = (h.clrUsed ? h.clrUsed : 1u << h.bitCount) * (core ? 3 : 4);
    DWORD offset = h.size + DIBColorTableSize(dib, size);
    if (table > size - h.size || offset > size)
        return FALSE;
    DWORD height = h.height < 0 ? 0u - (DWORD)h.height : (DWORD)h.height;
    if (h.width <= 0 || height == 0 || (DWORD)h.width > kMaxDimension || height > kMaxDimension)
        return FALSE;
    DWORD left = size - offset;
    if (h.compression == kBiRgb || fields)
        return (unsigned long long)Stride((DWORD)h.width, h.bitCount) * height <= left;
    // Run-length pixels: GDI decodes biSizeImage bytes of them, bottom-up only.
    bool rle = (h.compression == kBiRle8 && h.bitCount == 8) || (h.compression == kBiRle4 && h.bitCount == 4);
    return rle && h.height > 0 && h.sizeImage > 0 && h.sizeImage <= left;
}

int DIBColorCount(const BYTE* dib, DWORD size)
{
    DibHeader h;
    if (!ReadHeader(dib, size, &h))
        return 0;
    if (h.info && h.clrUsed)
        return h.clrUsed > kMaxColors ? 0 : (int)h.clrUsed;
    switch (h.bitCount) {
    case 1: return 2;
    case 4: return 16;
    case 8: return 256;
    }
    return 0;
}

LPVOID DIBLogPalette(const BYTE* dib, DWORD size)
{
    int count = DIBColorCount(dib, size);
    if (!count)
        return nullptr;
    DibHeader h;
    ReadHeader(dib, size, &h);
    // RGBQUADs behind an info header, RGBTRIPLEs behind a core one: blue, green, red.
    DWORD start = h.info ? kInfoHeaderSize : kCoreHeaderSize;
    DWORD step = h.info ? 4 : 3;
    if (start + (DWORD)count * step > size)
        return nullptr;
    BYTE* pal = (BYTE*)SeamAlloc((size_t)count * 4 + 8);
    if (!pal)
        return nullptr;
    PutWord(pal, 0x300);
    PutWord(pal + 2, (WORD)count);
    for (int i = 0; i < count; ++i) {
        const BYTE* c = dib + start + (DWORD)i * step;
        BYTE* e = pal + 4 + i * 4;
        e[0] = c[2];
        e[1] = c[1];
        e[2] = c[0];
        e[3] = 0;
    }
    return pal;
}

LPBYTE DIBReadSource(ImageSource* source, LPDWORD size)
{
    *size = 0;
    BYTE fileHeader[kBitmapFileHeaderSize];
    if (source->read(source->context, fileHeader, sizeof fileHeader) != sizeof fileHeader ||
        Word(fileHeader) != kBitmapMagic)
        return nullptr;
    LONG total = source->size(source->context);
    if (total < (LONG)kBitmapFileHeaderSize)
        return nullptr;
    // The block is as large as the file, though the file header is not kept in it.
    LPBYTE block = (LPBYTE)SeamAlloc((size_t)total);
    if (!block)
        return nullptr;
    DWORD want = (DWORD)total - kBitmapFileHeaderSize;
    for (DWORD done = 0; done < want;) {
        UINT piece = want - done < kReadPiece ? (UINT)(want - done) : kReadPiece;
        if (source->read(source->context, block + done, piece) != piece) {
            SeamFree(block);
            return nullptr;
        }
        done += piece;
    }
    *size = want;
    return block;
}

LPBYTE DIBReadFile(LPCSTR name, LPDWORD size)
{
    *size = 0;
    if (!name)
        return nullptr;
    char found[OFS_MAXPATHNAME];
    ImageFile file = {SeamFileSearch(name, kOpenRead, found), -1};
    if (file.handle == HFILE_ERROR)
        return nullptr;
    // A second handle on the path found serves only for the size.
    file.size = SeamFileSizeOf(found);
    if (file.size < 0) {
        SeamFileClose(file.handle);
        return nullptr;
    }
    ImageSource source;
    ImageSourceFile(&source, &file);
    LPBYTE block = DIBReadSource(&source, size);
    SeamFileClose(file.handle);
    return block;
}

BOOL IconReadSource(ImageSource* source, IconBlock* icon)
{
    memset(icon, 0, sizeof *icon);
    BYTE dir[kIconDirSize];
    if (source->read(source->context, dir, sizeof dir) != sizeof dir || Word(dir + 2) != 1)
        return FALSE;
    WORD count = Word(dir + 4);
    // The entry is tested before it is first read; zero-filled, it never matches.
    BYTE entry[kIconEntrySize] = {};
    auto chosen = [&entry] { return entry[1] == 32 || entry[0] == 64; };
    for (WORD read = 0; !chosen() && read < count; ++read) {
        if (source->read(source->context, entry, sizeof entry) != sizeof entry)
            return FALSE; // a cut directory ends the search with nothing found
    }
    if (!chosen())
        return FALSE;
    LONG offset = (LONG)Dword(entry + 12);
    if (source->seek(source->context, offset) < 0)
        return FALSE;
    DWORD bytes = Dword(entry + 8);
    if (bytes >= kIconSizeLimit)
        bytes = 0;
    if (bytes == kIconOddSize)
        bytes = kIconFixedSize;
    if (bytes < kInfoHeaderSize)
        return FALSE;
    SeamBlock block(bytes);
    if (!block.p)
        return FALSE;
    BYTE* b = (BYTE*)block.p;
    source->read(source->context, b, bytes); // a short image reads as zeros behind its end
    DibHeader h;
    ReadHeader(b, bytes, &h);
    if (h.size != kInfoHeaderSize || !h.info || !(h.bitCount == 1 || h.bitCount == 4 || h.bitCount == 8) ||
        !(h.planes == 1 || h.planes == 4) || h.compression != kBiRgb || h.clrUsed > kMaxColors)
        return FALSE;
    DWORD w = entry[0], ht = entry[1];
    // GDI reads the XOR pixels at the header's width: it must be the directory's.
    if (!w || !ht || h.width != (LONG)w)
        return FALSE;
    DWORD pixels = kInfoHeaderSize + DIBColorTableSize(b, bytes);
    DWORD rowLength = w / 8;
    DWORD total = ht * w * (h.bitCount + 1) / 8;
    DWORD xorBytes = Stride(w, h.bitCount) * ht;              // what CreateDIBitmap reads
    DWORD maskRead = (w + 15) / 16 * 2 * ht;                  // what CreateIcon reads
    if (pixels > bytes || total > bytes - pixels || xorBytes > bytes - pixels || total < ht * rowLength)
        return FALSE;
    DWORD mask = pixels + total - ht * rowLength;
    if (maskRead > bytes - mask)
        return FALSE;
    PutDword(b + 20, total); // biSizeImage
    // A DIB's rows run bottom-up and CreateIcon wants the mask top-down.
    BYTE row[32];
    for (DWORD top = mask, bottom = pixels + total - rowLength; rowLength && top < bottom;
         top += rowLength, bottom -= rowLength) {
        memcpy(row, b + top, rowLength);
        memcpy(b + top, b + bottom, rowLength);
        memcpy(b + bottom, row, rowLength);
    }
    icon->block = (LPBYTE)block.release();
    icon->size = bytes;
    icon->width = (int)w;
    icon->height = (int)ht;
    icon->pixelOffset = pixels;
    icon->maskOffset = mask;
    return TRUE;
}

BOOL IconReadFileBlock(LPCSTR name, IconBlock* icon)
{
    memset(icon, 0, sizeof *icon);
    char path[kImageNameSize];
    if (!ImageFileName(name, ".ICO", path))
        return FALSE;
    char found[OFS_MAXPATHNAME];
    ImageFile file = {SeamFileSearch(path, kOpenReadDenyWrite, found), -1};
    if (file.handle == HFILE_ERROR)
        return FALSE;
    ImageSource source;
    ImageSourceFile(&source, &file);
    BOOL ok = IconReadSource(&source, icon);
    SeamFileClose(file.handle);
    return ok;
}
