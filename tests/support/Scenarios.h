#ifndef KIVGLES_TESTS_SUPPORT_SCENARIOS_H
#define KIVGLES_TESTS_SUPPORT_SCENARIOS_H

// What clients do, one public operation a step, and a picture that a surface draws when nothing fails.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Target.h"

namespace kivgles {

// What a step asks for, one bit each.
enum Operation : unsigned int {
    CREATE = 1,
    CONNECT = 2,
    INIT = 4,
    FONT = 8,
    LAYER = 16,  // made or destroyed
    BITMAP = 32,
    MEASURE = 64,
    DRAW = 128,  // everything that is queued
    DESTROY = 256,
    EVERY = 511
};

// Used by one thread. Clients of different slots have their windows beside each other.
struct Client {
    explicit Client(int slot);

    std::unique_ptr<KivGLDrawSurface> surface = std::make_unique<KivGLDrawSurface>();
    std::vector<std::unique_ptr<X11Window>> windows;  // no scenario uses the last one
    std::size_t threads;                              // of the process, without a draw thread
    const X11Window* connected = nullptr;
    std::vector<unsigned int> layers;
    unsigned int width = 0, height = 0;  // of the text measured last
};

struct Step {
    Operation operation;
    std::function<int(Client&)> run;  // returns the result code
    int result = 0;                   // without a fault
    bool complains = false;           // logs errors of its own without a fault

    // What it asks for is done when this returns, also what is queued and the end of the draw thread.
    int Take(Client& client) const;
};

struct Scenario {
    const char* name;
    const char* standingFault;  // a function that fails in every run; empty: none
    unsigned int standingResult;
    std::vector<Step> steps;  // to DESTROY
};

const std::vector<Scenario>& Scenarios();

// Draws with every renderer in a surface connected to `window`, and looks at it there. Returns what is wrong.
std::string DrawPicture(KivGLDrawSurface& surface, const X11Window& window);

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SUPPORT_SCENARIOS_H
