#pragma once

#include "foundation/Json.h"
#include "foundation/Optional.h"
#include "services/colorkit/OperatorParameter.h"

namespace tavrin::colorkit {

/// The value of a parameter in pipeline texts: choices by their names, three numbers as an array,
/// paths with forward slashes, curves as arrays of pairs.
Json toJson(const ParameterDeclaration& parameter, const ParameterValue& value);

/// The value that a JSON value stands for; nothing when it is none that the parameter allows.
Optional<ParameterValue> parseValue(const ParameterDeclaration& parameter, const Json& json);

}  // namespace tavrin::colorkit
