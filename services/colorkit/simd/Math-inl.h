// Functions of vectors of floats. Included once per instruction set, after hwy/foreach_target.h.

#if defined(TAVRIN_COLORKIT_MATH_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_COLORKIT_MATH_INL_H
#undef TAVRIN_COLORKIT_MATH_INL_H
#else
#define TAVRIN_COLORKIT_MATH_INL_H
#endif

#include "services/colorkit/Luminance.h"

#include <hwy/highway.h>

#include <cstdint>
#include <limits>

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Infinities become the largest float of their sign.
template <class D, class V>
HWY_INLINE V clampToFinite(D d, V value) {
    const V largest = hn::Set(d, std::numeric_limits<float>::max());
    return hn::Clamp(value, hn::Neg(largest), largest);
}

/// Multiplies a colour by a factor.
template <class D, class V>
HWY_INLINE void multiplyColor(D d, V factor, V& r, V& g, V& b) {
    r = clampToFinite(d, hn::Mul(r, factor));
    g = clampToFinite(d, hn::Mul(g, factor));
    b = clampToFinite(d, hn::Mul(b, factor));
}

/// c0 + x (c1 + x (c2 + ...)).
template <class D, class V>
HWY_INLINE V evaluatePolynomial(D d, V, float c0) {
    return hn::Set(d, c0);
}
template <class D, class V, class... Coefficients>
HWY_INLINE V evaluatePolynomial(D d, V x, float c0, Coefficients... higher) {
    return hn::MulAdd(x, evaluatePolynomial(d, x, higher...), hn::Set(d, c0));
}

/// log2 x = integer + fraction with the fraction in [-0.5, 0.5]; for normal positive x.
template <class D, class V>
HWY_INLINE void splitLog2(D d, V x, V& integer, V& fraction) {
    const hn::RebindToSigned<D> di;
    constexpr std::int32_t kSquareRootOfHalf = 0x3F3504F3;  // the bits of 0.70710677f
    constexpr std::int32_t kMantissaMask = 0x007FFFFF;
    const auto shifted = hn::Sub(hn::BitCast(di, x), hn::Set(di, kSquareRootOfHalf));
    integer = hn::ConvertTo(d, hn::ShiftRight<23>(shifted));
    const auto mantissa = hn::BitCast(
        d, hn::Add(hn::And(shifted, hn::Set(di, kMantissaMask)), hn::Set(di, kSquareRootOfHalf)));
    // Minimax polynomial of log2(1 + z) / z on [sqrt(1/2) - 1, sqrt(2) - 1] (Remez), error of
    // the logarithm below 7e-9.
    const V z = hn::Sub(mantissa, hn::Set(d, 1.0f));
    fraction = hn::Mul(
        z, evaluatePolynomial(d, z, 1.442694902420044f, -0.7213471531867981f, 0.48092252016067505f,
                              -0.3607212007045746f, 0.28765687346458435f, -0.23851922154426575f,
                              0.2173776924610138f, -0.21030455827713013f, 0.12541793286800385f));
}

/// (2^fraction - 1) / fraction for fractions in [-0.5, 0.5]: minimax polynomial (Remez) of
/// 2^fraction, whose relative error is below 2e-9.
template <class D, class V>
HWY_INLINE V exp2FractionSlope(D d, V fraction) {
    return evaluatePolynomial(d, fraction, 0.6931471824645996f, 0.24022650718688965f,
                              0.055503275245428085f, 0.009618003852665424f, 0.0013400346506386995f,
                              0.00015476366388611495f);
}

/// 2^fraction for fractions in [-0.5, 0.5].
template <class D, class V>
HWY_INLINE V exp2Fraction(D d, V fraction) {
    return hn::MulAdd(fraction, exp2FractionSlope(d, fraction), hn::Set(d, 1.0f));
}

/// 2^whole for whole numbers from -126 to 127.
template <class D, class V>
HWY_INLINE V computePowerOfTwo(D d, V whole) {
    const hn::RebindToSigned<D> di;
    return hn::BitCast(d, hn::ShiftLeft<23>(hn::Add(hn::ConvertTo(di, whole), hn::Set(di, 127))));
}

/// log2 x with an absolute error below 1e-8 and half a step of the result; x below the smallest
/// normal float counts as that.
template <class D, class V>
HWY_INLINE V computeLog2(D d, V x) {
    V integer, fraction;
    splitLog2(d, hn::Max(x, hn::Set(d, std::numeric_limits<float>::min())), integer, fraction);
    return hn::Add(integer, fraction);
}

/// 2^x with a relative error below 2e-7; x counts as at least -126 and at most 127.
template <class D, class V>
HWY_INLINE V computeExp2(D d, V x) {
    x = hn::Clamp(x, hn::Set(d, -126.0f), hn::Set(d, 127.0f));
    const V whole = hn::Round(x);
    return hn::Mul(exp2Fraction(d, hn::Sub(x, whole)), computePowerOfTwo(d, whole));
}

/// 2^x - 1 for x that is not positive, exact to 2e-7 of the result also near 0.
template <class D, class V>
HWY_INLINE V computeExp2Minus1(D d, V x) {
    x = hn::Max(x, hn::Set(d, -126.0f));
    const V whole = hn::Round(x);
    const V fraction = hn::Sub(x, whole);
    const V powerOfTwo = computePowerOfTwo(d, whole);
    const V excess = hn::Mul(fraction, exp2FractionSlope(d, fraction));
    return hn::MulAdd(powerOfTwo, excess, hn::Sub(powerOfTwo, hn::Set(d, 1.0f)));
}

/// The luminance Y of linear colours.
template <class D, class V>
HWY_INLINE V computeLuminance(D d, V r, V g, V b) {
    V luminance = hn::Mul(r, hn::Set(d, static_cast<float>(kLuminanceWeights[0])));
    luminance = hn::MulAdd(g, hn::Set(d, static_cast<float>(kLuminanceWeights[1])), luminance);
    return hn::MulAdd(b, hn::Set(d, static_cast<float>(kLuminanceWeights[2])), luminance);
}

}  // namespace HWY_NAMESPACE
}  // namespace tavrin::colorkit
HWY_AFTER_NAMESPACE();

#endif
