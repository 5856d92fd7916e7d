#pragma once

#include "base/image/ElementInfo.h"
#include "base/pipeline/IImageInfoProvider.h"

namespace tavrin::pipeline {

/// A colour element that the pipeline computes. It takes bloom and glare unless the image's own
/// description of the element forbids that. Any thread.
image::ElementInfo makeVirtualElement(const String& name, const IImageInfoProvider& imageInfo);

}  // namespace tavrin::pipeline
