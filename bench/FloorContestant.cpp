// What the kit cannot be quicker than: Cairo paints by hand, and the library takes what has changed. Who
// knows that all of it has, puts it straight on the window.

#include <kivgles/KivGLDrawSurface.h>

#include "CairoPainter.h"
#include "Check.h"

namespace bench {

const char* const CONTESTANT_NAME = "floor";

namespace {

using kivgles::FBO_HANDLE_BASE;
using kivgles::TagKivRectInfo;

constexpr TagKivRectInfo WINDOW{0, 0, WINDOW_WIDTH, WINDOW_HEIGHT};
kivgles::KivGLDrawSurface surface;
unsigned int layer;
CairoPainter painter;
std::vector<std::uint32_t> handed(std::size_t{WINDOW_WIDTH} * WINDOW_HEIGHT);

// Into bytes R, G, B, A, on a machine that has the lowest byte first.
void Convert(const TagKivRectInfo& part) {
    std::uint32_t* to = handed.data();
    for (std::uint32_t y = 0; y < part.height; ++y) {
        const std::uint32_t* const from = painter.Pixels() + (part.y + y) * WINDOW_WIDTH + part.x;
        for (std::uint32_t x = 0; x < part.width; ++x) {
            *to++ = (from[x] & 0xFF00FF00) | (from[x] >> 16 & 0xFF) | (from[x] & 0xFF) << 16;
        }
    }
}

void HandOver(unsigned int target, const TagKivRectInfo& part) {
    Convert(part);
    kivgles::TagKivBitmapInfo bitmap{};
    bitmap.format = kivgles::KIV_COLOR_FORMAT_RGBA8888;
    bitmap.width = part.width;
    bitmap.height = part.height;
    bitmap.data = reinterpret_cast<const std::uint8_t*>(handed.data());
    bitmap.dstRect = part;
    Check(surface.KivDrawBitmap(target, bitmap));
}

}  // namespace

unsigned long Start(unsigned long window, int, int) {
    Check(surface.KivCreateGLContext());
    Check(surface.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(window)));
    Check(surface.KivCreateGLFBO(layer, WINDOW.width, WINDOW.height, kivgles::KIV_COLOR_FORMAT_RGBA8888));
    return window;
}

void Show(const Picture& picture) {
    static bool isLayerUsed = false;
    painter.Paint(picture);
    const bool isWhole = picture.changed.width == WINDOW_WIDTH;
    if (isWhole) {
        HandOver(FBO_HANDLE_BASE, WINDOW);
    } else {
        if (!isLayerUsed) {
            HandOver(layer, WINDOW);
            isLayerUsed = true;
        }
        if (!picture.marks.empty()) {
            const Box& box = picture.changed;
            HandOver(layer, {std::uint32_t(box.x), std::uint32_t(box.y), std::uint32_t(box.width),
                             std::uint32_t(box.height)});
        }
        Check(surface.KivBlit({layer, FBO_HANDLE_BASE, WINDOW, WINDOW}));
    }
    Check(surface.KivRefreshOnSrceen());
    Check(surface.Init(0));
}

}  // namespace bench
