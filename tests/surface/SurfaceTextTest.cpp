// Text through the public class, and measuring while the draw thread loads fonts.

#include <algorithm>
#include <atomic>
#include <fstream>
#include <memory>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "drawthread/GLDrawThread.h"
#include "support/Surface.h"
#include "text/TextTest.h"

namespace kivgles {
namespace {

using testing::IsEmpty;

constexpr TagKivColorRGBA RED{200, 40, 0, 255};
constexpr TagKivColorRGBA BLUE{0, 80, 120, 255};
constexpr TagKivColorRGBA NO_COLOR{0, 0, 0, 0};

TagKivTextInfo Line(std::u16string_view text, const TagKivColorRGBA& background = NO_COLOR,
                    bool underline = false) {
    return {text.data(), static_cast<std::uint32_t>(text.size()), RED, background, 0, 40, 0, underline, 0};
}

class SurfaceTextTest : public SurfaceTest {
 protected:
    void Load(const std::string& font) { ASSERT_EQ(surface.KivLoadFont(TestFont(font), 40), 0); }

    // Colours and numbers of vertices of what was drawn, in order.
    Lines Drawn() {
        EXPECT_EQ(surface.Init(0), 0);  // waits
        Lines drawn;
        for (const std::string& call : recorder::Calls()) {
            if (call.compare(0, 12, "glUniform4fv") == 0) {
                drawn.push_back(call.substr(call.find('['), call.rfind(']') + 1 - call.find('[')));
            } else if (call.compare(0, 12, "glDrawArrays") == 0) {
                drawn.back() += call.substr(call.rfind(' '));
            }
        }
        recorder::Record();
        return drawn;
    }

