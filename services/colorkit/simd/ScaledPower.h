#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace tavrin::colorkit {

/// The function scale · x^exponent, prepared for vectors as 2^(exponent · log2 x + log2 scale). Its
/// numbers are split so that products with the integer part of log2 x are exact and nothing is
/// lost when integer parts cancel.
struct ScaledPower {
    /// The scale positive, both finite.
    ScaledPower(double scale, double exponentValue)
        : ScaledPower(Log2{std::log2(scale)}, exponentValue) {}

    /// For scales of any magnitude.
    static ScaledPower fromLog2(double log2Scale, double exponentValue) {
        return {Log2{log2Scale}, exponentValue};
    }

    float exponent;
    float exponentHigh;
    float exponentLow;
    float offsetInteger;
    float offsetFraction;

private:
    struct Log2 {
        double value;
    };

    ScaledPower(Log2 log2Scale, double exponentValue)
        : exponent(static_cast<float>(exponentValue)),
          // 12 bits of the exponent times 8 bits of an integer fit in a float.
          exponentHigh(std::bit_cast<float>(std::bit_cast<std::uint32_t>(exponent) & 0xFFFFF000u)),
          exponentLow(static_cast<float>(exponentValue - exponentHigh)),
          offsetInteger(static_cast<float>(std::nearbyint(log2Scale.value))),
          offsetFraction(static_cast<float>(log2Scale.value - offsetInteger)) {}
};

}  // namespace tavrin::colorkit
