#include "Pixels.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "Checks.h"
#include "kivgles/kit/Canvas.h"

namespace kivgles::kit {

namespace {

constexpr std::size_t BYTES = 4;  // of a pixel

// In between a pixel is a number 0xAARRGGBB; two channels are computed at a time, with room above each.
constexpr std::uint32_t TWO_CHANNELS = 0x00FF00FF;

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "Cairo's numbers are bytes B, G, R, A");

// Exchanges R and B, as bytes R, G, B, A have them the other way round.
std::uint32_t Reordered(std::uint32_t pixel) {
    const std::uint32_t redAndBlue = pixel & TWO_CHANNELS;
    return (pixel & ~TWO_CHANNELS) | redAndBlue >> 16 | redAndBlue << 16;
}

std::uint32_t Load(const std::uint8_t* pixel) {
    std::uint32_t number = 0;
    std::memcpy(&number, pixel, BYTES);  // bytes need not be aligned
    return number;
}

// Channels times alpha by 255, to the nearest.
std::uint32_t Multiply(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    const std::uint32_t green = (pixel >> 8 & 0xFF) * alpha + 0x80;
    const std::uint32_t others = (pixel & TWO_CHANNELS) * alpha + 0x00800080;
    return (pixel & 0xFF000000) | ((green + (green >> 8)) & 0xFF00) |
           ((others + (others >> 8 & TWO_CHANNELS)) >> 8 & TWO_CHANNELS);
}

// By floating point numbers, of which compilers make vectors even where the machine is not known to multiply
// vectors of integers.
std::uint32_t Divide(std::uint32_t pixel) {
    constexpr float OPAQUE = 255.0003F;  // a little more, so that halves are rounded up
    constexpr float NO_ZERO = 1e-6F;
    constexpr float HALF = 0.5F;  // rounds what is not negative, in a way that vectors can
    const int alpha = static_cast<int>(pixel >> 24);
    const float reciprocal = OPAQUE / (static_cast<float>(alpha) + NO_ZERO);
    // A channel above alpha is no colour, but must not reach into another channel.
    const auto divide = [&](unsigned int shift) {
        const int channel = std::min(static_cast<int>(pixel >> shift & 0xFF), alpha);
        return static_cast<std::uint32_t>(static_cast<int>(static_cast<float>(channel) * reciprocal + HALF))
               << shift;
    };
    return (pixel & 0xFF000000) | divide(16) | divide(8) | divide(0);
}

template <Format FROM, Format TO>
void ConvertRow(const std::uint8_t* from, std::uint8_t* to, std::size_t pixelNum) {
    constexpr bool WAS_STRAIGHT = FROM == Format::STRAIGHT;
    constexpr bool BECOMES_STRAIGHT = TO == Format::STRAIGHT;
    for (std::size_t i = 0; i < pixelNum; ++i) {
        std::uint32_t pixel = Load(from + BYTES * i);
        pixel = FROM == Format::CAIRO ? pixel : Reordered(pixel);
        pixel = WAS_STRAIGHT && !BECOMES_STRAIGHT ? Multiply(pixel) : pixel;
        pixel = BECOMES_STRAIGHT && !WAS_STRAIGHT ? Divide(pixel) : pixel;
        pixel = TO == Format::CAIRO ? pixel : Reordered(pixel);
        std::memcpy(to + BYTES * i, &pixel, BYTES);
    }
}

using Row = void (*)(const std::uint8_t* from, std::uint8_t* to, std::size_t pixelNum);

// By the formats' order.
template <Format FROM>
constexpr Row ROWS_FROM[] = {ConvertRow<FROM, Format::CAIRO>, ConvertRow<FROM, Format::PREMULTIPLIED>,
                             ConvertRow<FROM, Format::STRAIGHT>};
constexpr const Row* ROWS[] = {ROWS_FROM<Format::CAIRO>, ROWS_FROM<Format::PREMULTIPLIED>,
                               ROWS_FROM<Format::STRAIGHT>};

}  // namespace

PixelView ViewOf(CanvasState& canvas) { return {canvas.Pixels(), canvas.size, Format::CAIRO}; }

