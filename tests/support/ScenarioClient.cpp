#include "support/ScenarioClient.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iomanip>
#include <sstream>
#include <stdexcept>
#include <tuple>

#include "support/Recorder.h"

namespace kivgles {

namespace {

constexpr unsigned int WIDTH = 64;  // of the first window, and of layers unless they say otherwise
constexpr unsigned int HEIGHT = 48;
// Of each window; the last one, which no scenario uses, is as large as the first.
constexpr std::pair<unsigned int, unsigned int> WINDOW_SIZES[] = {{WIDTH, HEIGHT}, {80, 40}, {WIDTH, HEIGHT}};
constexpr int BROKE_ITS_WORD = -1;  // in another way than by its code
constexpr int NO_CONTEXT = 102;

// --- Arguments: the words after the verb; those at the end may be missing ---

std::string ReadWord(std::istream& words, const std::string& otherwise = "") {
    std::string word;
    return words >> word ? word : otherwise;
}
unsigned int ReadNumber(std::istream& words, unsigned int otherwise = 0) {
    return static_cast<unsigned int>(std::stoul(ReadWord(words, std::to_string(otherwise)), nullptr, 0));
}
int ReadFormat(std::istream& words) { return static_cast<int>(ReadNumber(words, KIV_COLOR_FORMAT_RGBA8888)); }
// As rrggbbaa.
TagKivColorRGBA ReadColor(std::istream& words, const char* otherwise) {
    const unsigned long bits = std::stoul(ReadWord(words, otherwise), nullptr, 16);
    const auto component = [bits](int shift) { return static_cast<std::uint8_t>(bits >> shift); };
    return {component(24), component(16), component(8), component(0)};
}

// Of operations, which take some of these.
unsigned int ReadMask(ScenarioClient&, std::istream& words) { return ReadNumber(words); }
TagKivColorRGBA ReadShapeColor(ScenarioClient&, std::istream& words) { return ReadColor(words, "ff0000ff"); }
TagKivRectInfo ReadRect(ScenarioClient&, std::istream& words) {
    return {ReadNumber(words), ReadNumber(words), ReadNumber(words), ReadNumber(words)};
}
TagKivRoundInfo ReadRound(ScenarioClient&, std::istream& words) {
    return {ReadNumber(words), ReadNumber(words), ReadNumber(words), ReadNumber(words)};
}
// A layer, or another number.
unsigned int ReadLayer(ScenarioClient& client, std::istream& words) {
    const std::string word = ReadWord(words);
    const auto layer = client.layers.find(word);
    return layer != client.layers.end() ? layer->second
           : word == "window"           ? FBO_HANDLE_BASE
                                        : static_cast<unsigned int>(std::stoul(word, nullptr, 0));
}
TagKivBlitInfo ReadBlit(ScenarioClient& client, std::istream& words) {
    return {ReadLayer(client, words), ReadLayer(client, words), ReadRect(client, words),
            ReadRect(client, words)};
}
// A rectangle, a colour for the first pixel, which the second one has with red and blue exchanged; a size,
// format.
TagKivBitmapInfo ReadBitmap(ScenarioClient& client, std::istream& words) {
    const auto rect = ReadRect(client, words);
    const TagKivColorRGBA color = ReadColor(words, "0000ffff");
    const unsigned int width = ReadNumber(words, 2);
    const unsigned int height = ReadNumber(words, 1);
    client.pixels = {color, {color.b, color.g, color.r, color.a}};
    return {&client.pixels[0].r, ReadFormat(words), 0, 0, width, height, rect};
}
// Of a text in which %XXXX stands for any unit, and *N after the last one makes N of it.
std::vector<char16_t> Units(const std::string& text) {
    std::vector<char16_t> units;
    for (std::size_t i = 0; i < text.size() && text[i] != '*'; i += text[i] == '%' ? 5 : 1) {
        const int unit = text[i] == '%' ? std::stoi(text.substr(i + 1, 4), nullptr, 16) : text[i];
        units.push_back(static_cast<char16_t>(unit));
    }
    const std::size_t times = text.find('*');
    if (times != std::string::npos) {
        units.resize(std::stoul(text.substr(times + 1)), units.back());
    }
    return units;
}
// Units in quotes, or `null`; size, style of the letters b, i and u, background, foreground; the length that
// it claims. It ends with a 0 unless its length says where.
TagKivTextInfo ReadText(ScenarioClient& client, std::istream& words) {
    TagKivTextInfo info{};
    std::string text;
    const bool isNull = (words >> std::ws).peek() != '"';
    words >> std::quoted(text);
    const std::vector<char16_t> units = Units(isNull ? "" : text);
    info.fontSize = ReadNumber(words, 40);
    const std::string style = ReadWord(words, "-");
    info.bold = style.find('b') != std::string::npos;
    info.italic = style.find('i') != std::string::npos;
    info.underline = style.find('u') != std::string::npos;
    info.bgColor = ReadColor(words, "00000000");  // none
    info.fgColor = ReadColor(words, "ffffffff");
    const std::string claimed = ReadWord(words);
    info.textLength = static_cast<std::uint32_t>(claimed.empty() ? units.size() : std::stoul(claimed));
    const bool isEnded = claimed.empty() || info.textLength > units.size();
    client.units = std::vector<char16_t>(units.size() + (isEnded ? 1 : 0));
    std::copy(units.begin(), units.end(), client.units.begin());
    info.text = isNull ? nullptr : client.units.data();
    return info;
}
std::string Size(unsigned int width, unsigned int height) {
    return ", " + std::to_string(width) + " x " + std::to_string(height);
}

// --- Commands ---

struct Verb {
    bool isQueued;
    std::function<int(ScenarioClient& client, std::istream& words)> run;
};

// Of an operation, with a reader for each of its arguments in their order.
template <typename... Arguments, typename... Readers>
Verb Plain(int (KivGLDrawSurface::*operation)(Arguments...), Readers... readers) {
    return {false, [=](ScenarioClient& client, std::istream& words) {
                const std::tuple<std::decay_t<Arguments>...> arguments{readers(client, words)...};
                return std::apply(
                    [&](const auto&... each) { return (client.surface.get()->*operation)(each...); },
                    arguments);
            }};
}
template <typename... Arguments, typename... Readers>
Verb Queued(int (KivGLDrawSurface::*operation)(Arguments...), Readers... readers) {
    return {true, Plain(operation, readers...).run};
}

// Layers go with their context. The window is connected no longer.
void EndContext(ScenarioClient& client) {
    client.layers.clear();
    client.window = nullptr;
}
int Destroy(ScenarioClient& client, std::istream&) {
    const int code = client.surface->KivDestoryGLContext();
    EndContext(client);
    return code;
}
int Connect(ScenarioClient& client, std::istream& words) {
    const std::string which = ReadWord(words);
    const X11Window* const window = which == "none" ? nullptr : client.windows.at(std::stoul(which)).get();
    const int code = client.surface->KivConnectWindowSurface(window == nullptr ? nullptr : window->Native());
    client.window = code == 0 ? window : nullptr;
    client.told = Size(client.surface->KivGetWindowWidth(), client.surface->KivGetWindowHeight());
    return code;
}
// Asks the X server, where pictures in the trace are GL's own.
int Shows(ScenarioClient& client, std::istream& words) {
    const int x = static_cast<int>(ReadNumber(words));
    const int y = static_cast<int>(ReadNumber(words));
    const unsigned long color = std::stoul(ReadWord(words), nullptr, 16);
    const bool shows = client.window != nullptr && client.window->Shows(color, x, y);
    return shows ? 0 : 1;
}
int LoadFont(ScenarioClient& client, std::istream& words) {
    const std::filesystem::path file = ReadWord(words);
    return client.surface->KivLoadFont((KIVGLES_TEST_FONTS / file).string(), ReadNumber(words, 40));
}
int MakeLayer(ScenarioClient& client, std::istream& words) {
    constexpr unsigned int UNTOUCHED = 7;
    const std::string name = ReadWord(words);
    const unsigned int width = ReadNumber(words, WIDTH);
    const unsigned int height = ReadNumber(words, HEIGHT);
    unsigned int handle = UNTOUCHED;
    const int code = client.surface->KivCreateGLFBO(handle, width, height, ReadFormat(words));
    if (code == 0) {
        client.layers[name] = handle;
    }
    return code == 0 || handle == UNTOUCHED ? code : BROKE_ITS_WORD;
}
int DropLayer(ScenarioClient& client, std::istream& words) {
    const std::string name = ReadWord(words);
    std::istringstream nameAlone(name);
    const unsigned int handle = ReadLayer(client, nameAlone);
    client.layers.erase(name);
    return client.surface->KivDestoryGLFBO(handle);
}
int DrawText(ScenarioClient& client, std::istream& words) {
    const auto handle = ReadLayer(client, words);
    const auto rect = ReadRect(client, words);
    return client.surface->KivDrawText(handle, ReadText(client, words), rect);
}
int Measure(ScenarioClient& client, std::istream& words) {
    unsigned int width = 0;
    unsigned int height = 0;
    const int code = client.surface->KivGetTextSize(ReadText(client, words), width, height);
    client.told = Size(width, height);
    return code;
}
int Fail(ScenarioClient&, std::istream& words) {
    const std::string function = ReadWord(words);
    const unsigned int result = ReadNumber(words);
    const std::string which = ReadWord(words, "1");
    const bool isForGood = which == "always";
    recorder::Fail(function, isForGood ? 1 : std::stoi(which), isForGood, result);
    return 0;
}
int Renew(ScenarioClient& client, std::istream&) {
    client.surface = std::make_unique<KivGLDrawSurface>();
    EndContext(client);
    return 0;
}
int LoseWindow(ScenarioClient& client, std::istream& words) {
    client.windows[ReadNumber(words)].reset();
    client.window = nullptr;
    return 0;
}

using Surface = KivGLDrawSurface;
// Those without readers here take what stands behind them, in brackets what may be missing.
const std::map<std::string, Verb> VERBS = {
    {"create", Plain(&Surface::KivCreateGLContext)},
    {"destroy", {false, Destroy}},
    {"connect", {false, Connect}},  // WINDOW, a number or `none`
    {"init", Plain(&Surface::Init, ReadMask)},
    {"font", {false, LoadFont}},    // FILE [SIZE]
    {"measure", {false, Measure}},  // TEXT
    {"layer", {false, MakeLayer}},  // NAME [WIDTH HEIGHT [FORMAT]]
    {"drop", {false, DropLayer}},   // LAYER
    {"clear", Queued(&Surface::KivClearGLFBO, ReadLayer)},
    {"rect", Queued(&Surface::KivDrawRect, ReadLayer, ReadRect, ReadShapeColor)},
    {"round", Queued(&Surface::KivDrawRound, ReadLayer, ReadRound, ReadShapeColor)},
    {"text", {true, DrawText}},  // LAYER RECTANGLE TEXT
    {"bitmap", Plain(&Surface::KivDrawBitmap, ReadLayer, ReadBitmap)},
    {"blend", Plain(&Surface::KivDrawBitmapByBlend, ReadLayer, ReadBitmap)},
    {"show", Plain(&Surface::KivDisplayBitmap, ReadBitmap)},
    {"blit", Queued(&Surface::KivBlit, ReadBlit)},
    {"display", Queued(&Surface::KivDisplayFBO, ReadLayer, ReadRect, ReadRect)},
    {"refresh", Queued(&Surface::KivRefreshOnSrceen)},
    // Around the surface.
    {"shows", {false, Shows}},     // X Y RRGGBB, of the window connected: 0 if it does
    {"new", {false, Renew}},       // surface in place of the former one
    {"lose", {true, LoseWindow}},  // WINDOW, which goes under the surface's hands
    {"fail", {false, Fail}},       // FUNCTION [RESULT [`always` or WHICH of its next calls]]
};

// Line by line, without what another machine has otherwise.
std::vector<TraceLine> Trace() {
    constexpr std::string_view FONTS = KIVGLES_TEST_FONTS;
    std::vector<TraceLine> trace;
    for (const std::string& call : recorder::Calls()) {
        std::istringstream lines(call);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t path = line.find(FONTS);
            if (path != std::string::npos) {
                line.replace(path, FONTS.size(), "FONTS");
            }
            // Whether that is logged depends on where a stop finds the thread.
            if (!line.empty() && line != "W GLDrawThread: DrawCmd is empty") {
                trace.push_back({line, ""});
            }
        }
    }
    return trace;
}

}  // namespace

ScenarioClient::ScenarioClient() {
    for (const auto& [width, height] : WINDOW_SIZES) {
        windows.push_back(std::make_unique<X11Window>(width, height));
    }
}

Step ScenarioClient::Take(const std::string& command) {
    std::istringstream words(command);
    const auto named = VERBS.find(ReadWord(words));
    if (named == VERBS.end()) {
        throw std::runtime_error("no such command: " + command);
    }
    const Verb& verb = named->second;
    told.clear();
    recorder::Record(window != nullptr);
    const int result = verb.run(*this, words);
    std::fill(units.begin(), units.end(), u'#');  // what is queued has a copy
    if (verb.isQueued && result != NO_CONTEXT) {
        (void)surface->Init(0);  // waits
    }
    return {command, std::to_string(result) + told, Trace(), ""};
}

}  // namespace kivgles
