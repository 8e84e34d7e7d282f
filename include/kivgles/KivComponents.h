#ifndef KIVGLES_KIVCOMPONENTS_H
#define KIVGLES_KIVCOMPONENTS_H

/// @file
/// The bits of KivGLDrawSurface::Init's mask. What is not named there is created on first use.

namespace kivgles {

constexpr unsigned int ENABLE_TEXT = 0x01;         ///< Text renderer (its font comes with KivLoadFont).
constexpr unsigned int ENABLE_BLIT = 0x02;         ///< Copies between layers.
constexpr unsigned int ENABLE_BITMAP = 0x04;       ///< Bitmaps.
constexpr unsigned int ENABLE_RECT = 0x08;         ///< Rectangles, text backgrounds and underlines.
constexpr unsigned int ENABLE_FRAME = 0x10;        ///< Display of a layer on the window.
constexpr unsigned int ENABLE_FBO_MANAGER = 0x20;  ///< The table of layers.
constexpr unsigned int ENABLE_ROUND = 0x40;        ///< Circles and ellipses.

}  // namespace kivgles

#endif  // KIVGLES_KIVCOMPONENTS_H
