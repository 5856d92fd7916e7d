#pragma once

#include "foundation/Function.h"
#include "samples/PixelStatistics.h"

#include <cstdint>

namespace tavrin::samples {

/// Which samples of an image to render.
struct RenderSettings {
    Pixel size;
    std::uint64_t seed = 1;
    /// The samples [firstSample, lastSample) of every pixel's sequence.
    int firstSample = 0;
    int lastSample = 16;
};

/// Called for every pixel once, from several threads at a time.
using PixelSink = Function<void(Pixel pixel, const PixelStatistics& statistics)>;

/// Renders on the shared scheduler and returns the number of rays traced. The pixels depend on the
/// scene, the camera and the settings only. onRow, which may be empty, is called after every row,
/// from several threads.
std::int64_t render(const Scene& scene, const Camera::View& view, const RenderSettings& settings,
                    const PixelSink& sink, const Function<void()>& onRow = {});

}  // namespace tavrin::samples
