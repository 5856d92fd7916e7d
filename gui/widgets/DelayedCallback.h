#pragma once

#include "foundation/Function.h"

#include <wx/timer.h>

#include <utility>

namespace tavrin::widgets {

/// A function that is called once, some time after the last request: a burst of requests ends in
/// one call. Nothing is called after the object has ended; the function may end the object or
/// schedule it again. Main thread.
class DelayedCallback final : private wxTimer {
public:
    DelayedCallback() = default;
    explicit DelayedCallback(Function<void()> function) : function_(std::move(function)) {}
    ~DelayedCallback() override = default;

    DelayedCallback& operator=(Function<void()> function) {
        function_ = std::move(function);
        return *this;
    }
    /// Whether it has a function.
    explicit operator bool() const { return static_cast<bool>(function_); }

    /// Calls the function that many milliseconds from now; a call that is waiting starts anew.
    void scheduleDelayed(int milliseconds);
    void cancel() { Stop(); }
    bool isScheduled() const { return IsRunning(); }

private:
    void Notify() override;

    Function<void()> function_;
};

}  // namespace tavrin::widgets
