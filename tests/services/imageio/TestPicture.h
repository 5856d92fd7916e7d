#pragma once

#include "foundation/Path.h"
#include "services/imageio/IImageIterator.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <random>
#include <string>
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

/// An empty folder that goes away with everything in it.
class TestFolder {
public:
    TestFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("tavrin-imageio-" + std::to_string(std::random_device{}()))) {
        std::filesystem::create_directory(path_);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder() { std::filesystem::remove_all(path_); }

    Path operator/(const char* name) const { return Path(path_ / name); }
    std::size_t countFiles() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(path_), {}));
    }

private:
    std::filesystem::path path_;
};

}  // namespace tavrin::imageio
