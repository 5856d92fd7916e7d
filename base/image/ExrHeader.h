#pragma once

#include "base/image/ChannelImage.h"
#include "base/image/ExrStreams.h"

#include <ImfHeader.h>

namespace tavrin::image {

/// The header of an OpenEXR file of the kinds that we read, checked.
struct ExrHeader {
    Imf::Header header;
    bool isTiled;
    /// The file's attributes and its channels, which are still without values.
    ChannelImage image;
};

/// Reads and checks a header from a stream that stands at the beginning of its file; memory for
/// pixels is not taken. Throws an exception of the library or an Exception when the file is not
/// OpenEXR, is multi-part or deep, has an empty data window or promises more than can be held.
ExrHeader readExrHeader(ExrIStreamAdapter& adapter, BinaryFileInputStream& stream);

/// Throws an Exception when the image has no valid header or no beauty.
void checkExrImage(const ChannelImage& image);

}  // namespace tavrin::image
