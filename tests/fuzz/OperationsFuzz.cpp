// Sequences of public operations with arbitrary arguments, within what the public header asks of a caller,
// and with EGL and GL failing once.

#include <climits>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <android/log.h>
#include <fuzzer/FuzzedDataProvider.h>

#include "MemoryFile.h"
#include "StubGL.h"
#include "drawthread/KivGLSemaphore.h"
#include "kivgles/KivGLDrawSurface.h"

namespace {

using namespace kivgles;

constexpr std::size_t LAYERS = 15;
constexpr std::size_t RENDERERS = 6;
constexpr std::size_t ATLASES = 2;
constexpr std::size_t LARGEST_TEXT = 300;     // units
constexpr std::size_t LARGEST_BITMAP = 4096;  // pixels
constexpr int NO_CONTEXT = 102;

// One character, A, of 8 by 2 pixels.
constexpr std::string_view FONT =
    "STARTFONT 2.1\nFONT a\nSIZE 8 75 75\nFONTBOUNDINGBOX 8 2 0 0\nSTARTPROPERTIES 2\n"
    "CHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nENDPROPERTIES\nCHARS 1\nSTARTCHAR A\n"
    "ENCODING 65\nDWIDTH 8 0\nBBX 8 2 0 0\nBITMAP\nFF\nFF\nENDCHAR\nENDFONT\n";

// Draw threads go in their own time, after the operation that stops them; their last line says when.
KivGLSemaphore drawThreadsGone(0);
void WatchForTheEnd(const __android_log_message* message) {
    if (std::string_view(message->message) == "~GLDrawThread\n") {
        drawThreadsGone.Signal();
    }
}

void Expect(bool holds, const char* finding) {
    if (!holds) {
        stubgl::Report(finding);
    }
}

// A surface, and what its answers have told about it.
class Client {
 public:
    explicit Client(FuzzedDataProvider& input) : data(input) {}

    void Operate();
    void Finish();

 private:
    std::uint32_t Number();
    TagKivRectInfo Rect() { return {Number(), Number(), Number(), Number()}; }
    TagKivColorRGBA Color();
    unsigned int Handle();
    template <typename Use>
    int WithText(Use use);
    template <typename Use>
    int WithBitmap(Use use);

    void CreateContext();
    void DestroyContext();
    int CreateLayer();
    int DestroyLayer();
    void ExpectNoLeftovers();

