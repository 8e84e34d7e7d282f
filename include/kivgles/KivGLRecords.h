#ifndef KIVGLES_KIVGLRECORDS_H
#define KIVGLES_KIVGLRECORDS_H

/// @file
/// What the draw thread works on: the client's records converted to GL's coordinates and float colours.
///
/// Destinations are in normalised device coordinates (NDC: -1 to 1 across the target, y upwards), sources in
/// texture coordinates of a layer (0 to 1, y upwards). A rectangle names its top-left corner and extends
/// right by `width` and down by `height`, so its bottom edge is at `y` - `height`.

#include <cstdint>

namespace kivgles {

/// Handle index of the window; layer n (1 to 15) has FBO_HANDLE_BASE + n.
constexpr std::uint32_t FBO_HANDLE_BASE = 0x10000;

/// @addtogroup gl_records
/// @{

/// A rectangle, in NDC as a destination and in texture coordinates as a source.
struct TagGLRectInfo {
    float x;       ///< Left edge.
    float y;       ///< Top edge.
    float width;   ///< Extent to the right.
    float height;  ///< Extent downwards.
};

/// An ellipse in NDC; the radii are in units of their own axis.
struct TagGLRoundInfo {
    float centerX;  ///< Centre.
    float centerY;  ///< Centre.
    float radiusX;  ///< Radius along x.
    float radiusY;  ///< Radius along y.
};

/// A colour, each component 0.0 to 1.0, not premultiplied.
struct TagColorRGBA {
    float r;  ///< Red.
    float g;  ///< Green.
    float b;  ///< Blue.
    float a;  ///< Opacity.
};

/// A text request with converted colours; the other fields as in TagKivTextInfo.
struct TagGLTextInfo {
    const char16_t* text;      ///< UTF-16 code units ended by a 0 unit; owned by whoever filled the record.
    std::uint32_t textLength;  ///< Number of units, the ending 0 not counted.
    TagColorRGBA fgColor;      ///< Colour of the glyphs.
    TagColorRGBA bgColor;      ///< Colour of the background.
    std::uint8_t reserved;     ///< Carried along, without meaning.
    std::uint32_t fontSize;    ///< Glyph size in pixels, 0 means 40.
    std::uint8_t bold;         ///< Non-zero: emboldened.
    std::uint8_t underline;    ///< Non-zero: underlined.
    std::uint8_t italic;       ///< Non-zero: slanted.
};

/// A bitmap request.
struct TagGLBitmapInfo {
    const std::uint8_t* data;  ///< The caller's pixels.
    TagGLRectInfo dstRect;     ///< Destination in NDC.
    std::uint32_t width;       ///< Width of `data` in pixels.
    std::uint32_t height;      ///< Height of `data` in pixels.
    std::uint32_t glFormat;    ///< Internal format and format of the upload: GL_RGBA.
    std::uint8_t blend;        ///< 0: replaces the target's pixels; 1: is alpha-blended over them.
};

/// One render target. A copy owns nothing: the GL names belong to the table that made them, and a copy does
/// not follow later changes of its slot.
struct TagFrameBuffObject {
    std::uint32_t fboHandleIndex;  ///< FBO_HANDLE_BASE + slot; 0xFFFFFFFF in a free slot or an unset record.
    std::uint32_t textureId;       ///< GL texture name; 0 for the window.
    std::uint32_t fboId;           ///< GL framebuffer name; 0 for the window.
    std::int32_t width;            ///< Pixels.
    std::int32_t height;           ///< Pixels.
};

/// A copy between render targets, or the display of one on the window (then `dstFbo` stays unset).
struct TagGLBlitInfo {
    TagFrameBuffObject srcFbo;  ///< Read from.
    TagFrameBuffObject dstFbo;  ///< Written to.
    TagGLRectInfo srcRect;      ///< Texture coordinates of the source.
    TagGLRectInfo dstRect;      ///< NDC of the destination.
};

/// @}

}  // namespace kivgles

#endif  // KIVGLES_KIVGLRECORDS_H
