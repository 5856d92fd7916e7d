#include "tests/services/colorkit/MappingFixtures.h"

#include "services/colorkit/ColorMappingOperator.h"
#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/ExposureOperator.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace tavrin::colorkit::test {
namespace {

constexpr float kLargest = std::numeric_limits<float>::max();
constexpr float kSmallestNormal = std::numeric_limits<float>::min();

/// Any allowed value of a parameter, by the type of its default.
struct ArbitraryValue {
    const ParameterDeclaration& parameter;

    ParameterValue operator()(bool) const { return *rc::gen::arbitrary<bool>(); }
    ParameterValue operator()(float) const {
        return arbitraryNumber(parameter.minimum, parameter.maximum);
    }
    ParameterValue operator()(int) const {
        return *rc::gen::inRange(0, static_cast<int>(parameter.choices.size()));
    }
    ParameterValue operator()(const CompressedRgb&) const {
        const auto next = [this] { return arbitraryNumber(parameter.minimum, parameter.maximum); };
        return CompressedRgb{next(), next(), next()};
    }
    // Texts and paths name things outside the pipeline, none of which are there.
    ParameterValue operator()(Empty<String>) const { return String(u"no \"such\" \u00FC"); }
    ParameterValue operator()(Empty<Path>) const {
        return Path(String("folder/missing file.cube"));
    }
    ParameterValue operator()(Empty<std::vector<CurvePoint>>) const {
        std::vector<CurvePoint> points;
        float x = arbitraryNumber(-kLargestCurveStop, 0.0f);
        while (points.size() < kMostCurvePoints && x <= kLargestCurveStop) {
            points.push_back({x, arbitraryNumber(-kLargestCurveStop, kLargestCurveStop)});
            x += arbitraryNumber(0.01f, 8.0f);
        }
        return points;
    }

private:
    /// The ends of the range are the hardest.
    static float arbitraryNumber(float minimum, float maximum) {
        const auto share = static_cast<float>(*rc::gen::inRange(-2000, 12001)) / 10000.0f;
        return std::lerp(minimum, maximum, std::clamp(share, 0.0f, 1.0f));
    }
};

/// A value off the default: numbers a third of the way towards the maximum.
struct TellingValue {
    const ParameterDeclaration& parameter;

    ParameterValue operator()(bool value) const { return !value; }
    ParameterValue operator()(float value) const {
        return std::lerp(value, std::min(parameter.maximum, 10.0f * value + 1.0f), 0.3f);
    }
    ParameterValue operator()(int) const { return static_cast<int>(parameter.choices.size()) - 1; }
    ParameterValue operator()(const CompressedRgb& value) const {
        return CompressedRgb{0.9f * value.r + 0.03f, 0.8f * value.g, 0.7f * value.b + 0.01f};
    }
    ParameterValue operator()(const std::vector<CurvePoint>&) const {
        return std::vector<CurvePoint>{{-6.0f, -7.0f}, {-1.0f, -0.5f}, {0.5f, 1.0f}, {4.0f, 3.0f}};
    }
    // Texts and paths have no other values that are worth a mapping.
    ParameterValue operator()(const String& value) const { return value; }
    ParameterValue operator()(const Path& value) const { return value; }
};

}  // namespace

OperatorValues exposure(float stops) {
    return OperatorValues(ExposureOperator::kDescriptor).set(ExposureOperator::kStops, stops);
}

std::vector<OperatorValues> arbitraryOperators() {
    const auto& descriptors = ColorMappingOperatorFactory::getInstance().getAllDescriptors();
    std::vector<OperatorValues> operators;
    for (int count = *rc::gen::inRange(0, 12); count > 0; --count) {
        const auto type = *rc::gen::inRange(0, static_cast<int>(descriptors.size()));
        OperatorValues& values =
            operators.emplace_back(*std::next(descriptors.begin(), type)->second);
        values.setEnabled(*rc::gen::arbitrary<bool>());
        for (std::size_t i = 0; i < values.getDescriptor().parameters.size(); ++i) {
            const ParameterDeclaration& parameter = *values.getDescriptor().parameters[i];
            values.setAt(i, std::visit(ArbitraryValue{parameter}, parameter.defaultValue));
        }
    }
    return operators;
}

std::vector<Rgb> mapWith(const std::vector<OperatorValues>& operators, std::vector<Rgb> pixels,
                         float gamma) {
    CommonColorMappingContext context;
    context.displayGamma = gamma;
    const ColorMappingOperator<0> mapping(makePipeline(operators), true, {context, {640, 480}});
    mapping.mapRow(pixels, {});
    return pixels;
}

std::vector<OperatorValues> makeTellingOperators() {
    std::vector<OperatorValues> operators;
    for (const auto& [name, descriptor] :
         ColorMappingOperatorFactory::getInstance().getAllDescriptors()) {
        OperatorValues& values = operators.emplace_back(*descriptor);
        for (std::size_t i = 0; i < descriptor->parameters.size(); ++i) {
            const ParameterDeclaration& parameter = *descriptor->parameters[i];
            values.setAt(i, std::visit(TellingValue{parameter}, values.getAt(i)));
        }
    }
    return operators;
}

std::vector<Rgb> makeColors() {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
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
                             kInfinity,
                             -kInfinity,
                             std::nanf("")};
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

double luminance(const Reference& color) {
    return 0.2126 * color[0] + 0.7152 * color[1] + 0.0722 * color[2];
}

ReferenceFunction perComponent(std::function<double(double)> function) {
    return [function](const Reference& color) {
        return Reference{function(color[0]), function(color[1]), function(color[2])};
    };
}

void expectFormula(const OperatorValues& values, const ReferenceFunction& formula,
                   const ErrorScale& scale) {
    const std::vector<Rgb> colors = makeColors();
    const std::vector<Rgb> mapped = mapWith({values}, colors);
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const Reference color = toMappable(colors[i]);
        SCOPED_TRACE(testing::Message() << color[0] << ", " << color[1] << ", " << color[2]);
        const double largest = *std::max_element(color.begin(), color.end());
        expectClose(mapped[i], formula(color), std::max(scale.ofLargest * largest, scale.absolute));
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

bool haveSameBits(const Rgb& left, const Rgb& right) {
    return std::memcmp(&left, &right, sizeof(Rgb)) == 0;
}

}  // namespace tavrin::colorkit::test
