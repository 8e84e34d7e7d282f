// Windows that come, change and go, and threads that share one. Those that are looked at have more than the
// 16 KiB that a driver may hold back among its requests.

#include <array>
#include <atomic>
#include <future>
#include <optional>

#include "Stage.h"
#include "kivgles/kit/Text.h"
#include "support/Recorder.h"

namespace kivgles::kit {
namespace {

const std::string FONT = std::string(KIVGLES_TEST_FONTS) + "/bearings.ttf";

TEST(Screen, WithoutAWindowRefusesEverything) {
    Screen screen;
    EXPECT_EQ(screen.Size().width, 0);
    EXPECT_EQ(CodeOf([&] { screen.Connect(nullptr); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { screen.Reconnect(nullptr); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { screen.LoadFont(FONT); }), Error::NOT_CONNECTED);
    EXPECT_EQ(CodeOf([&] { screen.Finish(); }), Error::NOT_CONNECTED);
    EXPECT_EQ(CodeOf([&] { Layer(screen, {8, 8}); }), Error::NOT_CONNECTED);
}

TEST(Screen, LayersMayOutliveIt) {
    std::optional<Layer> layer;
    {
        Stage stage;
        layer.emplace(stage.screen, Size{8, 8});
    }
    EXPECT_EQ(layer->Size().width, 8);
    EXPECT_EQ(CodeOf([&] { layer->Clear(); }), Error::NOT_CONNECTED);
    EXPECT_EQ(CodeOf([&] { layer->Rectangle({0, 0, 0, 0}, RED); }), Error::NOT_CONNECTED);
    Stage another;
    EXPECT_EQ(CodeOf([&] { another.screen.Present(*layer); }), Error::INVALID_ARGUMENT);
    Layer own(another.screen, {8, 8});
    EXPECT_EQ(CodeOf([&] { own.Copy(*layer, 0, 0); }), Error::INVALID_ARGUMENT);
}

TEST(Screen, KeepsOneFrameInFlight) {
    Stage stage;
    Layer layer(stage.screen, {120, 60});
    recorder::Reset();
    for (int frame = 1; frame <= 20; ++frame) {
        layer.Clear(frame % 2 == 0 ? RED : GREEN);
        stage.screen.Present(layer);
        EXPECT_GE(recorder::Counts()["eglSwapBuffers"], frame - 1);
    }
    stage.screen.Finish();
    EXPECT_EQ(recorder::Counts()["eglSwapBuffers"], 20);
}

TEST(Screen, LetsNoClientQueueWithoutBound) {
    Stage stage;
    Layer layer(stage.screen, {120, 60});
    recorder::Reset();
    for (int i = 0; i < 20000; ++i) {
        layer.Rectangle({0, 0, 1, 1}, RED);
    }
    EXPECT_GE(recorder::Counts()["glDrawArrays"], 20000 - 2 * 4096);
}

TEST(Screen, ScalesALayerToTheWindow) {
    Stage stage({120, 60});
    Layer layer(stage.screen, {4, 2});
    layer.Clear(RED);
    layer.Rectangle({2, 0, 2, 1}, BLUE);
    const Picture picture = stage.Show(layer);
    EXPECT_EQ(picture.At(0, 0), 0xFF0000U);
    EXPECT_EQ(picture.At(110, 5), 0x0000FFU);
}

TEST(Screen, ReconnectsAWindowAfterAResize) {
    Stage stage({40, 20});
    stage.screen.LoadFont(FONT);
    Layer layer(stage.screen, {40, 20});
    int paints = 0;
    stage.screen.OnReconnect([&] {
        ++paints;
        layer = Layer(stage.screen, stage.screen.Size());
        layer.Clear({0, 0, 200});
        Text(40, WHITE).Draw(layer, "A", {0, 0, 100, 50});
    });
    stage.window.Resize(120, 80);
    stage.screen.Reconnect(stage.window.Native());
    EXPECT_EQ(paints, 1);
    EXPECT_EQ(stage.screen.Size().width, 120);
    EXPECT_EQ(stage.screen.Size().height, 80);
    const Picture picture = stage.Show(layer);
    EXPECT_EQ(picture.At(118, 70), 0x0000C8U);
    EXPECT_EQ(picture.At(5, 30), 0xFFFFFFU) << "the font has been loaded again";

    stage.screen.Connect(stage.window.Native());
    EXPECT_EQ(paints, 2) << "the same window is a new beginning";
}

TEST(Screen, GoesOnWithAnotherWindowAfterItsOwnIsLost) {
    std::optional<X11Window> window(std::in_place, 120U, 60U);
    Screen screen;
    screen.Connect(window->Native());
    Layer layer(screen, {120, 60});
    layer.Clear(RED);
    screen.Present(layer);
    screen.Finish();
    window.reset();

    X11Window next(150, 70);
    screen.Reconnect(next.Native());
    EXPECT_EQ(screen.Size().width, 150);
    layer.Rectangle({0, 0, 60, 60}, GREEN);  // the layer is the same one, and empty
    screen.Present(layer);
    screen.Finish();
    EXPECT_TRUE(next.Shows(0x00FF00, 5, 5));
    EXPECT_TRUE(next.Shows(0x000000, 140, 5));
}

TEST(Screen, TakesLayersAndFontAlongToAnotherWindow) {
    Stage stage;
    stage.screen.LoadFont(FONT);
    Layer layer(stage.screen, {120, 60});
    layer.Clear(RED);
    bool painted = false;
    stage.screen.OnReconnect([&] { painted = true; });
    X11Window another(150, 70);
    stage.screen.Connect(another.Native());
    EXPECT_FALSE(painted);
    EXPECT_EQ(stage.screen.Size().width, 150);
    Text(10, WHITE).Draw(layer, "A", {0, 0, 120, 60});
    stage.screen.Present(layer);
    stage.screen.Finish();
    EXPECT_TRUE(another.Shows(0xFF0000, 148, 68));
}

TEST(Screen, CanBeReconnectedAfterAFailure) {
    struct {
        const char* function;
        bool another;
        int code;
    } const rows[] = {{"eglCreateWindowSurface", false, 5},
                      {"eglCreateWindowSurface", true, 5},
                      {"eglInitialize", false, 2},
                      {"FT_New_Face", false, 31},
                      {"glGenTextures", false, 21}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.function);
        Stage stage;
        stage.screen.LoadFont(FONT);
        Layer layer(stage.screen, {120, 60});
        X11Window another(150, 70);
        int paints = 0;
        stage.screen.OnReconnect([&] { ++paints; });
        recorder::Reset();
        recorder::Fail(row.function);
        EXPECT_EQ(CodeOf([&] {
                      if (row.another) {
                          stage.screen.Connect(another.Native());
                      } else {
                          stage.screen.Reconnect(stage.window.Native());
                      }
                  }),
                  row.code);
        EXPECT_EQ(recorder::Failed(row.function), 1);
        EXPECT_EQ(CodeOf([&] { layer.Clear(); }), Error::NOT_CONNECTED);
        EXPECT_EQ(stage.screen.Size().width, 0);
        EXPECT_EQ(paints, 0);

        stage.screen.Connect(stage.window.Native());
        EXPECT_EQ(paints, 1);
        Text().Draw(layer, "A", {0, 0, 120, 60});
        layer.Clear(GREEN);
        EXPECT_EQ(stage.Show(layer).At(5, 5), 0x00FF00U);
    }
}

// Each paints a sheet in two steps, and hands it over by one: whoever looks never finds half of a sheet.
TEST(Screen, ShowsNoHalfOfWhatThreadsHandOver) {
    constexpr int FRAMES = 60;
    Stage stage({160, 40});
    Layer canvas(stage.screen, {160, 40});
    std::atomic<bool> stopped{false};
    const auto paint = [&](int x) {
        Layer sheet(stage.screen, {80, 40});
        for (std::uint8_t frame = 1; !stopped; ++frame) {
            const Color color = {static_cast<std::uint8_t>(frame | 1), 0, frame};
            sheet.Rectangle({0, 0, 80, 20}, color);
            sheet.Rectangle({0, 20, 80, 20}, color);
            canvas.Copy(sheet, x, 0);
            stage.screen.Finish();
        }
    };
    std::array<std::future<void>, 2> painters = {std::async(std::launch::async, paint, 0),
                                                 std::async(std::launch::async, paint, 80)};
    int changes = 0;
    std::uint32_t last = 0;
    for (int frame = 0; frame < FRAMES; ++frame) {
        stage.screen.Present(canvas);
        stage.screen.Finish();
        const Picture picture = ReadWindow(stage.window, {160, 40});
        EXPECT_EQ(picture.At(5, 5), picture.At(5, 35));
        EXPECT_EQ(picture.At(85, 5), picture.At(85, 35));
        changes += picture.At(5, 5) != last ? 1 : 0;
        last = picture.At(5, 5);
    }
    stopped = true;
    for (auto& painter : painters) {
        painter.get();
    }
    EXPECT_GT(changes, 1);
}

TEST(Screen, IsReconnectedWhileThreadsPaint) {
    Stage stage({160, 40});
    stage.screen.LoadFont(FONT);
    Layer canvas(stage.screen, {160, 40});
    std::atomic<bool> stopped{false};
    const auto paint = [&](int x) {
        Layer sheet(stage.screen, {80, 40});
        while (!stopped) {
            sheet.Clear(GREEN);
            Text(12, WHITE).Draw(sheet, "AJK", {20, 20, 20, 20});
            canvas.Copy(sheet, x, 0);
        }
        sheet.Clear(GREEN);
        canvas.Copy(sheet, x, 0);
    };
    std::array<std::future<void>, 2> painters = {std::async(std::launch::async, paint, 0),
                                                 std::async(std::launch::async, paint, 80)};
    for (int i = 0; i < 5; ++i) {
        stage.screen.Reconnect(stage.window.Native());
        stage.screen.Present(canvas);
    }
    stopped = true;
    for (auto& painter : painters) {
        painter.get();
    }
    const Picture picture = stage.Show(canvas);
    EXPECT_EQ(picture.At(5, 5), 0x00FF00U);
    EXPECT_EQ(picture.At(155, 5), 0x00FF00U);
}

}  // namespace
}  // namespace kivgles::kit
