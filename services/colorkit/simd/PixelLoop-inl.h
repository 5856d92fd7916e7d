// Loops of stages over the planes of a block. Included once per instruction set, after
// hwy/foreach_target.h.

#if defined(TAVRIN_COLORKIT_PIXEL_LOOP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_COLORKIT_PIXEL_LOOP_INL_H
#undef TAVRIN_COLORKIT_PIXEL_LOOP_INL_H
#else
#define TAVRIN_COLORKIT_PIXEL_LOOP_INL_H
#endif

#include "services/colorkit/PixelBlock.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Calls body(d, i, r, g, b), which changes the three vectors in place, for all colours of the
/// block; i is the index of the vectors' first pixel. A lambda needs HWY_ATTR after its parameters.
template <class Body>
HWY_INLINE void forEachIndexedColor(PixelBlock& block, const Body& body) {
    const hn::ScalableTag<float> d;
    for (std::size_t i = 0; i < block.count; i += hn::Lanes(d)) {
        auto r = hn::Load(d, block.r + i);
        auto g = hn::Load(d, block.g + i);
        auto b = hn::Load(d, block.b + i);
        body(d, i, r, g, b);
        hn::Store(r, d, block.r + i);
        hn::Store(g, d, block.g + i);
        hn::Store(b, d, block.b + i);
    }
}

/// The same with body(d, r, g, b).
template <class Body>
HWY_INLINE void forEachColor(PixelBlock& block, const Body& body) {
    forEachIndexedColor(block, [&body](auto d, std::size_t, auto& r, auto& g, auto& b)
                                   HWY_ATTR { body(d, r, g, b); });
}

/// Replaces every component v of the block by body(d, v).
template <class Body>
HWY_INLINE void forEachComponent(PixelBlock& block, const Body& body) {
    forEachColor(block, [&body](auto d, auto& r, auto& g, auto& b) HWY_ATTR {
        r = body(d, r);
        g = body(d, g);
        b = body(d, b);
    });
}

}  // namespace HWY_NAMESPACE
}  // namespace tavrin::colorkit
HWY_AFTER_NAMESPACE();

#endif
