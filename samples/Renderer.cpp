#include "samples/Renderer.h"

#include "foundation/Scheduler.h"

#include <atomic>

namespace tavrin::samples {

std::int64_t render(const Scene& scene, const Camera::View& view, const RenderSettings& settings,
                    const PixelSink& sink, const Function<void()>& onRow) {
    const Camera camera(view, settings.size);
    const PathTracer tracer(scene, camera);
    std::atomic<std::int64_t> rays = 0;
    const auto renderRow = [&](std::int64_t y) {
        std::int64_t rowRays = 0;
        for (int x = 0; x < settings.size.x; ++x) {
            const Pixel pixel{x, static_cast<int>(y)};
            PixelStatistics statistics;
            for (int i = settings.firstSample; i < settings.lastSample; ++i) {
                Sampler sampler(settings.seed, pixel, static_cast<std::uint32_t>(i));
                const PathSample sample = tracer.trace(pixel, sampler);
                statistics.add(sample);
                rowRays += sample.rays;
            }
            sink(pixel, statistics);
        }
        rays += rowRays;
        if (onRow) {
            onRow();
        }
    };
    Scheduler::defaultInstance().parallelFor(0, settings.size.y, TaskPriority::Normal, renderRow);
    return rays;
}

}  // namespace tavrin::samples
