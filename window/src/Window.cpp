#include "kivgles/window/Window.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <stdexcept>
#include <variant>

#include <poll.h>

#include "WindowState.h"
#if KIVGLES_WINDOW_X11
#include "X11Window.h"
#endif
#if KIVGLES_WINDOW_WAYLAND
#include "WaylandWindow.h"
#endif

namespace kivgles::window {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int MAX_SIDE = 32767;  // X11's

void CheckSize(const Size& size) {
    const auto isSide = [](int side) { return side >= 1 && side <= MAX_SIDE; };
    if (!isSide(size.width) || !isSide(size.height)) {
        throw std::invalid_argument("a window cannot be " + std::to_string(size.width) + " by " +
                                    std::to_string(size.height) + " pixels");
    }
}

#if KIVGLES_WINDOW_X11 && KIVGLES_WINDOW_WAYLAND
using Backend = std::variant<X11Window, WaylandWindow>;
#elif KIVGLES_WINDOW_X11
using Backend = std::variant<X11Window>;
#else
using Backend = std::variant<WaylandWindow>;
#endif

System Choose(System wanted) {
    const char* const name = std::getenv("WAYLAND_DISPLAY");
    const bool hasCompositor = name != nullptr && *name != '\0';
    const bool isWayland = KIVGLES_WINDOW_WAYLAND && (hasCompositor || !KIVGLES_WINDOW_X11);
    return wanted != System::ANY ? wanted : isWayland ? System::WAYLAND : System::X11;
}

WindowState Begin(const WindowOptions& options) {
    CheckSize(options.size);
    WindowState state;
    state.options = options;
    state.options.system = Choose(options.system);
    return state;
}

Backend Make(WindowState& state) {
#if KIVGLES_WINDOW_WAYLAND
    if (state.options.system == System::WAYLAND) {
        return Backend(std::in_place_type<WaylandWindow>, state);
    }
#endif
#if KIVGLES_WINDOW_X11
    if (state.options.system == System::X11) {
        return Backend(std::in_place_type<X11Window>, state);
    }
#endif
    throw std::runtime_error("this library was built without the window system that is asked for");
}

// For poll: rounded up, so that a wait does not end early and spin; -1 without an end.
int Left(milliseconds timeout, Clock::time_point start) {
    if (timeout == FOREVER) {
        return -1;
    }
    const auto left = (timeout - std::chrono::floor<milliseconds>(Clock::now() - start)).count();
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, INT_MAX));
}

// Without nulls, and without those that are there already: one cannot wait for the same connection twice.
std::vector<Window*> Distinct(const std::vector<Window*>& windows) {
    std::vector<Window*> distinct;
    for (Window* const window : windows) {
        if (window != nullptr && std::find(distinct.begin(), distinct.end(), window) == distinct.end()) {
            distinct.push_back(window);
        }
    }
    return distinct;
}

}  // namespace

struct Window::Impl {
    explicit Impl(const WindowOptions& options) : state(Begin(options)), backend(Make(state)) {}

    template <typename Function>
    auto With(Function function) {
        return std::visit(function, backend);
    }

    Event Take();

    WindowState state;
    Backend backend;
};

// What has come, or NONE.
Event Window::Impl::Take() {
    if (state.events.empty()) {
        With([](auto& system) { system.Collect(); });
    }
    if (state.events.empty()) {
        return {state.isLost ? Event::CLOSED : Event::NONE};
    }
    Event first = std::move(state.events.front());
    state.events.pop_front();
    return first;
}

Window::Window(const WindowOptions& options) : impl(std::make_unique<Impl>(options)) {}

Window::~Window() = default;

TagKivDisplayInfo Window::Display() const { return impl->state.display; }

ANativeWindow* Window::Native() const { return impl->state.native; }

window::Size Window::Size() const { return impl->state.size; }

void Window::Resize(const window::Size& size) {
    CheckSize(size);
    impl->With([&size](auto& system) { system.Resize(size); });
}

const WindowOptions& Window::Granted() const { return impl->state.options; }

const std::vector<std::string>& Window::Warnings() const { return impl->state.warnings; }

int Window::Descriptor() const { return impl->state.descriptor; }

Event Window::Wait(milliseconds timeout) { return WaitForAny({this}, timeout); }

Event Window::WaitForAny(const std::vector<Window*>& windows, milliseconds timeout) {
    const Clock::time_point start = Clock::now();
    const std::vector<Window*> asked = Distinct(windows);
    if (asked.empty() && timeout == FOREVER) {
        return {};
    }
    std::vector<pollfd> sources;
    for (;;) {
        for (Window* const window : asked) {
            Event event = window->impl->Take();
            if (event.type != Event::NONE) {
                event.window = window;
                return event;
            }
        }

        // Each is told before the wait and after it, whichever of them it ends for.
        sources.clear();
        for (Window* const window : asked) {
            if (!window->impl->With([](auto& system) { return system.BeginWait(); })) {
                break;
            }
            sources.push_back({window->Descriptor(), POLLIN, 0});
        }
        const bool all = sources.size() == asked.size();
        const int ready = poll(sources.data(), sources.size(), all ? Left(timeout, start) : 0);
        for (std::size_t i = 0; i < sources.size(); ++i) {
            const bool readable = ready > 0 && sources[i].revents != 0;
            asked[i]->impl->With([readable](auto& system) { system.EndWait(readable); });
        }
        if (all && ready == 0 && Left(timeout, start) == 0) {
            return {};
        }
    }
}

}  // namespace kivgles::window
