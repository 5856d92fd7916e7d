#pragma once

#include "foundation/Result.h"
#include "services/imageio/openimageio/WritePicture.h"

namespace tavrin::imageio {

/// The writer of picture files. The first call loads the module that holds it; the answer is a
/// sentence when it cannot be loaded. May be called from any thread.
Result<WritePicture> getPictureWriter();

}  // namespace tavrin::imageio
