#ifndef KIVGLES_WINDOW_X11WINDOW_H
#define KIVGLES_WINDOW_X11WINDOW_H

#include "WindowState.h"
#include "X11Connection.h"

namespace kivgles::window {

// A window on an X server.
//
// Owner:  Window.
// Thread: one at a time.
class X11Window {
 public:
    explicit X11Window(WindowState& kept);

    void Resize(const Size& wanted);

    // Reports what has come, up to the first event. Without one there is nothing left to take.
    void Collect();

    // Around a wait for the descriptor, after there was nothing to collect.
    bool BeginWait() { return true; }
    void EndWait(bool) {}

 private:
    void Create();
    void Describe();
    void AskManager();
    void LetClicksThrough();
    void Show();
    void Translate(XEvent& event);

    WindowState& state;
    // What draws reads its connection in its own thread, and would take along what is waited for here.
    X11Connection events;
    X11Connection drawing;
    std::string where;    // for texts
    ::Window window = 0;  // gone with the connection that made it
    Atom closing = 0;
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_X11WINDOW_H
