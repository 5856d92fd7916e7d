#include "base/pipeline/Completion.h"

#include <utility>

namespace tavrin::pipeline {

Result<String> Completion::wait() {
    std::unique_lock lock(mutex_);
    ended_.wait(lock, [this] { return result_.has_value(); });
    return *std::exchange(result_, std::nullopt);
}

void Completion::end(Result<String> result) {
    const std::lock_guard lock(mutex_);
    result_ = std::move(result);
    // Under the lock: the waiting thread may destroy this right after it.
    ended_.notify_all();
}

}  // namespace tavrin::pipeline
