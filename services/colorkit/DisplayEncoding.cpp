#include "services/colorkit/DisplayEncoding.h"

#include "services/colorkit/PowerStage.h"

#include <cmath>
#include <memory>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/DisplayEncoding.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/PixelLoop-inl.h"
#include "services/colorkit/simd/ScaledPower-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

/// `power` is the one of the curved part, here and below.
void encodeSrgb(const ScaledPower& power, PixelBlock& block) {
    forEachComponent(block, [&power](auto d, auto value) HWY_ATTR {
        const auto straight = hn::Mul(value, hn::Set(d, 12.92f));
        const auto curved = hn::Sub(computePower(d, power, value), hn::Set(d, 0.055f));
        return hn::IfThenElse(hn::Le(value, hn::Set(d, 0.0031308f)), straight, curved);
    });
}

void decodeSrgb(const ScaledPower& power, PixelBlock& block) {
    forEachComponent(block, [&power](auto d, auto value) HWY_ATTR {
        const auto straight = hn::Mul(value, hn::Set(d, 1.0f / 12.92f));
        const auto curved = computePower(d, power, hn::Add(value, hn::Set(d, 0.055f)));
        return hn::IfThenElse(hn::Le(value, hn::Set(d, 0.04045f)), straight, curved);
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::colorkit {
namespace {

HWY_EXPORT(encodeSrgb);
HWY_EXPORT(decodeSrgb);

/// IEC 61966-2-1: 12.92 x up to 0.0031308, above that 1.055 x^(1/2.4) - 0.055.
void appendSrgbEncoding(StageList& stages) {
    stages.add([power = ScaledPower(1.055, 1.0 / 2.4)](PixelBlock& block) {
        HWY_DYNAMIC_DISPATCH(encodeSrgb)(power, block);
    });
}

/// The inverse: x / 12.92 up to 0.04045, above that ((x + 0.055) / 1.055)^2.4.
void appendSrgbDecoding(StageList& stages) {
    stages.add([power = ScaledPower(std::pow(1.055, -2.4), 2.4)](PixelBlock& block) {
        HWY_DYNAMIC_DISPATCH(decodeSrgb)(power, block);
    });
}

/// Nothing for a gamma that stands for the sRGB curve.
Optional<double> getExponent(float gamma) {
    constexpr float kSrgbGamma = 2.2f;
    const bool isUsable = std::isfinite(gamma) && gamma > 0.0f;
    return isUsable && gamma != kSrgbGamma ? Optional<double>(gamma) : std::nullopt;
}

}  // namespace

void appendDisplayEncoding(float gamma, StageList& stages) {
    const Optional<double> exponent = getExponent(gamma);
    if (!exponent) {
        appendSrgbEncoding(stages);
    } else if (*exponent != 1.0) {
        stages.add(std::make_unique<PowerStage>(1.0, 1.0 / *exponent));
    }
}

void appendDisplayDecoding(float gamma, StageList& stages) {
    const Optional<double> exponent = getExponent(gamma);
    if (!exponent) {
        appendSrgbDecoding(stages);
    } else if (*exponent != 1.0) {
        stages.add(std::make_unique<PowerStage>(1.0, *exponent));
    }
}

}  // namespace tavrin::colorkit
#endif
