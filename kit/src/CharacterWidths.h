#ifndef KIVGLES_KIT_CHARACTERWIDTHS_H
#define KIVGLES_KIT_CHARACTERWIDTHS_H

#include <cstdint>
#include <unordered_map>

#include "DeviceLock.h"
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
    void Clear() KIVGLES_REQUIRES(DEVICE_LOCK);

    // Throws Error for `operation` if the core does not measure.
    CharacterWidth Find(KivGLDrawSurface& surface, char32_t character, int size, const char* operation)
        KIVGLES_REQUIRES(DEVICE_LOCK);

 private:
    bool IsPresent(KivGLDrawSurface& surface, char16_t unit, const char* operation)
        KIVGLES_REQUIRES(DEVICE_LOCK);

    std::unordered_map<char16_t, bool> present KIVGLES_GUARDED_BY(DEVICE_LOCK);
    // By size and unit.
    std::unordered_map<std::uint32_t, CharacterWidth> widths KIVGLES_GUARDED_BY(DEVICE_LOCK);
};

}  // namespace kit
}  // namespace kivgles

#endif  // KIVGLES_KIT_CHARACTERWIDTHS_H
