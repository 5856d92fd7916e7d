#include "gui/widgets/DisplayPixels.h"

#include <cstddef>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "gui/widgets/DisplayPixels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::widgets::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void pack(const float* components, std::size_t count, std::uint32_t* out) {
    const hn::ScalableTag<float> wide;
    const hn::CappedTag<float, 1> single;
    std::size_t i = 0;
    const auto packSome = [&](auto d) HWY_ATTR {
        const hn::RebindToSigned<decltype(d)> integers;
        // The value first, so that what is not a number becomes 0.
        const auto toByte = [&](auto component) HWY_ATTR {
            const auto clamped = hn::Min(hn::Max(component, hn::Zero(d)), hn::Set(d, 1.0f));
            const auto scaled = hn::Add(hn::Mul(clamped, hn::Set(d, 255.0f)), hn::Set(d, 0.5f));
            return hn::ConvertTo(integers, scaled);
        };
        hn::Vec<decltype(d)> r;
        hn::Vec<decltype(d)> g;
        hn::Vec<decltype(d)> b;
        hn::Vec<decltype(d)> a;
        hn::LoadInterleaved4(d, components + 4 * i, r, g, b, a);
        const auto pixels =
            hn::Or(hn::Or(hn::ShiftLeft<16>(toByte(r)), hn::ShiftLeft<8>(toByte(g))), toByte(b));
        hn::StoreU(pixels, integers, reinterpret_cast<std::int32_t*>(out + i));
        i += hn::Lanes(d);
    };
    while (i + hn::Lanes(wide) <= count) {
        packSome(wide);
    }
    while (i < count) {
        packSome(single);
    }
}

}  // namespace tavrin::widgets::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::widgets {

HWY_EXPORT(pack);

void toDisplayPixels(std::span<const Rgb> colors, std::uint32_t* out) {
    static_assert(sizeof(Rgb) == 4 * sizeof(float));
    if (!colors.empty()) {
        HWY_DYNAMIC_DISPATCH(pack)(&colors.data()->r, colors.size(), out);
    }
}

}  // namespace tavrin::widgets
#endif
