#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Spreads linear colours around a pivot: p · max(0, x/p)^c.
struct ContrastOperator {
    static constexpr Parameter<float> kContrast =
        declareNumber("contrast", "Contrast", 1.0f, 0.1f, 4.0f,
                      "Above 1, dark parts become darker and bright parts brighter.");
    static constexpr Parameter<float> kPivot =
        declareNumber("pivot", "Pivot", 0.18f, 0.001f, 1.0f,
                      "The linear value that stays as it is; 0.18 is middle grey.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
