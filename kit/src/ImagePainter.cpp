#include "ImagePainter.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Pixels.h"
#include "Spans.h"
#include "kivgles/kit/Error.h"

namespace kivgles::kit {

namespace {

// A rectangle of a target as the core takes it for a bitmap: as if the target had the window's size. False if
// that does not come out even.
bool ForBitmap(const Rect& rect, const Size& target, const Size& window, TagKivRectInfo& converted) {
    bool isEven = rect.x >= 0 && rect.y >= 0;
    const auto convert = [&isEven](int number, int from, int to) {
        const std::int64_t product = std::int64_t{number} * to;
        isEven = isEven && product % from == 0;
        return static_cast<std::uint32_t>(product / from);
    };
    converted = {convert(rect.x, target.width, window.width), convert(rect.y, target.height, window.height),
                 convert(rect.width, target.width, window.width),
                 convert(rect.height, target.height, window.height)};
    return isEven;
}

// Draws an image into layers.
class ImagePainter {
 public:
    ImagePainter(LayerState& targetLayer, const Image& image, bool isBlended, const char* name)
        KIVGLES_REQUIRES(DEVICE_LOCK)
        : layer(targetLayer), surface(layer.device->Surface(name)), blended(isBlended), operation(name) {
        bitmap.data = blended ? StraightPixels(image, converted) : PremultipliedPixels(image, converted);
        bitmap.format = KIV_COLOR_FORMAT_RGBA8888;
        bitmap.width = static_cast<std::uint32_t>(image.size.width);
        bitmap.height = static_cast<std::uint32_t>(image.size.height);
    }

    // In pixels of GL.
    void Draw(const Rect& to) KIVGLES_REQUIRES(DEVICE_LOCK) {
        const Size window = layer.device->WindowSize();
        if (ForBitmap(to, layer.Bounds(), window, bitmap.dstRect)) {
            DrawInto(layer.handle);
            return;
        }
        const auto draw = [&](unsigned int handle, const Size& size) KIVGLES_REQUIRES(DEVICE_LOCK) {
            // Even for these sizes.
            (void)ForBitmap({0, 0, to.width, to.height}, size, window, bitmap.dstRect);
            DrawInto(handle);
        };
        layer.DrawBeyondEdges(to, blended, draw, operation);
    }

 private:
    void DrawInto(unsigned int handle) KIVGLES_REQUIRES(DEVICE_LOCK) {
        Check(blended ? surface.KivDrawBitmapByBlend(handle, bitmap) : surface.KivDrawBitmap(handle, bitmap),
              operation);
    }

    LayerState& layer;
    KivGLDrawSurface& surface;
    bool blended;
    const char* operation;
    std::vector<std::uint8_t> converted;  // pixels, if they are not as they are needed
    TagKivBitmapInfo bitmap{};
};

}  // namespace

void DrawImage(LayerState& layer, const Image& image, const Rect& to, bool blended, const char* operation) {
    if (image.pixels == nullptr || IsEmpty({0, 0, image.size.width, image.size.height})) {
        throw Error(operation, Error::INVALID_ARGUMENT);
    }
    const int longest = std::max({image.size.width, image.size.height, to.width, to.height});
    if (longest > layer.device->MaxLayerSide()) {
        throw Error(operation, Error::TOO_LARGE);
    }
    const DeviceLock lock(*layer.device);
    (void)layer.device->Surface(operation);  // without a window an error, even if there is nothing to draw
    if (!IsEmpty(layer.Visible(to))) {
        ImagePainter(layer, image, blended, operation).Draw(to);
    }
}

}  // namespace kivgles::kit
