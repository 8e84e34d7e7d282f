// The gauges' painting is the example's own: it is taken in whole, with its main function out of the way.

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wreturn-type"  // which only main may leave out
#define main RunDashboard
#include "dashboard/main.cpp"
#undef main
#pragma GCC diagnostic pop

#include <memory>
#include <vector>

#include "KitPictures.h"

std::function<void(Layer&)> bench::MakeDashboard(Screen& screen) {
    const auto layers = std::make_shared<std::vector<Layer>>();  // a face and a dial for each gauge
    for (const Gauge& gauge : GAUGES) {
        layers->emplace_back(screen, Size{384, 384}, 2);
        PaintFace(layers->back(), gauge);
        layers->emplace_back(screen, Size{384, 384}, 2);
    }
    return [layers](Layer& canvas) {
        auto layer = layers->begin();
        for (const Gauge& gauge : GAUGES) {
            const Layer& face = *layer++;
            Layer& dial = *layer++;
            dial.Copy(face, 0, 0);
            PaintValue(dial, gauge, gauge.value);
            canvas.Copy(dial, gauge.x, 24);
        }
    };
}
