#include "X11Window.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <thread>

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#ifdef KIVGLES_WINDOW_XFIXES
#include <X11/extensions/Xfixes.h>
#include <X11/extensions/shapeconst.h>
#endif

#include "X11Visual.h"

namespace kivgles::window {

namespace {

constexpr std::chrono::milliseconds LONGEST_WAIT_TO_BE_SHOWN{1000};

unsigned int Side(int pixels) { return static_cast<unsigned int>(pixels); }

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

X11Window::X11Window(WindowState& kept)
    : state(kept),
      events(kept.options.server),
      drawing(kept.options.server),
      where(std::string("DISPLAY=") + XDisplayString(events.Get())),
      closing(events.Name("WM_DELETE_WINDOW")) {
    Create();
    Describe();
    if (!HasCompositor(events)) {
        state.Refuse(&WindowOptions::transparent,
                     "no compositor at " + where + ": black where it is transparent");
    }
    AskManager();
    if (state.options.clickThrough) {
        LetClicksThrough();
    }
    Show();
    state.display = {KIV_PLATFORM_X11, drawing.Get()};
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an id, which EGL takes back out of the pointer
    state.native = reinterpret_cast<ANativeWindow*>(window);
    state.descriptor = ConnectionNumber(events.Get());
}

void X11Window::Create() {
    const WindowOptions& options = state.options;
    ::Display* const display = events.Get();
    XVisualInfo visual = options.transparent ? TransparentVisual(display) : XVisualInfo{};
    if (visual.depth == 0) {
        state.Refuse(&WindowOptions::transparent, "no visual at " + where + " for a transparent window");
        visual = OpaqueVisual(drawing.Get());
    }
    const ::Window root = RootWindow(display, visual.screen);
    const Position position = options.position.value_or(Position{});

    // A visual other than the root's needs colours of its own, and a border's. Pixel 0 is black, or
    // transparent.
    XSetWindowAttributes attributes{};
    attributes.colormap = XCreateColormap(display, root, visual.visual, AllocNone);
    attributes.event_mask = StructureNotifyMask | ExposureMask | (options.clickThrough ? 0 : KeyPressMask);
    window = XCreateWindow(display, root, position.x, position.y, Side(options.size.width),
                           Side(options.size.height), 0, visual.depth, InputOutput, visual.visual,
                           CWBackPixel | CWBorderPixel | CWColormap | CWEventMask, &attributes);
    XWindowAttributes made{};
    if (XGetWindowAttributes(display, window, &made) == 0) {
        throw std::runtime_error("the X server at " + where + " refuses the window");
    }
}

// What window managers want to know of a window.
void X11Window::Describe() {
    const WindowOptions& options = state.options;
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

void X11Window::AskManager() {
    WindowOptions& options = state.options;
    ::Display* const display = events.Get();
    const std::vector<Atom> supported = SupportedByManager(events);
    std::vector<unsigned long> wanted;
    const auto ask = [&](bool WindowOptions::*option, const char* name, const char* what) {
        const Atom atom = events.Name(name);
        if (std::find(supported.begin(), supported.end(), atom) == supported.end()) {
            state.Refuse(option, "no window manager at " + where + " that " + what);
        } else if (options.*option) {
            wanted.push_back(atom);
        }
    };
    ask(&WindowOptions::aboveOthers, "_NET_WM_STATE_ABOVE", "keeps windows above others");
    if (!supported.empty()) {
        ask(&WindowOptions::fullScreen, "_NET_WM_STATE_FULLSCREEN", "lets windows fill the screen");
    } else if (options.fullScreen) {
        const int screen = DefaultScreen(display);
        XMoveResizeWindow(display, window, 0, 0, Side(DisplayWidth(display, screen)),
                          Side(DisplayHeight(display, screen)));
    }
    SetProperty(events, window, "_NET_WM_STATE", XA_ATOM, wanted);

    if (supported.empty()) {
        options.decorated = false;  // without a word: few ask for it themselves
    } else if (!options.decorated) {
        // Flags (2: the third field counts), functions, decorations, input mode, status.
        SetProperty(events, window, "_MOTIF_WM_HINTS", events.Name("_MOTIF_WM_HINTS"), {2, 0, 0, 0, 0});
    }
}

void X11Window::LetClicksThrough() {
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
    state.Refuse(&WindowOptions::clickThrough, "no XFixes 2 at " + where + " to let clicks through");
#else
    state.Refuse(&WindowOptions::clickThrough, "this library was built without XFixes to let clicks through");
#endif
}

// Asks whether it is shown, instead of waiting for the event, so that every event stays for who waits for
// them.
void X11Window::Show() {
    using Clock = std::chrono::steady_clock;
    XMapRaised(events.Get(), window);
    const auto end = Clock::now() + LONGEST_WAIT_TO_BE_SHOWN;  // a window manager may keep it back
    XWindowAttributes shown{};
    while (XGetWindowAttributes(events.Get(), window, &shown) != 0 && shown.map_state != IsViewable &&
           Clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    if (events.IsLost()) {
        throw std::runtime_error("the X server at " + where + " went away");
    }
    state.size = {shown.width, shown.height};
}

void X11Window::Resize(const Size& wanted) {
    XResizeWindow(events.Get(), window, Side(wanted.width), Side(wanted.height));
    XFlush(events.Get());
}

void X11Window::Collect() {
    while (state.events.empty() && !events.IsLost() && XPending(events.Get()) > 0) {
        XEvent event;
        XNextEvent(events.Get(), &event);
        Translate(event);
    }
    state.isLost = events.IsLost();
}

void X11Window::Translate(XEvent& event) {
    switch (event.type) {
        case ConfigureNotify: {
            while (XCheckTypedWindowEvent(events.Get(), window, ConfigureNotify, &event) == True) {
            }  // the last one counts
            const Size now{event.xconfigure.width, event.xconfigure.height};
            if (now.width != state.size.width || now.height != state.size.height) {
                state.size = now;
                state.Report(Event::RESIZED);
            }
            break;
        }
        case Expose:
            if (event.xexpose.count == 0) {
                state.Report(Event::EXPOSED);
            }
            break;
        case ClientMessage:
            if (event.xclient.message_type == events.Name("WM_PROTOCOLS") &&
                static_cast<Atom>(event.xclient.data.l[0]) == closing) {
                state.Report(Event::CLOSED);
            }
            break;
        case DestroyNotify:
            state.Report(Event::CLOSED);
            break;
        case MappingNotify:
            XRefreshKeyboardMapping(&event.xmapping);
            break;
        case KeyPress: {
            std::array<char, 32> characters;
            KeySym symbol = NoSymbol;
            XLookupString(&event.xkey, characters.data(), characters.size(), &symbol, nullptr);
            if (const char* const name = XKeysymToString(symbol); name != nullptr) {
                state.Report(Event::KEY, name);
            }
            break;
        }
        default:
            break;
    }
}

}  // namespace kivgles::window
