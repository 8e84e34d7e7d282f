#ifndef KIVGLES_TESTS_SUPPORT_TARGET_H
#define KIVGLES_TESTS_SUPPORT_TARGET_H

// Windows to draw on, a context to draw with, and the pixels they hold.

#include <array>

#include <gtest/gtest.h>

#include "gl/EGLManager.h"
#include "kivgles/KivGLRecords.h"

struct _XDisplay;

namespace kivgles {

using Pixel = std::array<int, 4>;  // red, green, blue, alpha, 0 to 255 each

// A mapped X11 window of the default visual, which is the EGL configuration's. Its pixels stay its own when
// other windows cover it. Throws, and so fails the test, when there is no X server.
class X11Window {
 public:
    X11Window(unsigned int width, unsigned int height, int x = 0, int y = 0);
    ~X11Window();
    X11Window(const X11Window&) = delete;
    X11Window& operator=(const X11Window&) = delete;

    ANativeWindow* Native() const { return reinterpret_cast<ANativeWindow*>(window); }
    // What the X server shows there, counted from the top-left corner; alpha is 255.
    Pixel PixelAt(int x, int y) const;

 private:
    _XDisplay* display;
    unsigned long window;
};

// The pixel, counted from the top-left corner, of a layer or (fboId 0) of the window's back buffer. The
// calling thread has the context.
Pixel PixelAt(const TagFrameBuffObject& target, int x, int y);

// The window's pixel. Asks again while it differs and the X server may still be busy with what the draw
// thread has sent it.
Pixel ShownPixel(const X11Window& window, int x, int y, const Pixel& expected);
// Whether no component differs by more than 1.
bool Near(const Pixel& a, const Pixel& b);

// Both fail at the caller's line with what they found, when that is not near. The second waits for it.
void ExpectPixel(const TagFrameBuffObject& target, int x, int y, const Pixel& expected,
                 const char* file = __builtin_FILE(), int line = __builtin_LINE());
void ExpectShown(const X11Window& window, int x, int y, const Pixel& expected,
                 const char* file = __builtin_FILE(), int line = __builtin_LINE());

// A context on the test's own thread and a window of 64 by 32; the recorder starts afresh.
class GLTest : public testing::Test {
 protected:
    void SetUp() override;

    const X11Window window{64, 32};
    EGLManager egl;
    const TagFrameBuffObject windowTarget{FBO_HANDLE_BASE, 0, 0, 64, 32};
};

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SUPPORT_TARGET_H
