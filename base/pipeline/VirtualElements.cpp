#include "base/pipeline/VirtualElements.h"

namespace tavrin::pipeline {

image::ElementInfo makeVirtualElement(const String& name, const IImageInfoProvider& imageInfo) {
    using postcore::RenderElementFlag;
    image::ElementInfo element{name, image::ElementKind::Rgb, image::kVirtualElement};
    if (const auto info = imageInfo.getElementInfo(name)) {
        const auto flags = info->getData().flags;
        if (!flags.has(RenderElementFlag::AllowBloom)) {
            element.flags |= image::kNoBloom;
        }
        if (!flags.has(RenderElementFlag::AllowGlare)) {
            element.flags |= image::kNoGlare;
        }
    }
    return element;
}

}  // namespace tavrin::pipeline
