#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Flags.h"
#include "foundation/Geometry.h"
#include "services/postcore/sharpening/ImageOperators.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tavrin::postcore {

/// The light of an image that glows: of each pixel what is above a threshold, in the pixel's own
/// colour. Light begins to glow softly at half the threshold; far above it, the threshold is what
/// is missing. Negative components give no light, pixels with one that is not finite none at all.
///
/// Nothing is copied: the image is looked at again for each row, and outlives this object. Any
/// thread.
class Highlights {
public:
    Highlights(Flags<ImageOperatorsFlag> flags, const BitmapImpl<CompressedRgb>& image,
               float threshold);

    Pixel getImageSize() const { return image_.getSize(); }
    /// The least rectangle of the image with all light that glows; empty when there is none.
    const Bucket& getBounds() const { return bounds_; }
    /// A power of two near the largest component, so that sums of many stay in the range of floats.
    float getUnit() const { return unit_; }
    /// Differs, for all that can be known, where the light does.
    std::uint64_t getHash() const { return hash_; }

    /// One channel (0 to 2) of the image's row y inside the bounds, in units. False when all of the
    /// row is 0.
    bool getRow(int y, int channel, std::span<float> row) const;

private:
    bool isDark(const CompressedRgb& pixel) const;
    /// Of a pixel that is not dark.
    CompressedRgb getLight(const CompressedRgb& pixel) const;

    /// The columns of a row between which its light is; none when end is 0.
    struct RowSpan {
        int begin;
        int end;
    };
    struct RowSummary;
    RowSummary summarizeRow(int y) const;

    const BitmapImpl<CompressedRgb>& image_;
    const float threshold_;
    const float darkest_;  // the largest component from which on a pixel glows
    std::vector<RowSpan> spans_;
    Bucket bounds_;
    float unit_ = 1.0f;
    std::uint64_t hash_ = 0;
};

}  // namespace tavrin::postcore
