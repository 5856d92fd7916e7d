#pragma once

#include "services/colorkit/ChromaticAdaptation.h"
#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Makes the light of a given colour white by chromatic adaptation from that light to 6500 K.
struct WhiteBalanceOperator {
    static constexpr ParameterChoice kMethods[] = {{"bradford", "Bradford"}, {"cat16", "CAT16"}};

    static constexpr Parameter<float> kTemperature =
        declareNumber("temperature", "Temperature (K)", 6500.0f, 1700.0f, 25000.0f,
                      "Colour temperature of the light that shall look white: lower values make "
                      "the image cooler, higher ones warmer.");
    static constexpr Parameter<float> kTint =
        declareNumber("tint", "Tint", 0.0f, -150.0f, 150.0f,
                      "Positive values take green out of the image, negative ones magenta.");
    static constexpr Parameter<AdaptationMethod> kMethod =
        declareChoice("method", "Method", AdaptationMethod::Bradford, kMethods,
                      "How the eye's adaptation to the light is modelled.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
