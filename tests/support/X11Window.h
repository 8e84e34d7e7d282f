#ifndef KIVGLES_TESTS_SUPPORT_X11WINDOW_H
#define KIVGLES_TESTS_SUPPORT_X11WINDOW_H

#include <memory>

struct ANativeWindow;
struct _XDisplay;

namespace kivgles {

// Connections are used by several threads, as Xlib allows from now on. Throw, and so fail the test, when
// there is no X server: that of DISPLAY, unless named.
using X11Connection = std::shared_ptr<_XDisplay>;
X11Connection ConnectToX11(const char* server = nullptr);

// A mapped X11 window of the default visual, which is the EGL configuration's. No window manager has a say in
// it, and its pixels stay its own when other windows cover it.
class X11Window {
 public:
    X11Window(unsigned int width, unsigned int height, X11Connection to = ConnectToX11());
    ~X11Window();
    X11Window(const X11Window&) = delete;
    X11Window& operator=(const X11Window&) = delete;

    ANativeWindow* Native() const { return reinterpret_cast<ANativeWindow*>(window); }
    // Returns when the X server has done it.
    void Resize(unsigned int width, unsigned int height);
    // Returns, true, when the X server shows this colour (0xRRGGBB) there, counted from the top-left corner:
    // it may still be busy with what the draw thread has sent it. A test that waits in vain is ended by
    // ctest, and has said what it waits for.
    bool Shows(unsigned long color, int x, int y) const;

 private:
    X11Connection connection;
    _XDisplay* display;
    unsigned long window;
};

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SUPPORT_X11WINDOW_H
