#include "services/postcore/sharpening/DiscreteGaussian.h"

#include <cmath>
#include <cstddef>

namespace tavrin::postcore {
namespace {

/// What is cut off on both sides together. Amplified ten times it stays below half a step of ten
/// bits.
constexpr double kLargestRest = 3e-5;

/// Values in proportion to I_0(t) ... I_n(t), n being so high that I_n(t) vanishes against the sum:
/// Miller's downward recurrence I_(n-1)(t) = I_(n+1)(t) + (2 n / t) I_n(t) (Abramowitz and Stegun,
/// 1964, 9.6.26 and 9.12).
std::vector<double> computeBesselSeries(double t) {
    const auto last = static_cast<std::size_t>(10.0 + std::ceil(8.0 * std::sqrt(t)));
    std::vector<double> series(last + 2);
    series[last] = 1.0;
    for (std::size_t n = last; n > 0; --n) {
        series[n - 1] = series[n + 1] + 2.0 * static_cast<double>(n) / t * series[n];
    }
    return series;
}

}  // namespace

std::vector<float> makeDiscreteGaussian(double variance) {
    // As small as this, the variance is the sum of all weights but the middle one.
    if (!(variance > kLargestRest)) {
        return {1.0f};
    }
    const std::vector<double> series = computeBesselSeries(variance);
    double sum = -series[0];
    for (const double value : series) {
        sum += 2.0 * value;
    }
    std::size_t count = series.size();
    double rest = 0.0;
    while (rest + 2.0 * series[count - 1] < kLargestRest * sum) {
        rest += 2.0 * series[--count];
    }
    std::vector<float> weights(count);
    for (std::size_t n = 0; n < count; ++n) {
        weights[n] = static_cast<float>(series[n] / (sum - rest));
    }
    return weights;
}

}  // namespace tavrin::postcore
