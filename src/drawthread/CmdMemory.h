#ifndef KIVGLES_DRAWTHREAD_CMDMEMORY_H
#define KIVGLES_DRAWTHREAD_CMDMEMORY_H

#include <cstddef>

// The memory of commands, of their payloads and semaphores. It is taken on a client's thread and given back
// on the draw thread, in between GL's own large blocks, for which a general heap joins these small ones and
// splits them again: that costs more than all else that a command costs. So blocks are kept for the commands
// to come, at most 1.4 MiB of them in a process.
//
// Thread: any, also while the process exits.

namespace kivgles {

// At least `size` bytes, aligned for any object. Throws std::bad_alloc.
void* TakeCmdMemory(std::size_t size);

// Takes back what TakeCmdMemory gave for the same size.
void GiveBackCmdMemory(void* memory, std::size_t size) noexcept;

// The same for std::allocate_shared.
template <typename T>
struct CmdAllocator {
    using value_type = T;

    CmdAllocator() = default;
    template <typename U>
    explicit CmdAllocator(const CmdAllocator<U>&) {}

    T* allocate(std::size_t count) { return static_cast<T*>(TakeCmdMemory(count * sizeof(T))); }
    void deallocate(T* memory, std::size_t count) noexcept { GiveBackCmdMemory(memory, count * sizeof(T)); }

    bool operator==(const CmdAllocator&) const { return true; }
    bool operator!=(const CmdAllocator&) const { return false; }
};

}  // namespace kivgles

#endif  // KIVGLES_DRAWTHREAD_CMDMEMORY_H
