#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/ColorMappingOperator.h"
#include "services/colorkit/Pipeline.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <bit>
#include <limits>

namespace tavrin::colorkit::test {
namespace {

constexpr Pixel kDisplaySize{640, 480};

std::vector<Rgb> measure(const EntityHolder<IColorMappingOperator>& pipeline, bool isEnabled,
                         const CommonColorMappingContext& context, std::uint32_t stage,
                         std::vector<Rgb> row) {
    HistogramColorMappingOperator(pipeline, isEnabled, {context, kDisplaySize}, stage)
        .mapRow(row, {});
    return row;
}

RC_GTEST_PROP(HistogramColorMappingOperator, MapsLikeThePipelineUpToTheOperator, ()) {
    const std::vector<OperatorValues> operators = arbitraryOperators();
    const auto pipeline = makePipeline(operators);
    CommonColorMappingContext context;
    context.imageExposure = 1.5f;
    std::vector<Rgb> colors = makeColors();
    colors.resize(300);
    for (std::size_t i = 0; i < operators.size(); ++i) {
        const int id = listOperators(pipeline)[i]->getId();
        const auto measured =
            measure(pipeline, true, context, static_cast<std::uint32_t>(id), colors);
        CommonColorMappingContext linear = context;
        linear.displayGamma = 1.0f;
        std::vector<Rgb> expected = colors;
        ColorMappingOperator<0>(
            makePipeline({operators.begin(), operators.begin() + static_cast<int>(i)}), true,
            {linear, kDisplaySize})
            .mapRow(expected, {});
        RC_ASSERT(std::ranges::equal(measured, expected, haveSameBits));
    }
}

TEST(HistogramColorMappingOperator, AnUnknownStageIsBlack) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const std::vector<Rgb> row = {{0.5f, kInfinity, -1.0f, std::bit_cast<float>(0x7FA12345u)}};
    const auto pipeline = makePipeline({exposure(1.0f)});
    for (const std::uint32_t stage : {0u, 0xFFFFFFFFu, 0x7FFFFFFFu}) {
        for (const bool isEnabled : {true, false}) {
            const auto measured = measure(pipeline, isEnabled, {}, stage, row);
            EXPECT_EQ(measured[0], (Rgb{0.0f, 0.0f, 0.0f, 0.0f}));
            EXPECT_EQ(std::bit_cast<std::uint32_t>(measured[0].a), 0x7FA12345u);
        }
    }
}

TEST(HistogramColorMappingOperator, OffMeasuresTheImageItself) {
    ColorMapping colorMapping;
    colorMapping.setPipeline(makePipeline({exposure(1.0f), exposure(3.0f)}));
    colorMapping.setEnabled(false);
    CommonColorMappingContext context;
    context.viewExposure = 2.0f;
    const auto id = static_cast<std::uint32_t>(colorMapping.getPipeline()->getId());
    std::vector<Rgb> row = {{0.5f, 7.0f, 0.0f, 0.25f}};
    const std::vector<Rgb> before = row;
    colorMapping.createHistogramOperator(context, kDisplaySize, id)->mapRow(row, {});
    EXPECT_TRUE(haveSameBits(row[0], before[0]));
    colorMapping.setEnabled(true);
    colorMapping.createHistogramOperator(context, kDisplaySize, id)->mapRow(row, {});
    EXPECT_EQ(row[0], (Rgb{2.0f, 28.0f, 0.0f, 0.0f}));
}

}  // namespace
}  // namespace tavrin::colorkit::test
