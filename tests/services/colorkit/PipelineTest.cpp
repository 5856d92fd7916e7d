#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/SaturationOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"
#include "tests/support/Message.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace tavrin::colorkit::test {
namespace {

TEST(Pipeline, DefaultKeepsMiddleGreyAndHueAndBringsHighlightsToWhite) {
    std::vector<OperatorValues> operators;
    std::set<int> ids;
    std::string types;
    const auto pipeline = createDefaultPipeline();
    for (const IColorMappingOperator* current : listOperators(pipeline)) {
        operators.push_back(current->getValues());
        ids.insert(current->getId());
        types += std::string(operators.back().getDescriptor().typeName) + " ";
    }
    EXPECT_EQ(types, "Exposure WhiteBalance Saturation Contrast HighlightCompression ");
    EXPECT_EQ(ids.size(), 5u);
    const std::vector<Rgb> mapped =
        mapWith(operators, {{0.18f, 0.18f, 0.18f}, {0.3f, 0.2f, 0.1f}, {3.3f, 3.3f, 3.3f}});
    EXPECT_NEAR(mapped[0].g, 0.18, 0.18 * 0.01);
    EXPECT_NEAR(mapped[1].r / mapped[1].b, 3.0, 1e-5);
    EXPECT_NEAR(mapped[1].g / mapped[1].b, 2.0, 1e-5);
    EXPECT_NEAR(mapped[2].g, 1.0, 0.02);
}

TEST(Pipeline, SamenessIsThatOfTypesValuesSwitchesAndOrder) {
    const OperatorValues brighter = exposure(1.0f);
    const OperatorValues saturation(SaturationOperator::kDescriptor);
    const auto pipeline = makePipeline({brighter, saturation});
    EXPECT_TRUE(arePipelinesSame(pipeline, makePipeline({brighter, saturation})));
    EXPECT_TRUE(arePipelinesSame({}, makePipeline({})));
    for (const auto& other :
         {makePipeline({exposure(1.000001f), saturation}),
          makePipeline({exposure(1.0f).setEnabled(false), saturation}),
          makePipeline({saturation, brighter}), makePipeline({brighter}), makePipeline({})}) {
        EXPECT_FALSE(arePipelinesSame(pipeline, other));
        EXPECT_FALSE(arePipelinesSame(other, pipeline));
    }
}

TEST(Pipeline, ValuesOutOfRangeAreRefused) {
    OperatorValues values(ContrastOperator::kDescriptor);
    for (const float contrast : {0.0f, 4.01f, std::nanf("")}) {
        EXPECT_EQ(
            tests::messageOf([&] { values.set(ContrastOperator::kContrast, contrast); }),
            "The value \"contrast\" of the operator \"Contrast\" must be a number from 0.1 to 4.");
    }
    EXPECT_EQ(values.get(ContrastOperator::kContrast), 1.0f);
}

}  // namespace
}  // namespace tavrin::colorkit::test
