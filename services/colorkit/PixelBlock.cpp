#include "services/colorkit/PixelBlock.h"

#include <cstring>
#include <limits>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/PixelBlock.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

template <class D, class V = hn::Vec<D>>
HWY_INLINE V toMappable(D d, V value) {
    const V largest = hn::Set(d, std::numeric_limits<float>::max());
    return hn::IfThenElseZero(hn::Gt(value, hn::Zero(d)), hn::Min(value, largest));
}

template <class D>
HWY_INLINE void loadVector(D d, const float* pixels, PixelBlock& block, std::size_t index) {
    hn::Vec<D> r, g, b, a;
    hn::LoadInterleaved4(d, pixels, r, g, b, a);
    hn::Store(toMappable(d, r), d, block.r + index);
    hn::Store(toMappable(d, g), d, block.g + index);
    hn::Store(toMappable(d, b), d, block.b + index);
    hn::Store(a, d, block.a + index);
}

void loadPixels(const float* pixels, PixelBlock& block) {
    const hn::ScalableTag<float> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t i = 0;
    for (; i + lanes <= block.count; i += lanes) {
        loadVector(d, pixels + 4 * i, block, i);
    }
    if (i < block.count) {
        alignas(128) float rest[4 * HWY_LANES(float)] = {};
        std::memcpy(rest, pixels + 4 * i, (block.count - i) * sizeof(Rgb));
        loadVector(d, rest, block, i);
    }
}

template <class D>
HWY_INLINE void storeVector(D d, const PixelBlock& block, std::size_t index, float* pixels) {
    const auto zero = hn::Zero(d);
    hn::StoreInterleaved4(
        hn::Max(hn::Load(d, block.r + index), zero), hn::Max(hn::Load(d, block.g + index), zero),
        hn::Max(hn::Load(d, block.b + index), zero), hn::Load(d, block.a + index), d, pixels);
}

void storePixels(const PixelBlock& block, float* pixels) {
    const hn::ScalableTag<float> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t i = 0;
    for (; i + lanes <= block.count; i += lanes) {
        storeVector(d, block, i, pixels + 4 * i);
    }
    if (i < block.count) {
        alignas(128) float rest[4 * HWY_LANES(float)];
        storeVector(d, block, i, rest);
        std::memcpy(pixels + 4 * i, rest, (block.count - i) * sizeof(Rgb));
    }
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::colorkit {

HWY_EXPORT(loadPixels);
HWY_EXPORT(storePixels);

static_assert(sizeof(Rgb) == 4 * sizeof(float), "rows of pixels are read as rows of floats");

PixelColumns::PixelColumns(const PixelBlock& block) {
    // In double precision as for the rows: floats would be off by one here and there.
    const double scale = block.position.scale;
    for (std::size_t i = 0; i < block.count; ++i) {
        const double offset = static_cast<double>(static_cast<int>(block.firstIndex + i)) * scale;
        x[i] = block.position.x + static_cast<std::int32_t>(offset);
    }
}

void loadBlock(std::span<const Rgb> pixels, PixelBlock& block) {
    block.count = pixels.size();
    HWY_DYNAMIC_DISPATCH(loadPixels)(&pixels.front().r, block);
}

void storeBlock(const PixelBlock& block, std::span<Rgb> pixels) {
    HWY_DYNAMIC_DISPATCH(storePixels)(block, &pixels.front().r);
}

}  // namespace tavrin::colorkit
#endif
