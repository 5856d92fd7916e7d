#pragma once

#include "base/image/ChannelImage.h"

#include <ImfHeader.h>

namespace tavrin::image {

/// Adds the attributes of a file's header to the image; types without a counterpart are skipped.
/// Throws an Exception for two attributes of one name or an attribute that is not of its type.
void readExrAttributes(const Imf::Header& header, ChannelImage& image);

/// Adds the image's attributes to a header, except those whose name it already holds and those of
/// types that files do not have. Characters of names outside ASCII become "_".
void writeExrAttributes(const ChannelImage& image, Imf::Header& header);

Bucket toBucket(const Imath::Box2i& box);
Imath::Box2i toBox(const Bucket& bucket);

}  // namespace tavrin::image
