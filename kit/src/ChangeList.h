#ifndef KIVGLES_KIT_CHANGELIST_H
#define KIVGLES_KIT_CHANGELIST_H

#include <cstdint>
#include <vector>

#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

inline bool IsEmpty(const PixelRect& rect) { return rect.width <= 0 || rect.height <= 0; }

// Which parts of a picture have changed since when. Any number of receivers take the picture over, each in
// its own time; all that one of them keeps is the revision that it has.
//
// Owner, thread: CanvasState's.
class ChangeList {
 public:
    // Grows with each change. Who asks has all that there is by now, or is about to take it over.
    std::uint64_t Revision() { return received = revision; }

    // What is not empty, and inside of the picture.
    void Add(const PixelRect& rect);

    // Disjoint; never less than what has changed after `since`, and sometimes more.
    std::vector<PixelRect> Since(std::uint64_t since);

 private:
    struct Change {
        PixelRect rect;
        std::uint64_t revision;  // of the last change in there
    };

    bool IsNew(const Change& change) const { return change.revision > received; }
    void MergeTwo();

    std::vector<Change> changes;  // the oldest first
    std::uint64_t revision = 0;
    std::uint64_t received = 0;  // by the foremost receiver
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_CHANGELIST_H
