// What layers show: cut off at the edges, to the pixel.

#include <array>
#include <cmath>
#include <limits>

#include "Stage.h"
#include "kivgles/kit/Text.h"

namespace kivgles::kit {
namespace {

// Four pixels: red, green half, blue, white.
constexpr std::array<std::uint8_t, 16> PIXELS = {255, 0, 0,   255, 0,   255, 0,   128,
                                                 0,   0, 255, 255, 255, 255, 255, 255};

class LayerTest : public testing::Test, protected Stage {};

TEST_F(LayerTest, ShapesAreCutOffAtItsEdges) {
    layer.Rectangle({-10, -5, 20, 15}, RED);
    constexpr int MOST = std::numeric_limits<int>::max();
    layer.Rectangle({115, 50, MOST, MOST}, RED);
    layer.Rectangle({-MOST, -MOST, MOST, MOST}, RED);
    layer.Rectangle({50, 50, -4, 8}, RED);
    layer.Disc({-3, 30}, 10, GREEN);  // of spans
    layer.Disc({20, 40}, 10, GREEN);  // of the core
    layer.RoundedRectangle({30, -20, 60, 40}, 8, BLUE);
    layer.Line({100, 10}, {130, 10}, 4, WHITE);
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows(RED, {{9, 9}, {115, 50}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{10, 9}, {9, 10}, {114, 50}, {48, 52}, {7, 30}, {8, 40}, {31, 40}}));
    EXPECT_TRUE(picture.Shows(GREEN, {{6, 30}, {11, 40}, {28, 40}, {20, 31}, {20, 48}}));
    EXPECT_TRUE(picture.Shows(BLUE, {{30, 0}, {50, 19}, {85, 16}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{30, 19}, {89, 19}, {50, 21}})) << "round corners";
    EXPECT_TRUE(picture.Shows(WHITE, {{99, 9}, {119, 11}}));
}

TEST_F(LayerTest, RingsAreHollowArcsEndAndBarsAreFilledUpToTheirLevel) {
    layer.Ring({20, 30}, 20, 5, RED);
    layer.Arc({60, 30}, 20, 5, 90, 90, BLUE);  // from below to the left
    int y = 0;
    for (const double level : {0.25, -1.0, 7.0, std::nan(""), 0.0}) {
        layer.Bar({80, y, 40, 5}, level, RED, BLUE);
        y += 10;
    }
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows(RED, {{2, 30}, {20, 47}, {89, 4}, {119, 20}}));
    EXPECT_TRUE(picture.Shows(BLUE, {{42, 32}, {58, 47}, {90, 4}, {80, 10}, {80, 30}, {80, 40}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{20, 30}, {42, 28}, {62, 47}, {90, 5}}));
}

TEST_F(LayerTest, DarkColoursStayDarkAndTranslucentOnesAreOverBlack) {
    layer.Rectangle({0, 0, 10, 10}, {1, 1, 1});
    layer.Rectangle({10, 0, 10, 10}, {200, 100, 0, 128});
    layer.Rectangle({20, 0, 10, 10}, {3, 3, 3, 100});
    layer.Rectangle({10, 5, 20, 5}, TRANSPARENT);
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows({2, 2, 2}, {{5, 5}, {25, 4}}));
    EXPECT_TRUE(picture.Shows({100, 50, 0}, {{15, 4}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{15, 5}}));
}

TEST_F(LayerTest, OfFactorTwoTakesAsMuchRoomAndIsAveragedDown) {
    screen.LoadFont(BEARINGS);
    Layer smooth(screen, {120, 60}, 2);
    smooth.Disc({20, 20}, 12.4, WHITE);
    const TextExtent extent = Text(40, WHITE).Draw(smooth, "AAA", {50, 0, 60, 60});
    EXPECT_EQ(extent.width, 42);
    EXPECT_EQ(extent.height, 50);
    layer.Copy(smooth, 0, 0);
    for (Layer* const shown : {&smooth, &layer}) {
        const Picture picture = Show(*shown);
        EXPECT_TRUE(picture.Shows(WHITE, {{20, 20}, {52, 30}, {89, 30}}));
        EXPECT_TRUE(picture.Shows(BLACK, {{0, 5}, {51, 30}, {90, 30}}));
        EXPECT_TRUE(picture.Shows({128, 128, 128}, {{20, 7}})) << "two of its four pixels";
    }
}

