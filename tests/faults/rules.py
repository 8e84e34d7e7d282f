"""What a call that fails does to the operation that meets it.

A rule says which operations of a client (as tests/scenarios calls them) and which functions it is about, what such an
operation then answers, and which errors it logs that it does not log otherwise, in their order: one with a "*" stands
for all of its kind, one after "?" may be missing. "FT_New_Face 2" is the operation's second call of the function,
"FT_New_Face 3" its third or a later one. Where no rule says otherwise, the operation answers and logs as if nothing had
failed.

- A queued operation has answered 0 before: what a rule says that it answers is in the log only.
- A function that fails for good fails until the operation ends, which one that waits does with its first answer other
  than 0. So several rules may hold for one operation.
"""
import re

QUEUED = "rect round text blit display refresh".split()

OK = "as without"
NO_STANDARD_FONT = "OSDText: Load standard font lib fail "
NO_STYLED_FONT = "OSDText: Load dynamic font lib fail "
NO_TEXTURE = "OSDText: Get font atlas texture fail ", "OSDText: get font alpha texture fail "
NO_STANDARD_GLYPHS = "FontAtlas: Calculate texture width *d, height 0d", NO_STANDARD_FONT + "32"
NO_STYLED_GLYPHS = "FontStyleAtlas: Calculate texture width 0d, height 0d", *(line + "32" for line in NO_TEXTURE)
GLYPH = "FT_Load_Char FT_Render_Glyph FT_Bitmap_Convert"


def making(by, renderer, what, attribute, *uniforms):
    """The rules of the operations by which a renderer is made: all that matters is whether it gets its program."""
    fails = f"{renderer}: create shader program fail", f"GLDrawThread: {what} fail 20"
    drivers_log = "?ShaderProgram: Could not compile shader *:", "?ShaderProgram: Could not link program:"
    return [
        (by, "glCreateShader", 20, "ShaderProgram: Create shader fail", *fails),
        (by, "glCreateProgram", 20, "ShaderProgram: create program fail", *fails),
        (by, "glShaderSource glCompileShader glGetShaderiv", 20, *drivers_log, *fails),
        (by, "glAttachShader glLinkProgram glGetProgramiv", 20, *drivers_log, *fails),
        (by, "glGetAttribLocation", OK, f"ShaderProgram: Could not bind attribute {attribute}"),
        *((by, "glGetUniformLocation", OK, f"ShaderProgram: Could not bind uniform {name}") for name in uniforms),
        # When the program fails anyway, and the driver is asked for its log.
        (by, "glIsShader glIsProgram", OK, "?ShaderProgram: Not a shader or a program"),
    ]


