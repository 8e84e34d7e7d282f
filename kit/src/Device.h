#ifndef KIVGLES_KIT_DEVICE_H
#define KIVGLES_KIT_DEVICE_H

#include <array>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <shared_mutex>

#include "CanvasState.h"
#include "kivgles/KivGLDrawSurface.h"
#include "kivgles/KivMutex.h"

namespace kivgles::kit {

class Device;
struct LayerState;

// Lets threads in one by one, in the order in which they came: with a plain mutex a thread that presents in a
// loop takes it again before any other has woken up.
class FairMutex {
 public:
    void lock() {
        std::unique_lock<std::mutex> held(mutex);
        turnCame.wait(held, [this, ticket = nextTicket++] { return turn == ticket; });
    }
    void unlock() {
        const std::lock_guard<std::mutex> held(mutex);
        ++turn;
        turnCame.notify_all();
    }

 private:
    std::mutex mutex;  // never held for long
    std::condition_variable turnCame;
    std::uint64_t nextTicket = 0;
    std::uint64_t turn = 0;  // the ticket of the thread that is in, or may come in
};

// The lock of a device, for clang to check: one for all devices, because a thread holds one at a time.
class KIVGLES_THREAD_ANNOTATION(capability("role")) DeviceRole {};
inline constexpr DeviceRole DEVICE_LOCK;

// Holds the lock of a device for one operation, which names the errors that are thrown under it.
class KIVGLES_THREAD_ANNOTATION(scoped_lockable) DeviceLock {
 public:
    DeviceLock(Device& device, const char* operation)
        KIVGLES_THREAD_ANNOTATION(acquire_capability(DEVICE_LOCK));
    ~DeviceLock() KIVGLES_THREAD_ANNOTATION(release_capability()) = default;

 private:
    const std::lock_guard<FairMutex> lock;
};

// As the core takes what has been cut off at the edges, where no number is negative.
TagKivRectInfo Unsigned(const PixelRect& rect);

// A layer of the core that the kit keeps for itself, as long as the client does not need its place.
struct SpareLayer {
    unsigned int handle = 0;  // 0: there is none
    Size size;
    bool isCurrent = false;  // holds all that the copy does
};

// What each of them is for. One that is made may take the place of those named after it.
enum Spare : std::size_t { PART, SCALED, PICTURE, SPARE_NUM };

// The surface of the core with what has to be set up again on a new one: window, layers and what is shown.
//
// Of a canvas that is shown a copy is kept, in the core's order of bytes, so that it can be shown again when
// the canvas has been painted since or is gone. What is different from it goes into a spare layer of the
// window's size, and that onto the window; much, every time, or another size goes straight onto the window.
//
// Owner:  a Screen and its layers together, so that they may go in any order. After Close, or while a window
//         could not be connected, there is no surface, and what needs one throws NOT_CONNECTED.
// Thread: any, with a DeviceLock. It keeps operations of layers that consist of several of the core together,
//         and away from a change of the surface.
class Device {
 public:
    Device(const TagKivDisplayInfo& nativeDisplay, int longestSide)
        : maxSide(longestSide), display(nativeDisplay) {}

    // For one more request, and not beyond the lock. Waits where a client has queued much without waiting.
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

    // Puts it on the window and asks for its refresh. After an error everything is handed over.
    void Show(CanvasState& canvas) KIVGLES_REQUIRES(DEVICE_LOCK);
    void Show(const LayerState& layer) KIVGLES_REQUIRES(DEVICE_LOCK);
    // What was shown last, a layer as it is now; false if there is nothing.
    bool ShowAgain() KIVGLES_REQUIRES(DEVICE_LOCK);

    const int maxSide;                                              // of a layer
    Size windowSize KIVGLES_GUARDED_BY(DEVICE_LOCK);                // 0 by 0 without a window
    const char* operation KIVGLES_GUARDED_BY(DEVICE_LOCK) = "";     // of the DeviceLock
    std::function<void()> repaint KIVGLES_GUARDED_BY(DEVICE_LOCK);  // the client's, on a new surface

 private:
    friend DeviceLock;

    unsigned int Create(const Size& size) KIVGLES_REQUIRES(DEVICE_LOCK);
    // Gives spare layers back, the last first and none before `first`, until there is a place, or throws 15.
    void MakePlace(std::size_t first) KIVGLES_REQUIRES(DEVICE_LOCK);
    void Drop(SpareLayer& spare) KIVGLES_REQUIRES(DEVICE_LOCK);
    bool IsFull() const KIVGLES_REQUIRES(DEVICE_LOCK);  // has as many layers as there can be
    // Of the copy, whole or where it has changed.
    void ShowCopy(std::vector<PixelRect> changed) KIVGLES_REQUIRES(DEVICE_LOCK);
    void HandOver(unsigned int target, const PixelRect& part, const PixelRect& to)
        KIVGLES_REQUIRES(DEVICE_LOCK);

    const TagKivDisplayInfo display;
    FairMutex mutex;          // for DeviceLock
    std::shared_mutex inUse;  // shared by those who wait: taken with the DeviceLock, released without

    std::unique_ptr<KivGLDrawSurface> surface KIVGLES_GUARDED_BY(DEVICE_LOCK);  // on a window, or null
    ANativeWindow* window KIVGLES_GUARDED_BY(DEVICE_LOCK) = nullptr;            // the client's
    bool wasConnected KIVGLES_GUARDED_BY(DEVICE_LOCK) = false;
    std::set<LayerState*> layers KIVGLES_GUARDED_BY(DEVICE_LOCK);  // they take themselves out
    std::array<SpareLayer, SPARE_NUM> spares KIVGLES_GUARDED_BY(DEVICE_LOCK);
    int queued KIVGLES_GUARDED_BY(DEVICE_LOCK) = 0;  // requests since the last wait, at most

    const LayerState* shown KIVGLES_GUARDED_BY(DEVICE_LOCK) = nullptr;
    bool showsCopy KIVGLES_GUARDED_BY(DEVICE_LOCK) = false;
    CanvasState::Receiver receiver KIVGLES_GUARDED_BY(DEVICE_LOCK);  // has what is in the copy
    Size copySize KIVGLES_GUARDED_BY(DEVICE_LOCK);
    std::vector<std::uint8_t> copy KIVGLES_GUARDED_BY(DEVICE_LOCK);
    std::vector<std::uint8_t> room KIVGLES_GUARDED_BY(DEVICE_LOCK);  // for rows of a part of it
    // Times that more than a quarter was painted; the first picture counts as the second.
    int largeInARow KIVGLES_GUARDED_BY(DEVICE_LOCK) = 1;
};

// A layer of the core, with the size that is needed to make it anew.
//
// Owner:  a Layer. It stays where it is when the Layer is moved: the device knows it by its address.
// Thread: any; construction and destruction take the device's lock.
struct LayerState {
    LayerState(const std::shared_ptr<Device>& layerDevice, const Size& pixels);
    ~LayerState();
    LayerState(const LayerState&) = delete;
    LayerState& operator=(const LayerState&) = delete;

    // Throws for `operation` if the layer, "the layer" or "the source", was moved away.
    static LayerState& Of(const std::unique_ptr<LayerState>& state, const char* operation,
                          const char* name = "the layer");

    const std::shared_ptr<Device> device;
    const Size size;
    unsigned int handle KIVGLES_GUARDED_BY(DEVICE_LOCK) = 0;  // changes with the surface
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_DEVICE_H
