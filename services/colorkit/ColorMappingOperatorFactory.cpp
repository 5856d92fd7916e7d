#include "services/colorkit/ColorMappingOperatorFactory.h"

#include "services/colorkit/operators/AcesOperator.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/colorkit/operators/HighlightCompressionOperator.h"
#include "services/colorkit/operators/LutOperator.h"
#include "services/colorkit/operators/OpenColorIoViewOperator.h"
#include "services/colorkit/operators/SaturationOperator.h"
#include "services/colorkit/operators/VignetteOperator.h"
#include "services/colorkit/operators/WhiteBalanceOperator.h"

namespace tavrin::colorkit {

const ColorMappingOperatorFactory& ColorMappingOperatorFactory::getInstance() {
    static const ColorMappingOperatorFactory instance;
    return instance;
}

const ColorMappingOperatorDescriptor* ColorMappingOperatorFactory::findDescriptor(
    const String& typeName) const {
    const auto found = descriptors_.find(typeName);
    return found == descriptors_.end() ? nullptr : found->second;
}

ColorMappingOperatorFactory::ColorMappingOperatorFactory() {
    for (const ColorMappingOperatorDescriptor* descriptor : {
             &AcesOperator::kDescriptor,
             &ContrastOperator::kDescriptor,
             &ExposureOperator::kDescriptor,
             &HighlightCompressionOperator::kDescriptor,
             &LutOperator::kDescriptor,
             &OpenColorIoViewOperator::kDescriptor,
             &SaturationOperator::kDescriptor,
             &VignetteOperator::kDescriptor,
             &WhiteBalanceOperator::kDescriptor,
         }) {
        descriptors_.emplace(descriptor->typeName, descriptor);
    }
}

}  // namespace tavrin::colorkit
