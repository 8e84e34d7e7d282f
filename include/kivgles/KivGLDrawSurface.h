#ifndef KIVGLES_KIVGLDRAWSURFACE_H
#define KIVGLES_KIVGLDRAWSURFACE_H

/// @file
/// The one header a client includes.

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "kivgles/KivComponents.h"
#include "kivgles/KivDisplay.h"
#include "kivgles/KivGLRecords.h"
#include "kivgles/KivMutex.h"
#include "kivgles/KivRecords.h"

/// Marks what the shared library shows to its clients.
#define KIVGLES_EXPORT __attribute__((visibility("default")))

struct ANativeWindow;

namespace kivgles {

class GLDrawThread;

/// An on-screen display on a native window: layers, rectangles, rounds, bitmaps and text, without OpenGL.
///
/// @code
/// kivgles::KivGLDrawSurface osd;
/// unsigned int layer = 0;
/// if (osd.KivCreateGLContext() != 0 || osd.KivConnectWindowSurface(window) != 0 ||
///     osd.KivCreateGLFBO(layer, 640, 200, kivgles::KIV_COLOR_FORMAT_RGBA8888) != 0) {
///     return 1;  // the log says why
/// }
/// osd.KivDrawRect(layer, {0, 0, 640, 200}, {24, 40, 64, 255});
/// osd.KivBlit({layer, kivgles::FBO_HANDLE_BASE, {0, 0, 640, 200}, {0, 0, 640, 200}});
/// osd.KivRefreshOnSrceen();
/// @endcode
///
/// Order of calls: KivCreateGLContext, KivConnectWindowSurface, Init, KivLoadFont, then any drawing, then
/// KivDestoryGLContext. Nothing enforces it beyond the need for a context. KivCreateGLContextOn stands in the
/// place of KivCreateGLContext, and what is said here of the one holds for the other.
///
/// Coordinates: pixels of the target (a layer or the window), origin in its top-left corner, y downwards,
/// unless an operation says otherwise. A target is named by its handle: KivCreateGLFBO gives those of layers,
/// FBO_HANDLE_BASE is the window.
///
/// Threads: every operation may be called from any thread. KivCreateGLContext, KivDestoryGLContext and the
/// destructor must not run while another operation of the same surface does; all others may overlap freely
/// and take effect one after the other. All GL, EGL and font work is done by a draw thread that the surface
/// owns. It takes no signals but those of its own faults: a handler of the client's never runs on it. When
/// KivDestoryGLContext (with 0) or the destructor returns, the draw thread has ended and its log is complete;
/// the system alone still clears it away, and may list it for a moment.
///
/// Queued, waiting, direct: a *queued* operation returns 0 as soon as its request is in the queue, and a
/// failure of the request is only logged; a *waiting* one returns when the draw thread has executed it and
/// everything queued before it; a *direct* one does its work on the caller's thread without the queue.
/// Requests take effect strictly in the order in which they were made. A queued drawing whose renderer cannot
/// be made logs what Init logs under 20.
///
/// Lock: the surface has one, which lets one operation in at a time. Queued and waiting operations and
/// KivGetTextSize hold it until they return, a waiting one therefore while it waits. KivCreateGLContext,
/// KivDestoryGLContext, the window's size and the conversions take none.
///
/// Borrowed: the window until another one is connected or the context is destroyed; bitmap pixels, text and
/// paths until the call returns. Everything else is passed by value.
///
/// Several windows: a surface each, as many as you like. They share a display if it is the same one, and the
/// last of them terminates it; other EGL code of the process on that display does not survive that.
///
/// Not static, not in a singleton: a surface that is destroyed after `main` has returned still draws while
/// the driver of GL takes itself down, and the process crashes or hangs. Make it a local of `main`, or end
/// the process with `quick_exit`, which destroys nothing.
///
/// Memory: nothing throws. KivCreateGLContext answers 100 when the caller's side of it runs out of memory or
/// threads, and can be tried again; where any other request, or the draw thread, runs out of memory the
/// process ends (std::terminate).
///
/// Result codes: 0 is success; each operation names its others. The cause is logged under the tag of the
/// class that found it, and for most causes a line of those that passed it up follows. Two come from
/// everywhere and are not repeated at each operation:
///
/// - 102, from every operation that returns a result code but KivCreateGLContext and KivCreateGLContextOn,
///   when there is no context: "GLContext isn't created" of KivGLDrawSurface.
/// - 6, from every waiting operation but KivCreateGLContext, KivCreateGLContextOn and KivDestoryGLContext,
/// when
///   the draw thread runs without a context (which failed with 1 to 5, or with 100 of make-current) until
///   KivDestoryGLContext: "GLES context is not created" of GLDrawThread. Queued ones only log it.
///
/// KivConnectWindowSurface looks at its window first: null is 101 without a context, too, and one that was
/// connected before a KivDestoryGLContext is 0 with a context that failed.
///
/// One cause has two codes: a layer that does not exist ("There is not the fbo HANDLE") is 1 from
/// KivDrawRect, KivDrawRound, KivDrawText and KivBlit, and 101 from KivDisplayFBO, KivDrawBitmap and
/// KivDrawBitmapByBlend. KivClearGLFBO and KivDestoryGLFBO answer 0 and log it.
///
/// | code | meaning | tag and line in the log |
/// |---|---|---|
/// | 1 | no EGL display | EGLManager: eglGetDisplay failed: ERROR |
/// | 1 | no such layer (rectangles, rounds, text, blits) | KivGLDrawSurface: There is not the fbo HANDLE |
/// | 2 | EGL did not initialise | EGLManager: eglInitialize failed: ERROR |
/// | 3 | EGL could not be asked for a configuration | EGLManager: eglChooseConfig error: ERROR |
/// | 4 | no context, or no configuration to make it from | EGLManager: eglCreateContext error: ERROR |
/// | 5 | no surface for the window | EGLManager: eglCreateWindowSurface error: ERROR |
/// | 5 | no off-screen surface, or no configuration | EGLManager: eglCreatePbufferSurface error: ERROR |
/// | 5 | no context without a surface (Wayland) | EGLManager: EGL_KHR_surfaceless_context is missing |
/// | 6 | the context could not be set up earlier | GLDrawThread: GLES context is not created |
/// | 15 | all 15 layers are in use | FBOManager: num of the FBO more than max num 16 |
/// | 20 | a shader program could not be built | OSDRect, OSDText and others: create shader program fail |
/// | 21 | GL gave no texture name | FBOManager, FontAtlas: Create texture fail |
/// | 30 | FreeType did not start | FontAtlas, FontStyleAtlas: Failed to initialize freetype library |
/// | 31 | the font file did not open | FontAtlas, FontStyleAtlas: Error loading font face |
/// | 32 | the font has no visible character | FontAtlas: Calculate texture width 0d, height 0d |
/// | 100 | invalid handle, or no table yet | GLDrawThread: FBO manager is nullptr or param is invalid |
/// | 100 | the context could not be made current | EGLManager: egl make current failed: ERROR |
/// | 100 | the draw thread could not be started | KivGLDrawSurface: start draw thread fail ERRNO |
/// | 100 | no such platform here | KivGLDrawSurface: platform is invalid PLATFORM |
/// | 101 | no display given where one is needed | KivGLDrawSurface: native display is NULL |
/// | 101 | no window given | KivGLDrawSurface: native window is NULL |
/// | 101 | no such layer (display, bitmaps) | GLDrawThread: There is not the fbo HANDLE |
/// | 102 | no context | KivGLDrawSurface: GLContext isn't created |
/// | 103 | no text renderer yet | GLDrawThread: osd text is not init |
class KIVGLES_EXPORT KivGLDrawSurface {
 public:
    /// A surface without a context: it has no thread and uses no EGL yet.
    KivGLDrawSurface() noexcept;

