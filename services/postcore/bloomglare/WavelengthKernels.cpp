#include "services/postcore/bloomglare/WavelengthKernels.h"

#include <algorithm>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/postcore/bloomglare/WavelengthKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::postcore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using Columns = hn::CappedTag<float, 16>;

void sumRows(const float* rows, std::size_t stride, const RowWeight* weights, std::size_t count,
             std::size_t columns, const std::array<float*, 3>& sums) {
    const Columns d;
    const auto [red, green, blue] = sums;
    for (float* channel : sums) {
        std::fill_n(channel, columns, 0.0f);
    }
    // Two rows at a time, for then the sums are read and written half as often.
    for (std::size_t i = 0; i < count; i += 2) {
        const RowWeight& weight = weights[i];
        const RowWeight other = i + 1 < count ? weights[i + 1] : RowWeight{weight.row, {}};
        const float* row = rows + static_cast<std::size_t>(weight.row) * stride;
        const float* otherRow = rows + static_cast<std::size_t>(other.row) * stride;
        const auto weightRed = hn::Set(d, weight.channels[0]);
        const auto weightGreen = hn::Set(d, weight.channels[1]);
        const auto weightBlue = hn::Set(d, weight.channels[2]);
        const auto otherRed = hn::Set(d, other.channels[0]);
        const auto otherGreen = hn::Set(d, other.channels[1]);
        const auto otherBlue = hn::Set(d, other.channels[2]);
        for (std::size_t x = 0; x < columns; x += hn::Lanes(d)) {
            const auto value = hn::LoadU(d, row + x);
            const auto otherValue = hn::LoadU(d, otherRow + x);
            const auto add = [&](auto own, auto others, float* sum) {
                const auto first = hn::MulAdd(value, own, hn::LoadU(d, sum + x));
                hn::StoreU(hn::MulAdd(otherValue, others, first), d, sum + x);
            };
            add(weightRed, otherRed, red);
            add(weightGreen, otherGreen, green);
            add(weightBlue, otherBlue, blue);
        }
    }
    for (float* channel : sums) {
        for (std::size_t x = 0; x < columns; x += hn::Lanes(d)) {
            hn::StoreU(hn::Max(hn::LoadU(d, channel + x), hn::Zero(d)), d, channel + x);
        }
    }
}

}  // namespace tavrin::postcore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::postcore {

HWY_EXPORT(sumRows);

void sumRows(const float* rows, std::size_t stride, const RowWeight* weights, std::size_t count,
             std::size_t columns, const std::array<float*, 3>& sums) {
    HWY_DYNAMIC_DISPATCH(sumRows)(rows, stride, weights, count, columns, sums);
}

}  // namespace tavrin::postcore
#endif
