// What clients do, and what comes of it, which is as much a promise as the picture: the scenarios beside this
// file, played again.
//
// After a change that is meant: read the difference, and copy the new file over the kept one. The failure
// says where both are.

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "support/Recorder.h"
#include "support/Scenario.h"

namespace kivgles {
namespace {

std::string Written(const std::string& comment, const std::vector<Step>& steps) {
    std::string text = comment;
    for (const Step& step : steps) {
        text += "> " + step.command + "\n= " + step.answer + "\n" + step.trace;
    }
    return text;
}

std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(KIVGLES_TESTS "/scenarios")) {
        if (entry.path().extension() == ".txt") {
            names.push_back(entry.path().stem());
        }
    }
    return names;
}

class Scenarios : public testing::TestWithParam<std::string> {};

// Says which step is the first to differ; the steps as they went now are in the file beside.
TEST_P(Scenarios, GoesAsKept) {
    const Scenario scenario = ReadScenario(GetParam());
    std::vector<Step> steps;
    Client client;
    recorder::Reset();
    for (const Step& kept : scenario.steps) {
        steps.push_back(client.Take(kept.command));
    }
    std::filesystem::create_directory("scenarios");
    std::ofstream("scenarios/" + GetParam() + ".txt") << Written(scenario.comment, steps);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        ASSERT_EQ(Written("", {scenario.steps[i]}), Written("", {steps[i]})) << "the first step that differs";
    }
}

INSTANTIATE_TEST_SUITE_P(, Scenarios, testing::ValuesIn(Names()),
                         [](const auto& name) { return name.param; });

}  // namespace
}  // namespace kivgles
