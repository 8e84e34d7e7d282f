#ifndef EXAMPLES_COMMON_PALETTE_H
#define EXAMPLES_COMMON_PALETTE_H

#include "common/Image.h"

// The colours that the larger examples have in common.

namespace examples {

constexpr Color CARD = {27, 41, 64, 255};
constexpr Color WHITE = {240, 244, 250, 255};
constexpr Color GREY = {158, 176, 202, 255};
constexpr Color AMBER = {255, 186, 84, 255};

}  // namespace examples

#endif  // EXAMPLES_COMMON_PALETTE_H
