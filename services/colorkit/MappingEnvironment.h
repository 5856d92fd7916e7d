#pragma once

#include "foundation/Geometry.h"
#include "services/colorkit/CommonColorMappingContext.h"

namespace tavrin::colorkit {

/// What an operator may take into account, besides its own values, when it becomes stages.
struct MappingEnvironment {
    const CommonColorMappingContext& context;
    /// Width and height of the display window, in pixels.
    Pixel displaySize;

    /// Tells the context's error callback, when there is one, what an operator cannot do.
    void report(MappingError error, const String& text) const {
        if (context.errorCallback) {
            context.errorCallback(static_cast<int>(error), text);
        }
    }
};

}  // namespace tavrin::colorkit
