#include "text/OSDTextTest.h"

#include <utility>

namespace kivgles {
namespace {

using recorder::Call;
using recorder::Floats;

TEST_F(OSDTextTest, PlacesAndMeasuresGlyphsByTheirBearingsAndAdvances) {
    struct Placement {
        std::u16string text;
        unsigned int measured;
        Box box;
    };
    const std::vector<Placement> placements{
        {u"A", 14, {52, 61, 20, 39}},                        // plain
        {u"J", 12, {50, 61, 26, 45}},                        // hangs over: stays at the pen, counts in full
        {u"K", 20, {47, 54, 30, 39}},                        // reaches left of the pen
        {u"L", 0, {46, 51, 16, 19}},                         // has no advance
        {u"M", 10, {48, 57, 30, 39}},                        // is as wide as its advance
        {u"Q", 9, {50, 59, 30, 39}},                         // hangs over to the right, from the pen on
        {u"R", 9, {56, 65, 30, 39}},                         // hangs over to the right
        {u"AJ", 26, {52, 75, 20, 45}},                       // the pen moves by A's advance
        {u"JA", 26, {50, 70, 20, 45}},                       // and by J's, which is less than it counts
        {u"A A", 58, {52, 75, 20, 39}},                      // no ink: 30 pixels, the pen stays
        {u"A?A", 58, {52, 75, 20, 39}},                      // missing
        {u"\xD83D\xDE00", 60, NOTHING},                      // a surrogate pair: two missing characters
        {u"  ", 60, NOTHING},                                // spaces only
        {std::u16string(u"A\0A", 3), 14, {52, 61, 20, 39}},  // ends at its 0
        {u"", 0, NOTHING}};
    Load("bearings.ttf");
    for (const TextStyle& style : {STANDARD, STYLED}) {
        for (const Placement& row : placements) {
            SCOPED_TRACE(testing::PrintToString(row.text));
            const bool fails = style.size == 0 && row.box == NOTHING;  // its texture would be empty
            EXPECT_EQ(Draw(Request(row.text, style)), fails ? 32 : 0);
            EXPECT_EQ(DrawnBox(), row.box);
            EXPECT_EQ(MeasuredWidth(Request(row.text, style)), row.measured);
        }
        TagGLTextInfo null = Request(u"A", style);
        null.text = nullptr;
        EXPECT_EQ(Draw(null), style.size == 0 ? 32 : 0);
        EXPECT_EQ(MeasuredWidth(null), 0U);
    }
}

TEST_F(OSDTextTest, LogsEachMissingCharacterWhenDrawingAndWhenMeasuring) {
    Load("bearings.ttf");
    const Lines missing{"E OSDText: Char 56320 is not exit\n", "E OSDText: Char 32 is not exit\n"};
    recorder::Reset();
    ASSERT_EQ(Draw(Request(u"A\xDC00 ")), 0);
    EXPECT_EQ(recorder::Log(), missing);
    recorder::Reset();
    EXPECT_EQ(MeasuredWidth(Request(u"A\xDC00 ")), 74U);
    EXPECT_EQ(recorder::Log(), missing);
}

// The GL calls recorded, but for queries.
Lines GLCalls() {
    Lines calls = recorder::Calls();
    calls.erase(std::remove_if(calls.begin(), calls.end(),
                               [](const std::string& call) {
                                   return call.compare(0, 2, "gl") != 0 || call.compare(0, 5, "glGet") == 0;
                               }),
                calls.end());
    return calls;
}

// An atlas of 25 by 20 texels in the place of a former one.
Lines AtlasCalls(GLenum unit, std::uintptr_t former, std::uintptr_t texture, const Lines& uploads) {
    const auto Parameter = [](GLenum what, GLint value) {
        return Call("glTexParameteri", GL_TEXTURE_2D, what, value);
    };
    Lines calls{
        Call("glDeleteTextures", 1, recorder::Numbers{static_cast<int>(former)}),
        Call("glActiveTexture", unit),
        "glGenTextures(1, pointer)",
        Call("glBindTexture", GL_TEXTURE_2D, texture),
        Call("glTexImage2D", GL_TEXTURE_2D, 0, GL_ALPHA, 25, 20, 0, GL_ALPHA, GL_UNSIGNED_BYTE, nullptr),
        Call("glPixelStorei", GL_UNPACK_ALIGNMENT, 1),
        Parameter(GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE),
        Parameter(GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE),
        Parameter(GL_TEXTURE_MIN_FILTER, GL_LINEAR),
        Parameter(GL_TEXTURE_MAG_FILTER, GL_LINEAR)};
    calls.insert(calls.end(), uploads.begin(), uploads.end());
    calls.push_back(Call("glBindTexture", GL_TEXTURE_2D, 0));
    return calls;
}

std::string Upload(int x, int width, int height) {
    return Call("glTexSubImage2D", GL_TEXTURE_2D, 0, x, 0, width, height, GL_ALPHA, GL_UNSIGNED_BYTE,
                std::string(width == 0 ? "null" : "pointer"));
}

// The quad of a glyph of 20 rows, from (left, top) in pixels beside and above the layer's centre, at column x
// of that atlas.
void AddQuad(Floats& vertices, int left, int top, int width, int x) {
    const auto Add = [&](int dx, int dy) {
        vertices.insert(vertices.end(), {static_cast<float>(2 * (left + dx)) / WIDTH,
                                         static_cast<float>(2 * (top - dy)) / HEIGHT,
                                         static_cast<float>(x + dx) / 25, static_cast<float>(dy) / 20});
    };
    for (const auto& [dx, dy] : {std::pair{0, 0}, {width, 0}, {0, 20}, {width, 0}, {0, 20}, {width, 20}}) {
        Add(dx, dy);
    }
}

TEST_F(OSDTextTest, LoadsAndDrawsWithTheseGLCallsInTheirOrder) {
    Load("outlines.otf");  // a space, A and J
    ASSERT_EQ(Draw(Request(u"J", STYLED)), 0);
    const auto former = recorder::Live("texture");  // the layer's, the standard one, the styled one
    recorder::Record();
    Load("outlines.otf");
    EXPECT_EQ(GLCalls(), AtlasCalls(GL_TEXTURE1, former[1], recorder::Live("texture").back(),
                                    {Upload(0, 0, 0), Upload(1, 10, 20), Upload(12, 12, 20)}));

    const auto program = static_cast<GLuint>(recorder::Live("program").front());
    const GLint coord = glGetAttribLocation(program, "coord");
    for (const int unit : {1, 2}) {
        SCOPED_TRACE(unit);
        TagGLTextInfo info = Request(u" AJ", unit == 1 ? STANDARD : STYLED);
        info.fgColor = {0.25F, 0.5F, 0.75F, 0.125F};
        recorder::Record();
        ASSERT_EQ(text.DrawText(layer, info, 0, 0), 0);

        const auto texture = recorder::Live("texture").back();
        Lines expected;
        if (unit == 2) {
            expected = AtlasCalls(GL_TEXTURE2, former[2], texture, {Upload(0, 10, 20), Upload(11, 12, 20)});
        }
        Floats vertices;
        AddQuad(vertices, 2, 20, 10, unit == 1 ? 1 : 0);
        AddQuad(vertices, 14, 14, 12, unit == 1 ? 12 : 11);
        vertices.resize(3 * 24);  // room for the space
        const Lines draw{Call("glBindFramebuffer", GL_FRAMEBUFFER, layer.fboId),
                         Call("glViewport", 0, 0, WIDTH, HEIGHT),
                         Call("glUseProgram", program),
                         Call("glEnable", GL_BLEND),
                         Call("glBlendFunc", GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA),
                         Call("glUniform4fv", glGetUniformLocation(program, "color"), 1,
                              Floats{0.25F, 0.5F, 0.75F, 0.125F}),
                         Call("glActiveTexture", GL_TEXTURE0 + unit),
                         Call("glBindTexture", GL_TEXTURE_2D, texture),
                         Call("glUniform1i", glGetUniformLocation(program, "tex"), unit),
                         Call("glEnableVertexAttribArray", coord),
                         Call("glBindBuffer", GL_ARRAY_BUFFER, recorder::Live("buffer").front()),
                         Call("glVertexAttribPointer", coord, 4, GL_FLOAT, GL_FALSE, 0, nullptr),
                         Call("glBufferData", GL_ARRAY_BUFFER, 3 * 96, vertices, GL_DYNAMIC_DRAW),
                         Call("glDrawArrays", GL_TRIANGLES, 0, 12),
                         Call("glBindBuffer", GL_ARRAY_BUFFER, 0),
                         Call("glDisableVertexAttribArray", coord),
                         Call("glDisable", GL_BLEND),
                         Call("glBindTexture", GL_TEXTURE_2D, 0),
                         Call("glBindFramebuffer", GL_FRAMEBUFFER, 0)};
        expected.insert(expected.end(), draw.begin(), draw.end());
        EXPECT_EQ(GLCalls(), expected);
    }
}

TEST_F(OSDTextTest, GlyphsBeyondTheLargestTextureAreDrawnOnDemand) {
    LimitTextureSize(32);  // room for two glyphs of 10 pixels in three rows
    Load("many.ttf", 20);
    recorder::Reset();
    ASSERT_EQ(Draw(Request(u"GZ", OTHER)), 0);  // nothing of this stays
    recorder::Record();
    for (const char16_t* const content : {u"AF", u"AG"}) {
        ASSERT_EQ(Draw(Request(content)), 0);
        EXPECT_EQ(DrawnBox(), (Box{51, 72, 30, 39}));
        EXPECT_EQ(MeasuredWidth(Request(content)), 24U);
    }
    ASSERT_EQ(Draw(Request(u"\u4E00A")), 0);  // a code beyond that the font lacks
    Lines units;
    for (const std::string& call : GLCalls()) {
        if (call.compare(0, 11, "glUniform1i") == 0) {
            units.push_back(call.substr(call.size() - 2));
        }
    }
    EXPECT_EQ(units, (Lines{"1)", "2)", "1)"}));
    EXPECT_EQ(recorder::Counts().count("glGetIntegerv"), 0U);
}

}  // namespace
}  // namespace kivgles
