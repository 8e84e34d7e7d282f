// Trial
//
// A client that does what its input says, an operation a line (tests/support/ScenarioClient.cpp lists them).
// Besides there are
//
//   scenario NAME                    which tells the operations of the scenario
//   begin [FUNCTION NTH [forGood]]   at which the client goes, with all that it has, and comes anew. That
//                                    call fails then, with `forGood` every later one too.
//
// An answer ends with an empty line. That of an operation is what it answers, its trace, after "calls" how
// often each function has been called since it began, after "alive" how many objects of each kind there are.

#include <iostream>
#include <sstream>

#include <android/log.h>
#include <unistd.h>

#include "support/Process.h"
#include "support/Recorder.h"
#include "support/ScenarioClient.h"

namespace {

using namespace kivgles;

void Tell(const Step& step) {
    std::cout << step.answer << '\n';
    for (const TraceLine& line : step.trace) {
        std::cout << line.text << '\n';
    }
    std::cout << "calls";
    for (const auto& [function, count] : recorder::Counts()) {
        std::cout << ' ' << function << ' ' << count;
    }
    std::cout << "\nalive";
    for (const char* kind :
         {"texture", "framebuffer", "buffer", "program", "shader", "context", "surface", "face", "library"}) {
        std::cout << ' ' << kind << ' ' << recorder::LiveNum(kind);
    }
}

void TellOperations(const std::string& scenario) {
    for (const Step& step : ReadScenario(scenario).steps) {
        std::cout << step.command << '\n';
    }
}

void Begin(std::unique_ptr<ScenarioClient>& client, std::istream& fault) {
    static const std::size_t threads = ThreadNum();
    client.reset();
    AwaitThreadNum(threads);
    recorder::Reset();
    Tell({"begin", "0", {}, ""});
    std::cout << " thread " << ThreadNum() << " descriptor " << DescriptorNum() << '\n';
    client = std::make_unique<ScenarioClient>();
    std::string function;
    int nth = 0;
    std::string how;
    if (fault >> function >> nth) {
        fault >> how;
        recorder::Fail(function, nth, how == "forGood");
    }
}

}  // namespace

int main() {
    __android_log_set_logger([](const __android_log_message*) {});  // the trace has them
    std::unique_ptr<ScenarioClient> client;
    for (std::string line; std::getline(std::cin, line); std::cout << '\n') {
        (void)alarm(KIVGLES_TIME_LIMIT);  // what takes as long hangs
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        if (verb == "scenario") {
            words >> verb;
            TellOperations(verb);
        } else if (verb == "begin") {
            Begin(client, words);
        } else {
            Tell(client->Take(line));
            std::cout << '\n';
        }
    }
    return 0;
}
