#include "kivgles/window/Window.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <stdexcept>

#include <poll.h>

#include "Backend.h"

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

System Choose(System wanted) {
#if !defined(KIVGLES_WINDOW_WAYLAND)
    if (wanted == System::WAYLAND) {
        throw std::runtime_error("this library was built without Wayland");
    }
    return System::X11;
#elif !defined(KIVGLES_WINDOW_X11)
    if (wanted == System::X11) {
        throw std::runtime_error("this library was built without X11");
    }
    return System::WAYLAND;
#else
    if (wanted != System::ANY) {
        return wanted;
    }
    const char* const wayland = std::getenv("WAYLAND_DISPLAY");
    return wayland == nullptr || *wayland == '\0' ? System::X11 : System::WAYLAND;
#endif
}

Grant Begin(const WindowOptions& options) {
    CheckSize(options.size);
    Grant grant{options, {}};
    grant.options.system = Choose(options.system);
    return grant;
}

Backend Make(Grant& grant) {
#ifdef KIVGLES_WINDOW_WAYLAND
    if (grant.options.system == System::WAYLAND) {
        return Backend(std::in_place_type<WaylandWindow>, grant);
    }
#endif
#ifdef KIVGLES_WINDOW_X11
    return Backend(std::in_place_type<X11Window>, grant);
#endif
}

// For poll: rounded up, so that a wait does not end early and spin; -1 without an end.
int Left(milliseconds timeout, Clock::time_point start) {
    if (timeout == FOREVER) {
        return -1;
    }
    const auto left = std::chrono::ceil<milliseconds>(timeout - (Clock::now() - start)).count();
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
    explicit Impl(const WindowOptions& options) : grant(Begin(options)), backend(Make(grant)) {}

    template <typename Function>
    auto With(Function function) {
        return std::visit(function, backend);
    }

    Grant grant;
    Backend backend;
};

Window::Window(const WindowOptions& options) : impl(std::make_unique<Impl>(options)) {}

Window::~Window() = default;

TagKivDisplayInfo Window::Display() const {
    return impl->With([](const auto& backend) { return backend.Display(); });
}

ANativeWindow* Window::Native() const {
    return impl->With([](const auto& backend) { return backend.Native(); });
}

window::Size Window::Size() const {
    return impl->With([](const auto& backend) { return backend.InnerSize(); });
}

void Window::Resize(const window::Size& size) {
    CheckSize(size);
    impl->With([&size](auto& backend) { backend.Resize(size); });
}

const WindowOptions& Window::Granted() const { return impl->grant.options; }

const std::vector<std::string>& Window::Warnings() const { return impl->grant.warnings; }

int Window::Descriptor() const {
    return impl->With([](const auto& backend) { return backend.Descriptor(); });
}

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
            Event event = window->impl->With([](auto& backend) { return backend.Take(); });
            if (event.type != Event::NONE) {
                event.window = window;
                return event;
            }
        }

        // Each is told before the wait and after it, whichever of them it ends for.
        sources.clear();
        for (Window* const window : asked) {
            if (!window->impl->With([](auto& backend) { return backend.BeginWait(); })) {
                break;
            }
            sources.push_back({window->Descriptor(), POLLIN, 0});
        }
        const bool all = sources.size() == asked.size();
        const int left = Left(timeout, start);
        const int ready = poll(sources.data(), sources.size(), all ? left : 0);
        for (std::size_t i = 0; i < sources.size(); ++i) {
            const bool readable = ready > 0 && sources[i].revents != 0;
            asked[i]->impl->With([readable](auto& backend) { backend.EndWait(readable); });
        }
        if (all && ready == 0 && left >= 0) {
            return {};
        }
    }
}

}  // namespace kivgles::window
