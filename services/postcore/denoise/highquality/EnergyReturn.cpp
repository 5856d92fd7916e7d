#include "services/postcore/denoise/highquality/EnergyReturn.h"

#include "services/postcore/denoise/highquality/FeatureFilter.h"
#include "services/postcore/denoise/highquality/WindowKernels.h"

#include <algorithm>
#include <cmath>

namespace tavrin::postcore {
namespace {

// So many means over squares of 25 pixels make a smooth neighbourhood about 65 pixels wide.
constexpr int kRadius = PlaneImage::kMargin;
constexpr int kBlurs = 8;
// Variances are known from a few passes only, so they are smoothed: as they are, which makes dark
// pixels beside bright ones too uncertain, and relative to the square of the colours, which makes
// bright pixels too uncertain. The smaller one counts.
constexpr int kVarianceRadius = 2;
// However noisy a pixel was, what the filter has made of it is hardly wrong by more than this: a
// relative variance.
constexpr float kRemaining = 0.04f;
// The part of the light of the whole image that may stay lost: most of it is a few bright samples.
constexpr double kTolerated = 0.008;
constexpr float kLargestChange = 0.5f;

/// The uncertainty of a filtered pixel from the variance before: as of two independent guesses.
float getRemainingVariance(float value, float variance) {
    const float remaining = kRemaining * value * value;
    return variance > 0.0f && remaining > 0.0f ? variance / (variance / remaining + 1.0f) : 0.0f;
}

float& getComponent(BitmapImpl<Rgb>& bitmap, int channel, int x, int y) {
    constexpr float Rgb::*kComponents[] = {&Rgb::r, &Rgb::g, &Rgb::b};
    return bitmap.at(x, y).*kComponents[channel];
}

void change(float& result, float share, float lightPerShare) {
    if (share > 0.0f) {
        const float limit = kLargestChange * result;
        result += std::clamp(share * lightPerShare, -limit, limit);
    }
}

/// Shares out what the whole channel still misses, or has too much, beyond what is tolerated.
void returnRest(const PlaneImage& noisy, int channel, const PlaneImage& shares,
                BitmapImpl<Rgb>& denoised) {
    double light = 0.0;
    double lost = 0.0;
    double allShares = 0.0;
    for (int y = 0; y < noisy.getHeight(); ++y) {
        for (int x = 0; x < noisy.getWidth(); ++x) {
            const double value = noisy.row(channel, y)[x];
            light += value;
            lost += value - double{getComponent(denoised, channel, x, y)};
            allShares += double{shares.row(0, y)[x]};
        }
    }
    const double tolerated = kTolerated * std::abs(light);
    const double lightPerShare = (lost - std::clamp(lost, -tolerated, tolerated)) / allShares;
    if (!std::isfinite(lightPerShare)) {
        return;
    }
    for (int y = 0; y < denoised.getHeight(); ++y) {
        for (int x = 0; x < denoised.getWidth(); ++x) {
            change(getComponent(denoised, channel, x, y), shares.row(0, y)[x],
                   static_cast<float>(lightPerShare));
        }
    }
}

}  // namespace

void returnEnergy(const PlaneImage& noisy, BitmapImpl<Rgb>& denoised, DenoisingRun& run) {
    const int width = noisy.getWidth();
    // Relative variances, lost light, shares of it, variances.
    PlaneImage planes(width, noisy.getHeight(), 4);
    const auto forEachPixel = [&](auto body) {
        run.forEach(noisy.getHeight(), [&](std::int64_t row) {
            const int y = static_cast<int>(row);
            for (int x = 0; x < width; ++x) {
                body(x, y, planes.row(0, y)[x], planes.row(1, y)[x], planes.row(2, y)[x]);
            }
        });
    };
    for (int c = 0; c < kGuideChannels; ++c) {
        forEachPixel([&](int x, int y, float& relative, float&, float&) {
            const float result = getComponent(denoised, c, x, y);
            const float square = result * result;
            const float variance = noisy.row(kGuideChannels + c, y)[x];
            relative = variance < square ? variance / square : square > 0.0f ? 1.0f : 0.0f;
        });
        for (int y = 0; y < noisy.getHeight(); ++y) {
            std::copy_n(noisy.row(kGuideChannels + c, y), width, planes.row(3, y));
        }
        blurPlane(planes, 0, kVarianceRadius, run);
        blurPlane(planes, 3, kVarianceRadius, run);
        forEachPixel([&](int x, int y, float& relative, float& lost, float& share) {
            const float result = getComponent(denoised, c, x, y);
            lost = noisy.row(c, y)[x] - result;
            share = getRemainingVariance(result,
                                         std::min(relative * result * result, planes.row(3, y)[x]));
            relative = share;
        });
        for (int i = 0; i < kBlurs; ++i) {
            blurPlane(planes, 1, kRadius, run);
            blurPlane(planes, 2, kRadius, run);
        }
        forEachPixel([&](int x, int y, float& share, float& lost, float& shares) {
            change(getComponent(denoised, c, x, y), share, lost / shares);
        });
        returnRest(noisy, c, planes, denoised);
    }
}

}  // namespace tavrin::postcore
