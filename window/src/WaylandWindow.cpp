#include "WaylandWindow.h"

#include <cerrno>
#include <climits>
#include <stdexcept>

namespace kivgles::window {

namespace {

WaylandWindow& This(void* self) { return *static_cast<WaylandWindow*>(self); }

}  // namespace

WaylandWindow::WaylandWindow(Grant& grant)
    : connection(grant.options.server), keyboard(connection.Seat(), [this](std::string key) {
          events.push_back({Event::KEY, nullptr, std::move(key)});
      }) {
    const std::string where = "Wayland (" + connection.Where() + ") has no way for a client to ";
    grant.Refuse(&WindowOptions::aboveOthers, where + "keep its window above others");
    if (grant.options.position) {
        grant.options.position.reset();
        grant.warnings.push_back(where + "place its window");
    }
    Create(grant.options);
    Decorate(grant.options);
}

void WaylandWindow::Create(const WindowOptions& options) {
    using Region = Owned<wl_region>;
    surface.reset(wl_compositor_create_surface(connection.Compositor()));
    if (options.clickThrough) {
        const Region nothing(wl_compositor_create_region(connection.Compositor()));
        wl_surface_set_input_region(surface.get(), nothing.get());
    }
    if (!options.transparent) {
        const Region everything(wl_compositor_create_region(connection.Compositor()));
        wl_region_add(everything.get(), 0, 0, INT_MAX, INT_MAX);
        wl_surface_set_opaque_region(surface.get(), everything.get());
    }
}

// Returns when the compositor has said how large the window is, before which nothing may be drawn on it.
void WaylandWindow::Decorate(const WindowOptions& options) {
    static libdecor_interface listener{};
    static libdecor_frame_interface frameListener{};
    listener.error = [](libdecor*, libdecor_error, const char*) {};  // ends the connection, which is noticed
    frameListener.configure = [](libdecor_frame*, libdecor_configuration* configuration, void* self) {
        This(self).Configure(configuration);
    };
    frameListener.close = [](libdecor_frame*, void* self) {
        This(self).events.push_back({Event::CLOSED, nullptr, {}});
    };
    frameListener.commit = [](libdecor_frame*, void* self) { wl_surface_commit(This(self).surface.get()); };
    frameListener.dismiss_popup = [](libdecor_frame*, const char*, void*) {};

    decorations.reset(libdecor_new(connection.Get(), &listener));
    frame.reset(libdecor_decorate(decorations.get(), surface.get(), &frameListener, this));
    // Only then does it take the rest.
    DispatchUntil([this] { return libdecor_frame_get_xdg_toplevel(frame.get()) != nullptr; });
    libdecor_frame_set_app_id(frame.get(), program_invocation_short_name);
    libdecor_frame_set_title(frame.get(), options.title.c_str());
    if (options.fullScreen) {
        libdecor_frame_set_fullscreen(frame.get(), nullptr);
    }
    size = options.size;
    libdecor_frame_map(frame.get());
    DispatchUntil([this] { return native != nullptr; });
    libdecor_frame_set_visibility(frame.get(), options.decorated);  // some versions crash before
    events.clear();
}

void WaylandWindow::Configure(libdecor_configuration* configuration) {
    Size wanted = size;  // the window's own choice, where the compositor has none
    (void)libdecor_configuration_get_content_size(configuration, frame.get(), &wanted.width, &wanted.height);
    Accept(wanted, configuration);
}

void WaylandWindow::Accept(const Size& wanted, libdecor_configuration* configuration) {
    const Owned<libdecor_state> state(libdecor_state_new(wanted.width, wanted.height));
    libdecor_frame_commit(frame.get(), state.get(), configuration);
    if (native == nullptr) {
        native.reset(wl_egl_window_create(surface.get(), wanted.width, wanted.height));
    } else if (wanted.width != size.width || wanted.height != size.height) {
        wl_egl_window_resize(native.get(), wanted.width, wanted.height, 0, 0);
        events.push_back({Event::RESIZED, nullptr, {}});
    }
    size = wanted;
}

void WaylandWindow::Resize(const Size& wanted) { Accept(wanted, nullptr); }

// Takes what has come, and waits for something to come if nothing has: milliseconds, -1 without an end.
void WaylandWindow::Dispatch(int timeout) {
    // Without what comes before it, what is left in the queue of a lost connection would keep libdecor busy
    // forever.
    if (wl_display_dispatch_pending(connection.Get()) >= 0) {
        (void)libdecor_dispatch(decorations.get(), timeout);
    }
}

void WaylandWindow::DispatchUntil(const std::function<bool()>& reached) {
    while (!reached()) {
        Dispatch(-1);
        if (connection.IsLost()) {
            throw std::runtime_error("the Wayland compositor at " + connection.Where() +
                                     " refuses the window or went away");
        }
    }
}

Event WaylandWindow::Take() {
    if (events.empty()) {
        Dispatch(0);
    }
    if (!events.empty()) {
        Event first = std::move(events.front());
        events.pop_front();
        return first;
    }
    return connection.IsLost() ? Event{Event::CLOSED, nullptr, {}} : Event{};
}

bool WaylandWindow::BeginWait() {
    if (!events.empty() || connection.IsLost() || wl_display_prepare_read(connection.Get()) != 0) {
        return false;
    }
    (void)wl_display_flush(connection.Get());  // what fails here fails again when it is taken
    return true;
}

void WaylandWindow::EndWait(bool readable) {
    if (readable) {
        (void)wl_display_read_events(connection.Get());
    } else {
        wl_display_cancel_read(connection.Get());
    }
}

}  // namespace kivgles::window
