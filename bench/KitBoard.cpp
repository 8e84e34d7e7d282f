// The board's painting is the example's own: it is taken in whole, with its main function out of the way.

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wreturn-type"  // which only main may leave out
#define main RunBoard
#include "board/main.cpp"
#undef main
#pragma GCC diagnostic pop

#include <memory>

#include "KitPictures.h"

std::function<void(Layer&)> bench::MakeBoard(Screen& screen) {
    const auto shapes = std::make_shared<Layer>(screen, Size{1280, 720}, 2);
    PaintShapes(*shapes);
    return [shapes](Layer& canvas) {
        canvas.Copy(*shapes, 0, 0);
        WriteTexts(canvas, 14 * 3600 + 26 * 60 + 58);
    };
}
