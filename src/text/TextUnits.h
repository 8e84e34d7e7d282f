#ifndef KIVGLES_TEXT_TEXTUNITS_H
#define KIVGLES_TEXT_TEXTUNITS_H

#include <cstddef>
#include <string_view>

#include <android/log.h>

#include "kivgles/KivGLRecords.h"

namespace kivgles {

// The units of a request's text: at most its length, never past its ending 0; none for a null text.
inline std::u16string_view TextUnits(const TagGLTextInfo& info) {
    if (info.text == nullptr) {
        return {};
    }
    std::size_t count = 0;
    while (count < info.textLength && info.text[count] != u'\0') {
        ++count;
    }
    return {info.text, count};
}

// The line for a character that is left out of a request.
inline void LogAbsentChar(const char* tag, char16_t c) {
    __android_log_print(ANDROID_LOG_ERROR, tag, "Char %lu is not exit\n", static_cast<unsigned long>(c));
}

}  // namespace kivgles

#endif  // KIVGLES_TEXT_TEXTUNITS_H
