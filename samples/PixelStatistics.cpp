#include "samples/PixelStatistics.h"

namespace tavrin::samples {
namespace {

std::array<double, 3> toArray(const Spectrum& s) {
    return {s.r, s.g, s.b};
}
std::array<double, 3> toArray(const Vector& v) {
    return {v.x, v.y, v.z};
}

}  // namespace

void PixelStatistics::add(const PathSample& sample) {
    Spectrum beauty;
    for (std::size_t light = 0; light < lights_.size(); ++light) {
        beauty += sample.radiance[light];
        lights_[light].add(toArray(sample.radiance[light]));
    }
    beauty_.add(toArray(beauty));
    normal_.add(toArray(sample.normal));
    albedo_.add(toArray(sample.albedo));
    std::array<double, 3> mask{};
    if (sample.maskChannel >= 0) {
        mask[static_cast<std::size_t>(sample.maskChannel)] = 1;
    }
    mask_.add(mask);
    coverage_.add({sample.covered ? 1.0 : 0.0});
    if (sample.hit) {
        depth_.add({sample.depth});
    }
}

}  // namespace tavrin::samples
