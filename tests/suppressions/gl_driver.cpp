// Linked into every test program of a sanitized build that has the GL driver, and into the windows and the
// sweep of faults always.

extern "C" {

int dlclose(void* handle);
const char* __tsan_default_options();

// EGL unloads the GL driver when its display is terminated. A leak or a race that is reported afterwards has
// no library name any more, and no suppression could be limited to the driver. So nothing is unloaded.
int dlclose(void*) { return 0; }

// The driver frees mutexes that another of its threads holds, at which the thread sanitizer's search for
// deadlocks fails a check of its own. Programs on the stub of GL search on.
const char* __tsan_default_options() { return "detect_deadlocks=0"; }

}  // extern "C"
