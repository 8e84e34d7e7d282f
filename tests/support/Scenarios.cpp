#include "support/Scenarios.h"

#include <optional>
#include <string_view>

#include "support/Process.h"

namespace kivgles {

namespace {

constexpr int WIDTH = 64;  // of windows and layers
constexpr int HEIGHT = 48;
constexpr int WINDOW_NUM = 5;
constexpr TagKivRectInfo WHOLE{0, 0, WIDTH, HEIGHT};
constexpr TagKivColorRGBA RED{255, 0, 0, 255};
constexpr TagKivColorRGBA GREY{0x80, 0x80, 0x80, 255};
constexpr TagKivColorRGBA WHITE{255, 255, 255, 255};
constexpr TagKivColorRGBA NO_COLOR{0, 0, 0, 0};
constexpr std::uint8_t BLUE[] = {0, 0, 255, 255, 0, 0, 255, 255};
constexpr int BROKE_ITS_WORD = -1;  // in another way than by its code
constexpr int NO_CONTEXT = 102;

TagKivBitmapInfo Bitmap(const TagKivRectInfo& rect) {
    return {BLUE, KIV_COLOR_FORMAT_RGBA8888, 0, 0, 2, 1, rect};
}

struct Style {
    unsigned int size = 40;
    std::uint8_t bold = 0, italic = 0, underline = 0;
    TagKivColorRGBA background = GREY;
};
TagKivTextInfo Text(std::u16string_view text, const Style& style = {}) {
    const auto length = static_cast<std::uint32_t>(text.size());
    return {text.data(), length,     WHITE,           style.background, 0,
            style.size,  style.bold, style.underline, style.italic};
}

std::string Font(const std::string& name) { return KIVGLES_TEST_FONTS "/" + name; }

// An operation on a layer, and its result when the handle names none.
struct LayerOperation {
    Operation operation;
    std::function<int(KivGLDrawSurface&, unsigned int)> run;
    int unknownHandleResult;
};
const LayerOperation LAYER_OPERATIONS[] = {
    {DRAW, [](auto& s, auto handle) { return s.KivClearGLFBO(handle); }, 0},
    {DRAW, [](auto& s, auto handle) { return s.KivDisplayFBO(handle, WHOLE, WHOLE); }, 101},
    {DRAW,
     [](auto& s, auto handle) {
         return s.KivBlit({handle, FBO_HANDLE_BASE, WHOLE, WHOLE});
     },
     1},
    {DRAW,
     [](auto& s, auto handle) {
         return s.KivBlit({FBO_HANDLE_BASE, handle, WHOLE, WHOLE});
     },
     1},
    {DRAW, [](auto& s, auto handle) { return s.KivDrawText(handle, Text(u"A"), WHOLE); }, 1},
    {DRAW, [](auto& s, auto handle) { return s.KivDrawRect(handle, WHOLE, RED); }, 1},
    {DRAW,
     [](auto& s, auto handle) {
         return s.KivDrawRound(handle, {8, 8, 8, 8}, RED);
     },
     1},
    {BITMAP, [](auto& s, auto handle) { return s.KivDrawBitmap(handle, Bitmap(WHOLE)); }, 101},
    {BITMAP, [](auto& s, auto handle) { return s.KivDrawBitmapByBlend(handle, Bitmap(WHOLE)); }, 101},
    {LAYER, [](auto& s, auto handle) { return s.KivDestoryGLFBO(handle); }, 0},
};

// --- Steps ---

Step Draw(const std::function<int(KivGLDrawSurface&, const std::vector<unsigned int>&)>& draw) {
    return {DRAW, [draw](Client& client) { return draw(*client.surface, client.layers); }};
}
Step Put(const std::function<int(KivGLDrawSurface&, unsigned int)>& put) {
    return {BITMAP, [put](Client& client) { return put(*client.surface, client.layers[0]); }};
}
Step DrawText(std::u16string_view text, const Style& style = {}) {
    return Draw([=](auto& s, auto& layers) { return s.KivDrawText(layers[0], Text(text, style), WHOLE); });
}
Step Measure(std::u16string_view text, const Style& style = {}, int result = 0) {
    return {MEASURE,
            [=](Client& client) {
                return client.surface->KivGetTextSize(Text(text, style), client.width, client.height);
            },
            result};
}
Step Init(unsigned int mask, int result = 0) {
    return {INIT, [mask](Client& client) { return client.surface->Init(mask); }, result};
}
Step Load(const std::string& path, int result = 0, unsigned int size = 40) {
    return {FONT, [=](Client& client) { return client.surface->KivLoadFont(path, size); }, result};
}
Step Connect(std::size_t which, int result = 0) {
    return {CONNECT,
            [which](Client& client) {
                const std::uint32_t former = client.surface->KivGetWindowWidth();
                const X11Window* const window = client.windows[which].get();
                const int code = client.surface->KivConnectWindowSurface(window->Native());
                client.connected = code == 0 ? window : nullptr;
                return code == 0 || client.surface->KivGetWindowWidth() == former ? code : BROKE_ITS_WORD;
            },
            result};
}
Step MakeLayer(int result = 0, unsigned int width = WIDTH, unsigned int height = HEIGHT) {
    return {LAYER,
            [=](Client& client) {
                unsigned int handle = 7;
                const int code =
                    client.surface->KivCreateGLFBO(handle, width, height, KIV_COLOR_FORMAT_RGBA8888);
                if (code == 0) {
                    client.layers.push_back(handle);
                }
                return code == 0 || handle == 7 ? code : BROKE_ITS_WORD;
            },
            result};
}
Step DestroyLayer(std::size_t which) {
    return {LAYER, [which](Client& client) { return client.surface->KivDestoryGLFBO(client.layers[which]); }};
}
// The window goes under the surface's hands.
Step Lose(std::size_t which) {
    return {DRAW, [which](Client& client) { return client.windows[which].reset(), 0; }};
}
Step Complaining(Step step, int result = 0) {
    step.complains = true;
    step.result = result;
    return step;
}

using Steps = std::vector<Step>;

// Each operation on a layer of that handle; with one result, or with those for a handle that names none.
Steps OnLayer(const std::function<unsigned int(const Client&)>& handle, std::optional<int> result) {
    Steps steps;
    for (const LayerOperation& on : LAYER_OPERATIONS) {
        const auto run = [on, handle](Client& client) { return on.run(*client.surface, handle(client)); };
        steps.push_back({on.operation, run, result.value_or(on.unknownHandleResult), true});
    }
    return steps;
}

Steps operator+(Steps first, const Steps& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}
Steps operator*(std::size_t times, const Steps& steps) {
    return times == 0 ? Steps() : steps + (times - 1) * steps;
}

// --- What scenarios consist of ---

const Step CREATION = {CREATE, [](Client& client) { return client.surface->KivCreateGLContext(); }};
const Step REFUSED = {CREATE, CREATION.run, 4};
const Step END = {DESTROY, [](Client& client) { return client.surface->KivDestoryGLContext(); }};
const Step REFRESH = Draw([](auto& s, auto&) { return s.KivRefreshOnSrceen(); });
const Step PAINT = Draw([](auto& s, auto&) { return s.KivDrawRect(FBO_HANDLE_BASE, WHOLE, RED); });
const Step NO_WINDOW = {
    CONNECT, [](Client& client) { return client.surface->KivConnectWindowSurface(nullptr); }, 101, true};
const Step NO_LAYER = {LAYER, [](Client& client) { return client.surface->KivDestoryGLFBO(~0U); }, 100, true};
const Steps START = {CREATION, Connect(0), MakeLayer()};
const Steps SHAPES = {Draw([](auto& s, auto& layers) { return s.KivClearGLFBO(layers[0]); }),
                      Draw([](auto& s, auto& layers) {
                          return s.KivDrawRect(layers[0], {4, 2, 16, 12}, {1, 2, 128, 0});
                      }),
                      Draw([](auto& s, auto& layers) {
                          return s.KivDrawRound(layers[0], {24, 8, 8, 4}, RED);
                      }),
                      Put([](auto& s, auto layer) {
                          return s.KivDrawBitmap(layer, Bitmap({32, 12, 16, 6}));
                      }),
                      Put([](auto& s, auto layer) {
                          return s.KivDrawBitmapByBlend(layer, Bitmap({8, 12, 16, 6}));
                      }),
                      Put([](auto& s, auto) {
                          return s.KivDisplayBitmap(Bitmap({16, 6, 32, 12}));
                      }),
                      Draw([](auto& s, auto& layers) {
                          return s.KivBlit({layers[0], layers[1], {4, 6, 8, 24}, {4, 24, 16, 8}});
                      }),
                      Draw([](auto& s, auto& layers) {
                          return s.KivDisplayFBO(layers[1], {0, 12, 16, 24}, {40, 0, 20, 15});
                      }),
                      REFRESH};
const Steps TEXTS = {DrawText(u"AJKM"),
                     DrawText(u"A Lx", {40, 0, 0, 1}),
                     DrawText(u"AMQR", {20, 1, 0, 0}),
                     DrawText(u"JKLA", {30, 0, 1, 1}),
                     DrawText(u"A QxM", {0, 1, 1, 0}),
                     Measure(u"AJKMx"),
                     Measure(u"AJ KM", {24, 1, 1, 0})};
const Steps FONTS = {Load(Font("outlines.otf")),
                     DrawText(u"AJ"),
                     DrawText(u"AJ", {20, 1, 1, 0}),
                     Load(Font("missing.ttf"), 31),
                     DrawText(u"AJ"),
                     Load(Font("bits.bdf")),
                     DrawText(u"AB"),
                     DrawText(u"AB", {40, 1, 0, 0}),
                     Measure(u"AB", {40, 1, 0, 0}),
                     Load("/dev/null", 31),
                     Load("/proc/self/exe", 31),
                     Load(Font("no_characters.ttf"), 32),
                     Load(Font("spaces.ttf"), 32),
                     DrawText(u"A"),
                     Complaining(DrawText(u"  ", {20, 0, 0, 0})),
                     Load(Font("rows.ttf")),
                     DrawText(u"ABG"),
                     Load(Font("space_breaks_row.ttf")),
                     DrawText(u"A B", {0}),
                     Load(Font("bearings.ttf"), 0, 0),
                     Measure(u"AJKM")};
// A texture of 54 pixels holds six of the 26 characters, and is full to its last row.
const Steps ON_DEMAND = {Load(Font("many.ttf"), 0, 36),
                         DrawText(u"\u4E00A"),
                         DrawText(u"AB"),
                         DrawText(u"AYZ"),
                         DrawText(u"XYZ", {30, 1, 0, 1}),
                         Measure(u"AZ"),
                         Measure(u"AZ", {30, 0, 1, 0})};
// A text is drawn to 127 units, and measured whole.
const std::u16string LONG(200, u'A');
const std::u16string_view NONE;
const Steps ODD_TEXTS = {Load(Font("bearings.ttf")),
                         DrawText(LONG),
                         Measure(LONG),
                         DrawText(u""),
                         Measure(u""),
                         Complaining(DrawText(NONE, {40, 0, 0, 0, NO_COLOR})),
                         Measure(NONE),
                         Complaining(DrawText(NONE, {20, 0, 0, 0, NO_COLOR})),
                         Measure(NONE, {20}),
                         Complaining(DrawText(u"A\xDC00")),  // half a pair
                         DrawText(u"A", {40, 0, 1, 0, NO_COLOR}),
                         DrawText(u"A", {40, 0, 0, 0, NO_COLOR}),
                         DrawText(u"A", {40, 0, 0, 1, WHITE}),  // the text's own colour
                         DrawText(u"A", {40, 0, 0, 0, {255, 255, 255, 254}}),
                         DrawText(u"A", {40, 0, 0, 0, {255, 255, 254, 255}})};
const auto anyHandle = [](auto&) { return FBO_HANDLE_BASE + 1; };
const auto strayHandle = [](auto&) { return FBO_HANDLE_BASE + 9; };
const auto ownHandle = [](auto& client) { return client.layers[0]; };
const Steps REFUSALS =
    OnLayer(anyHandle, NO_CONTEXT) + Steps{Connect(0, NO_CONTEXT),        Init(0x7F, NO_CONTEXT),
                                           Load("", NO_CONTEXT),          MakeLayer(NO_CONTEXT),
                                           Measure(u"A", {}, NO_CONTEXT), Complaining(REFRESH, NO_CONTEXT),
                                           Complaining(END, NO_CONTEXT)};

}  // namespace

int Step::Take(Client& client) const {
    const int taken = run(client);
    if (operation == DRAW) {
        (void)client.surface->Init(0);  // waits, with a context or without
    } else if (operation == DESTROY) {
        AwaitThreadNum(client.threads);
    }
    return taken;
}

Client::Client(int slot) : threads(ThreadNum()) {
    for (int i = 0; i < WINDOW_NUM; ++i) {
        windows.push_back(std::make_unique<X11Window>(WIDTH, HEIGHT, i * WIDTH, slot * HEIGHT));
    }
}

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> SCENARIOS = {
        {"life", "", 0, {CREATION, Init(0x7F), END, CREATION, Init(ENABLE_RECT), END}},
        {"windows", "", 0,
         START + Steps{PAINT, REFRESH, Connect(1), PAINT, REFRESH, Lose(0), Connect(2), REFRESH, Connect(2),
                       Lose(2), REFRESH, Connect(3), REFRESH, END}},
        {"layers", "", 0,
         START + 14 * Steps{MakeLayer()} + Steps{MakeLayer(15), DestroyLayer(2), MakeLayer(), MakeLayer(15)} +
             Steps{DestroyLayer(0), DestroyLayer(1), Complaining(DestroyLayer(1)), END}},
        {"shapes", "", 0, START + Steps{MakeLayer()} + 2 * SHAPES + Steps{END}},
        {"texts", "", 0, START + Steps{Load(Font("bearings.ttf"))} + 2 * TEXTS + Steps{END}},
        {"default font", "", 0,
         START + Steps{Complaining(DrawText(u"A")), Init(ENABLE_TEXT), Measure(u"A"),
                       Complaining(DrawText(u"A", {20})), END}},
        {"small textures", "glGetIntegerv", 54, START + ON_DEMAND + Steps{END}},
        {"no textures", "glGetIntegerv", 0,
         START + Steps{Load(Font("rows.ttf")), DrawText(u"FGG", {0}), Measure(u"FGG", {0}), END}},
        {"fonts", "", 0, START + FONTS + Steps{END}},
        {"odd texts", "", 0, START + ODD_TEXTS + Steps{END}},
        {"refusals", "", 0,
         REFUSALS + START + Steps{NO_WINDOW, Measure(u"A", {}, 103)} + OnLayer(strayHandle, {}) +
             Steps{NO_LAYER, END} + REFUSALS},
        {"layers without size", "", 0,
         Steps{CREATION, Connect(0), Complaining(MakeLayer(0, 0, 0))} +
             Steps{Complaining(DrawText(u"A", {20}))} + OnLayer(ownHandle, 0) + Steps{END}},
        // Failures within failures.
        {"no shader", "glCompileShader", 0, {CREATION, Init(ENABLE_RECT, 20), END}},
        {"no program", "glAttachShader", 0,
         START + Steps{Init(ENABLE_TEXT, 20), Complaining(SHAPES[1]), Complaining(SHAPES[3], 20), END}},
        {"no context", "eglCreateContext", 0, {REFUSED, Complaining(REFRESH), END}},
        {"no window", "eglCreateWindowSurface", 0, {CREATION, Connect(0, 5), END}},
    };
    return SCENARIOS;
}

