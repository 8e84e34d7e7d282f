#ifndef KIVGLES_WINDOW_X11WINDOW_H
#define KIVGLES_WINDOW_X11WINDOW_H

#include "Grant.h"
#include "X11Connection.h"

namespace kivgles::window {

// A window on an X server.
//
// Owner:  Window.
// Thread: one at a time.
class X11Window {
 public:
    explicit X11Window(Grant& grant);

    TagKivDisplayInfo Display() const { return {KIV_PLATFORM_X11, drawing.Get()}; }
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an id, which EGL takes back out of the pointer
    ANativeWindow* Native() const { return reinterpret_cast<ANativeWindow*>(window); }
    Size InnerSize() const { return size; }
    void Resize(const Size& wanted);

    // What has come, or NONE.
    Event Take();

    // Around a wait for the descriptor. False: there is something to take first, and no wait to end.
    bool BeginWait() { return !events.IsLost() && XPending(events.Get()) == 0 && !events.IsLost(); }
    void EndWait(bool) {}
    int Descriptor() const { return ConnectionNumber(events.Get()); }

 private:
    void Create(const WindowOptions& options);
    void Describe(const WindowOptions& options);
    void AskManager(Grant& grant);
    void LetClicksThrough(Grant& grant);
    void Show();
    Event::Type Translate(XEvent& event, std::string& key);

    // What draws reads its connection in its own thread, and would take along what is waited for here.
    X11Connection events;
    X11Connection drawing;
    std::string where;    // for texts
    ::Window window = 0;  // gone with the connection that made it
    Atom closing = 0;
    Size size;
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_X11WINDOW_H
