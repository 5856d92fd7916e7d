#include "foundation/data/Entity.h"
#include "tests/support/Message.h"

#include <gtest/gtest.h>

#include <string>

namespace tavrin {
namespace {

GenericObject makeData() {
    const auto type = std::make_shared<TypeDefinition>("Data");
    type->addProperty("enabled", true);
    type->addProperty("numbers", std::vector<int>{1, 2});
    return GenericObject::construct(type);
}

TEST(Entity, TellsTheObserversOfAPropertyAboutEachChange) {
    Entity entity(makeData());
    std::string calls;
    const auto enabled = entity.addObserver("enabled", [&] { calls += "e"; });
    auto numbers = entity.addObserver("numbers", [&] { calls += "n"; });
    entity.set("enabled", true);
    EXPECT_EQ(calls, "");
    entity.set("enabled", false);
    EXPECT_EQ(calls, "e");
    entity.modify<std::vector<int>>("numbers", [](std::vector<int>& list) {
        list.clear();
        list.push_back(3);
    });
    EXPECT_EQ(calls, "en");
    EXPECT_EQ(entity.getData().get<std::vector<int>>("numbers"), std::vector<int>{3});
    entity.modify<std::vector<int>>("numbers", [](std::vector<int>&) {});
    EXPECT_EQ(calls, "en");
    numbers = {};
    entity.set("numbers", std::vector<int>());
    EXPECT_EQ(calls, "en");
}

TEST(Entity, ObserversSeeTheNewValueAndMayChangeOtherProperties) {
    Entity entity(makeData());
    const auto lifetime = entity.addObserver("enabled", [&] {
        entity.set("numbers", std::vector<int>{entity.getData().get<bool>("enabled")});
    });
    entity.set("enabled", false);
    EXPECT_EQ(entity.getData().get<std::vector<int>>("numbers"), std::vector<int>{0});
}

TEST(Entity, ObserversMayChangeWhatTheyObserveAndComeAndGo) {
    Entity entity(makeData());
    std::string calls;
    CallbackLifetime own;
    CallbackLifetime other;
    CallbackLifetime added;
    own = entity.addObserver("numbers", [&] {
        calls += "a";
        own = {};
        other = {};
        added = entity.addObserver("numbers", [&calls] { calls += "c"; });
        entity.set("numbers", std::vector<int>());
    });
    other = entity.addObserver("numbers", [&] { calls += "b"; });
    entity.set("numbers", std::vector<int>{3});
    EXPECT_EQ(calls, "ac");
    EXPECT_TRUE(entity.getData().get<std::vector<int>>("numbers").empty());
}

TEST(Entity, ObserversThatThrowKeepNoneFromBeingCalled) {
    Entity entity(makeData());
    int calls = 0;
    const auto throwing = entity.addObserver("enabled", [] { throw Exception("First."); });
    const auto second = entity.addObserver("enabled", [&] { ++calls; });
    EXPECT_EQ(tests::messageOf([&] { entity.set("enabled", false); }), "First.");
    EXPECT_EQ(calls, 1);
}

TEST(Entity, AFailedChangeChangesNothing) {
    Entity entity(makeData());
    const auto lifetime = entity.addObserver("numbers", [] { FAIL(); });
    const GenericObject before = entity.getData();
    EXPECT_EQ(tests::messageOf([&] {
                  entity.modify<std::vector<int>>("numbers", [](std::vector<int>& list) {
                      list.clear();
                      throw Exception("No.");
                  });
              }),
              "No.");
    EXPECT_NE(tests::messageOf([&] { entity.set("numbers", 1); }), "");
    EXPECT_NE(tests::messageOf([&] { static_cast<void>(entity.addObserver("size", [] {})); }), "");
    EXPECT_EQ(entity.getData(), before);
}

}  // namespace
}  // namespace tavrin
