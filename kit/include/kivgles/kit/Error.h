#ifndef KIVGLES_KIT_ERROR_H
#define KIVGLES_KIT_ERROR_H

#include <stdexcept>
#include <string>

/// A class or function that clients use.
#define KIVGLES_KIT_EXPORT __attribute__((visibility("default")))

namespace kivgles::kit {

/// What every operation of the kit throws when it cannot do what it was asked for.
///
/// Its words name the operation and what was wrong: "Canvas: 0 by 40 pixels hold nothing". Where the core
/// refused, the log has the cause. What was asked for before stays done.
///
/// @code
/// try {
///     screen.Reconnect(window.Native());
/// } catch (const kivgles::kit::Error& error) {
///     std::fprintf(stderr, "%s\n", error.what());  // "Screen::Reconnect: failed with code 5, ..."
/// }
/// @endcode
class KIVGLES_KIT_EXPORT Error : public std::runtime_error {
 public:
    /// An argument without meaning: a size of 0, a window or an image that is null, what was moved away.
    static constexpr int INVALID_ARGUMENT = -1;
    static constexpr int TOO_LARGE = -2;  ///< A canvas, layer or image with a longer side than there can be.
    static constexpr int NOT_CONNECTED = -3;  ///< Before Screen::Connect, or after it failed.
    static constexpr int NO_FONT = -4;        ///< No font is installed, and none was added.
    static constexpr int BAD_FILE = -5;       ///< It cannot be read or written, or is of another kind.
    static constexpr int OUT_OF_MEMORY = -6;  ///< For what was to be made or painted.

    /// @param failedOperation What failed, as a client knows it: "Screen::Present".
    /// @param resultCode A result code of the core (positive), or one of the constants above.
    /// @param reason Which argument was wrong, and how: "0 by 40 pixels hold nothing".
    Error(const std::string& failedOperation, int resultCode, const std::string& reason)
        : std::runtime_error(failedOperation + ": " + reason), operation(failedOperation), code(resultCode) {}

    const std::string& Operation() const noexcept { return operation; }  ///< @return As it was given.
    int Code() const noexcept { return code; }                           ///< @return As it was given.

 private:
    std::string operation;
    int code;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_ERROR_H
