#include "support/Recorder.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <iterator>
#include <mutex>
#include <set>
#include <tuple>

#include <android/log.h>
#include <pthread.h>

#include "support/Interception.h"

namespace recorder {

namespace {

// Kind, the context that a GL name belongs to, name or address.
using Object = std::tuple<std::string, const void*, std::uintptr_t>;

struct State {
    std::mutex mutex;
    std::map<std::string, Function> functions;
    std::vector<std::string> calls;
    std::vector<std::string> log;
    std::set<Object> objects;
};

std::atomic<bool> recording{false};
std::atomic<bool> pictures{false};
thread_local std::size_t callAtWork = 0;  // counted from 1; 0: it is not recorded
thread_local std::string wordsOfGL;       // asked for last

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
            function.count = function.failed = function.failAt = 0;
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
            if (function.count != 0) {
                counts[name] = function.count;
            }
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

int Failed(const std::string& function) { return Find(function).failed; }

bool Enter(const std::string& function) { return Enter(Find(function)); }

std::size_t LiveNum(const std::string& kind) {
    return Locked([&](State& state) {
        const auto isOfKind = [&](const Object& object) {
            return kind.empty() || std::get<0>(object) == kind;
        };
        return static_cast<std::size_t>(std::count_if(state.objects.begin(), state.objects.end(), isOfKind));
    });
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
    const bool fails = failAt != 0 && (nth == failAt || (nth > failAt && function.failForGood));
    if (fails) {
        function.failed.fetch_add(1, std::memory_order_relaxed);
    }
    return fails;
}

bool IsRecording() { return recording.load(std::memory_order_relaxed); }
bool IsRecordingPictures() { return pictures; }

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

void SetLive(const std::string& kind, const void* context, std::uintptr_t id, bool isLive) {
    Locked([&](State& state) {
        isLive ? void(state.objects.insert({kind, context, id}))
               : void(state.objects.erase({kind, context, id}));
    });
}

void SetGone(const void* context) {
    SetLive("context", nullptr, reinterpret_cast<std::uintptr_t>(context), false);
    Locked([context](State& state) {
        for (auto object = state.objects.begin(); object != state.objects.end();) {
            const bool goes = std::get<const void*>(*object) == context;
            object = goes ? state.objects.erase(object) : std::next(object);
        }
    });
}

void Remember(const char* words) { wordsOfGL = words == nullptr ? "" : words; }

}  // namespace recorder

// --- Functions that stand in where nothing is told of the call itself ---

// Tests start threads too.
extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*),
                              void* argument) noexcept {
    static recorder::Function& function = recorder::Find("pthread_create");
    static const auto next = recorder::Next<decltype(pthread_create)>("pthread_create");
    return recorder::Enter(function) ? EAGAIN : next(thread, attributes, body, argument);
}

// Kept, and written as the platform does for whoever reads the output of a test that failed.
int __android_log_print(int priority, const char* tag, const char* format, ...) {
    char text[8192];
    va_list arguments;
    va_start(arguments, format);
    (void)std::vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    const char letter = "??VDIWEF"[priority & 7];
    std::string line = letter + (std::string(" ") + tag) + ": " + text;
    const std::string& words = recorder::wordsOfGL;
    const std::size_t said = words.empty() ? std::string::npos : line.find(words);
    if (said != std::string::npos) {
        line.replace(said, words.size(), "(GL's words)");  // another GL says something else
    }
    recorder::Locked([&](recorder::State& state) {
        state.log.push_back(line);
        if (recorder::recording) {
            state.calls.push_back(line);
        }
    });
    return __android_log_write(priority, tag, text);
}
