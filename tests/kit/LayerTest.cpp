// What layers show: cut off at the edges, to the pixel.

#include <array>
#include <cmath>
#include <limits>

#include "Stage.h"

namespace kivgles::kit {
namespace {

constexpr std::uint32_t RED_SHOWN = 0xFF0000;

bool IsNear(std::uint32_t pixel, int r, int g, int b) {
    const auto near = [](std::uint32_t found, int expected) {
        return std::abs(static_cast<int>(found & 0xFF) - expected) <= 2;
    };
    return near(pixel >> 16, r) && near(pixel >> 8, g) && near(pixel, b);
}

TEST(Layer, ShapesAreCutOffAtItsEdges) {
    Stage stage;
    Layer layer(stage.screen, {120, 60});
    layer.Rectangle({-10, -5, 20, 15}, RED);
    layer.Rectangle({115, 50, std::numeric_limits<int>::max(), std::numeric_limits<int>::max()}, RED);
    layer.Rectangle({50, 50, -4, 8}, RED);
    layer.Disc({-3, 30}, 10, GREEN);
    layer.RoundedRectangle({30, -20, 40, 40}, 8, BLUE);
    const Picture picture = stage.Show(layer);
    EXPECT_EQ(picture.At(9, 9), RED_SHOWN);
    EXPECT_EQ(picture.At(10, 9), 0U);
    EXPECT_EQ(picture.At(9, 10), 0U);
    EXPECT_EQ(picture.At(115, 50), RED_SHOWN);
    EXPECT_EQ(picture.At(114, 50), 0U);
    EXPECT_EQ(picture.At(48, 52), 0U);
    EXPECT_EQ(picture.At(6, 30), 0x00FF00U);
    EXPECT_EQ(picture.At(7, 30), 0U);
    EXPECT_EQ(picture.At(30, 0), 0x0000FFU);
    EXPECT_EQ(picture.At(50, 19), 0x0000FFU);
    EXPECT_EQ(picture.At(30, 19), 0U) << "a round corner";
    EXPECT_EQ(picture.At(69, 19), 0U);
}

TEST(Layer, ADiscOfTheCoreIsTheOneOfSpansToHalfAPixel) {
    Stage stage;
    Layer layer(stage.screen, {120, 60});
    layer.Disc({30, 30}, 25, RED);
    layer.Disc({90.001, 30}, 25, RED);  // not whole: of spans
    const Picture picture = stage.Show(layer);
    int differing = 0;
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 59; ++x) {
            differing += picture.At(x, y) != picture.At(x + 60, y) ? 1 : 0;
        }
    }
    EXPECT_LE(differing, 24);
    EXPECT_EQ(picture.At(30, 5), RED_SHOWN);
    EXPECT_EQ(picture.At(90, 5), RED_SHOWN);
}

TEST(Layer, RingsAreHollowAndArcsEnd) {
    Stage stage;
    Layer layer(stage.screen, {120, 60});
    layer.Ring({30, 30}, 20, 5, RED);
    layer.Arc({90, 30}, 20, 5, 90, 90, BLUE);  // from below to the left
    const Picture picture = stage.Show(layer);
    EXPECT_EQ(picture.At(12, 30), RED_SHOWN);
    EXPECT_EQ(picture.At(30, 47), RED_SHOWN);
    EXPECT_EQ(picture.At(30, 30), 0U);
    EXPECT_EQ(picture.At(72, 32), 0x0000FFU);
    EXPECT_EQ(picture.At(72, 28), 0U);
    EXPECT_EQ(picture.At(88, 47), 0x0000FFU);
    EXPECT_EQ(picture.At(92, 47), 0U);
}

TEST(Layer, BarsAreFilledUpToTheirLevel) {
    Stage stage;
    Layer layer(stage.screen, {120, 60});
    const std::array<double, 5> levels = {0.25, -1, 7, std::nan(""), 0};
    int y = 0;
    for (const double level : levels) {
        layer.Bar({10, y, 40, 5}, level, RED, BLUE);
        y += 10;
    }
    const Picture picture = stage.Show(layer);
    EXPECT_EQ(picture.At(19, 4), RED_SHOWN);
    EXPECT_EQ(picture.At(20, 4), 0x0000FFU);
    EXPECT_EQ(picture.At(10, 10), 0x0000FFU);
    EXPECT_EQ(picture.At(49, 20), RED_SHOWN);
    EXPECT_EQ(picture.At(10, 30), 0x0000FFU);
    EXPECT_EQ(picture.At(10, 40), 0x0000FFU);
}

