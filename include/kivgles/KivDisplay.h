#ifndef KIVGLES_KIVDISPLAY_H
#define KIVGLES_KIVDISPLAY_H

/// @file
/// Names the connection to a window system that a surface works on.

namespace kivgles {

constexpr int KIV_PLATFORM_DEFAULT = 0;  ///< EGL's default display; the one there is on Android.
constexpr int KIV_PLATFORM_X11 = 1;      ///< A connection to an X server, `Display*`.
constexpr int KIV_PLATFORM_WAYLAND = 2;  ///< A connection to a Wayland compositor, `wl_display*`.

/// A connection of the client's, which stays the client's.
struct TagKivDisplayInfo {
    int platform = KIV_PLATFORM_DEFAULT;  ///< One of KIV_PLATFORM_.
    void* nativeDisplay = nullptr;  ///< What the platform says; not looked at with KIV_PLATFORM_DEFAULT.
};

}  // namespace kivgles

#endif  // KIVGLES_KIVDISPLAY_H
