#include "services/postcore/sharpening/Sharpening.h"

#include "services/postcore/sharpening/DiscreteGaussian.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tavrin::postcore {
namespace {

float getUsable(float value) {
    return std::isfinite(value) ? std::max(value, 0.0f) : 0.0f;
}

double computeVariance(float radius, float factor) {
    const double pixels = static_cast<double>(getUsable(radius)) * getUsable(factor);
    const double deviation = std::min(pixels, Sharpening::kLargestRadius);
    return deviation * deviation;
}

/// The weights of a blur, none where it does nothing.
std::vector<float> makeWeights(double variance) {
    std::vector<float> weights = makeDiscreteGaussian(variance);
    if (weights.size() == 1) {
        weights.clear();
    }
    return weights;
}

}  // namespace

void Sharpening::initialize(bool enabled, float amount, float sharpenRadius, float blurRadius,
                            float radiusFactor) {
    *this = {};
    if (enabled) {
        amount_ = std::min(getUsable(amount), kLargestAmount);
        sharpenVariance_ = computeVariance(sharpenRadius, radiusFactor);
        blurVariance_ = computeVariance(blurRadius, radiusFactor);
    }
}

BitmapFilter Sharpening::makeFilter(int scale) const {
    const double area = static_cast<double>(scale) * scale;
    BitmapFilter filter;
    filter.narrow = makeWeights(blurVariance_ / area);
    if (amount_ > 0.0f && !makeWeights(sharpenVariance_ / area).empty()) {
        filter.amount = amount_;
        filter.wide = makeWeights((blurVariance_ + sharpenVariance_) / area);
    }
    return filter;
}

int Sharpening::getWindowRadius(Pixel imageSize, int scale) const {
    scale = std::max(scale, 1);
    // More than the whole image is never looked at.
    const int pixels = std::max({imageSize.x, imageSize.y, 0});
    const int samples = pixels / scale + (pixels % scale != 0);
    return std::min(makeFilter(scale).getReach(), samples) * scale;
}

void Sharpening::apply(Flags<ImageOperatorsFlag> flags, BitmapImpl<Rgb>& bitmap, int scale,
                       bool sidesMeet) const {
    BitmapFilter filter = makeFilter(std::max(scale, 1));
    filter.sidesMeet = sidesMeet;
    filter.apply(flags, bitmap);
}

}  // namespace tavrin::postcore
