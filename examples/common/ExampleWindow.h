#ifndef EXAMPLES_COMMON_EXAMPLEWINDOW_H
#define EXAMPLES_COMMON_EXAMPLEWINDOW_H

#include <memory>
#include <string>

struct ANativeWindow;
struct _XDisplay;  // Xlib's Display: its header stays outside, for it names a Screen too

namespace examples {

// An X11 window that the library can draw on; sizes are in pixels. Operations throw std::runtime_error.
class ExampleWindow {
 public:
    // What Wait has been waiting for.
    enum class Event { ENTER, RESIZED, LOST };

    // Returns when the window is on the screen.
    ExampleWindow(int width, int height, const std::string& title);

    // The window's id, cast, as the library takes it.
    ANativeWindow* Native() const { return reinterpret_cast<ANativeWindow*>(window); }

    // Until Enter has been pressed in the terminal, or the standard input ends; until the window has another
    // size, or is closed or gone.
    Event Wait();

    // Until Enter has been pressed, as it says, or the window is closed.
    void WaitForEnd();

    // What a user and a window manager do to windows.
    void Resize(int width, int height);
    void Destroy();

 private:
    struct Closer {
        void operator()(_XDisplay* connection) const;
    };

    std::unique_ptr<_XDisplay, Closer> display;  // its end takes the window along
    unsigned long window = 0;
    int knownWidth;  // that Wait has reported
    int knownHeight;
};

}  // namespace examples

#endif  // EXAMPLES_COMMON_EXAMPLEWINDOW_H
