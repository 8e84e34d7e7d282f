#include "X11Connection.h"

#include <cstdlib>
#include <mutex>
#include <set>
#include <stdexcept>

namespace kivgles::window {

namespace {

// Xlib has its handlers of errors, and of lost connections, once for the whole process.
struct Handlers {
    std::mutex mutex;
    std::multiset<Display*> own;  // an address may be there again before its last entry is gone
    // Of those who have the other connections; null until the first connection.
    XErrorHandler formerOnError = nullptr;
    XIOErrorHandler formerOnLoss = nullptr;
};

Handlers& TheHandlers() {
    static auto* const handlers = new Handlers;  // no destructor at exit, when others may still be drawing
    return *handlers;
}

// Null for a connection of the library's own.
template <typename Handler>
Handler Former(Display* display, Handler Handlers::*former) {
    Handlers& handlers = TheHandlers();
    const std::lock_guard lock(handlers.mutex);
    return handlers.own.count(display) == 0 ? handlers.*former : nullptr;
}

int OnError(Display* display, XErrorEvent* error) {
    const XErrorHandler former = Former(display, &Handlers::formerOnError);
    return former == nullptr ? 0 : former(display, error);
}

int OnLoss(Display* display) {
    const XIOErrorHandler former = Former(display, &Handlers::formerOnLoss);
    return former == nullptr ? 0 : former(display);
}

void OnEnd(Display*, void* lost) { *static_cast<std::atomic<bool>*>(lost) = true; }

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

}  // namespace

X11Connection::X11Connection(const std::string& server) : display(Open(server)) {
    XSetIOErrorExitHandler(display, OnEnd, &lost);

    Handlers& handlers = TheHandlers();
    const std::lock_guard lock(handlers.mutex);
    handlers.own.insert(display);
    // Once: who sets others afterwards passes on to these, which would pass them back.
    if (handlers.formerOnError == nullptr) {
        handlers.formerOnError = XSetErrorHandler(OnError);
        handlers.formerOnLoss = XSetIOErrorHandler(OnLoss);
    }
}

X11Connection::~X11Connection() {
    XCloseDisplay(display);

    Handlers& handlers = TheHandlers();
    const std::lock_guard lock(handlers.mutex);
    handlers.own.erase(handlers.own.find(display));
}

}  // namespace kivgles::window
