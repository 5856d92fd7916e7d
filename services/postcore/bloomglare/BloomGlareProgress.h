#pragma once

#include "foundation/SharedPtr.h"
#include "foundation/TaskProgress.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace tavrin::postcore {

/// How far the computation of bloom and glare has come, in steps, and whether it is still wanted.
/// Copies are one progress. The thread that computes counts; any thread may read.
class BloomGlareProgress {
public:
    /// `listener` is told the fraction of the steps after each of them and asked between parts of
    /// them whether to stop, on the thread that computes.
    explicit BloomGlareProgress(TaskProgress listener = {})
        : state_(std::make_shared<State>(std::move(listener))) {}

    int getTotalSteps() const { return state_->total; }
    int getCurrentStep() const { return state_->current; }
    /// At least 1.
    void setTotalSteps(int steps) { state_->total = steps > 1 ? steps : 1; }
    void setCurrentStep(int step) { state_->current = step; }

    /// Counts steps that have been done or turned out not to be needed.
    void advance(int steps = 1) {
        state_->current += steps;
        const float fraction =
            static_cast<float>(getCurrentStep()) / static_cast<float>(getTotalSteps());
        state_->listener.report(std::min(fraction, 1.0f));
    }
    bool isAborted() const { return state_->listener.isCancelled(); }

private:
    struct State {
        explicit State(TaskProgress taskListener) : listener(std::move(taskListener)) {}

        const TaskProgress listener;
        std::atomic<int> total = 1;
        std::atomic<int> current = 0;
    };

    SharedPtr<State> state_;
};

}  // namespace tavrin::postcore
