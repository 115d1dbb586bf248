// Image loading: names to HImages through the process-wide cache, bitmap and
// icon resources, and the GDI side of the ".BMP" and ".ICO" readers.
#include "draw/image.h"
#include "frame/frame.h"
#include "seam.h"
#include <string.h>

namespace {

// One cached image, shared by every HImage that holds its handle.
struct HImageCacheEntry {
    HImage image;             // the image
    LONG refCount;            // shares; 1 when made
    HImageCacheEntry* next;   // next entry, null at the end; new entries go there
    HINSTANCE module;         // where it came from: the module asked for, the library's, or 0 for a file
    char name[4];             // as asked for; the allocation runs on as far as the name needs
};
constexpr UINT kCacheEntryFlags = GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_SHARE; // 0x2042
constexpr DWORD kCacheEntryExtra = 28;

HImageCacheEntry* g_imageCache; // head of the cache; no lock, one thread as everywhere

// Equal but for the case of A to Z; no other letters fold.
bool ImageNameEquals(LPCSTR a, LPCSTR b)
{
    auto fold = [](char c) { return (c >= 'a' && c <= 'z') ? (char)(c - 'a' + 'A') : c; };
    for (; *a && *b; ++a, ++b)
        if (fold(*a) != fold(*b))
            return false;
    return *a == *b;
}

// The one test that chooses how a bitmap resource is read: bit 31 of
// GetVersion is set on the Windows 3.x and 9x line, clear on Windows NT.
bool BitmapResourceAsDIB() { return !(GetVersion() & 0x80000000); }

// Reads a bitmap resource of module into image; the handle stays 0 on failure.
void LoadBitmapResource(HImage* image, HINSTANCE module, LPCSTR name)
{
    if (!BitmapResourceAsDIB()) {
        image->handle = LoadBitmapA(module, name);
        image->type = HIMAGE_BITMAP;
        image->palette = nullptr;
        return;
    }
    HRSRC found = FindResourceA(module, name, (LPCSTR)RT_BITMAP);
    if (!found)
        return;
    DWORD size = SizeofResource(module, found);
    HGLOBAL loaded = LoadResource(module, found);
    const BYTE* dib = (const BYTE*)LockResource(loaded);
    // No header test on this path, but GDI reads only within the resource.
    if (dib && DIBCheckBounds(dib, size)) {
        HPALETTE palette = DIBCreatePalette(dib, size); // none for a DIB without colour table
        HBITMAP bitmap = DIBCreateBitmap(dib, size, palette);
        if (bitmap) {
            image->type = HIMAGE_DIB;
            image->handle = bitmap;
            image->palette = palette;
        } else if (palette) {
            DeleteObject(palette);
        }
    }
    FreeResource(loaded);
}

void LoadIconResource(HImage* image, HINSTANCE module, LPCSTR name)
{
    image->handle = LoadIconA(module, name);
    image->type = HIMAGE_ICON;
    image->palette = nullptr;
}

// A ".BMP" file with a colour table; anything else leaves the handle 0.
void LoadBitmapFile(HImage* image, LPCSTR name)
{
    char path[kImageNameSize];
    if (!ImageFileName(name, ".BMP", path))
        return;
    DWORD size;
    LPBYTE dib = DIBReadFile(path, &size);
    if (!dib)
        return;
    if (DIBValidHeader(dib, size) && DIBCheckBounds(dib, size)) {
        // Without a palette the file counts as failed: a 24-bit one isn't loadable here.
        HPALETTE palette = DIBCreatePalette(dib, size);
        if (palette) {
            HBITMAP bitmap = DIBCreateBitmap(dib, size, palette);
            if (bitmap) {
                image->type = HIMAGE_DIB;
                image->handle = bitmap;
                image->palette = palette;
            } else {
                DeleteObject(palette);
            }
        }
    }
    SeamFree(dib);
}

// Deletes what an image holds, by its type; the result is that of the last call.
BOOL DeleteImageObjects(const HImage* image)
{
    switch (image->type) {
    case HIMAGE_BITMAP:
        return DeleteObject(image->handle);
    case HIMAGE_DIB:
        DeleteObject(image->palette);
        return DeleteObject(image->handle);
    }
    return DestroyIcon((HICON)image->handle);
}

// Appends a new entry with one share; false when there is no memory for it.
bool CacheAppend(const HImage* image, HINSTANCE module, LPCSTR name)
{
    HGLOBAL memory = GlobalAlloc(kCacheEntryFlags, strlen(name) + kCacheEntryExtra);
    HImageCacheEntry* entry = memory ? (HImageCacheEntry*)GlobalLock(memory) : nullptr;
    if (!entry) {
        if (memory)
            GlobalFree(memory);
        return false;
    }
    entry->image = *image;
    entry->refCount = 1;
    entry->module = module;
    strcpy(entry->name, name);
    HImageCacheEntry** tail = &g_imageCache;
    while (*tail)
        tail = &(*tail)->next;
    *tail = entry;
    return true;
}

} // namespace

