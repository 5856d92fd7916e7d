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

/// `power` is the one of the curved part.
void encodeSrgb(const ScaledPower& power, PixelBlock& block) {
    forEachComponent(block, [&power](auto d, auto value) HWY_ATTR {
        const auto straight = hn::Mul(value, hn::Set(d, 12.92f));
        const auto curved = hn::Sub(computePower(d, power, value), hn::Set(d, 0.055f));
        return hn::IfThenElse(hn::Le(value, hn::Set(d, 0.0031308f)), straight, curved);
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::colorkit {
namespace {

HWY_EXPORT(encodeSrgb);

/// IEC 61966-2-1: 12.92 x up to 0.0031308, above that 1.055 x^(1/2.4) - 0.055.
void appendSrgbEncoding(StageList& stages) {
    stages.add([power = ScaledPower(1.055, 1.0 / 2.4)](PixelBlock& block) {
        HWY_DYNAMIC_DISPATCH(encodeSrgb)(power, block);
    });
}

}  // namespace

void appendDisplayEncoding(float gamma, StageList& stages) {
    constexpr float kSrgbGamma = 2.2f;
    const bool isUsable = std::isfinite(gamma) && gamma > 0.0f;
    if (!isUsable || gamma == kSrgbGamma) {
        appendSrgbEncoding(stages);
    } else if (gamma != 1.0f) {
        stages.add(std::make_unique<PowerStage>(1.0, 1.0 / double{gamma}));
    }
}

}  // namespace tavrin::colorkit
#endif
