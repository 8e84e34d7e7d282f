// user TITLE: presses q in a window of another program, and closes it.

#include "window/Outside.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    kivgles::outside::PressQ(argv[1]);
    kivgles::outside::Close(argv[1]);
}
