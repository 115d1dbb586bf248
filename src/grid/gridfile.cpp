// The .GRS grid description: a version word, a header, a field count and the
// field blocks, read and written through a caller's I/O callback.
#include "grid/grid.h"
#include "seam.h"
#include <string.h>

namespace {

constexpr DWORD kScrollBars = 0x00300000; // WS_HSCROLL | WS_VSCROLL
constexpr LONG kReadFailed = -1;          // our own failure: a bad length or no memory

// The last header item of a version; -1 for a number that is no version.
int LastHeaderItem(UINT version)
{
    switch (version) {
    case HGV_GH:
    case HGV_HH:
        return 5;
    case HGV_IH:
    case HGV_JH:
        return 7;
    }
    return -1;
}

// One little-endian number of 1, 2 or 4 bytes.
LONG ReadNumber(HGIoProc proc, LPVOID context, int bytes, DWORD* value)
{
    BYTE b[4] = {0, 0, 0, 0};
    LONG failed = proc(context, b, bytes);
    if (failed)
        return failed;
    *value = (DWORD)b[0] | (DWORD)b[1] << 8 | (DWORD)b[2] << 16 | (DWORD)b[3] << 24;
    return 0;
}

LONG WriteNumber(HGIoProc proc, LPVOID context, int bytes, DWORD value)
{
    BYTE b[4] = {(BYTE)value, (BYTE)(value >> 8), (BYTE)(value >> 16), (BYTE)(value >> 24)};
    return proc(context, b, bytes);
}

template <typename T> LONG ReadItem(HGIoProc proc, LPVOID context, T* item)
{
    DWORD value = 0;
    LONG failed = ReadNumber(proc, context, sizeof(T), &value);
    if (!failed)
        *item = (T)value;
    return failed;
}

template <typename T> LONG WriteItem(HGIoProc proc, LPVOID context, T item)
{
    return WriteNumber(proc, context, sizeof(T), (DWORD)item);
}

// A length word, then a zero-filled block of length + 1 bytes that the text is
// read into (twice over when `twice`, as the 0x4848 header's name). A negative
// length fails before the callback sees it.
LONG ReadString(HGIoProc proc, LPVOID context, LPSTR* text, bool twice)
{
    SHORT length = 0;
    LONG failed = ReadItem(proc, context, &length);
    if (failed)
        return failed;
    if (length < 0)
        return kReadFailed;
    *text = (LPSTR)SeamAlloc((size_t)length + 1);
    if (!*text)
        return kReadFailed;
    failed = proc(context, *text, length);
    if (!failed && twice)
        failed = proc(context, *text, length);
    return failed;
}

// A length word (twice over when `twice`), then the text without terminator.
// A text too long for the length word cannot be written.
LONG WriteString(HGIoProc proc, LPVOID context, LPCSTR text, bool twice)
{
    static char empty[1];
    size_t length = text ? strlen(text) : 0;
    if (length >= (size_t)kHGLimit16)
        return kReadFailed;
    LONG failed = WriteItem(proc, context, (SHORT)length);
    if (!failed && twice)
        failed = WriteItem(proc, context, (SHORT)length);
    if (!failed)
        failed = proc(context, text ? (LPVOID)text : empty, (LONG)length);
    return failed;
}

} // namespace

LONG HGLoadHeader(HGIoProc proc, LPVOID context, int lastItem, HGridData* grid)
{
    WORD version = grid->version;
    memset(grid, 0, sizeof *grid);
    grid->version = version;
    LONG failed = 0;
    for (int item = 0; item <= lastItem && item <= 7 && !failed; ++item) {
        switch (item) {
        case 0: failed = ReadItem(proc, context, &grid->style); break;
        case 1: failed = ReadItem(proc, context, &grid->frozenCols); break;
        case 2: failed = ReadItem(proc, context, &grid->rowHeight); break;
        case 3: failed = ReadItem(proc, context, &grid->rowHeaderWidth); break;
        case 4: failed = ReadItem(proc, context, &grid->colHeaderHeight); break;
        case 5: failed = ReadString(proc, context, &grid->name, version == HGV_HH); break;
        case 6: failed = ReadItem(proc, context, &grid->options); break;
        case 7: failed = ReadItem(proc, context, &grid->minRows); break;
        }
    }
    return failed;
}

