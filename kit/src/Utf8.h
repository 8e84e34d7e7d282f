#ifndef KIVGLES_KIT_UTF8_H
#define KIVGLES_KIT_UTF8_H

#include <string>
#include <string_view>

namespace kivgles::kit {

// The characters of a text; bytes that are not UTF-8 become U+FFFD.
std::u32string DecodeUtf8(std::string_view text);

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_UTF8_H
