// Soak CYCLES COMMANDS FONT: what months in a service come to. So many lives of a surface, then so many paced
// commands in one life. Prints what the process holds along the way; fails when that does not stay flat.

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include <android/log.h>
#include <dlfcn.h>
#include <malloc.h>
#include <unistd.h>

#include "bounds_checked.h"
#include "kivgles/KivGLDrawSurface.h"
#include "support/Process.h"
#include "support/Recorder.h"
#include "support/Target.h"

namespace {

using namespace kivgles;

constexpr long ALLOWED_GROWTH = 1024;         // KiB
constexpr unsigned int COMMANDS_A_PACE = 60;  // between two waits for the draw thread
constexpr unsigned int LAYER_SIZE = 64;

void Ignore(const __android_log_message*) {}

[[noreturn]] void Fail(const char* what) {
    std::printf("soak: FAILED, %s\n", what);
    std::exit(EXIT_FAILURE);
}

void Succeed(int result) {
    if (result != 0) {
        Fail(("an operation returned " + std::to_string(result)).c_str());
    }
}

// A sanitizer's heap keeps what is freed: there the memory says nothing.
bool HasSanitizer() {
    return dlsym(RTLD_DEFAULT, "__asan_init") != nullptr || dlsym(RTLD_DEFAULT, "__tsan_init") != nullptr;
}

// One heap, in memory from the start, so that what the process holds of it is not a matter of where its gaps
// are: the driver's libraries lose a few bytes in every life, and each may keep a page. What is in use of it
// is looked at by itself.
void SteadyHeap() {
    constexpr int RESERVE = 32 * 1024 * 1024;
    constexpr int NEVER = INT_MAX;
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_TRIM_THRESHOLD, NEVER);
    mallopt(M_MMAP_MAX, 0);
    void* const reserve = std::malloc(RESERVE);
    (void)memset_s(reserve, RESERVE, 1, RESERVE);  // not left out by the compiler
    std::free(reserve);
}

struct Holdings {
    long resident = 0;  // KiB, of the whole process
    long heap = 0;      // KiB in use
    std::size_t descriptors = 0;
    std::size_t threads = 0;
    std::size_t objects = 0;  // of GL, EGL and FreeType
};

Holdings Look() {
    Holdings now;
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    now.resident = pages * (sysconf(_SC_PAGESIZE) / 1024);
    now.heap = static_cast<long>(mallinfo2().uordblks / 1024);
    now.descriptors = DescriptorNum();
    now.threads = ThreadNum();
    for (const char* const kind :
         {"texture", "buffer", "framebuffer", "shader", "program", "context", "surface", "face", "library"}) {
        now.objects += recorder::Live(kind).size();
    }
    return now;
}

// Looks at the process along `total` steps. After the first tenth nothing may be added.
class Watch {
 public:
    Watch(const char* watched, unsigned int steps) : name(watched), total(steps) {}

    bool IsDue(unsigned int step) const {
        return step == 0 || step == total / 10 || step == total / 4 || step == total / 2 || step == total;
    }
    void Examine(unsigned int step);

 private:
    const char* name;
    unsigned int total;
    Holdings reference;
};

void Watch::Examine(unsigned int step) {
    if (step == 0) {
        reference = Look();
    }
    AwaitThreadNum(reference.threads);
    const Holdings now = Look();
    const bool judged = step > total / 10;
    std::printf("soak: %8u %s: resident %ld KiB, heap %ld KiB, %zu descriptors, %zu threads, %zu objects\n",
                step, name, now.resident, now.heap, now.descriptors, now.threads, now.objects);
    if (!judged) {
        reference = now;
    } else if (now.descriptors > reference.descriptors || now.threads > reference.threads ||
               now.objects > reference.objects) {
        Fail("descriptors, threads or objects are left behind");
    } else if (std::max(now.resident - reference.resident, now.heap - reference.heap) > ALLOWED_GROWTH &&
               !HasSanitizer()) {
        Fail("the memory grows");
    }
}

// A surface on a window, with a font and two layers.
class Client {
 public:
    Client(const X11Window& window, const std::string& fontPath) : font(fontPath) {
        Succeed(surface.KivCreateGLContext());
        Succeed(surface.KivConnectWindowSurface(window.Native()));
        Succeed(surface.Init(ENABLE_TEXT));
        Succeed(surface.KivLoadFont(font, 40));
        for (unsigned int& layer : layers) {
            Succeed(surface.KivCreateGLFBO(layer, LAYER_SIZE, LAYER_SIZE, KIV_COLOR_FORMAT_RGBA8888));
        }
    }

