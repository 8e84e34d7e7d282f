#ifndef KIVGLES_KIT_DEVICE_H
#define KIVGLES_KIT_DEVICE_H

#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "CharacterWidths.h"
#include "DeviceLock.h"
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
// Thread: any, with a DeviceLock. It keeps operations of layers that consist of several of the core together,
//         and away from a change of the surface. The core has a lock of its own that is held as long, so this
//         one makes nobody wait longer.
class Device {
 public:
    explicit Device(int longestLayerSide) : maxLayerSide(longestLayerSide) {}

    // For one more request, and not beyond the lock. Throws NOT_CONNECTED for `operation` if there is none.
    // The core's queue has no bound: where a client has queued very much without ever waiting, this waits
    // until it is done.
    KivGLDrawSurface& Surface(const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);

    // Until everything queued is done.
    void Wait(const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);

    // Another window for the same surface; false if a new surface has to be made.
    bool SwitchWindow(ANativeWindow* another, const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);
    // A new surface with the layers, empty, and the font of the former; if one step fails there is none.
    void Restart(ANativeWindow* anotherWindow, const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);
    void Close() KIVGLES_REQUIRES(DEVICE_LOCK);
    Size WindowSize() const KIVGLES_REQUIRES(DEVICE_LOCK);  // 0 by 0 without a window

    void LoadFont(const std::string& path, const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);
    // Throws NO_FONT for `operation` if there is none.
    CharacterWidths& Widths(const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);

    // A layer for in-between steps, of at least this size: the window's, or just this if it is longer. What
    // it holds is not defined, and it lasts until the next call. Its handle, and its size in `size`.
    unsigned int Scratch(Size& size, const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);

    // A layer's side in pixels of GL is at most this.
    int MaxLayerSide() const { return maxLayerSide; }
    void Add(LayerState& layer, const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);
    void Remove(LayerState& layer) KIVGLES_REQUIRES(DEVICE_LOCK);

    // What a client paints again after Restart, outside of the lock.
    std::function<void()> repaint KIVGLES_GUARDED_BY(DEVICE_LOCK);
    bool wasConnected KIVGLES_GUARDED_BY(DEVICE_LOCK) = false;

 private:
    friend DeviceLock;

    void SetUp(ANativeWindow* anotherWindow, const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);
    void OpenFont(const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);
    void DropScratch() KIVGLES_REQUIRES(DEVICE_LOCK);
    void CreateLayer(LayerState& layer, const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);

    std::mutex mutex;  // for DeviceLock

    // With a window connected, or null.
    std::unique_ptr<KivGLDrawSurface> surface KIVGLES_GUARDED_BY(DEVICE_LOCK);
    ANativeWindow* window KIVGLES_GUARDED_BY(DEVICE_LOCK) = nullptr;  // the client's
    std::set<LayerState*> layers KIVGLES_GUARDED_BY(DEVICE_LOCK);     // they take themselves out
    int queued KIVGLES_GUARDED_BY(DEVICE_LOCK) = 0;                   // requests since the last wait, at most

    // The font that a new surface gets; empty: none.
    std::string fontPath KIVGLES_GUARDED_BY(DEVICE_LOCK);
    bool fontLoaded KIVGLES_GUARDED_BY(DEVICE_LOCK) = false;
    CharacterWidths widths KIVGLES_GUARDED_BY(DEVICE_LOCK);

    unsigned int scratch KIVGLES_GUARDED_BY(DEVICE_LOCK) = 0;  // a handle; 0: none
    Size scratchSize KIVGLES_GUARDED_BY(DEVICE_LOCK);

    const int maxLayerSide;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_DEVICE_H
