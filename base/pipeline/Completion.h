#pragma once

#include "foundation/Optional.h"
#include "foundation/Result.h"
#include "foundation/SharedPtr.h"

#include <condition_variable>
#include <memory>
#include <mutex>

namespace tavrin::pipeline {

/// Lets a thread wait for the end of a computation of an asynchronous operator, for programs that
/// have nothing else to do meanwhile. Takes over the operator's onFinish and onError: there is one
/// for each operator, made before its first computation. It may end while the operator still
/// computes.
class Completion {
public:
    template <class Operator>
    explicit Completion(Operator& op) {
        op.onFinish = [state = state_](const String& message) { state->end(message); };
        op.onError = [state = state_](const String& text) { state->end(Failure(text)); };
    }

    /// Waits for the end of the computation that was asked for last, unless it has ended already.
    /// The message of its finish, or the text of its error.
    Result<String> wait();

private:
    struct State {
        void end(Result<String> newResult);

        std::mutex mutex;
        std::condition_variable ended;
        Optional<Result<String>> result;  ///< guarded by mutex
    };
    SharedPtr<State> state_ = std::make_shared<State>();
};

}  // namespace tavrin::pipeline
