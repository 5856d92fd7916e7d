#include "services/colorkit/editing/ParameterBinding.h"

#include "foundation/data/UiAttributes.h"

#include <variant>

namespace tavrin::colorkit {
namespace {

/// `value` as a ParameterValue of the alternative that the parameter has; it must be of its type.
ParameterValue toParameterValue(const ParameterDeclaration& parameter, const Value& value) {
    return std::visit([&]<class T>(const T&) -> ParameterValue { return *value.get<T>(); },
                      getDefaultValue(parameter));
}

Optional<NumberRange> getRange(const ParameterDeclaration& parameter) {
    if (std::holds_alternative<float>(parameter.defaultValue) ||
        std::holds_alternative<CompressedRgb>(parameter.defaultValue)) {
        return NumberRange{parameter.minimum, parameter.maximum};
    }
    return std::nullopt;
}

void setAttributes(PropertyDefinition& property, const ParameterDeclaration& parameter) {
    if (parameter.displayName != nullptr) {
        property.setAttribute(UiAttributes::kName, String(parameter.displayName));
    }
    if (parameter.description != nullptr) {
        property.setAttribute(UiAttributes::kDescription, String(parameter.description));
    }
    if (parameter.isSlider) {
        property.setAttribute(UiAttributes::kFlags, 1);
    }
    if (std::holds_alternative<Empty<Path>>(parameter.defaultValue)) {
        property.setAttribute(UiAttributes::kPathFlags, UiPathFlags(1, 2));
    }
    if (!parameter.choices.empty()) {
        UiChoices choices;
        for (const ParameterChoice& choice : parameter.choices) {
            choices.emplace_back(choice.displayName);
        }
        property.setAttribute(UiAttributes::kChoices, choices);
    }
}

}  // namespace

void addProperty(TypeDefinition& type, const ParameterDeclaration& parameter) {
    PropertyDefinition& property = std::visit(
        [&](const auto& value) -> PropertyDefinition& {
            return type.addProperty(parameter.name, value);
        },
        getDefaultValue(parameter));
    property.setLimit({describeRequirement(parameter),
                       [&parameter](const Value& value) {
                           return isAllowed(parameter, toParameterValue(parameter, value));
                       },
                       getRange(parameter)});
    setAttributes(property, parameter);
}

ParameterValue getParameter(const GenericObject& object, const ParameterDeclaration& parameter) {
    return toParameterValue(parameter, object.getValue(parameter.name));
}

void setParameter(GenericObject& object, const ParameterDeclaration& parameter,
                  const ParameterValue& value) {
    std::visit([&](const auto& each) { object.set(parameter.name, each); }, value);
}

}  // namespace tavrin::colorkit
