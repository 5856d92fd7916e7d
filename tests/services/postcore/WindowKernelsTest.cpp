#include "services/postcore/denoise/PlaneImage.h"
#include "services/postcore/denoise/highquality/WindowKernels.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <random>
#include <vector>

namespace tavrin::postcore {
namespace {

constexpr std::size_t kCount = 48;
constexpr std::ptrdiff_t kOffset = 3;

/// Each test runs for every instruction set that this processor has, against plain loops.
class WindowKernels : public testing::TestWithParam<std::int64_t> {
protected:
    void SetUp() override { choose(GetParam()); }
    void TearDown() override { choose(0); }

    static void choose(std::int64_t target) {
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    }

    using Row = std::vector<float>;

    Row makeRow(float low, float high) {
        Row row(2 * kCount);
        std::uniform_real_distribution<float> value(low, high);
        std::ranges::generate(row, [&] { return value(random_); });
        return row;
    }

    struct Guide {
        std::array<Row, kGuideChannels> value;
        std::array<Row, kGuideChannels> variance;
        GuideRow at(std::ptrdiff_t i) const {
            const GuideRow row{{value[0].data(), value[1].data(), value[2].data()},
                               {variance[0].data(), variance[1].data(), variance[2].data()}};
            return row.movedBy(i);
        }
    };
    Guide makeGuide() {
        Guide guide;
        for (std::size_t c = 0; c < kGuideChannels; ++c) {
            guide.value[c] = makeRow(0.0f, 2.0f);
            guide.variance[c] = makeRow(0.0f, 0.2f);
        }
        return guide;
    }

    std::mt19937 random_{11};
};

INSTANTIATE_TEST_SUITE_P(, WindowKernels, testing::ValuesIn(hwy::SupportedAndGeneratedTargets()),
                         [](const auto& target) { return hwy::TargetName(target.param); });

TEST_P(WindowKernels, JudgeDifferences) {
    const Guide guide = makeGuide();
    const DistanceScale scale{0.25f, 1e-3f, 5.0f};
    Row distances(kCount);
    computeDistances(guide.at(0), guide.at(kOffset), scale, kCount, distances.data());
    const Row factors[3] = {makeRow(0, 9), makeRow(0, 9), makeRow(0, 9)};
    Row largest(kCount, 0.5f);
    raiseFeatureDistances(guide.at(0), guide.at(kOffset),
                          {factors[0].data(), factors[1].data(), factors[2].data()}, kCount,
                          largest.data());
    for (std::size_t i = 0; i < kCount; ++i) {
        double sum = 0.0;
        double feature = 0.5;
        for (std::size_t c = 0; c < kGuideChannels; ++c) {
            const double own = guide.variance[c][i];
            const double other = guide.variance[c][i + kOffset];
            const double difference = guide.value[c][i] - guide.value[c][i + kOffset];
            const double excess = difference * difference - own - std::min(own, other);
            sum += excess / (1e-3 + 0.25 * (own + other)) / 3.0;
            feature = std::max(feature, excess * factors[c][i]);
        }
        EXPECT_NEAR(distances[i], std::clamp(sum, -5.0, 5.0), 1e-4);
        EXPECT_NEAR(largest[i], feature, 1e-4);
    }
}

TEST_P(WindowKernels, WeighPatches) {
    const Row distances[3] = {makeRow(-1, 2), makeRow(-1, 2), makeRow(-1, 2)};
    const Row features = makeRow(0, 8);
    const Row here(2 * kCount, 1.0f);
    Row there = here;
    there[5] = 0.0f;
    Row weights(kCount);
    Row combined(kCount);
    computeWeights({{distances[0].data() + 1, distances[1].data() + 1, distances[2].data() + 1},
                    features.data(),
                    here.data(),
                    there.data(),
                    weights.data(),
                    combined.data()},
                   kCount);
    for (std::size_t i = 0; i < kCount; ++i) {
        double mean = 0.0;
        for (const Row& row : distances) {
            mean += (row[i] + row[i + 1] + row[i + 2]) / 9.0;
        }
        const auto expect = [&](double distance) {
            const double weight = i == 5 ? 0.0 : std::exp(-std::max(distance, 0.0));
            return weight < 0.01 ? 0.0 : weight;
        };
        EXPECT_NEAR(weights[i], expect(mean), 1e-5);
        EXPECT_NEAR(combined[i], expect(std::max<double>(mean, features[i])), 1e-5);
    }
}

TEST_P(WindowKernels, FitPlanes) {
    std::array<Row, kRegressors> regressors;
    for (Row& row : regressors) {
        row = makeRow(0.0f, 10.0f);
    }
    std::array<Row, kGuideChannels> color;
    for (std::size_t c = 0; c < kGuideChannels; ++c) {
        color[c].assign(2 * kCount, 1.0f + static_cast<float>(c));
        for (std::size_t i = 0; i < 2 * kCount; ++i) {
            for (std::size_t r = 0; r < kRegressors; ++r) {
                color[c][i] += static_cast<float>(r + c) * 0.1f * regressors[r][i];
            }
        }
    }
    constexpr std::ptrdiff_t kRadius = 20;
    std::vector<std::ptrdiff_t> offsets;
    for (std::ptrdiff_t i = -kRadius; i <= kRadius; ++i) {
        offsets.push_back(i);
    }
    const Row weights(offsets.size() * kCount, 0.5f);
    constexpr std::ptrdiff_t kFirst = 24;
    for (const float variance : {0.0f, 1e9f}) {
        std::array<Row, kGuideChannels + 1> sums;
        sums.fill(Row(2 * kCount));
        std::array<Row, kGuideChannels> means;
        means.fill(Row(kCount));
        const Row variances(kCount, variance);
        RegressionRow row{};
        for (std::size_t c = 0; c < kGuideChannels; ++c) {
            row.color[c] = color[c].data() + kFirst;
            row.sum[c] = sums[c].data() + kFirst;
            row.mean[c] = means[c].data();
        }
        for (std::size_t r = 0; r < kRegressors; ++r) {
            row.regressors[r] = regressors[r].data() + kFirst;
            row.regressorVariances[r] = variances.data();
        }
        row.sumWeight = sums[kGuideChannels].data() + kFirst;
        row.offsets = offsets;
        row.weights = weights.data();
        row.weightStride = kCount;
        regress(row, kCount);
        const auto average = [](const float* values, std::ptrdiff_t from, std::ptrdiff_t to) {
            return std::accumulate(values + from, values + to, 0.0) /
                   static_cast<double>(to - from);
        };
        constexpr auto kEnd = static_cast<std::ptrdiff_t>(kCount);
        for (std::ptrdiff_t i = 0; i < kEnd; ++i) {
            for (std::size_t c = 0; c < kGuideChannels; ++c) {
                EXPECT_NEAR(row.mean[c][i], average(row.color[c], i - kRadius, i + kRadius + 1),
                            1e-3);
                // The colours are linear in the regressors, which is what the fits find, up to the
                // ridge; but when the regressors are nothing but noise, the fits are means.
                const double expected =
                    variance == 0.0f
                        ? static_cast<double>(row.color[c][i])
                        : average(row.mean[c], std::max(i - kRadius, std::ptrdiff_t{0}),
                                  std::min(i + kRadius + 1, kEnd));
                EXPECT_NEAR(row.sum[c][i] / row.sumWeight[i], expected, 0.02);
            }
        }
    }
}

}  // namespace
}  // namespace tavrin::postcore