    /// Destroys the context if there is one, as KivDestoryGLContext does (and logs "GLContext isn't created"
    /// if there is none).
    ~KivGLDrawSurface();

    KivGLDrawSurface(const KivGLDrawSurface&) = delete;
    KivGLDrawSurface& operator=(const KivGLDrawSurface&) = delete;

    /// @name Lifecycle
    /// @{

    /// Starts the draw thread and sets up an OpenGL ES 2.0 context on it. Waits. Takes no lock.
    ///
    /// Not to be called while a context exists: the former draw thread would be left waiting for ever.
    /// After 1 to 5, and after 100 of make-current, the draw thread runs: KivDestoryGLContext must be called
    /// before trying again. After 100 of the draw thread's start there is nothing to destroy.
    /// @retval 0 The context exists. Three lines of EGLManager ("GL Version = ..." and so on) name the GL.
    /// @retval 1 No EGL display ("eglGetDisplay failed: ...").
    /// @retval 2 EGL did not initialise ("eglInitialize failed: ..."): the usual one without an X server.
    /// @retval 3 EGL could not be asked for a configuration ("eglChooseConfig error: ...").
    /// @retval 4 EGL made no context, or had no configuration for one ("eglCreateContext error: ...").
    /// @retval 5 EGL made no off-screen surface, or had no configuration for one ("eglCreatePbufferSurface
    ///     error: ...", then "Create openGLES window surface fail 5").
    /// @retval 100 The context could not be made current ("egl make current failed: ...", then "Make current
    ///     EGL context fail 100"), or the draw thread could not be started for want of memory or threads
    ///     ("start draw thread fail ERRNO").
    int KivCreateGLContext() noexcept;

