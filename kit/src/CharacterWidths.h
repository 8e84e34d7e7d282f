#ifndef KIVGLES_KIT_CHARACTERWIDTHS_H
#define KIVGLES_KIT_CHARACTERWIDTHS_H

#include <cstdint>
#include <unordered_map>

#include "TextLayout.h"

namespace kivgles {

class KivGLDrawSurface;

namespace kit {

// What the core says of the loaded font's characters, asked once for each.
//
// Owner:  Device; of one font. Thread: any, with the device's lock held.
// Units:  pixels of GL.
class CharacterWidths {
 public:
    void Clear();

    // Throws Error for `operation` if the core does not measure.
    CharacterWidth Find(KivGLDrawSurface& surface, char32_t character, int size, const char* operation);

 private:
    bool IsPresent(KivGLDrawSurface& surface, char16_t unit, const char* operation);

    std::unordered_map<char16_t, bool> present;
    std::unordered_map<std::uint32_t, CharacterWidth> widths;  // by size and unit
};

}  // namespace kit
}  // namespace kivgles

#endif  // KIVGLES_KIT_CHARACTERWIDTHS_H
