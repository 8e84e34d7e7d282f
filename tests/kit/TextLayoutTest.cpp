// Where the characters of a text go, in a font of which the widths are known.

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <utf8.h>

#include "TextLayout.h"
#include "Utf8.h"

namespace kivgles::kit {
namespace {

// Ten pixels wide, but "i", "0" and "9" are four; the pen is not sure of "j"; there is no "#".
CharacterWidth FindInTestFont(char32_t character) {
    const bool narrow = character == U'i' || character == U'0' || character == U'9';
    return {character != U'#', narrow ? 4 : 10, character != U'j'};
}

// A text of 20 pixels: a space is 6, the box for a missing character 12 wide. Lines are 25 high, the baseline
// 20 below their top.
LayoutRules Box(int width, int height = 25) {
    LayoutRules rules;
    rules.box = {width, height};
    rules.size = 20;
    rules.lineHeight = 25;
    return rules;
}

// The same with another value of one of them.
template <typename Value>
LayoutRules With(LayoutRules rules, Value LayoutRules::*rule, Value value) {
    rules.*rule = value;
    return rules;
}

LayoutRules Wrapped(int width, int height = 1000) {
    return With(Box(width, height), &LayoutRules::wrapped, true);
}

LayoutRules Aligned(const LayoutRules& rules, Align align) { return With(rules, &LayoutRules::align, align); }

// "0:ab 26:c" are two runs with their pens, "[8,6]" is a box there, " / " is between lines, "+" at the end
// says that something was left out.
std::string Describe(const TextLayout& layout) {
    std::string text;
    for (const TextLine& line : layout.lines) {
        text += &line == &layout.lines.front() ? "" : " / ";
        const char* separator = "";
        for (const TextRun& run : line.runs) {
            text += separator + std::to_string(run.x) + ":" + utf8::utf16to8(run.units);
            separator = " ";
        }
        for (const Rect& box : line.boxes) {
            text += " [" + std::to_string(box.x) + "," + std::to_string(box.y) + "]";
        }
    }
    return text + (layout.whole ? "" : "+");
}

struct Case {
    const char* name;
    const char* text;
    LayoutRules rules;
    const char* expected;
};

const Case CASES[] = {
    {"SpacesInARowCountEach", " a  b", Box(100), "6:a 28:b"},
    {"SpacesAtTheEndDoNotCount", "ab   ", Aligned(Box(100), Align::RIGHT), "80:ab"},
    {"WideAndHalfSpaces", "a\u3000b\u2001c\u2003d\u2000e\u2002f", Box(200), "0:a 30:b 60:c 90:d 110:e 130:f"},
    {"ThinSpaces", "a\u2009b\u200Ac\u202Fd", Box(100), "0:a 14:b 28:c 42:d"},
    {"Center", "ab", Aligned(Box(101), Align::CENTER), "40:ab"},
    {"Missing", "a#b", Box(100), "0:a 22:b [11,6]"},
    {"PenIsPlacedAnewAfterADoubtfulCharacter", "ajb", Box(100), "0:aj 20:b"},
    {"Invisible", "a\u200D\uFE0F\u00ADb\x01", Box(100), "0:ab"},
    {"BadBytes", "a\xFF\xE6\x9D", Box(100), "0:a\uFFFD\uFFFD"},
    {"TabularDigits", "209a9", With(Box(100), &LayoutRules::tabular, true), "0:2 13:0 23:9 30:a 43:9"},
    {"LinesOfFeeds", "a\r\n\nb", Box(100, 75), "0:a /  / 0:b"},

    {"JustFits", "ab0", Box(24), "0:ab0"},
    {"NoSpaceBeforeAnEllipsis", "ab cdef", Box(40), "0:ab\u2026+"},
    {"RoomForTheEllipsisAlone", "ab", Box(10), "0:\u2026+"},
    {"LowBoxHasALineAllTheSame", "ab\nc", Box(100, 1), "0:ab\u2026+"},
    {"EachLineIsShortenedOnItsOwn", "abcd\nb", Box(39, 50), "0:ab\u2026 / 0:b+"},

    {"WrapsAtSpaces", "ab cd ef", Wrapped(50), "0:ab 26:cd / 0:ef"},
    {"SpacesHangOverTheEnd", "abc   de", Wrapped(30), "0:abc / 0:de"},
    {"NoBreakSpaceDoesNotWrap", "a b\u00A0c", Wrapped(40), "0:a / 0:b 16:c"},
    {"LongWordBeginsALineOfItsOwn", "a bcdef", Wrapped(35), "0:a / 0:bcd / 0:ef"},
    {"WrapsAtIdeographs", "ab\u6771\u6771\u6771", Wrapped(25), "0:ab / 0:\u6771\u6771 / 0:\u6771"},
    {"ClosingMarkDoesNotBeginALine", "\u6771\u6771\u3002", Wrapped(25), "0:\u6771 / 0:\u6771\u3002"},
    {"OpeningMarkDoesNotEndALine", "\u6771\u300C\u6771", Wrapped(25), "0:\u6771 / 0:\u300C\u6771"},
    {"LastLineIsShortened", "ab cd ef", Wrapped(40, 50), "0:ab / 0:cd\u2026+"},
    {"NotEvenOneCharacterFits", "ab cd", Wrapped(9), "+"},
    {"WrappedLinesAreAlignedEach", "abc d", Aligned(Wrapped(30), Align::RIGHT), "0:abc / 20:d"},

    {"BeforeTheVisible", "abcdef", With(Box(99), &LayoutRules::visibleBegin, 35), "10:b 20:c 30:d 40:ef"},
    {"BehindTheVisible", "abcdef", With(Box(99), &LayoutRules::visibleEnd, 15), "0:abcd"},
};

TEST(TextLayout, PlacesCharacters) {
    for (const Case& row : CASES) {
        EXPECT_EQ(Describe(LayOut(DecodeUtf8(row.text), row.rules, FindInTestFont)), row.expected)
            << row.name;
    }
}

TEST(TextLayout, StaysWithinItsBoxWhateverItIsGiven) {
    constexpr char32_t CHARACTERS[] = {U'a',      U'i',      U'j',      U'#',      U' ',      U'\n',
                                       U'\u6771', U'\u3002', U'\u3000', U'\u00A0', U'\u200B', U'1'};
    std::mt19937 random(1);
    const auto below = [&random](unsigned int limit) { return static_cast<int>(random() % limit); };
    for (int round = 0; round < 20000; ++round) {
        std::u32string text;
        for (int i = below(40); i > 0; --i) {
            text += CHARACTERS[below(std::size(CHARACTERS))];
        }
        LayoutRules rules = Box(below(120), below(120));
        rules.wrapped = below(2) == 0;
        rules.tabular = below(2) == 0;
        rules.align = static_cast<Align>(below(3));
        const TextLayout layout = LayOut(text, rules, FindInTestFont);
        const auto room = static_cast<std::size_t>(std::max(rules.box.height / rules.lineHeight, 1));
        ASSERT_LE(layout.lines.size(), room) << round;
        std::size_t drawn = 0;
        for (const TextLine& line : layout.lines) {
            ASSERT_GE(line.x, 0) << round;
            ASSERT_LE(line.x + line.width, rules.box.width) << round;
            drawn += line.boxes.size();
            for (const TextRun& run : line.runs) {
                ASSERT_GE(run.x, line.x) << round;
                ASSERT_LE(run.x + run.width, line.x + line.width) << round;
                ASSERT_FALSE(run.units.empty()) << round;
                drawn += run.units.size();
            }
        }
        // Nothing is lost in silence: all that has ink is in the lines, or `whole` is false.
        const auto hasInk = [](char32_t c) {
            return std::u32string_view(U" \n\u3000\u00A0\u200B").find(c) == std::u32string_view::npos;
        };
        const auto expected = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), hasInk));
        ASSERT_TRUE(!layout.whole || drawn == expected) << round << ": " << drawn << " of " << expected;
    }
}

TEST(TextLayout, HasAnEllipsisOfFullStopsWhereTheFontHasNone) {
    const auto findWithoutEllipsis = [](char32_t character) {
        return character == U'\u2026' ? CharacterWidth{} : FindInTestFont(character);
    };
    EXPECT_EQ(Describe(LayOut(U"abcdef", Box(50), findWithoutEllipsis)), "0:ab...+");
}

}  // namespace
}  // namespace kivgles::kit
