#pragma once

#include "samples/PathTracer.h"

#include <array>
#include <cstddef>

namespace tavrin::samples {

/// Running mean and variance of N values (Welford 1962).
template <std::size_t N>
class Moments {
public:
    void add(const std::array<double, N>& values) {
        ++count_;
        for (std::size_t i = 0; i < N; ++i) {
            const double difference = values[i] - mean_[i];
            mean_[i] += difference / count_;
            squares_[i] += difference * (values[i] - mean_[i]);
        }
    }
    int getCount() const { return count_; }
    double getMean(std::size_t i) const { return mean_[i]; }
    /// The variance of the mean: the unbiased variance of the values over their number; 0 for
    /// fewer than two values.
    double getVarianceOfMean(std::size_t i) const {
        return count_ < 2 ? 0 : squares_[i] / (double(count_ - 1) * count_);
    }

private:
    int count_ = 0;
    std::array<double, N> mean_{};
    std::array<double, N> squares_{};
};

/// What the samples of one pixel add up to.
class PixelStatistics {
public:
    void add(const PathSample& sample);

    int getCount() const { return lights_[0].getCount(); }
    const Moments<3>& getBeauty() const { return beauty_; }
    const Moments<3>& getLight(std::size_t light) const { return lights_[light]; }
    const Moments<3>& getNormal() const { return normal_; }
    const Moments<3>& getAlbedo() const { return albedo_; }
    /// The share of samples that see anything.
    double getCoverage() const { return coverage_.getMean(0); }
    /// The mean depth of the samples that hit a surface, kNoDepth if none did.
    double getDepth() const { return depth_.getCount() == 0 ? kNoDepth : depth_.getMean(0); }
    /// The share of samples that hit an object of each mask channel.
    double getMask(std::size_t channel) const { return mask_.getMean(channel); }

    static constexpr double kNoDepth = 1e10;

private:
    Moments<3> beauty_;
    PerLight<Moments<3>> lights_;
    Moments<3> normal_;
    Moments<3> albedo_;
    Moments<3> mask_;
    Moments<1> coverage_;
    Moments<1> depth_;
};

}  // namespace tavrin::samples