std::string DrawPicture(KivGLDrawSurface& surface, const X11Window& window) {
    unsigned int back = 0;
    unsigned int front = 0;
    const int results[] = {
        surface.KivLoadFont(Font("bearings.ttf"), 40),
        surface.KivCreateGLFBO(back, WIDTH, HEIGHT, KIV_COLOR_FORMAT_RGBA8888),
        surface.KivCreateGLFBO(front, WIDTH, HEIGHT, KIV_COLOR_FORMAT_RGBA8888),
        surface.KivDrawRect(back, {0, 0, 16, 16}, RED),
        surface.KivDrawRound(back, {24, 8, 8, 8}, {0, 255, 0, 255}),
        surface.KivDrawBitmap(back, Bitmap({32, 0, 16, 16})),
        surface.KivDrawText(back, Text(u"A"), {0, 16, 32, 32}),
        surface.KivDrawText(back, Text(u"A", {20, 1, 1, 0}), {32, 16, 32, 32}),
        surface.KivBlit({back, front, WHOLE, WHOLE}),
        surface.KivDisplayFBO(front, WHOLE, WHOLE),
        surface.KivRefreshOnSrceen(),
        surface.Init(0),
        surface.KivDestoryGLFBO(back),
        surface.KivDestoryGLFBO(front),
    };
    for (const int result : results) {
        if (result != 0) {
            return "an operation of the picture returns " + std::to_string(result);
        }
    }
    const struct {
        const char* what;
        int x, y;
        Pixel pixel;
    } expectations[] = {
        {"rectangle", 8, 8, {255, 0, 0, 255}},         {"round", 24, 8, {0, 255, 0, 255}},
        {"bitmap", 40, 8, {0, 0, 255, 255}},           {"empty corner", 56, 8, {0, 0, 0, 255}},
        {"text", 7, 28, {255, 255, 255, 255}},         {"background", 20, 28, {0x80, 0x80, 0x80, 255}},
        {"styled text", 37, 34, {255, 255, 255, 255}},
    };
    for (const auto& expected : expectations) {
        const Pixel found = ShownPixel(window, expected.x, expected.y, expected.pixel);
        if (!Near(found, expected.pixel)) {
            return "the picture's " + (expected.what + (" is " + testing::PrintToString(found)));
        }
    }
    return "";
}

}  // namespace kivgles
