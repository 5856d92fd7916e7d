#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Multiplies linear colours, as columns, by a 3 × 3 matrix.
struct MatrixOperator {
    static constexpr Parameter<CompressedRgb> kRed =
        declareNumbers("red", "Red", {1.0f, 0.0f, 0.0f}, -1000.0f, 1000.0f,
                       "The shares of red, green and blue in the new red.");
    static constexpr Parameter<CompressedRgb> kGreen =
        declareNumbers("green", "Green", {0.0f, 1.0f, 0.0f}, -1000.0f, 1000.0f,
                       "The shares of red, green and blue in the new green.");
    static constexpr Parameter<CompressedRgb> kBlue =
        declareNumbers("blue", "Blue", {0.0f, 0.0f, 1.0f}, -1000.0f, 1000.0f,
                       "The shares of red, green and blue in the new blue.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
