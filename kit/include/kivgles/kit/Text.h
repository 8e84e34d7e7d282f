#ifndef KIVGLES_KIT_TEXT_H
#define KIVGLES_KIT_TEXT_H

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "kivgles/kit/Error.h"
#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

class Canvas;
class TextLayout;

/// Where a text stands between the left and the right edge of its box, in whatever direction it is read.
enum class Align {
    LEFT,    ///< At the left edge.
    CENTER,  ///< In the middle.
    RIGHT,   ///< At the right edge.
};

/// Where a text stands between the top and the bottom edge of its box.
enum class VerticalAlign {
    TOP,       ///< The first line at the top edge.
    MIDDLE,    ///< In the middle: capitals of a single line have as much room above as below.
    BOTTOM,    ///< The last line at the bottom edge.
    BASELINE,  ///< The last line's baseline on the bottom edge, for texts of several sizes in a row.
};

/// What a text takes.
struct TextExtent {
    int width = 0;      ///< Of the widest line, in pixels.
    int height = 0;     ///< Of all lines, in pixels: their number times Text::LineHeight.
    int lines = 0;      ///< Number of lines.
    bool whole = true;  ///< False: something was left out, and an ellipsis put in its place.
    int missing = 0;    ///< Number of characters that no font has; a box with their code stands for each.
};

/// How a text looks and where it stands in its box: made once, and drawn with as often as one likes.
///
/// Each of the functions that change something returns a changed copy, so that they can be chained:
///
/// @code
/// const Text title = Text(56, {240, 244, 250}).Bold();
/// title.Right().Draw(canvas, "Gleis 3", {24, 16, 600, 70});
/// @endcode
///
/// Texts are UTF-8 of any length; bytes that are not become replacement characters (U+FFFD). They are laid
/// out by Pango: scripts are joined and stacked, read from left to right or from right to left, and what a
/// font lacks is taken from others that are installed, emoji in their colours. Sizes are pixels, whatever the
/// screen's resolution; smoothing and hinting do not depend on the desktop's settings.
///
/// A line feed ends a line. Without Wrapped what does not fit the box' width is left out and an ellipsis put
/// in its place; with it the text goes on in the next line. The last line that fits the height, at least one,
/// is shortened if there is more. A box without width or height shows nothing. Only the ink of slanted
/// characters, outlines, and marks above and below may reach over the edges.
///
/// What cannot fit the box is not even looked at; measured without one a text takes a second for each
/// megabyte. A paragraph ends after so many bytes as its size goes into 1.6 million: 40,000 at 40 pixels.
///
/// Threads: any, as many as one likes; the object itself is a value, and one may be used by several threads.
/// The first text of a thread takes a few milliseconds more: each has fonts of its own, which go with it.
class KIVGLES_KIT_EXPORT Text {
 public:
    /// White, 40 pixels high, upright and regular, one line, in the top-left corner of its box.
    Text() = default;
    /// @param pixels,foreground As Sized and Colored have them; all else as above.
    Text(double pixels, const Color& foreground) { *this = Sized(pixels).Colored(foreground); }

    /// @name How it looks
    /// @{

