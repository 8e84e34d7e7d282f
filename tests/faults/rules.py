"""What a call that fails does to the operation that meets it.

A rule says which operations of a client (as tests/scenarios calls them) and which functions it is about, what such an
operation then answers, and which errors it logs that it does not log otherwise. {n} is any number. A line comes once,
after "?" at most once, after "+" at least once, after "*" any number of times. "FT_New_Face 2" is the operation's
second call of the function, "FT_New_Face 3" its third or a later one.

- A queued operation has answered 0 before: what a rule says that it answers is in the log only.
- A function that fails for good fails until the operation ends, which one that waits does with its first answer other
  than 0. So the lines of several rules may follow one another.
- An operation that logs a failure anyway ("!") does not log anew what it always logs.
"""
import re

QUEUED = "rect round text blit display refresh".split()

OK = "as without"
RESIZED = "another size"
NO_STANDARD_FONT = "E OSDText: Load standard font lib fail "
NO_STYLED_FONT = "E OSDText: Load dynamic font lib fail "
NO_TEXTURE = "E OSDText: Get font atlas texture fail ", "E OSDText: get font alpha texture fail "
NO_STANDARD_GLYPHS = "E FontAtlas: Calculate texture width {n}d, height 0d", NO_STANDARD_FONT + "32"
NO_STYLED_GLYPHS = "E FontStyleAtlas: Calculate texture width 0d, height 0d", *(line + "32" for line in NO_TEXTURE)
GLYPH = "FT_Load_Char FT_Render_Glyph FT_Bitmap_Convert"


def making(by, renderer, what, attribute, *uniforms):
    """The rules of the operations by which a renderer is made: all that matters is whether it gets its program."""
    fails = f"E {renderer}: create shader program fail", f"E GLDrawThread: {what} fail 20"
    drivers_log = "?E ShaderProgram: Could not compile shader {n}:", "?E ShaderProgram: Could not link program:"
    return [
        (by, "glCreateShader", 20, "E ShaderProgram: Create shader fail", *fails),
        (by, "glCreateProgram", 20, "E ShaderProgram: create program fail", *fails),
        (by, "glShaderSource glCompileShader glGetShaderiv", 20, *drivers_log, *fails),
        (by, "glAttachShader glLinkProgram glGetProgramiv", 20, *drivers_log, *fails),
        (by, "glGetAttribLocation", OK, f"E ShaderProgram: Could not bind attribute {attribute}"),
        *((by, "glGetUniformLocation", OK, f"E ShaderProgram: Could not bind uniform {name}") for name in uniforms),
        # When the program fails anyway, and the driver is asked for its log.
        (by, "glGetShaderInfoLog glGetProgramInfoLog", OK),
        (by, "glIsShader glIsProgram", OK, "?E ShaderProgram: Not a shader or a program"),
        (by, "malloc", OK, "E ShaderProgram: allocate memory fail"),
    ]


