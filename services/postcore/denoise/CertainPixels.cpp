#include "services/postcore/denoise/CertainPixels.h"

#include "services/colorkit/Luminance.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace tavrin::postcore {
namespace {

constexpr std::int64_t kRowsPerTask = 16;
// The variance of one pixel is itself an estimate from few samples: so many pixels to each side
// support it.
constexpr int kSupport = 2;

// The relative errors of the network's results, found on path-traced interiors and products: small
// for what a display can show, large for the lights themselves. The latter begin at so many times
// white and are reached at the second number.
constexpr float kUsualError = 0.01f;
constexpr float kLightError = 0.4f;
constexpr float kFirstLight = 4.0f;
constexpr float kFullLight = 16.0f;
// Exposed luminances below this are black.
constexpr float kBlack = 1e-3f;

float getLuminance(const Rgb& color) {
    return static_cast<float>(
        colorkit::getLuminance(double{color.r}, double{color.g}, double{color.b}));
}

/// Missing ones are negative.
float getVariance(const Rgb& variance) {
    const float luminance = getLuminance(variance);
    return std::isfinite(luminance) ? std::max(luminance, 0.0f) : -1.0f;
}

float getNetworkError(float exposedLuminance) {
    if (exposedLuminance <= kFirstLight) {
        return kUsualError;
    }
    const float t = std::log2(exposedLuminance / kFirstLight) / std::log2(kFullLight / kFirstLight);
    const float s = std::min(t, 1.0f);
    return kUsualError + (kLightError - kUsualError) * s * s * (3.0f - 2.0f * s);
}

/// Means of the variances around the pixels of a row.
class VarianceRow {
public:
    explicit VarianceRow(const BitmapImpl<Rgb>& variance)
        : variance_(variance),
          sums_(static_cast<std::size_t>(variance.getWidth())),
          counts_(sums_.size()) {}

    void setRow(int y) {
        std::ranges::fill(sums_, 0.0f);
        std::ranges::fill(counts_, 0.0f);
        const int last = std::min(y + kSupport, variance_.getHeight() - 1);
        for (int row = std::max(y - kSupport, 0); row <= last; ++row) {
            const auto values = variance_.row(row);
            for (std::size_t x = 0; x < values.size(); ++x) {
                const float value = getVariance(values[x]);
                sums_[x] += std::max(value, 0.0f);
                counts_[x] += value < 0.0f ? 0.0f : 1.0f;
            }
        }
    }

    /// 0 where there are none.
    float getMean(int x) const {
        float sum = 0.0f;
        float count = 0.0f;
        const int last = std::min(x + kSupport, variance_.getWidth() - 1);
        for (int i = std::max(x - kSupport, 0); i <= last; ++i) {
            sum += sums_[static_cast<std::size_t>(i)];
            count += counts_[static_cast<std::size_t>(i)];
        }
        return count == 0.0f ? 0.0f : sum / count;
    }

private:
    const BitmapImpl<Rgb>& variance_;
    std::vector<float> sums_;  // of columns
    std::vector<float> counts_;
};

/// How much of the noisy pixel to take.
float getNoisyShare(float variance, float meanVariance, float luminance, float exposure,
                    float sensitivity) {
    if (!(sensitivity > 0.0f)) {
        return 1.0f;
    }
    // Infinite sums count as missing, too.
    if (variance < 0.0f || !(meanVariance > 0.0f) || !std::isfinite(meanVariance)) {
        return 0.0f;
    }
    const float black = kBlack / exposure;
    const float reference = std::max(luminance, black);
    const float noise = sensitivity * std::sqrt(std::max(variance, meanVariance)) / reference;
    const float error = getNetworkError(luminance * exposure);
    // The error is never 0; noise may be infinite.
    return 1.0f / (1.0f + (noise / error) * (noise / error));
}

}  // namespace

BitmapImpl<float> findCertainPixels(Scheduler& scheduler, const BitmapImpl<Rgb>& noisy,
                                    const BitmapImpl<Rgb>& variance, float exposure,
                                    float sensitivity, const BitmapImpl<Rgb>& denoised) {
    BitmapImpl<float> shares(noisy.getWidth(), noisy.getHeight());
    const auto weighRows = [&](std::int64_t from, std::int64_t to) {
        VarianceRow around(variance);
        for (int y = static_cast<int>(from); y < to; ++y) {
            around.setRow(y);
            for (int x = 0; x < noisy.getWidth(); ++x) {
                shares.at(x, y) =
                    isFinite(noisy.at(x, y))
                        ? getNoisyShare(getVariance(variance.at(x, y)), around.getMean(x),
                                        getLuminance(denoised.at(x, y)), exposure, sensitivity)
                        : 0.0f;
            }
        }
    };
    scheduler.parallelForRanges(0, noisy.getHeight(), kRowsPerTask, TaskPriority::Normal,
                                weighRows);
    return shares;
}

void keepCertainPixels(Scheduler& scheduler, const BitmapImpl<Rgb>& noisy,
                       const BitmapImpl<float>& shares, BitmapImpl<Rgb>& denoised) {
    const auto keepRows = [&](std::int64_t from, std::int64_t to) {
        for (int y = static_cast<int>(from); y < to; ++y) {
            for (int x = 0; x < noisy.getWidth(); ++x) {
                const Rgb& source = noisy.at(x, y);
                const float share = shares.at(x, y);
                Rgb& pixel = denoised.at(x, y);
                pixel.a = source.a;
                if (share > 0.0f) {
                    // Two products, because a difference of the largest floats is not finite.
                    pixel.r = (1.0f - share) * pixel.r + share * std::max(source.r, 0.0f);
                    pixel.g = (1.0f - share) * pixel.g + share * std::max(source.g, 0.0f);
                    pixel.b = (1.0f - share) * pixel.b + share * std::max(source.b, 0.0f);
                }
            }
        }
    };
    scheduler.parallelForRanges(0, noisy.getHeight(), kRowsPerTask, TaskPriority::Normal, keepRows);
}

}  // namespace tavrin::postcore
