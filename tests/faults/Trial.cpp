#include "faults/Trial.h"

#include <algorithm>
#include <cstdio>

#include "support/Process.h"
#include "support/Recorder.h"

// The leak sanitizer's, where there is one.
extern "C" int __lsan_do_recoverable_leak_check() __attribute__((weak));

namespace kivgles {

namespace {

using Lines = std::vector<std::string>;

bool Holds(const std::string& line, const char* part) {
    return line.find(*part == '?' ? part + 1 : part) != std::string::npos;
}
bool HoldsAny(const std::string& line, const std::vector<const char*>& parts) {
    return std::any_of(parts.begin(), parts.end(), [&line](const char* part) { return Holds(line, part); });
}

// What is logged as an error though nothing failed.
const std::vector<const char*> CHATTER = {"E EGLManager: GL ", "E FBOManager: Framebuffer complete.",
                                          "is not exit"};

// The first line that holds none of the parts, or nothing.
std::string Unexpected(const Lines& lines, const std::vector<const char*>& parts) {
    const auto found = std::find_if(lines.begin(), lines.end(), [&parts](const std::string& line) {
        return !HoldsAny(line, CHATTER) && !HoldsAny(line, parts);
    });
    return found == lines.end() ? "" : *found;
}

class Trial {
 public:
    Trial(const Scenario& triedScenario, const Fault& injected, int slot)
        : scenario(triedScenario), fault(injected), client(slot) {}
    bool Run(std::map<std::string, int>& counts);

 private:
    void Play();
    int Take(const Step& step, Lines& lines);
    void Retry(const Step& step);
    bool CanDrawPicture() const;
    void ExpectEffect(const Step& step, int first, int result, const Lines& lines);
    std::string Difference(const Step& step, const Effect& effect, int result, const Lines& lines) const;
    void ExpectNoLeftovers();
    void Recover();
    void Check(bool well, const std::string& complaint);

