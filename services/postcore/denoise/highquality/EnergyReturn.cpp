#include "services/postcore/denoise/highquality/EnergyReturn.h"

#include "services/postcore/denoise/highquality/FeatureFilter.h"
#include "services/postcore/denoise/highquality/WindowKernels.h"

#include <algorithm>

namespace tavrin::postcore {
namespace {

// Three means over squares of 25 pixels make a smooth neighbourhood about 40 pixels wide.
constexpr int kRadius = PlaneImage::kMargin;
constexpr int kBlurs = 3;
constexpr float kLargestChange = 0.5f;

/// A pixel's share of the light: its variance, at most its own square.
float getShare(float variance, float denoised) { return std::min(variance, denoised * denoised); }

}  // namespace

void returnEnergy(const PlaneImage& noisy, PlaneImage& denoised, DenoisingRun& run) {
    const int width = noisy.getWidth();
    PlaneImage sums(width, noisy.getHeight(), 2);
    const auto forEachPixel = [&](int channel, auto body) {
        run.forEach(noisy.getHeight(), [&, channel](std::int64_t row) {
            const int y = static_cast<int>(row);
            const float* variance = noisy.row(kGuideChannels + channel, y);
            for (int x = 0; x < width; ++x) {
                float& result = denoised.row(channel, y)[x];
                body(noisy.row(channel, y)[x], getShare(variance[x], result), result,
                     sums.row(0, y)[x], sums.row(1, y)[x]);
            }
        });
    };
    for (int c = 0; c < kGuideChannels; ++c) {
        forEachPixel(c, [](float color, float share, float result, float& lost, float& shares) {
            lost = color - result;
            shares = share;
        });
        for (int i = 0; i < kBlurs; ++i) {
            blurPlane(sums, 0, kRadius, run);
            blurPlane(sums, 1, kRadius, run);
        }
        forEachPixel(c, [](float, float share, float& result, float lost, float shares) {
            if (share > 0.0f) {
                const float limit = kLargestChange * result;
                result += std::clamp(share * lost / shares, -limit, limit);
            }
        });
    }
}

}  // namespace tavrin::postcore
