// Trial [--quiet], with lines "SCENARIO [FUNCTION NTH once|forGood]" as its input
//
// For each line, which it repeats after a '#', plays the scenario with that fault, or without, and looks at
// everything in between and afterwards. Prints a line for each effect that the fault has; without a fault,
// for each step what it is, after a '>', and the name and number of calls of each function that the scenario
// itself does not let fail. What is not well begins with '!', and makes it fail.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include <android/log.h>

#include "bounds_checked.h"
#include "support/MostLive.h"
#include "support/Process.h"
#include "support/Recorder.h"
#include "support/ScenarioClient.h"

// The linker sends the library's calls of memcpy_s and malloc here, and ours there.
extern "C" errno_t __real_memcpy_s(void* dest, rsize_t destSize, const void* src, rsize_t count);
extern "C" errno_t __wrap_memcpy_s(void* dest, rsize_t destSize, const void* src, rsize_t count);
errno_t __wrap_memcpy_s(void* dest, rsize_t destSize, const void* src, rsize_t count) {
    return __real_memcpy_s(dest, destSize, recorder::Enter("memcpy_s") ? nullptr : src, count);
}
extern "C" void* __real_malloc(std::size_t size);
extern "C" void* __wrap_malloc(std::size_t size);
void* __wrap_malloc(std::size_t size) { return recorder::Enter("malloc") ? nullptr : __real_malloc(size); }

// The leak sanitizer asks before it looks, where there is one.
static bool mayLeaveMemory = false;
extern "C" int __lsan_is_turned_off();
int __lsan_is_turned_off() { return mayLeaveMemory ? 1 : 0; }

namespace {

using namespace kivgles;

struct Fault {
    std::string function;  // empty: none
    int nth = 0;           // call since the scenario began
    bool forGood = false;  // and every later call
};

bool IsAmong(const std::string& names, const std::string& name) {
    return names.find(name + " ") != std::string::npos;
}

// Whether what failed once stays so, unnoticed, for as long as the renderer or the window lives.
bool Lasts(const std::string& function) {
    return IsAmong("eglQuerySurface glGenBuffers glGetAttribLocation glGetUniformLocation ", function);
}

// Whether objects of this kind, "memory" or the display's threads ("thread"), may be left because the
// function refused to let go of them. Of a context also what it holds.
bool MayLeave(const std::string& function, const std::string& kind) {
    const char* const kinds = function == "eglDestroyContext" ? "context texture buffer framebuffer program "
                              : function == "eglDestroySurface" ? "surface "
                              : function == "eglTerminate"      ? "thread "
                              : function == "FT_Bitmap_Done"    ? "memory "
                              : function == "FT_Done_Face"      ? "face "
                              : function == "FT_Done_FreeType"  ? "library memory "
                                                                : "";
    return IsAmong(kinds, kind);
}

// The lines of a step's trace that begin so: "E " its errors, "y " the rows of the picture that it shows.
std::vector<std::string> Lines(const Step& step, const char* beginning) {
    std::vector<std::string> lines;
    for (const TraceLine& line : step.trace) {
        if (line.text.compare(0, 2, beginning) == 0) {
            lines.push_back(line.text);
        }
    }
    return lines;
}

// What a step does: "bitmap", "bitmap=101" where it is refused, with '!' where it logs a failure.
std::string Name(const Step& kept) {
    const std::vector<std::string> errors = Lines(kept, "E ");
    const bool logsFailure = std::any_of(errors.begin(), errors.end(), [](const std::string& error) {
        return error.find(" fail ") != std::string::npos;
    });
    return kept.Verb() + (kept.Result() == 0 ? "" : "=" + kept.answer) + (logsFailure ? "!" : "");
}

// What the fault has changed, as rules.py reads it. `first` is the call in the step that failed first.
std::string Effect(const Step& kept, const Step& now, const Fault& fault, int first) {
    std::string effect = Name(kept) + " " + fault.function + " " + std::to_string(std::min(first, 3)) + ": ";
    effect += now.answer == kept.answer       ? "as without"
              : now.Result() == kept.Result() ? "another size"
                                              : std::to_string(now.Result());
    const std::vector<std::string> usual = Lines(kept, "E ");
    for (const std::string& error : Lines(now, "E ")) {
        effect += std::count(usual.begin(), usual.end(), error) == 0 ? " | " + error : "";
    }
    return effect;
}

bool Says(const Scenario& scenario, const std::string& words) {
    return std::any_of(scenario.steps.begin(), scenario.steps.end(), [&words](const Step& step) {
        return (step.command + " ").find(words) != std::string::npos;
    });
}

class Trial {
 public:
    Trial(const Scenario& tried, const Fault& injected) : scenario(tried), fault(injected) {}

    bool Run() {
        const std::size_t descriptors = DescriptorNum();
        client.threads += MayLeave(fault.function, "thread") ? 16 : 0;  // waits for none
        recorder::Reset();
        recorder::Fail(fault.function, fault.nth, fault.forGood);
        Play();
        Check(faultCame || fault.function.empty(), "the fault does not come");

        // The same surface or a new one works as if nothing had happened.
        if (fault.forGood) {
            client.surface = std::make_unique<KivGLDrawSurface>();
        } else {
            (void)client.surface->KivDestoryGLContext();  // if the scenario has not
        }
        DrawPicture("afterwards", true);

        client.surface.reset();
        client.layers.clear();
        ExpectNoLeftovers();
        AwaitThreadNum(client.threads);
        Check(ThreadNum() <= client.threads, "threads are left");
        Check(DescriptorNum() <= descriptors, "descriptors are left");
        return allWell;
    }

