#ifndef KIVGLES_KIT_ERROR_H
#define KIVGLES_KIT_ERROR_H

/// @file
/// The one exception of the kit.

#include <stdexcept>
#include <string>

namespace kivgles::kit {

/// What every operation of the kit throws when it cannot do what it was asked for.
///
/// The cause is a line in the log, as with the core. What was queued before stays queued.
class Error : public std::runtime_error {
 public:
    /// An argument that has no meaning: a layer without size, a copy of a layer onto itself, a window or an
    /// image that is null, a layer that was moved away.
    static constexpr int INVALID_ARGUMENT = -1;
    /// A layer or an image with a longer side than the screen's limit, Screen::MAX_LAYER_SIDE if not said
    /// otherwise.
    static constexpr int TOO_LARGE = -2;
    /// No window is connected: before Screen::Connect, or after it failed.
    static constexpr int NOT_CONNECTED = -3;
    /// No font is loaded: before Screen::LoadFont, or after it failed.
    static constexpr int NO_FONT = -4;

    /// @param failedOperation What failed, as a client knows it: "Screen::LoadFont".
    /// @param resultCode A result code of the core, or one of the constants above.
    Error(const std::string& failedOperation, int resultCode);

    /// What failed, as a client knows it.
    /// @return For instance "Screen::LoadFont".
    const std::string& Operation() const noexcept { return operation; }

    /// Why it failed.
    /// @return A result code of KivGLDrawSurface (positive), or one of the constants of this class
    /// (negative).
    int Code() const noexcept { return code; }

 private:
    std::string operation;
    int code;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_ERROR_H