    /// The same on a display of the client's: the X11 or Wayland connection that its windows are made on.
    /// Waits. Takes no lock.
    ///
    /// What KivDisplay.h says of a platform holds for the context: which native windows it takes, and what a
    /// frame waits for. On Wayland nothing can be shown before a window is connected.
    /// @param display Copied. Its connection stays the caller's, is kept open by it until the context is
    ///     destroyed, and is used by the draw thread meanwhile.
    /// @return As KivCreateGLContext, with the same lines, and besides:
    /// @retval 1 No EGL display, also because EGL lacks the platform ("eglGetDisplay failed: ...").
    /// @retval 5 On Wayland: EGL makes no context current without a surface ("EGL_KHR_surfaceless_context is
    ///     missing", then "Create openGLES window surface fail 5").
    /// @retval 100 The platform is none of KIV_PLATFORM_, or on Android not the default ("platform is invalid
    ///     PLATFORM"). Nothing has changed.
    /// @retval 101 The platform needs a display and there is none ("native display is NULL"). Nothing has
    ///     changed.
    int KivCreateGLContextOn(const TagKivDisplayInfo& display) noexcept;

    /// Releases the context, every layer and font, and stops the draw thread. Waits. Takes no lock.
    ///
    /// Requests queued before it are executed first. The window stays known: connecting the same window
    /// again afterwards connects nothing, so use a new surface for that.
    /// @retval 0 There is no context any more, and the window is no longer used.
    int KivDestoryGLContext() noexcept;

    /// Makes `window` the target of display and refresh, replacing the window connected before. Waits.
    ///
    /// The size of a window is read here and not again: after a resize connect another one and then the same.
    /// A window id that does not exist makes the GL driver crash.
    ///
    /// After 5 or 100 nothing is shown until another window than the former has been connected, though the
    /// getters keep the former's size and connecting it again returns 0.
    /// @param window Owned by the caller and kept alive by it until another window is connected or the
    ///     context is destroyed. On X11: the window's id, cast. On Wayland: a `wl_egl_window*`, cast.
    /// @retval 0 Connected, its size read once, now; or connected already (with the warning "NativeWindow has
    ///     been connected").
    /// @retval 5 EGL refuses the window ("eglCreateWindowSurface error: ...", then "Create openGLES window
    ///     surface fail 5").
    /// @retval 100 The window cannot be made current ("egl make current failed: ...", then "Make current EGL
    ///     context fail 100").
    /// @retval 101 `window` is null ("native window is NULL").
    int KivConnectWindowSurface(ANativeWindow* window) noexcept;

    /// Creates the renderers named by `mask`. Waits.
    ///
    /// Optional: a renderer is made on first use otherwise. Renderers that exist are kept. `Init(0)` is the
    /// way to wait for everything queued so far.
    /// @param mask ENABLE_ bits of KivComponents.h; others are ignored.
    /// @retval 0 They exist.
    /// @retval 20 A renderer's shaders could not be built (GL's own words under ShaderProgram, "create shader
    ///     program fail" of the renderer, then "OSD Rect init fail 20" or the like of GLDrawThread). The
    ///     renderers made before it stay.
    int Init(unsigned int mask) noexcept;

