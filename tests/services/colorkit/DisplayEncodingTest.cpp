#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace tavrin::colorkit::test {
namespace {

using Floats = std::numeric_limits<float>;

/// A dense walk over the positive floats, from subnormal ones to the largest.
std::vector<float> walkPositiveFloats() {
    std::vector<float> values;
    for (std::uint32_t bits = 1; bits < 0x7F800000u; bits += 4001) {
        values.push_back(std::bit_cast<float>(bits));
    }
    values.push_back(Floats::max());
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

/// 2.2 stands for the curve of sRGB; subnormal numbers have no other power than 0.
double expectedCode(double x, float gamma) {
    if (gamma == 2.2f) {
        return x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1.0 / 2.4) - 0.055;
    }
    const double power = x < double{Floats::min()} ? 0.0 : std::pow(x, 1.0 / double{gamma});
    return std::min(power, double{Floats::max()});
}

TEST(DisplayEncoding, CurvesAreRightForAllFloats) {
    const std::vector<float> values = walkPositiveFloats();
    for (const float gamma : {0.3f, 0.9f, 1.8f, 2.2f, 2.4f, 10.0f}) {
        const std::vector<Rgb> pixels = encode(values, gamma);
        // A power may be 0 where the exact one is next to the subnormal numbers.
        const double smallest = gamma == 2.2f ? 1e-44 : 1.2e-38;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double expected = expectedCode(values[i], gamma);
            ASSERT_NEAR(pixels[i].r, expected, 1e-6 * expected + smallest)
                << values[i] << " at " << gamma;
        }
    }
}

TEST(DisplayEncoding, UnusableGammaCountsAsSrgb) {
    for (const float gamma : {0.0f, -1.0f, Floats::infinity(), Floats::quiet_NaN()}) {
        EXPECT_NEAR(encode({0.18f}, gamma).front().r, 0.4613561, 1e-6) << gamma;
    }
}

}  // namespace
}  // namespace tavrin::colorkit::test
