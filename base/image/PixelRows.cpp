#include "base/image/PixelRows.h"

#include <cstddef>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "base/image/PixelRows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::image::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

template <bool kHasAlpha>
void interleavePlanes(const float* r, const float* g, const float* b, const float* a,
                      std::size_t count, float* pixels) {
    const hn::ScalableTag<float> wide;
    const hn::CappedTag<float, 1> single;
    std::size_t i = 0;
    const auto store = [&](auto d) HWY_ATTR {
        auto alpha = hn::Set(d, 1.0f);
        if constexpr (kHasAlpha) {
            alpha = hn::LoadU(d, a + i);
        }
        hn::StoreInterleaved4(hn::LoadU(d, r + i), hn::LoadU(d, g + i), hn::LoadU(d, b + i), alpha,
                              d, pixels + 4 * i);
        i += hn::Lanes(d);
    };
    while (i + hn::Lanes(wide) <= count) {
        store(wide);
    }
    while (i < count) {
        store(single);
    }
}

void interleaveAny(const float* r, const float* g, const float* b, const float* a,
                   std::size_t count, float* pixels) {
    if (a != nullptr) {
        interleavePlanes<true>(r, g, b, a, count, pixels);
    } else {
        interleavePlanes<false>(r, g, b, a, count, pixels);
    }
}

}  // namespace tavrin::image::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::image {

HWY_EXPORT(interleaveAny);

void interleave(const float* r, const float* g, const float* b, const float* a,
                std::span<Rgb> pixels) {
    static_assert(sizeof(Rgb) == 4 * sizeof(float));
    if (!pixels.empty()) {
        HWY_DYNAMIC_DISPATCH(interleaveAny)(r, g, b, a, pixels.size(), &pixels.data()->r);
    }
}

void interleave(const float* r, const float* g, const float* b, const float* a,
                std::span<Rgba> pixels) {
    static_assert(sizeof(Rgba) == 4 * sizeof(float));
    if (!pixels.empty()) {
        HWY_DYNAMIC_DISPATCH(interleaveAny)(r, g, b, a, pixels.size(), &pixels.data()->r);
    }
}

}  // namespace tavrin::image
#endif
