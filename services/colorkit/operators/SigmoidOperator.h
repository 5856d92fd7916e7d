#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// An S-curve over the logarithm of each component that has a middle, a black and a white: the
/// generalised log-logistic W (f / (P + f))^q with f = (fog + x)^p. The skew gives q = 5^-skew; p,
/// P and the fog follow from the black, the white, middle grey, which stays what it is, and the
/// slope there, which for a black of 0 is that of the curve x^contrast / (x^contrast + const) to 1.
struct SigmoidOperator {
    static constexpr Parameter<float> kContrast =
        declareNumber("contrast", "Contrast", 1.6f, 0.1f, 10.0f, "How steep the middle is.");
    static constexpr Parameter<float> kSkew =
        declareNumber("skew", "Skew", 0.0f, -1.0f, 1.0f,
                      "Below 0 shadows are compressed more, above 0 highlights.");
    static constexpr Parameter<float> kWhite =
        declareNumber("white", "White (%)", 100.0f, 20.0f, 1600.0f,
                      "What the brightest highlights become; 100 is the display's white.");
    static constexpr Parameter<float> kBlack =
        declareNumber("black", "Black (%)", 0.0152f, 0.0f, 15.0f,
                      "What black becomes; 0 is the display's black.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
