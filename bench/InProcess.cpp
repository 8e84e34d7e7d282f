// What stays inside the process, each by itself: conversions, the building of commands, their hand-over to
// the draw thread, measuring, the look-up of glyphs, and a line of the log. Run under an X server.

#include <chrono>
#include <thread>

#include <android/log.h>
#include <benchmark/benchmark.h>

#include "SmallSurface.h"
#include "drawthread/DrawCmd.h"
#include "gl/EGLManager.h"
#include "text/OSDText.h"

namespace {

using bench::COLOR;
using bench::fontPath;
using bench::Require;
using bench::SmallSurface;
using bench::TICK;
using kivgles::KivGLDrawSurface;

constexpr char16_t LINE[] = u"Temperature:23.5C/Fan:01200rpm";
constexpr auto UNTIL_ASLEEP = std::chrono::microseconds(200);

kivgles::TagKivTextInfo TextOf(unsigned int size, bool bold) {
    kivgles::TagKivTextInfo text{};
    text.text = LINE;
    text.textLength = std::size(LINE) - 1;
    text.fgColor = COLOR;
    text.fontSize = size;
    text.bold = bold ? 1 : 0;
    return text;
}

template <typename Call>
double SecondsOf(Call call) {
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void ConvertRect(benchmark::State& state) {
    const KivGLDrawSurface surface;
    kivgles::TagGLRectInfo glRect{};
    for (auto _ : state) {
        surface.ScreenCoordToVCoord(TICK, glRect, 1280, 720);
        benchmark::DoNotOptimize(glRect);
    }
}
BENCHMARK(ConvertRect);

void ConvertColor(benchmark::State& state) {
    const KivGLDrawSurface surface;
    kivgles::TagColorRGBA glColor{};
    for (auto _ : state) {
        surface.ConvertGLColor(COLOR, glColor);
        benchmark::DoNotOptimize(glColor);
    }
}
BENCHMARK(ConvertColor);

void BuildRectCommand(benchmark::State& state) {
    for (auto _ : state) {
        auto info = std::make_unique<kivgles::RectInfo>();
        auto cmd = std::make_shared<kivgles::DrawCmd>(kivgles::CMD_DRAW_RECT);
        cmd->SetRectInfo(info);
        benchmark::DoNotOptimize(cmd);
    }
}
BENCHMARK(BuildRectCommand);

void BuildTextCommand(benchmark::State& state) {
    const KivGLDrawSurface surface;
    kivgles::TagGLTextInfo glText{};
    surface.SetTextInfo(TextOf(40, false), glText);
    for (auto _ : state) {
        auto info = std::make_unique<kivgles::TextInfo>();
        benchmark::DoNotOptimize(info->SetTextInfo(glText));
        auto cmd = std::make_shared<kivgles::DrawCmd>(kivgles::CMD_DRAW_TEXT);
        cmd->SetTextInfo(info);
        benchmark::DoNotOptimize(cmd);
    }
}
BENCHMARK(BuildTextCommand);

// The client's time for one of as many calls in a row. The first one wakes the draw thread, which is behind
// from then on.
void QueueWhileBusy(benchmark::State& state) {
    SmallSurface small;
    const auto calls = state.range(0);
    for (auto _ : state) {
        state.SetIterationTime(SecondsOf([&] {
            for (auto i = calls; i > 0; --i) {
                small.DrawTick();
            }
        }));
        small.Drain();
    }
    state.SetItemsProcessed(state.iterations() * calls);
}
BENCHMARK(QueueWhileBusy)->RangeMultiplier(4)->Range(1, 4096)->UseManualTime();

// The client's time for one call that has to wake the draw thread.
void QueueWhileAsleep(benchmark::State& state) {
    SmallSurface small;
    for (auto _ : state) {
        std::this_thread::sleep_for(UNTIL_ASLEEP);
        state.SetIterationTime(SecondsOf([&] { small.DrawTick(); }));
        small.Drain();
    }
}
BENCHMARK(QueueWhileAsleep)->UseManualTime();

void MeasureText(benchmark::State& state, unsigned int size, bool bold) {
    SmallSurface small;
    unsigned int width = 0;
    unsigned int height = 0;
    for (auto _ : state) {
        Require(small.surface.KivGetTextSize(TextOf(size, bold), width, height));
        benchmark::DoNotOptimize(width);
    }
}
BENCHMARK_CAPTURE(MeasureText, Standard, 40, false);
BENCHMARK_CAPTURE(MeasureText, Styled, 28, true);

void LookUpLine(benchmark::State& state) {
    kivgles::EGLManager egl;
    Require(egl.EGLSetupContext());
    Require(egl.CreatePBufferSurface());
    Require(egl.MakeCurrent());
    kivgles::OSDText text;
    Require(text.Init());
    Require(text.LoadFont(fontPath, 0));
    for (auto _ : state) {
        for (const char16_t unit : std::u16string_view(LINE)) {
            benchmark::DoNotOptimize(text.FindCharFromMap(unit));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(std::size(LINE) - 1));
}
BENCHMARK(LookUpLine);

// What each character without ink adds to a text.
void LogLine(benchmark::State& state) {
    for (auto _ : state) {
        __android_log_print(ANDROID_LOG_ERROR, "bench", "Char %lu is not exit\n", 32UL);
    }
}
BENCHMARK(LogLine);

}  // namespace

// [BENCHMARK OPTION]... [FONT]
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc > 1) {
        fontPath = argv[1];
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
