#pragma once

#include "foundation/Flags.h"
#include "foundation/Scheduler.h"
#include "services/postcore/sharpening/ImageOperators.h"

#include <cstdint>

namespace tavrin::postcore {

/// Calls body(i) for every i from 0 to `count`, with the threads of the default scheduler or, as
/// the flags say, on the calling thread alone.
template <class Body>
void forEachRow(Flags<ImageOperatorsFlag> flags, std::int64_t count, const Body& body) {
    const auto run = [&body](std::int64_t from, std::int64_t to) {
        for (std::int64_t i = from; i < to; ++i) {
            body(static_cast<int>(i));
        }
    };
    if (flags.has(ImageOperatorsFlag::Parallel)) {
        constexpr int kRowsPerTask = 4;
        Scheduler::defaultInstance().parallelForRanges(0, count, kRowsPerTask, TaskPriority::Normal,
                                                       run);
    } else {
        run(0, count);
    }
}

}  // namespace tavrin::postcore
