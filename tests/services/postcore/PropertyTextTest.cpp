#include "services/postcore/PropertyText.h"
#include "tests/support/ArbitraryProperty.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>

namespace tavrin::postcore {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

RC_GTEST_PROP(PropertyText, IsReadBack, ()) {
    const Property property = tests::anyProperty();
    const String text = getConfSerialization(property);
    const auto again = parseConfSerialization(property.getType(), text);
    RC_ASSERT(again.has_value());
    RC_ASSERT(*again == property);
    // On one line of a file in UTF-8.
    RC_ASSERT(!text.contains("\n") && !text.contains("\r"));
    RC_ASSERT(String::fromUtf8(text.toUtf8()) == text);
    RC_ASSERT(text.trimmed() == text);
}

RC_GTEST_PROP(PropertyText, OfHeadersIsReadBack, ()) {
    const Property property = tests::anyProperty();
    const auto again = parseAttributeText(property.getType(), getAttributeText(property));
    RC_ASSERT(again.has_value());
    RC_ASSERT(*again == property);
}

TEST(PropertyText, HasItsForm) {
    const struct {
        Property property;
        const char* text;
        const char* attribute;
    } cases[] = {
        {Property(), "", ""},
        {-7, "-7", "-7"},
        {0.1f, "0.1", "0.1"},
        {1000000.0f, "1000000", "1000000"},
        {1e-10f, "1e-10", "1e-10"},
        {16777216.0f, "16777216", "16777216"},
        {-0.0f, "-0", "-0"},
        {kInfinity, "inf", "inf"},
        {-kNan, "nan", "nan"},
        {true, "true", "true"},
        {Vec3{1, 0.5f, 0}, "1 0.5 0", "1 0.5 0"},
        {String(u"a\"\\\n\u0001\xD800é"), "\"a\\\"\\\\\\n\\u0001\\ud800é\"",
         "\"a\\\"\\\\\\n\\u0001\\ud800é\""},
        {std::vector<Vec3>{{1, 1, 1}, {0.5f, 1, -kInfinity}}, "1 1 1, 0.5 1 -inf",
         "1,1,1,0.5,1,-inf"},
        {std::vector<Vec2>{{1, 2}, {3, 4}}, "1 2, 3 4", "1,2,3,4"},
        {std::vector<bool>{true, false}, "1, 0", "1,0"},
        {std::vector<int>{1, -2}, "1, -2", "1,-2"},
        {std::vector<float>{}, "", ""},
        {std::vector<String>{"a", "b,"}, "\"a\", \"b,\"", "\"a\", \"b,\""},
    };
    for (const auto& [property, text, attribute] : cases) {
        EXPECT_EQ(getConfSerialization(property).toUtf8(), text);
        EXPECT_EQ(getAttributeText(property).toUtf8(), attribute);
    }
}

TEST(PropertyText, AcceptsWhatPeopleWrite) {
    const struct {
        const char* text;
        Property property;
    } cases[] = {
        {" 1 ", true},
        {"0", false},
        {"\t3.50", 3.5f},
        {"INF", kInfinity},
        {"1  1\t1 ,0.5 1 1", std::vector<Vec3>{{1, 1, 1}, {0.5f, 1, 1}}},
        {"true,0", std::vector<bool>{true, false}},
        {" ", std::vector<float>{}},
        {"\"A\\u00E9\" ,\"b\"", std::vector<String>{u"A\u00E9", "b"}},
    };
    for (const auto& [text, property] : cases) {
        const auto parsed = parseConfSerialization(property.getType(), text);
        EXPECT_TRUE(parsed && *parsed == property) << text;
    }
}

TEST(PropertyText, RefusesOthers) {
    const struct {
        PropertyType type;
        const char* text;
    } cases[] = {
        {PropertyType::Int, ""},
        {PropertyType::Int, "1.5"},
        {PropertyType::Int, "2147483648"},
        {PropertyType::Float, "1,5"},
        {PropertyType::Float, "1e50"},
        {PropertyType::Float, "0x1"},
        {PropertyType::Float, "1 2"},
        {PropertyType::Bool, "yes"},
        {PropertyType::Vec3, "1 1"},
        {PropertyType::Vec3, "1,1,1"},
        {PropertyType::FloatArray, "1,"},
        {PropertyType::FloatArray, "1 2"},
        {PropertyType::FloatArray, "1;2"},
        {PropertyType::BoolArray, "1,2"},
        {PropertyType::Vec3Array, "1 1 1 1 1 1"},
        {PropertyType::String, "a"},
        {PropertyType::String, "\"a"},
        {PropertyType::String, "\"a\" b"},
        {PropertyType::String, "\"\\u12\""},
        {PropertyType::String, "\"\\x\""},
        {PropertyType::StringArray, "\"a\",,\"b\""},
        {PropertyType::StringArray, "\"a\","},
        {PropertyType::StringArray, "\"a\" \"b\""},
        {PropertyType::Undefined, ""},
    };
    for (const auto& [type, text] : cases) {
        EXPECT_FALSE(parseConfSerialization(type, text)) << text;
    }
    EXPECT_EQ(parseConfSerialization(PropertyType::Float, "much").error(),
              "\"much\" is not a value of the type Float.");
}

TEST(PropertyText, OfHeadersHasOnlyCommas) {
    for (const char* text : {"1 1 1", "1;1;1", "1,1", "1,1,1,", "1,1,x"}) {
        EXPECT_FALSE(parseAttributeText(PropertyType::Vec3Array, text)) << text;
    }
    const auto switches = parseAttributeText(PropertyType::BoolArray, "1, 0,2");
    EXPECT_TRUE(switches && *switches == Property(std::vector<bool>{true, false, true}));
}

TEST(Property, IsComparedWithItsType) {
    EXPECT_FALSE(Property(1) == Property(1.0f));
    EXPECT_FALSE(Property(1) == Property(true));
    EXPECT_FALSE(Property(std::vector<int>{}) == Property(std::vector<float>{}));
    EXPECT_TRUE(Property() == Property());
    EXPECT_FALSE(Property() == Property(0));
    EXPECT_TRUE(Property(kNan) == Property(-kNan));
    EXPECT_TRUE(Property(Vec3{0, kNan, 1}) == Property(Vec3{0, kNan, 1}));
    EXPECT_FALSE(Property(Vec3{0, kNan, 1}) == Property(Vec3{0, 1, kNan}));
    EXPECT_TRUE(Property(std::vector<Vec2>{{kNan, 1}}) == Property(std::vector<Vec2>{{kNan, 1}}));
    EXPECT_FALSE(Property(std::vector<int>{1}) == Property(std::vector<int>{1, 1}));
}

TEST(Property, HasTheTypesNumber) {
    const std::vector<std::pair<Property, int>> cases = {
        {1, 107},
        {1.0f, 207},
        {true, 307},
        {Vec3(), 407},
        {String(), 507},
        {std::vector<Vec3>(), 607},
        {Property(), 666},
        {std::vector<float>(), 707},
        {std::vector<Vec2>(), 807},
        {std::vector<int>(), 907},
        {std::vector<bool>(), 1007},
        {std::vector<String>(), 1107},
    };
    for (const auto& [property, code] : cases) {
        EXPECT_EQ(static_cast<int>(property.getType()), code);
    }
    EXPECT_EQ(toString(PropertyType::Vec2Array), "Vec2Array");
}

}  // namespace
}  // namespace tavrin::postcore
