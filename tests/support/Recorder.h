#ifndef KIVGLES_TESTS_SUPPORT_RECORDER_H
#define KIVGLES_TESTS_SUPPORT_RECORDER_H

// Stands between the library and GL, EGL, FreeType, the log and the starting of threads: sees every call the
// library makes, can let one fail, and forwards the others. Calls that those libraries make to one another
// are not counted, recorded or failed. A test may define one of these functions itself: here they are weak.
//
// Thread: any; nothing here is destroyed at exit. A call that is not recorded and makes or deletes nothing
// takes no lock, so that the thread sanitizer sees the library's own ordering only.

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <dlfcn.h>

namespace recorder {

// Forgets lines, counts and faults, and stops recording. Objects alive stay known.
void Reset();

// --- Lines, in order: of the log, "E FBOManager: Create texture fail\n", and calls, "glViewport(0, 0, 64,
// 32)" ---
std::vector<std::string> Log(const std::string& beginning = "");  // those that begin as said
// Calls too from now on; forgets the lines before. With what a window shows at each swap, if it is there.
void Record(bool withPictures);
std::map<std::string, int> Counts();  // calls of each function since Reset, recorded or not

// --- Faults ---
// Lets the nth call of a function from now on fail, with `forGood` every later one too: it does nothing,
// except for what ends something, which is done, and answers with its error value (EGL_BAD_ALLOC,
// FT_Err_Out_Of_Memory, EAGAIN, a name of 0, a location of -1); glCheckFramebufferStatus and glGetIntegerv
// answer `result`.
void Fail(const std::string& function, int nth = 1, bool forGood = false, unsigned int result = 0);

// --- Without a driver ---
// From now on, which is before any call, those of EGL and GL are not forwarded and come out well. What GL
// would read from the caller is read in full, so that a sanitizer sees it; what would read or write where it
// must not ends the process: an upload outside a texture, vertices behind the end of their buffer. Resets,
// and forgets what is alive.
void StandAlone(int maxTextureSize);
// Ends the process as a finding, and says which, unless `holds`.
void Expect(bool holds, const char* finding);

// --- Objects alive, "<texture 3>" ---
// Each "texture", "buffer", "framebuffer", "shader" and "program", of which one context has all, and which no
// thread makes or deletes that never had a context; each "context", "surface", "face" and "library".
std::set<std::string> Live();

// --- For functions that stand between the library and the real one of their name ---

struct Function {
    std::atomic<int> count{0};
    std::atomic<int> failAt{0};  // the count at which to fail; 0: never
    std::atomic<bool> failForGood{false};
    std::atomic<unsigned int> result{0};
};

Function& Find(const std::string& name);

// The real function.
template <typename Signature>
Signature* Next(const char* name) {
    void* const symbol = dlsym(RTLD_NEXT, name);
    if (symbol == nullptr) {
        std::fprintf(stderr, "recorder: there is no %s to forward to\n", name);
        std::abort();
    }
    return reinterpret_cast<Signature*>(symbol);
}

// Alive while a real function works: the calls that it makes of others are not the library's.
struct Forwarding {
    Forwarding() { ++depth; }
    ~Forwarding() { --depth; }
    static inline thread_local int depth = 0;
};

bool Enter(Function& function);  // counts a call by the library, tells whether it has to fail

inline std::atomic<bool> recording{false};
inline std::atomic<bool> pictures{false};          // are recorded
inline std::atomic<int> maxTextureSize{0};         // without a driver; 0: there is one
inline std::atomic<std::uintptr_t> lastAnswer{0};  // without a driver
void BeginCall(const std::string& text);           // the call at work here; empty: it is not recorded
void AddLine(const std::string& text);             // below the lines so far
void AddObject(const std::string& object);         // made by the call at work, unless it is none
void RemoveObjects(const std::string& beginning);  // those that begin as said

template <typename Describe>
bool EnterRecorded(Function& function, const Describe& describe) {
    BeginCall(Forwarding::depth == 0 && recording ? describe() : "");
    return Enter(function);
}

}  // namespace recorder

#endif  // KIVGLES_TESTS_SUPPORT_RECORDER_H
