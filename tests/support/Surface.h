#ifndef KIVGLES_TESTS_SUPPORT_SURFACE_H
#define KIVGLES_TESTS_SUPPORT_SURFACE_H

// A surface on a window, and its operations on layers one by one.

#include <functional>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"
#include "support/Target.h"

namespace kivgles {

constexpr std::uint8_t PIXEL_DATA[4] = {255, 255, 255, 255};
constexpr TagKivBitmapInfo BITMAP{PIXEL_DATA, KIV_COLOR_FORMAT_RGBA8888, 0, 0, 1, 1, {0, 0, 1, 1}};
constexpr TagKivRectInfo RECT{0, 0, 1, 1};

// Harmless but for the handle.
struct LayerOperation {
    const char* name;
    std::function<int(KivGLDrawSurface&, unsigned int)> run;
    int unknownHandleResult;
};

inline const LayerOperation LAYER_OPERATIONS[] = {
    {"KivClearGLFBO", [](auto& s, auto handle) { return s.KivClearGLFBO(handle); }, 0},
    {"KivDisplayFBO", [](auto& s, auto handle) { return s.KivDisplayFBO(handle, RECT, RECT); }, 101},
    {"KivBlit from",
     [](auto& s, auto handle) {
         return s.KivBlit({handle, FBO_HANDLE_BASE, RECT, {}});
     },
     1},
    {"KivBlit to",
     [](auto& s, auto handle) {
         return s.KivBlit({FBO_HANDLE_BASE, handle, RECT, {}});
     },
     1},
    {"KivDrawText", [](auto& s, auto handle) { return s.KivDrawText(handle, {}, RECT); }, 1},
    {"KivDrawRect",
     [](auto& s, auto handle) {
         return s.KivDrawRect(handle, RECT, {9, 9, 9, 9});
     },
     1},
    {"KivDrawRound",
     [](auto& s, auto handle) {
         return s.KivDrawRound(handle, {0, 0, 1, 1}, {9, 9, 9, 9});
     },
     1},
    {"KivDrawBitmap", [](auto& s, auto handle) { return s.KivDrawBitmap(handle, BITMAP); }, 101},
    {"KivDrawBitmapByBlend", [](auto& s, auto handle) { return s.KivDrawBitmapByBlend(handle, BITMAP); },
     101},
};

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