HPALETTE DIBCreatePalette(const BYTE* dib, DWORD size)
{
    LPVOID logical = DIBLogPalette(dib, size);
    if (!logical)
        return nullptr;
    HPALETTE palette = CreatePalette((const LOGPALETTE*)logical);
    SeamFree(logical);
    return palette;
}

HBITMAP DIBCreateBitmap(const BYTE* dib, DWORD size, HPALETTE palette)
{
    if (!dib || !DIBCheckBounds(dib, size))
        return nullptr;
    // The pixels follow the header and the table; a file's bfOffBits isn't used.
    const BYTE* pixels = dib + DIBPixelOffset(dib, size);
    HDC screen = GetDC(nullptr);
    if (!screen)
        return nullptr;
    HPALETTE old = palette ? SelectPalette(screen, palette, FALSE) : nullptr;
    RealizePalette(screen);
    HBITMAP bitmap = CreateDIBitmap(screen, (const BITMAPINFOHEADER*)dib, CBM_INIT, pixels, (const BITMAPINFO*)dib,
                                    DIB_RGB_COLORS);
    if (palette)
        SelectPalette(screen, old, FALSE);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

BOOL IconReadFile(HImage* image, LPCSTR name)
{
    IconBlock icon;
    if (!IconReadFileBlock(name, &icon)) {
        // A file that opened but held no usable image clears the record.
        if (!image->handle)
            image->type = HIMAGE_NONE;
        return image->handle != nullptr;
    }
    SeamBlock owner(0);
    owner.p = icon.block;
    BITMAPINFOHEADER* header = (BITMAPINFOHEADER*)icon.block;
    header->biHeight = icon.height; // the file gives the doubled height of both parts
    HICON made = nullptr;
    HDC screen = GetDC(nullptr);
    HBITMAP bitmap = screen ? CreateDIBitmap(screen, header, CBM_INIT, icon.block + icon.pixelOffset,
                                             (const BITMAPINFO*)header, DIB_RGB_COLORS)
                            : nullptr;
    if (screen)
        ReleaseDC(nullptr, screen);
    if (bitmap) {
        BITMAP bm = {};
        GetObjectA(bitmap, sizeof bm, &bm);
        // In 32 bits: a 16-bit product could be less than what CreateIcon reads.
        DWORD count = (DWORD)bm.bmHeight * (DWORD)bm.bmWidthBytes * bm.bmPlanes;
        SeamBlock bits(count);
        if (bits.p && GetBitmapBits(bitmap, (LONG)count, bits.p) == (LONG)count)
            made = CreateIcon(g_hInstance, icon.width, icon.height, (BYTE)bm.bmPlanes, (BYTE)bm.bmBitsPixel,
                              icon.block + icon.maskOffset, (const BYTE*)bits.p);
        DeleteObject(bitmap);
    }
    image->handle = made;
    image->type = made ? HIMAGE_ICON : HIMAGE_NONE;
    image->palette = nullptr;
    return made != nullptr;
}

extern "C" BOOL QUILLAPI HImageLoad(HImage* image, HINSTANCE module, LPCSTR name)
{
    if (!image)
        return FALSE;
    memset(image, 0, sizeof *image);
    if (!name)
        return FALSE;
    for (HImageCacheEntry* e = g_imageCache; e; e = e->next) {
        if (ImageNameEquals(e->name, name) && (e->module == module || e->module == g_hInstance || !e->module)) {
            *image = e->image;
            e->refCount += 1;
            return TRUE;
        }
    }
    HINSTANCE recorded = module;
    LoadBitmapResource(image, module, name);
    if (!image->handle)
        LoadIconResource(image, module, name);
    if (!image->handle) {
        recorded = g_hInstance;
        LoadBitmapResource(image, g_hInstance, name);
    }
    if (!image->handle)
        LoadIconResource(image, g_hInstance, name);
    if (!image->handle) {
        recorded = nullptr;
        memset(image, 0, sizeof *image);
        LoadBitmapFile(image, name);
    }
    if (!image->handle)
        IconReadFile(image, name); // the name as it was passed in
    if (!image->handle) {
        memset(image, 0, sizeof *image);
        return FALSE;
    }
    if (!CacheAppend(image, recorded, name)) {
        DeleteImageObjects(image);
        memset(image, 0, sizeof *image);
        return FALSE;
    }
    return TRUE;
}

extern "C" BOOL QUILLAPI HImageFree(HImage* image, BOOL force)
{
    if (!image)
        return FALSE;
    HImageCacheEntry** link = &g_imageCache;
    while (*link && (*link)->image.handle != image->handle)
        link = &(*link)->next;
    if (HImageCacheEntry* e = *link) {
        if (--e->refCount > 0)
            return TRUE; // other shares remain: nothing is deleted
        *link = e->next;
        HGLOBAL memory = GlobalHandle(e);
        GlobalUnlock(memory);
        GlobalFree(memory);
    } else if (!force) {
        return FALSE;
    }
    return DeleteImageObjects(image);
}
