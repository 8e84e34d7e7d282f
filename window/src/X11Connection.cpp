#include "X11Connection.h"

#include <cstdlib>
#include <stdexcept>

#include <X11/Xlibint.h>

namespace kivgles::window {

namespace {

constexpr int LAST_ERROR_CODE = 255;

Display* Open(const std::string& server) {
    static const Status threads = XInitThreads();  // what draws on the window has a thread of its own
    (void)threads;
    Display* const display = XOpenDisplay(server.empty() ? nullptr : server.c_str());
    if (display == nullptr) {
        const char* const name = server.empty() ? std::getenv("DISPLAY") : server.c_str();
        throw std::runtime_error(name == nullptr ? std::string("no X server: DISPLAY is not set")
                                                 : std::string("no X server at DISPLAY=") + name);
    }
    return display;
}

// An error that is not translated does not reach the process's one handler of errors.
Bool DropError(Display*, XErrorEvent*, xError*) { return False; }

void OnEnd(Display*, void* lost) { *static_cast<std::atomic<bool>*>(lost) = true; }

int OnLoss(Display* display);

// The process has one handler of lost connections, too, and that is asked before OnEnd is. Once: who sets
// another one afterwards passes on to this one, which would pass it back.
XIOErrorHandler FormerOnLoss() {
    static const XIOErrorHandler former = XSetIOErrorHandler(OnLoss);
    return former;
}

int OnLoss(Display* display) {
    const bool isOwn = display->exit_handler == OnEnd;
    return isOwn ? 0 : FormerOnLoss()(display);
}

}  // namespace

X11Connection::X11Connection(const std::string& server) : display(Open(server)) {
    XSetIOErrorExitHandler(display, OnEnd, &lost);
    (void)FormerOnLoss();
    for (int code = 1; code <= LAST_ERROR_CODE; ++code) {
        XESetWireToError(display, code, DropError);
    }
}

X11Connection::~X11Connection() { XCloseDisplay(display); }

}  // namespace kivgles::window
