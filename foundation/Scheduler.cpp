#include "foundation/Scheduler.h"

#include "foundation/LoopQueue.h"
#include "foundation/ParallelLoop.h"

#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/task_arena.h>

#include <algorithm>
#include <mutex>

namespace tavrin {
inline namespace foundation {
namespace {

// Enough that the threads end at about the same time although ranges differ in work, few enough
// that taking a range costs nothing beside its work.
constexpr std::int64_t kRangesPerThread = 32;

std::mutex limitMutex;
std::unique_ptr<tbb::global_control> limit;  // guarded by limitMutex

}  // namespace

struct Scheduler::Queues {
    LoopQueue background{tbb::task_arena::priority::low};
    LoopQueue normal{tbb::task_arena::priority::normal};
    LoopQueue interactive{tbb::task_arena::priority::high};

    LoopQueue& get(TaskPriority priority) {
        switch (priority) {
            case TaskPriority::Background:
                return background;
            case TaskPriority::Normal:
                return normal;
            case TaskPriority::Interactive:
                return interactive;
        }
        return normal;
    }
};

Scheduler::Scheduler() : queues_(std::make_unique<Queues>()) {}
Scheduler::~Scheduler() = default;

Scheduler& Scheduler::defaultInstance() {
    // Never destroyed: threads of the pool may still run while the process ends.
    static Scheduler& instance = *new Scheduler;
    return instance;
}

Scheduler& Scheduler::highPriorityInstance() {
    static Scheduler& instance = *new Scheduler;
    return instance;
}

void Scheduler::setThreadCount(int count) {
    const std::lock_guard lock(limitMutex);
    limit.reset();
    if (count > 0) {
        limit = std::make_unique<tbb::global_control>(tbb::global_control::max_allowed_parallelism,
                                                      static_cast<std::size_t>(count));
    }
}

int Scheduler::getThreadCount() {
    const std::size_t allowed =
        tbb::global_control::active_value(tbb::global_control::max_allowed_parallelism);
    const auto processors = static_cast<std::size_t>(tbb::info::default_concurrency());
    return static_cast<int>(std::clamp<std::size_t>(allowed, 1, processors));
}

void Scheduler::setWorkerThreadsPriority(int priority) {
    for (LoopQueue* queue : {&queues_->background, &queues_->normal, &queues_->interactive}) {
        queue->setThreadsPriority(priority);
    }
}

void Scheduler::parallelFor(std::int64_t begin, std::int64_t end, TaskPriority priority,
                            const Function<void(std::int64_t)>& body) {
    parallelForRanges(begin, end, 1, priority, [&body](std::int64_t from, std::int64_t to) {
        for (std::int64_t i = from; i < to; ++i) {
            body(i);
        }
    });
}

void Scheduler::parallelForRanges(std::int64_t begin, std::int64_t end, std::int64_t grain,
                                  TaskPriority priority,
                                  const Function<void(std::int64_t, std::int64_t)>& body) {
    if (begin >= end) {
        return;
    }
    const std::int64_t threads = getThreadCount();
    const std::int64_t most = threads == 1 ? 1 : threads * kRangesPerThread;
    const std::int64_t ranges =
        std::clamp<std::int64_t>((end - begin) / std::max<std::int64_t>(grain, 1), 1, most);
    if (ranges == 1) {
        body(begin, end);
        return;
    }
    ParallelLoop loop(begin, end, ranges, body);
    queues_->get(priority).run(loop, std::min(threads, ranges) - 1);
    loop.throwFailure();
}

}  // namespace foundation
}  // namespace tavrin
