#ifndef KIVGLES_KIT_SCREEN_H
#define KIVGLES_KIT_SCREEN_H

/// @file
/// A window, what is drawn on it with, and its font.

#include <functional>
#include <memory>
#include <string>

#include "kivgles/kit/Geometry.h"

struct ANativeWindow;

namespace kivgles::kit {

class Device;
class Layer;

/// A native window and everything that it takes to draw on it: a surface of the core, a font, the layers.
///
/// Xlib has a Screen too: beside its header write kivgles::kit::Screen.
///
/// Order of calls: Connect, LoadFont if there is text, then layers are made, painted and presented.
///
/// Threads: any operation of the screen, of its layers and of texts may be called from any thread; they
/// exclude each other. What is shown is never half of a picture if each thread paints a layer of its own and
/// hands it over whole, by one Layer::Copy into the layer that one thread presents. A layer that one thread
/// paints while another one presents it is shown as it is at that moment.
///
/// Opaque windows and overlays: layers hold premultiplied pixels, and Present copies them as they are. So
/// there is one way for both. An opaque window shows no dark fringe around soft edges, and an overlay shows
/// what is behind it wherever a layer is transparent. Only the opacity of a soft edge of text or of a blended
/// image is less than it should be (a quarter at most): there a little more of what is behind an overlay
/// shines through.
///
/// One at a time: a process can have one connected screen. It is not static and not in a singleton, for the
/// reasons that KivGLDrawSurface gives.
class Screen {
 public:
    /// The longest side of a layer, in pixels of what is drawn (Layer's factor counts). Every GL that runs
    /// OpenGL ES 2.0 these days takes it, and what GL does not take it ignores without an answer. A
    /// client that knows its GL passes another limit to the constructor.
    static constexpr int MAX_LAYER_SIDE = 4096;

    /// A screen without a window: it uses neither a thread nor GL yet.
    /// @param maxLayerSide The longest side of a layer: at most what GL gives for GL_MAX_TEXTURE_SIZE.
    explicit Screen(int maxLayerSide = MAX_LAYER_SIDE);

    /// Executes what is queued, and lets go of the window. Layers of this screen that are still there may be
    /// destroyed later, but not be drawn into.
    ~Screen();

    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Shows on a window from now on. Waits.
    ///
    /// If another window is connected, and still exists, layers and font stay. Connecting the same window
    /// does what Reconnect does, and so does any window after one that failed.
    /// @param window Kept alive by the client until another one is connected or the screen is destroyed. On a
    ///     desktop the X11 window id, cast.
    /// @throws Error With the code of KivCreateGLContext, KivConnectWindowSurface or, where the screen is set
    ///     up anew, of what Reconnect does; INVALID_ARGUMENT if `window` is null, with which all stays as it
    ///     is. After any other no window is connected.
    void Connect(ANativeWindow* window);

    /// Starts anew on a window: the same one after it was resized, or another one after it was lost. Waits.
    ///
    /// Makes a new surface of the core, because it reads the size of a window only once and does not take the
    /// same one again. Layers stay usable with the size that they have, but are transparent again; the font
    /// is loaded again, which takes its time; at the end the function that was given to OnReconnect is
    /// called, unless this is the screen's first window.
    /// @param window As for Connect. The one before need not exist any more.
    /// @throws Error With the code of KivCreateGLContext, KivConnectWindowSurface, KivCreateGLFBO or
    ///     KivLoadFont, and no window is connected then, but Reconnect can be tried again; INVALID_ARGUMENT
    ///     if `window` is null, with which all stays as it is. What the function of OnReconnect throws is
    ///     passed on, and the window stays connected.
    void Reconnect(ANativeWindow* window);

    /// Sets the function that paints again what the layers lost.
    /// @param paint Called at the end of Reconnect, on the thread that called it. It may do everything, such
    ///     as replacing layers by those of another size, but Connect and Reconnect. Empty: nothing is called.
    void OnReconnect(std::function<void()> paint);

    /// Loads the font of all text from now on, in place of the one before. Waits, for tens of milliseconds to
    /// seconds: not something for every frame.
    /// @param path Any file that FreeType opens. Reconnect loads it again.
    /// @throws Error With the code of KivLoadFont: 31 if the file does not open. There is no font then.
    /// @throws Error NOT_CONNECTED if there is no window.
    void LoadFont(const std::string& path);

    /// Shows a layer, scaled to fill the window.
    ///
    /// Waits for the frame before it to be shown and for the layer to be painted, queues this frame, and
    /// returns: one frame is in flight, and no client can outrun the screen.
    /// @param layer A layer of this screen.
    /// @throws Error With the code of KivBlit, KivRefreshOnSrceen or Init; NOT_CONNECTED; INVALID_ARGUMENT if
    ///     the layer is another screen's.
    void Present(const Layer& layer);

    /// Waits until everything asked for so far is done, the last frame included.
    /// @throws Error With the code of Init; NOT_CONNECTED.
    void Finish();

    /// The size of the window, as of its connection.
    /// @return Pixels; 0 by 0 while no window is connected.
    kit::Size Size() const;

 private:
    friend class Layer;
    friend class Text;

    std::shared_ptr<Device> device;  // shared with the layers, which may live longer
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_SCREEN_H
