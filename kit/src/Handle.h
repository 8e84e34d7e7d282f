#ifndef KIVGLES_KIT_HANDLE_H
#define KIVGLES_KIT_HANDLE_H

#include <memory>

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>

namespace kivgles::kit {

struct Release {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
    void operator()(cairo_region_t* region) const { cairo_region_destroy(region); }
    void operator()(gpointer object) const { g_object_unref(object); }  // a map, context or layout of Pango
    void operator()(PangoAttrList* attributes) const { pango_attr_list_unref(attributes); }
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
    void operator()(char* string) const { g_free(string); }
    void operator()(FcConfig* config) const { FcConfigDestroy(config); }
};

// Owns one reference to an object of Cairo, Pango or Fontconfig.
template <typename T>
using Handle = std::unique_ptr<T, Release>;

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_HANDLE_H
