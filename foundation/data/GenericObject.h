#pragma once

#include "foundation/Exception.h"
#include "foundation/SharedPtr.h"
#include "foundation/String.h"
#include "foundation/data/TypeDefinition.h"
#include "foundation/data/Value.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace tavrin {
inline namespace foundation {

/// A set of values, one for each property of its type, always of the declared types and within
/// their limits. A plain value: copies are independent of each other. Functions that take the name
/// of a property throw an Exception when the type has none of that name.
class GenericObject {
public:
    /// An object with the declared defaults; throws an Exception when one is beyond its limit.
    static GenericObject construct(SharedPtr<const TypeDefinition> type);
    /// By name; throws an Exception when the type is not registered.
    static GenericObject construct(const String& typeName);

    const TypeDefinition& getType() const { return *type_; }

    /// Throws an Exception when the property's values are of another type. The answer lives until
    /// the property is set.
    template <class T>
    const T& get(const String& name) const {
        const T* value = getValue(name).get<T>();
        if (value == nullptr) {
            failAtType(name);
        }
        return *value;
    }
    /// Throws an Exception when the value has another type or is beyond the property's limit.
    template <class T>
    void set(const String& name, T value) {
        setValue(name, Value(std::move(value)));
    }

    /// The same without knowing the type.
    const Value& getValue(const String& name) const { return values_[type_->indexOf(name)]; }
    void setValue(const String& name, Value value);

    /// Whether both have the same type and the same values.
    friend bool operator==(const GenericObject&, const GenericObject&) = default;

private:
    GenericObject(SharedPtr<const TypeDefinition> type, std::vector<Value> values)
        : type_(std::move(type)), values_(std::move(values)) {}

    [[noreturn]] void failAtType(const String& name) const;

    SharedPtr<const TypeDefinition> type_;
    std::vector<Value> values_;
};

/// An ordered list of objects, itself a value that properties can hold.
using GenericList = std::vector<GenericObject>;

}  // namespace foundation
}  // namespace tavrin
