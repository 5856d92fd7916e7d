#include "services/postcore/sharpening/RowKernels.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/postcore/sharpening/RowKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::postcore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

constexpr float kLargest = std::numeric_limits<float>::max();
// The two sums of pairs of pixels, down the rows and along them, may each double a value.
constexpr float kPreparedScale = 0.25f;

using WholeVector = hn::CappedTag<float, kRowGranule>;

void sum(const float* const* middle, const float* weights, std::size_t weightCount,
         std::size_t floats, float* result) {
    const WholeVector d;
    const std::size_t lanes = hn::Lanes(d);
    // Four sums at a time hide the time that an addition takes.
    for (std::size_t i = 0; i < floats; i += 4 * lanes) {
        const float* center = middle[0] + i;
        const auto firstWeight = hn::Set(d, weights[0]);
        auto sum0 = hn::Mul(firstWeight, hn::LoadU(d, center));
        auto sum1 = hn::Mul(firstWeight, hn::LoadU(d, center + lanes));
        auto sum2 = hn::Mul(firstWeight, hn::LoadU(d, center + 2 * lanes));
        auto sum3 = hn::Mul(firstWeight, hn::LoadU(d, center + 3 * lanes));
        for (std::size_t k = 1; k < weightCount; ++k) {
            const float* before = middle[-static_cast<std::ptrdiff_t>(k)] + i;
            const float* after = middle[k] + i;
            const auto weight = hn::Set(d, weights[k]);
            const auto loadPair = [=](std::size_t offset) HWY_ATTR {
                return hn::Add(hn::LoadU(d, before + offset), hn::LoadU(d, after + offset));
            };
            sum0 = hn::MulAdd(weight, loadPair(0), sum0);
            sum1 = hn::MulAdd(weight, loadPair(lanes), sum1);
            sum2 = hn::MulAdd(weight, loadPair(2 * lanes), sum2);
            sum3 = hn::MulAdd(weight, loadPair(3 * lanes), sum3);
        }
        hn::StoreU(sum0, d, result + i);
        hn::StoreU(sum1, d, result + i + lanes);
        hn::StoreU(sum2, d, result + i + 2 * lanes);
        hn::StoreU(sum3, d, result + i + 3 * lanes);
    }
}

#if HWY_TARGET == HWY_SCALAR

// Vectors of one float hold no pixel.

bool isFinitePixel(const float* pixel) {
    return std::isfinite(pixel[0]) && std::isfinite(pixel[1]) && std::isfinite(pixel[2]);
}

void prepare(const float* pixels, std::size_t pixelCount, float* prepared) {
    for (std::size_t i = 0; i < pixelCount * kPixelFloats; i += kPixelFloats) {
        const float scale = isFinitePixel(pixels + i) ? kPreparedScale : 0.0f;
        for (std::size_t c = 0; c < kPixelFloats; ++c) {
            prepared[i + c] = scale == 0.0f ? 0.0f : c < 3 ? scale * pixels[i + c] : scale;
        }
    }
}

float getMean(const float* sums, std::size_t component) {
    return std::clamp(sums[component] / sums[3], -kLargest, kLargest);
}

void combine(const float* narrow, const float* wide, float amount, std::size_t pixelCount,
             float* pixels) {
    for (std::size_t i = 0; i < pixelCount * kPixelFloats; i += kPixelFloats) {
        if (!isFinitePixel(pixels + i)) {
            continue;
        }
        for (std::size_t c = 0; c < 3; ++c) {
            float result = narrow ? getMean(narrow + i, c) : pixels[i + c];
            if (wide) {
                const float sharpened = result + amount * (result - getMean(wide + i, c));
                result = std::clamp(sharpened, std::min(result, 0.0f), kLargest);
            }
            pixels[i + c] = result;
        }
    }
}

#else

