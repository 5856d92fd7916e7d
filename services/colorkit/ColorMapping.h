#pragma once

#include "foundation/EntityHolder.h"
#include "foundation/Geometry.h"
#include "foundation/SharedPtr.h"
#include "services/colorkit/ColorMappingOperator.h"
#include "services/colorkit/CommonColorMappingContext.h"
#include "services/colorkit/IColorMappingOperator.h"

#include <mutex>

namespace tavrin::colorkit {

/// The colour mapping of the program: a pipeline, its switch and its context, shared by those who
/// edit it and those who map pixels with it. All functions may be called from any thread; its lock
/// is held only to exchange values.
class ColorMapping {
public:
    /// Off, colours are only encoded for the display. On at first.
    bool isEnabled() const;
    void setEnabled(bool enabled);

    /// Empty at first.
    EntityHolder<IColorMappingOperator> getPipeline() const;
    void setPipeline(EntityHolder<IColorMappingOperator> pipeline);

    CommonColorMappingContext getContext() const;
    void setContext(CommonColorMappingContext context);

    /// The mapping by the pipeline and the switch as they are now, for this context and an image
    /// of this display size.
    SharedPtr<const ColorMappingOperator<0>> createMappingOperator(
        const CommonColorMappingContext& context, Pixel displaySize) const;

private:
    mutable std::mutex mutex_;
    // Guarded by mutex_.
    bool enabled_ = true;
    EntityHolder<IColorMappingOperator> pipeline_;
    CommonColorMappingContext context_;
};

}  // namespace tavrin::colorkit
