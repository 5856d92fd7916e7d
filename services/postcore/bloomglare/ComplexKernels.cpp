#include "services/postcore/bloomglare/ComplexKernels.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/postcore/bloomglare/ComplexKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::postcore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// Real or imaginary parts of at most as many values as a row has.
using Parts = hn::CappedTag<float, kFftColumns>;

void multiplyRows(const float* factors, std::size_t rowCount, std::size_t rowFloats,
                  float* values) {
    const Parts d;
    for (std::size_t row = 0; row < rowCount; ++row) {
        const auto factorReal = hn::Set(d, factors[2 * row]);
        const auto factorImaginary = hn::Set(d, factors[2 * row + 1]);
        for (std::size_t i = 0; i < rowFloats; i += 2 * hn::Lanes(d)) {
            auto real = hn::Zero(d);
            auto imaginary = hn::Zero(d);
            hn::LoadInterleaved2(d, values + i, real, imaginary);
            hn::StoreInterleaved2(
                hn::NegMulAdd(imaginary, factorImaginary, hn::Mul(real, factorReal)),
                hn::MulAdd(real, factorImaginary, hn::Mul(imaginary, factorReal)), d, values + i);
        }
        values += rowFloats;
    }
}

void multiplyBy(const float* others, float factor, std::size_t floats, float* values) {
    const Parts d;
    const auto scale = hn::Set(d, factor);
    for (std::size_t i = 0; i < floats; i += 2 * hn::Lanes(d)) {
        auto real = hn::Zero(d);
        auto imaginary = hn::Zero(d);
        auto otherReal = hn::Zero(d);
        auto otherImaginary = hn::Zero(d);
        hn::LoadInterleaved2(d, values + i, real, imaginary);
        hn::LoadInterleaved2(d, others + i, otherReal, otherImaginary);
        real = hn::Mul(real, scale);
        imaginary = hn::Mul(imaginary, scale);
        hn::StoreInterleaved2(hn::NegMulAdd(imaginary, otherImaginary, hn::Mul(real, otherReal)),
                              hn::MulAdd(real, otherImaginary, hn::Mul(imaginary, otherReal)), d,
                              values + i);
    }
}

}  // namespace tavrin::postcore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::postcore {

HWY_EXPORT(multiplyRows);
HWY_EXPORT(multiplyBy);

void multiplyRows(const Complex* factors, std::size_t rowCount, std::size_t rowSize,
                  Complex* values) {
    HWY_DYNAMIC_DISPATCH(multiplyRows)
    (reinterpret_cast<const float*>(factors), rowCount, 2 * rowSize,
     reinterpret_cast<float*>(values));
}

void multiplyBy(const Complex* others, float factor, std::size_t count, Complex* values) {
    HWY_DYNAMIC_DISPATCH(multiplyBy)
    (reinterpret_cast<const float*>(others), factor, 2 * count, reinterpret_cast<float*>(values));
}

}  // namespace tavrin::postcore
#endif
