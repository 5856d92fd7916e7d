#pragma once

namespace tavrin::postcore {

/// From `a` at part 0 to `b` at part 1, without the care for exactness at the ends that keeps
/// std::lerp from being fast.
template <class T>
constexpr T mix(T a, T b, T part) {
    return a + part * (b - a);
}

/// From 0 at 0 to 1 at 1 with slope 0 at both.
template <class T>
constexpr T smoothStep(T t) {
    return t * t * (T(3) - T(2) * t);
}

}  // namespace tavrin::postcore
