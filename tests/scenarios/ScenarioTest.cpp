// Plays scenarios, and compares each call, line and picture.

#include <algorithm>
#include <map>
#include <string>

#include <android/log.h>
#include <gtest/gtest.h>

#include "scenarios/Scenario.h"
#include "support/Recorder.h"

namespace kivgles {
namespace {

// What came, with the objects of GL, EGL and FreeType under the names that the scenario has for them. The
// line in which an object is made gives it its name: "glGenBuffers(1) = OSDRect's buffer".
class Names {
 public:
    std::string In(std::string line) const {
        for (const auto& [object, name] : names) {
            for (std::size_t at = line.find(object); at != std::string::npos; at = line.find(object)) {
                line.replace(at, object.size(), name);
            }
        }
        return line;
    }
    void Learn(const std::string& expected, const std::string& came) {
        const std::size_t name = expected.find(" = ");
        const std::size_t object = came.find(" = <");
        if (name != std::string::npos && object != std::string::npos) {
            const std::string made = expected.substr(name + 3);
            for (auto& [former, formerName] : names) {
                formerName = formerName == made ? "a former " + made : formerName;
            }
            names[came.substr(object + 3)] = made;
        }
    }

 private:
    std::map<std::string, std::string> names;  // of objects as the recorder has them
};

// The first line that differs, or the answer if it does; nothing if all is as it should be.
std::string Difference(const Step& expected, const Step& came, Names& names) {
    std::string difference;
    std::string all;
    const std::vector<std::string>& lines = expected.calls.lines;
    const std::vector<std::string>& raw = came.calls.lines;
    for (std::size_t i = 0; i < std::max(lines.size(), raw.size()); ++i) {
        const std::string line = i < lines.size() ? lines[i] : "nothing more";
        std::string now = "nothing more";
        if (i < raw.size()) {
            names.Learn(line, raw[i]);
            now = names.In(raw[i]);
            all += "\n    " + now;
        }
        if (difference.empty() && now != line) {
            difference = "\n  expected: " + line + "\n  came:     " + now;
        }
    }
    if (came.answer != expected.answer) {
        difference += "\n  expected answer: " + expected.answer + "\n  came:            " + came.answer;
    }
    return difference.empty() ? "" : difference + "\n  all that came:" + all;
}

}  // namespace

void Expect(Scenario&& scenario) {
    __android_log_set_logger([](const __android_log_message*) {});  // a failure says what has to be known
    recorder::Reset();
    Names names;
    int nth = 0;
    scenario.judge = [&](const Step& expected) {
        ++nth;
        const Step came{scenario.came.answer,
                        expected.hasErrorsOnly ? scenario.came.calls.Beginning("E ") : scenario.came.calls};
        const std::string difference = Difference(expected, came, names);
        if (!difference.empty()) {
            ADD_FAILURE() << "operation " << nth << ", " << scenario.operation << difference;
            scenario.isOver = true;
        }
    };
    scenario.Play();
}

}  // namespace kivgles
