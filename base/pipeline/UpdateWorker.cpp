#include "base/pipeline/UpdateWorker.h"

#include "foundation/FatalError.h"
#include "foundation/platform/Thread.h"

namespace tavrin::pipeline {

UpdateWorker::~UpdateWorker() {
    if (thread_.isRunning()) {
        fatalError("An operator ends without waiting for its computation.");
    }
}

void UpdateWorker::request(const String& name) {
    {
        const std::lock_guard lock(mutex_);
        ++requests_;
        if (!isRunning()) {
            // A worker that has been cancelled while idle may not have noticed yet.
            isStopping_ = false;
        }
        if (!isWorking_) {
            isWorking_ = true;
            thread_.start([this, name] { work(name); });
        }
    }
    changed_.notify_all();
}

void UpdateWorker::cancel() {
    {
        const std::lock_guard lock(mutex_);
        isStopping_ = true;
    }
    changed_.notify_all();
}

bool UpdateWorker::wait() {
    std::unique_lock lock(mutex_);
    if (!isPending() || workingThread_ == std::this_thread::get_id()) {
        return true;
    }
    const std::uint64_t awaited = requests_;
    changed_.wait(
        lock, [this, awaited] { return ended_ >= awaited || (isStopping_ && started_ < awaited); });
    return ended_ >= awaited;
}

bool UpdateWorker::isStopping() const {
    const std::lock_guard lock(mutex_);
    return isStopping_;
}

void UpdateWorker::shutDown() {
    cancel();
    thread_.waitForThis();
}

void UpdateWorker::work(const String& name) {
    platform::setThreadName("_TAVRIN_" + name);
    std::unique_lock lock(mutex_);
    workingThread_ = std::this_thread::get_id();
    while (true) {
        changed_.wait(lock, [this] { return isPending() || isStopping_; });
        if (isStopping_) {
            isWorking_ = false;
            return;
        }
        started_ = requests_;
        lock.unlock();
        update_();
        lock.lock();
        ended_ = started_;
        changed_.notify_all();
    }
}

}  // namespace tavrin::pipeline
