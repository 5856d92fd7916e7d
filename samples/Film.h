#pragma once

#include "base/image/ChannelImage.h"
#include "samples/PixelStatistics.h"

#include <cstdint>

namespace tavrin::samples {

/// What is told of a render beside its pixels.
struct RenderRecord {
    int samples = 0;        ///< per pixel
    std::int64_t rays = 0;  ///< traced
    double seconds = 0;     ///< taken; 0 when it shall not be told
};

/// Collects the pixels of a render into an image with the beauty, the lights' elements, normals,
/// colours, an object mask, depth and weights, the variances of those that denoising uses, and the
/// renderer's metadata. Pixels may be stored from several threads at a time.
class Film {
public:
    /// Throws std::bad_alloc.
    explicit Film(Pixel size);

    /// Each pixel is stored once.
    void store(Pixel pixel, const PixelStatistics& statistics);
    /// The image; the film is empty afterwards.
    image::ChannelImage finish(const RenderRecord& record);

private:
    using Planes = std::array<float*, 3>;
    struct MeasuredPlanes {
        Planes mean;
        Planes variance;  ///< of the mean
    };

    Planes getPlanes(const String& element);
    MeasuredPlanes getMeasuredPlanes(const String& element);
    float* getPlane(const String& channel) { return image_.getChannel<float>(channel).getData(); }

    Pixel size_;
    image::ChannelImage image_;
    MeasuredPlanes beauty_{};
    PerLight<MeasuredPlanes> lights_{};
    MeasuredPlanes normals_{};
    MeasuredPlanes albedo_{};
    Planes mask_{};
    float* alpha_ = nullptr;
    float* depth_ = nullptr;
    float* weights_ = nullptr;
};

}  // namespace tavrin::samples
