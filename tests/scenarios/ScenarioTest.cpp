// What clients do, and what comes of it, which is as much a promise as the picture: the scenarios beside this
// file.

#include <algorithm>
#include <map>
#include <utility>

#include <android/log.h>
#include <gtest/gtest.h>

#include "support/Recorder.h"
#include "support/ScenarioClient.h"

namespace kivgles {
namespace {

// What came, with the objects of GL, EGL and FreeType under the names that the scenario has for them. The
// line in which an object is made gives it its name: "glGenBuffers(1) = OSDRect's buffer".
class Names {
 public:
    std::string In(std::string line) const {
        for (const auto& [object, name] : names) {
            for (std::size_t at = line.find(object); at != std::string::npos;
                 at = line.find(object, at + name.size())) {
                line.replace(at, object.size(), name);
            }
        }
        return line;
    }
    void Learn(const std::string& expected, const std::string& came) {
        const std::size_t name = expected.find(MADE);
        const std::size_t object = came.find(MADE + std::string("<"));
        if (name != std::string::npos && object != std::string::npos) {
            names[came.substr(object + MADE.size())] = expected.substr(name + MADE.size());
        }
    }
    // What is used after the line in which it is deleted has no name.
    void Forget(const std::string& came) {
        const std::size_t object = came.find('<');
        const bool deletes = came.rfind("glDelete", 0) == 0 || came.rfind("eglDestroy", 0) == 0 ||
                             came.rfind("FT_Done_", 0) == 0;
        if (deletes && object != std::string::npos) {
            names.erase(came.substr(object, came.find('>') + 1 - object));
        }
    }

 private:
    static inline const std::string MADE = " = ";
    std::map<std::string, std::string> names;  // of objects as the recorder has them
};

// The first line that differs, or the answer if it does; nothing if all is as it should be.
std::string Difference(const Step& expected, const Step& came, Names& names) {
    std::string difference;
    std::string all;
    const TraceLine end{"nothing more", expected.place};
    for (std::size_t i = 0; i < std::max(expected.trace.size(), came.trace.size()); ++i) {
        const TraceLine& line = i < expected.trace.size() ? expected.trace[i] : end;
        const std::string raw = i < came.trace.size() ? came.trace[i].text : end.text;
        names.Learn(line.text, raw);
        const std::string now = names.In(raw);
        names.Forget(raw);
        if (difference.empty() && now != line.text) {
            difference = "\n  " + line.place + "\n  expected: " + line.text + "\n  came:     " + now;
        }
        all += i < came.trace.size() ? "\n    " + now : "";
    }
    if (came.answer != expected.answer) {
        difference += "\n  expected answer: " + expected.answer + "\n  came:            " + came.answer;
    }
    return difference.empty()
               ? ""
               : expected.place + "> " + expected.command + difference + "\n  all that came:" + all;
}

class ScenarioTest : public testing::Test {
 public:
    explicit ScenarioTest(std::string scenario) : name(std::move(scenario)) {}

 protected:
    static void SetUpTestSuite() {
        __android_log_set_logger([](const __android_log_message*) {});  // a failure says what has to be known
    }
    void TestBody() override;

 private:
    const std::string name;
};

void ScenarioTest::TestBody() {
    const Scenario scenario = ReadScenario(name);
    recorder::Reset();
    ScenarioClient client;
    Names names;
    for (const Step& step : scenario.steps) {
        const std::string difference = Difference(step, client.Take(step.command), names);
        if (!difference.empty()) {
            FAIL() << difference;
        }
    }
}

// Scenarios.texts and so on.
[[maybe_unused]] const bool areRegistered = [] {
    for (const std::string& name : ScenarioNames()) {
        testing::RegisterTest("Scenarios", name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                              [name]() -> ScenarioTest* { return new ScenarioTest(name); });
    }
    return true;
}();

}  // namespace
}  // namespace kivgles
