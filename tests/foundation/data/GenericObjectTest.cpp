#include "foundation/data/GenericObject.h"
#include "tests/support/Message.h"

#include <gtest/gtest.h>

namespace tavrin {
namespace {

using tests::messageOf;

SharedPtr<const TypeDefinition> makeType() {
    const auto type = std::make_shared<TypeDefinition>("Type");
    type->addProperty("opacity", 0.5f)
        .setLimit({"a number from 0 to 1",
                   [](const Value& value) { return *value.get<float>() <= 1.0f; },
                   {}});
    type->addProperty("title", String("none"));
    type->addComputedProperty<int>("number", [next = 0]() mutable { return ++next; });
    return type;
}

TEST(GenericObject, HasTheDeclaredDefaults) {
    const auto type = makeType();
    const auto first = GenericObject::construct(type);
    EXPECT_EQ(first.get<float>("opacity"), 0.5f);
    EXPECT_EQ(first.get<String>("title"), "none");
    EXPECT_EQ(first.get<int>("number"), 1);
    EXPECT_EQ(GenericObject::construct(type).get<int>("number"), 2);
}

TEST(GenericObject, RefusesADefaultBeyondTheLimit) {
    const auto type = std::make_shared<TypeDefinition>("Type");
    type->addProperty("id", 0).setLimit({"odd", [](const Value&) { return false; }, {}});
    EXPECT_EQ(messageOf([&] { GenericObject::construct(type); }),
              "The property \"id\" of \"Type\" must be odd.");
}

TEST(GenericObject, RefusesWhatItsTypeDoesNotAllow) {
    auto object = GenericObject::construct(makeType());
    const GenericObject before = object;
    const struct {
        Function<void()> action;
        const char* message;
    } cases[] = {
        {[&] { object.set("size", 1.0f); }, "The type \"Type\" has no property \"size\"."},
        {[&] { object.get<float>("size"); }, "The type \"Type\" has no property \"size\"."},
        {[&] { object.set("opacity", 0.25); },
         "The property \"opacity\" of \"Type\" cannot hold a value of this type."},
        {[&] { object.set("opacity", 2.0f); },
         "The property \"opacity\" of \"Type\" must be a number from 0 to 1."},
        {[&] { object.get<int>("opacity"); },
         "The property \"opacity\" of \"Type\" does not hold a value of this type."},
    };
    for (const auto& [action, message] : cases) {
        EXPECT_EQ(messageOf(action), message);
        EXPECT_EQ(object, before);
    }
}

TEST(GenericObject, CopiesAreEqualUntilOneChanges) {
    auto object = GenericObject::construct(makeType());
    GenericObject copy = object;
    EXPECT_EQ(copy, object);
    copy.set("title", String("other"));
    EXPECT_NE(copy, object);
    EXPECT_EQ(object.get<String>("title"), "none");
    copy.set("title", String("none"));
    EXPECT_EQ(copy, object);
    EXPECT_NE(copy, GenericObject::construct(makeType())) << "of another type";
}

TEST(GenericObject, HoldsListsOfObjects) {
    const auto itemType = makeType();
    const auto listType = std::make_shared<TypeDefinition>("List");
    listType->addProperty("items", GenericList());
    auto left = GenericObject::construct(listType);
    auto right = left;
    const auto item = GenericObject::construct(itemType);
    left.set("items", GenericList{item, item});
    right.set("items", GenericList{item});
    EXPECT_NE(left, right);
    right.set("items", GenericList{item, item});
    EXPECT_EQ(left, right);
}

TEST(Value, EqualsOnlyTheSameTypeAndValue) {
    EXPECT_EQ(Value(1), Value(1));
    EXPECT_NE(Value(1), Value(2));
    EXPECT_NE(Value(1), Value(1.0f));
    EXPECT_NE(Value(1), Value(true));
    EXPECT_EQ(Value(1).get<bool>(), nullptr);
}

}  // namespace
}  // namespace tavrin
