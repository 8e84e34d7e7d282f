#include "X11Window.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <stdexcept>

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <poll.h>
#ifdef KIVGLES_WINDOW_XFIXES
#include <X11/extensions/Xfixes.h>
#include <X11/extensions/shapeconst.h>
#endif

#include "X11Visual.h"

namespace kivgles::window {

namespace {

constexpr std::chrono::milliseconds LONGEST_WAIT_TO_BE_SHOWN{1000};

// What the window manager says that it can do; empty if there is none.
std::vector<Atom> SupportedByManager(const X11Connection& connection) {
    Display* const display = connection.Get();
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    std::vector<Atom> supported;
    if (XGetWindowProperty(display, DefaultRootWindow(display), connection.Name("_NET_SUPPORTED"), 0, 4096,
                           False, XA_ATOM, &type, &format, &count, &left, &data) == Success &&
        data != nullptr) {
        const auto* const atoms = reinterpret_cast<const Atom*>(data);
        supported.assign(atoms, atoms + (format == 32 ? count : 0));
        XFree(data);
    }
    return supported;
}

bool HasCompositor(const X11Connection& connection) {
    const std::string selection = "_NET_WM_CM_S" + std::to_string(DefaultScreen(connection.Get()));
    return XGetSelectionOwner(connection.Get(), connection.Name(selection.c_str())) != 0;
}

// Values of 32 bits, which Xlib takes as longs.
void SetProperty(const X11Connection& connection, ::Window window, const char* name, Atom type,
                 const std::vector<unsigned long>& values) {
    XChangeProperty(connection.Get(), window, connection.Name(name), type, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(values.data()), static_cast<int>(values.size()));
}

}  // namespace

X11Window::X11Window(Grant& grant)
    : events(grant.options.server),
      drawing(grant.options.server),
      where(std::string("DISPLAY=") + XDisplayString(events.Get())),
      closing(events.Name("WM_DELETE_WINDOW")) {
    Create(grant.options);
    Describe(grant.options);
    if (!HasCompositor(events)) {
        grant.Refuse(&WindowOptions::transparent,
                     "no compositor at " + where + ": black where it is transparent");
    }
    AskManager(grant);
    if (grant.options.clickThrough) {
        LetClicksThrough(grant);
    }
    Show();
}

void X11Window::Create(const WindowOptions& options) {
    ::Display* const display = events.Get();
    const XVisualInfo visual = options.transparent ? TransparentVisual(display) : OpaqueVisual(drawing.Get());
    if (visual.depth == 0) {
        throw std::runtime_error("no visual for a transparent window at " + where);
    }
    const ::Window root = RootWindow(display, visual.screen);
    const Position position = options.position.value_or(Position{});

    // A visual other than the root's needs colours of its own, and a border's. Pixel 0 is black, or
    // transparent.
    XSetWindowAttributes attributes{};
    attributes.colormap = XCreateColormap(display, root, visual.visual, AllocNone);
    attributes.event_mask = StructureNotifyMask | ExposureMask | (options.clickThrough ? 0 : KeyPressMask);
    window =
        XCreateWindow(display, root, position.x, position.y, static_cast<unsigned int>(options.size.width),
                      static_cast<unsigned int>(options.size.height), 0, visual.depth, InputOutput,
                      visual.visual, CWBackPixel | CWBorderPixel | CWColormap | CWEventMask, &attributes);
    XWindowAttributes made{};
    if (XGetWindowAttributes(display, window, &made) == 0) {
        throw std::runtime_error("the X server at " + where + " refuses the window");
    }
}

// What window managers want to know of a window.
void X11Window::Describe(const WindowOptions& options) {
    ::Display* const display = events.Get();
    XSizeHints place{};
    if (options.position) {
        place.flags = USPosition | PPosition;  // with the window's own position, which is there
    }
    XWMHints focus{};
    focus.flags = InputHint;
    focus.input = options.clickThrough ? False : True;
    XClassHint program{program_invocation_short_name, program_invocation_short_name};
    Xutf8SetWMProperties(display, window, options.title.c_str(), options.title.c_str(), nullptr, 0, &place,
                         &focus, &program);
    XChangeProperty(display, window, events.Name("_NET_WM_NAME"), events.Name("UTF8_STRING"), 8,
                    PropModeReplace, reinterpret_cast<const unsigned char*>(options.title.data()),
                    static_cast<int>(options.title.size()));
    XSetWMProtocols(display, window, &closing, 1);  // asked to close it, instead of cut off
}

void X11Window::AskManager(Grant& grant) {
    const WindowOptions& options = grant.options;
    ::Display* const display = events.Get();
    const std::vector<Atom> supported = SupportedByManager(events);
    const Atom above = events.Name("_NET_WM_STATE_ABOVE");
    if (std::find(supported.begin(), supported.end(), above) == supported.end()) {
        grant.Refuse(&WindowOptions::aboveOthers,
                     "no window manager at " + where + " that keeps windows above others");
    }

    std::vector<Atom> state;
    if (options.aboveOthers) {
        state.push_back(above);
    }
    if (options.fullScreen && supported.empty()) {
        XMoveResizeWindow(display, window, 0, 0,
                          static_cast<unsigned int>(DisplayWidth(display, DefaultScreen(display))),
                          static_cast<unsigned int>(DisplayHeight(display, DefaultScreen(display))));
    } else if (options.fullScreen) {
        state.push_back(events.Name("_NET_WM_STATE_FULLSCREEN"));
    }
    SetProperty(events, window, "_NET_WM_STATE", XA_ATOM, state);

    if (supported.empty()) {
        grant.options.decorated = false;  // without a word: few ask for it themselves
    } else if (!options.decorated) {
        // Flags (2: the third field counts), functions, decorations, input mode, status.
        SetProperty(events, window, "_MOTIF_WM_HINTS", events.Name("_MOTIF_WM_HINTS"), {2, 0, 0, 0, 0});
    }
}

void X11Window::LetClicksThrough(Grant& grant) {
#ifdef KIVGLES_WINDOW_XFIXES
    ::Display* const display = events.Get();
    int first = 0;
    int major = 2;  // the first that has regions
    int minor = 0;
    if (XFixesQueryExtension(display, &first, &first) != 0 &&
        XFixesQueryVersion(display, &major, &minor) != 0 && major >= 2) {
        const XserverRegion nothing = XFixesCreateRegion(display, nullptr, 0);
        XFixesSetWindowShapeRegion(display, window, ShapeInput, 0, 0, nothing);
        XFixesDestroyRegion(display, nothing);
        return;
    }
    grant.Refuse(&WindowOptions::clickThrough, "no XFixes 2 at " + where + " to let clicks through");
#else
    grant.Refuse(&WindowOptions::clickThrough, "this library was built without XFixes to let clicks through");
#endif
}

void X11Window::Show() {
    using Clock = std::chrono::steady_clock;
    ::Display* const display = events.Get();
    XMapRaised(display, window);
    const auto end = Clock::now() + LONGEST_WAIT_TO_BE_SHOWN;  // a window manager may keep it back
    XEvent event;
    while (XCheckTypedWindowEvent(display, window, MapNotify, &event) == False && !events.IsLost()) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd source{Descriptor(), POLLIN, 0};
        if (left <= 0 || poll(&source, 1, static_cast<int>(left)) == 0) {
            break;
        }
    }
    XWindowAttributes shown{};
    if (XGetWindowAttributes(display, window, &shown) == 0) {
        throw std::runtime_error("the X server at " + where + " went away");
    }
    size = {shown.width, shown.height};
    while (XCheckTypedWindowEvent(display, window, ConfigureNotify, &event) == True) {
        size = {event.xconfigure.width, event.xconfigure.height};  // on the way here: no news later
    }
}

