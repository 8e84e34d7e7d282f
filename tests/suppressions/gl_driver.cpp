// Linked into every test program of a sanitized build that has the GL driver, and into the windows and the
// sweep of faults always.

// EGL unloads the GL driver when its display is terminated. A leak or a race that is reported afterwards has
// no library name any more, and no suppression could be limited to the driver. So nothing is unloaded.
extern "C" int dlclose(void*) { return 0; }

// The driver frees mutexes that another of its threads holds, at which the thread sanitizer's search for
// deadlocks fails a check of its own. Programs on the stub of GL search on.
extern "C" const char* __tsan_default_options() { return "detect_deadlocks=0"; }
