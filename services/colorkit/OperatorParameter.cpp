#include "services/colorkit/OperatorParameter.h"

#include <charconv>
#include <string>

namespace tavrin::colorkit {
namespace {

String toText(float number) {
    char text[32];
    const auto end = std::to_chars(std::begin(text), std::end(text), number).ptr;
    return String::fromUtf8({text, end});
}

String listChoices(std::span<const ParameterChoice> choices) {
    String list;
    for (const ParameterChoice& choice : choices) {
        list += (list.isEmpty() ? "\"" : " or \"") + String(choice.name) + "\"";
    }
    return list;
}

}  // namespace

String describeRequirement(const ParameterDeclaration& parameter) {
    if (std::holds_alternative<bool>(parameter.defaultValue)) {
        return "true or false";
    }
    if (std::holds_alternative<int>(parameter.defaultValue)) {
        return listChoices(parameter.choices);
    }
    return "a number from " + toText(parameter.minimum) + " to " + toText(parameter.maximum);
}

bool isAllowed(const ParameterDeclaration& parameter, const ParameterValue& value) {
    if (value.index() != parameter.defaultValue.index()) {
        return false;
    }
    if (const float* number = std::get_if<float>(&value)) {
        return *number >= parameter.minimum && *number <= parameter.maximum;
    }
    if (const int* choice = std::get_if<int>(&value)) {
        return *choice >= 0 && static_cast<std::size_t>(*choice) < parameter.choices.size();
    }
    return true;
}

}  // namespace tavrin::colorkit
