#include "surface/ResultCode.h"

#include "StatusCode.h"

namespace kivgles {

int TranslateResult(int status) {
    switch (status) {
        case STATUS_OK:
        case STATUS_NO_DISPLAY:
        case STATUS_EGL_INIT_FAILED:
        case STATUS_NO_CONFIG:
        case STATUS_CREATE_CONTEXT_FAILED:
        case STATUS_CREATE_SURFACE_FAILED:
        case STATUS_CONTEXT_NOT_CREATED:
        case STATUS_FBO_TABLE_FULL:
        case STATUS_NO_PROGRAM:
        case STATUS_NO_TEXTURE:
        case STATUS_FREETYPE_INIT_FAILED:
        case STATUS_FACE_NOT_OPENED:
        case STATUS_ATLAS_EMPTY:
        case STATUS_INVALID:
            return status;
        case STATUS_NO_TEXT:
            return RESULT_NO_TEXT;
        case STATUS_NOT_FOUND:
            return RESULT_NOT_FOUND;

        // Reserved: nothing returns these.
        case 10:
        case 13:
        case 14:
            return status;
        case 12:
            return 11;
        case 40:
            return 50;

        default:
            return RESULT_FAILED;
    }
}

}  // namespace kivgles
