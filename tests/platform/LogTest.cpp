#include <cerrno>
#include <string>

#include <android/log.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using testing::internal::CaptureStderr, testing::internal::GetCapturedStderr;

TEST(Log, WritesAWholeLinePerMessage) {
    std::string expected =
        "E OSDRect: status 20, no program\nV T: 100% literal %s\nD T: \nI : \nF T: \nW T: \n? T: x\n? T: "
        "x\n\n";
    CaptureStderr();
    EXPECT_EQ(__android_log_print(ANDROID_LOG_ERROR, "OSDRect", "status %d, %s\n", 20, "no program"), 1);
    EXPECT_EQ(__android_log_write(ANDROID_LOG_VERBOSE, "T", "100% literal %s"), 1);
    __android_log_write(ANDROID_LOG_DEBUG, "T", "");
    __android_log_write(ANDROID_LOG_INFO, nullptr, "\n");
    __android_log_write(ANDROID_LOG_FATAL, "T", nullptr);
    __android_log_print(ANDROID_LOG_WARN, "T", "%s", "");
    __android_log_write(-1, "T", "x");
    __android_log_write(1000, "T", "x\n\n");
    for (const std::size_t length : {511U, 512U, 5000U}) {
        const std::string text(length, 'x');
        __android_log_print(ANDROID_LOG_ERROR, "T", "%s", text.c_str());
        expected += "E T: " + text + "\n";
    }
    EXPECT_EQ(GetCapturedStderr(), expected);
}

// Also run with the stream closed, and with filters.
TEST(Log, HasADescriptorToWriteTo) {
    EXPECT_GE(fcntl(STDERR_FILENO, F_GETFD), 0);
    for (const char* tag : {"A", "B", "C"}) {
        for (const int priority : {ANDROID_LOG_INFO, ANDROID_LOG_WARN, ANDROID_LOG_ERROR}) {
            __android_log_write(priority, tag, "x");
        }
    }
}

TEST(Log, LeavesErrnoAlone) {
    CaptureStderr();
    close(STDERR_FILENO);  // until it is no longer captured: the write fails
    errno = ENOENT;
    __android_log_write(ANDROID_LOG_ERROR, "T", "lost");
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST(Log, GoesToTheLoggerThatWasSetUntilItIsUnset) {
    static std::string received;
    CaptureStderr();
    __android_log_set_logger([](const __android_log_message* message) {
        EXPECT_EQ(message->struct_size, sizeof(__android_log_message));
        received += std::to_string(message->priority) + message->tag + message->message;
    });
    __android_log_print(ANDROID_LOG_WARN, "T", "text %d\n", 1);
    __android_log_set_logger(nullptr);
    __android_log_print(ANDROID_LOG_WARN, "T", "text %d\n", 2);
    EXPECT_EQ(received, "5Ttext 1\n");
    EXPECT_EQ(GetCapturedStderr(), "W T: text 2\n");
}
