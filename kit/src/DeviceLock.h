#ifndef KIVGLES_KIT_DEVICELOCK_H
#define KIVGLES_KIT_DEVICELOCK_H

#include <mutex>

#include "kivgles/KivMutex.h"

namespace kivgles::kit {

class Device;

// What a thread has while it holds the lock of a device, for clang to check. It is one for all devices,
// because a thread holds one lock at a time, and painters know their device by ways that clang does not
// follow. So clang does not see whether the device is the right one; and it looks into no constructor or
// destructor.
class KIVGLES_THREAD_ANNOTATION(capability("role")) DeviceRole {};
inline constexpr DeviceRole DEVICE_LOCK;

// Holds the lock of a device for as long as it lives.
class KIVGLES_THREAD_ANNOTATION(scoped_lockable) DeviceLock {
 public:
    explicit DeviceLock(Device& device) KIVGLES_THREAD_ANNOTATION(acquire_capability(DEVICE_LOCK));
    ~DeviceLock() KIVGLES_THREAD_ANNOTATION(release_capability()) = default;

    DeviceLock(const DeviceLock&) = delete;
    DeviceLock& operator=(const DeviceLock&) = delete;

 private:
    std::unique_lock<std::mutex> lock;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_DEVICELOCK_H
