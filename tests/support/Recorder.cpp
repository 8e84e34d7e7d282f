#include "support/Recorder.h"

#include <algorithm>
#include <cstdarg>
#include <iterator>
#include <mutex>
#include <numeric>
#include <set>

#include <android/log.h>

namespace recorder {

namespace {

struct State {
    std::mutex mutex;
    std::map<std::string, Function> functions;
    std::vector<std::string> calls;
    std::vector<std::string> log;
    std::map<std::string, std::set<std::uintptr_t>> objects;  // by kind
};

std::atomic<bool> recording{false};
std::atomic<bool> pictures{false};
std::atomic<int> maxTextureSize{0};
thread_local std::size_t callAtWork = 0;  // counted from 1; 0: it is not recorded

// Never destroyed: a draw thread may outlive main.
State& TheState() {
    static State& state = *new State;
    return state;
}

template <typename What>
decltype(auto) Locked(const What& what) {
    State& state = TheState();
    const std::lock_guard<std::mutex> lock(state.mutex);
    return what(state);
}

}  // namespace

// --- For tests ---

void Reset() {
    recording = pictures = false;
    Locked([](State& state) {
        for (auto& [name, function] : state.functions) {
            function.count = function.failAt = 0;
        }
        state.calls.clear();
        state.log.clear();
    });
}

void Record(bool withPictures) {
    Locked([](State& state) { state.calls.clear(); });
    recording = true;
    pictures = withPictures;
}

std::vector<std::string> Calls() {
    return Locked([](State& state) { return state.calls; });
}

std::map<std::string, int> Counts() {
    return Locked([](State& state) {
        std::map<std::string, int> counts;
        for (const auto& [name, function] : state.functions) {
            counts[name] = function.count;
        }
        return counts;
    });
}

void Fail(const std::string& function, int nth, bool forGood, unsigned int result) {
    Function& found = Find(function);
    found.failForGood = forGood;
    found.result = result;
    found.failAt = found.count + nth;
}

void StandAlone(int size) {
    Reset();
    maxTextureSize = size;
    lastAnswer = 0;
    Locked([](State& state) { state.objects.clear(); });
}

void Expect(bool holds, const char* finding) {
    if (!holds) {
        std::fprintf(stderr, "FINDING: %s\n", finding);
        std::abort();
    }
}

std::map<std::string, std::size_t> Live() {
    return Locked([](State& state) {
        std::map<std::string, std::size_t> live;
        for (const auto& [kind, objects] : state.objects) {
            live[kind] = objects.size();
        }
        return live;
    });
}

std::size_t LiveNum() {
    const auto live = Live();
    return std::accumulate(live.begin(), live.end(), std::size_t{0},
                           [](std::size_t sum, const auto& kind) { return sum + kind.second; });
}

std::vector<std::string> Log(const std::string& beginning) {
    return Locked([&](State& state) {
        std::vector<std::string> lines;
        std::copy_if(
            state.log.begin(), state.log.end(), std::back_inserter(lines),
            [&](const std::string& line) { return line.compare(0, beginning.size(), beginning) == 0; });
        return lines;
    });
}

// --- For the functions that stand in ---

Function& Find(const std::string& name) {
    return Locked([&](State& state) -> Function& { return state.functions[name]; });
}

bool Enter(Function& function) {
    if (Forwarding::depth != 0) {
        return false;
    }
    const int nth = function.count.fetch_add(1, std::memory_order_relaxed) + 1;
    const int failAt = function.failAt.load(std::memory_order_relaxed);
    return failAt != 0 && (nth == failAt || (nth > failAt && function.failForGood));
}

bool IsRecording() { return recording.load(std::memory_order_relaxed); }
bool IsRecordingPictures() { return pictures; }
int MaxTextureSize() { return maxTextureSize.load(std::memory_order_relaxed); }

void BeginCall(const std::string& text) {
    callAtWork = text.empty()
                     ? 0
                     : Locked([&](State& state) { return state.calls.push_back(text), state.calls.size(); });
}

// Behind the call itself, before the lines that list what it was given.
void AddResult(const std::string& object) {
    Locked([&](State& state) {
        if (callAtWork != 0 && callAtWork <= state.calls.size()) {
            std::string& call = state.calls[callAtWork - 1];
            call.insert(std::min(call.find('\n'), call.size()), " = " + object);
        }
    });
}

void AddLine(const std::string& text) {
    Locked([&](State& state) { state.calls.push_back(text); });
}

void SetLive(const std::string& kind, std::uintptr_t id, bool isLive) {
    Locked([&](State& state) {
        std::set<std::uintptr_t>& objects = state.objects[kind];
        isLive ? void(objects.insert(id)) : void(objects.erase(id));
    });
}

void ForgetAll(std::initializer_list<const char*> kinds) {
    Locked([&](State& state) {
        for (const char* kind : kinds) {
            state.objects[kind].clear();
        }
    });
}

}  // namespace recorder

// Kept, and written as the platform does for whoever reads the output of a test that failed.
int __android_log_print(int priority, const char* tag, const char* format, ...) {
    char text[8192];
    va_list arguments;
    va_start(arguments, format);
    (void)std::vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    const char letter = "??VDIWEF"[priority & 7];
    const std::string line = letter + (std::string(" ") + tag) + ": " + text;
    recorder::Locked([&](recorder::State& state) {
        state.log.push_back(line);
        if (recorder::recording) {
            state.calls.push_back(line);
        }
    });
    return __android_log_write(priority, tag, text);
}
