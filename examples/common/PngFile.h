#ifndef EXAMPLES_COMMON_PNGFILE_H
#define EXAMPLES_COMMON_PNGFILE_H

#include <string>

#include "common/Image.h"

namespace examples {

// Both throw std::runtime_error, with the file's name, when it cannot be read or written.
Image ReadPng(const std::string& path);
void WritePng(const std::string& path, const Image& image);

}  // namespace examples

#endif  // EXAMPLES_COMMON_PNGFILE_H
