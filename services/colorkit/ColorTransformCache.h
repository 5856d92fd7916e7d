#pragma once

#include "foundation/Result.h"
#include "foundation/SharedPtr.h"
#include "services/colorkit/opencolorio/ColorTransform.h"

namespace tavrin::colorkit {

/// The transform for a request. The last few are kept, because a mapping is made anew for every
/// region of a picture; a file that has changed since is read again. A failure is one sentence
/// about the file, or about the library's module. Any thread.
Result<SharedPtr<const IColorTransform>> getColorTransform(const ColorTransformRequest& request);

}  // namespace tavrin::colorkit
