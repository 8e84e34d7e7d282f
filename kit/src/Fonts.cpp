#include "Fonts.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

#include <pango/pangofc-fontmap.h>

#include "Checks.h"

namespace kivgles::kit {

namespace {

constexpr std::size_t MAX_METRICS = 64;  // a text that grows would make one for each frame

// A configuration that threads may be reading is never changed: each addition makes a new one.
struct AddedFonts {
    std::mutex mutex;  // of the two below
    std::vector<std::string> paths;
    Handle<FcConfig> config;  // null: nothing was added
    std::atomic<std::uint64_t> generation{0};
};

// Never destroyed: threads may write texts until the very end of the process.
AddedFonts& added = *new AddedFonts;

// Not C++'s: a thread that draws from a destructor of the process' end still has it.
GPrivate threadsFonts = G_PRIVATE_INIT([](void* fonts) { delete static_cast<Fonts*>(fonts); });

// What the desktop has been set to is replaced, so that the same fonts give the same picture everywhere.
void SetHinting(FcPattern* pattern, void*) {
    const auto set = [pattern](const char* property, auto add, auto value) {
        FcPatternDel(pattern, property);
        add(pattern, property, value);
    };
    set(FC_ANTIALIAS, FcPatternAddBool, FcTrue);
    set(FC_HINTING, FcPatternAddBool, FcTrue);
    set(FC_AUTOHINT, FcPatternAddBool, FcFalse);
    set(FC_HINT_STYLE, FcPatternAddInteger, FC_HINT_SLIGHT);
    set(FC_RGBA, FcPatternAddInteger, FC_RGBA_NONE);
}

bool HasAny(FcConfig* config, FcSetName name) {
    const FcFontSet* const fonts = FcConfigGetFonts(config, name);
    return fonts != nullptr && fonts->nfont > 0;
}

bool Load(FcConfig* config, const std::string& path) {
    return FcConfigAppFontAddFile(config, reinterpret_cast<const FcChar8*>(path.c_str())) != FcFalse;
}

PangoRectangle Extents(PangoLayout* layout, const char* text, PangoRectangle* ink) {
    PangoRectangle logical;
    pango_layout_set_text(layout, text, -1);
    pango_layout_get_extents(layout, ink, &logical);
    return logical;
}

FontMetrics Measure(PangoLayout* layout) {
    PangoRectangle ink;
    const PangoRectangle capital = Extents(layout, "H", &ink);
    const int baseline = pango_layout_get_baseline(layout);
    FontMetrics metrics = {pango_units_to_double(baseline), pango_units_to_double(capital.height - baseline),
                           pango_units_to_double(baseline - ink.y)};
    std::array<int, 10>& digits = metrics.digitSpace;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        digits[i] = Extents(layout, std::to_string(i).c_str(), nullptr).width;
    }
    const int widest = *std::max_element(digits.begin(), digits.end());
    std::for_each(digits.begin(), digits.end(), [widest](int& digit) { digit = widest - digit; });
    return metrics;
}

}  // namespace

void Fonts::Add(const std::string& path, const char* operation) {
    CheckFile(path, operation);
    const std::lock_guard<std::mutex> lock(added.mutex);
    if (std::find(added.paths.begin(), added.paths.end(), path) != added.paths.end()) {
        return;
    }
    Handle<FcConfig> config(FcInitLoadConfigAndFonts());
    for (const std::string& former : added.paths) {
        (void)Load(config.get(), former);  // unless it is gone
    }
    if (!Load(config.get(), path)) {
        throw Error(operation, Error::BAD_FILE, path + " is no font");
    }
    added.paths.push_back(path);
    added.config = std::move(config);
    ++added.generation;
}

Fonts& Fonts::OfThread(const char* operation) {
    auto* fonts = static_cast<Fonts*>(g_private_get(&threadsFonts));
    if (fonts == nullptr) {
        fonts = new Fonts;
        g_private_set(&threadsFonts, fonts);
    }
    auto* const map = PANGO_FC_FONT_MAP(fonts->map.get());
    if (fonts->generation != added.generation) {
        const std::lock_guard<std::mutex> lock(added.mutex);
        pango_fc_font_map_set_config(map, added.config.get());
        fonts->generation = added.generation;
        fonts->metrics.clear();
    }
    // Pango ends the process where there is none.
    FcConfig* const config = pango_fc_font_map_get_config(map);
    if (!HasAny(config, FcSetSystem) && !HasAny(config, FcSetApplication)) {
        throw Error(operation, Error::NO_FONT, "no font is installed");
    }
    return *fonts;
}

Fonts::Fonts()
    : map(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT)),
      context(pango_font_map_create_context(map.get())) {
    pango_fc_font_map_set_default_substitute(PANGO_FC_FONT_MAP(map.get()), SetHinting, nullptr, nullptr);
    const Handle<cairo_font_options_t> options(cairo_font_options_create());
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
}

Handle<PangoLayout> Fonts::NewLayout(const PangoFontDescription* font, const std::string& language) {
    pango_context_set_language(context.get(), pango_language_from_string(language.c_str()));
    Handle<PangoLayout> layout(pango_layout_new(context.get()));
    pango_layout_set_font_description(layout.get(), font);
    return layout;
}

FontMetrics Fonts::Metrics(const PangoFontDescription* font, const std::string& language) {
    // Pango's own words for a font take it longer than all else that is done here.
    const std::string key = language + '\n' + pango_font_description_get_family(font) + '\n' +
                            std::to_string(pango_font_description_get_size(font)) + ' ' +
                            std::to_string(pango_font_description_get_weight(font)) + ' ' +
                            std::to_string(pango_font_description_get_style(font));
    if (metrics.size() >= MAX_METRICS) {
        metrics.clear();
    }
    const auto [known, isNew] = metrics.try_emplace(key);
    if (isNew) {
        known->second = Measure(NewLayout(font, language).get());
    }
    return known->second;
}

}  // namespace kivgles::kit
