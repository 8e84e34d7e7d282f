#include "WaylandConnection.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace kivgles::window {

namespace {

std::string NameOf(const std::string& server) {
    const char* const name = server.empty() ? std::getenv("WAYLAND_DISPLAY") : server.c_str();
    return std::string("WAYLAND_DISPLAY=") + (name == nullptr ? "wayland-0" : name);
}

}  // namespace

WaylandConnection::WaylandConnection(const std::string& server)
    : where(NameOf(server)), display(wl_display_connect(server.empty() ? nullptr : server.c_str())) {
    if (display == nullptr) {
        throw std::runtime_error("no Wayland compositor at " + where);
    }
    registry.reset(wl_display_get_registry(display.get()));
    static constexpr wl_registry_listener LISTENER = {OnGlobal, [](void*, wl_registry*, std::uint32_t) {}};
    wl_registry_add_listener(registry.get(), &LISTENER, this);
    if (wl_display_roundtrip(display.get()) < 0) {
        throw std::runtime_error("the Wayland compositor at " + where + " does not answer");
    }
    if (compositor == nullptr || !hasWindows) {
        throw std::runtime_error("the Wayland compositor at " + where + " has no windows (xdg_wm_base)");
    }
}

void WaylandConnection::OnGlobal(void* self, wl_registry* registry, std::uint32_t name, const char* interface,
                                 std::uint32_t version) {
    auto& connection = *static_cast<WaylandConnection*>(self);
    const std::string offered = interface;
    if (offered == wl_compositor_interface.name && connection.compositor == nullptr) {
        connection.compositor.reset(static_cast<wl_compositor*>(
            wl_registry_bind(registry, name, &wl_compositor_interface, std::min(version, 4U))));
    } else if (offered == "xdg_wm_base") {
        connection.hasWindows = true;
    } else if (offered == wl_seat_interface.name && connection.seat == nullptr) {
        connection.seat.reset(static_cast<wl_seat*>(
            wl_registry_bind(registry, name, &wl_seat_interface, std::min(version, 5U))));
    }
}

}  // namespace kivgles::window
