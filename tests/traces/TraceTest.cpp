// What clients do, as the calls of EGL, GL and FreeType, the log lines and the results that come of it, in
// their order, which is as much a promise as the picture. Compared with the files beside this one.
//
// After a change that is meant: read the difference, and copy the new trace over the kept one. The failure
// says where both are.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/Process.h"
#include "support/Recorder.h"
#include "support/Scenarios.h"

namespace kivgles {
namespace {

// Without what another machine has otherwise.
std::string Portable(std::string line) {
    constexpr std::string_view FONTS = KIVGLES_TEST_FONTS;
    if (line.compare(0, 17, "E EGLManager: GL ") == 0) {
        line.replace(line.find('=') + 2, std::string::npos, "...\n");
    }
    const std::size_t path = line.find(FONTS);
    return path == std::string::npos ? line : line.replace(path, FONTS.size(), "FONTS");
}

std::string Recorded() {
    std::string text;
    for (const std::string& call : recorder::Calls()) {
        if (call != "W GLDrawThread: DrawCmd is empty\n") {  // hangs on where a stop finds the thread
            text += Portable(call);
            text += text.back() == '\n' ? "" : "\n";
        }
    }
    return text;
}

// What a client is told besides.
std::string Answer(const Step& step, const Client& client) {
    const auto size = [](unsigned int width, unsigned int height) {
        return ", " + std::to_string(width) + " x " + std::to_string(height);
    };
    if (step.operation == CONNECT) {
        return size(client.surface->KivGetWindowWidth(), client.surface->KivGetWindowHeight());
    }
    return step.operation == MEASURE ? size(client.width, client.height) : "";
}

std::string Trace(const Scenario& scenario) {
    std::string trace;
    Client client(0);
    recorder::Reset();
    recorder::Fail(scenario.standingFault, 1, true, scenario.standingResult);
    for (std::size_t i = 0; i < scenario.steps.size(); ++i) {
        recorder::Record();
        const std::string result = std::to_string(scenario.steps[i].Take(client));
        trace += "\n--- step " + std::to_string(i + 1) + ": " + result + Answer(scenario.steps[i], client) +
                 "\n" + Recorded();
    }
    recorder::Record();
    client.surface.reset();
    AwaitThreadNum(client.threads);
    return trace + "\n--- destruction\n" + Recorded();
}

TEST(Traces, AreAsKept) {
    std::filesystem::create_directory("traces");
    for (const Scenario& scenario : Scenarios()) {
        std::string file = scenario.name;
        std::replace(file.begin(), file.end(), ' ', '_');
        file = "traces/" + file + ".txt";
        const std::string trace = Trace(scenario);
        std::ofstream(file) << trace;
        std::ifstream keptFile(KIVGLES_TESTS "/" + file);
        const std::string kept{std::istreambuf_iterator<char>(keptFile), {}};
        const auto difference = std::mismatch(trace.begin(), trace.end(), kept.begin(), kept.end()).first;
        EXPECT_TRUE(trace == kept) << "line " << 1 + std::count(trace.begin(), difference, '\n')
                                   << ": diff " KIVGLES_TESTS "/" << file << " "
                                   << std::filesystem::absolute(file).string();
    }
}

}  // namespace
}  // namespace kivgles
