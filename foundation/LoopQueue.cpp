#include "foundation/LoopQueue.h"

#include "foundation/ThreadSanitizer.h"
#include "foundation/platform/Thread.h"

#include <algorithm>

namespace tavrin {
inline namespace foundation {
namespace {

constexpr int kThreads = tbb::task_arena::automatic;
constexpr unsigned kReservedForCallers = 1;

/// Of a thread of the pool. Does nothing most of the time.
void takeOnPriority(int priority) {
    thread_local int current = 0;
    if (priority != current) {
        platform::setThreadPriority(priority);
        current = priority;
    }
}

}  // namespace

LoopQueue::LoopQueue(tbb::task_arena::priority priority)
    : arena_(kThreads, kReservedForCallers, priority) {}

void LoopQueue::run(ParallelLoop& loop, std::int64_t helpers) {
    Job job{loop, 0};
    {
        const std::lock_guard lock(mutex_);
        wanted_.insert(wanted_.end(), static_cast<std::size_t>(helpers), &job);
    }
    for (; helpers > 0; --helpers) {
        requestHelp();
    }
    loop.work();
    std::unique_lock lock(mutex_);
    std::erase(wanted_, &job);
    helpersDone_.wait(lock, [&job] { return job.helpers == 0; });
}

void LoopQueue::requestHelp() {
    threadsanitizer::send(this);
    const threadsanitizer::IgnoredWrites taskIsHandedOverByTheLibrary;
    arena_.enqueue([this] {
        threadsanitizer::receive(this);
        help();
    });
}

void LoopQueue::help() noexcept {
    takeOnPriority(threadsPriority_);
    std::unique_lock lock(mutex_);
    if (wanted_.empty()) {
        return;
    }
    Job& job = *wanted_.front();
    wanted_.pop_front();
    ++job.helpers;
    lock.unlock();
    job.loop.work();
    lock.lock();
    if (--job.helpers == 0) {
        helpersDone_.notify_all();
    }
}

}  // namespace foundation
}  // namespace tavrin
