// HStat's specification text without windows: colours, the two ";" fields,
// the caret as a line break, and texts longer than the work copy.
#include "buttons/hstat.h"
#include "seam.h"
#include <gtest/gtest.h>
#include <string>

namespace {

constexpr COLORREF kKeep = 0xABCDEF;

struct SpecRow {
    const char* spec;
    const char* content;
    COLORREF text, back;
};

const SpecRow kRows[] = {
    {"Hello", "Hello", kKeep, kKeep},
    {"[red];[yellow];One^Two", "One^Two", 0x0000ff, 0x00ffff},
    {"[blue];;Status", "Status", 0xff0000, kKeep},
    {"[blue]Status", "Status", 0xff0000, kKeep},
    {"a;b", "b", kKeep, kKeep},
    {"a;b;c;d", "c;d", kKeep, kKeep},
    {";;", "", kKeep, kKeep},
    {"\\;x;y", "y", kKeep, kKeep}, // the escaped ";" still counts as a field
    {"", "", kKeep, kKeep},
};

TEST(StatSpec, ContentFollowsTheSecondSeparatorAndColoursAreCut)
{
    for (const SpecRow& r : kRows) {
        char buffer[kStatSpecSize];
        COLORREF text = kKeep, back = kKeep;
        EXPECT_STREQ(r.content, HStatSpecContent(r.spec, &text, &back, buffer)) << r.spec;
        EXPECT_EQ(r.text, text) << r.spec;
        EXPECT_EQ(r.back, back) << r.spec;
    }
}

TEST(StatSpec, NullSpecificationIsEmpty)
{
    char buffer[kStatSpecSize];
    COLORREF text = kKeep, back = kKeep;
    EXPECT_STREQ("", HStatSpecContent(nullptr, &text, &back, buffer));
    EXPECT_EQ(kKeep, text);
}

TEST(StatSpec, LongSpecificationIsCutToTheWorkCopy)
{
    std::string spec(1000, 'x');
    char buffer[kStatSpecSize];
    COLORREF text, back;
    LPCSTR content = HStatSpecContent(spec.c_str(), &text, &back, buffer);
    EXPECT_EQ((size_t)kStatSpecSize - 1, strlen(content));
}

struct TextRow {
    const char* content;
    const char* shown;
};

const TextRow kTexts[] = {
    {"One^Two", "One\nTwo"},
    {"^^", "\n\n"},
    {"a\\^b", "a\\\nb"}, // no escape character: the backslash stays
    {"[red]", "[red]"},
    {"", ""},
};

TEST(StatSpec, CaretBecomesLineFeedAndNothingElseIsSpecial)
{
    for (const TextRow& t : kTexts) {
        LPSTR shown = HStatSpecText(t.content);
        ASSERT_NE(nullptr, shown);
        EXPECT_STREQ(t.shown, shown);
        SeamFree(shown);
    }
}

} // namespace
