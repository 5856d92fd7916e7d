#include "services/colorkit/ColorMapping.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tavrin::colorkit {

bool ColorMapping::isEnabled() const {
    const std::lock_guard lock(mutex_);
    return enabled_;
}

void ColorMapping::setEnabled(bool enabled) {
    {
        const std::lock_guard lock(mutex_);
        if (std::exchange(enabled_, enabled) == enabled) {
            return;
        }
    }
    enabledObservers_.notify();
}

EntityHolder<IColorMappingOperator> ColorMapping::getPipeline() const {
    const std::lock_guard lock(mutex_);
    return pipeline_;
}

void ColorMapping::setPipeline(EntityHolder<IColorMappingOperator> pipeline) {
    {
        const std::lock_guard lock(mutex_);
        if (pipeline_ == pipeline) {
            return;
        }
        // What was there ends with the argument, after the lock.
        std::swap(pipeline_, pipeline);
        toldErrors_.clear();
    }
    pipelineObservers_.notify();
}

CallbackLifetime ColorMapping::addEnabledObserver(Function<void()> observer) {
    return enabledObservers_.add(std::move(observer));
}

CallbackLifetime ColorMapping::addPipelineObserver(Function<void()> observer) {
    return pipelineObservers_.add(std::move(observer));
}

CommonColorMappingContext ColorMapping::getContext() const {
    const std::lock_guard lock(mutex_);
    return context_;
}

void ColorMapping::setContext(CommonColorMappingContext context) {
    const std::lock_guard lock(mutex_);
    context_ = std::move(context);
    toldErrors_.clear();
}

SharedPtr<const ColorMappingOperator<0>> ColorMapping::createMappingOperator(
    const CommonColorMappingContext& context, Pixel displaySize) const {
    const auto [isEnabled, pipeline] = getState();
    const CommonColorMappingContext told = withErrorsToldOnce(context);
    return std::make_shared<const ColorMappingOperator<0>>(pipeline, isEnabled,
                                                           MappingEnvironment{told, displaySize});
}

SharedPtr<const HistogramColorMappingOperator> ColorMapping::createHistogramOperator(
    const CommonColorMappingContext& context, Pixel displaySize, std::uint32_t stage) const {
    const auto [isEnabled, pipeline] = getState();
    const CommonColorMappingContext told = withErrorsToldOnce(context);
    return std::make_shared<const HistogramColorMappingOperator>(
        pipeline, isEnabled, MappingEnvironment{told, displaySize}, stage);
}

Rgb ColorMapping::undoExposure(const CommonColorMappingContext& context, const Rgb& exposed) const {
    const auto [isEnabled, pipeline] = getState();
    Rgb factor{1.0f, 1.0f, 1.0f, 1.0f};
    ExposureMapping(pipeline, isEnabled, MappingEnvironment{context, {}}).mapRow({&factor, 1}, {});
    const auto divide = [](float value, float by) {
        return std::clamp(value / std::max(by, std::numeric_limits<float>::min()), 0.0f,
                          std::numeric_limits<float>::max());
    };
    return {divide(exposed.r, factor.r), divide(exposed.g, factor.g), divide(exposed.b, factor.b),
            exposed.a};
}

std::pair<bool, EntityHolder<IColorMappingOperator>> ColorMapping::getState() const {
    const std::lock_guard lock(mutex_);
    return {enabled_, pipeline_};
}

CommonColorMappingContext ColorMapping::withErrorsToldOnce(
    CommonColorMappingContext context) const {
    context.errorCallback = [this, callback = context.errorCallback](int id, const String& text) {
        std::unique_lock lock(mutex_);
        if (!toldErrors_.insert(text).second) {
            return;
        }
        const auto told = callback ? callback : context_.errorCallback;
        lock.unlock();
        if (told) {
            told(id, text);
        }
    };
    return context;
}

}  // namespace tavrin::colorkit
