#include "services/colorkit/ColorMappingOperator.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/ClampOperator.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/colorkit/operators/GainOperator.h"
#include "services/colorkit/operators/MatrixOperator.h"
#include "services/colorkit/operators/PhotographicExposureOperator.h"
#include "services/colorkit/operators/SaturationOperator.h"
#include "services/colorkit/operators/TintOperator.h"
#include "services/colorkit/operators/WhiteBalanceOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavrin::colorkit::test {
namespace {

TEST(BasicOperators, ExposureMultipliesByPowersOfTwo) {
    for (const float stops : {-10.0f, -0.3f, 0.25f, 3.0f, 10.0f}) {
        expectFormula(exposure(stops),
                      perComponent([=](double x) { return x * std::pow(2.0, stops); }));
    }
}

TEST(BasicOperators, PhotographicExposureComparesTheCameraWithTheFirstSettings) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    struct Row {
        float iso, fStop, shutterSpeed, factor;
        bool usesCamera = true;
    };
    for (const Row& row : {Row{100, 16, 50, 1},
                           {400, 16, 50, 4},
                           {100, 8, 50, 4},
                           {100, 16, 200, 0.25f},
                           {200, 2.8f, 1000, 3.26530612f},
                           {400, 16, 50, 1, false},
                           {0, 16, 50, 1},
                           {100, 0, 50, 1},
                           {100, 16, -50, 1},
                           {std::nanf(""), 16, 50, 1},
                           {100, 16, kInfinity, 1},
                           {1e30f, 16, 50, 1e15f}}) {
        CommonColorMappingContext context;
        context.displayGamma = 1.0f;
        context.iso = row.iso;
        context.fStop = row.fStop;
        context.shutterSpeed = row.shutterSpeed;
        context.usesCameraExposure = row.usesCamera;
        std::vector<Rgb> pixels{{0.5f, 1.0f, 2.0f}};
        const auto pipeline =
            makePipeline({OperatorValues(PhotographicExposureOperator::kDescriptor)});
        ColorMappingOperator<0>(pipeline, true, {context, {640, 480}}).mapRow(pixels, {});
        SCOPED_TRACE(testing::Message()
                     << row.iso << ", " << row.fStop << ", " << row.shutterSpeed);
        expectClose(pixels[0], {0.5 * row.factor, row.factor, 2.0 * row.factor});
    }
}

TEST(BasicOperators, TintMultipliesByAColour) {
    for (const float amount : {0.25f, 1.0f}) {
        OperatorValues values(TintOperator::kDescriptor);
        values.set(TintOperator::kColor, {1.0f, 0.5f, 0.0f}).set(TintOperator::kAmount, amount);
        expectFormula(values, [=](const Reference& c) {
            return Reference{c[0], c[1] * (1.0 - 0.5 * amount), c[2] * (1.0 - amount)};
        });
    }
}

TEST(BasicOperators, SaturationScalesTheDistanceToLuminance) {
    for (const float saturation : {0.0f, 0.5f, 1.3f, 4.0f}) {
        OperatorValues values(SaturationOperator::kDescriptor);
        values.set(SaturationOperator::kSaturation, saturation);
        const auto formula = [=](const Reference& color) {
            const double y = luminance(color);
            return perComponent([=](double x) { return y + saturation * (x - y); })(color);
        };
        expectFormula(values, formula, {.ofLargest = 4.0});
    }
}

TEST(BasicOperators, WhiteBalanceMakesTheChosenLightNeutral) {
    for (const AdaptationMethod method : {AdaptationMethod::Bradford, AdaptationMethod::Cat16}) {
        for (const float temperature : {2856.0f, 4500.0f, 5000.0f, 9300.0f}) {
            for (const float tint : {-30.0f, 0.0f, 45.0f}) {
                // The chosen light as an image would show it, by Rec. 709's published inverse.
                const Vector3 xyz = toXyz(lightOfTemperature(temperature, tint));
                const Rgb light{
                    float(3.2404542 * xyz[0] - 1.5371385 * xyz[1] - 0.4985314 * xyz[2]),
                    float(-0.9692660 * xyz[0] + 1.8760108 * xyz[1] + 0.0415560 * xyz[2]),
                    float(0.0556434 * xyz[0] - 0.2040259 * xyz[1] + 1.0572252 * xyz[2])};
                OperatorValues values(WhiteBalanceOperator::kDescriptor);
                values.set(WhiteBalanceOperator::kTemperature, temperature);
                values.set(WhiteBalanceOperator::kTint, tint);
                values.set(WhiteBalanceOperator::kMethod, method);
                const Rgb mapped = mapWith({values}, {light}).front();
                SCOPED_TRACE(testing::Message() << temperature << " K, tint " << tint);
                EXPECT_NEAR(mapped.r, 1.0, 1e-3);
                EXPECT_NEAR(mapped.g, 1.0, 1e-3);
                EXPECT_NEAR(mapped.b, 1.0, 1e-3);
            }
        }
    }
}

TEST(BasicOperators, MatrixGainAndClampDoWhatTheirNumbersSay) {
    OperatorValues matrix(MatrixOperator::kDescriptor);
    matrix.set(MatrixOperator::kRed, {0.5f, 2.0f, -1.0f});
    matrix.set(MatrixOperator::kBlue, {0.0f, -0.25f, 0.75f});
    const auto multiply = [](const Reference& c) {
        return Reference{0.5 * c[0] + 2.0 * c[1] - c[2], c[1], 0.75 * c[2] - 0.25 * c[1]};
    };
    expectFormula(matrix, multiply, {.ofLargest = 2.0});

    OperatorValues gain(GainOperator::kDescriptor);
    gain.set(GainOperator::kFactors, {0.0f, 1e6f, 0.3f});
    expectFormula(gain, [](const Reference& c) {
        return Reference{0.0, 1e6 * c[1], double{0.3f} * c[2]};
    });

    OperatorValues clamp(ClampOperator::kDescriptor);
    clamp.set(ClampOperator::kMinimum, 0.1f).set(ClampOperator::kMaximum, 0.7f);
    expectFormula(clamp,
                  perComponent([](double x) { return std::clamp(x, double{0.1f}, double{0.7f}); }));
    clamp.set(ClampOperator::kMaximum, 0.05f);
    expectFormula(clamp, perComponent([](double) { return double{0.05f}; }));
}

}  // namespace
}  // namespace tavrin::colorkit::test
