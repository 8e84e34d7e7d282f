// minimal: the least that a client does. One window, one layer, one text.

#include <cstdio>

#include <X11/Xlib.h>
#include <kivgles/KivGLDrawSurface.h>

int main() {
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::puts("There is no X server.");
        return 1;
    }
    const Window window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 640, 200, 0, 0, 0);
    XMapWindow(display, window);
    XSync(display, False);

    kivgles::KivGLDrawSurface osd;
    unsigned int layer = 0;
    if (osd.KivCreateGLContext() != 0 ||
        osd.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(window)) != 0 ||
        osd.KivLoadFont("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 40) != 0 ||
        osd.KivCreateGLFBO(layer, 640, 200, kivgles::KIV_COLOR_FORMAT_RGBA8888) != 0) {
        return 1;  // the log on stderr says why
    }

    kivgles::TagKivTextInfo text{};
    text.text = u"Hello";
    text.textLength = 5;
    text.fgColor = {240, 244, 250, 255};
    text.fontSize = 40;
    osd.KivDrawRect(layer, {0, 0, 640, 200}, {24, 40, 64, 255});
    osd.KivDrawRound(layer, {70, 100, 24, 24}, {255, 186, 84, 255});
    osd.KivDrawText(layer, text, {120, 74, 480, 50});
    osd.KivBlit({layer, kivgles::FBO_HANDLE_BASE, {0, 0, 640, 200}, {0, 0, 640, 200}});
    osd.KivRefreshOnSrceen();
    osd.Init(0);  // waits until all of this has been done

    std::puts("Press Enter to end.");
    std::getchar();
    osd.KivDestoryGLContext();  // before the window goes
    XCloseDisplay(display);
}
