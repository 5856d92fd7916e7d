#pragma once

#include "base/image/ChannelImage.h"

namespace tavrin::image {

/// Reads single-part scan-line and tiled OpenEXR files, TXR files among them, in every compression
/// of the OpenEXR library. HALF channels become float; attributes of the types int, float, double,
/// string, v2i, box2i and v3f are kept, others dropped. Multi-part and deep files, and files whose
/// header promises more than memory or the file itself can hold, are refused. Any thread.
class ExrLoader final : public ChannelImage::ILoader {
public:
    Result<ChannelImage> load(const Path& path) const override;
};

/// Writes an image, whose channels have the data window's size, as a scan-line OpenEXR file with
/// ZIP compression: float channels as FLOAT, unsigned ones as UINT, every attribute that OpenEXR
/// has a type for. The file appears whole or not at all. Any thread.
class ExrSaver final : public ChannelImage::ISaver {
public:
    Result<void> save(const ChannelImage& image, const Path& path) const override;
};

/// Replaces the half values in the low two bytes of each of `count` four-byte slots by the equal
/// floats, bit for bit as the half type's conversion table has them, NaN included.
void convertHalfValues(float* values, std::size_t count);

/// The message for a failure with the given text while working on a file: it names the file and is
/// one sentence with a full stop.
String makeFileMessage(const String& text, const Path& path);

}  // namespace tavrin::image
