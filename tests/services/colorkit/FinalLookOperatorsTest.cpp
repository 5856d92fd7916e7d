#include "services/colorkit/ColorMappingOperator.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/GrainOperator.h"
#include "services/colorkit/operators/VignetteOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tavrin::colorkit::test {
namespace {

/// Maps one row of `length` pixels of this colour at a position in an image of this size.
std::vector<Rgb> mapRowAt(const OperatorValues& values, const RowPosition& position,
                          std::size_t length, const Rgb& color, Pixel displaySize,
                          int noiseSeed = 0) {
    CommonColorMappingContext context;
    context.noiseSeed = noiseSeed;
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
                const double cosine =
                    std::cos(std::atan(r * std::tan(angle * std::numbers::pi / 180.0)));
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

std::vector<Rgb> grainRow(float size, const RowPosition& position, std::size_t length,
                          const Rgb& color = {0.18f, 0.18f, 0.18f}, int seed = 0) {
    OperatorValues values(GrainOperator::kDescriptor);
    values.set(GrainOperator::kAmount, 1.0f).set(GrainOperator::kSize, size);
    return mapRowAt(values, position, length, color, {640, 480}, seed);
}

TEST(FinalLookOperators, GrainHasTheSameDeviationAroundTheColourAtEverySize) {
    for (const float size : {1.0f, 1.5f, 2.0f, 8.0f}) {
        constexpr int kRows = 400;
        constexpr int kLength = 1000;
        double sum = 0.0;
        double squares = 0.0;
        double neighbours = 0.0;
        for (int y = 0; y < kRows; ++y) {
            const auto row = grainRow(size, {-300, 7 * y - 100, 1.0f}, kLength);
            for (int i = 0; i < kLength; ++i) {
                const double noise = (row[i].g / 0.18 - 1.0) * (1.0 + 4.0 * 0.18) / 0.25;
                ASSERT_TRUE(row[i].r == row[i].g && row[i].b == row[i].g);
                sum += noise;
                squares += noise * noise;
                neighbours += i == 0 ? 0.0 : noise * (row[i - 1].g / 0.18 - 1.0) * 1.72 / 0.25;
            }
        }
        constexpr double kCount = double{kRows} * kLength;
        EXPECT_NEAR(sum / kCount, 0.0, 5.0 * size / std::sqrt(kCount)) << size;
        EXPECT_NEAR(squares / kCount, 1.0, 10.0 * size / std::sqrt(kCount)) << size;
        // Grains of one pixel have nothing to do with their neighbours, larger ones do.
        EXPECT_NEAR(neighbours / kCount, size == 1.0f ? 0.0 : 1.0 - 0.5 / size, 0.35) << size;
    }
}

TEST(FinalLookOperators, GrainBelongsToPositionsAndToTheSeed) {
    for (const float size : {1.0f, 3.3f}) {
        const auto whole = grainRow(size, {0, 50, 1.0f}, 900);
        EXPECT_EQ(whole, grainRow(size, {0, 50, 1.0f}, 900));
        for (const float scale : {0.5f, 2.0f, 3.0f}) {
            const auto zoomed = grainRow(size, {40, 50, scale}, 280);
            for (std::size_t i = 0; i < zoomed.size(); ++i) {
                ASSERT_EQ(zoomed[i], whole[40 + std::size_t(float(i) * scale)]) << scale;
            }
        }
        for (const auto& other : {grainRow(size, {0, 51, 1.0f}, 900),
                                  grainRow(size, {0, 50, 1.0f}, 900, {0.18f, 0.18f, 0.18f}, 1)}) {
            const auto same = std::ranges::count_if(
                whole, [&](const Rgb& c) { return c == other[std::size_t(&c - whole.data())]; });
            EXPECT_LT(same, 30);
        }
        // Highlights have less of it, and nothing overflows or turns negative.
        const auto bright = grainRow(size, {0, 50, 1.0f}, 900, {3.4e38f, 1.0f, 0.0f});
        const auto dark = grainRow(size, {0, 50, 1.0f}, 900, {0.0f, 1e-3f, 1e-30f});
        for (std::size_t i = 0; i < bright.size(); ++i) {
            EXPECT_TRUE(std::isfinite(bright[i].r) && bright[i].b == 0.0f && dark[i].g >= 0.0f);
            EXPECT_LE(std::abs(bright[i].g - 1.0f), std::abs(dark[i].g / 1e-3f - 1.0f) + 1e-6f);
        }
    }
}

}  // namespace
}  // namespace tavrin::colorkit::test
