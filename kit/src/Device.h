#ifndef KIVGLES_KIT_DEVICE_H
#define KIVGLES_KIT_DEVICE_H

#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "CharacterWidths.h"
#include "kivgles/KivGLDrawSurface.h"
#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

class LayerState;

// Throws Error unless an operation of the core answered 0.
void Check(int result, const char* operation);

// The surface of the core with what has to be set up again on a new one: window, layers, font.
//
// Owner:  a Screen and its layers together, so that they may go in any order. After Close, or while a window
//         could not be connected, there is no surface, and what needs one throws NOT_CONNECTED.
// Thread: any, with Lock() held. It keeps operations of layers that consist of several of the core together,
//         and away from a change of the surface. The core has a lock of its own that is held as long, so this
//         one makes nobody wait longer.
class Device {
 public:
    explicit Device(int longestLayerSide) : maxLayerSide(longestLayerSide) {}

    [[nodiscard]] std::unique_lock<std::mutex> Lock() { return std::unique_lock(mutex); }

    // For one more request. Throws NOT_CONNECTED for `operation` if there is none. The core's queue has no
    // bound: where a client has queued very much without ever waiting, this waits until it is done.
    KivGLDrawSurface& Surface(const char* operation);

    // Until everything queued is done.
    void Wait(const char* operation);

    // Another window for the same surface; false if a new surface has to be made.
    bool SwitchWindow(ANativeWindow* another, const char* operation);
    // A new surface with the layers, empty, and the font of the former; if one step fails there is none.
    void Restart(ANativeWindow* anotherWindow, const char* operation);
    void Close();
    Size WindowSize() const;  // 0 by 0 without a window

    void LoadFont(const std::string& path, const char* operation);
    // Throws NO_FONT for `operation` if there is none.
    CharacterWidths& Widths(const char* operation);

    // A layer for in-between steps, of at least this size: the window's, or just this if it is longer. What
    // it holds is not defined, and it lasts until the next call. Its handle, and its size in `size`.
    unsigned int Scratch(Size& size, const char* operation);

    // A layer's side in pixels of GL is at most this.
    int MaxLayerSide() const { return maxLayerSide; }
    void Add(LayerState& layer, const char* operation);
    void Remove(LayerState& layer);

    std::function<void()> repaint;  // what a client paints again after Restart, outside of the lock
    bool wasConnected = false;

 private:
    void SetUp(ANativeWindow* anotherWindow, const char* operation);
    void OpenFont(const char* operation);
    void DropScratch();
    void CreateLayer(LayerState& layer, const char* operation);

    std::mutex mutex;
    std::unique_ptr<KivGLDrawSurface> surface;  // with a window connected, or null
    ANativeWindow* window = nullptr;            // the client's
    std::set<LayerState*> layers;               // they take themselves out
    std::string fontPath;                       // of the font that a new surface gets; empty: none
    bool fontLoaded = false;
    int queued = 0;            // requests since the last wait, at most
    unsigned int scratch = 0;  // 0: none
    Size scratchSize;
    CharacterWidths widths;
    int maxLayerSide;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_DEVICE_H
