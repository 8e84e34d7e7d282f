#include "CharacterWidths.h"

#include <cstddef>

#include "Device.h"

namespace kivgles::kit {

namespace {

constexpr char32_t LAST_UNIT = 0xFFFF;  // what lies beyond takes two units, which no font has
constexpr unsigned int ABSENT_WIDTH = 30;
constexpr std::size_t MAX_WIDTH_NUM = 1 << 16;  // of a client that never stops making up sizes

unsigned int Measure(KivGLDrawSurface& surface, char16_t unit, int size, bool bold, const char* operation) {
    const char16_t text[] = {unit, 0};
    TagKivTextInfo info{};
    info.text = text;
    info.textLength = 1;
    info.fontSize = static_cast<std::uint32_t>(size);
    info.bold = bold ? 1 : 0;
    unsigned int width = 0;
    unsigned int height = 0;
    Check(surface.KivGetTextSize(info, width, height), operation);
    return width;
}

}  // namespace

void CharacterWidths::Clear() {
    present.clear();
    widths.clear();
}

CharacterWidth CharacterWidths::Find(KivGLDrawSurface& surface, char32_t character, int size,
                                     const char* operation) {
    if (character > LAST_UNIT) {
        return {};
    }
    const auto unit = static_cast<char16_t>(character);
    const std::uint32_t key = static_cast<std::uint32_t>(size) << 16 | unit;
    const auto found = widths.find(key);
    if (found != widths.end()) {
        return found->second;
    }

    CharacterWidth width;
    if (IsPresent(surface, unit, operation)) {
        // A character that reaches to the left of the pen is measured by its bitmap where that is wider than
        // its advance. A bold one's bitmap is a pixel wider still: where both measure the same it is the
        // advance.
        const unsigned int regular = Measure(surface, unit, size, false, operation);
        const unsigned int bold = Measure(surface, unit, size, true, operation);
        width = {true, static_cast<int>(regular), regular == bold};
    }
    if (widths.size() >= MAX_WIDTH_NUM) {
        widths.clear();
    }
    widths.emplace(key, width);
    return width;
}

// The core measures 30 pixels for what the font lacks, and logs it. At a size of one pixel no character is as
// wide.
bool CharacterWidths::IsPresent(KivGLDrawSurface& surface, char16_t unit, const char* operation) {
    const auto found = present.find(unit);
    if (found != present.end()) {
        return found->second;
    }
    const bool isPresent = Measure(surface, unit, 1, false, operation) != ABSENT_WIDTH;
    present.emplace(unit, isPresent);
    return isPresent;
}

}  // namespace kivgles::kit
