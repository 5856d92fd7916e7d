#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/CurvesOperator.h"
#include "services/colorkit/operators/HighlightCompressionOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <set>

namespace tavrin::colorkit::test {
namespace {

TEST(Operators, NeutralValuesReturnTheInputBitForBit) {
    // Operators that always do something.
    const std::set<String> shaping = {"Aces",
                                      "AcesFit",
                                      "AgX",
                                      "Clamp",
                                      "Filmic",
                                      "FilmicCurve",
                                      "HighlightCompression",
                                      "PbrNeutral",
                                      "Sigmoid",
                                      "SoftKnee"};
    std::vector<OperatorValues> neutral;
    for (const auto& [name, descriptor] :
         ColorMappingOperatorFactory::getInstance().getAllDescriptors()) {
        if (!shaping.contains(name)) {
            neutral.emplace_back(*descriptor);
        }
    }
    OperatorValues compression(HighlightCompressionOperator::kDescriptor);
    neutral.push_back(compression.set(HighlightCompressionOperator::kAmount, 0.0f));
    OperatorValues straight(HighlightCompressionOperator::kDescriptor);
    neutral.push_back(straight.set(HighlightCompressionOperator::kWhite, 1.0f));
    OperatorValues pivot(ContrastOperator::kDescriptor);
    neutral.push_back(pivot.set(ContrastOperator::kPivot, 0.5f));
    OperatorValues curves(CurvesOperator::kDescriptor);
    neutral.push_back(curves.set(CurvesOperator::kMaster, {{-3, -3}, {0.5f, 0.5f}, {7, 7}}));

    const CommonColorMappingContext context;
    for (const OperatorValues& values : neutral) {
        StageList stages;
        values.getDescriptor().appendStages(values, {context, {640, 480}}, stages);
        EXPECT_TRUE(stages.take().empty()) << values.getDescriptor().typeName;
    }
    neutral.push_back(exposure(3.0f).setEnabled(false));

    const std::vector<Rgb> colors = makeColors();
    const std::vector<Rgb> mapped = mapWith(neutral, colors);
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const Reference color = toMappable(colors[i]);
        const Rgb expected{float(color[0]), float(color[1]), float(color[2]), colors[i].a};
        ASSERT_TRUE(haveSameBits(mapped[i], expected)) << color[0] << ", " << color[1];
    }
}

TEST(Operators, BlackStaysBlackUnlessItIsLifted) {
    const std::set<String> lifting = {"Aces", "Clamp", "LiftGammaGain", "Sigmoid"};
    for (const OperatorValues& values : makeTellingOperators()) {
        if (!lifting.contains(values.getDescriptor().typeName)) {
            EXPECT_EQ(mapWith({values}, {Rgb{}})[0], Rgb{}) << values.getDescriptor().typeName;
        }
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
