#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/PixelArray.h"

#include <cstddef>
#include <vector>

namespace tavrin::postcore {

/// Planes of floats over an image with a margin around it, so that windows around pixels and whole
/// vectors may reach beyond the borders. All images of one size have the same layout: a pixel's
/// neighbour lies at the same distance in each plane.
class PlaneImage {
public:
    /// How far outside the image there are floats, on the left, above and below; to the right
    /// there are two granules more.
    static constexpr int kMargin = 12;
    static constexpr int kGranule = 16;

    /// The floats are not initialised. Throws std::bad_alloc.
    PlaneImage(int width, int height, int planeCount);

    int getWidth() const { return width_; }
    int getHeight() const { return height_; }
    int getPlaneCount() const { return static_cast<int>(planes_.size()); }
    /// The distance between a pixel and the one below.
    std::ptrdiff_t getStride() const { return stride_; }

    /// Points to the pixel (0, y); y may lie in the margin.
    float* row(int plane, int y) { return planes_[std::size_t(plane)].data() + offset(y); }
    const float* row(int plane, int y) const {
        return planes_[std::size_t(plane)].data() + offset(y);
    }

    /// Sets a whole plane, its margin too.
    void fill(int plane, float value);
    /// Repeats the pixels at the borders in the margin of a plane, or of all planes.
    void extendBorders(int plane);
    void extendBorders();

private:
    std::ptrdiff_t offset(int y) const { return (y + kMargin) * stride_ + kMargin; }

    int width_;
    int height_;
    std::ptrdiff_t stride_;
    std::vector<PixelArray<float>> planes_;
};

}  // namespace tavrin::postcore
