#include "Panel.h"

#include <algorithm>
#include <future>

#include "Artwork.h"
#include "PanelCards.h"
#include "PanelStyle.h"

namespace examples::osd_demo {

namespace {

constexpr std::uint32_t FINE = 2;  // scale of layers with rounds

// Runs two jobs at the same time and waits for both. Throws what a job throws.
template <typename First, typename Second>
void OnTwoThreads(First first, Second second) {
    auto firstDone = std::async(std::launch::async, first);
    auto secondDone = std::async(std::launch::async, second);
    firstDone.get();
    secondDone.get();
}

// The largest box of an image's proportions inside another, centred.
Rect FitInto(std::uint32_t width, std::uint32_t height, const Rect& box) {
    const double scale =
        std::min(static_cast<double>(box.width) / width, static_cast<double>(box.height) / height);
    const auto fitWidth = std::max(static_cast<std::uint32_t>(width * scale), 1U);
    const auto fitHeight = std::max(static_cast<std::uint32_t>(height * scale), 1U);
    return {box.x + (box.width - fitWidth) / 2, box.y + (box.height - fitHeight) / 2, fitWidth, fitHeight};
}

}  // namespace

Panel::Panel(Surface& panelSurface, const DemoOptions& demoOptions, const Image& logoImage)
    : surface(panelSurface),
      options(demoOptions),
      logo(logoImage),
      canvas(surface, PANEL_WIDTH, PANEL_HEIGHT, 1),
      bar(surface, BAR_BOX.width, BAR_BOX.height, FINE) {}

void Panel::ShowLogo() {
    const Rect window = {0, 0, surface.KivGetWindowWidth(), surface.KivGetWindowHeight()};
    const Rect middle = {window.width / 4, window.height / 4, window.width / 2, window.height / 2};
    kivgles::TagKivBitmapInfo bitmap{};
    bitmap.data = logo.rgba.data();
    bitmap.format = kivgles::KIV_COLOR_FORMAT_RGBA8888;
    bitmap.width = logo.width;
    bitmap.height = logo.height;
    bitmap.dstRect = FitInto(logo.width, logo.height, middle);
    Check(surface.KivDisplayBitmap(bitmap), "displaying a bitmap");
    Refresh();
}

void Panel::Compose() {
    // Everything with round edges is drawn at twice its size, and smoothed when it is copied.
    Layer backdrop(surface, PANEL_WIDTH, PANEL_HEIGHT, FINE);
    backdrop.Draw(MakeBackdrop(), backdrop.Whole());
    backdrop.FillRect(HEADER_RULE, TEAL);
    OnTwoThreads([&] { DrawLeftCard(backdrop, options.lines.size()); },
                 [&] {
                     DrawRightCard(backdrop);
                     DrawCard(backdrop, BOTTOM_CARD);
                 });
    canvas.Clear();
    canvas.Copy(backdrop, backdrop.Whole(), canvas.Whole());
    DrawLogo(backdrop);

    const bool cjkWanted =
        NeedsCjkFont(options.title) || std::any_of(options.lines.begin(), options.lines.end(), NeedsCjkFont);
    if (cjkWanted && !options.cjkFont.empty()) {
        WriteTexts(options.cjkFont, true);
    }
    WriteTexts(options.font, false);
}

// The logo is blended over a copy of what is behind it, which then takes that one's place.
void Panel::DrawLogo(const Layer& backdrop) {
    Layer emblem(surface, LOGO_BOX.width, LOGO_BOX.height, FINE);
    emblem.Copy(backdrop, LOGO_BOX, emblem.Whole());
    emblem.Blend(logo, FitInto(logo.width, logo.height, emblem.Whole()));
    canvas.Copy(emblem, emblem.Whole(), LOGO_BOX);
}

void Panel::WriteTexts(const std::string& font, bool cjk) {
    Check(surface.KivLoadFont(font, 40), "loading the font " + font);
    TextPainter painter(surface, canvas, cjk);
    OnTwoThreads(
        [this, painter]() mutable {
            WriteHeader(painter);
            WriteLeftCard(painter, options.lines);
        },
        [painter]() mutable {
            WriteRightCard(painter);
            painter.Write("Journey", SECTION,
                          {BOTTOM_CARD.x + CARD_PADDING, BOTTOM_CARD.y + SECTION_BASELINE, 300});
            painter.Write(
                "Arriving in 4 minutes", {GREY, 26, false, true},
                {BOTTOM_CARD.x, BOTTOM_CARD.y + SECTION_BASELINE, BOTTOM_CARD.width, Align::CENTER});
        });
}

void Panel::WriteHeader(TextPainter& painter) const {
    painter.Write(options.title, {WHITE, 44, true}, {136, 60, 760});
    painter.Write("Line 7 from Old Lighthouse to Airport", {GREY, 24, false, true}, {136, 92, 760});
    painter.Write("14:27", {AMBER, 56, true}, {920, 64, 320, Align::RIGHT});
    painter.Write("Tuesday, 24 November", {GREY, 22}, {920, 92, 320, Align::RIGHT});
}

void Panel::ShowFrame(unsigned int permille) {
    DrawProgress(permille);
    canvas.Copy(bar, bar.Whole(), BAR_BOX);

    const Rect percentBox = {BOTTOM_CARD.x + BOTTOM_CARD.width - CARD_PADDING - 120, BOTTOM_CARD.y + 12, 120,
                             40};
    canvas.FillRect(percentBox, CARD);
    TextPainter(surface, canvas, false)
        .Write(std::to_string(permille / 10) + " %", {WHITE, 30, true},
               {percentBox.x, BOTTOM_CARD.y + SECTION_BASELINE, percentBox.width, Align::RIGHT});

    canvas.Display(PlaceOnWindow());
    Refresh();
}

void Panel::DrawProgress(unsigned int permille) {
    constexpr std::uint32_t LENGTH = BAR_BOX.width - 2 * BAR_MARGIN;
    constexpr std::uint32_t MIDDLE = BAR_BOX.height / 2;
    const std::uint32_t done = LENGTH * permille / 1000;

    const auto bars = [this](std::uint32_t length, const Color& color) {
        bar.FillRoundedRect(
            {BAR_MARGIN - BAR_RADIUS, MIDDLE - BAR_RADIUS, length + 2 * BAR_RADIUS, 2 * BAR_RADIUS},
            BAR_RADIUS, color);
    };
    bar.FillRect(bar.Whole(), CARD);
    bars(LENGTH, TRACK);
    bars(done, TEAL);
    for (std::uint32_t stop = 0; stop < STOP_NUM; ++stop) {
        DrawPip(bar, BAR_MARGIN + LENGTH * stop / (STOP_NUM - 1), MIDDLE, stop);
    }
    bar.FillRound(BAR_MARGIN + done, MIDDLE, 14, AMBER);
    bar.FillRound(BAR_MARGIN + done, MIDDLE, 6, WHITE);
}

// The queue takes frames faster than the window shows them: waiting for each one keeps it short.
void Panel::Refresh() {
    Check(surface.KivRefreshOnSrceen(), "refreshing the window");
    Check(surface.Init(0), "waiting for the draw thread");
}

Rect Panel::PlaceOnWindow() const {
    return FitInto(PANEL_WIDTH, PANEL_HEIGHT,
                   {0, 0, surface.KivGetWindowWidth(), surface.KivGetWindowHeight()});
}

std::vector<KnownArea> Panel::KnownAreas() const {
    constexpr std::uint32_t BAR_X = BAR_BOX.x + BAR_MARGIN;
    constexpr std::uint32_t BAR_Y = BAR_BOX.y + BAR_BOX.height / 2 - BAR_RADIUS;
    constexpr std::uint32_t TRAIN = BAR_X + (BAR_BOX.width - 2 * BAR_MARGIN) * JOURNEY_DONE / 1000;
    const std::uint32_t section = LEFT_CARD.x + CARD_PADDING;
    std::vector<KnownArea> areas = {
        {"left card", {LEFT_CARD.x + 4, LEFT_CARD.y + 60, 24, 300}, CARD, false},
        {"next stop's row", {RIGHT_CARD.x + 380, StopBaseline(NEXT_STOP) - 36, 60, 50}, ROW, false},
        {"journey done", {BAR_X + 100, BAR_Y, 60, 2 * BAR_RADIUS}, TEAL, false},
        {"journey to come", {BAR_X + 700, BAR_Y, 60, 2 * BAR_RADIUS}, TRACK, false},
        {"train", {TRAIN - 4, BAR_Y + BAR_RADIUS - 4, 8, 8}, WHITE, false},
        {"section's title", {section, LEFT_CARD.y + SECTION_BASELINE - 18, 120, 18}, CARD, true},
        {"next stop's name", {section, LEFT_CARD.y + 66, 360, 50}, CARD, true},
    };
    if (options.logo.empty()) {
        areas.push_back(
            {"logo's sun", {LOGO_BOX.x + 28, LOGO_BOX.y + 24, 16, 16}, {255, 244, 214, 255}, false});
    }
    return areas;
}

}  // namespace examples::osd_demo
