// The kit, by the examples' own painting. It draws whole pictures only.

#include <memory>

#include <kivgles/kit/Screen.h>

#include "Contestant.h"
#include "KitPictures.h"

namespace bench {

const char* const CONTESTANT_NAME = "kit";

namespace {

kivgles::kit::Screen screen;
std::unique_ptr<kivgles::kit::Layer> layer;
std::function<void(kivgles::kit::Layer&)> paint;

[[noreturn]] void FailForItem() { Fail("draws pictures only"); }

}  // namespace

unsigned long Start(unsigned long window, int layerWidth, int layerHeight) {
    screen.Connect(reinterpret_cast<ANativeWindow*>(window));
    layer = std::make_unique<kivgles::kit::Layer>(screen, kivgles::kit::Size{layerWidth, layerHeight});
    return window;
}

void LoadFont(const std::string& path) { screen.LoadFont(path); }

void BeginFrame() { layer->Clear(); }

void Draw(const Rect&) { FailForItem(); }
void Draw(const Round&) { FailForItem(); }
void Draw(const Bitmap&) { FailForItem(); }
void Draw(const Line&) { FailForItem(); }

void Draw(Picture picture) {
    if (!paint) {
        paint = picture == Picture::BOARD ? MakeBoard(screen) : MakeDashboard(screen);
    }
    paint(*layer);
}

void EndFrame() {
    screen.Present(*layer);
    screen.Finish();
}

}  // namespace bench
