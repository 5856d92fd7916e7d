#include "services/colorkit/Clamping.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/Clamping.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

void clampColors(float minimum, float maximum, PixelBlock& block) {
    forEachComponent(block, [=](auto d, auto value) HWY_ATTR {
        return hn::Clamp(value, hn::Set(d, minimum), hn::Set(d, maximum));
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::colorkit {

HWY_EXPORT(clampColors);

void appendClamping(float minimum, float maximum, StageList& stages) {
    stages.add([minimum, maximum](PixelBlock& block) {
        HWY_DYNAMIC_DISPATCH(clampColors)(minimum, maximum, block);
    });
}

}  // namespace tavrin::colorkit
#endif
