#ifndef KIVGLES_WINDOW_WAYLANDCONNECTION_H
#define KIVGLES_WINDOW_WAYLANDCONNECTION_H

#include <cstdint>
#include <string>

#include "WaylandOwned.h"

namespace kivgles::window {

// A connection to a compositor, with what it offers to every window.
//
// Owner:  a WaylandWindow.
// Thread: one at a time, and what draws on the window.
class WaylandConnection {
 public:
    // `server` as WAYLAND_DISPLAY would name it, empty for WAYLAND_DISPLAY itself. Throws std::runtime_error.
    explicit WaylandConnection(const std::string& server);
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    wl_display* Get() const { return display.get(); }
    wl_compositor* Compositor() const { return compositor.get(); }
    wl_seat* Seat() const { return seat.get(); }  // null without one
    const std::string& Where() const { return where; }
    bool IsLost() const { return wl_display_get_error(display.get()) != 0; }

 private:
    static void OnGlobal(void* self, wl_registry*, std::uint32_t name, const char* interface,
                         std::uint32_t version);

    std::string where;  // for texts
    Owned<wl_display> display;
    Owned<wl_registry> registry;
    Owned<wl_compositor> compositor;
    Owned<wl_seat> seat;
    bool hasWindows = false;  // some compositors are for one purpose only
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_WAYLANDCONNECTION_H