LONG HGSaveHeader(HGIoProc proc, LPVOID context, int lastItem, HGridData* grid, UINT version)
{
    LONG failed = 0;
    for (int item = 0; item <= lastItem && item <= 7 && !failed; ++item) {
        switch (item) {
        case 0: failed = WriteItem(proc, context, grid->style); break;
        case 1: failed = WriteItem(proc, context, grid->frozenCols); break;
        case 2: failed = WriteItem(proc, context, grid->rowHeight); break;
        case 3: failed = WriteItem(proc, context, grid->rowHeaderWidth); break;
        case 4: failed = WriteItem(proc, context, grid->colHeaderHeight); break;
        case 5: failed = WriteString(proc, context, grid->name, version == HGV_HH); break;
        case 6: failed = WriteItem(proc, context, grid->options); break;
        case 7: failed = WriteItem(proc, context, grid->minRows); break;
        }
    }
    return failed;
}

LONG HGLoadField(HGIoProc proc, LPVOID context, int lastItem, HGField* image)
{
    memset(image, 0, sizeof *image);
    LONG failed = 0;
    for (int item = 0; item <= lastItem && item <= 11 && !failed; ++item) {
        switch (item) {
        case 0: failed = ReadItem(proc, context, &image->flags); break;
        case 1: failed = ReadItem(proc, context, &image->width); break;
        case 2: failed = ReadItem(proc, context, &image->height); break;
        case 3: failed = ReadItem(proc, context, &image->size); break;
        case 4: failed = ReadItem(proc, context, &image->classLetter); break;
        case 5: failed = ReadItem(proc, context, &image->typeLetter); break;
        case 6: failed = ReadItem(proc, context, &image->classLetter2); break;
        case 7: failed = ReadItem(proc, context, &image->typeLetter2); break;
        case 8: failed = ReadItem(proc, context, &image->editorKind); break;
        case 9: failed = ReadItem(proc, context, &image->editorStyle); break;
        case 10: failed = ReadString(proc, context, &image->title, false); break;
        case 11: failed = ReadString(proc, context, &image->format, false); break;
        }
    }
    return failed;
}

LONG HGSaveField(HGIoProc proc, LPVOID context, int lastItem, const HGField* field)
{
    LONG failed = 0;
    for (int item = 0; item <= lastItem && item <= 11 && !failed; ++item) {
        switch (item) {
        case 0: failed = WriteItem(proc, context, field->flags); break;
        case 1: failed = WriteItem(proc, context, field->width); break;
        case 2: failed = WriteItem(proc, context, field->height); break;
        case 3: failed = WriteItem(proc, context, field->size); break;
        case 4: failed = WriteItem(proc, context, field->classLetter); break;
        case 5: failed = WriteItem(proc, context, field->typeLetter); break;
        case 6: failed = WriteItem(proc, context, field->classLetter2); break;
        case 7: failed = WriteItem(proc, context, field->typeLetter2); break;
        case 8: failed = WriteItem(proc, context, field->editorKind); break;
        case 9: failed = WriteItem(proc, context, field->editorStyle); break;
        case 10: failed = WriteString(proc, context, field->title, false); break;
        case 11: failed = WriteString(proc, context, field->format, false); break;
        }
    }
    return failed;
}

