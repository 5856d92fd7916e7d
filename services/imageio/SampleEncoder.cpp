#include "services/imageio/SampleEncoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace tavrin::imageio {
namespace {

constexpr float kHighestHalf = 65504.0f;
/// The greatest value of a shared-exponent pixel: mantissa 255/256, exponent 127.
constexpr float kHighestRgbe = 0x1.FEp+126f;

/// The level nearest to a value between 0 and 1. In double, so that no product of a float and 65535
/// is rounded before the level is.
unsigned toLevel(float value, unsigned highest) {
    if (!(value > 0.0f)) {
        return 0;
    }
    return value >= 1.0f ? highest
                         : static_cast<unsigned>(static_cast<double>(value) * highest + 0.5);
}

float clampToHalf(float value) {
    return std::isfinite(value) ? std::clamp(value, -kHighestHalf, kHighestHalf) : value;
}

/// Writers of the format take what is darker for black.
constexpr float kLowestRgbe = 1e-32f;

/// A value that a shared-exponent pixel (Ward, "Real Pixels", 1991) can hold: not negative, finite.
float clampToRgbe(float value) {
    return value >= kLowestRgbe ? std::min(value, kHighestRgbe) : 0.0f;
}

/// Rounds three values to multiples of their common step. Writers of the format cut the mantissas
/// off, so a quarter of a step keeps them from losing a whole one.
void roundToRgbe(float* rgb) {
    const float highest = std::max({rgb[0], rgb[1], rgb[2]});
    if (highest == 0.0f) {
        return;
    }
    int exponent = 0;
    std::frexp(highest, &exponent);
    float step = std::ldexp(1.0f, exponent - 8);
    if (highest >= 255.5f * step) {
        step *= 2.0f;
    }
    for (int i = 0; i < 3; ++i) {
        rgb[i] = (std::floor(rgb[i] / step + 0.5f) + 0.25f) * step;
    }
}

}  // namespace

float decodeSrgb(float encoded) {
    return encoded <= 0.04045f ? encoded / 12.92f : std::pow((encoded + 0.055f) / 1.055f, 2.4f);
}

SampleEncoder::SampleEncoder(const IImageIterator& picture, const ImageFormatInfo& format,
                             BitDepth bitDepth, bool isDisplayReferred)
    : picture_(picture),
      format_(format.format),
      bitDepth_(bitDepth),
      decodesSrgb_(isDisplayReferred && format.isLinear),
      size_(picture.getSize()),
      channels_(picture.hasAlpha() && format.carriesAlpha ? 4 : 3) {}

std::size_t SampleEncoder::getSampleBytes() const {
    if (isFloatingPoint(bitDepth_)) {
        return sizeof(float);
    }
    return bitDepth_ == BitDepth::Int8 ? sizeof(std::uint8_t) : sizeof(std::uint16_t);
}

std::size_t SampleEncoder::getRowBytes() const {
    return static_cast<std::size_t>(size_.x) * static_cast<std::size_t>(channels_) *
           getSampleBytes();
}

void SampleEncoder::encodeRow(int y, void* samples) const {
    if (isFloatingPoint(bitDepth_)) {
        encodeFloats(y, static_cast<float*>(samples));
    } else if (bitDepth_ == BitDepth::Int8) {
        encodeIntegers(y, static_cast<std::uint8_t*>(samples));
    } else {
        encodeIntegers(y, static_cast<std::uint16_t*>(samples));
    }
}

void SampleEncoder::encodeFloats(int y, float* samples) const {
    for (int x = 0; x < size_.x; ++x, samples += channels_) {
        float alpha = 1.0f;
        const Rgb color = picture_.getPixel({x, y}, alpha);
        std::array values = {color.r, color.g, color.b, alpha};
        if (decodesSrgb_) {
            std::transform(values.begin(), values.begin() + 3, values.begin(), decodeSrgb);
        }
        if (bitDepth_ == BitDepth::Half) {
            std::ranges::transform(values, values.begin(), clampToHalf);
        }
        if (format_ == ImageFormat::RadianceHdr) {
            std::ranges::transform(values, values.begin(), clampToRgbe);
            roundToRgbe(values.data());
        }
        std::copy_n(values.begin(), channels_, samples);
    }
}

template <class Sample>
void SampleEncoder::encodeIntegers(int y, Sample* samples) const {
    const int bits = getBitCount(bitDepth_);
    const unsigned highest = (1u << bits) - 1u;
    const int unusedBits = std::numeric_limits<Sample>::digits - bits;
    for (int x = 0; x < size_.x; ++x, samples += channels_) {
        float alpha = 1.0f;
        const Rgb color = picture_.getPixel({x, y}, alpha);
        const std::array values = {color.r, color.g, color.b, alpha};
        for (int i = 0; i < channels_; ++i) {
            const unsigned level = toLevel(values[static_cast<std::size_t>(i)], highest);
            samples[i] = static_cast<Sample>(level << unusedBits);
        }
    }
}

}  // namespace tavrin::imageio
