// FaultSweep [every N | SCENARIO FUNCTION NTH once|forGood]
//
// In each scenario, fails each call that may fail, once and from then on for good, each time in a process of
// its own. Only every Nth time, or one time alone with the log shown, when told so.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <numeric>
#include <thread>

#include <android/log.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bounds_checked.h"
#include "faults/Trial.h"
#include "support/Recorder.h"

// The linker sends the library's calls of memcpy_s and malloc here, and ours there.
extern "C" errno_t __real_memcpy_s(void* dest, rsize_t destSize, const void* src, rsize_t count);
extern "C" errno_t __wrap_memcpy_s(void* dest, rsize_t destSize, const void* src, rsize_t count);
errno_t __wrap_memcpy_s(void* dest, rsize_t destSize, const void* src, rsize_t count) {
    return __real_memcpy_s(dest, destSize, recorder::Enter("memcpy_s") ? nullptr : src, count);
}
extern "C" void* __real_malloc(std::size_t size);
extern "C" void* __wrap_malloc(std::size_t size);
void* __wrap_malloc(std::size_t size) { return recorder::Enter("malloc") ? nullptr : __real_malloc(size); }

#ifdef KIVGLES_COVERAGE
extern "C" void __gcov_dump();
#endif

namespace {

using namespace kivgles;

constexpr unsigned int WATCHDOG = 30;  // seconds; a trial takes a tenth of one, with sanitizers one
constexpr std::size_t ENOUGH = 4000;   // injections

struct Injection {
    const Scenario* scenario;
    Fault fault;
};

void Ignore(const __android_log_message*) {}

// The trials end without the exit at which a build that counts branches keeps what it counted.
void KeepCoverage() {
#ifdef KIVGLES_COVERAGE
    __gcov_dump();
#endif
}

// Starts a trial, which the watchdog ends if nothing else does. Its counts of calls go to the file, if any.
pid_t Start(const Injection& injection, int slot, std::FILE* countsFile, bool quiet = true) {
    (void)std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        (void)alarm(WATCHDOG);
        if (quiet) {
            __android_log_set_logger(Ignore);
        }
        std::map<std::string, int> counts;
        const bool well = Try(*injection.scenario, injection.fault, slot, counts);
        for (auto count = counts.begin(); countsFile != nullptr && count != counts.end(); ++count) {
            (void)std::fprintf(countsFile, "%s %d\n", count->first.c_str(), count->second);
        }
        (void)std::fflush(nullptr);
        KeepCoverage();
        _exit(well ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    return child;
}

// Whether all was well in the trial that ended with this status; says so if not.
bool Judge(const Injection& injection, int status) {
    if (WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS) {
        return true;
    }
    const std::string end = !WIFSIGNALED(status)          ? "fails"
                            : WTERMSIG(status) == SIGALRM ? "hangs"
                                                          : strsignal(WTERMSIG(status));
    const Fault& fault = injection.fault;
    std::printf("faults: FaultSweep '%s' '%s' %d %s: %s\n", injection.scenario->name, fault.function.c_str(),
                fault.nth, fault.forGood ? "forGood" : "once", end.c_str());
    return false;
}

// Runs the scenario without a fault, and appends one for good and one not for each call that may fail.
bool AddInjections(const Scenario& scenario, std::vector<Injection>& injections) {
    std::FILE* const counts = std::tmpfile();
    int status = 0;
    (void)waitpid(Start({&scenario, {}}, 0, counts), &status, 0);
    std::rewind(counts);
    char function[64];
    int count = 0;
    while (std::fscanf(counts, "%63s %d", function, &count) == 2) {
        for (int nth = 1;
             IsFallible(function) && function != std::string(scenario.standingFault) && nth <= count; ++nth) {
            injections.push_back({&scenario, {function, nth, false}});
            injections.push_back({&scenario, {function, nth, true}});
        }
    }
    (void)std::fclose(counts);
    return Judge({&scenario, {}}, status);
}

// Returns how many fail. As many run at a time as there are processors.
std::size_t RunAll(const std::vector<Injection>& injections) {
    std::vector<int> freeSlots(std::max(std::thread::hardware_concurrency(), 1U));
    std::iota(freeSlots.begin(), freeSlots.end(), 0);
    std::map<pid_t, std::pair<const Injection*, int>> running;  // with its slot
    std::size_t failures = 0;
    auto next = injections.begin();
    while (next != injections.end() || !running.empty()) {
        if (next != injections.end() && !freeSlots.empty()) {
            running[Start(*next, freeSlots.back(), nullptr)] = {&*next, freeSlots.back()};
            freeSlots.pop_back();
            ++next;
        } else {
            int status = 0;
            const auto ended = running.find(wait(&status));
            const auto [injection, slot] = ended->second;
            failures += Judge(*injection, status) ? 0 : 1;
            freeSlots.push_back(slot);
            running.erase(ended);
        }
    }
    return failures;
}

int Sweep(std::size_t every) {
    std::vector<Injection> all;
    std::size_t failures = 0;
    for (const Scenario& scenario : Scenarios()) {
        failures += AddInjections(scenario, all) ? 0 : 1;
    }
    std::vector<Injection> chosen;
    for (std::size_t i = 0; i < all.size(); i += every) {
        chosen.push_back(all[i]);
    }
    failures += RunAll(chosen);
    std::printf("faults: %zu sites, %zu injections, %zu failures\n", all.size() / 2, chosen.size(), failures);
    return failures == 0 && all.size() >= ENOUGH ? EXIT_SUCCESS : EXIT_FAILURE;
}

int RunOne(const std::string& name, const Fault& fault) {
    for (const Scenario& scenario : Scenarios()) {
        if (scenario.name == name) {
            int status = 0;
            (void)waitpid(Start({&scenario, fault}, 0, nullptr, false), &status, 0);
            return Judge({&scenario, fault}, status) ? EXIT_SUCCESS : EXIT_FAILURE;
        }
    }
    std::fprintf(stderr, "there is no scenario '%s'\n", name.c_str());
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty()) {
        return Sweep(1);
    }
    if (arguments.size() == 2 && arguments[0] == "every") {
        return Sweep(std::max(std::stoul(arguments[1]), 1UL));
    }
    if (arguments.size() == 4) {
        return RunOne(arguments[0], {arguments[1], std::stoi(arguments[2]), arguments[3] == "forGood"});
    }
    std::fprintf(stderr, "usage: %s [every N | SCENARIO FUNCTION NTH once|forGood]\n", argv[0]);
    return 2;
}
