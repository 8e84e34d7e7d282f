#ifndef KIVGLES_TESTS_SUPPORT_X11WINDOW_H
#define KIVGLES_TESTS_SUPPORT_X11WINDOW_H

#include <cstdint>
#include <vector>

struct ANativeWindow;
struct _XDisplay;

namespace kivgles {

// A mapped X11 window of the default visual, which is the EGL configuration's. Its pixels stay its own when
// other windows cover it. Throws, and so fails the test, when there is no X server.
class X11Window {
 public:
    X11Window(unsigned int width, unsigned int height);
    ~X11Window();
    X11Window(const X11Window&) = delete;
    X11Window& operator=(const X11Window&) = delete;

    ANativeWindow* Native() const { return reinterpret_cast<ANativeWindow*>(window); }
    // Returns when the X server has done it.
    void Resize(unsigned int width, unsigned int height);
    // Whether the X server shows this colour (0xRRGGBB) there, counted from the top-left corner. Asks again
    // while it may still be busy with what the draw thread has sent it.
    bool Shows(unsigned long color, int x, int y) const;

    // What it shows now: 0xRRGGBB a pixel, row by row.
    std::vector<std::uint32_t> Pixels(int x, int y, int width, int height) const;

 private:
    _XDisplay* display;
    unsigned long window;
};

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SUPPORT_X11WINDOW_H
