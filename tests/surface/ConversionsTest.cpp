#include <gmock/gmock.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"
#include "surface/ResultCode.h"

namespace kivgles {
namespace {

using testing::ElementsAre;
using Four = std::array<float, 4>;
using Lines = std::vector<std::string>;

Four Fields(const TagGLRectInfo& rect) { return {rect.x, rect.y, rect.width, rect.height}; }
Four Fields(const TagGLRoundInfo& round) {
    return {round.centerX, round.centerY, round.radiusX, round.radiusY};
}

class Conversions : public testing::Test {
 protected:
    void SetUp() override { recorder::Reset(); }

    // A rectangle, as a destination, a source and the point and spans of a round, converted over `before`.
    std::array<Four, 3> Convert(const TagKivRectInfo& in, unsigned int width, unsigned int height,
                                float before) const {
        TagGLRectInfo destination{before, before, before, before};
        TagGLRectInfo source = destination;
        TagGLRoundInfo round{before, before, before, before};
        surface.ScreenCoordToVCoord(in, destination, width, height);
        surface.ScreenCoordToFboCoord(in, source, width, height);
        surface.ScreenCoordToVCoord({in.x, in.y, in.width, in.height}, round, width, height);
        return {Fields(destination), Fields(source), Fields(round)};
    }

    const KivGLDrawSurface surface;
};

TEST_F(Conversions, GeometryIsScaledByItsTargetAndNeverClamped) {
    constexpr std::uint32_t HIGH = 0x80000000;
    struct Case {
        const char* name;
        TagKivRectInfo rect;
        unsigned int width, height;
        Four ndc, texture;
    };
    const Case cases[] = {
        {"whole target", {0, 0, 1920, 1080}, 1920, 1080, {-1, 1, 2, 2}, {0, 1, 1, 1}},
        {"centre point", {960, 540, 0, 0}, 1920, 1080, {0, 0, 0, 0}, {0.5F, 0.5F, 0, 0}},
        {"axes apart", {16, 4, 32, 2}, 64, 8, {-0.5F, 0, 1, 0.5F}, {0.25F, 0.5F, 0.5F, 0.25F}},
        {"off target", {3840, 2160, 1920, 1080}, 1920, 1080, {3, -3, 2, 2}, {2, -1, 1, 1}},
        {"high",
         {HIGH, ~0U, HIGH, HIGH},
         1,
         1,
         {0x1p32F, -0x1p33F, 0x1p32F, 0x1p32F},
         {0x1p31F, -0x1p32F, 0x1p31F, 0x1p31F}},
        {"high target", {HIGH, 0, HIGH, HIGH}, HIGH, HIGH, {1, 1, 2, 2}, {1, 1, 1, 1}},
    };
    for (const Case& test : cases) {
        EXPECT_THAT(Convert(test.rect, test.width, test.height, 5),
                    ElementsAre(test.ndc, test.texture, test.ndc))
            << test.name;
    }
    EXPECT_EQ(recorder::Log(), Lines());
    for (const auto& [width, height] : {std::pair(0U, 5U), {5U, 0U}, {0U, 0U}}) {
        recorder::Reset();
        const Four before{5, 5, 5, 5};
        EXPECT_THAT(Convert({9, 9, 9, 9}, width, height, 5), ElementsAre(before, before, before));
        EXPECT_EQ(recorder::Log(), Lines(3, "E KivGLDrawSurface: param is invalid\n"));
    }
}

TEST(ResultCodes, TranslateEveryStatus) {
    for (const int same : {0, 1, 2, 3, 4, 5, 6, 10, 13, 14, 15, 20, 21, 30, 31, 32, 100}) {
        EXPECT_EQ(TranslateResult(same), same);
    }
    for (const auto& [status, code] : {std::pair(12, 11),
                                       {40, 50},
                                       {101, 103},
                                       {102, 101},
                                       {7, 100},
                                       {11, 100},
                                       {50, 100},
                                       {103, 100},
                                       {-1, 100}}) {
        EXPECT_EQ(TranslateResult(status), code);
    }
}

}  // namespace
}  // namespace kivgles