    /// Loads a font for all text from now on, and forgets the one loaded before. Waits.
    ///
    /// All characters are rendered: tens of milliseconds to seconds, so not something for every frame.
    /// Without it, and without Init(ENABLE_TEXT), the first text drawn loads "/system/fonts/CC3.ttf" at 40.
    /// After Init(ENABLE_TEXT) there is no font before one is loaded: standard text logs "Char CODE is not
    /// exit", styled text "font face is null pointer". After 21 to 32 there is no font: the former is gone
    /// all the same. A character that does not load is left out ("Loading character CODE failed!"), and a
    /// size that the font refuses leaves it at its own ("set pixel size fail").
    /// @param path Any file FreeType opens; its first face is used. The text is copied. The file itself is
    ///     kept open, so put a new file in its place rather than overwriting it.
    /// @param size Glyph size of the standard style in pixels, 0 means 40.
    /// @retval 0 Loaded ("Generated a W x H (KB kb) texture atlas").
    /// @retval 20 The text renderer could not be made ("create shader program fail" of OSDText, then "OSD
    ///     text init fail 20").
    /// @retval 21 GL gave no texture name ("Create texture fail", then "Load standard font lib fail 21").
    /// @retval 30 FreeType did not start ("Failed to initialize freetype library", then "Load standard font
    ///     lib fail 30").
    /// @retval 31 The file is missing or no font ("Error loading font face", then "Load standard font lib
    ///     fail 31"). No line names the file: it is the one last given here, or the default one above where a
    ///     text came before any load. See that it is there, a regular file, and readable for the process. 30
    ///     and 31 may also come from opening the file once more for styled text ("Error loading font face" or
    ///     "Error loading font face for text size", then "Load dynamic font lib fail ...").
    /// @retval 32 The font has no visible character ("Calculate texture width ...", then "Load standard font
    ///     lib fail 32").
    int KivLoadFont(const std::string& path, unsigned int size) noexcept;

    /// Width of the connected window as of its connection. Direct. Takes no lock.
    /// @return Pixels; 1920 until a window is connected.
    std::uint32_t KivGetWindowWidth() const noexcept;

    /// Height of the connected window as of its connection. Direct. Takes no lock.
    /// @return Pixels; 1080 until a window is connected.
    std::uint32_t KivGetWindowHeight() const noexcept;

    /// Shows on the screen what was drawn on the window so far. Queued.
    ///
    /// What the window's back buffer holds afterwards is not defined: display or clear before drawing on.
    /// A frame that EGL does not take is lost without a line.
    /// @retval 0 Accepted.
    int KivRefreshOnSrceen() noexcept;
    /// @}

    /// @name Layers
    /// @{

    /// Creates a transparent layer. Waits.
    ///
    /// A size that GL refuses is only logged ("Unable to set up render Target: ..." or "Framebuffer
    /// incomplete: Unknown error."): drawing into that layer has no effect. So is one of 0, into which
    /// drawing logs "param is invalid".
    /// @param[out] handle The layer's handle, valid until it is destroyed; untouched on failure.
    /// @param width Pixels.
    /// @param height Pixels.
    /// @param format KIV_COLOR_FORMAT_RGBA8888; anything else is logged ("Color format is invalid ...") and
    ///     taken as that.
    /// @retval 0 Created ("Framebuffer complete.", then "Create fbo fboHandleIndex HANDLE, ...").
    /// @retval 15 15 layers exist ("num of the FBO more than max num 16", then "Create FBO fail 15").
    /// @retval 21 GL gave no texture name ("Create texture fail", then "Create FBO fail 21").
    int KivCreateGLFBO(unsigned int& handle, unsigned int width, unsigned int height, int format) noexcept;

