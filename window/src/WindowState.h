#ifndef KIVGLES_WINDOW_WINDOWSTATE_H
#define KIVGLES_WINDOW_WINDOWSTATE_H

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "kivgles/window/Window.h"

namespace kivgles::window {

// What a window answers without asking its window system, which fills it in while the window is made and
// keeps size, events and loss up to date.
//
// Owner:  Window.
// Thread: one at a time.
struct WindowState {
    WindowOptions options;  // those that hold
    std::vector<std::string> warnings;
    TagKivDisplayInfo display;
    ANativeWindow* native = nullptr;
    int descriptor = -1;
    Size size;
    std::deque<Event> events;  // that were not asked for yet
    bool isLost = false;       // the connection; no event comes any more

    void Report(Event::Type type, std::string key = {}) { events.push_back({type, nullptr, std::move(key)}); }

    // Takes an option back, if it is set, and says why.
    void Refuse(bool WindowOptions::*option, std::string why) {
        if (options.*option) {
            options.*option = false;
            warnings.push_back(std::move(why));
        }
    }
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_WINDOWSTATE_H
