#include "support/Scenario.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iomanip>
#include <sstream>
#include <stdexcept>
#include <tuple>

#include "support/Process.h"
#include "support/Recorder.h"

namespace kivgles {

namespace {

constexpr unsigned int WIDTH = 64;  // of the first window, and of layers unless they say otherwise
constexpr unsigned int HEIGHT = 48;
// Of each window; the last one, which no scenario uses, is as large as the first.
constexpr std::pair<unsigned int, unsigned int> WINDOW_SIZES[] = {
    {WIDTH, HEIGHT}, {80, 40}, {72, 56}, {56, 32}, {WIDTH, HEIGHT}};
constexpr int BROKE_ITS_WORD = -1;  // in another way than by its code
constexpr char FOLDER[] = KIVGLES_TESTS "/scenarios/";

// --- Arguments: the words after the verb, read for what they are; those at the end may be missing ---

std::string Word(std::istream& words, const std::string& otherwise = "") {
    std::string word;
    return words >> word ? word : otherwise;
}
unsigned int Number(std::istream& words, unsigned int otherwise = 0) {
    return static_cast<unsigned int>(std::stoul(Word(words, std::to_string(otherwise)), nullptr, 0));
}
// As rrggbbaa.
TagKivColorRGBA Color(std::istream& words, const char* otherwise) {
    const unsigned long bits = std::stoul(Word(words, otherwise), nullptr, 16);
    const auto component = [bits](int shift) { return static_cast<std::uint8_t>(bits >> shift); };
    return {component(24), component(16), component(8), component(0)};
}

int Format(std::istream& words) { return static_cast<int>(Number(words, KIV_COLOR_FORMAT_RGBA8888)); }

TagKivColorRGBA Read(Client&, std::istream& words, TagKivColorRGBA) { return Color(words, "ff0000ff"); }
TagKivRectInfo Read(Client&, std::istream& words, TagKivRectInfo) {
    return {Number(words), Number(words), Number(words), Number(words)};
}
TagKivRoundInfo Read(Client&, std::istream& words, TagKivRoundInfo) {
    return {Number(words), Number(words), Number(words), Number(words)};
}
// A layer, or another number.
unsigned int Read(Client& client, std::istream& words, unsigned int) {
    const std::string word = Word(words);
    const auto layer = client.layers.find(word);
    return layer != client.layers.end() ? layer->second
           : word == "window"           ? FBO_HANDLE_BASE
                                        : static_cast<unsigned int>(std::stoul(word, nullptr, 0));
}
TagKivBlitInfo Read(Client& client, std::istream& words, TagKivBlitInfo) {
    return {Read(client, words, 0U), Read(client, words, 0U), Read(client, words, TagKivRectInfo()),
            Read(client, words, TagKivRectInfo())};
}
// A rectangle, a colour for the first pixel, which the second one has with red and blue exchanged; a size,
// format.
TagKivBitmapInfo Read(Client& client, std::istream& words, TagKivBitmapInfo) {
    const auto rect = Read(client, words, TagKivRectInfo());
    const TagKivColorRGBA color = Color(words, "0000ffff");
    const unsigned int width = Number(words, 2);
    const unsigned int height = Number(words, 1);
    client.pixels = {color, {color.b, color.g, color.r, color.a}};
    return {&client.pixels[0].r, Format(words), 0, 0, width, height, rect};
}
// Of a text in which %XXXX stands for any unit.
std::vector<char16_t> Units(const std::string& text) {
    std::vector<char16_t> units;
    for (std::size_t i = 0; i < text.size(); i += text[i] == '%' ? 5 : 1) {
        const int unit = text[i] == '%' ? std::stoi(text.substr(i + 1, 4), nullptr, 16) : text[i];
        units.push_back(static_cast<char16_t>(unit));
    }
    return units;
}
// Units in quotes, or `null`; size, style of the letters b, i and u, background, foreground; the length that
// it claims. It ends with a 0 unless its length says where.
TagKivTextInfo Read(Client& client, std::istream& words, TagKivTextInfo info) {
    std::string text;
    const bool isNull = (words >> std::ws).peek() != '"';
    words >> std::quoted(text);
    const std::vector<char16_t> units = Units(isNull ? "" : text);
    info.fontSize = Number(words, 40);
    const std::string style = Word(words, "-");
    info.bold = style.find('b') != std::string::npos;
    info.italic = style.find('i') != std::string::npos;
    info.underline = style.find('u') != std::string::npos;
    info.bgColor = Color(words, "808080ff");
    info.fgColor = Color(words, "ffffffff");
    const std::string claimed = Word(words);
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
    std::function<int(Client& client, std::istream& words)> run;
};

// Of an operation, the arguments in their order.
template <typename... Arguments>
Verb Plain(int (KivGLDrawSurface::*operation)(Arguments...), bool isQueued = false) {
    return {isQueued, [operation](Client& client, std::istream& words) {
                const std::tuple<std::decay_t<Arguments>...> arguments{
                    Read(client, words, std::decay_t<Arguments>())...};
                return std::apply(
                    [&](const auto&... each) { return (client.surface.get()->*operation)(each...); },
                    arguments);
            }};
}
template <typename... Arguments>
Verb Queued(int (KivGLDrawSurface::*operation)(Arguments...)) {
    return Plain(operation, true);
}

// Layers go with their context, its draw thread after it.
void EndContext(Client& client) {
    client.layers.clear();
    AwaitThreadNum(client.threads);
}
int Destroy(Client& client, std::istream&) {
    const int code = client.surface->KivDestoryGLContext();
    EndContext(client);
    return code;
}
int Connect(Client& client, std::istream& words) {
    const std::string which = Word(words);
    const X11Window* const window = which == "none" ? nullptr : client.windows.at(std::stoul(which)).get();
    const int code = client.surface->KivConnectWindowSurface(window == nullptr ? nullptr : window->Native());
    client.window = code == 0 ? window : nullptr;
    client.told = Size(client.surface->KivGetWindowWidth(), client.surface->KivGetWindowHeight());
    return code;
}
// Asks the X server, where pictures in the trace are GL's own.
int Shows(Client& client, std::istream& words) {
    const int x = static_cast<int>(Number(words));
    const int y = static_cast<int>(Number(words));
    const unsigned long color = std::stoul(Word(words), nullptr, 16);
    const bool shows = client.window != nullptr && client.window->Shows(color, x, y);
    return shows ? 0 : 1;
}
int LoadFont(Client& client, std::istream& words) {
    const std::filesystem::path file = Word(words);
    return client.surface->KivLoadFont((KIVGLES_TEST_FONTS / file).string(), Number(words, 40));
}
int MakeLayer(Client& client, std::istream& words) {
    constexpr unsigned int UNTOUCHED = 7;
    const std::string name = Word(words);
    const unsigned int width = Number(words, WIDTH);
    const unsigned int height = Number(words, HEIGHT);
    unsigned int handle = UNTOUCHED;
    const int code = client.surface->KivCreateGLFBO(handle, width, height, Format(words));
    if (code == 0) {
        client.layers[name] = handle;
    }
    return code == 0 || handle == UNTOUCHED ? code : BROKE_ITS_WORD;
}
int DropLayer(Client& client, std::istream& words) {
    const std::string name = Word(words);
    std::istringstream nameAlone(name);
    const unsigned int handle = Read(client, nameAlone, 0U);
    client.layers.erase(name);
    return client.surface->KivDestoryGLFBO(handle);
}
int DrawText(Client& client, std::istream& words) {
    const auto handle = Read(client, words, 0U);
    const auto rect = Read(client, words, TagKivRectInfo());
    return client.surface->KivDrawText(handle, Read(client, words, TagKivTextInfo()), rect);
}
int Measure(Client& client, std::istream& words) {
    unsigned int width = 0;
    unsigned int height = 0;
    const int code = client.surface->KivGetTextSize(Read(client, words, TagKivTextInfo()), width, height);
    client.told = Size(width, height);
    return code;
}
int Fail(Client&, std::istream& words) {
    const std::string function = Word(words);
    const unsigned int result = Number(words);
    recorder::Fail(function, 1, Word(words) == "always", result);
    return 0;
}
int Renew(Client& client, std::istream&) {
    client.surface = std::make_unique<KivGLDrawSurface>();
    EndContext(client);
    return 0;
}
int LoseWindow(Client& client, std::istream& words) {
    client.windows[Number(words)].reset();
    client.window = nullptr;
    return 0;
}

const std::map<std::string, Verb> VERBS = {
    {"create", Plain(&KivGLDrawSurface::KivCreateGLContext)},
    {"destroy", {false, Destroy}},
    {"connect", {false, Connect}},                              // WINDOW, a number or `none`
    {"init", Plain(&KivGLDrawSurface::Init)},                   // MASK
    {"font", {false, LoadFont}},                                // FILE [SIZE]
    {"measure", {false, Measure}},                              // TEXT
    {"layer", {false, MakeLayer}},                              // NAME [WIDTH HEIGHT [FORMAT]]
    {"drop", {false, DropLayer}},                               // LAYER
    {"clear", Queued(&KivGLDrawSurface::KivClearGLFBO)},        // LAYER
    {"rect", Queued(&KivGLDrawSurface::KivDrawRect)},           // LAYER RECTANGLE [COLOR]
    {"round", Queued(&KivGLDrawSurface::KivDrawRound)},         // LAYER CENTRE RADII [COLOR]
    {"text", {true, DrawText}},                                 // LAYER RECTANGLE TEXT
    {"bitmap", Plain(&KivGLDrawSurface::KivDrawBitmap)},        // LAYER BITMAP
    {"blend", Plain(&KivGLDrawSurface::KivDrawBitmapByBlend)},  // LAYER BITMAP
    {"show", Plain(&KivGLDrawSurface::KivDisplayBitmap)},       // BITMAP
    {"blit", Queued(&KivGLDrawSurface::KivBlit)},               // LAYER LAYER RECTANGLE RECTANGLE
    {"display", Queued(&KivGLDrawSurface::KivDisplayFBO)},      // LAYER RECTANGLE RECTANGLE
    {"refresh", Queued(&KivGLDrawSurface::KivRefreshOnSrceen)},
    // Around the surface.
    {"shows", {false, Shows}},     // X Y RRGGBB, of the window connected: 0 if it does
    {"new", {false, Renew}},       // surface in place of the former one
    {"lose", {true, LoseWindow}},  // WINDOW, which goes under the surface's hands
    {"fail", {false, Fail}},       // FUNCTION [RESULT [always]]
};

// --- What objects are for, where a driver has numbers of its own ---

std::string Renderer(const Client& client, const std::string& verb, bool isFlat, bool isText) {
    static const std::map<std::string, std::string> ITS_OWN = {
        {"rect", "OSDRect"},   {"round", "OSDRound"}, {"bitmap", "OSDBitmap"}, {"blend", "OSDBitmap"},
        {"show", "OSDBitmap"}, {"blit", "OSDBlit"},   {"display", "OSDFrame"}};
    const auto own = ITS_OWN.find(verb);
    if (own != ITS_OWN.end()) {
        return own->second;
    }
    // A text and what is initialised together: in this order, those that are there already left out.
    const std::vector<std::string> order = isFlat ? std::vector<std::string>{"OSDRect", "OSDRound"}
                                           : isText
                                               ? std::vector<std::string>{"OSDText"}
                                               : std::vector<std::string>{"OSDBlit", "OSDBitmap", "OSDFrame"};
    const auto isNew = [&client](const std::string& renderer) {
        return std::none_of(client.objects.begin(), client.objects.end(),
                            [&](const auto& object) { return object.second == renderer + "'s buffer"; });
    };
    const auto next = std::find_if(order.begin(), order.end(), isNew);
    return next == order.end() ? order.back() : *next;
}

// Reads the calls of one command in their order.
struct Namer {
    Client& client;
    std::string verb;
    std::string layer;     // named in the command
    std::string renderer;  // whose program was made last
    bool isFlat = false;   // the shader seen last
    bool isText = false;
    int faces = 0;

