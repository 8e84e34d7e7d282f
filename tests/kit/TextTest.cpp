// Texts on the real thing: what is measured is what is drawn.

#include "Stage.h"
#include "kivgles/kit/Text.h"
#include "support/Recorder.h"

namespace kivgles::kit {
namespace {

constexpr char DEJAVU[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

class TextTest : public testing::Test, protected Stage {
 protected:
    TextTest() : Stage({400, 200}, BEARINGS) {}

    // The text alone.
    Picture Drawn(const Text& text, const std::string& characters, const Rect& box) {
        layer.Clear(BLACK);
        text.Draw(layer, characters, box);
        return Show();
    }
};

// Each character goes where those before it measure to.
TEST_F(TextTest, IsDrawnAsItIsMeasuredInEveryStyle) {
    const auto expectDrawnAsMeasured = [&](const Text& text, const std::string& word) {
        const Picture whole = Drawn(text, word, {20, 20, 380, 60});
        layer.Clear(BLACK);
        for (std::size_t i = 0; i < word.size(); ++i) {
            const TextExtent before = text.Measure(layer, word.substr(0, i));
            text.Draw(layer, word.substr(i, 1), {20 + before.width, 20, 380, 60});
        }
        EXPECT_EQ(Show(), whole) << word;
    };
    for (const auto& [font, word] : {std::pair{BEARINGS, "AJKAMQRJJA"}, std::pair{DEJAVU, "jWTfi\"q1"}}) {
        screen.LoadFont(font);
        for (const int size : {40, 20, 33}) {
            SCOPED_TRACE(size);
            const Text text(size, WHITE);
            for (const Text& styled : {text, text.Bold(), text.Italic(), text.Bold().Italic()}) {
                expectDrawnAsMeasured(styled, word);
            }
        }
    }
}

TEST_F(TextTest, StandsAtTheRightEdgeToThePixel) {
    const Text text = Text(40, WHITE).Right();
    for (const char* const word : {"A", "JA", "JJJ A", "MKA"}) {
        const Rect ink = Ink(Drawn(text, word, {0, 0, 150, 50}));
        EXPECT_EQ(ink.x + ink.width, 148)
            << word << ": an A's ink ends two pixels before its advance of 14 does";
        EXPECT_GE(ink.x, 150 - text.Measure(layer, word).width - 2)
            << word << ": an M's ink begins two pixels before the pen";
    }
}

TEST_F(TextTest, SitsOnItsBaselineInEveryAlignment) {
    for (const auto& [align, bottom] :
         {std::pair{VerticalAlign::TOP, 39}, std::pair{VerticalAlign::MIDDLE, 114},
          std::pair{VerticalAlign::BOTTOM, 189}, std::pair{VerticalAlign::BASELINE, 200}}) {
        const Rect ink = Ink(Drawn(Text(40, WHITE).Aligned(align), "A", {0, 0, 190, 200}));
        EXPECT_EQ(ink.y + ink.height, bottom);
        EXPECT_EQ(ink.height, 20);
    }
}

TEST_F(TextTest, BeyondTheEdgesIsCutOffAndNotMoved) {
    screen.LoadFont(DEJAVU);
    const Text text = Text(30, WHITE).Italic().Underlined();
    const Picture whole = Drawn(text, "Wj gAB", {260, 150, 140, 40});
    for (const auto& [dx, dy] : {std::pair{-275, 0}, std::pair{-295, 0}, std::pair{0, -180},
                                 std::pair{-275, -183}, std::pair{-340, 0}, std::pair{100, 30}}) {
        Picture expected = {400, 200, {}};
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 400; ++x) {
                expected.pixels.push_back(whole.At(x - dx, y - dy));
            }
        }
        expected.pixels.back() = 0;
        EXPECT_EQ(Drawn(text, "Wj gAB", {260 + dx, 150 + dy, 140, 40}), expected) << dx << "," << dy;
    }
}

// Seen is the middle of it, where the second request begins.
TEST_F(TextTest, OfManyRequestsIsOneLine) {
    const TextExtent extent = Text(10, WHITE).Measure(layer, std::string(200, 'K'));
    EXPECT_EQ(extent.width, 200 * 5);
    EXPECT_TRUE(extent.whole);
    const Picture picture = Drawn(Text(10, WHITE), std::string(200, 'K'), {-400, 0, 2000, 50});
    const Rect ink = Ink(picture);
    EXPECT_GE(ink.width, 395);
    for (int x = 0; x + 5 < 400; ++x) {
        ASSERT_EQ(picture.At(x, ink.y), picture.At(x + 5, ink.y)) << "the same ink every five pixels, " << x;
    }
}

TEST_F(TextTest, HasABoxForWhatTheFontLacksAndSaysSoOnce) {
    recorder::Reset();
    Picture picture;
    for (int frame = 0; frame < 3; ++frame) {
        layer.Clear(BLACK);
        EXPECT_EQ(Text(40, WHITE).Draw(layer, "\u4E16\U0001F600", {0, 0, 200, 50}).width, 48);
        EXPECT_EQ(Text(20 + 10 * frame, WHITE).Bold().Measure(layer, "\u4E16").width, 12 + 6 * frame);
        picture = Show();
    }
    EXPECT_EQ(recorder::Log("E OSDText: Char"),
              std::vector<std::string>{"E OSDText: Char 19990 is not exit\n"});
    const Rect ink = Ink(picture);
    EXPECT_EQ(ink.x, 2);
    EXPECT_EQ(ink.width, 44);
    EXPECT_EQ(ink.height, 28);
    EXPECT_TRUE(picture.Shows(WHITE, {{3, 12}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{4, 14}})) << "it is hollow";
}

TEST_F(TextTest, WithoutAnythingToDrawDrawsNothing) {
    const Text text = Text(40, WHITE).On(RED).Underlined();
    EXPECT_TRUE(text.Draw(layer, "", {0, 0, 100, 60}).whole);
    EXPECT_EQ(text.Draw(layer, "   ", {0, 0, 100, 60}).width, 0);
    EXPECT_FALSE(text.Draw(layer, "A", {0, 0, 0, 60}).whole);
    EXPECT_FALSE(text.Draw(layer, "A", {0, 0, 100, -60}).whole);
    EXPECT_EQ(text.Draw(layer, "A", {5000000, 0, 100, 60}).lines, 1);
    EXPECT_EQ(text.Draw(layer, "A", {0, -2000000000, 100, 60}).lines, 1);
    EXPECT_EQ(Ink(Show()).width, 0);
}

TEST_F(TextTest, LooksAsItsPropertiesSay) {
    layer.Clear(BLACK);
    const Text text = Text().Sized(40).Colored(GREEN).On(BLUE).Underlined().Wrapped().Spaced(70);
    EXPECT_EQ(text.LineHeight(), 70);
    EXPECT_EQ(text.Measure(layer, "A A").lines, 1);
    const TextExtent extent = text.Draw(layer, "A A", {10, 0, 30, 200});
    EXPECT_EQ(extent.lines, 2);
    EXPECT_EQ(extent.height, 140);
    EXPECT_EQ(extent.width, 14);
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows(BLUE, {{11, 1}})) << "the background is as high as the line";
    EXPECT_TRUE(picture.Shows(BLACK, {{24, 1}})) << "and as wide as the text";
    EXPECT_TRUE(picture.Shows(GREEN, {{15, 40}, {15, 110}}));
    EXPECT_TRUE(picture.Shows(GREEN, {{10, 49 + 2}})) << "the underline, 2 pixels below the baseline";
    EXPECT_TRUE(picture.Shows(BLUE, {{10, 49 + 4}}));
}

