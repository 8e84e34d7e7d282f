// Creations that fail at each of their allocations in turn leave nothing behind and can be tried again. A
// program without the test framework, which is built with other C++ libraries too.

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <utility>

#include "kivgles/KivGLDrawSurface.h"

static std::atomic<int> held{0};
static thread_local int failsAt = 0;  // which allocation of this thread from now on; 0: none

// Nothing here is inlined: g++ would see that memory of `malloc` goes to `delete`, and that of `new` to
// `free`.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const memory = failsAt != 0 && --failsAt == 0 ? nullptr : std::malloc(size);
    held += memory != nullptr ? 1 : 0;
    return memory != nullptr ? memory : throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    held -= memory != nullptr ? 1 : 0;
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

int main() {
    kivgles::KivGLDrawSurface surface;
    int failures = -1;
    int wrong = 0;
    for (bool failed = true; failed; ++failures) {
        const int heldBefore = held;
        failsAt = failures + 2;
        const int created = surface.KivCreateGLContext();
        failed = std::exchange(failsAt, 0) == 0;
        wrong += created != (failed ? 100 : 0) || (failed && held != heldBefore) ||
                 surface.Init(0x7F) != (failed ? 102 : 0);
    }
    wrong += surface.KivDestoryGLContext();
    std::printf("%d allocations failed in turn, %d answers or counts were wrong\n", failures, wrong);
    return failures > 0 && wrong == 0 ? 0 : 1;
}
