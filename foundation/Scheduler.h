#pragma once

#include "foundation/Function.h"

#include <cstdint>
#include <memory>

namespace tavrin {
inline namespace foundation {

/// How urgent a task is against the other tasks of the process. The numbers are the scheduler's own
/// scale: higher goes first.
enum class TaskPriority : int { Background = 0, Normal = 2, Interactive = 4 };

/// The shared pool of worker threads. The default instance serves pixel loops; the high-priority
/// instance has arenas of its own for work that must not queue behind them. All functions may be
/// called from any thread.
class Scheduler {
public:
    static Scheduler& defaultInstance();
    static Scheduler& highPriorityInstance();

    /// Limits the threads of all instances, the callers' included; 0 gives one per processor again.
    static void setThreadCount(int count);
    /// The number of threads that a loop may use, at least 1.
    static int getThreadCount();

    /// Calls body(i) for every i in [begin, end), in any order, from several threads, and waits for
    /// all of them. The calling thread works along, runs nothing but this loop, and never waits for
    /// a busy pool, so a loop may be started while a lock is held that bodies of other loops take.
    /// The first exception of a body ends the loop and is thrown here.
    void parallelFor(std::int64_t begin, std::int64_t end, TaskPriority priority,
                     const Function<void(std::int64_t)>& body);

    /// The same over ranges: body(from, to) gets consecutive indices, at least `grain` of them
    /// where there are so many.
    void parallelForRanges(std::int64_t begin, std::int64_t end, std::int64_t grain,
                           TaskPriority priority,
                           const Function<void(std::int64_t, std::int64_t)>& body);

    /// How much of a busy processor the pool's threads get beside other threads when they work for
    /// this instance, from their next loop on; see platform::setThreadPriority. The threads are
    /// those of all instances: what is lowered for one counts for the others afterwards.
    void setWorkerThreadsPriority(int priority);

    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;
    ~Scheduler();

private:
    Scheduler();

    struct Queues;
    std::unique_ptr<Queues> queues_;
};

}  // namespace foundation
}  // namespace tavrin
