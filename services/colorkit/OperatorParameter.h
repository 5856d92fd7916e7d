#pragma once

#include "foundation/Color.h"
#include "foundation/Path.h"
#include "foundation/String.h"
#include "services/colorkit/CurvePoint.h"

#include <span>
#include <type_traits>
#include <variant>

namespace tavrin::colorkit {

/// The value of a parameter: a switch, a number, the index of a choice, three numbers, a text, the
/// path of a file (empty: none), or the points of a curve.
using ParameterValue =
    std::variant<bool, float, int, CompressedRgb, String, Path, std::vector<CurvePoint>>;

/// Stands for the empty value of a type that constants cannot hold.
template <class T>
struct Empty {};

/// The same alternatives as ParameterValue, in the same order, for constants.
using ParameterDefault = std::variant<bool, float, int, CompressedRgb, Empty<String>, Empty<Path>,
                                      Empty<std::vector<CurvePoint>>>;

/// One of the alternatives of a choice. The name stands in pipeline texts and never changes.
struct ParameterChoice {
    const char* name;
    const char* displayName;
};

/// Everything there is to know of a parameter of an operator. It is declared once, as a constant of
/// the operator; the text form, the checks and the user interface read it from there.
struct ParameterDeclaration {
    const char* name;         ///< in pipeline texts; never changes
    const char* displayName;  ///< null: the name serves
    const char* description;  ///< null: there is none
    ParameterDefault defaultValue;
    float minimum = 0.0f;  ///< of a number and of each of three
    float maximum = 0.0f;  ///< of a number and of each of three
    std::span<const ParameterChoice> choices = {};
    bool isSlider = false;  ///< of a number: it is shown with a slider
};

/// A declaration that knows the type of its values: one of ParameterValue's alternatives, or the
/// enumeration of a choice.
template <class T>
struct Parameter : ParameterDeclaration {};

constexpr Parameter<bool> declareSwitch(const char* name, const char* displayName,
                                        bool defaultValue, const char* description) {
    return {{name, displayName, description, defaultValue}};
}

constexpr Parameter<float> declareNumber(const char* name, const char* displayName,
                                         float defaultValue, float minimum, float maximum,
                                         const char* description) {
    return {{name, displayName, description, defaultValue, minimum, maximum}};
}

/// The same number, shown with a slider.
constexpr Parameter<float> withSlider(Parameter<float> number) {
    number.isSlider = true;
    return number;
}

/// Three numbers, one for each of red, green and blue.
constexpr Parameter<CompressedRgb> declareNumbers(const char* name, const char* displayName,
                                                  CompressedRgb defaultValue, float minimum,
                                                  float maximum, const char* description) {
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

/// A text, a path or a curve, empty at first.
template <class T>
constexpr Parameter<T> declareEmpty(const char* name, const char* displayName,
                                    const char* description) {
    return {{name, displayName, description, Empty<T>{}}};
}

ParameterValue getDefaultValue(const ParameterDeclaration& parameter);

/// What is required of the parameter's values, to be read after "must be": "a number from 0 to 1".
String describeRequirement(const ParameterDeclaration& parameter);

/// Whether the value has the parameter's type and lies in its range. Texts and paths have at most
/// 4096 characters.
bool isAllowed(const ParameterDeclaration& parameter, const ParameterValue& value);

}  // namespace tavrin::colorkit
