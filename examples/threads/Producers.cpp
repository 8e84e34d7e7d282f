#include "Producers.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <thread>

#include "common/Palette.h"
#include "common/TextPainter.h"

namespace examples::threads {

namespace {

constexpr Rect CLOCK_BOX = {24, 24, 336, 120};
constexpr Rect METER_BOX = {384, 24, 552, 120};
constexpr Rect TICKER_BOX = {0, 168, CANVAS_WIDTH, 56};

constexpr Color GREEN = {72, 202, 140, 255};
constexpr Color RED = {236, 84, 84, 255};

constexpr unsigned int START_OF_DAY =
    14 * 3600 + 27 * 60;  // seconds since midnight, on the clock's first frame

constexpr char NEWS[] =
    "Ferry to the islands leaves from pier 3 – Museum open until eight – Bicycles travel free today";
constexpr std::uint32_t NEWS_WIDTH = 2400;  // pixels, the empty part that comes before it included
constexpr std::uint32_t NEWS_STEP = 6;      // pixels a frame

constexpr std::uint32_t SEGMENT_NUM = 24;

// Runs a producer's life: `draw(frame)` on its sheet, a copy to the canvas, and a rest.
template <typename Draw>
void Produce(Layer& canvas, const Layer& sheet, const Rect& place, unsigned int frames,
             std::chrono::milliseconds rest, Draw draw) {
    for (unsigned int frame = 1; frame <= frames; ++frame) {
        draw(frame);
        canvas.Copy(sheet, sheet.Whole(), place);
        std::this_thread::sleep_for(rest);
    }
}

std::string TimeOfDay(unsigned int seconds) {
    std::array<char, 16> text{};
    (void)std::snprintf(text.data(), text.size(), "%02u:%02u:%02u", seconds / 3600 % 24, seconds / 60 % 60,
                        seconds % 60);  // always fits
    return text.data();
}

Color SegmentColor(std::uint32_t segment) {
    return segment < SEGMENT_NUM * 6 / 10 ? GREEN : segment < SEGMENT_NUM * 85 / 100 ? AMBER : RED;
}

// The level in segments: up and down between silence and a peak that differs each time.
std::uint32_t Level(unsigned int frame) {
    constexpr unsigned int RISE = 12;  // frames
    const unsigned int phase = frame % (2 * RISE);
    const unsigned int peak = SEGMENT_NUM - frame / (2 * RISE) % 3 * 4;
    return (phase < RISE ? phase : 2 * RISE - phase) * peak / RISE;
}

}  // namespace

void RunClock(Surface& surface, Layer& canvas, unsigned int frames) {
    Layer sheet(surface, CLOCK_BOX.width, CLOCK_BOX.height, 1);
    TextPainter painter(surface, sheet, false);
    Produce(canvas, sheet, CLOCK_BOX, frames, std::chrono::milliseconds(23), [&](unsigned int frame) {
        sheet.FillRect(sheet.Whole(), CARD);
        painter.Write("Local time", {GREY, 22}, {24, 36, CLOCK_BOX.width - 48});
        painter.Write(TimeOfDay(START_OF_DAY + frame), {AMBER, 56, true}, {24, 94, CLOCK_BOX.width - 48});
    });
}

void RunTicker(Surface& surface, Layer& canvas, unsigned int frames) {
    Layer news(surface, NEWS_WIDTH, TICKER_BOX.height, 1);
    news.FillRect(news.Whole(), CARD);
    TextPainter(surface, news, false).Write(NEWS, {WHITE}, {TICKER_BOX.width / 2, 42, NEWS_WIDTH});

    Layer sheet(surface, TICKER_BOX.width, TICKER_BOX.height, 1);
    Produce(canvas, sheet, TICKER_BOX, frames, std::chrono::milliseconds(11), [&](unsigned int frame) {
        const std::uint32_t x = frame * NEWS_STEP % (NEWS_WIDTH - TICKER_BOX.width);
        sheet.Copy(news, {x, 0, TICKER_BOX.width, TICKER_BOX.height}, sheet.Whole());
    });
}

void RunLevelMeter(Surface& surface, Layer& canvas, unsigned int frames) {
    constexpr std::uint32_t PITCH = (METER_BOX.width - 48) / SEGMENT_NUM;
    Layer sheet(surface, METER_BOX.width, METER_BOX.height, 1);
    TextPainter painter(surface, sheet, false);
    Produce(canvas, sheet, METER_BOX, frames, std::chrono::milliseconds(17), [&](unsigned int frame) {
        sheet.FillRect(sheet.Whole(), CARD);
        painter.Write("Level", {GREY, 22}, {24, 36, 200});
        const std::uint32_t level = Level(frame);
        for (std::uint32_t segment = 0; segment < SEGMENT_NUM; ++segment) {
            Color color = SegmentColor(segment);
            if (segment >= level) {
                color = {static_cast<std::uint8_t>(color.r / 4), static_cast<std::uint8_t>(color.g / 4),
                         static_cast<std::uint8_t>(color.b / 4), 255};
            }
            sheet.FillRect({24 + segment * PITCH, 54, PITCH - 4, 44}, color);
        }
    });
}

}  // namespace examples::threads
