// What layers show: cut off at the edges, to the pixel.

#include <cmath>
#include <limits>
#include <list>

#include "Stage.h"

namespace kivgles::kit {
namespace {

class LayerTest : public testing::Test, protected Stage {};

TEST_F(LayerTest, RectanglesAreCutOffAtItsEdgesHoweverFarTheyReach) {
    constexpr int MOST = std::numeric_limits<int>::max();
    layer->Rectangle({-MOST, -5, MOST + 10.0, 15}, RED);
    layer->Rectangle({115, 50, MOST, MOST}, RED);
    layer->Rectangle({-MOST, -MOST, MOST, MOST}, GREEN);
    layer->Rectangle({60, -1e300, 2, 2e300}, BLUE);
    layer->Rectangle({30.4, 10.4, 10.2, 10}, WHITE);  // to whole pixels
    for (const double none : {std::nan(""), HUGE_VAL, -4.0, 0.0}) {
        layer->Rectangle({80, 10, none, 8}, RED);
    }
    layer->Rectangle({0, 40, 10, 10}, {1, 1, 1});  // to the core, 1 is all there is
    layer->Rectangle({10, 40, 10, 10}, {200, 100, 0, 128});
    screen.Present(*layer);
    EXPECT_TRUE(Shows(RED, {{0, 0}, {9, 9}, {115, 50}, {119, 59}}) && Shows({2, 2, 2}, {{5, 45}}));
    EXPECT_TRUE(Shows(BLUE, {{60, 0}, {61, 59}}) && Shows(WHITE, {{30, 10}, {40, 19}}));
    EXPECT_TRUE(Shows({100, 50, 0}, {{15, 45}})) << "premultiplied";
    EXPECT_TRUE(Shows(BLACK, {{10, 9}, {9, 10}, {114, 50}, {115, 49}, {59, 0}, {62, 0}, {82, 12}, {81, 9}}));
    EXPECT_TRUE(Shows(BLACK, {{29, 10}, {41, 19}, {30, 9}, {30, 20}}));
}

TEST_F(LayerTest, PicturesGoWhereTheyAreToInLayersOfAnySize) {
    std::uint8_t pixels[] = {255, 0, 0,   255, 0,   255, 0,   128,   // red, green half,
                             0,   0, 255, 255, 255, 255, 255, 255};  // blue, white
    Canvas canvas({2, 2}), large({150, 90});
    canvas.Draw(Image{pixels, {2, 2}}, {0, 0, 2, 2});
    large.Clear(GREEN);
    for (const Size size : {Size{120, 60}, {60, 30}, {119, 59}, {47, 23}}) {
        for (const bool premultiplied : {false, true}) {
            SCOPED_TRACE(testing::Message() << size.width << " wide, premultiplied: " << premultiplied);
            pixels[5] = premultiplied ? 128 : 255;
            const Image image = {pixels, {2, 2}, premultiplied};
            Layer target(screen, size);
            target.Draw(large, {-1000, 10, 2000, 10});  // scaled
            target.Draw(large, -120, -80);
            target.Draw(image, {3, 12, 2, 2});
            target.Blend(image, {13, 12, 2, 2});
            target.Draw(canvas, 20, -1);
            target.Blend(canvas, size.width - 1, 7);
            target.Draw(image, {50, 500, 2, 2});
            layer->Clear();
            layer->Copy(target, 0, 0);
            screen.Present(*layer);
            EXPECT_TRUE(Shows(RED, {{3, 12}, {13, 12}, {size.width - 1, 7}}));
            EXPECT_TRUE(Shows(BLUE, {{3, 13}, {13, 13}, {20, 0}, {size.width - 1, 8}}));
            EXPECT_TRUE(Shows(WHITE, {{4, 13}, {21, 0}}) && Shows({0, 128, 0}, {{4, 12}}));
            EXPECT_TRUE(Shows(GREEN, {{14, 12}, {29, 9}, {0, 10}, {2, 12}, {3, 14}, {9, 19}}));
            EXPECT_TRUE(Shows(BLACK, {{30, 9}, {size.width - 2, 7}, {0, 20}}));
        }
    }
}

TEST_F(LayerTest, CopiesAreCutOffAtBothLayersEdgesAndTakeNoColourFromBesideThem) {
    Layer source(screen, {20, 20});
    source.Clear(RED);
    source.Rectangle({10, 10, 4, 4}, BLUE);
    layer->Copy(source, -3, -3);
    layer->Copy(source, 110, 50);
    layer->Copy(source, {-4, 15, 10, 10}, {40, 10, 10, 10});  // only (0, 15) to (6, 20) is there to copy
    layer->Copy(source, {50, 50, 5, 5}, {0, 30, 5, 5});
    layer->Copy(source, {10, 10, 4, 4}, {60, 20, 30, 30});
    layer->Copy(source, {10, 10, 4, 4}, {-79, 20, 80, 5});       // a twentieth of a pixel of the source
    layer->Copy(source, {10, 10, 4, 4}, {100, -790, 5, 800});    // another one
    layer->Copy(source, {4, 10, 12, 1}, {-6590, 50, 12000, 5});  // a part of its pixel 10
    layer->Copy(source, {4, 10, 12, 1}, {-5380, 55, 12000, 5});  // of 9
    screen.Present(*layer);
    EXPECT_TRUE(Shows(RED, {{0, 0}, {16, 16}, {44, 10}, {49, 14}, {0, 55}, {119, 59}}));
    EXPECT_TRUE(Shows(BLUE, {{7, 7}, {60, 20}, {89, 49}, {60, 49}, {0, 20}, {0, 24}, {100, 0}, {104, 9}}));
    EXPECT_TRUE(Shows(BLUE, {{0, 50}, {119, 54}}));
    EXPECT_TRUE(Shows(BLACK, {{17, 3}, {43, 10}, {50, 10}, {49, 15}, {2, 32}, {59, 20}, {90, 20}, {1, 20}}));
    EXPECT_TRUE(Shows(BLACK, {{0, 25}, {100, 10}, {105, 0}}));
}

TEST_F(LayerTest, ThereAreFifteenAtATimeWhateverTheKitKeepsForItself) {
    for (int i = 0; i < 16; ++i) {
        const Layer one(screen, {20, 20});
    }
    Canvas canvas(screen.Size());
    canvas.Clear({0, 0, 1, 1}, BLUE);
    std::list<Layer> layers;
    while (layers.size() < 14) {
        canvas.Clear({9, 9, 1, 1}, RED);
        screen.Present(canvas);  // by way of another
        layers.emplace_back(screen, Size{31, 31});
        if (layers.size() <= 12) {
            layers.back().Copy(*layer, {1, 1, 3, 3}, {-5, 0, 20, 20});  // by way of two others
        }
    }
    EXPECT_EQ(ErrorOf([&] { Layer(screen, {2, 2}); }), "15 Layer: all 15 layers of the screen are in use");
    EXPECT_NE(ErrorOf([&] { layer->Copy(layers.back(), {1, 1, 3, 3}, {0, 0, 20, 20}); }), "");
    canvas.Clear({5, 5, 5, 5}, GREEN);
    screen.Present(canvas);
    EXPECT_TRUE(Shows(GREEN, {{5, 5}, {9, 9}}) && Shows(BLUE, {{0, 0}}));
}

TEST(Layer, RefusesWhatHasNoMeaning) {
    auto stage = std::make_unique<Stage>(120, 60, 256);
    Stage another;
    Layer layer(std::move(*stage->layer));
    const auto make = [&](Size size) { return ErrorOf([&] { Layer(stage->screen, size); }); };
    const auto copy = [&](Layer& from) { return ErrorOf([&] { layer.Copy(from, 0, 0); }); };
    EXPECT_EQ(make({10, 0}), "-1 Layer: 10 by 0 pixels hold nothing");
    EXPECT_EQ(
        make({257, 10}),
        "-2 Layer: 257 by 10 pixels are more than 256 on a side: make the Screen with a larger maxLayerSide");
    EXPECT_EQ(make({256, 10}), "");
    EXPECT_EQ(ErrorOf([&] {
                  layer.Blend(Image{}, {0, 0, 2, 2});
              }),
              "-1 Layer::Blend: the image has no pixels");
    EXPECT_EQ(copy(layer), "-1 Layer::Copy: the source is the layer itself");
    EXPECT_EQ(copy(*another.layer), "-1 Layer::Copy: the source is another screen's");
    EXPECT_EQ(copy(*stage->layer), "-1 Layer::Copy: the source was moved away");
    EXPECT_NE(ErrorOf([&] { another.screen.Present(layer); }), "");
    stage.reset();
    EXPECT_NE(ErrorOf([&] { layer.Draw(Canvas({1, 1}), 500, 0); }), "") << "outlives its screen";
}

}  // namespace
}  // namespace kivgles::kit
