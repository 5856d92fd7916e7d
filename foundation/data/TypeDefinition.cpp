#include "foundation/data/TypeDefinition.h"

#include "foundation/Exception.h"

#include <algorithm>

namespace tavrin {
inline namespace foundation {
namespace {

auto findByName(const std::vector<PropertyDefinition>& properties, const String& name) {
    return std::find_if(properties.begin(), properties.end(),
                        [&](const auto& property) { return property.getName() == name; });
}

}  // namespace

TypeDefinition::TypeDefinition(String name, SharedPtr<const TypeDefinition> base)
    : name_(std::move(name)), base_(std::move(base)) {
    if (base_) {
        properties_ = base_->properties_;
    }
}

bool TypeDefinition::isA(const String& typeName) const {
    return name_ == typeName || (base_ && base_->isA(typeName));
}

std::size_t TypeDefinition::indexOf(const String& propertyName) const {
    const auto found = findByName(properties_, propertyName);
    if (found == properties_.end()) {
        throw Exception("The type \"" + name_ + "\" has no property \"" + propertyName + "\".");
    }
    return static_cast<std::size_t>(found - properties_.begin());
}

PropertyDefinition& TypeDefinition::add(PropertyDefinition property) {
    if (findByName(properties_, property.getName()) != properties_.end()) {
        throw Exception("The type \"" + name_ + "\" declares the property \"" + property.getName() +
                        "\" twice.");
    }
    return properties_.emplace_back(std::move(property));
}

}  // namespace foundation
}  // namespace tavrin
