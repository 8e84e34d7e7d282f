#include "osd/OSDRound.h"

#include <array>

#include <math.h>  // sincosf is not in <cmath>

#include "gl/RendererProgram.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "OSDRound";

constexpr double PI = 3.141592653589793;
constexpr std::size_t RIM_POINT_NUM = 37;  // every 10 degrees, the first again as the last
constexpr std::size_t ROUND_VERTEX_NUM = 1 + RIM_POINT_NUM;

std::array<FlatVertex, ROUND_VERTEX_NUM> RoundVertices(const TagGLRoundInfo& round) {
    std::array<FlatVertex, ROUND_VERTEX_NUM> vertices{};
    vertices[0] = {round.centerX, round.centerY};
    for (std::size_t i = 0; i < RIM_POINT_NUM; ++i) {
        const auto angle = static_cast<float>(static_cast<double>(2 * i) * PI / 36);
        float sine = 0.0F;
        float cosine = 0.0F;
        sincosf(angle, &sine, &cosine);
        vertices[1 + i] = {round.centerX + cosine * round.radiusX, round.centerY + sine * round.radiusY};
    }
    return vertices;
}

}  // namespace

OSDRound::~OSDRound() { DeleteRendererProgram(shaderProgram, shape.program, shape.vbo); }

int OSDRound::Init() { return InitFlatShape(TAG, shaderProgram, shape); }

void OSDRound::DrawRound(const TagFrameBuffObject& fbo, const TagGLRoundInfo& round,
                         const TagColorRGBA& color) const {
    const auto vertices = RoundVertices(round);
    DrawFlatShape(shape, fbo, color, GL_TRIANGLE_FAN, vertices.data(), vertices.size());
}

}  // namespace kivgles
