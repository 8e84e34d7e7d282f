#ifndef KIVGLES_KIVDISPLAY_H
#define KIVGLES_KIVDISPLAY_H

/// @file
/// Names the connection to a window system that a surface works on.

namespace kivgles {

/// EGL's default display, over a connection of EGL's own: the X server of `DISPLAY`, or Android, which takes
/// no other. Native windows are X11 window ids, cast, or an `ANativeWindow*`.
constexpr int KIV_PLATFORM_DEFAULT = 0;

/// A connection to an X server, `Display*`. Native windows are ids of that server's windows, cast; which of
/// its clients made one does not matter.
///
/// Needs an Xlib that is safe for threads: call `XInitThreads` before any other of Xlib's functions (from
/// libX11 1.8 on it is done already).
constexpr int KIV_PLATFORM_X11 = 1;

/// A connection to a Wayland compositor, `wl_display*`. Native windows are `wl_egl_window*`, cast, made on
/// that connection; as many events may be read from it elsewhere as you like.
///
/// No frame waits for the compositor to show it, since one that is hidden is not shown at all, and every
/// waiting operation would hang: a refresh replaces the frame before. To paint no more often than is shown
/// ask for `wl_surface_frame` before each refresh, and paint the next frame when it is answered.
constexpr int KIV_PLATFORM_WAYLAND = 2;

/// A connection of the client's, which stays the client's.
///
/// It is used on the draw thread, so it must be safe for threads and outlive the context: closed before, it
/// crashes the GL driver. What a window shows where its pixels are not opaque is what is behind it, with
/// colours premultiplied, where the window system blends (Wayland does; on X11 a compositor for windows of a
/// 32-bit visual). A window made where another one was destroyed may get its address or id: it then counts as
/// the same, and connecting it connects nothing, unless another one was connected in between.
struct TagKivDisplayInfo {
    int platform = KIV_PLATFORM_DEFAULT;  ///< One of KIV_PLATFORM_.
    void* nativeDisplay = nullptr;  ///< What the platform says; not looked at with KIV_PLATFORM_DEFAULT.
};

}  // namespace kivgles

#endif  // KIVGLES_KIVDISPLAY_H
