#include "services/colorkit/ParameterJson.h"

#include <cmath>
#include <limits>

namespace tavrin::colorkit {
namespace {

struct Writer {
    const ParameterDeclaration& parameter;

    Json operator()(bool isOn) const { return isOn; }
    Json operator()(float number) const { return foundation::toJson(number); }
    Json operator()(int choice) const {
        return parameter.choices[static_cast<std::size_t>(choice)].name;
    }
    Json operator()(const CompressedRgb& numbers) const {
        return Json::array({(*this)(numbers.r), (*this)(numbers.g), (*this)(numbers.b)});
    }
    Json operator()(const String& text) const { return foundation::toJson(text); }
    Json operator()(const Path& path) const { return foundation::toJson(path.generic()); }
    Json operator()(const std::vector<CurvePoint>& points) const {
        Json list = Json::array();
        for (const CurvePoint& point : points) {
            list.push_back(Json::array({(*this)(point.x), (*this)(point.y)}));
        }
        return list;
    }
};

/// Numbers that no float holds are nothing.
Optional<float> parseNumber(const Json& json) {
    if (!json.is_number() || !(std::abs(json.get<double>()) <= std::numeric_limits<float>::max())) {
        return std::nullopt;
    }
    return static_cast<float>(json.get<double>());
}

/// `count` numbers in an array.
Optional<std::vector<float>> parseNumbers(const Json& json, std::size_t count) {
    if (!json.is_array() || json.size() != count) {
        return std::nullopt;
    }
    std::vector<float> numbers;
    for (const Json& item : json) {
        const Optional<float> number = parseNumber(item);
        if (!number) {
            return std::nullopt;
        }
        numbers.push_back(*number);
    }
    return numbers;
}

/// Chosen by the type of the parameter's default.
struct Reader {
    const ParameterDeclaration& parameter;
    const Json& json;

    Optional<ParameterValue> operator()(bool) const {
        return json.is_boolean() ? Optional<ParameterValue>(json.get<bool>()) : std::nullopt;
    }
    Optional<ParameterValue> operator()(float) const { return parseNumber(json); }
    Optional<ParameterValue> operator()(int) const {
        for (std::size_t i = 0; json.is_string() && i < parameter.choices.size(); ++i) {
            if (json.get_ref<const std::string&>() == parameter.choices[i].name) {
                return static_cast<int>(i);
            }
        }
        return std::nullopt;
    }
    Optional<ParameterValue> operator()(const CompressedRgb&) const {
        const auto numbers = parseNumbers(json, 3);
        if (!numbers) {
            return std::nullopt;
        }
        return CompressedRgb{(*numbers)[0], (*numbers)[1], (*numbers)[2]};
    }
    Optional<ParameterValue> operator()(const Empty<String>&) const {
        return json.is_string() ? Optional<ParameterValue>(toString(json)) : std::nullopt;
    }
    Optional<ParameterValue> operator()(const Empty<Path>&) const {
        return json.is_string() ? Optional<ParameterValue>(Path(toString(json))) : std::nullopt;
    }
    Optional<ParameterValue> operator()(const Empty<std::vector<CurvePoint>>&) const {
        if (!json.is_array()) {
            return std::nullopt;
        }
        std::vector<CurvePoint> points;
        for (const Json& item : json) {
            const auto pair = parseNumbers(item, 2);
            if (!pair) {
                return std::nullopt;
            }
            points.push_back({(*pair)[0], (*pair)[1]});
        }
        return points;
    }
};

}  // namespace

Json toJson(const ParameterDeclaration& parameter, const ParameterValue& value) {
    return std::visit(Writer{parameter}, value);
}

Optional<ParameterValue> parseValue(const ParameterDeclaration& parameter, const Json& json) {
    Optional<ParameterValue> value = std::visit(Reader{parameter, json}, parameter.defaultValue);
    return value && isAllowed(parameter, *value) ? value : std::nullopt;
}

}  // namespace tavrin::colorkit
