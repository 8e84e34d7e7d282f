#ifndef KIVGLES_TESTS_SUPPORT_SCENARIO_H
#define KIVGLES_TESTS_SUPPORT_SCENARIO_H

// What a client does, in a file of tests/scenarios: a public operation a line, and what has come of it.
//
//   > rect back 0 0 16 16 ff0000ff   # a comment
//   = 0
//   glBindFramebuffer(GL_FRAMEBUFFER, layer back)
//
// Scenario.cpp lists the commands. Layers have names, `window` is the window's handle; anything else that
// stands for a handle is a number.

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kivgles/KivGLDrawSurface.h"
#include "support/X11Window.h"

namespace kivgles {

struct Step {
    std::string command;
    std::string answer;  // the result code, and what else the client is told: "0, 64 x 48"
    std::string trace;   // calls of EGL, GL and FreeType, and log lines, in their order

    int Result() const { return std::stoi(answer); }
    std::string Verb() const { return command.substr(0, command.find(' ')); }
};

struct Scenario {
    std::string comment;  // before the first step
    std::vector<Step> steps;
};

// Of tests/scenarios/NAME.txt.
Scenario ReadScenario(const std::string& name);

// Used by one thread, beside the recorder.
struct Client {
    Client();

    // What the command asks for is done when this returns, also what is queued and the end of a draw thread.
    Step Take(const std::string& command);

    std::unique_ptr<KivGLDrawSurface> surface = std::make_unique<KivGLDrawSurface>();
    std::vector<std::unique_ptr<X11Window>> windows;
    const X11Window* window = nullptr;           // connected, if it is there
    std::map<std::string, unsigned int> layers;  // handles
    std::vector<char16_t> units;                 // of the text at work
    std::array<TagKivColorRGBA, 2> pixels{};     // of the bitmap drawn last
    std::map<std::string, std::string> objects;  // of GL, EGL and FreeType: what each is for
    std::string told;                            // by the operation at work, besides its result
    std::size_t threads;                         // of the process, without a draw thread
};

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SUPPORT_SCENARIO_H
