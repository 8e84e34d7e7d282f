// What a text does beside Pango: places, lines, digits, bytes that are no text, fonts of the client's own.

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <future>
#include <thread>
#include <tuple>

#include <gtest/gtest.h>

#include "Snapshot.h"
#include "kivgles/kit/Text.h"

namespace kivgles::kit {
namespace {

constexpr Color WHITE = {255, 255, 255};
constexpr Size SIZE = {300, 200};

// Rectangles; at 40 pixels a unit is a pixel. H is 20 wide and 30 high, a 0 is 20 wide, all other digits 8.
Text Digits() {
    Text::AddFont(KIVGLES_TEST_FONTS "/digits.ttf");
    return Text(40, WHITE).Family("digits");
}

// Left, top, right and bottom edge of what is drawn.
using Box = std::array<int, 4>;
Box InkOf(const Text& text, const std::string& utf8, const Rect& box) {
    const Snapshot drawn = Painted(SIZE, [&](Canvas& canvas) { text.Draw(canvas, utf8, box); });
    Box ink = {SIZE.width, SIZE.height, 0, 0};
    for (int i = 0; i < SIZE.width * SIZE.height; ++i) {
        const int x = i % SIZE.width;
        const int y = i / SIZE.width;
        if (drawn.At(x, y) != 0) {
            ink = {std::min(ink[0], x), std::min(ink[1], y), std::max(ink[2], x + 1), y + 1};
        }
    }
    return ink;
}

TEST(Text, StandsAndLooksAsItsPropertiesSay) {
    const Text text = Digits();
    // Lines of 50 pixels with the baseline 35 below their top; the box from 55 to 200
    for (const auto& [vertical, top] :
         {std::tuple{VerticalAlign::TOP, 60}, std::tuple{VerticalAlign::MIDDLE, 88},
          std::tuple{VerticalAlign::BOTTOM, 105}, std::tuple{VerticalAlign::BASELINE, 120}}) {
        EXPECT_EQ(InkOf(text.Aligned(vertical), "H\nH", {10, 55, 100, 145})[1], top);
    }
    EXPECT_EQ(InkOf(text.Center().Middle(), "H", {100, 50, 60, 90}), (Box{120, 80, 140, 110}));
    EXPECT_LT(InkOf(Text(20, WHITE), "\u05D0", {100, 0, 100, 40})[2], 130) << "left is left in Hebrew, too";
    EXPECT_EQ(InkOf(text.Outlined({255, 0, 0}, 3), "H", {50, 50, 100, 50}), (Box{47, 52, 73, 88}));
    EXPECT_EQ(InkOf(text.On({0, 0, 255}).Spaced(60), "H", {50, 50, 100, 50}), (Box{50, 50, 70, 110}));
    EXPECT_EQ(Painted(SIZE,
                      [&](Canvas& canvas) {
                          text.Colored({0, 0, 0, 100}).Draw(canvas, "H", {0, 0, 100, 50});
                      })
                  .At(9, 9),
              0x64000000);
    EXPECT_EQ(Text(1e9, WHITE).LineHeight(), 1250);
}

TEST(Text, IsMeasuredAsItIsDrawn) {
    for (const Text& text : {Text(21.5, WHITE).Bold().Italic(), Digits().Tabular()}) {
        for (const char* const utf8 : {"AVAT 1.0", "\u05D0\u05D1 123", "a\tb\nlonger"}) {
            const TextExtent extent = text.Measure(utf8);
            Canvas canvas(SIZE);
            const TextExtent drawn = text.Draw(canvas, utf8, {0, 0, extent.width, extent.height});
            EXPECT_TRUE(drawn.whole && drawn.width == extent.width) << utf8;
            EXPECT_FALSE(text.Measure(utf8, {extent.width - 1, extent.height}).whole) << utf8;
        }
    }
}

TEST(Text, IsCutToTheLinesThatFit) {
    const Text text(20, WHITE);
    const auto lines = [](const TextExtent& extent) { return std::tuple{extent.lines, extent.whole}; };
    EXPECT_EQ(lines(text.Measure("")), std::tuple(0, true));
    EXPECT_EQ(lines(text.Measure("a\r\n\nb\n")), std::tuple(3, true));
    EXPECT_EQ(lines(text.Measure("a\nb\nc", {100, 74})), std::tuple(2, false));
    EXPECT_EQ(lines(text.Measure("aaaaaaaaaaaa\nb", {50, 75})), std::tuple(2, false))
        << "each line by itself";
    EXPECT_EQ(lines(text.Wrapped().Measure("one two three", {50, 75})), std::tuple(3, true));
    EXPECT_EQ(lines(text.Wrapped().Measure("one two three", {50, 1})), std::tuple(1, false));
    EXPECT_EQ(lines(text.Wrapped().Measure("a\nb b b b b b\nc", {50, 75})), std::tuple(3, false));
    EXPECT_EQ(InkOf(text, "WWW", {10, 0, 10, 40})[2], 0) << "not even an ellipsis fits";
    EXPECT_GT(text.Measure("a\nb", {100, 25}).width, text.Measure("a").width)
        << "an ellipsis for what follows";
    // What is far behind the end of the box makes no difference, whatever it is
    const std::string page(10000000, 'x');
    EXPECT_EQ(text.Measure(page, {300, 40}).width, text.Measure(page.substr(0, 100), {300, 40}).width);
    EXPECT_FALSE(text.Measure(page).whole) << "more than Pango counts";
    EXPECT_EQ(lines(text.Measure(std::string(10000000, '\n'), {300, 100})), std::tuple(4, false));
    EXPECT_EQ(lines(text.Measure(std::string(10000000, '\x80'), {300, 40})), std::tuple(1, false));
    EXPECT_EQ(text.Measure(std::string("a\0\xFF\xC3", 4)).width, text.Measure("a\uFFFD\uFFFD\uFFFD").width);
    EXPECT_EQ(text.Measure("a\U000FFFF0\U000FFFF1b").missing, 2);
}

TEST(Text, HasDigitsOfOneWidth) {
    const Text text = Digits();
    EXPECT_EQ(text.Measure("101:").width, 8 + 20 + 8 + 6);
    EXPECT_EQ(text.Tabular().Measure("101:").width, 20 + 20 + 20 + 6);
    // The ink of a 1 is 6 wide, and begins one unit and half of the 12 that it lacks to the right
    EXPECT_EQ(InkOf(text.Tabular(), "1", {10, 0, 100, 50}), (Box{17, 15, 23, 35}));
    EXPECT_EQ(InkOf(text.Tabular(), "01", {10, 0, 100, 50})[2], 43);
    EXPECT_EQ(InkOf(text.Tabular().Right(), "1", {10, 0, 90, 50})[2], 93);
}

TEST(Text, OfThreadsHasTheFontsThatAreAddedMeanwhile) {
    const auto paint = [](Canvas& canvas) {
        Text(30, WHITE).Family("bearings").Draw(canvas, "AAA", {0, 0, 200, 50});
    };
    std::atomic<int> waiting{0};
    std::atomic<bool> added{false};
    std::vector<std::future<bool>> threads;
    for (int i = 0; i < 3; ++i) {
        threads.push_back(std::async(std::launch::async, [&] {
            const Snapshot before = Painted(SIZE, paint);
            for (++waiting; !added;) {
                std::this_thread::yield();
            }
            return Painted(SIZE, paint) == before;
        }));
    }
    while (waiting < 3) {
        std::this_thread::yield();
    }
    Text::AddFont(KIVGLES_TEST_FONTS "/bearings.ttf");
    added = true;
    for (std::future<bool>& thread : threads) {
        EXPECT_FALSE(thread.get());
    }
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
    EXPECT_EXIT(measure(), testing::ExitedWithCode(0), "-4 Text::Measure: .*no font is installed");
}

}  // namespace
}  // namespace kivgles::kit
