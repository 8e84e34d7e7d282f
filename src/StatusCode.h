#ifndef KIVGLES_STATUSCODE_H
#define KIVGLES_STATUSCODE_H

// The status values that are passed up inside the library. What a client sees is in surface/ResultCode.h.

namespace kivgles {

constexpr int STATUS_OK = 0;
constexpr int STATUS_NO_DISPLAY = 1;
constexpr int STATUS_EGL_INIT_FAILED = 2;
constexpr int STATUS_NO_CONFIG = 3;
constexpr int STATUS_CREATE_CONTEXT_FAILED = 4;
constexpr int STATUS_CREATE_SURFACE_FAILED = 5;
constexpr int STATUS_CONTEXT_NOT_CREATED = 6;
constexpr int STATUS_FBO_TABLE_FULL = 15;
constexpr int STATUS_NO_PROGRAM = 20;
constexpr int STATUS_NO_TEXTURE = 21;
constexpr int STATUS_FREETYPE_INIT_FAILED = 30;
constexpr int STATUS_FACE_NOT_OPENED = 31;
constexpr int STATUS_ATLAS_EMPTY = 32;
constexpr int STATUS_INVALID = 100;    // parameter, command kind, failed make-current or bounded copy
constexpr int STATUS_NO_TEXT = 101;    // no text renderer, atlas or font
constexpr int STATUS_NOT_FOUND = 102;  // payload, native window or render target missing

}  // namespace kivgles

#endif  // KIVGLES_STATUSCODE_H
