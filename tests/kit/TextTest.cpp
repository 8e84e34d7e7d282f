// Texts on the real thing: what is measured is what is drawn.

#include <tuple>

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

// The window shows the other picture, moved so far and cut off at its edges.
void ExpectMoved(const Picture& shown, const Picture& other, int dx, int dy) {
    for (int y = 0; y < shown.size.height; ++y) {
        for (int x = 0; x < shown.size.width; ++x) {
            ASSERT_EQ(shown.At(x, y), other.At(x - dx, y - dy)) << "at " << x << "," << y;
        }
    }
}

// Each character goes where those before it measure to.
TEST_F(TextTest, IsDrawnAsItIsMeasuredInEveryStyle) {
    for (const auto& [font, word] : {std::pair<const char*, std::string>{BEARINGS, "AJKAMQRJJA"},
                                     std::pair<const char*, std::string>{DEJAVU, "jWTfi\"AK1"}}) {
        screen.LoadFont(font);
        for (const int size : {40, 20, 33}) {
            SCOPED_TRACE(testing::Message() << word << ", " << size << " pixels");
            const Text text(size, WHITE);
            for (const Text& styled : {text, text.Bold(), text.Italic(), text.Bold().Italic()}) {
                const Picture whole = Drawn(styled, word, {20, 20, 380, 60});
                layer.Clear(BLACK);
                for (std::size_t i = 0; i < word.size(); ++i) {
                    const TextExtent before = styled.Measure(layer, word.substr(0, i));
                    styled.Draw(layer, word.substr(i, 1), {20 + before.width, 20, 380, 60});
                }
                ExpectMoved(Show(), whole, 0, 0);
            }
        }
    }
}

TEST_F(TextTest, StandsOnItsBaselinesInEveryAlignment) {
    // With the top and bottom of the ink; the third reaches over both edges of its box alike.
    for (const auto& [align, height, top, bottom] :
         {std::tuple{VerticalAlign::TOP, 150, 69, 139}, std::tuple{VerticalAlign::MIDDLE, 150, 94, 164},
          std::tuple{VerticalAlign::MIDDLE, 10, 49, 69}, std::tuple{VerticalAlign::BOTTOM, 150, 119, 189},
          std::tuple{VerticalAlign::BASELINE, 150, 130, 200}}) {
        const Picture picture = Drawn(Text(40, WHITE).Aligned(align), "A\nA", {0, 50, 190, height});
        EXPECT_TRUE(picture.Shows(WHITE, {{5, top}, {5, bottom - 1}})) << top;
        EXPECT_TRUE(picture.Shows(BLACK, {{5, top - 1}, {5, bottom}})) << top;
    }
}

TEST_F(TextTest, BeyondTheEdgesIsCutOffAndNotMoved) {
    screen.LoadFont(DEJAVU);
    const Text text = Text(30, WHITE).Italic().Underlined();
    const Picture whole = Drawn(text, "gW jAB", {260, 150, 140, 40});
    for (const auto& [dx, dy] :
         {std::pair{-275, 0}, std::pair{-295, 0}, std::pair{0, -180}, std::pair{-275, -183},
          std::pair{-340, 0}, std::pair{125, 0}, std::pair{0, 30}}) {
        SCOPED_TRACE(testing::Message() << dx << "," << dy);
        ExpectMoved(Drawn(text, "gW jAB", {260 + dx, 150 + dy, 140, 40}), whole, dx, dy);
    }
}

// Seen is the middle of it, where the second request begins.
TEST_F(TextTest, OfManyRequestsIsOneLine) {
    const Picture picture = Drawn(Text(10, WHITE), std::string(200, 'K'), {-400, 0, 2000, 50});
    for (int x = 0; x + 5 < 400; ++x) {
        ASSERT_EQ(picture.At(x, 8), picture.At(x + 5, 8)) << "the same ink every five pixels, " << x;
    }
    EXPECT_TRUE(picture.Shows(WHITE, {{200, 8}}));
}

