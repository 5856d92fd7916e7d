#pragma once

#include "base/image/ChannelImage.h"
#include "foundation/Optional.h"
#include "foundation/SharedPtr.h"
#include "foundation/String.h"
#include "services/postcore/CameraData.h"
#include "services/postcore/RenderElementInfo.h"

namespace tavrin::pipeline {

/// What is known of the loaded image beside the pixels of its elements. Any thread.
class IImageInfoProvider {
public:
    virtual ~IImageInfoProvider() = default;

    /// What the renderer says about the element; empty when it says nothing.
    virtual Optional<postcore::RenderElementInfo> getElementInfo(const String& element) const = 0;
    /// The camera that took the image.
    virtual postcore::CameraData getCameraData() const = 0;
    /// The image as it is, which nobody changes any more; null while none is loaded.
    virtual SharedPtr<const image::ChannelImage> getImage() const = 0;
};

}  // namespace tavrin::pipeline
