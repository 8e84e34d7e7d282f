#include "scenarios/Scenario.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include <android/log.h>
#include <gmock/gmock.h>

#include "support/Recorder.h"

namespace kivgles {

namespace {

// Of each window; the last one is the sweep's.
constexpr std::pair<unsigned int, unsigned int> WINDOW_SIZES[] = {{64, 48}, {80, 40}, {64, 48}};
constexpr int BROKE_ITS_WORD = -1;  // in another way than by its code

std::string Size(unsigned int width, unsigned int height) { return Line(", {} x {}", width, height); }

// Line by line, without the one that depends on where a stop finds the thread.
Calls Trace() {
    Calls trace;
    for (const std::string& call : recorder::Log()) {
        std::istringstream lines(call);
        for (std::string line; std::getline(lines, line);) {
            if (!line.empty() && line != "W GLDrawThread: DrawCmd is empty") {
                trace.Add(line);
            }
        }
    }
    return trace;
}

// What came, with the objects of GL, EGL and FreeType under the names that the scenario has for them. The
// line in which an object is made gives it its name: "glGenBuffers(1) = OSDRect's buffer".
class Names {
 public:
    std::string In(std::string came, const std::string& expected) {
        const std::size_t name = expected.find(" = ");
        const std::size_t object = came.find(" = <");
        if (name != std::string::npos && object != std::string::npos) {
            const std::string made = expected.substr(name + 3);
            for (auto& [former, formerName] : names) {
                formerName.insert(0, formerName == made ? "a former " : "");
            }
            names[came.substr(object + 3)] = made;
        }
        for (const auto& [known, knownName] : names) {
            for (std::size_t at = came.find(known); at != std::string::npos; at = came.find(known)) {
                came.replace(at, known.size(), knownName);
            }
        }
        return came;
    }

 private:
    std::map<std::string, std::string> names;  // of objects as the recorder has them
};

}  // namespace

TagKivColorRGBA Components(Color color) {
    const auto component = [color](int shift) { return static_cast<std::uint8_t>(color >> shift); };
    return {component(24), component(16), component(8), component(0)};
}

std::string Hex(Color color) {
    char text[10];
    (void)std::snprintf(text, sizeof(text), "#%08x", color);
    return text;
}

void Calls::Add(const std::string& line) {
    for (std::size_t begin = 0; begin != std::string::npos;) {
        const std::size_t end = line.find("; ", begin);
        lines.push_back(line.substr(begin, end - begin));
        begin = end == std::string::npos ? end : end + 2;
    }
}

Calls Calls::Beginning(const std::string& words) const {
    Calls found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found.lines),
                 [&](const std::string& line) { return line.rfind(words, 0) == 0; });
    return found;
}

std::vector<char16_t> Text::Units() const {
    const std::u16string given = text.value_or(u"");
    const bool isEnded = !length || *length > given.size();
    return {given.c_str(), given.c_str() + given.size() + (isEnded ? 1 : 0)};
}
Text::operator TagKivTextInfo() const {
    const auto has = [this](char letter) { return style.find(letter) != std::string::npos; };
    const auto* const given = text ? units.data() : nullptr;
    const auto claimed = length.value_or(static_cast<std::uint32_t>(text.value_or(u"").size()));
    return {given, claimed, Components(color), Components(background), 0, size, has('b'), has('u'), has('i')};
}

Scenario::Scenario() {
    std::filesystem::current_path(KIVGLES_TEST_FONTS);
    const X11Connection connection = ConnectToX11();
    for (const auto& [width, height] : WINDOW_SIZES) {
        windows.push_back(std::make_unique<X11Window>(width, height, connection));
    }
}

Scenario::Came Scenario::Take(const std::string& name, std::function<int()> does) {
    operation = name;
    run = std::move(does);
    if (!isOver) {
        Perform();
    }
    return {*this};
}

void Scenario::Perform() {
    told.clear();
    recorder::Record(isShown);
    const int result = run();
    came = {std::to_string(result) + told, Trace()};
}

// Layers go with it. The window is connected no longer.
void Scenario::ForgetContext() {
    layers.clear();
    isShown = false;
}

int Scenario::End() {
    ForgetContext();
    return surface->KivDestoryGLContext();
}

unsigned int Scenario::Handle(const Target& target) const {
    const auto layer = layers.find(target.name);
    return isOver                    ? 0  // it may be missing
           : layer != layers.end()   ? layer->second
           : target.name == "window" ? FBO_HANDLE_BASE
                                     : static_cast<unsigned int>(std::stoul(target.name, nullptr, 0));
}

// --- Operations ---

Scenario::Came Scenario::Renew() {
    return Take("renew", [this] {
        surface = std::make_unique<Surface>();
        ForgetContext();
        return 0;
    });
}
Scenario::Came Scenario::Connect(int which) {
    return Take("connect", [=] {
        const auto chosen = static_cast<std::size_t>(which);
        const int code = surface->KivConnectWindowSurface(which < 0 ? nullptr : windows[chosen]->Native());
        isShown = code == 0;
        told = Size(surface->KivGetWindowWidth(), surface->KivGetWindowHeight());
        return code;
    });
}
Scenario::Came Scenario::MakeLayer(const Target& layer, int format) {
    constexpr unsigned int UNTOUCHED = 7;
    return Take("layer", [=] {
        unsigned int handle = UNTOUCHED;
        const int code = surface->KivCreateGLFBO(handle, layer.width, layer.height, format);
        if (code == 0) {
            layers[layer.name] = handle;
        }
        return code == 0 || handle == UNTOUCHED ? code : BROKE_ITS_WORD;
    });
}
Scenario::Came Scenario::Measure(const Text& text) {
    return Take("measure", [=] {
        unsigned int width = 0;
        unsigned int height = 0;
        const int code = surface->KivGetTextSize(text, width, height);
        told = Size(width, height);
        return code;
    });
}
Scenario::Came Scenario::LoseWindow(int which) {
    return Take("lose", [=] {
        windows[static_cast<std::size_t>(which)].reset();
        isShown = false;
        return 0;
    });
}
void Scenario::Fail(const std::string& function, unsigned int result, int nth) {
    failing.insert(function);
    recorder::Fail(function, std::max(nth, 1), nth == ALWAYS, result);
}

// --- Tests ---

void Expect(Scenario&& scenario) {
    __android_log_set_logger([](const __android_log_message*) {});  // a failure says what has to be known
    recorder::Reset();
    Names names;
    int nth = 0;
    scenario.judge = [&](const Step& expected) {
        const std::vector<std::string>& lines = expected.calls.lines;
        std::string wanted = expected.answer;
        for (const std::string& line : lines) {
            wanted += "\n" + line;
        }
        const Calls calls =
            expected.hasErrorsOnly ? scenario.came.calls.Beginning("E ") : scenario.came.calls;
        std::string came = scenario.came.answer;
        for (std::size_t i = 0; i < calls.lines.size(); ++i) {
            came += "\n" + names.In(calls.lines[i], i < lines.size() ? lines[i] : "");
        }
        ++nth;
        EXPECT_EQ(wanted, came) << "operation " << nth << ", " << scenario.operation;
        scenario.isOver = wanted != came;
    };
    scenario.Play();
    scenario.End();
    EXPECT_THAT(recorder::Live(), testing::IsEmpty());
}

}  // namespace kivgles
