#include <cerrno>
#include <cstdlib>
#include <string>
#include <vector>

#include <android/log.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// Puts a socket that keeps each write apart in the place of stderr, so that what was written in one call is
// received in one piece.
class CapturedStderr {
 public:
    CapturedStderr() {
        int ends[2] = {-1, -1};
        if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) != 0) {
            std::abort();
        }
        saved = dup(STDERR_FILENO);
        dup2(ends[0], STDERR_FILENO);
        close(ends[0]);
        reader = ends[1];
    }

    ~CapturedStderr() {
        dup2(saved, STDERR_FILENO);
        close(saved);
        close(reader);
    }

    CapturedStderr(const CapturedStderr&) = delete;
    CapturedStderr& operator=(const CapturedStderr&) = delete;

    // The pieces written so far.
    std::vector<std::string> Writes() const {
        std::vector<std::string> writes;
        std::string buffer(1 << 16, '\0');
        for (;;) {
            const ssize_t size = recv(reader, buffer.data(), buffer.size(), MSG_DONTWAIT);
            if (size <= 0) {
                return writes;
            }
            writes.emplace_back(buffer, 0, static_cast<std::size_t>(size));
        }
    }

 private:
    int saved = -1;
    int reader = -1;
};

TEST(Log, WritesOneWholeLinePerMessage) {
    const CapturedStderr captured;
    EXPECT_EQ(__android_log_print(ANDROID_LOG_ERROR, "OSDRect", "status %d, %s\n", 20, "no program"), 1);
    EXPECT_EQ(__android_log_print(ANDROID_LOG_WARN, "FBOManager", "no newline"), 1);
    EXPECT_EQ(__android_log_write(ANDROID_LOG_VERBOSE, "T", "100% literal %s"), 1);
    __android_log_write(ANDROID_LOG_DEBUG, "T", "");
    __android_log_write(ANDROID_LOG_INFO, nullptr, "\n");
    __android_log_write(ANDROID_LOG_FATAL, "T", nullptr);
    __android_log_write(-1, "T", "x");
    __android_log_write(1000, "T", "x\n\n");
    EXPECT_EQ(captured.Writes(),
              (std::vector<std::string>{"E OSDRect: status 20, no program\n", "W FBOManager: no newline\n",
                                        "V T: 100% literal %s\n", "D T: \n", "I : \n", "F T: \n", "? T: x\n",
                                        "? T: x\n\n"}));
}

TEST(Log, KeepsTextsOfAnyLengthWhole) {
    for (const std::size_t length : {511U, 512U, 513U, 5000U}) {
        SCOPED_TRACE(length);
        const std::string text(length, 'x');
        const CapturedStderr captured;
        __android_log_print(ANDROID_LOG_ERROR, "T", "%s\n", text.c_str());
        EXPECT_EQ(captured.Writes(), std::vector<std::string>{"E T: " + text + "\n"});
    }
}

TEST(Log, LeavesErrnoAlone) {
    const CapturedStderr captured;
    const int saved = dup(STDERR_FILENO);
    close(STDERR_FILENO);  // so that the write fails
    errno = ENOENT;
    __android_log_write(ANDROID_LOG_ERROR, "T", "lost");
    const int after = errno;
    dup2(saved, STDERR_FILENO);
    close(saved);
    EXPECT_EQ(after, ENOENT);
}

std::vector<std::string> received;

void Receive(const __android_log_message* message) {
    EXPECT_EQ(message->struct_size, sizeof(__android_log_message));
    EXPECT_EQ(message->file, nullptr);
    received.push_back(std::to_string(message->priority) + message->tag + message->message);
}

TEST(Log, GoesToTheLoggerThatWasSetUntilItIsUnset) {
    const CapturedStderr captured;
    __android_log_set_logger(&Receive);
    __android_log_print(ANDROID_LOG_WARN, "T", "text %d\n", 1);
    __android_log_set_logger(nullptr);
    __android_log_print(ANDROID_LOG_WARN, "T", "text %d\n", 2);
    EXPECT_EQ(received, std::vector<std::string>{"5Ttext 1\n"});
    EXPECT_EQ(captured.Writes(), std::vector<std::string>{"W T: text 2\n"});
}

}  // namespace
