#include "services/colorkit/operators/AcesFitOperator.h"
#include "services/colorkit/operators/AgXOperator.h"
#include "services/colorkit/operators/FilmicCurveOperator.h"
#include "services/colorkit/operators/FilmicOperator.h"
#include "services/colorkit/operators/HighlightCompressionOperator.h"
#include "services/colorkit/operators/PbrNeutralOperator.h"
#include "services/colorkit/operators/SoftKneeOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace tavrin::colorkit::test {
namespace {

TEST(HighlightControlOperators, HighlightCompressionFollowsReinhard) {
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
        expectFormula(values, perComponent([=](double x) { return x * factor(x); }));

        values.set(HighlightCompressionOperator::kMeasure, HighlightMeasure::Luminance);
        const auto onLuminance = [=](const Reference& color) {
            const double y = luminance(color);
            return perComponent([=](double x) { return x * factor(y); })(color);
        };
        expectFormula(values, onLuminance);
    }
}

TEST(HighlightControlOperators, SoftKneeBendsSmoothlyToTheLimit) {
    for (const auto& [threshold, limit] :
         {std::pair{0.8f, 1.0f}, {0.0f, 10.0f}, {0.3f, 0.5f}, {0.9f, 0.5f}, {1.0f, 1.0f}}) {
        const double t = threshold;
        const double range = std::max(double{limit} - t, 1e-6);
        OperatorValues values(SoftKneeOperator::kDescriptor);
        values.set(SoftKneeOperator::kThreshold, threshold).set(SoftKneeOperator::kLimit, limit);
        expectFormula(values, perComponent([=](double x) {
                          return x <= t ? x : t - range * std::expm1(-(x - t) / range);
                      }));
    }
    // Values and slopes are continuous at the threshold.
    const OperatorValues values(SoftKneeOperator::kDescriptor);
    const Rgb around = mapWith({values}, {{0.799f, 0.8f, 0.801f}})[0];
    EXPECT_NEAR((around.b - around.g) / 0.001, 1.0, 0.004);
    EXPECT_NEAR((around.g - around.r) / 0.001, 1.0, 1e-4);
}

TEST(HighlightControlOperators, FilmicIsTheCurveOfHable) {
    struct Row {
        double a, b, c, d, e, f, w;
    };
    for (const Row& row : {Row{0.15, 0.5, 0.1, 0.2, 0.02, 0.3, 11.2},
                           {0.22, 0.3, 0.1, 0.2, 0.01, 0.3, 4.0},
                           {0.0, 0.7, 0.5, 1.0, 0.0, 0.5, 2.0}}) {
        const auto curve = [row](double x) {
            const auto& [a, b, c, d, e, f, w] = row;
            return (x * (a * x + c * b) + d * e) / (x * (a * x + b) + d * f) - e / f;
        };
        OperatorValues values(FilmicOperator::kDescriptor);
        values.set(FilmicOperator::kShoulderStrength, float(row.a));
        values.set(FilmicOperator::kLinearStrength, float(row.b));
        values.set(FilmicOperator::kLinearAngle, float(row.c));
        values.set(FilmicOperator::kToeStrength, float(row.d));
        values.set(FilmicOperator::kToeNumerator, float(row.e));
        values.set(FilmicOperator::kToeDenominator, float(row.f));
        values.set(FilmicOperator::kWhite, float(row.w));
        // As published, the formula itself cancels near 0 and overflows at the upper end.
        expectFormula(values, perComponent([&](double x) {
                          const double small =
                              x * row.b * (row.c - row.e / row.f) / (row.d * row.f);
                          return (x < 1e-7 ? 2.0 * small : curve(2.0 * x)) / curve(row.w);
                      }));
        EXPECT_NEAR(mapWith({values}, {{float(row.w) / 2, 0, 0}})[0].r, 1.0, 1e-6);
    }
}

TEST(HighlightControlOperators, FilmicCurveMeetsItsMiddleAndWhite) {
    for (const auto& [c, in, out, white] :
         {std::array{1.55, 0.18, 0.215, 10.0}, {2.0, 0.25, 0.1, 1.0}, {1.1, 0.18, 0.4, 100.0}}) {
        const double a = std::pow(in, c);
        const double b = std::pow(white, c);
        const double d = a - out * b;
        const double i = a * b * (out - 1.0) / d;
        const double o = out * (a - b) / d;
        OperatorValues values(FilmicCurveOperator::kDescriptor);
        values.set(FilmicCurveOperator::kContrast, float(c));
        values.set(FilmicCurveOperator::kMiddleIn, float(in));
        values.set(FilmicCurveOperator::kMiddleOut, float(out));
        values.set(FilmicCurveOperator::kWhite, float(white));
        expectFormula(values, perComponent([=, c = c](double x) {
                          return x < 1.17549435e-38 ? 0.0 : o / (1.0 + i * std::pow(x, -c));
                      }));
        const Rgb mapped = mapWith({values}, {{float(in), float(white), 0.0f}})[0];
        EXPECT_NEAR(mapped.r, out, 1e-5 * out);
        EXPECT_NEAR(mapped.g, 1.0, 1e-5);
    }
    // A middle that would need a curve without a shoulder gives a straight power.
    OperatorValues values(FilmicCurveOperator::kDescriptor);
    values.set(FilmicCurveOperator::kMiddleOut, 0.01f).set(FilmicCurveOperator::kWhite, 1.0f);
    const Rgb mapped = mapWith({values}, {{0.18f, 1.0f, 0.5f}})[0];
    EXPECT_NEAR(mapped.r, std::pow(0.18, 1.55), 1e-4);
    EXPECT_NEAR(mapped.b, std::pow(0.5, 1.55), 1e-3);
}

