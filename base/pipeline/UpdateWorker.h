#pragma once

#include "foundation/Function.h"
#include "foundation/StandbyThread.h"
#include "foundation/String.h"

#include <condition_variable>
#include <mutex>

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
    /// Lets the run that goes on be the last one: a run that is asked for before it ends waits for
    /// the first request after that. A computation that looks at isStopping() ends early.
    void cancel();
    /// See IAsync::wait.
    bool wait();
    bool isStopping() const;
    /// Ends the thread after the run that goes on; a request that has not started is dropped. No
    /// request may come afterwards.
    void shutDown();

private:
    void work(const String& name);

    const Function<void()> update_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by mutex_, which is never held during a run.
    bool isPending_ = false;
    bool isStopping_ = true;  ///< cleared when the worker starts
    bool isWorking_ = false;
    StandbyThread thread_;
};

}  // namespace tavrin::pipeline
