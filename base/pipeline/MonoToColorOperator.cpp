#include "base/pipeline/MonoToColorOperator.h"

#include "base/image/RowLoop.h"

#include <algorithm>

namespace tavrin::pipeline {

std::vector<image::ElementInfo> MonoToColorOperator::getElements() const {
    std::vector<image::ElementInfo> elements = input().getElements();
    for (image::ElementInfo& element : elements) {
        if (element.kind == image::ElementKind::Mono) {
            element.kind = image::ElementKind::Rgb;
        }
    }
    return elements;
}

Optional<BitmapImpl<Rgb>> MonoToColorOperator::computeRgbRegion(const Request& request) {
    auto colors = requestRgb(request);
    if (colors) {
        return colors;
    }
    const auto values = requestMono(request);
    if (!values) {
        return {};
    }
    BitmapImpl<Rgb> grey(values->getWidth(), values->getHeight());
    image::forEachRow(grey.getSize(), [&](int y) {
        std::ranges::transform(values->row(y), grey.row(y).begin(), [](float value) {
            return Rgb{value, value, value, value};
        });
    });
    return grey;
}

}  // namespace tavrin::pipeline
