#ifndef KIVGLES_TESTS_TEXT_TEXTTEST_H
#define KIVGLES_TESTS_TEXT_TEXTTEST_H

// What the tests of text share: fonts and requests.

#include <ostream>
#include <string>
#include <string_view>

#include "kivgles/KivGLRecords.h"
#include "support/Target.h"

namespace kivgles {

// A font that make_fonts.py made.
inline std::string TestFont(const std::string& name) { return KIVGLES_TEST_FONTS "/" + name; }

struct TextStyle {
    unsigned int size;
    bool bold = false;
    bool italic = false;
};
inline void PrintTo(const TextStyle& style, std::ostream* stream) {
    *stream << style.size << (style.bold ? " bold" : "") << (style.italic ? " italic" : "");
}

constexpr TextStyle STANDARD{40};
constexpr TextStyle STYLED{0};  // 40 pixels too, but from the styled atlas
constexpr TextStyle OTHER{25, true, true};

// White text; its characters stay the caller's.
inline TagGLTextInfo Request(std::u16string_view text, const TextStyle& style = STANDARD) {
    TagGLTextInfo info{};
    info.text = text.data();
    info.textLength = static_cast<std::uint32_t>(text.size());
    info.fgColor = {1, 1, 1, 1};
    info.fontSize = style.size;
    info.bold = style.bold ? 1 : 0;
    info.italic = style.italic ? 1 : 0;
    return info;
}

}  // namespace kivgles

#endif  // KIVGLES_TESTS_TEXT_TEXTTEST_H
