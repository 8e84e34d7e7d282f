// What a screen shows: layers cut off to the pixel, what is handed over, windows that come and go, threads.

#include <array>
#include <cmath>
#include <functional>
#include <future>
#include <list>
#include <optional>
#include <utility>

#include "Stage.h"
#include "kivgles/KivGLDrawSurface.h"
#include "support/Process.h"
#include "support/Recorder.h"

// What the core was given: 1 for the window, 0 for a layer; where to; the first pixel, 0xAABBGGRR.
static std::vector<std::array<std::uint32_t, 6>> bitmaps;
static std::function<void()> onHandOver = [] {};  // the next time only, under the screen's lock

int kivgles::KivGLDrawSurface::KivDrawBitmap(unsigned int handle, const TagKivBitmapInfo& bitmap) noexcept {
    const auto& [x, y, width, height] = bitmap.dstRect;
    const std::uint32_t first = *reinterpret_cast<const std::uint32_t*>(bitmap.data);
    bitmaps.push_back({handle == FBO_HANDLE_BASE, x, y, width, height, first});
    std::exchange(onHandOver, [] {})();
    return recorder::Next<int(KivGLDrawSurface*, unsigned int, const TagKivBitmapInfo&)>(
        "_ZN7kivgles16KivGLDrawSurface13KivDrawBitmapEjRKNS_16TagKivBitmapInfoE")(this, handle, bitmap);
}