    /// Destroys a layer; its handle may be given to the next one created. Waits.
    /// @param handle The layer.
    /// @retval 0 Destroyed ("Destory FBO fboHandleIndex HANDLE"); also when there is no such layer, which
    ///     FBO_HANDLE_BASE is not either ("FBO is not exist fboHandleIndex HANDLE", then the same line).
    /// @retval 100 `handle` is 0xFFFFFFFF, or there is no table of layers yet: no layer was made, no window
    ///     connected, nothing drawn, no Init(ENABLE_FBO_MANAGER) ("FBO manager is nullptr or param is
    ///     invalid").
    int KivDestoryGLFBO(unsigned int handle) noexcept;

    /// Makes a whole layer or the window transparent black. Queued.
    /// @param handle The layer, or FBO_HANDLE_BASE for the window.
    /// @retval 0 Accepted, whatever the handle (the draw thread logs "There is not the fbo HANDLE" or "FBO
    ///     manager is nullptr or param is invalid").
    int KivClearGLFBO(unsigned int handle) noexcept;

    /// Clears the window and draws a region of a layer on it, colours multiplied by their alpha. Queued.
    ///
    /// The way for an overlay, which takes premultiplied pixels. On an opaque window every soft edge is
    /// darkened, because blending lowers the layer's alpha there: use KivBlit to the window instead.
    ///
    /// The window cannot be the source: FBO_HANDLE_BASE is accepted, but there is no picture to copy.
    /// @param handle The layer.
    /// @param srcRect Region of the layer, in its pixels.
    /// @param dstRect Where the region goes, scaled to fill it, in pixels of the window.
    /// @retval 0 Accepted.
    /// @retval 101 No such layer ("There is not the fbo HANDLE" of GLDrawThread and KivGLDrawSurface).
    int KivDisplayFBO(unsigned int handle, const TagKivRectInfo& srcRect,
                      const TagKivRectInfo& dstRect) noexcept;

    /// Copies a region of one layer into another, alpha included, without blending. Queued.
    ///
    /// Source and destination must be different layers; the window can be the destination alone, as with
    /// KivDisplayFBO. Copying to half the size averages the pixels. A copy to the window leaves what lies
    /// outside `dstRect` as it was, so several layers can be shown.
    /// @param blit Both handles, and each one's region in its own pixels. A destination of FBO_HANDLE_BASE is
    ///     the window.
    /// @retval 0 Accepted.
    /// @retval 1 No such layer ("There is not the fbo HANDLE" of GLDrawThread and KivGLDrawSurface).
    int KivBlit(const TagKivBlitInfo& blit) noexcept;
    /// @}

    /// @name Text
    /// @{

    /// Draws one line of text, with its background and underline, into a layer. Queued.
    ///
    /// The background fills `rect`; the pen starts at its left edge, on a baseline 10 pixels above its bottom
    /// edge; the underline's 2 pixels begin 2 pixels below the baseline and are as wide as `rect`. Glyphs are
    /// blended over the layer, alpha channel included. Characters that the font lacks, and
    /// those without ink, are skipped without moving the pen ("Char CODE is not exit"); one of 1024 pixels or
    /// more is as wide a gap, with the same line, and is not rendered, so a damaged glyph of that size (a
    /// picture that does not decode, an outline that FreeType gives up on) counts as present. Text whose two
    /// colours are equal is drawn fully transparent. There is no kerning, shaping or line breaking.
    /// @param handle The layer, or FBO_HANDLE_BASE for the window.
    /// @param text Copied before the call returns, at most 127 units. A null text draws background and
    ///     underline alone ("memset_s_func failed, err = ...").
    /// @param rect The line's box in pixels of the layer.
    /// @retval 0 Accepted. What the draw thread may find is only logged: a font that does not load (as with
    ///     KivLoadFont) or is missing ("font face is null pointer"), no texture, or no visible character in
    ///     another than the standard style ("get font alpha texture fail ...").
    /// @retval 1 No such layer ("There is not the fbo HANDLE" of GLDrawThread and KivGLDrawSurface).
    int KivDrawText(unsigned int handle, const TagKivTextInfo& text, const TagKivRectInfo& rect) noexcept;

