#ifndef KIVGLES_WINDOW_X11VISUAL_H
#define KIVGLES_WINDOW_X11VISUAL_H

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace kivgles::window {

// The visual of the configuration that surfaces are made with: an EGL may refuse a window of any other. The
// default one where EGL gives no answer; the surface will say why. Nothing else uses EGL on this connection
// yet.
XVisualInfo OpaqueVisual(Display* display);

// The visual of windows that show what is behind them. Its depth is 0 if the server has none.
XVisualInfo TransparentVisual(Display* display);

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_X11VISUAL_H
