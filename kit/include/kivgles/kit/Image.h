#ifndef KIVGLES_KIT_IMAGE_H
#define KIVGLES_KIT_IMAGE_H

/// @file
/// Pixels of the client's, to be drawn into a canvas or a layer.

#include <cstdint>

#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

/// A view of pixels that the client has loaded. It owns nothing; the pixels are read until the call that is
/// given the image returns.
struct Image {
    /// `size.width` * `size.height` pixels of four bytes R, G, B, A, top row first, without padding.
    const std::uint8_t* pixels = nullptr;
    Size size;  ///< Of the image in its own pixels; drawn it is scaled to where it goes.
    /// Whether R, G and B have been multiplied by A already, as Cairo and many decoders do it. PNG does not.
    bool premultiplied = false;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_IMAGE_H