namespace kivgles::kit {
static int Swaps() { return recorder::Counts()["eglSwapBuffers"]; }

class ScreenTest : public testing::Test, protected Stage {};

TEST_F(ScreenTest, PicturesGoWhereTheyAreToInLayersOfAnySize) {
    // Red and half green, or a quarter, above blue and white.
    const std::uint8_t pixels[] = {255, 0, 0, 255, 0, 128, 0, 128, 0, 0, 255, 255, 255, 255, 255, 255};
    const Image image = {pixels, {2, 2}}, finished = {pixels, {2, 2}, true};
    Canvas canvas({2, 2}), large({150, 90});
    canvas.Draw(image, {0, 0, 2, 2});
    large.Clear(GREEN);
    for (const Size size : {Size{120, 60}, {60, 30}, {119, 59}, {200, 40}}) {
        Layer target(screen, size);
        target.Draw(large, {-1000, 10, 2000, 10});  // scaled
        target.Draw(large, -120, -80);
        target.Draw(image, {3, 12, 2, 2});
        target.Blend(finished, {13, 12, 2, 2});
        target.Draw(finished, {20, -1, 2, 2});
        target.Blend(image, {24, -1, 2, 2});
        target.Draw(canvas, -1, 20);
        layer->Copy(target, 0, 0);
        screen.Present(*layer);
        EXPECT_TRUE(Shows(RED, {{3, 12}, {13, 12}}) && Shows({0, 64, 0}, {{4, 12}, {0, 20}}));
        EXPECT_TRUE(Shows(BLUE, {{3, 13}, {20, 0}, {24, 0}}) && Shows(WHITE, {{4, 13}, {25, 0}, {0, 21}}));
        EXPECT_TRUE(Shows(GREEN, {{14, 12}, {29, 9}, {2, 12}, {3, 14}}) && Shows(BLACK, {{30, 9}, {1, 20}}));
    }
}

TEST_F(ScreenTest, RectanglesAndCopiesAreCutOffAtTheEdgesAndTakeNoColourFromBesideThem) {
    Layer source(screen, {20, 20});
    source.Clear(RED);
    source.Rectangle({10, 10, 4, 4}, BLUE);
    layer->Rectangle({80, 5, HUGE_VAL, 8}, RED);
    layer->Rectangle({-2e9, 30, 2e9 + 10, 5}, {200, 100, 0, 128});
    layer->Rectangle({96, -1e300, 2, 2e300}, BLUE);
    layer->Rectangle({20.4, 30.4, 10.2, 9}, WHITE);  // to whole pixels
    layer->Rectangle({0, 40, 10, 10}, {1, 1, 1});    // to the core, 1 is all there is
    layer->Copy(source, -3, -3);
    layer->Copy(source, 110, 30);
    layer->Copy(source, {-4, 15, 10, 10}, {40, 10, 10, 10});  // only (0, 15) to (6, 20) is there to copy
    layer->Copy(source, {10, 10, 10, 10}, {60, 20, 75, 75});
    layer->Copy(source, {0, 0, 14, 14}, {18, 0, 21, 28});
    layer->Copy(source, {10, 10, 4, 4}, {-79, 20, 80, 5});       // a twentieth of a pixel of the source
    layer->Copy(source, {10, 10, 4, 4}, {100, -790, 5, 800});    // another one
    layer->Copy(source, {4, 10, 12, 1}, {-6590, 50, 12000, 5});  // a part of its pixel 10
    screen.Present(*layer);
    EXPECT_TRUE(Shows(RED, {{0, 0}, {16, 16}, {44, 10}, {49, 14}, {119, 30}}));
    EXPECT_TRUE(Shows(BLUE, {{60, 20}, {85, 45}, {38, 27}, {0, 24}, {104, 9}, {0, 50}, {119, 54}, {96, 0}}));
    EXPECT_TRUE(Shows({100, 50, 0}, {{0, 30}, {9, 34}}) && Shows(WHITE, {{20, 30}, {30, 38}}));
    EXPECT_TRUE(Shows(BLACK, {{17, 3}, {43, 10}, {50, 10}, {49, 15}, {59, 20}, {1, 20}}));
    EXPECT_TRUE(Shows(BLACK, {{19, 31}, {31, 31}, {95, 1}, {98, 1}, {82, 9}}) && Shows({2, 2, 2}, {{5, 45}}));
}

TEST_F(ScreenTest, HasFifteenLayersThatRefuseWhatHasNoMeaning) {
    const Stage another;
    Canvas canvas(screen.Size());
    std::list<Layer> layers;
    while (layers.size() < 14) {
        canvas.Clear({9, 9, 1, 1}, RED);
        screen.Present(canvas);            // by way of another
        Layer(screen, {4000, 1}).Clear();  // more than 15, one after another
        layers.emplace_back(screen, Size{31, 31});
        if (layers.size() <= 12) {
            layers.back().Copy(*layer, {1, 1, 3, 3}, {-5, 0, 20, 20});  // by way of two others
        }
    }
    canvas.Clear({5, 5, 5, 5}, GREEN);
    screen.Present(canvas);
    EXPECT_TRUE(Shows(GREEN, {{5, 5}, {9, 9}}));
    Layer& last = layers.back();
    const Layer moved(std::move(layers.front()));
    const auto make = [&](Size size) { return ErrorOf([&] { Layer(screen, size); }); };
    const auto copy = [&](const Layer& from) { return ErrorOf([&] { last.Copy(from, 0, 0); }); };
    EXPECT_EQ(make({2, 2}), "15 Layer: all 15 layers of the screen are in use");
    EXPECT_EQ(make({4001, 2}),
              "-2 Layer: 4001 by 2 pixels are more than 4000 on a side: raise the Screen's maxLayerSide");
    EXPECT_EQ(copy(last), "-1 Layer::Copy: the source is the layer itself");
    EXPECT_EQ(copy(*another.layer), "-1 Layer::Copy: the source is another screen's");
    EXPECT_EQ(copy(layers.front()), "-1 Layer::Copy: the source was moved away");
    EXPECT_EQ(ErrorOf([&] { screen.Present(Canvas({4001, 2})); }).find("-2 Screen::Present: 4001 by 2"), 0U);
    EXPECT_NE(ErrorOf([&] { screen.Present(*another.layer); }), "");
}

TEST_F(ScreenTest, IsHandedWhatHasChangedAndAllOfItOnlyWhereMuchChangesEachTime) {
    Canvas canvas({120, 60});
    const std::tuple<Rect, Color, decltype(bitmaps)> rows[] = {
        {Rect(0, 0, 120, 60), RED, {{1, 0, 0, 120, 60, 0xFF0000FF}}},
        {{10, 20, 4, 3}, {0, 255, 0, 128}, {{0, 0, 0, 120, 60, 0xFF0000FF}}},
        {{118, 58, 2, 2}, {0, 0, 255, 128}, {{0, 118, 58, 2, 2, 0x80800000}}},
        {{0, 0, 120, 20}, BLUE, {{0, 0, 0, 120, 20, 0xFFFF0000}}},
        {{0, 0, 120, 20}, BLUE, {}},  // the same again
        {{0, 10, 120, 30}, GREEN, {{1, 0, 0, 120, 60, 0xFFFF0000}}},
        {{119, 59, 1, 1}, WHITE, {{0, 0, 0, 120, 60, 0xFFFF0000}}},
        {{50, 45, 6, 4}, WHITE, {{0, 50, 45, 6, 4, 0xFFFFFFFF}}},
        {{0, 43, 110, 9}, RED, {{0, 48, 45, 14, 4, 0xFF0000FF}}}};  // in strips of 16 columns
    int frame = Swaps();
    for (const auto& [rect, color, handedOver] : rows) {
        canvas.Clear(rect, color);
        bitmaps.clear();
        screen.Present(canvas);
        EXPECT_EQ(bitmaps, handedOver);
        EXPECT_GE(Swaps(), frame++) << "more than one in flight";
    }
    const X11Window larger(150, 70);
    Canvas blue({150, 70});  // in memory it begins as the former one
    blue.Clear(BLUE);
    screen.Present(*layer), screen.Connect(larger.Native());
    screen.Present(blue);
    EXPECT_TRUE(larger.Shows(0x0000FF, 9, 0));
    screen.Connect(window.Native());
}

TEST_F(ScreenTest, ShowsTheLastFrameAgainOnAWindowThatWasCoveredResizedReplacedOrLost) {
    const X11Window another(150, 70);
    Layer kept(screen, {60, 100});
    EXPECT_FALSE(screen.Refresh());
    for (const auto& [size, color] : {std::pair(Size{60, 30}, RED), {{120, 60}, GREEN}}) {
        Canvas canvas(size);
        canvas.Clear(color);
        screen.Present(canvas);
        canvas.Clear({0, 0, 5, 5}, color);
        screen.Present(canvas);
        canvas.Clear(WHITE);
        EXPECT_TRUE(screen.Refresh() && Shows(color, {{0, 0}, {119, 59}})) << "as it was presented";
    }
    window.Resize(100, 80);
    screen.Reconnect(window.Native());
    EXPECT_TRUE(Shows(GREEN, {{99, 79}})) << "scaled, and though the canvas is gone";
    screen.Connect(another.Native());
    EXPECT_TRUE(another.Shows(0x00FF00, 149, 69));
    screen.Present(kept);
    kept.Clear(BLUE);
    EXPECT_TRUE(screen.Refresh() && another.Shows(0x0000FF, 149, 69)) << "a layer as it is now";
    screen.Reconnect(window.Native());
    EXPECT_FALSE(screen.Refresh()) << "its picture went with the surface";
    screen.OnReconnect([&] {
        layer->Clear(WHITE);
        layer->Copy(kept, 0, 0);
        screen.Present(*layer);
    });
    for (const char* const function : {"eglCreateWindowSurface", "glGenTextures", "eglInitialize"}) {
        recorder::Fail(function);
        EXPECT_NE(ErrorOf([&] { screen.Reconnect(window.Native()); }), "");
        EXPECT_EQ(ErrorOf([&] { screen.Finish(); }), "-3 Screen::Finish: no window is connected");
    }
    EXPECT_EQ(ErrorOf([&] { screen.Connect(nullptr); }), "-1 Screen::Connect: the window is null");
    screen.Connect(window.Native());
    EXPECT_TRUE(Shows(WHITE, {{99, 79}}) && Shows(BLACK, {{0, 0}})) << "painted again; layers are empty";
    *layer = Layer(std::move(kept));
    EXPECT_FALSE(screen.Refresh());
}

TEST(Screen, KeepsNobodyOutForLongAndWaitsForThoseWhoWait) {
    std::optional<Stage> stage(std::in_place);  // its place stays, for a thread that is between two calls
    Layer layer(std::move(*stage->layer));
    recorder::Reset();
    for (int i = 0; i < 2000; ++i) {
        layer.Rectangle({0, 0, 1, 1}, RED);
    }
    EXPECT_GE(recorder::Counts()["glDrawArrays"], 2000 - 300) << "or a client could queue without bound";
    std::promise<void> isIn, mayGoOn;
    onHandOver = [&] {
        isIn.set_value();
        mayGoOn.get_future().wait();
    };
    auto busy = std::async(std::launch::async, [&, &screen = stage->screen] {
        const Canvas canvas({2, 2});
        return ErrorOf([&] {
            for (;;) {  // until the screen goes
                layer.Draw(canvas, 0, 0);
                layer.Draw(canvas, 0, 0);
                screen.Present(canvas);
            }
        });
    });
    isIn.get_future().wait();
    bitmaps.clear();
    auto waits = AsleepIn([&] { layer.Draw(Canvas({1, 1}), 0, 0); });
    mayGoOn.set_value();
    waits.get();
    stage->screen.Reconnect(stage->window.Native());
    stage.reset();
    EXPECT_NE(busy.get(), "");
    EXPECT_EQ(bitmaps.front()[3], 1U) << "who waits comes before who comes again";
    EXPECT_NE(ErrorOf([&] { layer.Clear(); }), "") << "outlives its screen";
}

}  // namespace kivgles::kit
