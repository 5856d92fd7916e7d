#pragma once

#include "foundation/Scheduler.h"

#include <cstdint>

namespace tavrin::image {

/// Up to this many rows a loop runs on the calling thread: handing them out would cost more.
inline constexpr std::int64_t kLargestSerialHeight = 12;

/// Calls body(y) for every row of [0, height), in parallel where there are enough of them, and
/// waits for all.
template <class Body>
void forEachRow(std::int64_t height, const Body& body) {
    if (height > kLargestSerialHeight) {
        Scheduler::defaultInstance().parallelFor(0, height, TaskPriority::Normal, body);
        return;
    }
    for (std::int64_t y = 0; y < height; ++y) {
        body(y);
    }
}

}  // namespace tavrin::image
