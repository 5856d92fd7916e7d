#pragma once

#include "foundation/Geometry.h"
#include "services/colorkit/CommonColorMappingContext.h"

namespace tavrin::colorkit {

/// What an operator may take into account, besides its own values, when it becomes stages.
struct MappingEnvironment {
    const CommonColorMappingContext& context;
    /// Width and height of the display window, in pixels.
    Pixel displaySize;
};

}  // namespace tavrin::colorkit
