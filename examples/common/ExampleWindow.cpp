#include "common/ExampleWindow.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <poll.h>

namespace examples {

namespace {

// Xlib's own answer to a request that the server refuses is to end the program. This one lets the request's
// caller find out.
int IgnoreError(Display*, XErrorEvent*) { return 0; }

struct Freer {
    void operator()(XVisualInfo* info) const { XFree(info); }
};

// The visual that a window must have for EGL to accept it with the library's configuration, asked for with
// the library's own attributes.
VisualID FindVisualId(Display* display) {
    const EGLint attributes[] = {EGL_SURFACE_TYPE,
                                 EGL_WINDOW_BIT,
                                 EGL_RENDERABLE_TYPE,
                                 EGL_OPENGL_ES2_BIT,
                                 EGL_RED_SIZE,
                                 8,
                                 EGL_GREEN_SIZE,
                                 8,
                                 EGL_BLUE_SIZE,
                                 8,
                                 EGL_ALPHA_SIZE,
                                 8,
                                 EGL_NONE};
    // A display of this connection, not the library's, so that ending it here does not disturb that one.
    const EGLDisplay egl = eglGetPlatformDisplay(EGL_PLATFORM_X11_KHR, display, nullptr);
    if (egl == EGL_NO_DISPLAY || eglInitialize(egl, nullptr, nullptr) == EGL_FALSE) {
        throw std::runtime_error("EGL does not work on this X server");
    }
    EGLConfig config = nullptr;
    EGLint count = 0;
    EGLint visual = 0;
    const bool found = eglChooseConfig(egl, attributes, &config, 1, &count) == EGL_TRUE && count == 1 &&
                       eglGetConfigAttrib(egl, config, EGL_NATIVE_VISUAL_ID, &visual) == EGL_TRUE;
    eglTerminate(egl);
    if (!found) {
        throw std::runtime_error("EGL has no window configuration for OpenGL ES 2.0 with 8 bits a channel");
    }
    return static_cast<VisualID>(visual);
}

std::unique_ptr<XVisualInfo, Freer> FindVisual(Display* display) {
    XVisualInfo wanted{};
    wanted.visualid = FindVisualId(display);
    int count = 0;
    std::unique_ptr<XVisualInfo, Freer> visual(XGetVisualInfo(display, VisualIDMask, &wanted, &count));
    if (visual == nullptr) {
        throw std::runtime_error("the X server does not know the visual of EGL's configuration");
    }
    return visual;
}

int IsMapped(Display*, XEvent* event, XPointer window) {
    return event->type == MapNotify && event->xmap.window == *reinterpret_cast<Window*>(window) ? True
                                                                                                : False;
}

}  // namespace

void ExampleWindow::Closer::operator()(Display* connection) const { XCloseDisplay(connection); }

ExampleWindow::ExampleWindow(int width, int height, const std::string& title)
    : display(XOpenDisplay(nullptr)), knownWidth(width), knownHeight(height) {
    if (display == nullptr) {
        const char* const name = std::getenv("DISPLAY");
        throw std::runtime_error(name == nullptr ? std::string("no X server: DISPLAY is not set")
                                                 : std::string("no X server at DISPLAY=") + name);
    }
    XSetErrorHandler(IgnoreError);
    Display* const connection = display.get();
    const auto visual = FindVisual(connection);
    const Window root = RootWindow(connection, visual->screen);

    // A visual other than the root's needs colours of its own.
    XSetWindowAttributes attributes{};
    attributes.colormap = XCreateColormap(connection, root, visual->visual, AllocNone);
    attributes.event_mask = StructureNotifyMask;
    window = XCreateWindow(connection, root, 0, 0, static_cast<unsigned int>(width),
                           static_cast<unsigned int>(height), 0, visual->depth, InputOutput, visual->visual,
                           CWBorderPixel | CWColormap | CWEventMask, &attributes);
    XStoreName(connection, window, title.c_str());
    // The window manager asks to close it, instead of ending the program.
    Atom closing = XInternAtom(connection, "WM_DELETE_WINDOW", False);
    XSetWMProtocols(connection, window, &closing, 1);
    XWindowAttributes made{};
    if (XGetWindowAttributes(connection, window, &made) == 0) {
        throw std::runtime_error("the X server refuses the window");
    }

    XMapWindow(connection, window);
    XEvent event;
    XIfEvent(connection, &event, IsMapped, reinterpret_cast<XPointer>(&window));
}

ExampleWindow::Event ExampleWindow::Wait() {
    for (;;) {
        while (XPending(display.get()) > 0) {
            XEvent event;
            XNextEvent(display.get(), &event);
            if (event.type == DestroyNotify || event.type == ClientMessage) {
                return Event::LOST;
            }
            const XConfigureEvent& now = event.xconfigure;
            if (event.type == ConfigureNotify && (now.width != knownWidth || now.height != knownHeight)) {
                knownWidth = now.width;
                knownHeight = now.height;
                return Event::RESIZED;
            }
        }
        std::array<pollfd, 2> sources = {
            {{ConnectionNumber(display.get()), POLLIN, 0}, {fileno(stdin), POLLIN, 0}}};
        (void)poll(sources.data(), sources.size(), -1);  // interrupted: looked at once more
        if (sources[1].revents != 0) {
            (void)std::getchar();  // Enter, or the end: the same
            return Event::ENTER;
        }
    }
}

void ExampleWindow::WaitForEnd() {
    std::puts("Press Enter to end.");
    while (Wait() == Event::RESIZED) {
    }
}

void ExampleWindow::Resize(int width, int height) {
    XResizeWindow(display.get(), window, static_cast<unsigned int>(width), static_cast<unsigned int>(height));
}

void ExampleWindow::Destroy() { XDestroyWindow(display.get(), window); }

}  // namespace examples
