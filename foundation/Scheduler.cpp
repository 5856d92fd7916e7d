#include "foundation/Scheduler.h"

#include <tbb/blocked_range.h>
#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

#include <algorithm>
#include <mutex>

namespace tavrin {
inline namespace foundation {
namespace {

std::mutex limitMutex;
std::unique_ptr<tbb::global_control> limit;  // guarded by limitMutex

}  // namespace

struct Scheduler::Arenas {
    static constexpr int kThreads = tbb::task_arena::automatic;
    static constexpr unsigned kReservedForCallers = 1;

    tbb::task_arena background{kThreads, kReservedForCallers, tbb::task_arena::priority::low};
    tbb::task_arena normal{kThreads, kReservedForCallers, tbb::task_arena::priority::normal};
    tbb::task_arena interactive{kThreads, kReservedForCallers, tbb::task_arena::priority::high};

    tbb::task_arena& get(TaskPriority priority) {
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

Scheduler::Scheduler() : arenas_(std::make_unique<Arenas>()) {}
Scheduler::~Scheduler() = default;

Scheduler& Scheduler::defaultInstance() {
    static Scheduler instance;
    return instance;
}

Scheduler& Scheduler::highPriorityInstance() {
    static Scheduler instance;
    return instance;
}

void Scheduler::setThreadCount(int count) {
    const std::lock_guard lock(limitMutex);
    limit.reset();
    if (count > 0) {
        limit = std::make_unique<tbb::global_control>(
            tbb::global_control::max_allowed_parallelism, static_cast<std::size_t>(count));
    }
}

int Scheduler::getThreadCount() {
    const auto allowed = static_cast<int>(
        tbb::global_control::active_value(tbb::global_control::max_allowed_parallelism));
    return std::max(1, std::min(allowed, tbb::info::default_concurrency()));
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
    using Range = tbb::blocked_range<std::int64_t>;
    const Range range(begin, end, static_cast<std::size_t>(std::max<std::int64_t>(grain, 1)));
    arenas_->get(priority).execute([&] {
        tbb::this_task_arena::isolate([&] {
            tbb::parallel_for(range, [&](const Range& part) { body(part.begin(), part.end()); });
        });
    });
}

}  // namespace foundation
}  // namespace tavrin
