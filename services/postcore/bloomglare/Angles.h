#pragma once

#include "foundation/Vec.h"

#include <cmath>
#include <numbers>

namespace tavrin::postcore {

inline constexpr float kPi = std::numbers::pi_v<float>;
inline constexpr float kTurn = 2.0f * kPi;

inline constexpr float toRadians(float degrees) {
    return degrees * (kPi / 180.0f);
}

/// The vector of length 1 in the direction of an angle in radians.
inline Vec2 getDirection(float angle) {
    return {std::cos(angle), std::sin(angle)};
}

}  // namespace tavrin::postcore