    const Scenario& scenario;
    Fault fault;
    Client client;
    std::size_t stepIndex = 0;
    bool faultCame = false;
    bool allWell = true;
};

bool Trial::Run(std::map<std::string, int>& counts) {
    const std::size_t descriptors = DescriptorNum();
    const std::size_t threads = ThreadNum();
    recorder::Reset();
    recorder::Fail(scenario.standingFault, 1, true, scenario.standingResult);
    recorder::Fail(fault.function, fault.nth, fault.forGood);
    Play();
    counts = recorder::Counts();
    Check(faultCame || fault.function.empty(), "the fault does not come");
    Recover();

    client.surface.reset();
    client.layers.clear();
    ExpectNoLeftovers();
    AwaitThreadNum(threads);
    Check(ThreadNum() <= threads, "threads are left");
    Check(DescriptorNum() <= descriptors, "descriptors are left");
    if (__lsan_do_recoverable_leak_check != nullptr && !MayLeave(fault.function, "memory")) {
        Check(__lsan_do_recoverable_leak_check() == 0, "memory is left");
    }
    return allWell;
}

// A client tries again what fails once, and gives up at what fails for good.
void Trial::Play() {
    for (const Step& step : scenario.steps) {
        ++stepIndex;
        if (&step == &scenario.steps.back() && faultCame && !fault.forGood && CanDrawPicture()) {
            recorder::Reset();
            const std::string wrong = DrawPicture(*client.surface, *client.connected);
            Check(wrong.empty(), "tried again, " + wrong);
        }
        const int before = recorder::Counts()[fault.function];
        const int failed = recorder::Failed(fault.function);
        Lines lines;
        const int result = Take(step, lines);
        if (recorder::Failed(fault.function) == failed) {
            Check(result == step.result, "without a fault, returns " + std::to_string(result));
            Check(!fault.function.empty() || step.result != 0 || step.complains ||
                      Unexpected(lines, {}).empty(),
                  "without a fault, says \"" + Unexpected(lines, {}) + "\"");
            continue;
        }
        faultCame = true;
        ExpectEffect(step, std::max(fault.nth - before, 1), result, lines);
        if (result != step.result) {
            if (fault.forGood) {
                return;
            }
            Retry(step);
        }
    }
}

int Trial::Take(const Step& step, Lines& lines) {
    const std::size_t said = recorder::Log("E ").size();
    const int result = step.Take(client);
    lines = recorder::Log("E ");
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(said));
    ExpectNoLeftovers();
    return result;
}

// With a window, and room for two layers, unless a fault is still in the way.
bool Trial::CanDrawPicture() const {
    return client.connected != nullptr && client.layers.size() < 14 && *scenario.standingFault == '\0' &&
           !Lasts(fault.function);
}

void Trial::Retry(const Step& step) {
    if (step.operation == CREATE) {
        (void)client.surface->KivDestoryGLContext();  // also when there is none
    }
    Lines lines;
    const int result = Take(step, lines);
    Check(result == step.result, "tried again, returns " + std::to_string(result));
}

void Trial::ExpectEffect(const Step& step, int first, int result, const Lines& lines) {
    std::string difference = "has a fault of which no effect is known";
    for (const Effect* const effect : FindEffects(fault, step.operation, first)) {
        difference = Difference(step, *effect, result, lines);
        if (difference.empty()) {
            return;
        }
    }
    Check(false, difference);
}

// Or nothing. An operation that fails anyway may do so by its own failure.
std::string Trial::Difference(const Step& step, const Effect& effect, int result, const Lines& lines) const {
    if (step.result != 0 && result == step.result && effect.code != SAME) {
        return "";
    }
    const int code = effect.code == SAME || step.operation == DRAW ? step.result : effect.code;
    if (result != code) {
        return "returns " + std::to_string(result) + " instead of " + std::to_string(code);
    }
    for (const char* const part : effect.lines) {
        if (*part != '?' && std::none_of(lines.begin(), lines.end(),
                                         [part](const std::string& line) { return Holds(line, part); })) {
            return "does not say \"" + std::string(part) + "\"";
        }
    }
    const std::string unexpected = Unexpected(lines, effect.lines);
    const bool complainsAnyway = step.complains || step.result != 0;
    return unexpected.empty() || complainsAnyway ? "" : "says \"" + unexpected + "\"";
}

// Of each kind of object there are as many as the client's layers and the library's parts need, at any time.
// Afterwards there are none.
void Trial::ExpectNoLeftovers() {
    const bool alive = client.surface != nullptr;
    const std::size_t layers = client.layers.size();
    const std::pair<const char*, std::size_t> limits[] = {
        {"texture", layers + 2}, {"framebuffer", layers}, {"buffer", 6}, {"program", 6}, {"shader", 0},
        {"context", 1},          {"surface", 1},          {"face", 2},   {"library", 1}};
    for (const auto& [kind, limit] : limits) {
        const std::size_t live = recorder::Live(kind).size();
        Check(live <= (alive ? limit : 0) || MayLeave(fault.function, kind),
              std::to_string(live) + " objects are left: " + kind);
    }
}

// The fault gone, the same surface or a new one works as if nothing had happened.
void Trial::Recover() {
    recorder::Reset();
    if (fault.forGood) {
        client.surface = std::make_unique<KivGLDrawSurface>();
    } else {
        (void)client.surface->KivDestoryGLContext();  // if the scenario has not
    }
    const X11Window& window = *client.windows.back();
    Check(client.surface->KivCreateGLContext() == 0, "there is no fresh context");
    Check(client.surface->KivConnectWindowSurface(window.Native()) == 0,
          "no window is connected to a fresh context");
    const std::string wrong = DrawPicture(*client.surface, window);
    Check(wrong.empty(), "afterwards, " + wrong);
}

void Trial::Check(bool well, const std::string& complaint) {
    if (!well) {
        std::printf("faults:   step %zu: %s\n", stepIndex, complaint.c_str());
        allWell = false;
    }
}

}  // namespace

bool Try(const Scenario& scenario, const Fault& fault, int slot, std::map<std::string, int>& counts) {
    return Trial(scenario, fault, slot).Run(counts);
}

}  // namespace kivgles
