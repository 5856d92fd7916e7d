#include "services/colorkit/editing/ColorMappingWithObservers.h"

#include "foundation/data/TypeDatabase.h"
#include "foundation/data/UiAttributes.h"
#include "services/colorkit/editing/AddMenu.h"
#include "services/colorkit/editing/OperatorList.h"
#include "services/colorkit/editing/Presets.h"

#include <memory>

namespace tavrin::colorkit {
namespace {

using Data = ColorMappingWithObservers::Data;

bool hasNoTimeOverride(const GenericObject& model) {
    return !model.get<String>(Data::kSettingsSource).contains(" (Time override)");
}

TypeList declareModel() {
    const UiPredicate isEditable = hasNoTimeOverride;
    auto type = std::make_shared<TypeDefinition>(Data::kTypeName);
    type->addProperty(Data::kEnabled, true).setAttribute(UiAttributes::kEnabledIf, isEditable);
    type->addProperty(Data::kSettingsSource, String());
    type->addComputedProperty<GenericList>(Data::kToneMapping, createDefaultOperatorList)
        .setAttribute(UiAttributes::kEnabledIf, isEditable)
        .setAttribute(UiAttributes::kListItemAdder,
                      UiListItemAdder{[] { return createAddItemMenuContent(); }})
        .setAttribute(UiAttributes::kListPresets, UiListPresets{createPresetMenuContent})
        .setAttribute(UiAttributes::kListDefaultValue,
                      UiListDefaultValue(createDefaultOperatorList));
    return {type};
}

const TypeDeclaration kDeclaration(declareModel);

}  // namespace

ColorMappingWithObservers::ColorMappingWithObservers()
    : Entity(GenericObject::construct(Data::kTypeName)) {}

}  // namespace tavrin::colorkit
