#include "osd/OSDRect.h"

#include <array>

#include "gl/RendererProgram.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "OSDRect";

constexpr std::size_t RECT_VERTEX_NUM = 6;

std::array<FlatVertex, RECT_VERTEX_NUM> RectVertices(const TagGLRectInfo& rect) {
    const float right = rect.x + rect.width;
    const float bottom = rect.y - rect.height;
    return {{{rect.x, rect.y},
             {right, rect.y},
             {rect.x, bottom},
             {right, bottom},
             {rect.x, bottom},
             {right, rect.y}}};
}

}  // namespace

OSDRect::~OSDRect() { DeleteRendererProgram(shaderProgram, shape.program, shape.vbo); }

int OSDRect::Init() { return InitFlatShape(TAG, shaderProgram, shape); }

void OSDRect::DrawRect(const TagFrameBuffObject& fbo, const TagGLRectInfo& rect,
                       const TagColorRGBA& color) const {
    const auto vertices = RectVertices(rect);
    DrawFlatShape(shape, fbo, color, GL_TRIANGLES, vertices.data(), vertices.size());
}

}  // namespace kivgles
