#ifndef KIVGLES_KIT_BITMAP_H
#define KIVGLES_KIT_BITMAP_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "CanvasState.h"
#include "kivgles/KivRecords.h"
#include "kivgles/kit/Image.h"

// Pixels of canvases and images as the core takes them: bytes R, G, B, A, rows without anything between them.

namespace kivgles::kit {

using Conversion = void (*)(const std::uint8_t* from, std::uint8_t* to, std::size_t pixelNum);

// Pixels that somebody else owns, row by row, and what makes the core's of them, or null.
struct PixelSource {
    const std::uint8_t* pixels;
    Size size;
    Conversion convert;
};

// To be premultiplied, or straight to be blended.
PixelSource SourceOf(CanvasState& canvas, bool isBlended = false);
PixelSource SourceOf(const Image& image, bool isBlended);

// Of a pixel in a picture of this width, in bytes.
std::size_t Offset(int x, int y, int width);

// Room for a picture; throws Error for `operation` if there is none.
void Resize(std::vector<std::uint8_t>& room, const Size& size, const char* operation);

// A part of a picture, to where it begins in another one of this width.
void ConvertPart(const PixelSource& source, const PixelRect& part, std::uint8_t* to, int width);

// A part of a picture. Its pixels are in `room` if they could not stay where they are.
TagKivBitmapInfo BitmapOf(const PixelSource& source, const PixelRect& part, std::vector<std::uint8_t>& room,
                          const char* operation);

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_BITMAP_H
