#include "gl/RendererProgram.h"

#include <android/log.h>

#include "StatusCode.h"

namespace kivgles {

int MakeRendererProgram(const char* tag, const char* vertexSource, const char* fragmentSource,
                        std::unique_ptr<ShaderProgram>& shaderProgram, GLuint& program) {
    shaderProgram = std::make_unique<ShaderProgram>();
    program = shaderProgram->CreateProgram(vertexSource, fragmentSource);
    if (program == 0) {
        __android_log_print(ANDROID_LOG_ERROR, tag, "create shader program fail");
        return STATUS_NO_PROGRAM;
    }
    return STATUS_OK;
}

void DeleteRendererProgram(const std::unique_ptr<ShaderProgram>& shaderProgram, GLuint program, GLuint vbo) {
    if (vbo != 0) {
        glDeleteBuffers(1, &vbo);
    }
    if (shaderProgram != nullptr) {
        shaderProgram->ReleaseProgram(program);
    }
}

}  // namespace kivgles
