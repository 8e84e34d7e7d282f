// A client that ends in one of the ways that ExitTest looks at, run as a process of its own.

#include <cstdio>
#include <cstring>

#include "kivgles/KivGLDrawSurface.h"

using kivgles::KivGLDrawSurface;

namespace {

KivGLDrawSurface* neverDestroyed = nullptr;

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], "idle") == 0) {
        neverDestroyed = new KivGLDrawSurface;
        return neverDestroyed->KivCreateGLContext() + neverDestroyed->Init(0x7F);
    }
    KivGLDrawSurface surface;
    for (int attempt = 0; attempt < 2; ++attempt) {
        const int created = surface.KivCreateGLContext();
        const int initialised = surface.Init(0x7F);
        std::printf("%d %d %d\n", created, initialised, surface.KivDestoryGLContext());
    }
}
