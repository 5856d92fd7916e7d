#include "base/pipeline/Completion.h"

#include <utility>

namespace tavrin::pipeline {

Result<String> Completion::wait() {
    std::unique_lock lock(state_->mutex);
    state_->ended.wait(lock, [this] { return state_->result.has_value(); });
    return *std::exchange(state_->result, std::nullopt);
}

void Completion::State::end(Result<String> newResult) {
    {
        const std::lock_guard lock(mutex);
        result = std::move(newResult);
    }
    ended.notify_all();
}

}  // namespace tavrin::pipeline
