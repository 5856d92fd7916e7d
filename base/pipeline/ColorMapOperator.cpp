#include "base/pipeline/ColorMapOperator.h"

#include "services/postcore/PostProcessData.h"

#include <utility>

namespace tavrin::pipeline {

void ColorMapOperator::updateColorMappingContext() {
    auto context = postcore::getCommonColorMappingContext(postcore::getPostProcessData(settings()));
    context.errorCallback = colorMapping().getContext().errorCallback;
    colorMapping().setContext(std::move(context));
}

Optional<BitmapImpl<Rgb>> ColorMapOperator::computeRgbRegion(const Request& request) {
    auto colors = requestRgb(request);
    if (!colors || isFlagged(request.element, image::kNoColorMapping)) {
        return colors;
    }
    const Bucket display = getDisplayWindow();
    const Bucket data = getDataWindow();
    const Pixel origin = {data.x0 - display.x0 + request.region.x0,
                          data.y0 - display.y0 + request.region.y0};
    const auto context = postcore::getCommonColorMappingContext(
        postcore::getPostProcessData(settings(), display.size(), {}));
    const auto map = [&](const colorkit::StagedMapping& mapping) {
        mapping.mapBitmap(*colors, origin, request.scale);
    };
    if (request.flags.has(Control::Measure)) {
        map(*colorMapping().createHistogramOperator(context, display.size(), histogramStage_));
    } else {
        map(*colorMapping().createMappingOperator(context, display.size()));
    }
    return colors;
}

}  // namespace tavrin::pipeline
