// A client that ends in one of the ways that ExitTest looks at, run as a process of its own.

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <utility>

#include "kivgles/KivGLDrawSurface.h"

using kivgles::KivGLDrawSurface;

namespace {

std::atomic<bool> heapIsEmpty{false};
thread_local int failsAt = 0;  // which allocation of this thread from now on; 0: none

// Lets the nth allocation of a creation fail. False when there are not so many.
bool FailCreation(KivGLDrawSurface& surface, int nth) {
    failsAt = nth;
    const int result = surface.KivCreateGLContext();
    const bool failed = std::exchange(failsAt, 0) == 0;
    const int destroyed = surface.KivDestoryGLContext();
    if (failed) {
        std::printf("failed %d %d\n", result, destroyed);
    }
    return failed;
}

}  // namespace

void* operator new(std::size_t size) {
    const bool fails = heapIsEmpty || (failsAt != 0 && --failsAt == 0);
    void* const memory = fails ? nullptr : std::malloc(size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}
// Not inlined: g++ would see memory of `new` go to `free`.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

int main(int, char** argv) {
    const std::string way = argv[1];
    static KivGLDrawSurface& surface = *new KivGLDrawSurface;  // outlives main, if idle
    for (int nth = 1; way == "starving" && FailCreation(surface, nth); ++nth) {
    }
    for (int life = 0; life < 2; ++life) {
        const int created = surface.KivCreateGLContext();
        if (way == "starved") {
            (void)surface.KivRefreshOnSrceen();  // its memory is there for the next command
            (void)surface.Init(0);
            heapIsEmpty = true;
        }
        const int initialised = surface.Init(0x7F);
        if (way == "idle") {
            return initialised;
        }
        std::printf("%d %d %d\n", created, initialised, surface.KivDestoryGLContext());
    }
    delete &surface;
}
