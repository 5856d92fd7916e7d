#include "foundation/data/GenericObject.h"

#include "foundation/data/TypeDatabase.h"

namespace tavrin {
inline namespace foundation {

GenericObject GenericObject::construct(SharedPtr<const TypeDefinition> type) {
    std::vector<Value> values;
    for (const PropertyDefinition& property : type->getProperties()) {
        property.check(values.emplace_back(property.makeDefault()), type->getName());
    }
    return {std::move(type), std::move(values)};
}

GenericObject GenericObject::construct(const String& typeName) {
    SharedPtr<const TypeDefinition> type = TypeDatabase::find(typeName);
    if (!type) {
        throw Exception("There is no registered type \"" + typeName + "\".");
    }
    return construct(std::move(type));
}

void GenericObject::setValue(const String& name, Value value) {
    const std::size_t index = type_->indexOf(name);
    type_->getProperties()[index].check(value, type_->getName());
    values_[index] = std::move(value);
}

void GenericObject::failAtType(const String& name) const {
    throw Exception("The property \"" + name + "\" of \"" + type_->getName() +
                    "\" does not hold a value of this type.");
}

}  // namespace foundation
}  // namespace tavrin
