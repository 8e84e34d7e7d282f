// What programs that are built already rely on, on a machine of 64 bits with GNU's or LLVM's C++ library: the
// size of each public record, where each of its fields begins, the size of the class, and its functions.
// Nothing here runs. What no longer compiles or links breaks those programs: raise the minor version in
// CMakeLists.txt, which raises the SOVERSION.

#include <cstddef>
#include <initializer_list>
#include <type_traits>

#include "kivgles/KivGLDrawSurface.h"

using namespace kivgles;
using U8 = std::uint8_t;
using U32 = std::uint32_t;

// A record's name, its size, and its fields.
#define EXPECT_RECORD(Name, size, ...)                                                      \
    static_assert([] {                                                                      \
        using Record = Name;                                                                \
        return std::is_standard_layout_v<Record> && std::is_trivially_copyable_v<Record> && \
               sizeof(Record) == (size) && std::conjunction_v<__VA_ARGS__>;                 \
    }())
// A field: where it begins, its type and its name.
#define AT(offset, Type, field) \
    std::bool_constant<offsetof(Record, field) == (offset) && std::is_same_v<decltype(Record::field), Type>>

EXPECT_RECORD(TagKivRectInfo, 16, AT(0, U32, x), AT(4, U32, y), AT(8, U32, width), AT(12, U32, height));
EXPECT_RECORD(TagKivRoundInfo, 16, AT(0, U32, centerX), AT(4, U32, centerY), AT(8, U32, radiusX),
              AT(12, U32, radiusY));
EXPECT_RECORD(TagKivColorRGBA, 4, AT(0, U8, r), AT(1, U8, g), AT(2, U8, b), AT(3, U8, a));
EXPECT_RECORD(TagKivTextInfo, 32, AT(0, const char16_t*, text), AT(8, U32, textLength),
              AT(12, TagKivColorRGBA, fgColor), AT(16, TagKivColorRGBA, bgColor), AT(20, U8, reserved),
              AT(24, U32, fontSize), AT(28, U8, bold), AT(29, U8, underline), AT(30, U8, italic));
EXPECT_RECORD(TagKivBitmapInfo, 48, AT(0, const U8*, data), AT(8, std::int32_t, format),
              AT(12, U32, reserved1), AT(16, U32, reserved2), AT(20, U32, width), AT(24, U32, height),
              AT(28, TagKivRectInfo, dstRect));
EXPECT_RECORD(TagKivBlitInfo, 40, AT(0, U32, srcFboHandle), AT(4, U32, dstFboHandle),
              AT(8, TagKivRectInfo, srcRect), AT(24, TagKivRectInfo, dstRect));

EXPECT_RECORD(TagKivDisplayInfo, 16, AT(0, int, platform), AT(8, void*, nativeDisplay));

EXPECT_RECORD(TagGLRectInfo, 16, AT(0, float, x), AT(4, float, y), AT(8, float, width),
              AT(12, float, height));
EXPECT_RECORD(TagGLRoundInfo, 16, AT(0, float, centerX), AT(4, float, centerY), AT(8, float, radiusX),
              AT(12, float, radiusY));
EXPECT_RECORD(TagColorRGBA, 16, AT(0, float, r), AT(4, float, g), AT(8, float, b), AT(12, float, a));
EXPECT_RECORD(TagGLTextInfo, 56, AT(0, const char16_t*, text), AT(8, U32, textLength),
              AT(12, TagColorRGBA, fgColor), AT(28, TagColorRGBA, bgColor), AT(44, U8, reserved),
              AT(48, U32, fontSize), AT(52, U8, bold), AT(53, U8, underline), AT(54, U8, italic));
EXPECT_RECORD(TagGLBitmapInfo, 40, AT(0, const U8*, data), AT(8, TagGLRectInfo, dstRect), AT(24, U32, width),
              AT(28, U32, height), AT(32, U32, glFormat), AT(36, U8, blend));
