// user place TITLE X Y, user resize TITLE WIDTH HEIGHT, user press TITLE (q), user close TITLE: does so with
// a window of another program.

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "window/Outside.h"

int main(int argc, char** argv) try {
    const std::string what = argc > 2 ? argv[1] : "";
    if (what == "close") {
        kivgles::outside::Close(argv[2]);
    } else if (what == "press") {
        kivgles::outside::PressQ(argv[2]);
    } else if ((what == "place" || what == "resize") && argc == 5) {
        const auto act = what == "place" ? kivgles::outside::Place : kivgles::outside::Resize;
        act(argv[2], std::atoi(argv[3]), std::atoi(argv[4]));
    } else {
        return 2;
    }
} catch (const std::runtime_error& error) {
    std::fprintf(stderr, "user: %s\n", error.what());
    return 1;
}
