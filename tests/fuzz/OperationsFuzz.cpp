// Sequences of public operations with arbitrary arguments, within what the public header asks of a caller,
// and with a call of EGL or GL that fails.

#include <algorithm>
#include <climits>
#include <cstdint>
#include <functional>
#include <iterator>
#include <set>
#include <thread>
#include <vector>

#include <android/log.h>
#include <fuzzer/FuzzedDataProvider.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"

namespace {

using namespace kivgles;
using recorder::Expect;

constexpr std::size_t LAYERS = 15;
constexpr std::size_t LARGEST_TEXT = 140;     // units
constexpr std::size_t LARGEST_BITMAP = 4096;  // pixels
constexpr const char* FONTS[] = {KIVGLES_TEST_FONTS "/bearings.ttf", "/dev/null"};
constexpr int NO_CONTEXT = 102;
constexpr int TABLE_FULL = 15;
constexpr const char* FAILING[] = {
    "eglGetDisplay",  "eglInitialize",  "eglChooseConfig",   "eglCreateContext", "eglCreatePbufferSurface",
    "eglMakeCurrent", "glGenTextures",  "glGenFramebuffers", "glGenBuffers",     "eglCreateWindowSurface",
    "glGetProgramiv", "glCreateShader", "glCreateProgram",   "glGetShaderiv"};
constexpr int RESULTS[] = {0, 1, 2, 3, 4, 5, 6, TABLE_FULL, 20, 21, 30, 31, 32, 100, 101, NO_CONTEXT, 103};

std::thread drawThread;  // while there is a context, or one that failed

// What arguments are made of.
struct Input : FuzzedDataProvider {
    using FuzzedDataProvider::FuzzedDataProvider;

    std::uint8_t Byte() { return ConsumeIntegral<std::uint8_t>(); }
    // Often within the size of a window or a layer, seldom anything.
    std::uint32_t Number() {
        const std::uint8_t byte = Byte();
        return byte < 0xF0 ? byte : ConsumeIntegral<std::uint32_t>();
    }
    TagKivRectInfo Rect() { return {Number(), Number(), Number(), Number()}; }
    TagKivColorRGBA Color() { return {Byte(), Byte(), Byte(), Byte()}; }
    unsigned int Handle() {
        const auto choice = ConsumeIntegralInRange<unsigned int>(0, LAYERS + 1);
        return choice <= LAYERS ? FBO_HANDLE_BASE + choice : ConsumeIntegral<unsigned int>();
    }
    // Ends with a 0, or where its length says.
    TagKivTextInfo Text(std::vector<char16_t>& units) {
        units.resize(ConsumeIntegralInRange<std::size_t>(0, LARGEST_TEXT), u'A');
        if (!units.empty()) {
            units[units.size() / 2] = ConsumeIntegral<std::uint16_t>();
        }
        const bool isEnded = ConsumeBool();
        const auto length = isEnded ? Number() : static_cast<std::uint32_t>(units.size());
        units.resize(units.size() + (isEnded ? 1 : 0));
        units.shrink_to_fit();
        const TagKivColorRGBA color = Color();
        const auto has = [style = Byte()](int bit) { return static_cast<std::uint8_t>(style & bit); };
        const TagKivColorRGBA background = ConsumeBool() ? color : Color();
        const std::uint32_t size = ConsumeBool() ? 40 : Number();
        return {units.data(), length, color, background, 0, size, has(1), has(2), has(4)};
    }
    // Without pixels if it were large.
    TagKivBitmapInfo Bitmap(std::vector<std::uint8_t>& pixels) {
        const auto format = ConsumeBool() ? KIV_COLOR_FORMAT_RGBA8888 : ConsumeIntegral<std::int32_t>();
        const std::uint32_t width = Number();
        const std::uint32_t height = Number();
        const std::uint64_t count = std::uint64_t{width} * height;
        pixels.resize(count <= LARGEST_BITMAP ? count * 4 : 0);
        return {pixels.data(), format, 0, 0, width, height, Rect()};
    }
};

struct FuzzedClient {
    // Even if it failed.
    static bool HasContext() { return drawThread.joinable(); }

