#pragma once

#include "foundation/data/GenericObject.h"
#include "services/colorkit/OperatorParameter.h"

namespace tavrin::colorkit {

/// Adds the property that holds values of this parameter: of the same name, type, default and
/// limits, with the attributes that show it. The declaration must outlive the type.
void addProperty(TypeDefinition& type, const ParameterDeclaration& parameter);

/// The value of the parameter's property in an object whose type has it.
ParameterValue getParameter(const GenericObject& object, const ParameterDeclaration& parameter);
void setParameter(GenericObject& object, const ParameterDeclaration& parameter,
                  const ParameterValue& value);

}  // namespace tavrin::colorkit
