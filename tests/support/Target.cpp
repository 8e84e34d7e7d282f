#include "support/Target.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include <GLES2/gl2.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "support/Recorder.h"

namespace kivgles {

namespace {

Bool IsMapped(Display*, XEvent* event, XPointer) { return event->type == MapNotify ? True : False; }

void ExpectNear(const char* file, int line, int x, int y, const Pixel& found, const Pixel& expected) {
    if (!Near(found, expected)) {
        ADD_FAILURE_AT(file, line) << "pixel (" << x << ", " << y << ") is " << testing::PrintToString(found)
                                   << ", expected " << testing::PrintToString(expected);
    }
}

}  // namespace

X11Window::X11Window(unsigned int width, unsigned int height, int x, int y) : display(XOpenDisplay(nullptr)) {
    if (display == nullptr) {
        throw std::runtime_error("this test needs an X server and found none");
    }
    XSetWindowAttributes attributes = {};
    attributes.backing_store = Always;
    attributes.event_mask = StructureNotifyMask;
    window = XCreateWindow(display, DefaultRootWindow(display), x, y, width, height, 0, CopyFromParent,
                           InputOutput, nullptr, CWBackPixel | CWBackingStore | CWEventMask, &attributes);
    XMapWindow(display, window);
    XEvent event;
    XIfEvent(display, &event, &IsMapped, nullptr);
}

X11Window::~X11Window() { XCloseDisplay(display); }

Pixel X11Window::PixelAt(int x, int y) const {
    XImage* const image = XGetImage(display, window, x, y, 1, 1, AllPlanes, ZPixmap);
    const auto value = static_cast<int>(XGetPixel(image, 0, 0));
    XDestroyImage(image);
    return {value >> 16 & 255, value >> 8 & 255, value & 255, 255};
}

Pixel PixelAt(const TagFrameBuffObject& target, int x, int y) {
    std::array<GLubyte, 4> bytes{};
    glBindFramebuffer(GL_FRAMEBUFFER, target.fboId);
    glReadPixels(x, target.height - 1 - y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

bool Near(const Pixel& a, const Pixel& b) {
    return std::equal(a.begin(), a.end(), b.begin(),
                      [](int one, int other) { return std::abs(one - other) <= 1; });
}

Pixel ShownPixel(const X11Window& window, int x, int y, const Pixel& expected) {
    Pixel found = window.PixelAt(x, y);
    for (int roundTrips = 0; roundTrips < 1000 && !Near(found, expected); ++roundTrips) {
        found = window.PixelAt(x, y);
    }
    return found;
}

void ExpectPixel(const TagFrameBuffObject& target, int x, int y, const Pixel& expected, const char* file,
                 int line) {
    ExpectNear(file, line, x, y, PixelAt(target, x, y), expected);
}

void ExpectShown(const X11Window& window, int x, int y, const Pixel& expected, const char* file, int line) {
    ExpectNear(file, line, x, y, ShownPixel(window, x, y, expected), expected);
}

void GLTest::SetUp() {
    ASSERT_EQ(egl.EGLSetupContext(), 0);
    ASSERT_EQ(egl.CreateWindowSurface(window.Native()), 0);
    ASSERT_EQ(egl.MakeCurrent(), 0);
    recorder::Reset();
}

}  // namespace kivgles
