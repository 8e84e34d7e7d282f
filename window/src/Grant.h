#ifndef KIVGLES_WINDOW_GRANT_H
#define KIVGLES_WINDOW_GRANT_H

#include <string>
#include <utility>
#include <vector>

#include "kivgles/window/Window.h"

namespace kivgles::window {

// What becomes of a window's options while it is made.
struct Grant {
    WindowOptions options;
    std::vector<std::string> warnings;

    // Takes an option back, if it is set, and says why.
    void Refuse(bool WindowOptions::*option, std::string why) {
        if (options.*option) {
            options.*option = false;
            warnings.push_back(std::move(why));
        }
    }
};

}  // namespace kivgles::window

#endif  // KIVGLES_WINDOW_GRANT_H
