// user TITLE: presses q in a window of another program, and closes it. Answers 1 if there is none.

#include <cstdio>
#include <stdexcept>

#include "window/Outside.h"

int main(int argc, char** argv) try {
    if (argc != 2) {
        return 2;
    }
    kivgles::outside::PressQ(argv[1]);
    kivgles::outside::Close(argv[1]);
} catch (const std::runtime_error& error) {
    std::fprintf(stderr, "user: %s\n", error.what());
    return 1;
}
