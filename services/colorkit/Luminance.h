#pragma once

#include "services/colorkit/Matrix3.h"

namespace tavrin::colorkit {

/// The shares of linear R, G and B in the luminance Y (ITU-R BT.709).
inline constexpr Vector3 kLuminanceWeights{0.2126, 0.7152, 0.0722};

}  // namespace tavrin::colorkit
