#include "Scene.h"

#include <algorithm>
#include <string_view>

#include "Contestant.h"

namespace bench {

namespace {

constexpr int LINE_HEIGHT = 50;

// Every character has ink: the library logs those that have none, which is no part of drawing.
constexpr std::u16string_view CHARACTERS = u"Temperature:23.5C/Fan:01200rpm";

const std::uint8_t* Pixels(int width, int height) {
    static std::vector<std::vector<std::uint8_t>> kept;
    std::vector<std::uint8_t>& rgba = kept.emplace_back();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::uint8_t components[] = {static_cast<std::uint8_t>(x * 255 / width),
                                               static_cast<std::uint8_t>(y * 255 / height), 128, 255};
            rgba.insert(rgba.end(), std::begin(components), std::end(components));
        }
    }
    return rgba.data();
}

Color ColorOf(int i) {
    return {static_cast<std::uint8_t>(80 + i * 37 % 176), static_cast<std::uint8_t>(80 + i * 61 % 176),
            static_cast<std::uint8_t>(80 + i * 97 % 176), 255};
}

std::u16string TextOf(int i, int length) {
    std::u16string text;
    for (int k = 0; k < length; ++k) {
        text += CHARACTERS[static_cast<std::size_t>(i + k) % CHARACTERS.size()];
    }
    return text;
}

// Item i of many, spread over the layer; what is larger than the layer starts at its edge.
Box Spread(int i, int width, int height, const Workload& workload) {
    const int roomX = std::max(1, workload.layerWidth - width);
    const int roomY = std::max(1, workload.layerHeight - height);
    return {i * 137 % roomX, i * 71 % roomY, width, height};
}

// A panel, 20 bars, 10 rounds, 4 bitmaps, 8 lines in the standard style and 2 in another.
std::vector<Item> Scene() {
    std::vector<Item> items;
    items.emplace_back(Rect{{0, 0, WINDOW_WIDTH, WINDOW_HEIGHT}, {24, 32, 48, 255}});
    for (int i = 0; i < 20; ++i) {
        const int height = 40 + i * 53 % 200;
        items.emplace_back(Rect{{760 + i * 25, 260 - height, 18, height}, ColorOf(i)});
    }
    for (int i = 0; i < 10; ++i) {
        items.emplace_back(Round{{760 + i * 50, 290, 40, 40}, ColorOf(i)});
    }
    static const std::uint8_t* const rgba = Pixels(128, 128);
    for (int i = 0; i < 4; ++i) {
        items.emplace_back(Bitmap{{740 + i * 134, 350, 128, 128}, rgba});
    }
    for (int i = 0; i < 8; ++i) {
        items.emplace_back(
            Line{{20, 20 + i * 60, 700, LINE_HEIGHT}, ColorOf(i), TextOf(i, 30), STANDARD_SIZE, false});
    }
    for (int i = 0; i < 2; ++i) {
        items.emplace_back(Line{{20, 520 + i * 60, 700, LINE_HEIGHT}, ColorOf(i), TextOf(i, 30), 28, true});
    }
    return items;
}

Item MakeItem(int i, const Workload& workload, const std::uint8_t* rgba) {
    if (workload.kind == "text") {
        const int width = workload.length * static_cast<int>(workload.size) * 6 / 10;
        const int height = std::max(LINE_HEIGHT, static_cast<int>(workload.size) + LINE_HEIGHT / 5);
        return Line{Spread(i, width, height, workload), ColorOf(i), TextOf(i, workload.length), workload.size,
                    workload.bold};
    }
    const Box box = Spread(i, workload.width, workload.height, workload);
    if (workload.kind == "bitmap") {
        return Bitmap{box, rgba};
    }
    if (workload.kind == "round") {
        return Round{box, ColorOf(i)};
    }
    return Rect{box, ColorOf(i)};
}

// The bitmaps point into memory that stays until the program ends. Empty for an unknown kind.
std::vector<Item> MakeItems(const Workload& workload) {
    if (workload.kind == "scene") {
        return Scene();
    }
    std::vector<Item> items;
    const std::string_view repeated[] = {"text", "rect", "round", "bitmap"};
    if (std::find(std::begin(repeated), std::end(repeated), workload.kind) == std::end(repeated)) {
        return {};
    }
    const std::uint8_t* const rgba =
        workload.kind == "bitmap" ? Pixels(workload.width, workload.height) : nullptr;
    for (int i = 0; i < workload.count; ++i) {
        items.push_back(MakeItem(i, workload, rgba));
    }
    return items;
}

void DrawFrame(const std::vector<Item>& items) {
    BeginFrame();
    for (const Item& item : items) {
        std::visit([](const auto& drawn) { Draw(drawn); }, item);
    }
    EndFrame();
}

}  // namespace

Frames MakeFrames(const Workload& workload) {
    return {[items = MakeItems(workload)] { DrawFrame(items); }, [] { DrawFrame({}); }};
}

}  // namespace bench
