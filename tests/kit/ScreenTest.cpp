// Windows that come, change and go, and threads that share one.

#include <atomic>
#include <future>
#include <memory>
#include <set>
#include <tuple>

#include "Stage.h"
#include "kivgles/kit/Text.h"
#include "support/Recorder.h"

namespace kivgles::kit {
namespace {

TEST(Screen, WithoutAWindowRefusesEverything) {
    Screen screen;
    EXPECT_EQ(screen.Size().width, 0);
    EXPECT_EQ(CodeOf([&] { screen.Connect(nullptr); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { screen.Reconnect(nullptr); }), Error::INVALID_ARGUMENT);
    EXPECT_EQ(CodeOf([&] { screen.LoadFont(BEARINGS); }), Error::NOT_CONNECTED);
    EXPECT_EQ(CodeOf([&] { screen.Finish(); }), Error::NOT_CONNECTED);
    EXPECT_EQ(CodeOf([&] { Layer(screen, {8, 8}); }), Error::NOT_CONNECTED);
}

TEST(Screen, KeepsOneFrameInFlightAndLetsNoClientQueueWithoutBound) {
    Stage stage;
    recorder::Reset();
    for (int frame = 1; frame <= 20; ++frame) {
        stage.screen.Present(stage.layer);
        EXPECT_GE(recorder::Counts()["eglSwapBuffers"], frame - 1);
    }
    stage.screen.Finish();
    EXPECT_EQ(recorder::Counts()["eglSwapBuffers"], 20);

    for (int i = 0; i < 20000; ++i) {
        stage.layer.Rectangle({0, 0, 1, 1}, RED);
    }
    EXPECT_GE(recorder::Counts()["glDrawArrays"], 20000 - 2 * 4096);
}

TEST(Screen, GoesOnAfterItsWindowWasResizedReplacedOrLost) {
    Stage stage({40, 20}, BEARINGS);
    Layer kept(stage.screen, {60, 60});
    kept.Clear(RED);
    stage.screen.OnReconnect([&] {
        stage.layer = Layer(stage.screen, stage.screen.Size());
        stage.layer.Clear(BLUE);
        stage.layer.Copy(kept, 50, 0);
        Text(40, WHITE).Draw(stage.layer, "A", {-3, 0, 100, 50});
    });
    const auto expectPainted = [&] {
        const Picture picture = stage.Show();
        EXPECT_TRUE(picture.Shows(BLUE, {{118, 78}}));
        EXPECT_TRUE(picture.Shows(WHITE, {{2, 30}})) << "the font has been loaded again";
        EXPECT_TRUE(picture.Shows(BLACK, {{60, 30}})) << "a layer is kept, but empty";
    };
    stage.window.Resize(120, 80);
    stage.screen.Reconnect(stage.window.Native());
    expectPainted();
    kept.Clear(RED);
    {
        const X11Window another(150, 70);
        stage.screen.Connect(another.Native());
        stage.screen.Present(kept);
        stage.screen.Finish();
        EXPECT_TRUE(another.Shows(0xFF0000, 148, 68)) << "layers stay as they are";
    }
    stage.screen.Reconnect(stage.window.Native());
    expectPainted();
}

TEST(Screen, CanBeReconnectedAfterAFailure) {
    for (const auto& [function, another, code] :
         {std::tuple{"eglCreateWindowSurface", false, 5}, std::tuple{"eglCreateWindowSurface", true, 5},
          std::tuple{"FT_New_Face", false, 31}, std::tuple{"glGenTextures", false, 21}}) {
        SCOPED_TRACE(function);
        Stage stage({120, 60}, BEARINGS);
        const X11Window other(150, 70);
        int paints = 0;
        stage.screen.OnReconnect([&] { ++paints; });
        recorder::Fail(function);
        ANativeWindow* const next = another ? other.Native() : stage.window.Native();
        EXPECT_EQ(CodeOf([&] { stage.screen.Connect(next); }), code);
        EXPECT_EQ(CodeOf([&] { stage.layer.Clear(); }), Error::NOT_CONNECTED);

        stage.screen.Connect(stage.window.Native());
        EXPECT_EQ(paints, 1);
        Text().Draw(stage.layer, "A", {0, 0, 120, 60});
        stage.layer.Clear(GREEN);
        EXPECT_TRUE(stage.Show().Shows(GREEN, {{5, 5}}));
    }
}

TEST(Screen, LetsGoOfWhatPaintsAgainWithALayerThatNobodyElseHas) {
    std::weak_ptr<Layer> held[2];
    {
        Stage stage;
        for (std::weak_ptr<Layer>& each : held) {
            const auto layer = std::make_shared<Layer>(stage.screen, Size{8, 8});
            each = layer;
            stage.screen.OnReconnect([layer] { layer->Clear(); });
        }
        EXPECT_TRUE(held[0].expired()) << "another one has come";
    }
    EXPECT_TRUE(held[1].expired());
}

// Whoever looks never finds half of a sheet, which is painted in steps and handed over by one, nor half of a
// shape of several requests: the middle and a corner's disc.
TEST(Screen, ShowsNoHalfOfWhatThreadsPaintAndIsReconnectedMeanwhile) {
    Stage stage({250, 40}, BEARINGS);
    std::atomic<bool> stopped{false};
    const auto paint = [&](int x) {
        Layer sheet(stage.screen, {60, 40});
        for (int frame = 0; !stopped; ++frame) {
            const Color color = frame % 2 == 0 ? BLUE : WHITE;
            sheet.Rectangle({0, 0, 60, 20}, color);
            Text(12, GREEN).Draw(sheet, "AJK", {20, 10, 40, 20});
            sheet.Rectangle({0, 20, 60, 20}, color);
            stage.layer.Copy(sheet, x, 0);
            for (int i = 0; i < 20; ++i) {
                stage.layer.RoundedRectangle({x + 60, 0, 60, 40}, 15, i % 2 == 0 ? color : GREEN);
            }
            stage.screen.Finish();
        }
    };
    auto left = std::async(std::launch::async, paint, 0);
    auto right = std::async(std::launch::async, paint, 120);
    // However this ends: a future waits for its thread.
    struct Stop {
        std::atomic<bool>& stopped;
        ~Stop() { stopped = true; }
    } const stop{stopped};

    std::set<std::uint32_t> seen;
    // On a busy machine one of them may have to wait long for its turn.
    for (int frame = 0; frame < 60 || (seen.size() < 2 && frame < 6000); ++frame) {
        const Picture picture = stage.Show();
        for (const int x : {0, 120}) {
            EXPECT_EQ(picture.At(x + 5, 5), picture.At(x + 5, 35));
            EXPECT_EQ(picture.At(x + 90, 20), picture.At(x + 114, 34));
        }
        seen.insert(picture.At(5, 5));
    }
    for (int i = 0; i < 5; ++i) {
        stage.screen.Reconnect(stage.window.Native());
        (void)stage.Show();
    }
    stopped = true;
    left.get();
    right.get();
    EXPECT_GT(seen.size(), 1U);
}

}  // namespace
}  // namespace kivgles::kit
