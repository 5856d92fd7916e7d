#include "services/postcore/denoise/neural/TransferFunction.h"

#include <cmath>
#include <cstddef>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/postcore/denoise/neural/TransferFunction.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/Math-inl.h"
#include <hwy/highway.h>
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::postcore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
namespace simd = tavrin::colorkit::HWY_NAMESPACE;

constexpr std::size_t kFloatsPerPixel = 4;

// The curve: slope y, then scale y^exponent + offset, then scale ln(y + shift) + offset.
constexpr float kLineEnd = 1.57945760e-6f;
constexpr float kLineSlope = 1.41283765e+3f;
constexpr float kPowerEnd = 3.22087631e-2f;
constexpr float kPowerScale = 1.64593172f;
constexpr float kPowerExponent = 4.31384981e-1f;
constexpr float kPowerOffset = -2.94139609e-3f;
constexpr float kLogScale = 1.92653254e-1f;
constexpr float kLogShift = 6.26026094e-3f;
constexpr float kLogOffset = 9.98620152e-1f;
// The ends on the other side of the curve, and what makes 1 of kLargestLight.
constexpr float kLineEndEncoded = 2.23151711e-3f;
constexpr float kPowerEndEncoded = 3.70974749e-1f;
constexpr float kNorm = 0.318967155f;
constexpr float kLn2 = 0.693147181f;

template <class D, class V>
HWY_INLINE V zeroUnlessFinite(D, V value) {
    return hn::IfThenElseZero(hn::IsFinite(value), value);
}

template <class D, class V>
HWY_INLINE V encode(D d, V color, V exposure) {
    const V light = hn::Clamp(hn::Mul(zeroUnlessFinite(d, color), exposure), hn::Zero(d),
                              hn::Set(d, kLargestLight));
    const V line = hn::Mul(light, hn::Set(d, kLineSlope));
    const V power =
        simd::computeExp2(d, hn::Mul(simd::computeLog2(d, light), hn::Set(d, kPowerExponent)));
    const V middle = hn::MulAdd(power, hn::Set(d, kPowerScale), hn::Set(d, kPowerOffset));
    const V log = simd::computeLog2(d, hn::Add(light, hn::Set(d, kLogShift)));
    const V high = hn::MulAdd(log, hn::Set(d, kLogScale * kLn2), hn::Set(d, kLogOffset));
    const V upper = hn::IfThenElse(hn::Le(light, hn::Set(d, kPowerEnd)), middle, high);
    const V value = hn::IfThenElse(hn::Le(light, hn::Set(d, kLineEnd)), line, upper);
    return hn::Mul(value, hn::Set(d, kNorm));
}

template <class D, class V>
HWY_INLINE V decode(D d, V encoded, V inverseExposure) {
    // The networks answer somewhat more than 1, but nothing beyond 2.
    const V value = hn::Mul(hn::Clamp(zeroUnlessFinite(d, encoded), hn::Zero(d), hn::Set(d, 2.0f)),
                            hn::Set(d, 1.0f / kNorm));
    const V line = hn::Mul(value, hn::Set(d, 1.0f / kLineSlope));
    const V base =
        hn::Mul(hn::Sub(value, hn::Set(d, kPowerOffset)), hn::Set(d, 1.0f / kPowerScale));
    const V middle = simd::computeExp2(
        d, hn::Mul(simd::computeLog2(d, base), hn::Set(d, 1.0f / kPowerExponent)));
    const V log =
        hn::Mul(hn::Sub(value, hn::Set(d, kLogOffset)), hn::Set(d, 1.0f / (kLogScale * kLn2)));
    const V high = hn::Sub(simd::computeExp2(d, log), hn::Set(d, kLogShift));
    const V upper = hn::IfThenElse(hn::Le(value, hn::Set(d, kPowerEndEncoded)), middle, high);
    const V light = hn::IfThenElse(hn::Le(value, hn::Set(d, kLineEndEncoded)), line, upper);
    return simd::clampToFinite(d, hn::Mul(light, inverseExposure));
}

/// Calls body(d, i) for vectors that start at float i.
template <class Body>
HWY_INLINE void forEachVector(std::size_t floats, const Body& body) {
    const hn::ScalableTag<float> wide;
    const hn::CappedTag<float, kFloatsPerPixel> narrow;
    std::size_t i = 0;
    for (; i + hn::Lanes(wide) <= floats; i += hn::Lanes(wide)) {
        body(wide, i);
    }
    for (; i < floats; i += hn::Lanes(narrow)) {
        body(narrow, i);
    }
}

void encodeFloats(const float* colors, std::size_t floats, float exposure, float* encoded) {
    forEachVector(floats, [=](auto d, std::size_t i) HWY_ATTR {
        hn::StoreU(encode(d, hn::LoadU(d, colors + i), hn::Set(d, exposure)), d, encoded + i);
    });
}

void decodeFloats(const float* encoded, std::size_t floats, float inverseExposure, float* colors) {
    forEachVector(floats, [=](auto d, std::size_t i) HWY_ATTR {
        hn::StoreU(decode(d, hn::LoadU(d, encoded + i), hn::Set(d, inverseExposure)), d,
                   colors + i);
    });
}

}  // namespace tavrin::postcore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::postcore {

HWY_EXPORT(encodeFloats);
HWY_EXPORT(decodeFloats);

void encodeColors(std::span<const Rgb> colors, float exposure, std::span<Rgb> encoded) {
    HWY_DYNAMIC_DISPATCH(encodeFloats)
    (&colors.data()->r, colors.size() * 4, exposure, &encoded.data()->r);
}

void decodeColors(std::span<const Rgb> encoded, float exposure, std::span<Rgb> colors) {
    HWY_DYNAMIC_DISPATCH(decodeFloats)
    (&encoded.data()->r, encoded.size() * 4, 1.0f / exposure, &colors.data()->r);
}

}  // namespace tavrin::postcore
#endif
