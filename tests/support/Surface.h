#ifndef KIVGLES_TESTS_SUPPORT_SURFACE_H
#define KIVGLES_TESTS_SUPPORT_SURFACE_H

// A surface on a window.

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"
#include "support/Target.h"

namespace kivgles {

constexpr std::uint8_t PIXEL_DATA[4] = {255, 255, 255, 255};
constexpr TagKivRectInfo RECT{0, 0, 1, 1};

// With a context, and a window of 64 by 32 connected; the recorder starts afresh.
class SurfaceTest : public testing::Test {
 protected:
    void SetUp() override {
        ASSERT_EQ(surface.KivCreateGLContext(), 0);
        ASSERT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
        recorder::Reset();
    }

    unsigned int MakeLayer(unsigned int width, unsigned int height,
                           const TagKivColorRGBA& color = {0, 0, 0, 0}) {
        unsigned int handle = 0;
        EXPECT_EQ(surface.KivCreateGLFBO(handle, width, height, KIV_COLOR_FORMAT_RGBA8888), 0);
        EXPECT_EQ(surface.KivDrawRect(handle, {0, 0, width, height}, color), 0);
        return handle;
    }
    // Displays a whole layer pixel for pixel in the window's top-left corner.
    void Show(unsigned int layer, unsigned int width, unsigned int height) {
        EXPECT_EQ(surface.KivDisplayFBO(layer, {0, 0, width, height}, {0, 0, width, height}), 0);
        Refresh();
    }
    void Refresh() {
        EXPECT_EQ(surface.KivRefreshOnSrceen(), 0);
        EXPECT_EQ(surface.Init(0), 0);  // done when this returns
    }

    const X11Window window{64, 32};
    KivGLDrawSurface surface;
};

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SUPPORT_SURFACE_H
