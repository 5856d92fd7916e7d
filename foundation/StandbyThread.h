#pragma once

#include "foundation/Function.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace tavrin {
inline namespace foundation {

/// A thread for one long task after another. It is started by the first task, parked between tasks
/// and ended by the destructor, which waits for the task that runs. Any thread may call everything;
/// only tasks themselves may neither wait for it nor destroy it.
class StandbyThread {
public:
    StandbyThread() = default;
    ~StandbyThread();
    StandbyThread(const StandbyThread&) = delete;
    StandbyThread& operator=(const StandbyThread&) = delete;

    /// Runs the task once the one that runs now has ended; a task that still waits for that is
    /// replaced. A task must not throw.
    void start(Function<void()> task);
    /// True while a task runs or waits.
    bool isRunning() const;
    /// Returns when no task runs or waits.
    void waitForThis();

private:
    void work();

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by mutex_.
    Function<void()> next_;
    bool isBusy_ = false;
    bool isEnding_ = false;
    std::thread thread_;
};

}  // namespace foundation
}  // namespace tavrin
