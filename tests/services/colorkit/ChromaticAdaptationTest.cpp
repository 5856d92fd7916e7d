#include "services/colorkit/ChromaticAdaptation.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavrin::colorkit::test {
namespace {

void expectNear(const Matrix3& actual, const Matrix3& expected, double tolerance) {
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            EXPECT_NEAR(actual.rows[i][j], expected.rows[i][j], tolerance) << i << ", " << j;
        }
    }
}

TEST(ChromaticAdaptation, Rec709MatrixIsThePublishedOne) {
    // IEC 61966-2-1.
    const Matrix3 expected{
        {{{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}}};
    expectNear(rec709ToXyz(), expected, 6e-5);
}

TEST(ChromaticAdaptation, BradfordFromD65ToD50IsThePublishedOne) {
    // Lindbloom's table of adaptation matrices, whose whites are those of ASTM E308.
    const Matrix3 expected{{{{1.0478112, 0.0228866, -0.0501270},
                             {0.0295424, 0.9904844, -0.0170491},
                             {-0.0092345, 0.0150436, 0.7521316}}}};
    const auto fromXyz = [](double x, double z) {
        return Chromaticity{x / (x + 1.0 + z), 1.0 / (x + 1.0 + z)};
    };
    expectNear(
        adaptXyz(fromXyz(0.95047, 1.08883), fromXyz(0.96422, 0.82521), AdaptationMethod::Bradford),
        expected, 1e-6);
}

TEST(ChromaticAdaptation, LightsHaveTheirPublishedChromaticities) {
    struct Light {
        double temperature, x, y;
    };
    // CIE 15; black bodies of 2000 K and 4000 K as integrated with the 1931 observer, which the
    // approximation of the curve follows to 1e-4 in (u, v).
    for (const Light& light : {Light{2856, 0.44757, 0.40745}, Light{2000, 0.52669, 0.41331},
                               Light{4000, 0.38045, 0.37675}, Light{5000, 0.34567, 0.35850},
                               Light{6500, 0.31272, 0.32903}, Light{7500, 0.29902, 0.31485}}) {
        const Chromaticity found = lightOfTemperature(light.temperature, 0.0);
        EXPECT_NEAR(found.x, light.x, 4e-4) << light.temperature;
        EXPECT_NEAR(found.y, light.y, 4e-4) << light.temperature;
    }
}

TEST(ChromaticAdaptation, LightsMoveWithoutJumpsAndGiveBoundedMatrices) {
    Chromaticity last = lightOfTemperature(1700, 0);
    for (double temperature = 1710; temperature <= 25000; temperature += 10) {
        SCOPED_TRACE(temperature);
        const Chromaticity light = lightOfTemperature(temperature, 0);
        EXPECT_LT(light.x, last.x);
        EXPECT_LT(std::hypot(last.x - light.x, last.y - light.y), 4e-3);
        last = light;
        for (const double tint : {-150.0, 150.0}) {
            for (const auto method : {AdaptationMethod::Bradford, AdaptationMethod::Cat16}) {
                const Chromaticity tinted = lightOfTemperature(temperature, tint);
                for (const Vector3& row : adaptRec709(tinted, kD65, method).rows) {
                    EXPECT_LT(std::abs(row[0]) + std::abs(row[1]) + std::abs(row[2]), 300.0);
                }
            }
        }
    }
}

TEST(ChromaticAdaptation, TintIsADistanceAtRightAnglesTowardsGreen) {
    const auto toUniform = [](const Chromaticity& c) {
        const double d = -2 * c.x + 12 * c.y + 3;
        return std::pair{4 * c.x / d, 6 * c.y / d};
    };
    const auto [u, v] = toUniform(lightOfTemperature(6500, 0));
    const auto [tintedU, tintedV] = toUniform(lightOfTemperature(6500, 30));
    const auto [coolerU, coolerV] = toUniform(lightOfTemperature(6501, 0));
    EXPECT_NEAR(std::hypot(tintedU - u, tintedV - v), 0.01, 1e-9);
    EXPECT_GT(tintedV, v);
    const double cosine = ((tintedU - u) * (coolerU - u) + (tintedV - v) * (coolerV - v)) / 0.01 /
                          std::hypot(coolerU - u, coolerV - v);
    EXPECT_NEAR(cosine, 0.0, 1e-3);
}

}  // namespace
}  // namespace tavrin::colorkit::test
