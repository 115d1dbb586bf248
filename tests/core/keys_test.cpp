// Typed keystroke editing: whole values typed key by key, as a user types them.
#include "typed/keys.h"
#include "typedlocale.h"
#include <initializer_list>
#ifndef _WIN32
#include "seam_native.h"
#endif

namespace {

constexpr char kDelete = '\x7f'; // stands for the Delete key in a script
constexpr int kHere = -1;        // the key goes where the caret stands
constexpr int kExported = 0;     // the exported routines, which take no capacity

struct Key {
    int at;           // caret before the key, or kHere
    char key;
    const char* text; // the text after the key
    int advance;      // typed keys: advance, repaint and the result;
    int repaint;      // Delete: `result` is what HDataDeleteChar returns
    int result;
};

int Beeps()
{
#ifndef _WIN32
    return SeamNativeBeeps();
#else
    return 0;
#endif
}

// Types a script into a buffer of `capacity` bytes (the exported routines: 80) and checks every
// step. The caret follows the advance of each accepted key, and the result of Delete.
void Type(char cls, const char* mask, const char* start, int caret, std::initializer_list<Key> keys,
          int capacity = kExported)
{
    char buffer[80];
    const int limit = capacity == kExported ? (int)sizeof buffer - 1 : capacity;
    memset(buffer, 'Z', sizeof buffer);
    strcpy(buffer, start);
    int step = 0;
    for (const Key& k : keys) {
        if (k.at != kHere) caret = k.at;
        std::string before = buffer;
        std::string where = std::string("class ") + cls + " mask '" + (mask ? mask : "(null)") + "' step " +
                            std::to_string(++step) + " on '" + before + "' at " + std::to_string(caret) +
                            " key '" + (k.key == kDelete ? std::string("Delete") : std::string(1, k.key)) + "'";
        if (k.key == kDelete) {
            int beeps = Beeps();
            int r = capacity == kExported ? HDataDeleteChar(cls, 'x', buffer, mask, caret)
                                          : HDataDeleteCharN(cls, 'x', buffer, mask, caret, capacity);
            EXPECT_EQ(k.result, r) << where;
#ifndef _WIN32
            bool silent = strchr("bhsx", cls) != nullptr; // these never find nothing to delete
            EXPECT_EQ(k.result == 0 && before == buffer && !silent ? 1 : 0, Beeps() - beeps) << where << " beeps";
#endif
            (void)beeps;
            caret += r;
        } else {
            int advance = -99, repaint = -99;
            int r = capacity == kExported
                        ? HDataTypeChar(cls, 'x', buffer, mask, caret, k.key, &advance, &repaint)
                        : HDataTypeCharN(cls, 'x', buffer, mask, caret, k.key, &advance, &repaint, capacity);
            EXPECT_EQ(k.result, r != 0) << where;
            EXPECT_EQ(k.advance, advance) << where;
            EXPECT_EQ(k.repaint, repaint) << where;
            if (!r) caret += advance;
        }
        EXPECT_STREQ(k.text, buffer) << where;
        EXPECT_EQ('Z', buffer[limit]) << where << ": written past the buffer";
    }
}

using Keys = TypedLocale;

// ---- Numbers ----

TEST_F(Keys, NumberTypedFromEmptyStopsAtTheMaskCapacities)
{
    Type('n', "#,##0.00", "", 0, {
        {kHere, '1', "1", 1, 1, 0}, {kHere, '2', "12", 1, 1, 0}, {kHere, '3', "123", 1, 1, 0},
        {kHere, '4', "1234", 1, 1, 0}, {kHere, '5', "1234", 0, 0, 1}, // four integer places
        {kHere, '.', "1234.", 1, 1, 0},                               // the point is written at the end
        {kHere, '5', "1234.5", 1, 1, 0}, {kHere, '0', "1234.50", 1, 1, 0},
        {kHere, '9', "1234.50", 0, 0, 1}, {kHere, 'x', "1234.50", 0, 0, 1}, // two decimals; no letters
        {kHere, kDelete, "1234.50", 0, 0, 0},                               // nothing at the end: beep
        {6, kDelete, "1234.50", 0, 0, 1}, // a required decimal is zeroed, the caret steps on
        {5, ' ', "1234.00", 1, 1, 0},                                       // a blank deletes too
        {0, ' ', "234.00", 0, 1, 0},                                        // an optional digit goes
    });
    Type('n', nullptr, "", 0, { // without a mask: the default mask
        {kHere, '4', "4", 1, 1, 0}, {kHere, '.', "4.", 1, 1, 0}, {kHere, '1', "4.1", 1, 1, 0},
    });
}

TEST_F(Keys, MinusSignIsTypedInFrontAndDroppedByADigit)
{
    Type('n', "#,##0.00", "12.50", 0, {
        {kHere, '-', "-12.50", 1, 1, 0}, {kHere, '-', "-12.50", 0, 0, 1}, // only at the front
        {0, '-', "-12.50", 1, 1, 0},                                      // a second sign is not added
        {0, 'x', "-12.50", 0, 0, 1},                                      // a refused key keeps the sign
        {0, '7', "72.50", 1, 1, 0},                                       // a digit over the sign drops it
        {0, '-', "-72.50", 1, 1, 0}, {0, kDelete, "72.50", 0, 0, 0},
    });
}

TEST_F(Keys, ThePointJumpsToTheFractionAndADigitOnItFillsTheIntegerPartFirst)
{
    Type('n', "#,##0.00", "1234.00", 1, {
        {kHere, '.', "1.00", 1, 7, 0}, {kHere, '.', "1.00", 0, 0, 1}, // drops the digits passed; not behind it
    });
    Type('n', "0.00", "0.00", 0, {
        {kHere, '.', "0.00", 2, 2, 0}, {kHere, '7', "0.70", 1, 1, 0}, // a required digit is zeroed and passed over
    });
    Type('n', "#,##0", "12", 2, {{kHere, '.', "12", 0, 0, 1}}); // no fraction in the mask, no point
    Type('n', "#0.00", "5.00", 1, {
        {kHere, '7', "57.00", 1, 1, 0}, // room in the integer part: inserted
        {kHere, '8', "57.80", 2, 2, 0}, // full: written behind the point
    });
    Type('n', "0.00", "5.", 1, {{kHere, '7', "5.7", 2, 2, 0}}); // inserted when the text ends at the point
    Type('n', "0", "5", 1, {{kHere, '7', "5", 0, 0, 1}});
}

TEST_F(Keys, DeleteZeroesRequiredDigitsAndRemovesOthers)
{
    Type('n', "0.00", "0.05", 0, {
        {kHere, kDelete, "0.05", 0, 0, 1}, {kHere, kDelete, "0.05", 0, 0, 1}, // the point is stepped over
        {kHere, kDelete, "0.05", 0, 0, 1}, {kHere, kDelete, "0.00", 0, 0, 1}, {kHere, kDelete, "0.00", 0, 0, 0},
    });
    Type('c', "$#,##0.00", "-1234.5", 0, {
        {kHere, kDelete, "1234.5", 0, 0, 0}, {kHere, kDelete, "234.5", 0, 0, 0}, // the sign goes, then a digit
    });
}

TEST_F(Keys, NumbersFollowTheDecimalSeparatorButTheCalculatorWritesAFullStop)
{
    ASSERT_TRUE(SetDecimalSep(','));
    Type('n', "#,##0.00", "12", 2, {
        {kHere, ',', "12,", 1, 1, 0}, {kHere, '.', "12,", 0, 0, 1}, // the full stop is no longer the point
        {kHere, '5', "12,5", 1, 1, 0}, {2, kDelete, "12,5", 0, 0, 1},
    });
    Type('z', "0.00", "1,23", 4, {
        {3, kDelete, "0.12", 0, 0, 1}, {kHere, '5', "1.25", 0, 4, 0}, // the full stop is the point from then on
    });
}

TEST_F(Keys, CalculatorDigitsEnterAtTheRightAndPushThePoint)
{
    Type('z', "0.00", "0.00", 4, {
        {kHere, '1', "0.01", 0, 4, 0}, {kHere, '2', "0.12", 0, 4, 0}, {kHere, '3', "1.23", 0, 4, 0},
        {kHere, '4', "12.34", 1, 5, 0}, {kHere, '-', "-12.34", 1, 6, 0},
        {kHere, '-', "12.34", -1, 7, 0},                                    // a second minus takes the sign away
        {kHere, '+', "12.34", 0, 6, 0}, {kHere, '.', "12.34", 0, 6, 0},     // the point stays where the mask puts it
        {kHere, 'x', "12.34", 0, 0, 1}, {kHere, kDelete, "12.34", 0, 0, 0}, // the caret is at the end
        {4, kDelete, "1.23", 0, 0, 0}, {3, kDelete, "0.12", 0, 0, 1},       // a zero comes in front, the caret steps on
        {1, kDelete, "0.12", 0, 0, 1}, {0, '-', "-0.12", 1, 5, 0}, {0, kDelete, "0.12", 0, 0, 0},
    });
}

// ---- Masked text, booleans, characters, strings ----

TEST_F(Keys, MaskedTextStepsOverLiteralsSkipsBracketsAndTakesEscapesAsLiterals)
{
    Type('m', "##-##", "__-__", 0, {
        {kHere, '1', "1_-__", 1, 1, 0}, {kHere, '2', "12-__", 1, 1, 0},
        {kHere, '3', "12-3_", 2, 2, 0},                                 // behind the "-"
        {kHere, 'a', "12-3_", 0, 0, 1},                                 // no letter at "#"
        {kHere, '4', "12-34", 1, 1, 0}, {kHere, '5', "12-34", 0, 0, 1}, // the mask has ended
        {2, '-', "12-34", 1, 1, 0},                                     // a literal typed is stepped over
        {3, kDelete, "12-_4", 0, 0, 1}, {2, kDelete, "12-_4", 0, 0, 1}, {5, kDelete, "12-_4", 0, 0, 0},
    });
    Type('m', "[blue]\\##!&@*", "#_-   ", 0, {
        {kHere, '5', "#5-   ", 2, 2, 0}, {kHere, '+', "#5+   ", 1, 1, 0}, {kHere, 'q', "#5+q  ", 1, 1, 0},
        {kHere, '7', "#5+q  ", 0, 0, 1}, // "@" takes letters only
        {kHere, 'w', "#5+qw ", 1, 1, 0}, {kHere, ' ', "#5+qw ", 1, 1, 0},
        {2, kDelete, "#5-qw ", 0, 0, 1}, // the fill of "!"
    });
    Type('m', "", "ab", 1, {{kHere, 'x', "axb", 1, 1, 0}, {0, kDelete, "xb", 0, 0, 0}}); // no mask: plain text
}

TEST_F(Keys, BooleansChooseOrToggleTheWordCharactersTakeEveryKeyStringsOnlyDelete)
{
    Type('b', nullptr, "TRUE", 0, {
        {kHere, ' ', "FALSE", 0, 1000, 0}, {kHere, ' ', "TRUE", 0, 1000, 0}, {kHere, 'f', "FALSE", 0, 1000, 0},
        {kHere, 'T', "TRUE", 0, 1000, 0}, {kHere, 'x', "TRUE", 0, 0, 1}, {kHere, kDelete, "TRUE", 0, 0, 0},
    });
    Type('b', "Yes;No", "Yes", 0, {{kHere, 'n', "No", 0, 1000, 0}, {kHere, 'Y', "Yes", 0, 1000, 0}});
    Type('b', "Yes;Yeah", "Yeah", 0, {{kHere, 'y', "Yes", 0, 1000, 0}}); // the same letter: the first word
    Type('h', nullptr, "a", 0, {{kHere, '%', "%", 0, 1, 0}, {kHere, kDelete, " ", 0, 0, 0}});
    Type('h', nullptr, "", 0, {{kHere, 'q', "q", 0, 1, 0}});
    Type('s', nullptr, "abc", 1, {{kHere, 'x', "abc", 0, 0, 1}, {kHere, kDelete, "ac", 0, 0, 0}});
    Type('x', nullptr, "abc", 1, {{kHere, 'x', "abc", 0, 0, 1}, {kHere, kDelete, "abc", 0, 0, 0}}); // no class: no beep
}

// ---- Dates and times ----

TEST_F(Keys, DateTypedOverItsDisplay)
{
    Type('d', nullptr, "03/07/2026", 0, {
        {kHere, '1', "13/07/2026", 1, 1, 0}, {kHere, '2', "12/07/2026", 1, 1, 0},
        {kHere, '/', "12/07/2026", 1, 1, 0}, // on a separator: steps over it
        {kHere, '3', "12/37/2026", 1, 1, 0}, {kHere, '1', "12/31/2026", 1, 1, 0},
        {kHere, '5', "12/31/5026", 2, 2, 0}, // on a separator: into the next field
        {10, '1', "12/31/5026", 0, 0, 1},    // the end; the year cannot grow
        {0, '/', "12/31/5026", 3, 1, 0},     // behind the next separator
        {6, '/', "12/31/5026", 0, 0, 1},     // none left
        {0, 'a', "12/31/5026", 0, 0, 1}, {0, ' ', " 2/31/5026", 1, 1, 0}, {3, kDelete, " 2/ 1/5026", 0, 0, 1},
        {2, kDelete, " 2/ 1/5026", 0, 0, 1}, {10, kDelete, " 2/ 1/5026", 0, 0, 0},
        {3, '4', " 2/41/5026", 1, 1, 0}, // a digit fills a blank
    });
}

TEST_F(Keys, OneLetterFieldsGrowAndShrink)
{
    Type('t', nullptr, "2:05:09 pm", 0, {
        {kHere, '1', "1:05:09 pm", 1, 1, 0},
        {kHere, '1', "11:05:09 pm", 1, 10, 0},                            // one digit and the caret behind it: grows
        {kHere, '2', "11:25:09 pm", 2, 2, 0},                             // two digits: the separator passes it on
        {0, ' ', "1:25:09 pm", 0, 11, 0},                                 // two digits and the caret in them: shrinks
        {0, ' ', " :25:09 pm", 1, 1, 0},                                  // one digit: blanked
        {0, '9', "9:25:09 pm", 1, 1, 0}, {7, ':', "9:25:09 pm", 1, 1, 0}, // a blank of the mask lets punctuation pass
        {8, 'a', "9:25:09 am", 1, 1, 0}, {5, 'a', "9:25:09 am", 0, 0, 1}, // letters only at the am/pm place
        {0, kDelete, " :25:09 am", 0, 0, 1},
    });
    Type('t', nullptr, "1", 1, {
        {kHere, '2', "12", 1, 1, 0}, {kHere, '3', "12", 0, 0, 1}, {kHere, ':', "12", 0, 0, 1}, // at the end it grows
    });
    Type('t', nullptr, "12:05:09 pm", 0, {{kHere, kDelete, "2:05:09 pm", 0, 0, 0}}); // shrinking keeps the caret
}

TEST_F(Keys, DateAndTimeShareOneTextAndFollowTheLocale)
{
    Type('a', nullptr, "03/07/2026 2:05:09 pm", 10, {
        {kHere, '1', "03/07/2026 1:05:09 pm", 2, 2, 0}, // on the blank: into the hour
        {kHere, '0', "03/07/2026 10:05:09 pm", 1, 10, 0},
    });
    Type('k', "dd/mm/yyyy hh:mm", "03/07/2026 2:05 pm", 0, {
        {kHere, '0', "03/07/2026 2:05 pm", 1, 1, 0}, {14, '3', "03/07/2026 2:03 pm", 1, 1, 0},
    });
    ASSERT_TRUE(SetDateSep('-') && SetTimeSep('.'));
    Type('a', nullptr, "03-07-2026 2.05.09 pm", 2, {
        {kHere, '/', "03-07-2026 2.05.09 pm", 1, 1, 0}, {2, '9', "03-97-2026 2.05.09 pm", 2, 2, 0},
        {15, '7', "03-97-2026 2.05.79 pm", 2, 2, 0},
        {12, '1', "03-97-2026 21.05.79 pm", 1, 10, 0}, // behind a one-digit hour it grows
    });
    ASSERT_TRUE(SetDefDateFormat("yyyy.mm.dd"));
    Type('d', nullptr, "2026.03.07", 4, {{kHere, '1', "2026.13.07", 2, 2, 0}});
}

// ---- Bounds ----

TEST_F(Keys, KeysThatWouldNotFitTheBufferAreRefused)
{
    Type('n', nullptr, "1234", 4, {
        {kHere, '5', "1234", 0, 0, 1}, {kHere, '.', "1234", 0, 0, 1}, {0, '-', "1234", 0, 0, 1},
        {0, '9', "9234", 1, 1, 0},
    }, 5);
    Type('t', nullptr, "1:05", 1, {{kHere, '2', "1:05", 0, 0, 1}}, 5);
    Type('z', "0.00", "1.23", 4, {{kHere, '4', "1.23", 0, 0, 1}, {kHere, '-', "1.23", 0, 0, 1}}, 5);
    Type('z', "0.00", "123", 1, {{kHere, kDelete, "123", 0, 0, 0}}, 4); // the point would not fit
    Type('m', "###", "12", 2, {{kHere, '3', "12", 0, 0, 1}}, 3);
    Type('h', nullptr, "", 0, {{kHere, 'q', "", 0, 0, 1}}, 1);
}

TEST_F(Keys, ATextWithoutTerminatorInItsBufferTakesNoKey)
{
    char text[4] = {'1', '2', '3', '4'};
    int advance = 5, repaint = 5;
    EXPECT_NE(0, HDataTypeCharN('n', 'd', text, nullptr, 0, '5', &advance, &repaint, 4));
    EXPECT_EQ(0, advance);
    EXPECT_EQ(0, repaint);
    EXPECT_EQ(0, HDataDeleteCharN('s', 's', text, nullptr, 0, 4));
    EXPECT_EQ(0, memcmp(text, "1234", 4));
    EXPECT_NE(0, HDataTypeCharN('n', 'd', nullptr, nullptr, 0, '5', &advance, &repaint, 4));
    EXPECT_NE(0, HDataTypeCharN('n', 'd', text, nullptr, 9, '5', nullptr, nullptr, 4));
}

TEST_F(Keys, InsertFillOpensRoomAndFillsIt)
{
    static const struct { const char* text; char fill; int count, position; const char* result; } rows[] = {
        {"abc", '_', 2, 1, "a__bc"}, {"abc", '_', 1, 0, "_abc"}, {"abc", '_', 1, 3, "abc_"},
        {"abc", '_', 1, 9, "abc_"}, {"abc", '_', 0, 1, "abc"}, {"", '0', 3, 0, "000"},
    };
    for (const auto& r : rows) {
        char buffer[16];
        strcpy(buffer, r.text);
        EXPECT_EQ(buffer, HStrInsertFill(buffer, r.fill, r.count, r.position));
        EXPECT_STREQ(r.result, buffer) << r.text << " " << r.count << " at " << r.position;
    }
}

} // namespace
