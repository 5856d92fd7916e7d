#include "services/colorkit/PowerStage.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/PowerStage.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/PixelLoop-inl.h"
#include "services/colorkit/simd/ScaledPower-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

void raiseToPower(const ScaledPower& power, PixelBlock& block) {
    forEachComponent(
        block, [&power](auto d, auto value) HWY_ATTR { return computePower(d, power, value); });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::colorkit {

HWY_EXPORT(raiseToPower);

void PowerStage::apply(PixelBlock& block) const {
    HWY_DYNAMIC_DISPATCH(raiseToPower)(power_, block);
}

}  // namespace tavrin::colorkit
#endif
