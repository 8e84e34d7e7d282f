// Windows that come, change and go, what is handed over for them, and threads that share one.

#include <future>

#include <dlfcn.h>

#include "Stage.h"
#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"

// The bitmaps that went into a layer or onto the window: "window 0,0 120x60", then the first pixel.
static std::vector<std::string> bitmaps;

// Stands between the kit and the core.
int kivgles::KivGLDrawSurface::KivDrawBitmap(unsigned int handle, const TagKivBitmapInfo& bitmap) noexcept {
    const TagKivRectInfo& to = bitmap.dstRect;
    char text[100];
    (void)std::snprintf(text, sizeof text, "%s %u,%u %ux%u %02x%02x%02x%02x",
                        handle == FBO_HANDLE_BASE ? "window" : "layer", to.x, to.y, to.width, to.height,
                        bitmap.data[0], bitmap.data[1], bitmap.data[2], bitmap.data[3]);
    bitmaps.emplace_back(text);
    using Function = int (*)(KivGLDrawSurface*, unsigned int, const TagKivBitmapInfo&);
    static const auto next = reinterpret_cast<Function>(
        dlsym(RTLD_NEXT, "_ZN7kivgles16KivGLDrawSurface13KivDrawBitmapEjRKNS_16TagKivBitmapInfoE"));
    return next(this, handle, bitmap);
}

