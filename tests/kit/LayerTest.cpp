// What layers show: cut off at the edges, to the pixel.

#include <array>
#include <cmath>
#include <limits>

#include "Stage.h"

namespace kivgles::kit {
namespace {

// Four pixels: red, green half, blue, white.
constexpr std::array<std::uint8_t, 16> STRAIGHT = {255, 0, 0,   255, 0,   255, 0,   128,
                                                   0,   0, 255, 255, 255, 255, 255, 255};
constexpr std::array<std::uint8_t, 16> PREMULTIPLIED = {255, 0, 0,   255, 0,   128, 0,   128,
                                                        0,   0, 255, 255, 255, 255, 255, 255};

class LayerTest : public testing::Test, protected Stage {};

TEST_F(LayerTest, ShapesAreCutOffAtItsEdges) {
    layer.Rectangle({-10, -5, 20, 15}, RED);
    constexpr int MOST = std::numeric_limits<int>::max();
    layer.Rectangle({115, 50, MOST, MOST}, RED);
    layer.Rectangle({-MOST, -MOST, MOST, MOST}, RED);
    layer.Rectangle({50, 50, -4, 8}, RED);
    layer.Disc({-3, 30}, 10, GREEN);
    layer.RoundedRectangle({30, -20, 40, 40}, 8, BLUE);
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows(RED, {{9, 9}, {115, 50}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{10, 9}, {9, 10}, {114, 50}, {48, 52}, {7, 30}}));
    EXPECT_TRUE(picture.Shows(GREEN, {{6, 30}}));
    EXPECT_TRUE(picture.Shows(BLUE, {{30, 0}, {50, 19}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{30, 19}, {69, 19}})) << "round corners";
}

TEST_F(LayerTest, ADiscOfTheCoreIsTheOneOfSpansToHalfAPixel) {
    layer.Disc({30, 30}, 25, RED);
    layer.Disc({90.001, 30}, 25, RED);  // not whole: of spans
    const Picture picture = Show();
    int differing = 0;
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 59; ++x) {
            differing += picture.At(x, y) != picture.At(x + 60, y) ? 1 : 0;
        }
    }
    EXPECT_LE(differing, 24);
    EXPECT_TRUE(picture.Shows(RED, {{30, 5}, {90, 5}}));
}

TEST_F(LayerTest, RingsAreHollowArcsEndAndBarsAreFilledUpToTheirLevel) {
    layer.Ring({30, 30}, 20, 5, RED);
    layer.Arc({90, 30}, 20, 5, 90, 90, BLUE);  // from below to the left
    Picture picture = Show();
    EXPECT_TRUE(picture.Shows(RED, {{12, 30}, {30, 47}}));
    EXPECT_TRUE(picture.Shows(BLUE, {{72, 32}, {88, 47}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{30, 30}, {72, 28}, {92, 47}}));

    int y = 0;
    for (const double level : {0.25, -1.0, 7.0, std::nan(""), 0.0}) {
        layer.Bar({10, y, 40, 5}, level, RED, BLUE);
        y += 10;
    }
    picture = Show();
    EXPECT_TRUE(picture.Shows(RED, {{19, 4}, {49, 20}}));
    EXPECT_TRUE(picture.Shows(BLUE, {{20, 4}, {10, 10}, {10, 30}, {10, 40}}));
}

TEST_F(LayerTest, DarkColoursStayDarkAndTranslucentOnesAreOverBlack) {
    layer.Rectangle({0, 0, 10, 10}, {1, 1, 1});
    layer.Rectangle({10, 0, 10, 10}, {200, 100, 0, 128});
    layer.Rectangle({20, 0, 10, 10}, {3, 3, 3, 100});
    layer.Rectangle({30, 0, 10, 10}, WHITE);
    layer.Rectangle({30, 0, 10, 10}, TRANSPARENT);
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows({2, 2, 2}, {{5, 5}}));
    EXPECT_TRUE(picture.Shows({100, 50, 0}, {{15, 5}}, 2));
    EXPECT_TRUE(picture.Shows({1, 1, 1}, {{25, 5}}, 2));
    EXPECT_TRUE(picture.Shows(BLACK, {{35, 5}}));
}

TEST_F(LayerTest, OfFactorTwoIsAveragedDown) {
    Layer smooth(screen, {40, 40}, 2);
    EXPECT_EQ(smooth.Size().width, 40);
    EXPECT_EQ(smooth.Factor(), 2);
    smooth.Disc({20, 20}, 12.4, WHITE);
    smooth.Line({1, 38}, {39, 38.5}, 1, WHITE);
    layer.Copy(smooth, 10, 5);
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows(WHITE, {{30, 25}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{10, 5}}));
    EXPECT_TRUE(picture.Shows({128, 128, 128}, {{30, 12}}, 2)) << "two of its four pixels";
}