    FuzzedDataProvider& data;
    KivGLDrawSurface surface;
    bool hasThread = false;
    std::set<unsigned int> layers;
};

// Often within the size of a window or a layer, seldom anything.
std::uint32_t Client::Number() {
    const auto byte = data.ConsumeIntegral<std::uint8_t>();
    return byte < 0xF0 ? byte : data.ConsumeIntegral<std::uint32_t>();
}

TagKivColorRGBA Client::Color() {
    const auto bits = data.ConsumeIntegral<std::uint32_t>();
    const auto component = [bits](int shift) { return static_cast<std::uint8_t>(bits >> shift); };
    return {component(0), component(8), component(16), component(24)};
}

unsigned int Client::Handle() {
    const auto choice = data.ConsumeIntegralInRange<unsigned int>(0, LAYERS + 1);
    return choice <= LAYERS ? FBO_HANDLE_BASE + choice : data.ConsumeIntegral<unsigned int>();
}

// With a text of exactly the memory that it may be read from: up to its ending 0, or its length if it has
// none.
template <typename Use>
int Client::WithText(Use use) {
    std::vector<char16_t> units(data.ConsumeIntegralInRange<std::size_t>(0, LARGEST_TEXT), u'A');
    if (!units.empty()) {
        units[units.size() / 2] = static_cast<char16_t>(data.ConsumeIntegral<std::uint16_t>());
    }
    TagKivTextInfo text{};
    text.textLength = static_cast<std::uint32_t>(units.size());
    if (data.ConsumeBool()) {
        units.push_back(u'\0');
        units.shrink_to_fit();
        text.textLength = Number();
    }
    text.text = units.empty() ? nullptr : units.data();
    text.fgColor = Color();
    text.bgColor = data.ConsumeBool() ? text.fgColor : Color();
    text.fontSize = data.ConsumeBool() ? 40 : Number();
    const auto style = data.ConsumeIntegral<std::uint8_t>();
    text.bold = style & 1;
    text.italic = style & 2;
    text.underline = style & 4;
    return use(text);
}

template <typename Use>
int Client::WithBitmap(Use use) {
    TagKivBitmapInfo bitmap{};
    bitmap.format = data.ConsumeBool() ? KIV_COLOR_FORMAT_RGBA8888 : data.ConsumeIntegral<std::int32_t>();
    bitmap.width = Number();
    bitmap.height = Number();
    bitmap.dstRect = Rect();
    const std::uint64_t count = std::uint64_t{bitmap.width} * bitmap.height;
    const std::vector<std::uint8_t> pixels(count <= LARGEST_BITMAP ? count * 4 : 0);
    bitmap.data = pixels.empty() ? nullptr : pixels.data();
    return use(bitmap);
}

void Client::CreateContext() {
    if (!hasThread) {
        (void)surface.KivCreateGLContext();
        hasThread = true;
    }
}

void Client::DestroyContext() {
    Expect(surface.KivDestoryGLContext() == (hasThread ? 0 : NO_CONTEXT), "the context is not destroyed");
    if (hasThread) {
        drawThreadsGone.Wait();
    }
    hasThread = false;
    layers.clear();
}

int Client::CreateLayer() {
    unsigned int handle = 0;
    const int result = surface.KivCreateGLFBO(handle, Number(), Number(), KIV_COLOR_FORMAT_RGBA8888);
    Expect((result == 0) == (handle != 0), "a handle is set by a failure, or not by a success");
    Expect(result != 0 || layers.insert(handle).second, "a handle is given twice");
    Expect(result != 15 || layers.size() == LAYERS, "the table is full too early");
    return result;
}

int Client::DestroyLayer() {
    const unsigned int handle = Handle();
    const int result = surface.KivDestoryGLFBO(handle);
    if (result == 0) {
        layers.erase(handle);
    }
    return result;
}

void Client::Operate() {
    const unsigned int handle = Handle();
    const bool known = handle == FBO_HANDLE_BASE || layers.count(handle) != 0;
    int result = 0;
    bool namesLayer = false;
    switch (data.ConsumeIntegralInRange<int>(0, 17)) {
        case 0:
            return CreateContext();
        case 1:
            return DestroyContext();
        case 2: {
            const auto window = data.ConsumeIntegralInRange<std::uintptr_t>(0, 3);
            result = surface.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(window));
            if (window == 0) {
                return Expect(result == 101, "no window is connected");
            }
            break;
        }
        case 3:
            result = surface.Init(data.ConsumeIntegral<unsigned int>());
            break;
        case 4: {
            static const MemoryFile font;
            font.Write(FONT.data(), data.ConsumeIntegralInRange<std::size_t>(0, 3) == 0 ? 0 : FONT.size());
            result = surface.KivLoadFont(data.ConsumeBool() ? font.Path() : "", Number());
            break;
        }
        case 5:
            result = surface.KivRefreshOnSrceen();
            break;
        case 6:
        case 7:
            result = CreateLayer();
            break;
        case 8:
            result = DestroyLayer();
            break;
        case 9:
            result = surface.KivClearGLFBO(handle);
            break;
        case 10:
            result = surface.KivDisplayFBO(handle, Rect(), Rect());
            break;
        case 11:
            result = surface.KivBlit({handle, Handle(), Rect(), Rect()});
            break;
        case 12:
            namesLayer = true;
            result = WithText(
                [&](const TagKivTextInfo& text) { return surface.KivDrawText(handle, text, Rect()); });
            break;
        case 13:
            result = WithText([&](const TagKivTextInfo& text) {
                unsigned int width = 0;
                unsigned int height = 0;
                return surface.KivGetTextSize(text, width, height);
            });
            break;
        case 14:
            namesLayer = true;
            result = surface.KivDrawRect(handle, Rect(), Color());
            break;
        case 15:
            namesLayer = true;
            result = surface.KivDrawRound(handle, {Number(), Number(), Number(), Number()}, Color());
            break;
        case 16:
            result =
                WithBitmap([&](const TagKivBitmapInfo& bitmap) { return surface.KivDisplayBitmap(bitmap); });
            break;
        default: {
            const bool blend = data.ConsumeBool();
            result = WithBitmap([&](const TagKivBitmapInfo& bitmap) {
                return blend ? surface.KivDrawBitmapByBlend(handle, bitmap)
                             : surface.KivDrawBitmap(handle, bitmap);
            });
            break;
        }
    }
    static const std::set<int> DOCUMENTED = {0, 1, 5, 6, 15, 20, 21, 30, 31, 32, 100, 101, 102, 103};
    Expect(DOCUMENTED.count(result) != 0, "a result code that is not documented");
    Expect((result == NO_CONTEXT) == !hasThread, "102 does not tell whether there is a context");
    Expect(!namesLayer || !hasThread || result == (known ? 0 : 1), "a layer is not known by its handle");
}

void Client::ExpectNoLeftovers() {
    const stubgl::LiveObjects live = stubgl::CountLiveObjects();
    Expect(live.textures <= layers.size() + ATLASES && live.framebuffers <= layers.size() &&
               live.buffers <= RENDERERS && live.programs <= RENDERERS && live.shaders == 0,
           "GL objects are left behind");
}

void Client::Finish() {
    if (hasThread && surface.Init(0) == 0) {  // waits for everything queued
        ExpectNoLeftovers();
    }
    DestroyContext();
    Expect(stubgl::CountLiveObjects().eglObjects == 0, "EGL objects are left behind");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    __android_log_set_logger(WatchForTheEnd);
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
