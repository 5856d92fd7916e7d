#include "base/pipeline/IOperator.h"

#include <algorithm>

namespace tavrin::pipeline {
namespace {

const String kEveryElement = "*";

/// Calls answer() until no other image has taken the place of the one that it started with.
template <class Answer>
auto answerFromOneImage(const IOperator& op, const Answer& answer) {
    while (true) {
        const std::int64_t revision = op.getRevision();
        auto result = answer();
        if (op.getRevision() == revision) {
            return result;
        }
    }
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
    return answerFromOneImage(
        *this, [&] { return isMeaningful(request) ? computeRgbRegion(request) : std::nullopt; });
}

Optional<BitmapImpl<float>> IOperator::provideMonoRegion(const Request& request) {
    return answerFromOneImage(
        *this, [&] { return isMeaningful(request) ? computeMonoRegion(request) : std::nullopt; });
}

bool IOperator::isMeaningful(const Request& request) const {
    const auto& [element, region, scale, flags] = request;
    const Pixel size = getDataWindow().size();
    if (region.isEmpty() || !Bucket{0, 0, size.x, size.y}.contains(region)) {
        return false;
    }
    constexpr double kLargestSize = std::numeric_limits<int>::max();
    return scale > 0.0f && scale <= kLargestSize &&
           std::max(region.width(), region.height()) / double{scale} <= kLargestSize;
}

}  // namespace tavrin::pipeline
