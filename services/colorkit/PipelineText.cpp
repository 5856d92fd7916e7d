#include "services/colorkit/PipelineText.h"

#include "foundation/Json.h"
#include "foundation/Result.h"
#include "foundation/Text.h"
#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/ParameterJson.h"
#include "services/colorkit/Pipeline.h"

#include <vector>

namespace tavrin::colorkit {
namespace {

constexpr int kVersion = 1;
// Reading takes time quadratic in the number of an object's members.
constexpr std::size_t kMaximumLength = std::size_t{128} * 1024;

constexpr const char* kVersionKey = "version";
constexpr const char* kOperatorsKey = "operators";
constexpr const char* kTypeKey = "type";
constexpr const char* kEnabledKey = "enabled";

String toText(std::size_t number) {
    return String::fromUtf8(std::to_string(number));
}

/// The first member of an operator that is neither its type, its switch nor a parameter.
Optional<String> findUnknownMember(const Json& json,
                                   const ColorMappingOperatorDescriptor& descriptor) {
    for (const auto& [key, value] : json.items()) {
        bool isKnown = key == kTypeKey || key == kEnabledKey;
        for (const ParameterDeclaration* parameter : descriptor.parameters) {
            isKnown = isKnown || key == parameter->name;
        }
        if (!isKnown) {
            return String::fromUtf8(key);
        }
    }
    return std::nullopt;
}

Result<OperatorValues> parseOperator(const Json& json) {
    if (!json.is_object() || !json.contains(kTypeKey) || !json[kTypeKey].is_string()) {
        return Failure("The tone mapping has an operator without a type.");
    }
    const String type = toString(json[kTypeKey]);
    const auto* descriptor = ColorMappingOperatorFactory::getInstance().findDescriptor(type);
    if (descriptor == nullptr) {
        return Failure("The tone mapping has the unknown operator " + Str::quote(type) + ".");
    }
    const String ofOperator = " of the tone mapping's operator " + Str::quote(type);
    if (const Optional<String> unknown = findUnknownMember(json, *descriptor)) {
        return Failure("The value " + Str::quote(*unknown) + ofOperator + " is unknown.");
    }

    OperatorValues values(*descriptor);
    const Json enabled = json.value(kEnabledKey, Json(true));
    if (!enabled.is_boolean()) {
        return Failure("The value \"enabled\"" + ofOperator + " must be true or false.");
    }
    values.setEnabled(enabled.get<bool>());
    for (std::size_t i = 0; i < descriptor->parameters.size(); ++i) {
        const ParameterDeclaration& parameter = *descriptor->parameters[i];
        const auto member = json.find(parameter.name);
        if (member == json.end()) {
            continue;
        }
        const Optional<ParameterValue> value = parseValue(parameter, *member);
        if (!value) {
            return Failure("The value " + Str::quote(parameter.name) + ofOperator + " must be " +
                           describeRequirement(parameter) + ".");
        }
        values.setAt(i, *value);
    }
    return values;
}

Result<Json> parseDocument(const String& text) {
    if (text.size() > kMaximumLength) {
        return Failure("The tone mapping has more than " + toText(kMaximumLength) + " characters.");
    }
    Result<Json> json = parseJson(text);
    if (!json) {
        return Failure("The tone mapping cannot be read: " + json.error());
    }
    if (!json->is_object() || !json->contains(kVersionKey) ||
        !(*json)[kVersionKey].is_number_integer()) {
        return Failure("The tone mapping has no version.");
    }
    if ((*json)[kVersionKey] > kVersion) {
        return Failure("The tone mapping was written by a newer version of the program.");
    }
    if ((*json)[kVersionKey] < kVersion) {
        return Failure("The tone mapping has an unknown version.");
    }
    if (!json->contains(kOperatorsKey) || !(*json)[kOperatorsKey].is_array()) {
        return Failure("The tone mapping has no list of operators.");
    }
    return json;
}

Result<std::vector<OperatorValues>> parseOperators(const String& text) {
    const Result<Json> json = parseDocument(text);
    if (!json) {
        return Failure(json.error());
    }
    const Json& list = (*json)[kOperatorsKey];
    if (list.size() > kMostOperators) {
        return Failure("The tone mapping has " + toText(list.size()) + " operators; at most " +
                       toText(kMostOperators) + " are possible.");
    }
    std::vector<OperatorValues> operators;
    for (const Json& item : list) {
        Result<OperatorValues> values = parseOperator(item);
        if (!values) {
            return Failure(values.error());
        }
        operators.push_back(std::move(*values));
    }
    return operators;
}

}  // namespace

String serializePipelineToString(const EntityHolder<IColorMappingOperator>& pipeline) {
    Json list = Json::array();
    for (const IColorMappingOperator* current : listOperators(pipeline)) {
        const OperatorValues& values = current->getValues();
        const ColorMappingOperatorDescriptor& descriptor = values.getDescriptor();
        Json item = {{kTypeKey, descriptor.typeName}, {kEnabledKey, values.isEnabled()}};
        for (std::size_t i = 0; i < descriptor.parameters.size(); ++i) {
            const ParameterDeclaration& parameter = *descriptor.parameters[i];
            item[parameter.name] = toJson(parameter, values.getAt(i));
        }
        list.push_back(std::move(item));
    }
    return dumpJson({{kVersionKey, kVersion}, {kOperatorsKey, std::move(list)}});
}

EntityHolder<IColorMappingOperator> deserializePipelineFromString(const String& text,
                                                                  String& error) {
    const Result<std::vector<OperatorValues>> operators = parseOperators(text);
    if (!operators) {
        error = operators.error();
        return {};
    }
    error = String();
    return makePipeline(*operators);
}

}  // namespace tavrin::colorkit
