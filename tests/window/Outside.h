#ifndef KIVGLES_TESTS_WINDOW_OUTSIDE_H
#define KIVGLES_TESTS_WINDOW_OUTSIDE_H

// What users do to a window, and what they see: on an X server by requests of their own, on sway
// (WAYLAND_DISPLAY is set) by its tools. Windows are named by their titles. On sway they are there when
// something was drawn on them.

#include <cstdint>
#include <string>

namespace kivgles::outside {

bool IsWayland();

// On an X server, where a program places its windows itself, it is left to it.
void Place(const std::string& title, int x, int y);
void Resize(const std::string& title, int width, int height);
void Hide(const std::string& title);
void Close(const std::string& title);
void PressQ(const std::string& title);

// Returns when the screen shows the colour (0xRRGGBB) there.
void Await(std::uint32_t color, int x, int y);

}  // namespace kivgles::outside

#endif  // KIVGLES_TESTS_WINDOW_OUTSIDE_H
