#ifndef EXAMPLES_COMMON_EXAMPLEWINDOW_H
#define EXAMPLES_COMMON_EXAMPLEWINDOW_H

#include <cstdint>
#include <memory>
#include <string>

#include <X11/Xlib.h>

#include "common/Image.h"

namespace examples {

// An X11 window that the library can draw on. It must outlive the surface that it is connected to.
// Operations throw std::runtime_error.
class ExampleWindow {
 public:
    // Returns when the window is on the screen.
    ExampleWindow(std::uint32_t width, std::uint32_t height, const std::string& title);

    // For KivConnectWindowSurface: the window's id, cast.
    ANativeWindow* Native() const { return reinterpret_cast<ANativeWindow*>(window); }

    // What the X server holds. The draw thread must have done its work before.
    Image Read() const;

 private:
    struct Closer {
        void operator()(Display* connection) const { XCloseDisplay(connection); }
    };

    std::unique_ptr<Display, Closer> display;  // its end takes the window along
    Window window = 0;
};

}  // namespace examples

#endif  // EXAMPLES_COMMON_EXAMPLEWINDOW_H
