#ifndef KIVGLES_BENCH_SMALLSURFACE_H
#define KIVGLES_BENCH_SMALLSURFACE_H

#include <cstdlib>
#include <iostream>
#include <string>

#include <benchmark/benchmark.h>

#include "kivgles/KivGLDrawSurface.h"

namespace bench {

inline std::string fontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

constexpr kivgles::TagKivRectInfo TICK{8, 8, 2, 10};
constexpr kivgles::TagKivColorRGBA COLOR{200, 100, 50, 255};

inline void Require(int status) {
    if (status != 0) {
        std::cerr << "status " << status << '\n';
        std::exit(EXIT_FAILURE);
    }
}

// A surface with a small layer, on no window.
struct SmallSurface {
    SmallSurface() {
        Require(surface.KivCreateGLContext());
        Require(surface.KivCreateGLFBO(layer, 64, 64, kivgles::KIV_COLOR_FORMAT_RGBA8888));
        Require(surface.KivLoadFont(fontPath, 0));
        DrawTick();
        Drain();
    }
    void DrawTick() { benchmark::DoNotOptimize(surface.KivDrawRect(layer, TICK, COLOR)); }
    void Drain() { Require(surface.Init(0)); }

    kivgles::KivGLDrawSurface surface;
    unsigned int layer = 0;
};

}  // namespace bench

#endif  // KIVGLES_BENCH_SMALLSURFACE_H
