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
        isPending_ = true;
        if (!isWorking_) {
            isWorking_ = true;
            isStopping_ = false;
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
    changed_.wait(lock, [this] { return !isPending_ || isStopping_; });
    return !isPending_;
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
    while (true) {
        changed_.wait(lock, [this] { return isPending_ || isStopping_; });
        if (isStopping_) {
            isWorking_ = false;
            return;
        }
        isPending_ = false;
        lock.unlock();
        update_();
        changed_.notify_all();
        lock.lock();
    }
}

}  // namespace tavrin::pipeline
