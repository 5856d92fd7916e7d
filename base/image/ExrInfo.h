#pragma once

#include "base/image/ChannelImage.h"

#include <cstdint>
#include <vector>

namespace tavrin::image {

/// What an OpenEXR file says of itself, read without its pixels: also of a file that has no beauty
/// and so cannot be loaded.
struct ExrInfo {
    struct ChannelInfo {
        String name;
        String pixelType;  ///< "half", "float" or "uint"
    };
    struct AttributeInfo {
        String name;
        String typeName;  ///< as in the file: "v2f", "chlist", ...
    };

    std::uint64_t fileSize = 0;  ///< in bytes
    bool isTiled = false;
    String compression;  ///< "zip", "dwaa", ...
    std::vector<ChannelInfo> channels;
    std::vector<AttributeInfo> attributes;  ///< all, also those that an image does not keep
    ChannelImage image;                     ///< attributes and empty channels
    std::vector<ElementInfo> elements;      ///< empty when the metadata of the elements is broken
    String loadFailure;                     ///< why the file cannot be loaded; empty when it can be
};

/// Reads the header of a file, or says in a message that names the file why it cannot be read. Any
/// thread.
Result<ExrInfo> readExrInfo(const Path& path);

}  // namespace tavrin::image
