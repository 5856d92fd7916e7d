#pragma once

#include "foundation/BinaryFileInputStream.h"

#include <ImfHeader.h>

#include <cstdint>

namespace tavrin::image {

/// Looks through the raw header of an OpenEXR file, which starts where the stream stands, before
/// the library reads it. Throws an Exception for two attributes or two channels of one name, for an
/// attribute that claims to be longer than the file, which the library would make room for, and for
/// one whose length is not that of its type.
void checkExrStructure(BinaryFileInputStream& stream);

/// Throws an Exception when the pixels that the header promises do not fit in memory, or could not
/// be held by a file of `fileSize` bytes even at the best of its compression. The header has passed
/// the library's own checks.
void checkExrPixelLimits(const Imf::Header& header, bool isTiled, std::uint64_t fileSize);

/// How many of `available` threads may decode the file without their buffers growing beyond a small
/// part of the image's own size; 0 stands for the calling thread alone.
int limitExrThreadCount(const Imf::Header& header, bool isTiled, int available);

}  // namespace tavrin::image