RULES = [
    *making("init rect text", "OSDRect", "OSD Rect init", "vPosition", "color"),
    *making("init round", "OSDRound", "OSD Round init", "vPosition", "color"),
    *making("init text font", "OSDText", "OSD text init", "coord", "tex", "color"),
    *making("init bitmap show", "OSDBitmap", "OSD bitmap", "coord", "tex"),
    *making("init blit", "OSDBlit", "OSD blit init", "coord", "tex"),
    *making("init display", "OSDFrame", "OSD frame init", "coord", "tex"),
    # A context is made step by step, and stays away when one fails.
    ("create", "pthread_create", 100, "E KivGLDrawSurface: start draw thread fail 11"),
    ("create", "eglGetDisplay", 1, "E EGLManager: eglGetDisplay failed: 0x3003"),
    ("create", "eglInitialize", 2, "E EGLManager: eglInitialize failed: 0x3003"),
    ("create", "eglChooseConfig", 3, "E EGLManager: eglChooseConfig error: 0x3003"),
    ("create", "eglCreateContext", 4, "E EGLManager: eglCreateContext error: 0x3003"),
    ("create", "eglCreatePbufferSurface", 5, "E EGLManager: eglCreatePbufferSurface error: 0x3003",
     "E GLDrawThread: Create openGLES window surface fail 5"),
    ("connect", "eglCreateWindowSurface", 5, "E EGLManager: eglCreateWindowSurface error: 0x3003",
     "E GLDrawThread: Create openGLES window surface fail 5"),
    ("create connect", "eglMakeCurrent", 100, "E EGLManager: egl make current failed: 0x3003",
     "E GLDrawThread: Make current EGL context fail 100"),
    ("create connect", "glGetString 1", OK, "E EGLManager: GL Version = (null)"),
    ("create connect", "glGetString 2", OK, "E EGLManager: GL Vendor = (null)"),
    ("create connect", "glGetString 3", OK, "E EGLManager: GL Renderer = (null)"),
    ("create", "eglGetError", OK, "E EGLManager: eglCreateContext error: 0x3000"),
    ("connect", "eglGetError", OK, "E EGLManager: eglCreateWindowSurface error: 0x3000"),
    ("create", "eglQuerySurface", OK),
    ("connect", "eglQuerySurface", RESIZED),
    # Nothing keeps it from being let go.
    ("create connect destroy", "eglMakeCurrent eglDestroySurface eglDestroyContext eglTerminate eglReleaseThread", OK),
    ("refresh", "eglSwapBuffers", OK),
    # A layer needs a texture. What else it lacks is in its framebuffer's status.
    ("layer", "glGenTextures", 21, "E FBOManager: Create texture fail", "E GLDrawThread: Create FBO fail 21"),
    ("layer", "glCheckFramebufferStatus", OK, "E FBOManager: Framebuffer incomplete: Unknown error."),
    ("layer", "glFramebufferTexture2D", OK,
     "E FBOManager: Unable to set up render Target: GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT"),
    ("layer", "glTexImage2D", OK, "?E FBOManager: Unable to set up render Target: RFRAMEBUFFER_INCOMPLETE_ATTACHMENT"),
    ("layer", "glGenFramebuffers", OK, "?E FBOManager: Framebuffer complete."),
    # A font is loaded whole or not at all, but for single characters.
    ("font text", "FT_Init_FreeType 1", 30, "E FontAtlas: Failed to initialize freetype library",
     NO_STANDARD_FONT + "30"),
    ("font", "FT_Init_FreeType 2", 30, "E FontStyleAtlas: Failed to initialize freetype library",
     NO_STYLED_FONT + "30"),
    ("font text", "FT_New_Face 1", 31, "E FontAtlas: Error loading font face", NO_STANDARD_FONT + "31"),
    ("font", "FT_New_Face 2", 31, "E FontStyleAtlas: Error loading font face", NO_STYLED_FONT + "31"),
    ("font", "FT_New_Face 3", 31, "E FontStyleAtlas: Error loading font face for text size", NO_STYLED_FONT + "31"),
    ("font", "FT_Set_Pixel_Sizes", OK, "E FontAtlas: set pixel size fail"),
    ("font", "FT_Get_First_Char 1", 32, *NO_STANDARD_GLYPHS),
    ("font", "FT_Get_First_Char 2", OK),
    ("font", "FT_Get_Next_Char 1", 32, *NO_STANDARD_GLYPHS),
    ("font", "FT_Get_Next_Char", OK),
    ("font", GLYPH, OK, "+E FontAtlas: Loading character {n} failed!"),
    ("font", GLYPH, 32, "+E FontAtlas: Loading character {n} failed!", *NO_STANDARD_GLYPHS),
    ("font", "glGenTextures", 21, "E FontAtlas: Create texture fail", NO_STANDARD_FONT + "21"),
    # So is a text in a style, which needs a texture of its own; without any glyph it is not drawn.
    ("text measure", "FT_Set_Pixel_Sizes", OK, "?E FontStyleAtlas: set pixel size fail"),
    ("text", GLYPH + " FT_Outline_Embolden", OK, "*E FontStyleAtlas: Char {n} is not exit"),
    ("text", GLYPH, 32, "+E FontStyleAtlas: Char {n} is not exit", *NO_STYLED_GLYPHS),
    ("text", "memcpy_s", 32, "E TextInfo: memset_s_func failed, err = 22", *("?" + line for line in NO_STYLED_GLYPHS)),
    ("text", "glGenTextures", 21, "E FontStyleAtlas: Create texture fail", *(line + "21" for line in NO_TEXTURE)),
    ("measure", GLYPH, OK, "+E FontStyleAtlas: Char {n} is not exit"),
    ("measure", GLYPH, RESIZED, "+E FontStyleAtlas: Char {n} is not exit", "*E OSDText: Char {n} is not exit"),
    ("measure", "FT_Outline_Embolden", OK), ("measure", "FT_Outline_Embolden", RESIZED),
    ("measure", "FT_Set_Pixel_Sizes", RESIZED, "E FontStyleAtlas: set pixel size fail"),
    # Nobody asks whether these have done it. What is drawn is looked at when they work again.
    ("rect round text blit display bitmap blend show font init", "glGenBuffers glBufferData", OK),
    ("bitmap blend show", "glGenTextures", OK),
    ("bitmap blend show font text", "glTexImage2D glTexSubImage2D glGetIntegerv", OK),
    ("font text measure destroy", "FT_Bitmap_Done FT_Done_Face FT_Done_FreeType", OK),
]


EFFECT = re.compile(r"(?P<operation>\w+)(=(?P<usual>\d+)[^!]*)?(?P<logs_failure>!)? (?P<function>\w+) (?P<nth>\d): "
                    r"(?P<answer>[^|]*?)( \| (?P<lines>.*))?")


def pattern(lines, logged_anyway):
    """The regular expression of a rule's lines."""
    expression = ""
    for line in lines:
        text = re.escape(line.lstrip("?+*")).replace(r"\{n\}", r"\d+")
        expression += f"(?:{text}\n)" + ("*" if logged_anyway else line[0] if line[0] in "?+*" else "")
    return expression


def admit(effect, for_good):
    """Whether the rules say so of an effect as Trial prints it, "rect glGenBuffers 1: as without | E ..."."""
    found = EFFECT.fullmatch(effect)
    if not found:
        return False
    operation, usual, function, nth, answer = found.group("operation", "usual", "function", "nth", "answer")
    logged_anyway = found["logs_failure"] and answer == OK
    rules = []
    for operations, functions, expected, *lines in RULES:
        call = re.search(rf"\b{function}\b ?(\d?)", functions)
        if operation in operations.split() and call and (call[1] in ("", nth) or for_good and call[1] > nth):
            rules.append((str(expected), pattern(lines, logged_anyway)))

    before = "|".join(lines for expected, lines in rules if operation in QUEUED or expected in (OK, RESIZED))
    text = found["lines"].replace(" | ", "\n") + "\n" if found["lines"] else ""
    return any(answer == (OK if operation in QUEUED or expected == usual else expected)
               and re.fullmatch(f"(?:{before})*{lines}" if for_good else lines, text) for expected, lines in rules)
