// Colour texts: StringToColor's names and numbers, HTypedParseColors cutting
// "[colour]" sections out of a mask, and HStat's specification fields.
#include "buttons/hstat.h"
#include "edit/typed.h"
#include <gtest/gtest.h>
#include <string.h>
#include <string>

namespace {

constexpr COLORREF kKeep = 0x12345678; // nothing stored

const struct { const char* text; COLORREF color; } kColors[] = {
    {"red", 0x0000ff},      {"[rot]", 0x0000ff},   {"blue", 0xff0000},    {"cyan", 0xffff00},
    {"dark", 0x7f7f00},     {"gray", 0x7f7f7f},    {"black", 0x000000},   {"dkred", 0x00007f},
    {"[GREEN]", 0x00ff00},  {"[gxxxx]", 0x00ff00}, {"lgrey", 0xc0c0c0},   {"olive", 0x007f7f},
    {"white", 0xffffff},    {"dkblue", 0x7f0000},  {"purple", 0x7f007f},  {"yellow", 0x00ffff},
    {"dkgreen", 0x007f00},  {"Magenta", 0xff00ff}, {"[teal]", kKeep},     {"r3d", kKeep},
    {"", kKeep},            {" red", kKeep},       {"reddish", kKeep},    {"[255,128,0]", 0x0080ff},
    {"0 0 255", 0xff0000},  {"256;257;258", 0x020100}, {"99999999999999999999", 0xff}, {"12", 0x00000c},
};

TEST(StringToColor, ReadsNamesByLengthAndFirstLetterAndNumbersModulo256)
{
    for (const auto& c : kColors) {
        COLORREF color = kKeep;
        EXPECT_EQ(c.color != kKeep, StringToColor(c.text, &color)) << c.text;
        EXPECT_EQ(c.color, color) << c.text;
    }
    COLORREF color = kKeep;
    EXPECT_EQ(0, StringToColor(nullptr, &color));
    EXPECT_EQ(0, StringToColor("red", nullptr));
}

const struct { const char* text; bool second; int result; const char* rest; COLORREF first, alt; } kCuts[] = {
    {"[red];[blue]", true, 3, ";", 0x0000ff, 0xff0000},
    {"[red];[blue]", false, 1, ";", 0x0000ff, kKeep},
    {"\\[red]abc", true, 1, "abc", 0x0000ff, kKeep},   // the escape removes only itself
    {"a\\;b[red]", true, 2, "a;b", kKeep, 0x0000ff},   // an escaped ";" still counts
    {"0;0;[red]", true, 0, "0;0;", kKeep, kKeep},
    {"[teal]x;[red]", true, 2, "x;", kKeep, 0x0000ff},
    {"ab\\cd", true, 0, "ab\\cd", kKeep, kKeep},
    {"[red", true, 0, "", kKeep, kKeep},
    {"[red][blue]", true, 1, "", 0xff0000, kKeep},
    {"x;[red][blue]", true, 4, "x;", kKeep, 0xff0000}, // each second colour adds 2
};

TEST(HTypedParseColors, CutsSectionsAndSetsColoursBySeparatorCount)
{
    for (const auto& c : kCuts) {
        char text[32];
        strcpy(text, c.text);
        COLORREF first = kKeep, alt = kKeep;
        EXPECT_EQ(c.result, HTypedParseColors(text, &first, c.second ? &alt : nullptr)) << c.text;
        EXPECT_STREQ(c.rest, text) << c.text;
        EXPECT_EQ(c.first, first) << c.text;
        EXPECT_EQ(c.alt, alt) << c.text;
    }
    char text[] = "[red]x";
    EXPECT_EQ(0, HTypedParseColors(text, nullptr, nullptr));
    EXPECT_STREQ("[red]x", text);
}

TEST(HTypedParseColors, SectionLongerThanItsWorkBufferIsCutNotOverrun)
{
    std::string text = "[" + std::string(500, 'r') + "]tail";
    COLORREF first = kKeep;
    EXPECT_EQ(0, HTypedParseColors(text.data(), &first, nullptr));
    EXPECT_STREQ("tail", text.c_str());
    std::string digits = "[1,2," + std::string(300, '0') + "]x";
    EXPECT_EQ(1, HTypedParseColors(digits.data(), &first, nullptr));
    EXPECT_EQ(0x000201u, first);
}

TEST(StatSpec, ContentFollowsTheSecondSeparatorAndIsCutToTheWorkCopy)
{
    const struct { const char* spec; const char* content; COLORREF text, back; } kSpecs[] = {
        {"Hello", "Hello", kKeep, kKeep},   {"[red];[yellow];A^B", "A^B", 0x0000ff, 0x00ffff},
        {"[blue]Status", "Status", 0xff0000, kKeep}, {"a;b", "b", kKeep, kKeep},
        {"a;b;c;d", "c;d", kKeep, kKeep},   {"\\;x;y", "y", kKeep, kKeep},
    };
    char buffer[kStatSpecSize];
    for (const auto& s : kSpecs) {
        COLORREF text = kKeep, back = kKeep;
        EXPECT_STREQ(s.content, HStatSpecContent(s.spec, &text, &back, buffer)) << s.spec;
        EXPECT_EQ(s.text, text) << s.spec;
        EXPECT_EQ(s.back, back) << s.spec;
    }
    COLORREF text, back;
    EXPECT_STREQ("", HStatSpecContent(nullptr, &text, &back, buffer));
    std::string spec(1000, 'x');
    EXPECT_EQ((size_t)kStatSpecSize - 1, strlen(HStatSpecContent(spec.c_str(), &text, &back, buffer)));
}

} // namespace
