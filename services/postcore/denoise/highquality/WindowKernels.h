#pragma once

#include <cstddef>
#include <span>

namespace tavrin::postcore {

// The loops of the high quality denoiser over a row of pixels, for the processor's own instruction
// set. Rows are PlaneImage rows of `count` pixels, a multiple of PlaneImage::kGranule; their
// neighbours are reached through the same pointers.

inline constexpr int kGuideChannels = 3;
/// Normals and diffuse colours.
inline constexpr int kRegressors = 6;

/// A row of a guide: three values for each pixel and how uncertain they are.
struct GuideRow {
    const float* value[kGuideChannels];
    const float* variance[kGuideChannels];

    GuideRow movedBy(std::ptrdiff_t offset) const {
        GuideRow moved = *this;
        for (int c = 0; c < kGuideChannels; ++c) {
            moved.value[c] += offset;
            moved.variance[c] += offset;
        }
        return moved;
    }
};

/// How differences are judged: Rousselle, Knaus, Zwicker 2012, equation 5.
struct DistanceScale {
    float damping;   ///< k², by which the variances are multiplied
    float smallest;  ///< added to the denominator
    float limit;     ///< of the distance of one pixel, so that an outlier does not stand alone
};

/// The squared difference of two pixels less what noise explains, in units of the noise, as the
/// mean over the channels.
void computeDistances(const GuideRow& here, const GuideRow& there, const DistanceScale& scale,
                      std::size_t count, float* distances);

/// largest = max(largest, (difference² - noise) · scale) over the channels: Rousselle, Manzi,
/// Zwicker 2013, equation 7.
void raiseFeatureDistances(const GuideRow& here, const GuideRow& there,
                           const float* const (&scale)[kGuideChannels], std::size_t count,
                           float* largest);

/// What weights are computed of. `distances` are three rows, whose 3 × 3 patches count;
/// `featureDistances` may be null, and `combined` with it.
struct WeightRows {
    const float* distances[3];
    const float* featureDistances;
    const float* validHere;
    const float* validThere;
    float* weights;   ///< exp(-patch distance), tiny ones 0
    float* combined;  ///< exp(-max(patch distance, feature distance)), tiny ones 0
};
void computeWeights(const WeightRows& rows, std::size_t count);

/// Σ w value and Σ w² variance, for each channel, and Σ w of one more neighbour.
struct AverageRows {
    float* value[kGuideChannels];
    float* variance[kGuideChannels];
    float* weight;
};
void addNeighbor(const GuideRow& there, const float* weights, std::size_t count,
                 const AverageRows& sums);

/// Fits of the colours in a window by a first-order polynomial of the regressors, for each pixel
/// of a row (Bitterli et al. 2016, section 4), whose values are given to all pixels of the window.
struct RegressionRow {
    const float* color[kGuideChannels];
    const float* regressors[kRegressors];
    const float* regressorVariances[kRegressors];
    std::span<const std::ptrdiff_t> offsets;  ///< of the window's pixels
    const float* weights;                     ///< of the first offset's row
    std::ptrdiff_t weightStride;              ///< from one offset's row to the next one's
    float* sum[kGuideChannels];               ///< weighed values of the fits, to be added to
    float* sumWeight;
    float* mean[kGuideChannels];  ///< the weighed means of the colours
};
void regress(const RegressionRow& row, std::size_t count);

}  // namespace tavrin::postcore
