#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Brings every component of linear colours into a range; when that is empty, all become its
/// maximum.
struct ClampOperator {
    static constexpr Parameter<float> kMinimum =
        declareNumber("minimum", "Minimum", 0.0f, -1e6f, 1e6f, "What is darker becomes this.");
    static constexpr Parameter<float> kMaximum =
        declareNumber("maximum", "Maximum", 1.0f, -1e6f, 1e6f, "What is brighter becomes this.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
