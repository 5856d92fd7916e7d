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

void ParallelLoop::help() noexcept {
    {
        const std::lock_guard lock(mutex_);
        if (finished_) {
            return;
        }
        ++helpers_;
    }
    work();
    const std::lock_guard lock(mutex_);
    if (--helpers_ == 0) {
        helpersDone_.notify_one();
    }
}

void ParallelLoop::finish() {
    work();
    std::unique_lock lock(mutex_);
    finished_ = true;
    helpersDone_.wait(lock, [this] { return helpers_ == 0; });
    if (exception_) {
        std::rethrow_exception(exception_);
    }
}

void ParallelLoop::work() noexcept {
    try {
        for (std::int64_t range = next_++; range < ranges_; range = next_++) {
            run(range);
        }
    } catch (...) {
        next_ = ranges_;
        const std::lock_guard lock(mutex_);
        if (!exception_) {
            exception_ = std::current_exception();
        }
    }
}

void ParallelLoop::run(std::int64_t range) const {
    const std::int64_t from = begin_ + range * rangeSize_ + std::min(range, longerRanges_);
    body_(from, from + rangeSize_ + (range < longerRanges_ ? 1 : 0));
}

}  // namespace foundation
}  // namespace tavrin
