#ifndef KIVGLES_KIT_LAYER_H
#define KIVGLES_KIT_LAYER_H

/// @file
/// A picture that is drawn into, copied and presented.

#include <memory>

#include "kivgles/kit/Geometry.h"
#include "kivgles/kit/Image.h"

namespace kivgles::kit {

class LayerState;
class Screen;
class Text;

/// A picture in the memory of GL. It belongs to a screen, of which at most 15 exist at a time, and goes with
/// this object.
///
/// Coordinates are pixels of what is shown, whatever the factor; see Geometry.h. Shapes replace what is
/// there, opacity included: one of TRANSPARENT erases. Their edges are hard in a layer of factor 1. In one of
/// factor 2 everything is drawn twice as large, and averaged down when it is copied to a layer of factor 1 or
/// presented, which smooths edges.
///
/// Threads: as for Screen. All operations but Draw and Blend are queued, so that most failures are only
/// logged.
///
/// Every operation throws Error: with the code of the operations of the core that it names, NOT_CONNECTED
/// without a window, INVALID_ARGUMENT on a layer that was moved away.
class Layer {
 public:
    /// Makes a transparent layer. Waits.
    /// @param screen The screen it belongs to, which has a window.
    /// @param size Pixels of what is shown.
    /// @param factor 1, or 2 for smooth edges.
    /// @throws Error With the code of KivCreateGLFBO: 15 if the screen has 15 layers. INVALID_ARGUMENT for a
    ///     size of 0 or less or another factor. TOO_LARGE above the screen's limit. NOT_CONNECTED.
    Layer(Screen& screen, kit::Size size, int factor = 1);

    /// Frees the layer. Waits.
    ~Layer();

    /// Takes the other's layer over.
    /// @param other Can only be assigned to or destroyed afterwards.
    Layer(Layer&& other) noexcept;

    /// Frees this layer and takes the other's over.
    /// @param other Can only be assigned to or destroyed afterwards.
    /// @return This layer.
    Layer& operator=(Layer&& other) noexcept;

    /// The layer's size.
    /// @return Pixels of what is shown.
    kit::Size Size() const;

    /// The layer's factor.
    /// @return 1 or 2.
    int Factor() const;

    /// @name Shapes
    /// A shape without extent draws nothing, and neither does one with a length or place that is not a
    /// number.
    /// @{

    /// Fills the whole layer.
    /// @param color The colour of every pixel.
    void Clear(const Color& color = TRANSPARENT);

    /// Fills a rectangle.
    /// @param rect Where.
    /// @param color The colour.
    void Rectangle(const Rect& rect, const Color& color);

    /// Fills a rectangle with round corners.
    /// @param rect Where.
    /// @param radius Of the corners, at most half of the shorter side.
    /// @param color The colour.
    void RoundedRectangle(const Rect& rect, double radius, const Color& color);

    /// Fills a circle.
    /// @param center Its centre.
    /// @param radius Its radius in pixels.
    /// @param color The colour.
    void Disc(const Point& center, double radius, const Color& color);

    /// Draws a circle's outline.
    /// @param center Its centre.
    /// @param radius Its outer radius in pixels.
    /// @param thickness Of the outline in pixels, inwards.
    /// @param color The colour.
    void Ring(const Point& center, double radius, double thickness, const Color& color);

    /// Draws a part of a circle's outline, with straight ends.
    /// @param center The circle's centre.
    /// @param radius Its outer radius in pixels.
    /// @param thickness Of the outline in pixels, inwards.
    /// @param start Where it begins, in degrees: 0 is to the right of the centre, 90 below it.
    /// @param sweep How far it goes, in degrees, clockwise; counter-clockwise if negative. 360 is a ring.
    /// @param color The colour.
    void Arc(const Point& center, double radius, double thickness, double start, double sweep,
             const Color& color);

    /// Draws a thick line with round ends, in any direction.
    /// @param from The middle of its beginning.
    /// @param to The middle of its end.
    /// @param thickness In pixels. The ends reach half of it beyond both points.
    /// @param color The colour.
    void Line(const Point& from, const Point& to, double thickness, const Color& color);

    /// Draws a level: a bar filled from the left up to a share of its width.
    /// @param rect The whole bar.
    /// @param level The share, from 0 to 1; less counts as 0, as what is not a number does, and more as 1.
    /// @param filled The colour up to the level.
    /// @param rest The colour beyond it.
    void Bar(const Rect& rect, double level, const Color& filled, const Color& rest);
    /// @}

    /// @name Images and copies
    /// @{

    /// Puts an image in place of what is there, opacity included. Waits. Where the core cannot place it to
    /// the pixel (in layers whose size is no even part of the window's, and beyond the left and upper edge),
    /// it goes by way of another layer, one for all, which counts among the 15.
    /// @param image Its pixels are read until the call returns.
    /// @param to Where it goes, scaled to fill it.
    /// @throws Error With the code of KivDrawBitmap, or of KivCreateGLFBO (15 if there is no room for that
    ///     other layer) or KivBlit; INVALID_ARGUMENT for an image without pixels or size; TOO_LARGE if it or
    ///     `to` has a longer side than the screen's limit.
    void Draw(const Image& image, const Rect& to);

    /// Blends an image over what is there, by its opacity. Waits.
    /// @param image Its pixels are read until the call returns.
    /// @param to Where it goes, scaled to fill it.
    /// @throws Error As Draw, with the code of KivDrawBitmapByBlend.
    void Blend(const Image& image, const Rect& to);

    /// Copies a part of another layer, opacity included, in one step: no other thread sees half of it.
    /// @param source Another layer of the same screen.
    /// @param from The part, in pixels of `source` as shown.
    /// @param to Where it goes, scaled to fill it. Not scaled it is cut off exactly at the layer's edges,
    ///     scaled up to a pixel of the source.
    /// @throws Error With the code of KivBlit; INVALID_ARGUMENT if `source` is this layer or another
    ///     screen's.
    void Copy(const Layer& source, const Rect& from, const Rect& to);

    /// Copies the whole of another layer, unscaled, in one step: no other thread sees half of it.
    /// @param source Another layer of the same screen.
    /// @param x Where its left edge goes.
    /// @param y Where its top edge goes.
    /// @throws Error With the code of KivBlit; INVALID_ARGUMENT if `source` is this layer or another
    ///     screen's.
    void Copy(const Layer& source, int x, int y);
    /// @}

 private:
    friend class Screen;
    friend class Text;

    std::unique_ptr<LayerState> state;  // null: moved away
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_LAYER_H
