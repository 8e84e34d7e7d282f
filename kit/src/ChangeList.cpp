#include "ChangeList.h"

#include <algorithm>
#include <cstddef>

#include "Handle.h"

namespace kivgles::kit {

namespace {

constexpr std::size_t MAX_CHANGES = 16;
constexpr std::int64_t NO_COST = -(std::int64_t{1} << 40);  // less than any difference of areas

std::int64_t Area(const PixelRect& rect) { return std::int64_t{rect.width} * rect.height; }

PixelRect Around(const PixelRect& a, const PixelRect& b) {
    const int left = std::min(a.x, b.x);
    const int top = std::min(a.y, b.y);
    return {left, top, std::max(a.x + a.width, b.x + b.width) - left,
            std::max(a.y + a.height, b.y + b.height) - top};
}

bool Holds(const PixelRect& outer, const PixelRect& inner) {
    return Area(Around(outer, inner)) == Area(outer);
}

}  // namespace

void ChangeList::Add(const PixelRect& rect) {
    ++revision;
    // What nobody has yet may as well be part of something else that nobody has.
    const auto around = std::find_if(changes.begin(), changes.end(), [&](const Change& change) {
        return IsNew(change) && Holds(change.rect, rect);
    });
    const PixelRect added = around == changes.end() ? rect : around->rect;
    const auto covered = [&added](const Change& change) { return Holds(added, change.rect); };
    changes.erase(std::remove_if(changes.begin(), changes.end(), covered), changes.end());
    changes.push_back({added, revision});
    if (changes.size() > MAX_CHANGES) {
        MergeTwo();
    }
}

// The two that cost the foremost receiver least: of two changes that it has, nothing; of others the pixels
// that it would be handed without need, those of an older change that it has among them.
void ChangeList::MergeTwo() {
    std::size_t older = 0;
    std::size_t newer = 1;
    std::int64_t least = INT64_MAX;
    for (std::size_t j = 1; j < changes.size(); ++j) {
        for (std::size_t i = 0; i < j; ++i) {
            const std::int64_t cost = Area(Around(changes[i].rect, changes[j].rect)) -
                                      (IsNew(changes[i]) ? Area(changes[i].rect) : 0) +
                                      (IsNew(changes[j]) ? -Area(changes[j].rect) : NO_COST);
            if (cost < least) {
                least = cost;
                older = i;
                newer = j;
            }
        }
    }
    changes[newer].rect = Around(changes[older].rect, changes[newer].rect);
    changes.erase(changes.begin() + static_cast<std::ptrdiff_t>(older));
}

std::vector<PixelRect> ChangeList::Since(std::uint64_t since) {
    received = revision;
    const Handle<cairo_region_t> region(cairo_region_create());
    for (const auto& [rect, changed] : changes) {
        const cairo_rectangle_int_t part = {rect.x, rect.y, rect.width, rect.height};
        if (changed > since) {
            (void)cairo_region_union_rectangle(region.get(), &part);
        }
    }
    std::vector<PixelRect> disjoint;
    for (int i = 0; i < cairo_region_num_rectangles(region.get()); ++i) {
        cairo_rectangle_int_t part;
        cairo_region_get_rectangle(region.get(), i, &part);
        disjoint.push_back({part.x, part.y, part.width, part.height});
    }
    return disjoint;
}

}  // namespace kivgles::kit
