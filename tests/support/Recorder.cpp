#include "support/Recorder.h"

#include <algorithm>
#include <cstdarg>
#include <iterator>
#include <mutex>

#include <android/log.h>

namespace recorder {

namespace {

struct State {
    std::mutex mutex;
    std::map<std::string, Function> functions;
    std::vector<std::string> lines;
    std::set<std::string> objects;
};

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
        state.lines.clear();
    });
}

void Record(bool withPictures) {
    Locked([](State& state) { state.lines.clear(); });
    recording = true;
    pictures = withPictures;
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

std::set<std::string> Live() {
    return Locked([](State& state) { return state.objects; });
}

std::vector<std::string> Log(const std::string& beginning) {
    return Locked([&](State& state) {
        std::vector<std::string> found;
        std::copy_if(state.lines.begin(), state.lines.end(), std::back_inserter(found),
                     [&](const std::string& line) { return line.rfind(beginning, 0) == 0; });
        return found;
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

void BeginCall(const std::string& text) {
    callAtWork = text.empty() ? 0 : Locked([&](State& state) {
        state.lines.push_back(text);
        return state.lines.size();
    });
}

void AddLine(const std::string& text) {
    Locked([&](State& state) { state.lines.push_back(text); });
}

// Behind the call itself, before the lines that list what it was given.
void AddObject(const std::string& object) {
    Locked([&](State& state) {
        if (object[0] == '<') {
            state.objects.insert(object);
            if (callAtWork != 0 && callAtWork <= state.lines.size()) {
                std::string& call = state.lines[callAtWork - 1];
                call.insert(std::min(call.find('\n'), call.size()), " = " + object);
            }
        }
    });
}

void RemoveObjects(const std::string& beginning) {
    Locked([&](State& state) {
        for (auto object = state.objects.begin(); object != state.objects.end();) {
            object = object->rfind(beginning, 0) == 0 ? state.objects.erase(object) : std::next(object);
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
    recorder::AddLine(letter + (std::string(" ") + tag) + ": " + text);
    return __android_log_write(priority, tag, text);
}
