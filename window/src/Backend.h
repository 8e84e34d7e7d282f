#ifndef KIVGLES_WINDOW_BACKEND_H
#define KIVGLES_WINDOW_BACKEND_H

#include <variant>

#ifdef KIVGLES_WINDOW_X11
#include "X11Window.h"
#endif
#ifdef KIVGLES_WINDOW_WAYLAND
#include "WaylandWindow.h"
#endif

namespace kivgles::window {

#if defined(KIVGLES_WINDOW_X11) && defined(KIVGLES_WINDOW_WAYLAND)
using Backend = std::variant<X11Window, WaylandWindow>;
#elif defined(KIVGLES_WINDOW_X11)
using Backend = std::variant<X11Window>;
#else
using Backend = std::variant<WaylandWindow>;
#endif

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_BACKEND_H
