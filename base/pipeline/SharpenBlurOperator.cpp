#include "base/pipeline/SharpenBlurOperator.h"

#include "base/image/RegionSampling.h"
#include "services/postcore/PropertyIds.h"
#include "services/postcore/sharpening/Sharpening.h"

#include <algorithm>

namespace tavrin::pipeline {
namespace {

using postcore::ImageOperatorsFlag;

postcore::Sharpening makeFilter(const settings::Settings& settings) {
    const auto getFloat = [&settings](int id) { return settings.get(id).get<float>(); };
    postcore::Sharpening filter;
    filter.initialize(settings.get(postcore::kSharpenBlurEnabledId).get<bool>(),
                      getFloat(postcore::kSharpenAmountId), getFloat(postcore::kSharpenRadiusId),
                      getFloat(postcore::kBlurRadiusId), 1.0f);
    return filter;
}

/// Where to start fetching along one axis to have `radius` pixels before `start`, or as many as
/// there are: on the grid of every step-th pixel that `start` is on.
int getFetchStart(int start, int radius, int step) {
    return start - std::min(radius, start) / step * step;
}

}  // namespace

Optional<BitmapImpl<Rgb>> SharpenBlurOperator::computeRgbRegion(const Request& request) {
    postcore::Sharpening filter = makeFilter(settings());
    const Pixel size = getDataWindow().size();
    // Reductions come in whole scales, enlargements are made behind this operator.
    const int scale = std::max(static_cast<int>(request.scale), 1);
    const int radius = filter.getWindowRadius(size, scale);
    if (radius < 1 || isFlagged(request.element, image::kNoSharpenBlur)) {
        return requestRgb(request);
    }
    const Bucket& region = request.region;
    // Tiles of other scales have no common grid to fetch from; their seams may show.
    const int margin = static_cast<float>(scale) == request.scale ? radius : 0;
    Request larger = request;
    larger.region = {getFetchStart(region.x0, margin, scale),
                     getFetchStart(region.y0, margin, scale), std::min(region.x1 + margin, size.x),
                     std::min(region.y1 + margin, size.y)};
    auto colors = requestRgb(larger);
    if (!colors) {
        return {};
    }
    filter.apply(ImageOperatorsFlag::Parallel, *colors, scale, false);
    const int x = (region.x0 - larger.region.x0) / scale;
    const int y = (region.y0 - larger.region.y0) / scale;
    const Pixel crop = image::getSampledSize(region.size(), request.scale);
    return postcore::getSubBitmap(ImageOperatorsFlag::Parallel, *colors,
                                  {x, y, x + crop.x, y + crop.y});
}

}  // namespace tavrin::pipeline
