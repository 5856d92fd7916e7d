#include "services/postcore/LegacyToneMapping.h"

#include "foundation/Exception.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/colorkit/operators/HighlightCompressionOperator.h"
#include "services/colorkit/operators/LutOperator.h"
#include "services/colorkit/operators/SaturationOperator.h"
#include "services/colorkit/operators/VignetteOperator.h"
#include "services/colorkit/operators/WhiteBalanceOperator.h"

#include <algorithm>

namespace tavrin::postcore {
namespace {

using namespace colorkit;

/// A legacy parameter and the one that has taken its place, with the same unit.
struct LegacyParameter {
    int id;
    const char* name;
    const ColorMappingOperatorDescriptor* operatorType;
    const ParameterDeclaration* parameter;  ///< a number or a path
};

/// In the order in which the operators work on a colour.
constexpr LegacyParameter kParameters[] = {
    {10001, "toneMapExposure", &ExposureOperator::kDescriptor, &ExposureOperator::kStops},
    {10002, "toneMapWhiteBalance", &WhiteBalanceOperator::kDescriptor,
     &WhiteBalanceOperator::kTemperature},
    {10003, "toneMapVignette", &VignetteOperator::kDescriptor, &VignetteOperator::kStrength},
    {10004, "toneMapSaturation", &SaturationOperator::kDescriptor,
     &SaturationOperator::kSaturation},
    {10005, "toneMapContrast", &ContrastOperator::kDescriptor, &ContrastOperator::kContrast},
    {10006, "toneMapHighlightCompression", &HighlightCompressionOperator::kDescriptor,
     &HighlightCompressionOperator::kWhite},
    {10007, "toneMapLutPath", &LutOperator::kDescriptor, &LutOperator::kPath},
    {10008, "toneMapLutOpacity", &LutOperator::kDescriptor, &LutOperator::kOpacity},
};

PropertyDescriptor makeDescriptor(const LegacyParameter& legacy) {
    const ParameterDeclaration& parameter = *legacy.parameter;
    if (const float* value = std::get_if<float>(&parameter.defaultValue)) {
        return {legacy.id, legacy.name,       PropertyType::Float,
                *value,    parameter.minimum, parameter.maximum};
    }
    return {legacy.id, legacy.name, PropertyType::String, String(), {}, {}};
}

/// The value as the parameter takes it, if it can.
Optional<ParameterValue> convert(const Property& property, const ParameterDeclaration& parameter) {
    Optional<ParameterValue> value;
    if (const float* number = property.getIf<float>()) {
        value = std::clamp(*number, parameter.minimum, parameter.maximum);
    } else if (const String* text = property.getIf<String>()) {
        value = Path(*text);
    }
    return value && isAllowed(parameter, *value) ? value : std::nullopt;
}

void setParameter(OperatorValues& values, const ParameterDeclaration& parameter,
                  const ParameterValue& value) {
    const auto& parameters = values.getDescriptor().parameters;
    const auto found = std::ranges::find(parameters, &parameter);
    values.setAt(static_cast<std::size_t>(found - parameters.begin()), value);
}

bool isLutWithoutFile(const OperatorValues& values) {
    return &values.getDescriptor() == &LutOperator::kDescriptor &&
           values.get(LutOperator::kPath).isEmpty();
}

}  // namespace

const std::vector<PropertyDescriptor>& getLegacyTonemappingDescriptors() {
    static const std::vector<PropertyDescriptor> descriptors = [] {
        std::vector<PropertyDescriptor> list;
        std::ranges::transform(kParameters, std::back_inserter(list), makeDescriptor);
        return list;
    }();
    return descriptors;
}

Property LegacyAwarePostParamsSettings::get(int) const {
    throw Exception("Settings cannot be read while they are imported.");
}

void LegacyAwarePostParamsSettings::set(int id, const Property& value) {
    const bool isLegacy = std::ranges::any_of(
        getLegacyTonemappingDescriptors(),
        [id](const PropertyDescriptor& descriptor) { return descriptor.id == id; });
    if (isLegacy) {
        legacyValues_[id] = value;
    } else {
        target_.set(id, value);
    }
}

EntityHolder<IColorMappingOperator> LegacyAwarePostParamsSettings::getColorMappingPipeline() const {
    std::vector<OperatorValues> operators;
    for (const LegacyParameter& legacy : kParameters) {
        const auto found = legacyValues_.find(legacy.id);
        const auto value =
            found != legacyValues_.end() ? convert(found->second, *legacy.parameter) : std::nullopt;
        if (!value) {
            continue;
        }
        if (operators.empty() || &operators.back().getDescriptor() != legacy.operatorType) {
            operators.emplace_back(*legacy.operatorType).setEnabled(true);
        }
        setParameter(operators.back(), *legacy.parameter, *value);
    }
    std::erase_if(operators, isLutWithoutFile);
    return makePipeline(operators);
}

}  // namespace tavrin::postcore