TEST_F(LayerTest, CopiesAreCutOffAtBothLayersEdges) {
    Layer source(screen, {20, 20});
    source.Clear(RED);
    source.Rectangle({0, 0, 5, 5}, GREEN);
    source.Rectangle({19, 19, 1, 1}, BLUE);
    layer.Copy(source, -3, -3);
    layer.Copy(source, 110, 50);
    layer.Copy(source, {-4, 15, 10, 10}, {40, 10, 10, 10});  // only (0, 15) to (6, 20) is there to copy
    layer.Copy(source, {0, 0, 20, 20}, {60, 0, 40, 40});
    layer.Copy(source, {50, 50, 5, 5}, {0, 30, 5, 5});
    layer.Copy(source, {0, 0, 0, 5}, {0, 30, 5, 5});
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows(GREEN, {{1, 1}, {110, 50}, {68, 8}}));
    EXPECT_TRUE(picture.Shows(RED, {{2, 2}, {119, 55}, {44, 10}, {49, 14}, {80, 20}}));
    EXPECT_TRUE(picture.Shows(BLUE, {{16, 16}}));
    EXPECT_TRUE(picture.Shows(BLACK, {{43, 10}, {49, 15}, {2, 32}}));
}

TEST_F(LayerTest, ImagesGoWhereTheyAreToInLayersOfAnySize) {
    for (const Size size : {Size{120, 60}, Size{60, 30}, Size{119, 59}, Size{37, 23}}) {
        for (const bool premultiplied : {false, true}) {
            SCOPED_TRACE(testing::Message() << size.width << " wide, premultiplied: " << premultiplied);
            Layer target(screen, size);
            target.Clear(WHITE);
            const Image image = {
                premultiplied ? PREMULTIPLIED.data() : STRAIGHT.data(), {2, 2}, premultiplied};
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
            EXPECT_TRUE(picture.Shows({0, 128, 0}, {{4, 5}}, 2)) << "in place of what was there";
            EXPECT_TRUE(picture.Shows({127, 255, 127}, {{14, 5}}, 2)) << "over it";
            EXPECT_TRUE(picture.Shows(WHITE, {{0, 0}, {12, 5}, {15, 6}, {13, 4}, {13, 7}}));
        }
    }
}

TEST_F(LayerTest, ImagesLargerThanTheWindowAreCutOff) {
    layer.Draw({STRAIGHT.data(), {2, 2}}, {-10, -10, 2, 300});
    layer.Draw({STRAIGHT.data(), {2, 2}}, {-200, -100, 400, 200});
    const Picture picture = Show();
    EXPECT_TRUE(picture.Shows(WHITE, {{119, 58}}, 2)) << "beyond the middle of the last pixel";
    EXPECT_TRUE(picture.Shows({128, 96, 128}, {{0, 0}}, 2)) << "the middle of all four";
}

TEST(Layer, RefusesWhatHasNoMeaning) {
    Stage stage({120, 60}, 256);
    const auto make = [&](Size size, int factor) {
        return CodeOf([&] { Layer(stage.screen, size, factor); });
    };
    EXPECT_EQ(make({0, 10}, 1), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({10, -1}, 1), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({10, 10}, 0), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({10, 10}, 3), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({257, 10}, 1), Error::TOO_LARGE);
    EXPECT_EQ(make({10, 129}, 2), Error::TOO_LARGE);
    EXPECT_EQ(make({128, 10}, 2), 0);
    EXPECT_EQ(make({256, 256}, 1), 0);

    Layer& layer = stage.layer;
    EXPECT_EQ(CodeOf([&] { layer.Copy(layer, 0, 0); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { layer.Draw({nullptr, {2, 2}}, {0, 0, 2, 2}); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { layer.Blend({STRAIGHT.data(), {2, 0}}, {0, 0, 2, 2}); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { layer.Blend({STRAIGHT.data(), {2, 2}}, {0, 0, 300, 2}); }), Error::TOO_LARGE);

    Layer moved(std::move(layer));
    moved.Clear(RED);
    std::string operation;
    EXPECT_EQ(CodeOf([&] { layer.Clear(); }, &operation), Error::INVALID_ARGUMENT);
    EXPECT_EQ(operation, "Layer::Clear");
    EXPECT_EQ(CodeOf([&] { stage.screen.Present(layer); }), Error::INVALID_ARGUMENT);
}

}  // namespace
}  // namespace kivgles::kit
