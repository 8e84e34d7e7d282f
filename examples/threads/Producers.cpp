#include "Producers.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

#include "kivgles/kit/Text.h"

namespace examples::threads {

using kivgles::kit::Color;
using kivgles::kit::Layer;
using kivgles::kit::Rect;
using kivgles::kit::Screen;
using kivgles::kit::Text;
using kivgles::kit::VerticalAlign;

namespace {

constexpr Rect CLOCK_BOX = {24, 24, 336, 120};
constexpr Rect METER_BOX = {384, 24, 552, 120};
constexpr Rect TICKER_BOX = {0, 168, CANVAS_SIZE.width, 56};

constexpr Color CARD = {27, 41, 64};
constexpr Color GREY = {158, 176, 202};
constexpr Color WHITE = {240, 244, 250};
constexpr Color AMBER = {255, 186, 84};
constexpr Color GREEN = {72, 202, 140};
constexpr Color RED = {236, 84, 84};

constexpr int START_OF_DAY = 14 * 3600 + 27 * 60;  // seconds since midnight, on the clock's first frame

constexpr char NEWS[] =
    "Ferry to the islands leaves from pier 3 – Museum open until eight – Bicycles travel free today";
constexpr int NEWS_WIDTH = 2400;  // pixels, the empty part that comes before it included
constexpr int NEWS_STEP = 6;      // pixels a frame

constexpr int SEGMENT_NUM = 24;

// Runs a producer's life: `draw(frame)` on its sheet, a copy to the canvas, and a rest.
template <typename Draw>
void Produce(Layer& canvas, const Layer& sheet, const Rect& place, int frames, std::chrono::milliseconds rest,
             Draw draw) {
    for (int frame = 1; frame <= frames; ++frame) {
        draw(frame);
        canvas.Copy(sheet, place.x, place.y);
        std::this_thread::sleep_for(rest);
    }
}

std::string TimeOfDay(int seconds) {
    std::array<char, 16> text{};
    (void)std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", seconds / 3600 % 24, seconds / 60 % 60,
                        seconds % 60);  // always fits
    return text.data();
}

Color SegmentColor(int segment) {
    return segment < SEGMENT_NUM * 6 / 10 ? GREEN : segment < SEGMENT_NUM * 85 / 100 ? AMBER : RED;
}

// The level in segments: up and down between silence and a peak that differs each time.
int Level(int frame) {
    constexpr int RISE = 12;  // frames
    const int phase = frame % (2 * RISE);
    const int peak = SEGMENT_NUM - frame / (2 * RISE) % 3 * 4;
    return (phase < RISE ? phase : 2 * RISE - phase) * peak / RISE;
}

// Texts stand with their baseline on the lower edge of their box.
Text Style(int pixels, const Color& color) { return Text(pixels, color).Aligned(VerticalAlign::BASELINE); }

}  // namespace

void RunClock(Screen& screen, Layer& canvas, int frames) {
    Layer sheet(screen, {CLOCK_BOX.width, CLOCK_BOX.height});
    Produce(canvas, sheet, CLOCK_BOX, frames, std::chrono::milliseconds(23), [&](int frame) {
        sheet.Clear(CARD);
        Style(22, GREY).Draw(sheet, "Local time", {24, 0, CLOCK_BOX.width - 48, 36});
        Style(56, AMBER).Bold().Tabular().Draw(sheet, TimeOfDay(START_OF_DAY + frame),
                                               {24, 0, CLOCK_BOX.width - 48, 94});
    });
}

void RunTicker(Screen& screen, Layer& canvas, int frames) {
    Layer news(screen, {NEWS_WIDTH, TICKER_BOX.height});
    news.Clear(CARD);
    Style(40, WHITE).Draw(news, NEWS, {TICKER_BOX.width / 2, 0, NEWS_WIDTH, 42});

    Layer sheet(screen, {TICKER_BOX.width, TICKER_BOX.height});
    Produce(canvas, sheet, TICKER_BOX, frames, std::chrono::milliseconds(11),
            [&](int frame) { sheet.Copy(news, -(frame * NEWS_STEP % (NEWS_WIDTH - TICKER_BOX.width)), 0); });
}

void RunLevelMeter(Screen& screen, Layer& canvas, int frames) {
    constexpr int PITCH = (METER_BOX.width - 48) / SEGMENT_NUM;
    Layer sheet(screen, {METER_BOX.width, METER_BOX.height});
    Produce(canvas, sheet, METER_BOX, frames, std::chrono::milliseconds(17), [&](int frame) {
        sheet.Clear(CARD);
        Style(22, GREY).Draw(sheet, "Level", {24, 0, 200, 36});
        const int level = Level(frame);
        for (int segment = 0; segment < SEGMENT_NUM; ++segment) {
            Color color = SegmentColor(segment);
            if (segment >= level) {
                color = {static_cast<std::uint8_t>(color.r / 4), static_cast<std::uint8_t>(color.g / 4),
                         static_cast<std::uint8_t>(color.b / 4)};
            }
            sheet.Rectangle({24 + segment * PITCH, 54, PITCH - 4, 44}, color);
        }
    });
}

}  // namespace examples::threads
