#ifndef EXAMPLES_OSD_DEMO_PNGFILE_H
#define EXAMPLES_OSD_DEMO_PNGFILE_H

#include <string>

#include "Image.h"

namespace examples::osd_demo {

// Both throw std::runtime_error, with the file's name, when it cannot be read or written.
Image ReadPng(const std::string& path);
void WritePng(const std::string& path, const Image& image);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_PNGFILE_H
