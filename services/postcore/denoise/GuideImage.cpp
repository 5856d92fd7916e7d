#include "services/postcore/denoise/GuideImage.h"

#include <algorithm>
#include <cmath>

namespace tavrin::postcore {
namespace {

constexpr int kFarthest = 8;

/// The mean of the finite pixels on the smallest square around a pixel that has any; else black.
Rgb interpolate(const BitmapImpl<Rgb>& image, int x, int y) {
    for (int radius = 1; radius <= kFarthest; ++radius) {
        Rgb sum;
        int count = 0;
        for (int j = std::max(y - radius, 0); j <= std::min(y + radius, image.getHeight() - 1);
             ++j) {
            for (int i = std::max(x - radius, 0); i <= std::min(x + radius, image.getWidth() - 1);
                 ++i) {
                const Rgb& pixel = image.at(i, j);
                if (isFinite(pixel)) {
                    ++count;
                    const float share = 1.0f / static_cast<float>(count);
                    sum = {sum.r + (pixel.r - sum.r) * share, sum.g + (pixel.g - sum.g) * share,
                           sum.b + (pixel.b - sum.b) * share};
                }
            }
        }
        if (count > 0) {
            return sum;
        }
    }
    return {};
}

void setPixel(PlaneImage& image, int firstPlane, int x, int y, const Rgb& pixel, float smallest,
              float largest) {
    image.row(firstPlane, y)[x] = std::clamp(pixel.r, smallest, largest);
    image.row(firstPlane + 1, y)[x] = std::clamp(pixel.g, smallest, largest);
    image.row(firstPlane + 2, y)[x] = std::clamp(pixel.b, smallest, largest);
}

}  // namespace

PlaneImage makeGuide(const BitmapImpl<Rgb>& element, const BitmapImpl<Rgb>* variance,
                     const GuideLimits& limits, DenoisingRun& run) {
    PlaneImage guide(element.getWidth(), element.getHeight(), 6);
    run.forEach(element.getHeight(), [&](std::int64_t row) {
        const int y = static_cast<int>(row);
        for (int x = 0; x < element.getWidth(); ++x) {
            const bool isKnown = isFinite(element.at(x, y));
            const Rgb value = isKnown ? element.at(x, y) : interpolate(element, x, y);
            Rgb uncertainty;
            if (!isKnown) {
                uncertainty = {value.r * value.r, value.g * value.g, value.b * value.b};
            } else if (variance) {
                uncertainty = isFinite(variance->at(x, y)) ? variance->at(x, y)
                                                           : interpolate(*variance, x, y);
            }
            setPixel(guide, 0, x, y, value, limits.smallest, limits.largest);
            setPixel(guide, 3, x, y, uncertainty, 0.0f, limits.largestVariance);
        }
    });
    guide.extendBorders();
    return guide;
}

}  // namespace tavrin::postcore
