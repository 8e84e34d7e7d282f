// SDL2's renderer for OpenGL ES 2.0 and SDL2_ttf, as their documentation uses them: a line is rendered to a
// surface (from SDL2_ttf's cache of glyphs), made a texture, copied and dropped.

#include <array>
#include <cmath>
#include <map>

#include <SDL.h>
#include <SDL_syswm.h>
#include <SDL_ttf.h>

#include "Contestant.h"

namespace bench {

const char* const CONTESTANT_NAME = "sdl";

namespace {

SDL_Renderer* renderer;
SDL_Texture* layer;
std::string fontPath;
std::map<std::pair<unsigned int, bool>, TTF_Font*> fonts;  // one for each style: each has its cache

void Check(bool success) {
    if (!success) {
        Fail(SDL_GetError());
    }
}

SDL_Rect RectOf(const Box& box) { return {box.x, box.y, box.width, box.height}; }
SDL_Color ColorOf(const Color& color) { return {color.r, color.g, color.b, color.a}; }

TTF_Font* FontOf(unsigned int size, bool bold) {
    TTF_Font*& font = fonts[{size, bold}];
    if (font == nullptr) {
        font = TTF_OpenFont(fontPath.c_str(), static_cast<int>(size));
        Check(font != nullptr);
        TTF_SetFontKerning(font, 0);
        TTF_SetFontStyle(font, bold ? TTF_STYLE_BOLD : TTF_STYLE_NORMAL);
    }
    return font;
}

}  // namespace

unsigned long Start(unsigned long, int layerWidth, int layerHeight) {
    SDL_SetHint(SDL_HINT_RENDER_DRIVER, "opengles2");
    SDL_SetHint(SDL_HINT_OPENGL_ES_DRIVER, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_FORCE_EGL, "1");
    SDL_SetHint(SDL_HINT_RENDER_BATCHING, "1");
    Check(SDL_Init(SDL_INIT_VIDEO) == 0 && TTF_Init() == 0);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_ES);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 2);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 0);
    SDL_Window* const window = SDL_CreateWindow(CONTESTANT_NAME, 0, 0, WINDOW_WIDTH, WINDOW_HEIGHT,
                                                SDL_WINDOW_OPENGL | SDL_WINDOW_BORDERLESS);
    Check(window != nullptr);
    renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_ACCELERATED | SDL_RENDERER_TARGETTEXTURE);
    Check(renderer != nullptr);
    layer = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ABGR8888, SDL_TEXTUREACCESS_TARGET, layerWidth,
                              layerHeight);
    Check(layer != nullptr && SDL_SetTextureBlendMode(layer, SDL_BLENDMODE_BLEND) == 0);

    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    Check(SDL_GetWindowWMInfo(window, &info) == SDL_TRUE);
    return info.info.x11.window;
}

void LoadFont(const std::string& path) { fontPath = path; }

void BeginFrame() {
    Check(SDL_SetRenderTarget(renderer, layer) == 0);
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_NONE);
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 0);
    SDL_RenderClear(renderer);
}

void Draw(const Rect& rect) {
    const SDL_Rect box = RectOf(rect.box);
    SDL_SetRenderDrawColor(renderer, rect.color.r, rect.color.g, rect.color.b, rect.color.a);
    SDL_RenderFillRect(renderer, &box);
}

void Draw(const Round& round) {
    constexpr int EDGES = 36;
    static std::array<int, EDGES * 3> indices;
    std::array<SDL_Vertex, EDGES + 1> vertices{};
    const float radiusX = static_cast<float>(round.box.width) / 2.0F;
    const float radiusY = static_cast<float>(round.box.height) / 2.0F;
    const SDL_FPoint center{static_cast<float>(round.box.x) + radiusX,
                            static_cast<float>(round.box.y) + radiusY};
    vertices[EDGES] = {center, ColorOf(round.color), {}};
    for (int i = 0; i < EDGES; ++i) {
        const float angle = static_cast<float>(i) * 6.2831853F / EDGES;
        const auto k = static_cast<std::size_t>(i);
        vertices[k] = {{center.x + std::cos(angle) * radiusX, center.y + std::sin(angle) * radiusY},
                       ColorOf(round.color),
                       {}};
        indices[k * 3] = i;
        indices[k * 3 + 1] = (i + 1) % EDGES;
        indices[k * 3 + 2] = EDGES;
    }
    SDL_RenderGeometry(renderer, nullptr, vertices.data(), vertices.size(), indices.data(), indices.size());
}

void Draw(const Bitmap& bitmap) {
    const SDL_Rect box = RectOf(bitmap.box);
    SDL_Texture* const texture =
        SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ABGR8888, SDL_TEXTUREACCESS_STATIC, box.w, box.h);
    SDL_UpdateTexture(texture, nullptr, bitmap.rgba, box.w * 4);
    SDL_SetTextureBlendMode(texture, SDL_BLENDMODE_NONE);
    SDL_RenderCopy(renderer, texture, nullptr, &box);
    SDL_DestroyTexture(texture);
}

void Draw(const Line& line) {
    TTF_Font* const font = FontOf(line.size, line.bold);
    SDL_Surface* const surface = TTF_RenderUNICODE_Blended(
        font, reinterpret_cast<const Uint16*>(line.text.c_str()), ColorOf(line.color));
    Check(surface != nullptr);
    SDL_Texture* const texture = SDL_CreateTextureFromSurface(renderer, surface);
    const SDL_Rect box = {line.box.x,
                          line.box.y + line.box.height - BASELINE_ABOVE_BOTTOM - TTF_FontAscent(font),
                          surface->w, surface->h};
    SDL_RenderCopy(renderer, texture, nullptr, &box);
    SDL_DestroyTexture(texture);
    SDL_FreeSurface(surface);
}

void EndFrame() {
    SDL_SetRenderTarget(renderer, nullptr);
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 0);
    SDL_RenderClear(renderer);
    SDL_RenderCopy(renderer, layer, nullptr, nullptr);
    SDL_RenderPresent(renderer);
}

}  // namespace bench
