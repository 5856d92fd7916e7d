#pragma once

#include "services/imageio/openimageio/WritePicture.h"

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <vector>

namespace tavrin::imageio {

/// The type of the samples that the program hands out for a bit depth.
OIIO::TypeDesc getRowType(BitDepth depth);

/// Hands rows from the program to the library, a block at a time.
class RowBlock {
public:
    explicit RowBlock(const WritePictureRequest& request);

    /// Gets the block that starts at a row from the program. False when the program has had enough.
    bool fill(int begin);
    /// Writes the block and all that follow. False when either side failed.
    bool writeOn(OIIO::ImageOutput& output);

private:
    const WritePictureRequest& request_;
    OIIO::TypeDesc type_;
    std::size_t rowBytes_;
    int rowCount_;
    std::vector<std::byte> bytes_;
    int begin_ = 0;
    int end_ = 0;
};

}  // namespace tavrin::imageio
