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

constexpr int RESULTS[] = {0, 1, 5, 6, 15, 20, 21, 30, 31, 32, 100, 101, 102, 103};

// A surface, and what its answers have told about it.
class Client {
 public:
    explicit Client(FuzzedDataProvider& input) : data(input) {}

    void Operate();
    void Finish() {
        if (hasThread && surface.Init(0) == 0) {  // waits for everything queued
            ExpectNoLeftovers();
        }
        (void)DestroyContext();
        Expect(CountLive() == 0, "EGL or GL objects are left behind");
    }

 private:
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
    TagKivTextInfo Text() {
        units = std::vector<char16_t>(data.ConsumeIntegralInRange<std::size_t>(0, LARGEST_TEXT), u'A');
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
        return info;
    }
    TagKivBitmapInfo Bitmap() {
        TagKivBitmapInfo info{};
        info.format = data.ConsumeBool() ? KIV_COLOR_FORMAT_RGBA8888 : data.ConsumeIntegral<std::int32_t>();
        info.width = Number();
        info.height = Number();
        info.dstRect = Rect();
        const std::uint64_t count = std::uint64_t{info.width} * info.height;
        pixels = std::vector<std::uint8_t>(count <= LARGEST_BITMAP ? count * 4 : 0);
        info.data = pixels.empty() ? nullptr : pixels.data();
        return info;
    }
    int CreateContext() {
        if (!hasThread) {
            // There is a thread even if this fails, with a code of its own.
            (void)surface.KivCreateGLContext();
            hasThread = true;
        }
        return 0;
    }
    int DestroyContext() {
        Expect(surface.KivDestoryGLContext() == (hasThread ? 0 : NO_CONTEXT), "the context is not destroyed");
        coroutine::Run();
        Expect(coroutine::HasEnded(), "the draw thread does not end");
        hasThread = false;
        layers.clear();
        return NO_CONTEXT;  // from now on
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
        return surface.KivGetTextSize(Text(), width, height);
    }
    int DrawBitmap(unsigned int handle) {
        return data.ConsumeBool() ? surface.KivDrawBitmapByBlend(handle, Bitmap())
                                  : surface.KivDrawBitmap(handle, Bitmap());
    }
    void ExpectNoLeftovers() const {
        Expect(CountLive(Kind::TEXTURE) <= layers.size() + ATLASES &&
                   CountLive(Kind::FRAMEBUFFER) <= layers.size() && CountLive(Kind::BUFFER) <= RENDERERS &&
                   CountLive(Kind::PROGRAM) <= RENDERERS && CountLive(Kind::SHADER) == 0,
               "GL objects are left behind");
    }

    struct Operation {
        int (*perform)(Client&, unsigned int handle);
        bool namesLayer = false;  // and needs it to be there
    };
    static const Operation OPERATIONS[];

    FuzzedDataProvider& data;
    KivGLDrawSurface surface;
    std::vector<char16_t> units;  // exactly what the operation at work may read
    std::vector<std::uint8_t> pixels;
    bool hasThread = false;
    int fontLoads = 0;
    std::set<unsigned int> layers;
};

const Client::Operation Client::OPERATIONS[] = {
    {[](Client& c, unsigned int) { return c.CreateContext(); }},
    {[](Client& c, unsigned int) { return c.DestroyContext(); }},
    {[](Client& c, unsigned int) { return c.ConnectWindow(); }},
    {[](Client& c, unsigned int) { return c.surface.Init(c.data.ConsumeIntegral<unsigned int>()); }},
    {[](Client& c, unsigned int) { return c.LoadFont(); }},
    {[](Client& c, unsigned int) { return c.surface.KivRefreshOnSrceen(); }},
    {[](Client& c, unsigned int) { return c.CreateLayer(); }},
    {[](Client& c, unsigned int) { return c.CreateLayer(); }},  // twice as often as it is destroyed
    {[](Client& c, unsigned int) { return c.DestroyLayer(); }},
    {[](Client& c, unsigned int handle) { return c.surface.KivClearGLFBO(handle); }},
    {[](Client& c, unsigned int handle) { return c.surface.KivDisplayFBO(handle, c.Rect(), c.Rect()); }},
    {[](Client& c, unsigned int handle) {
        return c.surface.KivBlit({handle, c.Handle(), c.Rect(), c.Rect()});
    }},
    {[](Client& c, unsigned int handle) { return c.surface.KivDrawText(handle, c.Text(), c.Rect()); }, true},
    {[](Client& c, unsigned int) { return c.MeasureText(); }},
    {[](Client& c, unsigned int handle) { return c.surface.KivDrawRect(handle, c.Rect(), c.Color()); }, true},
    {[](Client& c, unsigned int handle) {
         return c.surface.KivDrawRound(handle, {c.Number(), c.Number(), c.Number(), c.Number()}, c.Color());
     },
     true},
    {[](Client& c, unsigned int) { return c.surface.KivDisplayBitmap(c.Bitmap()); }},
    {[](Client& c, unsigned int handle) { return c.DrawBitmap(handle); }},
};

void Client::Operate() {
    const unsigned int handle = Handle();
    const bool known = handle == FBO_HANDLE_BASE || layers.count(handle) != 0;
    const auto choice = data.ConsumeIntegralInRange<std::size_t>(0, 2 * std::size(OPERATIONS) - 1);
    const Operation& operation = OPERATIONS[choice % std::size(OPERATIONS)];
    const int result = operation.perform(*this, handle);
    units = std::vector<char16_t>();  // gone before the command is executed
    pixels = std::vector<std::uint8_t>();
    Expect(std::find(std::begin(RESULTS), std::end(RESULTS), result) != std::end(RESULTS),
           "a result code that is not documented");
    Expect((result == NO_CONTEXT) == !hasThread, "102 does not tell whether there is a context");
    Expect(!operation.namesLayer || !hasThread || result == (known ? 0 : 1),
           "a layer is not known by its handle");
    if (choice >= std::size(OPERATIONS)) {
        coroutine::Run();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    __android_log_set_logger([](const __android_log_message*) {});
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
