#include "base/pipeline/IOperator.h"

#include <cmath>

namespace tavrin::pipeline {
namespace {

const String kEveryElement = "*";

bool isMeaningful(const IOperator::Request& request) {
    return !request.region.isEmpty() && request.scale > 0.0f && std::isfinite(request.scale);
}

}  // namespace

Function<bool(const image::ElementInfo&)> IOperator::ElementSelector::toFilter() const {
    if (selector_ == kEveryElement) {
        return [](const image::ElementInfo&) { return true; };
    }
    return [name = image::getInternalName(selector_)](const image::ElementInfo& element) {
        return element.name == name;
    };
}

Optional<BitmapImpl<Rgb>> IOperator::provideRgbRegion(const Request& request) {
    return isMeaningful(request) ? computeRgbRegion(request) : std::nullopt;
}

Optional<BitmapImpl<float>> IOperator::provideMonoRegion(const Request& request) {
    return isMeaningful(request) ? computeMonoRegion(request) : std::nullopt;
}

}  // namespace tavrin::pipeline
