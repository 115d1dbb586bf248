// Colour texts: StringToColor's names and numbers, and HTypedParseColors cutting
// "[colour]" sections out of a mask in place.
#include "edit/typed.h"
#include <gtest/gtest.h>
#include <string.h>
#include <string>

namespace {

constexpr COLORREF kUntouched = 0x12345678;

struct ColorCase {
    const char* text;
    BOOL result;
    COLORREF color; // kUntouched: nothing stored
};

constexpr ColorCase kColorCases[] = {
    {"red", 1, 0x0000ff},         {"[red]", 1, 0x0000ff},      {"RED", 1, 0x0000ff},
    {"rot", 1, 0x0000ff},         {"blue", 1, 0xff0000},       {"cyan", 1, 0xffff00},
    {"dark", 1, 0x7f7f00},        {"grey", 1, 0x7f7f7f},       {"gray", 1, 0x7f7f7f},
    {"black", 1, 0x000000},       {"dkred", 1, 0x00007f},      {"[GREEN]", 1, 0x00ff00},
    {"[gxxxx]", 1, 0x00ff00},     {"lgrey", 1, 0xc0c0c0},      {"olive", 1, 0x007f7f},
    {"white", 1, 0xffffff},       {"dkblue", 1, 0x7f0000},     {"purple", 1, 0x7f007f},
    {"yellow", 1, 0x00ffff},      {"dkgreen", 1, 0x007f00},    {"Magenta", 1, 0xff00ff},
    {"[teal]", 0, kUntouched},    {"orange", 0, kUntouched},   {"r3d", 0, kUntouched},
    {"", 0, kUntouched},          {"[", 0, kUntouched},        {" red", 0, kUntouched},
    {"reddish", 0, kUntouched},   {"[255,128,0]", 1, 0x0080ff}, {"0 0 255", 1, 0xff0000},
    {"256;257;258", 1, 0x020100}, {"[1.2.3.4]", 1, 0x030201},  {"99999999999999999999", 1, 0xff},
    {"12", 1, 0x00000c},          {"7 xyz 8", 1, 0x000807},    {"[10]", 1, 0x00000a},
};

TEST(StringToColor, ReadsNamesByLengthAndFirstLetterAndNumbersModulo256)
{
    for (const ColorCase& c : kColorCases) {
        COLORREF color = kUntouched;
        EXPECT_EQ(c.result, StringToColor(c.text, &color)) << c.text;
        EXPECT_EQ(c.color, color) << c.text;
    }
}

TEST(StringToColor, NullArgumentsGiveZero)
{
    COLORREF color = kUntouched;
    EXPECT_EQ(0, StringToColor(nullptr, &color));
    EXPECT_EQ(kUntouched, color);
    EXPECT_EQ(0, StringToColor("red", nullptr));
}

struct CutCase {
    const char* text;
    bool second;       // a second out pointer is given
    int result;
    const char* rest;  // the text afterwards
    COLORREF first, alt;
};

const CutCase kCutCases[] = {
    {"[red];[blue]", true, 3, ";", 0x0000ff, 0xff0000},
    {"[red];[blue]", false, 1, ";", 0x0000ff, kUntouched},
    {"#,##0[blue]", true, 1, "#,##0", 0xff0000, kUntouched},
    {"\\[red]abc", true, 1, "abc", 0x0000ff, kUntouched},
    {"a\\;b[red]", true, 2, "a;b", kUntouched, 0x0000ff},
    {"0;0;[red]", true, 0, "0;0;", kUntouched, kUntouched},
    {"[teal]x;[red]", true, 2, "x;", kUntouched, 0x0000ff},
    {"x;[teal]", true, 0, "x;", kUntouched, kUntouched},
    {"ab\\cd", true, 0, "ab\\cd", kUntouched, kUntouched},
    {"[red", true, 0, "", kUntouched, kUntouched},
    {"no colour", true, 0, "no colour", kUntouched, kUntouched},
    {"[0,0,255]x", true, 1, "x", 0xff0000, kUntouched},
    {"[red][blue]", true, 1, "", 0xff0000, kUntouched},
    {"x;[red][blue]", true, 4, "x;", kUntouched, 0xff0000}, // each second colour adds 2
    {"", true, 0, "", kUntouched, kUntouched},
};

TEST(HTypedParseColors, CutsSectionsAndSetsColoursBySeparatorCount)
{
    for (const CutCase& c : kCutCases) {
        char text[64];
        strcpy(text, c.text);
        COLORREF first = kUntouched, alt = kUntouched;
        EXPECT_EQ(c.result, HTypedParseColors(text, &first, c.second ? &alt : nullptr)) << c.text;
        EXPECT_STREQ(c.rest, text) << c.text;
        EXPECT_EQ(c.first, first) << c.text;
        EXPECT_EQ(c.alt, alt) << c.text;
    }
}

TEST(HTypedParseColors, NullTextOrFirstPointerChangesNothing)
{
    char text[] = "[red]x";
    COLORREF alt = kUntouched;
    EXPECT_EQ(0, HTypedParseColors(text, nullptr, &alt));
    EXPECT_STREQ("[red]x", text);
    EXPECT_EQ(0, HTypedParseColors(nullptr, &alt, &alt));
    EXPECT_EQ(kUntouched, alt);
}

TEST(HTypedParseColors, SectionLongerThanItsWorkBufferIsCutNotOverrun)
{
    std::string text = "[" + std::string(500, 'r') + "]tail";
    COLORREF first = kUntouched;
    EXPECT_EQ(0, HTypedParseColors(text.data(), &first, nullptr));
    EXPECT_STREQ("tail", text.c_str());
    std::string digits = "[1,2," + std::string(300, '0') + "]x";
    EXPECT_EQ(1, HTypedParseColors(digits.data(), &first, nullptr));
    EXPECT_EQ(0x000201u, first);
    EXPECT_STREQ("x", digits.c_str());
}

} // namespace
