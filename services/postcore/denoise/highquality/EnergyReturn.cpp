#include "services/postcore/denoise/highquality/EnergyReturn.h"

#include "services/postcore/denoise/highquality/FeatureFilter.h"
#include "services/postcore/denoise/highquality/WindowKernels.h"

#include <algorithm>

namespace tavrin::postcore {
namespace {

// Three means over squares of 25 pixels make a smooth neighbourhood about 40 pixels wide.
constexpr int kRadius = PlaneImage::kMargin;
constexpr int kBlurs = 3;
// Variances are known from a few passes only, so they are smoothed: as they are, which makes dark
// pixels beside bright ones too uncertain, and relative to the square of the colours, which makes
// bright pixels too uncertain. The smaller one counts.
constexpr int kVarianceRadius = 2;
constexpr float kLargestChange = 0.5f;

}  // namespace

void returnEnergy(const PlaneImage& noisy, PlaneImage& denoised, DenoisingRun& run) {
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
            const float square = denoised.row(c, y)[x] * denoised.row(c, y)[x];
            const float variance = noisy.row(kGuideChannels + c, y)[x];
            relative = variance < square ? variance / square : square > 0.0f ? 1.0f : 0.0f;
        });
        for (int y = 0; y < noisy.getHeight(); ++y) {
            std::copy_n(noisy.row(kGuideChannels + c, y), width, planes.row(3, y));
        }
        blurPlane(planes, 0, kVarianceRadius, run);
        blurPlane(planes, 3, kVarianceRadius, run);
        forEachPixel([&](int x, int y, float& relative, float& lost, float& share) {
            const float result = denoised.row(c, y)[x];
            lost = noisy.row(c, y)[x] - result;
            share = std::min(relative * result * result, planes.row(3, y)[x]);
            relative = share;
        });
        for (int i = 0; i < kBlurs; ++i) {
            blurPlane(planes, 1, kRadius, run);
            blurPlane(planes, 2, kRadius, run);
        }
        forEachPixel([&](int x, int y, float& share, float& lost, float& shares) {
            float& result = denoised.row(c, y)[x];
            if (share > 0.0f) {
                const float limit = kLargestChange * result;
                result += std::clamp(share * lost / shares, -limit, limit);
            }
        });
    }
}

}  // namespace tavrin::postcore
