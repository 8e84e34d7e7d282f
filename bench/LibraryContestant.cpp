// The library, by its public class.

#include <kivgles/KivGLDrawSurface.h>

#include "Check.h"
#include "Contestant.h"

namespace bench {

const char* const CONTESTANT_NAME = "library";

namespace {

kivgles::KivGLDrawSurface surface;
unsigned int layer;
kivgles::TagKivRectInfo wholeLayer;

kivgles::TagKivRectInfo RectOf(const Box& box) {
    return {static_cast<std::uint32_t>(box.x), static_cast<std::uint32_t>(box.y),
            static_cast<std::uint32_t>(box.width), static_cast<std::uint32_t>(box.height)};
}

kivgles::TagKivColorRGBA ColorOf(const Color& color) { return {color.r, color.g, color.b, color.a}; }

}  // namespace

unsigned long Start(unsigned long window, int layerWidth, int layerHeight) {
    Check(surface.KivCreateGLContext());
    Check(surface.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(window)));
    Check(surface.Init(0x7F));
    wholeLayer = RectOf({0, 0, layerWidth, layerHeight});
    Check(surface.KivCreateGLFBO(layer, wholeLayer.width, wholeLayer.height,
                                 kivgles::KIV_COLOR_FORMAT_RGBA8888));
    return window;
}

void LoadFont(const std::string& path) { Check(surface.KivLoadFont(path, STANDARD_SIZE)); }

void BeginFrame() { Check(surface.KivClearGLFBO(layer)); }

void Draw(const Rect& rect) { Check(surface.KivDrawRect(layer, RectOf(rect.box), ColorOf(rect.color))); }

void Draw(const Round& round) {
    const kivgles::TagKivRectInfo box = RectOf(round.box);
    const kivgles::TagKivRoundInfo info{box.x + box.width / 2, box.y + box.height / 2, box.width / 2,
                                        box.height / 2};
    Check(surface.KivDrawRound(layer, info, ColorOf(round.color)));
}

void Draw(const Bitmap& bitmap) {
    kivgles::TagKivBitmapInfo info{};
    info.data = bitmap.rgba;
    info.format = kivgles::KIV_COLOR_FORMAT_RGBA8888;
    info.dstRect = RectOf(bitmap.box);
    info.width = info.dstRect.width;
    info.height = info.dstRect.height;
    Check(surface.KivDrawBitmap(layer, info));
}

void Draw(const Line& line) {
    kivgles::TagKivTextInfo info{};
    info.text = line.text.c_str();
    info.textLength = static_cast<std::uint32_t>(line.text.size());
    info.fgColor = ColorOf(line.color);
    info.fontSize = line.size;
    info.bold = line.bold ? 1 : 0;
    Check(surface.KivDrawText(layer, info, RectOf(line.box)));
}

void EndFrame() {
    const kivgles::TagKivRectInfo window = RectOf({0, 0, WINDOW_WIDTH, WINDOW_HEIGHT});
    Check(surface.KivDisplayFBO(layer, wholeLayer, window));
    Check(surface.KivRefreshOnSrceen());
    Check(surface.Init(0));  // returns after everything queued before it
}

}  // namespace bench
