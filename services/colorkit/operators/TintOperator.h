#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Multiplies linear colours by a colour, as a filter in front of the lens does: x · colour, mixed
/// with x by the amount.
struct TintOperator {
    static constexpr Parameter<CompressedRgb> kColor =
        declareNumbers("color", "Colour", {1.0f, 1.0f, 1.0f}, 0.0f, 1.0f,
                       "The linear colour of the filter; white changes nothing.");
    static constexpr Parameter<float> kAmount =
        declareNumber("amount", "Amount", 1.0f, 0.0f, 1.0f, "0 changes nothing, 1 tints in full.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
