#include "foundation/Exception.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/colorkit/operators/SaturationOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace tavrin::colorkit::test {
namespace {

std::vector<OperatorValues> defaultOperators() {
    std::vector<OperatorValues> operators;
    const auto pipeline = createDefaultPipeline();
    for (const IColorMappingOperator* current : listOperators(pipeline)) {
        operators.push_back(current->getValues());
    }
    return operators;
}

TEST(Pipeline, DefaultKeepsMiddleGreyAndHueAndBringsHighlightsToWhite) {
    const std::vector<Rgb> mapped = mapWith(
        defaultOperators(), {{0.18f, 0.18f, 0.18f}, {0.3f, 0.2f, 0.1f}, {3.3f, 3.3f, 3.3f}});
    EXPECT_NEAR(mapped[0].g, 0.18, 0.18 * 0.01);
    EXPECT_NEAR(mapped[1].r / mapped[1].b, 3.0, 1e-5);
    EXPECT_NEAR(mapped[1].g / mapped[1].b, 2.0, 1e-5);
    EXPECT_NEAR(mapped[2].g, 1.0, 0.02);
}

TEST(Pipeline, OperatorsAreListedInOrderWithIdsOfTheirOwn) {
    const auto pipeline = createDefaultPipeline();
    const auto another = createDefaultPipeline();
    std::set<int> ids;
    std::vector<std::string> types;
    for (const auto& each : {pipeline, another}) {
        for (const IColorMappingOperator* current : listOperators(each)) {
            ids.insert(current->getId());
            types.emplace_back(current->getValues().getDescriptor().typeName);
        }
    }
    EXPECT_EQ(ids.size(), 10u);
    types.resize(5);
    EXPECT_EQ(types, (std::vector<std::string>{"Exposure", "WhiteBalance", "Saturation", "Contrast",
                                               "HighlightCompression"}));
}

TEST(Pipeline, SamenessIsThatOfTypesValuesSwitchesAndOrder) {
    const OperatorValues exposure(ExposureOperator::kDescriptor);
    const OperatorValues saturation(SaturationOperator::kDescriptor);
    OperatorValues changed = exposure;
    changed.set(ExposureOperator::kStops, 1e-6f);
    OperatorValues off = exposure;
    off.setEnabled(false);
    const auto pipeline = makePipeline({exposure, saturation});

    EXPECT_TRUE(arePipelinesSame(pipeline, makePipeline({exposure, saturation})));
    EXPECT_TRUE(arePipelinesSame({}, makePipeline({})));
    for (const auto& other : {makePipeline({changed, saturation}), makePipeline({off, saturation}),
                              makePipeline({saturation, exposure}), makePipeline({exposure}),
                              makePipeline({saturation, saturation}), makePipeline({})}) {
        EXPECT_FALSE(arePipelinesSame(pipeline, other));
        EXPECT_FALSE(arePipelinesSame(other, pipeline));
    }
}

TEST(Pipeline, ValuesOutOfRangeAreRefused) {
    OperatorValues values(ContrastOperator::kDescriptor);
    for (const float contrast : {0.0f, 4.01f, std::nanf("")}) {
        try {
            values.set(ContrastOperator::kContrast, contrast);
            FAIL() << contrast;
        } catch (const Exception& exception) {
            EXPECT_STREQ(exception.what(),
                         "The value \"contrast\" of the operator \"Contrast\" must be a number "
                         "from 0.1 to 4.");
        }
    }
    EXPECT_EQ(values.get(ContrastOperator::kContrast), 1.0f);
}

}  // namespace
}  // namespace tavrin::colorkit::test
