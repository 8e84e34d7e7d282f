// What a text does beside Pango: places, lines, digits, bytes that are no text, fonts of the client's own.

#include <array>
#include <cstdlib>
#include <fstream>
#include <future>

#include "Stage.h"
#include "kivgles/kit/Text.h"

namespace kivgles::kit {
namespace {

// Rectangles; at 40 pixels a unit is a pixel. H is 20 wide and 30 high, a 0 is 20 wide, all other digits 8.
Text Digits() {
    Text::AddFont(KIVGLES_TEST_FONTS "/digits.ttf");
    return Text().Family("digits");
}

Canvas Drawn(const Text& text, const std::string& utf8, const Rect& box) {
    Canvas canvas({300, 200});
    text.Draw(canvas, utf8, box);
    return canvas;
}

// Left, top, right and bottom edge of what is drawn.
using Box = std::array<int, 4>;
Box InkOf(const Text& text, const std::string& utf8, const Rect& box) {
    Box ink = {300, 200, 0, 0};
    int i = 0;
    for (const std::uint32_t pixel : PixelsOf(Drawn(text, utf8, box))) {
        const int x = i % 300, y = i++ / 300;
        if (pixel != 0) {
            ink = {std::min(ink[0], x), std::min(ink[1], y), std::max(ink[2], x + 1), y + 1};
        }
    }
    return ink;
}

TEST(Text, StandsAndLooksAsItsPropertiesSay) {
    const Text text = Digits();
    // Lines of 50 pixels with the baseline 35 below their top; the box from 55 to 200
    for (const auto& [vertical, top] : {std::pair{VerticalAlign::TOP, 60},
                                        {VerticalAlign::MIDDLE, 88},
                                        {VerticalAlign::BOTTOM, 105},
                                        {VerticalAlign::BASELINE, 120}}) {
        EXPECT_EQ(InkOf(text.Aligned(vertical), "H\nH", {10, 55, 100, 145})[1], top);
    }
    EXPECT_EQ(InkOf(text.Center().Middle(), "H", {100, 50, 60, 90}), (Box{120, 80, 140, 110}));
    EXPECT_EQ(InkOf(text.Outlined(RED, 3), "H", {50, 50, 100, 50}), (Box{47, 52, 73, 88}));
    EXPECT_EQ(InkOf(text.On(BLUE).Spaced(60), "H", {50, 50, 100, 50}), (Box{50, 50, 70, 110}));
    EXPECT_TRUE(Shows(Drawn(text, "H", {0, 0, 50, 50}), ~0U, {{9, 9}})) << "white";
    EXPECT_TRUE(
        Shows(Drawn(text.Colored({0, 0, 0, 100}), "HH", {0, 0, 50, 50}), 0x64000000, {{9, 9}, {30, 9}}));
    for (const std::uint32_t pixel : PixelsOf(Drawn(Text(40, {0, 0, 0, 100}), "😀", {0, 0, 99, 50}))) {
        ASSERT_LE(pixel >> 24, 100U) << "emoji are translucent, too";
    }
    EXPECT_EQ(Text(1e9, WHITE).LineHeight() + Text(-1, WHITE).LineHeight(), 1250 + 2);
    EXPECT_LT(InkOf(Text(20, WHITE), "\u05D0", {100, 0, 100, 40})[2], 130) << "left is left in Hebrew, too";
    const Text be = Text().Family("DejaVu Sans");  // which has another letter in Serbian
    EXPECT_NE(PixelsOf(Drawn(be, "б", {0, 0, 50, 50})),
              PixelsOf(Drawn(be.Language("sr"), "б", {0, 0, 50, 50})));
    EXPECT_EQ(text.Measure("101:").width, 8 + 20 + 8 + 6);
    EXPECT_EQ(text.Tabular().Measure("101:").width, 20 + 20 + 20 + 6);
    // The ink of a 1 is 6 wide, and begins one unit and half of the 12 that it lacks to the right
    EXPECT_EQ(InkOf(text.Tabular(), "1", {10, 0, 100, 50}), (Box{17, 15, 23, 35}));
    EXPECT_EQ(InkOf(text.Tabular(), "01", {10, 0, 100, 50})[2], 43);
    EXPECT_EQ(InkOf(text.Tabular().Right(), "1", {10, 0, 90, 50})[2], 93);
}

TEST(Text, IsMeasuredAsItIsDrawnAndCutToTheLinesThatFit) {
    for (const Text& text : {Text(21.5, WHITE).Bold().Italic(), Digits().Tabular()}) {
        for (const char* const utf8 : {"AVAT 1.0", "\u05D0\u05D1 123", "a\tb\nlonger"}) {
            const auto [width, height, lines, whole, missing] = text.Measure(utf8);
            Canvas canvas({300, 200});
            const TextExtent drawn = text.Draw(canvas, utf8, {0, 0, width, height});
            EXPECT_TRUE(drawn.whole && drawn.width == width) << utf8;
            EXPECT_FALSE(text.Measure(utf8, {width - 1, height}).whole) << utf8;
        }
    }
    const Text text(20, WHITE), wrapped = text.Wrapped();
    const std::string page(10000000, 'x'), feeds(10000000, '\n'), bad(10000000, '\x80');
    const auto lines = [](const Text& style, const std::string& utf8, const Size& box) {
        return style.Measure(utf8, box).lines * (style.Measure(utf8, box).whole ? 1 : -1);  // below 0: cut
    };
    EXPECT_EQ(lines(text, "", Text::UNLIMITED), 0);
    EXPECT_EQ(lines(text, "a\r\n\nb\n", Text::UNLIMITED), 3);
    EXPECT_EQ(lines(text, "a\nb\nc", {100, 74}), -2);
    EXPECT_EQ(lines(text, "aaaaaaaaaaaa\nb", {50, 75}), -2) << "each line by itself";
    EXPECT_EQ(lines(wrapped, "one two three", {50, 75}), 3);
    EXPECT_EQ(lines(wrapped, "one two three", {50, 1}), -1);
    EXPECT_EQ(lines(wrapped, "a\nb b b b b b\nc", {50, 75}), -3);
    EXPECT_EQ(lines(text, page, Text::UNLIMITED), -1) << "more than Pango counts";
    EXPECT_EQ(lines(text, feeds, {300, 100}), -4);
    EXPECT_EQ(lines(text, bad, {300, 40}), -1);
    EXPECT_EQ(InkOf(text, "WWW", {10, 0, 10, 40})[2], 0) << "not even an ellipsis fits";
    EXPECT_GT(text.Measure("a\nb", {100, 25}).width, text.Measure("a").width)
        << "an ellipsis for what follows";
    EXPECT_EQ(text.Measure(page, {300, 40}).width, text.Measure(page.substr(0, 100), {300, 40}).width);
    EXPECT_EQ(text.Measure(std::string("a\0\xFF\xC3", 4)).width, text.Measure("a\uFFFD\uFFFD\uFFFD").width);
    EXPECT_EQ(text.Measure("a\U000FFFF0\U000FFFF1b").missing, 2);
}

TEST(Text, OfThreadsHasTheFontsThatAreAddedMeanwhile) {
    const auto paint = [] {
        return PixelsOf(Drawn(Text(30, WHITE).Family("bearings"), "AAA", {0, 0, 200, 50}));
    };
    std::promise<void> isReady, isAdded;
    auto thread = std::async(std::launch::async, [&] {
        const auto before = paint();
        isReady.set_value();
        isAdded.get_future().wait();
        return paint() == before;
    });
    isReady.get_future().wait();
    Text::AddFont(KIVGLES_TEST_FONTS "/bearings.ttf");
    isAdded.set_value();
    EXPECT_FALSE(thread.get());
    EXPECT_EQ(ErrorOf([] { Text::AddFont("/"); }), "-5 Text::AddFont: / cannot be read");
    EXPECT_EQ(ErrorOf([] { Text::AddFont("/etc/passwd"); }), "-5 Text::AddFont: /etc/passwd is no font");
}

TEST(TextDeathTest, WithoutAnyFontIsAnError) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string config = testing::TempDir() + "no_fonts.conf";
    std::ofstream(config) << "<fontconfig/>";
    const auto measure = [&config] {
        setenv("FONTCONFIG_FILE", config.c_str(), 1);
        std::fputs(ErrorOf([] { Text().Measure("A"); }).c_str(), stderr);
        std::exit(0);
    };
    EXPECT_EXIT(measure(), testing::ExitedWithCode(0), "-4 Text::Measure: no font is installed");
}

}  // namespace
}  // namespace kivgles::kit