 private:
    // A client tries again what fails once, and gives up at what fails for good.
    void Play() {
        for (const Step& step : scenario.steps) {
            if (&step == &scenario.steps.back() && CanDrawPicture()) {
                DrawPicture("tried again", false);
            }
            std::map<std::string, int> before = recorder::Counts();
            const int failed = recorder::Failed(fault.function);
            const Step now = Take(step.command);
            if (fault.function.empty()) {
                Survey(step, before);
            }
            if (recorder::Failed(fault.function) == failed) {
                ExpectSame(step, now);
                continue;
            }
            faultCame = true;
            std::printf("%s\n",
                        Effect(step, now, fault, std::max(fault.nth - before[fault.function], 1)).c_str());
            if (now.Result() != step.Result()) {
                if (fault.forGood) {
                    return;
                }
                Retry(step);
            }
        }
    }

    // The calls that a step has made.
    void Survey(const Step& step, std::map<std::string, int>& before) const {
        std::printf("> %s\n", Name(step).c_str());
        for (const auto& [function, count] : recorder::Counts()) {
            if (count != before[function] && !Says(scenario, "fail " + function + " ")) {
                std::printf("%s %d\n", function.c_str(), count - before[function]);
            }
        }
    }

    Step Take(const std::string& next) {
        command = next;
        const Step step = client.Take(command);
        ExpectNoLeftovers();
        return step;
    }

    // Of a step in which nothing fails. What failed before may still show.
    void ExpectSame(const Step& step, const Step& now) {
        const bool mayDiffer = Lasts(fault.function) || fault.function.compare(0, 3, "FT_") == 0;
        const bool same = mayDiffer ? now.Result() == step.Result() : now.answer == step.answer;
        Check(same || (faultCame && step.Verb() == "shows"), "without a fault, answers " + now.answer);
    }

    void Retry(const Step& step) {
        if (step.Verb() == "create") {
            (void)client.surface->KivDestoryGLContext();  // also when there is none
        }
        const Step now = Take(step.command);
        Check(now.Result() == step.Result(), "tried again, answers " + now.answer);
    }

    // In a window of its size, with room for two layers, and what failed once is not in the way.
    bool CanDrawPicture() const {
        const bool fits = client.window != nullptr && client.window == client.windows[0].get();
        return faultCame && !fault.forGood && !Says(scenario, " always ") && !Lasts(fault.function) && fits &&
               client.layers.size() < 14;
    }

    // The fault gone; in a context of its own, on a window that no scenario uses, or in the one that is
    // there.
    void DrawPicture(const std::string& when, bool inNewContext) {
        recorder::Reset();
        for (const Step& step : ReadScenario("picture").steps) {
            const std::string verb = step.Verb();
            if (inNewContext || (verb != "create" && verb != "connect" && verb != "destroy")) {
                const Step now = Take(verb == "connect" ? "connect 2" : step.command);
                Check(
                    now.answer == step.answer && (verb != "refresh" || Lines(now, "y ") == Lines(step, "y ")),
                    when + ", the picture is not drawn");
            }
        }
    }

    // Of each kind of object there are as many as the client's layers and the library's parts need, at any
    // time. Afterwards there are none.
    void ExpectNoLeftovers() {
        const bool alive = client.surface != nullptr;
        for (const char* kind : {"texture", "framebuffer", "buffer", "program", "shader", "context",
                                 "surface", "face", "library"}) {
            const std::size_t live = recorder::LiveNum(kind);
            Check(
                live <= (alive ? MostLive(kind, client.layers.size()) : 0) || MayLeave(fault.function, kind),
                std::to_string(live) + " objects are left: " + kind);
        }
    }

    void Check(bool well, const std::string& complaint) {
        if (!well) {
            std::printf("! %s: %s\n", command.c_str(), complaint.c_str());
            allWell = false;
        }
    }

    const Scenario& scenario;
    const Fault fault;
    ScenarioClient client;
    std::string command;  // at work
    bool faultCame = false;
    bool allWell = true;
};

}  // namespace

int main(int argc, char**) {
    if (argc > 1) {
        __android_log_set_logger([](const __android_log_message*) {});
    }
    (void)std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);  // whoever waits sees where it is
    bool allWell = true;
    for (std::string line; std::getline(std::cin, line);) {
        std::printf("# %s\n", line.c_str());
        std::istringstream words(line);
        std::string scenario;
        std::string how;
        Fault fault;
        words >> scenario >> fault.function >> fault.nth >> how;
        fault.forGood = how == "forGood";
        mayLeaveMemory = mayLeaveMemory || MayLeave(fault.function, "memory");
        const Scenario tried = ReadScenario(scenario);
        allWell = Trial(tried, fault).Run() && allWell;
    }
    return allWell ? EXIT_SUCCESS : EXIT_FAILURE;
}