extern "C" HGridData* QUILLAPI HGLoad(HGIoProc proc, LPVOID context)
{
    if (!proc)
        return nullptr;
    HGridData head = {};
    if (ReadItem(proc, context, &head.version))
        return nullptr;
    int lastItem = LastHeaderItem(head.version);
    if (lastItem < 0)
        return nullptr;
    LONG failed = HGLoadHeader(proc, context, lastItem, &head);
    if (failed) {
        SeamFree(head.name);
        return nullptr;
    }
    // The first version had no style bits for the scroll bars: it always had both.
    if (head.version < HGV_HH)
        head.style |= kScrollBars;
    HGridData* grid = HGridCreate(head.name, head.style, head.options, head.frozenCols, head.rowHeight,
                                  head.rowHeaderWidth, head.colHeaderHeight, head.minRows);
    SeamFree(head.name);
    if (!grid)
        return nullptr;
    grid->version = head.version; // old grids keep drawing their read-only titles the old way

    // From here on a short stream still gives the grid, with the fields read whole.
    SHORT count = 0;
    if (ReadItem(proc, context, &count))
        return grid;
    for (SHORT i = 0; i < count && !failed; ++i) {
        HGField image;
        failed = HGLoadField(proc, context, 11, &image);
        if (!failed) {
            HGField* field = HGFieldCreate(image.title, image.flags, image.width, image.height,
                                           image.classLetter, image.typeLetter, image.classLetter2,
                                           image.typeLetter2, image.size, image.editorKind,
                                           image.editorStyle, image.format);
            if (field && HGAppendFld(grid, field) < 0)
                HGFieldDestroy(field);
        }
        SeamFree(image.title);
        SeamFree(image.format);
    }
    return grid;
}

extern "C" BOOL QUILLAPI HGSave(HGIoProc proc, LPVOID context, UINT version, HGridData* grid)
{
    version &= 0xFFFF;
    int lastItem = LastHeaderItem(version);
    if (lastItem < 0 || !proc || !grid)
        return FALSE;
    LONG failed = WriteItem(proc, context, (WORD)version);
    if (!failed)
        failed = HGSaveHeader(proc, context, lastItem, grid, version);
    if (!failed)
        failed = WriteItem(proc, context, (SHORT)grid->fields->count);
    HLNode* node = grid->fields->first;
    for (LONG i = 0; !failed && node && i < grid->fields->count; ++i, node = node->next)
        failed = HGSaveField(proc, context, 11, ((HGFieldNode*)node)->field);
    return !failed;
}

LONG CALLBACK HGFileRead(LPVOID context, LPVOID buffer, LONG count)
{
    if (count < 0)
        return -1;
    if (count == 0)
        return 0;
    UINT got = SeamFileRead((HFILE)(INT_PTR)context, buffer, (UINT)count);
    return got == (UINT)count ? 0 : -1;
}

LONG CALLBACK HGMemRead(LPVOID context, LPVOID buffer, LONG count)
{
    HGMemStream* stream = (HGMemStream*)context;
    if (!stream || !stream->pos || count < 0 || count > stream->end - stream->pos)
        return -1;
    if (count)
        memcpy(buffer, stream->pos, (size_t)count);
    stream->pos += count;
    return 0;
}

// The name goes into a buffer of 120 bytes, with ".GRS" added when it holds no
// point at all; a name that does not fit is refused like a file that is not there.
extern "C" HGridData* QUILLAPI HGridLoad(LPCSTR fileName, OFSTRUCT* of)
{
    if (!fileName)
        return nullptr;
    OFSTRUCT local;
    if (!of)
        of = &local;
    memset(of, 0, sizeof *of);
    char path[kHGFileNameSize];
    size_t length = strlen(fileName);
    bool extension = strchr(fileName, '.') == nullptr;
    if (length + (extension ? 4 : 0) >= sizeof path)
        return nullptr;
    memcpy(path, fileName, length + 1);
    if (extension)
        memcpy(path + length, ".GRS", 5);
    HFILE file = SeamFileOpen(path);
    if (file == HFILE_ERROR)
        return nullptr;
    of->cBytes = (BYTE)sizeof *of;
    memcpy(of->szPathName, path, strlen(path) + 1);
    HGridData* grid = HGLoad(HGFileRead, (LPVOID)(INT_PTR)file);
    SeamFileClose(file);
    return grid;
}
