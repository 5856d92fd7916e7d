#include "tests/services/colorkit/MappingFixtures.h"

#include "services/colorkit/ColorMappingOperator.h"
#include "services/colorkit/Pipeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace tavrin::colorkit::test {
namespace {

constexpr float kLargest = std::numeric_limits<float>::max();
constexpr float kSmallestNormal = std::numeric_limits<float>::min();

}  // namespace

std::vector<Rgb> mapWith(const std::vector<OperatorValues>& operators, std::vector<Rgb> pixels,
                         float gamma) {
    CommonColorMappingContext context;
    context.displayGamma = gamma;
    const ColorMappingOperator<0> mapping(makePipeline(operators), true, {context, {640, 480}});
    mapping.mapRow(pixels, {});
    return pixels;
}

std::vector<Rgb> makeColors() {
    const float corners[] = {0.0f,
                             -0.0f,
                             -1.0f,
                             -kLargest,
                             1.0f,
                             0.18f,
                             kSmallestNormal / 2,
                             kSmallestNormal,
                             1e-30f,
                             1e30f,
                             kLargest,
                             std::numeric_limits<float>::infinity(),
                             -std::numeric_limits<float>::infinity(),
                             std::numeric_limits<float>::quiet_NaN()};
    std::vector<Rgb> colors;
    for (const float r : corners) {
        for (const float g : corners) {
            for (const float b : corners) {
                colors.push_back({r, g, b, r});
            }
        }
    }
    std::mt19937 random(1);
    std::uniform_real_distribution<float> magnitude(-24.0f, 24.0f);
    const auto next = [&] { return std::exp2(magnitude(random)); };
    for (int i = 0; i < 3000; ++i) {
        colors.push_back({next(), next(), next(), next()});
    }
    std::shuffle(colors.begin(), colors.end(), random);
    colors.resize(colors.size() - colors.size() % 64 + 37);
    return colors;
}

Reference toMappable(const Rgb& color) {
    const auto clamp = [](float value) {
        return value > 0.0f ? std::min(double{value}, double{kLargest}) : 0.0;
    };
    return {clamp(color.r), clamp(color.g), clamp(color.b)};
}

void expectClose(const Rgb& actual, const Reference& expected, double largestTerm) {
    const float components[] = {actual.r, actual.g, actual.b};
    for (int i = 0; i < 3; ++i) {
        const double wanted = std::clamp(expected[i], 0.0, double{kLargest});
        // Subnormal results may become 0.
        const double tolerance =
            1e-5 * std::max(wanted, std::min(largestTerm, double{kLargest})) + kSmallestNormal;
        EXPECT_NEAR(components[i], wanted, tolerance) << "component " << i;
    }
}

bool haveSameBits(const Rgb& left, const Rgb& right) {
    return std::memcmp(&left, &right, sizeof(Rgb)) == 0;
}

}  // namespace tavrin::colorkit::test
