#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/Function.h"
#include "foundation/SharedPtr.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/editing/ColorMappingWithObservers.h"

namespace tavrin::components {

/// What the tone-mapping sheet shows and changes, kept in step with a shared colour mapping: either
/// takes over what changes in the other. Main thread; the colour mapping may change on any thread
/// and outlives it.
class ColorMappingModel final : private CallbacksOwner {
public:
    /// Makes a function that any thread may call, also after the one who makes it has ended, and
    /// that then calls the given one on the main thread.
    using PassToMainThread = Function<Function<void()>(Function<void()>)>;

    /// Filled from the colour mapping.
    ColorMappingModel(colorkit::ColorMapping& colorMapping,
                      const PassToMainThread& passToMainThread);
    ~ColorMappingModel() { endCallbacks(); }
    ColorMappingModel(const ColorMappingModel&) = delete;
    ColorMappingModel& operator=(const ColorMappingModel&) = delete;

    const SharedPtr<colorkit::ColorMappingWithObservers>& getEntity() const { return entity_; }

private:
    void takeSharedPipeline();
    void takeSharedSwitch();
    void storePipeline();
    void storeSwitch();

    colorkit::ColorMapping& colorMapping_;
    SharedPtr<colorkit::ColorMappingWithObservers> entity_;
};

}  // namespace tavrin::components
