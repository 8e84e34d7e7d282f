#ifndef KIVGLES_GL_TEXTURESIDE_H
#define KIVGLES_GL_TEXTURESIDE_H

#include <GLES2/gl2.h>

namespace kivgles {

// A texture's side as it is handed to glTexImage2D. One beyond what any GL has becomes a negative one, which
// every GL refuses before it computes with it: from 2^21 on drivers are known to overrun their stack before
// they compare a side with their limit.
inline GLsizei TextureSide(GLsizei side) {
    constexpr GLsizei LARGEST_OF_ANY_GL = 1 << 17;
    return side <= LARGEST_OF_ANY_GL ? side : -1;
}

}  // namespace kivgles

#endif  // KIVGLES_GL_TEXTURESIDE_H
