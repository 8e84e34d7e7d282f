#include "faults/Effects.h"

#include <algorithm>

namespace kivgles {

namespace {

#define SURFACE_LINE "E GLDrawThread: Create openGLES window surface fail 5"
#define CURRENT_LINES \
    "E EGLManager: egl make current failed: 0x3003", "E GLDrawThread: Make current EGL context fail 100"
#define PROGRAM_LINES \
    "create shader program fail", " fail 20", "?Could not compile shader", "?Could not link program"
#define STANDARD_LINE "E OSDText: Load standard font lib fail "
#define DYNAMIC_LINE "E OSDText: Load dynamic font lib fail "
#define EMPTY_LINES "E FontAtlas: Calculate texture width", STANDARD_LINE "32"
#define NO_TEXT_LINES "?is not exit", "?Calculate texture width", "?texture fail 32"

// clang-format off
const Effect EFFECTS[] = {
    {"pthread_create ", CREATE, 0, 100, {"E KivGLDrawSurface: start draw thread fail"}},

    {"eglGetDisplay ", CREATE, 0, 1, {"E EGLManager: eglGetDisplay failed: 0x3003"}},
    {"eglInitialize ", CREATE, 0, 2, {"E EGLManager: eglInitialize failed: 0x3003"}},
    {"eglChooseConfig ", CREATE, 0, 3, {"E EGLManager: eglChooseConfig error: 0x3003"}},
    {"eglCreateContext ", CREATE, 0, 4, {"E EGLManager: eglCreateContext error: 0x3003"}},
    {"eglCreatePbufferSurface ", CREATE, 0, 5, {"E EGLManager: eglCreatePbufferSurface error: 0x3003", SURFACE_LINE}},
    {"eglCreateWindowSurface ", CONNECT, 0, 5, {"E EGLManager: eglCreateWindowSurface error: 0x3003", SURFACE_LINE}},
    {"eglMakeCurrent ", CREATE, 1, 100, {CURRENT_LINES}},
    {"eglMakeCurrent ", CONNECT, 1, SAME, {}},  // lets go of the former surface, and nobody asks how that went
    {"eglMakeCurrent ", CONNECT, 2, 100, {CURRENT_LINES}},
    {"eglMakeCurrent ", DESTROY, 0, SAME, {}},
    {"eglDestroyContext eglDestroySurface eglQuerySurface eglReleaseThread eglSwapBuffers eglTerminate ",
     EVERY, 0, SAME, {}},
    {"eglGetError ", EVERY, 0, SAME, {"error: 0x3000"}},

    {"glCreateShader ", EVERY, 0, 20, {"E ShaderProgram: Create shader fail", PROGRAM_LINES}},
    {"glCreateProgram ", EVERY, 0, 20, {"E ShaderProgram: create program fail", PROGRAM_LINES}},
    {"glShaderSource glCompileShader glGetShaderiv glAttachShader glLinkProgram glGetProgramiv ",
     EVERY, 0, 20, {PROGRAM_LINES}},
    {"glIsShader glIsProgram glGetShaderInfoLog glGetProgramInfoLog ",
     EVERY, 0, SAME, {PROGRAM_LINES, "?E ShaderProgram: Not a shader or a program"}},
    {"glGetAttribLocation ", EVERY, 0, SAME, {"E ShaderProgram: Could not bind attribute "}},
    {"glGetUniformLocation ", EVERY, 0, SAME, {"E ShaderProgram: Could not bind uniform "}},
    {"glGenTextures ", LAYER, 0, 21, {"E FBOManager: Create texture fail", "E GLDrawThread: Create FBO fail 21"}},
    {"glGenTextures ", FONT, 0, 21, {"E FontAtlas: Create texture fail", "E OSDText: Load standard font lib fail 21"}},
    {"glGenTextures ", DRAW, 0, SAME, {"E FontStyleAtlas: Create texture fail",
     "E OSDText: Get font atlas texture fail 21", "E OSDText: get font alpha texture fail 21"}},
    {"glTexImage2D glFramebufferTexture2D ", LAYER, 0, SAME, {"E FBOManager: Unable to set up render Target: "}},
    {"glCheckFramebufferStatus ", LAYER, 0, SAME, {"E FBOManager: Framebuffer incomplete: Unknown error."}},
    {"glGenTextures ", BITMAP, 0, SAME, {}},
    {"glTexImage2D ", FONT | DRAW | BITMAP, 0, SAME, {}},
    {"glGenBuffers glGenFramebuffers glBufferData glTexSubImage2D glGetIntegerv ", EVERY, 0, SAME, {}},
    {"glGetString ", CREATE | CONNECT, 0, SAME, {" = (null)"}},

    {"FT_Init_FreeType ", FONT | DRAW, 1, 30, {"E FontAtlas: Failed to initialize freetype library", STANDARD_LINE "30"}},
    {"FT_Init_FreeType ", FONT | DRAW, 2, 30, {"E FontStyleAtlas: Failed to initialize freetype library", DYNAMIC_LINE "30"}},
    {"FT_New_Face ", FONT | DRAW, 1, 31, {"E FontAtlas: Error loading font face", STANDARD_LINE "31"}},
    {"FT_New_Face ", FONT | DRAW, 2, 31, {"E FontStyleAtlas: Error loading font face", DYNAMIC_LINE "31"}},
    {"FT_New_Face ", FONT | DRAW, 3, 31, {"E FontStyleAtlas: Error loading font face for text size", DYNAMIC_LINE "31"}},
    // Without a size, a font of outlines has no glyphs.
    {"FT_Set_Pixel_Sizes ", FONT, 0, SAME, {"E FontAtlas: set pixel size fail"}},
    {"FT_Set_Pixel_Sizes ", FONT, 0, 32, {"E FontAtlas: set pixel size fail", "?Loading character", EMPTY_LINES}},
    {"FT_Set_Pixel_Sizes ", DRAW | MEASURE, 0, SAME, {"E FontStyleAtlas: set pixel size fail", NO_TEXT_LINES}},
    {"FT_Get_First_Char ", FONT, 1, 32, {EMPTY_LINES}},
    {"FT_Get_First_Char ", FONT, 2, SAME, {}},
    {"FT_Get_Next_Char ", FONT, 0, SAME, {}},
    {"FT_Get_Next_Char ", FONT, 0, 32, {EMPTY_LINES}},  // the first character may be one without ink
    {"FT_Load_Char FT_Render_Glyph FT_Bitmap_Convert ", FONT, 0, SAME, {"E FontAtlas: Loading character "}},
    {"FT_Load_Char FT_Render_Glyph FT_Bitmap_Convert ", FONT, 0, 32, {"E FontAtlas: Loading character ", EMPTY_LINES}},
    {"FT_Load_Char FT_Render_Glyph FT_Bitmap_Convert ", DRAW | MEASURE, 0, SAME, {"E FontStyleAtlas: Char ", NO_TEXT_LINES}},
    // A glyph that is bold in the second pass only may find no room.
    {"FT_Outline_Embolden ", DRAW | MEASURE, 0, SAME, {"?is not exit"}},
    {"FT_Bitmap_Done FT_Done_Face FT_Done_FreeType ", EVERY, 0, SAME, {}},

    {"malloc ", EVERY, 0, SAME, {"E ShaderProgram: allocate memory fail", PROGRAM_LINES}},
    {"memcpy_s ", DRAW, 0, SAME, {"E TextInfo: memset_s_func failed, err = ", NO_TEXT_LINES}},
};
// clang-format on

constexpr char NEVER_FAIL[] =
    "FT_Bitmap_Init FT_Set_Transform glActiveTexture glBindBuffer glBindFramebuffer "
    "glBindTexture glBlendFunc glClear glClearColor glDeleteBuffers glDeleteFramebuffers "
    "glDeleteProgram glDeleteShader glDeleteTextures glDisable glDisableVertexAttribArray "
    "glDrawArrays glDrawElements glEnable glEnableVertexAttribArray glPixelStorei "
    "glTexParameteri glUniform1i glUniform4fv glUseProgram glVertexAttribPointer glViewport ";

bool IsAmong(const std::string& names, const std::string& name) {
    return names.find(name + " ") != std::string::npos;
}

}  // namespace

std::vector<const Effect*> FindEffects(const Fault& fault, Operation operation, int first) {
    std::vector<const Effect*> found;
    for (const Effect& effect : EFFECTS) {
        if (IsAmong(effect.functions, fault.function) && (effect.operations & operation) != 0 &&
            (effect.nth == 0 || effect.nth == first || (fault.forGood && effect.nth > first))) {
            found.push_back(&effect);
        }
    }
    // Of calls that fail one after the other, the first whose failure is noticed ends the operation.
    const auto noticed = [](const Effect* effect) { return effect->nth != 0 && effect->code != SAME; };
    const auto decisive = std::find_if(found.begin(), found.end(), noticed);
    return decisive == found.end() ? found : std::vector<const Effect*>{*decisive};
}

bool IsFallible(const std::string& function) { return !IsAmong(NEVER_FAIL, function); }

bool Lasts(const std::string& function) {
    return IsAmong("eglQuerySurface glGenBuffers glGetAttribLocation glGetUniformLocation ", function);
}

// Of a context also what it holds.
bool MayLeave(const std::string& function, const std::string& kind) {
    const char* const kinds = function == "eglDestroyContext" ? "context texture buffer framebuffer program "
                              : function == "eglDestroySurface" ? "surface "
                              : function == "FT_Bitmap_Done"    ? "memory "
                              : function == "FT_Done_Face"      ? "face "
                              : function == "FT_Done_FreeType"  ? "library memory "
                                                                : "";
    return IsAmong(kinds, kind);
}

}  // namespace kivgles
