#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// The filmic curve of Hable 2010 ("Uncharted 2: HDR Lighting", Game Developers Conference) on each
/// component: f(2x) / f(white) with
/// f(x) = (x (Ax + CB) + DE) / (x (Ax + B) + DF) - E/F.
struct FilmicOperator {
    static constexpr Parameter<float> kShoulderStrength =
        declareNumber("shoulderStrength", "Shoulder strength", 0.15f, 0.0f, 1.0f,
                      "How strongly highlights are compressed.");
    static constexpr Parameter<float> kLinearStrength =
        declareNumber("linearStrength", "Linear strength", 0.5f, 0.0f, 1.0f,
                      "How long the straight part in the middle is.");
    static constexpr Parameter<float> kLinearAngle =
        declareNumber("linearAngle", "Linear angle", 0.1f, 0.0f, 1.0f,
                      "How steep the straight part in the middle is.");
    static constexpr Parameter<float> kToeStrength = declareNumber(
        "toeStrength", "Toe strength", 0.2f, 0.01f, 1.0f, "How strongly shadows are darkened.");
    static constexpr Parameter<float> kToeNumerator =
        declareNumber("toeNumerator", "Toe numerator", 0.02f, 0.0f, 1.0f,
                      "Together with the toe denominator, how deep shadows become.");
    static constexpr Parameter<float> kToeDenominator =
        declareNumber("toeDenominator", "Toe denominator", 0.3f, 0.01f, 1.0f,
                      "Together with the toe numerator, how deep shadows become.");
    static constexpr Parameter<float> kWhite = declareNumber(
        "white", "White", 11.2f, 1.0f, 50.0f, "Twice the linear value that becomes white.");

    /// x (numerator2 x + numerator1) / (denominator2 x² + denominator1 x + denominator0)
    struct Numbers {
        float numerator2;
        float numerator1;
        float denominator2;
        float denominator1;
        float denominator0;
    };

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
