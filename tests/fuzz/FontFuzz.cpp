// Fonts from hostile files: loaded into both atlases, measured and drawn in several sizes and styles.
//
// The input is a font file; the parameters of the run are taken from its end.

#include <cstdint>
#include <string>

#include <EGL/egl.h>
#include <android/log.h>
#include <fuzzer/FuzzedDataProvider.h>
#include <sys/mman.h>
#include <unistd.h>

#include "support/Recorder.h"
#include "text/OSDText.h"

namespace {

using namespace kivgles;
using recorder::Expect;

constexpr TagFrameBuffObject TARGET{FBO_HANDLE_BASE + 1, 1, 1, 640, 360};
constexpr std::size_t STYLES = 3;  // the first one is the standard atlas's

// Returns the path of a file that is never on a disk, rewritten as often as there are inputs.
std::string WriteFont(const std::vector<std::uint8_t>& bytes) {
    static const int file = memfd_create("font", MFD_CLOEXEC);
    const auto size = static_cast<ssize_t>(bytes.size());
    Expect(ftruncate(file, 0) == 0 && pwrite(file, bytes.data(), bytes.size(), 0) == size,
           "the memory file cannot be written");
    return "/proc/self/fd/" + std::to_string(file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    __android_log_set_logger([](const __android_log_message*) {});
    FuzzedDataProvider data(bytes, size);
    recorder::StandAlone(data.PickValueInArray({16384, 2048, 1024, 256, 64}));
    eglMakeCurrent(nullptr, nullptr, nullptr, nullptr);  // this thread has a context

    const auto standardSize = data.ConsumeIntegralInRange<std::uint32_t>(0, 128);
    TagGLTextInfo requests[STYLES]{};
    requests[0].fontSize = 40;
    for (std::size_t i = 1; i < STYLES; ++i) {
        const std::uint32_t byte = data.ConsumeIntegral<std::uint8_t>();
        requests[i].fontSize = byte < 0xFA ? byte : byte * 0x101;  // a few of more than 64,000 pixels
        const auto style = data.ConsumeIntegralInRange<std::uint8_t>(0, 3);
        requests[i].bold = style & 1;
        requests[i].italic = style & 2;
    }
    std::u16string units = u"AB f\u2014\u4E2D\xA0";
    for (int i = 0; i < 4; ++i) {
        units += static_cast<char16_t>(data.ConsumeIntegral<std::uint16_t>());
    }

    {
        OSDText text;
        (void)text.Init();
        (void)text.LoadFont(WriteFont(data.ConsumeRemainingBytes<std::uint8_t>()), standardSize);
        for (TagGLTextInfo& request : requests) {
            request.text = units.c_str();
            request.textLength = static_cast<std::uint32_t>(units.size());
            unsigned int width = 0;
            unsigned int height = 0;
            Expect(text.GetTextSize(request, width, height) == 0 && height == 50, "a text is not measured");
            (void)text.DrawText(TARGET, request, -0.5F, 0.0F);
        }
    }
    Expect(recorder::Live().empty(), "GL objects are left behind");
    return 0;
}
