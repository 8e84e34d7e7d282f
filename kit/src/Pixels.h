#ifndef KIVGLES_KIT_PIXELS_H
#define KIVGLES_KIT_PIXELS_H

#include <vector>

#include "CanvasState.h"
#include "kivgles/KivRecords.h"

// Pixels of canvases and images, and how they are handed over to the core.

namespace kivgles::kit {

// Cairo's are premultiplied numbers 0xAARRGGBB; those of clients and the core are bytes R, G, B, A.
enum class Format { CAIRO, PREMULTIPLIED, STRAIGHT };

// Pixels that somebody else owns, rows without anything between them.
struct PixelView {
    const std::uint8_t* pixels;
    Size size;
    Format format;
};

// Of what `operation` was given; throws for a canvas that was moved away and an image that is none.
PixelView ViewOf(CanvasState& canvas);
PixelView ViewOf(const Canvas& canvas, const char* operation);
PixelView ViewOf(const Image& image, const char* operation);

// Of a pixel in a picture of this width, in bytes.
std::size_t Offset(int x, int y, int width);

// Room for a picture; throws for `operation` if there is none.
void Resize(std::vector<std::uint8_t>& room, const Size& size, const char* operation);

// A part of a picture, to where it begins in another one of this width. The two must not overlap.
void Convert(const PixelView& from, const PixelRect& part, Format format, std::uint8_t* to, int width);

// What of a part of a canvas is different in its premultiplied copy, or a little more.
PixelRect Different(const PixelView& canvas, const PixelRect& part, const std::uint8_t* copy);

// A part of a picture for the core. Its pixels are in `room` if they could not stay where they are.
TagKivBitmapInfo BitmapOf(const PixelView& from, const PixelRect& part, Format format,
                          std::vector<std::uint8_t>& room, const char* operation);

// A colour as a layer holds it, for the core: there a component of 1 is the full intensity, so it gets 2.
TagKivColorRGBA Premultiplied(const Color& color);

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_PIXELS_H
