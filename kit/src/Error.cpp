#include "kivgles/kit/Error.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kivgles::kit {

namespace {

// In a client's words; the log has those of whoever found it.
const char* Meaning(int code) {
    constexpr std::pair<int, const char*> MEANINGS[] = {
        {Error::INVALID_ARGUMENT, "an argument has no meaning"},
        {Error::TOO_LARGE, "larger than there can be"},
        {Error::NOT_CONNECTED, "no window is connected"},
        {Error::NO_FONT, "no font is installed"},
        {Error::BAD_FILE, "the file is not what it should be"},
        {Error::OUT_OF_MEMORY, "out of memory"},
        {2, "EGL did not start"},
        {5, "EGL refuses the window"},
        {15, "all layers are in use"},
    };
    const auto known = std::find_if(std::begin(MEANINGS), std::end(MEANINGS),
                                    [code](const auto& meaning) { return meaning.first == code; });
    return known == std::end(MEANINGS) ? "the log says why" : known->second;
}

}  // namespace

Error::Error(const std::string& failedOperation, int resultCode)
    : Error(failedOperation, resultCode,
            "failed with code " + std::to_string(resultCode) + ", " + Meaning(resultCode)) {}

Error::Error(const std::string& failedOperation, int resultCode, const std::string& reason)
    : std::runtime_error(failedOperation + ": " + reason), operation(failedOperation), code(resultCode) {}

}  // namespace kivgles::kit
