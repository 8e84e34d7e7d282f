// The layout that programs which are built already rely on, on a machine of 64 bits with GNU's or LLVM's C++
// library: the size of each public record, where each of its fields begins, and the size of the class.
// Nothing here runs. A change breaks those programs: raise the minor version in CMakeLists.txt, which raises
// the SOVERSION.

#include <cstddef>
#include <type_traits>

#include "kivgles/KivGLDrawSurface.h"

namespace kivgles {
namespace {

// Fields of 4 bytes, one after the other.
constexpr std::size_t FIELD = 4;

#define EXPECT_RECORD(Record, size) \
    static_assert(sizeof(Record) == (size) && std::is_standard_layout_v<Record> && std::is_trivial_v<Record>)
#define EXPECT_FIELD(Record, field, Type, offset) \
    static_assert(offsetof(Record, field) == (offset) && std::is_same_v<decltype(Record::field), Type>)

EXPECT_RECORD(TagKivRectInfo, 4 * FIELD);
EXPECT_FIELD(TagKivRectInfo, x, std::uint32_t, 0);
EXPECT_FIELD(TagKivRectInfo, y, std::uint32_t, 4);
EXPECT_FIELD(TagKivRectInfo, width, std::uint32_t, 8);
EXPECT_FIELD(TagKivRectInfo, height, std::uint32_t, 12);

EXPECT_RECORD(TagKivRoundInfo, 4 * FIELD);
EXPECT_FIELD(TagKivRoundInfo, centerX, std::uint32_t, 0);
EXPECT_FIELD(TagKivRoundInfo, centerY, std::uint32_t, 4);
EXPECT_FIELD(TagKivRoundInfo, radiusX, std::uint32_t, 8);
EXPECT_FIELD(TagKivRoundInfo, radiusY, std::uint32_t, 12);

EXPECT_RECORD(TagKivColorRGBA, 4);
EXPECT_FIELD(TagKivColorRGBA, r, std::uint8_t, 0);
EXPECT_FIELD(TagKivColorRGBA, g, std::uint8_t, 1);
EXPECT_FIELD(TagKivColorRGBA, b, std::uint8_t, 2);
EXPECT_FIELD(TagKivColorRGBA, a, std::uint8_t, 3);

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

EXPECT_RECORD(TagGLRectInfo, 4 * FIELD);
EXPECT_FIELD(TagGLRectInfo, x, float, 0);
EXPECT_FIELD(TagGLRectInfo, y, float, 4);
EXPECT_FIELD(TagGLRectInfo, width, float, 8);
EXPECT_FIELD(TagGLRectInfo, height, float, 12);

EXPECT_RECORD(TagGLRoundInfo, 4 * FIELD);
EXPECT_FIELD(TagGLRoundInfo, centerX, float, 0);
EXPECT_FIELD(TagGLRoundInfo, centerY, float, 4);
EXPECT_FIELD(TagGLRoundInfo, radiusX, float, 8);
EXPECT_FIELD(TagGLRoundInfo, radiusY, float, 12);

EXPECT_RECORD(TagColorRGBA, 4 * FIELD);
EXPECT_FIELD(TagColorRGBA, r, float, 0);
EXPECT_FIELD(TagColorRGBA, g, float, 4);
EXPECT_FIELD(TagColorRGBA, b, float, 8);
EXPECT_FIELD(TagColorRGBA, a, float, 12);

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

EXPECT_RECORD(TagFrameBuffObject, 5 * FIELD);
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

// What functions return, which their exported names do not tell.
template <typename Result, typename... Arguments>
Result ResultOf(Result (KivGLDrawSurface::*)(Arguments...));
template <typename Result, typename... Arguments>
Result ResultOf(Result (KivGLDrawSurface::*)(Arguments...) const);
#define EXPECT_RESULT(Type, function) \
    static_assert(std::is_same_v<decltype(ResultOf(&KivGLDrawSurface::function)), Type>)

EXPECT_RESULT(int, KivCreateGLContext);
EXPECT_RESULT(int, KivDestoryGLContext);
EXPECT_RESULT(int, KivConnectWindowSurface);
EXPECT_RESULT(int, Init);
EXPECT_RESULT(int, KivLoadFont);
EXPECT_RESULT(std::uint32_t, KivGetWindowWidth);
EXPECT_RESULT(std::uint32_t, KivGetWindowHeight);
EXPECT_RESULT(int, KivRefreshOnSrceen);
EXPECT_RESULT(int, KivCreateGLFBO);
EXPECT_RESULT(int, KivDestoryGLFBO);
EXPECT_RESULT(int, KivClearGLFBO);
EXPECT_RESULT(int, KivDisplayFBO);
EXPECT_RESULT(int, KivBlit);
EXPECT_RESULT(int, KivDrawText);
EXPECT_RESULT(int, KivGetTextSize);
EXPECT_RESULT(int, KivDrawRect);
EXPECT_RESULT(int, KivDrawRound);
EXPECT_RESULT(int, KivDisplayBitmap);
EXPECT_RESULT(int, KivDrawBitmap);
EXPECT_RESULT(int, KivDrawBitmapByBlend);
EXPECT_RESULT(std::uint32_t, ConvertFormatToGLES);

}  // namespace
}  // namespace kivgles
