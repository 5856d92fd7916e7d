#pragma once

#include "foundation/Optional.h"
#include "foundation/Result.h"

#include <condition_variable>
#include <mutex>

namespace tavrin::pipeline {

/// Lets a thread wait for the end of a computation of an asynchronous operator, for programs that
/// have nothing else to do meanwhile. Takes over the operator's onFinish and onError; the operator
/// computes nothing any more when the object ends.
class Completion {
public:
    template <class Operator>
    explicit Completion(Operator& op) {
        op.onFinish = [this](const String& message) { end(message); };
        op.onError = [this](const String& text) { end(Failure(text)); };
    }
    Completion(const Completion&) = delete;
    Completion& operator=(const Completion&) = delete;

    /// Waits for the end of the computation that was asked for last, unless it has ended already.
    /// The message of its finish, or the text of its error.
    Result<String> wait();

private:
    void end(Result<String> result);

    std::mutex mutex_;
    std::condition_variable ended_;
    Optional<Result<String>> result_;  ///< guarded by mutex_
};

}  // namespace tavrin::pipeline
