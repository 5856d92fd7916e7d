#pragma once

#include "foundation/Geometry.h"
#include "samples/Vector.h"

#include <cstdint>

namespace tavrin::samples {

/// The random numbers of one sample of one pixel. They are a function of the seed, the pixel, the
/// sample's index and the position in the stream alone, so that an image does not depend on which
/// thread computes what, nor on how the samples are divided among several renders. The samples are
/// independent: a stratified sequence would have about a tenth less noise, but then the variance
/// among the samples would overstate that of their mean, and denoisers rely on it.
class Sampler {
public:
    Sampler(std::uint64_t seed, Pixel pixel, std::uint32_t sample);

    /// Uniform in [0, 1).
    double next();
    Point2 nextPoint();

private:
    static constexpr std::uint64_t kStep = 0x9e3779b97f4a7c15u;  // 2^64 / golden ratio, odd
    std::uint64_t state_;
};

}  // namespace tavrin::samples
