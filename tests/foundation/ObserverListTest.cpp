#include "foundation/ObserverList.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>

namespace tavrin {
namespace {

TEST(ObserverList, CallsInOrderAndOnlyWhileRegistered) {
    ObserverList<int> list;
    std::string calls;
    auto first = list.add([&](int value) { calls += "a" + std::to_string(value); });
    auto second = list.add([&](int value) { calls += "b" + std::to_string(value); });
    list.notify(1);
    first = {};
    list.notify(2);
    EXPECT_EQ(calls, "a1b1b2");
}

TEST(ObserverList, RegistrationsMayOutliveTheList) {
    CallbackLifetime lifetime;
    {
        ObserverList<> list;
        lifetime = list.add([] {});
    }
    lifetime = {};
}

TEST(ObserverList, ThrowsTheFirstExceptionAfterAllCalls) {
    ObserverList<> list;
    int calls = 0;
    const auto throws = [&](const char* text) {
        return list.add([&calls, text] {
            ++calls;
            throw std::runtime_error(text);
        });
    };
    const auto first = throws("first");
    const auto second = throws("second");
    const auto third = list.add([&] { ++calls; });
    try {
        list.notify();
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "first");
    }
    EXPECT_EQ(calls, 3);
}

TEST(ObserverList, NoCallbackRunsAfterItsRegistrationEnded) {
    ObserverList<> list;
    std::atomic<bool> isDone = false;
    std::thread notifier([&] {
        while (!isDone) {
            list.notify();
        }
    });
    for (int i = 0; i < 2000; ++i) {
        // Plain on purpose: only the registration's end keeps the notifier away from it.
        auto value = std::make_unique<int>(0);
        auto lifetime = list.add([&value] { ++*value; });
        lifetime = {};
        value.reset();
    }
    isDone = true;
    notifier.join();
}

}  // namespace
}  // namespace tavrin
