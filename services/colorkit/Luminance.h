#pragma once

#include "services/colorkit/Matrix3.h"

namespace tavrin::colorkit {

/// The shares of linear R, G and B in the luminance Y (ITU-R BT.709).
inline constexpr Vector3 kLuminanceWeights{0.2126, 0.7152, 0.0722};

constexpr double getLuminance(double r, double g, double b) {
    return kLuminanceWeights[0] * r + kLuminanceWeights[1] * g + kLuminanceWeights[2] * b;
}

/// The linear value around which tone curves turn.
inline constexpr double kMiddleGrey = 0.18;

/// Y + s (x - Y): moves colours away from grey or towards it with their luminance kept.
constexpr Matrix3 saturationMatrix(double saturation) {
    Matrix3 matrix = Matrix3::diagonal({saturation, saturation, saturation});
    for (Vector3& row : matrix.rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            row[i] += (1.0 - saturation) * kLuminanceWeights[i];
        }
    }
    return matrix;
}

}  // namespace tavrin::colorkit
