// Sequences of public operations with arbitrary arguments, within what the public header asks of a caller,
// and with EGL and GL failing once. Commands are executed when the client waits, or now and then as they
// come.

#include <algorithm>
#include <climits>
#include <cstdint>
#include <set>
#include <vector>

#include <android/log.h>
#include <fuzzer/FuzzedDataProvider.h>

#include "Coroutine.h"
#include "StubGL.h"
#include "kivgles/KivGLDrawSurface.h"

namespace {

using namespace kivgles;
using stubgl::CountLive;
using stubgl::Expect;
using stubgl::Kind;

constexpr std::size_t LAYERS = 15;
constexpr std::size_t RENDERERS = 6;
constexpr std::size_t ATLASES = 2;
constexpr std::size_t LARGEST_TEXT = 140;     // units
constexpr std::size_t LARGEST_BITMAP = 4096;  // pixels
constexpr int FONT_LOADS = 2;                 // by one input: what takes longest, and has a target of its own
constexpr int NO_CONTEXT = 102;

constexpr int OPERATIONS = 18;
constexpr int RESULTS[] = {0, 1, 5, 6, 15, 20, 21, 30, 31, 32, 100, 101, 102, 103};

void Ignore(const __android_log_message*) {}

// A surface, and what its answers have told about it.
class Client {
 public:
    explicit Client(FuzzedDataProvider& input) : data(input) {}

    void Operate() {
        const unsigned int handle = Handle();
        const bool known = handle == FBO_HANDLE_BASE || layers.count(handle) != 0;
        const auto choice = data.ConsumeIntegralInRange<int>(0, 2 * OPERATIONS - 1);
        const int operation = choice % OPERATIONS;
        if (operation < 2) {
            return operation == 0 ? CreateContext() : DestroyContext();
        }
        const int result = Perform(operation, handle);
        Expect(std::find(std::begin(RESULTS), std::end(RESULTS), result) != std::end(RESULTS),
               "a result code that is not documented");
        Expect((result == NO_CONTEXT) == !hasThread, "102 does not tell whether there is a context");
        const bool namesLayer = operation == 12 || operation == 14 || operation == 15;
        Expect(!namesLayer || !hasThread || result == (known ? 0 : 1), "a layer is not known by its handle");
        if (choice >= OPERATIONS) {
            coroutine::Run();
        }
    }
    void Finish() {
        if (hasThread && surface.Init(0) == 0) {  // waits for everything queued
            ExpectNoLeftovers();
        }
        DestroyContext();
        Expect(CountLive() == 0, "EGL or GL objects are left behind");
    }

 private:
    // With a record's memory, exactly as much as may be read.
    struct Text {
        std::vector<char16_t> units;
        TagKivTextInfo info{};
    };
    struct Bitmap {
        std::vector<std::uint8_t> pixels;
        TagKivBitmapInfo info{};
    };