PixelView ViewOf(const Canvas& canvas, const char* operation) {
    return ViewOf(CanvasState::Of(canvas, operation));
}

PixelView ViewOf(const Image& image, const char* operation) {
    if (image.pixels == nullptr) {
        throw Error(operation, Error::INVALID_ARGUMENT, "the image has no pixels");
    }
    CheckSize(image.size, Canvas::MAX_SIDE, operation, "the image: ");
    return {image.pixels, image.size, image.premultiplied ? Format::PREMULTIPLIED : Format::STRAIGHT};
}

std::size_t Offset(int x, int y, int width) {
    return BYTES *
           (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
}

void Resize(std::vector<std::uint8_t>& room, const Size& size, const char* operation) {
    try {
        room.resize(Offset(0, size.height, size.width));
    } catch (const std::bad_alloc&) {
        throw Error(operation, Error::OUT_OF_MEMORY, "out of memory");
    }
}

void Convert(const PixelView& from, const PixelRect& part, Format format, std::uint8_t* to, int width) {
    const Row convert = ROWS[static_cast<std::size_t>(from.format)][static_cast<std::size_t>(format)];
    for (int y = 0; y < part.height; ++y) {
        convert(from.pixels + Offset(part.x, part.y + y, from.size.width), to + Offset(0, y, width),
                static_cast<std::size_t>(part.width));
    }
}

PixelRect Different(const PixelView& canvas, const PixelRect& part, const std::uint8_t* copy) {
    constexpr int STRIP = 16;  // columns that are compared at once
    const int width = canvas.size.width;
    const auto isCurrent = [&](const PixelRect& rect) {
        std::uint32_t difference = 0;
        for (int y = rect.y; y < rect.y + rect.height && difference == 0; ++y) {
            const std::size_t end = Offset(rect.x + rect.width, y, width);
            for (std::size_t i = Offset(rect.x, y, width); i < end; i += BYTES) {
                difference |= Reordered(Load(canvas.pixels + i)) ^ Load(copy + i);
            }
        }
        return difference == 0;
    };
    PixelRect rest = part;
    for (; rest.height > 0 && isCurrent({rest.x, rest.y, rest.width, 1}); --rest.height) {
        ++rest.y;
    }
    while (rest.height > 0 && isCurrent({rest.x, rest.y + rest.height - 1, rest.width, 1})) {
        --rest.height;
    }
    for (; rest.width > STRIP && isCurrent({rest.x, rest.y, STRIP, rest.height}); rest.width -= STRIP) {
        rest.x += STRIP;
    }
    while (rest.width > STRIP && isCurrent({rest.x + rest.width - STRIP, rest.y, STRIP, rest.height})) {
        rest.width -= STRIP;
    }
    return rest.height > 0 ? rest : PixelRect();
}

TagKivBitmapInfo BitmapOf(const PixelView& from, const PixelRect& part, Format format,
                          std::vector<std::uint8_t>& room, const char* operation) {
    TagKivBitmapInfo bitmap{};
    bitmap.format = KIV_COLOR_FORMAT_RGBA8888;
    bitmap.width = static_cast<std::uint32_t>(part.width);
    bitmap.height = static_cast<std::uint32_t>(part.height);
    if (from.format == format && part.width == from.size.width) {
        bitmap.data = from.pixels + Offset(0, part.y, part.width);
    } else {
        Resize(room, {part.width, part.height}, operation);
        Convert(from, part, format, room.data(), part.width);
        bitmap.data = room.data();
    }
    return bitmap;
}

TagKivColorRGBA Premultiplied(const Color& color) {
    const std::uint32_t pixel = Multiply(std::uint32_t{color.a} << 24 | std::uint32_t{color.r} << 16 |
                                         std::uint32_t{color.g} << 8 | color.b);
    const auto component = [pixel](unsigned int shift) {
        const auto value = static_cast<std::uint8_t>(pixel >> shift);
        return value == 1 ? std::uint8_t{2} : value;
    };
    return {component(16), component(8), component(0), component(24)};
}

}  // namespace kivgles::kit
