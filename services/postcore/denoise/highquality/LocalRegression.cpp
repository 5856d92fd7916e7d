#include "services/postcore/denoise/highquality/LocalRegression.h"

#include <algorithm>
#include <cmath>

namespace tavrin::postcore {
namespace {

// A tile's pixels are given to those in their windows. Bands that are at least twice as high as a
// window's radius and have another one between them do not touch the same pixels.
constexpr int kBandHeight = DenoisingTile::kHeight;
static_assert(kBandHeight >= 2 * kLargestWindowRadius &&
              kLargestWindowRadius < PlaneImage::kMargin);
// Regressions take as long as the filtering of a feature for so many pixels of their windows.
constexpr int kPixelsPerStep = 16;
// Added to colours that are multiplied, so that black does not win over everything.
constexpr float kOffset = 0.01f;

int countStepsPerRow(int radius) {
    return (2 * radius + 1) * (2 * radius + 1) / kPixelsPerStep + 1;
}

/// Sums over fits: three colour planes and one of weights.
PlaneImage makeSums(const PlaneImage& image) {
    PlaneImage sums(image.getWidth(), image.getHeight(), kGuideChannels + 1);
    for (int plane = 0; plane <= kGuideChannels; ++plane) {
        sums.fill(plane, 0.0f);
    }
    return sums;
}

class ColorRegression {
public:
    ColorRegression(const RegressionInput& input, PlaneImage& result)
        : input_(input),
          result_(result),
          flat_(input.color.getWidth(), input.color.getHeight(), 1),
          alike_(makeSums(input.color)),
          alikeInColor_(makeSums(input.color)),
          meansInColor_(input.color.getWidth(), input.color.getHeight(), kGuideChannels) {
        flat_.fill(0, 0.0f);
    }

    void runBand(int band, DenoisingRun& run) {
        WindowWeights weights(input_.guides, input_.radius);
        const int begin = band * kBandHeight;
        const int end = std::min(begin + kBandHeight, result_.getHeight());
        for (const DenoisingTile& tile : getTiles(result_.getWidth(), begin, end)) {
            weights.compute(tile);
            for (int row = 0; row < tile.height; ++row) {
                regressRow(tile, row, weights);
            }
            if (!run.step(tile.height * countStepsPerRow(input_.radius))) {
                return;
            }
        }
    }

    /// Replaces the means in the result by the geometric means of the four estimates.
    void combineRow(int y) {
        const float* weight = alike_.row(kGuideChannels, y);
        const float* weightInColor = alikeInColor_.row(kGuideChannels, y);
        for (int c = 0; c < kGuideChannels; ++c) {
            const float* fit = alike_.row(c, y);
            const float* fitInColor = alikeInColor_.row(c, y);
            const float* meanInColor = meansInColor_.row(c, y);
            float* result = result_.row(c, y);
            for (int x = 0; x < result_.getWidth(); ++x) {
                const float product = (std::max(result[x], 0.0f) + kOffset) *
                                      (std::max(fit[x] / weight[x], 0.0f) + kOffset) *
                                      (std::max(fitInColor[x] / weightInColor[x], 0.0f) + kOffset) *
                                      (std::max(meanInColor[x], 0.0f) + kOffset);
                result[x] = std::max(std::sqrt(std::sqrt(product)) - kOffset, 0.0f);
            }
        }
    }

private:
    void regressRow(const DenoisingTile& tile, int row, const WindowWeights& weights) {
        const int y = tile.y + row;
        RegressionRow regression{};
        for (int c = 0; c < kGuideChannels; ++c) {
            regression.color[c] = input_.color.row(c, y) + tile.x;
            regression.mean[c] = result_.row(c, y) + tile.x;
        }
        for (std::size_t i = 0; i < kRegressors; ++i) {
            const PlaneImage* regressor = input_.regressors[i / kGuideChannels];
            const int plane = static_cast<int>(i % kGuideChannels);
            const auto getRow = [&](int index) {
                return (regressor ? regressor->row(index, y) : flat_.row(0, y)) + tile.x;
            };
            regression.regressors[i] = getRow(plane);
            regression.regressorVariances[i] = getRow(kGuideChannels + plane);
        }
        regression.offsets = weights.getOffsets();
        regression.weightStride = WindowWeights::kStride;
        regression.weights = weights.getCombinedWeights(row);
        addFits(tile, y, alike_, regression);
        for (int c = 0; c < kGuideChannels; ++c) {
            regression.mean[c] = meansInColor_.row(c, y) + tile.x;
        }
        regression.weights = weights.getColorWeights(row);
        addFits(tile, y, alikeInColor_, regression);
    }

    static void addFits(const DenoisingTile& tile, int y, PlaneImage& sums,
                        RegressionRow& regression) {
        for (int c = 0; c < kGuideChannels; ++c) {
            regression.sum[c] = sums.row(c, y) + tile.x;
        }
        regression.sumWeight = sums.row(kGuideChannels, y) + tile.x;
        regress(regression, std::size_t(tile.width));
    }

    const RegressionInput& input_;
    PlaneImage& result_;
    PlaneImage flat_;
    PlaneImage alike_;
    PlaneImage alikeInColor_;
    PlaneImage meansInColor_;
};

}  // namespace

std::int64_t countRegressionSteps(int width, int height, int radius) {
    const std::int64_t columns = (width + DenoisingTile::kWidth - 1) / DenoisingTile::kWidth;
    return columns * height * countStepsPerRow(radius);
}

void regressColors(const RegressionInput& input, PlaneImage& result, DenoisingRun& run) {
    ColorRegression regression(input, result);
    const int bandCount = (result.getHeight() + kBandHeight - 1) / kBandHeight;
    for (const int first : {0, 1}) {
        run.forEach((bandCount - first + 1) / 2, [&](std::int64_t i) {
            regression.runBand(static_cast<int>(2 * i) + first, run);
        });
    }
    if (!run.isAborted()) {
        run.forEach(result.getHeight(),
                    [&](std::int64_t y) { regression.combineRow(static_cast<int>(y)); });
    }
}

}  // namespace tavrin::postcore
