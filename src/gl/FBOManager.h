#ifndef KIVGLES_GL_FBOMANAGER_H
#define KIVGLES_GL_FBOMANAGER_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "kivgles/KivGLRecords.h"

namespace kivgles {

constexpr std::size_t FBO_MAX_NUM = 16;                // slots, the window's included
constexpr std::uint32_t FBO_HANDLE_FREE = 0xFFFFFFFF;  // handle index of a free slot or an unset record

constexpr TagFrameBuffObject UNSET_FBO{FBO_HANDLE_FREE, 0, 0, 0, 0};
constexpr TagColorRGBA TRANSPARENT_BLACK{0.0F, 0.0F, 0.0F, 0.0F};

// The table of render targets: the window in slot 0, layers in slots 1 to 15.
//
// Owner:  GLDrawThread; owns the textures and framebuffers of slots 1 to 15.
// Thread: draw thread, GL context current; GetFBOInst also on client threads while nothing changes the table
//         (GLDrawThread sees to that). The destructor's GL calls do nothing once the context is gone.
// Units:  pixels.
class FBOManager {
 public:
    // With the window's size. Makes no GL call.
    FBOManager(int width, int height);
    ~FBOManager();

    FBOManager(const FBOManager&) = delete;
    FBOManager& operator=(const FBOManager&) = delete;

    // Makes a transparent layer in the lowest free slot. `handleIndex` receives its handle index, or with
    // `useGivenHandle` gives it (unchecked). A size or format that GL refuses is only logged.
    // Returns 0, STATUS_FBO_TABLE_FULL or STATUS_NO_TEXTURE; after a failure the table is as before.
    int GLCreateFBO(unsigned int& handleIndex, int width, int height, int format, bool useGivenHandle);

    // Fills the whole target. Works on any record, the window's included.
    void ClearFBOTex(const TagFrameBuffObject& fbo, const TagColorRGBA& color) const;

    // Copies the record with that handle index; false, and `fbo` as it was, if there is none.
    bool GetFBOInst(unsigned int handleIndex, TagFrameBuffObject& fbo) const;

    // Frees a layer; an unknown handle index, or the window's, is logged.
    void GLDestoryFBO(unsigned int handleIndex);

    // Sets a record to the free state.
    void InitFBO(TagFrameBuffObject& fbo) const;

    // Takes the size of another window that was connected.
    void UpdateSurfaceWidthHeight(int width, int height);

 private:
    // The layer with that handle index, slot 0 left out; null if there is none.
    TagFrameBuffObject* FindLayer(unsigned int handleIndex);

    std::array<TagFrameBuffObject, FBO_MAX_NUM> fbos;
};

}  // namespace kivgles

#endif  // KIVGLES_GL_FBOMANAGER_H
