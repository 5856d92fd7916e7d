#include "services/colorkit/ColorMappingOperator.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/HighlightCompressionOperator.h"
#include "services/colorkit/operators/SaturationOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace tavrin::colorkit::test {
namespace {

TEST(ColorMappingOperator, MapsRowsOfAllLengthsAndKeepsAlpha) {
    const auto alpha = std::bit_cast<float>(0x7FA12345u);  // not a number, with a payload
    for (std::size_t length = 0; length <= 2 * PixelBlock::kCapacity + 3; ++length) {
        std::vector<Rgb> row(length + 1, Rgb{0.5f, -2.0f, 8.0f, alpha});
        const Rgb behind = row.back();
        const CommonColorMappingContext context;
        const ColorMappingOperator<0> mapping(makePipeline({exposure(1.0f)}), true,
                                              {context, {640, 480}});
        mapping.mapRow(std::span(row).first(length), {});
        for (std::size_t i = 0; i < length; ++i) {
            ASSERT_FLOAT_EQ(row[i].r, 1.0f) << length << ", " << i;
            ASSERT_EQ(row[i].g, 0.0f) << length << ", " << i;
            ASSERT_EQ(std::bit_cast<std::uint32_t>(row[i].a), 0x7FA12345u) << length << ", " << i;
        }
        ASSERT_TRUE(haveSameBits(row.back(), behind)) << length;
    }
}

TEST(ColorMappingOperator, OffOnlyEncodes) {
    const std::vector<Rgb> row = {{0.18f, 1.0f, 4.0f, 0.5f}};
    std::vector<Rgb> mapped = row;
    CommonColorMappingContext context;
    context.imageExposure = 3.0f;
    ColorMappingOperator<0>(createDefaultPipeline(), false, {context, {}}).mapRow(mapped, {});
    EXPECT_TRUE(haveSameBits(mapped[0], mapWith({}, row, 2.2f)[0]));
}

TEST(ColorMappingOperator, ExposuresOfTheContextActBeforeThePipeline) {
    CommonColorMappingContext context;
    context.displayGamma = 1.0f;
    context.imageExposure = 2.0f;
    context.viewExposure = 1.5f;
    const auto pipeline = createDefaultPipeline();
    std::vector<Rgb> row = {{0.3f, 0.2f, 0.1f, 0.0f}};
    std::vector<Rgb> brighter = {{0.9f, 0.6f, 0.3f, 0.0f}};
    ColorMappingOperator<0>(pipeline, true, {context, {640, 480}}).mapRow(row, {});
    context.imageExposure = -1.0f;  // counts as 1, like what is not finite
    context.viewExposure = std::numeric_limits<float>::infinity();
    ColorMappingOperator<0>(pipeline, true, {context, {640, 480}}).mapRow(brighter, {});
    expectClose(row[0], {brighter[0].r, brighter[0].g, brighter[0].b});
}

TEST(ColorMappingOperator, MapsBitmapsLikeTheirRows) {
    const std::vector<Rgb> colors = makeColors();
    const CommonColorMappingContext context;
    const ColorMappingOperator<0> mapping(createDefaultPipeline(), true, {context, {640, 480}});
    for (const Pixel size : {Pixel{0, 0}, Pixel{5, 1}, Pixel{37, 90}}) {
        BitmapImpl<Rgb> bitmap(size.x, size.y);
        std::copy_n(colors.begin(), bitmap.getPixelCount(), bitmap.pixels().begin());
        std::vector<Rgb> expected(bitmap.pixels().begin(), bitmap.pixels().end());
        mapping.mapRow(expected, {});
        mapping.mapBitmap(bitmap, {10, 20}, 2.0f);
        EXPECT_TRUE(std::ranges::equal(bitmap.pixels(), expected, haveSameBits));
    }
}

TEST(ColorMappingOperator, FusedMatricesGiveTheProduct) {
    const std::vector<Rgb> colors = makeColors();
    const std::vector<Rgb> once = mapWith({exposure(-2.5f)}, colors);
    const std::vector<Rgb> twice = mapWith({exposure(7.5f), exposure(-10.0f)}, colors);
    EXPECT_TRUE(std::ranges::equal(once, twice, haveSameBits));
    const std::vector<OperatorValues> beyondAllFloats(64, exposure(10.0f));
    constexpr float kLargest = std::numeric_limits<float>::max();
    EXPECT_EQ(mapWith(beyondAllFloats, {{0.0f, 1e-30f, kLargest, 1.0f}}).front(),
              (Rgb{0.0f, kLargest, kLargest}));
}

TEST(ColorMappingOperator, AllInstructionSetsAgree) {
    std::vector<std::vector<OperatorValues>> pipelines = {
        {OperatorValues(HighlightCompressionOperator::kDescriptor),
         OperatorValues(SaturationOperator::kDescriptor).set(SaturationOperator::kSaturation, 0.5f),
         OperatorValues(ContrastOperator::kDescriptor).set(ContrastOperator::kContrast, 1.3f)}};
    for (const OperatorValues& values : makeTellingOperators()) {
        pipelines.push_back({values});
    }
    const std::vector<Rgb> colors = makeColors();
    for (const auto& operators : pipelines) {
        SCOPED_TRACE(operators.back().getDescriptor().typeName);
        const std::vector<Rgb> expected = mapWith(operators, colors, 2.2f);
        for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
            hwy::SetSupportedTargetsForTest(target);
            hwy::GetChosenTarget().Update(hwy::SupportedTargets());
            const std::vector<Rgb> mapped = mapWith(operators, colors, 2.2f);
            for (std::size_t i = 0; i < colors.size(); ++i) {
                const Reference wanted{expected[i].r, expected[i].g, expected[i].b};
                const Reference color = toMappable(colors[i]);
                // Matrices and offsets may cancel terms as large as the colour.
                const double largest = std::max({color[0], color[1], color[2], 1.0});
                expectClose(mapped[i], wanted, std::pow(largest, 1.0 / 2.4));
                EXPECT_EQ(std::bit_cast<std::uint32_t>(mapped[i].a),
                          std::bit_cast<std::uint32_t>(colors[i].a));
                ASSERT_FALSE(HasFailure()) << hwy::TargetName(target) << ", " << i;
            }
        }
        hwy::SetSupportedTargetsForTest(0);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    }
}

}  // namespace
}  // namespace tavrin::colorkit::test
