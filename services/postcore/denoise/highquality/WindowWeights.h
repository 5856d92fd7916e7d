#pragma once

#include "services/postcore/denoise/PlaneImage.h"
#include "services/postcore/denoise/highquality/WindowKernels.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tavrin::postcore {

/// A rectangle of an image. Tiles at the right border hold whole granules, so that they may reach
/// into the margin.
struct DenoisingTile {
    static constexpr int kWidth = 64;
    static constexpr int kHeight = 16;

    int x;
    int y;
    int width;
    int height;
};

/// The tiles in the rows from `begin` to `end` of an image, from left to right and down.
std::vector<DenoisingTile> getTiles(int imageWidth, int begin, int end);

/// A guide is a PlaneImage of six planes, with its borders extended: three channels and their
/// variances.
inline constexpr int kGuidePlanes = 2 * kGuideChannels;
GuideRow getGuideRow(const PlaneImage& guide, int x, int y);

/// One plane that is 1 in the image and 0 in the margin.
PlaneImage makeValidity(int width, int height);

/// What tells which pixels are alike. All images have one size and outlive it.
struct WindowGuides {
    const PlaneImage& valid;
    const PlaneImage& color;
    DistanceScale colorScale;
    std::vector<const PlaneImage*> features;
    float featureDamping = 1.0f;
};

/// How much the pixels in the windows around those of a tile weigh. One thread at a time.
class WindowWeights {
public:
    /// Windows of (2 radius + 1)² pixels.
    WindowWeights(const WindowGuides& guides, int radius);

    void compute(const DenoisingTile& tile);

    /// The distances from a pixel to those of its window.
    std::span<const std::ptrdiff_t> getOffsets() const { return offsets_; }
    /// The weights of the first pixel of the windows in a row of the tile, by likeness of colours
    /// alone and, where there are features, by all guides.
    const float* getColorWeights(int row) const { return color_.data() + row * kRowFloats; }
    const float* getCombinedWeights(int row) const {
        return (combined_.empty() ? color_ : combined_).data() + row * kRowFloats;
    }
    /// From the weights of one pixel of the windows to those of the next one: not a power of two,
    /// so that they do not all take the same place in the cache.
    static constexpr std::ptrdiff_t kStride =
        std::ptrdiff_t{DenoisingTile::kWidth} * DenoisingTile::kHeight + PlaneImage::kGranule;

private:
    static constexpr std::ptrdiff_t kRowFloats = DenoisingTile::kWidth;
    // Distances are computed for a pixel more on each side.
    static constexpr std::ptrdiff_t kDistanceFloats = DenoisingTile::kWidth + PlaneImage::kGranule;

    void computeFeatureScales(const DenoisingTile& tile);
    void computeForOffset(const DenoisingTile& tile, std::size_t index);
    const float* getFeatureDistances(const DenoisingTile& tile, int row, std::ptrdiff_t offset);

    const WindowGuides& guides_;
    std::vector<std::ptrdiff_t> offsets_;
    std::vector<float> distances_;
    std::vector<float> featureScales_;
    std::vector<float> featureDistances_;
    std::vector<float> color_;
    std::vector<float> combined_;
};

}  // namespace tavrin::postcore
