#pragma once

#include "foundation/Optional.h"
#include "foundation/String.h"

#include <span>
#include <type_traits>
#include <variant>

namespace tavrin::colorkit {

/// The value of a parameter: a switch, a number, or the index of a choice.
using ParameterValue = std::variant<bool, float, int>;

/// One of the alternatives of a choice. The name stands in pipeline texts and never changes.
struct ParameterChoice {
    const char* name;
    const char* displayName;
};

/// Everything there is to know of a parameter of an operator. It is declared once, as a constant of
/// the operator; the text form, the checks and the user interface read it from there.
struct ParameterDeclaration {
    const char* name;  ///< in pipeline texts; never changes
    const char* displayName;
    const char* description;
    ParameterValue defaultValue;
    float minimum = 0.0f;  ///< of a number
    float maximum = 0.0f;  ///< of a number
    std::span<const ParameterChoice> choices = {};
};

/// A declaration that knows the type of its values: bool, float, or the enumeration of a choice.
template <class T>
struct Parameter : ParameterDeclaration {};

constexpr Parameter<float> declareNumber(const char* name, const char* displayName,
                                         float defaultValue, float minimum, float maximum,
                                         const char* description) {
    return {{name, displayName, description, defaultValue, minimum, maximum}};
}

/// The enumeration's values are the indices of the choices.
template <class E>
requires std::is_enum_v<E>
constexpr Parameter<E> declareChoice(const char* name, const char* displayName, E defaultValue,
                                     std::span<const ParameterChoice> choices,
                                     const char* description) {
    return {{name, displayName, description, static_cast<int>(defaultValue), 0.0f, 0.0f, choices}};
}

/// What is required of the parameter's values, to be read after "must be": "a number from 0 to 1".
String describeRequirement(const ParameterDeclaration& parameter);

/// Whether the value has the parameter's type and lies in its range.
bool isAllowed(const ParameterDeclaration& parameter, const ParameterValue& value);

}  // namespace tavrin::colorkit
