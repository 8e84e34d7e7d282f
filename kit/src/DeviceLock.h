#ifndef KIVGLES_KIT_DEVICELOCK_H
#define KIVGLES_KIT_DEVICELOCK_H

#include <condition_variable>
#include <cstdint>
#include <mutex>

#include "kivgles/KivMutex.h"

namespace kivgles::kit {

class Device;

// Lets threads in one by one, in the order in which they came: with a plain mutex a thread that presents in a
// loop takes it again before any other has woken up.
class FairMutex {
 public:
    void lock() {
        std::unique_lock<std::mutex> held(mutex);
        const std::uint64_t ticket = nextTicket++;
        turnCame.wait(held, [&] { return turn == ticket; });
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

// The lock of a device, for clang to check: one for all devices, because a thread holds one at a time, and
// layers know their device by ways that clang does not follow.
class KIVGLES_THREAD_ANNOTATION(capability("role")) DeviceRole {};
inline constexpr DeviceRole DEVICE_LOCK;

// Holds the lock of a device for one operation, which names the errors that are thrown under it.
class KIVGLES_THREAD_ANNOTATION(scoped_lockable) DeviceLock {
 public:
    DeviceLock(Device& device, const char* operation)
        KIVGLES_THREAD_ANNOTATION(acquire_capability(DEVICE_LOCK));
    ~DeviceLock() KIVGLES_THREAD_ANNOTATION(release_capability()) = default;
    DeviceLock(const DeviceLock&) = delete;
    DeviceLock& operator=(const DeviceLock&) = delete;

 private:
    const std::lock_guard<FairMutex> lock;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_DEVICELOCK_H
