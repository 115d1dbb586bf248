// The dialog template walker on templates built byte by byte: header with and
// without a font, ordinal and named classes, creation data, and cut templates.
#include "frame/dlgtemplate.h"
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

// Builds a template the way a resource compiler lays it out.
struct Bytes {
    std::vector<BYTE> b;
    Bytes& Word(WORD w) { b.push_back((BYTE)w); b.push_back((BYTE)(w >> 8)); return *this; }
    Bytes& Dword(DWORD d) { return Word((WORD)d).Word((WORD)(d >> 16)); }
    Bytes& Str(const char* s) { for (; *s; ++s) Word((BYTE)*s); return Word(0); }
    Bytes& Header(DWORD style, WORD count, const char* caption)
    {
        return Dword(style).Dword(0).Word(count).Word(3).Word(4).Word(200).Word(100).Str("").Str("").Str(caption);
    }
    Bytes& Item(WORD id)
    {
        while (b.size() % 4) b.push_back(0);
        return Dword(0x50010000).Dword(0x200).Word(5).Word((WORD)-6).Word(50).Word(14).Word(id);
    }
};

std::string Narrow(const HDlgString& s)
{
    WORD wide[kDlgTextSize];
    size_t n = HDlgCopyWide(s, wide, kDlgTextSize);
    return std::string(wide, wide + n);
}

TEST(DlgTemplate, HeaderReadsCountInEightBitsAndTheFontOnlyWithSetFont)
{
    Bytes plain, font;
    plain.Header(0, 0x0103, "Pane").Word(8); // the word is not a point size here
    font.Header(kDlgSetFont, 1, "").Word(8).Str("MS Shell Dlg");
    HDlgHeader h;
    ASSERT_TRUE(HDlgReadHeader(plain.b.data(), plain.b.size(), &h));
    EXPECT_EQ(3, h.count);
    EXPECT_EQ(200, h.cx);
    EXPECT_EQ("Pane", Narrow(h.caption));
    EXPECT_EQ(plain.b.size() - 2, h.itemsAt);
    ASSERT_TRUE(HDlgReadHeader(font.b.data(), font.b.size(), &h));
    EXPECT_EQ(8, h.pointSize);
    EXPECT_EQ("MS Shell Dlg", Narrow(h.face));
    EXPECT_EQ(font.b.size(), h.itemsAt);
    for (size_t size = 0; size < font.b.size(); ++size)
        EXPECT_FALSE(HDlgReadHeader(font.b.data(), size, &h)) << size;
}

TEST(DlgTemplate, OrdinalClassesMapByTableAndUnknownOnesPointAtTheirWord)
{
    const struct { std::vector<WORD> words; const char* known; const char* asString; } kClasses[] = {
        {{0xFFFF, 0x80}, "BUTTON", nullptr},    {{0xFFFF, 0x81}, "EDIT", nullptr},
        {{0xFFFF, 0x83}, "LISTBOX", nullptr},   {{0xFFFF, 0x84}, "SCROLLBAR", nullptr},
        {{0x82}, "STATIC", nullptr},            {{0x85}, "COMBOBOX", nullptr}, // without the 0xFFFF mark
        {{0xFFFF, 0x86}, nullptr, "\x86T"},     {{'H', 'S', 't', 'a', 't', 0}, nullptr, "HStat"},
    };
    for (const auto& c : kClasses) {
        Bytes t;
        t.Item(7);
        for (WORD w : c.words) t.Word(w);
        t.Str("T").Word(0);
        size_t at = 0;
        HDlgItem item;
        ASSERT_TRUE(HDlgReadItem(t.b.data(), t.b.size(), &at, &item)) << c.words[1];
        EXPECT_EQ(t.b.size(), at);
        EXPECT_EQ("T", Narrow(item.title));
        EXPECT_STREQ(c.known, item.knownClass);
        if (!c.known)
            EXPECT_EQ(c.asString, Narrow(item.className));
    }
}

TEST(DlgTemplate, ItemsAreAlignedAndCarryTheirCreationData)
{
    Bytes t;
    t.Header(0, 2, "x"); // a caption of one character leaves the items unaligned
    size_t at = t.b.size(), first = at;
    t.Item(42).Str("HStat").Str("Hello").Word(3);
    t.b.insert(t.b.end(), {0xAA, 0xBB, 0xCC});
    size_t end = t.b.size();
    t.Item(43).Word(0xFFFF).Word(0x80).Str("").Word(0);
    HDlgItem item;
    ASSERT_TRUE(HDlgReadItem(t.b.data(), t.b.size(), &at, &item));
    EXPECT_EQ(0x50010000u, item.style);
    EXPECT_EQ(-6, item.y);
    EXPECT_EQ(42, item.id);
    EXPECT_EQ("Hello", Narrow(item.title));
    ASSERT_EQ(3, item.dataSize);
    EXPECT_EQ(0xCC, item.data[2]);
    ASSERT_TRUE(HDlgReadItem(t.b.data(), t.b.size(), &at, &item));
    EXPECT_EQ(43, item.id);
    EXPECT_EQ(t.b.size(), at);
    // Cut anywhere, the first item is refused and the offset stays.
    for (size_t size = first; size < end; ++size) {
        at = first;
        EXPECT_FALSE(HDlgReadItem(t.b.data(), size, &at, &item)) << size;
        EXPECT_EQ(first, at);
    }
    at = (size_t)-2;
    EXPECT_FALSE(HDlgReadItem(t.b.data(), t.b.size(), &at, &item));
}

} // namespace
