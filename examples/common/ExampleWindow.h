#ifndef EXAMPLES_COMMON_EXAMPLEWINDOW_H
#define EXAMPLES_COMMON_EXAMPLEWINDOW_H

#include <memory>
#include <string>

#include "common/Image.h"
#include "kivgles/kit/Geometry.h"

struct ANativeWindow;
struct _XDisplay;  // Xlib's Display: its header stays outside, for it names a Screen too

namespace examples {

// An X11 window that the library can draw on. Operations throw std::runtime_error.
class ExampleWindow {
 public:
    // What Wait has been waiting for.
    enum class Event { ENTER, RESIZED, LOST };

    // Returns when the window is on the screen.
    ExampleWindow(const kivgles::kit::Size& size, const std::string& title);

    // For Screen::Connect: the window's id, cast.
    ANativeWindow* Native() const { return reinterpret_cast<ANativeWindow*>(window); }

    // Until Enter has been pressed in the terminal, or the standard input ends; until the window has another
    // size, or is closed or gone.
    Event Wait();

    // Until Enter has been pressed, as it says, or the window is closed.
    void WaitForEnd();

    // What a user and a window manager do to windows.
    void Resize(const kivgles::kit::Size& size);
    void Destroy();

    // What the X server holds. The draw thread must have done its work before.
    Image Read() const;

 private:
    struct Closer {
        void operator()(_XDisplay* connection) const;
    };

    std::unique_ptr<_XDisplay, Closer> display;  // its end takes the window along
    unsigned long window = 0;
    kivgles::kit::Size known;  // that Wait has reported
};

}  // namespace examples

#endif  // EXAMPLES_COMMON_EXAMPLEWINDOW_H
