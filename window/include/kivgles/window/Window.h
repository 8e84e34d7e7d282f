#ifndef KIVGLES_WINDOW_WINDOW_H
#define KIVGLES_WINDOW_WINDOW_H

/// @file
/// A window on X11 or Wayland, for programs that have none yet.

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kivgles/KivDisplay.h"

struct ANativeWindow;

namespace kivgles::window {

class Window;

/// The window system that a window is made on.
enum class System {
    ANY,     ///< Wayland if WAYLAND_DISPLAY is set, else X11; of a library with one of them, that one.
    X11,     ///< An X server.
    WAYLAND  ///< A Wayland compositor.
};

/// The inside of a window, in pixels.
struct Size {
    int width = 0;   ///< From left to right.
    int height = 0;  ///< From top to bottom.
};

/// The top-left corner of a window on its screen, in pixels.
struct Position {
    int x = 0;  ///< From the screen's left side.
    int y = 0;  ///< From the screen's top side.
};

/// What a window is to be. Window::Granted says what became of it.
struct WindowOptions {
    std::string title = {};  ///< UTF-8.
    Size size{800, 450};     ///< 1 to 32767 each. Whoever places windows may choose another one.
    std::optional<Position> position = {};  ///< Where; empty: whoever places windows chooses.
    bool transparent = false;   ///< What is behind shows through pixels that are not opaque (premultiplied).
    bool clickThrough = false;  ///< Pointer and touch go to what is behind, whoever the keyboard is with.
    bool aboveOthers = false;   ///< Stays above other windows.
    bool decorated = true;      ///< Has a title bar and a frame.
    bool fullScreen = false;    ///< Fills the screen.
    System system = System::ANY;  ///< Where it is made.
    std::string server = {};      ///< As DISPLAY or WAYLAND_DISPLAY would name it; empty: as they do.
};

/// Something that happened to a window.
struct Event {
    /// What it was.
    enum Type {
        NONE,     ///< Nothing within the time.
        RESIZED,  ///< The window has another size: Window::Size, the last of several. Drawing starts anew.
        EXPOSED,  ///< The window lost what it showed (it was covered, say): show it again. X11 only.
        CLOSED,   ///< The user wants it closed, or the window or its server is gone: destroy the object.
        KEY       ///< A key was pressed, `key` says which one. Repeats come as the window system sends them.
                  ///< On X11 without a window manager keys go to the window under the pointer.
    };

    Type type = NONE;          ///< What happened.
    Window* window = nullptr;  ///< To which window; null with NONE.
    std::string key = {};      ///< The key's symbol by X's name for it: "a", "A", "Left", "Return", "F1".
};

/// Waits without an end.
constexpr std::chrono::milliseconds FOREVER = std::chrono::milliseconds::max();

/// A window with a connection of its own to its window system, on which others draw.
///
/// Xlib has a Window too: beside its header write kivgles::window::Window.
///
/// @code
/// kivgles::window::WindowOptions options{"Volume", {640, 200}};
/// options.transparent = options.clickThrough = true;
/// kivgles::window::Window window(options);
/// kivgles::kit::Screen screen(window.Display());
/// screen.Connect(window.Native());
/// while (window.Wait().type != kivgles::window::Event::CLOSED) {
///     screen.Refresh();
/// }
/// @endcode
///
/// Owner: the client. What draws on the window (a surface, a screen of the kit) ends before it does.
///
/// Threads: one at a time for each window. Different windows have nothing in common: each may have a thread,
/// or one thread waits for several. Drawing goes on in its own thread meanwhile.
///
/// When the server dies, the window reports CLOSED, every time that it is asked, and the program goes on. On
/// X11 this takes XSetIOErrorHandler: the handler that the first window puts in place passes all connections
/// but the library's on to the former one. A program that sets one afterwards passes the library's on to it.
class __attribute__((visibility("default"))) Window {
 public:
    /// Returns when the window is there to be drawn on: on the screen, unless whoever places windows keeps it
    /// back.
    /// @param options What it is to be. What the window system does not offer is left out: see Granted.
    /// @throws std::runtime_error There is no server, or it refuses the window; what() says what and where.
    /// @throws std::invalid_argument The size is not one.
    explicit Window(const WindowOptions& options);

    /// Takes the window off the screen.
    ~Window();

    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// The connection, for KivCreateGLContextOn or the kit's Screen.
    /// @return The window's own, all its life.
    TagKivDisplayInfo Display() const;

    /// The window, for KivConnectWindowSurface or the kit's Screen.
    /// @return The same one all its life.
    ANativeWindow* Native() const;

    /// The size as of the last event that was reported.
    /// @return Pixels.
    window::Size Size() const;

    /// Asks for another size. Whoever places windows may refuse; RESIZED reports it.
    /// @param size 1 to 32767 each.
    /// @throws std::invalid_argument The size is not one.
    void Resize(const window::Size& size);

    /// The options that hold.
    /// @return What the window system did not offer is not set, `system` is the one in use, and `size` is the
    ///     first one.
    const WindowOptions& Granted() const;

    /// What does not hold, for a log.
    /// @return A sentence for each such option but `decorated`: what is missing, and where.
    const std::vector<std::string>& Warnings() const;

    /// WaitForAny of this window alone.
    /// @param timeout How long at most.
    /// @return The event.
    Event Wait(std::chrono::milliseconds timeout = FOREVER);

    /// Waits for the next event of any of several windows.
    /// @param windows Which; the first ones are asked first, and nulls left out. Of none there is no event.
    /// @param timeout How long at most; 0: only takes what is there.
    /// @return Event::window says whose it is; NONE if there was none within that time.
    static Event WaitForAny(const std::vector<Window*>& windows, std::chrono::milliseconds timeout = FOREVER);

    /// For a loop of the client's own: readable (POLLIN) when something may have come for the window. Before
    /// it is waited on, everything that came is taken by Wait(0 ms), until that gives NONE.
    ///
    /// On Wayland a frame that is shown reads too, and sets aside what is the window's: there Wait(0 ms) also
    /// follows each frame.
    /// @return The window's, not to be closed; the same one all its life.
    int Descriptor() const;

 private:
    struct Impl;

    std::unique_ptr<Impl> impl;
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_WINDOW_H
