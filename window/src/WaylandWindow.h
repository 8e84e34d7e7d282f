#ifndef KIVGLES_WINDOW_WAYLANDWINDOW_H
#define KIVGLES_WINDOW_WAYLANDWINDOW_H

#include <cstdint>
#include <functional>
#include <string>

#include <libdecor.h>
#include <wayland-egl.h>

#include "WaylandKeyboard.h"
#include "WaylandOwned.h"
#include "WindowState.h"

namespace kivgles::window {

// A window of a Wayland compositor, to which it has a connection of its own.
//
// Owner:  Window.
// Thread: one at a time.
class WaylandWindow {
 public:
    explicit WaylandWindow(WindowState& kept);
    WaylandWindow(const WaylandWindow&) = delete;
    WaylandWindow& operator=(const WaylandWindow&) = delete;

    void Resize(const Size& wanted);

    // Reports what has come, and waits for something to come if nothing has: milliseconds, -1 without an end.
    void Collect(int timeout = 0);

    // Around a wait for the descriptor, after there was nothing to collect. False: something has come since,
    // and there is no wait to end.
    bool BeginWait();
    void EndWait(bool readable);

 private:
    static libdecor_interface Errors();
    static libdecor_frame_interface Listener();

    void Connect();
    void Bind(std::uint32_t name, const std::string& interface, std::uint32_t version);
    void Create();
    void Decorate();
    void Accept(const Size& wanted, libdecor_configuration* configuration);
    void CollectUntil(const std::function<bool()>& reached);

    WindowState& state;
    std::string where;  // for texts
    Owned<wl_display> display;
    Owned<wl_registry> registry;
    Owned<wl_compositor> compositor;
    bool hasWindows = false;  // some compositors are for one purpose only
    Owned<wl_seat> seat;      // null without one
    WaylandKeyboard keyboard;
    Owned<libdecor> decorations;
    Owned<wl_surface> surface;
    Owned<libdecor_frame> frame;
    Owned<wl_egl_window> native;
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_WAYLANDWINDOW_H
