#ifndef KIVGLES_PLATFORM_ANDROID_NATIVE_WINDOW_H
#define KIVGLES_PLATFORM_ANDROID_NATIVE_WINDOW_H

// Stand-in for the NDK's header of this name. A host's window is known by a number that is cast to this
// pointer (see KivGLDrawSurface::KivConnectWindowSurface); nobody looks behind it.

struct ANativeWindow;
typedef struct ANativeWindow ANativeWindow;

#endif  // KIVGLES_PLATFORM_ANDROID_NATIVE_WINDOW_H
