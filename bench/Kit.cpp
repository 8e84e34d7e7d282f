// What the kit costs: frames of two examples, drawn by the kit, and drawn again by the same requests to the
// library with nothing in between, as by a client that has everything at hand. In turns, on one surface.
//
// bench_kit [SECONDS]: for each example, 5 if not given. Run under an X server.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <kivgles/kit/Layer.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>
#include <time.h>

#include "common/ExampleWindow.h"
#include "kivgles/KivGLDrawSurface.h"

// The examples as they are; their `main` is none here, and is not called.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wreturn-type"
namespace board {
#include "board/main.cpp"
}
namespace dashboard {
#include "dashboard/main.cpp"
}
#pragma GCC diagnostic pop

namespace {

using kivgles::KivGLDrawSurface;
using kivgles::kit::Layer;
using kivgles::kit::Screen;

using Request = std::function<int(KivGLDrawSurface&)>;

std::vector<Request>* recorded = nullptr;  // where requests are written down, if at all
KivGLDrawSurface* kitSurface = nullptr;    // the one that the kit has made

template <typename Next>
Next* FindNext(const char* name) {
    void* const symbol = dlsym(RTLD_NEXT, name);
    if (symbol == nullptr) {
        std::fprintf(stderr, "bench_kit: the library has no %s\n", name);
        std::exit(EXIT_FAILURE);
    }
    return reinterpret_cast<Next*>(symbol);
}

void Record(Request request) {
    if (recorded != nullptr) {
        recorded->push_back(std::move(request));
    }
}

}  // namespace

// These stand in for the library's, of which the kit is a client.
namespace kivgles {

int KivGLDrawSurface::KivDrawRect(unsigned int handle, const TagKivRectInfo& rect,
                                  const TagKivColorRGBA& color) noexcept {
    static auto* const next =
        FindNext<int(KivGLDrawSurface*, unsigned int, const TagKivRectInfo&, const TagKivColorRGBA&)>(
            "_ZN7kivgles16KivGLDrawSurface11KivDrawRectEjRKNS_14TagKivRectInfoERKNS_15TagKivColorRGBAE");
    Record([handle, rect, color](KivGLDrawSurface& surface) { return next(&surface, handle, rect, color); });
    return next(this, handle, rect, color);
}

int KivGLDrawSurface::KivDrawRound(unsigned int handle, const TagKivRoundInfo& round,
                                   const TagKivColorRGBA& color) noexcept {
    static auto* const next =
        FindNext<int(KivGLDrawSurface*, unsigned int, const TagKivRoundInfo&, const TagKivColorRGBA&)>(
            "_ZN7kivgles16KivGLDrawSurface12KivDrawRoundEjRKNS_15TagKivRoundInfoERKNS_15TagKivColorRGBAE");
    Record(
        [handle, round, color](KivGLDrawSurface& surface) { return next(&surface, handle, round, color); });
    return next(this, handle, round, color);
}

int KivGLDrawSurface::KivDrawText(unsigned int handle, const TagKivTextInfo& text,
                                  const TagKivRectInfo& rect) noexcept {
    static auto* const next =
        FindNext<int(KivGLDrawSurface*, unsigned int, const TagKivTextInfo&, const TagKivRectInfo&)>(
            "_ZN7kivgles16KivGLDrawSurface11KivDrawTextEjRKNS_14TagKivTextInfoERKNS_14TagKivRectInfoE");
    Record(
        [handle, text, rect, units = std::u16string(text.text, text.textLength)](KivGLDrawSurface& surface) {
            TagKivTextInfo again = text;
            again.text = units.c_str();
            return next(&surface, handle, again, rect);
        });
    return next(this, handle, text, rect);
}

int KivGLDrawSurface::KivBlit(const TagKivBlitInfo& blit) noexcept {
    static auto* const next = FindNext<int(KivGLDrawSurface*, const TagKivBlitInfo&)>(
        "_ZN7kivgles16KivGLDrawSurface7KivBlitERKNS_14TagKivBlitInfoE");
    Record([blit](KivGLDrawSurface& surface) { return next(&surface, blit); });
    return next(this, blit);
}

int KivGLDrawSurface::KivRefreshOnSrceen() noexcept {
    static auto* const next =
        FindNext<int(KivGLDrawSurface*)>("_ZN7kivgles16KivGLDrawSurface18KivRefreshOnSrceenEv");
    Record([](KivGLDrawSurface& surface) { return next(&surface); });
    return next(this);
}

int KivGLDrawSurface::Init(unsigned int mask) noexcept {
    static auto* const next =
        FindNext<int(KivGLDrawSurface*, unsigned int)>("_ZN7kivgles16KivGLDrawSurface4InitEj");
    kitSurface = this;
    Record([mask](KivGLDrawSurface& surface) { return next(&surface, mask); });
    return next(this, mask);
}

}  // namespace kivgles

namespace {

// CPU time of the whole process in microseconds, user and system.
double CpuTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

double CostOf(const std::function<void()>& work) {
    const double before = CpuTime();
    work();
    return CpuTime() - before;
}

double Median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// `frame` paints and presents. Both ways end when the frame has been shown.
void Compare(const char* name, double seconds, Screen& screen, const std::function<void()>& frame) {
    std::vector<Request> requests;
    frame();  // characters are measured when they first occur
    recorded = &requests;
    frame();
    recorded = nullptr;

    std::vector<double> kit;
    std::vector<double> hand;
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    do {
        kit.push_back(CostOf([&] {
            frame();
            screen.Finish();
        }));
        hand.push_back(CostOf([&] {
            for (const Request& request : requests) {
                (void)request(*kitSurface);  // it has been accepted before
            }
            screen.Finish();
        }));
    } while (std::chrono::steady_clock::now() < end);
    const double kitCost = Median(kit);
    const double handCost = Median(hand);
    std::printf("%s: kit %.0f us of CPU a frame, by hand %.0f us (%zu requests), ratio %.3f, %zu frames\n",
                name, kitCost, handCost, requests.size(), kitCost / handCost, kit.size());
}

void CompareBoards(double seconds) {
    examples::ExampleWindow window({1280, 720}, "board");
    Screen screen;
    screen.Connect(window.Native());
    screen.LoadFont("/usr/share/fonts/truetype/wqy/wqy-microhei.ttc");
    Layer shapes(screen, {1280, 720}, 2);
    Layer layer(screen, {1280, 720});
    board::PaintShapes(shapes);
    Compare("board", seconds, screen, [&] {
        layer.Copy(shapes, 0, 0);
        board::WriteTexts(layer, 14 * 3600);
        screen.Present(layer);
    });
}

void CompareDashboards(double seconds) {
    examples::ExampleWindow window({1248, 432}, "dashboard");
    Screen screen;
    screen.Connect(window.Native());
    screen.LoadFont("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
    Layer whole(screen, {1248, 432});
    Layer face(screen, {384, 384}, 2);
    Layer dial(screen, {384, 384}, 2);
    dashboard::PaintFace(face, dashboard::GAUGES[0]);
    Compare("dashboard", seconds, screen, [&] {
        for (const dashboard::Gauge& gauge : dashboard::GAUGES) {
            dial.Copy(face, 0, 0);
            dashboard::PaintValue(dial, gauge, gauge.value);
            whole.Copy(dial, gauge.x, 24);
        }
        screen.Present(whole);
    });
}

}  // namespace

int main(int argc, char** argv) {
    const double seconds = argc > 1 ? std::atof(argv[1]) : 5;
    try {
        CompareBoards(seconds);
        CompareDashboards(seconds);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_kit: %s\n", error.what());
        return 1;
    }
}
