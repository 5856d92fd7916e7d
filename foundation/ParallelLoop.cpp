#include "foundation/ParallelLoop.h"

#include <algorithm>

namespace tavrin {
inline namespace foundation {

ParallelLoop::ParallelLoop(std::int64_t begin, std::int64_t end, std::int64_t ranges,
                           const Body& body)
    : begin_(begin),
      ranges_(ranges),
      rangeSize_((end - begin) / ranges),
      longerRanges_((end - begin) % ranges),
      body_(body) {}

void ParallelLoop::work() noexcept {
    try {
        for (std::int64_t range = next_++; range < ranges_; range = next_++) {
            run(range);
        }
    } catch (...) {
        next_ = ranges_;
        if (!failed_.exchange(true)) {
            failure_ = std::current_exception();
        }
    }
}

void ParallelLoop::throwFailure() const {
    if (failure_) {
        std::rethrow_exception(failure_);
    }
}

void ParallelLoop::run(std::int64_t range) const {
    const std::int64_t from = begin_ + range * rangeSize_ + std::min(range, longerRanges_);
    body_(from, from + rangeSize_ + (range < longerRanges_ ? 1 : 0));
}

}  // namespace foundation
}  // namespace tavrin
