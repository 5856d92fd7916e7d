#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"
#include "services/colorkit/simd/ScaledPower.h"

namespace tavrin::colorkit {

/// Slope, offset and power on each component, then saturation, as the ASC Color Decision List 1.2
/// defines them: (x S + O)^P, then Y + s (x - Y). With clamping, values are kept from 0 to 1 before
/// the power and at the end, as that text has it; without, nothing is cut off, and negative values
/// pass the power as they are.
struct LiftGammaGainOperator {
    static constexpr Parameter<CompressedRgb> kSlope =
        declareNumbers("slope", "Gain (slope)", {1.0f, 1.0f, 1.0f}, 0.0f, 4.0f,
                       "What red, green and blue are multiplied by; works on highlights most.");
    static constexpr Parameter<CompressedRgb> kOffset =
        declareNumbers("offset", "Lift (offset)", {0.0f, 0.0f, 0.0f}, -1.0f, 1.0f,
                       "What is added to red, green and blue; works on shadows most.");
    static constexpr Parameter<CompressedRgb> kPower =
        declareNumbers("power", "Gamma (power)", {1.0f, 1.0f, 1.0f}, 0.1f, 4.0f,
                       "Exponents of red, green and blue; above 1 midtones become darker.");
    static constexpr Parameter<float> kSaturation =
        declareNumber("saturation", "Saturation", 1.0f, 0.0f, 4.0f,
                      "0 gives greys, 1 changes nothing, more makes colours stronger.");
    static constexpr Parameter<bool> kClamp = declareSwitch(
        "clamp", "Clamp", false, "Cuts off what is darker than 0 or brighter than 1.");

    struct Powers {
        ScaledPower r;
        ScaledPower g;
        ScaledPower b;
    };

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
