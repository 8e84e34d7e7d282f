// What clients do, and what comes of it, which is as much a promise as the picture: the scenarios beside this
// file, played again.
//
// After a change that is meant: read the difference, and copy the new file over the kept one. The failure
// says where both are.

#include <algorithm>
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

TEST(Scenarios, GoAsKept) {
    int scenarios = 0;
    std::filesystem::create_directory("scenarios");
    for (const auto& entry : std::filesystem::directory_iterator(KIVGLES_TESTS "/scenarios")) {
        const std::filesystem::path keptFile = entry.path();
        if (keptFile.extension() != ".txt") {
            continue;
        }
        ++scenarios;
        SCOPED_TRACE(keptFile);
        const Scenario scenario = ReadScenario(keptFile.stem());
        std::vector<Step> steps;
        Client client;
        recorder::Reset();
        for (const Step& step : scenario.steps) {
            steps.push_back(client.Take(step.command));
        }
        const std::string now = Written(scenario.comment, steps);
        const std::string kept = Written(scenario.comment, scenario.steps);
        const std::filesystem::path file = "scenarios" / keptFile.filename();
        std::ofstream(file) << now;
        const auto difference = std::mismatch(now.begin(), now.end(), kept.begin(), kept.end()).first;
        EXPECT_TRUE(now == kept) << "line " << 1 + std::count(now.begin(), difference, '\n') << ": diff "
                                 << keptFile.string() << " " << std::filesystem::absolute(file).string();
    }
    EXPECT_GT(scenarios, 20);
}

}  // namespace
}  // namespace kivgles
