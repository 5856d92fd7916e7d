#include "foundation/data/GenericObject.h"
#include "foundation/data/TypeDatabase.h"
#include "tests/support/Message.h"

#include <gtest/gtest.h>

namespace tavrin {
namespace {

constexpr const char* kAnimal = "TypeDatabaseTest::Animal";
constexpr const char* kDog = "TypeDatabaseTest::Dog";

const TypeDeclaration kDeclaration([]() -> TypeList {
    const auto animal = std::make_shared<TypeDefinition>(kAnimal);
    animal->addProperty("legs", 4);
    const auto dog = std::make_shared<TypeDefinition>(kDog, animal);
    dog->addProperty("name", String("Rex"));
    return {animal, dog};
});

TEST(TypeDatabase, TypesExistBetweenTheFirstRegistrationAndItsEnd) {
    EXPECT_EQ(TypeDatabase::find(kDog), nullptr);
    EXPECT_EQ(tests::messageOf([] { GenericObject::construct(kDog); }),
              "There is no registered type \"TypeDatabaseTest::Dog\".");
    TypeDatabase::registerCallersTypes();
    const auto dog = TypeDatabase::find(kDog);
    ASSERT_NE(dog, nullptr);
    TypeDatabase::registerCallersTypes();
    EXPECT_EQ(TypeDatabase::find(kDog), dog);
    TypeDatabase::unregisterCallersTypes();
    EXPECT_EQ(TypeDatabase::find(kDog), dog);
    const GenericObject rex = GenericObject::construct(kDog);
    TypeDatabase::unregisterCallersTypes();
    EXPECT_EQ(TypeDatabase::find(kDog), nullptr);
    EXPECT_EQ(rex.get<String>("name"), "Rex");
    EXPECT_EQ(rex.get<int>("legs"), 4);
}

TEST(TypeDatabase, ATypeHasThePropertiesOfItsBaseFirst) {
    TypeDatabase::registerCallersTypes();
    const auto dog = TypeDatabase::find(kDog);
    TypeDatabase::unregisterCallersTypes();
    ASSERT_EQ(dog->getProperties().size(), 2u);
    EXPECT_EQ(dog->getProperties()[0].getName(), "legs");
    EXPECT_EQ(dog->indexOf("name"), 1u);
    EXPECT_TRUE(dog->isA(kDog) && dog->isA(kAnimal));
    EXPECT_FALSE(dog->isA("legs"));
}

TEST(TypeDefinition, RefusesAPropertyTwice) {
    const auto base = std::make_shared<TypeDefinition>("Base");
    base->addProperty("id", 0);
    TypeDefinition derived("Derived", base);
    EXPECT_EQ(tests::messageOf([&] { derived.addProperty("id", true); }),
              "The type \"Derived\" declares the property \"id\" twice.");
}

TEST(TypeDefinition, AttributesAreFoundByKeyAndType) {
    TypeDefinition type("Type");
    type.addProperty("opacity", 1.0f).setAttribute("flags", 1).setAttribute("name", String());
    const Attributes& attributes = type.getProperties()[0].getAttributes();
    ASSERT_NE(attributes.get<int>("flags"), nullptr);
    EXPECT_EQ(*attributes.get<int>("flags"), 1);
    EXPECT_EQ(attributes.get<float>("flags"), nullptr);
    EXPECT_NE(attributes.get<String>("name"), nullptr);
    EXPECT_EQ(type.getAttributes().get<int>("flags"), nullptr);
}

}  // namespace
}  // namespace tavrin