    /// @param pixels From 1 to 1000; less, or what is no number, counts as 1, more as 1000. @return A copy.
    Text Sized(double pixels) const { return With(&Text::size, pixels > 1 ? std::min(pixels, 1000.0) : 1); }
    /// @param foreground Of all but emoji, not premultiplied; its opacity is theirs, too. @return A copy.
    Text Colored(const Color& foreground) const { return With(&Text::color, foreground); }
    /// @param names Families, the first one that is installed or was added: "Noto Sans, DejaVu Sans". At
    /// first, and for what they lack, it is the system's "sans-serif". @return A copy.
    Text Family(const std::string& names) const { return With(&Text::family, names); }
    /// @param tag For forms of characters and line breaks: "ja", "zh-Hant"; at first "en". @return A copy.
    Text Language(const std::string& tag) const { return With(&Text::language, tag); }
    /// @param backdrop As wide as each line and as high as its line height; at first none. @return A copy.
    Text On(const Color& backdrop) const { return With(&Text::background, backdrop); }
    /// @param edge,pixels An outline's colour, and how far it reaches beyond the characters, at most 100; at
    /// first there is none. @return A copy that can be read on whatever is below.
    Text Outlined(const Color& edge, double pixels) const {
        return With(&Text::outline, edge).With(&Text::outlineWidth, pixels > 0 ? std::min(pixels, 100.0) : 0);
    }
    Text Bold() const { return With(&Text::bold, true); }      ///< @return A copy in bold.
    Text Italic() const { return With(&Text::italic, true); }  ///< @return A copy in italic, or slanted.
    Text Underlined() const { return With(&Text::underlined, true); }  ///< @return An underlined copy.

    /// @return A copy whose digits are all as wide as the widest, in every font: for clocks and columns.
    Text Tabular() const { return With(&Text::tabular, true); }
    /// @}

    /// @name Where it stands
    /// @{

    /// @param horizontal Between left and right. @return A copy there.
    Text Aligned(Align horizontal) const { return With(&Text::align, horizontal); }
    /// @param vertical Between top and bottom. @return A copy there.
    Text Aligned(VerticalAlign vertical) const { return With(&Text::verticalAlign, vertical); }
    Text Center() const { return Aligned(Align::CENTER); }          ///< @return A copy there.
    Text Right() const { return Aligned(Align::RIGHT); }            ///< @return A copy there.
    Text Middle() const { return Aligned(VerticalAlign::MIDDLE); }  ///< @return A copy there.

    /// @return A copy, wrapped where its language breaks lines, and anywhere in words longer than a line.
    Text Wrapped() const { return With(&Text::wrapped, true); }

    /// @param pixels From baseline to baseline; 0, as at first: five quarters of its size. @return A copy.
    Text Spaced(int pixels) const { return With(&Text::lineHeight, std::min(pixels, 1 << 20)); }
    /// @}

    /// @return Pixels from baseline to baseline.
    int LineHeight() const { return lineHeight > 0 ? lineHeight : static_cast<int>(std::ceil(size * 5 / 4)); }

    /// Draws a text. Baselines and the beginnings of lines are at whole pixels.
    /// @param canvas,utf8,box Where to, what, and where it stands. @return What it takes in the box.
    /// @throws Error INVALID_ARGUMENT on a canvas that was moved away, NO_FONT, OUT_OF_MEMORY.
    TextExtent Draw(Canvas& canvas, std::string_view utf8, const Rect& box) const;

    static constexpr Size UNLIMITED = {1 << 24, 1 << 24};  ///< A box that everything fits into.

    /// Measures a text as it would be drawn: it is laid out in the same way.
    /// @param utf8,box What, and width and height of its box. @return What it takes.
    /// @throws Error NO_FONT.
    TextExtent Measure(std::string_view utf8, const Size& box = UNLIMITED) const;

    /// Makes the fonts of a file known, for all texts of the process from now on, as if they were installed.
    /// Takes tens of milliseconds, and makes each thread look its fonts up anew.
    /// @param path A font file that stays there. @throws Error BAD_FILE if there is none, or it is no font.
    static void AddFont(const std::string& path);

 private:
    friend class TextLayout;

    template <typename Member, typename Value>
    Text With(Member Text::*member, const Value& value) const {
        Text copy = *this;
        copy.*member = value;
        return copy;
    }

    double size = 40;
    Color color = {255, 255, 255};
    Color background = TRANSPARENT;
    Color outline = TRANSPARENT;
    double outlineWidth = 0;
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool tabular = false;
    bool wrapped = false;
    Align align = Align::LEFT;
    VerticalAlign verticalAlign = VerticalAlign::TOP;
    int lineHeight = 0;  // 0: from the size
    std::string family = "sans-serif";
    std::string language = "en";
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_TEXT_H
