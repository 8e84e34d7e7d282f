// What of the kit needs no screen: threads that paint a canvas each, and a megapixel in another order of
// bytes and opacity.

#include <benchmark/benchmark.h>

#include "Contestant.h"
#include "KitPainter.h"
#include "Pixels.h"

void bench::Fail(const std::string&) { std::abort(); }
void bench::Show(const Picture&) {}

namespace {

void PaintCanvas(benchmark::State& state) {
    const bench::Picture picture = bench::MakePictures("dashboard").full.front();
    kivgles::kit::Canvas canvas({bench::WINDOW_WIDTH, bench::WINDOW_HEIGHT});
    Paint(canvas, picture);  // a thread's first text pays for its fonts
    for (auto _ : state) {
        Paint(canvas, picture);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(PaintCanvas)->Threads(1)->Threads(2)->UseRealTime();

using kivgles::kit::Format;

void Megapixel(benchmark::State& state, Format format, Format wanted) {
    constexpr int SIDE = 1000;
    std::vector<std::uint8_t> from(4 * SIDE * SIDE);
    std::vector<std::uint8_t> to(from.size());
    for (std::size_t i = 0; i < from.size(); ++i) {
        from[i] =
            static_cast<std::uint8_t>(i % 4 == 3 ? i * 7 : i % 4);  // all opacities; no channel is above
    }
    for (auto _ : state) {
        kivgles::kit::Convert({from.data(), {SIDE, SIDE}, format}, {0, 0, SIDE, SIDE}, wanted, to.data(),
                              SIDE);
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(Megapixel, Reorder, Format::CAIRO, Format::PREMULTIPLIED);
BENCHMARK_CAPTURE(Megapixel, Multiply, Format::STRAIGHT, Format::CAIRO);
BENCHMARK_CAPTURE(Megapixel, Divide, Format::CAIRO, Format::STRAIGHT);

}  // namespace

BENCHMARK_MAIN();
