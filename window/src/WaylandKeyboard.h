#ifndef KIVGLES_WINDOW_WAYLANDKEYBOARD_H
#define KIVGLES_WINDOW_WAYLANDKEYBOARD_H

#include <cstdint>
#include <functional>
#include <string>

#include "WaylandOwned.h"

namespace kivgles::window {

// What is typed into the windows of a connection.
//
// Owner:  a WaylandWindow.
// Thread: the one that takes the window's events.
class WaylandKeyboard {
 public:
    // `call` is called with the key's symbol. A null seat has no keyboard.
    WaylandKeyboard(wl_seat* seat, std::function<void(std::string)> call);
    WaylandKeyboard(const WaylandKeyboard&) = delete;
    WaylandKeyboard& operator=(const WaylandKeyboard&) = delete;

 private:
    void Follow(wl_seat* seat, std::uint32_t capabilities);
    void Load(std::uint32_t format, int descriptor, std::uint32_t size);
    void Press(std::uint32_t key);

    std::function<void(std::string)> pressed;
    Owned<wl_keyboard> keyboard;
    Owned<xkb_context> context;
    Owned<xkb_keymap> keymap;
    Owned<xkb_state> state;
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_WAYLANDKEYBOARD_H
