#ifndef KIVGLES_TEXT_TEXTUNITS_H
#define KIVGLES_TEXT_TEXTUNITS_H

#include <cstddef>
#include <string_view>

#include <android/log.h>

#include "kivgles/KivGLRecords.h"

namespace kivgles {

// The units of a text: at most `most`, never past its ending 0; none of a null text. Read one by one: behind
// the ending 0 the text need not be the caller's.
inline std::u16string_view TextUnits(const char16_t* text, std::size_t most) {
    std::size_t count = 0;
    while (text != nullptr && count < most && text[count] != u'\0') {
        ++count;
    }
    return {text, count};
}
inline std::u16string_view TextUnits(const TagGLTextInfo& info) {
    return TextUnits(info.text, info.textLength);
}

// The line for a character that is left out of a request.
inline void LogAbsentChar(const char* tag, char16_t c) {
    __android_log_print(ANDROID_LOG_ERROR, tag, "Char %lu is not exit\n", static_cast<unsigned long>(c));
}

}  // namespace kivgles

#endif  // KIVGLES_TEXT_TEXTUNITS_H
