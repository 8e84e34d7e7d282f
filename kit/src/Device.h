#ifndef KIVGLES_KIT_DEVICE_H
#define KIVGLES_KIT_DEVICE_H

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <shared_mutex>

#include "DeviceLock.h"
#include "Frame.h"
#include "kivgles/KivDisplay.h"
#include "kivgles/KivGLDrawSurface.h"
#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

class LayerState;

inline PixelRect Whole(const Size& size) { return {0, 0, size.width, size.height}; }
inline bool AreEqual(const Size& a, const Size& b) { return a.width == b.width && a.height == b.height; }

// As the core takes what has been cut off at the edges, where no number is negative.
TagKivRectInfo Unsigned(const PixelRect& rect);

// A layer of the core that the kit keeps for itself, as long as the client does not need its place.
struct SpareLayer {
    unsigned int handle = 0;  // 0: there is none
    Size size;
    bool isCurrent = false;  // holds all that the frame's copy does
};

// What each of them is for. One that is made may take the place of those named after it.
enum Spare : std::size_t { PART, SCALED, PICTURE, SPARE_NUM };

// The surface of the core with what has to be set up again on a new one: window and layers.
//
// Owner:  a Screen and its layers together, so that they may go in any order. After Close, or while a window
//         could not be connected, there is no surface, and what needs one throws NOT_CONNECTED.
// Thread: any, with a DeviceLock. It keeps operations of layers that consist of several of the core together,
//         and away from a change of the surface.
class Device {
 public:
    Device(const TagKivDisplayInfo& nativeDisplay, int longestSide)
        : maxSide(longestSide), display(nativeDisplay) {}

    // For one more request, and not beyond the lock. The core's queue has no bound: where a client has queued
    // much without ever waiting, this waits until it is done.
    KivGLDrawSurface& Surface() KIVGLES_REQUIRES(DEVICE_LOCK);
    // Throws unless an operation of the core answered 0.
    void Check(int result) const KIVGLES_REQUIRES(DEVICE_LOCK);
    // Scales a part of a layer to fill a place in another one or on the window.
    void Blit(unsigned int from, const PixelRect& part, unsigned int to, const PixelRect& place)
        KIVGLES_REQUIRES(DEVICE_LOCK);

    // Until everything queued is done. Takes the lock, but not while it waits.
    void Wait(const char* operationName);

    // To another window, by a new surface if that is asked for or needed, with the layers, empty, of the
    // former. What was shown last is shown again. If one step fails there is no surface. Returns what the
    // client is to paint again outside of the lock, or null.
    std::function<void()> Connect(ANativeWindow* another, bool isNew) KIVGLES_REQUIRES(DEVICE_LOCK);
    // When those who wait have gone.
    void Close() KIVGLES_REQUIRES(DEVICE_LOCK);

    void Add(LayerState& layer) KIVGLES_REQUIRES(DEVICE_LOCK);
    void Remove(LayerState& layer) KIVGLES_REQUIRES(DEVICE_LOCK);
    // A layer of exactly this size for the kit's own use, with what was drawn into it last.
    SpareLayer& Provide(Spare spare, const Size& size) KIVGLES_REQUIRES(DEVICE_LOCK);
    bool IsFull() const KIVGLES_REQUIRES(DEVICE_LOCK);  // has as many layers as there can be

    const int maxSide;                                              // of a layer
    Size windowSize KIVGLES_GUARDED_BY(DEVICE_LOCK);                // 0 by 0 without a window
    const char* operation KIVGLES_GUARDED_BY(DEVICE_LOCK) = "";     // of the DeviceLock
    Frame frame KIVGLES_GUARDED_BY(DEVICE_LOCK){*this};             // what the window shows
    std::function<void()> repaint KIVGLES_GUARDED_BY(DEVICE_LOCK);  // the client's, on a new surface
    std::array<SpareLayer, SPARE_NUM> spares KIVGLES_GUARDED_BY(DEVICE_LOCK);

 private:
    friend DeviceLock;

    unsigned int Create(const Size& size) KIVGLES_REQUIRES(DEVICE_LOCK);
    // Gives spare layers back, the last first and none before `first`, until there is a place. Throws with 15
    // if that does not help.
    void MakePlace(std::size_t first) KIVGLES_REQUIRES(DEVICE_LOCK);
    void Drop(SpareLayer& spare) KIVGLES_REQUIRES(DEVICE_LOCK);

    const TagKivDisplayInfo display;
    FairMutex mutex;          // for DeviceLock
    std::shared_mutex inUse;  // shared by those who wait: taken with the DeviceLock, released without

    // With a window connected, or null.
    std::unique_ptr<KivGLDrawSurface> surface KIVGLES_GUARDED_BY(DEVICE_LOCK);
    ANativeWindow* window KIVGLES_GUARDED_BY(DEVICE_LOCK) = nullptr;  // the client's
    bool wasConnected KIVGLES_GUARDED_BY(DEVICE_LOCK) = false;
    std::set<LayerState*> layers KIVGLES_GUARDED_BY(DEVICE_LOCK);  // they take themselves out
    int queued KIVGLES_GUARDED_BY(DEVICE_LOCK) = 0;                // requests since the last wait, at most
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_DEVICE_H
