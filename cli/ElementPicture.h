#pragma once

#include "base/image/ChannelImage.h"
#include "foundation/Bitmap.h"
#include "foundation/Optional.h"
#include "services/colorkit/ColorMapping.h"

namespace tavrin::cli {

/// An element as a picture of the data window's size.
struct ElementPicture {
    BitmapImpl<Rgb> bitmap;
    Optional<BitmapImpl<float>> alpha;
    bool isData;  ///< values as stored, not mapped to colours
};

/// Images go through the colour mapping and take the image's alpha along; data passes stay as they
/// are stored. The element's kind is supported.
ElementPicture renderElement(const image::ChannelImage& image, const image::ElementInfo& element,
                             const colorkit::ColorMapping& colorMapping);

}  // namespace tavrin::cli
