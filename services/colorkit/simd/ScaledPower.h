#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace tavrin::colorkit {

/// The function scale · x^exponent, prepared for vectors as 2^(exponent · log2 x + log2 scale). Its
/// numbers are split so that products with the integer part of log2 x are exact and nothing is
/// lost when integer parts cancel.
struct ScaledPower {
    /// scale and exponent positive and finite.
    ScaledPower(double scale, double exponentValue)
        : exponent(static_cast<float>(exponentValue)),
          // 12 bits of the exponent times 8 bits of an integer fit in a float.
          exponentHigh(std::bit_cast<float>(std::bit_cast<std::uint32_t>(exponent) & 0xFFFFF000u)),
          exponentLow(static_cast<float>(exponentValue - exponentHigh)),
          offsetInteger(static_cast<float>(std::nearbyint(std::log2(scale)))),
          offsetFraction(static_cast<float>(std::log2(scale) - offsetInteger)) {}

    float exponent;
    float exponentHigh;
    float exponentLow;
    float offsetInteger;
    float offsetFraction;
};

}  // namespace tavrin::colorkit
