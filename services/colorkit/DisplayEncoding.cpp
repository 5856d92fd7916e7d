#include "services/colorkit/DisplayEncoding.h"

#include <cmath>

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

// IEC 61966-2-1: 12.92 x up to 0.0031308, above that 1.055 x^(1/2.4) - 0.055.
void encodeSrgb(const ScaledPower& power, PixelBlock& block) {
    forEachComponent(block, [&power](auto d, auto value) HWY_ATTR {
        const auto linear = hn::Mul(value, hn::Set(d, 12.92f));
        const auto curved = hn::Sub(computePower(d, power, value), hn::Set(d, 0.055f));
        return hn::IfThenElse(hn::Le(value, hn::Set(d, 0.0031308f)), linear, curved);
    });
}

void encodePower(const ScaledPower& power, PixelBlock& block) {
    forEachComponent(
        block, [&power](auto d, auto value) HWY_ATTR { return computePower(d, power, value); });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::colorkit {
namespace {

constexpr float kSrgbGamma = 2.2f;

bool isUsable(float gamma) {
    return std::isfinite(gamma) && gamma > 0.0f;
}

}  // namespace

HWY_EXPORT(encodeSrgb);
HWY_EXPORT(encodePower);

DisplayEncoding::DisplayEncoding(float gamma)
    : curve_(gamma == kSrgbGamma || !isUsable(gamma) ? Curve::Srgb
             : gamma == 1.0f                         ? Curve::Linear
                                                     : Curve::Power),
      power_(curve_ == Curve::Srgb ? ScaledPower(1.055, 1.0 / 2.4)
                                   : ScaledPower(1.0, 1.0 / double{gamma})) {}

void DisplayEncoding::encode(PixelBlock& block) const {
    switch (curve_) {
        case Curve::Srgb:
            HWY_DYNAMIC_DISPATCH(encodeSrgb)(power_, block);
            break;
        case Curve::Power:
            HWY_DYNAMIC_DISPATCH(encodePower)(power_, block);
            break;
        case Curve::Linear:
            break;
    }
}

}  // namespace tavrin::colorkit
#endif