void X11Window::Resize(const Size& wanted) {
    XResizeWindow(events.Get(), window, static_cast<unsigned int>(wanted.width),
                  static_cast<unsigned int>(wanted.height));
    XFlush(events.Get());
}

Event X11Window::Take() {
    Event taken;
    while (taken.type == Event::NONE && !events.IsLost() && XPending(events.Get()) > 0) {
        XEvent event;
        XNextEvent(events.Get(), &event);
        taken.type = Translate(event, taken.key);
    }
    if (events.IsLost()) {
        taken = {};
        taken.type = Event::CLOSED;
    }
    return taken;
}

Event::Type X11Window::Translate(XEvent& event, std::string& key) {
    switch (event.type) {
        case ConfigureNotify: {
            const Size now{event.xconfigure.width, event.xconfigure.height};
            if (now.width == size.width && now.height == size.height) {
                return Event::NONE;  // moved
            }
            size = now;
            return Event::RESIZED;
        }
        case Expose:
            return event.xexpose.count == 0 ? Event::EXPOSED : Event::NONE;
        case ClientMessage:
            return static_cast<Atom>(event.xclient.data.l[0]) == closing ? Event::CLOSED : Event::NONE;
        case DestroyNotify:
            return Event::CLOSED;
        case MappingNotify:
            XRefreshKeyboardMapping(&event.xmapping);
            return Event::NONE;
        case KeyPress: {
            std::array<char, 32> characters;
            KeySym symbol = NoSymbol;
            XLookupString(&event.xkey, characters.data(), characters.size(), &symbol, nullptr);
            const char* const name = XKeysymToString(symbol);
            if (name == nullptr) {
                return Event::NONE;
            }
            key = name;
            return Event::KEY;
        }
        default:
            return Event::NONE;
    }
}

}  // namespace kivgles::window
