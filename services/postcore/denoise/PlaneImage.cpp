#include "services/postcore/denoise/PlaneImage.h"

#include <algorithm>

namespace tavrin::postcore {

PlaneImage::PlaneImage(int width, int height, int planeCount)
    : width_(width),
      height_(height),
      stride_((width + 2 * kMargin + 3 * kGranule - 1) / kGranule * kGranule) {
    for (int i = 0; i < planeCount; ++i) {
        planes_.emplace_back(std::size_t(stride_) * (std::size_t(height) + 2 * kMargin));
    }
}

void PlaneImage::fill(int plane, float value) {
    PixelArray<float>& values = planes_[std::size_t(plane)];
    std::fill_n(values.data(), values.size(), value);
}

void PlaneImage::extendBorders(int plane) {
    for (int y = 0; y < height_; ++y) {
        float* first = row(plane, y);
        std::fill(first - kMargin, first, *first);
        std::fill(first + width_, first - kMargin + stride_, first[width_ - 1]);
    }
    for (int i = 1; i <= kMargin; ++i) {
        std::copy_n(row(plane, 0) - kMargin, stride_, row(plane, -i) - kMargin);
        std::copy_n(row(plane, height_ - 1) - kMargin, stride_,
                    row(plane, height_ - 1 + i) - kMargin);
    }
}

void PlaneImage::extendBorders() {
    for (int plane = 0; plane < getPlaneCount(); ++plane) {
        extendBorders(plane);
    }
}

}  // namespace tavrin::postcore
