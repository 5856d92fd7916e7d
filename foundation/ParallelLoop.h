#pragma once

#include "foundation/Function.h"

#include <atomic>
#include <cstdint>
#include <exception>

namespace tavrin {
inline namespace foundation {

/// The indices of one loop, divided into ranges that threads take one after the other until none is
/// left.
class ParallelLoop {
public:
    using Body = Function<void(std::int64_t, std::int64_t)>;

    /// Divides [begin, end) evenly into `ranges`, of which there are no more than indices. The body
    /// outlives the loop.
    ParallelLoop(std::int64_t begin, std::int64_t end, std::int64_t ranges, const Body& body);

    /// Takes ranges until none is left. Called by every thread that takes part. An exception of the
    /// body leaves no ranges for anybody.
    void work() noexcept;

    /// Throws the first exception of the body. Called after all threads have ended work().
    void throwFailure() const;

private:
    void run(std::int64_t range) const;

    const std::int64_t begin_;
    const std::int64_t ranges_;
    const std::int64_t rangeSize_;
    const std::int64_t longerRanges_;  // the first ones, which have one index more
    const Body& body_;
    std::atomic<std::int64_t> next_ = 0;
    std::atomic<bool> failed_ = false;
    std::exception_ptr failure_;  // written by the one thread that sets failed_
};

}  // namespace foundation
}  // namespace tavrin
