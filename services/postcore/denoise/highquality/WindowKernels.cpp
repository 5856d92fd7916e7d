#include "services/postcore/denoise/highquality/WindowKernels.h"

#include "services/postcore/denoise/PlaneImage.h"

#include <algorithm>

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/postcore/denoise/highquality/WindowKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
#include "services/colorkit/simd/Math-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::postcore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
namespace math = colorkit::HWY_NAMESPACE;

using Whole = hn::CappedTag<float, PlaneImage::kGranule>;

constexpr float kMinusLog2E = -1.44269504f;
constexpr float kTinyWeight = 1e-2f;
// Added to the variances of the regressors in a window: a part of their own noise, which would
// otherwise come back through steep slopes, and a little for where they hardly differ.
constexpr float kNoiseRidge = 12.0f;
constexpr float kRidge = 1e-4f;
constexpr int kUnknowns = kRegressors + 1;
constexpr int kLanes = PlaneImage::kGranule;

void distances(const GuideRow& here, const GuideRow& there, const DistanceScale& scale,
               std::size_t count, float* result) {
    const Whole d;
    const auto damping = hn::Set(d, scale.damping);
    const auto smallest = hn::Set(d, scale.smallest);
    const auto limit = hn::Set(d, scale.limit);
    for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
        auto sum = hn::Zero(d);
        for (int c = 0; c < kGuideChannels; ++c) {
            const auto difference =
                hn::Sub(hn::LoadU(d, here.value[c] + i), hn::LoadU(d, there.value[c] + i));
            const auto own = hn::LoadU(d, here.variance[c] + i);
            const auto other = hn::LoadU(d, there.variance[c] + i);
            const auto noise = hn::Add(own, hn::Min(own, other));
            const auto excess = hn::MulSub(difference, difference, noise);
            sum = hn::Add(sum, hn::Div(excess, hn::MulAdd(damping, hn::Add(own, other), smallest)));
        }
        const auto mean = hn::Mul(sum, hn::Set(d, 1.0f / kGuideChannels));
        hn::StoreU(hn::Clamp(mean, hn::Neg(limit), limit), d, result + i);
    }
}

void raiseFeatures(const GuideRow& here, const GuideRow& there,
                   const float* const (&scale)[kGuideChannels], std::size_t count, float* largest) {
    const Whole d;
    for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
        auto result = hn::LoadU(d, largest + i);
        for (int c = 0; c < kGuideChannels; ++c) {
            const auto difference =
                hn::Sub(hn::LoadU(d, here.value[c] + i), hn::LoadU(d, there.value[c] + i));
            const auto own = hn::LoadU(d, here.variance[c] + i);
            const auto other = hn::LoadU(d, there.variance[c] + i);
            const auto noise = hn::Add(own, hn::Min(own, other));
            const auto excess = hn::MulSub(difference, difference, noise);
            result = hn::Max(result, hn::Mul(excess, hn::LoadU(d, scale[c] + i)));
        }
        hn::StoreU(result, d, largest + i);
    }
}

template <class D, class V>
HWY_INLINE V toWeight(D d, V distance, V valid) {
    const V weight =
        hn::Mul(valid, math::computeExp2(d, hn::Mul(distance, hn::Set(d, kMinusLog2E))));
    return hn::IfThenElseZero(hn::Ge(weight, hn::Set(d, kTinyWeight)), weight);
}

void weights(const WeightRows& rows, std::size_t count) {
    const Whole d;
    for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
        auto sum = hn::Zero(d);
        for (const float* distance : rows.distances) {
            sum = hn::Add(
                sum, hn::Add(hn::LoadU(d, distance + i - 1),
                             hn::Add(hn::LoadU(d, distance + i), hn::LoadU(d, distance + i + 1))));
        }
        const auto mean = hn::Max(hn::Mul(sum, hn::Set(d, 1.0f / 9.0f)), hn::Zero(d));
        const auto valid =
            hn::Mul(hn::LoadU(d, rows.validHere + i), hn::LoadU(d, rows.validThere + i));
        hn::StoreU(toWeight(d, mean, valid), d, rows.weights + i);
        if (rows.combined) {
            const auto both = hn::Max(mean, hn::LoadU(d, rows.featureDistances + i));
            hn::StoreU(toWeight(d, both, valid), d, rows.combined + i);
        }
    }
}

void add(const GuideRow& there, const float* weights, std::size_t count, const AverageRows& sums) {
    const Whole d;
    for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
        const auto weight = hn::LoadU(d, weights + i);
        const auto square = hn::Mul(weight, weight);
        hn::StoreU(hn::Add(hn::LoadU(d, sums.weight + i), weight), d, sums.weight + i);
        for (int c = 0; c < kGuideChannels; ++c) {
            float* value = sums.value[c] + i;
            float* variance = sums.variance[c] + i;
            hn::StoreU(hn::MulAdd(weight, hn::LoadU(d, there.value[c] + i), hn::LoadU(d, value)), d,
                       value);
            hn::StoreU(
                hn::MulAdd(square, hn::LoadU(d, there.variance[c] + i), hn::LoadU(d, variance)), d,
                variance);
        }
    }
}

