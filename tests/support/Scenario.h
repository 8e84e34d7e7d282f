#ifndef KIVGLES_TESTS_SUPPORT_SCENARIO_H
#define KIVGLES_TESTS_SUPPORT_SCENARIO_H

// What a client does, in a file of tests/scenarios, and what has to come of it: an operation a line, its
// answer if it is not just 0, and behind a colon or below it the calls of EGL, GL and FreeType and the log
// lines, in their order.
//
//   > connect 0 = 0, 64 x 48: ConnectWindow(pbuffer)   # a comment
//   > rect a 4 2 16 12
//     MakeFlatRenderer(OSDRect)
//     FillRectangle(layer a, 64, 48, #ff0000ff, 4 2 20 14)
//
// What is written like a call and has a contract of that name in tests/scenarios/contracts stands for the
// contract's lines with these values in place of {parameters}, and the lines below it for the contract's
// `...`. Everything else is a call or a log line itself; what is listed in a call (attributes, vertices, rows
// of a shader's source) stands in lines of its own below it. An object is called what it is called in the
// line that makes it: `glGenTextures(1) = atlas`. ScenarioClient.cpp lists the operations; `> as in begin`
// stands for those of another scenario.
//
// What is queued is waited for by Init(0), which may add the line that there is no context.

#include <string>
#include <vector>

namespace kivgles {

struct TraceLine {
    std::string text;
    std::string place;  // where it is written: "contracts/drawing.txt:12"
};

struct Step {
    std::string command;
    std::string answer;  // the result code, and what else the client is told: "0, 64 x 48"
    std::vector<TraceLine> trace;
    std::string place;
};

struct Scenario {
    std::vector<Step> steps;
};

std::vector<std::string> ScenarioNames();
Scenario ReadScenario(const std::string& name);  // tests/scenarios/NAME.txt, its contracts written out

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SUPPORT_SCENARIO_H
