#include "WaylandWindow.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <stdexcept>

namespace kivgles::window {

namespace {

using Region = Owned<wl_region>;
using FrameState = Owned<libdecor_state>;

std::string NameOf(const std::string& server) {
    const char* const name = server.empty() ? std::getenv("WAYLAND_DISPLAY") : server.c_str();
    return std::string("WAYLAND_DISPLAY=") + (name == nullptr ? "wayland-0" : name);
}

WaylandWindow& This(void* self) { return *static_cast<WaylandWindow*>(self); }

}  // namespace

WaylandWindow::WaylandWindow(WindowState& kept)
    : state(kept), where(NameOf(kept.options.server)), keyboard(kept) {
    Connect();
    const std::string missing = "Wayland (" + where + ") has no way for a client to ";
    state.Refuse(&WindowOptions::aboveOthers, missing + "keep its window above others");
    if (state.options.position) {
        state.options.position.reset();
        state.warnings.push_back(missing + "place its window");
    }
    Create();
    Decorate();
    state.native = reinterpret_cast<ANativeWindow*>(native.get());
}

void WaylandWindow::Connect() {
    static constexpr wl_registry_listener LISTENER = {
        [](void* self, wl_registry*, std::uint32_t name, const char* interface, std::uint32_t version) {
            This(self).Bind(name, interface, version);
        },
        [](void*, wl_registry*, std::uint32_t) {}};
    const std::string& server = state.options.server;
    display.reset(wl_display_connect(server.empty() ? nullptr : server.c_str()));
    if (display == nullptr) {
        throw std::runtime_error("no Wayland compositor at " + where);
    }
    state.display = {KIV_PLATFORM_WAYLAND, display.get()};
    state.descriptor = wl_display_get_fd(display.get());
    registry.reset(wl_display_get_registry(display.get()));
    wl_registry_add_listener(registry.get(), &LISTENER, this);
    if (wl_display_roundtrip(display.get()) < 0) {
        throw std::runtime_error("the Wayland compositor at " + where + " does not answer");
    }
    if (compositor == nullptr || !hasWindows) {
        throw std::runtime_error("the Wayland compositor at " + where + " has no windows (xdg_wm_base)");
    }
}

// What the compositor offers.
void WaylandWindow::Bind(std::uint32_t name, const std::string& interface, std::uint32_t version) {
    if (interface == wl_compositor_interface.name && compositor == nullptr) {
        compositor.reset(static_cast<wl_compositor*>(
            wl_registry_bind(registry.get(), name, &wl_compositor_interface, std::min(version, 4U))));
    } else if (interface == wl_seat_interface.name && seat == nullptr) {
        seat.reset(static_cast<wl_seat*>(
            wl_registry_bind(registry.get(), name, &wl_seat_interface, std::min(version, 5U))));
        keyboard.Attend(seat.get());
    } else if (interface == "xdg_wm_base") {
        hasWindows = true;
    }
}

void WaylandWindow::Create() {
    surface.reset(wl_compositor_create_surface(compositor.get()));
    if (state.options.clickThrough) {
        const Region nothing(wl_compositor_create_region(compositor.get()));
        wl_surface_set_input_region(surface.get(), nothing.get());
    }
    if (!state.options.transparent) {
        const Region everything(wl_compositor_create_region(compositor.get()));
        wl_region_add(everything.get(), 0, 0, INT_MAX, INT_MAX);
        wl_surface_set_opaque_region(surface.get(), everything.get());
    }
}

libdecor_frame_interface WaylandWindow::Listener() {
    libdecor_frame_interface listener{};
    listener.configure = [](libdecor_frame* its, libdecor_configuration* configuration, void* self) {
        Size wanted = This(self).state.size;  // the window's own choice, where the compositor has none
        (void)libdecor_configuration_get_content_size(configuration, its, &wanted.width, &wanted.height);
        This(self).Accept(wanted, configuration);
    };
    listener.close = [](libdecor_frame*, void* self) { This(self).state.Report(Event::CLOSED); };
    listener.commit = [](libdecor_frame*, void* self) { wl_surface_commit(This(self).surface.get()); };
    listener.dismiss_popup = [](libdecor_frame*, const char*, void*) {};
    return listener;
}

// Errors end the connection, which is noticed.
libdecor_interface WaylandWindow::Errors() {
    libdecor_interface listener{};
    listener.error = [](libdecor*, libdecor_error, const char*) {};
    return listener;
}

// Returns when the compositor has said how large the window is, before which nothing may be drawn on it.
void WaylandWindow::Decorate() {
    static libdecor_interface errors = Errors();
    static libdecor_frame_interface listener = Listener();
    decorations.reset(libdecor_new(display.get(), &errors));
    frame.reset(libdecor_decorate(decorations.get(), surface.get(), &listener, this));
    // Only then does it take the rest.
    CollectUntil([this] { return libdecor_frame_get_xdg_toplevel(frame.get()) != nullptr; });
    libdecor_frame_set_app_id(frame.get(), program_invocation_short_name);
    libdecor_frame_set_title(frame.get(), state.options.title.c_str());
    if (state.options.fullScreen) {
        libdecor_frame_set_fullscreen(frame.get(), nullptr);
    }
    state.size = state.options.size;
    libdecor_frame_map(frame.get());
    CollectUntil([this] { return native != nullptr; });
    libdecor_frame_set_visibility(frame.get(), state.options.decorated);  // some versions crash before
}

void WaylandWindow::Accept(const Size& wanted, libdecor_configuration* configuration) {
    const FrameState accepted(libdecor_state_new(wanted.width, wanted.height));
    libdecor_frame_commit(frame.get(), accepted.get(), configuration);
    if (native == nullptr) {
        native.reset(wl_egl_window_create(surface.get(), wanted.width, wanted.height));
    } else if (wanted.width != state.size.width || wanted.height != state.size.height) {
        wl_egl_window_resize(native.get(), wanted.width, wanted.height, 0, 0);
        state.Report(Event::RESIZED);
    }
    state.size = wanted;
}

// A compositor ends the connection of who does not keep to the size of a window that it fits in.
void WaylandWindow::Resize(const Size& wanted) {
    if (libdecor_frame_is_floating(frame.get())) {
        Accept(wanted, nullptr);
    }
}

void WaylandWindow::Collect(int timeout) {
    // Without what comes before it, what is left in the queue of a lost connection would keep libdecor busy
    // forever.
    if (wl_display_dispatch_pending(display.get()) >= 0) {
        (void)libdecor_dispatch(decorations.get(), timeout);
    }
    state.isLost = wl_display_get_error(display.get()) != 0;
}

void WaylandWindow::CollectUntil(const std::function<bool()>& reached) {
    while (!reached()) {
        Collect(-1);
        if (state.isLost) {
            throw std::runtime_error("the Wayland compositor at " + where +
                                     " refuses the window or went away");
        }
    }
}

bool WaylandWindow::BeginWait() {
    if (wl_display_prepare_read(display.get()) != 0) {
        return false;
    }
    (void)wl_display_flush(display.get());  // what fails here fails again when it is taken
    return true;
}

void WaylandWindow::EndWait(bool readable) {
    if (readable) {
        (void)wl_display_read_events(display.get());
    } else {
        wl_display_cancel_read(display.get());
    }
}

}  // namespace kivgles::window
