#include "services/colorkit/MatrixStage.h"

#include <algorithm>
#include <cmath>
#include <limits>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/MatrixStage.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

void multiplyColors(const MatrixStage::Factors& factors, PixelBlock& block) {
    const float limit = std::numeric_limits<float>::max() / factors.scale;
    forEachColor(block, [&](auto d, auto& r, auto& g, auto& b) HWY_ATTR {
        const auto multiplyRow = [&](const float(&row)[3]) HWY_ATTR {
            auto sum = hn::Mul(hn::Set(d, row[0]), r);
            sum = hn::MulAdd(hn::Set(d, row[1]), g, sum);
            sum = hn::MulAdd(hn::Set(d, row[2]), b, sum);
            sum = hn::Clamp(sum, hn::Set(d, -limit), hn::Set(d, limit));
            return hn::Mul(sum, hn::Set(d, factors.scale));
        };
        const auto first = multiplyRow(factors.rows[0]);
        const auto second = multiplyRow(factors.rows[1]);
        b = multiplyRow(factors.rows[2]);
        r = first;
        g = second;
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::colorkit {

HWY_EXPORT(multiplyColors);

MatrixStage::MatrixStage(const Matrix3& matrix) {
    // With rows that sum up to at most 1/2, no partial sum exceeds the largest float.
    const double scale =
        std::max(1.0, std::exp2(std::ceil(std::log2(largestRowSum(matrix))) + 1.0));
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            factors_.rows[i][j] = static_cast<float>(matrix.rows[i][j] / scale);
        }
    }
    factors_.scale = static_cast<float>(scale);
}

void MatrixStage::apply(PixelBlock& block) const {
    HWY_DYNAMIC_DISPATCH(multiplyColors)(factors_, block);
}

}  // namespace tavrin::colorkit
#endif
