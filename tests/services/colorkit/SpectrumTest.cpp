#include "services/colorkit/Spectrum.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavrin::colorkit::test {
namespace {

Rgb tint(const Rgb& light, const Rgb& color) {
    return radianceToLinearSrgb(linearSrgbToReflectance(color) * linearSrgbToRadiance(light));
}

TEST(Spectrum, WhiteChangesNoLight) {
    for (Rgb light : makeColors()) {
        light.a = 1.0f;
        const Rgb tinted = tint(light, {1.0f, 1.0f, 1.0f, 1.0f});
        light.a = 0.0f;
        if (!std::isnan(light.r) && !std::isnan(light.g) && !std::isnan(light.b)) {
            EXPECT_TRUE(haveSameBits(tinted, light));
        }
    }
}

TEST(Spectrum, WhiteLightTakesTheColorOfTheReflectance) {
    EXPECT_EQ(tint({1.0f, 1.0f, 1.0f, 1.0f}, {0.2f, 3.0f, 0.0f, 1.0f}), (Rgb{0.2f, 3.0f, 0.0f}));
    EXPECT_EQ(tint({0.5f, 2.0f, 4.0f, 1.0f}, {2.0f, 0.5f, 0.0f, 1.0f}), (Rgb{1.0f, 1.0f, 0.0f}));
}

}  // namespace
}  // namespace tavrin::colorkit::test