using Rows = std::array<Reference, 3>;

Reference multiply(const Rows& rows, const Reference& c) {
    const auto dot = [&c](const Reference& r) { return r[0] * c[0] + r[1] * c[1] + r[2] * c[2]; };
    return {dot(rows[0]), dot(rows[1]), dot(rows[2])};
}

Reference clampToUnit(const Reference& color) {
    return perComponent([](double x) { return std::clamp(x, 0.0, 1.0); })(color);
}

TEST(HighlightControlOperators, AcesFitFollowsHill) {
    const auto fit = perComponent([](double v) {
        v = std::min(v, 1e18);
        return (v * (v + 0.0245786) - 0.000090537) / (v * (0.983729 * v + 0.4329510) + 0.238081);
    });
    for (const float stops : {0.0f, 1.5f, -2.0f}) {
        OperatorValues values(AcesFitOperator::kDescriptor);
        values.set(AcesFitOperator::kExposure, stops);
        const auto formula = [&](const Reference& color) {
            const Reference exposed =
                perComponent([&](double x) { return x * std::exp2(stops); })(color);
            const Reference v = multiply({{{0.59719, 0.35458, 0.04823},
                                           {0.07600, 0.90834, 0.01566},
                                           {0.02840, 0.13383, 0.83777}}},
                                         exposed);
            return clampToUnit(multiply({{{1.60475, -0.53108, -0.07367},
                                          {-0.10208, 1.10813, -0.00605},
                                          {-0.00327, -0.07276, 1.07602}}},
                                        fit(v)));
        };
        expectFormula(values, formula, {.absolute = 0.1});
    }
    const std::vector<Rgb> mapped =
        mapWith({OperatorValues(AcesFitOperator::kDescriptor)}, {{0, 0, 0}, {1e20f, 1e20f, 1e20f}});
    EXPECT_EQ(mapped[0], Rgb{});
    EXPECT_EQ(mapped[1], (Rgb{1, 1, 1}));
}

/// Hue (0 to 6), saturation and value.
Reference toHsv(const Reference& c) {
    const double largest = std::max({c[0], c[1], c[2]});
    const double range = largest - std::min({c[0], c[1], c[2]});
    if (range == 0.0) {
        return {0.0, 0.0, largest};
    }
    const double hue = largest == c[0]   ? (c[1] - c[2]) / range
                       : largest == c[1] ? 2.0 + (c[2] - c[0]) / range
                                         : 4.0 + (c[0] - c[1]) / range;
    return {hue < 0.0 ? hue + 6.0 : hue, range / largest, largest};
}

Reference fromHsv(const Reference& hsv) {
    const auto component = [&hsv](double n) {
        const double k = std::fmod(n + hsv[0], 6.0);
        return hsv[2] * (1.0 - hsv[1] * std::clamp(std::min(k, 4.0 - k), 0.0, 1.0));
    };
    return {component(5.0), component(3.0), component(1.0)};
}

double agxCurve(double x) {
    const double x0 = 10.0 / 16.5;
    const double y0 = std::pow(0.18, 1.0 / 2.4);
    const double t = std::clamp((std::log2(std::max(x, 1e-30) / 0.18) + 10.0) / 16.5, 0.0, 1.0);
    const auto part = [](double distance, double rangeX, double rangeY) {
        const double s =
            std::pow(std::pow(2.4 * rangeX, -1.5) * (std::pow(2.4 * rangeX / rangeY, 1.5) - 1.0),
                     -1.0 / 1.5);
        const double u = 2.4 * distance / s;
        return s * u / std::pow(1.0 + std::pow(u, 1.5), 1.0 / 1.5);
    };
    const double y = t < x0 ? y0 - part(x0 - t, x0, y0) : y0 + part(t - x0, 1.0 - x0, 1.0 - y0);
    return std::pow(std::max(y, 0.0), 2.4);
}

