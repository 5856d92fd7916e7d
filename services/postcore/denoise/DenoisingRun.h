#pragma once

#include "foundation/Function.h"
#include "foundation/Scheduler.h"
#include "services/postcore/denoise/IDenoiser.h"

#include <atomic>
#include <cstdint>
#include <thread>

namespace tavrin::postcore {

/// One run of a denoiser: its threads, and whether it shall go on. Made and used on the thread that
/// denoises; only step() may be called by others.
class DenoisingRun {
public:
    /// `totalSteps` is the number of steps that the run has in all.
    DenoisingRun(Scheduler& scheduler, const IDenoiser::Progress& progress, std::int64_t totalSteps)
        : scheduler_(scheduler), progress_(progress), totalSteps_(totalSteps) {}

    bool isAborted() const { return isAborted_; }

    /// Counts work that is done; tells so on the run's own thread. False: stop.
    bool step(std::int64_t steps);

    /// body(i) for each i from 0 to count - 1, in parallel; stops early when aborted.
    void forEach(std::int64_t count, const Function<void(std::int64_t)>& body);

private:
    Scheduler& scheduler_;
    const IDenoiser::Progress& progress_;
    const std::int64_t totalSteps_;
    const std::thread::id thread_ = std::this_thread::get_id();
    std::atomic<std::int64_t> doneSteps_ = 0;
    std::atomic<bool> isAborted_ = false;
};

}  // namespace tavrin::postcore
