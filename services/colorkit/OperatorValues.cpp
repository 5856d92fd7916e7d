#include "services/colorkit/OperatorValues.h"

#include "foundation/Exception.h"
#include "foundation/FatalError.h"

#include <algorithm>

namespace tavrin::colorkit {

OperatorValues::OperatorValues(const ColorMappingOperatorDescriptor& descriptor)
    : descriptor_(&descriptor), isEnabled_(descriptor.isEnabledByDefault) {
    for (const ParameterDeclaration* parameter : descriptor.parameters) {
        values_.push_back(getDefaultValue(*parameter));
    }
}

OperatorValues& OperatorValues::setEnabled(bool enabled) {
    isEnabled_ = enabled;
    return *this;
}

void OperatorValues::setAt(std::size_t index, const ParameterValue& value) {
    const ParameterDeclaration& parameter = *descriptor_->parameters[index];
    if (!isAllowed(parameter, value)) {
        throw Exception("The value \"" + String(parameter.name) + "\" of the operator \"" +
                        descriptor_->typeName + "\" must be " + describeRequirement(parameter) +
                        ".");
    }
    values_[index] = value;
}

std::size_t OperatorValues::indexOf(const ParameterDeclaration& parameter) const {
    const auto parameters = descriptor_->parameters;
    const auto found = std::find(parameters.begin(), parameters.end(), &parameter);
    if (found == parameters.end()) {
        fatalError("The parameter belongs to another operator.");
    }
    return static_cast<std::size_t>(found - parameters.begin());
}

}  // namespace tavrin::colorkit
