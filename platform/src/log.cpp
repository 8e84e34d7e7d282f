#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <android/log.h>
#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

// Constant-initialised and without a destructor: there before any other static object, and after it.
std::atomic<__android_logger_function> currentLogger{&__android_log_stderr_logger};

// Run once, when the library is loaded. In a program that was started without standard error the next
// descriptor to be opened, the connection to the X server perhaps, would take its number and receive the
// lines.
__attribute__((constructor)) void HoldErrorDescriptor() {
    if (fcntl(STDERR_FILENO, F_GETFD) >= 0) {
        return;
    }
    const int descriptor = open("/dev/null", O_WRONLY);
    if (descriptor >= 0 && descriptor != STDERR_FILENO) {  // a lower number was free too
        (void)dup2(descriptor, STDERR_FILENO);             // without it the lines are lost as before
        close(descriptor);
    }
}

// As `HoldErrorDescriptor` is run. A copy of our own, kept until the process ends, since the program may
// change its environment.
const char* shownTags = "";
__attribute__((constructor)) void ReadShownTags() {
    const char* const tags = getenv("ANDROID_LOG_TAGS");
    const char* const copy = tags == nullptr ? nullptr : strdup(tags);
    shownTags = copy == nullptr ? "" : copy;
}

// A priority as filters name it, by its first letter; `unnamed` without one, UNKNOWN for what is none.
int32_t NamedPriority(std::string_view name, int32_t unnamed) {
    constexpr std::string_view LETTERS = "vdiwefsVDIWEFS";
    const std::size_t letter = name.empty() ? LETTERS.size() : LETTERS.find(name[0]);
    return letter < LETTERS.size()    ? ANDROID_LOG_VERBOSE + static_cast<int32_t>(letter % 7)
           : letter == LETTERS.size() ? unnamed
                                      : ANDROID_LOG_UNKNOWN;
}

// Whether a line passes the filters "TAG:PRIORITY" of ANDROID_LOG_TAGS, "*" being all tags without one of
// their own. Of several for a tag the last one holds.
bool IsShown(std::string_view tag, int32_t priority) {
    constexpr const char* SEPARATORS = " \t,";
    int32_t ofAll = INT32_MIN;
    int32_t ofTag = ANDROID_LOG_UNKNOWN;
    for (std::string_view rest = shownTags; !rest.empty();) {
        const std::string_view filter = rest.substr(0, rest.find_first_of(SEPARATORS));
        rest.remove_prefix(std::min(filter.size() + 1, rest.size()));
        const std::string_view filtered = filter.substr(0, filter.find(':'));
        const std::string_view named = filter.substr(std::min(filtered.size() + 1, filter.size()));
        if (filtered == "*") {
            ofAll = NamedPriority(named, ANDROID_LOG_DEBUG);
        } else if (!filter.empty() && filtered == tag) {
            ofTag = NamedPriority(named, ANDROID_LOG_VERBOSE);
        }
    }
    return priority >= (ofTag != ANDROID_LOG_UNKNOWN ? ofTag : ofAll);
}

char PriorityLetter(int32_t priority) {
    constexpr std::string_view LETTERS = "??VDIWEFS";
    const bool known = priority >= 0 && static_cast<std::size_t>(priority) < LETTERS.size();
    return known ? LETTERS[static_cast<std::size_t>(priority)] : '?';
}

std::string_view OrEmpty(const char* text) { return text == nullptr ? std::string_view() : text; }

iovec Piece(std::string_view text) { return {const_cast<char*>(text.data()), text.size()}; }

}  // namespace

void __android_log_stderr_logger(const __android_log_message* log_message) {
    if (!IsShown(OrEmpty(log_message->tag), log_message->priority)) {
        return;
    }
    const int callersErrno = errno;

    const std::array<char, 2> letter = {PriorityLetter(log_message->priority), ' '};
    std::string_view text = OrEmpty(log_message->message);
    if (!text.empty() && text.back() == '\n') {
        text.remove_suffix(1);
    }

    // One call and no buffer of our own: lines of several threads don't mix, and no length is too long.
    const std::array<iovec, 5> line = {Piece({letter.data(), letter.size()}),
                                       Piece(OrEmpty(log_message->tag)), Piece(": "), Piece(text),
                                       Piece("\n")};
    while (writev(STDERR_FILENO, line.data(), static_cast<int>(line.size())) < 0 && errno == EINTR) {
    }

    errno = callersErrno;
}

void __android_log_set_logger(__android_logger_function logger) {
    currentLogger.store(logger != nullptr ? logger : &__android_log_stderr_logger);
}

void __android_log_write_log_message(__android_log_message* log_message) {
    currentLogger.load()(log_message);
}

int __android_log_write(int prio, const char* tag, const char* text) {
    __android_log_message message = {};
    message.struct_size = sizeof(message);
    message.buffer_id = LOG_ID_DEFAULT;
    message.priority = prio;
    message.tag = tag;
    message.message = text;
    __android_log_write_log_message(&message);
    return 1;
}

int __android_log_vprint(int prio, const char* tag, const char* fmt, va_list ap) {
    std::array<char, 512> shortText;
    va_list firstPass;
    va_copy(firstPass, ap);
    const int length = vsnprintf(shortText.data(), shortText.size(), fmt, firstPass);
    va_end(firstPass);

    // The format itself says more than nothing if it can't be carried out.
    const char* text = length < 0 ? fmt : shortText.data();

    // What does not fit goes to the heap; if there is no memory either, the beginning is what can be had.
    char* longText = nullptr;
    if (length >= static_cast<int>(shortText.size())) {
        const std::size_t size = static_cast<std::size_t>(length) + 1;
        longText = static_cast<char*>(std::malloc(size));
        if (longText != nullptr && vsnprintf(longText, size, fmt, ap) == length) {
            text = longText;
        }
    }

    const int result = __android_log_write(prio, tag, text);
    std::free(longText);
    return result;
}

int __android_log_print(int prio, const char* tag, const char* fmt, ...) {
    va_list ap;
    va_start(ap, fmt);
    const int result = __android_log_vprint(prio, tag, fmt, ap);
    va_end(ap);
    return result;
}
