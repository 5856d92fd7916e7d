#include "foundation/Scheduler.h"

#include "foundation/ParallelLoop.h"
#include "foundation/ThreadSanitizer.h"

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

/// Asks a thread of the arena to help with the loop when it gets the time.
void enqueueHelp(tbb::task_arena& arena, const std::shared_ptr<ParallelLoop>& loop) {
    threadsanitizer::send(loop.get());
    const threadsanitizer::IgnoredWrites taskIsSynchronisedByTheLibrary;
    arena.enqueue([loop] {
        threadsanitizer::receive(loop.get());
        loop->help();
    });
}

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
    const auto loop = std::make_shared<ParallelLoop>(begin, end, ranges, body);
    tbb::task_arena& arena = arenas_->get(priority);
    for (std::int64_t helpers = std::min(threads, ranges) - 1; helpers > 0; --helpers) {
        enqueueHelp(arena, loop);
    }
    loop->finish();
}

}  // namespace foundation
}  // namespace tavrin
