#pragma once

#include "foundation/Function.h"
#include "foundation/StandbyThread.h"

#include <atomic>

namespace tavrin::postcore {

/// What work on one thread and the thread that waits for it tell each other.
class WorkMonitor {
public:
    /// Told by the work, before each of its stages: the part of all that this stage is, so that
    /// reports are of the stage alone. In the beginning the only stage is all.
    void setStage(float begin, float end) {
        begin_ = begin;
        end_ = end;
    }
    /// Told by the work: the part that is done, 0 to 1. False when the work is no longer wanted.
    bool report(float fraction) noexcept {
        fraction_ = begin_ + (end_ - begin_) * fraction;
        return !isStopped_;
    }

    float getFraction() const { return fraction_; }
    void stop() { isStopped_ = true; }
    bool isStopped() const { return isStopped_; }

private:
    float begin_ = 0.0f;  // of the work's thread
    float end_ = 1.0f;    // of the work's thread
    std::atomic<float> fraction_ = 0.0f;
    std::atomic<bool> isStopped_ = false;
};

/// Runs work on one long-lived thread while the caller hears of its progress at regular intervals,
/// however long one step of the work takes. One thread at a time may call it.
class WatchedThread {
public:
    /// Runs the work to its end. `progress` is called several times a second on this thread and at
    /// the end of work that was not stopped; once it has answered false the work is asked to stop.
    /// Answers whether the work went through. Throws what the work or `progress` throws.
    bool run(const Function<void(WorkMonitor&)>& work, const Function<bool(float)>& progress);

private:
    StandbyThread thread_;
};

}  // namespace tavrin::postcore
