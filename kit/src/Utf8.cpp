#include "Utf8.h"

#include <iterator>

#include <utf8.h>

namespace kivgles::kit {

std::u32string DecodeUtf8(std::string_view text) {
    std::string valid;
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid));
    std::u32string characters;
    utf8::utf8to32(valid.begin(), valid.end(), std::back_inserter(characters));
    return characters;
}

}  // namespace kivgles::kit
