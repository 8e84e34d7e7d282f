// The conversions from pixels and bytes against the same formulas in double precision.

#include <cmath>
#include <cstdint>
#include <cstring>

#include <GLES2/gl2.h>
#include <android/log.h>
#include <fuzzer/FuzzedDataProvider.h>

#include "StubGL.h"
#include "kivgles/KivGLDrawSurface.h"

namespace {

using namespace kivgles;
using stubgl::Expect;

constexpr double EPSILON = 0x1p-24;  // relative error of one float operation
constexpr float UNTOUCHED = 12345.0F;

unsigned int logLines = 0;
void CountLine(const __android_log_message*) { ++logLines; }

// Four operations: two conversions to float, a division, a sum with `offset`.
void ExpectNear(float actual, double ratio, double sign, double offset) {
    const double expected = offset + sign * ratio;
    const double bound = EPSILON * (4 * ratio + 2 * std::fabs(offset));
    Expect(std::fabs(static_cast<double>(actual) - expected) <= bound, "a coordinate is off");
}

double Double(std::uint32_t pixels) { return pixels; }

// Both kinds of NDC conversion: a point (x, y) and a span (width, height), or a centre and radii.
void ExpectNDC(const float (&actual)[4], const std::uint32_t (&pixels)[4], std::uint32_t width,
               std::uint32_t height) {
    if (width == 0 || height == 0) {
        for (const float value : actual) {
            Expect(value == UNTOUCHED, "a refused conversion touches its output");
        }
        return;
    }
    ExpectNear(actual[0], 2 * Double(pixels[0]) / width, 1, -1);
    ExpectNear(actual[1], 2 * Double(pixels[1]) / height, -1, 1);
    ExpectNear(actual[2], 2 * Double(pixels[2]) / width, 1, 0);
    ExpectNear(actual[3], 2 * Double(pixels[3]) / height, 1, 0);
}

void ExpectColor(const TagColorRGBA& actual, const TagKivColorRGBA& color) {
    const float floats[] = {actual.r, actual.g, actual.b, actual.a};
    const std::uint8_t bytes[] = {color.r, color.g, color.b, color.a};
    for (std::size_t i = 0; i < 4; ++i) {
        const double expected = bytes[i] <= 1 ? bytes[i] : bytes[i] / 255.0;
        Expect(std::fabs(static_cast<double>(floats[i]) - expected) <= EPSILON, "a colour is off");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    __android_log_set_logger(CountLine);
    static const KivGLDrawSurface surface;

    FuzzedDataProvider data(bytes, size);
    std::uint32_t pixels[4];
    for (std::uint32_t& value : pixels) {
        value = data.ConsumeIntegral<std::uint32_t>();
    }
    const auto width = data.ConsumeIntegral<std::uint32_t>();
    const auto height = data.ConsumeIntegral<std::uint32_t>();
    const auto format = data.ConsumeIntegral<std::int32_t>();
    const std::vector<std::uint8_t> raw = data.ConsumeBytes<std::uint8_t>(8);
    std::uint8_t colors[8] = {};
    std::copy(raw.begin(), raw.end(), colors);

    const bool usable = width != 0 && height != 0;
    const unsigned int refusal = usable ? 0 : 1;
    const unsigned int badFormat = format == KIV_COLOR_FORMAT_RGBA8888 ? 0 : 1;
    logLines = 0;

    // Coordinates.
    const TagKivRectInfo rect{pixels[0], pixels[1], pixels[2], pixels[3]};
    TagGLRectInfo ndc{UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED};
    surface.ScreenCoordToVCoord(rect, ndc, width, height);
    ExpectNDC({ndc.x, ndc.y, ndc.width, ndc.height}, pixels, width, height);

    const TagKivRoundInfo round{pixels[0], pixels[1], pixels[2], pixels[3]};
    TagGLRoundInfo glRound{UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED};
    surface.ScreenCoordToVCoord(round, glRound, width, height);
    ExpectNDC({glRound.centerX, glRound.centerY, glRound.radiusX, glRound.radiusY}, pixels, width, height);

    TagGLRectInfo source{UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED};
    surface.ScreenCoordToFboCoord(rect, source, width, height);
    if (usable) {
        ExpectNear(source.x, Double(rect.x) / width, 1, 0);
        ExpectNear(source.y, Double(rect.y) / height, -1, 1);
        ExpectNear(source.width, Double(rect.width) / width, 1, 0);
        ExpectNear(source.height, Double(rect.height) / height, 1, 0);
    } else {
        Expect(source.x == UNTOUCHED && source.height == UNTOUCHED,
               "a refused conversion touches its output");
    }
    Expect(logLines == 3 * refusal, "a zero size is not logged once a conversion");

    // Text: colours, and the rest carried along.
    TagKivTextInfo text{};
    text.text = reinterpret_cast<const char16_t*>(&text);
    text.textLength = pixels[0];
    text.fgColor = {colors[0], colors[1], colors[2], colors[3]};
    text.bgColor = {colors[4], colors[5], colors[6], colors[7]};
    text.reserved = colors[0];
    text.fontSize = pixels[1];
    text.bold = colors[1];
    text.underline = colors[2];
    text.italic = colors[3];
    TagGLTextInfo glText{};
    surface.SetTextInfo(text, glText);
    ExpectColor(glText.fgColor, text.fgColor);
    ExpectColor(glText.bgColor, text.bgColor);
    Expect(glText.text == text.text && glText.textLength == text.textLength &&
               glText.reserved == text.reserved && glText.fontSize == text.fontSize &&
               glText.bold == text.bold && glText.underline == text.underline && glText.italic == text.italic,
           "a text field is not carried along");

    // Bitmap: format, size, destination; the blending is the caller's.
    TagKivBitmapInfo bitmap{};
    bitmap.data = bytes;
    bitmap.format = format;
    bitmap.width = pixels[2];
    bitmap.height = pixels[3];
    bitmap.dstRect = rect;
    TagGLBitmapInfo glBitmap{};
    glBitmap.dstRect = {UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED};
    glBitmap.blend = colors[0];
    surface.SetBitmapInfo(glBitmap, bitmap, width, height);
    const TagGLRectInfo& destination = glBitmap.dstRect;
    ExpectNDC({destination.x, destination.y, destination.width, destination.height}, pixels, width, height);
    Expect(glBitmap.data == bytes && glBitmap.width == bitmap.width && glBitmap.height == bitmap.height &&
               glBitmap.glFormat == GL_RGBA && glBitmap.blend == colors[0],
           "a bitmap field is off");
    Expect(surface.ConvertFormatToGLES(format) == GL_RGBA, "a format other than GL_RGBA");
    Expect(logLines == 4 * refusal + 2 * badFormat, "a bad format is not logged once a conversion");
    return 0;
}