TEST_F(LayerTest, CopiesAreCutOffAtBothLayersEdges) {
    Layer source(screen, {20, 20});
    source.Clear(RED);
    source.Rectangle({0, 0, 5, 5}, GREEN);
    source.Rectangle({19, 19, 1, 1}, BLUE);
    source.Rectangle({5, 8, 1, 4}, BLUE);
    layer.Copy(source, -3, -3);
    layer.Copy(source, 110, 50);
    layer.Copy(source, {-4, 15, 10, 10}, {40, 10, 10, 10});  // only (0, 15) to (6, 20) is there to copy
    layer.Copy(source, {0, 0, 20, 20}, {60, 0, 40, 30});
    layer.Copy(source, {0, 0, 20, 20}, {-10, 35, 30, 24});  // from the source's column 7 on
    layer.Copy(source, {50, 50, 5, 5}, {0, 30, 5, 5});
    layer.Copy(source, {0, 0, 0, 5}, {0, 30, 5, 5});
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows(GREEN, {{1, 1}, {110, 50}, {68, 6}}));
    EXPECT_TRUE(picture.Shows(RED, {{2, 2}, {119, 55}, {44, 10}, {49, 14}, {80, 20}, {61, 28}, {0, 47}}));
    EXPECT_TRUE(picture.Shows(BLUE, {{16, 16}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{43, 10}, {49, 15}, {2, 32}, {61, 31}}));
}

TEST_F(LayerTest, ImagesGoWhereTheyAreToInLayersOfAnySize) {
    for (const Size size : {Size{120, 60}, Size{60, 30}, Size{119, 59}, Size{37, 23}}) {
        for (const bool premultiplied : {false, true}) {
            SCOPED_TRACE(testing::Message() << size.width << " wide, premultiplied: " << premultiplied);
            Layer target(screen, size);
            target.Clear(WHITE);
            std::array<std::uint8_t, 16> pixels = PIXELS;
            pixels[5] = premultiplied ? 128 : 255;
            const Image image = {pixels.data(), {2, 2}, premultiplied};
            target.Draw(image, {3, 5, 2, 2});
            target.Blend(image, {13, 5, 2, 2});
            target.Blend(image, {-1, -1, 2, 2});  // its last pixel is the white one
            target.Draw(image, {size.width - 1, 7, 2, 2});
            target.Blend(image, {50, 500, 2, 2});
            layer.Clear();
            layer.Copy(target, 0, 0);
            const Picture picture = Show();
            EXPECT_TRUE(picture.Shows(RED, {{3, 5}, {13, 5}, {size.width - 1, 7}}));
            EXPECT_TRUE(picture.Shows(BLUE, {{3, 6}, {13, 6}}));
            EXPECT_TRUE(picture.Shows({0, 128, 0}, {{4, 5}})) << "in place of what was there";
            EXPECT_TRUE(picture.Shows({127, 255, 127}, {{14, 5}})) << "over it";
            EXPECT_TRUE(picture.Shows(WHITE, {{0, 0}, {12, 5}, {15, 6}, {13, 4}, {13, 7}}));
        }
    }
}

TEST_F(LayerTest, ImagesLargerThanTheWindowAreCutOff) {
    for (int width = 300; width > 200; width -= 5) {  // each by way of a layer of its size
        layer.Draw({PIXELS.data(), {2, 2}}, {-10, -10, width, 200});
    }
    layer.Draw({PIXELS.data(), {2, 2}}, {-200, -100, 400, 200});
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows(WHITE, {{119, 58}})) << "beyond the middle of the last pixel";
    EXPECT_TRUE(picture.Shows({128, 96, 128}, {{0, 0}})) << "the middle of all four";
}

TEST(Layer, RefusesWhatHasNoMeaning) {
    Stage stage({120, 60}, 256);
    const auto make = [&](Size size, int factor) {
        return CodeOf([&] { Layer(stage.screen, size, factor); });
    };
    EXPECT_EQ(make({0, 10}, 1), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({10, 0}, 1), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({10, 10}, 0), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({10, 10}, 3), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({257, 10}, 1), Error::TOO_LARGE);
    EXPECT_EQ(make({10, 129}, 2), Error::TOO_LARGE);
    EXPECT_EQ(make({128, 10}, 2), 0);

    Layer& layer = stage.layer;
    EXPECT_EQ(CodeOf([&] { layer.Copy(layer, 0, 0); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { layer.Draw({nullptr, {2, 2}}, {0, 0, 2, 2}); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { layer.Blend({PIXELS.data(), {2, 0}}, {0, 0, 2, 2}); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { layer.Blend({PIXELS.data(), {2, 2}}, {0, 0, 300, 2}); }), Error::TOO_LARGE);

    const Layer moved(std::move(layer));
    try {
        layer.Clear();
        ADD_FAILURE() << "a layer that was moved away is drawn into";
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "Layer::Clear failed with code -1: an argument has no meaning");
    }
    EXPECT_EQ(CodeOf([&] { stage.screen.Present(layer); }), Error::INVALID_ARGUMENT);
}

TEST(Layer, MayOutliveItsScreen) {
    Layer layer(std::move(Stage().layer));
    EXPECT_EQ(CodeOf([&] { layer.Clear(); }), Error::NOT_CONNECTED);
    EXPECT_EQ(CodeOf([&] { layer.RoundedRectangle({}, 2, RED); }), Error::NOT_CONNECTED);
    Stage another;
    EXPECT_EQ(CodeOf([&] { another.screen.Present(layer); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { another.layer.Copy(layer, 0, 0); }), Error::INVALID_ARGUMENT);
}

}  // namespace
}  // namespace kivgles::kit
