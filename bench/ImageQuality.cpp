#include "bench/ImageQuality.h"

#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/Luminance.h"
#include "services/colorkit/Pipeline.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tavrin::bench {
namespace {

using Components = std::array<double, 3>;

Components getComponents(const Rgb& pixel) {
    return {pixel.r, pixel.g, pixel.b};
}

double getSum(const Components& values) {
    return values[0] + values[1] + values[2];
}

double getLuminance(const Rgb& pixel) {
    return colorkit::getLuminance(double{pixel.r}, double{pixel.g}, double{pixel.b});
}

double getSquaredDifference(const Rgb& left, const Rgb& right) {
    const Components a = getComponents(left);
    const Components b = getComponents(right);
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    }
    return sum;
}

// IEC 61966-2-1.
float clipAndEncode(float light) {
    const float value = std::clamp(light, 0.0f, 1.0f);
    return value <= 0.0031308f ? 12.92f * value : 1.055f * std::pow(value, 1.0f / 2.4f) - 0.055f;
}

Rgb clipAndEncode(const Rgb& color) {
    return {clipAndEncode(color.r), clipAndEncode(color.g), clipAndEncode(color.b), color.a};
}

constexpr int kRadius = 5;
constexpr double kSigma = 1.5;

std::array<double, 2 * kRadius + 1> makeGaussian() {
    std::array<double, 2 * kRadius + 1> weights{};
    for (int i = -kRadius; i <= kRadius; ++i) {
        weights[std::size_t(i + kRadius)] = std::exp(-i * i / (2.0 * kSigma * kSigma));
    }
    return weights;
}

/// The mean around a pixel of value(x, y), weighed by a Gaussian, within the image.
template <class Value>
double getLocalMean(Pixel size, int x, int y, const Value& value) {
    static const auto kWeights = makeGaussian();
    double sum = 0.0;
    double weights = 0.0;
    for (int j = std::max(y - kRadius, 0); j <= std::min(y + kRadius, size.y - 1); ++j) {
        for (int i = std::max(x - kRadius, 0); i <= std::min(x + kRadius, size.x - 1); ++i) {
            const double weight =
                kWeights[std::size_t(i - x + kRadius)] * kWeights[std::size_t(j - y + kRadius)];
            sum += weight * value(i, j);
            weights += weight;
        }
    }
    return sum / weights;
}

/// Wang et al. 2004, equation 13, for a range of 1.
double getSimilarity(const BitmapImpl<Rgb>& left, const BitmapImpl<Rgb>& right) {
    constexpr double kC1 = 0.01 * 0.01;
    constexpr double kC2 = 0.03 * 0.03;
    const Pixel size = left.getSize();
    const auto a = [&](int x, int y) { return getLuminance(left.at(x, y)); };
    const auto b = [&](int x, int y) { return getLuminance(right.at(x, y)); };
    double sum = 0.0;
    for (int y = 0; y < size.y; ++y) {
        for (int x = 0; x < size.x; ++x) {
            const auto mean = [&](auto value) { return getLocalMean(size, x, y, value); };
            const double meanA = mean(a);
            const double meanB = mean(b);
            const double varianceA =
                mean([&](int i, int j) { return a(i, j) * a(i, j); }) - meanA * meanA;
            const double varianceB =
                mean([&](int i, int j) { return b(i, j) * b(i, j); }) - meanB * meanB;
            const double covariance =
                mean([&](int i, int j) { return a(i, j) * b(i, j); }) - meanA * meanB;
            sum += (2.0 * meanA * meanB + kC1) * (2.0 * covariance + kC2) /
                   ((meanA * meanA + meanB * meanB + kC1) * (varianceA + varianceB + kC2));
        }
    }
    return sum / static_cast<double>(left.getPixelCount());
}

}  // namespace

ImageQuality measureQuality(const BitmapImpl<Rgb>& image, const BitmapImpl<Rgb>& reference) {
    const auto count = 3.0 * static_cast<double>(reference.getPixelCount());
    const BitmapImpl<Rgb> mapped = toneMap(image);
    const BitmapImpl<Rgb> mappedReference = toneMap(reference);
    ImageQuality quality{};
    double mappedError = 0.0;
    double clippedError = 0.0;
    double sum = 0.0;
    double referenceSum = 0.0;
    for (std::size_t i = 0; i < reference.pixels().size(); ++i) {
        const Rgb& pixel = image.pixels()[i];
        const Rgb& expected = reference.pixels()[i];
        const double level = getSum(getComponents(expected)) / 3.0;
        const double error = getSquaredDifference(pixel, expected);
        quality.error += error / count;
        quality.relativeError += error / (level * level + 0.01) / count;
        mappedError +=
            getSquaredDifference(mapped.pixels()[i], mappedReference.pixels()[i]) / count;
        clippedError += getSquaredDifference(clipAndEncode(pixel), clipAndEncode(expected)) / count;
        sum += getSum(getComponents(pixel));
        referenceSum += getSum(getComponents(expected));
    }
    quality.signalToNoise = -10.0 * std::log10(mappedError);
    quality.clippedSignalToNoise = -10.0 * std::log10(clippedError);
    quality.similarity = getSimilarity(mapped, mappedReference);
    quality.meanChange = 100.0 * (sum / referenceSum - 1.0);
    return quality;
}

BitmapImpl<Rgb> toneMap(BitmapImpl<Rgb> image) {
    colorkit::ColorMapping mapping;
    mapping.setPipeline(colorkit::createDefaultPipeline());
    mapping.createMappingOperator(mapping.getContext(), image.getSize())
        ->mapBitmap(image, {}, 1.0f);
    return image;
}

}  // namespace tavrin::bench