    unsigned int MeasuredWidth(const TagKivTextInfo& text) {
        unsigned int width = 0;
        unsigned int height = 0;
        EXPECT_EQ(surface.KivGetTextSize(text, width, height), 0);
        EXPECT_EQ(height, 50U);
        return width;
    }
};

TEST_F(SurfaceTextTest, BackgroundGlyphsAndUnderlineHaveTheirExactRectangles) {
    const auto Expect = [&](const Pixel& color, const std::vector<std::pair<int, int>>& places) {
        for (const auto& [x, y] : places) {
            ExpectShown(window, x, y, color);
        }
    };
    Load("bearings.ttf");
    std::u16string text = u"R";
    ASSERT_EQ(surface.KivClearGLFBO(FBO_HANDLE_BASE), 0);
    ASSERT_EQ(surface.KivDrawText(FBO_HANDLE_BASE, Line(text, BLUE, true), {4, 2, 50, 26}), 0);
    text[0] = u' ';  // copied before
    Refresh();
    // Background (4, 2, 50, 26); glyph (10, 8, 10, 10) on a baseline 10 above the bottom edge; underline
    // (4, 20, 50, 2), from 2 below the baseline.
    Expect({0, 0, 0, 255}, {{3, 2}, {4, 1}, {54, 27}, {53, 28}, {3, 20}, {54, 21}});
    Expect({0, 80, 120, 255}, {{4, 2}, {53, 27}, {9, 8}, {10, 7}, {20, 17}, {19, 18}, {4, 19}, {53, 22}});
    Expect({200, 40, 0, 255}, {{10, 8}, {19, 17}, {4, 20}, {53, 21}});
}

TEST_F(SurfaceTextTest, DrawsOnlyWhatTheColoursAskFor) {
    const std::string red = "[0.784314 0.156863 0 1] 6)";
    const std::string transparent = "[0.784314 0.156863 0 0] 6)";
    const std::vector<std::tuple<TagKivColorRGBA, bool, Lines>> cases{
        {NO_COLOR, false, {red}},
        {NO_COLOR, true, {red, red}},
        {BLUE, false, {"[0 0.313726 0.470588 1] 6)", red}},
        {RED, true, {red, transparent, transparent}},  // the text's own colour
        {{200, 40, 0, 254}, false, {"[0.784314 0.156863 0 0.996078] 6)", red}}};
    Load("bearings.ttf");
    recorder::Record();
    for (const auto& [background, underline, drawn] : cases) {
        ASSERT_EQ(surface.KivDrawText(FBO_HANDLE_BASE, Line(u"A", background, underline), {20, 10, 100, 40}),
                  0);
        EXPECT_EQ(Drawn(), drawn);
    }
}

TEST_F(SurfaceTextTest, DrawsAtMost127UnitsAndMeasuresAll) {
    Load("bearings.ttf");
    recorder::Record();
    const auto DrawnVertices = [&](const TagKivTextInfo& text) {
        EXPECT_EQ(surface.KivDrawText(FBO_HANDLE_BASE, text, {0, 0, 100, 40}), 0);
        return Drawn();
    };
    for (const std::size_t length : {1U, 127U, 128U, 200U}) {
        SCOPED_TRACE(length);
        const std::vector<char16_t> text(length, u'A');  // without a 0 at its end, and nothing read behind it
        const TagKivTextInfo line = Line({text.data(), length});
        const std::size_t vertices = 6 * std::min<std::size_t>(length, 127);
        EXPECT_EQ(DrawnVertices(line), Lines{"[0.784314 0.156863 0 1] " + std::to_string(vertices) + ")"});
        EXPECT_EQ(MeasuredWidth(line), 14 * length);
    }
    EXPECT_EQ(DrawnVertices(Line(u"")), Lines{"[0.784314 0.156863 0 1] 0)"});
    EXPECT_EQ(MeasuredWidth(Line(u"")), 0U);

    TagKivTextInfo null = Line(u"AA");
    null.text = nullptr;
    EXPECT_THAT(DrawnVertices(null), IsEmpty());
    EXPECT_EQ(recorder::Log("E TextInfo").size(), 1U);
    EXPECT_EQ(MeasuredWidth(null), 0U);
}

TEST_F(SurfaceTextTest, NothingIsMeasuredBeforeThereIsATextRenderer) {
    unsigned int width = 7;
    unsigned int height = 7;
    EXPECT_EQ(surface.KivGetTextSize(Line(u"AA"), width, height), 103);
    EXPECT_EQ(width, 30U);
    EXPECT_EQ(height, 50U);
    EXPECT_EQ(recorder::Log("E"), (Lines{"E GLDrawThread: osd text is not init\n",
                                         "E KivGLDrawSurface: get text size fail err 101\n"}));
}

TEST_F(SurfaceTextTest, ALayerWithoutSizeTakesTextWithALineForEachPart) {
    const unsigned int layer = MakeLayer(0, 0);
    Load("bearings.ttf");
    recorder::Reset();
    EXPECT_EQ(surface.KivDrawText(layer, Line(u"A", BLUE, true), {0, 0, 50, 50}), 0);
    EXPECT_EQ(surface.Init(0), 0);
    EXPECT_EQ(recorder::Log("E KivGL"), Lines(3, "E KivGLDrawSurface: param is invalid\n"));
    EXPECT_EQ(recorder::Log("E OSDText").size(), 2U);
}

TEST_F(SurfaceTextTest, ABadFontLeavesNoCharacterAndAGoodOneBringsThemBack) {
    const std::string empty = TestFont("empty");
    std::ofstream(empty).flush();
    const TagKivTextInfo text = Line(u"AA");
    for (const std::string& path : {TestFont("missing.ttf"), TestFont(""), std::string(), empty,
                                    std::string(__FILE__), TestFont("spaces.ttf")}) {
        SCOPED_TRACE(path);
        Load("bearings.ttf");
        EXPECT_EQ(MeasuredWidth(text), 28U);
        EXPECT_EQ(surface.KivLoadFont(path, 40), path == TestFont("spaces.ttf") ? 32 : 31);
        EXPECT_EQ(MeasuredWidth(text), 60U);
        recorder::Record();
        ASSERT_EQ(surface.KivDrawText(FBO_HANDLE_BASE, text, {0, 0, 100, 40}), 0);
        EXPECT_EQ(Drawn(), Lines{"[0.784314 0.156863 0 1] 0)"});
    }
    ASSERT_EQ(surface.KivDestoryGLContext(), 0);
    for (const char* const kind : {"program", "buffer", "texture", "face", "library", "context"}) {
        EXPECT_THAT(recorder::Live(kind), IsEmpty()) << kind;
    }
}

TEST(MeasuringThreads, SeeOneFontOrNoneWhileFontsAndContextsComeAndGo) {
    const auto drawThread = std::make_shared<GLDrawThread>();
    ASSERT_EQ(drawThread->Init(), 0);
    std::thread loop(&GLDrawThread::DrawThread, drawThread);
    const auto Send = [&](TagCmd kind) {
        auto cmd = std::make_shared<DrawCmd>(kind);
        EXPECT_EQ(drawThread->SendCmdAndWaitResponse(cmd), 0);
    };
    const auto Draw = [&] {
        auto info = std::make_unique<TextInfo>();
        info->SetDstFbo({FBO_HANDLE_BASE, 0, 0, 64, 64});
        EXPECT_EQ(info->SetTextInfo(Request(u"A", STYLED)), 0);
        auto cmd = std::make_shared<DrawCmd>(CMD_DRAW_TEXT);
        cmd->SetTextInfo(info);
        drawThread->SendCmdToQueue(cmd);
    };

    std::atomic<bool> done{false};
    std::vector<std::thread> measurers;
    for (const TextStyle& style : {STANDARD, STYLED, TextStyle{80, true}}) {
        measurers.emplace_back([&, style] {
            while (!done) {
                unsigned int width = 0;
                unsigned int height = 0;
                const int status = drawThread->GetTextSize(Request(u"A", style), width, height);
                EXPECT_EQ(height, 50U);
                EXPECT_TRUE(width == 30 || (status == 0 && width == (style.bold ? 28U : 14U))) << width;
            }
        });
    }
    for (int i = 0; i < 5; ++i) {
        Send(CMD_CREATE_GL_CONTEXT);
        for (const char* const font : {"bearings.ttf", "outlines.otf"}) {
            drawThread->SetFontLibInfo(TestFont(font), 40);
            Send(CMD_LOAD_FONT);
            Draw();
        }
        Send(CMD_DESTROY_GL_CONTEXT);
    }
    done = true;
    for (std::thread& measurer : measurers) {
        measurer.join();
    }
    EXPECT_EQ(drawThread->DeInit(), 0);
    loop.join();
}

}  // namespace
}  // namespace kivgles
