// What the library cannot repair, and how a client gets over it.

#include <memory>

#include <gmock/gmock.h>

#include "support/Surface.h"

namespace kivgles {
namespace {

using Lines = std::vector<std::string>;

constexpr TagKivColorRGBA GREEN{0, 255, 0, 255};
constexpr TagKivRectInfo WINDOW{0, 0, 64, 32};

TEST_F(SurfaceTest, QueueTakesEverythingAndAWaitingOperationPacesTheClient) {
    constexpr int COMMANDS = 50000;
    const unsigned int layer = MakeLayer(1, 1);
    Refresh();
    recorder::Reset();
    for (int i = 0; i < COMMANDS; ++i) {
        ASSERT_EQ(surface.KivDrawRect(layer, RECT, GREEN), 0);
    }
    EXPECT_EQ(surface.Init(0), 0);
    EXPECT_EQ(recorder::Counts()["glDrawArrays"], COMMANDS);
}

TEST_F(SurfaceTest, FailureOfAQueuedRequestIsOnlyInTheLog) {
    recorder::Fail("eglSwapBuffers");
    recorder::Fail("glCreateProgram");
    EXPECT_EQ(surface.KivDrawRect(FBO_HANDLE_BASE, RECT, GREEN), 0);
    Refresh();
    EXPECT_EQ(recorder::Log("E GLDrawThread"), Lines{"E GLDrawThread: OSD Rect init fail 20\n"});
    EXPECT_EQ(recorder::Counts()["eglSwapBuffers"], 1);
}

TEST(Recovery, TakesANewSurfaceAndNewLayersForAWindowOnceConnected) {
    const X11Window window(64, 32);
    auto surface = std::make_unique<KivGLDrawSurface>();
    unsigned int layer = 0;
    const auto ConnectAndShow = [&] {
        EXPECT_EQ(surface->KivCreateGLContext(), 0);
        EXPECT_EQ(surface->KivConnectWindowSurface(window.Native()), 0);
        EXPECT_EQ(surface->KivCreateGLFBO(layer, 64, 32, KIV_COLOR_FORMAT_RGBA8888), 0);
        EXPECT_EQ(surface->KivDrawRect(layer, WINDOW, GREEN), 0);
        EXPECT_EQ(surface->KivDisplayFBO(layer, WINDOW, WINDOW), 0);
        EXPECT_EQ(surface->KivRefreshOnSrceen(), 0);
        EXPECT_EQ(surface->Init(0), 0);
    };
    ConnectAndShow();
    EXPECT_EQ(surface->KivDestoryGLContext(), 0);
    EXPECT_TRUE(recorder::Live("texture").empty());

    recorder::Reset();
    ConnectAndShow();  // on no window: the surface takes it for connected
    EXPECT_EQ(recorder::Log("W KivGL"), Lines{"W KivGLDrawSurface: NativeWindow has been connected\n"});
    EXPECT_EQ(recorder::Counts().count("eglCreateWindowSurface"), 0U);

    surface = std::make_unique<KivGLDrawSurface>();
    recorder::Reset();
    ConnectAndShow();
    EXPECT_EQ(recorder::Counts()["eglCreateWindowSurface"], 1);
    ExpectShown(window, 63, 31, {0, 255, 0, 255});
}

TEST_F(SurfaceTest, AWindowThatIsNotConnectedTakesTheFormerOneWithIt) {
    const X11Window other(8, 8);
    recorder::Fail("eglCreateWindowSurface");
    EXPECT_EQ(surface.KivConnectWindowSurface(other.Native()), 5);
    EXPECT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
    EXPECT_EQ(recorder::Log("W KivGL"), Lines{"W KivGLDrawSurface: NativeWindow has been connected\n"});
    EXPECT_EQ(surface.KivConnectWindowSurface(other.Native()), 0);
    EXPECT_EQ(surface.KivDrawRect(FBO_HANDLE_BASE, {0, 0, 8, 8}, GREEN), 0);
    Refresh();
    ExpectShown(other, 7, 7, {0, 255, 0, 255});
}

TEST_F(SurfaceTest, ASecondSurfaceOfTheProcessDoesNotSurviveTheFirst) {
    auto first = std::make_unique<KivGLDrawSurface>();
    ASSERT_EQ(first->KivCreateGLContext(), 0);
    first.reset();
    const X11Window other(8, 8);
    EXPECT_NE(surface.KivConnectWindowSurface(other.Native()), 0);
    EXPECT_FALSE(recorder::Log("E EGLManager: eglCreateWindowSurface error: 0x3001").empty());
}

}  // namespace
}  // namespace kivgles