/// The normal equations of a vector of pixels: matrix entries (i, j), j <= i, and right-hand sides,
/// each kLanes floats.
struct Equations {
    HWY_ALIGN float matrix[kUnknowns * (kUnknowns + 1) / 2][kLanes];
    HWY_ALIGN float side[kUnknowns][kGuideChannels][kLanes];

    static constexpr int index(int i, int j) { return i * (i + 1) / 2 + j; }
};

/// The neighbours that are summed up together, so that each sum is loaded and stored once for them.
constexpr int kBatch = 4;
constexpr int kTerms = kUnknowns + kGuideChannels;

/// A vector of pixels' neighbours: 1, the differences of the regressors, and the colours.
struct Neighbors {
    HWY_ALIGN float terms[kTerms][kBatch][kLanes];
    HWY_ALIGN float weights[kBatch][kLanes];
};

template <class D>
HWY_INLINE void loadNeighbor(D d, const RegressionRow& row, std::size_t x, std::ptrdiff_t at,
                             int index, Neighbors& neighbors) {
    hn::Store(hn::Set(d, 1.0f), d, neighbors.terms[0][index]);
    for (int i = 0; i < kRegressors; ++i) {
        const auto difference =
            hn::Sub(hn::LoadU(d, row.regressors[i] + at), hn::LoadU(d, row.regressors[i] + x));
        hn::Store(difference, d, neighbors.terms[1 + i][index]);
    }
    for (int c = 0; c < kGuideChannels; ++c) {
        hn::Store(hn::LoadU(d, row.color[c] + at), d, neighbors.terms[kUnknowns + c][index]);
    }
}

template <class D>
HWY_INLINE void addNeighbors(D d, const Neighbors& neighbors, Equations& equations) {
    for (int i = 0; i < kUnknowns; ++i) {
        const auto weigh = [&](int n) HWY_ATTR {
            return hn::Mul(hn::Load(d, neighbors.weights[n]), hn::Load(d, neighbors.terms[i][n]));
        };
        const auto weighed0 = weigh(0);
        const auto weighed1 = weigh(1);
        const auto weighed2 = weigh(2);
        const auto weighed3 = weigh(3);
        const auto addTo = [&](float* sum, const float(&term)[kBatch][kLanes]) HWY_ATTR {
            auto result = hn::MulAdd(weighed0, hn::Load(d, term[0]), hn::Load(d, sum));
            result = hn::MulAdd(weighed1, hn::Load(d, term[1]), result);
            result = hn::MulAdd(weighed2, hn::Load(d, term[2]), result);
            result = hn::MulAdd(weighed3, hn::Load(d, term[3]), result);
            hn::Store(result, d, sum);
        };
        for (int j = 0; j <= i; ++j) {
            addTo(equations.matrix[Equations::index(i, j)], neighbors.terms[j]);
        }
        for (int c = 0; c < kGuideChannels; ++c) {
            addTo(equations.side[i][c], neighbors.terms[kUnknowns + c]);
        }
    }
}

template <class D>
HWY_INLINE void gather(D d, const RegressionRow& row, std::size_t x, Equations& equations) {
    std::fill_n(&equations.matrix[0][0], sizeof equations.matrix / sizeof(float), 0.0f);
    std::fill_n(&equations.side[0][0][0], sizeof equations.side / sizeof(float), 0.0f);
    Neighbors neighbors;
    int count = 0;
    for (std::size_t n = 0; n < row.offsets.size(); ++n) {
        const auto weight =
            hn::LoadU(d, row.weights + static_cast<std::ptrdiff_t>(n) * row.weightStride + x);
        if (hn::AllFalse(d, hn::Gt(weight, hn::Zero(d)))) {
            continue;
        }
        hn::Store(weight, d, neighbors.weights[count]);
        loadNeighbor(d, row, x, static_cast<std::ptrdiff_t>(x) + row.offsets[n], count, neighbors);
        if (++count == kBatch) {
            addNeighbors(d, neighbors, equations);
            count = 0;
        }
    }
    if (count > 0) {
        for (; count < kBatch; ++count) {
            hn::Store(hn::Zero(d), d, neighbors.weights[count]);
            loadNeighbor(d, row, x, static_cast<std::ptrdiff_t>(x), count, neighbors);
        }
        addNeighbors(d, neighbors, equations);
    }
}

