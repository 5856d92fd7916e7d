#pragma once

#include "foundation/Exception.h"
#include "foundation/Function.h"
#include "foundation/String.h"

#include <atomic>
#include <thread>

namespace tavrin::pipeline {

/// Adds the callbacks by which an operator tells its owner how its computation goes. The owner
/// assigns them before the first computation; they are called on the thread that computes, and what
/// they do there must not throw.
template <class Base>
class ProgressMixin : public Base {
public:
    Function<void(const String& title)> onStart;
    Function<void(float fraction)> onProgress;  ///< 0 to 1
    Function<void(const String& message)> onFinish;
    Function<void(const String& text)> onWarning;
    Function<void(const String& text)> onError;

protected:
    /// While one lives, the callbacks are not called on the thread that made it: for a computation
    /// in the middle of a request.
    class SilentScope {
    public:
        explicit SilentScope(ProgressMixin& owner) : owner_(owner) {
            owner_.silentThread_ = std::this_thread::get_id();
        }
        ~SilentScope() { owner_.silentThread_ = std::thread::id(); }
        SilentScope(const SilentScope&) = delete;
        SilentScope& operator=(const SilentScope&) = delete;

    private:
        ProgressMixin& owner_;
    };

    void tellStart(const String& title) const { tell(onStart, title); }
    void tellProgress(float fraction) const { tell(onProgress, fraction); }
    void tellFinish(const String& message) const { tell(onFinish, message); }
    void tellWarning(const String& text) const { tell(onWarning, text); }
    void tellError(const String& text) const { tell(onError, text); }

    /// Runs a computation between start and finish; an exception ends it with its text as error.
    /// `compute` answers the message of the finish.
    template <class Compute>
    void computeWithProgress(const String& title, const Compute& compute) const {
        try {
            tellStart(title);
            tellProgress(0.0f);
            const String message = compute();
            tellProgress(1.0f);
            tellFinish(message);
        } catch (const std::exception& exception) {
            tellError(exceptionToString(exception));
        }
    }

private:
    template <class Argument>
    void tell(const Function<void(Argument)>& callback,
              const std::type_identity_t<Argument>& argument) const {
        if (callback && silentThread_ != std::this_thread::get_id()) {
            callback(argument);
        }
    }

    std::atomic<std::thread::id> silentThread_{};
};

}  // namespace tavrin::pipeline
