#include "gl/ShaderProgram.h"

#include <cstdlib>
#include <memory>

#include <android/log.h>

namespace kivgles {

namespace {

constexpr char TAG[] = "ShaderProgram";

constexpr char VERSION_LINE[] = "#version 100\n";

// Each line is 33 characters long.
constexpr char PRECISION_PRELUDE[] =
    "#ifdef GL_FRAGMENT_PRECISION_HIGH\n"
    "precision highp float;           \n"
    "#else                            \n"
    "precision mediump float;         \n"
    "#endif                           \n";

constexpr GLsizei SOURCE_PARTS = 3;

}  // namespace

GLuint ShaderProgram::LoadShader(GLenum type, const char* source) const {
    if (source == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Error source is NULL\n");
        return 0;
    }
    const GLuint shader = glCreateShader(type);
    if (shader == 0) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Create shader fail\n");
        return 0;
    }

    const char* const parts[SOURCE_PARTS] = {VERSION_LINE,
                                             type == GL_FRAGMENT_SHADER ? PRECISION_PRELUDE : "", source};
    glShaderSource(shader, SOURCE_PARTS, parts, nullptr);
    glCompileShader(shader);

    GLint compiled = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled == 0) {
        PrintLog(shader);
        glDeleteShader(shader);
        return 0;
    }
    return shader;
}

GLuint ShaderProgram::LinkShaderProgram(GLuint vertexShader, GLuint fragmentShader) const {
    const GLuint program = glCreateProgram();
    if (program == 0) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "create program fail\n");
        return 0;
    }

    glAttachShader(program, vertexShader);
    glAttachShader(program, fragmentShader);
    glLinkProgram(program);

    GLint linked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    if (linked == 0) {
        PrintLog(program);
        glDeleteProgram(program);
        return 0;
    }
    return program;
}

GLuint ShaderProgram::CreateProgram(const char* vertexSource, const char* fragmentSource) const {
    const GLuint vertexShader = LoadShader(GL_VERTEX_SHADER, vertexSource);
    if (vertexShader == 0) {
        return 0;
    }
    const GLuint fragmentShader = LoadShader(GL_FRAGMENT_SHADER, fragmentSource);
    if (fragmentShader == 0) {
        glDeleteShader(vertexShader);
        return 0;
    }
    const GLuint program = LinkShaderProgram(vertexShader, fragmentShader);
    glDeleteShader(vertexShader);  // a linked program works on without its shaders
    glDeleteShader(fragmentShader);
    return program;
}

void ShaderProgram::ReleaseProgram(GLuint program) const {
    if (program != 0) {
        glDeleteProgram(program);
    }
}

GLint ShaderProgram::GetAttribLocation(GLuint program, const std::string& name) const {
    const GLint location = glGetAttribLocation(program, name.c_str());
    if (location == -1) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Could not bind attribute %s\n", name.c_str());
    }
    return location;
}

GLint ShaderProgram::GetUniformLocation(GLuint program, const std::string& name) const {
    const GLint location = glGetUniformLocation(program, name.c_str());
    if (location == -1) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Could not bind uniform %s\n", name.c_str());
    }
    return location;
}

void ShaderProgram::PrintLog(GLuint object) const {
    const bool isShader = glIsShader(object) != GL_FALSE;
    const bool isProgram = glIsProgram(object) != GL_FALSE;
    if (!isShader && !isProgram) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Not a shader or a program\n");
        return;
    }

    GLint length = 0;
    (isShader ? glGetShaderiv : glGetProgramiv)(object, GL_INFO_LOG_LENGTH, &length);
    if (length < 1) {
        return;
    }
    const std::unique_ptr<char, decltype(&std::free)> log(
        static_cast<char*>(std::malloc(static_cast<std::size_t>(length))), &std::free);
    if (log == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "allocate memory fail\n");
        return;
    }

    log.get()[0] = '\0';  // GL writes nothing when it fails
    if (isShader) {
        glGetShaderInfoLog(object, length, nullptr, log.get());
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Could not compile shader %d:\n%s\n",
                            static_cast<int>(object), log.get());
    } else {
        glGetProgramInfoLog(object, length, nullptr, log.get());
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Could not link program:\n%s\n", log.get());
    }
}

}  // namespace kivgles