    /// Measures a text. Direct: what is still queued has no say, and no GL is called.
    ///
    /// Measured upright and regular a text is as wide as the pen moves when it is drawn in any style, but for
    /// characters that reach left of the pen and are wider than their advance: those count by their width.
    /// Measured bold or slanted, more characters do.
    ///
    /// @param text Read during the call. A character that the font lacks, or without ink, counts 30 pixels
    ///     ("Char CODE is not exit"), and so does each where the font did not load. Unlike drawing, measuring
    ///     takes all units up to `textLength` or the first 0; a null text has width 0.
    /// @param[out] width Pixels from the pen's start to its end; untouched when there is no context.
    /// @param[out] height Always 50, in pixels; untouched when there is no context.
    /// @retval 0 Measured.
    /// @retval 103 There is no text renderer before the draw thread has come to Init(ENABLE_TEXT), to
    ///     KivLoadFont or to the first text ("osd text is not init", then "get text size fail err 101"); 30
    ///     and 50 are reported. From then on a font load is waited for.
    int KivGetTextSize(const TagKivTextInfo& text, unsigned int& width, unsigned int& height) noexcept;
    /// @}

    /// @name Shapes and bitmaps
    /// @{

    /// Fills a rectangle; the colour, alpha included, replaces the pixels. Queued.
    ///
    /// @param handle The layer, or FBO_HANDLE_BASE for the window.
    /// @param rect In pixels of the target; what lies outside is cut off.
    /// @param color Not premultiplied.
    /// @retval 0 Accepted.
    /// @retval 1 No such layer ("There is not the fbo HANDLE" of GLDrawThread and KivGLDrawSurface).
    int KivDrawRect(unsigned int handle, const TagKivRectInfo& rect, const TagKivColorRGBA& color) noexcept;

    /// Fills a circle or ellipse; the colour, alpha included, replaces the pixels. Queued.
    ///
    /// It is a polygon of 36 corners with hard edges.
    /// @param handle The layer, or FBO_HANDLE_BASE for the window.
    /// @param round In pixels of the target; what lies outside is cut off.
    /// @param color Not premultiplied.
    /// @retval 0 Accepted.
    /// @retval 1 No such layer ("There is not the fbo HANDLE" of GLDrawThread and KivGLDrawSurface).
    int KivDrawRound(unsigned int handle, const TagKivRoundInfo& round,
                     const TagKivColorRGBA& color) noexcept;

    /// Clears the window and draws a bitmap on it, colours multiplied by their alpha. Waits.
    ///
    /// @param bitmap Its pixels are read until the call returns; `dstRect` is in pixels of the window.
    /// @retval 0 Drawn.
    /// @retval 20 The renderer could not be made ("create shader program fail" of OSDBitmap, then "OSD bitmap
    ///     fail 20").
    int KivDisplayBitmap(const TagKivBitmapInfo& bitmap) noexcept;

    /// Draws a bitmap into a layer; its pixels, alpha included, replace those of the layer. Waits.
    ///
    /// @param handle The layer, or FBO_HANDLE_BASE for the window.
    /// @param bitmap Its pixels are read until the call returns. `dstRect` is scaled as if the layer had the
    ///     size of the window: (0, 0, window width, window height) covers the layer, whatever its size.
    /// @retval 0 Drawn.
    /// @retval 20 The renderer could not be made ("create shader program fail" of OSDBitmap, then "OSD bitmap
    ///     fail 20").
    /// @retval 101 No such layer ("There is not the fbo HANDLE", twice, of GLDrawThread).
    int KivDrawBitmap(unsigned int handle, const TagKivBitmapInfo& bitmap) noexcept;

    /// Draws a bitmap alpha-blended over a layer, alpha channel included. Waits.
    ///
    /// @param handle The layer, or FBO_HANDLE_BASE for the window.
    /// @param bitmap As for KivDrawBitmap.
    /// @return As KivDrawBitmap, with the same lines.
    int KivDrawBitmapByBlend(unsigned int handle, const TagKivBitmapInfo& bitmap) noexcept;
    /// @}

    /// @name Conversions
    /// Direct, without a lock or a context: pure functions of their arguments. A target without width or
    /// height is logged ("param is invalid") and leaves the output as it was.
    /// @{

    /// The format of GL for a colour format.
    /// @param format KIV_COLOR_FORMAT_RGBA8888; anything else is logged ("Color format is invalid ...").
    /// @return GL_RGBA, for every format.
    std::uint32_t ConvertFormatToGLES(int format) const noexcept;