    // Often within the size of a window or a layer, seldom anything.
    std::uint32_t Number() {
        const auto byte = data.ConsumeIntegral<std::uint8_t>();
        return byte < 0xF0 ? byte : data.ConsumeIntegral<std::uint32_t>();
    }
    TagKivRectInfo Rect() { return {Number(), Number(), Number(), Number()}; }
    TagKivColorRGBA Color() {
        const auto bits = data.ConsumeIntegral<std::uint32_t>();
        const auto component = [bits](int shift) { return static_cast<std::uint8_t>(bits >> shift); };
        return {component(0), component(8), component(16), component(24)};
    }
    unsigned int Handle() {
        const auto choice = data.ConsumeIntegralInRange<unsigned int>(0, LAYERS + 1);
        return choice <= LAYERS ? FBO_HANDLE_BASE + choice : data.ConsumeIntegral<unsigned int>();
    }
    // Ends with a 0, or where its length says.
    Text MakeText() {
        std::vector<char16_t> units(data.ConsumeIntegralInRange<std::size_t>(0, LARGEST_TEXT), u'A');
        if (!units.empty()) {
            units[units.size() / 2] = static_cast<char16_t>(data.ConsumeIntegral<std::uint16_t>());
        }
        TagKivTextInfo info{};
        info.textLength = static_cast<std::uint32_t>(units.size());
        if (data.ConsumeBool()) {
            units.push_back(u'\0');
            units.shrink_to_fit();
            info.textLength = Number();
        }
        info.text = units.empty() ? nullptr : units.data();
        info.fgColor = Color();
        info.bgColor = data.ConsumeBool() ? info.fgColor : Color();
        info.fontSize = data.ConsumeBool() ? 40 : Number();
        const auto style = data.ConsumeIntegral<std::uint8_t>();
        info.bold = style & 1;
        info.italic = style & 2;
        info.underline = style & 4;
        return {std::move(units), info};
    }
    Bitmap MakeBitmap() {
        TagKivBitmapInfo info{};
        info.format = data.ConsumeBool() ? KIV_COLOR_FORMAT_RGBA8888 : data.ConsumeIntegral<std::int32_t>();
        info.width = Number();
        info.height = Number();
        info.dstRect = Rect();
        const std::uint64_t count = std::uint64_t{info.width} * info.height;
        std::vector<std::uint8_t> pixels(count <= LARGEST_BITMAP ? count * 4 : 0);
        info.data = pixels.empty() ? nullptr : pixels.data();
        return {std::move(pixels), info};
    }
    void CreateContext() {
        if (!hasThread) {
            (void)surface.KivCreateGLContext();
            hasThread = true;
        }
    }
    void DestroyContext() {
        Expect(surface.KivDestoryGLContext() == (hasThread ? 0 : NO_CONTEXT), "the context is not destroyed");
        coroutine::Run();
        Expect(coroutine::HasEnded(), "the draw thread does not end");
        hasThread = false;
        layers.clear();
    }
    int ConnectWindow() {
        const auto window = data.ConsumeIntegralInRange<std::uintptr_t>(0, 3);
        const int result = surface.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(window));
        Expect(window != 0 || result == 101, "no window is connected");
        return window != 0 || hasThread ? result : NO_CONTEXT;  // the window is looked at first
    }
    int LoadFont() {
        const bool empty = data.ConsumeIntegralInRange<int>(0, 3) == 0 || ++fontLoads > FONT_LOADS;
        return surface.KivLoadFont(data.ConsumeBool() ? empty ? "/dev/null" : SMALL_FONT : "", Number());
    }
    int CreateLayer() {
        unsigned int handle = 0;
        const int result = surface.KivCreateGLFBO(handle, Number(), Number(), KIV_COLOR_FORMAT_RGBA8888);
        Expect((result == 0) == (handle != 0), "a handle is set by a failure, or not by a success");
        Expect(result != 0 || layers.insert(handle).second, "a handle is given twice");
        Expect(result != 15 || layers.size() == LAYERS, "the table is full too early");
        return result;
    }
    int DestroyLayer() {
        const unsigned int handle = Handle();
        const int result = surface.KivDestoryGLFBO(handle);
        if (result == 0) {
            layers.erase(handle);
        }
        return result;
    }
    int MeasureText() {
        unsigned int width = 0;
        unsigned int height = 0;
        return surface.KivGetTextSize(MakeText().info, width, height);
    }
    int Perform(int operation, unsigned int handle) {
        switch (operation) {
            case 2:
                return ConnectWindow();
            case 3:
                return surface.Init(data.ConsumeIntegral<unsigned int>());
            case 4:
                return LoadFont();
            case 5:
                return surface.KivRefreshOnSrceen();
            case 6:
            case 7:
                return CreateLayer();
            case 8:
                return DestroyLayer();
            case 9:
                return surface.KivClearGLFBO(handle);
            case 10:
                return surface.KivDisplayFBO(handle, Rect(), Rect());
            case 11:
                return surface.KivBlit({handle, Handle(), Rect(), Rect()});
            case 12:
                return surface.KivDrawText(handle, MakeText().info, Rect());
            case 13:
                return MeasureText();
            case 14:
                return surface.KivDrawRect(handle, Rect(), Color());
            case 15:
                return surface.KivDrawRound(handle, {Number(), Number(), Number(), Number()}, Color());
            case 16:
                return surface.KivDisplayBitmap(MakeBitmap().info);
            default:
                return data.ConsumeBool() ? surface.KivDrawBitmapByBlend(handle, MakeBitmap().info)
                                          : surface.KivDrawBitmap(handle, MakeBitmap().info);
        }
    }
    void ExpectNoLeftovers() const {
        Expect(CountLive(Kind::TEXTURE) <= layers.size() + ATLASES &&
                   CountLive(Kind::FRAMEBUFFER) <= layers.size() && CountLive(Kind::BUFFER) <= RENDERERS &&
                   CountLive(Kind::PROGRAM) <= RENDERERS && CountLive(Kind::SHADER) == 0,
               "GL objects are left behind");
    }

    FuzzedDataProvider& data;
    KivGLDrawSurface surface;
    bool hasThread = false;
    int fontLoads = 0;
    std::set<unsigned int> layers;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    __android_log_set_logger(Ignore);
    FuzzedDataProvider data(bytes, size);
    const auto failure = data.ConsumeIntegral<std::uint8_t>();
    stubgl::Reset(2048, failure < 0x80 ? failure : UINT_MAX);

    Client client(data);
    while (data.remaining_bytes() != 0) {
        client.Operate();
    }
    client.Finish();
    return 0;
}