namespace kivgles::kit {
namespace {

int Swaps() { return recorder::Counts()["eglSwapBuffers"]; }

TEST(Screen, HandsOverWhatHasChangedAndAllOfItOnlyWhereMuchChangesEachTime) {
    Stage stage;
    Canvas canvas({120, 60});
    canvas.Clear({0, 0, 2, 2}, GREEN);
    const std::tuple<Rect, Color, std::vector<std::string>> rows[] = {
        {Rect(0, 0, 120, 60), RED, {"window 0,0 120x60 ff0000ff"}},
        {{10, 20, 4, 3}, {0, 255, 0, 128}, {"layer 0,0 120x60 ff0000ff"}},
        {{50, 20, 4, 3}, {0, 0, 255, 128}, {"layer 50,20 4x3 00008080"}},
        {Rect(), RED, {}},
        {{118, 58, 2, 2}, WHITE, {"layer 118,58 2x2 ffffffff"}},
        {{0, 0, 120, 20}, BLUE, {"layer 0,0 120x20 0000ffff"}},
        {{0, 40, 120, 20}, GREEN, {"window 0,0 120x60 0000ffff"}},
        {{0, 0, 1, 1}, WHITE, {"layer 0,0 120x60 ffffffff"}}};
    for (const auto& [rect, color, handedOver] : rows) {
        canvas.Clear(rect, color);
        bitmaps.clear();
        stage.screen.Present(canvas);
        EXPECT_EQ(bitmaps, handedOver);
    }
    EXPECT_TRUE(stage.Shows(WHITE, {{0, 0}}) && stage.Shows(BLUE, {{1, 0}, {119, 19}}));
    EXPECT_TRUE(stage.Shows(GREEN, {{0, 40}, {119, 59}}));
    canvas = Canvas({60, 30});
    canvas.Clear(RED);
    canvas.Clear({0, 0, 5, 5}, BLUE);
    stage.screen.Present(canvas);
    EXPECT_EQ(bitmaps.back(), "window 0,0 120x60 0000ffff") << "scaled to fill the window";
    EXPECT_TRUE(stage.Shows(BLUE, {{0, 0}, {8, 8}}) && stage.Shows(RED, {{11, 0}, {119, 59}}));
}

TEST(Screen, ShowsTheLastFrameAgainOnAWindowThatWasCoveredResizedReplacedOrLost) {
    Stage stage(60, 100);
    Layer layer(stage.screen, {60, 100});
    EXPECT_FALSE(stage.screen.Refresh());
    for (const Color& color : {RED, GREEN, BLUE}) {  // straight, and by way of a layer
        Canvas canvas({60, 100});
        canvas.Clear(color);
        stage.screen.Present(canvas);
        canvas.Clear({0, 0, 5, 5}, color);
        stage.screen.Present(canvas);
        canvas.Clear(WHITE);
        stage.screen.Finish();
        recorder::Reset();
        EXPECT_TRUE(stage.screen.Refresh());
        EXPECT_TRUE(stage.Shows(color, {{0, 0}, {59, 99}})) << "as it was presented";
        EXPECT_EQ(Swaps(), 1);
    }
    stage.window.Resize(120, 80);
    stage.screen.Reconnect(stage.window.Native());
    EXPECT_TRUE(stage.Shows(BLUE, {{119, 79}})) << "though the canvas is gone";
    {
        const X11Window another(150, 70);
        stage.screen.Connect(another.Native());
        EXPECT_TRUE(another.Shows(0x0000FF, 149, 69));
        stage.screen.Present(layer);
        layer.Clear(GREEN);
        EXPECT_TRUE(stage.screen.Refresh());
        stage.screen.Finish();
        EXPECT_TRUE(another.Shows(0x00FF00, 149, 69)) << "a layer as it is now";
    }
    stage.screen.OnReconnect([&] {
        *stage.layer = Layer(stage.screen, {120, 80});
        stage.layer->Clear(WHITE);
        stage.layer->Copy(layer, 0, 0);
        stage.screen.Present(*stage.layer);
    });
    for (const char* const function : {"eglCreateWindowSurface", "glGenTextures", "eglInitialize"}) {
        recorder::Fail(function);
        EXPECT_NE(ErrorOf([&] { stage.screen.Reconnect(stage.window.Native()); }), "");
        EXPECT_EQ(ErrorOf([&] { stage.screen.Finish(); }), "-3 Screen::Finish: no window is connected");
    }
    EXPECT_EQ(ErrorOf([&] { stage.screen.Connect(nullptr); }), "-1 Screen::Connect: the window is null");
    stage.screen.Connect(stage.window.Native());
    EXPECT_TRUE(stage.Shows(WHITE, {{119, 79}})) << "painted again";
    EXPECT_TRUE(stage.Shows(BLACK, {{0, 0}})) << "a layer is kept, but empty";
    *stage.layer = Layer(std::move(layer));
    EXPECT_FALSE(stage.screen.Refresh());
}

TEST(Screen, KeepsOneFrameInFlightAndNobodyOutForLongAndWaitsForThoseWhoWait) {
    Stage other;
    auto stage = std::make_unique<Stage>(320, 240);
    recorder::Reset();
    for (int frame = 1; frame <= 10; ++frame) {
        stage->screen.Present(*stage->layer);
        EXPECT_GE(Swaps(), frame - 1);
    }
    for (int i = 0; i < 2000; ++i) {
        stage->layer->Rectangle({0, 0, 1, 1}, RED);
    }
    EXPECT_GE(recorder::Counts()["glDrawArrays"], 2000 - 300) << "or a client could queue without bound";
    const auto present = [&, &screen = stage->screen](int x) {  // in a loop, until the screen goes
        Layer odd(screen, {31, 31});
        Canvas canvas({320, 240});
        return ErrorOf([&] {
            for (;;) {
                canvas.Clear({x, 0, 5, 5}, RED);
                odd.Draw(canvas, x, 2);  // by way of another layer, which all threads share
                screen.Present(canvas);
            }
        });
    };
    auto one = std::async(std::launch::async, present, 1), two = std::async(std::launch::async, present, 2);
    int longest = 0;
    while (Swaps() < 60) {
        const int before = Swaps();
        stage->layer->Rectangle({0, 0, 1, 1}, RED);
        longest = std::max(longest, Swaps() - before);
    }
    EXPECT_LE(longest, 6) << "two frames of each thread, and those that come and go";
    stage->screen.Reconnect(stage->window.Native());
    stage.reset();
    EXPECT_TRUE(one.get() != "" && two.get() != "");
    other.layer->Clear(GREEN);
    other.screen.Present(*other.layer);
    EXPECT_TRUE(other.Shows(GREEN, {{0, 0}})) << "a screen of its own";
}

}  // namespace
}  // namespace kivgles::kit
