#pragma once

#include "foundation/Function.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>

namespace tavrin {
inline namespace foundation {

/// One running loop of the Scheduler, shared by its caller and the pool's threads that help it.
/// Each takes the next range until none is left. The caller does whatever nobody helps with, and
/// waits only for helpers that have begun: a loop ends although the whole pool may be waiting for
/// a lock that the caller holds.
class ParallelLoop {
public:
    using Body = Function<void(std::int64_t, std::int64_t)>;

    /// Divides [begin, end) evenly into `ranges`, of which there are no more than indices. The body
    /// must live until finish() returns.
    ParallelLoop(std::int64_t begin, std::int64_t end, std::int64_t ranges, const Body& body);

    /// Called on any thread at any time, also when the loop has long ended.
    void help() noexcept;
    /// Called once, by the caller: works along, waits for the helpers and throws the first
    /// exception of a body.
    void finish();

private:
    void work() noexcept;
    void run(std::int64_t range) const;

    const std::int64_t begin_;
    const std::int64_t ranges_;
    const std::int64_t rangeSize_;
    const std::int64_t longerRanges_;  // the first ones, which have one index more
    const Body& body_;
    std::atomic<std::int64_t> next_ = 0;

    std::mutex mutex_;
    std::condition_variable helpersDone_;
    int helpers_ = 0;               // guarded by mutex_
    bool finished_ = false;         // guarded by mutex_
    std::exception_ptr exception_;  // guarded by mutex_
};

}  // namespace foundation
}  // namespace tavrin
