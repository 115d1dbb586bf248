// The frame's window-free string helpers: bounded copy, StringParse, heap strings.
#include "frame/strings.h"
#include "seam.h"
#include <gtest/gtest.h>
#include <string.h>
#include <string>
#include <tuple>

namespace {

// expected null: nothing written at all. A negative limit means no limit.
constexpr struct { const char* source; int limit; const char* expected; int result; } kCopyCases[] = {
    {"hello", 0, nullptr, 0}, {"hello", 1, "", 0},      {"hello", 3, "he", 2},  {"hello", 5, "hell", 4},
    {"hello", 6, "hello", 5}, {"hello", 100, "hello", 5}, {"hello", -1, "hello", 5}, {"hello", -1000, "hello", 5},
    {"", 4, "", 0},           {"", -1, "", 0},            {nullptr, 4, "", 0}, // a null source copies an empty text
};

TEST(StringsFstrnzcpy, CopiesAtMostLimitLessOneAndAlwaysTerminates)
{
    for (const auto& c : kCopyCases) {
        char buffer[16];
        memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(c.result, _fstrnzcpy(buffer, c.source, c.limit)) << c.source << " limit " << c.limit;
        std::string expected = c.expected ? std::string(c.expected) + '\0' : "";
        expected.resize(sizeof buffer, '#');
        EXPECT_EQ(expected, std::string(buffer, sizeof buffer)) << c.source << " limit " << c.limit;
    }
    EXPECT_EQ(0, _fstrnzcpy(nullptr, "abc", 4));
}

constexpr struct {
    const char* text;
    char stop, escape, replace, replacement;
    const char* expected;
    int restOffset; // where rest lands, from the start of text
} kParseCases[] = {
    {"a\\;b;c", ';', '\\', 0, 0, "a;b", 5},              // an escaped stop is kept
    {"a;b;c", ';', 0, ';', ',', "a,b,c", 5},             // replace is tested before stop,
    {"a\\b", 0, '\\', '\\', '/', "a/b", 3},              // and before escape
    {"a^b^", 0, 0, '^', 0, "ab", 4},                     // replacement 0 drops the character
    {"one^two", 0, '\\', '^', '\n', "one\ntwo", 7},      {"ab\\", 0, '\\', 0, 0, "ab", 3}, // an escape at the end stops
    {"a\\\\b", 0, '\\', 0, 0, "a\\b", 4},                {"a\\^b", 0, '\\', '^', '\n', "a^b", 4},
    {"a;b", 0, 0, 0, 0, "a;b", 3},                       // stop 0 means no stop
    {";x", ';', 0, 0, 0, "", 1},                         {"", ';', '\\', '^', '\n', "", 0},
    {"\"x\"\ty", '\t', 0, '"', 0, "x", 4},               {"c\\:\\a.bmp:b.bmp", ':', '\\', 0, 0, "c:a.bmp", 10},
};

TEST(StringsStringParse, FollowsReplaceEscapeStopOrder)
{
    for (const auto& c : kParseCases) {
        LPCSTR rest = nullptr;
        EXPECT_STREQ(c.expected, StringParse(c.text, c.stop, c.escape, c.replace, c.replacement, &rest)) << c.text;
        EXPECT_EQ(c.text + c.restOffset, rest) << c.text;
    }
    std::string text = std::string(400, 'a') + ";tail";
    LPCSTR rest = "unchanged";
    EXPECT_EQ((size_t)kStringParseSize - 1, strlen(StringParse(text.c_str(), ';', 0, 0, 0, &rest)))
        << "a long text is cut at the buffer";
    EXPECT_STREQ("tail", rest) << "but rest still passes the stop";
    EXPECT_STREQ("", StringParse(nullptr, ';', 0, 0, 0, &rest));
    EXPECT_EQ(nullptr, rest);
}

TEST(StringsHeap, DupAndDupFillMakeOwnTerminatedCopies)
{
    const char text[] = "caption";
    LPSTR copy = HStrDup(text);
    ASSERT_NE(nullptr, copy);
    EXPECT_TRUE(copy != text && !strcmp(text, copy) && SeamSize(copy) >= sizeof text);
    SeamFree(copy);
    for (auto [source, fill, expected] :
         {std::tuple{"abc", '*', "***"}, {"", '*', ""}, {"12345678", ' ', "        "}}) {
        LPSTR s = HStrDupFill(source, fill);
        EXPECT_STREQ(expected, s) << "the length kept, only the fill";
        SeamFree(s);
    }
    EXPECT_TRUE(!HStrDup(nullptr) && !HStrDupFill(nullptr, '*'));
}

TEST(StringsHeap, ReplaceFreesTheOldStringAndStoresACopy)
{
    LPSTR slot = nullptr;
    const char first[] = "first";
    LPSTR result = HStrReplace(&slot, first);
    EXPECT_TRUE(result == slot && slot && slot != first && !strcmp("first", slot)) << "the result is the stored copy";
    HStrReplace(&slot, "second");
    HStrReplace(&slot, slot); // the slot's own string: copied before the old one goes
    EXPECT_STREQ("second", slot);
    EXPECT_TRUE(!HStrReplace(&slot, nullptr) && !slot && !HStrReplace(nullptr, "x"));
}

TEST(StringsOverwriteMode, SetReturnsThePreviousModeAndIsSharedByAll)
{
    int original = GetOverwriteMode();
    EXPECT_TRUE(SetOverwriteMode(1) == original && GetOverwriteMode() == 1);
    EXPECT_TRUE(SetOverwriteMode(7) == 1 && GetOverwriteMode() == 7);
    EXPECT_TRUE(SetOverwriteMode(original) == 7 && GetOverwriteMode() == original);
}

} // namespace
