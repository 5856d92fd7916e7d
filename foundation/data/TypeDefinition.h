#pragma once

#include "foundation/SharedPtr.h"
#include "foundation/String.h"
#include "foundation/data/Attributes.h"
#include "foundation/data/PropertyDefinition.h"

#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

namespace tavrin {
inline namespace foundation {

/// The declaration of a kind of data object: its properties in order, those of its base first. One
/// thread makes it; after that it is only read, by any thread.
class TypeDefinition {
public:
    explicit TypeDefinition(String name, SharedPtr<const TypeDefinition> base = {});

    /// The answer serves to say more about the property, until the next one is added.
    template <class T>
    PropertyDefinition& addProperty(const String& name, T defaultValue) {
        return addComputedProperty<T>(name, [defaultValue] { return defaultValue; });
    }
    /// A property whose default is made anew for each object.
    template <class T>
    PropertyDefinition& addComputedProperty(const String& name,
                                            std::type_identity_t<Function<T()>> makeDefault) {
        return add(PropertyDefinition(name, std::move(makeDefault)));
    }
    template <class T>
    void setAttribute(const String& key, T value) {
        attributes_.set(key, std::move(value));
    }

    const String& getName() const { return name_; }
    const std::vector<PropertyDefinition>& getProperties() const { return properties_; }
    const Attributes& getAttributes() const { return attributes_; }
    /// Whether this is the type of that name or one derived from it.
    bool isA(const String& typeName) const;
    /// The index of a property; throws an Exception when there is none of that name.
    std::size_t indexOf(const String& propertyName) const;

private:
    PropertyDefinition& add(PropertyDefinition property);

    String name_;
    SharedPtr<const TypeDefinition> base_;
    std::vector<PropertyDefinition> properties_;
    Attributes attributes_;
};

}  // namespace foundation
}  // namespace tavrin
