#include "services/colorkit/LogEncoding.h"

#include <cmath>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/LogEncoding.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/Math-inl.h"
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

void encodeLogarithm(float factor, float offset, PixelBlock& block) {
    forEachComponent(block, [=](auto d, auto value) HWY_ATTR {
        const auto stops = computeLog2(d, value);
        return hn::Max(hn::MulAdd(stops, hn::Set(d, factor), hn::Set(d, offset)), hn::Zero(d));
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::colorkit {

HWY_EXPORT(encodeLogarithm);

void appendLogEncoding(StageList& stages) {
    constexpr double kLowest = -10.0;
    constexpr double kHighest = 6.5;
    constexpr double kFactor = 1.0 / (kHighest - kLowest);
    const auto factor = static_cast<float>(kFactor);
    const auto offset = static_cast<float>(-(std::log2(0.18) + kLowest) * kFactor);
    stages.add([factor, offset](PixelBlock& block) {
        HWY_DYNAMIC_DISPATCH(encodeLogarithm)(factor, offset, block);
    });
}

}  // namespace tavrin::colorkit
#endif
