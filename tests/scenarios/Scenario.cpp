#include "scenarios/Scenario.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "support/Recorder.h"

namespace kivgles {

namespace {

// Of each window; the last one is the sweep's.
constexpr std::pair<unsigned int, unsigned int> WINDOW_SIZES[] = {{64, 48}, {80, 40}, {64, 48}};
constexpr int BROKE_ITS_WORD = -1;  // in another way than by its code

std::string Size(unsigned int width, unsigned int height) { return Line(", {} x {}", width, height); }

// Its memory is gone when the operation returns, and as long as it says that it is.
struct Text {
    Text(const Scenario::Units& given, unsigned int size, const std::string& style, Color background,
         Color color, Scenario::Length length) {
        const auto has = [&style](char letter) { return style.find(letter) != std::string::npos; };
        const std::u16string text = given.value_or(u"");
        const bool isEnded = !length || *length > text.size();
        units.resize(text.size() + (isEnded ? 1 : 0));
        std::copy(text.begin(), text.end(), units.begin());
        info.text = given ? units.data() : nullptr;
        info.textLength = length.value_or(static_cast<std::uint32_t>(text.size()));
        info.fontSize = size;
        info.bold = has('b');
        info.italic = has('i');
        info.underline = has('u');
        info.bgColor = Components(background);
        info.fgColor = Components(color);
    }

    std::vector<char16_t> units;
    TagKivTextInfo info{};
};

struct Bitmap {
    Bitmap(const TagKivRectInfo& rect, Color color, unsigned int width, unsigned int height,
           int format = KIV_COLOR_FORMAT_RGBA8888)
        : first(Components(color)),
          second{first.b, first.g, first.r, first.a},
          info{&first.r, format, 0, 0, width, height, rect} {}

    TagKivColorRGBA first;
    TagKivColorRGBA second;
    TagKivBitmapInfo info;
};

// Line by line, without what another machine has otherwise.
Calls Trace() {
    constexpr std::string_view FONTS = KIVGLES_TEST_FONTS;
    Calls trace;
    for (const std::string& call : recorder::Calls()) {
        std::istringstream lines(call);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t path = line.find(FONTS);
            if (path != std::string::npos) {
                line.replace(path, FONTS.size(), "FONTS");
            }
            // Whether that is logged depends on where a stop finds the thread.
            if (!line.empty() && line != "W GLDrawThread: DrawCmd is empty") {
                trace.Add(line);
            }
        }
    }
    return trace;
}

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
                 [&](const std::string& line) { return line.compare(0, words.size(), words) == 0; });
    return found;
}

Scenario::Scenario() {
    const X11Connection connection = ConnectToX11();
    for (const auto& [width, height] : WINDOW_SIZES) {
        windows.push_back(std::make_unique<X11Window>(width, height, connection));
    }
}

Scenario::Came Scenario::Take(const std::string& name, std::function<int()> run, bool isQueued) {
    operation = {name, std::move(run), isQueued};
    if (!isOver) {
        Perform();
    }
    return Came(*this);
}

void Scenario::Perform() {
    told.clear();
    recorder::Record(window != nullptr);
    const int result = operation.run();
    if (operation.isQueued && result != NO_CONTEXT) {
        (void)surface->Init(0);
    }
    came = {std::to_string(result) + told, Trace()};
}

void Scenario::Judge(const Step& expected) {
    if (!isOver) {
        judge(expected);
    }
}

// Layers go with it. The window is connected no longer.
void Scenario::ForgetContext() {
    layers.clear();
    window = nullptr;
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
        const X11Window* const chosen =
            which < 0 ? nullptr : windows.at(static_cast<std::size_t>(which)).get();
        const int code = surface->KivConnectWindowSurface(chosen == nullptr ? nullptr : chosen->Native());
        window = code == 0 ? chosen : nullptr;
        told = Size(surface->KivGetWindowWidth(), surface->KivGetWindowHeight());
        return code;
    });
}
Scenario::Came Scenario::LoadFont(const std::string& file, unsigned int size) {
    const std::filesystem::path folder = KIVGLES_TEST_FONTS;
    return Wait("font", &Surface::KivLoadFont, (folder / file).string(), size);
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
Scenario::Came Scenario::Draw(const Target& target, const TagKivRectInfo& rect, Color color,
                              unsigned int width, unsigned int height, int format) {
    return Take("bitmap", [=] {
        return surface->KivDrawBitmap(Handle(target), Bitmap(rect, color, width, height, format).info);
    });
}
Scenario::Came Scenario::Blend(const Target& target, const TagKivRectInfo& rect, Color color,
                               unsigned int width, unsigned int height) {
    return Take("blend", [=] {
        return surface->KivDrawBitmapByBlend(Handle(target), Bitmap(rect, color, width, height).info);
    });
}
Scenario::Came Scenario::Show(const TagKivRectInfo& rect, Color color, unsigned int width,
                              unsigned int height) {
    return Take("show", [=] { return surface->KivDisplayBitmap(Bitmap(rect, color, width, height).info); });
}
Scenario::Came Scenario::Write(const Target& target, const TagKivRectInfo& rect, const Units& units,
                               unsigned int size, const std::string& style, Color background, Color color,
                               Length length) {
    const auto run = [=] {
        const Text text(units, size, style, background, color, length);
        return surface->KivDrawText(Handle(target), text.info, rect);
    };
    return Take("text", run, true);
}
Scenario::Came Scenario::Measure(const Units& units, unsigned int size, const std::string& style,
                                 Length length) {
    return Take("measure", [=] {
        unsigned int width = 0;
        unsigned int height = 0;
        const int code =
            surface->KivGetTextSize(Text(units, size, style, NONE, WHITE, length).info, width, height);
        told = Size(width, height);
        return code;
    });
}
Scenario::Came Scenario::LoseWindow(int which) {
    return Take("lose",
                [=] { return windows[static_cast<std::size_t>(which)].reset(), window = nullptr, 0; });
}
Scenario::Came Scenario::Shows(int x, int y, unsigned long color) {
    return Take("shows", [=] { return !looks || (window != nullptr && window->Shows(color, x, y)) ? 0 : 1; });
}
void Scenario::Fail(const std::string& function, unsigned int result, int nth) {
    failing.insert(function);
    recorder::Fail(function, std::max(nth, 1), nth == ALWAYS, result);
}

}  // namespace kivgles
