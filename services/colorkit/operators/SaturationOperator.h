#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Moves linear colours away from grey or towards it with their luminance kept: Y + s (x − Y).
struct SaturationOperator {
    static constexpr Parameter<float> kSaturation =
        declareNumber("saturation", "Saturation", 1.0f, 0.0f, 4.0f,
                      "0 gives greys, 1 changes nothing, more makes colours stronger.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
