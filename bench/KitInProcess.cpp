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
    const bench::Picture picture = bench::MakePictures("dashboard").full;
    kivgles::kit::Canvas canvas({bench::WINDOW_WIDTH, bench::WINDOW_HEIGHT});
    for (auto _ : state) {
        Paint(canvas, picture);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(PaintCanvas)->Threads(1)->Threads(2)->UseRealTime();

using Conversion = void (*)(const std::uint8_t* from, std::uint8_t* to, std::size_t pixelNum);

void Megapixel(benchmark::State& state, Conversion convert) {
    constexpr std::size_t PIXELS = 1000000;
    std::vector<std::uint8_t> from(4 * PIXELS);
    std::vector<std::uint8_t> to(4 * PIXELS);
    for (std::size_t i = 0; i < from.size(); ++i) {
        from[i] =
            static_cast<std::uint8_t>(i % 4 == 3 ? i * 7 : i % 4);  // all opacities; no channel is above
    }
    for (auto _ : state) {
        convert(from.data(), to.data(), PIXELS);
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(Megapixel, Reorder, kivgles::kit::PremultipliedFromCairo);
BENCHMARK_CAPTURE(Megapixel, Multiply, kivgles::kit::CairoFromStraight);
BENCHMARK_CAPTURE(Megapixel, Divide, kivgles::kit::StraightFromCairo);

}  // namespace

BENCHMARK_MAIN();
