#include "PngFile.h"

#include <stdexcept>

#include <png.h>

namespace examples::osd_demo {

namespace {

constexpr std::uint32_t MAX_SIDE = 4096;  // more than a logo needs, and within every GL's textures

png_image NewPngImage() {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    return png;
}

[[noreturn]] void Fail(const std::string& path, const char* reason) {
    throw std::runtime_error(path + ": " + reason);
}

}  // namespace

Image ReadPng(const std::string& path) {
    png_image png = NewPngImage();
    if (png_image_begin_read_from_file(&png, path.c_str()) == 0) {
        Fail(path, png.message);
    }
    if (png.width > MAX_SIDE || png.height > MAX_SIDE) {
        png_image_free(&png);
        Fail(path, "wider or higher than 4096 pixels");
    }
    png.format = PNG_FORMAT_RGBA;
    Image image(png.width, png.height);
    if (png_image_finish_read(&png, nullptr, image.rgba.data(), 0, nullptr) == 0) {
        Fail(path, png.message);
    }
    return image;
}

void WritePng(const std::string& path, const Image& image) {
    png_image png = NewPngImage();
    png.width = image.width;
    png.height = image.height;
    png.format = PNG_FORMAT_RGBA;
    if (png_image_write_to_file(&png, path.c_str(), 0, image.rgba.data(), 0, nullptr) == 0) {
        Fail(path, png.message);
    }
}

}  // namespace examples::osd_demo
