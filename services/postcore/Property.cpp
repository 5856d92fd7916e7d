#include "services/postcore/Property.h"

#include "foundation/Exception.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tavrin::postcore {
namespace {

constexpr struct {
    PropertyType type;
    const char* name;
} kTypesInVariantOrder[] = {
    {PropertyType::Undefined, "Undefined"}, {PropertyType::Int, "Int"},
    {PropertyType::Float, "Float"},         {PropertyType::Bool, "Bool"},
    {PropertyType::Vec3, "Vec3"},           {PropertyType::String, "String"},
    {PropertyType::Vec3Array, "Vec3Array"}, {PropertyType::FloatArray, "FloatArray"},
    {PropertyType::Vec2Array, "Vec2Array"}, {PropertyType::IntArray, "IntArray"},
    {PropertyType::BoolArray, "BoolArray"}, {PropertyType::StringArray, "StringArray"},
};

template <class T>
bool isSame(const T& left, const T& right) {
    return left == right;
}

bool isSame(float left, float right) {
    return left == right || (std::isnan(left) && std::isnan(right));
}

bool isSame(const Vec2& left, const Vec2& right) {
    return isSame(left.x, right.x) && isSame(left.y, right.y);
}

bool isSame(const Vec3& left, const Vec3& right) {
    return isSame(left.x, right.x) && isSame(left.y, right.y) && isSame(left.z, right.z);
}

template <class T>
bool isSame(const std::vector<T>& left, const std::vector<T>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const T& a, const T& b) { return isSame(a, b); });
}

}  // namespace

String toString(PropertyType type) {
    const auto found =
        std::ranges::find(kTypesInVariantOrder, type, [](const auto& entry) { return entry.type; });
    return found == std::end(kTypesInVariantOrder) ? "Undefined" : found->name;
}

PropertyType Property::getType() const {
    static_assert(std::variant_size_v<PropertyValue> == std::size(kTypesInVariantOrder));
    return kTypesInVariantOrder[value_.index()].type;
}

void Property::throwWrongType() const {
    throw Exception("A property of type " + toString(getType()) +
                    " was asked for a value of another type.");
}

bool operator==(const Property& left, const Property& right) {
    return left.visit([&right](const auto& value) {
        const auto* other = right.getIf<std::decay_t<decltype(value)>>();
        return other != nullptr && isSame(value, *other);
    });
}

}  // namespace tavrin::postcore
