#include "Bitmap.h"

#include <cstring>
#include <new>

#include "Pixels.h"
#include "kivgles/kit/Error.h"

namespace kivgles::kit {

namespace {

constexpr std::size_t BYTES = 4;  // of a pixel

void CopyPixels(const std::uint8_t* from, std::uint8_t* to, std::size_t pixelNum) {
    std::memcpy(to, from, BYTES * pixelNum);
}

}  // namespace

PixelSource SourceOf(CanvasState& canvas, bool isBlended) {
    return {canvas.Pixels(), canvas.Size(), isBlended ? StraightFromCairo : PremultipliedFromCairo};
}

PixelSource SourceOf(const Image& image, bool isBlended) {
    const Conversion convert = isBlended ? StraightFromPremultiplied : PremultipliedFromStraight;
    return {image.pixels, image.size, image.premultiplied == isBlended ? convert : nullptr};
}

std::size_t Offset(int x, int y, int width) {
    return BYTES *
           (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
}

void Resize(std::vector<std::uint8_t>& room, const Size& size, const char* operation) {
    try {
        room.resize(Offset(0, size.height, size.width));
    } catch (const std::bad_alloc&) {
        throw Error(operation, Error::OUT_OF_MEMORY);
    }
}

void ConvertPart(const PixelSource& source, const PixelRect& part, std::uint8_t* to, int width) {
    for (int y = 0; y < part.height; ++y) {
        (source.convert != nullptr ? source.convert : CopyPixels)(
            source.pixels + Offset(part.x, part.y + y, source.size.width), to + Offset(0, y, width),
            static_cast<std::size_t>(part.width));
    }
}

TagKivBitmapInfo BitmapOf(const PixelSource& source, const PixelRect& part, std::vector<std::uint8_t>& room,
                          const char* operation) {
    TagKivBitmapInfo bitmap{};
    bitmap.format = KIV_COLOR_FORMAT_RGBA8888;
    bitmap.width = static_cast<std::uint32_t>(part.width);
    bitmap.height = static_cast<std::uint32_t>(part.height);
    if (source.convert == nullptr && part.width == source.size.width) {
        bitmap.data = source.pixels + Offset(0, part.y, part.width);
    } else {
        Resize(room, {part.width, part.height}, operation);
        ConvertPart(source, part, room.data(), part.width);
        bitmap.data = room.data();
    }
    return bitmap;
}

}  // namespace kivgles::kit
