// HImageLoad and HImageFree: the library's bitmaps, files written by
// ImageMagick (tests/fixtures/images), the search order, and the cache's shares.
#include "wintest.h"

#include <string>

int GdiHeadroom(); // draw_test.cpp

namespace {

HINSTANCE Self() { return GetModuleHandleA(nullptr); }

// A fixture's path with no "." before the file's own name.
std::string Fixture(const char* name)
{
    std::string path = __FILE__;
    path = path.substr(0, path.find("tests")) + "tests/fixtures/images/" + name;
    if (path[0] == '/')
        path = "Z:" + path; // Wine's drive of the Unix root
    return path;
}

// Copies a fixture into the application's directory under another name and
// makes a directory without it current, so that only a search that starts in
// the application's directory, as OpenFile's does, finds it there.
struct InAppDirectory {
    std::string copy;
    char previous[MAX_PATH];
    InAppDirectory(const char* fixture, const char* as)
    {
        char exe[MAX_PATH];
        GetModuleFileNameA(nullptr, exe, sizeof exe);
        copy = exe;
        copy = copy.substr(0, copy.find_last_of("\\/") + 1) + as;
        CopyFileA(Fixture(fixture).c_str(), copy.c_str(), FALSE);
        GetCurrentDirectoryA(sizeof previous, previous);
        SetCurrentDirectoryA(Fixture("").c_str());
    }
    ~InAppDirectory()
    {
        SetCurrentDirectoryA(previous);
        DeleteFileA(copy.c_str());
    }
};

bool IsBitmap(HANDLE h)
{
    BITMAP bm;
    return GetObjectA(h, sizeof bm, &bm) == sizeof bm;
}

// Draws the image on white and reads a pixel.
COLORREF PixelOf(const HImage& image, int x, int y, COLORREF transparent = 0)
{
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    BITMAPINFO bi = {};
    bi.bmiHeader = {sizeof bi.bmiHeader, 64, -64, 1, 32};
    void* bits;
    HBITMAP canvas = CreateDIBSection(dc, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(dc, canvas);
    PatBlt(dc, 0, 0, 64, 64, WHITENESS);
    HImageDraw(dc, &image, 0, 0, transparent);
    COLORREF c = GetPixel(dc, x, y);
    SelectObject(dc, old);
    DeleteObject(canvas);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return c;
}

const COLORREF kRed = RGB(255, 0, 0), kLime = RGB(0, 255, 0), kBlue = RGB(0, 0, 255), kWhite = RGB(255, 255, 255);

TEST(ImageLoad, LibraryBitmapsLoadByNameFromAnyModule)
{
    const char* names[] = {"CAN1", "CAN2", "CANCEL", "CB1", "CB2", "CB3", "CB4", "CB5", "CB6", "CLR",
                           "GPUSH", "HC1", "HC2", "HC3", "HC4", "HC5", "HC6", "HLP1", "HLP2", "HR1",
                           "HR2", "HR3", "HR4", "OK", "OK1", "OK2", "RB1", "RB2", "RB3", "RB4",
                           "V5RGB16"}; // the last is the program's own (images.rc), with a 124-byte header
    for (const char* name : names) {
        HImage image;
        ASSERT_TRUE(HImageLoad(&image, Self(), name)) << name;
        EXPECT_TRUE(IsBitmap(image.handle)) << name;
        int w = 0, h = 0;
        EXPECT_TRUE(HImageGetSize(&image, &w, &h));
        EXPECT_EQ(h, 16) << name;
        EXPECT_NE(HImageFree(&image, TRUE), 0) << name;
    }
}

TEST(ImageLoad, ResourceTypeFollowsTheVersionTest)
{
    HImage image;
    ASSERT_TRUE(HImageLoad(&image, Self(), "HC3"));
    if (GetVersion() & 0x80000000) {
        EXPECT_EQ(image.type, HIMAGE_BITMAP);
    } else {
        EXPECT_EQ(image.type, HIMAGE_DIB);
        EXPECT_NE(image.palette, nullptr) << "the bitmap has a colour table";
    }
    // The check box's corner is the transparent green, its middle white.
    EXPECT_EQ(PixelOf(image, 0, 0, kLime), kWhite);
    EXPECT_EQ(PixelOf(image, 0, 0), kLime);
    EXPECT_EQ(PixelOf(image, 4, 4), kWhite);
    HImageFree(&image, TRUE);
}

TEST(ImageLoad, LoadsShareOneHandleAcrossCaseAndModulesUntilTheLastFree)
{
    const struct { HINSTANCE first, second; std::string name, again; } rows[] = {
        {Self(), nullptr, "RB3", "rb3"}, // a library image serves every module
        {Self(), GetModuleHandleA("QUILL32.dll"), Fixture("mono1.bmp"), Fixture("MONO1.BMP")},
    };
    for (const auto& row : rows) {
        HImage a, b, c;
        ASSERT_TRUE(HImageLoad(&a, Self(), row.name.c_str())) << row.name;
        ASSERT_TRUE(HImageLoad(&b, row.first, row.again.c_str())) << "case of A to Z ignored";
        ASSERT_TRUE(HImageLoad(&c, row.second, row.name.c_str())) << row.name;
        EXPECT_EQ(a.handle, b.handle);
        EXPECT_EQ(a.handle, c.handle);
        EXPECT_NE(HImageFree(&a, TRUE), 0);
        EXPECT_NE(HImageFree(&c, TRUE), 0);
        EXPECT_TRUE(IsBitmap(b.handle)) << "a free before the last deletes nothing";
        EXPECT_NE(HImageFree(&b, TRUE), 0);
        EXPECT_FALSE(IsBitmap(b.handle)) << "the last free deletes";
    }
    HBITMAP own = CreateBitmap(2, 2, 1, 1, nullptr);
    HImage image = {HIMAGE_BITMAP, own, nullptr};
    EXPECT_EQ(HImageFree(&image, FALSE), 0) << "without force an uncached image stays";
    EXPECT_TRUE(IsBitmap(own));
    EXPECT_NE(HImageFree(&image, TRUE), 0);
    EXPECT_FALSE(IsBitmap(own));
}

// Paletted files load with their colours, files without a colour table are
// refused; icons load from 32-pixel images only. A name with a dot keeps it
// through both readers: a bitmap under an icon's name is still read as a
// bitmap, and an icon under a bitmap's name as an icon. "@": a bare name,
// found in the application's directory.
TEST(ImageLoad, EachFileLoadsAsItsKindWithItsColoursOrIsRefused)
{
    const struct { const char* name; SHORT type; } rows[] = {
        {"pal4.bmp", HIMAGE_DIB},     {"pal8.bmp", HIMAGE_DIB},       {"rle8.bmp", HIMAGE_DIB},
        {"core4.bmp", HIMAGE_DIB},    {"core8.bmp", HIMAGE_DIB},      {"pal4", HIMAGE_DIB},
        {"PAL8", HIMAGE_DIB},         {"@qappdir8", HIMAGE_DIB},      {"notanicon.ico", HIMAGE_DIB},
        {"rgb24.bmp", HIMAGE_NONE},   {"rgb24", HIMAGE_NONE},         {"rgb16.bmp", HIMAGE_NONE},
        {"v5rgb16.bmp", HIMAGE_NONE}, {"absent.bmp", HIMAGE_NONE},    {"small16.ico", HIMAGE_NONE},
        {"true32.ico", HIMAGE_NONE},  {"three.ico", HIMAGE_ICON},     {"three", HIMAGE_ICON},
        {"iconinside.bmp", HIMAGE_ICON}, {"big64.ico", HIMAGE_ICON},  {"@QAPPDIR3", HIMAGE_ICON},
    };
    InAppDirectory bitmap("pal8.bmp", "QAPPDIR8.BMP");
    InAppDirectory icon("three.ico", "QAPPDIR3.ICO");
    for (const auto& r : rows) {
        HImage image = {HIMAGE_ICON, (HANDLE)1, (HPALETTE)1};
        std::string name = r.name[0] == '@' ? std::string(r.name + 1) : Fixture(r.name);
        EXPECT_EQ(HImageLoad(&image, Self(), name.c_str()), r.type != HIMAGE_NONE) << r.name;
        EXPECT_EQ(image.type, r.type) << r.name;
        if (r.type == HIMAGE_NONE) {
            EXPECT_EQ(image.handle, nullptr) << r.name;
            continue;
        }
        int low = r.type == HIMAGE_ICON ? 4 : 2, right = r.type == HIMAGE_ICON ? 28 : 13, bottom = r.type == HIMAGE_ICON ? 28 : 10;
        EXPECT_EQ(PixelOf(image, low, low), kRed) << r.name;
        EXPECT_EQ(PixelOf(image, right, low), kLime) << r.name;
        EXPECT_EQ(PixelOf(image, low, bottom), kBlue) << r.name;
        if (r.type == HIMAGE_DIB) {
            EXPECT_NE(image.palette, nullptr) << r.name;
            EXPECT_EQ(PixelOf(image, 13, 10), kWhite) << r.name;
        }
        HImageFree(&image, TRUE);
    }
}

TEST(ImageLoad, NamesTooLongForTheFileBuffersAreRefused)
{
    std::string dir = Fixture("");
    std::string fits = dir + std::string(115 - dir.size(), 'x'); // with ".BMP", 119 bytes and the terminator
    std::string over = fits + "x";
    for (const std::string& name : {fits, over})
        ASSERT_TRUE(CopyFileA(Fixture("pal4.bmp").c_str(), (name + ".BMP").c_str(), FALSE));
    HImage image;
    EXPECT_TRUE(HImageLoad(&image, Self(), fits.c_str()));
    HImageFree(&image, TRUE);
    EXPECT_FALSE(HImageLoad(&image, Self(), over.c_str())) << "the file exists, the name doesn't fit";
    EXPECT_FALSE(HImageLoad(&image, Self(), std::string(5000, 'y').c_str()));
    for (const std::string& name : {fits, over})
        DeleteFileA((name + ".BMP").c_str());
}

TEST(ImageLoad, TheLastFreeDeletesEverythingTheLoadMade)
{
    const std::string names[] = {"HC1", Fixture("pal8.bmp"), Fixture("three.ico"), Fixture("rgb24")};
    HImage warm;
    HImageLoad(&warm, Self(), "HC2"); // first use may make lasting objects
    HImageFree(&warm, TRUE);
    int before = GdiHeadroom();
    for (const std::string& name : names) {
        HImage a, b;
        BOOL loaded = HImageLoad(&a, Self(), name.c_str());
        if (loaded && HImageLoad(&b, Self(), name.c_str()))
            HImageFree(&b, TRUE);
        if (loaded)
            HImageFree(&a, TRUE);
    }
    EXPECT_EQ(GdiHeadroom(), before);
}

} // namespace
