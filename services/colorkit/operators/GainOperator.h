#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Multiplies each component of linear colours by its own factor.
struct GainOperator {
    static constexpr Parameter<CompressedRgb> kFactors =
        declareNumbers("factors", "Factors", {1.0f, 1.0f, 1.0f}, 0.0f, 1e6f,
                       "What red, green and blue are multiplied by.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
