// What a text does beside Pango: places, lines, digits, bytes that are no text, fonts of the client's own.

#include <future>

#include "Stage.h"
#include "kivgles/kit/Text.h"

namespace kivgles::kit {

TEST(Text, StandsAndLooksAsItsPropertiesSayInFontsThatAnyThreadAdds) {
    const Handle<FcConfig> installed(FcConfigReference(nullptr)), none(FcConfigCreate());
    const auto inBearings = [] { return Text().Family("bearings").Measure("AAA").width; };
    const int before = inBearings();
    FcConfigSetCurrent(none.get());
    std::async(std::launch::async, [&] {
        EXPECT_EQ(ErrorOf(inBearings), "-4 Text::Measure: no font is installed");
        FcConfigSetCurrent(installed.get());
        Text::AddFont(KIVGLES_TEST_FONTS "/digits.ttf");
        Text::AddFont(KIVGLES_TEST_FONTS "/bearings.ttf");
    }).get();
    EXPECT_NE(inBearings(), before) << "other threads are told";
    EXPECT_EQ(ErrorOf([] { Text::AddFont("/"); }), "-5 Text::AddFont: / cannot be read");
    EXPECT_EQ(ErrorOf([] { Text::AddFont("/etc/passwd"); }), "-5 Text::AddFont: /etc/passwd is no font");
    // Rectangles, at 40 pixels of whole pixels: H is 20 by 30, a 0 takes 20 in width, all other digits 8.
    const Text text = Text().Family("digits");
    const std::tuple<Text, const char*, Rect, std::vector<Rect>> rows[] = {
        {text, "H\nH", {10, 54.6, 100, 145}, {{10, 60, 20, 30}, {10, 110, 20, 30}}},
        {text.Aligned(VerticalAlign::BOTTOM), "H", {10, 55, 100, 145}, {{10, 155, 20, 30}}},
        {text.Aligned(VerticalAlign::BASELINE), "H", {10, 55, 100, 145}, {{10, 170, 20, 30}}},
        {text.Tabular().Center(), "1", {10, 0, 90, 50}, {{52, 15, 6, 20}}},  // as a 0
        {text.On(WHITE).Spaced(60), "H", {50, 50, 100, 50}, {{50, 50, 20, 60}}},
        {Text(20, WHITE), "WWW", {10, 0, 10, 40}, {}}};  // not even an ellipsis fits
    for (const auto& [style, utf8, box, rectangles] : rows) {
        Canvas drawn({200, 200}), expected({200, 200});
        style.Draw(drawn, utf8, box);
        for (const Rect& rectangle : rectangles) {
            expected.Rectangle(rectangle, WHITE);
        }
        EXPECT_EQ(PixelsOf(drawn), PixelsOf(expected)) << utf8 << " in row " << &box - &std::get<2>(rows[0]);
    }
    Canvas canvas({50, 80});
    text.Outlined(RED, 3).Draw(canvas, "H", {10, 45, 50, 50});
    EXPECT_EQ(PixelsOf(canvas)[60 * 50 + 7], 0xFFFF0000);
    Text(40, {0, 0, 0, 100}).Draw(canvas, "😀", {0, 0, 50, 50});
    EXPECT_EQ(PixelsOf(canvas)[25 * 50 + 25] >> 24, 100U) << "emoji are translucent, too";
    EXPECT_EQ(Text(1e9, WHITE).LineHeight() + Text(-1, WHITE).LineHeight(), 1250 + 2);
    EXPECT_EQ(text.Tabular().Measure("1101:").width, 20 + 20 + 20 + 20 + 6);
    EXPECT_EQ(text.Tabular().Measure("1\uFE0F\u20E3").width, text.Measure("1\uFE0F\u20E3").width);
}

TEST(Text, IsMeasuredAsItIsDrawnAndCutToTheLinesThatFit) {
    const Text text(20, WHITE), wrapped = text.Wrapped();
    const int width = text.Measure("AVAT 1.0\r\nb").width;
    const std::string page(10000000, 'x'), bad(10000000, '\x80');
    const std::tuple<Text, std::string_view, Size, int> rows[] = {
        {text, "", Text::UNLIMITED, 0},  // lines, below 0: something was left out
        {text, "a\r\n\nb\n", Text::UNLIMITED, 3},
        {text, "a\nb\nc", {100, 74}, -2},
        {text, "aaaaaaaaaaaa\nb", {50, 75}, -2},  // each line by itself
        {text, "a", {0, 40}, 0},
        {text, "AVAT 1.0", {width, 1}, 1},
        {text, "AVAT 1.0", {width - 1, 1}, -1},
        {wrapped, "W", {9, 75}, -1},  // has no room, and nor has an ellipsis
        {wrapped, "one two three", {50, 75}, 3},
        {wrapped, "a\nb b b b b b\nc", {50, 75}, -3},
        {text, page, Text::UNLIMITED, -1},  // more than Pango counts
        {text, bad, {300, 40}, -1}};
    for (const auto& [style, utf8, box, lines] : rows) {
        const TextExtent measured = style.Measure(utf8, box);
        EXPECT_EQ(measured.whole ? measured.lines : -measured.lines, lines) << utf8.substr(0, 20);
    }
    EXPECT_GT(text.Measure("a\nb", {100, 25}).width, text.Measure("a").width) << "an ellipsis follows";
    EXPECT_EQ(text.Measure(page).width, text.Measure(page.substr(0, 90000)).width);
    EXPECT_GT(text.Measure(bad, {300, 40}).width, text.Measure("…").width);
    EXPECT_EQ(text.Measure(page, {300, 40}).width, text.Measure(page.substr(0, 100), {300, 40}).width);
    EXPECT_EQ(text.Measure(std::string("a\0\xFF\xC3", 4)).width, text.Measure("a\uFFFD\uFFFD\uFFFD").width);
    EXPECT_EQ(text.Measure("a\U000FFFF0\n\U000FFFF1b").missing, 2);
}

}  // namespace kivgles::kit
