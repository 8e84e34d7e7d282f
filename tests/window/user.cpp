// user TITLE: presses q in a window of another program, and closes it. Answers 1 if there is none.

#include <stdexcept>

#include "window/Outside.h"

int main(int, char** argv) try {
    kivgles::outside::PressQ(argv[1]);
    kivgles::outside::Close(argv[1]);
} catch (const std::runtime_error&) {
    return 1;
}
