#include "services/postcore/LegacyToneMapping.h"
#include "services/postcore/PropertyDescriptor.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace tavrin::postcore {
namespace {

bool isName(const String& name) {
    for (const char16_t unit : name.view()) {
        const bool isLetter = (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
        if (!isLetter) {
            return false;
        }
    }
    return !name.isEmpty() && name[0] >= u'a';
}

TEST(PropertyDescriptor, EachIsSound) {
    std::set<int> ids;
    std::set<String> names;
    const auto check = [&](const PropertyDescriptor& descriptor) {
        EXPECT_TRUE(ids.insert(descriptor.id).second) << descriptor.id;
        EXPECT_TRUE(names.insert(descriptor.name).second) << descriptor.name.toUtf8();
        EXPECT_TRUE(isName(descriptor.name)) << descriptor.name.toUtf8();
        EXPECT_EQ(descriptor.defaultValue.getType(), descriptor.type) << descriptor.id;
        EXPECT_TRUE(descriptor.check(descriptor.defaultValue)) << descriptor.id;
        const bool hasRange =
            descriptor.type == PropertyType::Int || descriptor.type == PropertyType::Float;
        const PropertyType ofRange = hasRange ? descriptor.type : PropertyType::Undefined;
        EXPECT_EQ(descriptor.minimum.getType(), ofRange) << descriptor.id;
        EXPECT_EQ(descriptor.maximum.getType(), ofRange) << descriptor.id;
    };
    for (const PropertyDescriptor& descriptor : PropertyDescriptor::list()) {
        check(descriptor);
        EXPECT_EQ(PropertyDescriptor::get(descriptor.id), &descriptor);
        EXPECT_EQ(PropertyDescriptor::find(descriptor.name), &descriptor);
    }
    for (const PropertyDescriptor& descriptor : getLegacyTonemappingDescriptors()) {
        check(descriptor);
    }
    EXPECT_EQ(PropertyDescriptor::get(1), nullptr);
    EXPECT_EQ(PropertyDescriptor::find("nothing"), nullptr);
}

TEST(PropertyDescriptor, ChecksTypeAndRange) {
    const PropertyDescriptor& amount = *PropertyDescriptor::get(993);
    EXPECT_TRUE(amount.check(1.0f));
    EXPECT_TRUE(amount.check(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ(amount.check(1.5f).error(), "Value is expected to be between 0 and 1.");
    EXPECT_EQ(amount.check(1).error(), "Value has wrong type.");
    const PropertyDescriptor& blades = *PropertyDescriptor::get(403);
    EXPECT_TRUE(blades.check(3));
    EXPECT_EQ(blades.check(2).error(), "Value is expected to be between 3 and 16.");
}

TEST(PropertyDescriptor, HeaderNameIsThatOfTheProperty) {
    EXPECT_EQ(getPropertyExrName(*PropertyDescriptor::get(353)), "tavrin.post.bloomIntensity");
}

TEST(PropertyDescriptor, NamesOfChoicesAreValues) {
    const PropertyDescriptor& mode = *PropertyDescriptor::get(996);
    EXPECT_EQ(parseProperty(mode, " full ").value(), Property(2));
    EXPECT_EQ(parseProperty(mode, "2").value(), Property(2));
    EXPECT_FALSE(parseProperty(mode, "Half"));
}

}  // namespace
}  // namespace tavrin::postcore
