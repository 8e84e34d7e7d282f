#ifndef KIVGLES_GL_SHADERPROGRAM_H
#define KIVGLES_GL_SHADERPROGRAM_H

#include <string>

#include <GLES2/gl2.h>

namespace kivgles {

// Compiles and links GLSL ES 1.00 shader pairs and looks their variables up. Stateless.
//
// Owner:  the renderer that uses it; the GL names returned are the caller's.
// Thread: draw thread, GL context current.
//
// Failures are logged, with GL's own log where there is one, and leave no GL object behind.
class ShaderProgram {
 public:
    // A compiled shader, or 0. Its version line (and for a fragment shader a default precision) is put in
    // front of the source.
    GLuint LoadShader(GLenum type, const char* source) const;

    // A linked program, or 0. The shaders stay the caller's.
    GLuint LinkShaderProgram(GLuint vertexShader, GLuint fragmentShader) const;

    // A program from the sources of a pair, or 0.
    GLuint CreateProgram(const char* vertexSource, const char* fragmentSource) const;

    // Deletes a program; 0 is none.
    void ReleaseProgram(GLuint program) const;

    // The location, or -1 (logged) when the program does not use such a variable.
    GLint GetAttribLocation(GLuint program, const std::string& name) const;
    GLint GetUniformLocation(GLuint program, const std::string& name) const;

    // Logs what GL says about a shader that did not compile or a program that did not link.
    void PrintLog(GLuint object) const;
};

}  // namespace kivgles

#endif  // KIVGLES_GL_SHADERPROGRAM_H
