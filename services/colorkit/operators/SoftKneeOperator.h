#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Bends linear colours above a threshold t smoothly towards a limit m, each component for itself:
/// t + (m - t) (1 - e^(-(x - t) / (m - t))) above t, x below. Where the limit lies below the
/// threshold, colours are cut off at the threshold.
struct SoftKneeOperator {
    static constexpr Parameter<float> kThreshold =
        declareNumber("threshold", "Threshold", 0.8f, 0.0f, 1.0f,
                      "The linear value up to which nothing changes.");
    static constexpr Parameter<float> kLimit =
        declareNumber("limit", "Limit", 1.0f, 0.1f, 10.0f,
                      "The linear value that even the brightest highlights do not exceed.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
