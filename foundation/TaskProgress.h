#pragma once

#include "foundation/Function.h"

#include <utility>

namespace tavrin {
inline namespace foundation {

/// How a long task tells its caller how far it has come and learns that it is no longer wanted.
/// Without functions nobody listens and nothing is cancelled. The functions are called from the
/// thread that runs the task.
class TaskProgress {
public:
    TaskProgress() = default;
    explicit TaskProgress(Function<void(float)> onFraction, Function<bool()> isCancelled = {})
        : onFraction_(std::move(onFraction)), isCancelled_(std::move(isCancelled)) {}

    /// The part of the work that is done, 0 to 1, never less than the part reported before.
    void report(float fraction) const {
        if (onFraction_) {
            onFraction_(fraction);
        }
    }
    /// True when the task should stop as soon as it can and leave nothing behind.
    bool isCancelled() const { return isCancelled_ && isCancelled_(); }

private:
    Function<void(float)> onFraction_;
    Function<bool()> isCancelled_;
};

}  // namespace foundation
}  // namespace tavrin