Reference agx(const Reference& color) {
    // Rec. 709 to Rec. 2020 and back, ITU-R BT.2087 with more digits.
    const Reference wide = multiply({{{0.6274038959, 0.3292830384, 0.0433130657},
                                      {0.0690972894, 0.9195403951, 0.0113623156},
                                      {0.0163914389, 0.0880133079, 0.8955952532}}},
                                    color);
    const Reference before = multiply({{{0.856627153315983, 0.0951212405381588, 0.0482516061458583},
                                        {0.137318972929847, 0.761241990602591, 0.101439036467562},
                                        {0.11189821299995, 0.0767994186031903, 0.811302368396859}}},
                                      wide);
    const Reference hueBefore = toHsv(before);
    Reference hsv = toHsv(perComponent(agxCurve)(before));
    const double turn = std::remainder(hsv[0] - hueBefore[0], 6.0);
    hsv[0] = std::fmod(hueBefore[0] + 0.4 * turn + 6.0, 6.0);
    const Reference outset = multiply({{{1.1271005818, -0.1106066431, -0.0164939387},
                                        {-0.1413297635, 1.1578237022, -0.0164939387},
                                        {-0.1413297635, -0.1106066431, 1.2519364066}}},
                                      fromHsv(hsv));
    return multiply({{{1.6604910021, -0.5876411388, -0.0728498633},
                      {-0.1245504745, 1.1328998971, -0.0083494226},
                      {-0.0181507634, -0.1005788980, 1.1187296614}}},
                    outset);
}

TEST(HighlightControlOperators, AgXFollowsThePublishedSteps) {
    OperatorValues values(AgXOperator::kDescriptor);
    expectFormula(values, [](const Reference& c) { return clampToUnit(agx(c)); },
                  {.absolute = 0.5});
    // Middle grey stays, 10 stops below it is black and 6.5 above white.
    const float bright = 0.18f * std::exp2(6.51f);
    const std::vector<Rgb> mapped =
        mapWith({values}, {{0, 0, 0}, {0.18f, 0.18f, 0.18f}, {bright, bright, bright}});
    EXPECT_EQ(mapped[0], Rgb{});
    expectClose(mapped[1], {0.18, 0.18, 0.18});
    expectClose(mapped[2], {1.0, 1.0, 1.0});

    values.set(AgXOperator::kLook, AgXLook::Punchy);
    const auto punchy = [](const Reference& c) {
        const Reference encoded =
            perComponent([](double x) { return std::pow(std::max(x, 0.0), 1.35 / 2.4); })(agx(c));
        const double y = luminance(encoded);
        return clampToUnit(perComponent(
            [=](double x) { return std::pow(std::max(y + 1.4 * (x - y), 0.0), 2.4); })(encoded));
    };
    // Components near 0 before the powers lose most: 1e-7 to the power 1.35 / 2.4 is 1e-4.
    expectFormula(values, punchy, {.absolute = 100.0});
    // Away from there it is as exact as without the look.
    std::vector<Rgb> colors = makeColors();
    std::erase_if(colors, [](const Rgb& color) {
        const Reference formed = agx(toMappable(color));
        return *std::ranges::min_element(formed) < 0.02;
    });
    ASSERT_GT(colors.size(), 100u);
    const std::vector<Rgb> strong = mapWith({values}, colors);
    for (std::size_t i = 0; i < colors.size(); ++i) {
        expectClose(strong[i], punchy(toMappable(colors[i])), 1.0);
    }
}

TEST(HighlightControlOperators, PbrNeutralFollowsKhronos) {
    const OperatorValues values(PbrNeutralOperator::kDescriptor);
    const auto formula = [](const Reference& color) {
        const double m = std::min({color[0], color[1], color[2]});
        const double f = m <= 0.08 ? m - m * m / 0.16 : 0.04;
        const Reference c{color[0] - f, color[1] - f, color[2] - f};
        const double p = std::max({c[0], c[1], c[2]});
        if (p <= 0.76) {
            return c;
        }
        const double n = 1.0 - 0.24 * 0.24 / (p - 0.52);
        const double g = 1.0 / (0.15 * (p - n) + 1.0);
        return perComponent([=](double x) { return x * (n / p) * g + n * (1.0 - g); })(c);
    };
    expectFormula(values, formula, {.ofLargest = 0.01});
    // Base colours up to 0.8 keep the differences of their components.
    const std::vector<Rgb> mapped =
        mapWith({values}, {{0.8f, 0.3f, 0.2f}, {0, 0, 0}, {0.7f, 0, 0}});
    expectClose(mapped[0], {0.76, 0.26, 0.16});
    EXPECT_EQ(mapped[1], Rgb{});
    EXPECT_EQ(mapped[2], (Rgb{0.7f, 0, 0}));
}

}  // namespace
}  // namespace tavrin::colorkit::test
