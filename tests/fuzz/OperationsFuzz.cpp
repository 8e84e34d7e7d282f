// Sequences of public operations with arbitrary arguments, within what the public header asks of a caller,
// and with EGL and GL failing once.

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
#include "support/StubGL.h"

namespace {

using namespace kivgles;
using stubgl::Expect;

constexpr std::size_t LAYERS = 15;
constexpr std::size_t LARGEST_TEXT = 140;     // units
constexpr std::size_t LARGEST_BITMAP = 4096;  // pixels
constexpr const char* FONTS[] = {KIVGLES_TEST_FONTS "/bearings.ttf", "/dev/null"};
constexpr int NO_CONTEXT = 102;
constexpr int TABLE_FULL = 15;
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
    TagKivRoundInfo Round() { return {Number(), Number(), Number(), Number()}; }
    TagKivColorRGBA Color() { return {Byte(), Byte(), Byte(), Byte()}; }
    unsigned int Handle() {
        const auto choice = ConsumeIntegralInRange<unsigned int>(0, LAYERS + 1);
        return choice <= LAYERS ? FBO_HANDLE_BASE + choice : ConsumeIntegral<unsigned int>();
    }
};

// A text that ends with a 0, or where its length says. Its memory is gone as soon as the call returns.
struct FuzzedText {
    explicit FuzzedText(Input& input)
        : units(input.ConsumeIntegralInRange<std::size_t>(0, LARGEST_TEXT), u'A') {
        if (!units.empty()) {
            units[units.size() / 2] = input.ConsumeIntegral<std::uint16_t>();
        }
        const bool isEnded = input.ConsumeBool();
        info.textLength = isEnded ? input.Number() : static_cast<std::uint32_t>(units.size());
        units.resize(units.size() + (isEnded ? 1 : 0));
        units.shrink_to_fit();
        info.text = units.empty() ? nullptr : units.data();
        info.fgColor = input.Color();
        info.bgColor = input.ConsumeBool() ? info.fgColor : input.Color();
        info.fontSize = input.ConsumeBool() ? 40 : input.Number();
        const std::uint8_t style = input.Byte();
        info.bold = style & 1;
        info.italic = style & 2;
        info.underline = style & 4;
    }

    std::vector<char16_t> units;
    TagKivTextInfo info{};
};

// The same for a bitmap, without pixels if it were large.
struct FuzzedBitmap {
    explicit FuzzedBitmap(Input& input) {
        info.format = input.ConsumeBool() ? KIV_COLOR_FORMAT_RGBA8888 : input.ConsumeIntegral<std::int32_t>();
        info.width = input.Number();
        info.height = input.Number();
        info.dstRect = input.Rect();
        const std::uint64_t count = std::uint64_t{info.width} * info.height;
        pixels.resize(count <= LARGEST_BITMAP ? count * 4 : 0);
        info.data = pixels.empty() ? nullptr : pixels.data();
    }

    std::vector<std::uint8_t> pixels;
    TagKivBitmapInfo info{};
};

struct FuzzedClient {
    // Even if it failed.
    static bool HasContext() { return drawThread.joinable(); }

    void Operate() {
        const unsigned int handle = input.Handle();
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
            [&] { return surface.KivDrawText(handle, FuzzedText(input).info, input.Rect()); },
            [&] { return surface.KivGetTextSize(FuzzedText(input).info, width, height); },
            [&] { return surface.KivDrawRect(handle, input.Rect(), input.Color()); },
            [&] { return surface.KivDrawRound(handle, input.Round(), input.Color()); },
            [&] { return surface.KivDisplayBitmap(FuzzedBitmap(input).info); },
            [&] {
                return input.ConsumeBool() ? surface.KivDrawBitmapByBlend(handle, FuzzedBitmap(input).info)
                                           : surface.KivDrawBitmap(handle, FuzzedBitmap(input).info);
            },
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
        Expect(stubgl::LiveNum() == 0, "EGL or GL objects are left behind");
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
    const std::uint8_t failure = input.Byte();
    stubgl::Reset(2048, failure < 0x80 ? failure : UINT_MAX);

    FuzzedClient client{input};
    while (input.remaining_bytes() != 0) {
        client.Operate();
    }
    (void)client.DestroyContext();
    return 0;
}
