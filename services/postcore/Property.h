#pragma once

#include "foundation/String.h"
#include "foundation/Vec.h"

#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace tavrin::postcore {

/// What kind of value a Property holds. The numbers never change.
enum class PropertyType : int {
    Int = 107,
    Float = 207,
    Bool = 307,
    Vec3 = 407,
    String = 507,
    Vec3Array = 607,
    Undefined = 666,  ///< no value at all
    FloatArray = 707,
    Vec2Array = 807,
    IntArray = 907,
    BoolArray = 1007,
    StringArray = 1107,
};

/// The type as users read it, such as "FloatArray".
String toString(PropertyType type);

/// The C++ types of the values; std::monostate is that of Undefined.
using PropertyValue = std::variant<std::monostate, int, float, bool, Vec3, String,
                                   std::vector<Vec3>, std::vector<float>, std::vector<Vec2>,
                                   std::vector<int>, std::vector<bool>, std::vector<String>>;

template <class T, class... Types>
constexpr bool isOneOf(std::type_identity<std::variant<Types...>>) {
    return (std::is_same_v<T, Types> || ...);
}

/// The value of a setting together with its type. A plain value.
class Property {
public:
    /// Undefined.
    Property() = default;
    /// From exactly one of the types of PropertyValue; nothing is converted.
    template <class T>
    requires(isOneOf<T>(std::type_identity<PropertyValue>())) Property(T value)
        : value_(std::move(value)) {}

    PropertyType getType() const;

    /// The value, or null when the property holds another type.
    template <class T>
    const T* getIf() const {
        return std::get_if<T>(&value_);
    }
    /// The value. Throws an Exception when the property holds another type.
    template <class T>
    const T& get() const {
        if (const T* value = getIf<T>()) {
            return *value;
        }
        throwWrongType();
    }
    /// Calls visit(value); with a std::monostate when the property is Undefined.
    template <class Visitor>
    decltype(auto) visit(Visitor&& visitor) const {
        return std::visit(std::forward<Visitor>(visitor), value_);
    }

    /// Of the same type with the same value. A NaN is the same as a NaN, so that writing a value
    /// again is never a change.
    friend bool operator==(const Property& left, const Property& right);

private:
    [[noreturn]] void throwWrongType() const;

    PropertyValue value_;
};

}  // namespace tavrin::postcore
