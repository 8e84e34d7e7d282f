// The layout that programs which are built already rely on, on a machine of 64 bits with GNU's or LLVM's C++
// library: the size of each public record, where each of its fields begins, and the size of the class.
// Nothing here runs. A change breaks those programs: raise the minor version in CMakeLists.txt, which raises
// the SOVERSION.

#include <cstddef>
#include <type_traits>

#include "kivgles/KivGLDrawSurface.h"

namespace kivgles {
namespace {

#define EXPECT_RECORD(Record, size) \
    static_assert(sizeof(Record) == (size) && std::is_standard_layout_v<Record> && std::is_trivial_v<Record>)
#define EXPECT_FIELD(Record, field, Type, offset) \
    static_assert(offsetof(Record, field) == (offset) && std::is_same_v<decltype(Record::field), Type>)
// A record of four fields of one type.
#define EXPECT_FOUR(Record, Type, first, second, third, fourth) \
    EXPECT_RECORD(Record, 4 * sizeof(Type));                    \
    EXPECT_FIELD(Record, first, Type, 0);                       \
    EXPECT_FIELD(Record, second, Type, sizeof(Type));           \
    EXPECT_FIELD(Record, third, Type, 2 * sizeof(Type));        \
    EXPECT_FIELD(Record, fourth, Type, 3 * sizeof(Type))

EXPECT_FOUR(TagKivRectInfo, std::uint32_t, x, y, width, height);
EXPECT_FOUR(TagKivRoundInfo, std::uint32_t, centerX, centerY, radiusX, radiusY);
EXPECT_FOUR(TagKivColorRGBA, std::uint8_t, r, g, b, a);
EXPECT_FOUR(TagGLRectInfo, float, x, y, width, height);
EXPECT_FOUR(TagGLRoundInfo, float, centerX, centerY, radiusX, radiusY);
EXPECT_FOUR(TagColorRGBA, float, r, g, b, a);

EXPECT_RECORD(TagKivTextInfo, 32);
EXPECT_FIELD(TagKivTextInfo, text, const char16_t*, 0);
EXPECT_FIELD(TagKivTextInfo, textLength, std::uint32_t, 8);
EXPECT_FIELD(TagKivTextInfo, fgColor, TagKivColorRGBA, 12);
EXPECT_FIELD(TagKivTextInfo, bgColor, TagKivColorRGBA, 16);
EXPECT_FIELD(TagKivTextInfo, reserved, std::uint8_t, 20);
EXPECT_FIELD(TagKivTextInfo, fontSize, std::uint32_t, 24);
EXPECT_FIELD(TagKivTextInfo, bold, std::uint8_t, 28);
EXPECT_FIELD(TagKivTextInfo, underline, std::uint8_t, 29);
EXPECT_FIELD(TagKivTextInfo, italic, std::uint8_t, 30);

EXPECT_RECORD(TagKivBitmapInfo, 48);
EXPECT_FIELD(TagKivBitmapInfo, data, const std::uint8_t*, 0);
EXPECT_FIELD(TagKivBitmapInfo, format, std::int32_t, 8);
EXPECT_FIELD(TagKivBitmapInfo, reserved1, std::uint32_t, 12);
EXPECT_FIELD(TagKivBitmapInfo, reserved2, std::uint32_t, 16);
EXPECT_FIELD(TagKivBitmapInfo, width, std::uint32_t, 20);
EXPECT_FIELD(TagKivBitmapInfo, height, std::uint32_t, 24);
EXPECT_FIELD(TagKivBitmapInfo, dstRect, TagKivRectInfo, 28);

EXPECT_RECORD(TagKivBlitInfo, 40);
EXPECT_FIELD(TagKivBlitInfo, srcFboHandle, std::uint32_t, 0);
EXPECT_FIELD(TagKivBlitInfo, dstFboHandle, std::uint32_t, 4);
EXPECT_FIELD(TagKivBlitInfo, srcRect, TagKivRectInfo, 8);
EXPECT_FIELD(TagKivBlitInfo, dstRect, TagKivRectInfo, 24);

EXPECT_RECORD(TagGLTextInfo, 56);
EXPECT_FIELD(TagGLTextInfo, text, const char16_t*, 0);
EXPECT_FIELD(TagGLTextInfo, textLength, std::uint32_t, 8);
EXPECT_FIELD(TagGLTextInfo, fgColor, TagColorRGBA, 12);
EXPECT_FIELD(TagGLTextInfo, bgColor, TagColorRGBA, 28);
EXPECT_FIELD(TagGLTextInfo, reserved, std::uint8_t, 44);
EXPECT_FIELD(TagGLTextInfo, fontSize, std::uint32_t, 48);
EXPECT_FIELD(TagGLTextInfo, bold, std::uint8_t, 52);
EXPECT_FIELD(TagGLTextInfo, underline, std::uint8_t, 53);
EXPECT_FIELD(TagGLTextInfo, italic, std::uint8_t, 54);

EXPECT_RECORD(TagGLBitmapInfo, 40);
EXPECT_FIELD(TagGLBitmapInfo, data, const std::uint8_t*, 0);
EXPECT_FIELD(TagGLBitmapInfo, dstRect, TagGLRectInfo, 8);
EXPECT_FIELD(TagGLBitmapInfo, width, std::uint32_t, 24);
EXPECT_FIELD(TagGLBitmapInfo, height, std::uint32_t, 28);
EXPECT_FIELD(TagGLBitmapInfo, glFormat, std::uint32_t, 32);
EXPECT_FIELD(TagGLBitmapInfo, blend, std::uint8_t, 36);

EXPECT_RECORD(TagFrameBuffObject, 20);
EXPECT_FIELD(TagFrameBuffObject, fboHandleIndex, std::uint32_t, 0);
EXPECT_FIELD(TagFrameBuffObject, textureId, std::uint32_t, 4);
EXPECT_FIELD(TagFrameBuffObject, fboId, std::uint32_t, 8);
EXPECT_FIELD(TagFrameBuffObject, width, std::int32_t, 12);
EXPECT_FIELD(TagFrameBuffObject, height, std::int32_t, 16);

EXPECT_RECORD(TagGLBlitInfo, 72);
EXPECT_FIELD(TagGLBlitInfo, srcFbo, TagFrameBuffObject, 0);
EXPECT_FIELD(TagGLBlitInfo, dstFbo, TagFrameBuffObject, 20);
EXPECT_FIELD(TagGLBlitInfo, srcRect, TagGLRectInfo, 40);
EXPECT_FIELD(TagGLBlitInfo, dstRect, TagGLRectInfo, 56);

// Programs hold the class by value: a shared pointer, a pointer, two sizes and a mutex, and no table of
// functions.
static_assert(sizeof(KivGLDrawSurface) == 4 * sizeof(void*) + sizeof(std::mutex));
static_assert(alignof(KivGLDrawSurface) == alignof(void*) && !std::is_polymorphic_v<KivGLDrawSurface>);

// What functions return, and that they throw nothing, which their exported names do not tell.
static_assert(std::is_nothrow_default_constructible_v<KivGLDrawSurface>);
using Surface = KivGLDrawSurface;
template <typename Result, typename... Arguments>
Result ResultOf(Result (Surface::*)(Arguments...) noexcept);
template <typename Result, typename... Arguments>
Result ResultOf(Result (Surface::*)(Arguments...) const noexcept);
template <typename Expected, auto... functions>
constexpr bool ALL_RETURN = (std::is_same_v<decltype(ResultOf(functions)), Expected> && ...);

static_assert(
    ALL_RETURN<int, &Surface::KivCreateGLContext, &Surface::KivDestoryGLContext, &Surface::Init,
               &Surface::KivConnectWindowSurface, &Surface::KivLoadFont, &Surface::KivRefreshOnSrceen,
               &Surface::KivCreateGLFBO, &Surface::KivDestoryGLFBO, &Surface::KivClearGLFBO,
               &Surface::KivDisplayFBO, &Surface::KivBlit, &Surface::KivDrawText, &Surface::KivGetTextSize,
               &Surface::KivDrawRect, &Surface::KivDrawRound, &Surface::KivDisplayBitmap,
               &Surface::KivDrawBitmap, &Surface::KivDrawBitmapByBlend>);
static_assert(ALL_RETURN<std::uint32_t, &Surface::KivGetWindowWidth, &Surface::KivGetWindowHeight,
                         &Surface::ConvertFormatToGLES>);

}  // namespace
}  // namespace kivgles