RULES = [
    *making("init rect text", "OSDRect", "OSD Rect init", "vPosition", "color"),
    *making("init round", "OSDRound", "OSD Round init", "vPosition", "color"),
    *making("init text font", "OSDText", "OSD text init", "coord", "tex", "color"),
    *making("init bitmap show", "OSDBitmap", "OSD bitmap", "coord", "tex"),
    *making("init blit", "OSDBlit", "OSD blit init", "coord", "tex"),
    *making("init display", "OSDFrame", "OSD frame init", "coord", "tex"),
    # A context is made step by step, and stays away when one fails.
    ("create", "pthread_create", 100, "KivGLDrawSurface: start draw thread fail 11"),
    ("create", "eglGetDisplay", 1, "EGLManager: eglGetDisplay failed: 0x3003"),
    ("create", "eglInitialize", 2, "EGLManager: eglInitialize failed: 0x3003"),
    ("create", "eglChooseConfig", 3, "EGLManager: eglChooseConfig error: 0x3003"),
    ("create", "eglCreateContext", 4, "EGLManager: eglCreateContext error: 0x3003"),
    ("create", "eglCreatePbufferSurface", 5, "EGLManager: eglCreatePbufferSurface error: 0x3003",
     "GLDrawThread: Create openGLES window surface fail 5"),
    ("connect", "eglCreateWindowSurface", 5, "EGLManager: eglCreateWindowSurface error: 0x3003",
     "GLDrawThread: Create openGLES window surface fail 5"),
    ("create connect", "eglMakeCurrent", 100, "EGLManager: egl make current failed: 0x3003",
     "GLDrawThread: Make current EGL context fail 100"),
    ("create connect", "eglMakeCurrent", OK),  # when the former surface is let go
    ("create connect", "glGetString", OK, "EGLManager: GL * = (null)"),
    # A layer needs a texture. What else it lacks is in its framebuffer's status.
    ("layer", "glGenTextures", 21, "FBOManager: Create texture fail", "GLDrawThread: Create FBO fail 21"),
    ("layer", "glCheckFramebufferStatus", OK, "FBOManager: Framebuffer incomplete: Unknown error."),
    ("layer", "glFramebufferTexture2D", OK,
     "FBOManager: Unable to set up render Target: GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT"),
    ("layer", "glTexImage2D", OK, "?FBOManager: Unable to set up render Target: RFRAMEBUFFER_INCOMPLETE_ATTACHMENT"),
    ("layer", "glGenFramebuffers", OK, "?FBOManager: Framebuffer complete."),
    # A font is loaded whole or not at all, but for single characters.
    ("font text", "FT_Init_FreeType 1", 30, "FontAtlas: Failed to initialize freetype library",
     NO_STANDARD_FONT + "30"),
    ("font", "FT_Init_FreeType 2", 30, "FontStyleAtlas: Failed to initialize freetype library",
     NO_STYLED_FONT + "30"),
    ("font text", "FT_New_Face 1", 31, "FontAtlas: Error loading font face", NO_STANDARD_FONT + "31"),
    ("font", "FT_New_Face 2", 31, "FontStyleAtlas: Error loading font face", NO_STYLED_FONT + "31"),
    ("font", "FT_New_Face 3", 31, "FontStyleAtlas: Error loading font face for text size", NO_STYLED_FONT + "31"),
    ("font", "FT_Set_Pixel_Sizes", OK, "FontAtlas: set pixel size fail"),
    ("font", "FT_Get_First_Char 1", 32, *NO_STANDARD_GLYPHS),
    ("font", "FT_Get_Next_Char 1", 32, *NO_STANDARD_GLYPHS),
    ("font", "FT_Get_Next_Char", OK),
    ("font", GLYPH, OK, "FontAtlas: Loading character * failed!"),
    ("font", GLYPH, 32, "FontAtlas: Loading character * failed!", *NO_STANDARD_GLYPHS),
    ("font", "glGenTextures", 21, "FontAtlas: Create texture fail", NO_STANDARD_FONT + "21"),
    # So is a text in a style, which needs a texture of its own; without any glyph it is not drawn.
    ("text", "FT_Set_Pixel_Sizes", OK, "?FontStyleAtlas: set pixel size fail"),
    ("text", GLYPH + " FT_Outline_Embolden", OK, "?FontStyleAtlas: Char * is not exit"),
    ("text", GLYPH, 32, "FontStyleAtlas: Char * is not exit", *NO_STYLED_GLYPHS),
    ("text", "glGenTextures", 21, "FontStyleAtlas: Create texture fail", *(line + "21" for line in NO_TEXTURE)),
    ("measure", GLYPH, OK, "FontStyleAtlas: Char * is not exit", "?OSDText: Char * is not exit"),
    ("measure", "FT_Set_Pixel_Sizes", OK, "FontStyleAtlas: set pixel size fail"),
]

# Nobody asks whether these have done it. What is drawn is looked at when they work again.
UNNOTICED = (
    "glGenBuffers glBufferData glTexSubImage2D glGetIntegerv glGetShaderInfoLog glGetProgramInfoLog FT_Bitmap_Done "
    "FT_Done_Face FT_Done_FreeType eglQuerySurface eglSwapBuffers eglDestroySurface eglDestroyContext eglTerminate "
    "eglReleaseThread").split()

MAY_FAIL = {function for _, functions, *_ in RULES for function in functions.split()} | set(UNNOTICED)

# What failed once stays so for as long as the renderer or the window lives.
LASTING = "eglQuerySurface glGenBuffers glGetAttribLocation glGetUniformLocation".split()

# What a function may leave because it refused to let go of it. Of a context also what it holds.
LEFT = {"eglDestroyContext": "context texture buffer framebuffer program", "eglDestroySurface": "surface",
        "eglTerminate": "thread descriptor", "FT_Bitmap_Done": "memory", "FT_Done_Face": "face",
        "FT_Done_FreeType": "library memory"}


def expression(line, may_lack):
    """The regular expression of a rule's line, with those of its kind that follow it."""
    times = "*" if may_lack or line.startswith("?") else "+" if "*" in line else ""
    return "(?:" + re.escape(line.lstrip("?")).replace(r"\*", ".*") + f"\n){times}"


def admit(operation, function, nth, for_good, wanted, now):
    """Whether the rules say so of an operation that would have come out as `wanted` and came out as `now`."""
    rules = []
    for operations, functions, answer, *lines in RULES:
        call = re.search(rf"\b{function}\b ?(\d?)", functions)
        if operation in operations.split() and call and (call[1] in ("", str(nth)) or for_good and int(call[1]) > nth):
            rules.append((wanted.result if answer == OK or operation in QUEUED else answer, lines))
    logged = "".join(f"{line}\n" for line in now.errors if line not in wanted.errors)
    fails_anyway = now.result == wanted.result and any(" fail " in line for line in wanted.errors)
    before = "|".join(expression(line, fails_anyway) for _, lines in rules for line in lines)
    return any(answer == now.result and re.fullmatch(
        (f"(?:{before})*" if for_good else "") + "".join(expression(line, fails_anyway) for line in lines), logged)
        for answer, lines in rules or [(wanted.result, [])])
