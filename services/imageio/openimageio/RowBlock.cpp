#include "services/imageio/openimageio/RowBlock.h"

#include <algorithm>

namespace tavrin::imageio {
namespace {

/// Enough rows for every thread to have a block to compress in the formats that allow it, and few
/// enough for a cancelled task to end soon.
constexpr int kRowsPerStep = 256;

/// A JPEG 2000 file is encoded as a whole, and the library loses the memory of a picture whose last
/// row it never sees: all rows are one block.
int getBlockRows(const WritePictureRequest& request) {
    return request.format == ImageFormat::Jpeg2000 ? request.height
                                                   : std::min(kRowsPerStep, request.height);
}

}  // namespace

OIIO::TypeDesc getRowType(BitDepth depth) {
    if (isFloatingPoint(depth)) {
        return OIIO::TypeDesc::FLOAT;
    }
    return depth == BitDepth::Int8 ? OIIO::TypeDesc::UINT8 : OIIO::TypeDesc::UINT16;
}

RowBlock::RowBlock(const WritePictureRequest& request)
    : request_(request),
      type_(getRowType(request.bitDepth)),
      rowBytes_(static_cast<std::size_t>(request.width) *
                static_cast<std::size_t>(request.channels) * type_.size()),
      rowCount_(getBlockRows(request)),
      bytes_(rowBytes_ * static_cast<std::size_t>(rowCount_)) {}

bool RowBlock::fill(int begin) {
    begin_ = begin;
    end_ = std::min(begin + rowCount_, request_.height);
    for (int row = begin_; row < end_; row += kRowsPerStep) {
        if (!request_.provideRows(
                request_.host, row, std::min(row + kRowsPerStep, end_),
                bytes_.data() + static_cast<std::size_t>(row - begin_) * rowBytes_)) {
            return false;
        }
    }
    return true;
}

bool RowBlock::writeOn(OIIO::ImageOutput& output) {
    while (output.write_scanlines(begin_, end_, 0, type_, bytes_.data())) {
        if (end_ == request_.height) {
            return true;
        }
        if (!fill(end_)) {
            return false;
        }
    }
    return false;
}

}  // namespace tavrin::imageio
