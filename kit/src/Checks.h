#ifndef KIVGLES_KIT_CHECKS_H
#define KIVGLES_KIT_CHECKS_H

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "kivgles/kit/Error.h"
#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

inline PixelRect Whole(const Size& size) { return {0, 0, size.width, size.height}; }
inline bool AreEqual(const Size& a, const Size& b) { return a.width == b.width && a.height == b.height; }
inline bool IsEmpty(const PixelRect& rect) { return rect.width <= 0 || rect.height <= 0; }
inline std::int64_t Area(const PixelRect& rect) { return std::int64_t{rect.width} * rect.height; }

inline std::string InWords(const Size& size) {
    return std::to_string(size.width) + " by " + std::to_string(size.height) + " pixels";
}

// Throws for `operation` unless there can be such a picture; `what` it is precedes the words: "the image: ".
// `remedy` follows them where a client can have more.
inline void CheckSize(const Size& size, int longest, const char* operation, const std::string& what = "",
                      const std::string& remedy = "") {
    if (size.width <= 0 || size.height <= 0) {
        throw Error(operation, Error::INVALID_ARGUMENT, what + InWords(size) + " hold nothing");
    }
    if (std::max(size.width, size.height) > longest) {
        const std::string limit = std::to_string(longest) + " on a side" + remedy;
        throw Error(operation, Error::TOO_LARGE, what + InWords(size) + " are more than " + limit);
    }
}
inline void CheckLayerSize(const Size& size, int longest, const char* operation) {
    CheckSize(size, longest, operation, "", ": raise the Screen's maxLayerSide");
}

// What reads it would search through a folder, and wait for a pipe.
inline void CheckFile(const std::string& path, const char* operation) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored) || !std::ifstream(path).good()) {
        throw Error(operation, Error::BAD_FILE, path + " cannot be read");
    }
}

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_CHECKS_H
