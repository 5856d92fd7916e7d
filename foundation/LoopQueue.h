#pragma once

#include "foundation/ParallelLoop.h"

#include <tbb/task_arena.h>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace tavrin {
inline namespace foundation {

/// The loops of one priority that want help, and the threads of the pool that help them. A loop's
/// caller does whatever nobody helps with, and waits only for helpers that have begun: a loop ends
/// although the whole pool may be waiting for a lock that the caller holds. Any thread may call.
/// Lives until the process ends, as tasks that nobody has got round to still refer to it.
class LoopQueue {
public:
    explicit LoopQueue(tbb::task_arena::priority priority);

    /// Works on the loop, with up to so many threads of the pool, until it has ended.
    void run(ParallelLoop& loop, std::int64_t helpers);

    /// What the pool's threads take on before they help.
    void setThreadsPriority(int priority) { threadsPriority_ = priority; }

private:
    struct Job {
        ParallelLoop& loop;
        int helpers;  // threads of the pool that work on it, guarded by mutex_
    };

    void requestHelp();
    void help() noexcept;

    tbb::task_arena arena_;
    std::atomic<int> threadsPriority_ = 0;
    std::mutex mutex_;
    std::condition_variable helpersDone_;
    std::deque<Job*> wanted_;  // one entry for each helper that is still wanted, guarded by mutex_
};

}  // namespace foundation
}  // namespace tavrin