    // The nth of an endless row of commands, all kinds in turn.
    void Command(unsigned int n);
    // Until all of them are executed.
    void Wait();

 private:
    void DrawText(unsigned int n);
    void RenewLayer();

    std::string font;
    KivGLDrawSurface surface;
    unsigned int layers[2] = {};
    std::vector<std::uint8_t> pixels = std::vector<std::uint8_t>(16 * 16 * 4, 0x80);
};

void Client::Command(unsigned int n) {
    const TagKivRectInfo whole{0, 0, LAYER_SIZE, LAYER_SIZE};
    const TagKivRectInfo part{n % 40, n % 30, 20, 30};
    const TagKivColorRGBA color{static_cast<std::uint8_t>(n), 100, 200, 255};
    const TagKivBitmapInfo bitmap{pixels.data(), KIV_COLOR_FORMAT_RGBA8888, 0, 0, 16, 16, part};
    switch (n % 10) {
        case 0:
            return Succeed(surface.KivClearGLFBO(layers[0]));
        case 1:
            return Succeed(surface.KivDrawRect(layers[0], part, color));
        case 2:
            return Succeed(surface.KivDrawRound(layers[0], {n % 60, 20, 10, 15}, color));
        case 3:
        case 4:
            return DrawText(n);
        case 5:
            return Succeed(surface.KivBlit({layers[0], layers[1], part, whole}));
        case 6:
            return Succeed(n % 4 < 2 ? surface.KivDrawBitmap(layers[1], bitmap)
                                     : surface.KivDrawBitmapByBlend(layers[1], bitmap));
        case 7:
            return Succeed(surface.KivDisplayFBO(layers[1], whole, whole));
        case 8:
            return Succeed(surface.KivRefreshOnSrceen());
        default:
            if (n % 1000 == 999) {
                RenewLayer();
            }
            return n % COMMANDS_A_PACE == COMMANDS_A_PACE - 1 ? Wait() : DrawText(n);
    }
}

void Client::Wait() {
    Succeed(surface.Init(0));
    recorder::Reset();  // it collects the log
}

// In the standard style and three others, and measured.
void Client::DrawText(unsigned int n) {
    TagKivTextInfo text{};
    text.text = u"AJKM";
    text.textLength = 4;
    text.fgColor = {255, 255, 255, 255};
    text.bgColor = {0, 0, 0, 128};
    text.fontSize = n % 3 == 0 ? 40 : 20 + n % 8;
    text.bold = n % 5 == 0;
    text.italic = n % 7 == 0;
    text.underline = n % 2 == 0;
    Succeed(surface.KivDrawText(layers[0], text, {0, 0, LAYER_SIZE, LAYER_SIZE}));
    unsigned int width = 0;
    unsigned int height = 0;
    Succeed(surface.KivGetTextSize(text, width, height));
}

void Client::RenewLayer() {
    Succeed(surface.KivDestoryGLFBO(layers[0]));
    Succeed(surface.KivCreateGLFBO(layers[0], LAYER_SIZE, LAYER_SIZE, KIV_COLOR_FORMAT_RGBA8888));
    Succeed(surface.KivLoadFont(font, 40));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s CYCLES COMMANDS FONT\n", argv[0]);
        return 2;
    }
    const auto cycles = static_cast<unsigned int>(std::strtoul(argv[1], nullptr, 10));
    const auto commands = static_cast<unsigned int>(std::strtoul(argv[2], nullptr, 10));
    const std::string font = argv[3];
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    SteadyHeap();
    __android_log_set_logger(Ignore);
    const X11Window window(LAYER_SIZE, LAYER_SIZE);

    Watch lives("lives", cycles);
    for (unsigned int cycle = 0; cycle <= cycles; ++cycle) {
        if (cycle != 0) {
            Client client(window, font);
            for (unsigned int n = 0; n < COMMANDS_A_PACE; ++n) {
                client.Command(n);
            }
        }
        if (lives.IsDue(cycle)) {
            lives.Examine(cycle);
        }
    }

    Client client(window, font);
    Watch life("commands", commands);
    for (unsigned int n = 0; n <= commands; ++n) {
        client.Command(n);
        if (life.IsDue(n)) {
            client.Wait();
            life.Examine(n);
        }
    }
    std::printf("soak: passed, %u lives and %u commands\n", cycles, commands);
    return EXIT_SUCCESS;
}
