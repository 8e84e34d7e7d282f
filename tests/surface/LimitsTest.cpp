// What the library cannot repair and one client's scenario does not show.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

TEST(Limits, TheDisplayOutlivesOneOfTwoSurfacesOnIt) {
    const X11Window window(8, 8);
    KivGLDrawSurface first;
    KivGLDrawSurface second;
    ASSERT_EQ(first.KivCreateGLContext(), 0);
    ASSERT_EQ(second.KivCreateGLContext(), 0);
    ASSERT_EQ(first.KivDestoryGLContext(), 0);
    EXPECT_EQ(second.KivConnectWindowSurface(window.Native()), 0);
}

TEST(Limits, ADisplayThatCannotBeOneIsRefusedAndTheContextStays) {
    const X11Connection connection = ConnectToX11();
    KivGLDrawSurface surface;
    ASSERT_EQ(surface.KivCreateGLContextOn({KIV_PLATFORM_X11, connection.get()}), 0);
    recorder::Reset();
    EXPECT_EQ(surface.KivCreateGLContextOn({KIV_PLATFORM_X11, nullptr}), 101);
    EXPECT_EQ(surface.KivCreateGLContextOn({KIV_PLATFORM_WAYLAND, nullptr}), 101);
    EXPECT_EQ(surface.KivCreateGLContextOn({3, connection.get()}), 100);
    EXPECT_THAT(recorder::Log(), testing::ElementsAre("E KivGLDrawSurface: native display is NULL\n",
                                                      "E KivGLDrawSurface: native display is NULL\n",
                                                      "E KivGLDrawSurface: platform is invalid 3\n"));
    EXPECT_EQ(surface.Init(0), 0);
}

TEST(Limits, AWindowThatAnotherSurfaceShowsOnIsRefusedUntilThatOneLetsGo) {
    const X11Connection connection = ConnectToX11();
    const X11Window window(8, 8, connection);
    KivGLDrawSurface first;
    KivGLDrawSurface second;
    for (KivGLDrawSurface* const surface : {&first, &second}) {
        ASSERT_EQ(surface->KivCreateGLContextOn({KIV_PLATFORM_X11, connection.get()}), 0);
    }
    EXPECT_EQ(first.KivConnectWindowSurface(window.Native()), 0);
    EXPECT_EQ(second.KivConnectWindowSurface(window.Native()), 5);
    EXPECT_EQ(first.KivDestoryGLContext(), 0);
    EXPECT_EQ(second.KivConnectWindowSurface(window.Native()), 0);
}

TEST(Limits, AResizedWindowIsConnectedAnewByWayOfAnotherOne) {
    X11Window window(20, 20);
    const X11Window other(1, 1);
    KivGLDrawSurface surface;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    ASSERT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
    window.Resize(120, 80);  // more than the 16 KiB that a driver may hold back among its requests
    EXPECT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
    EXPECT_EQ(surface.KivGetWindowWidth(), 20U) << "connecting the same window again reads nothing";

    EXPECT_EQ(surface.KivConnectWindowSurface(other.Native()), 0);
    EXPECT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
    EXPECT_EQ(surface.KivGetWindowWidth(), 120U);
    EXPECT_EQ(surface.KivGetWindowHeight(), 80U);
    surface.KivDrawRect(FBO_HANDLE_BASE, {110, 70, 10, 10}, {0, 255, 0, 255});
    surface.KivRefreshOnSrceen();
    EXPECT_EQ(surface.Init(0), 0);  // waits
    EXPECT_TRUE(window.Shows(0x00FF00, 118, 78));
}

}  // namespace
}  // namespace kivgles
