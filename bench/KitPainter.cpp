#include "KitPainter.h"

#include <kivgles/kit/Text.h>

namespace bench {

namespace {

using kivgles::kit::Align;
using kivgles::kit::Canvas;
using kivgles::kit::Point;
using kivgles::kit::Text;

kivgles::kit::Rect RectOf(const Box& box) { return {box.x, box.y, box.width, box.height}; }
kivgles::kit::Color ColorOf(const Color& color) { return {color.r, color.g, color.b, color.a}; }
Point PointOf(const Place& place) { return {place.x, place.y}; }

void Draw(Canvas& canvas, const Ground& ground) { canvas.Clear(RectOf(ground.box), ColorOf(ground.color)); }

void Draw(Canvas& canvas, const Card& card) {
    if (card.radius > 0) {
        canvas.RoundedRectangle(RectOf(card.box), card.radius, ColorOf(card.color));
    } else {
        canvas.Rectangle(RectOf(card.box), ColorOf(card.color));
    }
}

void Draw(Canvas& canvas, const Arc& arc) {
    canvas.Arc(PointOf(arc.center), arc.radius, arc.thickness, arc.start, arc.sweep, ColorOf(arc.color));
}

void Draw(Canvas& canvas, const Stroke& stroke) {
    std::vector<Point> points;
    for (const Place& place : stroke.points) {
        points.push_back(PointOf(place));
    }
    canvas.Polyline(points, stroke.thickness, ColorOf(stroke.color));
}

void Draw(Canvas& canvas, const Label& label) {
    const Text plain = Text(label.size, ColorOf(label.color))
                           .Aligned(kivgles::kit::VerticalAlign::BASELINE)
                           .Aligned(label.side == Side::LEFT     ? Align::LEFT
                                    : label.side == Side::CENTER ? Align::CENTER
                                                                 : Align::RIGHT);
    (label.bold ? plain.Bold() : plain).Draw(canvas, label.utf8, RectOf(label.box));
}

}  // namespace

void Paint(Canvas& canvas, const Picture& picture) {
    for (const Mark& mark : picture.marks) {
        std::visit([&canvas](const auto& drawn) { Draw(canvas, drawn); }, mark);
    }
}

}  // namespace bench