TEST(Layer, DarkColoursStayDarkAndTranslucentOnesAreOverBlack) {
    Stage stage;
    Layer layer(stage.screen, {120, 60});
    layer.Rectangle({0, 0, 10, 10}, {1, 1, 1});
    layer.Rectangle({10, 0, 10, 10}, {200, 100, 0, 128});
    layer.Rectangle({20, 0, 10, 10}, {3, 3, 3, 100});
    layer.Rectangle({30, 0, 10, 10}, WHITE);
    layer.Rectangle({30, 0, 10, 10}, TRANSPARENT);
    const Picture picture = stage.Show(layer);
    EXPECT_EQ(picture.At(5, 5), 0x020202U);
    EXPECT_TRUE(IsNear(picture.At(15, 5), 100, 50, 0));
    EXPECT_TRUE(IsNear(picture.At(25, 5), 1, 1, 1)) << std::hex << picture.At(25, 5);
    EXPECT_EQ(picture.At(35, 5), 0U);
}

TEST(Layer, OfFactorTwoIsAveragedDown) {
    Stage stage;
    Layer canvas(stage.screen, {120, 60});
    Layer smooth(stage.screen, {40, 40}, 2);
    EXPECT_EQ(smooth.Size().width, 40);
    EXPECT_EQ(smooth.Factor(), 2);
    smooth.Disc({20, 20}, 12.4, WHITE);
    smooth.Line({1, 38}, {39, 38.5}, 1, WHITE);
    canvas.Copy(smooth, 10, 5);
    const Picture picture = stage.Show(canvas);
    EXPECT_EQ(picture.At(30, 25), 0xFFFFFFU);
    EXPECT_EQ(picture.At(10, 5), 0U);
    EXPECT_TRUE(IsNear(picture.At(30, 12), 128, 128, 128)) << "two of its four pixels";
}

TEST(Layer, CopiesAreCutOffAtBothLayersEdges) {
    Stage stage;
    Layer canvas(stage.screen, {120, 60});
    Layer source(stage.screen, {20, 20});
    source.Clear(RED);
    source.Rectangle({0, 0, 5, 5}, GREEN);
    source.Rectangle({19, 19, 1, 1}, BLUE);
    canvas.Copy(source, -3, -3);
    canvas.Copy(source, 110, 50);
    canvas.Copy(source, {-4, 15, 10, 10}, {40, 10, 10, 10});  // only (0, 15) to (6, 20) is there to copy
    canvas.Copy(source, {0, 0, 20, 20}, {60, 0, 40, 40});
    canvas.Copy(source, {50, 50, 5, 5}, {0, 30, 5, 5});
    canvas.Copy(source, {0, 0, 0, 5}, {0, 30, 5, 5});
    const Picture picture = stage.Show(canvas);
    EXPECT_EQ(picture.At(1, 1), 0x00FF00U);
    EXPECT_EQ(picture.At(2, 2), RED_SHOWN);
    EXPECT_EQ(picture.At(16, 16), 0x0000FFU);
    EXPECT_EQ(picture.At(110, 50), 0x00FF00U);
    EXPECT_EQ(picture.At(119, 55), RED_SHOWN);
    EXPECT_EQ(picture.At(43, 10), 0U);
    EXPECT_EQ(picture.At(44, 10), RED_SHOWN);
    EXPECT_EQ(picture.At(49, 14), RED_SHOWN);
    EXPECT_EQ(picture.At(49, 15), 0U);
    EXPECT_EQ(picture.At(68, 8), 0x00FF00U);
    EXPECT_EQ(picture.At(80, 20), RED_SHOWN);
    EXPECT_EQ(picture.At(2, 32), 0U);
}

// Four pixels: red, green half, blue, white.
constexpr std::array<std::uint8_t, 16> STRAIGHT = {255, 0, 0,   255, 0,   255, 0,   128,
                                                   0,   0, 255, 255, 255, 255, 255, 255};
