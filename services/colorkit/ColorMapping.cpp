#include "services/colorkit/ColorMapping.h"

#include <utility>

namespace tavrin::colorkit {

bool ColorMapping::isEnabled() const {
    const std::lock_guard lock(mutex_);
    return enabled_;
}

void ColorMapping::setEnabled(bool enabled) {
    const std::lock_guard lock(mutex_);
    enabled_ = enabled;
}

EntityHolder<IColorMappingOperator> ColorMapping::getPipeline() const {
    const std::lock_guard lock(mutex_);
    return pipeline_;
}

void ColorMapping::setPipeline(EntityHolder<IColorMappingOperator> pipeline) {
    const std::lock_guard lock(mutex_);
    pipeline_ = std::move(pipeline);
}

CommonColorMappingContext ColorMapping::getContext() const {
    const std::lock_guard lock(mutex_);
    return context_;
}

void ColorMapping::setContext(CommonColorMappingContext context) {
    const std::lock_guard lock(mutex_);
    context_ = std::move(context);
}

SharedPtr<const ColorMappingOperator<0>> ColorMapping::createMappingOperator(
    const CommonColorMappingContext& context, Pixel displaySize) const {
    std::unique_lock lock(mutex_);
    const bool isEnabled = enabled_;
    const EntityHolder<IColorMappingOperator> pipeline = pipeline_;
    lock.unlock();
    return std::make_shared<const ColorMappingOperator<0>>(
        pipeline, isEnabled, MappingEnvironment{context, displaySize});
}

}  // namespace tavrin::colorkit
