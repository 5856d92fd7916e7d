#pragma once

#include <vector>

namespace tavrin::postcore {

/// The discrete analogue of the Gaussian for sampled signals (T. Lindeberg, "Scale-space for
/// discrete signals", 1990, equation 21): T(n, t) = exp(-t) I_n(t). Unlike samples of the
/// continuous function it has exactly the variance t, also where that is far below one sample, and
/// filtering with t1 and then t2 is filtering with t1 + t2.
///
/// Answers the weights of the samples at distances 0, 1, 2, ..., for a variance in squared samples;
/// with both sides counted they sum up to 1. The tails are cut off where the rest is too small to
/// be seen; a variance that is negligible, or not a number, has the one weight 1.
std::vector<float> makeDiscreteGaussian(double variance);

}  // namespace tavrin::postcore