    /// Converts pixels to the normalised device coordinates of a target.
    /// @param rect Pixels of the target.
    /// @param[out] glRect Normalised device coordinates, y upwards, its height a positive span downwards.
    /// @param width Width of the target in pixels.
    /// @param height Height of the target in pixels.
    void ScreenCoordToVCoord(const TagKivRectInfo& rect, TagGLRectInfo& glRect, unsigned int width,
                             unsigned int height) const noexcept;

    /// Converts pixels to the normalised device coordinates of a target.
    /// @param round Pixels of the target.
    /// @param[out] glRound Normalised device coordinates, y upwards, its radii as positive spans.
    /// @param width Width of the target in pixels.
    /// @param height Height of the target in pixels.
    void ScreenCoordToVCoord(const TagKivRoundInfo& round, TagGLRoundInfo& glRound, unsigned int width,
                             unsigned int height) const noexcept;

    /// Converts pixels of a layer to its texture coordinates.
    /// @param rect Pixels of the layer.
    /// @param[out] glRect Texture coordinates, y upwards, its height a positive span downwards.
    /// @param width Width of the layer in pixels.
    /// @param height Height of the layer in pixels.
    void ScreenCoordToFboCoord(const TagKivRectInfo& rect, TagGLRectInfo& glRect, unsigned int width,
                               unsigned int height) const noexcept;

    /// Converts bytes to floats.
    /// @param color Each component 0 to 255.
    /// @param[out] glColor Each component 0.0 to 1.0; a byte of 1 becomes 1.0, as 255 does.
    void ConvertGLColor(const TagKivColorRGBA& color, TagColorRGBA& glColor) const noexcept;

    /// Converts a text request.
    /// @param text Its text is not copied.
    /// @param[out] glText Points at the caller's text, as `text` does.
    void SetTextInfo(const TagKivTextInfo& text, TagGLTextInfo& glText) const noexcept;

    /// Converts a bitmap request.
    /// @param[out] glBitmap Points at the caller's pixels, as `bitmap` does; `blend` is left as it is.
    /// @param bitmap Its `dstRect` is in pixels of the target.
    /// @param width Width of the target in pixels.
    /// @param height Height of the target in pixels.
    void SetBitmapInfo(TagGLBitmapInfo& glBitmap, const TagKivBitmapInfo& bitmap, unsigned int width,
                       unsigned int height) const noexcept;
    /// @}

 private:
    // With a context known to exist.
    void DrawRect(const TagFrameBuffObject& fbo, const TagKivRectInfo& rect, const TagKivColorRGBA& color)
        KIVGLES_REQUIRES(apiMutex);
    void DrawBackground(const TagFrameBuffObject& fbo, const TagKivRectInfo& rect,
                        const TagKivColorRGBA& color) KIVGLES_REQUIRES(apiMutex);
    void DrawText(const TagFrameBuffObject& fbo, TagKivTextInfo& text, TagKivRectInfo& rect)
        KIVGLES_REQUIRES(apiMutex);
    void DrawTextUnderline(const TagFrameBuffObject& fbo, const TagKivTextInfo& text, TagKivRectInfo& rect)
        KIVGLES_REQUIRES(apiMutex);
    void HandOverBitmap(const TagKivBitmapInfo& bitmap, std::uint8_t blend) KIVGLES_REQUIRES(apiMutex);
    // What the two that draw a bitmap into a layer have in common, lock and context included.
    int DrawBitmap(unsigned int handle, const TagKivBitmapInfo& bitmap, std::uint8_t blend);

    std::shared_ptr<GLDrawThread> drawThread KIVGLES_GUARDED_BY(apiMutex);  // empty: no context
    ANativeWindow* nativeWindow KIVGLES_GUARDED_BY(apiMutex) = nullptr;     // the caller's
    std::atomic<std::uint32_t> windowWidth;  // atomic for the getters, which take no lock
    std::atomic<std::uint32_t> windowHeight;
    KivMutex apiMutex;  // one client at a time, waits of synchronous commands included
};

}  // namespace kivgles

#endif  // KIVGLES_KIVGLDRAWSURFACE_H
