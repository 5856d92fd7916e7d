#include "foundation/Scheduler.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <atomic>
#include <future>
#include <limits>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace tavrin {
namespace {

constexpr auto kNormal = TaskPriority::Normal;

Scheduler& scheduler() {
    return Scheduler::defaultInstance();
}

/// Undoes a thread limit at the end of a test.
class ThreadLimit {
public:
    explicit ThreadLimit(int count) { Scheduler::setThreadCount(count); }
    ThreadLimit(const ThreadLimit&) = delete;
    ThreadLimit& operator=(const ThreadLimit&) = delete;
    ~ThreadLimit() { Scheduler::setThreadCount(0); }
};

RC_GTEST_PROP(Scheduler, RangesCoverEveryIndexOnce, ()) {
    const auto count = *rc::gen::inRange<std::int64_t>(0, 2000);
    const auto grain = *rc::gen::inRange<std::int64_t>(-1, 300);
    const auto begin = *rc::gen::arbitrary<std::int32_t>();
    std::vector<int> calls(std::size_t(count), 0);
    std::atomic<bool> tooSmall = false;
    scheduler().parallelForRanges(begin, begin + count, grain, kNormal,
                                  [&](std::int64_t from, std::int64_t to) {
                                      if (to - from < std::min(grain, count) || from >= to) {
                                          tooSmall = true;
                                      }
                                      for (std::int64_t i = from; i < to; ++i) {
                                          ++calls[std::size_t(i - begin)];
                                      }
                                  });
    RC_ASSERT(!tooSmall);
    RC_ASSERT(calls == std::vector<int>(calls.size(), 1));
}

TEST(Scheduler, EveryPriorityOfEveryInstanceRunsLoops) {
    for (Scheduler* instance :
         {&Scheduler::defaultInstance(), &Scheduler::highPriorityInstance()}) {
        for (const auto priority :
             {TaskPriority::Background, TaskPriority::Normal, TaskPriority::Interactive}) {
            std::atomic<std::int64_t> sum = 0;
            instance->parallelFor(-10, 101, priority, [&](std::int64_t i) { sum += i; });
            EXPECT_EQ(sum, 5050 - 55);
        }
    }
}

TEST(Scheduler, EmptyAndReversedRangesCallNothing) {
    const auto fail = [](std::int64_t) { FAIL(); };
    scheduler().parallelFor(3, 3, kNormal, fail);
    scheduler().parallelFor(3, -3, kNormal, fail);
}

TEST(Scheduler, RangesNearTheLimitsOfTheIndexWork) {
    constexpr auto kLast = std::numeric_limits<std::int64_t>::max();
    std::atomic<int> calls = 0;
    scheduler().parallelFor(kLast - 100, kLast, kNormal, [&](std::int64_t) { ++calls; });
    EXPECT_EQ(calls, 100);
    scheduler().parallelForRanges(kLast - 100, kLast, kLast, kNormal,
                                  [&](std::int64_t from, std::int64_t to) { calls = to - from; });
    EXPECT_EQ(calls, 100);
}

TEST(Scheduler, FirstExceptionEndsTheLoop) {
    constexpr std::int64_t kCount = 1'000'000;
    std::atomic<std::int64_t> calls = 0;
    const auto loop = [&] {
        scheduler().parallelFor(0, kCount, kNormal, [&](std::int64_t i) {
            ++calls;
            if (i == 0) {
                throw std::runtime_error("broken");
            }
        });
    };
    EXPECT_THROW(loop(), std::runtime_error);
    EXPECT_LT(calls, kCount);
}

TEST(Scheduler, LoopsNest) {
    std::atomic<int> calls = 0;
    scheduler().parallelFor(0, 13, kNormal, [&](std::int64_t) {
        scheduler().parallelFor(0, 17, TaskPriority::Background, [&](std::int64_t) { ++calls; });
    });
    EXPECT_EQ(calls, 13 * 17);
}

TEST(Scheduler, LoopRunsWhileAllOtherThreadsWaitForALockOfItsCaller) {
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::atomic<int> waiting = 0;
    // More loops than processors, so that every thread of the pool waits for the lock.
    std::vector<std::future<void>> others;
    for (int i = 0; i < Scheduler::getThreadCount() + 1; ++i) {
        others.push_back(std::async(std::launch::async, [&] {
            scheduler().parallelFor(0, 64, kNormal, [&](std::int64_t) {
                ++waiting;
                const std::lock_guard wait(mutex);
            });
        }));
    }
    while (waiting < static_cast<int>(others.size())) {
        std::this_thread::yield();
    }
    std::atomic<int> calls = 0;
    scheduler().parallelFor(0, 64, kNormal, [&](std::int64_t) { ++calls; });
    EXPECT_EQ(calls, 64);
    lock.unlock();
    for (auto& other : others) {
        other.get();
    }
}

TEST(Scheduler, WaitingCallerDoesNotEnterOtherLoops) {
    std::mutex mutex;
    scheduler().parallelFor(0, 200, kNormal, [&](std::int64_t) {
        // A body of this loop that ran inside the inner loop would lock the mutex twice.
        const std::lock_guard lock(mutex);
        scheduler().parallelFor(0, 20, kNormal, [](std::int64_t) { std::this_thread::yield(); });
    });
}

TEST(Scheduler, OneThreadMeansTheCaller) {
    const ThreadLimit limit(1);
    EXPECT_EQ(Scheduler::getThreadCount(), 1);
    std::set<std::thread::id> threads;
    scheduler().parallelFor(0, 1000, TaskPriority::Interactive,
                            [&](std::int64_t) { threads.insert(std::this_thread::get_id()); });
    EXPECT_EQ(threads, std::set{std::this_thread::get_id()});
}

TEST(Scheduler, ThreadLimitIsUndone) {
    const int all = Scheduler::getThreadCount();
    EXPECT_GE(all, 1);
    {
        const ThreadLimit limit(all + 5);
        EXPECT_EQ(Scheduler::getThreadCount(), all);
    }
    {
        const ThreadLimit limit(1);
        Scheduler::setThreadCount(-3);
        EXPECT_EQ(Scheduler::getThreadCount(), all);
    }
}

}  // namespace
}  // namespace tavrin
