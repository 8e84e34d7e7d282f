#ifndef KIVGLES_CLEAREDRECORD_H
#define KIVGLES_CLEAREDRECORD_H

#include <type_traits>

#include "bounds_checked.h"

namespace kivgles {

// A plain record of zero bits, padding included, for a conversion or look-up to fill.
template <typename Record>
Record ClearedRecord() {
    static_assert(std::is_trivially_copyable_v<Record>, "only plain records can be cleared bit by bit");
    Record record;
    (void)memset_s(&record, sizeof(record), 0, sizeof(record));  // cannot fail: both sizes are the record's
    return record;
}

}  // namespace kivgles

#endif  // KIVGLES_CLEAREDRECORD_H