TEST_F(TextTest, OfTabularDigitsIsAsWideWhateverTheDigits) {
    screen.LoadFont(std::string(KIVGLES_TEST_FONTS) + "/digits.ttf");
    const Text text(40, WHITE);
    EXPECT_EQ(text.Measure(screen, "101").width, 36);
    EXPECT_EQ(text.Tabular().Measure(screen, "101").width, 60);
}

TEST_F(TextTest, BeyondTheLeftEdgeTakesALayerMoreAndFailsWithoutOne) {
    std::vector<Layer> others;
    const auto make = [&] { return CodeOf([&] { others.emplace_back(screen, Size{8, 8}); }); };
    const auto draw = [&](int x) { return CodeOf([&] { Text().Draw(layer, "A", {x, 0, 50, 50}); }); };
    while (others.size() < 14) {
        ASSERT_EQ(make(), 0);
    }
    EXPECT_EQ(make(), 15);
    EXPECT_EQ(draw(-3), 15);
    EXPECT_EQ(draw(0), 0);
    others.pop_back();
    EXPECT_EQ(make(), 0);
    others.pop_back();
    EXPECT_EQ(draw(-3), 0);
}

TEST_F(TextTest, InALayerOfFactorTwoTakesAsMuchRoom) {
    Layer smooth(screen, {400, 200}, 2);
    EXPECT_EQ(Text(40, WHITE).Measure(smooth, "AAA").width, 42);
    EXPECT_EQ(Text(40, WHITE).Measure(screen, "AAA").width, 42);
    EXPECT_EQ(Text(40, WHITE).Draw(smooth, "AAA", {10, 0, 290, 60}).height, 50);
    const Rect ink = Ink(Show(smooth));
    EXPECT_EQ(ink.x, 12);
    EXPECT_EQ(ink.width, 38);
}

TEST(Text, OfAFontThatDoesNotLoadIsAnError) {
    Stage stage;
    const auto draw = [&] { return CodeOf([&] { Text().Draw(stage.layer, "A", {0, 0, 120, 60}); }); };
    EXPECT_EQ(draw(), Error::NO_FONT);
    for (const auto& [path, code] : {std::pair{"/nowhere.ttf", 31}, std::pair{"/", 31},
                                     std::pair{KIVGLES_TEST_FONTS "/spaces.ttf", 32}}) {
        stage.screen.LoadFont(BEARINGS);
        EXPECT_EQ(draw(), 0);
        std::string operation;
        EXPECT_EQ(CodeOf([&, font = path] { stage.screen.LoadFont(font); }, &operation), code) << path;
        EXPECT_EQ(operation, "Screen::LoadFont");
        EXPECT_EQ(draw(), Error::NO_FONT);
    }
    stage.screen.Reconnect(stage.window.Native());
    EXPECT_EQ(draw(), Error::NO_FONT) << "a font that does not load is not tried again";
    stage.screen.LoadFont(BEARINGS);
    EXPECT_EQ(draw(), 0);
}

}  // namespace
}  // namespace kivgles::kit
