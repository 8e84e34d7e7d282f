// Shapes, bitmaps and layers on layers and windows.

#include <utility>

#include <GLES2/gl2.h>

#include "scenarios/Contracts.h"

namespace kivgles {

void Scenario::Begin() {
    Create().Makes(CreateContext());
    Connect(0).Answers("0, 64 x 48", ConnectWindow("pbuffer"));
    MakeLayer(A).Makes(SetUpLayer(A, "0x10001"));
}

void Scenario::DrawPicture() {
    const Target back{"back"};
    const Target front{"front"};
    LoadFont("bearings.ttf").Makes(MakeTextRenderer(), LoadFirstFont(BEARINGS));
    MakeLayer(back).Makes(SetUpLayer(back, "0x10001"));
    MakeLayer(front).Makes(SetUpLayer(front, "0x10002"));
    Rect(back, {0, 0, 16, 16}).Makes(MakeFlatRenderer("OSDRect"), FillRectangle(back, RED, "0 0 16 16"));
    Round(back, {24, 16, 2, 2}, GREEN)  // its lower half goes under the text
        .Makes(MakeFlatRenderer("OSDRound"), FillRound(back, GREEN, "24 16", "2 2"));
    Draw(back, {{32, 0, 16, 16}, BLUE, 1, 1})
        .Makes(MakeTextureRenderer("OSDBitmap"), DrawBitmap(back, "32 0 48 16", 1, 1));
    Write(back, {0, 16, 32, 32}, {u"A", 40, "", GREY})
        .Makes(FillRectangle(back, GREY, "0 16 32 48"), DrawText(back, STANDARD, {GLYPH_A}));
    Write(back, {32, 16, 32, 32}, {u"A", 20, "", GREY})
        .Makes(FillRectangle(back, GREY, "32 16 64 48"), DrawStyled(20),
               FillStyledAtlas(6, 10, {"0, 0, 5, 10"}),
               DrawText(back, STYLED, {"33 28 38 38 from 0 0 5 10"}));
    Blend(back, {{56, 0, 8, 8}, 0xff00ff80, 1, 1}).Makes(BlendBitmap(back, "56 0 64 8", 1, 1));
    Blit(back, front, WHOLE, WHOLE)
        .Makes(MakeTextureRenderer("OSDBlit"), BlitTexture(back, front, "0 0 64 48", "0 48 64 0"));
    Display(front, WHOLE, WHOLE)
        .Makes(MakeTextureRenderer("OSDFrame"), DisplayTexture(front, WINDOW, "0 0 64 48", "0 48 64 0"));
    Refresh().Makes(SWAP, "y 0: 0 #ff0000ff 16 #00000000 32 #0000ffff 48 #00000000 56 #20002040",
                    "y 8: 0 #ff0000ff 16 #00000000 32 #0000ffff 48 #00000000",
                    "y 14: 0 #ff0000ff 16 #00000000 23 #00ff00ff 25 #00000000 32 #0000ffff 48 #00000000",
                    "y 15: 0 #ff0000ff 16 #00000000 22 #00ff00ff 26 #00000000 32 #0000ffff 48 #00000000",
                    "y 16: 0 #808080ff", "y 18: 0 #808080ff 2 #ffffffff 12 #808080ff",
                    "y 28: 0 #808080ff 2 #ffffffff 12 #808080ff 33 #ffffffff 38 #808080ff",
                    "y 38: 0 #808080ff");
    Drop(back).Makes(DropLayer(back, "0x10001"));
    Drop(front).Makes(DropLayer(front, "0x10002"));
}

namespace {

// On targets of other sizes than the window's, and bitmaps to the pixel.
SCENARIO(Drawing, NOT_SWEPT) {
    const Target b{"b", 32, 16};
    const Target c{"c", 20, 30};
    Begin();
    MakeLayer(b).Makes(SetUpLayer(b, "0x10002"));
    Rect(b, {4, 2, 8, 4}).Makes(MakeFlatRenderer("OSDRect"), FillRectangle(b, RED, "4 2 12 6"));
    Round(b, {24, 8, 8, 4}, 0x01028001)  // a component of 1 is full, as 255 is
        .Makes(MakeFlatRenderer("OSDRound"), FillRound(b, 0xff0280ff, "24 8", "8 4"));
    Rect(b, {4, 4, 4, 2}, NONE).Makes(FillRectangle(b, NONE, "4 4 8 6"));  // of no opacity: takes away
    MakeLayer(c, 0)                                                        // another format is only logged
        .Makes("E KivGLDrawSurface: Color format is invalid 0", SetUpLayer(c, "0x10003"));
    Blit(b, c, {4, 2, 8, 4}, {4, 22, 16, 8})
        .Makes(MakeTextureRenderer("OSDBlit"), BlitTexture(b, c, "4 22 20 30", "4 14 12 10"));
    Blit(b, WINDOW, {0, 0, 2147483648, 8}, {0, 0, 16, 16})  // no number is negative
        .Makes(BlitTexture(b, WINDOW, "0 0 16 16", "0 16 2.14748365e+09 8"));
    Display(c, {0, 15, 20, 15}, {40, 0, 20, 15})
        .Makes(MakeTextureRenderer("OSDFrame"), DisplayTexture(c, WINDOW, "40 0 60 15", "0 15 20 0"));
    Clear(b).Makes(ClearTarget(b));
    Draw(b, {{0, 0, 8, 48}, 0xff000080})  // an eighth of the window, so of the layer; first pixel left
        .Makes(MakeTextureRenderer("OSDBitmap"), DrawBitmap(b, "0 0 4 16"));
    Blend(b, {{0, 24, 8, 24}, 0x00ff0080}).Makes(BlendBitmap(b, "0 8 4 16"));
    Draw(b, {{0, 0, 4294967295, 1}, WHITE, 0, 5, 0})  // of no size, nothing is read
        .Makes("E KivGLDrawSurface: Color format is invalid 0",
               DrawBitmap(b, "0 0 2.14748366e+09 0.333", 0, 5));
    Show({WHOLE, WHITE, 0x20001, 0xffffffff})  // nor of more than GL has room for
        .Makes(ShowBitmap(WINDOW, "0 0 64 48", 0x20001, 0xffffffff));
    Display(b, {0, 0, 32, 16}, {0, 0, 32, 16}).Makes(DisplayTexture(b, WINDOW, "0 0 32 16", "0 16 32 0"));
    Refresh().Makes(SWAP, "y 0: 0 #80000080 1 #60002080 2 #20006080 3 #00008080 4 #00000000",
                    "y 8: 0 #40400080 1 #30401080 2 #10403080 3 #00404080 4 #00000000", "y 16: 0 #00000000");
    Show({{0, 0, 64, 4}, 0xff000080, 1, 2}).Makes(ShowBitmap(WINDOW, "0 0 64 4", 1, 2));  // and on top
    Refresh().Makes(SWAP, "y 0: 0 #80000080", "y 1: 0 #60002080", "y 2: 0 #20006080", "y 3: 0 #00008080",
                    "y 4: 0 #00000000");
}

// The table of layers is filled, whatever state their framebuffers are in, and its places are used again.
SCENARIO(Layers, NOT_SWEPT) {
    const Target b{"b"};
    const Target n{"n"};
    Begin();
    Fail("glGenTextures");
    MakeLayer(b).Answers("21", "glActiveTexture(GL_TEXTURE0)", "glGenTextures(1)",  // takes no place
                         "E FBOManager: Create texture fail", "E GLDrawThread: Create FBO fail 21");
    const std::string unable = "Unable to set up render Target: ";
    std::vector<std::pair<GLenum, std::string>> states = {
        {GL_FRAMEBUFFER_INCOMPLETE_DIMENSIONS, unable + "GL_FRAMEBUFFER_INCOMPLETE_DIMENSIONS"},
        {GL_FRAMEBUFFER_UNSUPPORTED, unable + "GL_FRAMEBUFFER_UNSUPPORTED"},
        {GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT,
         unable + "GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT"},
        {0, "Framebuffer incomplete: Unknown error."}};
    states.resize(14, {GL_FRAMEBUFFER_COMPLETE, "Framebuffer complete."});
    for (std::size_t i = 0; i < 14; ++i) {
        const Target layer{std::string(1, "bcdefghijklmno"[i])};
        Fail("glCheckFramebufferStatus", states[i].first);
        MakeLayer(layer).Makes(SetUpLayer(layer, Line("0x1000{}", "23456789abcdef"[i]), states[i].second));
    }
    MakeLayer({"full"}).Answers("15", "E FBOManager: num of the FBO more than max num 16 ",
                                "E GLDrawThread: Create FBO fail 15");
    Drop(b).Makes(DropLayer(b, "0x10002"));
    Drop({"0x10002"})
        .Makes("E FBOManager: FBO is not exist fboHandleIndex 0x10002",
               "W GLDrawThread: Destory FBO fboHandleIndex 0x10002");
    Drop(n).Makes(DropLayer(n, "0x1000e"));
    MakeLayer({"again"}).Makes(SetUpLayer({"again"}, "0x10002"));
}

// A layer of no pixels, or more than any GL has, takes what every layer takes. Coordinates on one without
// stay those of its middle.
SCENARIO(OddLayers, SWEPT) {
    const Target wide{"wide", 0x20001, 0x20000};
    const Target high{"high", 0x20000, 0x7fffffff};
    const Target b{"b", 0, 8};
    const Target c{"c", 8, 0};
    const std::string state = "Unable to set up render Target: RFRAMEBUFFER_INCOMPLETE_ATTACHMENT";
    const std::string complaint = "E KivGLDrawSurface: param is invalid";
    Begin();
    MakeLayer(b).Makes(SetUpLayer(b, "0x10002", state));
    MakeLayer(c).Makes(SetUpLayer(c, "0x10003", state));
    MakeLayer(wide).Makes(SetUpLayer(wide, "0x10004", state));
    MakeLayer(high).Makes(SetUpLayer(high, "0x10005", state));
    Clear(b).Makes(ClearTarget(b));
    Display(b, WHOLE, WHOLE)
        .Makes(complaint, MakeTextureRenderer("OSDFrame"), DisplayTexture(b, WINDOW, "0 0 64 48", "0 0 0 0"));
    Blit(c, WINDOW, WHOLE, WHOLE)
        .Makes(complaint, MakeTextureRenderer("OSDBlit"), BlitTexture(c, WINDOW, "0 0 64 48", "0 0 0 0"));
    Blit(WINDOW, c, WHOLE, WHOLE).Makes(complaint, BlitTexture(WINDOW, c, "4 0 4 0", "0 1 1 0"));
    Write(b, WHOLE, {u"A"}).Makes(complaint, MakeTextRenderer(), FailToLoad("/system/fonts/CC3.ttf"));
    Write(b, WHOLE, {u"A"})
        .Makes(complaint, "E OSDText: Param is invalid", "E OSDText: get font alpha texture fail 102");
    Rect(c, WHOLE).Makes(complaint, MakeFlatRenderer("OSDRect"),
                         FillShape("OSDRect", c, RED, "GL_TRIANGLES", 6, "lb lb lb lb lb lb at 4 0 4 0"));
    Round(b, {8, 8, 8, 8}).Makes(complaint, MakeFlatRenderer("OSDRound"), FillRound(b, RED, "0 4", "0 0"));
    Draw(b, {WHOLE}).Makes(MakeTextureRenderer("OSDBitmap"), DrawBitmap(b, "0 0 0 8"));
    Drop(b).Makes(DropLayer(b, "0x10002"));
}

// A window takes another one's place, and goes under the surface's hands.
SCENARIO(Windows, SWEPT) {
    const Target early{"early"};
    const Target late{"late"};
    const Target wide{"window", 80, 40};
    Create().Makes(CreateContext());
    MakeLayer(early).Makes(SetUpLayer(early, "0x10001"));
    Connect(0).Answers("0, 64 x 48", ConnectWindow("pbuffer"));
    MakeLayer(late).Makes(SetUpLayer(late, "0x10002"));
    Rect(WINDOW, WHOLE).Makes(MakeFlatRenderer("OSDRect"), FillRectangle(WINDOW, RED, "0 0 64 48"));
    Refresh().Makes(SWAP, "y 0: 0 #ff0000ff");
    Connect(1).Answers("0, 80 x 40", ConnectWindow("window surface"));
    Connect(1).Answers("0, 80 x 40", "W KivGLDrawSurface: NativeWindow has been connected");
    Clear(WINDOW).Makes(ClearTarget(wide));
    Rect(WINDOW, {60, 20, 20, 20}, GREEN).Makes(FillRectangle(wide, GREEN, "60 20 80 40"));
    Refresh().Makes(SWAP, "y 0: 0 #00000000", "y 20: 0 #00000000 60 #00ff00ff");
    Show({{40, 20, 40, 20}, BLUE, 1, 1})
        .Makes(MakeTextureRenderer("OSDBitmap"), ShowBitmap(wide, "40 20 80 40", 1, 1));
    LoseWindow(1).Makes();
    Refresh().Makes(SWAP);
    Connect(0).Answers("0, 64 x 48", ConnectWindow("window surface"));
    Rect(WINDOW, WHOLE, 0xffff00ff).Makes(FillRectangle(WINDOW, 0xffff00ff, "0 0 64 48"));
    Refresh().Makes(SWAP, "y 0: 0 #ffff00ff");
    Destroy().Makes(EndContext("window surface", {DeleteLayer(early), DeleteLayer(late),
                                                  DeleteRenderer("OSDBitmap"), DeleteRenderer("OSDRect")}));
}

}  // namespace
}  // namespace kivgles
