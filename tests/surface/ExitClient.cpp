// A client that ends in one of the ways that ExitTest looks at, run as a process of its own.

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "kivgles/KivGLDrawSurface.h"

using kivgles::KivGLDrawSurface;

namespace {

KivGLDrawSurface* neverDestroyed = nullptr;
std::atomic<bool> heapIsEmpty{false};

}  // namespace

void* operator new(std::size_t size) {
    void* const memory = heapIsEmpty ? nullptr : std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
// Not inlined: g++ would see memory of `new` go to `free`.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], "idle") == 0) {
        neverDestroyed = new KivGLDrawSurface;
        return neverDestroyed->KivCreateGLContext() + neverDestroyed->Init(0x7F);
    }
    if (argc > 1 && std::strcmp(argv[1], "starved") == 0) {
        KivGLDrawSurface surface;
        (void)surface.KivCreateGLContext();
        (void)surface.KivRefreshOnSrceen();  // its memory is there for the next command
        (void)surface.Init(0);
        heapIsEmpty = true;
        return surface.Init(0x7F);
    }
    KivGLDrawSurface surface;
    for (int attempt = 0; attempt < 2; ++attempt) {
        const int created = surface.KivCreateGLContext();
        const int initialised = surface.Init(0x7F);
        std::printf("%d %d %d\n", created, initialised, surface.KivDestoryGLContext());
    }
}
