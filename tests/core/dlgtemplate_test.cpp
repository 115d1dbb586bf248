// The dialog template walker on templates built byte by byte: header with and
// without a font, ordinal and named classes, creation data, and cut templates.
#include "frame/dlgtemplate.h"
#include <gtest/gtest.h>
#include <string.h>
#include <string>
#include <vector>

namespace {

constexpr DWORD kVisible = 0x10000000; // WS_VISIBLE
constexpr DWORD kTabStop = 0x00010000; // WS_TABSTOP

// Builds a template the way a resource compiler lays it out.
struct Bytes {
    std::vector<BYTE> b;
    Bytes& Word(WORD w) { b.push_back((BYTE)w); b.push_back((BYTE)(w >> 8)); return *this; }
    Bytes& Dword(DWORD d) { return Word((WORD)d).Word((WORD)(d >> 16)); }
    Bytes& Str(const char* s) { for (; *s; ++s) Word((BYTE)*s); return Word(0); }
    Bytes& Align() { while (b.size() % 4) b.push_back(0); return *this; }
    Bytes& Header(DWORD style, WORD count, const char* caption)
    {
        Dword(style).Dword(0).Word(count).Word(3).Word(4).Word(200).Word(100);
        return Str("").Str("").Str(caption);
    }
    Bytes& Item(DWORD style, WORD id) { Align(); return Dword(style).Dword(0x200).Word(5).Word(6).Word(50).Word(14).Word(id); }
};

std::string Narrow(const HDlgString& s)
{
    WORD wide[kDlgTextSize];
    size_t n = HDlgCopyWide(s, wide, kDlgTextSize);
    return std::string(wide, wide + n);
}

TEST(DlgTemplate, HeaderWithoutFontPutsItemsBehindTheCaption)
{
    Bytes t;
    t.Header(0, 2, "Pane");
    HDlgHeader h;
    ASSERT_TRUE(HDlgReadHeader(t.b.data(), t.b.size(), &h));
    EXPECT_EQ(2, h.count);
    EXPECT_EQ(200, h.cx);
    EXPECT_EQ(100, h.cy);
    EXPECT_EQ("Pane", Narrow(h.caption));
    EXPECT_EQ(0u, h.face.length);
    EXPECT_EQ(t.b.size(), h.itemsAt);
}

TEST(DlgTemplate, HeaderWithSetFontReadsPointSizeAndFace)
{
    Bytes t;
    t.Header(kDlgSetFont, 1, "").Word(8).Str("MS Shell Dlg");
    HDlgHeader h;
    ASSERT_TRUE(HDlgReadHeader(t.b.data(), t.b.size(), &h));
    EXPECT_EQ(8, h.pointSize);
    EXPECT_EQ("MS Shell Dlg", Narrow(h.face));
    EXPECT_EQ(0u, h.caption.length);
    EXPECT_EQ(t.b.size(), h.itemsAt);
}

TEST(DlgTemplate, ItemCountIsHeldInEightBits)
{
    Bytes t;
    t.Header(0, 0x0103, "");
    HDlgHeader h;
    ASSERT_TRUE(HDlgReadHeader(t.b.data(), t.b.size(), &h));
    EXPECT_EQ(3, h.count);
}

TEST(DlgTemplate, HeaderCutAnywhereIsRefused)
{
    Bytes t;
    t.Header(kDlgSetFont, 1, "Cap").Word(8).Str("Face");
    HDlgHeader h;
    for (size_t size = 0; size < t.b.size(); ++size)
        EXPECT_FALSE(HDlgReadHeader(t.b.data(), size, &h)) << size;
    EXPECT_TRUE(HDlgReadHeader(t.b.data(), t.b.size(), &h));
}

struct OrdinalCase {
    std::vector<WORD> classWords; // as laid out in the item
    const char* known;            // expected table name, or null
    const char* asString;         // else the class as read
};

const OrdinalCase kOrdinalCases[] = {
    {{0xFFFF, 0x80}, "BUTTON", nullptr},  {{0xFFFF, 0x81}, "EDIT", nullptr},
    {{0xFFFF, 0x82}, "STATIC", nullptr},  {{0xFFFF, 0x83}, "LISTBOX", nullptr},
    {{0xFFFF, 0x84}, "SCROLLBAR", nullptr}, {{0xFFFF, 0x85}, "COMBOBOX", nullptr},
    {{0x82}, "STATIC", nullptr},          {{0x85}, "COMBOBOX", nullptr},
    {{0xFFFF, 0x86}, nullptr, "\x86T"},   {{'H', 'S', 't', 'a', 't', 0}, nullptr, "HStat"},
};

TEST(DlgTemplate, OrdinalClassesMapByTableAndUnknownOnesPointAtTheirWord)
{
    for (const OrdinalCase& c : kOrdinalCases) {
        Bytes t;
        t.Header(0, 1, "");
        size_t at = t.b.size();
        t.Item(kVisible, 7);
        for (WORD w : c.classWords) t.Word(w);
        t.Str("T").Word(0);
        HDlgItem item;
        ASSERT_TRUE(HDlgReadItem(t.b.data(), t.b.size(), &at, &item)) << c.classWords.size();
        EXPECT_EQ(t.b.size(), at);
        EXPECT_EQ("T", Narrow(item.title));
        if (c.known) {
            ASSERT_NE(nullptr, item.knownClass);
            EXPECT_STREQ(c.known, item.knownClass);
        } else {
            EXPECT_EQ(nullptr, item.knownClass);
            EXPECT_EQ(std::string(c.asString), Narrow(item.className));
        }
    }
}

TEST(DlgTemplate, ItemFieldsAndCreationDataAreReadAndTheNextItemIsAligned)
{
    Bytes t;
    t.Header(0, 2, "x"); // caption of one character leaves the items unaligned
    size_t at = t.b.size();
    t.Item(kVisible | kTabStop, 42).Str("HStat").Str("Hello").Word(3);
    t.b.push_back(0xAA); t.b.push_back(0xBB); t.b.push_back(0xCC);
    t.Item(0, 43).Word(0xFFFF).Word(0x80).Str("").Word(0);
    HDlgItem item;
    ASSERT_TRUE(HDlgReadItem(t.b.data(), t.b.size(), &at, &item));
    EXPECT_EQ((DWORD)(kVisible | kTabStop), item.style);
    EXPECT_EQ(5, item.x);
    EXPECT_EQ(6, item.y);
    EXPECT_EQ(50, item.cx);
    EXPECT_EQ(14, item.cy);
    EXPECT_EQ(42, item.id);
    EXPECT_EQ("HStat", Narrow(item.className));
    EXPECT_EQ("Hello", Narrow(item.title));
    ASSERT_EQ(3, item.dataSize);
    EXPECT_EQ(0xAA, item.data[0]);
    EXPECT_EQ(0xCC, item.data[2]);
    ASSERT_TRUE(HDlgReadItem(t.b.data(), t.b.size(), &at, &item));
    EXPECT_EQ(43, item.id);
    EXPECT_STREQ("BUTTON", item.knownClass);
    EXPECT_EQ(t.b.size(), at);
}

TEST(DlgTemplate, ItemCutAnywhereIsRefusedAndTheOffsetStays)
{
    Bytes t;
    t.Header(0, 1, "");
    size_t start = t.b.size();
    t.Item(0, 1).Str("Cls").Str("Title").Word(2).Word(0x1234);
    for (size_t size = start; size < t.b.size(); ++size) {
        size_t at = start;
        HDlgItem item;
        EXPECT_FALSE(HDlgReadItem(t.b.data(), size, &at, &item)) << size;
        EXPECT_EQ(start, at);
    }
}

TEST(DlgTemplate, AnOffsetBeyondTheEndIsRefused)
{
    Bytes t;
    t.Header(0, 1, "");
    size_t at = t.b.size() + 100;
    HDlgItem item;
    EXPECT_FALSE(HDlgReadItem(t.b.data(), t.b.size(), &at, &item));
    at = (size_t)-2;
    EXPECT_FALSE(HDlgReadItem(t.b.data(), t.b.size(), &at, &item));
}

TEST(DlgTemplate, WideCopyIsCutToItsCapacity)
{
    Bytes t;
    t.Str("abcdef");
    HDlgString s = {t.b.data(), 6};
    WORD out[4];
    EXPECT_EQ(3u, HDlgCopyWide(s, out, 4));
    EXPECT_EQ('c', out[2]);
    EXPECT_EQ(0, out[3]);
    EXPECT_EQ(0u, HDlgCopyWide(s, out, 0));
}

TEST(DlgTemplate, ScalingTruncatesTowardZero)
{
    EXPECT_EQ(17, HDlgScale(10, 7, 4));
    EXPECT_EQ(-17, HDlgScale(-10, 7, 4));
    EXPECT_EQ(20, HDlgScale(10, 16, 8));
}

} // namespace
