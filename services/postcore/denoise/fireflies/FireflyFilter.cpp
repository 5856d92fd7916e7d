#include "services/postcore/denoise/fireflies/FireflyFilter.h"

#include "foundation/Optional.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

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
    Pixel brightestPixel{};
    float brightest = 0.0f;
    float variances = 0.0f;
    float squares = 0.0f;
};

struct Firefly {
    Pixel position{};
    Pixel brightestNeighbor{};
    float excess = 0.0f;       ///< of its brightness over that neighbour's
    float disturbance = 0.0f;  ///< the logarithm of its contrast
};

float getMean(const PlaneImage& image, int firstPlane, int x, int y) {
    return (image.row(firstPlane, y)[x] + image.row(firstPlane + 1, y)[x] +
            image.row(firstPlane + 2, y)[x]) *
           (1.0f / kChannels);
}

Surroundings getSurroundings(const PlaneImage& image, int x, int y) {
    Surroundings result;
    result.brightest = std::numeric_limits<float>::lowest();
    for (int j = std::max(y - 1, 0); j <= std::min(y + 1, image.getHeight() - 1); ++j) {
        for (int i = std::max(x - 1, 0); i <= std::min(x + 1, image.getWidth() - 1); ++i) {
            if (i == x && j == y) {
                continue;
            }
            const float brightness = getMean(image, 0, i, j);
            if (brightness > result.brightest) {
                result.brightest = brightness;
                result.brightestPixel = {i, j};
            }
            result.variances += getMean(image, kChannels, i, j);
            result.squares += brightness * brightness;
        }
    }
    return result;
}

Optional<Firefly> findFirefly(const PlaneImage& image, int x, int y, const FireflyLimits& limits) {
    const Surroundings around = getSurroundings(image, x, y);
    const float brightness = getMean(image, 0, x, y);
    const float level = limits.level;
    const float contrast = 1.0f + kContrast / limits.sensitivity;
    const float visible = std::max(around.brightest, 0.0f) + level;
    if (brightness + level <= contrast * visible) {
        return {};
    }
    const float relativeVariance =
        std::min(around.variances / (around.squares + std::numeric_limits<float>::min()), 1.0f);
    const float variance =
        std::max(getMean(image, kChannels, x, y), relativeVariance * brightness * brightness);
    const float excess = brightness - around.brightest;
    if (std::sqrt(variance) * limits.sensitivity <= kUncertainty * excess) {
        return {};
    }
    return Firefly{{x, y}, around.brightestPixel, excess, std::log((brightness + level) / visible)};
}

/// From the top down and from left to right.
std::vector<Firefly> findFireflies(const PlaneImage& image, const FireflyLimits& limits,
                                   DenoisingRun& run) {
    std::vector<std::vector<Firefly>> rows{std::size_t(image.getHeight())};
    run.forEach(image.getHeight(), [&](std::int64_t row) {
        for (int x = 0; x < image.getWidth(); ++x) {
            if (const auto firefly = findFirefly(image, x, static_cast<int>(row), limits)) {
                rows[std::size_t(row)].push_back(*firefly);
            }
        }
        run.step(1);
    });
    std::vector<Firefly> fireflies;
    for (const std::vector<Firefly>& row : rows) {
        fireflies.insert(fireflies.end(), row.begin(), row.end());
    }
    return fireflies;
}

double getLight(const PlaneImage& image) {
    double sum = 0.0;
    for (int y = 0; y < image.getHeight(); ++y) {
        for (int x = 0; x < image.getWidth(); ++x) {
            sum += getMean(image, 0, x, y);
        }
    }
    return std::max(sum, 0.0);
}

}  // namespace

void removeFireflies(PlaneImage& image, const FireflyLimits& limits, DenoisingRun& run) {
    // A pixel that touches no other one has none to be compared with.
    if (!(limits.sensitivity > 0.0f) || image.getWidth() * image.getHeight() == 1) {
        return;
    }
    std::vector<Firefly> fireflies = findFireflies(image, limits, run);
    std::ranges::stable_sort(fireflies, {},
                             [](const Firefly& each) { return each.excess / each.disturbance; });
    double budget = limits.largestLoss * getLight(image);
    for (const Firefly& firefly : fireflies) {
        const auto part = static_cast<float>(std::min(budget / firefly.excess, 1.0));
        const auto [x, y] = firefly.position;
        for (int plane = 0; plane < 2 * kChannels; ++plane) {
            float& value = image.row(plane, y)[x];
            const float other =
                image.row(plane, firefly.brightestNeighbor.y)[firefly.brightestNeighbor.x];
            value = part < 1.0f ? value + part * (other - value) : other;
        }
        budget -= firefly.excess;
        if (!(budget > 0.0)) {
            return;
        }
    }
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
