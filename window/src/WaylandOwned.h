#ifndef KIVGLES_WINDOW_WAYLANDOWNED_H
#define KIVGLES_WINDOW_WAYLANDOWNED_H

#include <memory>

#include <libdecor.h>
#include <wayland-client.h>
#include <wayland-egl.h>
#include <xkbcommon/xkbcommon.h>

namespace kivgles::window {

// Destroys each object by the function that its library has for it.
struct Destroyer {
    void operator()(wl_display* object) const { wl_display_disconnect(object); }
    void operator()(wl_registry* object) const { wl_registry_destroy(object); }
    void operator()(wl_compositor* object) const { wl_compositor_destroy(object); }
    void operator()(wl_region* object) const { wl_region_destroy(object); }
    void operator()(wl_seat* object) const { wl_seat_destroy(object); }
    void operator()(wl_keyboard* object) const { wl_keyboard_destroy(object); }
    void operator()(wl_surface* object) const { wl_surface_destroy(object); }
    void operator()(wl_egl_window* object) const { wl_egl_window_destroy(object); }
    void operator()(libdecor* object) const { libdecor_unref(object); }
    void operator()(libdecor_frame* object) const { libdecor_frame_unref(object); }
    void operator()(libdecor_state* object) const { libdecor_state_free(object); }
    void operator()(xkb_context* object) const { xkb_context_unref(object); }
    void operator()(xkb_keymap* object) const { xkb_keymap_unref(object); }
    void operator()(xkb_state* object) const { xkb_state_unref(object); }
};

template <typename Object>
using Owned = std::unique_ptr<Object, Destroyer>;

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_WAYLANDOWNED_H
