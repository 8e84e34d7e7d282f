#ifndef KIVGLES_KIT_FONTS_H
#define KIVGLES_KIT_FONTS_H

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "Handle.h"

namespace kivgles::kit {

// Of the font that a description has for Latin letters, in pixels.
struct FontMetrics {
    double ascent = 0;
    double descent = 0;
    double capHeight = 0;
    std::array<int, 10> digitSpace{};  // what each digit takes less than the widest, in Pango's units
};

// What is installed and what the client has added, as one thread has it.
//
// Owner:  the thread, from its first text on to its end.
// Thread: that one; Add any.
class Fonts {
 public:
    // The calling thread's, up to date. Throws NO_FONT for `operation` where there is none at all.
    static Fonts& OfThread(const char* operation);

    // Makes a file's fonts known to all threads. Throws BAD_FILE for `operation`.
    static void Add(const std::string& path, const char* operation);

    // Without text.
    Handle<PangoLayout> NewLayout(const PangoFontDescription* font, const std::string& language);
    FontMetrics Metrics(const PangoFontDescription* font, const std::string& language);

 private:
    Fonts();

    const Handle<PangoFontMap> map;
    const Handle<PangoContext> context;
    std::uint64_t generation = 0;  // of the added fonts
    std::map<std::string, FontMetrics> metrics;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_FONTS_H
