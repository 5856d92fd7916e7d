#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// A simple film-like curve on each component: O x^c / (x^c + I), where O and I make a middle value
/// m_i become m_o and the white value H become 1: with a = m_i^c, b = H^c and d = a - m_o b,
/// I = a b (m_o - 1) / d and O = m_o (a - b) / d.
struct FilmicCurveOperator {
    static constexpr Parameter<float> kContrast =
        declareNumber("contrast", "Contrast", 1.55f, 0.5f, 4.0f,
                      "Above 1, dark parts become darker and bright parts brighter.");
    static constexpr Parameter<float> kMiddleIn = declareNumber(
        "middleIn", "Middle in", 0.18f, 0.01f, 0.9f, "The linear value that becomes the middle.");
    static constexpr Parameter<float> kMiddleOut = declareNumber(
        "middleOut", "Middle out", 0.215f, 0.01f, 0.9f, "The linear value the middle becomes.");
    static constexpr Parameter<float> kWhite = declareNumber(
        "white", "White", 10.0f, 1.0f, 100.0f, "The linear value that becomes white.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
