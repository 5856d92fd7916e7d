#include "services/postcore/denoise/neural/FeatureTrust.h"

#include "services/colorkit/Luminance.h"

#include <algorithm>
#include <cmath>
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
constexpr std::size_t kSamples = 100'000;

double getLuminance(const Rgb& color) {
    return colorkit::getLuminance(double{color.r}, double{color.g}, double{color.b});
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

AlbedoTrust::AlbedoTrust(const DenoisingFeature& albedo)
    // An odd step does not stay in the same columns of usual widths.
    : step_(albedo.pixels.pixels().size() / kSamples | 1) {
    if (!albedo.variance) {
        return;
    }
    const auto pixels = albedo.pixels.pixels();
    for (std::size_t i = 0; i < pixels.size(); i += step_) {
        errors_.push_back(getStandardError(albedo.variance->pixels()[i]) /
                          std::max(getLuminance(pixels[i]), kLeastAlbedo));
    }
}

bool AlbedoTrust::isTrusted(const BitmapImpl<Rgb>& color, const BitmapImpl<Rgb>& variance,
                            float exposure) const {
    const double dark = kDark / double{exposure};
    std::vector<double> albedoErrors;
    std::vector<double> colorErrors;
    for (std::size_t i = 0; i < errors_.size(); ++i) {
        const std::size_t index = i * step_;
        const double luminance = getLuminance(color.pixels()[index]);
        const double colorError = getStandardError(variance.pixels()[index]) / luminance;
        if (luminance > dark && std::isfinite(colorError) && std::isfinite(errors_[i])) {
            colorErrors.push_back(colorError);
            albedoErrors.push_back(errors_[i]);
        }
    }
    return albedoErrors.empty() ||
           getUpperQuartile(albedoErrors) <= kTrustedRatio * getUpperQuartile(colorErrors);
}

}  // namespace tavrin::postcore
