#ifndef KIVGLES_SURFACE_RESULTCODE_H
#define KIVGLES_SURFACE_RESULTCODE_H

// The codes that clients see.

namespace kivgles {

constexpr int RESULT_OK = 0;
constexpr int RESULT_NO_FBO = 1;       // no such layer to draw into or to copy from or to
constexpr int RESULT_FAILED = 100;     // no draw thread could be started, and what has no code of its own
constexpr int RESULT_NOT_FOUND = 101;  // no window given, no such layer to show or to draw a bitmap into
constexpr int RESULT_NO_CONTEXT = 102;
constexpr int RESULT_NO_TEXT = 103;  // no text renderer, atlas or font

// The public code for a status of the draw thread; 0 for 0.
int TranslateResult(int status);

}  // namespace kivgles

#endif  // KIVGLES_SURFACE_RESULTCODE_H
