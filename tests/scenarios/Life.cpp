// Lives of a context, and what comes of operations that are refused or fail.

#include <tuple>

#include "scenarios/Contracts.h"

namespace kivgles {
namespace {

const Target NOT_THERE{"0x10009"};
const Target NO_HANDLE{"0xffffffff"};

// A context is made, used and destroyed, twice. Parts that are there stay when they are asked for again; the
// window's handle is no layer that goes.
SCENARIO(Life, SWEPT) {
    const Calls deleteOthers = {DeleteRenderer("OSDBlit"), DeleteRenderer("OSDBitmap"),
                                DeleteRenderer("OSDFrame"), DeleteRenderer("OSDRect"),
                                DeleteRenderer("OSDRound")};
    Create().Makes(CreateContext());
    Connect(0).Answers("0, 64 x 48", ConnectWindow("pbuffer"));
    DrawPicture();
    Init(0x7f).Makes();
    MakeLayer(A).Makes(SetUpLayer(A, "0x10001"));
    Drop(WINDOW).Makes("E FBOManager: FBO is not exist fboHandleIndex 0x10000",
                       "W GLDrawThread: Destory FBO fboHandleIndex 0x10000");
    Rect(WINDOW, {0, 0, 8, 8}, BLUE).Makes(FillRectangle(WINDOW, BLUE, "0 0 8 8"));
    Destroy().Makes(EndContext(
        "window surface", {DeleteLayer(A), DeleteRenderer("OSDText"), "glDeleteTextures(1, styled atlas)",
                           CloseStyles(), "W FontStyleAtlas: ~FontStyleAtlas",
                           "glDeleteTextures(1, atlas); W FontAtlas: ~FontAtlas", deleteOthers}));
    Create().Makes(CreateContext());
    const std::string noTable = "E GLDrawThread: FBO manager is nullptr or param is invalid";
    Clear({"0x10001"}).Makes(noTable);
    Drop({"0x10001"}).Answers("100", noTable);
    Init(ENABLE_FBO_MANAGER).Makes();
    Clear(WINDOW).Makes(ClearTarget({"window", 1920, 1080}));  // none is connected yet
    Init(0x7f).Makes(MakeTextRenderer(), MakeTextureRenderer("OSDBlit"), MakeTextureRenderer("OSDBitmap"),
                     MakeTextureRenderer("OSDFrame"), MakeFlatRenderer("OSDRect"),
                     MakeFlatRenderer("OSDRound"));
    Destroy().Makes(EndContext("pbuffer", {DeleteRenderer("OSDText"), "W FontStyleAtlas: ~FontStyleAtlas",
                                           "W FontAtlas: ~FontAtlas", deleteOthers}));
    Renew().Makes("E KivGLDrawSurface: GLContext isn't created");
}

// Operations without a context, and on layers that are not there.
SCENARIO(Refusals, SWEPT) {
    const std::string noContext = "E KivGLDrawSurface: GLContext isn't created";
    const std::string noWindow = "E KivGLDrawSurface: native window is NULL";
    Clear(NOT_THERE).Answers(NO_CONTEXT, noContext);
    Display(NOT_THERE, WHOLE, WHOLE).Answers(NO_CONTEXT, noContext);
    Blit(NOT_THERE, WINDOW, WHOLE, WHOLE).Answers(NO_CONTEXT, noContext);
    Write(NOT_THERE, WHOLE, {u"A"}).Answers(NO_CONTEXT, noContext);
    Rect(NOT_THERE, WHOLE).Answers(NO_CONTEXT, noContext);
    Round(NOT_THERE, {8, 8, 8, 8}).Answers(NO_CONTEXT, noContext);
    Draw(NOT_THERE, {WHOLE}).Answers(NO_CONTEXT, noContext);
    Show({WHOLE}).Answers(NO_CONTEXT, noContext);
    Drop(NOT_THERE).Answers(NO_CONTEXT, noContext);
    Connect(-1).Answers(Line("{}, 1920 x 1080", NOT_FOUND), noWindow);
    Connect(0).Answers(Line("{}, 1920 x 1080", NO_CONTEXT), noContext);
    Init(0x7f).Answers(NO_CONTEXT, noContext);
    LoadFont("bearings.ttf").Answers(NO_CONTEXT, noContext);
    MakeLayer(A).Answers(NO_CONTEXT, noContext);
    Measure({u"A"}).Answers(Line("{}, 0 x 0", NO_CONTEXT), noContext);
    Refresh().Answers(NO_CONTEXT, noContext);
    Destroy().Answers(NO_CONTEXT, noContext);
    Begin();
    Connect(-1).Answers(Line("{}, 64 x 48", NOT_FOUND), noWindow);
    Measure({u"A"}).Answers(Line("{}, 30 x 50", NO_TEXT), "E GLDrawThread: osd text is not init",
                            "E KivGLDrawSurface: get text size fail err 101");
    Clear(NOT_THERE).Makes(MissHandle(NOT_THERE, "GLDrawThread"));
    Display(NOT_THERE, WHOLE, WHOLE).Answers(NOT_FOUND, MissHandle(NOT_THERE));
    Blit(NOT_THERE, {"0x1000a"}, WHOLE, WHOLE).Answers(FAILED, MissHandle(NOT_THERE));
    Blit(WINDOW, NOT_THERE, WHOLE, WHOLE).Answers(FAILED, MissHandle(NOT_THERE));
    Write(NOT_THERE, WHOLE, {u"A"}).Answers(FAILED, MissHandle(NOT_THERE));
    Rect(NOT_THERE, WHOLE).Answers(FAILED, MissHandle(NOT_THERE));
    Round(NOT_THERE, {8, 8, 8, 8}).Answers(FAILED, MissHandle(NOT_THERE));
    Draw(NOT_THERE, {WHOLE})
        .Answers(NOT_FOUND, MakeTextureRenderer("OSDBitmap"), MissHandle(NOT_THERE, "GLDrawThread"));
    Rect(NO_HANDLE, WHOLE).Answers(FAILED, MissHandle(NO_HANDLE));
    Drop(NO_HANDLE).Answers(100, "E GLDrawThread: FBO manager is nullptr or param is invalid");
}

// What the library cannot repair, and how a client gets over it.
SCENARIO(Limits, NOT_SWEPT) {
    const std::string connected = "W KivGLDrawSurface: NativeWindow has been connected";
    Begin();
    Fail("eglCreateWindowSurface");
    Connect(1).LogsErrors("5, 64 x 48", "E EGLManager: eglCreateWindowSurface error: 0x3003",
                          "E GLDrawThread: Create openGLES window surface fail 5");
    Connect(0).Answers("0, 64 x 48", connected);  // taken for connected
    Connect(1).Answers("0, 80 x 40", CreateWindowSurface());
    Destroy().Makes(EndContext("window surface", DeleteLayer(A)));
    Create().Makes(CreateContext());
    Connect(1).Answers("0, 80 x 40", connected);   // connects nothing
    MakeLayer(A).Makes(SetUpLayer(A, "0x10001"));  // what was in it is gone
    Display(A, WHOLE, WHOLE)
        .Makes(MakeTextureRenderer("OSDFrame"),
               DisplayTexture(A, {"window", 1920, 1080}, "0 0 1536 1296", "0 48 64 0"));
    Refresh().Makes("eglSwapBuffers(display, pbuffer)");
    Renew().Makes(EndContext("pbuffer", {DeleteLayer(A), DeleteRenderer("OSDFrame")}));
    Create().Makes(CreateContext());
    Connect(1).Answers("0, 80 x 40", ConnectWindow("pbuffer"));
}

// A context is made step by step, and stays away when one fails: what was made before is released.
SCENARIO(NoContext, NOT_SWEPT) {
    const std::string surfaceFails = "E GLDrawThread: Create openGLES window surface fail 5";
    const std::string notCurrent = "E GLDrawThread: Make current EGL context fail 100";
    const std::string noContext = "E GLDrawThread: GLES context is not created";
    const auto refuse = [](const std::string& what) {
        return Calls("eglGetError()", "E EGLManager: " + what + ": 0x3003");
    };
    const auto fails = [&](const std::string& function, int answer, const Calls& calls) {
        Fail(function);
        Create().Answers(answer, calls);
        Init(0x7f).Answers(6, noContext);
        Refresh().Makes(noContext, noContext);
        Destroy().Makes(EndThread());
    };
    Fail("pthread_create");
    Create().Answers(100, "W GLDrawThread: ~GLDrawThread", "E KivGLDrawSurface: start draw thread fail 11");
    fails("eglGetDisplay", 1,
          {"eglGetDisplay(EGL_DEFAULT_DISPLAY)", refuse("eglGetDisplay failed"),
           "W EGLManager: EGL Context has been released"});
    fails("eglInitialize", 2,
          {"eglGetDisplay(EGL_DEFAULT_DISPLAY); eglInitialize(display)", refuse("eglInitialize failed"),
           ReleaseDisplay()});
    fails("eglChooseConfig", 3, {ChooseConfig(), refuse("eglChooseConfig error"), ReleaseDisplay()});
    fails("eglCreateContext", 4,
          {ChooseConfig(), "eglCreateContext(display, config, EGL_NO_CONTEXT); EGL_CONTEXT_CLIENT_VERSION, 2",
           refuse("eglCreateContext error"), ReleaseDisplay()});
    fails("eglCreatePbufferSurface", 5,
          {MakeContext(), "eglCreatePbufferSurface(display, config)", refuse("eglCreatePbufferSurface error"),
           "eglDestroyContext(display, context)", ReleaseDisplay(), surfaceFails});
    fails("eglMakeCurrent", 100,
          {MakeContext(), MakePbuffer(), refuse("egl make current failed"),
           "eglDestroyContext(display, context); eglDestroySurface(display, pbuffer)", ReleaseDisplay(),
           notCurrent});
    Fail("glGetString");
    Create().LogsErrors("0", "E EGLManager: GL Version = (null)", "E EGLManager: GL Vendor = (GL's words)",
                        "E EGLManager: GL Renderer = (GL's words)");
    Fail("eglMakeCurrent", 0, 2);  // the first one lets the pbuffer go
    Connect(0).LogsErrors("100, 1920 x 1080", "E EGLManager: egl make current failed: 0x3003", notCurrent);
}

// A shader is not compiled, or none is attached: GL is asked why.
SCENARIO(NoProgram, NOT_SWEPT) {
    Create().Makes(CreateContext());
    for (const auto& [mask, name, what] : {std::tuple(ENABLE_TEXT, "OSDText", "OSD text init"),
                                           std::tuple(ENABLE_BLIT, "OSDBlit", "OSD blit init"),
                                           std::tuple(ENABLE_BITMAP, "OSDBitmap", "OSD bitmap"),
                                           std::tuple(ENABLE_FRAME, "OSDFrame", "OSD frame init"),
                                           std::tuple(ENABLE_RECT, "OSDRect", "OSD Rect init"),
                                           std::tuple(ENABLE_ROUND, "OSDRound", "OSD Round init")}) {
        Fail("glCreateShader");
        Init(mask).Answers(20, "glCreateShader(GL_VERTEX_SHADER)", "E ShaderProgram: Create shader fail",
                           Line("E {}: create shader program fail", name),
                           Line("E GLDrawThread: {} fail 20", what));
    }
    Fail("glCompileShader", 0, 2);  // a fragment shader
    Init(0x7e).Answers(20, CompileShaders(), "glIsShader(object)", "glIsProgram(object)",  // no other is made
                       "glGetShaderiv(fragment shader, GL_INFO_LOG_LENGTH)",
                       "glDeleteShader(fragment shader)", "glDeleteShader(vertex shader)",
                       "E OSDBlit: create shader program fail", "E GLDrawThread: OSD blit init fail 20");
    Fail("glCreateProgram");
    Init(ENABLE_RECT)
        .Answers(20, CompileShaders(), "glCreateProgram()", "E ShaderProgram: create program fail",
                 DeleteShaders(), "E OSDRect: create shader program fail",
                 "E GLDrawThread: OSD Rect init fail 20");
    Fail("glGetAttribLocation");
    Fail("glGetUniformLocation");
    Init(ENABLE_ROUND)
        .LogsErrors("0", "E ShaderProgram: Could not bind attribute vPosition",
                    "E ShaderProgram: Could not bind uniform color");
    Fail("glAttachShader", 0, ALWAYS);
    Init(ENABLE_RECT)
        .Answers(20, CompileShaders(), Link("OSDRect"), "glIsShader(object)", "glIsProgram(object)",
                 "glGetProgramiv(OSDRect's program, GL_INFO_LOG_LENGTH)",
                 "glGetProgramInfoLog(OSDRect's program)",
                 "E ShaderProgram: Could not link program:", "(GL's words)",
                 "glDeleteProgram(OSDRect's program)", DeleteShaders(),
                 "E OSDRect: create shader program fail", "E GLDrawThread: OSD Rect init fail 20");
}

}  // namespace
}  // namespace kivgles
