#include "services/postcore/denoise/highquality/HighQualityDenoiser.h"

#include "services/postcore/denoise/AutoExposure.h"
#include "services/postcore/denoise/CertainPixels.h"
#include "services/postcore/denoise/DenoisingRun.h"
#include "services/postcore/denoise/GuideImage.h"
#include "services/postcore/denoise/fireflies/FireflyFilter.h"
#include "services/postcore/denoise/highquality/EnergyReturn.h"
#include "services/postcore/denoise/highquality/FeatureFilter.h"
#include "services/postcore/denoise/highquality/LocalRegression.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

namespace tavrin::postcore {
namespace {

constexpr float kColorDamping = 0.15f;
constexpr float kFeatureDamping = 4.0f;
constexpr DistanceScale kColorScale{kColorDamping, 1e-6f, 12.0f};
// Variances are known from a few passes only and may be far too small by chance. They are at least
// the mean around them.
constexpr int kVarianceRadius = 1;
// Real details of an image are larger than single pixels: one may be as wrong as it is distant from
// its neighbours, all but two of them, yet not much more than the pixels in a larger square are.
constexpr int kSurpassing = 2;
constexpr int kDoubtRadius = 3;
constexpr float kLargestDoubt = 4.0f;
constexpr int kRadius = 6;
// The second time the colours are compared by the first estimate, in which this part of the
// variances is left, and the colours that are fitted are mostly that estimate.
constexpr int kSecondRadius = 3;
constexpr float kRemainingNoise = 0.007f;
constexpr float kLeastNoise = 3e-4f;
constexpr float kEstimateShare = 0.9f;
// From eight standard deviations on a pixel knows better than its neighbours.
constexpr float kOutstanding = 64.0f;

GuideLimits getFeatureLimits(FeatureType type) {
    switch (type) {
        case FeatureType::VisibleDiffuse:
            // Lamps that are seen directly or mirrored are as bright as they shine.
            return {0.0f, 1.0f, 0.25f};
        case FeatureType::VisibleNormals:
        case FeatureType::OptixNormals:
            return {-1.0f, 1.0f, 1.0f};
        case FeatureType::Hybrid:
        case FeatureType::HairIds:
            break;
    }
    return kColorLimits;
}

/// The guide that colours are compared by: log(1 + colour / level), as the noise of a render grows
/// with its brightness, and edges between bright and dark stay edges.
PlaneImage makeColorGuide(const PlaneImage& element, float level, DenoisingRun& run) {
    PlaneImage guide = element;
    PlaneImage blurred = element;
    for (int c = 0; c < kGuideChannels; ++c) {
        blurPlane(blurred, c, 1, run);
    }
    run.forEach(element.getHeight(), [&](std::int64_t row) {
        const int y = static_cast<int>(row);
        for (int c = 0; c < kGuideChannels; ++c) {
            const float* color = element.row(c, y);
            const float* variance = element.row(kGuideChannels + c, y);
            for (int x = 0; x < element.getWidth(); ++x) {
                const float positive = std::max(color[x], 0.0f);
                const float scale = std::max(positive, blurred.row(c, y)[x]) + level;
                guide.row(c, y)[x] = std::log1p(positive / level);
                guide.row(kGuideChannels + c, y)[x] = variance[x] / (scale * scale);
            }
        }
    });
    PlaneImage smooth = guide;
    for (int c = kGuideChannels; c < kGuidePlanes; ++c) {
        blurPlane(smooth, c, kVarianceRadius, run);
        for (int y = 0; y < guide.getHeight(); ++y) {
            std::ranges::transform(std::span(smooth.row(c, y), std::size_t(guide.getWidth())),
                                   std::span(guide.row(c, y), std::size_t(guide.getWidth())),
                                   guide.row(c, y), std::ranges::max);
        }
    }
    guide.extendBorders();
    return guide;
}

/// How far a pixel is from those around it, but for the few that are farther out on its side.
float getOutlierDistance(const float* pixel, std::ptrdiff_t stride) {
    std::array<float, 8> around{pixel[-stride - 1], pixel[-stride],   pixel[-stride + 1],
                                pixel[-1],          pixel[1],         pixel[stride - 1],
                                pixel[stride],      pixel[stride + 1]};
    std::ranges::sort(around);
    return std::max(
        {*pixel - around[around.size() - 1 - kSurpassing], around[kSurpassing] - *pixel, 0.0f});
}

/// Raises the variances of pixels that stand out from those around them.
void doubtOutliers(PlaneImage& guide, DenoisingRun& run) {
    PlaneImage around = guide;
    for (int c = kGuideChannels; c < kGuidePlanes; ++c) {
        blurPlane(around, c, kDoubtRadius, run);
    }
    run.forEach(guide.getHeight(), [&](std::int64_t row) {
        const int y = static_cast<int>(row);
        for (int c = 0; c < kGuideChannels; ++c) {
            const float* value = guide.row(c, y);
            const float* noise = around.row(kGuideChannels + c, y);
            float* variance = guide.row(kGuideChannels + c, y);
            for (int x = 0; x < guide.getWidth(); ++x) {
                const float distance = getOutlierDistance(value + x, guide.getStride());
                variance[x] =
                    std::max(variance[x], std::min(distance * distance, kLargestDoubt * noise[x]));
            }
        }
    });
    for (int c = kGuideChannels; c < kGuidePlanes; ++c) {
        guide.extendBorders(c);
    }
}

/// Gives back what the filters have taken from pixels that stand out far beyond their noise, as
/// lamps do that are as small as a pixel.
void keepOutstandingPixels(const PlaneImage& element, const PlaneImage& colorGuide, float level,
                           PlaneImage& result, DenoisingRun& run) {
    run.forEach(element.getHeight(), [&](std::int64_t row) {
        const int y = static_cast<int>(row);
        for (int c = 0; c < kGuideChannels; ++c) {
            const float* color = element.row(c, y);
            const float* value = colorGuide.row(c, y);
            const float* variance = colorGuide.row(kGuideChannels + c, y);
            float* filtered = result.row(c, y);
            for (int x = 0; x < element.getWidth(); ++x) {
                const float difference = value[x] - std::log1p(filtered[x] / level);
                const float noise = kOutstanding * variance[x];
                const float square = difference * difference;
                if (square > noise) {
                    filtered[x] += (color[x] - filtered[x]) * (1.0f - noise / square);
                }
            }
        }
    });
}

/// Lets a first estimate take the place of the colours' guide, and most of that of the colours
/// themselves: edges that stand out of the noise only by then become straight, and what the noise
/// has left of itself in single pixels goes. The part of the noisy colours keeps details.
void adoptEstimate(const PlaneImage& estimate, float level, PlaneImage& element,
                   PlaneImage& colorGuide, DenoisingRun& run) {
    run.forEach(element.getHeight(), [&](std::int64_t row) {
        const int y = static_cast<int>(row);
        for (int c = 0; c < kGuideChannels; ++c) {
            float* value = colorGuide.row(c, y);
            float* variance = colorGuide.row(kGuideChannels + c, y);
            for (int x = 0; x < element.getWidth(); ++x) {
                const float estimated = std::log1p(std::max(estimate.row(c, y)[x], 0.0f) / level);
                element.row(c, y)[x] =
                    level * std::expm1(std::lerp(value[x], estimated, kEstimateShare));
                value[x] = estimated;
                variance[x] = kLeastNoise + kRemainingNoise * variance[x];
            }
        }
    });
    element.extendBorders();
    colorGuide.extendBorders();
}

class HighQualityDenoiser final : public IDenoiser {
public:
    HighQualityDenoiser(Scheduler& scheduler, DenoisingData data)
        : scheduler_(scheduler), data_(std::move(data)) {}

