// The power function on vectors. Included once per instruction set, after hwy/foreach_target.h.

#if defined(TAVRIN_COLORKIT_SCALED_POWER_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVRIN_COLORKIT_SCALED_POWER_INL_H
#undef TAVRIN_COLORKIT_SCALED_POWER_INL_H
#else
#define TAVRIN_COLORKIT_SCALED_POWER_INL_H
#endif

#include "services/colorkit/simd/Math-inl.h"
#include "services/colorkit/simd/ScaledPower.h"

#include <hwy/highway.h>

#include <limits>

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// power.scale · x^power.exponent with a relative error below 1e-6, at most the largest float.
/// x that is 0, negative or subnormal gives 0, as do results that would be subnormal.
template <class D, class V>
HWY_INLINE V computePower(D d, const ScaledPower& power, V x) {
    V integer, fraction;
    splitLog2(d, x, integer, fraction);

    const V line = hn::MulAdd(hn::Set(d, power.exponent), hn::Add(integer, fraction),
                              hn::Set(d, power.offsetInteger + power.offsetFraction));
    const V whole = hn::Round(line);
    // The sum of the first two terms and the difference are exact.
    V rest = hn::Sub(
        hn::MulAdd(hn::Set(d, power.exponentHigh), integer, hn::Set(d, power.offsetInteger)),
        whole);
    rest = hn::MulAdd(hn::Set(d, power.exponentLow), integer, rest);
    rest = hn::Add(rest, hn::Set(d, power.offsetFraction));
    rest = hn::MulAdd(hn::Set(d, power.exponent), fraction, rest);

    // In two factors, because one alone may leave the range of exponents.
    const V half = hn::Floor(hn::Mul(whole, hn::Set(d, 0.5f)));
    V result = hn::Mul(hn::Mul(exp2Fraction(d, rest), computePowerOfTwo(d, half)),
                       computePowerOfTwo(d, hn::Sub(whole, half)));
    const V largest = hn::Set(d, std::numeric_limits<float>::max());
    const V smallest = hn::Set(d, std::numeric_limits<float>::min());
    result = hn::Min(result, largest);
    result = hn::IfThenElse(hn::Gt(line, hn::Set(d, 129.0f)), largest, result);
    const auto isNormal = hn::And(hn::Ge(x, smallest), hn::Gt(line, hn::Set(d, -126.0f)));
    return hn::IfThenElseZero(isNormal, result);
}

}  // namespace HWY_NAMESPACE
}  // namespace tavrin::colorkit
HWY_AFTER_NAMESPACE();

#endif
