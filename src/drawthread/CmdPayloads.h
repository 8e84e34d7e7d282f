#ifndef KIVGLES_DRAWTHREAD_CMDPAYLOADS_H
#define KIVGLES_DRAWTHREAD_CMDPAYLOADS_H

#include <cstdint>

#include "gl/FBOManager.h"
#include "kivgles/KivGLRecords.h"

// What a DrawCmd carries. Each payload belongs to its command; the sender fills it before the command is
// queued, the draw thread reads it afterwards. Setters copy the whole record, getters refer to the member.
// Destinations are in NDC of their target, sources in texture coordinates.

namespace kivgles {

// A rectangle to fill.
class RectInfo {
 public:
    void SetDstFbo(const TagFrameBuffObject& fbo) { dstFbo = fbo; }
    const TagFrameBuffObject& GetDstFbo() const { return dstFbo; }
    void SetDstRect(const TagGLRectInfo& rect) { dstRect = rect; }
    const TagGLRectInfo& GetDstRect() const { return dstRect; }
    void SetRectColor(const TagColorRGBA& color) { rectColor = color; }
    const TagColorRGBA& GetRectColor() const { return rectColor; }

 private:
    TagFrameBuffObject dstFbo = UNSET_FBO;
    TagGLRectInfo dstRect{};
    TagColorRGBA rectColor{};
};

// A round to fill.
class RoundInfo {
 public:
    void SetDstFbo(const TagFrameBuffObject& fbo) { dstFbo = fbo; }
    const TagFrameBuffObject& GetDstFbo() const { return dstFbo; }
    void SetDstRound(const TagGLRoundInfo& round) { dstRound = round; }
    const TagGLRoundInfo& GetDstRound() const { return dstRound; }
    void SetRoundColor(const TagColorRGBA& color) { roundColor = color; }
    const TagColorRGBA& GetRoundColor() const { return roundColor; }

 private:
    TagFrameBuffObject dstFbo = UNSET_FBO;
    TagGLRoundInfo dstRound{};
    TagColorRGBA roundColor{};
};

constexpr std::uint32_t TEXT_MAX_LEN = 127;  // units of one text

// A line of text to draw, with a copy of its characters.
class TextInfo {
 public:
    TextInfo() = default;

    // The text record points into the object.
    TextInfo(const TextInfo&) = delete;
    TextInfo& operator=(const TextInfo&) = delete;

    void SetDstFbo(const TagFrameBuffObject& fbo) { dstFbo = fbo; }
    const TagFrameBuffObject& GetDstFbo() const { return dstFbo; }
    void SetDstRect(const TagGLRectInfo& rect) { dstRect = rect; }
    const TagGLRectInfo& GetDstRect() const { return dstRect; }

    // Copies the request and its text, cut to TEXT_MAX_LEN units. The caller's text is not read past its
    // ending 0, nor past its length unless it is cut.
    // Returns 0, or STATUS_INVALID when there is no text to copy; the record then stays as it was.
    int SetTextInfo(const TagGLTextInfo& info);
    // Its `text` points at this object's copy, null before SetTextInfo succeeded.
    const TagGLTextInfo& GetTextInfo() const { return glTextInfo; }
    void SetFgColor(const TagColorRGBA& color) { glTextInfo.fgColor = color; }
    void SetBgColor(const TagColorRGBA& color) { glTextInfo.bgColor = color; }

 private:
    TagFrameBuffObject dstFbo = UNSET_FBO;
    TagGLRectInfo dstRect{};  // the text uses its x and y: the pen's start on the baseline
    char16_t textBuf[TEXT_MAX_LEN + 1]{};
    TagGLTextInfo glTextInfo{};
};

// A region of one render target to draw on another, or (without dstFbo) on the window.
class BlitInfo {
 public:
    void SetSrcFbo(const TagFrameBuffObject& fbo) { srcFbo = fbo; }
    const TagFrameBuffObject& GetSrcFbo() const { return srcFbo; }
    void SetDstFbo(const TagFrameBuffObject& fbo) { dstFbo = fbo; }
    const TagFrameBuffObject& GetDstFbo() const { return dstFbo; }
    void SetSrcRect(const TagGLRectInfo& rect) { srcRect = rect; }
    const TagGLRectInfo& GetSrcRect() const { return srcRect; }
    void SetDstRect(const TagGLRectInfo& rect) { dstRect = rect; }
    const TagGLRectInfo& GetDstRect() const { return dstRect; }

 private:
    TagFrameBuffObject srcFbo = UNSET_FBO;
    TagFrameBuffObject dstFbo = UNSET_FBO;
    TagGLRectInfo srcRect{};
    TagGLRectInfo dstRect{};
};

}  // namespace kivgles

#endif  // KIVGLES_DRAWTHREAD_CMDPAYLOADS_H
