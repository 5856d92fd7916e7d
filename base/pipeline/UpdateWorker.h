#pragma once

#include "foundation/Function.h"
#include "foundation/StandbyThread.h"
#include "foundation/String.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>

namespace tavrin::pipeline {

/// Runs the computation of an asynchronous operator on a thread of its own. Requests that come
/// while it runs are answered by exactly one further run. Any thread may call everything.
class UpdateWorker {
public:
    explicit UpdateWorker(Function<void()> update) : update_(std::move(update)) {}
    /// The owner has called shutDown(): what the computation uses would be gone by now.
    ~UpdateWorker();
    UpdateWorker(const UpdateWorker&) = delete;
    UpdateWorker& operator=(const UpdateWorker&) = delete;

    /// Asks for one run and returns at once. The thread is started with the first request, and
    /// named "_TAVRIN_" and `name`.
    void request(const String& name);
    /// Lets the run that goes on be the last one: what is asked for before it ends waits for the
    /// first request after that. A computation that looks at isStopping() ends early.
    void cancel();
    /// See IAsync::wait.
    bool wait();
    /// True from cancel() or shutDown() to the next request that finds no run going on.
    bool isStopping() const;
    /// Ends the thread after the run that goes on; a request that has not started is dropped. No
    /// request may come afterwards.
    void shutDown();

private:
    void work(const String& name);
    bool isPending() const { return started_ != requests_; }
    bool isRunning() const { return ended_ != started_; }

    const Function<void()> update_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by mutex_, which is never held during a run. A run serves the requests that have come
    // before it starts.
    std::uint64_t requests_ = 0;  ///< that have come
    std::uint64_t started_ = 0;   ///< of them, how many a run serves or has served
    std::uint64_t ended_ = 0;     ///< of them, how many a run has served
    bool isStopping_ = false;
    bool isWorking_ = false;
    std::thread::id workingThread_;
    StandbyThread thread_;
};

}  // namespace tavrin::pipeline
