#include "kivgles/kit/Error.h"

namespace kivgles::kit {

namespace {

// In a client's words; the log has those of whoever found it.
const char* Meaning(int code) {
    switch (code) {
        case Error::INVALID_ARGUMENT:
            return "an argument has no meaning";
        case Error::TOO_LARGE:
            return "larger than GL takes";
        case Error::NOT_CONNECTED:
            return "no window is connected";
        case Error::NO_FONT:
            return "no font is loaded";
        case 2:
            return "EGL did not start";
        case 5:
            return "EGL refuses the window";
        case 15:
            return "all layers are in use";
        case 31:
            return "the font does not open";
        case 32:
            return "the font has no visible character";
        default:
            return "the log says why";
    }
}

}  // namespace

Error::Error(const std::string& failedOperation, int resultCode)
    : std::runtime_error(failedOperation + " failed with code " + std::to_string(resultCode) + ": " +
                         Meaning(resultCode)),
      operation(failedOperation),
      code(resultCode) {}

}  // namespace kivgles::kit