EXPECT_RECORD(TagFrameBuffObject, 20, AT(0, U32, fboHandleIndex), AT(4, U32, textureId), AT(8, U32, fboId),
              AT(12, std::int32_t, width), AT(16, std::int32_t, height));
EXPECT_RECORD(TagGLBlitInfo, 72, AT(0, TagFrameBuffObject, srcFbo), AT(20, TagFrameBuffObject, dstFbo),
              AT(40, TagGLRectInfo, srcRect), AT(56, TagGLRectInfo, dstRect));

// Programs hold the class by value: a shared pointer, a pointer, two sizes and a mutex, and no table of
// functions.
static_assert(sizeof(KivGLDrawSurface) == 4 * sizeof(void*) + sizeof(std::mutex));
static_assert(alignof(KivGLDrawSurface) == alignof(void*) && !std::is_polymorphic_v<KivGLDrawSurface>);

// The functions, each called by a name that is made of its arguments: a program that finds all of them is
// linked.
using Surface = KivGLDrawSurface;
template <typename Function>
void Find(std::initializer_list<Function Surface::*> functions) {
    for (Function Surface::*volatile found : functions) {
        (void)found;
    }
}

int main() {
    using Rect = TagKivRectInfo;
    using Bitmap = TagKivBitmapInfo;
    Surface surface;
    Find<int() noexcept>(
        {&Surface::KivCreateGLContext, &Surface::KivDestoryGLContext, &Surface::KivRefreshOnSrceen});
    Find<int(const TagKivDisplayInfo&) noexcept>({&Surface::KivCreateGLContextOn});
    Find<int(ANativeWindow*) noexcept>({&Surface::KivConnectWindowSurface});
    Find<int(U32) noexcept>({&Surface::Init, &Surface::KivDestoryGLFBO, &Surface::KivClearGLFBO});
    Find<int(const std::string&, U32) noexcept>({&Surface::KivLoadFont});
    Find<int(U32&, U32, U32, int) noexcept>({&Surface::KivCreateGLFBO});
    Find<int(U32, const Rect&, const Rect&) noexcept>({&Surface::KivDisplayFBO});
    Find<int(const TagKivBlitInfo&) noexcept>({&Surface::KivBlit});
    Find<int(U32, const TagKivTextInfo&, const Rect&) noexcept>({&Surface::KivDrawText});
    Find<int(const TagKivTextInfo&, U32&, U32&) noexcept>({&Surface::KivGetTextSize});
    Find<int(U32, const Rect&, const TagKivColorRGBA&) noexcept>({&Surface::KivDrawRect});
    Find<int(U32, const TagKivRoundInfo&, const TagKivColorRGBA&) noexcept>({&Surface::KivDrawRound});
    Find<int(const Bitmap&) noexcept>({&Surface::KivDisplayBitmap});
    Find<int(U32, const Bitmap&) noexcept>({&Surface::KivDrawBitmap, &Surface::KivDrawBitmapByBlend});
    Find<U32() const noexcept>({&Surface::KivGetWindowWidth, &Surface::KivGetWindowHeight});
    Find<U32(int) const noexcept>({&Surface::ConvertFormatToGLES});
    Find<void(const Rect&, TagGLRectInfo&, U32, U32) const noexcept>(
        {&Surface::ScreenCoordToVCoord, &Surface::ScreenCoordToFboCoord});
    Find<void(const TagKivRoundInfo&, TagGLRoundInfo&, U32, U32) const noexcept>(
        {&Surface::ScreenCoordToVCoord});
    Find<void(const TagKivColorRGBA&, TagColorRGBA&) const noexcept>({&Surface::ConvertGLColor});
    Find<void(const TagKivTextInfo&, TagGLTextInfo&) const noexcept>({&Surface::SetTextInfo});
    Find<void(TagGLBitmapInfo&, const Bitmap&, U32, U32) const noexcept>({&Surface::SetBitmapInfo});
}
