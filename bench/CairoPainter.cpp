#include "CairoPainter.h"

#include <cmath>

namespace bench {

namespace {

double Radians(double degrees) { return degrees * 3.14159265358979323846 / 180; }

void SetColor(cairo_t* context, const Color& color) {
    cairo_set_source_rgba(context, color.r / 255.0, color.g / 255.0, color.b / 255.0, color.a / 255.0);
}

}  // namespace

CairoPainter::CairoPainter()
    : pixels(std::size_t{WINDOW_WIDTH} * WINDOW_HEIGHT),
      surface(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                                  CAIRO_FORMAT_ARGB32, WINDOW_WIDTH, WINDOW_HEIGHT,
                                                  WINDOW_WIDTH * 4)),
      context(cairo_create(surface)),
      layout(pango_cairo_create_layout(context)),
      font(pango_font_description_from_string("sans-serif")) {
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(pango_layout_get_context(layout), options);
    cairo_font_options_destroy(options);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
}

void CairoPainter::Paint(const Picture& picture) {
    for (const Mark& mark : picture.marks) {
        std::visit([this](const auto& drawn) { Draw(drawn); }, mark);
    }
}

std::uint32_t* CairoPainter::Pixels() {
    cairo_surface_flush(surface);
    return pixels.data();
}

void CairoPainter::Draw(const Ground& ground) {
    cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
    Draw(Card{ground.box, 0, ground.color});
    cairo_set_operator(context, CAIRO_OPERATOR_OVER);
}

void CairoPainter::Draw(const Card& card) {
    const auto& [x, y, width, height] = card.box;
    const int r = card.radius;
    if (r == 0) {
        cairo_rectangle(context, x, y, width, height);
    } else {
        cairo_arc(context, x + width - r, y + r, r, Radians(-90), 0);
        cairo_arc(context, x + width - r, y + height - r, r, 0, Radians(90));
        cairo_arc(context, x + r, y + height - r, r, Radians(90), Radians(180));
        cairo_arc(context, x + r, y + r, r, Radians(180), Radians(270));
        cairo_close_path(context);
    }
    SetColor(context, card.color);
    cairo_fill(context);
}

void CairoPainter::Draw(const Arc& arc) {
    const double from = Radians(arc.start);
    const double to = Radians(arc.start + arc.sweep);
    cairo_arc(context, arc.center.x, arc.center.y, arc.radius, from, to);
    cairo_arc_negative(context, arc.center.x, arc.center.y, arc.radius - arc.thickness, to, from);
    cairo_close_path(context);
    SetColor(context, arc.color);
    cairo_fill(context);
}

void CairoPainter::Draw(const Stroke& stroke) {
    for (const Place& place : stroke.points) {
        cairo_line_to(context, place.x, place.y);
    }
    SetColor(context, stroke.color);
    cairo_set_line_width(context, stroke.thickness);
    cairo_stroke(context);
}

void CairoPainter::Draw(const Label& label) {
    pango_font_description_set_absolute_size(font, label.size * PANGO_SCALE);
    pango_font_description_set_weight(font, label.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout, font);
    pango_layout_set_text(layout, label.utf8.data(), static_cast<int>(label.utf8.size()));
    double x = label.box.x;
    if (label.side != Side::LEFT) {
        int width = 0;
        pango_layout_get_pixel_size(layout, &width, nullptr);
        const int room = label.box.width - width;
        x += label.side == Side::CENTER ? std::round(room / 2.0) : room;
    }
    const int baseline = pango_layout_get_baseline(layout);
    cairo_move_to(context, x, label.box.y + label.box.height - static_cast<double>(baseline) / PANGO_SCALE);
    SetColor(context, label.color);
    pango_cairo_show_layout(context, layout);
    cairo_new_path(context);
}

}  // namespace bench
