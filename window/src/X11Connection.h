#ifndef KIVGLES_WINDOW_X11CONNECTION_H
#define KIVGLES_WINDOW_X11CONNECTION_H

#include <atomic>
#include <string>

#include <X11/Xlib.h>

namespace kivgles::window {

// A connection to an X server whose errors, and whose end, do not end the program.
//
// Owner:  an X11Window.
// Thread: any one at a time, and what draws on the window.
class X11Connection {
 public:
    // `server` as DISPLAY would name it, empty for DISPLAY itself. Throws std::runtime_error.
    explicit X11Connection(const std::string& server);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    Display* Get() const { return display; }
    bool IsLost() const { return lost; }
    Atom Name(const char* name) const { return XInternAtom(display, name, False); }

 private:
    Display* display;
    std::atomic<bool> lost = false;  // whichever thread notices first
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_X11CONNECTION_H
