#ifndef KIVGLES_WINDOW_WAYLANDWINDOW_H
#define KIVGLES_WINDOW_WAYLANDWINDOW_H

#include <deque>
#include <functional>

#include "Grant.h"
#include "WaylandConnection.h"
#include "WaylandKeyboard.h"

namespace kivgles::window {

// A window of a Wayland compositor.
//
// Owner:  Window.
// Thread: one at a time.
class WaylandWindow {
 public:
    explicit WaylandWindow(Grant& grant);

    TagKivDisplayInfo Display() const { return {KIV_PLATFORM_WAYLAND, connection.Get()}; }
    ANativeWindow* Native() const { return reinterpret_cast<ANativeWindow*>(native.get()); }
    Size InnerSize() const { return size; }
    void Resize(const Size& wanted);

    // What has come, or NONE.
    Event Take();

    // Around a wait for the descriptor. False: there is something to take first, and no wait to end.
    bool BeginWait();
    void EndWait(bool readable);
    int Descriptor() const { return wl_display_get_fd(connection.Get()); }

 private:
    void Create(const WindowOptions& options);
    void Decorate(const WindowOptions& options);
    void Configure(libdecor_configuration* configuration);
    void Accept(const Size& wanted, libdecor_configuration* configuration);
    void Dispatch(int timeout);
    void DispatchUntil(const std::function<bool()>& reached);

    WaylandConnection connection;
    Owned<libdecor> decorations;
    std::deque<Event> events;
    WaylandKeyboard keyboard;
    Owned<wl_surface> surface;
    Owned<libdecor_frame> frame;
    Owned<wl_egl_window> native;
    Size size;
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_WAYLANDWINDOW_H