constexpr std::array<std::uint8_t, 16> PREMULTIPLIED = {255, 0, 0,   255, 0,   128, 0,   128,
                                                        0,   0, 255, 255, 255, 255, 255, 255};

TEST(Layer, ImagesGoWhereTheyAreToInLayersOfAnySize) {
    for (const Size size : {Size{120, 60}, Size{60, 30}, Size{119, 59}, Size{37, 23}}) {
        for (const bool premultiplied : {false, true}) {
            Stage stage;
            Layer canvas(stage.screen, {120, 60});
            Layer layer(stage.screen, size);
            layer.Clear(WHITE);
            const Image image = {
                premultiplied ? PREMULTIPLIED.data() : STRAIGHT.data(), {2, 2}, premultiplied};
            layer.Draw(image, {3, 5, 2, 2});
            layer.Blend(image, {13, 5, 2, 2});
            layer.Blend(image, {-1, -1, 2, 2});
            layer.Draw(image, {size.width - 1, 7, 2, 2});
            layer.Blend(image, {50, 500, 2, 2});
            canvas.Copy(layer, 0, 0);
            const Picture picture = stage.Show(canvas);
            SCOPED_TRACE(testing::Message() << size.width << " wide, premultiplied: " << premultiplied);
            EXPECT_EQ(picture.At(3, 5), RED_SHOWN);
            EXPECT_TRUE(IsNear(picture.At(4, 5), 0, 128, 0));
            EXPECT_EQ(picture.At(3, 6), 0x0000FFU);
            EXPECT_EQ(picture.At(13, 5), RED_SHOWN);
            EXPECT_TRUE(IsNear(picture.At(14, 5), 127, 255, 127));
            EXPECT_EQ(picture.At(13, 6), 0x0000FFU);
            EXPECT_EQ(picture.At(12, 5), 0xFFFFFFU);
            EXPECT_EQ(picture.At(15, 6), 0xFFFFFFU);
            EXPECT_EQ(picture.At(13, 4), 0xFFFFFFU);
            EXPECT_EQ(picture.At(13, 7), 0xFFFFFFU);
            EXPECT_EQ(picture.At(0, 0), 0xFFFFFFU) << "its last pixel is the white one";
            EXPECT_EQ(picture.At(size.width - 1, 7), RED_SHOWN);
        }
    }
}

TEST(Layer, ImagesLargerThanTheWindowAreCutOff) {
    Stage stage;
    Layer canvas(stage.screen, {120, 60});
    canvas.Draw({STRAIGHT.data(), {2, 2}}, {-10, -10, 2, 300});
    canvas.Draw({STRAIGHT.data(), {2, 2}}, {-200, -100, 400, 200});
    const Picture picture = stage.Show(canvas);
    EXPECT_TRUE(IsNear(picture.At(119, 59 - 1), 255, 255, 255)) << "beyond the middle of the last pixel";
    EXPECT_TRUE(IsNear(picture.At(0, 0), 128, 96, 128)) << "the middle of all four";
}

TEST(Layer, RefusesWhatHasNoMeaning) {
    Stage stage({120, 60}, 256);
    Layer layer(stage.screen, {100, 50});
    Layer smooth(stage.screen, {128, 10}, 2);
    const auto make = [&](Size size, int factor) {
        return CodeOf([&] { Layer(stage.screen, size, factor); });
    };
    EXPECT_EQ(make({0, 10}, 1), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({10, -1}, 1), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({10, 10}, 0), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({10, 10}, 3), Error::INVALID_ARGUMENT);
    EXPECT_EQ(make({257, 10}, 1), Error::TOO_LARGE);
    EXPECT_EQ(make({10, 129}, 2), Error::TOO_LARGE);
    EXPECT_EQ(make({256, 256}, 1), 0);

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

TEST(Layer, ASixteenthIsRefusedUntilOneIsFreed) {
    Stage stage;
    std::vector<Layer> layers;
    for (int i = 0; i < 15; ++i) {
        layers.emplace_back(stage.screen, Size{8, 8});
    }
    EXPECT_EQ(CodeOf([&] { Layer(stage.screen, {8, 8}); }), 15);
    layers.pop_back();
    EXPECT_EQ(CodeOf([&] { Layer(stage.screen, {8, 8}); }), 0);
}

}  // namespace
}  // namespace kivgles::kit
