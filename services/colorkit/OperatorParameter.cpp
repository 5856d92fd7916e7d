#include "services/colorkit/OperatorParameter.h"

#include <charconv>
#include <string>

namespace tavrin::colorkit {
namespace {

constexpr std::size_t kLargestText = 4096;

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

struct DefaultValue {
    template <class T>
    ParameterValue operator()(const T& value) const {
        return value;
    }
    template <class T>
    ParameterValue operator()(const Empty<T>&) const {
        return T();
    }
};

struct Requirement {
    const ParameterDeclaration& parameter;

    String getRange() const {
        return " from " + toText(parameter.minimum) + " to " + toText(parameter.maximum);
    }

    String operator()(bool) const { return "true or false"; }
    String operator()(float) const { return "a number" + getRange(); }
    String operator()(int) const { return listChoices(parameter.choices); }
    String operator()(const CompressedRgb&) const { return "three numbers" + getRange(); }
    String operator()(const Empty<String>&) const { return "a text"; }
    String operator()(const Empty<Path>&) const { return "the path of a file"; }
    String operator()(const Empty<std::vector<CurvePoint>>&) const {
        return "at most " + String::fromUtf8(std::to_string(kMostCurvePoints)) +
               " points [x, y] with rising x, from " + toText(-kLargestCurveStop) + " to " +
               toText(kLargestCurveStop);
    }
};

struct Check {
    const ParameterDeclaration& parameter;

    bool operator()(bool) const { return true; }
    bool operator()(float number) const {
        return number >= parameter.minimum && number <= parameter.maximum;
    }
    bool operator()(int choice) const {
        return choice >= 0 && static_cast<std::size_t>(choice) < parameter.choices.size();
    }
    bool operator()(const CompressedRgb& numbers) const {
        return (*this)(numbers.r) && (*this)(numbers.g) && (*this)(numbers.b);
    }
    bool operator()(const String& text) const { return text.size() <= kLargestText; }
    bool operator()(const Path& path) const { return path.std().native().size() <= kLargestText; }
    bool operator()(const std::vector<CurvePoint>& points) const { return isCurve(points); }
};

}  // namespace

ParameterValue getDefaultValue(const ParameterDeclaration& parameter) {
    return std::visit(DefaultValue{}, parameter.defaultValue);
}

String describeRequirement(const ParameterDeclaration& parameter) {
    return std::visit(Requirement{parameter}, parameter.defaultValue);
}

bool isAllowed(const ParameterDeclaration& parameter, const ParameterValue& value) {
    return value.index() == parameter.defaultValue.index() && std::visit(Check{parameter}, value);
}

}  // namespace tavrin::colorkit
