#pragma once

#include "services/colorkit/opencolorio/ColorTransform.h"

#include <OpenColorIO/OpenColorIO.h>

namespace tavrin::colorkit {

/// The library's processor for a request. Throws the library's exceptions.
OCIO_NAMESPACE::ConstCPUProcessorRcPtr makeProcessor(const ColorTransformRequest& request);

}  // namespace tavrin::colorkit
