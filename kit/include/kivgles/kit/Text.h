#ifndef KIVGLES_KIT_TEXT_H
#define KIVGLES_KIT_TEXT_H

/// @file
/// Text of any length in boxes: aligned, wrapped, shortened.

#include <string_view>

#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

class Device;
class Layer;
class Screen;
struct LayoutRules;

/// Where a text stands between the left and the right edge of its box.
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
    BASELINE,  ///< The baseline of the last line on the bottom edge: for texts of several sizes beside each
               ///< other.
};

/// What a text takes.
struct TextExtent {
    int width = 0;      ///< Of the widest line, in pixels.
    int height = 0;     ///< Of all lines, in pixels: their number times Text::LineHeight.
    int lines = 0;      ///< Number of lines.
    bool whole = true;  ///< False: something was left out, and an ellipsis put in its place.
};

/// How a text looks and where it stands in its box: made once, and drawn with as often as one likes.
///
/// Each of the functions that change something returns a changed copy, so that they can be chained:
///
/// @code
/// const Text title = Text(56, {240, 244, 250}).Bold();
/// title.Right().Draw(layer, "Gleis 3", {24, 16, 600, 70});
/// @endcode
///
/// Texts are UTF-8 of any length; bytes that are not become replacement characters (U+FFFD). A line feed ends
/// a line. Spaces have a width: three tenths of the text's size, the ideographic one its size; several in a
/// row count each, but none at the end of a line. Text stands from left to right, without kerning and
/// shaping. For a character that the font lacks, as all above U+FFFF, there is a box, and a line in the log
/// when it first occurs. Characters without width of their own (joiners, selectors, controls) are left out.
///
/// Nothing is drawn to the left or to the right of the box: without Wrapped what does not fit the width is
/// left out and an ellipsis put in its place; with it the text goes on in the next line, and the last line
/// that fits the height, at least one, is shortened. A box without width or height shows nothing. Only the
/// ink of a slanted or bold character may reach over an edge, by a pixel or so.
///
/// Characters are blended over what is there; background, underline and boxes replace it, as shapes do, which
/// makes a difference in a colour that is not opaque. A character of 1024 pixels or more, counted with the
/// layer's factor, is left out, with a line in the log, but keeps its width.
///
/// Measured and drawn is alike to the pixel, in every style.
///
/// Threads: as for Screen. The object itself is a value: one may be used by several threads.
class Text {
 public:
    /// White, 40 pixels high, upright and regular, one line, in the top-left corner of its box.
    Text() = default;

    /// As above, in another size and colour.
    /// @param pixels Of the characters, at least 1. 40, upright and regular, is the quickest.
    /// @param foreground Not premultiplied.
    Text(int pixels, const Color& foreground) : size(pixels), color(foreground) {}

    /// @name How it looks
    /// Each returns a copy that differs in one thing.
    /// @{

    /// In another size.
    /// @param pixels Of the characters, at least 1; less counts as 1, more than 1000 as 1000.
    /// @return The changed copy.
    Text Sized(int pixels) const;

    /// In another colour.
    /// @param foreground Of characters, boxes and underline, not premultiplied.
    /// @return The changed copy.
    Text Colored(const Color& foreground) const;

    /// On a background as wide as each line and as high as its line height.
    /// @param backdrop The background's colour; TRANSPARENT, as at first, draws none.
    /// @return The changed copy.
    Text On(const Color& backdrop) const;

    /// Emboldened. Characters keep their advance.
    /// @return The changed copy.
    Text Bold() const;

    /// Slanted. Characters keep their advance.
    /// @return The changed copy.
    Text Italic() const;

    /// With a line below the baseline.
    /// @return The changed copy.
    Text Underlined() const;

    /// With digits that are all as wide as the widest, so that a clock does not tremble and columns of
    /// numbers stand below each other.
    /// @return The changed copy.
    Text Tabular() const;
    /// @}

    /// @name Where it stands
    /// Each returns a copy that differs in one thing.
    /// @{

    /// Aligned between left and right.
    /// @param horizontal Where.
    /// @return The changed copy.
    Text Aligned(Align horizontal) const;

    /// Aligned between top and bottom.
    /// @param vertical Where.
    /// @return The changed copy.
    Text Aligned(VerticalAlign vertical) const;

    /// In the middle between left and right.
    /// @return The changed copy.
    Text Center() const { return Aligned(Align::CENTER); }

    /// At the right edge.
    /// @return The changed copy.
    Text Right() const { return Aligned(Align::RIGHT); }

    /// In the middle between top and bottom.
    /// @return The changed copy.
    Text Middle() const { return Aligned(VerticalAlign::MIDDLE); }

    /// Wrapped at spaces and between Chinese, Japanese and Korean characters; a word that is longer than a
    /// line wherever the line ends.
    /// @return The changed copy.
    Text Wrapped() const;

    /// With lines of another height.
    /// @param pixels From baseline to baseline; 0, as at first, means five quarters of the text's size.
    /// @return The changed copy.
    Text Spaced(int pixels) const;
    /// @}

    /// The height of a line.
    /// @return Pixels from baseline to baseline.
    int LineHeight() const;

    /// Draws a text, queued.
    /// @param layer Where to.
    /// @param utf8 The text, read until the call returns.
    /// @param box Where it stands, in pixels of the layer as shown.
    /// @return What it takes in the box.
    /// @throws Error With the code of KivDrawText, KivDrawRect or KivGetTextSize; NO_FONT; NOT_CONNECTED;
    ///     INVALID_ARGUMENT on a layer that was moved away. A text that reaches over the layer's left or
    ///     upper edge goes by way of another layer, as Layer::Draw may: then also with the code of KivBlit or
    ///     of KivCreateGLFBO, 15 if there are 15 layers.
    TextExtent Draw(Layer& layer, std::string_view utf8, const Rect& box) const;

    /// Measures a text as it would be drawn.
    /// @param layer Where it would be drawn: in one of factor 2 widths are rounded up from half pixels.
    /// @param utf8 The text, read until the call returns.
    /// @param box Width and height of the box. Without one there is no limit.
    /// @return What it takes.
    /// @throws Error As Draw, with the code of KivGetTextSize.
    TextExtent Measure(const Layer& layer, std::string_view utf8, const Size& box = UNLIMITED) const;

    /// Measures a text as it would be drawn in a layer of factor 1, before there is one.
    /// @param screen The screen with the font.
    /// @param utf8 The text, read until the call returns.
    /// @param box Width and height of the box. Without one there is no limit.
    /// @return What it takes.
    /// @throws Error As Draw, with the code of KivGetTextSize.
    TextExtent Measure(const Screen& screen, std::string_view utf8, const Size& box = UNLIMITED) const;

    /// The size of a box that everything fits into.
    static constexpr Size UNLIMITED = {1 << 24, 1 << 24};

 private:
    int PixelSize() const;
    TextExtent MeasureFor(Device& device, std::string_view utf8, const Size& box, int factor) const;
    LayoutRules Rules(const Rect& box, int factor, int layerWidth) const;

    int size = 40;
    Color color = {255, 255, 255, 255};
    Color background = TRANSPARENT;
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool tabular = false;
    bool wrapped = false;
    Align align = Align::LEFT;
    VerticalAlign verticalAlign = VerticalAlign::TOP;
    int lineHeight = 0;  // 0: from the size
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_TEXT_H
