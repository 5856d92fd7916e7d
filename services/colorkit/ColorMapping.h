#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/EntityHolder.h"
#include "foundation/Function.h"
#include "foundation/Geometry.h"
#include "foundation/ObserverList.h"
#include "foundation/SharedPtr.h"
#include "services/colorkit/ColorMappingOperator.h"
#include "services/colorkit/CommonColorMappingContext.h"
#include "services/colorkit/IColorMappingOperator.h"

#include <cstdint>
#include <mutex>
#include <set>
#include <utility>

namespace tavrin::colorkit {

/// The colour mapping of the program: a pipeline, its switch and its context, shared by those who
/// edit it and those who map pixels with it. All functions may be called from any thread; its lock
/// is held only to exchange values.
class ColorMapping {
public:
    /// The type of data objects that hold the switch and the pipeline, and its properties.
    struct Data {
        static constexpr const char* kTypeName = "ColorMapping";
        static constexpr const char* kPipeline = "pipeline";
        static constexpr const char* kEnabled = "enabled";
    };

    /// Off, colours are only encoded for the display. On at first.
    bool isEnabled() const;
    void setEnabled(bool enabled);

    /// Empty at first. Setting the same pipeline again is no change; another one with the same
    /// operators is, as its operators have other ids.
    EntityHolder<IColorMappingOperator> getPipeline() const;
    void setPipeline(EntityHolder<IColorMappingOperator> pipeline);

    /// Observers are called after every change of the switch, or of the pipeline, on the thread
    /// that made it. They find the new state by asking for it; when several threads make changes,
    /// it may be newer than the change that they are told about. The rules of ObserverList apply
    /// to each of the two.
    [[nodiscard]] CallbackLifetime addEnabledObserver(Function<void()> observer);
    [[nodiscard]] CallbackLifetime addPipelineObserver(Function<void()> observer);

    CommonColorMappingContext getContext() const;
    void setContext(CommonColorMappingContext context);

    /// The mapping by the pipeline and the switch as they are now, for this context and an image
    /// of this display size. A picture is mapped in many pieces; what an operator cannot do is
    /// told once for each pipeline and context that is set, to the error callback of `context` or,
    /// without one, to that of the context that was set.
    SharedPtr<const ColorMappingOperator<0>> createMappingOperator(
        const CommonColorMappingContext& context, Pixel displaySize) const;
    /// The same for measuring at one of the pipeline's operators.
    SharedPtr<const HistogramColorMappingOperator> createHistogramOperator(
        const CommonColorMappingContext& context, Pixel displaySize, std::uint32_t stage) const;

    /// The light that the exposures of the pipeline and of this context make this colour: how
    /// strong light in the image is that leaves them as bright as this. Finite and not negative.
    Rgb undoExposure(const CommonColorMappingContext& context, const Rgb& exposed) const;

private:
    /// The switch and the pipeline at one moment.
    std::pair<bool, EntityHolder<IColorMappingOperator>> getState() const;
    /// The context with an error callback that tells everything once.
    CommonColorMappingContext withErrorsToldOnce(CommonColorMappingContext context) const;

    mutable std::mutex mutex_;
    // Guarded by mutex_.
    bool enabled_ = true;
    EntityHolder<IColorMappingOperator> pipeline_;
    CommonColorMappingContext context_;
    mutable std::set<String> toldErrors_;

    ObserverList<> enabledObservers_;
    ObserverList<> pipelineObservers_;
};

}  // namespace tavrin::colorkit
