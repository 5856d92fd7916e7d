#pragma once

#include "services/imageio/openimageio/WritePicture.h"

namespace tavrin::imageio {

/// The writer of picture files, whose module is loaded by the first call. Throws an Exception that
/// says why when it cannot be loaded. May be called from any thread.
WritePicture getPictureWriter();

}  // namespace tavrin::imageio
