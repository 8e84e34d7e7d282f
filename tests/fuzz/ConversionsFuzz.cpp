// The conversions from pixels and bytes against the same formulas in double precision.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <tuple>

#include <GLES2/gl2.h>
#include <android/log.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/StubGL.h"

namespace {

using namespace kivgles;
using stubgl::Expect;

// Any bytes will do: a conversion does not look where a pointer leads.
struct Arguments {
    std::uint32_t target[2];  // width and height
    TagKivRectInfo rect;
    TagKivRoundInfo round;
    TagKivBitmapInfo bitmap;
    TagKivTextInfo text;
};

constexpr double EPSILON = 0x1p-24;  // relative error of one float operation
constexpr float UNTOUCHED = 12345.0F;
constexpr TagGLRectInfo UNTOUCHED_RECT{UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED};

unsigned int logLines = 0;

bool IsRefused(const Arguments& input) { return input.target[0] == 0 || input.target[1] == 0; }

// The target extends over so many units: 2 of NDC, whose origin is its centre, or 1 of texture coordinates.
void ExpectRect(const Arguments& input, const TagKivRectInfo& rect, double extent,
                const TagGLRectInfo& glRect) {
    const std::uint32_t pixels[] = {rect.x, rect.y, rect.width, rect.height};
    const float actual[] = {glRect.x, glRect.y, glRect.width, glRect.height};
    const double offsets[] = {1 - extent, 1, 0, 0};
    for (std::size_t i = 0; i < 4; ++i) {
        const double ratio = extent * pixels[i] / input.target[i % 2];
        const double expected = offsets[i] + (i == 1 ? -ratio : ratio);  // y points upwards
        // Four operations: two conversions to float, a division, a sum with the offset.
        const double bound = EPSILON * (4 * ratio + 2 * std::fabs(offsets[i]));
        const bool isNear = std::fabs(static_cast<double>(actual[i]) - expected) <= bound;
        Expect(IsRefused(input) ? actual[i] == UNTOUCHED : isNear,
               "a coordinate is off, or touched by a refusal");
    }
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
    static const KivGLDrawSurface surface;
    __android_log_set_logger([](const __android_log_message*) { ++logLines; });
    logLines = 0;
    Arguments input{};
    std::memcpy(&input, bytes, std::min(size, sizeof(input)));
    const auto& [target, rect, round, bitmap, text] = input;

    TagGLRectInfo ndc = UNTOUCHED_RECT;
    surface.ScreenCoordToVCoord(rect, ndc, target[0], target[1]);
    ExpectRect(input, rect, 2, ndc);

    TagGLRectInfo source = UNTOUCHED_RECT;
    surface.ScreenCoordToFboCoord(rect, source, target[0], target[1]);
    ExpectRect(input, rect, 1, source);

    TagGLRoundInfo glRound{UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED};
    surface.ScreenCoordToVCoord(round, glRound, target[0], target[1]);
    ExpectRect(input, {round.centerX, round.centerY, round.radiusX, round.radiusY}, 2,
               {glRound.centerX, glRound.centerY, glRound.radiusX, glRound.radiusY});

    TagGLTextInfo glText{};
    surface.SetTextInfo(text, glText);
    ExpectColor(glText.fgColor, text.fgColor);
    ExpectColor(glText.bgColor, text.bgColor);
    const auto textRest = [](const auto& info) {
        return std::make_tuple(info.text, info.textLength, info.reserved, info.fontSize, info.bold,
                               info.underline, info.italic);
    };
    Expect(textRest(glText) == textRest(text), "a text field is not carried along");

    TagGLBitmapInfo glBitmap{nullptr, UNTOUCHED_RECT, 0, 0, 0, text.bold};
    surface.SetBitmapInfo(glBitmap, bitmap, target[0], target[1]);
    ExpectRect(input, bitmap.dstRect, 2, glBitmap.dstRect);
    Expect(glBitmap.data == bitmap.data && glBitmap.width == bitmap.width &&
               glBitmap.height == bitmap.height && glBitmap.glFormat == GL_RGBA &&
               glBitmap.blend == text.bold,  // the caller's
           "a bitmap field is off");

    const unsigned int refused = IsRefused(input) ? 4 : 0;
    const unsigned int badFormats = bitmap.format == KIV_COLOR_FORMAT_RGBA8888 ? 0 : 1;
    Expect(logLines == refused + badFormats, "a refusal is not logged once a conversion");
    return 0;
}