TEST_F(TextTest, HasABoxForWhatTheFontLacksAndSaysSoOnce) {
    recorder::Reset();
    Picture picture;
    for (int frame = 0; frame < 3; ++frame) {
        picture = Drawn(Text(40, WHITE), "\u4E16\U0001F600", {0, 0, 200, 50});
        EXPECT_EQ(Text(20 + 10 * frame, WHITE).Bold().Measure(layer, "\u4E16").width, 12 + 6 * frame);
    }
    EXPECT_EQ(recorder::Log("E OSDText: Char"),
              std::vector<std::string>{"E OSDText: Char 19990 is not exit\n"});
    EXPECT_TRUE(picture.Shows(WHITE, {{2, 11}, {21, 38}, {26, 11}, {45, 20}, {45, 38}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{1, 20}, {4, 13}, {22, 20}, {43, 36}, {46, 20}, {2, 10}, {2, 39}}));
}

TEST_F(TextTest, WithoutAnythingToDrawDrawsNothing) {
    const Text text = Text(40, WHITE).On(RED).Underlined();
    EXPECT_TRUE(text.Draw(layer, "", {0, 0, 100, 60}).whole);
    EXPECT_FALSE(text.Draw(layer, "A", {0, 0, 0, 60}).whole);
    EXPECT_FALSE(text.Draw(layer, "A", {0, 0, 100, -60}).whole);
    EXPECT_EQ(text.Draw(layer, "A", {5000000, 0, 100, 60}).lines, 1);
    EXPECT_EQ(text.Draw(layer, "A", {0, -2000000000, 100, 60}).lines, 1);
    ExpectMoved(Show(), {}, 0, 0);
}

TEST_F(TextTest, LooksAsItsPropertiesSay) {
    layer.Clear(BLACK);
    const Text regular = Text().Sized(40).Colored(GREEN).On(BLUE).Wrapped().Right().Spaced(70);
    const Text text = regular.Underlined().Bold().Italic();
    const TextExtent extent = text.Draw(layer, "A A", {10, 0, 30, 200});
    EXPECT_EQ(extent.height, 140);
    EXPECT_EQ(extent.width, 14);
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows(BLUE, {{26, 1}, {39, 1}})) << "the background is as high as the line";
    EXPECT_TRUE(picture.Shows(BLACK, {{25, 1}, {40, 1}})) << "and as wide as the text";
    EXPECT_TRUE(picture.Shows(GREEN, {{31, 40}, {31, 110}, {41, 30}})) << "slanted by 3 pixels, bold by 1";
    EXPECT_TRUE(picture.Shows(GREEN, {{26, 49 + 2}})) << "the underline, 2 pixels below the baseline";
    EXPECT_TRUE(picture.Shows(BLUE, {{26, 49 + 4}}));

    EXPECT_EQ(text.Measure(screen, "101").width, 3 * 24) << "boxes, as long as the font has no digits";
    screen.LoadFont(KIVGLES_TEST_FONTS "/digits.ttf");
    EXPECT_EQ(text.Measure(screen, "101").width, 36);
    EXPECT_EQ(text.Tabular().Measure(screen, "101").width, 60);
}

TEST(Text, OfAFontThatDoesNotLoadIsAnError) {
    Stage stage;
    const auto draw = [&] { return CodeOf([&] { Text().Draw(stage.layer, "A", {0, 0, 120, 60}); }); };
    EXPECT_EQ(draw(), Error::NO_FONT);
    stage.screen.LoadFont(BEARINGS);
    EXPECT_EQ(draw(), 0);
    EXPECT_EQ(CodeOf([&] { stage.screen.LoadFont("/nowhere.ttf"); }), 31);
    EXPECT_EQ(draw(), Error::NO_FONT);
    stage.screen.Reconnect(stage.window.Native());
    EXPECT_EQ(draw(), Error::NO_FONT) << "a font that does not load is not tried again";
}

}  // namespace
}  // namespace kivgles::kit
