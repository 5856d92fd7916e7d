#include "foundation/StandbyThread.h"

#include <utility>

namespace tavrin {
inline namespace foundation {

StandbyThread::~StandbyThread() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void StandbyThread::start(Function<void()> task) {
    {
        const std::lock_guard lock(mutex_);
        next_ = std::move(task);
        if (!thread_.joinable()) {
            thread_ = std::thread([this] { work(); });
        }
    }
    changed_.notify_all();
}

bool StandbyThread::isRunning() const {
    const std::lock_guard lock(mutex_);
    return isBusy_ || next_;
}

void StandbyThread::waitForThis() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !isBusy_ && !next_; });
}

void StandbyThread::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return next_ || isEnding_; });
        if (!next_) {
            return;
        }
        {
            const Function<void()> task = std::exchange(next_, {});
            isBusy_ = true;
            lock.unlock();
            task();
        }
        lock.lock();
        isBusy_ = false;
        changed_.notify_all();
    }
}

}  // namespace foundation
}  // namespace tavrin