/// Replaces the right-hand sides by the solutions: Cholesky's decomposition with a ridge, which
/// takes the slopes back where the regressors differ by little more than their noise.
template <class D>
HWY_INLINE void solve(D d, const RegressionRow& row, std::size_t x, Equations& equations) {
    const auto at = [&](int i, int j) HWY_ATTR { return equations.matrix[Equations::index(i, j)]; };
    const auto total = hn::Load(d, at(0, 0));
    const auto tiny = hn::Set(d, 1e-20f);
    for (int i = 0; i < kUnknowns; ++i) {
        for (int j = 0; j <= i; ++j) {
            auto sum = hn::Load(d, at(i, j));
            if (i == j && i > 0) {
                const auto ridge = hn::MulAdd(hn::LoadU(d, row.regressorVariances[i - 1] + x),
                                              hn::Set(d, kNoiseRidge), hn::Set(d, kRidge));
                sum = hn::MulAdd(total, ridge, sum);
            }
            for (int m = 0; m < j; ++m) {
                sum = hn::NegMulAdd(hn::Load(d, at(i, m)), hn::Load(d, at(j, m)), sum);
            }
            // The diagonal holds reciprocals.
            const auto entry = i == j ? hn::Div(hn::Set(d, 1.0f), hn::Sqrt(hn::Max(sum, tiny)))
                                      : hn::Mul(sum, hn::Load(d, at(j, j)));
            hn::Store(entry, d, at(i, j));
        }
    }
    for (int c = 0; c < kGuideChannels; ++c) {
        for (int i = 0; i < kUnknowns; ++i) {
            auto sum = hn::Load(d, equations.side[i][c]);
            for (int m = 0; m < i; ++m) {
                sum = hn::NegMulAdd(hn::Load(d, at(i, m)), hn::Load(d, equations.side[m][c]), sum);
            }
            hn::Store(hn::Mul(sum, hn::Load(d, at(i, i))), d, equations.side[i][c]);
        }
        for (int i = kUnknowns - 1; i >= 0; --i) {
            auto sum = hn::Load(d, equations.side[i][c]);
            for (int m = i + 1; m < kUnknowns; ++m) {
                sum = hn::NegMulAdd(hn::Load(d, at(m, i)), hn::Load(d, equations.side[m][c]), sum);
            }
            hn::Store(hn::Mul(sum, hn::Load(d, at(i, i))), d, equations.side[i][c]);
        }
    }
}

template <class D>
HWY_INLINE void scatter(D d, const RegressionRow& row, std::size_t x, const Equations& equations) {
    for (std::size_t n = 0; n < row.offsets.size(); ++n) {
        const auto weight =
            hn::LoadU(d, row.weights + static_cast<std::ptrdiff_t>(n) * row.weightStride + x);
        if (hn::AllFalse(d, hn::Gt(weight, hn::Zero(d)))) {
            continue;
        }
        const std::ptrdiff_t at = static_cast<std::ptrdiff_t>(x) + row.offsets[n];
        auto red = hn::Load(d, equations.side[0][0]);
        auto green = hn::Load(d, equations.side[0][1]);
        auto blue = hn::Load(d, equations.side[0][2]);
        for (int i = 0; i < kRegressors; ++i) {
            const auto term =
                hn::Sub(hn::LoadU(d, row.regressors[i] + at), hn::LoadU(d, row.regressors[i] + x));
            red = hn::MulAdd(term, hn::Load(d, equations.side[i + 1][0]), red);
            green = hn::MulAdd(term, hn::Load(d, equations.side[i + 1][1]), green);
            blue = hn::MulAdd(term, hn::Load(d, equations.side[i + 1][2]), blue);
        }
        const auto addAt = [&](float* sum, auto value) HWY_ATTR {
            hn::StoreU(hn::MulAdd(weight, value, hn::LoadU(d, sum + at)), d, sum + at);
        };
        addAt(row.sum[0], red);
        addAt(row.sum[1], green);
        addAt(row.sum[2], blue);
        addAt(row.sumWeight, hn::Set(d, 1.0f));
    }
}

void regressRow(const RegressionRow& row, std::size_t count) {
    const Whole d;
    Equations equations;
    for (std::size_t x = 0; x < count; x += hn::Lanes(d)) {
        gather(d, row, x, equations);
        const auto total = hn::Max(hn::Load(d, equations.matrix[0]), hn::Set(d, kTinyWeight));
        for (int c = 0; c < kGuideChannels; ++c) {
            hn::StoreU(hn::Div(hn::Load(d, equations.side[0][c]), total), d, row.mean[c] + x);
        }
        solve(d, row, x, equations);
        scatter(d, row, x, equations);
    }
}

}  // namespace tavrin::postcore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavrin::postcore {

HWY_EXPORT(distances);
HWY_EXPORT(raiseFeatures);
HWY_EXPORT(weights);
HWY_EXPORT(add);
HWY_EXPORT(regressRow);

void computeDistances(const GuideRow& here, const GuideRow& there, const DistanceScale& scale,
                      std::size_t count, float* result) {
    HWY_DYNAMIC_DISPATCH(distances)(here, there, scale, count, result);
}

void raiseFeatureDistances(const GuideRow& here, const GuideRow& there,
                           const float* const (&scale)[kGuideChannels], std::size_t count,
                           float* largest) {
    HWY_DYNAMIC_DISPATCH(raiseFeatures)(here, there, scale, count, largest);
}

void computeWeights(const WeightRows& rows, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(weights)(rows, count);
}

void addNeighbor(const GuideRow& there, const float* weights, std::size_t count,
                 const AverageRows& sums) {
    HWY_DYNAMIC_DISPATCH(add)(there, weights, count, sums);
}

void regress(const RegressionRow& row, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(regressRow)(row, count);
}

}  // namespace tavrin::postcore
#endif
