#ifndef KIVGLES_TESTS_SUPPORT_MOSTLIVE_H
#define KIVGLES_TESTS_SUPPORT_MOSTLIVE_H

#include <cstddef>
#include <string_view>

namespace kivgles {

// How many objects of a kind ("texture", "context", "face", ...) a surface has at most, with so many layers.
// Each renderer has a program and a buffer, each atlas a texture, each layer a texture and a framebuffer.
// Shaders go as soon as they are linked.
constexpr std::size_t MostLive(std::string_view kind, std::size_t layers) {
    constexpr std::size_t RENDERERS = 6;
    constexpr std::size_t ATLASES = 2;
    constexpr std::size_t FACES = 2;  // one to draw with, one to measure
    return kind == "texture"                       ? layers + ATLASES
           : kind == "framebuffer"                 ? layers
           : kind == "program" || kind == "buffer" ? RENDERERS
           : kind == "shader"                      ? 0
           : kind == "face"                        ? FACES
                                                   : 1;  // context, surface, FreeType's library
}

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SUPPORT_MOSTLIVE_H
