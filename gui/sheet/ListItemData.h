#pragma once

#include "foundation/data/GenericObject.h"
#include "services/colorkit/UnaryColorMappingOperator.h"

namespace tavrin::sheet {

/// The properties of list items that are not rows of their own: what tells an item from others
/// while the list changes, and the switch in its title.
namespace ListItemData {

inline constexpr const char* kId = colorkit::UnaryColorMappingOperator::Data::kId;
inline constexpr const char* kEnabled = colorkit::UnaryColorMappingOperator::Data::kEnabled;

/// Null when the object has no such property with values of this type.
template <class T>
const T* find(const GenericObject& object, const String& name) {
    for (const PropertyDefinition& property : object.getType().getProperties()) {
        if (property.getName() == name) {
            return object.getValue(name).get<T>();
        }
    }
    return nullptr;
}

/// 0 when it has none.
inline int getId(const GenericObject& object) {
    const int* id = find<int>(object, kId);
    return id == nullptr ? 0 : *id;
}

inline bool isEnabled(const GenericObject& object) {
    const bool* isEnabled = find<bool>(object, kEnabled);
    return isEnabled == nullptr || *isEnabled;
}

}  // namespace ListItemData
}  // namespace tavrin::sheet