    Optional<BitmapImpl<Rgb>> denoise(const BitmapImpl<Rgb>& color, const BitmapImpl<Rgb>& variance,
                                      const Progress& progress) override {
        if (color.getPixelCount() == 0) {
            return color;
        }
        DenoisingRun run(scheduler_, progress, countSteps(color));
        prepareFeatures(color.getSize(), run);
        const PlaneImage noisy = makeGuide(color, &variance, kColorLimits, run);
        BitmapImpl<Rgb> result = toBitmap(filter(noisy, run), color);
        if (!run.isAborted() && data_.sensitivity > 0.0f) {
            // Lamps have to be theirs before light that is missing is looked for elsewhere.
            const float exposure = computeAutoExposure(scheduler_, color);
            const auto certain =
                findCertainPixels(scheduler_, color, variance, exposure, data_.sensitivity, result);
            keepCertainPixels(scheduler_, color, certain, result);
            returnEnergy(noisy, result, run);
        }
        if (run.isAborted() || !run.step(0)) {
            return {};
        }
        return result;
    }

private:
    struct Feature {
        FeatureType type;
        PlaneImage guide;
    };

    std::int64_t countSteps(const BitmapImpl<Rgb>& color) const {
        const std::int64_t columns =
            (color.getWidth() + DenoisingTile::kWidth - 1) / DenoisingTile::kWidth;
        const auto featureCount = static_cast<std::int64_t>(data_.features.size());
        return countRegressionSteps(color.getWidth(), color.getHeight(), kRadius) +
               countRegressionSteps(color.getWidth(), color.getHeight(), kSecondRadius) +
               color.getHeight() * (1 + columns * featureCount);
    }

