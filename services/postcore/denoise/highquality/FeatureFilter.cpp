#include "services/postcore/denoise/highquality/FeatureFilter.h"

#include "services/postcore/denoise/highquality/WindowWeights.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tavrin::postcore {
namespace {

constexpr int kRadius = 5;
constexpr int kVarianceRadius = 2;
constexpr DistanceScale kScale{1.0f, 1e-6f, 12.0f};

/// The sums of a row of a tile.
class RowSums {
public:
    AverageRows clear() {
        std::ranges::fill(sums_, 0.0f);
        return rows_;
    }

    void divide(int width, int x, int y, PlaneImage& result) const {
        for (int c = 0; c < kGuideChannels; ++c) {
            float* value = result.row(c, y) + x;
            float* variance = result.row(kGuideChannels + c, y) + x;
            for (int i = 0; i < width; ++i) {
                // The pixel itself has weight 1 unless it lies in the margin.
                const float scale = 1.0f / std::max(rows_.weight[i], 1.0f);
                value[i] = rows_.value[c][i] * scale;
                variance[i] = rows_.variance[c][i] * scale * scale;
            }
        }
    }

private:
    static constexpr int kWidth = DenoisingTile::kWidth;

    std::vector<float> sums_ = std::vector<float>((kGuidePlanes + 1) * kWidth);
    AverageRows rows_{
        {sums_.data(), sums_.data() + kWidth, sums_.data() + 2 * kWidth},
        {sums_.data() + 3 * kWidth, sums_.data() + 4 * kWidth, sums_.data() + 5 * kWidth},
        sums_.data() + 6 * kWidth};
};

void averageTile(const DenoisingTile& tile, const PlaneImage& feature, WindowWeights& weights,
                 PlaneImage& result) {
    weights.compute(tile);
    RowSums sums;
    for (int row = 0; row < tile.height; ++row) {
        const AverageRows rows = sums.clear();
        const GuideRow here = getGuideRow(feature, tile.x, tile.y + row);
        const float* weight = weights.getColorWeights(row);
        for (const std::ptrdiff_t offset : weights.getOffsets()) {
            addNeighbor(here.movedBy(offset), weight, std::size_t(tile.width), rows);
            weight += WindowWeights::kStride;
        }
        sums.divide(tile.width, tile.x, tile.y + row, result);
    }
}

}  // namespace

void filterFeature(PlaneImage& feature, const PlaneImage& valid, DenoisingRun& run) {
    for (int c = 0; c < kGuideChannels; ++c) {
        blurPlane(feature, kGuideChannels + c, kVarianceRadius, run);
    }
    feature.extendBorders();
    PlaneImage result(feature.getWidth(), feature.getHeight(), kGuidePlanes);
    const WindowGuides guides{valid, feature, kScale, {}};
    constexpr int kHeight = DenoisingTile::kHeight;
    const int height = feature.getHeight();
    run.forEach((height + kHeight - 1) / kHeight, [&](std::int64_t band) {
        WindowWeights weights(guides, kRadius);
        const int y = static_cast<int>(band) * kHeight;
        for (const DenoisingTile& tile :
             getTiles(feature.getWidth(), y, std::min(y + kHeight, height))) {
            averageTile(tile, feature, weights, result);
            if (!run.step(tile.height)) {
                return;
            }
        }
    });
    feature = std::move(result);
    feature.extendBorders();
}

void blurPlane(PlaneImage& image, int plane, int radius, DenoisingRun& run) {
    const int width = image.getWidth();
    const int height = image.getHeight();
    const float scale = 1.0f / static_cast<float>(2 * radius + 1);
    const auto add = [=](const float* from, float* to) {
        for (int x = 0; x < width; ++x) {
            to[x] += from[x] * scale;
        }
    };
    PlaneImage rows(width, height, 1);
    image.extendBorders(plane);
    run.forEach(height, [&](std::int64_t y) {
        float* to = rows.row(0, static_cast<int>(y));
        std::fill_n(to, width, 0.0f);
        for (int i = -radius; i <= radius; ++i) {
            add(image.row(plane, static_cast<int>(y)) + i, to);
        }
    });
    rows.extendBorders();
    run.forEach(height, [&](std::int64_t y) {
        float* to = image.row(plane, static_cast<int>(y));
        std::fill_n(to, width, 0.0f);
        for (int i = -radius; i <= radius; ++i) {
            add(rows.row(0, static_cast<int>(y) + i), to);
        }
    });
    image.extendBorders(plane);
}

}  // namespace tavrin::postcore
