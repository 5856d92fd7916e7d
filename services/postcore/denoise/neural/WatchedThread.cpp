#include "services/postcore/denoise/neural/WatchedThread.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>

namespace tavrin::postcore {
namespace {

constexpr std::chrono::milliseconds kInterval(100);

/// Tells progress until the work has ended.
void watch(WorkMonitor& monitor, const Function<bool(float)>& progress, std::mutex& mutex,
           std::condition_variable& ended, const bool& hasEnded) {
    std::unique_lock lock(mutex);
    while (!hasEnded) {
        lock.unlock();
        if (!monitor.isStopped() && !progress(monitor.getFraction())) {
            monitor.stop();
        }
        lock.lock();
        ended.wait_for(lock, kInterval, [&hasEnded] { return hasEnded; });
    }
}

}  // namespace

bool WatchedThread::run(const Function<void(WorkMonitor&)>& work,
                        const Function<bool(float)>& progress) {
    WorkMonitor monitor;
    std::mutex mutex;
    std::condition_variable ended;
    bool hasEnded = false;  // guarded by mutex
    std::exception_ptr failure;
    thread_.start([&] {
        try {
            work(monitor);
        } catch (...) {
            failure = std::current_exception();
        }
        const std::lock_guard lock(mutex);
        hasEnded = true;
        ended.notify_one();
    });
    try {
        watch(monitor, progress, mutex, ended, hasEnded);
    } catch (...) {
        monitor.stop();
        thread_.waitForThis();
        throw;
    }
    thread_.waitForThis();
    if (failure) {
        std::rethrow_exception(failure);
    }
    return !monitor.isStopped() && progress(1.0f);
}

}  // namespace tavrin::postcore