    void Operate() {
        const unsigned int handle = input.Handle();
        std::vector<char16_t> units;  // gone, as the pixels are, when the operation returns
        std::vector<std::uint8_t> pixels;
        const std::function<int()> operations[] = {
            [&] { return HasContext() ? 0 : surface.KivCreateGLContext(); },
            [&] { return DestroyContext(); },
            [&] { return ConnectWindow(); },
            [&] { return surface.Init(input.ConsumeIntegral<unsigned int>()); },
            [&] { return surface.KivLoadFont(FONTS[input.ConsumeBool() ? 1 : 0], input.Number()); },
            [&] { return surface.KivRefreshOnSrceen(); },
            [&] { return CreateLayer(); },
            [&] { return CreateLayer(); },  // twice as often as it is destroyed
            [&] { return DestroyLayer(handle); },
            [&] { return surface.KivClearGLFBO(handle); },
            [&] { return surface.KivDisplayFBO(handle, input.Rect(), input.Rect()); },
            [&] {
                return surface.KivBlit({handle, input.Handle(), input.Rect(), input.Rect()});
            },
            [&] { return surface.KivDrawText(handle, input.Text(units), input.Rect()); },
            [&] { return surface.KivGetTextSize(input.Text(units), width, height); },
            [&] { return surface.KivDrawRect(handle, input.Rect(), input.Color()); },
            [&] {
                const TagKivRectInfo numbers = input.Rect();
                return surface.KivDrawRound(handle, {numbers.x, numbers.y, numbers.width, numbers.height},
                                            input.Color());
            },
            [&] { return surface.KivDisplayBitmap(input.Bitmap(pixels)); },
            [&] { return surface.KivDrawBitmap(handle, input.Bitmap(pixels)); },
            [&] { return surface.KivDrawBitmapByBlend(handle, input.Bitmap(pixels)); },
        };
        const int result = input.PickValueInArray(operations)();
        Expect(std::find(std::begin(RESULTS), std::end(RESULTS), result) != std::end(RESULTS),
               "a result code that is not documented");
        Expect((result == NO_CONTEXT) == !HasContext(), "102 does not tell whether there is a context");
    }
    int DestroyContext() {
        Expect(surface.KivDestoryGLContext() == (HasContext() ? 0 : NO_CONTEXT),
               "the context is not destroyed");
        if (HasContext()) {
            drawThread.join();
        }
        Expect(recorder::Live().empty(), "EGL or GL objects are left behind");
        layers.clear();
        return NO_CONTEXT;  // from now on
    }
    int ConnectWindow() {
        const auto window = input.ConsumeIntegralInRange<std::uintptr_t>(0, 3);
        const int result = surface.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(window));
        return window != 0 || HasContext() ? result : NO_CONTEXT;  // the window is looked at first
    }
    int CreateLayer() {
        const int result =
            surface.KivCreateGLFBO(made, input.Number(), input.Number(), KIV_COLOR_FORMAT_RGBA8888);
        Expect(result != 0 || layers.insert(made).second, "a handle is given twice");
        Expect(result != TABLE_FULL || layers.size() == LAYERS, "the table is full too early");
        return result;
    }
    int DestroyLayer(unsigned int handle) {
        const int result = surface.KivDestoryGLFBO(handle);
        if (result == 0) {
            layers.erase(handle);
        }
        return result;
    }

    Input& input;
    KivGLDrawSurface surface{};
    std::set<unsigned int> layers{};  // as the answers have it
    unsigned int made = 0;            // answers
    unsigned int width = 0;
    unsigned int height = 0;
};

}  // namespace

// The library lets its draw thread go, so that nobody would know when it has ended.
void std::thread::detach() { drawThread.swap(*this); }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    __android_log_set_logger([](const __android_log_message*) {});
    Input input(bytes, size);
    recorder::StandAlone(2048);
    const std::uint8_t nth = input.Byte();
    if (nth < 0x80) {
        recorder::Fail(input.PickValueInArray(FAILING), nth / 8 + 1);
    }

    FuzzedClient client{input};
    while (input.remaining_bytes() != 0) {
        client.Operate();
    }
    (void)client.DestroyContext();
    return 0;
}
