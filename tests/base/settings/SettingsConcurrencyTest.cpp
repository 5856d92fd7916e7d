#include "base/settings/Settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <latch>
#include <memory>
#include <thread>
#include <vector>

namespace tavrin::settings {
namespace {

using postcore::Property;

constexpr int kBloom = 353;
constexpr int kGlare = 354;
constexpr int kThreads = 4;
constexpr int kWrites = 20000;

/// Runs body(i) on threads of their own, all at once.
template <class Body>
void runThreads(int count, const Body& body) {
    std::latch start(count);
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            body(i);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(SettingsConcurrency, WritesAreToldOneByOneAndInOrder) {
    Settings settings;
    int calls = 0;  // plain on purpose: writes alone keep observers apart
    float last = -1.0f;
    const auto observer = settings.addObserver(kBloom, [&](int id, const Property& value) {
        ++calls;
        last = value.get<float>();
        // Nobody else writes between the store and the last observer.
        EXPECT_TRUE(settings.get(id) == value);
        settings.set(kGlare, last);
    });
    const auto glare = settings.addObserver(kGlare, [&](int, const Property& value) {
        EXPECT_EQ(value.get<float>(), last);
        EXPECT_TRUE(settings.get(kBloom) == value);
    });
    runThreads(kThreads, [&](int thread) {
        for (int i = 0; i < kWrites; ++i) {
            settings.set(kBloom, static_cast<float>(i * kThreads + thread));
        }
    });
    // Each value is written once, so that each write is a change.
    EXPECT_EQ(calls, kThreads * kWrites);
    EXPECT_TRUE(settings.get(kBloom) == Property(last));
    EXPECT_TRUE(settings.get(kGlare) == Property(last));
}

TEST(SettingsConcurrency, ReadersNeverWaitForObservers) {
    Settings settings;
    std::atomic<bool> isTold = false;
    std::atomic<bool> hasRead = false;
    const auto observer = settings.addObserver(kBloom, [&](int, const Property&) {
        isTold = true;
        while (!hasRead) {
            std::this_thread::yield();
        }
    });
    std::thread writer([&] { settings.set(kBloom, 3.0f); });
    while (!isTold) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(settings.get(kBloom) == Property(3.0f));
    settings.get(kGlare);
    hasRead = true;
    writer.join();
}

TEST(SettingsConcurrency, ReadersSeeWholeValues) {
    constexpr std::size_t kLength = 1000;
    Settings settings;
    settings.set(kBloom, std::vector<int>(kLength, 0));
    std::atomic<bool> isDone = false;
    std::thread writer([&] {
        for (int i = 1; !isDone; ++i) {
            settings.set(kBloom, std::vector<int>(kLength, i));
        }
    });
    int last = 0;
    for (int changes = 0; changes < 100;) {
        const Property value = settings.get(kBloom);
        const auto& numbers = value.get<std::vector<int>>();
        EXPECT_EQ(std::ranges::count(numbers, numbers.front()), std::ptrdiff_t{kLength});
        changes += numbers.front() != last ? 1 : 0;
        last = numbers.front();
    }
    isDone = true;
    writer.join();
}

TEST(SettingsConcurrency, FirstReadsMayMeet) {
    for (int round = 0; round < 200; ++round) {
        Settings settings;
        runThreads(2, [&](int thread) {
            settings.get(thread == 0 ? kBloom : kGlare);
            settings.set(thread == 0 ? kGlare : kBloom, 0.5f);
        });
        EXPECT_TRUE(settings.get(kBloom) == Property(0.5f));
    }
}

TEST(SettingsConcurrency, RegistrationsMayEndWhileOthersWrite) {
    Settings settings;
    std::atomic<bool> isDone = false;
    std::thread writer([&] {
        for (int i = 0; !isDone; ++i) {
            settings.set(kBloom, i);
        }
    });
    runThreads(2, [&](int) {
        for (int i = 0; i < kWrites; ++i) {
            // Only the registration's end keeps the writer away from it.
            auto count = std::make_unique<int>(0);
            auto lifetime =
                settings.addObserver(kBloom, [&count](int, const Property&) { ++*count; });
            lifetime = {};
            count.reset();
        }
    });
    isDone = true;
    writer.join();
}

TEST(SettingsConcurrency, CopiesAreConsistentWithTheirSource) {
    Settings source;
    source.set(kBloom, 0.0f);
    source.set(kGlare, 0.0f);
    std::atomic<bool> isDone = false;
    std::thread writer([&] {
        for (int i = 1; !isDone; ++i) {
            source.set(kBloom, static_cast<float>(i));
            source.set(kGlare, static_cast<float>(i));
        }
    });
    for (int i = 0; i < 500; ++i) {
        Settings copy;
        copy.copyFrom(source, [](int) { return true; });
        const float bloom = copy.get(kBloom).get<float>();
        const float glare = copy.get(kGlare).get<float>();
        EXPECT_TRUE(bloom == glare || bloom == glare + 1.0f) << bloom << ' ' << glare;
    }
    isDone = true;
    writer.join();
}

}  // namespace
}  // namespace tavrin::settings
