#include "services/colorkit/ColorMappingOperator.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/VignetteOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavrin::colorkit::test {
namespace {

/// Maps one row of `length` pixels of this colour at a position in an image of this size.
std::vector<Rgb> mapRowAt(const OperatorValues& values, const RowPosition& position,
                          std::size_t length, const Rgb& color, Pixel displaySize) {
    CommonColorMappingContext context;
    context.displayGamma = 1.0f;
    std::vector<Rgb> row(length, color);
    ColorMappingOperator<0>(makePipeline({values}), true, {context, displaySize})
        .mapRow(row, position);
    return row;
}

OperatorValues vignette(float strength, float angle) {
    return OperatorValues(VignetteOperator::kDescriptor)
        .set(VignetteOperator::kStrength, strength)
        .set(VignetteOperator::kHalfFieldOfView, angle);
}

TEST(FinalLookOperators, VignetteFollowsTheFallOffFromTheCentreOfTheDisplayWindow) {
    constexpr Pixel kSize{801, 600};
    for (const auto& [strength, angle] :
         {std::pair{1.0f, 25.0f}, {0.3f, 60.0f}, {-1.0f, 40.0f}, {-0.4f, 5.0f}}) {
        for (const RowPosition& position :
             {RowPosition{0, 0, 1.0f}, {-70, 299, 1.0f}, {3, 611, 3.0f}, {11, 40, 0.7f}}) {
            const auto row =
                mapRowAt(vignette(strength, angle), position, 700, {0.25f, 1.0f, 3e38f}, kSize);
            for (std::size_t i = 0; i < row.size(); ++i) {
                const double x = position.x + std::trunc(double(i) * position.scale) + 0.5 - 400.5;
                const double y = position.y + 0.5 - 300.0;
                const double r = std::hypot(x, y) / std::hypot(400.5, 300.0);
                const double cosine = std::cos(std::atan(r * std::tan(angle * M_PI / 180.0)));
                const double factor = std::lerp(1.0, std::pow(cosine, 4.0), double{strength});
                SCOPED_TRACE(testing::Message() << strength << ", " << position.y << ", " << i);
                expectClose(row[i], {0.25 * factor, factor, double{3e38f} * factor});
                ASSERT_FALSE(HasFailure());
            }
        }
    }
}

TEST(FinalLookOperators, VignetteIsSymmetricAndSurvivesAnEmptyDisplayWindow) {
    const auto values = vignette(1.0f, 60.0f);
    const auto top = mapRowAt(values, {0, 2, 1.0f}, 64, {1, 1, 1}, {64, 48});
    const auto bottom = mapRowAt(values, {0, 45, 1.0f}, 64, {1, 1, 1}, {64, 48});
    for (std::size_t i = 0; i < top.size(); ++i) {
        EXPECT_EQ(top[i], bottom[i]);
        EXPECT_EQ(top[i], top[63 - i]);
    }
    EXPECT_LT(top[0].g, top[1].g);
    for (const Rgb& color : mapRowAt(values, {-5, 7, 1.0f}, 9, {1, 1, 1}, {0, 0})) {
        EXPECT_TRUE(color.g >= 0.0f && color.g <= 1.0f);
    }
}

}  // namespace
}  // namespace tavrin::colorkit::test
