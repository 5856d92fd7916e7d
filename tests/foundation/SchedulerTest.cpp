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

RC_GTEST_PROP(Scheduler, RangesCoverEveryIndexOnce, ()) {
    const auto count = *rc::gen::inRange<std::int64_t>(0, 2000);
    const auto grain = *rc::gen::inRange<std::int64_t>(-1, 300);
    const auto begin = *rc::gen::arbitrary<std::int32_t>();
    const auto priority =
        *rc::gen::element(TaskPriority::Background, kNormal, TaskPriority::Interactive);
    Scheduler& instance =
        *rc::gen::arbitrary<bool>() ? scheduler() : Scheduler::highPriorityInstance();
    std::vector<int> calls(std::size_t(count), 0);
    std::atomic<bool> tooSmall = false;
    const auto body = [&](std::int64_t from, std::int64_t to) {
        if (to - from < std::min(grain, count) || from >= to) {
            tooSmall = true;
        }
        for (std::int64_t i = from; i < to; ++i) {
            ++calls[std::size_t(i - begin)];
        }
    };
    instance.parallelForRanges(begin, begin + count, grain, priority, body);
    RC_ASSERT(!tooSmall);
    RC_ASSERT(calls == std::vector<int>(calls.size(), 1));
}

TEST(Scheduler, RangesMayBeReversedOrAtTheLimitOfTheIndex) {
    constexpr auto kLast = std::numeric_limits<std::int64_t>::max();
    std::atomic<int> calls = 0;
    scheduler().parallelFor(3, -3, kNormal, [](std::int64_t) { FAIL(); });
    scheduler().parallelFor(kLast - 100, kLast, kNormal, [&](std::int64_t) { ++calls; });
    EXPECT_EQ(calls, 100);
    scheduler().parallelForRanges(kLast - 100, kLast, kLast, kNormal,
                                  [&](std::int64_t from, std::int64_t to) { calls = to - from; });
    EXPECT_EQ(calls, 100);
}

TEST(Scheduler, FirstExceptionEndsTheLoop) {
    constexpr std::int64_t kCount = 1'000'000;
    std::atomic<std::int64_t> calls = 0;
    const auto body = [&](std::int64_t i) {
        ++calls;
        if (i == 0) {
            throw std::runtime_error("broken");
        }
    };
    EXPECT_THROW(scheduler().parallelFor(0, kCount, kNormal, body), std::runtime_error);
    EXPECT_LT(calls, kCount);
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

TEST(Scheduler, NestedLoopsDoNotEnterOtherLoopsWhileTheyWait) {
    std::mutex mutex;
    std::atomic<int> calls = 0;
    scheduler().parallelFor(0, 200, kNormal, [&](std::int64_t) {
        // A body of this loop that ran inside the inner loop would lock the mutex twice.
        const std::lock_guard lock(mutex);
        scheduler().parallelFor(0, 20, TaskPriority::Background, [&](std::int64_t) {
            ++calls;
            std::this_thread::yield();
        });
    });
    EXPECT_EQ(calls, 200 * 20);
}

TEST(Scheduler, OneThreadMeansTheCaller) {
    const int all = Scheduler::getThreadCount();
    Scheduler::setThreadCount(1);
    EXPECT_EQ(Scheduler::getThreadCount(), 1);
    std::set<std::thread::id> threads;
    scheduler().parallelFor(0, 1000, TaskPriority::Interactive,
                            [&](std::int64_t) { threads.insert(std::this_thread::get_id()); });
    EXPECT_EQ(threads, std::set{std::this_thread::get_id()});
    for (const int count : {all + 5, -3, 0}) {
        Scheduler::setThreadCount(count);
        EXPECT_EQ(Scheduler::getThreadCount(), all) << count;
    }
}

}  // namespace
}  // namespace tavrin
