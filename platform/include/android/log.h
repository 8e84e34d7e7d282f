#ifndef KIVGLES_PLATFORM_ANDROID_LOG_H
#define KIVGLES_PLATFORM_ANDROID_LOG_H

// Stand-in for the NDK's header of this name: the part of its interface that this project and its tests use,
// with the NDK's names, values and layouts.
//
// Thread: any. Usable until the process ends, static destructors included.

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef enum android_LogPriority {
    ANDROID_LOG_UNKNOWN = 0,
    ANDROID_LOG_DEFAULT = 1,
    ANDROID_LOG_VERBOSE = 2,
    ANDROID_LOG_DEBUG = 3,
    ANDROID_LOG_INFO = 4,
    ANDROID_LOG_WARN = 5,
    ANDROID_LOG_ERROR = 6,
    ANDROID_LOG_FATAL = 7,
    ANDROID_LOG_SILENT = 8,
} android_LogPriority;

typedef enum log_id {
    LOG_ID_MAIN = 0,
    LOG_ID_DEFAULT = 0x7FFFFFFF,
} log_id_t;

// One message on its way to the logger. All pointers are the caller's and good for the call only.
struct __android_log_message {
    size_t struct_size;   // sizeof(struct __android_log_message)
    int32_t buffer_id;    // a log_id_t
    int32_t priority;     // an android_LogPriority
    const char* tag;      // may be null
    const char* file;     // null when unknown
    uint32_t line;        // 0 when unknown
    const char* message;  // the finished text
};

// Receives every message; may be called by several threads at once.
typedef void (*__android_logger_function)(const struct __android_log_message* log_message);

// Each of these three hands one message to the logger and returns 1. A text of any length arrives whole
// (a device cuts it at about 1,000 bytes).
int __android_log_write(int prio, const char* tag, const char* text);
int __android_log_print(int prio, const char* tag, const char* fmt, ...)
    __attribute__((format(printf, 3, 4)));
int __android_log_vprint(int prio, const char* tag, const char* fmt, va_list ap)
    __attribute__((format(printf, 3, 0)));

// Hands `log_message` to the logger as it is.
void __android_log_write_log_message(struct __android_log_message* log_message);

// Replaces the logger for the whole process; null brings __android_log_stderr_logger back, which is the
// default on a host.
void __android_log_set_logger(__android_logger_function logger);

// Writes "<priority letter> <tag>: <text>" to stderr as one line with one system call, whether or not the
// text ends in a newline. Lines that the environment's ANDROID_LOG_TAGS, read when the program starts,
// filters out are not written: "EGLManager:s *:w" lets those of priority W and above through, and none of
// EGLManager.
void __android_log_stderr_logger(const struct __android_log_message* log_message);

#ifdef __cplusplus
}
#endif

#endif  // KIVGLES_PLATFORM_ANDROID_LOG_H
