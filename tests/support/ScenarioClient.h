#ifndef KIVGLES_TESTS_SUPPORT_SCENARIO_CLIENT_H
#define KIVGLES_TESTS_SUPPORT_SCENARIO_CLIENT_H

// Does what a scenario says, with a surface, windows and layers of its own. Layers have names, `window` is
// the window's handle; anything else that stands for a handle is a number.
//
// Used by one thread, beside the recorder.

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Scenario.h"
#include "support/X11Window.h"

namespace kivgles {

struct ScenarioClient {
    ScenarioClient();

    // What the command asks for is done when this returns, also what is queued and the end of a draw thread.
    Step Take(const std::string& command);

    std::unique_ptr<KivGLDrawSurface> surface = std::make_unique<KivGLDrawSurface>();
    std::vector<std::unique_ptr<X11Window>> windows;
    const X11Window* window = nullptr;           // connected, if it is there
    std::map<std::string, unsigned int> layers;  // handles
    std::vector<char16_t> units;                 // of the text at work
    std::array<TagKivColorRGBA, 2> pixels{};     // of the bitmap drawn last
    std::string told;                            // by the operation at work, besides its result
};

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SUPPORT_SCENARIO_CLIENT_H
