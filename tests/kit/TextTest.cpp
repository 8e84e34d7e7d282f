// Texts on the real thing: what is measured is what is drawn.

#include "Stage.h"
#include "kivgles/kit/Text.h"
#include "support/Recorder.h"

namespace kivgles::kit {
namespace {

constexpr char DEJAVU[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// Filled rectangles; at 40 pixels a unit is a pixel. J hangs over to the left and is wider than its advance.
const std::string BEARINGS = std::string(KIVGLES_TEST_FONTS) + "/bearings.ttf";

struct Style {
    const char* name;
    Text text;
};

std::vector<Style> Styles() {
    std::vector<Style> styles;
    for (const int size : {40, 20, 33}) {
        const Text text(size, WHITE);
        styles.insert(styles.end(), {{"regular", text},
                                     {"bold", text.Bold()},
                                     {"italic", text.Italic()},
                                     {"bold italic", text.Bold().Italic()}});
    }
    return styles;
}

// Each character goes where those before it measure to.
TEST(Text, IsDrawnAsItIsMeasuredInEveryStyle) {
    struct {
        std::string font;
        std::string text;
    } const rows[] = {{BEARINGS, "AJKAMQRJJA"}, {DEJAVU, "jWTfi\"q1"}};
    for (const auto& row : rows) {
        Stage stage({400, 100});
        stage.screen.LoadFont(row.font);
        Layer layer(stage.screen, {400, 100});
        for (const Style& style : Styles()) {
            layer.Clear({0, 0, 0});
            style.text.Draw(layer, row.text, {20, 20, 380, 60});
            const Picture whole = stage.Show(layer);
            layer.Clear({0, 0, 0});
            for (std::size_t i = 0; i < row.text.size(); ++i) {
                const TextExtent before = style.text.Measure(layer, row.text.substr(0, i));
                style.text.Draw(layer, row.text.substr(i, 1), {20 + before.width, 20, 380, 60});
            }
            EXPECT_EQ(stage.Show(layer), whole)
                << row.text << " " << style.name << " " << style.text.LineHeight();
        }
    }
}

TEST(Text, StandsAtTheRightEdgeToThePixel) {
    Stage stage({200, 60});
    stage.screen.LoadFont(BEARINGS);
    Layer layer(stage.screen, {200, 60});
    const Text text = Text(40, WHITE).Right();
    for (const char* const units : {"A", "JA", "JJJ A", "MKA"}) {
        layer.Clear({0, 0, 0});
        const TextExtent extent = text.Draw(layer, units, {0, 0, 150, 50});
        const Rect ink = Ink(stage.Show(layer));
        EXPECT_EQ(ink.x + ink.width, 148)
            << units << ": an A's ink ends two pixels before its advance of 14 does";
        EXPECT_GE(ink.x, 150 - extent.width - 2) << units << ": an M's ink begins two pixels before the pen";
    }
}

TEST(Text, SitsOnItsBaselineInEveryAlignment) {
    Stage stage({200, 200});
    stage.screen.LoadFont(BEARINGS);
    Layer layer(stage.screen, {200, 200});
    struct {
        VerticalAlign align;
        int bottom;
    } const rows[] = {{VerticalAlign::TOP, 39},
                      {VerticalAlign::MIDDLE, 114},
                      {VerticalAlign::BOTTOM, 189},
                      {VerticalAlign::BASELINE, 200}};
    for (const auto& row : rows) {
        layer.Clear({0, 0, 0});
        Text(40, WHITE).Aligned(row.align).Draw(layer, "A", {0, 0, 190, 200});
        const Rect ink = Ink(stage.Show(layer));
        EXPECT_EQ(ink.y + ink.height, row.bottom);
        EXPECT_EQ(ink.height, 20);
    }
}

TEST(Text, BeyondTheEdgesIsCutOffAndNotMoved) {
    Stage stage({200, 100});
    stage.screen.LoadFont(DEJAVU);
    Layer layer(stage.screen, {200, 100});
    const Text text = Text(30, WHITE).Italic().Underlined();
    layer.Clear({0, 0, 0});
    text.Draw(layer, "Wj gAB", {60, 50, 140, 40});
    const Picture whole = stage.Show(layer);
    struct {
        int x;
        int y;
    } const moves[] = {{-75, 0}, {-95, 0}, {0, -80}, {-75, -83}, {-140, 0}, {100, 30}};
    for (const auto& move : moves) {
        layer.Clear({0, 0, 0});
        text.Draw(layer, "Wj gAB", {60 + move.x, 50 + move.y, 140, 40});
        Picture expected = {200, 100, {}};
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 200; ++x) {
                const int fromX = x - move.x;
                const int fromY = y - move.y;
                const bool last = x == 199 && y == 99;
                const bool inside = fromX >= 0 && fromX < 200 && fromY >= 0 && fromY < 100;
                expected.pixels.push_back(inside && !last ? whole.At(fromX, fromY) : 0);
            }
        }
        EXPECT_EQ(stage.Show(layer), expected) << move.x << "," << move.y;
    }
}

TEST(Text, OfManyRequestsIsOneLine) {
    Stage stage({900, 60});
    stage.screen.LoadFont(BEARINGS);
    Layer layer(stage.screen, {900, 60});
    const TextExtent extent = Text(10, WHITE).Draw(layer, std::string(200, 'K'), {0, 0, 2000, 50});
    EXPECT_EQ(extent.width, 200 * 5);
    EXPECT_TRUE(extent.whole);
    const Picture picture = stage.Show(layer);
    const Rect ink = Ink(picture);
    EXPECT_GE(ink.width, 895);
    for (int x = 0; x + 5 <= 895; ++x) {
        ASSERT_EQ(picture.At(x, ink.y), picture.At(x + 5, ink.y)) << "the same ink every five pixels, " << x;
    }
}

TEST(Text, HasABoxForWhatTheFontLacksAndSaysSoOnce) {
    Stage stage({200, 60});
    stage.screen.LoadFont(BEARINGS);
    Layer layer(stage.screen, {200, 60});
    recorder::Reset();
    Picture picture;
    for (int frame = 0; frame < 3; ++frame) {
        layer.Clear({0, 0, 0});
        EXPECT_EQ(Text(40, WHITE).Draw(layer, "\u4E16\U0001F600", {0, 0, 200, 50}).width, 48);
        EXPECT_EQ(Text(20 + 10 * frame, WHITE).Bold().Measure(layer, "\u4E16").width, 12 + 6 * frame);
        picture = stage.Show(layer);
    }
    EXPECT_EQ(recorder::Log("E OSDText: Char 19990 is not exit").size(), 1U);
    EXPECT_EQ(recorder::Log("E OSDText: Char").size(), 1U);
    const Rect ink = Ink(picture);
    EXPECT_EQ(ink.x, 2);
    EXPECT_EQ(ink.width, 44);
    EXPECT_EQ(ink.height, 28);
    EXPECT_EQ(picture.At(3, 12), 0xFFFFFFU);
    EXPECT_EQ(picture.At(4, 14), 0U) << "it is hollow";
}

TEST(Text, WithoutAnythingToDrawDrawsNothing) {
    Stage stage({120, 60});
    stage.screen.LoadFont(BEARINGS);
    Layer layer(stage.screen, {120, 60});
    const Text text = Text(40, WHITE).On(RED).Underlined();
    EXPECT_TRUE(text.Draw(layer, "", {0, 0, 100, 60}).whole);
    EXPECT_EQ(text.Draw(layer, "   ", {0, 0, 100, 60}).width, 0);
    EXPECT_FALSE(text.Draw(layer, "A", {0, 0, 0, 60}).whole);
    EXPECT_FALSE(text.Draw(layer, "A", {0, 0, 100, -60}).whole);
    EXPECT_EQ(text.Draw(layer, "A", {5000000, 0, 100, 60}).lines, 1);
    EXPECT_EQ(text.Draw(layer, "A", {0, -2000000000, 100, 60}).lines, 1);
    EXPECT_EQ(Ink(stage.Show(layer)).width, 0);
}

TEST(Text, LooksAsItsPropertiesSay) {
    Stage stage({200, 200});
    stage.screen.LoadFont(BEARINGS);
    Layer layer(stage.screen, {200, 200});
    layer.Clear({0, 0, 0});
    const Text text = Text().Sized(40).Colored(GREEN).On(BLUE).Underlined().Wrapped().Spaced(70);
    EXPECT_EQ(text.LineHeight(), 70);
    EXPECT_EQ(text.Measure(layer, "A A").lines, 1);
    const TextExtent extent = text.Draw(layer, "A A", {10, 0, 30, 200});
    EXPECT_EQ(extent.lines, 2);
    EXPECT_EQ(extent.height, 140);
    EXPECT_EQ(extent.width, 14);
    const Picture picture = stage.Show(layer);
    EXPECT_EQ(picture.At(11, 1), 0x0000FFU) << "the background is as high as the line";
    EXPECT_EQ(picture.At(24, 1), 0U) << "and as wide as the text";
    EXPECT_EQ(picture.At(15, 40), 0x00FF00U);
    EXPECT_EQ(picture.At(15, 110), 0x00FF00U);
    EXPECT_EQ(picture.At(10, 49 + 2), 0x00FF00U) << "the underline, 2 pixels below the baseline";
    EXPECT_EQ(picture.At(10, 49 + 4), 0x0000FFU);
}

TEST(Text, InALayerOfFactorTwoTakesAsMuchRoom) {
    Stage stage({300, 60});
    stage.screen.LoadFont(BEARINGS);
    Layer layer(stage.screen, {300, 60}, 2);
    EXPECT_EQ(Text(40, WHITE).Measure(layer, "AAA").width, 42);
    EXPECT_EQ(Text(40, WHITE).Measure(stage.screen, "AAA").width, 42);
    EXPECT_EQ(Text(40, WHITE).Draw(layer, "AAA", {10, 0, 290, 60}).height, 50);
    const Rect ink = Ink(stage.Show(layer));
    EXPECT_EQ(ink.x, 12);
    EXPECT_EQ(ink.width, 38);
}

TEST(Text, OfAFontThatDoesNotLoadIsAnError) {
    Stage stage;
    Layer layer(stage.screen, {120, 60});
    const auto draw = [&] { Text().Draw(layer, "A", {0, 0, 120, 60}); };
    EXPECT_EQ(CodeOf(draw), Error::NO_FONT);
    struct {
        std::string path;
        int code;
    } const rows[] = {{"/nowhere.ttf", 31}, {"/", 31}, {std::string(KIVGLES_TEST_FONTS) + "/spaces.ttf", 32}};
    for (const auto& row : rows) {
        stage.screen.LoadFont(BEARINGS);
        EXPECT_EQ(CodeOf(draw), 0);
        std::string operation;
        EXPECT_EQ(CodeOf([&] { stage.screen.LoadFont(row.path); }, &operation), row.code) << row.path;
        EXPECT_EQ(operation, "Screen::LoadFont");
        EXPECT_EQ(CodeOf(draw), Error::NO_FONT);
    }
    stage.screen.Reconnect(stage.window.Native());
    EXPECT_EQ(CodeOf(draw), Error::NO_FONT) << "a font that does not load is not tried again";
    stage.screen.LoadFont(BEARINGS);
    EXPECT_EQ(CodeOf(draw), 0);
}

}  // namespace
}  // namespace kivgles::kit
