// The window-free image readers: header tests, colour tables, bounds, the
// palette block, ".BMP" file reading and the icon directory, on hand-built
// bytes and on files written by ImageMagick (tests/fixtures/images).
#include <gtest/gtest.h>

#include <string.h>
#include <string>
#include <vector>

#include "draw/image.h"
#include "seam.h"

namespace {

using Bytes = std::vector<BYTE>;

void Put16(Bytes& b, size_t at, unsigned v) { b[at] = (BYTE)v; b[at + 1] = (BYTE)(v >> 8); }
void Put32(Bytes& b, size_t at, unsigned v) { Put16(b, at, v & 0xFFFF); Put16(b, at + 2, v >> 16); }
unsigned Get16(const BYTE* p) { return p[0] | (p[1] << 8); }
unsigned Get32(const BYTE* p) { return Get16(p) | (Get16(p + 2) << 16); }

// Colour i of a table is red i, green 2i, blue 3i.
void FillColours(BYTE* table, int colors, int entryBytes)
{
    for (int i = 0; i < colors; ++i, table += entryBytes)
        table[0] = (BYTE)(3 * i), table[1] = (BYTE)(2 * i), table[2] = (BYTE)i;
}

// An info-header DIB: header, `colors` RGBQUADs (colour i is (i, 2i, 3i)), then `pixels` bytes.
Bytes InfoDib(int width, int height, int bits, unsigned compression = 0, unsigned clrUsed = 0, int colors = -1,
              size_t pixels = 0, unsigned sizeImage = 0, unsigned planes = 1)
{
    if (colors < 0)
        colors = clrUsed ? (int)clrUsed : (bits <= 8 ? 1 << bits : 0);
    Bytes b(40 + colors * 4 + pixels);
    Put32(b, 0, 40);
    Put32(b, 4, (unsigned)width);
    Put32(b, 8, (unsigned)height);
    Put16(b, 12, planes);
    Put16(b, 14, bits);
    Put32(b, 16, compression);
    Put32(b, 20, sizeImage);
    Put32(b, 32, clrUsed);
    FillColours(b.data() + 40, colors, 4);
    return b;
}

// A core-header DIB: header, 2^bits RGBTRIPLEs (colour i is (i, 2i, 3i)), then `pixels` bytes.
Bytes CoreDib(int width, int height, int bits, size_t pixels = 0, unsigned planes = 1)
{
    int colors = bits <= 8 ? 1 << bits : 0;
    Bytes b(12 + colors * 3 + pixels);
    Put32(b, 0, 12);
    Put16(b, 4, width);
    Put16(b, 6, height);
    Put16(b, 8, planes);
    Put16(b, 10, bits);
    FillColours(b.data() + 12, colors, 3);
    return b;
}

std::string Fixture(const char* name)
{
    std::string path = __FILE__;
    path = path.substr(0, path.find_last_of("/\\") + 1) + "../fixtures/images/" + name;
#ifdef _WIN32
    if (path[0] == '/')
        path = "Z:" + path; // Wine's drive of the Unix root
#endif
    return path;
}

// The DIB with another header size written over its first word.
Bytes Stated(Bytes dib, unsigned headerSize)
{
    Put32(dib, 0, headerSize);
    return dib;
}

TEST(DibParse, ColourTableSizeAndValidHeaderFollowHeaderFormAndBitCount)
{
    const struct { Bytes dib; WORD table; BOOL valid; const char* what; } rows[] = {
        {InfoDib(8, 8, 1), 8, TRUE, "info 1 bit"},
        {InfoDib(8, 8, 4), 64, TRUE, "info 4 bits"},
        {InfoDib(8, 8, 8), 1024, TRUE, "info 8 bits"},
        {InfoDib(8, 8, 24), 0, TRUE, "info 24 bits"},
        {InfoDib(8, 8, 16), 0, FALSE, "16 bits"},
        {InfoDib(8, 8, 32), 0, FALSE, "32 bits"},
        {InfoDib(8, 8, 8, 0, 3), 12, TRUE, "info with biClrUsed 3"},
        {InfoDib(8, 8, 24, 0, 5), 20, TRUE, "24 bits with biClrUsed 5"},
        {InfoDib(8, 8, 8, 0, 0, -1, 0, 0, 2), 1024, FALSE, "two planes"},
        {InfoDib(8, 8, 4, 2), 64, TRUE, "RLE4 with 4 bits"},
        {InfoDib(8, 8, 8, 2), 1024, FALSE, "RLE4 with 8 bits"},
        {InfoDib(8, 8, 8, 1), 1024, TRUE, "RLE8 with 8 bits"},
        {InfoDib(8, 8, 4, 1), 64, FALSE, "RLE8 with 4 bits"},
        {InfoDib(8, 8, 24, 3), 0, FALSE, "bit fields"},
        {CoreDib(8, 8, 1), 6, TRUE, "core 1 bit"},
        {CoreDib(8, 8, 4), 48, TRUE, "core 4 bits"},
        {CoreDib(8, 8, 8), 768, TRUE, "core 8 bits"},
        {CoreDib(8, 8, 24), 0, TRUE, "core 24 bits"},
        {CoreDib(8, 8, 8, 0, 0), 768, FALSE, "core without planes"},
        {CoreDib(8, 8, 16), 0, FALSE, "core 16 bits"},
        {Stated(InfoDib(16, 0x40010, 8), 108), 48, FALSE, "108-byte header read as core: bits at offset 10"},
        {Stated(InfoDib(8, 8, 8), 124), 0, FALSE, "124-byte header"},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(DIBColorTableSize(r.dib.data(), (DWORD)r.dib.size()), r.table) << r.what;
        EXPECT_EQ(DIBValidHeader(r.dib.data(), (DWORD)r.dib.size()), r.valid) << r.what;
    }
    EXPECT_EQ(DIBColorTableSize(rows[2].dib.data(), 39), 0) << "info header cut";
}

TEST(DibParse, BoundsHoldOnlyWhenEverythingGdiReadsIsPresent)
{
    struct Row { Bytes dib; DWORD cut; BOOL expected; const char* what; };
    Bytes v4room = Stated(InfoDib(8, 8, 8, 0, 0, -1, 68), 108); // exactly room for GDI's table behind the 108 bytes
    const Row rows[] = {
        {InfoDib(8, 8, 8, 0, 0, -1, 64), 0, TRUE, "8x8, 8 bits, complete"},
        {InfoDib(8, 8, 8, 0, 0, -1, 64), 1, FALSE, "last pixel byte missing"},
        {InfoDib(9, 8, 8, 0, 0, -1, 96), 0, TRUE, "rows padded to 32 bits"},
        {InfoDib(9, 8, 8, 0, 0, -1, 95), 0, FALSE, "padding of the last row missing"},
        {InfoDib(8, -8, 24, 0, 0, -1, 192), 0, TRUE, "top-down 24 bits"},
        {InfoDib(8, 8, 8, 0, 0, 100, 0), 0, FALSE, "colour table cut"},
        {InfoDib(8, 8, 8, 0, 300, 256, 64), 0, FALSE, "biClrUsed above 256"},
        {InfoDib(32767, 32767, 24, 0, 0, -1, 64), 0, FALSE, "huge size"},
        {InfoDib(40000, 1, 1, 0, 0, -1, 5000), 0, FALSE, "wider than GDI draws"},
        {InfoDib(-8, 8, 8, 0, 0, -1, 64), 0, FALSE, "negative width"},
        {InfoDib(8, 0, 8), 0, FALSE, "no rows"},
        {InfoDib(8, 8, 8, 1, 0, -1, 10, 10), 0, TRUE, "RLE8 within its bytes"},
        {InfoDib(8, 8, 8, 1, 0, -1, 10, 11), 0, FALSE, "RLE8 stating more bytes than present"},
        {InfoDib(8, 8, 8, 1, 0, -1, 10, 0), 0, FALSE, "RLE8 without a size"},
        {InfoDib(8, -8, 8, 1, 0, -1, 10, 10), 0, FALSE, "RLE8 top-down"},
        {InfoDib(8, 8, 16, 3, 0, -1, 12 + 128), 0, TRUE, "16-bit fields, masks and pixels present"},
        {InfoDib(8, 8, 16, 3, 0, -1, 11), 0, FALSE, "16-bit fields without their masks"},
        {InfoDib(8, 8, 24, 3, 0, -1, 200), 0, FALSE, "24-bit fields"},
        {Stated(InfoDib(8, 8, 8, 0, 0, -1, 64), 108), 0, FALSE, "108-byte header, its colour table cut"},
        {v4room, 0, TRUE, "108-byte header read as an info header, pixels at 108"},
        {v4room, 1, FALSE, "108-byte header, last byte missing"},
        {Stated(InfoDib(8, 8, 16, 3, 0, -1, 84 + 128), 124), 0, TRUE, "124-byte header with 16-bit fields"},
        {Stated(InfoDib(8, 8, 24, 0, 0, -1, 300), 128), 0, FALSE, "a header larger than 124 bytes"},
        {CoreDib(8, 8, 4, 32), 0, TRUE, "core complete"},
        {CoreDib(8, 8, 4, 32), 1, FALSE, "core short"},
        {CoreDib(8, 8, 4, 32), 32 + 48, FALSE, "core without its table"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(DIBCheckBounds(r.dib.data(), (DWORD)(r.dib.size() - r.cut)), r.expected) << r.what;
}

TEST(DibParse, LogPaletteTurnsQuadsAndTriplesIntoRedGreenBlueAndNeedsTheTable)
{
    for (const Bytes& dib : {InfoDib(8, 8, 4, 0, 0, -1, 32), CoreDib(8, 8, 4, 32), InfoDib(8, 8, 8, 0, 5, -1, 64)}) {
        int count = DIBColorCount(dib.data(), (DWORD)dib.size());
        BYTE* pal = (BYTE*)DIBLogPalette(dib.data(), (DWORD)dib.size());
        ASSERT_NE(pal, nullptr);
        EXPECT_EQ(Get32(pal), 0x300u | (unsigned)count << 16);
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(Get32(pal + 4 + i * 4), (unsigned)(i | 2 * i << 8 | 3 * i << 16)) << "entry " << i;
        SeamFree(pal);
    }
    EXPECT_EQ(DIBColorCount(InfoDib(8, 8, 8, 0, 5).data(), 60), 5);
    Bytes rgb = InfoDib(8, 8, 24, 0, 0, -1, 192);
    EXPECT_EQ(DIBLogPalette(rgb.data(), (DWORD)rgb.size()), nullptr);
    Bytes cut = InfoDib(8, 8, 8, 0, 0, 10);
    EXPECT_EQ(DIBLogPalette(cut.data(), (DWORD)cut.size()), nullptr);
}

// A ".BMP" file image: the 14-byte file header, then the DIB.
Bytes BmpFile(const Bytes& dib, WORD magic = 0x4D42)
{
    Bytes f(14);
    Put16(f, 0, magic);
    Put32(f, 2, (unsigned)(dib.size() + 14));
    f.insert(f.end(), dib.begin(), dib.end());
    return f;
}

LPBYTE ReadBytes(const Bytes& file, DWORD* size)
{
    ImageMemory m = {file.data(), (DWORD)file.size(), 0};
    ImageSource s;
    ImageSourceMemory(&s, &m);
    return DIBReadSource(&s, size);
}

TEST(DibParse, ReadSourceKeepsWhatFollowsTheFileHeaderAndRefusesAnotherMagicOrAShortHeader)
{
    Bytes dib = InfoDib(8, 8, 8, 0, 0, -1, 64);
    DWORD size = 0;
    LPBYTE block = ReadBytes(BmpFile(dib), &size);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(Bytes(block, block + size), dib);
    SeamFree(block);
    EXPECT_EQ(ReadBytes(BmpFile(dib, 0x4D43), &size), nullptr);
    EXPECT_EQ(size, 0u);
    Bytes shortHeader = BmpFile(dib);
    shortHeader.resize(13);
    EXPECT_EQ(ReadBytes(shortHeader, &size), nullptr);
}

TEST(DibParse, FileNameGetsItsExtensionOnlyWithoutADot)
{
    char buffer[kImageNameSize];
    EXPECT_TRUE(ImageFileName("CHECK", ".BMP", buffer));
    EXPECT_STREQ(buffer, "CHECK.BMP");
    EXPECT_TRUE(ImageFileName("check.ico", ".BMP", buffer));
    EXPECT_STREQ(buffer, "check.ico");
    EXPECT_TRUE(ImageFileName(std::string(115, 'n').c_str(), ".BMP", buffer)); // 119 and the terminator
    EXPECT_FALSE(ImageFileName(std::string(116, 'n').c_str(), ".BMP", buffer));
    EXPECT_STREQ(buffer, "");
    EXPECT_TRUE(ImageFileName((std::string(115, 'n') + ".bmp").c_str(), ".BMP", buffer));
    EXPECT_FALSE(ImageFileName((std::string(116, 'n') + ".bmp").c_str(), ".BMP", buffer));
}

TEST(DibParse, FixturesOfAnotherEncoderAreReadAndJudged)
{
    struct Row { const char* name; BOOL valid; int colors; WORD bits; };
    const Row rows[] = {
        {"mono1.bmp", TRUE, 2, 1},   {"pal4.bmp", TRUE, 16, 4},    {"pal8.bmp", TRUE, 256, 8},
        {"rle8.bmp", TRUE, 256, 8},  {"core4.bmp", TRUE, 16, 4},   {"core8.bmp", TRUE, 256, 8},
        {"rgb24.bmp", TRUE, 0, 24},  {"rgb16.bmp", FALSE, 0, 16},  {"v5rgb16.bmp", FALSE, 0, 16},
        {"iconinside.bmp", FALSE, -1, 0}, {"absent.bmp", FALSE, -1, 0}, // -1: not read
    };
    for (const Row& r : rows) {
        DWORD size = 1;
        LPBYTE dib = DIBReadFile(Fixture(r.name).c_str(), &size);
        EXPECT_EQ(dib != nullptr, r.colors >= 0) << r.name;
        if (!dib) {
            EXPECT_EQ(size, 0u);
            continue;
        }
        bool core = Get16(dib) == 12;
        EXPECT_EQ(Get16(dib + (core ? 10 : 14)), r.bits) << r.name;
        EXPECT_EQ(DIBValidHeader(dib, size), r.valid) << r.name;
        if (r.valid)
            EXPECT_TRUE(DIBCheckBounds(dib, size)) << r.name;
        EXPECT_EQ(DIBColorCount(dib, size), r.colors) << r.name;
        SeamFree(dib);
    }
}

// ---- icons ----

// An icon file of entries (width, height, bits), each image a complete DIB
// whose AND mask rows hold their row number, bottom-up as in the file.
struct IconSpec { int w, h, bits; int statedBytes = -1; int offsetShift = 0; int biWidth = -1; };
Bytes IconFile(const std::vector<IconSpec>& specs, int count = -1)
{
    Bytes f(6 + 16 * specs.size());
    Put16(f, 2, 1);
    Put16(f, 4, count < 0 ? (unsigned)specs.size() : (unsigned)count);
    for (size_t i = 0; i < specs.size(); ++i) {
        const IconSpec& s = specs[i];
        int colors = 1 << s.bits;
        size_t xorBytes = (size_t)((s.w * s.bits + 31) / 32 * 4) * s.h;
        size_t maskRow = s.w / 8;
        Bytes img(40 + colors * 4 + xorBytes + maskRow * s.h);
        Put32(img, 0, 40);
        Put32(img, 4, (unsigned)(s.biWidth < 0 ? s.w : s.biWidth));
        Put32(img, 8, (unsigned)(s.h * 2));
        Put16(img, 12, 1);
        Put16(img, 14, s.bits);
        size_t mask = 40 + colors * 4 + xorBytes;
        for (int row = 0; row < s.h; ++row)
            memset(&img[mask + row * maskRow], row, maskRow);
        f[6 + 16 * i] = (BYTE)s.w;
        f[6 + 16 * i + 1] = (BYTE)s.h;
        unsigned stated = s.statedBytes < 0 ? (unsigned)img.size() : (unsigned)s.statedBytes;
        Put32(f, 6 + 16 * i + 8, stated);
        Put32(f, 6 + 16 * i + 12, (unsigned)(f.size() + s.offsetShift));
        f.insert(f.end(), img.begin(), img.end());
    }
    return f;
}

BOOL ReadIcon(const Bytes& file, IconBlock* icon)
{
    ImageMemory m = {file.data(), (DWORD)file.size(), 0};
    ImageSource s;
    ImageSourceMemory(&s, &m);
    return IconReadSource(&s, icon);
}

TEST(IconParse, TheFirst32HighOr64WideIsTakenWithItsMaskTopDown)
{
    struct Row { std::vector<IconSpec> specs; int w, h; unsigned bits; const char* what; };
    const Row rows[] = {
        {{{16, 16, 4}, {32, 32, 4}, {48, 48, 8}}, 32, 32, 4, "32 high among others"},
        {{{16, 32, 1}, {32, 32, 8}}, 16, 32, 1, "the first 32 high, whatever its width"},
        {{{64, 64, 4}, {32, 32, 4}}, 64, 64, 4, "64 wide before 32 high"},
        {{{32, 32, 1}, {32, 32, 8}}, 32, 32, 1, "colours are not weighed"},
        {{{32, 32, 4, 728}}, 32, 32, 4, "an image stating 728 bytes is read as 744"},
    };
    for (const Row& r : rows) {
        IconBlock icon;
        ASSERT_TRUE(ReadIcon(IconFile(r.specs), &icon)) << r.what;
        EXPECT_EQ(icon.width, r.w) << r.what;
        EXPECT_EQ(icon.height, r.h) << r.what;
        EXPECT_EQ(Get16(icon.block + 14), r.bits) << r.what;
        unsigned xorBytes = r.h * r.w * r.bits / 8, maskRow = (r.w / 8 + 3) / 4 * 4;
        EXPECT_EQ(Get32(icon.block + 20), xorBytes + r.h * r.w / 8) << "biSizeImage, " << r.what;
        EXPECT_EQ(icon.maskOffset, 40u + (4u << r.bits) + xorBytes) << r.what;
        EXPECT_EQ(icon.size, icon.maskOffset + maskRow * r.h) << r.what;
        for (int row = 0; row < r.h && r.w % 32 == 0; ++row) // the builder pads no mask row
            EXPECT_EQ(icon.block[icon.maskOffset + row * maskRow], r.h - 1 - row) << "mask row " << row << ", " << r.what;
        SeamFree(icon.block);
    }
}

TEST(IconParse, RefusesWhatCannotBeShown)
{
    struct Row { Bytes file; const char* what; };
    auto with = [](Bytes b, size_t at, unsigned v, bool dword) {
        dword ? Put32(b, at, v) : Put16(b, at, v);
        return b;
    };
    Bytes cutDir = IconFile({{16, 16, 4}, {32, 32, 4}});
    cutDir.resize(6 + 20);
    const Row rows[] = {
        {IconFile({{16, 16, 4}, {48, 48, 4}}), "no entry 32 high or 64 wide"},
        {IconFile({{16, 16, 4}, {32, 32, 4}}, 1), "the count ends before the right entry"},
        {with(IconFile({{32, 32, 4}}), 2, 2, false), "idType 2 (a cursor)"},
        {cutDir, "directory cut inside an entry"},
        {IconFile({{32, 32, 4, 0xFFFF}}), "dwBytesInRes of 0xFFFF"},
        {IconFile({{32, 32, 4, 39}}), "an image smaller than its header"},
        {IconFile({{32, 32, 4, 700}}), "an image smaller than its pixels"},
        {IconFile({{32, 32, 4, -1, 100000}}), "offset past the end: zeros"},
        {IconFile({{32, 32, 16}}), "16 bits"},
        {IconFile({{32, 32, 4, -1, 0, 40}}), "header width differs from the directory"},
        {with(IconFile({{32, 32, 4}}), 22 + 12, 2, false), "two planes"},
        {with(IconFile({{32, 32, 4}}), 22 + 16, 1, true), "compressed"},
        {with(IconFile({{32, 32, 8}}), 22 + 32, 1000, true), "biClrUsed beyond 256"},
        {Bytes{0, 0, 1}, "cut directory header"},
    };
    for (const Row& r : rows) {
        IconBlock icon;
        EXPECT_FALSE(ReadIcon(r.file, &icon)) << r.what;
        EXPECT_EQ(icon.block, nullptr) << r.what;
    }
}

TEST(IconParse, FixturesOfAnotherEncoder)
{
    struct Row { const char* name; BOOL loads; int w, h; WORD bits; };
    const Row rows[] = {
        {"three.ico", TRUE, 32, 32, 4},  {"big64.ico", TRUE, 64, 64, 4},
        {"small16.ico", FALSE, 0, 0, 0}, {"true32.ico", FALSE, 0, 0, 0}, {"notanicon.ico", FALSE, 0, 0, 0},
    };
    for (const Row& r : rows) {
        IconBlock icon;
        EXPECT_EQ(IconReadFileBlock(Fixture(r.name).c_str(), &icon), r.loads) << r.name;
        if (!r.loads)
            continue;
        EXPECT_EQ(icon.width, r.w) << r.name;
        EXPECT_EQ(icon.height, r.h) << r.name;
        EXPECT_EQ(Get16(icon.block + 14), r.bits) << r.name;
        SeamFree(icon.block);
    }
}

} // namespace
