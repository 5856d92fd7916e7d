#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/CurvesOperator.h"
#include "services/colorkit/operators/LiftGammaGainOperator.h"
#include "services/colorkit/operators/SigmoidOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

namespace tavrin::colorkit::test {
namespace {

TEST(CurveControlOperators, ContrastIsAPowerAroundThePivot) {
    for (const auto& [contrast, pivot] :
         {std::pair{0.1f, 0.001f}, {0.8f, 0.18f}, {1.5f, 0.18f}, {4.0f, 1.0f}}) {
        OperatorValues values(ContrastOperator::kDescriptor);
        values.set(ContrastOperator::kContrast, contrast);
        values.set(ContrastOperator::kPivot, pivot);
        const auto formula = perComponent([c = double{contrast}, p = double{pivot}](double x) {
            return x < 1.17549435e-38 ? 0.0 : p * std::pow(x / p, c);
        });
        expectFormula(values, formula);
    }
}

TEST(CurveControlOperators, LiftGammaGainFollowsTheColorDecisionList) {
    constexpr CompressedRgb kSlope{1.5f, 0.2f, 1.0f};
    constexpr CompressedRgb kOffset{0.1f, 0.0f, -0.5f};
    constexpr CompressedRgb kPower{0.5f, 1.0f, 2.5f};
    for (const bool clamps : {false, true}) {
        for (const float saturation : {1.0f, 1.75f}) {
            const auto grade = [=](double x, float slope, float offset, float power) {
                const double y = std::min(x * slope + offset, 3.4028234663852886e38);
                const double clamped = clamps ? std::clamp(y, 0.0, 1.0) : y;
                return clamped > 0.0 ? std::pow(clamped, double{power}) : clamped;
            };
            const auto formula = [=](const Reference& c) {
                const Reference graded{
                    grade(c[0], kSlope.r, kOffset.r, kPower.r),
                    grade(c[1], kSlope.g, kOffset.g, kPower.g),
                    // Powers beyond the largest float end there.
                    std::min(grade(c[2], kSlope.b, kOffset.b, kPower.b), 3.4028234e38)};
                const double y = luminance(graded);
                return perComponent([=](double x) {
                    const double result = saturation == 1.0f ? x : y + saturation * (x - y);
                    return clamps ? std::clamp(result, 0.0, 1.0) : result;
                })(graded);
            };
            OperatorValues values(LiftGammaGainOperator::kDescriptor);
            values.set(LiftGammaGainOperator::kSlope, kSlope);
            values.set(LiftGammaGainOperator::kOffset, kOffset);
            values.set(LiftGammaGainOperator::kPower, kPower);
            values.set(LiftGammaGainOperator::kSaturation, saturation);
            values.set(LiftGammaGainOperator::kClamp, clamps);
            // The offset cancels dark values, and mixed components may be any power of the largest.
            for (const Rgb& color : makeColors()) {
                const Reference c = toMappable(color);
                const Reference expected = formula(c);
                const double largest = std::max({c[0], std::pow(c[2], 2.5), 1.0});
                SCOPED_TRACE(testing::Message() << c[0] << ", " << c[1] << ", " << c[2]);
                expectClose(mapWith({values}, {color})[0], expected,
                            saturation == 1.0f ? 1.0 : 4.0 * largest);
                ASSERT_FALSE(HasFailure());
            }
        }
    }
}

/// The curve in Hermite's basis, with slopes after Fritsch, Carlson 1980.
double evaluateCurve(const std::vector<CurvePoint>& p, double x) {
    const std::size_t n = p.size();
    std::vector<double> secant(n), slope(n, 1.0);
    for (std::size_t i = 0; i + 1 < n; ++i) {
        secant[i] = (double{p[i + 1].y} - p[i].y) / (double{p[i + 1].x} - p[i].x);
    }
    for (std::size_t i = 0; i < n && n > 1; ++i) {
        const double before = secant[i == 0 ? 0 : i - 1];
        const double behind = secant[i + 1 == n ? i - 1 : i];
        slope[i] = before * behind > 0.0 ? (before + behind) / 2.0 : 0.0;
    }
    slope.front() = n > 1 ? std::max(slope.front(), 0.0) * (secant[0] > 0.0) : 1.0;
    slope.back() = n > 1 ? std::max(slope.back(), 0.0) * (secant[n - 2] > 0.0) : 1.0;
    for (std::size_t i = 0; i + 1 < n; ++i) {
        const double a = secant[i] == 0.0 ? 0.0 : slope[i] / secant[i];
        const double b = secant[i] == 0.0 ? 0.0 : slope[i + 1] / secant[i];
        const double tau = std::min(1.0, 3.0 / std::sqrt(std::max(a * a + b * b, 1e-300)));
        slope[i] = tau * a * secant[i];
        slope[i + 1] = tau * b * secant[i];
    }
    if (x < p.front().x) {
        return p.front().y + slope.front() * (x - p.front().x);
    }
    for (std::size_t i = 0; i + 1 < n; ++i) {
        if (x < p[i + 1].x) {
            const double h = double{p[i + 1].x} - p[i].x;
            const double t = (x - p[i].x) / h;
            return (1 + 2 * t) * (1 - t) * (1 - t) * p[i].y + t * (1 - t) * (1 - t) * h * slope[i] +
                   t * t * (3 - 2 * t) * p[i + 1].y - t * t * (1 - t) * h * slope[i + 1];
        }
    }
    return p.back().y + slope.back() * (x - p.back().x);
}

TEST(CurveControlOperators, CurvesAreMonotoneCubicsOverStops) {
    const std::vector<CurvePoint> rising{{-8, -9}, {-3, -3.5f}, {-1, -0.5f}, {0, 0.25f}, {5, 3}};
    const std::vector<CurvePoint> level{{-6, -5}, {-4, -5}, {0, 0}, {2, 3}, {4, 3}};
    const std::vector<CurvePoint> turning{{-2, 1}, {0, -1}, {1, 1}, {3, 0.5f}};
    for (const auto& points : {rising, level, turning, {{1, 2}}, {{-16, -16}, {16, 15}}}) {
        const auto map = [&points](double x) {
            const double stops = std::log2(std::max(x, 1.17549435e-38) / 0.18);
            const bool isLevel = evaluateCurve(points, -200.0) == evaluateCurve(points, -100.0);
            return x < 1.17549435e-38 && !isLevel ? 0.0
                                                  : 0.18 * std::exp2(evaluateCurve(points, stops));
        };
        OperatorValues values(CurvesOperator::kDescriptor);
        values.set(CurvesOperator::kMaster, points);
        expectFormula(values, perComponent(map));
        values.set(CurvesOperator::kMaster, {}).set(CurvesOperator::kGreen, points);
        expectFormula(values, [&](const Reference& c) { return Reference{c[0], map(c[1]), c[2]}; });
    }
}

RC_GTEST_PROP(CurveControlOperators, CurvesPassTheirPointsAndRiseWithThem, ()) {
    std::vector<CurvePoint> points{{-14.0f, -15.0f}};
    while (points.size() < kMostCurvePoints && points.back().x < 14.0f) {
        points.push_back({points.back().x + float(*rc::gen::inRange(1, 300)) / 100.0f,
                          std::min(points.back().y + float(*rc::gen::inRange(0, 300)) / 100.0f,
                                   kLargestCurveStop)});
    }
    points.back().x = std::min(points.back().x, kLargestCurveStop);
    OperatorValues values(CurvesOperator::kDescriptor);
    values.set(CurvesOperator::kMaster, points);
    std::vector<Rgb> colors;
    for (const CurvePoint& point : points) {
        colors.push_back({0.18f * std::exp2(point.x), 0.0f, 0.0f});
    }
    for (int i = 0; i <= 4000; ++i) {
        const float x = std::exp2(-17.0f + 34.0f * float(i) / 4000.0f);
        colors.push_back({x, x, x});
    }
    const std::vector<Rgb> mapped = mapWith({values}, colors);
    for (std::size_t i = 0; i < points.size(); ++i) {
        // The steepest points are 300 times as sensitive as straight ones.
        RC_ASSERT(std::abs(std::log2(mapped[i].r / 0.18f) - points[i].y) < 1e-3f);
    }
    for (std::size_t i = points.size() + 1; i < mapped.size(); ++i) {
        RC_ASSERT(mapped[i].g >= mapped[i - 1].g * (1.0f - 1e-6f));
    }
}

TEST(CurveControlOperators, SigmoidMeetsItsBlackGreyAndWhite) {
    struct Row {
        float contrast, skew, white, black;
    };
    for (const Row& row : {Row{1.6f, 0.0f, 100.0f, 0.0152f},
                           {1.0f, 0.5f, 400.0f, 0.0f},
                           {3.0f, -0.7f, 25.0f, 2.0f},
                           {0.6f, 1.0f, 1600.0f, 15.0f}}) {
        const double w = row.white / 100.0;
        const double black = row.black / 100.0;
        const double q = std::pow(5.0, double{-row.skew});
        const double a = std::pow(w / 0.1845, 1.0 / q) - 1.0;
        const auto curve = [](double x, double w, double p, double paper, double q, double fog) {
            return w * std::pow(1.0 + paper * std::pow(fog + x, -p), -q);
        };
        const auto slopeAtGrey = [&](double w, double p, double paper, double q) {
            return (curve(0.1846, w, p, paper, q, 0.0) - curve(0.1844, w, p, paper, q, 0.0)) / 2e-4;
        };
        // The slope is proportional to p up to the curvature of the difference.
        const double slope = slopeAtGrey(
            1.0, row.contrast, std::pow(0.1845, row.contrast) * (1.0 / 0.1845 - 1.0), 1.0);
        const double p = slope / slopeAtGrey(w, 1.0, 0.1845 * a, q);
        const double b = black > 0.0 ? std::pow(w / black, 1.0 / q) - 1.0 : 0.0;
        const double fog = black > 0.0 ? 0.1845 / (std::pow(b / a, 1.0 / p) - 1.0) : 0.0;
        const double paper = std::pow(fog + 0.1845, p) * a;

        OperatorValues values(SigmoidOperator::kDescriptor);
        values.set(SigmoidOperator::kContrast, row.contrast).set(SigmoidOperator::kSkew, row.skew);
        values.set(SigmoidOperator::kWhite, row.white).set(SigmoidOperator::kBlack, row.black);
        // What is smaller than floats within the curve ends at 0.
        SCOPED_TRACE(testing::Message() << row.contrast << ", " << row.skew);
        expectFormula(values, perComponent([=](double x) {
                          return x + fog <= 0.0 ? 0.0 : curve(x, w, p, paper, q, fog);
                      }),
                      {.absolute = 1e-9});
        const Rgb mapped = mapWith({values}, {{0.0f, 0.1845f, 3e38f}})[0];
        EXPECT_NEAR(mapped.r, black, 1e-5 * black);
        EXPECT_NEAR(mapped.g, 0.1845, 2e-6);
        EXPECT_NEAR(mapped.b, w, 1e-5 * w);
    }
}

}  // namespace
}  // namespace tavrin::colorkit::test
