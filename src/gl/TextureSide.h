#ifndef KIVGLES_GL_TEXTURESIDE_H
#define KIVGLES_GL_TEXTURESIDE_H

#include <algorithm>

#include <GLES2/gl2.h>

namespace kivgles {

// A texture's side as it is handed to glTexImage2D: one beyond what any GL has becomes the smallest that
// every GL refuses. From 2^25 on drivers are known to overrun their stack before they compare it with their
// limit.
inline GLsizei TextureSide(GLsizei side) {
    constexpr GLsizei REFUSED_BY_ALL = 1 << 24;
    return std::min(side, REFUSED_BY_ALL);
}

}  // namespace kivgles

#endif  // KIVGLES_GL_TEXTURESIDE_H
