#pragma once

#include "foundation/Function.h"
#include "foundation/Optional.h"
#include "foundation/String.h"
#include "foundation/data/Attributes.h"
#include "foundation/data/Value.h"

#include <utility>

namespace tavrin {
inline namespace foundation {

/// The smallest and the largest value of a number.
struct NumberRange {
    double minimum = 0.0;
    double maximum = 0.0;
};

/// Which values a property takes among those of its type.
struct ValueLimit {
    String requirement;  ///< to be read after "must be": "a number from 0 to 1"
    Function<bool(const Value&)> isAllowed;
    Optional<NumberRange> range;  ///< of each of its numbers, for those who show them
};

/// A property of a type: its name, the type of its values and their limit, its default, and its
/// attributes.
class PropertyDefinition {
public:
    /// `makeDefault` is called for each new object; its answers have one type, which is that of the
    /// property's values.
    template <class T>
    PropertyDefinition(String name, Function<T()> makeDefault)
        : name_(std::move(name)),
          makeDefault_([make = std::move(makeDefault)] { return Value(make()); }),
          hasType_([](const Value& value) { return value.get<T>() != nullptr; }) {}

    PropertyDefinition& setLimit(ValueLimit limit) {
        limit_ = std::move(limit);
        return *this;
    }
    template <class T>
    PropertyDefinition& setAttribute(const String& key, T value) {
        attributes_.set(key, std::move(value));
        return *this;
    }

    const String& getName() const { return name_; }
    Value makeDefault() const { return makeDefault_(); }
    const Optional<ValueLimit>& getLimit() const { return limit_; }
    const Attributes& getAttributes() const { return attributes_; }

    /// Throws an Exception when the value has another type or is beyond the limit. `typeName` is
    /// the type that has the property, for the message.
    void check(const Value& value, const String& typeName) const;

private:
    String name_;
    Function<Value()> makeDefault_;
    Function<bool(const Value&)> hasType_;
    Optional<ValueLimit> limit_;
    Attributes attributes_;
};

}  // namespace foundation
}  // namespace tavrin