    std::string NameOf(const std::string& kind, const std::string& call) {
        const bool isLayer = verb == "layer";
        if (kind == "program") {
            renderer = Renderer(client, verb, isFlat, isText);
        }
        return kind == "framebuffer" ? "layer " + layer
               : kind == "texture"   ? isLayer          ? "layer " + layer + "'s texture"
                                       : verb == "font" ? "atlas"
                                       : verb == "text" ? "styled atlas"
                                                        : "bitmap's texture"
               : kind == "shader"
                   ? call.find("VERTEX") != std::string::npos ? "vertex shader" : "fragment shader"
               : kind == "surface" ? call.find("Pbuffer") != std::string::npos ? "pbuffer" : "window surface"
               : kind == "program" || kind == "buffer" ? renderer + "'s " + kind
               : kind == "face"                        ? "face " + std::to_string(++faces)
                                                       : kind;
    }
    std::string operator()(std::string call) {
        isFlat = (isFlat && call.find("#version") == std::string::npos) ||
                 call.find("vPosition") != std::string::npos;
        isText = (isText && call.find("#version") == std::string::npos) ||
                 call.find("vec4(1, 1, 1") != std::string::npos;
        const std::size_t made = call.find(" = <");
        if (made != std::string::npos) {
            const std::string object = call.substr(made + 3);
            client.objects[object] = NameOf(object.substr(1, object.find(' ') - 1), call);
        }
        for (const auto& [object, name] : client.objects) {
            for (std::size_t at = call.find(object); at != std::string::npos; at = call.find(object)) {
                call.replace(at, object.size(), name);
            }
        }
        return call;
    }
};

// Without what another machine has otherwise.
std::string Recorded(Client& client, const std::string& command) {
    constexpr std::string_view FONTS = KIVGLES_TEST_FONTS;
    std::istringstream words(command);
    const std::string verb = Word(words);
    Namer named{client, verb, Word(words), ""};
    std::string text;
    for (std::string call : recorder::Calls()) {
        call = named(call);
        const std::size_t path = call.find(FONTS);
        if (path != std::string::npos) {
            call.replace(path, FONTS.size(), "FONTS");
        }
        if (call != "W GLDrawThread: DrawCmd is empty\n") {  // hangs on where a stop finds the thread
            text += call + (call.back() == '\n' ? "" : "\n");
        }
    }
    return text;
}

}  // namespace

Scenario ReadScenario(const std::string& name) {
    Scenario scenario;
    std::ifstream file(FOLDER + name + ".txt");
    for (std::string line; std::getline(file, line);) {
        const bool isStep = line.compare(0, 2, "> ") == 0;
        const bool isAnswer = line.compare(0, 2, "= ") == 0 && !scenario.steps.empty();
        if (isStep) {
            scenario.steps.push_back({line.substr(2), "", ""});
        } else if (isAnswer) {
            scenario.steps.back().answer = line.substr(2);
        } else if (line.find_first_of(">=") == 0) {
            throw std::runtime_error("neither a command nor its answer: " + line);
        } else {
            (scenario.steps.empty() ? scenario.comment : scenario.steps.back().trace) += line + "\n";
        }
    }
    if (scenario.steps.empty()) {
        throw std::runtime_error("no scenario of that name: " + name);
    }
    return scenario;
}

Client::Client() : threads(ThreadNum()) {
    for (const auto& [width, height] : WINDOW_SIZES) {
        windows.push_back(std::make_unique<X11Window>(width, height));
    }
}

Step Client::Take(const std::string& command) {
    if (command == "create") {
        objects.clear();
    }
    std::istringstream words(command.substr(0, command.find('#')));
    const auto named = VERBS.find(Word(words));
    if (named == VERBS.end()) {
        throw std::runtime_error("no such command: " + command);
    }
    const Verb& verb = named->second;
    told.clear();
    recorder::Record(window != nullptr);
    const std::string result = std::to_string(verb.run(*this, words));
    std::fill(units.begin(), units.end(), u'#');  // what is queued has a copy
    if (verb.isQueued) {
        (void)surface->Init(0);  // waits, with a context or without
    }
    return {command, result + told, Recorded(*this, command)};
}

}  // namespace kivgles
