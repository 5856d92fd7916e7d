// Functions of vectors of floats. Included once per instruction set, after hwy/foreach_target.h.

#if defined(TAVRIN_COLORKIT_MATH_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_COLORKIT_MATH_INL_H
#undef TAVRIN_COLORKIT_MATH_INL_H
#else
#define TAVRIN_COLORKIT_MATH_INL_H
#endif

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

/// 2^fraction for fractions in [-0.5, 0.5]: minimax polynomial (Remez), relative error below 2e-9.
template <class D, class V>
HWY_INLINE V exp2Fraction(D d, V fraction) {
    return evaluatePolynomial(d, fraction, 1.0f, 0.6931471824645996f, 0.24022650718688965f,
                              0.055503275245428085f, 0.009618003852665424f, 0.0013400346506386995f,
                              0.00015476366388611495f);
}

}  // namespace HWY_NAMESPACE
}  // namespace tavrin::colorkit
HWY_AFTER_NAMESPACE();

#endif
