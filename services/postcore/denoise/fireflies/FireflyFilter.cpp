#include "services/postcore/denoise/fireflies/FireflyFilter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace tavrin::postcore {
namespace {

constexpr int kChannels = 3;
// How many times as bright as the brightest pixel around it a firefly is.
constexpr float kContrast = 0.5f;
// The part of its excess that a firefly's standard deviation reaches.
constexpr float kUncertainty = 0.2f;
constexpr float kDark = 1e-8f;
constexpr float kLevelOfMean = 0.4f;

/// What surrounds a pixel.
struct Surroundings {
    float brightest = 0.0f;
    float variances = 0.0f;
    float squares = 0.0f;
    std::array<float, 2 * kChannels> sums{};
    float count = 0.0f;
};

float getMean(const PlaneImage& image, int firstPlane, int x, int y) {
    return (image.row(firstPlane, y)[x] + image.row(firstPlane + 1, y)[x] +
            image.row(firstPlane + 2, y)[x]) *
           (1.0f / kChannels);
}

Surroundings getSurroundings(const PlaneImage& image, int x, int y) {
    Surroundings result;
    for (int j = std::max(y - 1, 0); j <= std::min(y + 1, image.getHeight() - 1); ++j) {
        for (int i = std::max(x - 1, 0); i <= std::min(x + 1, image.getWidth() - 1); ++i) {
            if (i == x && j == y) {
                continue;
            }
            const float brightness = getMean(image, 0, i, j);
            result.brightest = std::max(result.brightest, brightness);
            result.variances += getMean(image, kChannels, i, j);
            result.squares += brightness * brightness;
            for (int plane = 0; plane < 2 * kChannels; ++plane) {
                result.sums[std::size_t(plane)] += image.row(plane, j)[i];
            }
            result.count += 1.0f;
        }
    }
    return result;
}

bool isFirefly(const PlaneImage& image, int x, int y, const Surroundings& around, float level,
               float sensitivity) {
    const float brightness = getMean(image, 0, x, y);
    const float contrast = 1.0f + kContrast / sensitivity;
    if (around.count == 0.0f || brightness + level <= contrast * (around.brightest + level)) {
        return false;
    }
    const float relativeVariance =
        std::min(around.variances / (around.squares + std::numeric_limits<float>::min()), 1.0f);
    const float variance =
        std::max(getMean(image, kChannels, x, y), relativeVariance * brightness * brightness);
    return std::sqrt(variance) * sensitivity > kUncertainty * (brightness - around.brightest);
}

}  // namespace

void removeFireflies(PlaneImage& image, float level, float sensitivity, DenoisingRun& run) {
    if (!(sensitivity > 0.0f)) {
        return;
    }
    PlaneImage result = image;
    run.forEach(image.getHeight(), [&](std::int64_t row) {
        const int y = static_cast<int>(row);
        for (int x = 0; x < image.getWidth(); ++x) {
            const Surroundings around = getSurroundings(image, x, y);
            if (isFirefly(image, x, y, around, level, sensitivity)) {
                for (int plane = 0; plane < 2 * kChannels; ++plane) {
                    result.row(plane, y)[x] = around.sums[std::size_t(plane)] / around.count;
                }
            }
        }
        run.step(1);
    });
    image = std::move(result);
}

float measureLevel(const PlaneImage& image) {
    double sum = 0.0;
    std::int64_t count = 0;
    for (int y = 0; y < image.getHeight(); ++y) {
        for (int x = 0; x < image.getWidth(); ++x) {
            const float brightness = getMean(image, 0, x, y);
            if (brightness > kDark) {
                sum += std::log(brightness);
                ++count;
            }
        }
    }
    return count == 0
               ? 1.0f
               : static_cast<float>(kLevelOfMean * std::exp(sum / static_cast<double>(count)));
}

}  // namespace tavrin::postcore
