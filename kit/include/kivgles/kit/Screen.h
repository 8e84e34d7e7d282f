#ifndef KIVGLES_KIT_SCREEN_H
#define KIVGLES_KIT_SCREEN_H

#include <functional>
#include <memory>

#include "kivgles/KivDisplay.h"
#include "kivgles/kit/Error.h"
#include "kivgles/kit/Geometry.h"

struct ANativeWindow;

namespace kivgles::kit {

class Canvas;
class Device;
class Layer;

/// A native window and what it takes to show pictures on it: a surface of the core, and the layers. A process
/// may have any number of screens. None is static or in a singleton, for the reasons that KivGLDrawSurface
/// gives. Xlib has a Screen too: beside its header write kivgles::kit::Screen.
///
/// Threads: any, for all operations of the screen and its layers. They exclude each other and take turns, so
/// that a thread that presents in a loop keeps nobody out for longer than two frames. Only the destructor
/// must not begin while another thread uses the screen: what waits already ends with NOT_CONNECTED.
///
/// @code
/// kivgles::kit::Screen screen(window.Display());  // a kivgles::window::Window
/// screen.Connect(window.Native());
/// screen.Present(canvas);
/// @endcode
///
/// Pictures are premultiplied and shown as they are: an overlay shows what is behind its transparent parts.
///
/// Every operation throws Error: with the code of the operations of the core that it names (Present, Refresh
/// and Finish also that of Init), and NOT_CONNECTED without a window.
class KIVGLES_KIT_EXPORT Screen {
 public:
    /// Pixels of the longest side of a layer, and of a canvas that is presented: what every GL takes today.
    static constexpr int MAX_LAYER_SIDE = 4096;

    /// There is no window, and neither a thread nor GL is used yet.
    /// @param display An X11 or Wayland connection of the client's, which several screens may share, and
    /// which has to outlive their windows; KivDisplay.h says more. As it comes: EGL's default display.
    /// @param maxLayerSide Another limit, at most what GL gives for GL_MAX_TEXTURE_SIZE.
    explicit Screen(const TagKivDisplayInfo& display = {}, int maxLayerSide = MAX_LAYER_SIDE);

    /// Executes what is queued, and lets go of the window. Layers may go later, but not be drawn into.
    ~Screen();

    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Shows on a window from now on. Waits. If another window is connected, and still exists, layers stay as
    /// they are, and what was shown last is shown again. Connecting the same window does what Reconnect does,
    /// and so does any window after one that failed.
    /// @param window Kept alive by the client until another one is connected or the screen is destroyed.
    /// KivDisplay.h says what it is: on X11 the window's id, cast.
    /// @throws Error With the code of KivCreateGLContextOn, KivConnectWindowSurface or KivCreateGLFBO, or as
    /// Present, after which no window is connected; INVALID_ARGUMENT for null, with which all stays as it is.
    void Connect(ANativeWindow* window);

    /// Starts anew on a window, with a new surface of the core: the same window after it was resized, or
    /// another one after it was lost. Waits. A canvas that was shown last is shown again, as it was
    /// presented; it may be gone. Layers keep their size, but are transparent again. At the end the function
    /// that was given to OnReconnect is called, unless this is the screen's first window.
    /// @param window As for Connect. The one before need not exist any more.
    /// @throws Error As Connect, and can be tried again; or what the function of OnReconnect throws, after
    /// which the window stays connected.
    void Reconnect(ANativeWindow* window);

    /// Sets the function that paints again what the layers lost, or a canvas in the window's new size.
    /// @param paint Called on the thread that reconnects. It may do everything, such as replacing layers by
    /// those of another size, but Connect and Reconnect. Empty: nothing is called.
    void OnReconnect(std::function<void()> paint);

    /// Shows a canvas, scaled to fill the window: waits for the frame before it to be shown, hands over what
    /// has changed since it was last shown here, queues this frame, and returns. So one frame is in flight,
    /// and no client can outrun the screen. The canvas may be painted again, or go, at once: the screen
    /// remembers the picture, which takes as much memory again. With small changes one of the window's size
    /// takes one of the screen's 15 layers; if there is none it is handed over whole each time.
    /// @param canvas It is only read.
    /// @throws Error With the code of KivDrawBitmap, KivBlit or KivRefreshOnSrceen; TOO_LARGE above the
    /// screen's limit; OUT_OF_MEMORY; INVALID_ARGUMENT on a canvas that was moved away.
    void Present(const Canvas& canvas);

    /// Shows a layer in the same way, as it is when this frame's turn comes.
    /// @param layer One of this screen; INVALID_ARGUMENT for another's, and one that was moved away.
    /// @throws Error Besides that, with the code of KivBlit or KivRefreshOnSrceen.
    void Present(const Layer& layer);

    /// Shows the last frame again, for a window that was covered or mapped anew: a canvas as it was
    /// presented, a layer as it is now. Waits for the frame before it, and throws, as Present does.
    /// @return False if nothing was presented yet, or the layer is gone or was lost by Reconnect.
    bool Refresh();

    void Finish();           ///< Waits until everything asked for so far is done, the last frame included.
    kit::Size Size() const;  ///< @return The window's, in pixels, as of its connection; 0 by 0 without one.

 private:
    friend class Layer;

    std::shared_ptr<Device> device;  // shared with the layers, which may live longer
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_SCREEN_H
