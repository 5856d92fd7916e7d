#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// What is done to the picture that AgX forms.
enum class AgXLook { None, Punchy };

/// AgX by Sobotka in its Rec. 2020 form (Chow 2023): a matrix that draws colours towards grey, an
/// S-curve over 16.5 stops (10 below middle grey), a power of 2.4 back to linear, hues moved 60 %
/// back to where they were before the curve, and a matrix that gives colour back; cut off at 0 and
/// 1. The punchy look raises the display-encoded colours to the power 1.35 and makes their
/// saturation 1.4. Linear colours come out.
struct AgXOperator {
    static constexpr ParameterChoice kLooks[] = {{"none", "None"}, {"punchy", "Punchy"}};

    static constexpr Parameter<AgXLook> kLook =
        declareChoice("look", "Look", AgXLook::None, kLooks,
                      "None is soft; punchy has deeper shadows and stronger colours.");

    static constexpr float kHueRestoration = 0.6f;

    struct Curve {
        float stopScale;   ///< from log2 x to the range of the curve
        float stopOffset;  ///< from log2 x to the range of the curve
        float pivotX;
        float pivotY;
        float slope;
        float inverseToe;
        float inverseShoulder;
        float decoding;  ///< the power
    };

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
