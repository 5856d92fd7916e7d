#include "services/postcore/bloomglare/ApertureMask.h"

#include "foundation/Function.h"
#include "foundation/Scheduler.h"
#include "services/postcore/bloomglare/ApertureOutline.h"
#include "services/postcore/bloomglare/Dust.h"
#include "services/postcore/bloomglare/GlareProperties.h"
#include "services/postcore/bloomglare/GratingLines.h"
#include "services/postcore/bloomglare/Scratches.h"

#include <algorithm>
#include <cstdint>

namespace tavrin::postcore {
namespace {

/// Gives each pixel the part of it that is inside, from the distance of its middle to the edge.
BitmapImpl<float> drawInside(int size, const Function<float(float, float)>& getDistance) {
    BitmapImpl<float> mask(size, size);
    const float pixelsPerRadius = 0.5f * static_cast<float>(size);
    const auto toAperture = [&](int i) { return (static_cast<float>(i) + 0.5f) / pixelsPerRadius; };
    const auto drawRow = [&](std::int64_t row) {
        const int y = static_cast<int>(row);
        for (int x = 0; x < size; ++x) {
            const float distance = getDistance(toAperture(x) - 1.0f, 1.0f - toAperture(y));
            mask.at(x, y) = std::clamp(0.5f - pixelsPerRadius * distance, 0.0f, 1.0f);
        }
    };
    Scheduler::defaultInstance().parallelFor(0, size, TaskPriority::Normal, drawRow);
    return mask;
}

}  // namespace

BitmapImpl<float> drawApertureMask(const ApertureParams& params, int size) {
    const ApertureParams valid = limitToRanges(params);
    const ApertureOutline outline = ApertureOutline::fromBlades(valid);
    BitmapImpl<float> mask =
        drawInside(std::clamp(size, 1, kLargestMaskSize), [&](float x, float y) {
            const float distance = outline.getDistance(x, y);
            return valid.occlusion.isEnabled
                       ? std::max(distance, getOcclusionDistance(valid.occlusion, x, y))
                       : distance;
        });
    if (valid.grating.isEnabled) {
        coverMask(makeGratingLines(valid.grating, outline), valid.grating.strength, mask);
    }
    if (valid.scratches.isEnabled) {
        coverMask(makeScratches(valid.scratches), valid.scratches.strength, mask);
    }
    if (valid.dust.isEnabled) {
        coverMask(makeDust(valid.dust), valid.dust.strength, mask);
    }
    return mask;
}

BitmapImpl<float> drawStreakMask(int count, int size) {
    const ApertureOutline outline = ApertureOutline::fromPolygon(count < 3 ? 4 : count, 0.0f);
    return drawInside(std::clamp(size, 1, kLargestMaskSize),
                      [&](float x, float y) { return outline.getDistance(x, y); });
}

}  // namespace tavrin::postcore
