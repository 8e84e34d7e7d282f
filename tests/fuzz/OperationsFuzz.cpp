// Sequences of public operations with arbitrary arguments, within what the public header asks of a caller,
// and with EGL and GL failing once.

#include <algorithm>
#include <climits>
#include <cstdint>
#include <set>
#include <thread>
#include <vector>

#include <android/log.h>
#include <fuzzer/FuzzedDataProvider.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/MostLive.h"
#include "support/StubGL.h"

namespace {

using namespace kivgles;
using stubgl::Expect;
using stubgl::LiveNum;

constexpr std::size_t LAYERS = 15;
constexpr std::size_t LARGEST_TEXT = 140;     // units
constexpr std::size_t LARGEST_BITMAP = 4096;  // pixels
constexpr int FONT_LOADS = 2;                 // by one input: what takes longest, and has a target of its own
constexpr int NO_CONTEXT = 102;

constexpr int RESULTS[] = {0, 1, 2, 3, 4, 5, 6, 15, 20, 21, 30, 31, 32, 100, 101, 102, 103};

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

// A surface, and what its answers have told about it.
struct FuzzedClient {
    // Even if it failed.
    static bool HasContext() { return drawThread.joinable(); }

    int CreateContext() { return HasContext() ? 0 : surface.KivCreateGLContext(); }
    int DestroyContext() {
        Expect(surface.KivDestoryGLContext() == (HasContext() ? 0 : NO_CONTEXT),
               "the context is not destroyed");
        if (HasContext()) {
            drawThread.join();
        }
        Expect(LiveNum() == 0, "EGL or GL objects are left behind");
        layers.clear();
        return NO_CONTEXT;  // from now on
    }
    int ConnectWindow() {
        const auto window = input.ConsumeIntegralInRange<std::uintptr_t>(0, 3);
        const int result = surface.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(window));
        Expect(window != 0 || result == 101, "no window is connected");
        return window != 0 || HasContext() ? result : NO_CONTEXT;  // the window is looked at first
    }
    int Init() { return surface.Init(input.ConsumeIntegral<unsigned int>()); }
    int LoadFont() {
        const bool empty = input.ConsumeIntegralInRange<int>(0, 3) == 0 || ++fontLoads > FONT_LOADS;
        const bool exists = input.ConsumeBool();
        return surface.KivLoadFont(!exists ? ""
                                   : empty ? "/dev/null"
                                           : KIVGLES_TEST_FONTS "/bearings.ttf",
                                   input.Number());
    }
    int Refresh() { return surface.KivRefreshOnSrceen(); }
    int CreateLayer() {
        unsigned int made = 0;
        const int result =
            surface.KivCreateGLFBO(made, input.Number(), input.Number(), KIV_COLOR_FORMAT_RGBA8888);
        Expect((result == 0) == (made != 0), "a handle is set by a failure, or not by a success");
        Expect(result != 0 || layers.insert(made).second, "a handle is given twice");
        Expect(result != 15 || layers.size() == LAYERS, "the table is full too early");
        return result;
    }
    int DestroyLayer() {
        const unsigned int layer = input.Handle();
        const int result = surface.KivDestoryGLFBO(layer);
        if (result == 0) {
            layers.erase(layer);
        }
        return result;
    }
    int ClearLayer() { return surface.KivClearGLFBO(handle); }
    int DisplayLayer() { return surface.KivDisplayFBO(handle, input.Rect(), input.Rect()); }
    int Blit() { return surface.KivBlit({handle, input.Handle(), input.Rect(), input.Rect()}); }
    int DrawText() { return ExpectKnown(surface.KivDrawText(handle, FuzzedText(input).info, input.Rect())); }
    int MeasureText() {
        unsigned int width = 0;
        unsigned int height = 0;
        return surface.KivGetTextSize(FuzzedText(input).info, width, height);
    }
    int DrawRect() { return ExpectKnown(surface.KivDrawRect(handle, input.Rect(), input.Color())); }
    int DrawRound() { return ExpectKnown(surface.KivDrawRound(handle, input.Round(), input.Color())); }
    int DisplayBitmap() { return surface.KivDisplayBitmap(FuzzedBitmap(input).info); }
    int DrawBitmap() {
        return input.ConsumeBool() ? surface.KivDrawBitmapByBlend(handle, FuzzedBitmap(input).info)
                                   : surface.KivDrawBitmap(handle, FuzzedBitmap(input).info);
    }
    // The result of an operation that depends on nothing but whether there is such a layer.
    int ExpectKnown(int result) const {
        const bool known = handle == FBO_HANDLE_BASE || layers.count(handle) != 0;
        Expect(!HasContext() || result == (known ? 0 : 1), "a layer is not known by its handle");
        return result;
    }

    Input& input;
    KivGLDrawSurface surface{};
    unsigned int handle = 0;  // of the operation at work
    int fontLoads = 0;
    std::set<unsigned int> layers{};
};

using Operation = int (FuzzedClient::*)();
constexpr Operation OPERATIONS[] = {
    &FuzzedClient::CreateContext, &FuzzedClient::DestroyContext, &FuzzedClient::ConnectWindow,
    &FuzzedClient::Init,          &FuzzedClient::LoadFont,       &FuzzedClient::Refresh,
    &FuzzedClient::CreateLayer,
    &FuzzedClient::CreateLayer,  // twice as often as it is destroyed
    &FuzzedClient::DestroyLayer,  &FuzzedClient::ClearLayer,     &FuzzedClient::DisplayLayer,
    &FuzzedClient::Blit,          &FuzzedClient::DrawText,       &FuzzedClient::MeasureText,
    &FuzzedClient::DrawRect,      &FuzzedClient::DrawRound,      &FuzzedClient::DisplayBitmap,
    &FuzzedClient::DrawBitmap};

void Operate(FuzzedClient& client) {
    client.handle = client.input.Handle();
    const Operation operation = client.input.PickValueInArray(OPERATIONS);
    const int result = (client.*operation)();
    Expect(std::find(std::begin(RESULTS), std::end(RESULTS), result) != std::end(RESULTS),
           "a result code that is not documented");
    Expect((result == NO_CONTEXT) == !FuzzedClient::HasContext(),
           "102 does not tell whether there is a context");
}

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
        Operate(client);
    }
    if (client.surface.Init(0) == 0) {  // everything queued has been executed
        for (const char* kind : {"texture", "buffer", "framebuffer", "program", "shader"}) {
            Expect(LiveNum(kind) <= MostLive(kind, client.layers.size()), "GL objects are left behind");
        }
    }
    (void)client.DestroyContext();
    return 0;
}
