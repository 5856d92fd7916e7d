#pragma once

#include "services/imageio/IImageIterator.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

namespace tavrin::imageio {

/// A picture whose pixels a test sets.
class TestPicture : public IImageIterator {
public:
    TestPicture(Pixel size, bool hasAlpha)
        : size_(size),
          hasAlpha_(hasAlpha),
          pixels_(static_cast<std::size_t>(size.x) * static_cast<std::size_t>(size.y)) {}
    TestPicture(Pixel size, std::vector<Rgba> pixels)
        : size_(size), hasAlpha_(true), pixels_(std::move(pixels)) {}

    /// Values from `low` to `high`, the same in every run; alpha from 0 to 1.
    static TestPicture random(Pixel size, bool hasAlpha, float low, float high) {
        TestPicture picture(size, hasAlpha);
        std::mt19937 generator(7);
        std::uniform_real_distribution<float> value(low, high);
        std::uniform_real_distribution<float> alpha(0.0f, 1.0f);
        for (Rgba& pixel : picture.pixels_) {
            pixel = {value(generator), value(generator), value(generator), alpha(generator)};
        }
        return picture;
    }

    static TestPicture uniform(Pixel size, bool hasAlpha, const Rgba& color) {
        TestPicture picture(size, hasAlpha);
        std::ranges::fill(picture.pixels_, color);
        return picture;
    }

    Pixel getSize() const override { return size_; }
    Rgb getPixel(Pixel position, float& alpha) const override {
        const Rgba& pixel = pixels_[static_cast<std::size_t>(position.y * size_.x + position.x)];
        alpha = hasAlpha_ ? pixel.a : 1.0f;
        return {pixel.r, pixel.g, pixel.b};
    }
    bool hasAlpha() const override { return hasAlpha_; }

    const std::vector<Rgba>& pixels() const { return pixels_; }

private:
    Pixel size_;
    bool hasAlpha_;
    std::vector<Rgba> pixels_;
};

}  // namespace tavrin::imageio
