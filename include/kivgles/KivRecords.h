#ifndef KIVGLES_KIVRECORDS_H
#define KIVGLES_KIVRECORDS_H

/// @file
/// What a client hands to KivGLDrawSurface: plain records in pixel space, copied by value.
///
/// Pixel space: the origin is the top-left corner of the target (the window or a layer), x grows to the
/// right, y grows downwards, all values are unsigned. Pointers inside a record stay the caller's; each
/// operation says until when it reads them.

#include <cstdint>

namespace kivgles {

/// The one colour format: four bytes a pixel in the order R, G, B, A.
constexpr int KIV_COLOR_FORMAT_RGBA8888 = 9;

/// A rectangle in pixels of its target.
struct TagKivRectInfo {
    std::uint32_t x;       ///< Left edge.
    std::uint32_t y;       ///< Top edge.
    std::uint32_t width;   ///< Extent to the right.
    std::uint32_t height;  ///< Extent downwards.
};

/// A filled circle or ellipse in pixels of its target.
struct TagKivRoundInfo {
    std::uint32_t centerX;  ///< Centre, from the target's left side.
    std::uint32_t centerY;  ///< Centre, from the target's top side.
    std::uint32_t radiusX;  ///< Horizontal radius.
    std::uint32_t radiusY;  ///< Vertical radius; equal to `radiusX` for a circle.
};

/// A colour, not premultiplied. A component of 1 means full intensity, exactly as 255 does; every other
/// value c means c / 255.
struct TagKivColorRGBA {
    std::uint8_t r;  ///< Red.
    std::uint8_t g;  ///< Green.
    std::uint8_t b;  ///< Blue.
    std::uint8_t a;  ///< Opacity: 0 is transparent.
};

/// One line of text and its style.
struct TagKivTextInfo {
    const char16_t* text;      ///< UTF-16 code units ended by a 0 unit; the caller's.
    std::uint32_t textLength;  ///< Number of units, the ending 0 not counted; at most 127 are drawn.
    TagKivColorRGBA fgColor;   ///< Colour of glyphs and underline.
    TagKivColorRGBA bgColor;   ///< Colour of the background rectangle; `a` 0 means none is drawn.
    std::uint8_t reserved;     ///< Carried along, without meaning.
    /// Glyph size in pixels. 40, upright and regular, is the standard style, which has the size given to
    /// KivLoadFont. 0 means 40, made for the request.
    std::uint32_t fontSize;
    std::uint8_t bold;       ///< Non-zero: emboldened.
    std::uint8_t underline;  ///< Non-zero: a bar of 2 pixels is drawn under the text.
    std::uint8_t italic;     ///< Non-zero: slanted.
};

/// A bitmap and where it goes. The image is scaled to fill `dstRect`.
struct TagKivBitmapInfo {
    /// `width` * `height` pixels of 4 bytes, top row first, no padding, not premultiplied; the caller's. With
    /// null, a side of 0 or one longer than GL's largest texture the picture is not defined, and neither a
    /// code nor a line says so.
    const std::uint8_t* data;
    std::int32_t format;      ///< KIV_COLOR_FORMAT_RGBA8888; anything else is logged and read as that.
    std::uint32_t reserved1;  ///< Without meaning.
    std::uint32_t reserved2;  ///< Without meaning.
    std::uint32_t width;      ///< Width of `data` in pixels.
    std::uint32_t height;     ///< Height of `data` in pixels.
    TagKivRectInfo dstRect;   ///< Destination, in pixels of the window (KivDrawBitmap: scaled to the layer).
};

/// A copy from one layer into another. The source is scaled to fill the destination.
struct TagKivBlitInfo {
    std::uint32_t srcFboHandle;  ///< Layer read from.
    std::uint32_t dstFboHandle;  ///< Layer (or the window, FBO_HANDLE_BASE) written to.
    TagKivRectInfo srcRect;      ///< In pixels of the source.
    TagKivRectInfo dstRect;      ///< In pixels of the destination.
};

}  // namespace kivgles

#endif  // KIVGLES_KIVRECORDS_H
