#include "gui/components/HistogramBins.h"

#include "services/colorkit/Luminance.h"

#include <cstddef>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "gui/components/HistogramBins.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/Math-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::components::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void findBins(const HistogramBins& bins, std::span<const float> values, std::int32_t* out) {
    constexpr auto kMiddleGrey = static_cast<float>(colorkit::kMiddleGrey);
    const hn::ScalableTag<float> wide;
    const hn::CappedTag<float, 1> single;
    const auto count = static_cast<float>(bins.count);
    const float scale = count / (bins.range.maximum - bins.range.minimum);
    std::size_t i = 0;
    const auto findSome = [&](auto d) HWY_ATTR {
        const hn::RebindToSigned<decltype(d)> integers;
        const auto zero = hn::Zero(d);
        auto value = hn::LoadU(d, values.data() + i);
        auto isInside = hn::Eq(value, value);
        if (bins.isInStops) {
            isInside = hn::Gt(value, zero);
            value =
                colorkit::HWY_NAMESPACE::computeLog2(d, hn::Div(value, hn::Set(d, kMiddleGrey)));
        }
        const auto bin = hn::Mul(hn::Sub(value, hn::Set(d, bins.range.minimum)), hn::Set(d, scale));
        isInside = hn::And(isInside, hn::And(hn::Ge(bin, zero), hn::Lt(bin, hn::Set(d, count))));
        const auto index =
            hn::ConvertTo(integers, hn::IfThenElse(isInside, bin, hn::Set(d, -1.0f)));
        hn::StoreU(index, integers, out + i);
        i += hn::Lanes(d);
    };
    while (i + hn::Lanes(wide) <= values.size()) {
        findSome(wide);
    }
    while (i < values.size()) {
        findSome(single);
    }
}

}  // namespace tavrin::components::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::components {

HWY_EXPORT(findBins);

void HistogramBins::find(std::span<const float> values, std::int32_t* out) const {
    HWY_DYNAMIC_DISPATCH(findBins)(*this, values, out);
}

}  // namespace tavrin::components
#endif