/// Calls body(d, i) for vectors of whole pixels that start at float i: wide ones first, and single
/// pixels for what is left.
template <class Body>
HWY_INLINE void forEachVector(std::size_t pixelCount, const Body& body) {
    const WholeVector d;
    const std::size_t floats = pixelCount * kPixelFloats;
    std::size_t i = 0;
    for (; i + hn::Lanes(d) <= floats; i += hn::Lanes(d)) {
        body(d, i);
    }
    for (; i < floats; i += kPixelFloats) {
        body(hn::FixedTag<float, kPixelFloats>(), i);
    }
}

/// All bits of the alphas.
template <class D>
HWY_INLINE auto getAlphaLanes(D d) {
    alignas(16) static constexpr std::uint32_t kBits[kPixelFloats] = {0, 0, 0, 0xFFFFFFFFu};
    return hn::BitCast(d, hn::LoadDup128(hn::RebindToUnsigned<D>(), kBits));
}

/// All bits of the pixels whose three components are finite.
template <class D, class V>
HWY_INLINE V getFinitePixels(D d, V pixels) {
    const V finite = hn::Or(hn::VecFromMask(d, hn::IsFinite(pixels)), getAlphaLanes(d));
    const V pairs = hn::And(finite, hn::Shuffle2301(finite));
    return hn::And(pairs, hn::Shuffle1032(pairs));
}

void prepare(const float* pixels, std::size_t pixelCount, float* prepared) {
    forEachVector(pixelCount, [=](auto d, std::size_t i) HWY_ATTR {
        const auto scale = hn::Set(d, kPreparedScale);
        const auto pixel = hn::LoadU(d, pixels + i);
        const auto weighed =
            hn::IfThenElse(hn::MaskFromVec(getAlphaLanes(d)), scale, hn::Mul(pixel, scale));
        hn::StoreU(hn::And(getFinitePixels(d, pixel), weighed), d, prepared + i);
    });
}

/// Sums divided by their weights.
template <class D>
HWY_INLINE auto loadMean(D d, const float* sums) {
    const auto limit = hn::Set(d, kLargest);
    const auto weighed = hn::LoadU(d, sums);
    return hn::Clamp(hn::Div(weighed, hn::Broadcast<3>(weighed)), hn::Neg(limit), limit);
}

void combine(const float* narrow, const float* wide, float amount, std::size_t pixelCount,
             float* pixels) {
    forEachVector(pixelCount, [=](auto d, std::size_t i) HWY_ATTR {
        const auto pixel = hn::LoadU(d, pixels + i);
        auto result = narrow ? loadMean(d, narrow + i) : pixel;
        if (wide) {
            const auto detail = hn::Sub(result, loadMean(d, wide + i));
            const auto sharpened = hn::MulAdd(hn::Set(d, amount), detail, result);
            result = hn::Clamp(sharpened, hn::Min(result, hn::Zero(d)), hn::Set(d, kLargest));
        }
        const auto changes = hn::AndNot(getAlphaLanes(d), getFinitePixels(d, pixel));
        hn::StoreU(hn::IfVecThenElse(changes, result, pixel), d, pixels + i);
    });
}

#endif

}  // namespace tavrin::postcore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::postcore {

HWY_EXPORT(prepare);
HWY_EXPORT(sum);
HWY_EXPORT(combine);

static_assert(sizeof(Rgb) == kPixelFloats * sizeof(float));

void prepareRow(std::span<const Rgb> pixels, float* prepared) {
    HWY_DYNAMIC_DISPATCH(prepare)(&pixels.data()->r, pixels.size(), prepared);
}

void sumRows(const float* const* middle, std::span<const float> weights, std::size_t pixelCount,
             float* result) {
    HWY_DYNAMIC_DISPATCH(sum)
    (middle, weights.data(), weights.size(), pixelCount * kPixelFloats, result);
}

void combineRow(const float* narrow, const float* wide, float amount, std::span<Rgb> pixels) {
    HWY_DYNAMIC_DISPATCH(combine)(narrow, wide, amount, pixels.size(), &pixels.data()->r);
}

}  // namespace tavrin::postcore
#endif
