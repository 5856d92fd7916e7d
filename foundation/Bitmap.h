#pragma once

#include "foundation/Geometry.h"
#include "foundation/PixelArray.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace tavrin {
inline namespace foundation {

/// Width × height pixels, row-major, row 0 first; T is Rgb, Rgba, CompressedRgb or float. A new
/// bitmap's pixels are not initialised. Copying copies the pixels; a moved-from bitmap is empty.
template <class T>
class BitmapImpl {
public:
    BitmapImpl() = default;
    /// Negative sizes count as 0. Throws std::bad_alloc.
    BitmapImpl(int width, int height)
        : width_(std::max(width, 0)),
          height_(std::max(height, 0)),
          pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {}

    BitmapImpl(const BitmapImpl&) = default;
    BitmapImpl(BitmapImpl&& other) noexcept
        : width_(std::exchange(other.width_, 0)),
          height_(std::exchange(other.height_, 0)),
          pixels_(std::move(other.pixels_)) {}
    BitmapImpl& operator=(BitmapImpl other) noexcept {
        width_ = other.width_;
        height_ = other.height_;
        pixels_ = std::move(other.pixels_);
        return *this;
    }
    ~BitmapImpl() = default;

    int getWidth() const { return width_; }
    int getHeight() const { return height_; }
    Pixel getSize() const { return {width_, height_}; }
    std::int64_t getPixelCount() const { return static_cast<std::int64_t>(pixels_.size()); }

    T& at(int x, int y) { return pixels_[index(x, y)]; }
    const T& at(int x, int y) const { return pixels_[index(x, y)]; }
    std::span<T> row(int y) { return pixels().subspan(index(0, y), std::size_t(width_)); }
    std::span<const T> row(int y) const {
        return pixels().subspan(index(0, y), std::size_t(width_));
    }
    std::span<T> pixels() { return {pixels_.data(), pixels_.size()}; }
    std::span<const T> pixels() const { return {pixels_.data(), pixels_.size()}; }

private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_ = 0;
    int height_ = 0;
    PixelArray<T> pixels_;
};

}  // namespace foundation
}  // namespace tavrin
