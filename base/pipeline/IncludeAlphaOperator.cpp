#include "base/pipeline/IncludeAlphaOperator.h"

#include "base/image/RowLoop.h"

#include <algorithm>

namespace tavrin::pipeline {

std::vector<image::ElementInfo> IncludeAlphaOperator::getElements() const {
    std::vector<image::ElementInfo> elements = input().getElements();
    for (image::ElementInfo& element : elements) {
        if (element.kind == image::ElementKind::Rgb) {
            element.kind = image::ElementKind::Rgba;
        }
    }
    return elements;
}

Optional<BitmapImpl<Rgb>> IncludeAlphaOperator::computeRgbRegion(const Request& request) {
    auto colors = requestRgb(request);
    if (!colors) {
        return {};
    }
    Request alphaRequest = request;
    alphaRequest.element = image::kAlphaElement;
    const auto alpha = requestMono(alphaRequest);
    // An image that has been replaced between the two requests may give another size.
    const bool hasAlpha = alpha && alpha->getSize() == colors->getSize();
    image::forEachRow(colors->getSize(), [&](int y) {
        const std::span<Rgb> row = colors->row(y);
        for (std::size_t x = 0; x < row.size(); ++x) {
            row[x].a = hasAlpha ? alpha->row(y)[x] : 1.0f;
        }
    });
    return colors;
}

}  // namespace tavrin::pipeline
