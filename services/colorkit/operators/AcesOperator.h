#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// The reference and output transforms of the Academy Color Encoding System, version 1.0, for a
/// video display of 100 nits, as OpenColorIO computes them.
struct AcesOperator {
    static constexpr Parameter<float> kExposure =
        declareNumber("exposure", "Exposure (EV)", 0.0f, -10.0f, 10.0f,
                      "Stops before the transform, which shows middle grey rather dark.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
