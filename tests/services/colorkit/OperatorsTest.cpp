#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/operators/AcesOperator.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/colorkit/operators/HighlightCompressionOperator.h"
#include "services/colorkit/operators/SaturationOperator.h"
#include "services/colorkit/operators/WhiteBalanceOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace tavrin::colorkit::test {
namespace {

using ReferenceFunction = std::function<Reference(const Reference&)>;

double luminance(const Reference& color) {
    return 0.2126 * color[0] + 0.7152 * color[1] + 0.0722 * color[2];
}

ReferenceFunction perComponent(std::function<double(double)> function) {
    return [function](const Reference& color) {
        return Reference{function(color[0]), function(color[1]), function(color[2])};
    };
}

/// Compares one operator with its formula on all colours; `gain` bounds the factor on the largest
/// component in any term of an operator that mixes components, 0 for one that does not.
void expectFormula(const OperatorValues& values, const ReferenceFunction& formula, double gain) {
    const std::vector<Rgb> colors = makeColors();
    const std::vector<Rgb> mapped = mapWith({values}, colors);
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const Reference color = toMappable(colors[i]);
        SCOPED_TRACE(testing::Message() << color[0] << ", " << color[1] << ", " << color[2]);
        const double largest = *std::max_element(color.begin(), color.end());
        expectClose(mapped[i], formula(color), gain * largest);
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

TEST(Operators, ExposureMultipliesByPowersOfTwo) {
    for (const float stops : {-10.0f, -0.3f, 0.25f, 3.0f, 10.0f}) {
        expectFormula(exposure(stops),
                      perComponent([=](double x) { return x * std::pow(2.0, stops); }), 0);
    }
}

TEST(Operators, SaturationScalesTheDistanceToLuminance) {
    for (const float saturation : {0.0f, 0.5f, 1.3f, 4.0f}) {
        OperatorValues values(SaturationOperator::kDescriptor);
        values.set(SaturationOperator::kSaturation, saturation);
        const auto formula = [=](const Reference& color) {
            const double y = luminance(color);
            return perComponent([=](double x) { return y + saturation * (x - y); })(color);
        };
        expectFormula(values, formula, 4.0);
    }
}

TEST(Operators, ContrastIsAPowerAroundThePivot) {
    for (const auto& [contrast, pivot] :
         {std::pair{0.1f, 0.001f}, {0.8f, 0.18f}, {1.5f, 0.18f}, {4.0f, 1.0f}}) {
        OperatorValues values(ContrastOperator::kDescriptor);
        values.set(ContrastOperator::kContrast, contrast);
        values.set(ContrastOperator::kPivot, pivot);
        const auto formula = perComponent([c = double{contrast}, p = double{pivot}](double x) {
            return x < 1.17549435e-38 ? 0.0 : p * std::pow(x / p, c);
        });
        expectFormula(values, formula, 0);
    }
}

TEST(Operators, HighlightCompressionFollowsReinhard) {
    for (const auto& [amount, white] :
         {std::pair{1.0f, 4.0f}, {0.4f, 2.5f}, {1.0f, 100.0f}, {0.9f, 1.5f}}) {
        const double a = double{amount};
        const double w = double{white};
        const auto factor = [=](double x) {
            return (1.0 - a) + a * (1.0 + x / (w * w)) / (1.0 + x);
        };
        OperatorValues values(HighlightCompressionOperator::kDescriptor);
        values.set(HighlightCompressionOperator::kAmount, amount);
        values.set(HighlightCompressionOperator::kWhite, white);
        values.set(HighlightCompressionOperator::kMeasure, HighlightMeasure::Channels);
        expectFormula(values, perComponent([=](double x) { return x * factor(x); }), 0);

        values.set(HighlightCompressionOperator::kMeasure, HighlightMeasure::Luminance);
        const auto onLuminance = [=](const Reference& color) {
            const double y = luminance(color);
            return perComponent([=](double x) { return x * factor(y); })(color);
        };
        expectFormula(values, onLuminance, 0);
    }
}

TEST(Operators, WhiteBalanceMakesTheChosenLightNeutral) {
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

TEST(Operators, NeutralValuesReturnTheInputBitForBit) {
    // The defaults are neutral, apart from the amount of highlight compression.
    std::vector<OperatorValues> neutral;
    for (const auto& [name, descriptor] :
         ColorMappingOperatorFactory::getInstance().getAllDescriptors()) {
        if (descriptor == &AcesOperator::kDescriptor) {
            continue;  // has no neutral values
        }
        neutral.emplace_back(*descriptor);
        if (descriptor == &HighlightCompressionOperator::kDescriptor) {
            neutral.back().set(HighlightCompressionOperator::kAmount, 0.0f);
        }
    }
    OperatorValues straight(HighlightCompressionOperator::kDescriptor);
    neutral.push_back(straight.set(HighlightCompressionOperator::kWhite, 1.0f));
    OperatorValues pivot(ContrastOperator::kDescriptor);
    neutral.push_back(pivot.set(ContrastOperator::kPivot, 0.5f));
    neutral.push_back(exposure(3.0f).setEnabled(false));

    const std::vector<Rgb> colors = makeColors();
    const std::vector<Rgb> mapped = mapWith(neutral, colors);
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const Reference color = toMappable(colors[i]);
        const Rgb expected{float(color[0]), float(color[1]), float(color[2]), colors[i].a};
        ASSERT_TRUE(haveSameBits(mapped[i], expected)) << color[0] << ", " << color[1];
    }
}

RC_GTEST_PROP(Operators, AnyPipelineKeepsColorsFiniteAndNotNegative, ()) {
    static const std::vector<Rgb> colors = makeColors();
    for (const Rgb& color : mapWith(arbitraryOperators(), colors, 2.2f)) {
        RC_ASSERT(std::isfinite(color.r) && std::isfinite(color.g) && std::isfinite(color.b));
        RC_ASSERT(color.r >= 0 && color.g >= 0 && color.b >= 0);
    }
}

}  // namespace
}  // namespace tavrin::colorkit::test
