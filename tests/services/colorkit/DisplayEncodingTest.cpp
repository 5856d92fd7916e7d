#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace tavrin::colorkit::test {
namespace {

/// A dense walk over the positive floats, from subnormal ones to the largest.
std::vector<float> walkPositiveFloats() {
    std::vector<float> values;
    for (std::uint32_t bits = 1; bits < 0x7F800000u; bits += 4001) {
        values.push_back(std::bit_cast<float>(bits));
    }
    values.push_back(std::numeric_limits<float>::max());
    return values;
}

std::vector<Rgb> encode(const std::vector<float>& values, float gamma) {
    std::vector<Rgb> pixels;
    for (const float value : values) {
        pixels.push_back({value, value, value, 1.0f});
    }
    return mapWith({}, pixels, gamma);
}

TEST(DisplayEncoding, SrgbCurveHasItsKnownValues) {
    // The middle of 8-bit codes and the ends, by the inverse curve of IEC 61966-2-1.
    const std::vector<float> linear = {0.0f, 0.0003035269835f, 0.0031308f, 0.2158605f, 0.18f, 1.0f};
    const double encoded[] = {0.0, 1.0 / 255.0, 0.04045, 128.0 / 255.0, 0.4613561, 1.0};
    const std::vector<Rgb> pixels = encode(linear, 2.2f);
    for (std::size_t i = 0; i < linear.size(); ++i) {
        EXPECT_NEAR(pixels[i].g, encoded[i], 1e-6) << linear[i];
    }
}

TEST(DisplayEncoding, SrgbCurveIsRightForAllFloats) {
    const std::vector<float> values = walkPositiveFloats();
    const std::vector<Rgb> pixels = encode(values, 2.2f);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double x = values[i];
        const double expected = x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1.0 / 2.4) - 0.055;
        ASSERT_NEAR(pixels[i].r, expected, 1e-6 * expected + 1e-44) << x;
    }
}

TEST(DisplayEncoding, PowersAreRightForAllFloats) {
    const std::vector<float> values = walkPositiveFloats();
    for (const float gamma : {0.3f, 0.9f, 1.8f, 2.4f, 10.0f}) {
        const std::vector<Rgb> pixels = encode(values, gamma);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double x = values[i];
            const bool isNormal = values[i] >= std::numeric_limits<float>::min();
            const double power = isNormal ? std::pow(x, 1.0 / double{gamma}) : 0.0;
            const double expected = std::min(power, double{std::numeric_limits<float>::max()});
            // A result may be 0 where the exact one is next to the subnormal numbers.
            ASSERT_NEAR(pixels[i].r, expected, 1e-6 * expected + 1.2e-38) << x << " at " << gamma;
        }
    }
}

TEST(DisplayEncoding, UnusableGammaCountsAsSrgb) {
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float gamma : {0.0f, -1.0f, infinity, std::nanf("")}) {
        EXPECT_NEAR(encode({0.18f}, gamma).front().r, 0.4613561, 1e-6) << gamma;
    }
}

}  // namespace
}  // namespace tavrin::colorkit::test
