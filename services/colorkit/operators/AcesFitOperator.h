#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// The fit by Hill of the reference rendering and SDR output transforms of the Academy Color
/// Encoding System 1.0 (first published with the "BakingLab" of Pettineo and Hill, 2016): a matrix,
/// (v (v + 0.0245786) - 0.000090537) / (v (0.983729 v + 0.432951) + 0.238081) on each component,
/// another matrix, cut off at 0 and 1. Linear colours come out.
struct AcesFitOperator {
    static constexpr Parameter<float> kExposure =
        declareNumber("exposure", "Exposure (EV)", 0.0f, -10.0f, 10.0f,
                      "Brightness in stops before the curve, which darkens the midtones.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
