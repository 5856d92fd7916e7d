#include "services/postcore/bloomglare/SpectralColors.h"

#include "services/colorkit/ChromaticAdaptation.h"
#include "services/colorkit/Matrix3.h"

#include <cmath>

namespace tavrin::postcore {
namespace {

using colorkit::Matrix3;
using colorkit::Vector3;

// Fine enough that the pattern of one wavelength and the next differ by less than they are sharp.
constexpr int kStepCount = 780;

/// A bell with other widths on both sides of its top.
double getLobe(double wavelength, double top, double below, double above) {
    const double t = (wavelength - top) / (wavelength < top ? below : above);
    return std::exp(-0.5 * t * t);
}

/// The CIE 1931 colour-matching functions (C. Wyman, P.-P. Sloan, P. Shirley, "Simple analytic
/// approximations to the CIE XYZ color matching functions", 2013, equation 4).
Vector3 matchColor(double wavelength) {
    const auto lobe = [wavelength](double height, double top, double below, double above) {
        return height * getLobe(wavelength, top, below, above);
    };
    return {lobe(1.056, 599.8, 37.9, 31.0) + lobe(0.362, 442.0, 16.0, 26.7) -
                lobe(0.065, 501.1, 20.4, 26.2),
            lobe(0.821, 568.8, 46.9, 40.5) + lobe(0.286, 530.9, 16.3, 31.1),
            lobe(1.217, 437.0, 11.8, 36.0) + lobe(0.681, 459.0, 26.0, 13.8)};
}

/// Scales the functions so that each sums up to 1 over the wavelengths.
void normalize(std::vector<Vector3>& functions) {
    Vector3 sums{};
    for (const Vector3& values : functions) {
        for (std::size_t i = 0; i < sums.size(); ++i) {
            sums[i] += values[i];
        }
    }
    for (Vector3& values : functions) {
        for (std::size_t i = 0; i < sums.size(); ++i) {
            values[i] /= sums[i];
        }
    }
}

}  // namespace

std::vector<WavelengthColor> makeSpectralColors(float intensity, float shift) {
    const double step = (kLongestWavelength - kShortestWavelength) / kStepCount;
    const auto getWavelength = [&](int i) { return kShortestWavelength + (i + 0.5) * step; };
    const Matrix3 toLinearSrgb = inverse(colorkit::rec709ToXyz());
    std::vector<Vector3> colors;
    std::vector<Vector3> greys;
    for (int i = 0; i < kStepCount; ++i) {
        const int moved = (i + static_cast<int>(std::lround(shift * kStepCount))) % kStepCount;
        colors.push_back(toLinearSrgb * matchColor(getWavelength(moved)));
        const double luminance = matchColor(getWavelength(i))[1];
        greys.push_back({luminance, luminance, luminance});
    }
    normalize(colors);
    normalize(greys);
    std::vector<WavelengthColor> result;
    for (int i = 0; i < kStepCount; ++i) {
        WavelengthColor& mixed = result.emplace_back();
        mixed.wavelength = static_cast<float>(getWavelength(i));
        const auto index = static_cast<std::size_t>(i);
        for (std::size_t c = 0; c < mixed.channels.size(); ++c) {
            mixed.channels[c] =
                static_cast<float>(std::lerp(greys[index][c], colors[index][c], double{intensity}));
        }
    }
    return result;
}

}  // namespace tavrin::postcore
