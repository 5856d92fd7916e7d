#include "base/pipeline/UpdateWorker.h"
#include "foundation/platform/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <semaphore>

namespace tavrin::pipeline {
namespace {

/// A computation that runs until it is let go, as often as it is let go.
class Gate {
public:
    void run() {
        ++count;
        started_.release();
        mayEnd_.acquire();
    }
    void waitForStart() { started_.acquire(); }
    void letEnd(int times = 1) { mayEnd_.release(times); }

    std::atomic<int> count = 0;

private:
    std::counting_semaphore<> started_{0};
    std::counting_semaphore<> mayEnd_{0};
};

class UpdateWorkerTest : public testing::Test {
protected:
    ~UpdateWorkerTest() override { worker_.shutDown(); }

    Gate gate_;
    std::atomic<bool> hasServed_ = false;
    UpdateWorker worker_{[this] { gate_.run(); }};
};

TEST_F(UpdateWorkerTest, RequestsDuringARunMakeOneFurtherRun) {
    worker_.request("Test");
    gate_.waitForStart();
    EXPECT_TRUE(worker_.wait()) << "a run that goes on is not waited for";
    for (int i = 0; i < 10; ++i) {
        worker_.request("Test");
    }
    gate_.letEnd(12);
    EXPECT_TRUE(worker_.wait());
    gate_.waitForStart();
    worker_.shutDown();
    EXPECT_EQ(gate_.count, 2);
}

TEST_F(UpdateWorkerTest, ACancelledWorkerRunsAgainWithTheNextRequest) {
    worker_.request("Test");
    gate_.waitForStart();
    EXPECT_FALSE(worker_.isStopping());
    worker_.cancel();
    EXPECT_TRUE(worker_.isStopping());
    worker_.request("Test");
    EXPECT_FALSE(worker_.wait()) << "the request waits for a later one";
    gate_.letEnd(8);
    // Ends when a request has found no run going on.
    while (gate_.count < 2) {
        worker_.request("Test");
    }
    EXPECT_FALSE(worker_.isStopping());
}

TEST_F(UpdateWorkerTest, ARequestAfterTheCancelOfAnIdleWorkerRuns) {
    constexpr int kRounds = 40;
    gate_.letEnd(10 * kRounds);
    int postponed = 0;
    for (int round = 0; round < kRounds; ++round) {
        worker_.request("Test");
        worker_.wait();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));  // until the worker is idle
        worker_.cancel();
        worker_.request("Test");
        // A slow machine may still have been running it.
        postponed += !worker_.wait();
        while (!worker_.wait()) {
            worker_.request("Test");
        }
    }
    EXPECT_LT(postponed, kRounds / 4);
}

TEST_F(UpdateWorkerTest, WaitingEndsWithTheRunThatServesTheRequest) {
    worker_.request("Test");
    gate_.waitForStart();
    worker_.request("Test");
    std::binary_semaphore isAboutToWait(0);
    std::thread release([&] {
        isAboutToWait.acquire();
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        gate_.letEnd();
        gate_.waitForStart();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        hasServed_ = true;
        gate_.letEnd();
    });
    isAboutToWait.release();
    EXPECT_TRUE(worker_.wait());
    EXPECT_TRUE(hasServed_);
    release.join();
}

TEST_F(UpdateWorkerTest, EndsAfterTheRunThatGoesOn) {
    worker_.request("Test");
    gate_.waitForStart();
    worker_.request("Test");
    std::thread release([this] {
        while (!worker_.isStopping()) {
            std::this_thread::yield();
        }
        gate_.letEnd();
    });
    worker_.shutDown();
    EXPECT_EQ(gate_.count, 1) << "the request that has not started is dropped";
    release.join();
}

TEST(UpdateWorker, RunsOnAThreadOfItsOwnWithAName) {
    String name;
    std::thread::id thread;
    std::binary_semaphore done(0);
    UpdateWorker worker([&] {
        name = platform::getThreadName();
        thread = std::this_thread::get_id();
        done.release();
    });
    EXPECT_TRUE(worker.wait()) << "nothing is pending";
    worker.request("Pipeline_Test");
    done.acquire();
    worker.shutDown();
    EXPECT_EQ(name, "_TAVRIN_Pipeline_Test");
    EXPECT_NE(thread, std::this_thread::get_id());
}

}  // namespace
}  // namespace tavrin::pipeline
