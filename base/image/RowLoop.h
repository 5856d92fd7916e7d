#pragma once

#include "foundation/Geometry.h"
#include "foundation/Scheduler.h"

#include <algorithm>
#include <cstdint>

namespace tavrin::image {

/// Calls body(y) for every row of a plane of pixels, in parallel where there is enough to do, and
/// waits for all. Up to 12 rows, and planes of a few thousand pixels, run on the calling thread:
/// handing them out would cost more.
template <class Body>
void forEachRow(Pixel size, const Body& body) {
    constexpr int kLargestSerialHeight = 12;
    constexpr int kPixelsPerTask = 32768;
    const auto run = [&body](std::int64_t from, std::int64_t to) {
        for (std::int64_t y = from; y < to; ++y) {
            body(static_cast<int>(y));
        }
    };
    if (size.y <= kLargestSerialHeight) {
        run(0, size.y);
        return;
    }
    const std::int64_t rowsPerTask = kPixelsPerTask / std::max(size.x, 1) + 1;
    Scheduler::defaultInstance().parallelForRanges(0, size.y, rowsPerTask, TaskPriority::Normal,
                                                   run);
}

}  // namespace tavrin::image
