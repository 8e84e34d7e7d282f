#ifndef KIVGLES_WINDOW_WAYLANDKEYBOARD_H
#define KIVGLES_WINDOW_WAYLANDKEYBOARD_H

#include <wayland-client.h>
#include <xkbcommon/xkbcommon.h>

#include "WaylandOwned.h"
#include "WindowState.h"

namespace kivgles::window {

// What is typed into a window, which has its connection for itself.
//
// Owner:  a WaylandWindow.
// Thread: the one that takes the window's events.
class WaylandKeyboard {
 public:
    explicit WaylandKeyboard(WindowState& kept);
    WaylandKeyboard(const WaylandKeyboard&) = delete;
    WaylandKeyboard& operator=(const WaylandKeyboard&) = delete;

    // From now on, as long as the seat has one.
    void Attend(wl_seat* seat);

 private:
    void Follow(wl_seat* seat, std::uint32_t capabilities);
    void Load(std::uint32_t format, int descriptor, std::uint32_t size);
    void Press(std::uint32_t key);

    WindowState& window;
    Owned<wl_keyboard> keyboard;
    Owned<xkb_context> context;
    Owned<xkb_keymap> keymap;
    Owned<xkb_state> state;
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_WAYLANDKEYBOARD_H
