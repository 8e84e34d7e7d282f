#ifndef KIVGLES_SURFACE_RESULTCODE_H
#define KIVGLES_SURFACE_RESULTCODE_H

// The codes that clients see.

namespace kivgles {

constexpr int RESULT_OK = 0;
constexpr int RESULT_NO_FBO = 1;                // no such layer to draw into or to copy from or to
constexpr int RESULT_DRAW_THREAD_FAILED = 100;  // it could not be started
constexpr int RESULT_NO_WINDOW = 101;           // the caller gave none
constexpr int RESULT_NO_CONTEXT = 102;

// The public code for a status of the draw thread; 100 for one that has none of its own, 0 for 0.
int TranslateResult(int status);

}  // namespace kivgles

#endif  // KIVGLES_SURFACE_RESULTCODE_H
