// The frame's window-free string helpers: bounded copy, StringParse, heap strings.
#include "frame/strings.h"
#include "seam.h"
#include <gtest/gtest.h>
#include <string.h>
#include <string>

namespace {

struct CopyCase {
    const char* source;
    int limit;
    const char* expected; // null: nothing written at all
    int result;
};

constexpr CopyCase kCopyCases[] = {
    {"hello", 0, nullptr, 0},
    {"hello", 1, "", 0},
    {"hello", 3, "he", 2},
    {"hello", 5, "hell", 4},
    {"hello", 6, "hello", 5},
    {"hello", 100, "hello", 5},
    {"hello", -1, "hello", 5},
    {"hello", -1000, "hello", 5},
    {"", 4, "", 0},
    {"", -1, "", 0},
};

TEST(StringsFstrnzcpy, CopiesAtMostLimitLessOneAndAlwaysTerminates)
{
    for (const CopyCase& c : kCopyCases) {
        char buffer[16];
        memset(buffer, '#', sizeof buffer);
        int result = _fstrnzcpy(buffer, c.source, c.limit);
        EXPECT_EQ(c.result, result) << c.source << " limit " << c.limit;
        if (!c.expected) {
            EXPECT_EQ('#', buffer[0]) << "limit 0 must write nothing";
            continue;
        }
        EXPECT_STREQ(c.expected, buffer) << c.source << " limit " << c.limit;
        size_t written = strlen(c.expected) + 1;
        for (size_t i = written; i < sizeof buffer; ++i)
            ASSERT_EQ('#', buffer[i]) << "byte " << i << " written behind the terminator";
    }
}

TEST(StringsFstrnzcpy, NullSourceCopiesAnEmptyText)
{
    char buffer[4] = "xyz";
    EXPECT_EQ(0, _fstrnzcpy(buffer, nullptr, 4));
    EXPECT_STREQ("", buffer);
    EXPECT_EQ(0, _fstrnzcpy(nullptr, "abc", 4));
}

struct ParseCase {
    const char* name;
    const char* text;
    char stop, escape, replace, replacement;
    const char* expected;
    int restOffset; // where rest lands, from the start of text
};

constexpr ParseCase kParseCases[] = {
    {"escaped stop is kept", "a\\;b;c", ';', '\\', 0, 0, "a;b", 5},
    {"replace is tested before stop", "a;b;c", ';', 0, ';', ',', "a,b,c", 5},
    {"replacement 0 drops the character", "a^b^", 0, 0, '^', 0, "ab", 4},
    {"caret becomes a line feed", "one^two", 0, '\\', '^', '\n', "one\ntwo", 7},
    {"escape at the end stops", "ab\\", 0, '\\', 0, 0, "ab", 3},
    {"escaped escape is copied", "a\\\\b", 0, '\\', 0, 0, "a\\b", 4},
    {"escaped replace character stands", "a\\^b", 0, '\\', '^', '\n', "a^b", 4},
    {"replace is tested before escape", "a\\b", 0, '\\', '\\', '/', "a/b", 3},
    {"stop 0 means no stop", "a;b", 0, 0, 0, 0, "a;b", 3},
    {"stop at the start gives an empty field", ";x", ';', 0, 0, 0, "", 1},
    {"empty text", "", ';', '\\', '^', '\n', "", 0},
    {"tab-separated cell with quotes dropped", "\"x\"\ty", '\t', 0, '"', 0, "x", 4},
    {"escape drops itself before any character", "c\\:\\a.bmp:b.bmp", ':', '\\', 0, 0, "c:a.bmp", 10},
};

TEST(StringsStringParse, FollowsReplaceEscapeStopOrder)
{
    for (const ParseCase& c : kParseCases) {
        LPCSTR rest = nullptr;
        LPSTR result = StringParse(c.text, c.stop, c.escape, c.replace, c.replacement, &rest);
        EXPECT_STREQ(c.expected, result) << c.name;
        EXPECT_EQ(c.text + c.restOffset, rest) << c.name;
    }
}

TEST(StringsStringParse, LongTextIsCutAtTheBufferButRestStillPassesTheStop)
{
    std::string text(400, 'a');
    text += ";tail";
    LPCSTR rest = nullptr;
    LPSTR result = StringParse(text.c_str(), ';', 0, 0, 0, &rest);
    EXPECT_EQ((size_t)kStringParseSize - 1, strlen(result));
    EXPECT_STREQ("tail", rest);
}

TEST(StringsStringParse, NullTextGivesAnEmptyResultAndNullRest)
{
    LPCSTR rest = "unchanged";
    EXPECT_STREQ("", StringParse(nullptr, ';', 0, 0, 0, &rest));
    EXPECT_EQ(nullptr, rest);
}

TEST(StringsHeap, DupMakesAnOwnTerminatedCopy)
{
    const char text[] = "caption";
    LPSTR copy = HStrDup(text);
    ASSERT_NE(nullptr, copy);
    EXPECT_NE(text, copy);
    EXPECT_STREQ(text, copy);
    EXPECT_GE(SeamSize(copy), sizeof text);
    SeamFree(copy);
    EXPECT_EQ(nullptr, HStrDup(nullptr));
}

struct FillCase {
    const char* text;
    char fill;
    const char* expected;
};

constexpr FillCase kFillCases[] = {
    {"abc", '*', "***"},
    {"", '*', ""},
    {"12345678", ' ', "        "},
};

TEST(StringsHeap, DupFillKeepsTheLengthAndUsesOnlyTheFill)
{
    for (const FillCase& c : kFillCases) {
        LPSTR s = HStrDupFill(c.text, c.fill);
        ASSERT_NE(nullptr, s) << c.text;
        EXPECT_STREQ(c.expected, s);
        SeamFree(s);
    }
    EXPECT_EQ(nullptr, HStrDupFill(nullptr, '*'));
}

TEST(StringsHeap, ReplaceFreesTheOldStringAndStoresACopy)
{
    LPSTR slot = nullptr;
    const char first[] = "first";
    EXPECT_EQ(slot, HStrReplace(&slot, first));
    ASSERT_NE(nullptr, slot);
    EXPECT_NE(first, slot);
    EXPECT_STREQ("first", slot);

    HStrReplace(&slot, "second");
    EXPECT_STREQ("second", slot);

    // The slot's own string as the new text: copied before the old one goes.
    HStrReplace(&slot, slot);
    EXPECT_STREQ("second", slot);

    EXPECT_EQ(nullptr, HStrReplace(&slot, nullptr));
    EXPECT_EQ(nullptr, slot);
    EXPECT_EQ(nullptr, HStrReplace(nullptr, "x"));
}

TEST(StringsOverwriteMode, SetReturnsThePreviousModeAndIsSharedByAll)
{
    int original = GetOverwriteMode();
    EXPECT_EQ(original, SetOverwriteMode(1));
    EXPECT_EQ(1, GetOverwriteMode());
    EXPECT_EQ(1, SetOverwriteMode(7));
    EXPECT_EQ(7, GetOverwriteMode());
    EXPECT_EQ(7, SetOverwriteMode(original));
    EXPECT_EQ(original, GetOverwriteMode());
}

} // namespace
