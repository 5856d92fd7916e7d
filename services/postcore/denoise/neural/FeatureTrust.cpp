#include "services/postcore/denoise/neural/FeatureTrust.h"

#include "services/colorkit/Luminance.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace tavrin::postcore {
namespace {

// Found on path-traced renders with 8 to 32 samples and their single lights: where the albedo helps
// the ratio is below 0.03, where it harms above 0.18.
constexpr double kTrustedRatio = 0.07;
// Keeps black albedos from counting.
constexpr double kLeastAlbedo = 0.01;
// Exposed luminances below this are dark.
constexpr double kDark = 1e-3;
// So many pixels, spread over the picture, tell its quartiles.
constexpr std::int64_t kSamples = 100'000;

double getLuminance(const Rgb& color) {
    return colorkit::kLuminanceWeights[0] * double(color.r) +
           colorkit::kLuminanceWeights[1] * double(color.g) +
           colorkit::kLuminanceWeights[2] * double(color.b);
}

double getStandardError(const Rgb& variance) {
    return std::sqrt((double(variance.r) + double(variance.g) + double(variance.b)) / 3.0);
}

double getUpperQuartile(std::vector<double>& values) {
    const auto position = values.begin() + static_cast<std::ptrdiff_t>(values.size() * 3 / 4);
    std::nth_element(values.begin(), position, values.end());
    return *position;
}

}  // namespace

bool isAlbedoTrusted(const DenoisingFeature& albedo, const BitmapImpl<Rgb>& color,
                     const BitmapImpl<Rgb>& variance, float exposure) {
    if (!albedo.variance) {
        return true;
    }
    const double dark = kDark / double(exposure);
    std::vector<double> albedoErrors;
    std::vector<double> colorErrors;
    // An odd step does not stay in the same columns of usual widths.
    const std::int64_t step = color.getPixelCount() / kSamples | 1;
    for (std::int64_t i = 0; i < color.getPixelCount(); i += step) {
        const auto index = static_cast<std::size_t>(i);
        const double luminance = getLuminance(color.pixels()[index]);
        const double colorError = getStandardError(variance.pixels()[index]) / luminance;
        const double albedoError =
            getStandardError(albedo.variance->pixels()[index]) /
            std::max(getLuminance(albedo.pixels.pixels()[index]), kLeastAlbedo);
        if (luminance > dark && std::isfinite(colorError) && std::isfinite(albedoError)) {
            colorErrors.push_back(colorError);
            albedoErrors.push_back(albedoError);
        }
    }
    return albedoErrors.empty() ||
           getUpperQuartile(albedoErrors) <= kTrustedRatio * getUpperQuartile(colorErrors);
}

}  // namespace tavrin::postcore
