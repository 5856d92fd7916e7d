#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Geometry.h"
#include "services/colorkit/IMappingStage.h"
#include "services/colorkit/StageList.h"

#include <memory>
#include <span>
#include <vector>

namespace tavrin::colorkit {

/// Maps pixels by a list of stages. Negative components and those that are not a number count as 0,
/// infinity counts as the largest float; what comes out is finite and not negative. The fourth
/// component of a pixel stays what it is. Immutable: any thread may map with it.
class StagedMapping {
public:
    explicit StagedMapping(StageList stages) : stages_(stages.take()) {}

    /// Maps the pixels of a row, or of a part of one, in place.
    void mapRow(std::span<Rgb> row, const RowPosition& position) const;

    /// Maps a bitmap in place. Its pixel (x, y) stands for the position
    /// (origin.x + trunc(x * scale), origin.y + trunc(y * scale)) in display-window coordinates.
    /// Uses the threads of the default scheduler unless there is only one row.
    void mapBitmap(BitmapImpl<Rgb>& bitmap, Pixel origin, float scale) const;

private:
    std::vector<std::unique_ptr<const IMappingStage>> stages_;
};

}  // namespace tavrin::colorkit
