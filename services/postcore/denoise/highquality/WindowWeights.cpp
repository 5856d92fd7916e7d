#include "services/postcore/denoise/highquality/WindowWeights.h"

#include <algorithm>

namespace tavrin::postcore {
namespace {

// Differences of features up to this squared, about one in 8-bit colours, mean nothing.
constexpr float kLeastFeatureVariance = 1e-3f;

float square(float value) {
    return value * value;
}

/// The squared slope of a plane at a pixel, along each axis to the side where it is smaller: the
/// edge of an object is no slope of it.
float getSquaredSlope(const float* pixel, std::ptrdiff_t stride) {
    const auto along = [pixel](std::ptrdiff_t step) {
        return std::min(square(pixel[step] - *pixel), square(*pixel - pixel[-step]));
    };
    return along(1) + along(stride);
}

}  // namespace

std::vector<DenoisingTile> getTiles(int imageWidth, int begin, int end) {
    constexpr int kGranule = PlaneImage::kGranule;
    std::vector<DenoisingTile> tiles;
    for (int y = begin; y < end; y += DenoisingTile::kHeight) {
        for (int x = 0; x < imageWidth; x += DenoisingTile::kWidth) {
            const int width = std::min(imageWidth - x, DenoisingTile::kWidth);
            tiles.push_back({x, y, (width + kGranule - 1) / kGranule * kGranule,
                             std::min(end - y, DenoisingTile::kHeight)});
        }
    }
    return tiles;
}

GuideRow getGuideRow(const PlaneImage& guide, int x, int y) {
    GuideRow row;
    for (int c = 0; c < kGuideChannels; ++c) {
        row.value[c] = guide.row(c, y) + x;
        row.variance[c] = guide.row(kGuideChannels + c, y) + x;
    }
    return row;
}

PlaneImage makeValidity(int width, int height) {
    PlaneImage valid(width, height, 1);
    valid.fill(0, 0.0f);
    for (int y = 0; y < height; ++y) {
        std::fill_n(valid.row(0, y), width, 1.0f);
    }
    return valid;
}

WindowWeights::WindowWeights(const WindowGuides& guides, int radius)
    : guides_(guides),
      distances_(kDistanceFloats * (DenoisingTile::kHeight + 2)),
      featureScales_(guides.features.size() * kGuideChannels * kStride),
      featureDistances_(kRowFloats) {
    // Down the columns: vectors one pixel apart would overlap in sums that have just been stored,
    // and the processor would wait for them.
    for (int x = -radius; x <= radius; ++x) {
        for (int y = -radius; y <= radius; ++y) {
            offsets_.push_back(y * guides.color.getStride() + x);
        }
    }
    color_.resize(offsets_.size() * kStride);
    if (!guides.features.empty()) {
        combined_.resize(color_.size());
    }
}

void WindowWeights::compute(const DenoisingTile& tile) {
    computeFeatureScales(tile);
    for (std::size_t i = 0; i < offsets_.size(); ++i) {
        computeForOffset(tile, i);
    }
}

void WindowWeights::computeFeatureScales(const DenoisingTile& tile) {
    float* scale = featureScales_.data();
    for (const PlaneImage* feature : guides_.features) {
        for (int c = 0; c < kGuideChannels; ++c, scale += kStride) {
            for (int row = 0; row < tile.height; ++row) {
                const float* value = feature->row(c, tile.y + row) + tile.x;
                const float* variance = feature->row(kGuideChannels + c, tile.y + row) + tile.x;
                for (int x = 0; x < tile.width; ++x) {
                    const float slope = getSquaredSlope(value + x, feature->getStride());
                    scale[row * kRowFloats + x] =
                        1.0f / (guides_.featureDamping *
                                std::max({kLeastFeatureVariance, variance[x], slope}));
                }
            }
        }
    }
}

void WindowWeights::computeForOffset(const DenoisingTile& tile, std::size_t index) {
    const std::ptrdiff_t offset = offsets_[index];
    const auto getDistances = [this](int row) {
        return distances_.data() + (row + 1) * kDistanceFloats;
    };
    for (int row = -1; row <= tile.height; ++row) {
        const GuideRow here = getGuideRow(guides_.color, tile.x - 1, tile.y + row);
        computeDistances(here, here.movedBy(offset), guides_.colorScale,
                         std::size_t(tile.width + PlaneImage::kGranule), getDistances(row));
    }
    for (int row = 0; row < tile.height; ++row) {
        const float* valid = guides_.valid.row(0, tile.y + row) + tile.x;
        const std::ptrdiff_t at = static_cast<std::ptrdiff_t>(index) * kStride + row * kRowFloats;
        const WeightRows rows{
            {getDistances(row - 1) + 1, getDistances(row) + 1, getDistances(row + 1) + 1},
            getFeatureDistances(tile, row, offset),
            valid,
            valid + offset,
            color_.data() + at,
            combined_.empty() ? nullptr : combined_.data() + at};
        computeWeights(rows, std::size_t(tile.width));
    }
}

const float* WindowWeights::getFeatureDistances(const DenoisingTile& tile, int row,
                                                std::ptrdiff_t offset) {
    std::ranges::fill(featureDistances_, 0.0f);
    const float* scale = featureScales_.data() + row * kRowFloats;
    for (const PlaneImage* feature : guides_.features) {
        const GuideRow here = getGuideRow(*feature, tile.x, tile.y + row);
        raiseFeatureDistances(here, here.movedBy(offset),
                              {scale, scale + kStride, scale + 2 * kStride},
                              std::size_t(tile.width), featureDistances_.data());
        scale += kGuideChannels * kStride;
    }
    return featureDistances_.data();
}

}  // namespace tavrin::postcore
