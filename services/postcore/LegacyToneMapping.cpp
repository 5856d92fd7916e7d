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
#include <cmath>

namespace tavrin::postcore {
namespace {

using namespace colorkit;

/// A legacy number and the parameter that has taken its place, with the same unit.
struct LegacyNumber {
    int id;
    const char* name;
    const ColorMappingOperatorDescriptor* operatorType;
    const Parameter<float>* parameter;
};

/// In the order in which the operators work on a colour.
constexpr LegacyNumber kNumbers[] = {
    {10001, "toneMapExposure", &ExposureOperator::kDescriptor, &ExposureOperator::kStops},
    {10002, "toneMapWhiteBalance", &WhiteBalanceOperator::kDescriptor,
     &WhiteBalanceOperator::kTemperature},
    {10003, "toneMapSaturation", &SaturationOperator::kDescriptor,
     &SaturationOperator::kSaturation},
    {10004, "toneMapContrast", &ContrastOperator::kDescriptor, &ContrastOperator::kContrast},
    {10005, "toneMapHighlightCompression", &HighlightCompressionOperator::kDescriptor,
     &HighlightCompressionOperator::kWhite},
};

PropertyDescriptor makeDescriptor(const LegacyNumber& number) {
    const Parameter<float>& parameter = *number.parameter;
    return {number.id,           number.name,
            PropertyType::Float, std::get<float>(parameter.defaultValue),
            parameter.minimum,   parameter.maximum};
}

}  // namespace

const std::vector<PropertyDescriptor>& getLegacyTonemappingDescriptors() {
    static const std::vector<PropertyDescriptor> descriptors = [] {
        std::vector<PropertyDescriptor> list;
        std::ranges::transform(kNumbers, std::back_inserter(list), makeDescriptor);
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
    for (const LegacyNumber& number : kNumbers) {
        const auto found = legacyValues_.find(number.id);
        const float* value = found == legacyValues_.end() ? nullptr : found->second.getIf<float>();
        if (value != nullptr && !std::isnan(*value)) {
            OperatorValues values(*number.operatorType);
            values.set(*number.parameter,
                       std::clamp(*value, number.parameter->minimum, number.parameter->maximum));
            operators.push_back(std::move(values));
        }
    }
    return makePipeline(operators);
}

}  // namespace tavrin::postcore
