// Fonts from hostile files: loaded into both atlases, measured and drawn in several sizes and styles.
//
// The input is a font file; the parameters of the run are taken from its end.

#include <array>
#include <climits>
#include <cmath>
#include <cstdint>
#include <string>

#include <android/log.h>
#include <fuzzer/FuzzedDataProvider.h>
#include <sys/mman.h>
#include <unistd.h>

#include "StubGL.h"
#include "text/OSDText.h"

namespace {

using kivgles::OSDText;
using kivgles::TagFrameBuffObject;
using kivgles::TagGLTextInfo;
using stubgl::Expect;

constexpr TagFrameBuffObject TARGET{kivgles::FBO_HANDLE_BASE + 1, 1, 1, 640, 360};
constexpr char16_t COMMON_UNITS[] = u"AB f\u2014\u4E2D\xA0";
constexpr std::size_t EXTRA_UNITS = 4;
constexpr std::size_t STYLES = 2;

// A file that is never on a disk, rewritten as often as there are inputs.
class MemoryFile {
 public:
    MemoryFile()
        : descriptor(memfd_create("font", MFD_CLOEXEC)),
          path("/proc/self/fd/" + std::to_string(descriptor)) {}
    ~MemoryFile() { close(descriptor); }

    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    void Write(const void* bytes, std::size_t size) const {
        Expect(
            ftruncate(descriptor, 0) == 0 && pwrite(descriptor, bytes, size, 0) == static_cast<ssize_t>(size),
            "the memory file cannot be written");
    }
    const std::string& Path() const { return path; }

 private:
    int descriptor;
    std::string path;
};

void Ignore(const __android_log_message*) {}

TagGLTextInfo Request(const std::u16string& text, std::uint32_t fontSize, std::uint8_t style) {
    TagGLTextInfo info{};
    info.text = text.c_str();
    info.textLength = static_cast<std::uint32_t>(text.size());
    info.fontSize = fontSize;
    info.bold = style & 1;
    info.italic = style & 2;
    return info;
}

// Every quad drawn must lie inside its atlas.
void CheckTexCoords(const GLfloat* vertices, std::size_t count, const GLfloat*) {
    constexpr float TOLERANCE = 1e-4F;
    for (std::size_t i = 0; i < 4 * count; i += 4) {
        for (const float coordinate : {vertices[i + 2], vertices[i + 3]}) {
            Expect(coordinate >= 0.0F && coordinate <= 1.0F + TOLERANCE,
                   "a glyph is sampled from outside its atlas");
        }
    }
}

void MeasureAndDraw(OSDText& text, const TagGLTextInfo& info) {
    unsigned int width = UINT_MAX;
    unsigned int height = UINT_MAX;
    Expect(text.GetTextSize(info, width, height) == 0 && height == 50, "a text is not measured");
    (void)text.DrawText(TARGET, info, -0.5F, 0.0F);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const MemoryFile file;
    __android_log_set_logger(Ignore);

    FuzzedDataProvider data(bytes, size);
    stubgl::Reset(data.PickValueInArray({16384, 2048, 1024, 256, 64}), UINT_MAX, CheckTexCoords);
    stubgl::SetContext(stubgl::Context::CURRENT);
    const auto standardSize = data.ConsumeIntegralInRange<std::uint32_t>(0, 128);
    std::array<std::uint32_t, STYLES> sizes{};
    std::array<std::uint8_t, STYLES> masks{};
    for (std::size_t i = 0; i < STYLES; ++i) {
        const std::uint32_t byte = data.ConsumeIntegral<std::uint8_t>();
        sizes[i] = byte < 0xFA ? byte : byte * 0x101;  // a few of more than 64,000 pixels
        masks[i] = data.ConsumeIntegralInRange<std::uint8_t>(0, 3);
    }
    std::u16string units = COMMON_UNITS;
    for (std::size_t i = 0; i < EXTRA_UNITS; ++i) {
        units += static_cast<char16_t>(data.ConsumeIntegral<std::uint16_t>());
    }
    const auto font = data.ConsumeRemainingBytes<std::uint8_t>();
    file.Write(font.data(), font.size());

    {
        OSDText text;
        (void)text.Init();
        (void)text.LoadFont(file.Path(), standardSize);
        MeasureAndDraw(text, Request(units, 40, 0));
        for (std::size_t i = 0; i < STYLES; ++i) {
            MeasureAndDraw(text, Request(units, sizes[i], masks[i]));
        }
    }
    Expect(stubgl::CountLive() == 0, "GL objects are left behind");
    return 0;
}
