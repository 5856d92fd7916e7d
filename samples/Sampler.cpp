#include "samples/Sampler.h"

namespace tavrin::samples {
namespace {

// The finaliser of Steele, Lea and Flood 2014 ("Fast splittable pseudorandom number generators"),
// in Stafford's variant 13.
std::uint64_t mixBits(std::uint64_t bits) {
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9u;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebu;
    return bits ^ (bits >> 31);
}

std::uint64_t pair(std::uint32_t high, std::uint32_t low) {
    return std::uint64_t(high) << 32 | low;
}

}  // namespace

Sampler::Sampler(std::uint64_t seed, Pixel pixel, std::uint32_t sample) {
    const std::uint64_t place = pair(std::uint32_t(pixel.y), std::uint32_t(pixel.x));
    state_ = mixBits(mixBits(mixBits(seed + kStep) ^ place) + kStep * (sample + 1ull));
}

double Sampler::next() {
    state_ += kStep;
    return double(mixBits(state_) >> 11) * 0x1p-53;
}

Point2 Sampler::nextPoint() {
    const double x = next();
    return {x, next()};
}

}  // namespace tavrin::samples