    /// Features are filtered once for all elements of the image.
    void prepareFeatures(Pixel size, DenoisingRun& run) {
        const PlaneImage valid = makeValidity(size.x, size.y);
        while (!data_.features.empty()) {
            const DenoisingFeature& feature = data_.features.back();
            PlaneImage guide =
                makeGuide(feature.pixels, feature.variance ? &*feature.variance : nullptr,
                          getFeatureLimits(feature.type), run);
            filterFeature(guide, valid, run);
            if (run.isAborted()) {
                return;
            }
            features_.push_back({feature.type, std::move(guide)});
            data_.features.pop_back();
        }
    }

    const PlaneImage* findFeature(FeatureType type) const {
        const auto found = std::ranges::find(features_, type, &Feature::type);
        return found == features_.end() ? nullptr : &found->guide;
    }

    /// The colours without noise and fireflies; anything when aborted.
    PlaneImage filter(const PlaneImage& noisy, DenoisingRun& run) const {
        PlaneImage cleaned = noisy;
        const float level = measureLevel(cleaned);
        removeFireflies(cleaned, {level, data_.fireflySensitivity, 1.0f}, run);
        cleaned.extendBorders();
        const float damping = data_.sensitivity * data_.sensitivity;
        if (run.isAborted() || !(damping > 0.0f)) {
            return cleaned;
        }
        PlaneImage colorGuide = makeColorGuide(cleaned, level, run);
        doubtOutliers(colorGuide, run);
        const PlaneImage valid = makeValidity(noisy.getWidth(), noisy.getHeight());
        DistanceScale scale = kColorScale;
        scale.damping *= damping;
        RegressionInput input{
            cleaned,
            {valid, colorGuide, scale, {}, kFeatureDamping * damping},
            {findFeature(FeatureType::VisibleNormals), findFeature(FeatureType::VisibleDiffuse)},
            kRadius};
        for (const Feature& feature : features_) {
            input.guides.features.push_back(&feature.guide);
        }
        PlaneImage result(noisy.getWidth(), noisy.getHeight(), kGuideChannels);
        regressColors(input, result, run);
        keepOutstandingPixels(cleaned, colorGuide, level, result, run);
        adoptEstimate(result, level, cleaned, colorGuide, run);
        input.guides.colorScale.damping = damping;
        input.radius = kSecondRadius;
        regressColors(input, result, run);
        return result;
    }

    static BitmapImpl<Rgb> toBitmap(const PlaneImage& image, const BitmapImpl<Rgb>& alphas) {
        BitmapImpl<Rgb> bitmap(image.getWidth(), image.getHeight());
        for (int y = 0; y < image.getHeight(); ++y) {
            for (int x = 0; x < image.getWidth(); ++x) {
                bitmap.at(x, y) = {image.row(0, y)[x], image.row(1, y)[x], image.row(2, y)[x],
                                   alphas.at(x, y).a};
            }
        }
        return bitmap;
    }

    Scheduler& scheduler_;
    DenoisingData data_;
    std::vector<Feature> features_;
};

}  // namespace

std::unique_ptr<IDenoiser> createHighQualityDenoiser(Scheduler& scheduler, DenoisingData data) {
    return std::make_unique<HighQualityDenoiser>(scheduler, std::move(data));
}

}  // namespace tavrin::postcore
