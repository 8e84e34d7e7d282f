#ifndef KIVGLES_KIT_CHARACTERCLASS_H
#define KIVGLES_KIT_CHARACTERCLASS_H

// What characters are to a line of text. Pure functions.

namespace kivgles::kit {

// Ends a line.
bool IsLineFeed(char32_t character);

// Without width and ink of its own: joiners, selectors, marks of direction, controls.
bool IsInvisible(char32_t character);

// The width of a space, in pixels for a text of `size` pixels; 0 for what is not one.
int SpaceWidth(char32_t character, int size);

// Whether a line may end between the two, of which neither is invisible.
bool MayBreakBetween(char32_t before, char32_t after);

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_CHARACTERCLASS_H
