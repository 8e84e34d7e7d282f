#ifndef KIVGLES_KIT_LAYER_H
#define KIVGLES_KIT_LAYER_H

#include <memory>

#include "kivgles/kit/Error.h"
#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

class Canvas;
struct LayerState;
class Screen;
struct Image;

/// A picture in the memory of GL, for what GL is good at: filling, copying, scaling and showing. What needs
/// more is painted into a Canvas, and drawn into a layer as it is. It belongs to a screen, which has at most
/// 15. Its pixels are premultiplied. All operations but Blend replace what is there, opacity included.
///
/// Places are whole pixels: edges between pixels go to the nearer one. What lies outside is cut off, however
/// far it reaches; what is empty, or has a place or length that is no number (of a client's picture: or
/// beyond 10^15), draws nothing. Each operation takes effect in one step: nobody sees half of it.
///
/// @code
/// Layer film(screen, screen.Size()), frame(screen, screen.Size());
/// film.Draw(picture, screen.Size().width / 4, 0);  // a canvas
/// frame.Copy(film, 0, 0);
/// frame.Blend(controls, 0, 400);
/// screen.Present(frame);
/// @endcode
///
/// Threads: as for Screen. All operations but Draw and Blend are queued, so most failures are only logged.
///
/// Every operation throws Error: with the code of the core's operations that it names, NOT_CONNECTED without
/// a window, INVALID_ARGUMENT on a layer that was moved away, which can only be assigned to or destroyed.
class KIVGLES_KIT_EXPORT Layer {
 public:
    /// Makes a transparent layer. Waits. What GL refuses is only logged.
    /// @param screen,size The screen it belongs to, and pixels.
    /// @throws Error With the code of KivCreateGLFBO: 15 if the screen has 15 layers. INVALID_ARGUMENT for a
    /// size of 0 or less, TOO_LARGE above the screen's limit.
    Layer(Screen& screen, kit::Size size);

    ~Layer();                            ///< Frees the layer. Waits.
    Layer(Layer&&) noexcept;             ///< The layer stays the same for the screen that shows it.
    Layer& operator=(Layer&&) noexcept;  ///< What it was is freed. @return This layer.

    kit::Size Size() const;  ///< @return Its size in pixels.

    void Clear(const Color& color = TRANSPARENT);          ///< @param color Of every pixel.
    void Rectangle(const Rect& rect, const Color& color);  ///< @param rect,color What is filled, with what.

    /// @name Pictures of the client's
    /// Unless scaled they arrive as they are; they are scaled by Cairo, on the caller's thread. Each is only
    /// read, and waits until its pixels have been.
    ///
    /// The core can place a picture to the pixel in layers of the window's size, and wherever places come out
    /// even as parts of it. Elsewhere it goes by way of a layer of the kit's own.
    ///
    /// Blend puts it over what is there, by its opacity. In a layer that is not opaque, soft edges get less
    /// opacity than they should (a quarter less at most): an overlay is better put together in a canvas.
    ///
    /// Each throws Error with the code of KivDrawBitmap, KivDrawBitmapByBlend or KivBlit; 15 without room for
    /// a layer in between; for an image what Canvas::Draw throws; OUT_OF_MEMORY.
    /// @{

    void Draw(const Canvas& canvas, int x, int y);     ///< @param canvas,x,y What, and its top-left corner.
    void Draw(const Canvas& canvas, const Rect& to);   ///< @param canvas,to What, scaled to fill that.
    void Draw(const Image& image, const Rect& to);     ///< @param image,to What, scaled to fill that.
    void Blend(const Canvas& canvas, int x, int y);    ///< @param canvas,x,y What, and its top-left corner.
    void Blend(const Canvas& canvas, const Rect& to);  ///< @param canvas,to What, scaled to fill that.
    void Blend(const Image& image, const Rect& to);    ///< @param image,to What, scaled to fill that.
    /// @}

    /// Copies a part of another layer. Scaled up, it takes no colour from beside the part, which needs a
    /// layer of the kit's own; beyond the left and upper edge, it needs one more.
    /// @param source,from Another layer of the same screen, and a part of it. @param to What it then fills.
    /// @throws Error With the code of KivBlit; 15 without room for these layers; INVALID_ARGUMENT for another
    /// source; TOO_LARGE where what is seen, with two pixels of the source around it, grows beyond a million
    /// pixels or, across the left or upper edge, the screen's limit.
    void Copy(const Layer& source, const Rect& from, const Rect& to);

    /// As above, all of it, unscaled. @param source,x,y Another layer, and where its top-left corner goes.
    void Copy(const Layer& source, int x, int y);

 private:
    friend class Screen;

    std::unique_ptr<LayerState> state;  // null: moved away
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_LAYER_H
